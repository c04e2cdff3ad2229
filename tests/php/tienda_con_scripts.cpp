#include "php/tienda_con_scripts.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <unistd.h>

namespace {
/// The shop stands as it was made, but for its folder, of which there is a copy.
bool comoNueva = false;

QString Copia(const TiendaDePrueba& tienda)
{
    return tienda.Carpeta() + "/tmp/copia";
}

void Corre(const QString& programa, const QStringList& argumentos)
{
    if (QProcess::execute(programa, argumentos) != 0)
        throw ErrorTienda(programa.toStdString() + " failed");
}

/// The servers' user owns what the copy owns.
void CopiaCarpeta(const QString& desde, const QString& hasta)
{
    QDir().mkpath(hasta);
    Corre("find", {hasta, "-mindepth", "1", "-delete"});
    Corre("cp", {"-a", desde + "/.", hasta});
}

TiendaDePrueba& TiendaComoNueva()
{
    static TiendaDePrueba* tienda = nullptr;
    if (comoNueva && tienda) {
        CopiaCarpeta(Copia(*tienda), tienda->Raiz());
        tienda->Ejecuta("DROP TABLE IF EXISTS ps_prueba; DELETE FROM ps_image");
        return *tienda;
    }
    tienda = &TiendaComun();
    CopiaCarpeta(tienda->Raiz(), Copia(*tienda));
    comoNueva = true;
    return *tienda;
}
} // namespace

TiendaConScripts::TiendaConScripts(const OpcionesTienda& opciones) : tienda(TiendaComun(opciones))
{
    comoNueva = false;
    Prepara();
}

TiendaConScripts::TiendaConScripts(SoloFicheros) : tienda(TiendaComoNueva())
{
    Prepara();
}

void TiendaConScripts::Prepara() const
{
    const QDir scripts(KOV_FUENTES "/PHPSHOP");
    for (const QString& nombre : scripts.entryList({"*.php"}, QDir::Files)) {
        QFile fichero(scripts.filePath(nombre));
        if (!fichero.open(QIODevice::ReadOnly))
            throw ErrorTienda("cannot read " + nombre.toStdString());
        tienda.EscribeFichero(nombre, fichero.readAll());
    }
    QDir().mkpath(Fuera());
    QFile::setPermissions(Fuera(),
                          QFile::Permissions(0x7777)); // the servers' user could write here
}

TiendaConScripts::~TiendaConScripts()
{
    QDir(Fuera()).removeRecursively();
}

void TiendaConScripts::SubeCredenciales(const QString& clave) const
{
    const QString texto = tienda.Bd() + "\r\n" + tienda.Usuario() + "\r\n" +
                          (clave.isEmpty() ? tienda.Clave() : clave) + "\r\n";
    tienda.EscribeFichero("bdtolmo.ccc", texto.toLatin1());
}

void TiendaConScripts::Llena(const QStringList& rutas) const
{
    for (const QString& ruta : rutas)
        tienda.EscribeFichero(ruta, "foto");
}

QByteArray TiendaConScripts::Pide(const QString& script) const
{
    const TiendaDePrueba::Pagina pagina = tienda.PaginaWeb(script);
    return pagina.estado == 200 ? pagina.cuerpo : "HTTP " + QByteArray::number(pagina.estado);
}

QByteArray TiendaConScripts::EjecutaLote(const QByteArray& lote) const
{
    SubeCredenciales();
    tienda.EscribeFichero("sentencias.sql", lote);
    return Pide("ejecuta.php");
}

QStringList TiendaConScripts::Cabeceras(const QString& script) const
{
    QProcess curl;
    curl.start("curl",
               {"-s", "--noproxy", "*", "-D", "-", "-o", "/dev/null", tienda.Www() + script});
    curl.waitForFinished(30'000);
    return QString::fromLatin1(curl.readAllStandardOutput()).split("\r\n", Qt::SkipEmptyParts);
}

QString TiendaConScripts::Dato(const QString& consulta) const
{
    const auto filas = tienda.Sql(consulta);
    return filas.empty() ? QString() : filas.front().value(0);
}

void TiendaConScripts::EscribeAjustes(const QString& servidor, const QString& version) const
{
    const QStringList lineas{"<?php",
                             "define('_DB_SERVER_', '" + servidor + "');",
                             "define('_DB_NAME_', '" + tienda.Bd() + "');",
                             "define('_DB_USER_', '" + tienda.Usuario() + "');",
                             "define('_DB_PASSWD_', '" + tienda.Clave() + "');",
                             "define('_DB_PREFIX_', '" + tienda.Prefijo() + "');",
                             "define('_PS_VERSION_', '" + version + "');"};
    tienda.EscribeFichero("config/settings.inc.php", lineas.join('\n').toLatin1());
}

QString TiendaConScripts::Fuera(const QString& nombre) const
{
    return tienda.Carpeta() + "/tmp/fuera" + (nombre.isEmpty() ? "" : "/" + nombre);
}

void TiendaConScripts::Enlaza(const QString& ruta, const QString& destino) const
{
    if (!QFile::link(destino, tienda.Raiz() + '/' + ruta))
        throw ErrorTienda("cannot link " + ruta.toStdString());
}
