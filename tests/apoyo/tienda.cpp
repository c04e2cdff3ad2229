#include "apoyo/tienda.h"

#include <QCoreApplication>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QThread>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {
[[noreturn]] void Falla(const QString& texto)
{
    throw ErrorTienda(texto.toStdString());
}

/// Runs a program to its end and gives its standard output; throws with what it says on the other.
QByteArray Corre(const QString& programa, const QStringList& argumentos, const QByteArray& entrada,
                 int segundos)
{
    QProcess proceso;
    proceso.start(programa, argumentos);
    proceso.write(entrada);
    proceso.closeWriteChannel();
    if (!proceso.waitForFinished(segundos * 1000)) {
        proceso.terminate(); // so that it cleans up what it began
        proceso.waitForFinished(30'000);
        Falla(programa + " did not end in time: " + proceso.readAllStandardError());
    }
    if (proceso.exitStatus() != QProcess::NormalExit || proceso.exitCode() != 0)
        Falla(programa + ": " + QString::fromUtf8(proceso.readAllStandardError()));
    return proceso.readAllStandardOutput();
}

QByteArray LeeDesde(const QString& ruta, qint64 posicion)
{
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::ReadOnly))
        return {};
    fichero.seek(posicion);
    return fichero.readAll();
}

QStringList Lineas(const QByteArray& texto)
{
    return QString::fromUtf8(texto).split('\n', Qt::SkipEmptyParts);
}

/// Undoes what the client writes in a field: \t, \n, \0 and \\ stand for their characters.
QString Desescapa(const QString& campo)
{
    QString texto;
    for (qsizetype i = 0; i < campo.size(); ++i) {
        if (campo[i] != u'\\' || i + 1 == campo.size()) {
            texto += campo[i];
            continue;
        }
        const QChar letra = campo[++i];
        texto += letra == u'n'   ? QChar(u'\n')
                 : letra == u't' ? QChar(u'\t')
                 : letra == u'0' ? QChar(u'\0')
                                 : letra;
    }
    return texto;
}

QStringList Argumentos(const OpcionesTienda& opciones)
{
    QStringList argumentos{"--generacion", opciones.generacion,
                           "--prefijo",    opciones.prefijo,
                           "--idiomas",    QString::number(opciones.idiomas)};
    if (!opciones.version.isEmpty())
        argumentos << "--version" << opciones.version;
    return argumentos;
}

QString Nombre(Servidor servidor)
{
    switch (servidor) {
    case Servidor::Mysql:
        return "mysql";
    case Servidor::Ftp:
        return "ftp";
    case Servidor::Http:
        return "http";
    }
    Falla("no such server");
}

/// The requests that began and have not ended: "+id|..." without its "-id".
bool HayPendientes(const QByteArray& marcas)
{
    QSet<QString> abiertas;
    for (const QString& linea : Lineas(marcas)) {
        if (linea.startsWith('+'))
            abiertas.insert(linea.mid(1).section('|', 0, 0));
        else
            abiertas.remove(linea.mid(1));
    }
    return !abiertas.isEmpty();
}
} // namespace

TiendaDePrueba::TiendaDePrueba(const OpcionesTienda& opciones)
{
    QTemporaryDir carpeta(QDir::tempPath() + "/kovtolmo-tienda-XXXXXX");
    carpeta.setAutoRemove(false);
    carpeta_ = carpeta.path();
    const QString yo = QString::number(QCoreApplication::applicationPid());
    try {
        Manda(QStringList{"up", carpeta_, "--vida-de", yo} + Argumentos(opciones));
        LeeValores();
    } catch (...) {
        QDir(carpeta_).removeRecursively();
        throw;
    }
}

TiendaDePrueba::~TiendaDePrueba()
{
    try {
        Manda({"down", carpeta_, "--borra"});
    } catch (const ErrorTienda& error) {
        qCritical("%s", error.what());
    }
}

void TiendaDePrueba::Manda(const QStringList& argumentos, int segundos) const
{
    Corre(KOV_FUENTES "/tools/tienda", argumentos, {}, segundos);
}

void TiendaDePrueba::LeeValores()
{
    valores_.clear();
    for (const QString& linea : Lineas(LeeDesde(carpeta_ + "/tienda.env", 0))) {
        const qsizetype igual = linea.indexOf('=');
        QString valor = linea.mid(igual + 2).chopped(1); // between single quotes
        valores_[linea.left(igual)] = valor.replace("'\\''", "'");
    }
}

QString TiendaDePrueba::Valor(const QString& nombre) const
{
    const auto valor = valores_.constFind("TIENDA_" + nombre);
    if (valor == valores_.cend())
        Falla("tienda.env has no TIENDA_" + nombre);
    return *valor;
}

void TiendaDePrueba::Reinicia(const OpcionesTienda& opciones)
{
    Manda(QStringList{"reinicia", carpeta_} + Argumentos(opciones));
    LeeValores();
    marcaFtp_ = marcaHttp_ = marcaPendientes_ = 0;
}

std::vector<QStringList> TiendaDePrueba::Sql(const QString& sentencia) const
{
    const QByteArray salida =
        Corre("mariadb",
              {"--defaults-file=" + carpeta_ + "/conf/cliente.cnf",
               "--init-command=SET sql_mode=''", "--batch", "--skip-column-names", Bd()},
              sentencia.toUtf8(), 120);
    std::vector<QStringList> filas;
    QStringList lineas = QString::fromUtf8(salida).split('\n');
    lineas.removeLast(); // behind the last line end; a row may be an empty text
    for (const QString& linea : lineas) {
        QStringList fila;
        for (const QString& campo : linea.split('\t'))
            fila << Desescapa(campo);
        filas.push_back(fila);
    }
    return filas;
}

QString TiendaDePrueba::Ruta(const QString& relativa) const
{
    return Raiz() + '/' + relativa;
}

bool TiendaDePrueba::ExisteFichero(const QString& ruta) const
{
    return QFile::exists(Ruta(ruta));
}

QByteArray TiendaDePrueba::LeeFichero(const QString& ruta) const
{
    QFile fichero(Ruta(ruta));
    if (!fichero.open(QIODevice::ReadOnly))
        Falla("the shop has no " + ruta);
    return fichero.readAll();
}

void TiendaDePrueba::EscribeFichero(const QString& ruta, const QByteArray& contenido) const
{
    const QString completa = Ruta(ruta);
    QDir().mkpath(QFileInfo(completa).path());
    QFile fichero(completa);
    if (!fichero.open(QIODevice::WriteOnly) || fichero.write(contenido) != contenido.size())
        Falla("cannot write " + ruta);
    fichero.close();
    struct stat raiz {};
    ::stat(QFile::encodeName(Raiz()).constData(), &raiz);
    for (QString p = completa; p.size() > Raiz().size(); p = QFileInfo(p).path())
        if (::chown(QFile::encodeName(p).constData(), raiz.st_uid, raiz.st_gid) != 0)
            Falla("cannot give " + ruta + " to the servers");
}

void TiendaDePrueba::BorraFichero(const QString& ruta) const
{
    if (!QFile::remove(Ruta(ruta)))
        Falla("cannot delete " + ruta);
}

QStringList TiendaDePrueba::Ficheros(const QString& carpeta) const
{
    const QDir raiz(Raiz());
    QStringList rutas;
    QDirIterator recorre(raiz.filePath(carpeta), QDir::Files | QDir::Hidden | QDir::System,
                         QDirIterator::Subdirectories);
    while (recorre.hasNext())
        rutas << raiz.relativeFilePath(recorre.next());
    rutas.sort();
    return rutas;
}

TiendaDePrueba::Pagina TiendaDePrueba::PaginaWeb(const QString& url) const
{
    const QString completa = url.startsWith("http") ? url : Www() + url;
    QProcess curl;
    curl.start("curl", {"-s", "--noproxy", "*", "--max-time", "300", "-w", "%{stderr}%{http_code}",
                        completa});
    if (!curl.waitForFinished(310'000))
        Falla("no curl: " + curl.errorString());
    return {curl.readAllStandardError().toInt(), curl.readAllStandardOutput()};
}

void TiendaDePrueba::Marca()
{
    // What went before is complete in the logs before their ends are taken.
    ComandosFtp();
    PeticionesHttp();
    marcaFtp_ = QFileInfo(Valor("FTP_REGISTRO")).size();
    marcaHttp_ = QFileInfo(Valor("HTTP_REGISTRO")).size();
    marcaPendientes_ = QFileInfo(Valor("HTTP_MARCAS")).size();
}

bool TiendaDePrueba::HaySesionesFtp() const
{
    const QString pid =
        QString::fromUtf8(LeeDesde(carpeta_ + "/run/ftp.pid", 0)).section(' ', 0, 0);
    if (pid.isEmpty())
        return false;
    return !LeeDesde("/proc/" + pid + "/task/" + pid + "/children", 0).trimmed().isEmpty();
}

std::vector<TiendaDePrueba::OrdenFtp> TiendaDePrueba::OrdenesFtp() const
{
    // The server writes its line after it has answered.
    const QString registro = Valor("FTP_REGISTRO");
    qint64 tamano = -1;
    for (int quieto = 0; quieto < 20 && HaySesionesFtp(); ++quieto) {
        const qint64 ahora = QFileInfo(registro).size();
        if (ahora != tamano)
            quieto = 0;
        tamano = ahora;
        QThread::msleep(10);
    }
    std::vector<OrdenFtp> ordenes;
    for (const QString& linea : Lineas(LeeDesde(registro, marcaFtp_))) // date time pid code command
        ordenes.push_back(
            {linea.section(' ', 2, 2), linea.section(' ', 4), linea.section(' ', 3, 3).toInt()});
    return ordenes;
}

QStringList TiendaDePrueba::ComandosFtp() const
{
    QStringList comandos;
    for (const OrdenFtp& orden : OrdenesFtp())
        comandos << orden.orden + ' ' + QString::number(orden.codigo);
    return comandos;
}

QStringList TiendaDePrueba::PeticionesHttp() const
{
    QElapsedTimer reloj;
    reloj.start();
    while (reloj.elapsed() < 5000 &&
           HayPendientes(LeeDesde(Valor("HTTP_MARCAS"), marcaPendientes_)))
        QThread::msleep(5);
    QStringList lineas = Lineas(LeeDesde(Valor("HTTP_REGISTRO"), marcaHttp_));
    // A request is logged when its process has done with it, which may be after the next one's:
    // the lines begin with the microsecond in which theirs came.
    lineas.sort();
    QStringList peticiones;
    for (const QString& linea : std::as_const(lineas)) {
        const QString peticion = linea.section('"', 1, 1); // "GET /ruta HTTP/1.1"
        const QString estado = linea.section('"', 2).trimmed().section(' ', 0, 0);
        peticiones << peticion.section(' ', 0, 1) + ' ' + estado;
    }
    return peticiones;
}

void TiendaDePrueba::Para(Servidor servidor)
{
    Manda({"para-" + Nombre(servidor), carpeta_});
    LeeValores();
}

void TiendaDePrueba::Sigue(Servidor servidor)
{
    Manda({"sigue-" + Nombre(servidor), carpeta_});
    LeeValores();
}

void TiendaDePrueba::CortaFtp()
{
    Manda({"corta-ftp", carpeta_});
}

void TiendaDePrueba::Ajusta(Servidor servidor, const QByteArray& lineas)
{
    const QString extension = servidor == Servidor::Mysql ? ".cnf" : ".conf";
    QFile fichero(carpeta_ + "/conf/" + Nombre(servidor) + "-mas" + extension);
    if (!fichero.open(QIODevice::WriteOnly) || fichero.write(lineas) != lineas.size())
        Falla("cannot write " + fichero.fileName());
    fichero.close();
    Para(servidor);
    Sigue(servidor);
}

TiendaDePrueba& TiendaComun(const OpcionesTienda& opciones)
{
    static std::unique_ptr<TiendaDePrueba> tienda;
    if (tienda)
        tienda->Reinicia(opciones);
    else
        tienda = std::make_unique<TiendaDePrueba>(opciones);
    return *tienda;
}
