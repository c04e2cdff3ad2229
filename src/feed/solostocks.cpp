#include "feed/solostocks.h"
#include "batch/trabajo.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include "data/rutas.h"
#include "feed/documento.h"
#include "feed/utf8.h"
#include "site/puerto_ftp.h"
#include "sync/articulos.h"
#include <QScopeGuard>

namespace tolmo::feed {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SinConexion(u"No se ha podido conectar con el servidor ftp {Server_Ftp}");
constexpr Plantilla SinSubida(u"Ocurrió un ERROR al subir el fichero KovTolmo.xml a {Server_Ftp}{carpeta}");
constexpr Plantilla Subido(u"Fichero subido corréctamente a {WWW}");
constexpr Plantilla NoSeBorra(u"No se puede borrar el fichero {ruta}.");
// clang-format on

/// Whatever the local file is called.
const QString NombreRemoto = QStringLiteral("KovTolmo.xml");

} // namespace

Solostocks::Solostocks(data::Programa& programa, data::Progreso& progreso,
                       const site::Esperas& esperas)
    : programa_(programa), progreso_(progreso), escritores_(programa), mFTP_(esperas)
{
    mFTP_.SetModeActive();
    mFTP_.SetTransferBinary();
    mFTP_.CedeEventos = [this] { progreso_.CedeEventos(); };
    programa_.DialectoActivo = data::Dialecto::MySql;
    programa_.ConexionTienda.Conecta(programa_.CadenaTienda());
    configuracion_ = LeeConfiguracion(programa_);
}

Destino Solostocks::DestinoInicial() const
{
    return {.ruta = programa_.RutaActual(QStringLiteral("\\HISTORICOWEB\\solostocks.xml")),
            .carpeta = programa_.parametros.Carpeta_tienda};
}

bool Solostocks::Genera(const Destino& destino)
{
    enMarcha_ = true;
    const auto fin = qScopeGuard([this] { enMarcha_ = false; });
    try {
        return GeneraYSube(destino);
    } catch (const data::ErrorFichero& error) {
        // Mostly a path that was mistyped, and the operator can mend it where it stands.
        programa_.avisos.Muestra(error.Descripcion(), data::estilo::Error);
        return false;
    } catch (const data::ErrorDatos& error) {
        throw data::ErrorEjecucion(error.Numero(), error.Descripcion());
    }
}

bool Solostocks::GeneraYSube(const Destino& destino)
{
    // It leaves the management database's dialect active, which then holds to the end: neither the
    // queries on the shop nor the lines of the file pass through a rewrite.
    sync::CreaTablaNotas(programa_);
    RehazFichero(destino.ruta);
    if (!Conecta())
        return false;
    mFTP_.SetFTPDirectory(destino.carpeta);
    PasaAUtf8(destino.ruta);
    BorrarFicheroWeb(NombreRemoto);
    MuestraSubida(SubirFicheroWeb(destino.ruta, NombreRemoto, destino.carpeta), destino.carpeta);
    return true;
}

void Solostocks::RehazFichero(const QString& ruta)
{
    batch::BorraFicheroLocal(ruta);
    if (data::ExisteFichero(ruta))
        throw data::ErrorFichero(NoSeBorra({{"ruta", ruta}}));
    Documento documento{.programa = programa_,
                        .configuracion = configuracion_,
                        .escritores = escritores_,
                        .ruta = ruta};
    EscribeDocumento(documento, progreso_);
}

bool Solostocks::Conecta()
{
    const data::Parametros& parametros = programa_.parametros;
    if (mFTP_.OpenConnection(parametros.Server_Ftp, site::PuertoFtp(parametros.Puerto_Ftp),
                             parametros.User_Ftp, parametros.Pass_Ftp))
        return true;
    programa_.avisos.Muestra(SinConexion({{"Server_Ftp", parametros.Server_Ftp}}),
                             data::estilo::Informacion);
    return false;
}

/// As for a run, but that a failure is told by the result alone: the feed keeps no log.
bool Solostocks::SubirFicheroWeb(const QString& RutaFLocal, const QString& NombreFDestino,
                                 const QString& CarpetaDestino)
{
    mFTP_.SetFTPDirectory(CarpetaDestino);
    return mFTP_.FTPUploadFile(RutaFLocal, NombreFDestino);
}

void Solostocks::BorrarFicheroWeb(const QString& Fichero)
{
    mFTP_.DeleteFTPFile(Fichero);
}

void Solostocks::MuestraSubida(bool subido, const QString& carpeta)
{
    const data::Parametros& parametros = programa_.parametros;
    if (subido)
        programa_.avisos.Muestra(Subido({{"WWW", parametros.WWW}}), data::estilo::Informacion);
    else
        programa_.avisos.Muestra(
            SinSubida({{"Server_Ftp", parametros.Server_Ftp}, {"carpeta", carpeta}}),
            data::estilo::Aviso);
}

} // namespace tolmo::feed
