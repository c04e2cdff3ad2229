#include "configurator/consulta_combinaciones.h"
#include <gtest/gtest.h>

using namespace tolmo::configurator;

namespace {

TEST(SqlCategoriasDeArticulo, PideLasCategoriasConValores)
{
    EXPECT_EQ(
        SqlCategoriasDeArticulo("A7"),
        "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='A7' ORDER BY CODCATEGORIA");
}

TEST(SqlCombinaciones, UnaSolaCategoriaSeOrdenaPorColumnasSinPrefijo)
{
    EXPECT_EQ(
        SqlCombinaciones("A7", {"COL"}, 1),
        "SELECT 1 AS CUANTASCAT,0 + T001.INC_PVP AS INC_PVP_COMBINA,0 + T001.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='A7' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 ORDER BY SECUENCIA,CODCATEGORIA,VALOR");
}

TEST(SqlCombinaciones, VariasCategoriasDanUnProductoSinCondicionOrdenadoPorLaPrimera)
{
    EXPECT_EQ(
        SqlCombinaciones("A7", {"COL", "TAL"}, 3),
        "SELECT 2 AS CUANTASCAT,0 + T001.INC_PVP3 + T002.INC_PVP3 AS INC_PVP_COMBINA,0 + T001.PESO + T002.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='A7' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 , (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='TAL' AND CODARTICULO='A7' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T002 ORDER BY T001.SECUENCIA,T001.CODCATEGORIA,T001.VALOR,T002.SECUENCIA,T002.CODCATEGORIA,T002.VALOR");
}

TEST(SqlCombinaciones, LaTarifaUnoLeeLaColumnaSinNumero)
{
    EXPECT_TRUE(SqlCombinaciones("A7", {"COL"}, 1).contains("T001.INC_PVP AS"));
    EXPECT_TRUE(SqlCombinaciones("A7", {"COL"}, 2).contains("T001.INC_PVP2 AS"));
    EXPECT_TRUE(SqlCombinaciones("A7", {"COL"}, 5).contains("T001.INC_PVP5 AS"));
}

TEST(SqlCombinaciones, LosIncrementosPuedenVenirDeLaColumnaQueSeDiga)
{
    const QString sql = SqlCombinaciones("A7", {"COL", "TAL"}, "INC_PVPX");

    EXPECT_TRUE(sql.startsWith(
        "SELECT 2 AS CUANTASCAT,0 + T001.INC_PVPX + T002.INC_PVPX AS INC_PVP_COMBINA,0 + T001.PESO + T002.PESO AS PESO_COMBINA,* FROM "));
}

TEST(SqlCombinaciones, ElNombreDeLaDecimaCategoriaTieneTresCifras)
{
    const QStringList categorias(10, QStringLiteral("X"));

    EXPECT_TRUE(
        SqlCombinaciones("A7", categorias, 1).contains(") AS T010 ORDER BY T001.SECUENCIA"));
}

TEST(ColumnaDeCombinacion, ConUnaCategoriaNoLlevaPrefijoYConVariasSi)
{
    EXPECT_EQ(ColumnaDeCombinacion(1, 1, "VALOR"), "VALOR");
    EXPECT_EQ(ColumnaDeCombinacion(1, 2, "VALOR"), "T001.VALOR");
    EXPECT_EQ(ColumnaDeCombinacion(12, 12, "FOTO"), "T012.FOTO");
}

} // namespace
