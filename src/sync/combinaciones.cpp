#include "sync/combinaciones.h"
#include "configurator/consulta_combinaciones.h"
#include "sync/articulo.h"
#include "sync/atributos.h"
#include "sync/corrida.h"
#include "sync/imagenes.h"

namespace tolmo::sync {
namespace {

using configurator::ColumnaDeCombinacion;
using data::Plantilla;
using data::Texto;

// A combination's id is formed by the shop: the product id and the ordinal in 5 digits, so the
// product can be read back from it. The two literals of zeros differ and give the same value.
// clang-format off
constexpr Plantilla Producto(u"(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='{CodArticulo}' LIMIT 1)");
constexpr Plantilla SqlBorraCombinaciones(u"DELETE FROM ps_product_attribute WHERE id_product={producto}||");
constexpr Plantilla SqlBorraValores(u"DELETE FROM ps_product_attribute_combination WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)={producto}||");
constexpr Plantilla SqlBorraTiendaNueva(u"DELETE FROM ps_product_attribute_shop WHERE id_product={producto}||");
constexpr Plantilla SqlBorraTienda(u"DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)={producto}||");
constexpr Plantilla SqlBorraImagenes(u"DELETE FROM ps_product_attribute_image WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)={producto}||");

constexpr Plantilla IdCombinacion(u"CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','{n}'),5))");
constexpr Plantilla IdCombinacion6(u"CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','{n}'),5))");
constexpr Plantilla SqlInsertaValor(u"INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT {atributo},{idcomb}  From ps_product WHERE REFERENCE ='{CodArticulo}'||");
constexpr Plantilla SqlInsertaImagen(u"INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT {imagen},{idcomb}  From ps_product WHERE REFERENCE ='{CodArticulo}'||");
constexpr Plantilla SqlInsertaCombinacion(u"INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT {idcomb} , ID_PRODUCT,{inc},{pes},{def} From ps_product WHERE REFERENCE ='{CodArticulo}'||");
constexpr Plantilla SqlInsertaTiendaNueva(u"INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT {idcomb6} , ID_PRODUCT, 1,{inc},{pes},{def} From ps_product WHERE REFERENCE ='{CodArticulo}'||");
constexpr Plantilla SqlInsertaTienda(u"INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT {idcomb6} ,1,{inc},{pes},{def} From ps_product WHERE REFERENCE ='{CodArticulo}'||");

// The change's own copy of the query has a blank more.
constexpr Plantilla SqlCategoriasEnCambio(u"SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE  CODARTICULO='{CodArticulo}' ORDER BY CODCATEGORIA");
// clang-format on

/// The names under which a row holds the value of one category.
struct Columnas {
    QString CODCATEGORIA{};
    QString Valor{};
    QString FOTO{};
};

/// The combinations of one article while they are written.
struct PaseDeCombinaciones {
    Corrida& corrida;
    const Articulo& articulo;
    data::Recordset& filas;
    std::vector<Columnas> categorias{};
    BuscadorDeAtributos atributo{corrida};
    QHash<QString, QString> fotos{}; ///< image id by path: a picture of two values goes once
};

std::vector<Columnas> ColumnasDe(int cuantas)
{
    std::vector<Columnas> columnas;
    for (int k = 1; k <= cuantas; ++k)
        columnas.push_back(
            {.CODCATEGORIA = ColumnaDeCombinacion(k, cuantas, QStringLiteral("CODCATEGORIA")),
             .Valor = ColumnaDeCombinacion(k, cuantas, QStringLiteral("VALOR")),
             .FOTO = ColumnaDeCombinacion(k, cuantas, QStringLiteral("FOTO"))});
    return columnas;
}

QStringList CategoriasDe(Corrida& corrida, const Articulo& articulo)
{
    auto filas =
        LeeLocal(corrida, articulo.camino == Camino::Cambio
                              ? SqlCategoriasEnCambio({{"CodArticulo", articulo.CodArticulo}})
                              : configurator::SqlCategoriasDeArticulo(articulo.CodArticulo));
    QStringList categorias;
    for (; !filas.Fin(); filas.Siguiente())
        categorias << Texto(filas["CODCATEGORIA"]);
    return categorias;
}

void EscribeFoto(PaseDeCombinaciones& pase, const QString& columna, int k, const QString& idcomb)
{
    if (!pase.corrida.opciones.fotosArt || data::EstaVacio(pase.filas[columna]))
        return;
    const QString ruta = Texto(pase.filas[columna]);
    auto imagen = pase.fotos.constFind(ruta);
    if (imagen == pase.fotos.constEnd())
        imagen = pase.fotos.insert(ruta, AnadeImagenDeValor(pase.corrida, pase.articulo, ruta, k));
    pase.corrida.lote.EscribeSentencia(SqlInsertaImagen(
        {{"imagen", *imagen}, {"idcomb", idcomb}, {"CodArticulo", pase.articulo.CodArticulo}}));
}

void EscribeValores(PaseDeCombinaciones& pase, const QString& idcomb)
{
    int k = 0;
    for (const Columnas& columnas : pase.categorias) {
        ++k;
        const auto atributo = pase.atributo(Texto(pase.filas[columnas.CODCATEGORIA]),
                                            Texto(pase.filas[columnas.Valor]));
        pase.corrida.lote.EscribeSentencia(
            SqlInsertaValor({{"atributo", atributo.value_or(QString())},
                             {"idcomb", idcomb},
                             {"CodArticulo", pase.articulo.CodArticulo}}));
        EscribeFoto(pase, columnas.FOTO, k, idcomb);
    }
}

QString TextoOCero(const data::Valor& valor)
{
    return data::EsNulo(valor) ? QStringLiteral("0") : Texto(valor);
}

void EscribeCombinacion(PaseDeCombinaciones& pase)
{
    Corrida& corrida = pase.corrida;
    const QString& codigo = pase.articulo.CodArticulo;
    const int ordinal = pase.filas.AbsolutePosition();
    const QString n = Texto(ordinal);
    const QString idcomb = IdCombinacion({{"n", n}});
    EscribeValores(pase, idcomb);

    const QString inc = TextoOCero(pase.filas["INC_PVP_COMBINA"]);
    const QString pes = TextoOCero(pase.filas["PESO_COMBINA"]);
    // The first combination is the default one.
    const QString def = ordinal == 1 ? QStringLiteral("1") : QStringLiteral("NULL");
    corrida.lote.EscribeSentencia(SqlInsertaCombinacion(
        {{"idcomb", idcomb}, {"inc", inc}, {"pes", pes}, {"def", def}, {"CodArticulo", codigo}}));
    const Plantilla& tienda =
        corrida.Parametros().PS_VERSION > 0 ? SqlInsertaTiendaNueva : SqlInsertaTienda;
    corrida.lote.EscribeSentencia(tienda({{"idcomb6", IdCombinacion6({{"n", n}})},
                                          {"inc", inc},
                                          {"pes", pes},
                                          {"def", def},
                                          {"CodArticulo", codigo}}));
}

} // namespace

void BorraCombinaciones(Corrida& corrida, const Articulo& articulo)
{
    const QString producto = Producto({{"CodArticulo", articulo.CodArticulo}});
    const Plantilla& tienda =
        corrida.Parametros().PS_VERSION > 0 ? SqlBorraTiendaNueva : SqlBorraTienda;
    for (const Plantilla& borra :
         {SqlBorraCombinaciones, SqlBorraValores, tienda, SqlBorraImagenes})
        corrida.lote.EscribeSentencia(borra({{"producto", producto}}));
}

void EscribeCombinaciones(Corrida& corrida, const Articulo& articulo)
{
    const QStringList categorias = CategoriasDe(corrida, articulo);
    if (categorias.isEmpty())
        return;
    auto filas = LeeLocal(corrida, configurator::SqlCombinaciones(articulo.CodArticulo, categorias,
                                                                  corrida.Parametros().Ps_pvpdef));
    PaseDeCombinaciones pase{.corrida = corrida,
                             .articulo = articulo,
                             .filas = filas,
                             .categorias = ColumnasDe(static_cast<int>(categorias.size()))};
    for (; !filas.Fin(); filas.Siguiente()) {
        EscribeCombinacion(pase);
        corrida.progreso.CedeEventos();
    }
}

} // namespace tolmo::sync
