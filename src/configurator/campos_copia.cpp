#include "configurator/campos_copia.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;

/// A master whose codes have a width of their own.
struct Maestra {
    Plantilla columna;
    Plantilla masLargo;
    Plantilla fila;
};

// clang-format off
constexpr Maestra Grupos{
    Plantilla(u"SELECT CodGrupo FROM M_GRUPART WHERE FALSE"),
    Plantilla(u"SELECT MAX(LEN(CodGrupo)) AS ancho FROM M_GRUPART"),
    Plantilla(u"SELECT * FROM M_GRUPART WHERE CodGrupo='{codigo}'")};
constexpr Maestra Proveedores{
    Plantilla(u"SELECT CodProveedor FROM M_PROVE WHERE FALSE"),
    Plantilla(u"SELECT MAX(LEN(CodProveedor)) AS ancho FROM M_PROVE"),
    Plantilla(u"SELECT * FROM M_PROVE WHERE CodProveedor='{codigo}'")};
// clang-format on

int AnchoDe(data::Programa& programa, const Maestra& maestra)
{
    const auto columna = LeeLocal(programa, maestra.columna());
    if (const int declarado = columna.Campos().front().ancho; declarado > 0)
        return declarado;
    const auto masLargo = LeeLocal(programa, maestra.masLargo());
    return static_cast<int>(data::ValorNumerico(masLargo["ancho"]));
}

CodigoDescrito Comprueba(data::Programa& programa, const Maestra& maestra, const QString& texto)
{
    CodigoDescrito leido{.codigo = texto};
    if (!texto.isEmpty())
        leido.codigo = data::RellenaCeros(texto, AnchoDe(programa, maestra));
    const auto fila = LeeLocal(programa, maestra.fila({{"codigo", leido.codigo}}));
    if (!fila.Fin())
        leido.descripcion = data::Texto(fila["Descripcion"]);
    return leido;
}

} // namespace

CodigoDescrito CompruebaGrupo(data::Programa& programa, const QString& texto)
{
    return Comprueba(programa, Grupos, texto);
}

CodigoDescrito CompruebaProveedor(data::Programa& programa, const QString& texto)
{
    return Comprueba(programa, Proveedores, texto);
}

} // namespace tolmo::configurator
