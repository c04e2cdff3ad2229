#include "site/ErrorFtp.h"

namespace tolmo::site {
namespace {

QString Texto(int numero)
{
    switch (numero) {
    case error_ftp::NoHayFichero:
        return QStringLiteral("The system cannot find the file specified");
    case error_ftp::SinAcceso:
        return QStringLiteral("Access is denied");
    case error_ftp::AsaNoValida:
        return QStringLiteral("The handle is invalid");
    case error_ftp::SinMasFicheros:
        return QStringLiteral("There are no more files");
    case error_ftp::ParametroNoValido:
        return QStringLiteral("The parameter is incorrect");
    case error_ftp::Espera:
        return QStringLiteral("The operation timed out");
    case error_ftp::SinNombre:
        return QStringLiteral("The server name or address could not be resolved");
    case error_ftp::ClaveIncorrecta:
        return QStringLiteral("The supplied password is incorrect");
    case error_ftp::SinConexion:
        return QStringLiteral("A connection with the server could not be established");
    case error_ftp::Abortada:
        return QStringLiteral("The connection with the server was terminated abnormally");
    case error_ftp::Reiniciada:
        return QStringLiteral("The connection with the server was reset");
    case error_ftp::TransferenciaEnCurso:
        return QStringLiteral("There is already an FTP request in progress on this session");
    default:
        return {};
    }
}

} // namespace

ErrorFtp::ErrorFtp(int numero)
    : std::runtime_error(Texto(numero).toStdString()), numero_(numero), mensaje_(Texto(numero))
{
}

ErrorFtp::ErrorFtp(const QString& respuesta)
    : std::runtime_error(respuesta.toStdString()), numero_(error_ftp::Extendido),
      mensaje_(respuesta)
{
}

} // namespace tolmo::site
