#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/consulta_guardada.h"
#include "data/access/mdb/errores_mdb.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

Pieza Fuente(const QString& nombre, const QString& alias = {}, const QString& expresion = {})
{
    return {.atributo = 5, .nombre1 = nombre, .nombre2 = alias, .expresion = expresion};
}

Pieza Salida(const QString& expresion, const QString& alias = {})
{
    return {.atributo = 6, .nombre1 = alias, .expresion = expresion};
}

Pieza Enlace(int clase, const QString& izquierda, const QString& derecha, const QString& condicion)
{
    return {.atributo = 7,
            .marca = clase,
            .nombre1 = izquierda,
            .nombre2 = derecha,
            .expresion = condicion};
}

Pieza Opciones(int marca, const QString& cuantas = {})
{
    return {.atributo = 3, .marca = marca, .nombre1 = cuantas};
}

TEST(ConsultaGuardada, SeVuelveAUnirComoSeGuardo)
{
    const std::vector<Pieza> piezas = {
        Opciones(2),
        Fuente("Table1"),
        Fuente("Table2"),
        Fuente("Table3"),
        Salida("Table1.*"),
        Salida("Table2.col1"),
        Enlace(2, "Table1", "Table3", "Table1.col1 = Table3.col1"),
        Enlace(1, "Table3", "Table2", "Table3.col1 = Table2.col1"),
        Enlace(1, "Table3", "Table2", "Table3.col1 = Table2.col2"),
        {.atributo = 11, .expresion = "Table2.col1"},
    };

    EXPECT_EQ(
        SqlDe(piezas),
        "SELECT DISTINCT Table1.*, Table2.col1\n"
        "FROM (Table1 LEFT JOIN Table3 ON Table1.col1 = Table3.col1) INNER JOIN Table2 ON (Table3.col1 = Table2.col2) AND (Table3.col1 = Table2.col1)\n"
        "ORDER BY Table2.col1;");
}

TEST(ConsultaGuardada, CadaClausulaEnSuSitio)
{
    const std::vector<Pieza> piezas = {
        {.atributo = 2, .marca = 10, .extra = 20, .nombre1 = "Qué letra"},
        {.atributo = 2, .nombre1 = "otro"},
        Opciones(0x30 | 4, "5"),
        Fuente("M ARTIC"),
        Fuente("T002", "Valores"),
        Salida("Count(*)", "Cuántos son"),
        Salida("T002.VALOR"),
        {.atributo = 8, .expresion = "CODIGO Like \"*a\""},
        {.atributo = 9, .expresion = "T002.VALOR"},
        {.atributo = 10, .expresion = "Count(*)>1"},
        {.atributo = 11, .nombre1 = "D", .expresion = "Count(*)"},
        {.atributo = 11, .expresion = "T002.VALOR"},
    };

    EXPECT_EQ(SqlDe(piezas), "PARAMETERS [Qué letra] Text(20), otro Value;\n"
                             "SELECT TOP 5 PERCENT Count(*) AS [Cuántos son], T002.VALOR\n"
                             "FROM [M ARTIC], T002 AS Valores\n"
                             "WHERE CODIGO Like \"*a\"\n"
                             "GROUP BY T002.VALOR\n"
                             "HAVING Count(*)>1\n"
                             "ORDER BY Count(*) DESC, T002.VALOR\n"
                             "WITH OWNERACCESS OPTION;");
}

TEST(ConsultaGuardada, TodasLasColumnasVanDetrasDeLasNombradas)
{
    EXPECT_EQ(SqlDe({Opciones(1 | 8), Fuente("A"), Salida("A.x")}),
              "SELECT DISTINCTROW A.x, *\nFROM A;");
}

TEST(ConsultaGuardada, UnaSubconsultaVaEntreParentesis)
{
    EXPECT_EQ(SqlDe({Fuente({}, "S", "SELECT x FROM B"), Salida("S.x")}),
              "SELECT S.x\nFROM (SELECT x FROM B) AS S;");
}

TEST(ConsultaGuardada, UnaUnionJuntaSusPartes)
{
    std::vector<Pieza> piezas = {
        {.atributo = 1, .marca = 9},
        Opciones(1),
        Fuente({}, "X7YZ_____1", "Select a From A\r\n"),
        Fuente({}, "X7YZ_____2", "Select b From B"),
        {.atributo = 11, .expresion = "a"},
    };

    EXPECT_EQ(SqlDe(piezas), "Select a From A\nUNION ALL Select b From B\nORDER BY a;");
    piezas[1].marca = 3;
    EXPECT_EQ(SqlDe(piezas), "Select a From A\nUNION Select b From B\nORDER BY a;");
}

TEST(ConsultaGuardada, LoQueNoSeleccionaNoSeLee)
{
    for (int clase = 2; clase <= 8; ++clase)
        EXPECT_THROW(SqlDe({{.atributo = 1, .marca = clase}}), ErrorMdb);
}

TEST(ConsultaGuardada, UnirConUnaTablaQueNoEstaEsUnDanio)
{
    EXPECT_THROW(SqlDe({Fuente("A"), Enlace(1, "A", "B", "A.x=B.x")}), ErrorMdb);
    EXPECT_THROW(SqlDe({Fuente("A"), Fuente("B"), Enlace(4, "A", "B", "A.x=B.x")}), ErrorMdb);
}

TEST(ConsultaGuardada, SeLeenLasDeUnFicheroDeAccess)
{
    const Base base(KOV_FUENTES "/tests/data/access/mdb/muestras/2003-saved-queries.mdb");

    EXPECT_EQ(
        base.SqlDeConsulta("selectquery"),
        "SELECT DISTINCT Table1.*, Table2.col1, Table2.col2, Table3.col3\n"
        "FROM (Table1 LEFT JOIN Table3 ON Table1.col1 = Table3.col1) INNER JOIN Table2 ON (Table3.col1 = Table2.col2) AND (Table3.col1 = Table2.col1)\n"
        "WHERE (((Table2.col2)=\"foo\" Or (Table2.col2) In (\"buzz\",\"bazz\")))\n"
        "ORDER BY Table2.col1;");
    EXPECT_EQ(base.SqlDeConsulta("UnionQuery"), "Select Table1.col1, Table1.col2\r\n"
                                                "where Table1.col1 = \"foo\"\r\n"
                                                "UNION\r\n"
                                                "Select Table2.col1, Table2.col2\n"
                                                "UNION ALL Select Table3.col1, Table3.col2\r\n"
                                                "where Table3.col3 > \"blah\";");
    EXPECT_THROW(base.SqlDeConsulta("DeleteQuery"), ErrorMdb);
    EXPECT_THROW(base.SqlDeConsulta("NoEsta"), ErrorMdb);
}

} // namespace
