// The conditions of the builder, run as the filter of a browse window: what they find is worked out
// by hand from the rows below.
#include "apoyo/programa_de_prueba.h"
#include "base_prueba.h"
#include "data/condicion.h"
#include <array>

using namespace tolmo::data;

namespace {

/// Cells of a row: joining word, first side, operator, second side.
using Celdas = std::array<const char*, 4>;

const std::vector<ColumnaGrid> Columnas{
    {.DataField = "NOMBRE"}, {.DataField = "ALIAS"},  {.DataField = "ALTA"},
    {.DataField = "BAJA"},   {.DataField = "TARIFA"}, {.DataField = "NIVEL"},
    {.DataField = "PESO"},   {.DataField = "ACTIVO"}, {.DataField = "SOCIO"},
    {.DataField = "PRECIO"}, {.DataField = "NOTAS"}};

class CondicionesAccess : public testing::Test, public BaseDePrueba {
  protected:
    CondicionesAccess()
    {
        // clang-format off
        Haz({"CREATE TABLE FICHAS (COD nvarchar(2), NOMBRE nvarchar(20), ALIAS nvarchar(20), ALTA DATETIME, BAJA DATETIME, TARIFA INT, NIVEL SMALLINT, PESO DOUBLE, ACTIVO YESNO, SOCIO YESNO, PRECIO CURRENCY, NOTAS NTEXT)",
             "INSERT INTO FICHAS VALUES ('A1','Ana','Ana María',#03/05/2024#,#05/03/2024#,7,7,1.5,TRUE,TRUE,12.5,'una nota')",
             "INSERT INTO FICHAS VALUES ('A2','berta','Ana',#05/03/2024#,#05/03/2024#,10,7,10.25,FALSE,TRUE,0,NULL)",
             "INSERT INTO FICHAS VALUES ('A3','ANA',NULL,#03/05/2024 18:30:00#,NULL,-2,NULL,-0.5,TRUE,FALSE,-1,'otra')",
             "INSERT INTO FICHAS VALUES ('A4',NULL,'x',NULL,NULL,NULL,1,NULL,FALSE,FALSE,NULL,'')",
             "INSERT INTO FICHAS VALUES ('A5','Ñoño','ñ',#12/31/2023#,#01/01/2024#,70,100,7,TRUE,TRUE,1,'Nota larga')"});
        // clang-format on
        p.programa.DialectoActivo = Dialecto::Access;
        constructor.ArrayFiltro(Columnas, Filas("SELECT * FROM FICHAS").campos);
    }

    QString Sentencia(std::initializer_list<Celdas> filas)
    {
        int fila = 0;
        for (const Celdas& celdas : filas) {
            for (int columna = 0; columna < 4; ++columna)
                constructor.PonCelda(fila, columna, celdas[static_cast<std::size_t>(columna)]);
            ++fila;
        }
        EXPECT_TRUE(constructor.ConstruirCondicion());
        return "Select COD from FICHAS where (" + constructor.Resultado() + ") order by COD";
    }

    ProgramaDePrueba p{};
    ConstructorCondicion constructor{p.programa};
};

struct CasoCondicion {
    const char* regla;
    Celdas celdas{};
    QString hallados{};
};

class CondicionAccess : public CondicionesAccess,
                        public testing::WithParamInterface<CasoCondicion> {};

TEST_P(CondicionAccess, HallaSusFilas)
{
    EXPECT_EQ(Tabla(Sentencia({GetParam().celdas})), GetParam().hallados);
}

std::string Nombre(const testing::TestParamInfo<CasoCondicion>& caso)
{
    return caso.param.regla;
}

// Texts have no regard to case; accents count, and "ñ" goes behind "n".
INSTANTIATE_TEST_SUITE_P(
    TextoConValor, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "NOMBRE", "=", "ana"}, "A1 A3"},
                    CasoCondicion{"Menor", {"", "NOMBRE", "<", "berta"}, "A1 A3"},
                    CasoCondicion{"Mayor", {"", "NOMBRE", ">", "BERTA"}, "A5"},
                    CasoCondicion{"MenorOIgual", {"", "NOMBRE", "<=", "berta"}, "A1 A2 A3"},
                    CasoCondicion{"MayorOIgual", {"", "NOMBRE", ">=", "berta"}, "A2 A5"},
                    CasoCondicion{"Distinto", {"", "NOMBRE", "<>", "ana"}, "A2 A5"},
                    CasoCondicion{"Contiene", {"", "NOMBRE", "Cont.", "AN"}, "A1 A3"},
                    CasoCondicion{"ContieneConEnie", {"", "NOMBRE", "Cont.", "ñO"}, "A5"},
                    CasoCondicion{"ContieneSinEnie", {"", "NOMBRE", "Cont.", "no"}, ""},
                    CasoCondicion{"ContieneMinimo", {"", "NOMBRE", "Cont.", "%"}, "A1 A2 A3 A5"}),
    Nombre);

INSTANTIATE_TEST_SUITE_P(
    TextoConTexto, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "NOMBRE", "=", "ALIAS"}, ""},
                    CasoCondicion{"Menor", {"", "NOMBRE", "<", "ALIAS"}, "A1"},
                    CasoCondicion{"Mayor", {"", "NOMBRE", ">", "ALIAS"}, "A2 A5"},
                    CasoCondicion{"MenorOIgual", {"", "NOMBRE", "<=", "ALIAS"}, "A1"},
                    CasoCondicion{"MayorOIgual", {"", "NOMBRE", ">=", "ALIAS"}, "A2 A5"},
                    CasoCondicion{"Distinto", {"", "NOMBRE", "<>", "ALIAS"}, "A1 A2 A5"},
                    // A Null joined to a text is nothing: every text holds that.
                    CasoCondicion{"Contiene", {"", "ALIAS", "Cont.", "NOMBRE"}, "A1 A4"},
                    CasoCondicion{"ContieneAlReves", {"", "NOMBRE", "Cont.", "ALIAS"}, "A3 A5"}),
    Nombre);

// 5 March, which is not 3 May. A date with a time of day is after its day's midnight.
INSTANTIATE_TEST_SUITE_P(
    FechaConValor, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "ALTA", "=", "05/03/2024"}, "A1"},
                    CasoCondicion{"IgualEscritaCorta", {"", "ALTA", "=", "5/3/2024"}, "A1"},
                    CasoCondicion{"IgualAlReves", {"", "ALTA", "=", "2024-05-03"}, "A2"},
                    CasoCondicion{"Menor", {"", "ALTA", "<", "05/03/2024"}, "A5"},
                    CasoCondicion{"Mayor", {"", "ALTA", ">", "05/03/2024"}, "A2 A3"},
                    CasoCondicion{"MenorOIgual", {"", "ALTA", "<=", "05/03/2024"}, "A1 A5"},
                    CasoCondicion{"MayorOIgual", {"", "ALTA", ">=", "05/03/2024"}, "A1 A2 A3"},
                    CasoCondicion{"Distinto", {"", "ALTA", "<>", "05/03/2024"}, "A2 A3 A5"},
                    CasoCondicion{"Contiene", {"", "ALTA", "Cont.", "05/03/2024"}, "A1 A3"},
                    // As it was typed: the text of the field has two digits.
                    CasoCondicion{"ContieneEscritaCorta", {"", "ALTA", "Cont.", "5/3/2024"}, ""}),
    Nombre);

INSTANTIATE_TEST_SUITE_P(
    FechaConFecha, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "ALTA", "=", "BAJA"}, "A2"},
                    CasoCondicion{"Menor", {"", "ALTA", "<", "BAJA"}, "A1 A5"},
                    CasoCondicion{"Mayor", {"", "ALTA", ">", "BAJA"}, ""},
                    CasoCondicion{"MenorOIgual", {"", "ALTA", "<=", "BAJA"}, "A1 A2 A5"},
                    CasoCondicion{"MayorOIgual", {"", "ALTA", ">=", "BAJA"}, "A2"},
                    CasoCondicion{"Distinto", {"", "ALTA", "<>", "BAJA"}, "A1 A5"},
                    CasoCondicion{"Contiene", {"", "ALTA", "Cont.", "BAJA"}, "A2 A3"}),
    Nombre);

INSTANTIATE_TEST_SUITE_P(
    NumeroConValor, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "TARIFA", "=", "7.0"}, "A1"},
                    CasoCondicion{"Menor", {"", "TARIFA", "<", "7"}, "A3"},
                    CasoCondicion{"Mayor", {"", "TARIFA", ">", "7"}, "A2 A5"},
                    CasoCondicion{"MenorOIgual", {"", "TARIFA", "<=", "7"}, "A1 A3"},
                    CasoCondicion{"MayorOIgual", {"", "TARIFA", ">=", "7"}, "A1 A2 A5"},
                    CasoCondicion{"Distinto", {"", "TARIFA", "<>", "7"}, "A2 A3 A5"},
                    CasoCondicion{"Contiene", {"", "TARIFA", "Cont.", "7"}, "A1 A5"},
                    CasoCondicion{"Negativo", {"", "TARIFA", "=", "-2"}, "A3"},
                    CasoCondicion{"CortoMayor", {"", "NIVEL", ">", "7"}, "A5"},
                    CasoCondicion{"DobleIgual", {"", "PESO", "=", "10.25"}, "A2"},
                    CasoCondicion{"DobleMenor", {"", "PESO", "<", ".0"}, "A3"},
                    CasoCondicion{"DobleContiene", {"", "PESO", "Cont.", ".5"}, "A1 A3"}),
    Nombre);

INSTANTIATE_TEST_SUITE_P(
    NumeroConNumero, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "TARIFA", "=", "NIVEL"}, "A1"},
                    CasoCondicion{"Menor", {"", "TARIFA", "<", "NIVEL"}, "A5"},
                    CasoCondicion{"Mayor", {"", "TARIFA", ">", "NIVEL"}, "A2"},
                    CasoCondicion{"MenorOIgual", {"", "TARIFA", "<=", "NIVEL"}, "A1 A5"},
                    CasoCondicion{"MayorOIgual", {"", "TARIFA", ">=", "NIVEL"}, "A1 A2"},
                    CasoCondicion{"Distinto", {"", "TARIFA", "<>", "NIVEL"}, "A2 A5"},
                    CasoCondicion{"Contiene", {"", "TARIFA", "Cont.", "NIVEL"}, "A1 A3"}),
    Nombre);

// True is -1, and so it is less than False; as a text too it is that number.
INSTANTIATE_TEST_SUITE_P(
    LogicoConValor, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "ACTIVO", "=", "si"}, "A1 A3 A5"},
                    CasoCondicion{"IgualNo", {"", "ACTIVO", "=", "no"}, "A2 A4"},
                    CasoCondicion{"Menor", {"", "ACTIVO", "<", "si"}, ""},
                    CasoCondicion{"MenorQueNo", {"", "ACTIVO", "<", "no"}, "A1 A3 A5"},
                    CasoCondicion{"Mayor", {"", "ACTIVO", ">", "si"}, "A2 A4"},
                    CasoCondicion{"MayorQueNo", {"", "ACTIVO", ">", "no"}, ""},
                    CasoCondicion{"MenorOIgual", {"", "ACTIVO", "<=", "si"}, "A1 A3 A5"},
                    CasoCondicion{"MenorOIgualQueNo", {"", "ACTIVO", "<=", "no"}, "A1 A2 A3 A4 A5"},
                    CasoCondicion{"MayorOIgual", {"", "ACTIVO", ">=", "si"}, "A1 A2 A3 A4 A5"},
                    CasoCondicion{"MayorOIgualQueNo", {"", "ACTIVO", ">=", "no"}, "A2 A4"},
                    CasoCondicion{"Distinto", {"", "ACTIVO", "<>", "si"}, "A2 A4"},
                    CasoCondicion{"Contiene", {"", "ACTIVO", "Cont.", "1"}, "A1 A3 A5"},
                    CasoCondicion{"ContieneCero", {"", "ACTIVO", "Cont.", "0"}, "A2 A4"},
                    CasoCondicion{"ContieneSi", {"", "ACTIVO", "Cont.", "si"}, ""}),
    Nombre);

INSTANTIATE_TEST_SUITE_P(
    LogicoConLogico, CondicionAccess,
    testing::Values(CasoCondicion{"Igual", {"", "ACTIVO", "=", "SOCIO"}, "A1 A4 A5"},
                    CasoCondicion{"Menor", {"", "ACTIVO", "<", "SOCIO"}, "A3"},
                    CasoCondicion{"Mayor", {"", "ACTIVO", ">", "SOCIO"}, "A2"},
                    CasoCondicion{"MenorOIgual", {"", "ACTIVO", "<=", "SOCIO"}, "A1 A3 A4 A5"},
                    CasoCondicion{"MayorOIgual", {"", "ACTIVO", ">=", "SOCIO"}, "A1 A2 A4 A5"},
                    CasoCondicion{"Distinto", {"", "ACTIVO", "<>", "SOCIO"}, "A2 A3"},
                    CasoCondicion{"Contiene", {"", "ACTIVO", "Cont.", "SOCIO"}, "A1 A4 A5"}),
    Nombre);

// A currency and a long text go by the letter of the logical fields.
INSTANTIATE_TEST_SUITE_P(
    LogicoPorFaltaDeLetra, CondicionAccess,
    testing::Values(CasoCondicion{"MonedaIgualSi", {"", "PRECIO", "=", "si"}, "A3"},
                    CasoCondicion{"MonedaIgualUnImporte", {"", "PRECIO", "=", "12.5"}, "A2"},
                    CasoCondicion{"MonedaMenor", {"", "PRECIO", "<", "12.5"}, "A3"},
                    CasoCondicion{"MonedaMayor", {"", "PRECIO", ">", "no"}, "A1 A5"},
                    CasoCondicion{"MonedaMenorOIgual", {"", "PRECIO", "<=", "no"}, "A2 A3"},
                    CasoCondicion{"MonedaMayorOIgual", {"", "PRECIO", ">=", "no"}, "A1 A2 A5"},
                    CasoCondicion{"MonedaDistinto", {"", "PRECIO", "<>", "si"}, "A1 A2 A5"},
                    CasoCondicion{"MonedaContiene", {"", "PRECIO", "Cont.", "2.5"}, "A1"},
                    CasoCondicion{"MonedaConLogico", {"", "PRECIO", "=", "ACTIVO"}, "A2 A3"},
                    CasoCondicion{"LogicoConMoneda", {"", "ACTIVO", "<", "PRECIO"}, "A1 A5"},
                    CasoCondicion{"TextoLargoContiene", {"", "NOTAS", "Cont.", "NOTA"}, "A1 A5"}),
    Nombre);

// Only "=" finds anything: a comparison with Null never holds.
INSTANTIATE_TEST_SUITE_P(
    ConVacio, CondicionAccess,
    testing::Values(CasoCondicion{"TextoIgual", {"", "NOMBRE", "=", "(VACIO)"}, "A4"},
                    CasoCondicion{"TextoDistinto", {"", "NOMBRE", "<>", "(VACIO)"}, ""},
                    CasoCondicion{"TextoMenor", {"", "NOMBRE", "<", "(VACIO)"}, ""},
                    CasoCondicion{"TextoMayor", {"", "NOMBRE", ">", "(VACIO)"}, ""},
                    CasoCondicion{"TextoContiene", {"", "NOMBRE", "Cont.", "(VACIO)"}, ""},
                    CasoCondicion{"FechaIgual", {"", "BAJA", "=", "(VACIO)"}, "A3 A4"},
                    CasoCondicion{"FechaDistinto", {"", "BAJA", "<>", "(VACIO)"}, ""},
                    CasoCondicion{"FechaMenor", {"", "BAJA", "<", "(VACIO)"}, ""},
                    CasoCondicion{"FechaMayor", {"", "BAJA", ">", "(VACIO)"}, ""},
                    CasoCondicion{"FechaContiene", {"", "BAJA", "Cont.", "(VACIO)"}, ""},
                    CasoCondicion{"NumeroIgual", {"", "NIVEL", "=", "(VACIO)"}, "A3"},
                    CasoCondicion{"NumeroDistinto", {"", "NIVEL", "<>", "(VACIO)"}, ""},
                    CasoCondicion{"NumeroMenor", {"", "NIVEL", "<", "(VACIO)"}, ""},
                    CasoCondicion{"NumeroMayor", {"", "NIVEL", ">", "(VACIO)"}, ""},
                    CasoCondicion{"NumeroContiene", {"", "NIVEL", "Cont.", "(VACIO)"}, ""},
                    CasoCondicion{"LogicoIgual", {"", "ACTIVO", "=", "(VACIO)"}, ""},
                    CasoCondicion{"LogicoDistinto", {"", "ACTIVO", "<>", "(VACIO)"}, ""},
                    CasoCondicion{"LogicoMenor", {"", "ACTIVO", "<", "(VACIO)"}, ""},
                    CasoCondicion{"LogicoMayor", {"", "ACTIVO", ">", "(VACIO)"}, ""},
                    CasoCondicion{"LogicoContiene", {"", "ACTIVO", "Cont.", "(VACIO)"}, ""},
                    CasoCondicion{"MonedaIgual", {"", "PRECIO", "=", "(VACIO)"}, "A4"}),
    Nombre);

TEST_F(CondicionesAccess, LasFilasSeUnen)
{
    EXPECT_EQ(Tabla(Sentencia({{"", "NOMBRE", "=", "ana"}, {"Y", "TARIFA", ">", "0"}})), "A1");
    EXPECT_EQ(Tabla(Sentencia({{"", "NOMBRE", "=", "ana"}, {"O", "TARIFA", "=", "10"}})),
              "A1 A2 A3");
    EXPECT_EQ(Tabla(Sentencia({{"", "ACTIVO", "=", "si"}, {"Y NO", "NOMBRE", "=", "ana"}})), "A5");
    EXPECT_EQ(Tabla(Sentencia({{"", "TARIFA", "=", "10"}, {"O NO", "ACTIVO", "=", "si"}})),
              "A2 A4");
}

TEST_F(CondicionesAccess, LaYAtaMasQueLaO)
{
    EXPECT_EQ(
        Tabla(Sentencia(
            {{"", "TARIFA", "=", "7"}, {"O", "ACTIVO", "=", "si"}, {"Y", "NIVEL", "=", "100"}})),
        "A1 A5");
}

TEST_F(CondicionesAccess, UnaNegacionDeNuloTampocoSeCumple)
{
    EXPECT_EQ(Tabla(Sentencia({{"", "ACTIVO", "=", "no"}, {"Y NO", "NOMBRE", "=", "ana"}})), "A2");
}

TEST_F(CondicionesAccess, SobreLoAnteriorEstrechaElFiltro)
{
    Sentencia({{"", "ACTIVO", "=", "si"}});
    const QString filtro = constructor.ResultadoSobre("(TARIFA = 7 Or TARIFA = 10)");

    EXPECT_EQ(Tabla("Select COD from FICHAS where (" + filtro + ") order by COD"), "A1");
}

TEST_F(CondicionesAccess, MenorOMayorQueVacioConIgualEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo(Sentencia({{"", "NOMBRE", "<=", "(VACIO)"}})),
              "Error de sintaxis cerca de \"IS\", se esperaba una expresión (posición 40)");
    EXPECT_EQ(Fallo(Sentencia({{"", "NOMBRE", ">=", "(VACIO)"}})),
              "Error de sintaxis cerca de \"IS\", se esperaba una expresión (posición 40)");
}

TEST_F(CondicionesAccess, UnaComillaEnElValorEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo(Sentencia({{"", "NOMBRE", "=", "O'Neil"}})),
              "Error de sintaxis: falta la comilla que cierra el texto (posición 48)");
}

TEST_F(CondicionesAccess, UnaCondicionVaciaEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo(Sentencia({})),
              "Error de sintaxis cerca de \")\", se esperaba una expresión (posición 32)");
}

} // namespace
