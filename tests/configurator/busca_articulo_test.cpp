#include "configurador_de_prueba.h"
#include "configurator/busca_articulo.h"

using namespace tolmo;
using namespace tolmo::configurator;

namespace {

class BuscaArticulo : public testing::Test, public ConfiguradorDePrueba {};

TEST_F(BuscaArticulo, PorSuCodigoEnLaTablaDeLaEmpresa)
{
    EXPECT_EQ(DescripcionDeArticulo(programa, "A1"), QString("Olla"));
    EXPECT_FALSE(DescripcionDeArticulo(programa, "X1"));
    EXPECT_EQ(sentencias.first(), "SELECT * FROM M_ARTIC where CodArticulo='A1'");
}

TEST_F(BuscaArticulo, PorSuCodigoAlternativo)
{
    EXPECT_EQ(DescripcionDeAlternativo(programa, "X2"), QString("Cazo"));
    EXPECT_FALSE(DescripcionDeAlternativo(programa, "A2"));
    EXPECT_EQ(sentencias.first(),
              "select CODARTICULO,DESCRIPCION from M_ARTIC where CODALTERNATIVO='X2'");
}

TEST_F(BuscaArticulo, UnArticuloSinDescripcionExiste)
{
    Ejecuta({"UPDATE M_ARTIC SET DESCRIPCION=NULL WHERE CODARTICULO='A3'"});

    EXPECT_EQ(DescripcionDeArticulo(programa, "A3"), QString(""));
}

TEST_F(BuscaArticulo, ElSelectorSeAbreConLoQueEmpiezaPorLoTecleado)
{
    EXPECT_EQ(FiltroPorArticulo("A1"), "(codarticulo like 'A1%')");
    EXPECT_EQ(FiltroPorAlternativo("X"), "(codalternativo like 'X%')");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE " + FiltroPorAlternativo("X2")), "A2");
}

} // namespace
