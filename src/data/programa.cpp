#include "data/programa.h"
#include "data/plantilla.h"

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla TextoConexionTienda(u"Driver={controlador};Server={Server_Bd};Port={Puerto_Bd};Database={Nombre_Bd};User={User_Bd};Password={Pass_Bd};Option=3;");
// clang-format on

} // namespace

Programa::Programa(Avisos& avisosDelPrograma, Reloj& relojDelPrograma,
                   const FabricaProveedor& fabrica, const QString& carpeta)
    : ConexionLocal(fabrica), ConexionTienda(fabrica), carpetaActual(carpeta),
      avisos(avisosDelPrograma), reloj(relojDelPrograma)
{
}

QString Programa::CadenaTienda() const
{
    // The driver's braces are text of the connection string and no place, so they come as a value.
    return TextoConexionTienda({{"controlador", QStringLiteral("{MySQL ODBC 5.1 Driver}")},
                                {"Server_Bd", parametros.Server_Bd},
                                {"Puerto_Bd", parametros.Puerto_Bd},
                                {"Nombre_Bd", parametros.Nombre_Bd},
                                {"User_Bd", parametros.User_Bd},
                                {"Pass_Bd", parametros.Pass_Bd}});
}

QString FechaSql(const Programa& programa, const Valor& valor)
{
    return FechaSql(programa.DialectoActivo, valor);
}

} // namespace tolmo::data
