#include "apoyo/programa_de_prueba.h"
#include "data/condicion.h"
#include "data/recordset.h"
#include <gmock/gmock.h>

using namespace tolmo::data;
using testing::ElementsAre;
using Caja = AvisosDePrueba::Caja;

namespace {

/// Cells of a row: joining word, first side, operator, second side.
using Celdas = std::array<const char*, 4>;

class ConstructorTest : public testing::Test {
  protected:
    ConstructorTest()
    {
        constructor.ArrayDirectoFiltro({{"Nombre", "NOMBRE", Letra::Texto},
                                        {"Correo", "EMAIL", Letra::Texto},
                                        {"Alta", "FECHAALTA", Letra::Fecha},
                                        {"Baja", "FECHABAJA", Letra::Fecha},
                                        {"Tarifa", "CODTARIFA", Letra::Numero},
                                        {"Pedidos", "NPEDIDOS", Letra::Numero},
                                        {"Activo", "ACTIVO", Letra::Logica},
                                        {"Socio", "SOCIO", Letra::Logica}});
    }

    /// Writes a row in the order in which an operator does.
    void Escribe(int fila, const Celdas& celdas)
    {
        for (int columna = 0; columna < 4; ++columna)
            constructor.PonCelda(fila, columna, celdas[static_cast<std::size_t>(columna)]);
    }
    QString Condicion(std::initializer_list<Celdas> filas)
    {
        int fila = 0;
        for (const Celdas& celdas : filas)
            Escribe(fila++, celdas);
        return constructor.ConstruirCondicion() ? constructor.Condicion() : "(invalida)";
    }
    QStringList Sentencias() const
    {
        QStringList sentencias;
        for (const FilaCondicion& fila : constructor.Filas())
            sentencias << fila.sentencia;
        return sentencias;
    }
    std::vector<Caja>& Cajas() { return p.avisos.cajas; }

    ProgramaDePrueba p{};
    ConstructorCondicion constructor{p.programa};
};

struct CasoSentencia {
    const char* regla;
    Celdas celdas{};
    QString sql{};
    QString crystal{};
};

class SentenciaTest : public ConstructorTest, public testing::WithParamInterface<CasoSentencia> {};

TEST_P(SentenciaTest, SeEscribeParaSql)
{
    p.programa.DialectoActivo = Dialecto::Access;

    EXPECT_EQ(Condicion({GetParam().celdas}), GetParam().sql + ' ');
    EXPECT_EQ(constructor.Filas()[0].sentencia, GetParam().sql);
    EXPECT_TRUE(Cajas().empty());
}

TEST_P(SentenciaTest, SeEscribeParaCrystal)
{
    constructor.Destino = Lenguaje::Crystal;

    EXPECT_EQ(Condicion({GetParam().celdas}), GetParam().crystal + ' ');
    EXPECT_EQ(constructor.Filas()[0].sentencia, GetParam().crystal);
    EXPECT_TRUE(Cajas().empty());
}

std::string NombreDeSentencia(const testing::TestParamInfo<CasoSentencia>& caso)
{
    return caso.param.regla;
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(TextoConValor, SentenciaTest, testing::Values(
    CasoSentencia{"Igual", {"", "Nombre", "=", "Ana"}, "NOMBRE = 'Ana'", "NOMBRE = 'Ana'"},
    CasoSentencia{"Menor", {"", "Nombre", "<", "Ana"}, "NOMBRE < 'Ana'", "NOMBRE < 'Ana'"},
    CasoSentencia{"Mayor", {"", "Nombre", ">", "Ana"}, "NOMBRE > 'Ana'", "NOMBRE > 'Ana'"},
    CasoSentencia{"MenorOIgual", {"", "Nombre", "<=", "Ana"}, "NOMBRE <= 'Ana'", "NOMBRE <= 'Ana'"},
    CasoSentencia{"MayorOIgual", {"", "Nombre", ">=", "Ana"}, "NOMBRE >= 'Ana'", "NOMBRE >= 'Ana'"},
    CasoSentencia{"Distinto", {"", "Nombre", "<>", "Ana"}, "NOMBRE <> 'Ana'", "NOMBRE <> 'Ana'"},
    CasoSentencia{"Contiene", {"", "Nombre", "Cont.", "Ana"}, "NOMBRE Like '%Ana%' ", "NOMBRE Like '*Ana*' "},
    CasoSentencia{"LasComillasNoSeDoblan", {"", "Nombre", "=", "O'Neil"}, "NOMBRE = 'O'Neil'", "NOMBRE = 'O'Neil'"},
    CasoSentencia{"NiConContiene", {"", "Nombre", "Cont.", "O'Neil"}, "NOMBRE Like '%O'Neil%' ", "NOMBRE Like '*O'Neil*' "},
    CasoSentencia{"LosBlancosDelValorSeQuedan", {"", "Nombre", "=", " Ana "}, "NOMBRE = ' Ana '", "NOMBRE = ' Ana '"},
    CasoSentencia{"ElNombreDeUnCampoEnOtraLetraEsUnTexto", {"", "Nombre", "=", "correo"}, "NOMBRE = 'correo'", "NOMBRE = 'correo'"}),
    NombreDeSentencia);

INSTANTIATE_TEST_SUITE_P(FechaConValor, SentenciaTest, testing::Values(
    CasoSentencia{"Igual", {"", "Alta", "=", "5/3/2024"}, "FECHAALTA = Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA =  Date(2024,3,5)"},
    CasoSentencia{"Menor", {"", "Alta", "<", "5/3/2024"}, "FECHAALTA < Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA <  Date(2024,3,5)"},
    CasoSentencia{"Mayor", {"", "Alta", ">", "5/3/2024"}, "FECHAALTA > Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA >  Date(2024,3,5)"},
    CasoSentencia{"MenorOIgual", {"", "Alta", "<=", "5/3/2024"}, "FECHAALTA <= Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA <=  Date(2024,3,5)"},
    CasoSentencia{"MayorOIgual", {"", "Alta", ">=", "5/3/2024"}, "FECHAALTA >= Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA >=  Date(2024,3,5)"},
    CasoSentencia{"Distinto", {"", "Alta", "<>", "5/3/2024"}, "FECHAALTA <> Format('05/03/2024','dd/mm/yyyy')", "FECHAALTA <>  Date(2024,3,5)"},
    CasoSentencia{"ContieneNoLlevaLiteralDeFecha", {"", "Alta", "Cont.", "5/3/2024"}, "FECHAALTA Like '%5/3/2024%' ", "FECHAALTA Like '*5/3/2024*' "}),
    NombreDeSentencia);

INSTANTIATE_TEST_SUITE_P(NumeroConValor, SentenciaTest, testing::Values(
    CasoSentencia{"Igual", {"", "Tarifa", "=", "012.50"}, "CODTARIFA = 012.50", "CODTARIFA = 012.50"},
    CasoSentencia{"Menor", {"", "Tarifa", "<", "-3"}, "CODTARIFA < -3", "CODTARIFA < -3"},
    CasoSentencia{"Mayor", {"", "Tarifa", ">", "1e3"}, "CODTARIFA > 1e3", "CODTARIFA > 1e3"},
    CasoSentencia{"MenorOIgual", {"", "Tarifa", "<=", "7"}, "CODTARIFA <= 7", "CODTARIFA <= 7"},
    CasoSentencia{"MayorOIgual", {"", "Tarifa", ">=", "7"}, "CODTARIFA >= 7", "CODTARIFA >= 7"},
    CasoSentencia{"Distinto", {"", "Tarifa", "<>", "7"}, "CODTARIFA <> 7", "CODTARIFA <> 7"},
    CasoSentencia{"Contiene", {"", "Tarifa", "Cont.", "7"}, "CODTARIFA Like '%7%' ", "CODTARIFA Like '*7*' "}),
    NombreDeSentencia);

INSTANTIATE_TEST_SUITE_P(LogicoConValor, SentenciaTest, testing::Values(
    CasoSentencia{"SiEsVerdad", {"", "Activo", "=", "si"}, "ACTIVO = TRUE", "ACTIVO = TRUE"},
    CasoSentencia{"OtraCosaEsMentira", {"", "Activo", "=", "7"}, "ACTIVO = FALSE", "ACTIVO = FALSE"},
    CasoSentencia{"Menor", {"", "Activo", "<", "S"}, "ACTIVO < TRUE", "ACTIVO < TRUE"},
    CasoSentencia{"Mayor", {"", "Activo", ">", "S"}, "ACTIVO > TRUE", "ACTIVO > TRUE"},
    CasoSentencia{"MenorOIgual", {"", "Activo", "<=", "S"}, "ACTIVO <= TRUE", "ACTIVO <= TRUE"},
    CasoSentencia{"MayorOIgual", {"", "Activo", ">=", "S"}, "ACTIVO >= TRUE", "ACTIVO >= TRUE"},
    CasoSentencia{"Distinto", {"", "Activo", "<>", "Verdad"}, "ACTIVO <> TRUE", "ACTIVO <> TRUE"},
    CasoSentencia{"Contiene", {"", "Activo", "Cont.", "si"}, "ACTIVO Like '%si%' ", "ACTIVO Like '*si*' "}),
    NombreDeSentencia);

INSTANTIATE_TEST_SUITE_P(CampoConCampo, SentenciaTest, testing::Values(
    CasoSentencia{"TextoIgual", {"", "Nombre", "=", "Correo"}, "NOMBRE = EMAIL", "NOMBRE = EMAIL"},
    CasoSentencia{"TextoMenor", {"", "Nombre", "<", "Correo"}, "NOMBRE < EMAIL", "NOMBRE < EMAIL"},
    CasoSentencia{"TextoContiene", {"", "Correo", "Cont.", "Nombre"}, "EMAIL Like '%' & NOMBRE & '%'", "EMAIL Like '*' & NOMBRE & '*'"},
    CasoSentencia{"FechaMayor", {"", "Alta", ">", "Baja"}, "FECHAALTA > FECHABAJA", "FECHAALTA > FECHABAJA"},
    CasoSentencia{"FechaContiene", {"", "Alta", "Cont.", "Baja"}, "FECHAALTA Like '%' & FECHABAJA & '%'", "FECHAALTA Like '*' & FECHABAJA & '*'"},
    CasoSentencia{"NumeroMenorOIgual", {"", "Tarifa", "<=", "Pedidos"}, "CODTARIFA <= NPEDIDOS", "CODTARIFA <= NPEDIDOS"},
    CasoSentencia{"NumeroMayorOIgual", {"", "Tarifa", ">=", "Pedidos"}, "CODTARIFA >= NPEDIDOS", "CODTARIFA >= NPEDIDOS"},
    CasoSentencia{"LogicoDistinto", {"", "Activo", "<>", "Socio"}, "ACTIVO <> SOCIO", "ACTIVO <> SOCIO"},
    CasoSentencia{"ConsigoMismo", {"", "Nombre", "=", "Nombre"}, "NOMBRE = NOMBRE", "NOMBRE = NOMBRE"}),
    NombreDeSentencia);

// "= NULL" becomes "IS NULL" wherever it stands, also behind a "<" or a ">"; "<> NULL" stays. In
// Crystal what isn't "=" or "<>" has no sentence at all.
INSTANTIATE_TEST_SUITE_P(ConVacio, SentenciaTest, testing::Values(
    CasoSentencia{"Igual", {"", "Correo", "=", "(VACIO)"}, "EMAIL IS NULL", "(ISNULL(EMAIL))"},
    CasoSentencia{"Distinto", {"", "Correo", "<>", "(VACIO)"}, "EMAIL <> NULL", "(NOT ISNULL(EMAIL))"},
    CasoSentencia{"MenorOIgual", {"", "Correo", "<=", "(VACIO)"}, "EMAIL <IS NULL", "(ISNULL(EMAIL))"},
    CasoSentencia{"MayorOIgual", {"", "Correo", ">=", "(VACIO)"}, "EMAIL >IS NULL", "(ISNULL(EMAIL))"},
    CasoSentencia{"Menor", {"", "Correo", "<", "(VACIO)"}, "EMAIL < NULL", ""},
    CasoSentencia{"Mayor", {"", "Correo", ">", "(VACIO)"}, "EMAIL > NULL", ""},
    CasoSentencia{"Contiene", {"", "Correo", "Cont.", "(VACIO)"}, "EMAIL Like NULL", ""},
    CasoSentencia{"UnaFecha", {"", "Alta", "=", "(VACIO)"}, "FECHAALTA IS NULL", "(ISNULL(FECHAALTA))"},
    CasoSentencia{"UnNumero", {"", "Tarifa", "=", "(VACIO)"}, "CODTARIFA IS NULL", "(ISNULL(CODTARIFA))"},
    CasoSentencia{"UnLogico", {"", "Activo", "=", "(VACIO)"}, "ACTIVO IS NULL", "(ISNULL(ACTIVO))"}),
    NombreDeSentencia);
// clang-format on

TEST_F(ConstructorTest, LaFechaVaEnElDialectoQueRigeAlConstruir)
{
    Escribe(0, {"", "Alta", ">=", "5/3/2024"});

    p.programa.DialectoActivo = Dialecto::SqlServer;
    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "FECHAALTA >= CAST('05/03/2024' AS NVARCHAR) ");

    p.programa.DialectoActivo = Dialecto::MySql;
    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "FECHAALTA >= CAST('2024/03/05' AS DATE) ");

    p.programa.DialectoActivo = Dialecto::Access;
    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "FECHAALTA >= Format('05/03/2024','dd/mm/yyyy') ");
}

TEST_F(ConstructorTest, LasDemasLetrasNoDependenDelDialecto)
{
    for (const Dialecto dialecto : {Dialecto::Access, Dialecto::SqlServer, Dialecto::MySql}) {
        p.programa.DialectoActivo = dialecto;
        EXPECT_EQ(Condicion({{"", "Nombre", "Cont.", "Ana"},
                             {"Y", "Tarifa", "=", "7"},
                             {"Y", "Activo", "=", "S"}}),
                  "NOMBRE Like '%Ana%'   And CODTARIFA = 7  And ACTIVO = TRUE ");
    }
}

TEST_F(ConstructorTest, LasPalabrasUnenLasFilas)
{
    EXPECT_EQ(
        Condicion({{"", "Nombre", "=", "Ana"},
                   {"Y", "Tarifa", "=", "7"},
                   {"O", "Tarifa", "=", "8"},
                   {"Y NO", "Activo", "=", "no"},
                   {"O NO", "Correo", "=", "(VACIO)"}}),
        "NOMBRE = 'Ana'  And CODTARIFA = 7  Or CODTARIFA = 8  And Not ACTIVO = FALSE  Or Not EMAIL IS NULL ");
    EXPECT_THAT(Sentencias(),
                ElementsAre("NOMBRE = 'Ana'", " And CODTARIFA = 7", " Or CODTARIFA = 8",
                            " And Not ACTIVO = FALSE", " Or Not EMAIL IS NULL", ""));
}

TEST_F(ConstructorTest, EnCrystalUnaFilaSinSentenciaDejaSuPalabra)
{
    constructor.Destino = Lenguaje::Crystal;

    EXPECT_EQ(Condicion({{"", "Nombre", "=", "Ana"}, {"Y", "Correo", "<", "(VACIO)"}}),
              "NOMBRE = 'Ana'  And  ");
}

TEST_F(ConstructorTest, ElResultadoVaRecortadoEntreParentesis)
{
    Condicion({{"", "Nombre", "Cont.", "Ana"}});

    EXPECT_EQ(constructor.Condicion(), "NOMBRE Like '%Ana%'  ");
    EXPECT_EQ(constructor.Resultado(), "(NOMBRE Like '%Ana%')");
}

TEST_F(ConstructorTest, SobreLoAnteriorSeUneConAnd)
{
    Condicion({{"", "Tarifa", "=", "7"}});

    EXPECT_EQ(constructor.ResultadoSobre("(EMAIL IS NULL)"), "(EMAIL IS NULL) AND (CODTARIFA = 7)");
    EXPECT_EQ(constructor.ResultadoSobre(""), "(CODTARIFA = 7)");
    EXPECT_EQ(constructor.ResultadoSobre(" "), "  AND (CODTARIFA = 7)");
}

TEST_F(ConstructorTest, SinFilasLaCondicionEsVaciaYLosParentesisQuedan)
{
    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "");
    EXPECT_EQ(constructor.Resultado(), "()");
    EXPECT_EQ(constructor.ResultadoSobre("(EMAIL IS NULL)"), "(EMAIL IS NULL) AND ()");
    EXPECT_TRUE(Cajas().empty());
}

TEST_F(ConstructorTest, QuitarLaCondicionLaDejaVacia)
{
    Condicion({{"", "Tarifa", "=", "7"}});

    constructor.QuitaCondicion();

    EXPECT_EQ(constructor.Condicion(), "");
}

TEST_F(ConstructorTest, ConstruirDeNuevoEmpiezaDeVacio)
{
    Condicion({{"", "Tarifa", "=", "7"}});
    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "8");

    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "CODTARIFA = 8 ");
}

TEST_F(ConstructorTest, TiposDiferentesNoSeComparan)
{
    EXPECT_EQ(Condicion({{"", "Nombre", "=", "Ana"}, {"Y", "Nombre", "=", "Tarifa"}}),
              "(invalida)");
    EXPECT_THAT(
        Cajas(),
        ElementsAre(Caja{"No está permitido. Linea 2\r\nComparación de tipos de datos diferentes.",
                         48, ""}));
}

TEST_F(ConstructorTest, TiposDiferentesNoSeComparanTampocoConContiene)
{
    EXPECT_EQ(Condicion({{"", "Correo", "Cont.", "Tarifa"}}), "(invalida)");
    EXPECT_EQ(Cajas().at(0).texto,
              "No está permitido. Linea 1\r\nComparación de tipos de datos diferentes.");
}

TEST_F(ConstructorTest, UnCampoDeFechaPideUnaFecha)
{
    EXPECT_EQ(Condicion({{"", "Alta", "=", "31/02/2024"}}), "(invalida)");
    EXPECT_THAT(Cajas(),
                ElementsAre(Caja{"No está permitido. Linea 1\r\nEl valor tiene que ser una fecha.",
                                 48, ""}));
}

TEST_F(ConstructorTest, UnCampoDeFechaPideUnaFechaEnteraTambienConContiene)
{
    EXPECT_EQ(Condicion({{"", "Alta", "Cont.", "2024"}}), "(invalida)");
    EXPECT_EQ(Cajas().at(0).texto,
              "No está permitido. Linea 1\r\nEl valor tiene que ser una fecha.");
}

TEST_F(ConstructorTest, UnCampoNumericoPideUnNumero)
{
    EXPECT_EQ(Condicion({{"", "Nombre", "=", "Ana"},
                         {"O", "Nombre", "=", "Eva"},
                         {"Y", "Tarifa", "Cont.", "siete"}}),
              "(invalida)");
    EXPECT_THAT(Cajas(),
                ElementsAre(Caja{"No está permitido. Linea 3\r\nEl valor tiene que ser un número.",
                                 48, ""}));
}

TEST_F(ConstructorTest, LaComaNoEsElSignoDecimal)
{
    EXPECT_EQ(Condicion({{"", "Tarifa", "=", "12,50"}}), "(invalida)");
    EXPECT_EQ(Cajas().at(0).texto,
              "No está permitido. Linea 1\r\nEl valor tiene que ser un número.");
}

TEST_F(ConstructorTest, LaPrimeraCondicionTieneQueSerUnCampo)
{
    EXPECT_EQ(Condicion({{"", "(VACIO)", "=", "Ana"}}), "(invalida)");
    EXPECT_THAT(
        Cajas(),
        ElementsAre(Caja{
            "No está permitido. Linea 1\r\nLa primera condición tiene que ser un campo.", 48, ""}));
}

TEST_F(ConstructorTest, SoloSeMuestraLaPrimeraFilaQueNoVale)
{
    EXPECT_EQ(Condicion({{"", "Alta", "=", "x"}, {"Y", "Tarifa", "=", "x"}}), "(invalida)");
    EXPECT_EQ(Cajas().size(), 1U);
    EXPECT_EQ(Cajas().at(0).texto,
              "No está permitido. Linea 1\r\nEl valor tiene que ser una fecha.");
}

TEST_F(ConstructorTest, UnaConstruccionInvalidaDejaLaCondicionYLasFilas)
{
    Condicion({{"", "Tarifa", "=", "7"}});
    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "siete");

    EXPECT_FALSE(constructor.ConstruirCondicion());

    EXPECT_EQ(constructor.Condicion(), "CODTARIFA = 7 ");
    EXPECT_EQ(constructor.Filas().size(), 2U);
    EXPECT_EQ(constructor.Filas()[0].condicion2, "siete");
}

TEST_F(ConstructorTest, LaUltimaFilaAMediasSeVaSiElOperadorQuiere)
{
    p.avisos.respuestas = {Respuesta::Si};
    Escribe(0, {"", "Tarifa", "=", "7"});
    constructor.PonCelda(1, ConstructorCondicion::Nexo, "O");

    EXPECT_TRUE(constructor.ConstruirCondicion());

    EXPECT_THAT(Cajas(), ElementsAre(Caja{"La última fila no está completa, ¿Eliminar?", 52, ""}));
    EXPECT_EQ(constructor.Condicion(), "CODTARIFA = 7 ");
    EXPECT_EQ(constructor.Filas().size(), 2U);
    EXPECT_TRUE(constructor.FilaVacia(1));
}

TEST_F(ConstructorTest, SiNoQuiereNoSeConstruyeYLaFilaSeQueda)
{
    p.avisos.respuestas = {Respuesta::No};
    Escribe(0, {"", "Tarifa", "=", "7"});
    constructor.PonCelda(1, ConstructorCondicion::Condicion1, "Nombre");

    EXPECT_FALSE(constructor.ConstruirCondicion());

    EXPECT_EQ(Cajas().size(), 1U);
    EXPECT_EQ(constructor.Filas()[1].condicion1, "Nombre");
}

TEST_F(ConstructorTest, LaUnicaFilaAMediasSeVaYQuedaUnaVacia)
{
    p.avisos.respuestas = {Respuesta::Si};
    constructor.PonCelda(0, ConstructorCondicion::Operador, "<");

    EXPECT_TRUE(constructor.ConstruirCondicion());

    EXPECT_EQ(constructor.Resultado(), "()");
    EXPECT_EQ(constructor.Filas().size(), 1U);
    EXPECT_TRUE(constructor.FilaVacia(0));
}

TEST_F(ConstructorTest, LaPreguntaVaAntesQueLosDemasMensajes)
{
    p.avisos.respuestas = {Respuesta::Si};
    Escribe(0, {"", "Tarifa", "=", "x"});
    constructor.PonCelda(1, ConstructorCondicion::Condicion1, "Nombre");

    EXPECT_FALSE(constructor.ConstruirCondicion());

    ASSERT_EQ(Cajas().size(), 2U);
    EXPECT_EQ(Cajas()[0].estilo, 52);
    EXPECT_EQ(Cajas()[1].texto, "No está permitido. Linea 1\r\nEl valor tiene que ser un número.");
}

TEST_F(ConstructorTest, EmpiezaConUnaFilaVacia)
{
    EXPECT_EQ(constructor.Filas().size(), 1U);
    EXPECT_TRUE(constructor.FilaVacia(0));
    EXPECT_EQ(constructor.Destino, Lenguaje::Sql);
}

TEST_F(ConstructorTest, EmpezarDeNuevoDejaUnaFilaVaciaYLosCampos)
{
    Condicion({{"", "Nombre", "=", "Ana"}});

    constructor.EmpiezaDeNuevo();

    EXPECT_EQ(constructor.Filas().size(), 1U);
    EXPECT_TRUE(constructor.FilaVacia(0));
    EXPECT_EQ(constructor.Condicion(), "");
    EXPECT_EQ(constructor.Objetos().size(), 9);
}

TEST_F(ConstructorTest, CompletarLaUltimaFilaTraeOtra)
{
    constructor.PonCelda(0, ConstructorCondicion::Condicion1, "Nombre");
    constructor.PonCelda(0, ConstructorCondicion::Operador, "=");
    EXPECT_EQ(constructor.Filas().size(), 1U);

    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "Ana");
    EXPECT_EQ(constructor.Filas().size(), 2U);

    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "Eva");
    EXPECT_EQ(constructor.Filas().size(), 2U);
}

TEST_F(ConstructorTest, LaPrimeraFilaNoTienePalabra)
{
    Escribe(0, {"O", "Nombre", "=", "Ana"});

    EXPECT_EQ(constructor.Filas()[0].nexo, "");
    EXPECT_FALSE(ConstructorCondicion::CeldaEditable(0, ConstructorCondicion::Nexo));
    EXPECT_TRUE(ConstructorCondicion::CeldaEditable(1, ConstructorCondicion::Nexo));
}

TEST_F(ConstructorTest, LaSentenciaNoSeEscribeAMano)
{
    constructor.PonCelda(0, ConstructorCondicion::Sentencia, "1=1");

    EXPECT_TRUE(constructor.FilaVacia(0));
    EXPECT_EQ(constructor.Filas()[0].sentencia, "");
}

TEST_F(ConstructorTest, LasPalabrasQueSePasanPorAltoSonLasPrimeras)
{
    constructor.PonCelda(0, ConstructorCondicion::Condicion1, "Nombre");
    EXPECT_EQ(constructor.Filas()[0].operador, "");
    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "Ana");
    EXPECT_EQ(constructor.Filas()[0].operador, "=");
    EXPECT_EQ(constructor.Filas()[0].nexo, "");

    constructor.PonCelda(1, ConstructorCondicion::Condicion1, "Correo");
    EXPECT_EQ(constructor.Filas()[1].nexo, "Y");
}

TEST_F(ConstructorTest, LaSentenciaSeVeEnCuantoLaFilaEstaCompletaYEsValida)
{
    Escribe(0, {"", "Tarifa", "=", ""});
    EXPECT_EQ(constructor.Filas()[0].sentencia, "");

    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "7");
    EXPECT_EQ(constructor.Filas()[0].sentencia, "CODTARIFA = 7");

    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "siete");
    EXPECT_EQ(constructor.Filas()[0].sentencia, "");
    EXPECT_TRUE(Cajas().empty());
}

TEST_F(ConstructorTest, UnValorQueSeBorraDespuesEsNulo)
{
    Condicion({{"", "Nombre", "=", "Ana"}, {"Y", "Activo", "=", "S"}});
    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "");
    constructor.PonCelda(1, ConstructorCondicion::Condicion2, "");

    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "NOMBRE = NULL  And ACTIVO = FALSE ");
}

TEST_F(ConstructorTest, UnaFechaOUnNumeroQueSeBorraDespuesNoVale)
{
    Condicion({{"", "Alta", "=", "5/3/2024"}});
    constructor.PonCelda(0, ConstructorCondicion::Condicion2, "");

    EXPECT_FALSE(constructor.ConstruirCondicion());
    EXPECT_EQ(Cajas().at(0).texto,
              "No está permitido. Linea 1\r\nEl valor tiene que ser una fecha.");
}

TEST_F(ConstructorTest, LaPrimeraFilaNoSeElimina)
{
    Escribe(0, {"", "Tarifa", "=", "7"});

    constructor.EliminaFila(0);

    EXPECT_THAT(Cajas(), ElementsAre(Caja{"No se puede eliminar la primera fila", 48, ""}));
    EXPECT_EQ(constructor.Filas().size(), 2U);
    EXPECT_EQ(constructor.Filas()[0].condicion2, "7");
}

TEST_F(ConstructorTest, UnaFilaDeEnMedioSeElimina)
{
    Condicion({{"", "Tarifa", "=", "7"}, {"Y", "Tarifa", "=", "8"}, {"O", "Tarifa", "=", "9"}});

    constructor.EliminaFila(1);

    EXPECT_EQ(constructor.Filas().size(), 3U);
    EXPECT_TRUE(constructor.ConstruirCondicion());
    EXPECT_EQ(constructor.Condicion(), "CODTARIFA = 7  Or CODTARIFA = 9 ");
    EXPECT_TRUE(Cajas().empty());
}

TEST_F(ConstructorTest, EliminarLaUltimaFilaDejaOtraVacia)
{
    Escribe(0, {"", "Tarifa", "=", "7"});
    constructor.PonCelda(1, ConstructorCondicion::Condicion1, "Nombre");

    constructor.EliminaFila(1);

    EXPECT_EQ(constructor.Filas().size(), 2U);
    EXPECT_TRUE(constructor.FilaVacia(1));
}

TEST_F(ConstructorTest, OfreceSusPalabras)
{
    EXPECT_EQ(ConstructorCondicion::Nexos(), QStringList({"Y", "O", "Y NO", "O NO"}));
    EXPECT_EQ(ConstructorCondicion::Operadores(),
              QStringList({"=", "<", ">", "<=", ">=", "<>", "Cont."}));
    EXPECT_EQ(constructor.Objetos(), QStringList({"Nombre", "Correo", "Alta", "Baja", "Tarifa",
                                                  "Pedidos", "Activo", "Socio", "(VACIO)"}));
}

TEST_F(ConstructorTest, LosCamposVienenDeLasColumnasDelGrid)
{
    const std::vector<ColumnaGrid> columnas{{.DataField = "codigo", .Caption = "Código"},
                                            {.DataField = "", .Caption = "Sin campo"},
                                            {.DataField = "OTRA", .Caption = "Otra tabla"},
                                            {.DataField = "ALTA", .Caption = "Fecha alta"},
                                            {.DataField = "SECUENCIA"}};
    const std::vector<Campo> campos{{.nombre = "ALTA", .tipo = 7},
                                    {.nombre = "CODIGO", .tipo = 202},
                                    {.nombre = "NOVISTA", .tipo = 3},
                                    {.nombre = "SECUENCIA", .tipo = 3}};

    constructor.ArrayFiltro(columnas, campos);

    EXPECT_EQ(constructor.Objetos(), QStringList({"Código", "Fecha alta", "SECUENCIA", "(VACIO)"}));
    p.programa.DialectoActivo = Dialecto::Access;
    EXPECT_EQ(Condicion({{"", "Código", "=", "00007"},
                         {"Y", "Fecha alta", ">", "5/3/2024"},
                         {"Y", "SECUENCIA", "=", "7"}}),
              "codigo = '00007'  And ALTA > Format('05/03/2024','dd/mm/yyyy')  And SECUENCIA = 7 ");
}

TEST_F(ConstructorTest, ConDosColumnasDelMismoTituloVaLaPrimera)
{
    constructor.ArrayDirectoFiltro(
        {{"Inc PVP", "INC_PVP", Letra::Numero}, {"Inc PVP", "INC_PVP2", Letra::Numero}});

    EXPECT_EQ(Condicion({{"", "Inc PVP", "=", "7"}}), "INC_PVP = 7 ");
}

} // namespace
