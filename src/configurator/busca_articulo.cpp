#include "configurator/busca_articulo.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlArticulo(u"SELECT * FROM {PS_TABLAARTIC} where CodArticulo='{CodArticulo}'");
constexpr Plantilla SqlAlternativo(u"select CODARTICULO,DESCRIPCION from {PS_TABLAARTIC} where CODALTERNATIVO='{CodAlternativo}'");
constexpr Plantilla CondicionArticulo(u"(codarticulo like '{texto}%')");
constexpr Plantilla CondicionAlternativo(u"(codalternativo like '{texto}%')");
// clang-format on

std::optional<QString> Descripcion(data::Programa& programa, const QString& sql)
{
    const auto fila = LeeLocal(programa, sql);
    return fila.Fin() ? std::nullopt : std::optional(data::Texto(fila["Descripcion"]));
}

} // namespace

std::optional<QString> DescripcionDeArticulo(data::Programa& programa, const QString& CodArticulo)
{
    return Descripcion(programa, SqlArticulo({{"PS_TABLAARTIC", programa.parametros.PS_TABLAARTIC},
                                              {"CodArticulo", CodArticulo}}));
}

std::optional<QString> DescripcionDeAlternativo(data::Programa& programa,
                                                const QString& CodAlternativo)
{
    return Descripcion(programa,
                       SqlAlternativo({{"PS_TABLAARTIC", programa.parametros.PS_TABLAARTIC},
                                       {"CodAlternativo", CodAlternativo}}));
}

QString FiltroPorArticulo(const QString& texto)
{
    return CondicionArticulo({{"texto", texto}});
}

QString FiltroPorAlternativo(const QString& texto)
{
    return CondicionAlternativo({{"texto", texto}});
}

} // namespace tolmo::configurator
