#include "base_prueba.h"
#include "data/recordset.h"

using namespace tolmo::data;

namespace {

class OrdenesAccess : public testing::Test, public BaseDePrueba {
  protected:
    OrdenesAccess()
    {
        Haz("CREATE TABLE T (ID INT, TEXTO nvarchar(5), NOTAS NTEXT, CORTO SMALLINT, PEQUENO BYTE, SIMPLE SINGLE, DOBLE DOUBLE, DINERO CURRENCY, FECHA DATETIME, VERDAD YESNO)");
    }
};

TEST_F(OrdenesAccess, LosValoresSeConviertenAlTipoDeSuCampo)
{
    Haz("INSERT INTO T VALUES ('7','abc',12.5,2.5,'255',0.1,'1.25',1.23456,'15/03/2024',7)");
    Haz("INSERT INTO T (ID,TEXTO,FECHA,VERDAD,DINERO,CORTO) VALUES (3.5,12,#03/15/2024 10:20:30#,'False',TRUE,-1)");

    EXPECT_EQ(Tabla("SELECT * FROM T WHERE ID=7"),
              "7|abc|12.5|2|255|0.1|1.25|1.2346|15/03/2024|True");
    EXPECT_EQ(Tabla("SELECT ID,TEXTO,FECHA,VERDAD,DINERO,CORTO FROM T WHERE ID<>7"),
              "4|12|15/03/2024 10:20:30|False|-1|-1");
    QList<int> tipos;
    for (const auto& campo : Filas("SELECT * FROM T").campos)
        tipos << campo.tipo;
    EXPECT_EQ(tipos, (QList<int>{3, 202, 203, 2, 17, 4, 5, 6, 7, 11}));
}

TEST_F(OrdenesAccess, LasFechasSeGuardanComoTextoIsoYLasVerdadesComoMenosUno)
{
    Haz("INSERT INTO T (FECHA,VERDAD,DINERO) VALUES ('1/2/2024 9:30',TRUE,'2.50')");

    auto fila = Proveedor().Motor().Prepara("SELECT FECHA, typeof(FECHA), VERDAD, DINERO FROM T");
    ASSERT_TRUE(fila.Paso());
    EXPECT_EQ(fila.Texto(0), "2024-02-01 09:30:00");
    EXPECT_EQ(fila.Texto(1), "text");
    EXPECT_EQ(fila.Entero(2), -1);
    EXPECT_EQ(fila.Decimal(3), 2.5);
}

TEST_F(OrdenesAccess, UnaVerdadSinValorEsFalsa)
{
    Haz("INSERT INTO T (ID) VALUES (1)");
    Haz("INSERT INTO T (ID,VERDAD) VALUES (2,NULL)");

    EXPECT_EQ(Tabla("SELECT ID,VERDAD FROM T WHERE VERDAD=FALSE ORDER BY ID"), "1|False 2|False");
}

TEST_F(OrdenesAccess, UnTextoDeCerosALaIzquierdaSigueSiendoTexto)
{
    Haz("INSERT INTO T (TEXTO,NOTAS) VALUES ('007','000123')");

    EXPECT_EQ(Uno("SELECT TEXTO FROM T"), QVariant("007"));
    EXPECT_EQ(Uno("SELECT NOTAS FROM T"), QVariant("000123"));
}

TEST_F(OrdenesAccess, LoQueNoCabeNombraElCampo)
{
    EXPECT_EQ(Fallo("INSERT INTO T (TEXTO) VALUES ('abcdef')"),
              "El texto para el campo T.TEXTO tiene 6 caracteres y caben 5");
    EXPECT_EQ(Fallo("INSERT INTO T (TEXTO) VALUES ('ñandú')"), "");
    EXPECT_EQ(Fallo("INSERT INTO T (TEXTO) SELECT TEXTO & TEXTO FROM T"),
              "El texto para el campo T.TEXTO tiene 10 caracteres y caben 5");
    EXPECT_EQ(Fallo("INSERT INTO T (ID) VALUES ('siete')"),
              "El campo T.ID es un número y no admite \"siete\"");
    EXPECT_EQ(Fallo("INSERT INTO T (ID) VALUES ('')"),
              "El campo T.ID es un número y no admite \"\"");
    EXPECT_EQ(Fallo("INSERT INTO T (CORTO) VALUES (40000)"),
              "El número 40000 no cabe en el campo T.CORTO");
    EXPECT_EQ(Fallo("INSERT INTO T (PEQUENO) VALUES (-1)"),
              "El número -1 no cabe en el campo T.PEQUENO");
    EXPECT_EQ(Fallo("INSERT INTO T (FECHA) VALUES ('31/02/2024')"),
              "El campo T.FECHA es una fecha y no admite \"31/02/2024\"");
    EXPECT_EQ(Fallo("INSERT INTO T (VERDAD) VALUES ('quizás')"),
              "El campo T.VERDAD es un número y no admite \"quizás\"");
    EXPECT_EQ(Fallo("UPDATE T SET TEXTO='demasiado' WHERE TEXTO='ñandú'"),
              "El texto para el campo T.TEXTO tiene 9 caracteres y caben 5");
    EXPECT_EQ(Tabla("SELECT TEXTO FROM T"), "ñandú");
}

TEST_F(OrdenesAccess, UnaInsercionQueFallaAMediasNoDejaFilas)
{
    Haz({"INSERT INTO T (ID,NOTAS) VALUES (1,'ab')",
         "INSERT INTO T (ID,NOTAS) VALUES (2,'demasiado largo')",
         "CREATE TABLE U (C nvarchar(5))"});

    EXPECT_EQ(Fallo("INSERT INTO U (C) SELECT NOTAS FROM T"),
              "El texto para el campo U.C tiene 15 caracteres y caben 5");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM U"), "0");
}

TEST_F(OrdenesAccess, LosCamposDeMasODeMenosSonErrores)
{
    EXPECT_EQ(Fallo("INSERT INTO T (ID,TEXTO) VALUES (1)"),
              "El número de valores no es el de los campos de destino (posición 13)");
    EXPECT_EQ(Fallo("INSERT INTO T VALUES (1,'a')"),
              "El número de valores no es el de los campos de destino (posición 13)");
    EXPECT_EQ(Fallo("INSERT INTO T (ID,ID) VALUES (1,2)"),
              "El campo ID está dos veces en INSERT (posición 13)");
    EXPECT_EQ(Fallo("INSERT INTO T (NADA) VALUES (1)"),
              "No se conoce el campo NADA en la tabla T (posición 13)");
    EXPECT_EQ(Fallo("INSERT INTO T SELECT ID AS NADA FROM T"),
              "No se conoce el campo NADA en la tabla T (posición 13)");
    EXPECT_EQ(Fallo("INSERT INTO NADA VALUES (1)"), "No se conoce la tabla NADA (posición 13)");
    EXPECT_EQ(Fallo("UPDATE T SET NADA=1"), "No se conoce el campo NADA (posición 14)");
    EXPECT_EQ(Fallo("DELETE FROM NADA"), "No se conoce la tabla o consulta NADA (posición 13)");
}

TEST_F(OrdenesAccess, UnSelectSinListaDeCamposVaPorNombres)
{
    Haz({"INSERT INTO T (ID,TEXTO) VALUES (1,'a')",
         "INSERT INTO T SELECT TEXTO & 'b' AS TEXTO,ID+1 AS ID FROM T",
         "INSERT INTO T SELECT * FROM T"});

    EXPECT_EQ(Tabla("SELECT ID,TEXTO FROM T ORDER BY ID"), "1|a 1|a 2|ab 2|ab");
}

TEST_F(OrdenesAccess, ModificarYBorrarDicenCuantasFilas)
{
    Haz({"INSERT INTO T (ID,TEXTO) VALUES (1,'a')", "INSERT INTO T (ID,TEXTO) VALUES (2,'A')",
         "INSERT INTO T (ID,TEXTO) VALUES (3,'b')"});

    EXPECT_EQ(Haz("UPDATE T SET ID=ID*10,TEXTO='x' & ID WHERE TEXTO='a'"), 2);
    EXPECT_EQ(Tabla("SELECT ID,TEXTO FROM T ORDER BY ID"), "3|b 10|x1 20|x2");
    EXPECT_EQ(Haz("UPDATE T AS Z SET Z.TEXTO='y' WHERE Z.ID>=10"), 2);
    EXPECT_EQ(Haz("DELETE * FROM T WHERE ID=10"), 1);
    EXPECT_EQ(Haz("DELETE T.* FROM T WHERE ID=20"), 1);
    EXPECT_EQ(Haz("DELETE FROM T WHERE ID=99"), 0);
    EXPECT_EQ(Haz("DELETE FROM T"), 1);
}

TEST_F(OrdenesAccess, ModificarConUnaReunionTomaLosValoresDeLaOtraTabla)
{
    Haz({"CREATE TABLE P (ID INT, PRECIO CURRENCY)", "INSERT INTO P VALUES (1,10)",
         "INSERT INTO P VALUES (3,30)", "INSERT INTO T (ID,DINERO) VALUES (1,0)",
         "INSERT INTO T (ID,DINERO) VALUES (2,0)", "INSERT INTO T (ID,DINERO) VALUES (3,5)"});

    EXPECT_EQ(Haz("UPDATE T INNER JOIN P ON T.ID=P.ID SET T.DINERO=P.PRECIO*2 WHERE T.DINERO<5"),
              1);
    EXPECT_EQ(Tabla("SELECT ID,DINERO FROM T ORDER BY ID"), "1|20 2|0 3|5");
    EXPECT_EQ(Haz("UPDATE T LEFT JOIN P ON T.ID=P.ID SET T.DINERO=-1 WHERE P.ID IS NULL"), 1);
    EXPECT_EQ(Tabla("SELECT ID,DINERO FROM T ORDER BY ID"), "1|20 2|-1 3|5");
    EXPECT_EQ(Fallo("UPDATE T INNER JOIN P ON T.ID=P.ID SET T.DINERO=1,P.PRECIO=2"),
              "UPDATE sólo puede cambiar campos de una tabla (posición 51)");
}

TEST_F(OrdenesAccess, BorrarConUnaReunionBorraDeLaTablaNombrada)
{
    Haz({"CREATE TABLE P (ID INT)", "INSERT INTO P VALUES (1)", "INSERT INTO P VALUES (1)",
         "INSERT INTO T (ID) VALUES (1)", "INSERT INTO T (ID) VALUES (2)"});

    EXPECT_EQ(Haz("DELETE DISTINCTROW T.* FROM T INNER JOIN P ON T.ID=P.ID"), 1);
    EXPECT_EQ(Tabla("SELECT ID FROM T"), "2");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM P"), "2");
    EXPECT_EQ(Fallo("DELETE FROM T INNER JOIN P ON T.ID=P.ID"),
              "DELETE ha de decir de qué tabla se borra (posición 8)");
}

class DefinicionesAccess : public testing::Test, public BaseDePrueba {};

TEST_F(DefinicionesAccess, LaClaveYLosIndicesUnicosNoMiranMayusculas)
{
    Haz({"CREATE TABLE T (COD nvarchar(10) CONSTRAINT PK PRIMARY KEY, ALT nvarchar(10), N INT NOT NULL)",
         "CREATE UNIQUE INDEX IALT ON T (ALT)", "INSERT INTO T VALUES ('a','x',1)"});

    EXPECT_EQ(Fallo("INSERT INTO T VALUES ('A','y',1)"),
              "El valor está duplicado en un índice único: T.COD");
    EXPECT_EQ(Fallo("INSERT INTO T VALUES ('b','X',1)"),
              "El valor está duplicado en un índice único: T.ALT");
    EXPECT_EQ(Fallo("INSERT INTO T VALUES ('b',NULL,NULL)"),
              "El campo T.N no puede quedar sin valor");
    EXPECT_EQ(Fallo("INSERT INTO T VALUES (NULL,NULL,1)"),
              "El campo T.COD no puede quedar sin valor");
    EXPECT_EQ(Haz("INSERT INTO T VALUES ('á',NULL,1)"), 1);
    EXPECT_EQ(Haz("INSERT INTO T VALUES ('c',NULL,1)"), 1);
}

TEST_F(DefinicionesAccess, UnContadorNumeraSusFilas)
{
    Haz({"CREATE TABLE T (ID COUNTER, COD nvarchar(5), CONSTRAINT PK PRIMARY KEY (ID), CONSTRAINT U UNIQUE (COD))",
         "INSERT INTO T (COD) VALUES ('a')", "INSERT INTO T (COD) VALUES ('b')",
         "DELETE FROM T WHERE COD='b'", "INSERT INTO T (COD) VALUES ('c')"});

    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY ID"), "1|a 3|c");
    EXPECT_EQ(Fallo("INSERT INTO T (COD) VALUES ('A')"),
              "El valor está duplicado en un índice único: T.COD");
}

TEST_F(DefinicionesAccess, LosValoresPorDefecto)
{
    Haz({"CREATE TABLE T (ID INT, A nvarchar(5) DEFAULT 'x', B INT DEFAULT -3, C YESNO DEFAULT TRUE, D DATETIME DEFAULT #03/15/2024#)",
         "INSERT INTO T (ID) VALUES (1)"});

    EXPECT_EQ(Tabla("SELECT * FROM T"), "1|x|-3|True|15/03/2024");
    EXPECT_EQ(Fallo("CREATE TABLE U (A DATETIME DEFAULT DATE())"),
              "DEFAULT pide un valor constante (posición 36)");
}

TEST_F(DefinicionesAccess, UnaTablaSeAmpliaSeCambiaYSeReduce)
{
    Haz({"CREATE TABLE T (ID INT, A nvarchar(5))", "INSERT INTO T VALUES (1,'12')",
         "ALTER TABLE T ADD COLUMN B CURRENCY", "ALTER TABLE T ADD C YESNO", "UPDATE T SET B=2.5",
         "ALTER TABLE T ALTER COLUMN A INT"});

    EXPECT_EQ(Tabla("SELECT ID,A,B,C FROM T"), "1|12|2.5|False");
    EXPECT_EQ(Uno("SELECT A FROM T"), QVariant(12));
    Haz("ALTER TABLE T DROP COLUMN B");
    EXPECT_EQ(Fallo("SELECT B FROM T"), "No se conoce el campo B (posición 8)");
    EXPECT_EQ(Fallo("ALTER TABLE T ADD COLUMN id INT"),
              "El campo ID ya existe en la tabla T (posición 13)");
    EXPECT_EQ(Fallo("ALTER TABLE T DROP COLUMN NADA"),
              "No se conoce el campo NADA en la tabla T (posición 13)");
}

TEST_F(DefinicionesAccess, UnCambioDeTipoQueNoSePuedeNoCambiaNada)
{
    Haz({"CREATE TABLE T (A nvarchar(5))", "INSERT INTO T VALUES ('x')"});

    EXPECT_EQ(Fallo("ALTER TABLE T ALTER COLUMN A INT"),
              "El campo T.A es un número y no admite \"x\"");
    EXPECT_EQ(Tabla("SELECT * FROM T"), "x");
    EXPECT_EQ(Nombres("SELECT * FROM T"), (QStringList{"A"}));
}

TEST_F(DefinicionesAccess, LosIndicesSePonenYSeQuitan)
{
    Haz({"CREATE TABLE T (A nvarchar(5), B INT)", "CREATE TABLE U (A nvarchar(5))",
         "CREATE UNIQUE INDEX I ON T (A DESC, B)", "CREATE INDEX I ON U (A)",
         "ALTER TABLE U ADD CONSTRAINT K UNIQUE (A)", "INSERT INTO U VALUES ('a')"});

    EXPECT_EQ(Fallo("INSERT INTO U VALUES ('A')"),
              "El valor está duplicado en un índice único: U.A");
    Haz("ALTER TABLE U DROP CONSTRAINT K");
    EXPECT_EQ(Haz("INSERT INTO U VALUES ('A')"), 1);
    Haz("DROP INDEX I ON U");
    EXPECT_EQ(Fallo("CREATE INDEX J ON U (NADA)"), "No se conoce el campo NADA en la tabla U");
}

TEST_F(DefinicionesAccess, LosTiposSeDeclaranConTodosSusNombres)
{
    Haz("CREATE TABLE T (A TEXT(20), B MEMO, C LONG, D SHORT, E FLOAT, F MONEY, G BIT, H VARCHAR, I BYTE, J LONGTEXT, K NUMBER, L GUID)");
    QStringList tipos;
    for (const auto& campo : Filas("SELECT * FROM T").campos)
        tipos << QString::number(campo.tipo) + ":" + QString::number(campo.ancho);

    EXPECT_EQ(tipos, (QStringList{"202:20", "203:0", "3:0", "2:0", "5:0", "6:0", "11:0", "202:255",
                                  "17:0", "203:0", "5:0", "202:38"}));
    EXPECT_EQ(Fallo("CREATE TABLE U (A COSA)"), "No se conoce el tipo de datos COSA (posición 19)");
    EXPECT_EQ(Fallo("CREATE TABLE t (A INT)"), "La tabla t ya existe");
    EXPECT_EQ(Fallo("CREATE TABLE U (A INT, CONSTRAINT K PRIMARY KEY (B))"),
              "No se conoce el campo B en la tabla U");
}

class ConjuntosCambiables : public testing::Test, public BaseDePrueba {
  protected:
    ConjuntosCambiables()
    {
        Haz({"CREATE TABLE T (COD nvarchar(5) PRIMARY KEY, N INT, F DATETIME, V YESNO)",
             "INSERT INTO T VALUES ('b',2,NULL,FALSE)", "INSERT INTO T VALUES ('a',1,NULL,FALSE)"});
    }

    int NumeroDe(const std::function<void()>& accion)
    {
        try {
            accion();
        } catch (const ErrorSql& error) {
            return error.Numero();
        }
        return 0;
    }
};

TEST_F(ConjuntosCambiables, SeEscribenPorLaFilaYNoPorSusValores)
{
    auto filas = Filas("SELECT N AS NUMERO,T.* FROM T ORDER BY COD", true);

    Proveedor().Actualiza(
        filas, 0, {{"NUMERO", 10}, {"F", QDateTime(QDate(2024, 3, 15), QTime(8, 0))}, {"V", true}});
    const auto clave =
        Proveedor().Inserta(filas, {{"COD", "c"}, {"n", "3"}, {"F", QDate(2024, 1, 2)}});
    Proveedor().Borra(filas, 1);

    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY COD"),
              "a|10|15/03/2024 8:00:00|True c|3|02/01/2024|False");
    filas.claves.push_back(clave);
    Proveedor().Actualiza(filas, 2, {{"N", Nulo()}});
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE COD='c'"), "NULL");
}

TEST_F(ConjuntosCambiables, UnMomentoEnLaHoraQueElCambioSaltaSeGuardaYSeLeeEntero)
{
    const auto filas = Filas("SELECT * FROM T ORDER BY COD", true);

    Proveedor().Actualiza(filas, 0, {{"F", QDateTime(QDate(2024, 3, 31), QTime(2, 30))}});

    const auto leido = Uno("SELECT F FROM T WHERE COD='a'");
    EXPECT_EQ(leido, QVariant(SinZona(QDate(2024, 3, 31), QTime(2, 30))));
    EXPECT_TRUE(leido.toDateTime().isValid());
}

TEST_F(ConjuntosCambiables, UnTopTambienSeCambia)
{
    const auto filas = Filas("SELECT TOP 1 * FROM T ORDER BY COD", true);

    ASSERT_EQ(filas.claves.size(), 1U);
    Proveedor().Actualiza(filas, 0, {{"N", 77}});
    EXPECT_EQ(Tabla("SELECT COD FROM T WHERE N=77"), "a");
}

TEST_F(ConjuntosCambiables, LoQueVieneDeVariasTablasOAgrupadoNoSeCambia)
{
    EXPECT_EQ(Filas("SELECT * FROM T", false).tabla, "");
    EXPECT_EQ(Filas("SELECT T.COD FROM T INNER JOIN T AS U ON T.COD=U.COD", true).tabla, "");
    EXPECT_EQ(Filas("SELECT DISTINCT COD FROM T", true).tabla, "");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM T", true).tabla, "");
    EXPECT_EQ(Filas("SELECT COD FROM T UNION SELECT COD FROM T", true).tabla, "");
    EXPECT_EQ(Filas("SELECT * FROM (SELECT * FROM T) AS S", true).tabla, "");
}

TEST_F(ConjuntosCambiables, UnValorQueElCampoNoAdmiteTieneSuNumero)
{
    const auto filas = Filas("SELECT * FROM T", true);

    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Actualiza(filas, 0, {{"N", "x"}});
              }),
              numero_error::CampoIncorrecto);
    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Actualiza(filas, 0, {{"COD", "demasiado"}});
              }),
              numero_error::CampoIncorrecto);
    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Inserta(filas, {{"COD", "d"}, {"F", "ayer"}});
              }),
              numero_error::CampoIncorrecto);
    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Inserta(filas, {{"COD", "A"}});
              }),
              numero_error::Sentencia);
    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Actualiza(filas, 0, {{"NADA", 1}});
              }),
              numero_error::Sentencia);
    EXPECT_EQ(NumeroDe([&] { Haz("UPDATE T SET N='x'"); }), numero_error::Sentencia);
    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY COD"), "a|1|NULL|False b|2|NULL|False");
}

TEST_F(ConjuntosCambiables, UnaFilaQueYaNoEstaEsUnError)
{
    const auto filas = Filas("SELECT * FROM T", true);
    Haz("DELETE FROM T");

    EXPECT_EQ(NumeroDe([&] {
                  Proveedor().Actualiza(filas, 0, {{"N", 5}});
              }),
              numero_error::Sentencia);
}

} // namespace
