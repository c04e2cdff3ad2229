#include "sync/retirados.h"
#include "sync/corrida.h"
#include "sync/url_amigable.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlProductos(u"SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.supplier_reference FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product");
constexpr Plantilla SqlPublicado(u"SELECT CODARTICULO FROM {PS_TABLAARTIC} WHERE CODARTICULO='{reference}' AND ( ACTIVOWEB IN ('{lista}')  OR EMPRESASWEB LIKE '%,{empresa},%')AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)");

constexpr Plantilla ImagenSuelta(u"img/p/{id_image}.jpg;");
constexpr Plantilla ImagenEnCarpeta(u"img/p/{dir}/{id_image}.jpg;");
constexpr Plantilla TamanosDeImagen(u"img/p/{dir}/{id_image}-*.jpg;");
constexpr Plantilla SqlBorraTextosImagen(u"DELETE FROM ps_image_lang where id_image={id_image}||");
constexpr Plantilla SqlBorraImagen(u"DELETE FROM ps_image where id_image={id_image}||");
constexpr Plantilla SqlBorraTiendasImagen(u"DELETE FROM ps_image_shop where id_image={id_image}||");

constexpr Plantilla SqlBorraProducto(u"DELETE FROM ps_product WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraTiendas(u"DELETE FROM ps_product_shop WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraTextos(u"DELETE FROM ps_product_lang WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraCategorias(u"DELETE FROM ps_category_product WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraPrecios(u"DELETE FROM ps_specific_price WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraCombinaciones(u"DELETE FROM ps_product_attribute WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraValores(u"DELETE FROM ps_product_attribute_combination WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='{id}'||");
constexpr Plantilla SqlBorraCombinacionesTiendaNueva(u"DELETE FROM ps_product_attribute_shop WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraCombinacionesTienda(u"DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='{id}'||");
constexpr Plantilla SqlBorraEtiquetas(u"DELETE FROM ps_product_tag WHERE id_product='{id}'||");
constexpr Plantilla SqlBorraExistencias(u"DELETE FROM ps_stock_available WHERE id_product='{id}' ||");
constexpr Plantilla SqlBorraImagenesDeCombinacion(u"DELETE FROM ps_product_attribute_image WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='{id}'||");

constexpr Plantilla Borrando(u"Borrando Artículo {id_product} / {supplier_reference}");
constexpr Plantilla TituloLote(u"EJECUTANDO REMOTAMENTE Borrando artículos (...{contador})");
// clang-format on

constexpr int ProductosPorLote = 100;

bool EstaPublicado(Corrida& corrida, const QString& reference)
{
    const data::Parametros& parametros = corrida.Parametros();
    return !LeeLocal(corrida, SqlPublicado({{"PS_TABLAARTIC", parametros.PS_TABLAARTIC},
                                            {"reference", reference},
                                            {"lista", ListaSql(parametros.CADACTIVOWEB)},
                                            {"empresa", corrida.programa.CodigoEmpresa()}}))
                .Fin();
}

/// Only for a product's first picture, by design: the files of its others stay on the server.
void AnotaFicheros(batch::Lote& lote, const QString& id_image)
{
    const QString dir = CadenaDirImage(id_image);
    lote.AnadeImgBorra(ImagenSuelta({{"id_image", id_image}}));
    lote.AnadeImgBorra(ImagenEnCarpeta({{"dir", dir}, {"id_image", id_image}}));
    lote.AnadeImgBorra(TamanosDeImagen({{"dir", dir}, {"id_image", id_image}}));
}

void BorraImagen(batch::Lote& lote, const data::Valor& id_image)
{
    if (data::EstaVacio(id_image))
        return;
    for (const Plantilla& borra : {SqlBorraTextosImagen, SqlBorraImagen, SqlBorraTiendasImagen})
        lote.EscribeSentencia(borra({{"id_image", data::Texto(id_image)}}));
}

/// The product goes before what depends on it, which a batch of plain sentences allows.
void BorraProducto(Corrida& corrida, const QString& id)
{
    const bool esquemaNuevo = corrida.Parametros().PS_VERSION > 0;
    for (const Plantilla& borra :
         {SqlBorraProducto, SqlBorraTiendas, SqlBorraTextos, SqlBorraCategorias, SqlBorraPrecios,
          SqlBorraCombinaciones, SqlBorraValores,
          esquemaNuevo ? SqlBorraCombinacionesTiendaNueva : SqlBorraCombinacionesTienda,
          SqlBorraEtiquetas, SqlBorraExistencias, SqlBorraImagenesDeCombinacion})
        corrida.lote.EscribeSentencia(borra({{"id", id}}));
}

/// Walks the rows of one product, one for each picture, and stays on the last of them.
template <typename HazConFila> void RecorreProducto(data::Recordset& productos, HazConFila haz)
{
    const QString id = TextoO(productos["id_product"]);
    while (!productos.Fin() && TextoO(productos["id_product"]) == id) {
        haz(productos);
        productos.Siguiente();
    }
    productos.Anterior();
}

void Retira(Corrida& corrida, data::Recordset& productos)
{
    const QString id = TextoO(productos["id_product"]);
    corrida.RegistraLog(Borrando(
        {{"id_product", id}, {"supplier_reference", TextoO(productos["supplier_reference"])}}));
    AnotaFicheros(corrida.lote, TextoO(productos["id_image"]));
    RecorreProducto(productos, [&corrida](const data::Recordset& fila) {
        BorraImagen(corrida.lote, fila["id_image"]);
    });
    BorraProducto(corrida, id);
}

} // namespace

void RetiraArticulos(Corrida& corrida)
{
    auto productos = LeeTienda(corrida, SqlProductos());
    corrida.RegistraLog(QStringLiteral("Comprobando articulos que ya no estan..."));
    int contador = 0;
    bool escrito = false;
    while (!productos.Fin()) {
        if (EstaPublicado(corrida, TextoO(productos["reference"]))) {
            RecorreProducto(productos, [](const data::Recordset&) {});
        } else {
            Retira(corrida, productos);
            escrito = true;
        }
        corrida.progreso.Avanza(productos.AbsolutePosition(), productos.RecordCount());
        productos.Siguiente();
        ++contador;
        if (escrito && (contador % ProductosPorLote == 0 || productos.Fin())) {
            VuelcaLote(corrida, TituloLote({{"contador", data::Texto(contador)}}));
            escrito = false;
        }
        corrida.progreso.CedeEventos();
    }
}

} // namespace tolmo::sync
