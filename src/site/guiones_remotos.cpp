#include "batch/trabajo.h"
#include "data/rutas.h"
#include "site/DescargaFicheroWeb.h"
#include "site/sitio.h"

namespace tolmo::site {
namespace {

const QString SaltoSangrado = QStringLiteral("\r\n        ");
const QString NombreCredenciales = QStringLiteral("bdtolmo.ccc");
const QString NombreSentencias = QStringLiteral("sentencias.sql");

} // namespace

void Sitio::EjecutaPHP(const QString& FicheroSentencias, const QString& Proceso)
{
    const QString& carpeta = programa_.parametros.Carpeta_tienda;
    registro_.RegistraLog(QStringLiteral("SUBIENDO FICHERO ") +
                          data::NombreEnDisco(FicheroSentencias));
    const QString credenciales =
        programa_.RutaActual(QStringLiteral("\\PHPSHOP\\") + NombreCredenciales);
    EscribeCredenciales(credenciales);
    BorrarFicheroWeb(NombreCredenciales);
    if (!SubirFicheroWeb(credenciales, NombreCredenciales, carpeta)) {
        registro_.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + NombreCredenciales);
        return;
    }
    batch::BorraFicheroLocal(credenciales);
    registro_.RegistraLog(Proceso);
    BorrarFicheroWeb(NombreSentencias);
    // No return here, on purpose: the script is fired all the same and finds an old file or none.
    if (!SubirFicheroWeb(FicheroSentencias, NombreSentencias, carpeta))
        registro_.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + NombreSentencias);
    RegistraRespuesta(RecuperaGuion(QStringLiteral("ejecuta.php")));
    BorrarFicheroWeb(NombreCredenciales);
    BorrarFicheroWeb(NombreSentencias);
}

void Sitio::BorraCachePrestashop()
{
    registro_.RegistraLog(QStringLiteral("BORRANDO CACHÉ DE PRESTASHOP"));
    RecuperaGuion(QStringLiteral("borracache.php"));
}

QString Sitio::RecuperaPagina(const QString& URL)
{
    return site::RecuperaPagina(URL, esperas_);
}

QString Sitio::RecuperaGuion(const QString& guion)
{
    return RecuperaPagina(programa_.parametros.WWW + guion);
}

void Sitio::EscribeCredenciales(const QString& ruta)
{
    const data::Parametros& parametros = programa_.parametros;
    batch::BorraFicheroLocal(ruta);
    for (const QString& linea : {parametros.Nombre_Bd, parametros.User_Bd, parametros.Pass_Bd})
        escritores_.EscribeFichero(ruta, batch::Modo::TC, linea);
}

/// Success prints nothing, and so does a fetch that failed: neither is told apart or logged.
void Sitio::RegistraRespuesta(const QString& respuesta)
{
    if (respuesta.contains(FraseSinMysql, Qt::CaseInsensitive))
        registro_.RegistraLog(QStringLiteral("ERROR AL CONECTAR A LA BASE DE DATOS"));
    if (!respuesta.contains(FraseErrorConsulta, Qt::CaseInsensitive))
        return;
    registro_.RegistraLog(QStringLiteral("ERRORES EJECUTANDO SENTENCIAS"));
    QString detalle = respuesta;
    detalle.replace(QStringLiteral("\r\n"), SaltoSangrado);
    detalle.replace(QStringLiteral("<br>"), SaltoSangrado);
    registro_.RegistraLog(SaltoSangrado + detalle);
}

} // namespace tolmo::site
