#include "site/puerto_ftp.h"
#include "data/errores.h"
#include "data/valores.h"

namespace tolmo::site {
namespace {

constexpr int ErrorTipos = 13;

} // namespace

int PuertoFtp(const QString& puerto)
{
    if (!data::EsNumerico(puerto))
        throw data::ErrorEjecucion(
            ErrorTipos,
            QStringLiteral("No coinciden los tipos: el puerto de FTP no es un número."));
    return static_cast<int>(data::ValorNumerico(puerto));
}

} // namespace tolmo::site
