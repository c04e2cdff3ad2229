#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/texto_consulta.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

const QString Muestra =
    QStringLiteral(KOV_FUENTES "/tests/data/access/mdb/muestras/2003-saved-queries.mdb");

Pieza Clase(int marca, const QString& destino = {})
{
    return {.atributo = 1, .marca = marca, .nombre1 = destino};
}

template <typename Tarea> QString Fallo(Tarea&& tarea)
{
    try {
        tarea();
    } catch (const ErrorMdb& error) {
        return error.Descripcion();
    }
    return {};
}

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

TEST(ConsultaGuardada, UnaAnexionDeValoresLosLlevaEnLaLista)
{
    const auto valor = [](const QString& expresion, const QString& columna) {
        return Pieza{.atributo = 6, .marca = -0x8000, .nombre2 = columna, .expresion = expresion};
    };

    EXPECT_EQ(SqlDe({Clase(3, "M ARTIC"), valor("54", "ID"), valor("'a''b'", "Campo 3")}),
              "INSERT INTO [M ARTIC] (ID, [Campo 3])\nVALUES (54, 'a''b');");
    EXPECT_EQ(SqlDe({Clase(3, "T"), valor("1", {}), valor("Null", {})}),
              "INSERT INTO T\nVALUES (1, Null);");
}

TEST(ConsultaGuardada, UnaAnexionSinListaVaPorLosNombresDeLosCampos)
{
    EXPECT_EQ(SqlDe({Clase(3, "T"), Opciones(1), Fuente("U")}), "INSERT INTO T\nSELECT *\nFROM U;");
    EXPECT_EQ(SqlDe({Clase(3, "T"),
                     Opciones(2),
                     Fuente("U"),
                     Salida("U.*"),
                     {.atributo = 8, .expresion = "U.x>0"}}),
              "INSERT INTO T\nSELECT DISTINCT U.*\nFROM U\nWHERE U.x>0;");
}

TEST(ConsultaGuardada, UnBorradoDiceSuTablaSusCamposONada)
{
    EXPECT_EQ(SqlDe({Clase(5), Opciones(1), Fuente("T")}), "DELETE *\nFROM T;");
    EXPECT_EQ(SqlDe({Clase(5), Fuente("T")}), "DELETE\nFROM T;");
    EXPECT_EQ(SqlDe({Clase(5), Opciones(8), Fuente("T"), Fuente("U"), Salida("T.*"),
                     Enlace(1, "T", "U", "T.x=U.x")}),
              "DELETE DISTINCTROW T.*\nFROM T INNER JOIN U ON T.x=U.x;");
}

TEST(ConsultaGuardada, UnaActualizacionDeVariasTablasDiceDeCualEsCadaCampo)
{
    const Pieza cambio{.atributo = 6, .nombre2 = "M ARTIC.PVP 1", .expresion = "U.p*1.1"};

    EXPECT_EQ(SqlDe({Clase(4), Fuente("M ARTIC"), Fuente("U"), cambio,
                     Enlace(2, "M ARTIC", "U", "[M ARTIC].x=U.x")}),
              "UPDATE [M ARTIC] LEFT JOIN U ON [M ARTIC].x=U.x\nSET [M ARTIC].[PVP 1] = U.p*1.1;");
}

TEST(ConsultaGuardada, OtraBaseSeDiceDondeEsta)
{
    const Pieza otra{.atributo = 4, .nombre1 = "C:\\L'Or\\x.mdb"};
    const Pieza dbase{.atributo = 4, .nombre1 = {}, .expresion = "dBASE 5.0;DATABASE=C:\\x"};
    Pieza destino = Clase(2, "T");
    destino.nombre2 = "D:\\y.mdb";

    EXPECT_EQ(SqlDe({otra, Fuente("T"), Salida("T.x")}),
              "SELECT T.x\nFROM T IN 'C:\\L''Or\\x.mdb';");
    EXPECT_EQ(SqlDe({Clase(5), Opciones(1), dbase, Fuente("T")}),
              "DELETE *\nFROM T IN '' [dBASE 5.0;DATABASE=C:\\x];");
    EXPECT_EQ(
        SqlDe({Clase(4), otra, Fuente("T"), {.atributo = 6, .nombre2 = "x", .expresion = "1"}}),
        "UPDATE T IN 'C:\\L''Or\\x.mdb'\nSET x = 1;");
    EXPECT_EQ(SqlDe({Fuente("T", "A", "C:\\x.mdb"), Salida("A.x")}),
              "SELECT A.x\nFROM [C:\\x.mdb].T AS A;");
    EXPECT_EQ(SqlDe({destino, Fuente("U"), Salida("x")}),
              "SELECT x\nINTO T IN 'D:\\y.mdb'\nFROM U;");
}

TEST(ConsultaGuardada, UnNombreQueSeriaDelLenguajeVaEntreCorchetes)
{
    EXPECT_EQ(SqlDe({Fuente("Order", "2ª"), Salida("x", "desc")}),
              "SELECT x AS [desc]\nFROM [Order] AS [2ª];");
}

TEST(ConsultaGuardada, LaDefinicionEsElTextoQueSeEscribio)
{
    Pieza clase = Clase(7);
    clase.expresion = QString("DROP TABLE T;\r\n") + QChar(0);

    EXPECT_EQ(SqlDe({clase}), "DROP TABLE T;");
}

TEST(ConsultaGuardada, LasDeOtrasClasesDicenCualEsLaSuya)
{
    EXPECT_EQ(Fallo([] {
                  SqlDe({Clase(6), Fuente("T")});
              }),
              "es de tabla de referencias cruzadas, y aquí no se calculan");
    EXPECT_EQ(Fallo([] { SqlDe({Clase(8)}); }),
              "es de paso a través, para un servidor, y aquí no se envían");
    EXPECT_EQ(Fallo([] { SqlDe({Clase(10)}); }), "es de una clase desconocida");
    EXPECT_EQ(Fallo([] { SqlDe({Clase(3), Fuente("T")}); }), "no dice en qué tabla escribe");
    EXPECT_EQ(Fallo([] {
                  SqlDe({{.atributo = 2, .marca = 14, .nombre1 = "p"}, Fuente("T")});
              }),
              "un parámetro tiene un tipo desconocido");
}

TEST(ConsultaGuardada, UnirConUnaTablaQueNoEstaEsUnDanio)
{
    EXPECT_THROW(SqlDe({Fuente("A"), Enlace(1, "A", "B", "A.x=B.x")}), ErrorMdb);
    EXPECT_THROW(SqlDe({Fuente("A"), Fuente("B"), Enlace(4, "A", "B", "A.x=B.x")}), ErrorMdb);
}

TEST(ConsultaGuardada, SeLeenLasDeUnFicheroDeAccess)
{
    const Base base(Muestra);

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
}

TEST(ConsultaGuardada, SeLeenLasAccionesDeUnFicheroDeAccess)
{
    const Base base(Muestra);

    EXPECT_EQ(
        base.SqlDeConsulta("UpdateQuery"),
        "PARAMETERS [User Name] Text;\n"
        "UPDATE Table1\n"
        "SET Table1.col1 = \"foo\", Table1.col2 = [Table2].[col3], [Table2].[col1] = [User Name]\n"
        "WHERE ((([Table2].[col1]) Is Not Null));");
    EXPECT_EQ(base.SqlDeConsulta("AppendQuery"),
              "INSERT INTO Table3 (col2, col2, col3)\n"
              "SELECT [Table1].[col2], [Table2].[col2], [Table2].[col3]\n"
              "FROM Table3, Table1 INNER JOIN Table2 ON [Table1].[col1]=[Table2].[col1];");
    EXPECT_EQ(base.SqlDeConsulta("DeleteQuery"), "DELETE Table1.col1, Table1.col2, Table1.col3\n"
                                                 "FROM Table1\n"
                                                 "WHERE (((Table1.col1)>\"blah\"));");
    EXPECT_EQ(
        base.SqlDeConsulta("MakeTableQuery"),
        "SELECT Max(Table2.col1) AS MaxOfcol1, Table2.col2, Table3.col2\n"
        "INTO Table4\n"
        "FROM (Table2 INNER JOIN Table1 ON Table2.col1 = Table1.col2) RIGHT JOIN Table3 ON Table1.col2 = Table3.col3\n"
        "GROUP BY Table2.col2, Table3.col2\n"
        "HAVING (((Max(Table2.col1))=\"buzz\") AND ((Table2.col2)<>\"blah\"));");
    EXPECT_EQ(base.SqlDeConsulta("DataDefinitionQuery"),
              "CREATE TABLE Table5 (col1 CHAR, col2 CHAR);");
}

TEST(ConsultaGuardada, LoQueNoSeUsaDiceSuNombreYSuClase)
{
    const Base base(Muestra);

    EXPECT_EQ(
        Fallo([&] { base.SqlDeConsulta("crosstabquery"); }),
        "La consulta CrosstabQuery no se puede usar: es de tabla de referencias cruzadas, y aquí no se calculan (fichero " +
            Muestra + ")");
    EXPECT_EQ(
        Fallo([&] { base.SqlDeConsulta("PassthroughQuery"); }),
        "La consulta PassthroughQuery no se puede usar: es de paso a través, para un servidor, y aquí no se envían (fichero " +
            Muestra + ")");
    EXPECT_EQ(Fallo([&] { base.SqlDeConsulta("NoEsta"); }),
              "La consulta no existe: NoEsta (fichero " + Muestra + ")");
}

} // namespace
