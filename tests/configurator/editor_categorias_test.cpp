#include "configurador_de_prueba.h"
#include "configurator/editor_categorias.h"

using namespace tolmo;
using namespace tolmo::configurator;
using data::Respuesta;

namespace {

const AvisosDePrueba::Caja Recuperar{
    "Desea recuperar todos los valores de la categoria seleccionada?", 36, ""};

class EditorCategorias : public testing::Test, public ConfiguradorDePrueba {};

TEST_F(EditorCategorias, SinFiltroSePonenTodasYConEl)
{
    EXPECT_EQ(
        SqlLlenaGridCat("", "A1"),
        "SELECT * FROM PS_CONF_ART_CAT WHERE  True  AND CODARTICULO='A1' ORDER BY CODCATEGORIA ASC");
    EXPECT_EQ(
        SqlLlenaGridCat("(DESCRIPCION LIKE 'M%')", "A1"),
        "SELECT * FROM PS_CONF_ART_CAT WHERE (DESCRIPCION LIKE 'M%') AND CODARTICULO='A1' ORDER BY CODCATEGORIA ASC");
    EXPECT_EQ(Tabla(SqlLlenaGridCat("", "A1")), "A1|MED|Medida|V");
}

TEST_F(EditorCategorias, UnaCategoriaDesconocidaSeAvisaYNoSePregunta)
{
    EXPECT_FALSE(CompruebaCategoria(programa, "A2", "zzz"));

    EXPECT_EQ(avisos.cajas, (Cajas{{"Codigo de categoria incorrecto", 48, ""}}));
    EXPECT_EQ(sentencias, QStringList("SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='ZZZ'"));
}

TEST_F(EditorCategorias, UnCodigoVacioTambienEsIncorrecto)
{
    EXPECT_FALSE(CompruebaCategoria(programa, "A2", ""));
}

TEST_F(EditorCategorias, SeGuardaEnMayusculasConElArticuloYLaDescripcion)
{
    avisos.respuestas = {Respuesta::No};

    const auto categoria = CompruebaCategoria(programa, "A2", "med");

    ASSERT_TRUE(categoria);
    EXPECT_EQ(categoria->codigo, "MED");
    EXPECT_EQ(categoria->otras, (data::Cambios{{"CODARTICULO", "A2"}, {"DESCRIPCION", "Medida"}}));
}

TEST_F(EditorCategorias, UnaDescripcionNulaEsVacia)
{
    avisos.respuestas = {Respuesta::No};

    const auto categoria = CompruebaCategoria(programa, "A2", "COL");

    ASSERT_TRUE(categoria);
    EXPECT_EQ(categoria->otras, (data::Cambios{{"CODARTICULO", "A2"}, {"DESCRIPCION", ""}}));
}

TEST_F(EditorCategorias, ConUnNoLaCategoriaQuedaSinValores)
{
    avisos.respuestas = {Respuesta::No};

    const auto categoria = CompruebaCategoria(programa, "A2", "MED");

    EXPECT_EQ(avisos.cajas, Cajas{Recuperar});
    EXPECT_FALSE(categoria->recuperada);
    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A2'"), "");
}

TEST_F(EditorCategorias, ConUnSiLasOpcionesSonValoresNumeradosTrasElMayor)
{
    avisos.respuestas = {Respuesta::Si};

    const auto categoria = CompruebaCategoria(programa, "A2", "MED");

    EXPECT_TRUE(categoria->recuperada);
    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A2' ORDER BY ID"),
              "A2|MED|010|42|10|0|0|0|0|0|0|NULL A2|MED|020|43|20|0|0|0|0|0|0|NULL");
    EXPECT_EQ(
        sentencias.mid(1),
        (QStringList{
            "SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A2' AND CodCategoria='MED'",
            "SELECT MAX(id) as MID FROM PS_CONF_ART_VAL",
            "SELECT * FROM M_OPCIONALES WHERE CodCategoria='MED' ORDER BY CODCATEGORIA",
            "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('A2','MED','010',42,010,0,0,0,0,0,0)",
            "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('A2','MED','020',43,020,0,0,0,0,0,0)"}));
}

TEST_F(EditorCategorias, EnUnaTablaVaciaLosNumerosEmpiezanPorUno)
{
    Ejecuta({"DELETE FROM PS_CONF_ART_VAL"});

    EXPECT_TRUE(InsertaValores(programa, "A2", "MED"));

    EXPECT_EQ(Tabla("SELECT ID FROM PS_CONF_ART_VAL ORDER BY ID"), "1 2");
}

TEST_F(EditorCategorias, UnArticuloConValoresDeLaCategoriaNoRecibeMas)
{
    EXPECT_FALSE(InsertaValores(programa, "A1", "MED"));

    EXPECT_EQ(
        sentencias,
        QStringList("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A1' AND CodCategoria='MED'"));
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM PS_CONF_ART_VAL"), "2");
}

TEST_F(EditorCategorias, UnaCategoriaSinOpcionesSeRecuperaVacia)
{
    EXPECT_TRUE(InsertaValores(programa, "A2", "ZZZ"));

    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM PS_CONF_ART_VAL"), "2");
}

TEST_F(EditorCategorias, UnaOpcionConLetrasNoSirveDeSecuenciaYCierraElPrograma)
{
    EXPECT_THROW(InsertaValores(programa, "A2", "COL"), data::FinDePrograma);

    EXPECT_TRUE(avisos.cajas.back().texto.startsWith(
        "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('A2','COL','AZU',42,AZU,0,0,0,0,0,0)"));
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM PS_CONF_ART_VAL"), "2");
}

TEST_F(EditorCategorias, AntesDeUnaCategoriaSeBorranSusValoresSusComponentesYSusOperaciones)
{
    Ejecuta(
        {"INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',41)",
         "INSERT INTO CONF_OPERACIONES VALUES ('A1','MED','010')",
         "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR) VALUES ('A1','COL','AZU')",
         "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR) VALUES ('A2','MED','010')"});

    BorraValoresDeCategoria(programa, "A1", "MED");

    EXPECT_EQ(sentencias,
              (QStringList{
                  "DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'",
                  "DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'",
                  "DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'"}));
    EXPECT_EQ(Tabla("SELECT CODARTICULO,CODCATEGORIA FROM PS_CONF_ART_VAL ORDER BY CODARTICULO"),
              "A1|COL A2|MED");
    EXPECT_EQ(Tabla("SELECT * FROM CONF_COMPONENTES") + Tabla("SELECT * FROM CONF_OPERACIONES"),
              "");
    EXPECT_EQ(Tabla("SELECT CODCATEGORIA FROM PS_CONF_ART_CAT"), "MED");
}

} // namespace
