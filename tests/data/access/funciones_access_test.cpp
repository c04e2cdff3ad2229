#include "base_prueba.h"

using namespace tolmo::data;

namespace {

/// An expression and what it gives; "NULL" for a Null.
struct Caso {
    const char* regla;
    const char* expresion;
    const char* resultado;
};

class FuncionesAccess : public testing::TestWithParam<Caso>, public BaseDePrueba {};

TEST_P(FuncionesAccess, DaElResultadoDelLenguaje)
{
    EXPECT_EQ(
        Texto(Uno(QStringLiteral("SELECT ") + GetParam().expresion + QStringLiteral(" AS X"))),
        GetParam().resultado);
}

std::string Nombre(const testing::TestParamInfo<Caso>& caso)
{
    return caso.param.regla;
}

const Caso DeTexto[] = {
    {"LenCuentaCaracteresYNoBytes", "LEN('ñandú')", "5"},
    {"LenDeUnNumeroCuentaSuTexto", "LEN(12.5)", "4"},
    {"LenDeNuloEsNulo", "LEN(NULL)", "NULL"},
    {"LeftCorta", "LEFT('España',4)", "Espa"},
    {"LeftMasLargoQueElTextoLoDaEntero", "LEFT('ab',9)", "ab"},
    {"LeftDeUnNumeroVaSobreSuTexto", "LEFT(2024,2)", "20"},
    {"RightCortaPorElFinal", "RIGHT('España',2)", "ña"},
    {"MidConLargo", "MID('abcdef',2,3)", "bcd"},
    {"MidSinLargoLlegaAlFinal", "MID('abcdef',4)", "def"},
    {"MidTrasElFinalEsVacio", "MID('abc',9)", ""},
    {"InStrCuentaDesdeUno", "INSTR('abcabc','c')", "3"},
    {"InStrConComienzo", "INSTR(4,'abcabc','c')", "6"},
    {"InStrNoMiraMayusculas", "INSTR('abCabc','C')", "3"},
    {"InStrExacta", "INSTR(1,'abcabC','C',0)", "6"},
    {"InStrQueNoEstaEsCero", "INSTR('abc','z')", "0"},
    {"InStrDeVacioEsElComienzo", "INSTR('abc','')", "1"},
    {"InStrEnNuloEsNulo", "INSTR(NULL,'a')", "NULL"},
    {"InStrRevBuscaDesdeElFinal", "INSTRREV('a.b.c','.')", "4"},
    {"InStrRevConComienzo", "INSTRREV('a.b.c','.',3)", "2"},
    {"UCaseLlevaLosAcentos", "UCASE('ñandú')", "ÑANDÚ"},
    {"LCaseLlevaLosAcentos", "LCASE('ÁRBOL')", "árbol"},
    {"TrimQuitaBlancosDeLosDosLados", "'<' & TRIM('  a b  ') & '>'", "<a b>"},
    {"LTrimSoloDelante", "'<' & LTRIM('  a ') & '>'", "<a >"},
    {"RTrimSoloDetras", "'<' & RTRIM('  a ') & '>'", "<  a>"},
    {"TrimDejaLosTabuladores", "LEN(TRIM(CHR(9) & 'a '))", "2"},
    {"ReplaceCambiaTodos", "REPLACE('a-b-c','-','+')", "a+b+c"},
    {"ReplaceNoMiraMayusculas", "REPLACE('aXbx','x','-')", "a-b-"},
    {"ReplaceConCuenta", "REPLACE('aaaa','a','b',1,2)", "bbaa"},
    {"ReplaceConComienzoPierdeLaCabeza", "REPLACE('abcabc','a','x',3)", "cxbc"},
    {"ReplaceDeVacioNoCambia", "REPLACE('abc','','x')", "abc"},
    {"ReplaceNoVuelveSobreLoPuesto", "REPLACE('aa','a','aa')", "aaaa"},
    {"Space", "'<' & SPACE(3) & '>'", "<   >"},
    {"StringRepiteElPrimerCaracter", "STRING(3,'xyz')", "xxx"},
    {"StringConNumeroDeCaracter", "STRING(2,65)", "AA"},
    {"StrCompSinMirarMayusculas", "STRCOMP('ABC','abc')", "0"},
    {"StrCompExacta", "STRCOMP('ABC','abc',0)", "-1"},
    {"StrCompMayor", "STRCOMP('b','a')", "1"},
    {"AscDeUnCaracterDeWindows", "ASC('€uro')", "128"},
    {"AscDeEnie", "ASC('ñ')", "241"},
    {"ChrDeUnCaracterDeWindows", "CHR(128)", "€"},
    {"ChrDeLetra", "CHR(65)", "A"},
    {"ConcatenarTomaElNuloPorVacio", "'a' & NULL & 'b'", "ab"},
    {"ConcatenarDosNulosEsNulo", "NULL & NULL", "NULL"},
    {"ConcatenarUnNumeroNoTraeRuido", "'x' & 0.1 + 0.2", "x0.3"},
    {"ConcatenarUnEnteroDecimalNoTraePunto", "5.0 & ''", "5"},
    {"ConcatenarUnaFechaVaEnFormaCorta", "'hoy ' & #03/15/2024#", "hoy 15/03/2024"},
    {"ConcatenarUnaVerdadVaComoNumero", "'' & (1=1)", "-1"},
    {"MasUneDosTextos", "'12' + '34'", "1234"},
    {"MasDeTextoYNuloEsNulo", "'a' + NULL", "NULL"},
    {"MasDeTextoYNumeroSuma", "'12' + 34", "46"},
};
INSTANTIATE_TEST_SUITE_P(DeTexto, FuncionesAccess, testing::ValuesIn(DeTexto), Nombre);

const Caso DeConversion[] = {
    {"ValTomaElNumeroDelPrincipio", "VAL('12.5kg')", "12.5"},
    {"ValSaltaLosBlancos", "VAL(' 1 615 198th')", "1615198"},
    {"ValSinNumeroEsCero", "VAL('abc')", "0"},
    {"ValDeNegativo", "VAL('-3,5')", "-3"},
    {"StrPoneUnBlancoDelante", "'<' & STR(5) & '>'", "< 5>"},
    {"StrDeNegativoNo", "'<' & STR(-5.5) & '>'", "<-5.5>"},
    {"CStrNoPoneBlanco", "'<' & CSTR(5) & '>'", "<5>"},
    {"CStrDeFecha", "CSTR(#12/31/2023 18:30:00#)", "31/12/2023 18:30:00"},
    {"CIntVaAlParDesdeAbajo", "CINT(2.5)", "2"},
    {"CIntVaAlParDesdeArriba", "CINT(3.5)", "4"},
    {"CIntDeNegativo", "CINT(-2.5)", "-2"},
    {"CIntDeTexto", "CINT(' 7.6 ')", "8"},
    {"CLngDeGrande", "CLNG(70000.4)", "70000"},
    {"CDblDeTexto", "CDBL('1.25')", "1.25"},
    {"CCurRedondeaACuatro", "CCUR(1.23456)", "1.2346"},
    {"CBoolDeNumero", "CBOOL(7)", "-1"},
    {"CBoolDeCero", "CBOOL(0)", "0"},
    {"CDateDeTextoEspanol", "CDATE('03/04/2024') = #04/03/2024#", "-1"},
    {"CDateDeNumero", "CDATE(45366.5) = #03/15/2024 12:00:00#", "-1"},
    {"IsNullDeNulo", "ISNULL(NULL)", "-1"},
    {"IsNullDeVacio", "ISNULL('')", "0"},
    {"NzConValor", "NZ('a','b')", "a"},
    {"NzDeNulo", "NZ(NULL,'b')", "b"},
    {"NzDeNuloSinOtroEsVacio", "'<' & NZ(NULL) & '>'", "<>"},
    {"IifToma", "IIF(2>1,'si','no')", "si"},
    {"IifDeNuloTomaLaSegunda", "IIF(NULL,'si','no')", "no"},
    {"IifDeNumeroDistintoDeCero", "IIF(5,'si','no')", "si"},
    {"IifNoEvaluaLaOtra", "IIF(0=0,1,1/0)", "1"},
    {"ChooseTomaLaEnesima", "CHOOSE(2,'a','b','c')", "b"},
    {"ChooseFueraDeLaListaEsNulo", "CHOOSE(4,'a','b','c')", "NULL"},
    {"ChoosePierdeLosDecimales", "CHOOSE(2.9,'a','b','c')", "b"},
    {"SwitchTomaLaPrimeraQueSeCumple", "SWITCH(1>2,'a',2>1,'b',3>1,'c')", "b"},
    {"SwitchSinNingunaEsNulo", "SWITCH(1>2,'a')", "NULL"},
    {"IsNumericDeTexto", "ISNUMERIC('12.5')", "-1"},
    {"IsNumericDeLetras", "ISNUMERIC('12a')", "0"},
    {"IsDateDeTexto", "ISDATE('31/12/2024')", "-1"},
    {"IsDateDeFechaQueNoExiste", "ISDATE('31/02/2024')", "0"},
};
INSTANTIATE_TEST_SUITE_P(DeConversion, FuncionesAccess, testing::ValuesIn(DeConversion), Nombre);

const Caso DeNumero[] = {
    {"IntBajaTambienElNegativo", "INT(-2.3)", "-3"},
    {"IntDePositivo", "INT(2.9)", "2"},
    {"FixCortaElNegativo", "FIX(-2.9)", "-2"},
    {"AbsDeNegativo", "ABS(-7.5)", "7.5"},
    {"SgnDeNegativo", "SGN(-7.5)", "-1"},
    {"SgnDeCero", "SGN(0)", "0"},
    {"RoundVaAlPar", "ROUND(2.5)", "2"},
    {"RoundVaAlParConDecimales", "ROUND(0.125,2)", "0.12"},
    {"RoundNoSePierdeEnElRuido", "ROUND(1.005,2)", "1"},
    {"RoundDeNegativo", "ROUND(-3.5)", "-4"},
    {"SqrEsLaRaiz", "SQR(6.25)", "2.5"},
    {"LaDivisionTieneDecimales", "7/2", "3.5"},
    {"LaDivisionEnteraRedondeaAntes", "7.6\\2", "4"},
    {"LaDivisionEnteraCortaElNegativo", "-7\\2", "-3"},
    {"ModEsElResto", "7 MOD 3", "1"},
    {"ModConservaElSigno", "-7 MOD 3", "-1"},
    {"ModRedondeaAntes", "7.5 MOD 3", "2"},
    {"PotenciaVaAntesQueElSigno", "-2^2", "-4"},
    {"PotenciaConExponenteNegativo", "2^-1", "0.5"},
    {"ProductoAntesQueSuma", "2+3*4", "14"},
    {"DivisionEnteraAntesQueMod", "10 MOD 7\\2", "1"},
    {"DivisionEnteraTrasElProducto", "12\\2*3", "2"},
    {"SumaAntesQueConcatenar", "'a' & 1+2", "a3"},
    {"UnaComparacionVale", "2>1", "-1"},
    {"UnaComparacionFalsaEsCero", "1>2", "0"},
    {"UnaVerdadSeSuma", "(1=1)+(2=2)", "-2"},
    {"TrueEsMenosUno", "TRUE", "-1"},
    {"FalseEsCero", "FALSE", "0"},
    {"NotDeVerdad", "NOT (1=1)", "0"},
    {"XorDeDosVerdades", "(1=1) XOR (2=2)", "0"},
    {"EqvDeDosFalsedades", "(1=2) EQV (2=1)", "-1"},
    {"ImpDeFalsedad", "(1=2) IMP (2=1)", "-1"},
    {"CompararConNuloEsNulo", "1=NULL", "NULL"},
    {"NumeroConExponente", "1.5E3", "1500"},
    {"NumeroQueEmpiezaPorPunto", ".5*2", "1"},
    {"BetweenIncluyeLosExtremos", "5 BETWEEN 5 AND 7", "-1"},
    {"BetweenAlReves", "5 BETWEEN 7 AND 5", "-1"},
    {"BetweenNegado", "8 NOT BETWEEN 5 AND 7", "-1"},
    {"InDeNumerosYTextos", "5 IN ('5','x')", "-1"},
    {"InNegado", "'b' NOT IN ('A','B')", "0"},
};
INSTANTIATE_TEST_SUITE_P(DeNumero, FuncionesAccess, testing::ValuesIn(DeNumero), Nombre);

// 15 March 2024 was a Friday; the clock of the tests stands on it at 9:05:07.
const Caso DeFecha[] = {
    {"DateEsElDia", "CSTR(DATE())", "15/03/2024"},
    {"NowTraeLaHora", "CSTR(NOW())", "15/03/2024 9:05:07"},
    {"TimeEsSoloLaHora", "FORMAT(TIME(),'hh:nn:ss')", "09:05:07"},
    {"YearDeHoy", "YEAR(DATE())", "2024"},
    {"MonthDeTexto", "MONTH('03/04/2024')", "4"},
    {"DayDeLiteralConElMesDelante", "DAY(#03/04/2024#)", "4"},
    {"LiteralConDiaImposibleDeMes", "DAY(#15/03/2024#)", "15"},
    {"LiteralIso", "DAY(#2024-03-04#)", "4"},
    {"HourMinuteSecond", "HOUR(NOW()) & ':' & MINUTE(NOW()) & ':' & SECOND(NOW())", "9:5:7"},
    {"WeekdayEmpiezaEnDomingo", "WEEKDAY(DATE())", "6"},
    {"WeekdayConLunes", "WEEKDAY(DATE(),2)", "5"},
    {"DateAddDeMesNoPasaDelUltimoDia", "CSTR(DATEADD('m',1,#01/31/2024#))", "29/02/2024"},
    {"DateAddDeDias", "CSTR(DATEADD('d',-15,DATE()))", "29/02/2024"},
    {"DateAddDeAniosDeBisiesto", "CSTR(DATEADD('yyyy',1,#02/29/2024#))", "28/02/2025"},
    {"DateAddDeHorasPasaDeDia", "CSTR(DATEADD('h',20,NOW()))", "16/03/2024 5:05:07"},
    {"DateAddDeMinutosHaciaAtras", "CSTR(DATEADD('n',-600,NOW()))", "14/03/2024 23:05:07"},
    {"DateAddDeTrimestre", "CSTR(DATEADD('q',1,DATE()))", "15/06/2024"},
    {"DateAddDeSemana", "CSTR(DATEADD('ww',1,DATE()))", "22/03/2024"},
    {"DateDiffDeDias", "DATEDIFF('d',#03/01/2024#,DATE())", "14"},
    {"DateDiffDeAniosCuentaFronteras", "DATEDIFF('yyyy',#12/31/2023#,#01/01/2024#)", "1"},
    {"DateDiffDeMeses", "DATEDIFF('m',#01/31/2024#,#03/01/2024#)", "2"},
    {"DateDiffNegativa", "DATEDIFF('m',DATE(),#01/31/2024#)", "-2"},
    {"DateDiffDeHoras", "DATEDIFF('h',#03/14/2024 23:59:00#,#03/15/2024 00:01:00#)", "1"},
    // From Friday 15 to Sunday 17 one Sunday is passed.
    {"DateDiffDeSemanas", "DATEDIFF('ww',#03/15/2024#,#03/17/2024#)", "1"},
    {"DateDiffDeSemanasEnteras", "DATEDIFF('w',#03/01/2024#,#03/15/2024#)", "2"},
    {"DatePartDeTrimestre", "DATEPART('q',DATE())", "1"},
    {"DatePartDeDiaDelAnio", "DATEPART('y',DATE())", "75"},
    {"DatePartDeSemana", "DATEPART('ww',#01/07/2024#)", "2"},
    {"DatePartDeSemanaDeCuatroDias", "DATEPART('ww',#12/31/2024#,2,2)", "1"},
    {"DateSerialPasaDelMes", "CSTR(DATESERIAL(2024,14,0))", "31/01/2025"},
    {"DateValueQuitaLaHora", "CSTR(DATEVALUE(NOW()))", "15/03/2024"},
    {"FechaMasNumeroEsFecha", "CSTR(DATE()+1)", "16/03/2024"},
    {"FechaMenosFechaSonDias", "DATE()-#03/01/2024#", "14"},
    {"FechaMenosMedioDia", "CSTR(#03/15/2024#-0.5)", "14/03/2024 12:00:00"},
    {"FechaComparaConTexto", "DATE()='15/03/2024'", "-1"},
    {"FechaComparaConTextoDeUnaCifra", "#03/05/2024#='5/3/2024'", "-1"},
    {"FechaConHoraNoEsElDia", "NOW()='15/03/2024'", "0"},
};
INSTANTIATE_TEST_SUITE_P(DeFecha, FuncionesAccess, testing::ValuesIn(DeFecha), Nombre);

const Caso DeFormato[] = {
    {"FechaEspanola", "FORMAT(DATE(),'dd/mm/yyyy')", "15/03/2024"},
    {"FechaDeTexto", "FORMAT('15/03/2024','dd/mm/yyyy')", "15/03/2024"},
    {"FechaDeTextoCorto", "FORMAT('5/3/2024','dd/mm/yyyy')", "05/03/2024"},
    {"FechaAlReves", "FORMAT('15/03/2024','yyyymmdd')", "20240315"},
    {"MesConNombre", "FORMAT(DATE(),'d \"de\" mmmm')", "15 de marzo"},
    {"MesAbreviado", "FORMAT(DATE(),'dd-mmm-yy')", "15-mar-24"},
    {"DiaConNombre", "FORMAT(DATE(),'dddd')", "viernes"},
    {"MTrasHoraSonMinutos", "FORMAT(NOW(),'hh:mm:ss')", "09:05:07"},
    {"MedioDia", "FORMAT(#03/15/2024 18:30:00#,'h:nn AM/PM')", "6:30 PM"},
    {"Trimestre", "FORMAT(DATE(),'q')", "1"},
    {"FechaCorta", "FORMAT(DATE(),'Short Date')", "15/03/2024"},
    {"TextoQueNoEsFechaSeQueda", "FORMAT('nada','dd/mm/yyyy')", "nada"},
    {"NumeroConCeros", "FORMAT(7,'000')", "007"},
    {"NumeroConDecimales", "FORMAT(3.14159,'0.00')", "3.14"},
    {"NumeroConMiles", "FORMAT(1234567.5,'#,##0.00')", "1,234,567.50"},
    {"NumeroPequenoSinCeroDelante", "FORMAT(0.5,'#.00')", ".50"},
    {"AlmohadillasNoRellenan", "FORMAT(12.3,'##0.###')", "12.3"},
    {"RedondeaAlejandoseDeCero", "FORMAT(2.5,'0')", "3"},
    {"Porcentaje", "FORMAT(0.125,'0.0%')", "12.5%"},
    {"NegativoConSigno", "FORMAT(-5,'0.0')", "-5.0"},
    {"SeccionDeNegativos", "FORMAT(-5,'0;(0)')", "(5)"},
    {"SeccionDeCero", "FORMAT(0,'0;-0;\"nada\"')", "nada"},
    {"Standard", "FORMAT(1234.5,'Standard')", "1,234.50"},
    {"SiONo", "FORMAT(-1,'Yes/No')", "Sí"},
    {"Cientifico", "FORMAT(12345,'0.00E+00')", "1.23E+04"},
    {"GuionesEntreCifras", "FORMAT(123456,'00-00-00')", "12-34-56"},
    {"MayusculasDeTexto", "FORMAT('abc','>')", "ABC"},
    {"HuecosDeTexto", "FORMAT('ab','@@@@')", "  ab"},
    {"SinFormatoEsElTexto", "FORMAT(12.5)", "12.5"},
    {"DeNuloEsVacio", "'<' & FORMAT(NULL,'dd/mm/yyyy') & '>'", "<>"},
};
INSTANTIATE_TEST_SUITE_P(DeFormato, FuncionesAccess, testing::ValuesIn(DeFormato), Nombre);

class AgregadosAccess : public testing::Test, public BaseDePrueba {
  protected:
    AgregadosAccess()
    {
        Haz({"CREATE TABLE T (G nvarchar(5), V INT, C CURRENCY, N nvarchar(10), F DATETIME)",
             "INSERT INTO T VALUES ('a',1,0.1,'z',#01/01/2024#)",
             "INSERT INTO T VALUES ('A',3,0.2,'B',#01/01/2023#)",
             "INSERT INTO T VALUES ('b',NULL,0.7,NULL,NULL)",
             "INSERT INTO T VALUES ('b',8,NULL,'x',#05/05/2022#)"});
    }
};

TEST_F(AgregadosAccess, LosGruposNoMiranMayusculas)
{
    EXPECT_EQ(Tabla("SELECT COUNT(*),COUNT(V),SUM(V),AVG(V) FROM T GROUP BY G ORDER BY SUM(V)"),
              "2|2|4|2 2|1|8|8");
}

TEST_F(AgregadosAccess, ElMayorYElMenorVanPorElOrdenDelTipo)
{
    EXPECT_EQ(Tabla("SELECT MIN(N),MAX(N),MIN(F),MAX(F),MAX(V) FROM T"),
              "B|z|05/05/2022|01/01/2024|8");
}

TEST_F(AgregadosAccess, PrimeroYUltimoVanPorElOrdenDeLasFilasConSusNulos)
{
    EXPECT_EQ(Tabla("SELECT FIRST(V),LAST(V),FIRST(N),LAST(C) FROM T"), "1|8|z|NULL");
    EXPECT_EQ(Tabla("SELECT FIRST(V) FROM T WHERE G='b'"), "NULL");
}

TEST_F(AgregadosAccess, LaMonedaSumadaNoTraeRuido)
{
    EXPECT_EQ(Uno("SELECT SUM(C) FROM T"), QVariant(1.0));
    EXPECT_EQ(Filas("SELECT SUM(C),SUM(V),COUNT(*) FROM T").campos[0].tipo, 6);
    EXPECT_EQ(Filas("SELECT SUM(C),SUM(V),COUNT(*) FROM T").campos[1].tipo, 5);
    EXPECT_EQ(Filas("SELECT SUM(C),SUM(V),COUNT(*) FROM T").campos[2].tipo, 3);
}

TEST_F(AgregadosAccess, SinFilasSoloLaCuentaTieneValor)
{
    EXPECT_EQ(Tabla("SELECT COUNT(*),SUM(V),MAX(N),FIRST(V) FROM T WHERE FALSE"),
              "0|NULL|NULL|NULL");
}

TEST_F(AgregadosAccess, HavingFiltraLosGrupos)
{
    EXPECT_EQ(Tabla("SELECT MAX(G) FROM T GROUP BY G HAVING SUM(V)>4"), "b");
    EXPECT_EQ(Tabla("SELECT V MOD 2,COUNT(*) FROM T WHERE V>0 GROUP BY V MOD 2 ORDER BY V MOD 2"),
              "0|1 1|2");
}

TEST_F(AgregadosAccess, UnCampoFueraDeLosGruposEsUnError)
{
    EXPECT_EQ(Fallo("SELECT N,COUNT(*) FROM T GROUP BY G"),
              "El campo N no está en GROUP BY ni en una función de agregado (posición 8)");
    EXPECT_EQ(Fallo("SELECT *,COUNT(*) FROM T"),
              "El campo G no está en GROUP BY ni en una función de agregado (posición 8)");
    EXPECT_EQ(Fallo("SELECT G FROM T WHERE SUM(V)>1"),
              "La función de agregado SUM no cabe en este lugar (posición 23)");
}

class ErroresDeFunciones : public testing::Test, public BaseDePrueba {};

TEST_F(ErroresDeFunciones, NombranLaFuncionYElValor)
{
    EXPECT_EQ(Fallo("SELECT NOEXISTE(1)"), "No se conoce la función NOEXISTE (posición 8)");
    EXPECT_EQ(Fallo("SELECT LEFT('a')"),
              "Número de argumentos incorrecto en la función LEFT (posición 8)");
    EXPECT_EQ(Fallo("SELECT LEFT('a',-1)"), "Argumento no válido en Left");
    EXPECT_EQ(Fallo("SELECT 1/0"), "División por cero");
    EXPECT_EQ(Fallo("SELECT 1 MOD 0"), "División por cero");
    EXPECT_EQ(Fallo("SELECT CINT('a')"), "No coinciden los tipos de datos: \"a\" no es un número");
    EXPECT_EQ(Fallo("SELECT CINT(40000)"), "Desbordamiento: 40000");
    EXPECT_EQ(Fallo("SELECT CDATE('31/02/2024')"),
              "No coinciden los tipos de datos: \"31/02/2024\" no es una fecha");
    EXPECT_EQ(Fallo("SELECT 'a'*2"), "No coinciden los tipos de datos: \"a\" no es un número");
    EXPECT_EQ(Fallo("SELECT #31/02/2024#"),
              "Error de sintaxis en la fecha #31/02/2024# (posición 8)");
    EXPECT_EQ(Fallo("SELECT DATEADD('zz',1,DATE())"), "Argumento no válido en DateAdd");
}

} // namespace
