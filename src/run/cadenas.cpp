#include "run/cadenas.h"
#include "data/plantilla.h"

namespace tolmo::run {
namespace {

// clang-format off
constexpr data::Plantilla CadenaAccess(u"Provider=Microsoft.Jet.OLEDB.4.0;Data Source={RutaBD};Persist Security Info=False");
constexpr data::Plantilla CadenaIntegrada(u"Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog={catalogo};Data Source={ServidorSql}");
constexpr data::Plantilla CadenaConUsuario(u"Provider=SQLOLEDB.1;user id={usuario};password={clave};Initial Catalog={catalogo};Data Source={ServidorSql}");
// clang-format on

} // namespace

QString CadenaGestion(const data::Programa& programa, const QString& catalogo,
                      const Credenciales& credenciales)
{
    if (programa.TipoBaseDatos != data::Dialecto::SqlServer)
        return CadenaAccess({{"RutaBD", programa.RutaBD}});
    if (programa.ModoAutenticacion == QLatin1String("WINDOWS"))
        return CadenaIntegrada({{"catalogo", catalogo}, {"ServidorSql", programa.ServidorSql}});
    return CadenaConUsuario({{"usuario", credenciales.usuario},
                             {"clave", credenciales.clave},
                             {"catalogo", catalogo},
                             {"ServidorSql", programa.ServidorSql}});
}

} // namespace tolmo::run
