#include "apoyo/corrida_con_sitio.h"
#include "sync/atributos.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

const QString SqlCategorias =
    "SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES_CAT.CODCATEGORIA) AS NCAT FROM M_OPCIONALES_CAT ORDER BY CODCATEGORIA";
const QString SqlOpciones =
    "SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES.CODCATEGORIA) AS NCAT ,(SELECT COUNT(*) FROM M_OPCIONALES AS OPC2 WHERE OPC2.CODCATEGORIA=M_OPCIONALES.CODCATEGORIA AND OPC2.CODOPCIONAL<=M_OPCIONALES.CODOPCIONAL) AS NOPC  FROM M_OPCIONALES ORDER BY DESCRIPCION";

TEST(IdAtributo, CadaRangoSeRellenaATresCifras)
{
    EXPECT_EQ(sync::IdAtributo("2", "7"), "002007");
    EXPECT_EQ(sync::IdAtributo("12", "345"), "012345");
    EXPECT_EQ(sync::IdAtributo("1", "1000"), "0011000") << "above 999 the id grows";
}

struct Atributos : testing::Test {
    CorridaConSitio p{};

    void Categorias(std::initializer_list<std::initializer_list<Valor>> filas)
    {
        p.local.Espera(SqlCategorias, HazFilas({"CODCATEGORIA", "DESCRIPCION", "NCAT"}, filas));
    }
    void Opciones(std::initializer_list<std::initializer_list<Valor>> filas)
    {
        p.local.Espera(
            SqlOpciones,
            HazFilas({"CODCATEGORIA", "CODOPCIONAL", "DESCRIPCION", "NCAT", "NOPC"}, filas));
    }
    void MuchasCategorias(int cuantas)
    {
        data::Filas filas = HazFilas({"CODCATEGORIA", "DESCRIPCION", "NCAT"}, {});
        for (int n = 1; n <= cuantas; ++n)
            for (const Valor& valor : {Valor(QString::number(n)), Valor("d"), Valor(n)})
                filas.valores.push_back(valor);
        p.local.Espera(SqlCategorias, filas);
    }
    /// Of category 1, without a category among those of the first list.
    void MuchasOpciones(int cuantas)
    {
        Categorias({});
        data::Filas filas =
            HazFilas({"CODCATEGORIA", "CODOPCIONAL", "DESCRIPCION", "NCAT", "NOPC"}, {});
        for (int n = 1; n <= cuantas; ++n)
            for (const Valor& valor :
                 {Valor("COL"), Valor(QString::number(n)), Valor("d"), Valor(1), Valor(n)})
                filas.valores.push_back(valor);
        p.local.Espera(SqlOpciones, filas);
    }
    QStringList Titulos() const { return p.Log().filter("EJECUTANDO REMOTAMENTE"); }
};

TEST_F(Atributos, CadaCategoriaEsUnGrupoYCadaOpcionUnAtributo)
{
    Categorias({{"COL", "Color", 2}});
    Opciones({{"TAL", "L", "Larga", 5, 9}, {"COL", "ROJ", "Roja", 2, 7}});

    sync::CargaAtributos(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 2U);
    EXPECT_EQ(
        p.red.Lotes()[0],
        (QStringList{
            "DELETE FROM ps_attribute_group||", "DELETE FROM ps_attribute_group_lang||",
            "DELETE FROM ps_attribute_group_shop||",
            "INSERT INTO ps_attribute_group(ID_ATTRIBUTE_GROUP,IS_COLOR_GROUP,GROUP_TYPE,POSITION) VALUES (2,0,'select',2)||",
            "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (2,3,'Color','Color')||",
            "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (2,1,'Color','Color')||",
            "INSERT INTO ps_attribute_group_shop(ID_ATTRIBUTE_GROUP,ID_SHOP) VALUES (2,1)||"}));
    EXPECT_EQ(
        p.red.Lotes()[1],
        (QStringList{
            "DELETE FROM ps_attribute||", "DELETE FROM ps_attribute_lang||",
            "DELETE FROM ps_attribute_shop||",
            "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (005009,5,'#000000',1)||",
            "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (005009,3,'Larga')||",
            "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (005009,1,'Larga')||",
            "INSERT INTO ps_attribute_shop (ID_ATTRIBUTE,ID_SHOP) VALUES (005009,1)||",
            "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (002007,2,'#000000',2)||",
            "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (002007,3,'Roja')||",
            "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (002007,1,'Roja')||",
            "INSERT INTO ps_attribute_shop (ID_ATTRIBUTE,ID_SHOP) VALUES (002007,1)||"}));
    EXPECT_EQ(p.Log(),
              (QStringList{"CARGANDO TABLA ATRIBUTOS Y VALORES", "SUBIENDO FICHERO sentencias.sql",
                           "EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos",
                           "SUBIENDO FICHERO sentencias.sql",
                           "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones"}));
}

TEST_F(Atributos, SinFilasLosBorradosEsperanAlLoteSiguiente)
{
    Categorias({});
    Opciones({});

    sync::CargaAtributos(p.fase);

    EXPECT_TRUE(p.red.pasos.isEmpty());
    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{"DELETE FROM ps_attribute_group||", "DELETE FROM ps_attribute_group_lang||",
                     "DELETE FROM ps_attribute_group_shop||", "DELETE FROM ps_attribute||",
                     "DELETE FROM ps_attribute_lang||", "DELETE FROM ps_attribute_shop||"}));
}

TEST_F(Atributos, UnaCategoriaSinOpcionesDaGrupoYNingunAtributo)
{
    Categorias({{"COL", "Color", 1}});
    Opciones({});

    sync::CargaAtributos(p.fase);

    EXPECT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.Sentencias(),
              (QStringList{"DELETE FROM ps_attribute||", "DELETE FROM ps_attribute_lang||",
                           "DELETE FROM ps_attribute_shop||"}));
}

TEST_F(Atributos, CadaDoscientasFilasVaUnLoteYAlFinalElResto)
{
    MuchasCategorias(201);
    Opciones({});

    sync::CargaAtributos(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 2U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 3 + 200 * 4);
    EXPECT_EQ(p.red.Lotes()[1].size(), 4);
}

TEST_F(Atributos, DoscientasJustasDanUnSoloLote)
{
    MuchasCategorias(200);
    Opciones({});

    sync::CargaAtributos(p.fase);

    EXPECT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.progreso.avances.back(), std::pair(200, 200));
}

TEST_F(Atributos, DoscientasOpcionesJustasDanUnSoloLoteConLosBorradosDelante)
{
    MuchasOpciones(200);

    sync::CargaAtributos(p.fase);

    EXPECT_EQ(Titulos(),
              QStringList{"EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones"});
    ASSERT_EQ(p.red.Lotes().size(), 1U);
    ASSERT_EQ(p.red.Lotes()[0].size(), 6 + 200 * 4);
    EXPECT_EQ(
        p.red.Lotes()[0][802],
        "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (001200,1,'#000000',200)||");
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(Atributos, LaPosicionSigueContandoEnElLoteSiguiente)
{
    MuchasOpciones(201);

    sync::CargaAtributos(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 2U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 6 + 200 * 4);
    EXPECT_EQ(
        p.red.Lotes()[1].value(0),
        "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (001201,1,'#000000',201)||");
    EXPECT_EQ(p.red.Lotes()[1].size(), 4);
}

TEST_F(Atributos, UnaDescripcionNulaQuedaVacia)
{
    Categorias({{"COL", Nulo(), 2}});
    Opciones({{"COL", "ROJ", Nulo(), 2, 7}});

    sync::CargaAtributos(p.fase);

    EXPECT_EQ(
        p.red.Lotes().at(0).at(4),
        "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (2,3,'','')||");
    EXPECT_EQ(p.red.Lotes().at(1).at(4),
              "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (002007,3,'')||");
}

// The sentences go through the shop's dialect, texts included.
TEST_F(Atributos, UnSignoDeUnirEnLaDescripcionSeTomaPorElOperador)
{
    Categorias({{"COL", "A & B", 2}});
    Opciones({{"COL", "ROJ", "C&D", 2, 7}});

    sync::CargaAtributos(p.fase);

    EXPECT_EQ(
        p.red.Lotes().at(0).at(4),
        "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES  CONCAT(2,3,'A , B','A , B')||");
    EXPECT_EQ(
        p.red.Lotes().at(1).at(4),
        "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES  CONCAT(002007,3,'C,D')||");
}

TEST_F(Atributos, UnaComillaEnLaDescripcionQuedaComoEsta)
{
    Categorias({{"COL", "L'ample", 1}});
    Opciones({});

    sync::CargaAtributos(p.fase);

    EXPECT_TRUE(p.red.Lotes().at(0).at(4).contains("'L'ample','L'ample'"));
}

TEST_F(Atributos, ElBuscadorPreguntaUnaVezPorOpcion)
{
    p.local.Espera(
        "SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<='COL') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='COL' AND CODOPCIONAL<='ROJ'",
        HazFilas({"NCAT", "NOPC"}, {{2, 7}}));
    sync::BuscadorDeAtributos busca(p.fase);

    EXPECT_EQ(busca("COL", "ROJ"), "002007");
    EXPECT_EQ(busca("COL", "ROJ"), "002007");
    EXPECT_EQ(p.local.consultas.size(), 1);
}

} // namespace
