#include "sync/imagenes.h"
#include "data/rutas.h"
#include "sync/articulo.h"
#include "sync/corrida.h"
#include "sync/url_amigable.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla ImagenSuelta(u"img/p/{id_image}.jpg;");
constexpr Plantilla TamanosDeImagen(u"img/p/{dir}/{id_image}-*.jpg;");
constexpr Plantilla ImagenEnCarpeta(u"img/p/{dir}/{id_image}.jpg;");
constexpr Plantilla SqlBorraTextos(u"DELETE FROM ps_image_lang where id_image={id_image}||");
constexpr Plantilla SqlBorraImagen(u"DELETE FROM ps_image where id_image={id_image}||");
constexpr Plantilla SqlBorraTiendas(u"DELETE FROM ps_image_shop where id_image={id_image}||");

constexpr Plantilla SqlInsertaImagen(u"INSERT INTO ps_image (id_image,id_product,position,cover) VALUES ({img},{id},{i},{tapa})||");
constexpr Plantilla SqlInsertaTiendaNueva(u"INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES ({img},{id},1,{tapa})||");
constexpr Plantilla SqlInsertaTienda(u"INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES ({img},1,{tapa})||");
constexpr Plantilla SqlInsertaTexto(u"INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES ({img},{lang},'{leyenda}')||");
// clang-format on

constexpr int FotosDeArticulo = 10;
/// Behind the ten pictures of the article itself.
constexpr int PosicionDeValor = FotosDeArticulo + 1;

bool EsquemaNuevo(const Corrida& corrida)
{
    return corrida.Parametros().PS_VERSION > 0;
}

void QuitaImagen(batch::Lote& lote, const QString& id_image)
{
    const QString dir = CadenaDirImage(id_image);
    lote.AnadeImgBorra(ImagenSuelta({{"id_image", id_image}}));
    lote.AnadeImgBorra(TamanosDeImagen({{"dir", dir}, {"id_image", id_image}}));
    lote.AnadeImgBorra(ImagenEnCarpeta({{"dir", dir}, {"id_image", id_image}}));
    for (const Plantilla& borra : {SqlBorraTextos, SqlBorraImagen, SqlBorraTiendas})
        lote.EscribeSentencia(borra({{"id_image", id_image}}));
}

/// A file that isn't there leaves its sentences in place and goes on no list.
void PideSubida(Corrida& corrida, const QString& img, const QString& ruta)
{
    if (!data::ExisteFichero(ruta))
        return;
    corrida.PendientesArt.push_back({ruta, img + QStringLiteral(".jpg")});
    corrida.lote.AnadeCreaPath(CadenaDirImage(img) + u';');
}

/// Writes a new picture at `posicion`; `tapa` is its cover value. \returns its id
QString InsertaImagen(Corrida& corrida, const Articulo& articulo, const QString& ruta, int posicion,
                      const QString& tapa)
{
    const QString img = QString::number(++corrida.contadores.mimage);
    batch::Lote& lote = corrida.lote;
    lote.EscribeSentencia(SqlInsertaImagen(
        {{"img", img}, {"id", articulo.id}, {"i", Texto(posicion)}, {"tapa", tapa}}));
    if (EsquemaNuevo(corrida))
        lote.EscribeSentencia(
            SqlInsertaTiendaNueva({{"img", img}, {"id", articulo.id}, {"tapa", tapa}}));
    else
        lote.EscribeSentencia(SqlInsertaTienda({{"img", img}, {"tapa", tapa}}));
    for (const TextosArticulo& textos : articulo.textos)
        lote.EscribeSentencia(
            SqlInsertaTexto({{"img", img}, {"lang", textos.lang}, {"leyenda", textos.nombre}}));
    PideSubida(corrida, img, ruta);
    return img;
}

/// The older schema takes the position itself as the cover value.
QString TapaDeArticulo(const Corrida& corrida, int i)
{
    if (!EsquemaNuevo(corrida))
        return Texto(i);
    return i == 1 ? QStringLiteral("1") : QStringLiteral("Null");
}

} // namespace

void QuitaImagenes(Corrida& corrida, const Articulo&, data::Recordset& productos)
{
    if (!corrida.opciones.fotosArt || productos.Fin())
        return;
    const QString id = Texto(productos["id_product"]);
    for (; !productos.Fin() && Texto(productos["id_product"]) == id; productos.Siguiente())
        if (!data::EstaVacio(productos["id_image"]))
            QuitaImagen(corrida.lote, Texto(productos["id_image"]));
}

void AnadeImagenes(Corrida& corrida, const Articulo& articulo)
{
    if (!corrida.opciones.fotosArt)
        return;
    for (int i = 1; i <= FotosDeArticulo; ++i) {
        const QString numero = i == 1 ? QString() : Texto(i);
        const data::Valor& foto = articulo.fila[QStringLiteral("FOTO") + numero];
        if (!data::EstaVacio(foto))
            InsertaImagen(corrida, articulo, Texto(foto), i, TapaDeArticulo(corrida, i));
    }
}

QString AnadeImagenDeValor(Corrida& corrida, const Articulo& articulo, const QString& ruta, int k)
{
    const QString tapa = EsquemaNuevo(corrida) ? QStringLiteral("null") : Texto(k);
    return InsertaImagen(corrida, articulo, ruta, PosicionDeValor, tapa);
}

} // namespace tolmo::sync
