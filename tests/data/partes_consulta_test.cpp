#include "data/partes_consulta.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::ParteConsulta;

namespace {

TEST(ParteConsulta, CortaPorSusPalabras)
{
    const auto partes = ParteConsulta(
        "Select CODIGO,NOMBRE from USUARIOS where (NOMBRE<>'') group by CODIGO,NOMBRE order by NOMBRE");

    EXPECT_EQ(partes.seleccion, "Select CODIGO,NOMBRE");
    EXPECT_EQ(partes.tabla, "USUARIOS");
    EXPECT_EQ(partes.condicion, "(NOMBRE<>'')");
    EXPECT_EQ(partes.grupo, "CODIGO,NOMBRE");
    EXPECT_EQ(partes.orden, "NOMBRE");
}

TEST(ParteConsulta, LoQueFaltaQuedaVacio)
{
    const auto partes = ParteConsulta("SELECT * FROM M_OPCIONALES_CAT");

    EXPECT_EQ(partes.tabla, "M_OPCIONALES_CAT");
    EXPECT_EQ(partes.condicion, "");
    EXPECT_EQ(partes.grupo, "");
    EXPECT_EQ(partes.orden, "");
}

TEST(ParteConsulta, NoMiraEntreComillasNiEntreParentesis)
{
    const auto partes = ParteConsulta(
        "SELECT * FROM M_ARTIC where NOTAS='va order by fe' AND CODIGO IN (SELECT C FROM T WHERE X=1 ORDER BY C) order by CODIGO");

    EXPECT_EQ(partes.tabla, "M_ARTIC");
    EXPECT_EQ(partes.condicion,
              "NOTAS='va order by fe' AND CODIGO IN (SELECT C FROM T WHERE X=1 ORDER BY C)");
    EXPECT_EQ(partes.orden, "CODIGO");
}

TEST(ParteConsulta, UnBlancoPuedeCerrarUnaParteYAbrirOtra)
{
    const auto partes = ParteConsulta("Select A from T  order by A");

    EXPECT_EQ(partes.tabla, "T");
    EXPECT_EQ(partes.orden, "A");
}

TEST(ConOrden, CambiaElOrdenYNadaMas)
{
    EXPECT_EQ(data::ConOrden("Select A,B from T where (B='order by') order by A", "B"),
              "Select A,B from T where (B='order by') order by B");
    EXPECT_EQ(data::ConOrden("SELECT * FROM T", "B"), "SELECT * FROM T order by B");
}

TEST(ConCondicion, LaPoneDetrasDeLaQueHay)
{
    EXPECT_EQ(data::ConCondicion("Select A from T order by A", "A >= 3"),
              "Select A FROM T WHERE A >= 3 ORDER BY A");
    EXPECT_EQ(data::ConCondicion("Select A from T where A=1 OR B=2 order by A", "A >= 3"),
              "Select A FROM T WHERE (A=1 OR B=2) AND (A >= 3) ORDER BY A");
    EXPECT_EQ(data::ConCondicion("Select A from T order by A", ""), "Select A from T order by A");
}

} // namespace
