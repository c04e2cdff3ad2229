#include "sync/categorias.h"
#include "sync/articulo.h"
#include "sync/corrida.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlBorraEnlaces(u"DELETE FROM ps_category_product where id_product={id}||");
constexpr Plantilla SqlEnlace(u"INSERT INTO ps_category_product (id_category,id_product,position) VALUES ({categoria},{id},{id})||");
constexpr Plantilla SqlCategoriaDeFamilia(u"SELECT id_category FROM ps_category WHERE kov_familia='{pieza}'");
// clang-format on

/// The product id is the position as well, so that the order in a category follows age.
void Enlaza(Corrida& corrida, const Articulo& articulo, const QString& categoria)
{
    corrida.lote.EscribeSentencia(SqlEnlace({{"categoria", categoria}, {"id", articulo.id}}));
}

} // namespace

void BorraCategorias(Corrida& corrida, const Articulo& articulo)
{
    corrida.lote.EscribeSentencia(SqlBorraEnlaces({{"id", articulo.id}}));
}

void EnlazaCategoria(Corrida& corrida, const Articulo& articulo)
{
    if (!data::EstaVacio(articulo.categoria))
        Enlaza(corrida, articulo, articulo.categoria);
}

void EnlazaInicio(Corrida& corrida, const Articulo& articulo)
{
    if (!data::EstaVacio(articulo.fila["FAVORITO"]))
        Enlaza(corrida, articulo, QStringLiteral("2"));
}

void EnlazaFamiliasAlternativas(Corrida& corrida, const Articulo& articulo)
{
    const QString familias = TextoO(articulo.fila["FAMALT"]);
    if (familias.isEmpty())
        return;
    for (const QString& pieza : familias.split(u',')) {
        const auto categoria = LeeTienda(corrida, SqlCategoriaDeFamilia({{"pieza", pieza}}));
        if (!categoria.Fin())
            Enlaza(corrida, articulo, TextoO(categoria["id_category"]));
    }
}

} // namespace tolmo::sync
