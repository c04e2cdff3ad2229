#include "data/dialecto.h"
#include "data/errores.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Dialecto;

namespace {

struct CasoTraduccion {
    const char* regla;
    QString entra{};
    QString sale{};
};

QString MySql(const QString& sql)
{
    return data::TraduceSql(Dialecto::MySql, sql);
}

QString SqlServer(const QString& sql)
{
    return data::TraduceSql(Dialecto::SqlServer, sql);
}

std::string NombreDeRegla(const testing::TestParamInfo<CasoTraduccion>& caso)
{
    return caso.param.regla;
}

class TraduceSqlAMySql : public testing::TestWithParam<CasoTraduccion> {};

TEST_P(TraduceSqlAMySql, SigueSuRegla)
{
    EXPECT_EQ(MySql(GetParam().entra), GetParam().sale);
}

INSTANTIATE_TEST_SUITE_P(Ntext, TraduceSqlAMySql,
                         testing::Values(CasoTraduccion{"ElTextoLargoCambiaDeNombreEnCualquierCaja",
                                                        "ALTER TABLE T ADD C NText",
                                                        "ALTER TABLE T ADD C LONGTEXT"},
                                         CasoTraduccion{"SinPalabrasElTextoVuelveIgual",
                                                        "SELECT a FROM b WHERE c='d' ORDER BY e",
                                                        "SELECT a FROM b WHERE c='d' ORDER BY e"},
                                         CasoTraduccion{"ElTextoVacioVuelveVacio", "", ""}),
                         NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Len, TraduceSqlAMySql,
    testing::Values(
        CasoTraduccion{"LenDeUnaColumna", "SELECT LEN(X)", "SELECT  CHAR_LENGTH(X)"},
        CasoTraduccion{"LosBlancosTrasLenSeQuedan", "SELECT len  (X)", "SELECT  CHAR_LENGTH  (X)"},
        CasoTraduccion{"CadaLenSeCambia", "LEN(A)+LEN(B)", " CHAR_LENGTH(A)+ CHAR_LENGTH(B)"},
        CasoTraduccion{"LenSinParentesisSeDeja", "SELECT LENGUA FROM SILENCIO",
                       "SELECT LENGUA FROM SILENCIO"},
        CasoTraduccion{"ElFinalDeOtraPalabraTambienCuenta", "BALEN(X)", "BA CHAR_LENGTH(X)"},
        // The search goes on 11 places behind each hit, so that this second one is passed over.
        CasoTraduccion{"UnLenPegadoAOtroQuedaSinVer", "LEN LEN(X)", "LEN LEN(X)"},
        CasoTraduccion{"LenAlFinalDelTextoSeDeja", "SELECT LEN", "SELECT LEN"},
        CasoTraduccion{"LasLetrasQueCrecenEnMayusculasNoMuevenElSitio", "'ßß' AND LEN(X)",
                       "'ßß' AND  CHAR_LENGTH(X)"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Like, TraduceSqlAMySql,
    testing::Values(
        CasoTraduccion{"ComodinUnido", "X LIKE 'abc' & '%' AND Y",
                       "X LIKE CONCAT( 'abc','%') AND Y"},
        CasoTraduccion{"EnMinusculas", "x like 'abc' & '%'", "x like CONCAT( 'abc','%')"},
        CasoTraduccion{"VariosBlancosAntesDelSigno", "X LIKE 'a'   & '%'",
                       "X LIKE CONCAT( 'a','%')"},
        CasoTraduccion{"LosBlancosDelFinalSePierden", "X LIKE 'a' & '%' AND Y  ",
                       "X LIKE CONCAT( 'a','%') AND Y"},
        CasoTraduccion{"SoloElPrimeroSeCambia", "X LIKE 'a' & '%' AND Y LIKE 'b' & '%'",
                       "X LIKE CONCAT( 'a','%') AND Y LIKE 'b' , '%'"},
        CasoTraduccion{"SiElPrimeroNoEsDeComodinNoSeMiraOtro", "(X LIKE 'a' AND Y LIKE 'b' & '%')",
                       " CONCAT(X LIKE 'a' AND Y LIKE 'b' , '%')"},
        CasoTraduccion{"SinBlancoDetrasSeDeja", "A='%' OR X LIKE 'ab'", "A='%' OR X LIKE 'ab'"},
        CasoTraduccion{"SinComodinSeDeja", "X LIKE 'a%' AND Y", "X LIKE 'a%' AND Y"},
        // The operand ends at its first blank, wherever that stands.
        CasoTraduccion{"UnOperandoConBlancosNoSeCambia", "X LIKE 'a b' & '%' AND (Y=1)",
                       "X LIKE 'a b' , '%' AND  CONCAT(Y=1)"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Top, TraduceSqlAMySql,
    testing::Values(
        CasoTraduccion{"ElNumeroPasaAlFinal", "SELECT TOP 5 X FROM Y", "SELECT X FROM Y LIMIT  5"},
        CasoTraduccion{"EnMinusculas", "select top 30 x from y", "select x from y LIMIT  30"},
        CasoTraduccion{"SoloElPrimeroSeCambia", "SELECT TOP 5 X FROM (SELECT TOP 1 Y FROM Z) W",
                       "SELECT X FROM (SELECT TOP 1 Y FROM Z) W LIMIT  5"},
        CasoTraduccion{"SinBlancoDelanteSeDeja", "TOP 5 X", "TOP 5 X"},
        CasoTraduccion{"DosBlancosDetras", "SELECT TOP  5 X", "SELECT X LIMIT   5"},
        // From the third blank on the number is looked for too early.
        CasoTraduccion{"ConTresBlancosElNumeroSeQueda", "SELECT TOP   5 X", "SELECT 5 X LIMIT   "},
        // The rules follow each other: the blank behind this TOP is the one that LEN brings.
        CasoTraduccion{"ElBlancoDeLenLoHaceVisible", "'Mesa TOPLEN(2) x y'",
                       "'Mesa x y' LIMIT  CHAR_LENGTH(2)"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Funciones, TraduceSqlAMySql,
    testing::Values(CasoTraduccion{"IifPierdeUnaLetra", "SELECT IIF(A,B,C), iif(D,E,F)",
                                   "SELECT IF(A,B,C), IF(D,E,F)"},
                    CasoTraduccion{"LoPuestoNoSeVuelveAMirar", "IIIF(A,B,C)", "IIF(A,B,C)"},
                    CasoTraduccion{"IifAnidado", "IIF(A,IIF(B,C,D),E)", "IF(A,IF(B,C,D),E)"},
                    CasoTraduccion{"IntEsSuelo", "SELECT Int(A)", "SELECT FLOOR(A)"},
                    CasoTraduccion{"IntEsSueloTambienDentroDeOtraPalabra", "PRINT(A) MEDIUMINT(10)",
                                   "PRFLOOR(A) MEDIUMFLOOR(10)"},
                    CasoTraduccion{"IntConBlancoSeDeja", "INT (A)", "INT (A)"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Cstr, TraduceSqlAMySql,
    testing::Values(
        CasoTraduccion{"DeUnaColumna", "CSTR(A)", " CAST(A AS CHAR)"},
        CasoTraduccion{"DosLlamadas", "SELECT CStr(A),CStr(B)",
                       "SELECT  CAST(A AS CHAR), CAST(B AS CHAR)"},
        CasoTraduccion{"UnNombreQueEmpiezaAsiSeDeja", "SELECT CSTRING FROM T",
                       "SELECT CSTRING FROM T"},
        // The blank goes in place of the bracket, which stays inside.
        CasoTraduccion{"ConBlancoElParentesisSobra", "MYCSTR (A)", "MY CAST((A AS CHAR)"},
        CasoTraduccion{"AcabaEnElPrimerCierre", "CSTR(LEFT(A,2))", " CAST(LEFT(A,2 AS CHAR))"},
        CasoTraduccion{"UnaDentroDeOtra", "CSTR(CSTR(A))", " CAST( CAST(A AS CHAR AS CHAR))"},
        CasoTraduccion{"LaBusquedaSigueCincoMasAlla", "CSTR.CSTR(A)", "CSTR. CAST(A AS CHAR)"},
        CasoTraduccion{"UnaPegadaAOtraQuedaSinVer", "CSTRCSTR(A)", "CSTRCSTR(A)"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Concatena, TraduceSqlAMySql,
    testing::Values(
        CasoTraduccion{"DentroDeUnParDeParentesis", "(A & B)", " CONCAT(A , B)"},
        CasoTraduccion{"TodosLosDelMismoPar", "SELECT (A & B & C) FROM T",
                       "SELECT  CONCAT(A , B , C) FROM T"},
        CasoTraduccion{"DosPares", "(A & B) OR (C & D)", " CONCAT(A , B) OR  CONCAT(C , D)"},
        CasoTraduccion{"DetrasDeUnCierreSoloElSigno", "LEFT(A,2) & B", "LEFT(A,2) , B"},
        CasoTraduccion{"EntreDosAperturas", "(A & LEFT(B,2))", " CONCAT(A , LEFT(B,2))"},
        CasoTraduccion{"SinAperturaDelanteLaPrimeraDelTexto", "A & LEFT(B,2)",
                       "A , LEFT CONCAT(B,2)"},
        CasoTraduccion{"LaAperturaMasCercanaEsLaDeLaFuncion", "(LEFT(A,2) & B)",
                       "(LEFT CONCAT(A,2) , B)"},
        CasoTraduccion{"VariosConFuncionEnMedio", "(A & LEFT(B,1) & C & D)",
                       " CONCAT(A , LEFT CONCAT(B,1) , C , D)"},
        CasoTraduccion{"EnUnLiteralTambien", "INSERT INTO T VALUES('Tom & Jerry')",
                       "INSERT INTO T VALUES CONCAT('Tom , Jerry')"},
        CasoTraduccion{"AlFinalDelTexto", "F(A) &", "F(A) ,"},
        CasoTraduccion{"AlPrincipioDelTexto", "& F(A)", ", F CONCAT(A)"},
        CasoTraduccion{"ConParentesisAbiertoSinCerrar", "(A & B", " CONCAT(A , B"}),
    NombreDeRegla);

class NoSePuedeTraducirAMySql : public testing::TestWithParam<CasoTraduccion> {};

TEST_P(NoSePuedeTraducirAMySql, EsUnErrorDeTraduccion)
{
    EXPECT_THROW(MySql(GetParam().entra), data::ErrorTraduccion);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, NoSePuedeTraducirAMySql,
    testing::Values(CasoTraduccion{"SignoSinNingunParentesis", "A & B"},
                    CasoTraduccion{"SignoEnUnTextoDelRegistro", "PAN & VINO"},
                    // With two blanks behind it the LIKE isn't seen, and its "&" is left alone.
                    CasoTraduccion{"LikeConDosBlancosDejaElSigno", "X LIKE  'a' & '%'"},
                    // As the rule is told the text would be put together with its "&" for ever.
                    CasoTraduccion{"SignoAntesDeUnCierreQueNoSeAbrio", "A & B) (C"},
                    CasoTraduccion{"SignoAntesDeUnCierrePegadoALaApertura", "A & B)(C"},
                    CasoTraduccion{"SignoConSoloUnCierre", "A & B)"},
                    CasoTraduccion{"TopSinBlancoTrasElNumero", "SELECT TOP 5"},
                    CasoTraduccion{"TopEnUnTextoDelRegistro", "MESA TOP 10"},
                    CasoTraduccion{"CstrSinCerrar", "SELECT CSTR(A"},
                    CasoTraduccion{"CstrSinCerrarConBlanco", "CSTR  ("}),
    NombreDeRegla);

TEST(ErrorDeTraduccion, LlevaNumeroYModulo)
{
    try {
        MySql("A & B");
        FAIL() << "no error";
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 5);
        EXPECT_EQ(error.Modulo(), "TraduceSql");
        EXPECT_EQ(error.Descripcion(), "& sin ningún paréntesis");
    }
}

class TraduceSqlASqlServer : public testing::TestWithParam<CasoTraduccion> {};

TEST_P(TraduceSqlASqlServer, SigueSuRegla)
{
    EXPECT_EQ(SqlServer(GetParam().entra), GetParam().sale);
}

INSTANTIATE_TEST_SUITE_P(
    Logicos, TraduceSqlASqlServer,
    testing::Values(CasoTraduccion{"WhereFalse", "S WHERE FALSE", "S WHERE (1=0)"},
                    CasoTraduccion{"WhereTrue", "S where true", "S WHERE (1=1)"},
                    CasoTraduccion{"WhereFalseConDosBlancos", "S WHERE  FALSE", "S WHERE (1=0)"},
                    CasoTraduccion{"WhereTrueConDosBlancos", "S WHERE  TRUE", "S WHERE (1=1)"},
                    CasoTraduccion{"WhereFalseConTresBlancosEsUnNumero", "S WHERE   FALSE",
                                   "S WHERE   0"},
                    CasoTraduccion{"AndTrue", "A AND TRUE", "A AND (1=1)"},
                    CasoTraduccion{"AndFalse", "A and false", "A AND (1=0)"},
                    CasoTraduccion{"AndTrueConDosBlancos", "A AND  TRUE", "A AND (1=1)"},
                    CasoTraduccion{"AndFalseConDosBlancos", "A AND  FALSE", "A AND (1=0)"},
                    CasoTraduccion{"FalseSuelto", "A=False OR B='FALSEDAD'", "A=0 OR B='0DAD'"},
                    CasoTraduccion{"TrueSuelto", "A=True", "A=1"},
                    CasoTraduccion{"OrTrueNoTieneRegla", "A OR TRUE", "A OR 1"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Funciones, TraduceSqlASqlServer,
    testing::Values(CasoTraduccion{"IntEsSuelo", "Int(A)", "FLOOR(A)"},
                    CasoTraduccion{"ElSignoDeUnirEsMas", "A & 'B&C'", "A + 'B+C'"},
                    CasoTraduccion{"SumaDeMeses", "DateAdd('m',1,F)", "DATEADD(MONTH,1,F)"},
                    CasoTraduccion{"SumaDeDiasSeDeja", "DATEADD('d',1,F)", "DATEADD('d',1,F)"},
                    CasoTraduccion{"CstrEsLtrimTambienDentroDeOtraPalabra", "CStr(A) MYCSTRING",
                                   "LTRIM(A) MYLTRIMING"},
                    CasoTraduccion{"SinPalabrasElTextoVuelveIgual", "SELECT TOP 5 LEN(A) FROM B",
                                   "SELECT TOP 5 LEN(A) FROM B"}),
    NombreDeRegla);

INSTANTIATE_TEST_SUITE_P(
    Iif, TraduceSqlASqlServer,
    testing::Values(
        CasoTraduccion{"DeTresPartes", "IIF(A=1,B,C)", " (CASE WHEN A=1 THEN B ELSE C END) "},
        CasoTraduccion{"EnMedioDelTexto", "SELECT iif(A,B,C) FROM T",
                       "SELECT  (CASE WHEN A THEN B ELSE C END)  FROM T"},
        CasoTraduccion{"AnidadoEnElSegundo", "IIF(A,IIF(B,C,D),E)",
                       " (CASE WHEN A THEN  (CASE WHEN B THEN C ELSE D END)  ELSE E END) "},
        CasoTraduccion{"AnidadoEnElPrimero", "IIF(IIF(A,B,C),D,E)",
                       " (CASE WHEN  (CASE WHEN A THEN B ELSE C END)  THEN D ELSE E END) "},
        CasoTraduccion{"LaComaDeUnaFuncionNoCuenta", "IIF(LEFT(A,1)='X',B,C)",
                       " (CASE WHEN LEFT(A,1)='X' THEN B ELSE C END) "},
        CasoTraduccion{"LaComaDeUnLiteralNoCuenta", "IIF(A='x,y',\"a,b\",C)",
                       " (CASE WHEN A='x,y' THEN \"a,b\" ELSE C END) "},
        // Either quote mark flips the same flag, so an apostrophe between double ones hides all.
        CasoTraduccion{"UnApostrofoEntreComillasDejaElResto", "IIF(A=\"it's\",B,C)",
                       " (CASE WHEN A=\"it's\",B,C)"},
        // Brackets count inside quotes too.
        CasoTraduccion{"UnParentesisEnUnLiteralCuenta", "IIF(A='(',B,C)", " (CASE WHEN A='(',B,C)"},
        CasoTraduccion{"SinComas", "IIF(A)", " (CASE WHEN A)"},
        CasoTraduccion{"ConUnaSolaComa", "IIF(A,B)", " (CASE WHEN A THEN B)"},
        CasoTraduccion{"SinCerrar", "IIF(A,B,C", " (CASE WHEN A THEN B ELSE C"},
        CasoTraduccion{"SinParentesisSePierdeElResto", "A IIF B", "A  (CASE WHEN "},
        CasoTraduccion{"AlFinalDelTexto", "A IIF", "A  (CASE WHEN "},
        CasoTraduccion{"ConUnBlancoDetras", "IIF (A,B,C)", " (CASE WHEN A THEN B ELSE C END) "},
        // The place of the bracket isn't moved with the text, so it may lie behind a comma.
        CasoTraduccion{"ConDoceBlancosSeSaltaUnaComa", "IIF            (A,B,C,D)",
                       " (CASE WHEN A,B THEN C ELSE D END) "},
        CasoTraduccion{"ConVeinteBlancosSeSaltaTodas", "IIF                    (A,B,C,D)",
                       " (CASE WHEN A,B,C,D)"}),
    NombreDeRegla);

TEST(TraduceSql, AccessEsLaIdentidad)
{
    const QString sql = "SELECT TOP 5 LEN(A) & CSTR(B FROM T WHERE FALSE AND X LIKE 'a' & '%'";

    EXPECT_EQ(data::TraduceSql(Dialecto::Access, sql), sql);
}

TEST(TraduceSql, ElMismoTextoDependeSoloDelDialecto)
{
    const QString sql = "SELECT IIF(A,B,C),(D & E) FROM T";

    EXPECT_EQ(MySql(sql), "SELECT IF(A,B,C), CONCAT(D , E) FROM T");
    EXPECT_EQ(SqlServer(sql), "SELECT  (CASE WHEN A THEN B ELSE C END) ,(D + E) FROM T");
}

/// What follows must end, and soon: time that grows with the square of such a text would show.
TEST(TraduceSql, LasPalabrasRepetidasMilVecesAcaban)
{
    constexpr int Veces = 1000;
    const QString len = QString("LEN(A) ").repeated(Veces);
    const QString cstr = QString("CSTR(A)").repeated(Veces);
    const QString signos = "(" + QString("&").repeated(Veces) + ")";

    EXPECT_EQ(MySql(len), QString(" CHAR_LENGTH(A) ").repeated(Veces));
    EXPECT_EQ(MySql(cstr), QString(" CAST(A AS CHAR)").repeated(Veces));
    EXPECT_EQ(MySql(signos), " CONCAT(" + QString(",").repeated(Veces) + ")");
    EXPECT_EQ(MySql(QString("IIF").repeated(Veces)), QString("IF").repeated(Veces));
    EXPECT_EQ(SqlServer(QString("IIF").repeated(Veces)), " (CASE WHEN ");
    EXPECT_EQ(SqlServer(QString("IIF(").repeated(Veces)), QString(" (CASE WHEN ").repeated(Veces));
}

TEST(NombreDialecto, EsElDeLaDefinicion)
{
    EXPECT_EQ(data::NombreDialecto(Dialecto::Access), "ACCESS");
    EXPECT_EQ(data::NombreDialecto(Dialecto::SqlServer), "SQLSERVER");
    EXPECT_EQ(data::NombreDialecto(Dialecto::MySql), "MYSQL");
}

TEST(DialectoDeConstruccion, EsElQueSePidioAlConstruir)
{
    EXPECT_EQ(data::NombreDialecto(data::DialectoDeConstruccion()), KOV_TIPO_BASE_DATOS);
}

struct CasoFecha {
    const char* regla;
    data::Valor valor{};
    QString access{};
    QString sqlServer{};
    QString mySql{};
};

class FechaSql : public testing::TestWithParam<CasoFecha> {};

TEST_P(FechaSql, TieneLaFormaDeCadaDialecto)
{
    const CasoFecha& caso = GetParam();

    EXPECT_EQ(data::FechaSql(Dialecto::Access, caso.valor), caso.access);
    EXPECT_EQ(data::FechaSql(Dialecto::SqlServer, caso.valor), caso.sqlServer);
    EXPECT_EQ(data::FechaSql(Dialecto::MySql, caso.valor), caso.mySql);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, FechaSql,
    testing::Values(
        CasoFecha{"UnaFecha", QDate(2024, 3, 5), "Format('05/03/2024','dd/mm/yyyy')",
                  "CAST('05/03/2024' AS NVARCHAR)", "CAST('2024/03/05' AS DATE)"},
        CasoFecha{"DeUnMomentoSoloLaFecha", QDateTime(QDate(2024, 12, 31), QTime(23, 59, 58)),
                  "Format('31/12/2024','dd/mm/yyyy')", "CAST('31/12/2024' AS NVARCHAR)",
                  "CAST('2024/12/31' AS DATE)"},
        CasoFecha{"UnTextoConFechaSoloLoFormateaMySql", "7/4/2023",
                  "Format('7/4/2023','dd/mm/yyyy')", "CAST('7/4/2023' AS NVARCHAR)",
                  "CAST('2023/04/07' AS DATE)"},
        CasoFecha{"UnTextoConFechaYHora", "07/04/2023 9:05:07",
                  "Format('07/04/2023 9:05:07','dd/mm/yyyy')",
                  "CAST('07/04/2023 9:05:07' AS NVARCHAR)", "CAST('2023/04/07' AS DATE)"},
        CasoFecha{"UnTextoQueNoEsFechaEntraComoEsta", "mañana", "Format('mañana','dd/mm/yyyy')",
                  "CAST('mañana' AS NVARCHAR)", "CAST('mañana' AS DATE)"},
        // Day 45,000 of those that count from 30/12/1899 on.
        CasoFecha{"UnNumeroEsUnDiaParaMySql", 45000, "Format('45000','dd/mm/yyyy')",
                  "CAST('45000' AS NVARCHAR)", "CAST('2023/03/15' AS DATE)"},
        CasoFecha{"UnNumeroSinDiaEntraComoEsta", 4000000.5, "Format('4000000.5','dd/mm/yyyy')",
                  "CAST('4000000.5' AS NVARCHAR)", "CAST('4000000.5' AS DATE)"},
        CasoFecha{"UnNuloDaElTextoVacio", data::Nulo(), "Format('','dd/mm/yyyy')",
                  "CAST('' AS NVARCHAR)", "CAST('' AS DATE)"},
        CasoFecha{"ElVacioTambien", data::Valor(), "Format('','dd/mm/yyyy')",
                  "CAST('' AS NVARCHAR)", "CAST('' AS DATE)"}),
    [](const auto& caso) { return caso.param.regla; });

} // namespace
