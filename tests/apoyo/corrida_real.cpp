#include "apoyo/corrida_real.h"
#include "apoyo/forma_de_base.h"
#include <QElapsedTimer>
#include <QProcess>
#include <QRegularExpression>
#include <ostream>

namespace {

QByteArray LeeTodo(const QString& ruta)
{
    QFile fichero(ruta);
    if (!fichero.open(QIODevice::ReadOnly))
        throw ErrorTienda("can't read " + ruta.toStdString());
    return fichero.readAll();
}

/// Windows-1252 apart from its C1 letters, which the tests' data don't use but for "€".
QString Texto(const QByteArray& bytes)
{
    return QString::fromLatin1(bytes).replace(QChar(0x80), QStringLiteral("€"));
}

/// In front of a script of the shop: keeps a copy of the file that it is about to use.
QByteArray GuardaCopia(const QByteArray& fichero)
{
    return "<?php @mkdir(__DIR__ . '/copias'); $copia = " + fichero +
           "; if (is_file(__DIR__ . \"/$copia\")) copy(__DIR__ . \"/$copia\", __DIR__ . "
           "sprintf('/copias/%06d-', count(glob(__DIR__ . '/copias/*'))) . $copia); ?>";
}

const QMap<QString, QByteArray> FicheroDeGuion{
    {"ejecuta.php", GuardaCopia("'sentencias.sql'")},
    {"creapath.php", GuardaCopia("'creapath.txt'")},
    {"borraimg.php", GuardaCopia("'imgborra.txt'")},
    {"dimensiona.php", GuardaCopia("basename($_GET['fichero'])")}};

QStringList EnSentencias(const QByteArray& lote)
{
    return Texto(lote).split("||\r\n", Qt::SkipEmptyParts);
}

QString Lista(const QStringList& textos)
{
    return textos.join(QStringLiteral(","));
}

QString SqlInserta(const QString& tabla, const QMap<QString, QString>& valores)
{
    return "INSERT INTO " + tabla + " (" + Lista(valores.keys()) + ") VALUES (" +
           Lista(valores.values()) + ");\n";
}

QMap<QString, QString> Sobre(QMap<QString, QString> valores, const QMap<QString, QString>& cambios)
{
    for (auto cambio = cambios.begin(); cambio != cambios.end(); ++cambio)
        valores[cambio.key()] = cambio.value();
    return valores;
}

QString Entre(const QString& texto)
{
    return u'\'' + texto + u'\'';
}

} // namespace

QStringList ResultadoCorrida::Sentencias() const
{
    QStringList todas;
    for (const QByteArray& lote : lotes)
        todas << EnSentencias(lote);
    return todas;
}

QStringList ResultadoCorrida::SentenciasDe(int lote) const
{
    return EnSentencias(lotes.value(lote));
}

QStringList ResultadoCorrida::Lineas(const QString& nombre) const
{
    QStringList todas;
    for (const Lista& lista : listas)
        if (lista.nombre == nombre)
            todas << lista.lineas;
    return todas;
}

QStringList ResultadoCorrida::Titulos() const
{
    static const QRegularExpression titulo("^(EJECUTANDO REMOTAMENTE|SINCRONIZANDO) ");
    return log.filter(titulo);
}

QStringList ResultadoCorrida::Log(const QString& desde, const QString& hasta) const
{
    const qsizetype primera = log.indexOf(desde);
    const qsizetype ultima = log.indexOf(hasta, primera);
    return primera < 0 || ultima < 0 ? log : log.mid(primera, ultima - primera + 1);
}

QStringList ResultadoCorrida::Sentencias(const QString& comienzo) const
{
    QStringList halladas;
    for (const QString& sentencia : Sentencias())
        if (sentencia.startsWith(comienzo))
            halladas << sentencia;
    return halladas;
}

EmpresaReal::EmpresaReal(TiendaDePrueba& tienda, const QMap<QString, QString>& parametros)
    : tienda_(tienda)
{
    for (const char* nombre : {"bases", "PHPSHOP", "HISTORICOWEB"})
        carpeta_.CreaCarpeta(nombre);
    for (const QString& guion : QDir(KOV_FUENTES "/PHPSHOP").entryList({"*.php"}))
        carpeta_.Escribe("PHPSHOP/" + guion,
                         FicheroDeGuion.value(guion) + LeeTodo(KOV_FUENTES "/PHPSHOP/" + guion));

    const QString empresa = QString::fromUtf8(LeeTodo(KOV_FUENTES "/demo/empresa/empresa.sql"));
    const QString tablaEmpresa = empresa.left(empresa.indexOf("INSERT INTO"));
    const QMap<QString, QString> valores =
        Sobre({{"CODEMPRESA", "'000001'"},
               {"DESCRIPCION", "'Casa de prueba'"},
               {"PS_MODOCONFIGURADOR", "False"},
               {"USER_BD", Entre(tienda.Usuario())},
               {"PASS_BD", Entre(tienda.Clave())},
               {"SERVER_BD", "'127.0.0.1'"},
               {"PUERTO_BD", Entre(QString::number(tienda.PuertoMysql()))},
               {"NOMBRE_BD", Entre(tienda.Bd())},
               {"USER_FTP", Entre(tienda.UsuarioFtp())},
               {"PASS_FTP", Entre(tienda.ClaveFtp())},
               {"SERVER_FTP", "'127.0.0.1'"},
               {"PUERTO_FTP", Entre(QString::number(tienda.PuertoFtp()))},
               {"PS_PREFIJO", Entre(tienda.Prefijo())},
               {"CARPETA_TIENDA", Entre(tienda.CarpetaFtp())},
               {"WWW", Entre(tienda.Www())},
               {"PS_VERSION", tienda.Version().startsWith("1.6.1") ? "1" : "0"},
               {"PS_IDIOMA", "1"}},
              parametros);
    const QString fila = SqlInserta("M_EMPRESA", valores);
    SqlComun(tablaEmpresa + fila);
    Sql(tablaEmpresa + fila +
        QString::fromUtf8(LeeTodo(KOV_FUENTES "/demo/empresa/00_tablas.sql")));
}

QString EmpresaReal::FicheroDeBase(const QString& nombre) const
{
    return ::FicheroDeBase(carpeta_.Ruta("bases/" + nombre));
}

QString EmpresaReal::CadenaDeBase() const
{
    return ::CadenaDeBase(carpeta_.Ruta("bases/BD000001"));
}

void EmpresaReal::Sql(const QString& guion)
{
    EjecutaGuion(FicheroDeBase(), guion);
}

void EmpresaReal::SqlComun(const QString& guion)
{
    EjecutaGuion(FicheroDeBase("BDLOCAL"), guion);
}

void EmpresaReal::EjecutaGuion(const QString& base, const QString& guion)
{
    carpeta_.Escribe("guion.sql", guion.toUtf8());
    QProcess proceso;
    proceso.start(KOV_CONSTRUCCION "/kovtolmo-sql", {base, carpeta_.Ruta("guion.sql")});
    if (!proceso.waitForFinished(60000) || proceso.exitCode() != 0)
        throw ErrorTienda("kovtolmo-sql: " + proceso.readAllStandardError().toStdString());
    QFile::remove(carpeta_.Ruta("guion.sql"));
}

ResultadoCorrida EmpresaReal::Corre(const QString& lineaDeOrdenes)
{
    return Observa([&](ResultadoCorrida& resultado) { return Lanza(lineaDeOrdenes, resultado); });
}

ResultadoCorrida EmpresaReal::Observa(const std::function<int(ResultadoCorrida&)>& corre)
{
    const QString log =
        "HISTORICOWEB/" + QDate::currentDate().toString("yyyyMMdd") + "VUELCOPRESTASHOP.TXT";
    const qint64 antes = carpeta_.Lee(log).size();
    tienda_.Marca();
    for (const QString& copia : tienda_.Ficheros("copias"))
        tienda_.BorraFichero(copia);

    ResultadoCorrida resultado;
    resultado.estado = corre(resultado);

    static const QRegularExpression momento("^\\[\\d\\d/\\d\\d/\\d{4} \\d{1,2}:\\d\\d:\\d\\d\\] ");
    for (QString linea : Texto(carpeta_.Lee(log).mid(antes)).split("\r\n"))
        resultado.log << linea.remove(momento);
    for (const QString& copia : tienda_.Ficheros("copias")) {
        const QByteArray contenido = tienda_.LeeFichero(copia);
        if (copia.endsWith("-sentencias.sql"))
            resultado.lotes << contenido;
        else
            resultado.listas.append({.nombre = copia.section(u'-', 1),
                                     .lineas = Texto(contenido).split("\r\n", Qt::SkipEmptyParts)});
    }
    resultado.ftp = tienda_.ComandosFtp();
    resultado.http = tienda_.PeticionesHttp();
    return resultado;
}

/// \returns the exit status, -1 for a crash or a run that didn't end in time
int EmpresaReal::Lanza(const QString& lineaDeOrdenes, ResultadoCorrida& resultado)
{
    QProcess proceso;
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const char* nombre : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        variables.remove(nombre);
    variables.insert("PATH_CONNECT", carpeta_.Ruta("bases"));
    for (auto par = entorno.begin(); par != entorno.end(); ++par)
        variables.insert(par.key(), par.value());
    proceso.setProcessEnvironment(variables);
    proceso.setWorkingDirectory(carpeta_.Ruta());
    proceso.setStandardInputFile(QProcess::nullDevice());
    QStringList orden = delante;
    orden << KOV_CONSTRUCCION "/kovtolmo" << lineaDeOrdenes.split(u' ', Qt::SkipEmptyParts);
    const QString primera = orden.takeFirst();
    proceso.start(primera, orden);

    QElapsedTimer reloj;
    reloj.start();
    bool hecho = !entonces;
    while (proceso.state() != QProcess::NotRunning && reloj.elapsed() < segundos * 1000) {
        proceso.waitForReadyRead(100);
        resultado.salida += QString::fromUtf8(proceso.readAllStandardOutput());
        if (!hecho && resultado.salida.contains(cuando)) {
            hecho = true;
            entonces();
        }
    }
    int estado = -1;
    if (proceso.state() != QProcess::NotRunning) {
        proceso.kill();
        proceso.waitForFinished();
    } else if (proceso.exitStatus() == QProcess::NormalExit) {
        estado = proceso.exitCode();
    }
    resultado.salida += QString::fromUtf8(proceso.readAllStandardOutput());
    resultado.errores = QString::fromUtf8(proceso.readAllStandardError());
    return estado;
}

void PrintTo(const QString& texto, std::ostream* salida)
{
    *salida << '"' << texto.toStdString() << '"';
}

std::string EnLineas(const QStringList& lista)
{
    QString texto;
    for (QString linea : lista)
        texto += linea.replace("\r", "\\r").replace("\n", "\\n") + u'\n';
    return texto.toStdString();
}

QStringList PasosFtp(const QStringList& ordenes)
{
    static const QRegularExpression interesa("^(USER|DELE|STOR)\\b");
    static const QRegularExpression carpeta("\\S*/");
    static const QRegularExpression respuesta(" \\d{3}$");
    QStringList pasos;
    for (QString orden : ordenes.filter(interesa)) {
        if (orden.startsWith("USER"))
            orden = "sesion";
        pasos << orden.remove(respuesta).remove(carpeta);
    }
    return pasos;
}

QStringList PasosDeLote()
{
    return {"DELE bdtolmo.ccc",    "STOR bdtolmo.ccc", "DELE sentencias.sql",
            "STOR sentencias.sql", "DELE bdtolmo.ccc", "DELE sentencias.sql"};
}

QStringList PasosDeCabecera()
{
    return {"sesion",
            "DELE ejecuta.php",
            "STOR ejecuta.php",
            "DELE dimensiona.php",
            "STOR dimensiona.php",
            "DELE borraimg.php",
            "STOR borraimg.php",
            "DELE creapath.php",
            "STOR creapath.php",
            "DELE borracache.php",
            "STOR borracache.php",
            "DELE borraimgobsoletas.php",
            "STOR borraimgobsoletas.php"};
}

QString HoyMysql()
{
    return "CAST('" + QDate::currentDate().toString("yyyy/MM/dd") + "' AS DATE)";
}

QString SqlArticulo(const QString& codigo, const QMap<QString, QString>& cambios)
{
    return SqlInserta("M_ARTIC", Sobre({{"CODARTICULO", Entre(codigo)},
                                        {"CODALTERNATIVO", Entre("ALT" + codigo)},
                                        {"DESCRIPCION", Entre("Art " + codigo)},
                                        {"DESCRIPCIO2", Entre("Corta " + codigo)},
                                        {"NOTAS", Entre("Notas " + codigo)},
                                        {"CODIVA", "1"},
                                        {"PVP1", "10.5"},
                                        {"PVP2", "9.25"},
                                        {"PVP3", "8"},
                                        {"PVP4", "7.1"},
                                        {"PVP5", "6.0005"},
                                        {"KILOS", "1.25"},
                                        {"ACTIVOWEB", "'S'"},
                                        {"FAVORITO", "False"},
                                        {"FECHAMODIFICACION", "#01/10/2020#"}},
                                       cambios));
}

QString SqlFamilia(const QString& clave, int nivel, const QString& descripcion,
                   const QMap<QString, QString>& cambios)
{
    return SqlInserta("M_FAMILIA", Sobre({{"CLAVE", Entre(clave)},
                                          {"NIVEL", Entre(QString::number(nivel))},
                                          {"DESCRIPCION", Entre(descripcion)},
                                          {"ACTIVOWEB", "'S'"}},
                                         cambios));
}
