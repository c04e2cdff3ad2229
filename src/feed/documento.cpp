#include "feed/documento.h"
#include "configurator/consulta_combinaciones.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include "feed/combinaciones.h"
#include "feed/producto.h"
#include "sync/corrida.h"

namespace tolmo::feed {
namespace {

using data::Plantilla;
using data::Recordset;
using data::Texto;

// Nothing is escaped, here and in the products: the marketplace takes the texts as they come.
// clang-format off
constexpr Plantilla LineaDeclaracion(u"<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
constexpr Plantilla AbreSincro(u"<SINCRO_DETAILS>");
constexpr Plantilla LineaCompany(u"<COMPANY>{Company}</COMPANY>");
constexpr Plantilla LineaCountry(u"<COUNTRY>67</COUNTRY>");
constexpr Plantilla AbreProductos(u"<PRODUCTS>");
constexpr Plantilla CierraProductos(u"</PRODUCTS>");
constexpr Plantilla CierraSincro(u"</SINCRO_DETAILS>");

constexpr Plantilla SqlArticulosWeb(u"SELECT * FROM {PS_TABLAARTIC} WHERE ACTIVOWEB IN ('{lista}') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)");
// clang-format on

QStringList CategoriasDe(data::Programa& programa, const QString& CodArticulo)
{
    QString sql = configurator::SqlCategoriasDeArticulo(CodArticulo);
    auto filas = data::AbreLectura(programa, sql, programa.ConexionLocal);
    QStringList categorias;
    for (; !filas.Fin(); filas.Siguiente())
        categorias << Texto(filas["CODCATEGORIA"]);
    return categorias;
}

/// An article with combinations is written as these, and not as such.
void GeneraArticulo(Documento& documento, const Recordset& articulo)
{
    const QStringList categorias = CategoriasDe(documento.programa, Texto(articulo["CodArticulo"]));
    if (!categorias.isEmpty() && documento.configuracion.GeneraCombinaciones)
        GeneraCombinaciones(documento, articulo, categorias);
    else
        GeneraProducto(documento, {}, {}, 0, articulo);
}

} // namespace

void EscribeDocumento(Documento& documento, data::Progreso& progreso)
{
    data::Programa& programa = documento.programa;
    documento.Linea(LineaDeclaracion());
    documento.Linea(AbreSincro());
    documento.Linea(LineaCompany({{"Company", documento.configuracion.Company}}));
    documento.Linea(LineaCountry());
    documento.Linea(AbreProductos());
    QString sql = SqlArticulosWeb({{"PS_TABLAARTIC", programa.parametros.PS_TABLAARTIC},
                                   {"lista", sync::ListaSql(programa.parametros.CADACTIVOWEB)}});
    auto articulos = data::AbreLectura(programa, sql, programa.ConexionLocal);
    for (; !articulos.Fin(); articulos.Siguiente()) {
        GeneraArticulo(documento, articulos);
        progreso.Avanza(articulos.AbsolutePosition(), articulos.RecordCount());
    }
    documento.Linea(CierraProductos());
    documento.Linea(CierraSincro());
}

} // namespace tolmo::feed
