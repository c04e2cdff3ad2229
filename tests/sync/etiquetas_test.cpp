#include "apoyo/corrida_de_prueba.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/etiquetas.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct CasoEtiquetas {
    const char* regla;
    const char* lista;
    QStringList etiquetas;
};

class ParteEtiquetas : public testing::TestWithParam<CasoEtiquetas> {};

TEST_P(ParteEtiquetas, CortaPorLasComas)
{
    EXPECT_EQ(sync::ParteEtiquetas(GetParam().lista), GetParam().etiquetas);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ParteEtiquetas,
    testing::Values(CasoEtiquetas{"ListaCerradaNoPierdeNada", "rojo,azul,", {"rojo", "azul"}},
                    CasoEtiquetas{"ListaAbiertaPierdeElFinal", "rojo,azul", {"rojo", "azu"}},
                    CasoEtiquetas{
                        "CadaEtiquetaSinBlancos", "  rojo , verde mar ,", {"rojo", "verde mar"}},
                    CasoEtiquetas{"ElBlancoFinalEsElCaracterQueSePierde", "rojo ", {"rojo"}},
                    CasoEtiquetas{"LasVaciasNoCuentan", ",, ,rojo,,", {"rojo"}},
                    CasoEtiquetas{"UnSoloCaracterNoDaEtiqueta", "x", {}},
                    CasoEtiquetas{"VacioNoDaEtiqueta", "", {}}),
    [](const auto& caso) { return caso.param.regla; });

struct EscribeEtiquetasTest : testing::Test {
    CorridaDePrueba p{};
    FilaDeArticulo fila{};

    void Escribe()
    {
        const data::Recordset registro = fila.Fila();
        sync::EscribeEtiquetas(p.corrida, {.fila = registro, .id = "71"});
    }
};

TEST_F(EscribeEtiquetasTest, LaEtiquetaQueFaltaEnLaTiendaSeCreaAlliYNoPorElLote)
{
    p.programa.parametros.PS_PREFIJO = "tst_";
    fila.Pon("PSTAG0", "rojo,");
    p.tienda.Espera("SELECT * FROM tst_tag WHERE id_lang=3 AND name='rojo'", SinFilas);
    p.tienda.EsperaOrden(
        "INSERT INTO tst_tag (id_tag,id_lang,name) Select max(id_tag) + 1,3,'rojo' from tst_tag");

    Escribe();

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "DELETE FROM tst_product_tag where id_product='71'||",
            "INSERT INTO tst_product_tag (id_product,id_tag) Select '71',min(id_tag) FROM tst_tag WHERE id_lang=3 and name='rojo'||"}));
}

TEST_F(EscribeEtiquetasTest, LaEtiquetaQueLaTiendaTieneSoloSeEnlaza)
{
    fila.Pon("PSTAG0", "rojo,");
    p.tienda.Espera("SELECT * FROM ps_tag WHERE id_lang=3 AND name='rojo'",
                    HazFilas({"id_tag"}, {{5}}));

    Escribe();

    EXPECT_TRUE(p.tienda.ejecutadas.isEmpty());
    EXPECT_EQ(p.Sentencias().size(), 2);
}

// Its query has no bracket that the sign could belong to, and a query that can't be translated
// closes the program.
TEST_F(EscribeEtiquetasTest, UnSignoEnUnaEtiquetaCierraElPrograma)
{
    fila.Pon("PSTAG0", "sol & mar,");

    EXPECT_THROW(Escribe(), data::FinDePrograma);

    ASSERT_EQ(p.prueba.avisos.cajas.size(), 2U);
    EXPECT_EQ(
        p.prueba.avisos.cajas[1].texto,
        "SELECT * FROM ps_tag WHERE id_lang=3 AND name='sol & mar'\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
    EXPECT_EQ(p.prueba.avisos.cajas[1].estilo, 64);
    EXPECT_TRUE(p.tienda.todas.isEmpty());
    EXPECT_EQ(p.Sentencias(), QStringList{"DELETE FROM ps_product_tag where id_product='71'||"});
}

TEST_F(EscribeEtiquetasTest, UnaComillaEnUnaEtiquetaNoSeTrataYLaTiendaNoLaEntiende)
{
    fila.Pon("PSTAG0", "d'or,");
    p.tienda.EsperaFallo("SELECT * FROM ps_tag WHERE id_lang=3 AND name='d'or'",
                         {data::numero_error::Sentencia, "syntax", "prueba"});

    EXPECT_THROW(Escribe(), data::FinDePrograma);
}

TEST_F(EscribeEtiquetasTest, SinEtiquetasQuedaElBorradoSolo)
{
    fila.Pon("PSTAG0", "   ");

    Escribe();

    EXPECT_EQ(p.Sentencias(), QStringList{"DELETE FROM ps_product_tag where id_product='71'||"});
    EXPECT_TRUE(p.tienda.todas.isEmpty());
}

TEST_F(EscribeEtiquetasTest, CadaIdiomaLlevaLasSuyas)
{
    p.programa.parametros.Idiomas = {CorridaDePrueba::Idioma(3), CorridaDePrueba::Idioma(5)};
    fila.Pon("PSTAG0", "rojo,").Pon("PSTAG1", "red,");
    p.tienda.Espera("SELECT * FROM ps_tag WHERE id_lang=3 AND name='rojo'",
                    HazFilas({"id_tag"}, {{5}}));
    p.tienda.Espera("SELECT * FROM ps_tag WHERE id_lang=5 AND name='red'",
                    HazFilas({"id_tag"}, {{6}}));

    Escribe();

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "DELETE FROM ps_product_tag where id_product='71'||",
            "INSERT INTO ps_product_tag (id_product,id_tag) Select '71',min(id_tag) FROM ps_tag WHERE id_lang=3 and name='rojo'||",
            "INSERT INTO ps_product_tag (id_product,id_tag) Select '71',min(id_tag) FROM ps_tag WHERE id_lang=5 and name='red'||"}));
}

TEST_F(EscribeEtiquetasTest, UnIdiomaSinExpresionDeEtiquetaSePasaPorAlto)
{
    p.programa.parametros.Idiomas[0].Tag.clear();
    fila.Pon("PSTAG0", "rojo,");

    Escribe();

    EXPECT_EQ(p.Sentencias().size(), 1);
}

} // namespace
