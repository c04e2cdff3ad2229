#include "apoyo/corrida_con_sitio.h"
#include "sync/retirados.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

QString SqlPublicado(const QString& referencia)
{
    return "SELECT CODARTICULO FROM M_ARTIC WHERE CODARTICULO='" + referencia +
           "' AND ( ACTIVOWEB IN ('S','W')  OR EMPRESASWEB LIKE '%,000001,%')AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)";
}

struct Retirados : testing::Test {
    CorridaConSitio p{};

    Retirados() { p.programa.parametros.CADACTIVOWEB = "S,W"; }

    void Productos(const data::Filas& productos)
    {
        p.tienda.Espera(
            "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.supplier_reference FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product",
            productos);
    }
    void Productos(std::initializer_list<std::initializer_list<Valor>> filas)
    {
        Productos(HazFilas({"id_product", "reference", "id_image", "supplier_reference"}, filas));
    }
    void Publicado(const QString& referencia, bool si)
    {
        p.local.Espera(SqlPublicado(referencia),
                       si ? HazFilas({"CODARTICULO"}, {{referencia}}) : SinFilas);
    }
    /// `cuantos` products with one row each, from id 1001 on, of which only `retirado` isn't
    /// published; without it none is.
    void Muchos(int cuantos, int retirado = 0)
    {
        data::Filas filas =
            HazFilas({"id_product", "reference", "id_image", "supplier_reference"}, {});
        for (int i = 1; i <= cuantos; ++i) {
            const QString referencia = QString::number(i);
            for (const Valor& valor : {Valor(1000 + i), Valor(referencia), Nulo(), Valor("alt")})
                filas.valores.push_back(valor);
            Publicado(referencia, retirado != 0 && i != retirado);
        }
        Productos(filas);
    }
    QStringList Titulos() const { return p.Log().filter("EJECUTANDO REMOTAMENTE"); }
};

TEST_F(Retirados, SeBorranLasImagenesDeCadaFilaYDespuesElProductoEnSuOrden)
{
    Productos({{71, "R1", 123, "ALT"}, {71, "R1", 45, "ALT"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(
        p.red.Lotes()[0],
        (QStringList{
            "DELETE FROM ps_image_lang where id_image=123||",
            "DELETE FROM ps_image where id_image=123||",
            "DELETE FROM ps_image_shop where id_image=123||",
            "DELETE FROM ps_image_lang where id_image=45||",
            "DELETE FROM ps_image where id_image=45||",
            "DELETE FROM ps_image_shop where id_image=45||",
            "DELETE FROM ps_product WHERE id_product='71'||",
            "DELETE FROM ps_product_shop WHERE id_product='71'||",
            "DELETE FROM ps_product_lang WHERE id_product='71'||",
            "DELETE FROM ps_category_product WHERE id_product='71'||",
            "DELETE FROM ps_specific_price WHERE id_product='71'||",
            "DELETE FROM ps_product_attribute WHERE id_product='71'||",
            "DELETE FROM ps_product_attribute_combination WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='71'||",
            "DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='71'||",
            "DELETE FROM ps_product_tag WHERE id_product='71'||",
            "DELETE FROM ps_stock_available WHERE id_product='71' ||",
            "DELETE FROM ps_product_attribute_image WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)='71'||"}));
}

TEST_F(Retirados, ElEsquemaNuevoBorraLasCombinacionesDeLaTiendaPorElProducto)
{
    p.programa.parametros.PS_VERSION = 1;
    Productos({{71, "R1", Nulo(), "ALT"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.red.Lotes().at(0).at(7),
              "DELETE FROM ps_product_attribute_shop WHERE id_product='71'||");
}

TEST_F(Retirados, SoloLosFicherosDeLaPrimeraImagenVanALaLista)
{
    Productos({{71, "R1", 123, "ALT"}, {71, "R1", 45, "ALT"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/p/123.jpg;", "img/p/1/2/3/123.jpg;", "img/p/1/2/3/123-*.jpg;"}));
}

TEST_F(Retirados, SinImagenSalenLasTresLineasVaciasYNingunBorradoDeImagen)
{
    Productos({{71, "R1", Nulo(), "ALT"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/p/.jpg;", "img/p//.jpg;", "img/p//-*.jpg;"}));
    EXPECT_EQ(p.red.Lotes().at(0).at(0), "DELETE FROM ps_product WHERE id_product='71'||");
    EXPECT_EQ(p.red.Lotes().at(0).size(), 11);
}

TEST_F(Retirados, UnProductoSinReferenciaSeRetira)
{
    Productos({{71, Nulo(), Nulo(), Nulo()}});
    Publicado("", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_TRUE(p.Log().contains("Borrando Artículo 71 / "));
    EXPECT_EQ(p.red.Lotes().size(), 1U);
}

TEST_F(Retirados, LosPublicadosSePreguntanUnaVezPorProductoYSeDejan)
{
    Productos({{70, "R0", 1, "A0"}, {70, "R0", 2, "A0"}, {71, "R1", 3, "A1"}, {72, "R2", 4, "A2"}});
    Publicado("R0", true);
    Publicado("R1", false);
    Publicado("R2", true);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Log(), (QStringList{"Comprobando articulos que ya no estan...",
                                    "Borrando Artículo 71 / A1", "SUBIENDO FICHERO sentencias.sql",
                                    "EJECUTANDO REMOTAMENTE Borrando artículos (...3)"}));
    EXPECT_EQ(p.progreso.avances, (std::vector<std::pair<int, int>>{{2, 4}, {3, 4}, {4, 4}}));
    EXPECT_EQ(p.red.Lotes().at(0).size(), 14);
}

TEST_F(Retirados, SiNadaSeRetiraNoHayLoteNiLlamadaRemota)
{
    Productos({{70, "R0", 1, "A0"}});
    Publicado("R0", true);

    sync::RetiraArticulos(p.fase);

    EXPECT_TRUE(p.red.pasos.isEmpty());
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgborra.txt"));
}

TEST_F(Retirados, EnUnaTiendaVaciaNoPasaNada)
{
    Productos(SinFilas);

    sync::RetiraArticulos(p.fase);

    EXPECT_TRUE(p.red.pasos.isEmpty());
}

TEST_F(Retirados, CadaCienProductosVaUnLoteYAlFinalElResto)
{
    Muchos(101);

    sync::RetiraArticulos(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 2U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 1100);
    EXPECT_EQ(p.red.Lotes()[1].size(), 11);
    EXPECT_TRUE(p.Log().contains("EJECUTANDO REMOTAMENTE Borrando artículos (...100)"));
    EXPECT_TRUE(p.Log().contains("EJECUTANDO REMOTAMENTE Borrando artículos (...101)"));
}

TEST_F(Retirados, CienJustosDanUnSoloLote)
{
    Muchos(100);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

// A count that comes round with nothing written since the last one calls nobody.
TEST_F(Retirados, SiSoloSeRetiraElPrimeroDeCientoUnoVaUnLoteAlLlegarACien)
{
    Muchos(101, 1);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(Titulos(), QStringList{"EJECUTANDO REMOTAMENTE Borrando artículos (...100)"});
    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 11);
    EXPECT_EQ(p.red.Lotes()[0][0], "DELETE FROM ps_product WHERE id_product='1001'||");
}

TEST_F(Retirados, SiSoloSeRetiraElUltimoDeCientoUnoVaUnLoteAlFinal)
{
    Muchos(101, 101);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(Titulos(), QStringList{"EJECUTANDO REMOTAMENTE Borrando artículos (...101)"});
    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 11);
    EXPECT_EQ(p.red.Lotes()[0][0], "DELETE FROM ps_product WHERE id_product='1101'||");
}

// The rows have no order: a product ends where the next row has another id.
TEST_F(Retirados, LasFilasSeparadasDeUnProductoSonDosGrupos)
{
    Productos({{71, "R1", 5, "A1"}, {72, "R2", 6, "A2"}, {71, "R1", 7, "A1"}});
    Publicado("R1", false);
    Publicado("R2", true);
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Log(),
              (QStringList{"Comprobando articulos que ya no estan...", "Borrando Artículo 71 / A1",
                           "Borrando Artículo 71 / A1", "SUBIENDO FICHERO sentencias.sql",
                           "EJECUTANDO REMOTAMENTE Borrando artículos (...3)"}));
    const QStringList lote = p.red.Lotes().at(0);
    ASSERT_EQ(lote.size(), 28) << "twice three of the picture and eleven of the product";
    EXPECT_EQ(lote[0], "DELETE FROM ps_image_lang where id_image=5||");
    EXPECT_EQ(lote[3], "DELETE FROM ps_product WHERE id_product='71'||");
    EXPECT_EQ(lote[14], "DELETE FROM ps_image_lang where id_image=7||");
    EXPECT_EQ(lote.mid(17), lote.mid(3, 11));
    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/p/5.jpg;", "img/p/5/5.jpg;", "img/p/5/5-*.jpg;", "img/p/7.jpg;",
                           "img/p/7/7.jpg;", "img/p/7/7-*.jpg;"}));
}

// An id that is empty for the sentences is a number for the list.
TEST_F(Retirados, UnaImagenCeroNoSeBorraDeLasTablasYSusFicherosVanALaLista)
{
    Productos({{71, "R1", 0, "ALT"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/p/0.jpg;", "img/p/0/0.jpg;", "img/p/0/0-*.jpg;"}));
    EXPECT_EQ(p.red.Lotes().at(0).size(), 11);
    EXPECT_EQ(p.red.Lotes().at(0).at(0), "DELETE FROM ps_product WHERE id_product='71'||");
}

TEST_F(Retirados, UnSignoDeUnirEnLaReferenciaLlegaIntactoALaConsultaLocal)
{
    Productos({{71, "A&B", Nulo(), "ALT"}});
    Publicado("A&B", true);

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.local.consultas, QStringList{SqlPublicado("A&B")});
    EXPECT_TRUE(p.red.pasos.isEmpty());
}

// The log goes through the shop's dialect, which can't read an "&" without a bracket.
TEST_F(Retirados, UnSignoDeUnirEnElCodigoAlternativoDejaSuLineaFueraDelFicheroDeRegistro)
{
    p.prueba.carpeta.CreaCarpeta("HISTORICOWEB");
    Productos({{71, "R1", Nulo(), "A & B"}});
    Publicado("R1", false);

    sync::RetiraArticulos(p.fase);

    const QString momento = "[15/03/2024 9:05:07] ";
    EXPECT_EQ(p.Lineas("HISTORICOWEB/20240315VUELCOPRESTASHOP.TXT"),
              (QStringList{momento + "Comprobando articulos que ya no estan...",
                           momento + "SUBIENDO FICHERO sentencias.sql",
                           momento + "EJECUTANDO REMOTAMENTE Borrando artículos (...1)"}));
    EXPECT_EQ(p.progreso.lineas.value(1), momento + "Borrando Artículo 71 / A & B");
    EXPECT_EQ(p.red.Lotes().at(0).size(), 11);
}

TEST_F(Retirados, UnaComillaEnLaReferenciaRompeLaConsultaLocal)
{
    Productos({{71, "R'1", Nulo(), "ALT"}});
    p.local.EsperaFallo(SqlPublicado("R'1"),
                        data::ErrorSql(data::numero_error::Sentencia, "sintaxis", "prueba"));

    EXPECT_THROW(sync::RetiraArticulos(p.fase), data::FinDePrograma);
    EXPECT_TRUE(p.red.pasos.isEmpty());
}

} // namespace
