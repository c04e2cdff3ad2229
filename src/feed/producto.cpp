#include "feed/producto.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include "feed/documento.h"
#include "feed/quita_url.h"
#include "sync/articulos.h"
#include "sync/etiquetas.h"

namespace tolmo::feed {
namespace {

using data::Plantilla;
using data::Recordset;
using data::Texto;

// clang-format off
constexpr Plantilla AbreProducto(u"<PRODUCT>");
constexpr Plantilla LineaProductId(u"<PRODUCT_ID><![CDATA[{codigo}{sufijo}]]></PRODUCT_ID>");
constexpr Plantilla LineaTitle(u"<TITLE><![CDATA[{Descripcion}{sufijo}]]></TITLE>");
constexpr Plantilla LineaDescription(u"<DESCRIPTION><![CDATA[{descripcion}]]></DESCRIPTION>");
constexpr Plantilla LineaSector(u"<SECTOR>{sector}</SECTOR>");
constexpr Plantilla LineaPrice(u"<PRICE>{precio}</PRICE>");
constexpr Plantilla LineaShipping(u"<SHIPPING>48</SHIPPING>");
constexpr Plantilla LineaMinimum(u"<MINIMUM>1</MINIMUM>");
constexpr Plantilla LineaUnitType(u"<UNIT_TYPE>9</UNIT_TYPE>");
constexpr Plantilla AbreFotos(u"<PHOTOS>");
constexpr Plantilla LineaPhoto(u"<PHOTO><![CDATA[{WWW}img/p/{id_image}.jpg]]></PHOTO>");
constexpr Plantilla CierraFotos(u"</PHOTOS>");
constexpr Plantilla AbreKeywords(u"<KEYWORDS>");
constexpr Plantilla LineaKeyword(u"<KEYWORD><![CDATA[{keyword}]]></KEYWORD>");
constexpr Plantilla CierraKeywords(u"</KEYWORDS>");
constexpr Plantilla CierraProducto(u"</PRODUCT>");

constexpr Plantilla CampoQueFalta(u"La tabla de artículos no tiene el campo \"{campo}\" que nombra la configuración de Solostocks.");
constexpr Plantilla PrecioQueNoEsNumero(u"No coinciden los tipos: el campo \"{campo}\" no es un número.");
// clang-format on

constexpr int ErrorTipos = 13;

/// A field that the configuration names; an empty name is that of no field.
const data::Valor& Campo(const Recordset& articulo, const QString& campo)
{
    if (!articulo.TieneColumna(campo))
        throw data::ErrorEjecucion(data::numero_error::ElementoNoHallado,
                                   CampoQueFalta({{"campo", campo}}));
    return articulo[campo];
}

QString CodigoDe(const Configuracion& configuracion, const Recordset& articulo)
{
    if (configuracion.UsaCodAlternativo && !data::EstaVacio(articulo["codalternativo"]))
        return Texto(articulo["codalternativo"]);
    return Texto(articulo["CodArticulo"]);
}

QString DescripcionDe(const Recordset& articulo)
{
    const QString notas = QuitaUrl(Texto(articulo["notas"]));
    return notas.isEmpty() ? Texto(articulo["Descripcion"]) : notas;
}

double PrecioDe(const Recordset& articulo, const QString& campo)
{
    const data::Valor& precio = Campo(articulo, campo);
    // A field that holds no prices must not pass for a list of gifts.
    if (!data::EstaVacio(precio) && !data::EsNumerico(Texto(precio)))
        throw data::ErrorEjecucion(ErrorTipos, PrecioQueNoEsNumero({{"campo", campo}}));
    return data::ValorNumerico(precio);
}

void EscribeFotos(Documento& documento, const QString& CodArticulo)
{
    data::Programa& programa = documento.programa;
    QString sql = sync::SqlDeProductos(CodArticulo);
    auto filas = data::AbreConsulta(programa, sql);
    for (; !filas.Fin(); filas.Siguiente())
        documento.Linea(
            LineaPhoto({{"WWW", programa.parametros.WWW}, {"id_image", Texto(filas["id_image"])}}));
}

void EscribeKeywords(Documento& documento, const Recordset& articulo)
{
    const QString& campo = documento.configuracion.CampoKeywords;
    if (campo.isEmpty())
        return;
    for (const QString& keyword : sync::ParteEtiquetas(Texto(Campo(articulo, campo))))
        documento.Linea(LineaKeyword({{"keyword", keyword}}));
}

} // namespace

void GeneraProducto(Documento& documento, const QString& sufijoCodigo, const QString& sufijoTitulo,
                    double incremento, const Recordset& articulo)
{
    const Configuracion& configuracion = documento.configuracion;
    documento.Linea(AbreProducto());
    documento.Linea(
        LineaProductId({{"codigo", CodigoDe(configuracion, articulo)}, {"sufijo", sufijoCodigo}}));
    documento.Linea(
        LineaTitle({{"Descripcion", Texto(articulo["Descripcion"])}, {"sufijo", sufijoTitulo}}));
    documento.Linea(LineaDescription({{"descripcion", DescripcionDe(articulo)}}));
    documento.Linea(LineaSector({{"sector", Texto(Campo(articulo, configuracion.CampoSector))}}));
    documento.Linea(LineaPrice(
        {{"precio", Texto(PrecioDe(articulo, configuracion.CampoPrecio) + incremento)}}));
    documento.Linea(LineaShipping());
    documento.Linea(LineaMinimum());
    documento.Linea(LineaUnitType());
    documento.Linea(AbreFotos());
    EscribeFotos(documento, Texto(articulo["CodArticulo"]));
    documento.Linea(CierraFotos());
    documento.Linea(AbreKeywords());
    EscribeKeywords(documento, articulo);
    documento.Linea(CierraKeywords());
    documento.Linea(CierraProducto());
}

} // namespace tolmo::feed
