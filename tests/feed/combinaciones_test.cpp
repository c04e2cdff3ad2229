#include "feed/combinaciones.h"
#include "feed_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

TEST(ColumnaDeIncremento, LaDiceElUltimoCaracterDelPrecio)
{
    EXPECT_EQ(feed::ColumnaDeIncremento("PVP1"), "INC_PVP");
    EXPECT_EQ(feed::ColumnaDeIncremento("PVP2"), "INC_PVP2");
    EXPECT_EQ(feed::ColumnaDeIncremento("PVP5"), "INC_PVP5");
    EXPECT_EQ(feed::ColumnaDeIncremento("OTRO1"), "INC_PVP1");
    EXPECT_EQ(feed::ColumnaDeIncremento("pvp1"), "INC_PVP1");
    EXPECT_EQ(feed::ColumnaDeIncremento("PRECIO"), "INC_PVPO");
    EXPECT_EQ(feed::ColumnaDeIncremento(""), "INC_PVP");
}

struct Combinaciones : testing::Test {
    FeedDePrueba p{};

    Combinaciones()
    {
        p.Categoria("TAL", "Talla");
        p.Categoria("COL", "Color");
        p.Opcion("COL", "ROJ", "Rojo");
        p.Opcion("COL", "AZU", "Azul");
        p.Opcion("TAL", "S", "Pequeña");
        p.Opcion("TAL", "M", "M");
        p.Opcion("TAL", "L", "L");
    }
    /// X in two colours and three sizes.
    void Camiseta()
    {
        p.Articulo("X", {{"DESCRIPCION", "'Camiseta'"}});
        p.Valor("X", "TAL", "M", 1);
        p.Valor("X", "TAL", "L", 2, "1.5", "3");
        p.Valor("X", "TAL", "S", 3, "-0.5", "0.25");
        p.Valor("X", "COL", "ROJ", 1);
        p.Valor("X", "COL", "AZU", 2, "0.25", "1");
    }
};

TEST_F(Combinaciones, CadaUnaEsUnProductoYElArticuloComoTalNoVa)
{
    Camiseta();

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), (QStringList{Cdata("X_1"), Cdata("X_2"), Cdata("X_3"),
                                                      Cdata("X_4"), Cdata("X_5"), Cdata("X_6")}));
    EXPECT_EQ(p.Elementos("TITLE"),
              (QStringList{Cdata("Camiseta (Color : Rojo) (Talla : M)"),
                           Cdata("Camiseta (Color : Rojo) (Talla : L)"),
                           Cdata("Camiseta (Color : Rojo) (Talla : Pequeña)"),
                           Cdata("Camiseta (Color : Azul) (Talla : M)"),
                           Cdata("Camiseta (Color : Azul) (Talla : L)"),
                           Cdata("Camiseta (Color : Azul) (Talla : Pequeña)")}));
}

TEST_F(Combinaciones, ElIncrementoEsLaSumaDeLosDeSusValores)
{
    Camiseta();

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), (QStringList{"10.5", "12", "10", "10.75", "12.25", "10.25"}));
}

TEST_F(Combinaciones, OtraTarifaTieneSusPropiosIncrementos)
{
    p.configuracion.CampoPrecio = "PVP3";
    Camiseta();

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), (QStringList{"8.25", "11.25", "8.5", "9.25", "12.25", "9.5"}));
}

TEST_F(Combinaciones, ConUnaSolaCategoriaTambien)
{
    p.Articulo("X");
    p.Valor("X", "COL", "AZU", 2, "0.2");
    p.Valor("X", "COL", "ROJ", 1, "0.1");

    p.Genera();

    EXPECT_EQ(p.Elementos("TITLE"),
              (QStringList{Cdata("Nombre X (Color : Rojo)"), Cdata("Nombre X (Color : Azul)")}));
    EXPECT_EQ(p.Elementos("PRICE"), (QStringList{"10.6", "10.7"}));
}

TEST_F(Combinaciones, SinPrecioQuedaElIncremento)
{
    p.Articulo("X", {{"PVP1", "Null"}});
    p.Valor("X", "COL", "ROJ", 1, "2.5");

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), QStringList{"2.5"});
}

TEST_F(Combinaciones, UnIncrementoNuloCuentaCero)
{
    p.Articulo("X");
    p.Valor("X", "COL", "ROJ", 1, "Null");
    p.Valor("X", "TAL", "M", 1, "3");

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), QStringList{"10.5"});
}

TEST_F(Combinaciones, LosDecimalesSeSumanSinRuido)
{
    p.Articulo("X", {{"PVP1", "0.1"}});
    p.Valor("X", "COL", "ROJ", 1, "0.2");

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), QStringList{"0.3"});
}

TEST_F(Combinaciones, CadaUnaRepiteLasFotosYLasClavesDelArticulo)
{
    p.Articulo("X", {{"CLAVES", "'una,'"}});
    p.Valor("X", "COL", "ROJ", 1);
    p.Valor("X", "COL", "AZU", 2);
    p.fotos["X"] = {8, 9};

    p.Genera();

    const QString ocho = Cdata("http://casa/img/p/8.jpg");
    const QString nueve = Cdata("http://casa/img/p/9.jpg");
    EXPECT_EQ(p.Elementos("PHOTO"), (QStringList{ocho, nueve, ocho, nueve}));
    EXPECT_EQ(p.Elementos("KEYWORD"), (QStringList{Cdata("una"), Cdata("una")}));
    EXPECT_EQ(p.tienda.consultas.size(), 2);
}

TEST_F(Combinaciones, ElSufijoVaTrasElCodigoAlternativoYTrasSuFalta)
{
    p.configuracion.UsaCodAlternativo = true;
    p.Articulo("X");
    p.Articulo("Y", {{"CODALTERNATIVO", "''"}});
    p.Valor("X", "COL", "ROJ", 1);
    p.Valor("Y", "COL", "ROJ", 1);

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), (QStringList{Cdata("ALTX_1"), Cdata("Y_1")}));
}

TEST_F(Combinaciones, CadaArticuloEmpiezaPorUna)
{
    p.Articulo("X");
    p.Articulo("Y");
    p.Articulo("Z");
    p.Valor("X", "COL", "ROJ", 1);
    p.Valor("X", "COL", "AZU", 2);
    p.Valor("Z", "COL", "AZU", 1);

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"),
              (QStringList{Cdata("X_1"), Cdata("X_2"), Cdata("Y"), Cdata("Z_1")}));
}

TEST_F(Combinaciones, SinPedirlasElArticuloVaUnaVezASuPrecio)
{
    p.configuracion.GeneraCombinaciones = false;
    Camiseta();

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), QStringList{Cdata("X")});
    EXPECT_EQ(p.Elementos("TITLE"), QStringList{Cdata("Camiseta")});
    EXPECT_EQ(p.Elementos("PRICE"), QStringList{"10.5"});
}

TEST_F(Combinaciones, LoQueNoEstaEnLosMaestrosVaSinNombre)
{
    p.Ejecuta({"INSERT INTO M_OPCIONALES VALUES ('COL','NUL',Null)"});
    p.Articulo("X");
    p.Valor("X", "COL", "NUL", 1);
    p.Valor("X", "COL", "ZZZ", 2);
    p.Valor("X", "MED", "M", 1);

    p.Genera();

    EXPECT_EQ(p.Elementos("TITLE"), (QStringList{Cdata("Nombre X (Color : ) ( : )"),
                                                 Cdata("Nombre X (Color : ) ( : )")}));
}

TEST_F(Combinaciones, UnaColumnaDeIncrementoQueNoExisteCierraElPrograma)
{
    p.configuracion.CampoPrecio = "PRECIO";
    p.Articulo("X");
    p.Valor("X", "COL", "ROJ", 1);

    EXPECT_THROW(p.Genera(), data::FinDePrograma);

    ASSERT_EQ(p.prueba.avisos.cajas.size(), 2U);
    EXPECT_TRUE(p.prueba.avisos.cajas[0].texto.contains("INC_PVPO"));
    EXPECT_EQ(p.LineasDelFeed().last(), "<PRODUCTS>");
}

} // namespace
