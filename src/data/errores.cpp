#include "data/errores.h"

namespace tolmo::data {

ErrorDatos::ErrorDatos(int numero, const QString& descripcion, const QString& modulo)
    : std::runtime_error(descripcion.toStdString()), numero_(numero), descripcion_(descripcion),
      modulo_(modulo)
{
}

ErrorTraduccion::ErrorTraduccion(const QString& descripcion)
    : ErrorDatos(numero_error::ArgumentoNoValido, descripcion, QStringLiteral("TraduceSql"))
{
}

ErrorEjecucion::ErrorEjecucion(int numero, const QString& descripcion)
    : std::runtime_error(descripcion.toStdString()), numero_(numero), descripcion_(descripcion)
{
}

ErrorFichero::ErrorFichero(const QString& descripcion)
    : std::runtime_error(descripcion.toStdString()), descripcion_(descripcion)
{
}

} // namespace tolmo::data
