#include "site/puerto_ftp.h"
#include "site/sitio.h"

namespace tolmo::site {
namespace {

const QStringList Guiones{
    QStringLiteral("ejecuta.php"),    QStringLiteral("dimensiona.php"),
    QStringLiteral("borraimg.php"),   QStringLiteral("creapath.php"),
    QStringLiteral("borracache.php"), QStringLiteral("borraimgobsoletas.php")};

} // namespace

Sitio::Sitio(data::Programa& programa, batch::Escritores& escritores, batch::Registro& registro,
             data::Progreso& progreso, const Esperas& esperas)
    : programa_(programa), escritores_(escritores), registro_(registro), progreso_(progreso),
      esperas_(esperas), mFTP_(esperas)
{
    mFTP_.SetModeActive();
    mFTP_.SetTransferBinary();
    mFTP_.CedeEventos = [this] { progreso_.CedeEventos(); };
}

void Sitio::AbrirFTP()
{
    const data::Parametros& parametros = programa_.parametros;
    mFTP_.CloseConnection();
    if (!mFTP_.OpenConnection(parametros.Server_Ftp, PuertoFtp(parametros.Puerto_Ftp),
                              parametros.User_Ftp, parametros.Pass_Ftp))
        registro_.RegistraLog(QStringLiteral("No se ha podido conectar con el servidor ftp ") +
                              parametros.Server_Ftp);
}

void Sitio::CierraFTP()
{
    mFTP_.CloseConnection();
}

bool Sitio::SubirFicheroWeb(const QString& RutaFLocal, const QString& NombreFDestino,
                            const QString& CarpetaDestino)
{
    mFTP_.SetFTPDirectory(CarpetaDestino);
    if (mFTP_.FTPUploadFile(RutaFLocal, NombreFDestino))
        return true;
    registro_.RegistraLog(QStringLiteral("Error subiendo fichero ") + RutaFLocal);
    return false;
}

void Sitio::BorrarFicheroWeb(const QString& Fichero)
{
    mFTP_.DeleteFTPFile(Fichero);
}

void Sitio::SubirFicherosScripts()
{
    for (const QString& guion : Guiones) {
        BorrarFicheroWeb(guion);
        if (SubirFicheroWeb(programa_.RutaActual(QStringLiteral("\\PHPSHOP\\") + guion), guion,
                            programa_.parametros.Carpeta_tienda))
            continue;
        registro_.RegistraLog(QStringLiteral("ERROR SUBIENDO FICHERO ") + guion);
        progreso_.HabilitaPestanas(true);
        return;
    }
}

bool Sitio::TransferenciaAbierta() const
{
    return mFTP_.TransferenciaAbierta();
}

} // namespace tolmo::site
