#include "data/errores.h"
#include "data/valores.h"
#include <QDate>
#include <gtest/gtest.h>
#include <limits>

using namespace tolmo;
using data::Valor;

namespace {

struct CasoTexto {
    const char* regla;
    Valor valor{};
    QString texto{};
};

class Texto : public testing::TestWithParam<CasoTexto> {};

TEST_P(Texto, DaLaFormaPorDefecto)
{
    EXPECT_EQ(data::Texto(GetParam().valor), GetParam().texto);
}

INSTANTIATE_TEST_SUITE_P(
    Numeros, Texto,
    testing::Values(
        CasoTexto{"Entero", 71, "71"}, CasoTexto{"EnteroNegativo", -5, "-5"},
        CasoTexto{"EnteroLargoConTodasSusCifras", 9007199254740993LL, "9007199254740993"},
        CasoTexto{"SinMilesNiExponente", 1234567.89, "1234567.89"},
        CasoTexto{"SinCerosDetras", 12.50, "12.5"},
        CasoTexto{"UnDobleEnteroVaSinPunto", 100.0, "100"},
        CasoTexto{"ElRuidoBinarioNoSeVe", 0.1 + 0.2, "0.3"},
        CasoTexto{"QuinceCifras", 2.0 / 3.0, "0.666666666666667"},
        CasoTexto{"LasCifrasCuentanEnteras", 12345678901234.56, "12345678901234.6"},
        CasoTexto{"CeroNegativo", -0.0, "0"}, CasoTexto{"PequenoSinExponente", 0.00001, "0.00001"},
        CasoTexto{"PequenoNegativo", -0.000025, "-0.000025"},
        CasoTexto{"PequenoConQuinceCifras", 1.0 / 30000.0, "0.0000333333333333333"},
        CasoTexto{"ElMayorSinExponente", 999999999999999.0, "999999999999999"},
        CasoTexto{"ElPrimeroConExponente", 1e15, "1E+15"},
        CasoTexto{"DemasiadoPequeno", 2.5e-20, "2.5E-20"}, CasoTexto{"Simple", 0.1F, "0.1"},
        CasoTexto{"SimpleConSieteCifras", 1234.5678F, "1234.568"}),
    [](const auto& caso) { return caso.param.regla; });

INSTANTIATE_TEST_SUITE_P(
    Otros, Texto,
    testing::Values(
        CasoTexto{"Vacio", Valor(), ""}, CasoTexto{"Nulo", data::Nulo(), ""},
        CasoTexto{"NuloDeOtraClase", Valor(QMetaType::fromType<int>()), ""},
        CasoTexto{"ElTextoComoEsta", " a€ñ ", " a€ñ "}, CasoTexto{"Verdadero", true, "True"},
        CasoTexto{"Falso", false, "False"}, CasoTexto{"Fecha", QDate(2024, 3, 5), "05/03/2024"},
        CasoTexto{"MomentoConHora", QDateTime(QDate(2024, 3, 5), QTime(9, 5, 7)),
                  "05/03/2024 9:05:07"},
        CasoTexto{"MomentoSinHora", QDateTime(QDate(2024, 12, 31), QTime(0, 0)), "31/12/2024"},
        CasoTexto{"Hora", QTime(23, 4, 5), "23:04:05"}, CasoTexto{"FechaQueNoEsta", QDate(), ""}),
    [](const auto& caso) { return caso.param.regla; });

TEST(Texto, DeUnNumeroALaMano)
{
    EXPECT_EQ(data::Texto(12.10), "12.1");
    EXPECT_EQ(data::Texto(30), "30");
}

TEST(TextoSinNulo, UnNuloEsUnErrorDeEjecucion)
{
    EXPECT_EQ(data::TextoSinNulo("usuario"), "usuario");
    EXPECT_EQ(data::TextoSinNulo(""), "");
    try {
        data::TextoSinNulo(data::Nulo());
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 94);
    }
}

TEST(Nulo, NoEsVacioNiTexto)
{
    EXPECT_TRUE(data::EsNulo(data::Nulo()));
    EXPECT_FALSE(data::EsNulo(Valor()));
    EXPECT_FALSE(data::EsNulo(""));
    EXPECT_FALSE(data::EsNulo(QString()));
    EXPECT_FALSE(data::EsNulo(0));
}

TEST(EsNumero, SonLosEnterosYLosDeComa)
{
    EXPECT_TRUE(data::EsNumero(1));
    EXPECT_TRUE(data::EsNumero(1LL));
    EXPECT_TRUE(data::EsNumero(Valor::fromValue(short{1})));
    EXPECT_TRUE(data::EsNumero(1.5));
    EXPECT_TRUE(data::EsNumero(1.5F));
    EXPECT_FALSE(data::EsNumero("1"));
    EXPECT_FALSE(data::EsNumero(true));
    EXPECT_FALSE(data::EsNumero(QDate(2024, 1, 1)));
    EXPECT_FALSE(data::EsNumero(Valor(QMetaType::fromType<int>())));
}

TEST(EsFecha, SonLasFechasYLosMomentos)
{
    EXPECT_TRUE(data::EsFecha(QDate(2024, 1, 1)));
    EXPECT_TRUE(data::EsFecha(QDateTime(QDate(2024, 1, 1), QTime(1, 1))));
    EXPECT_FALSE(data::EsFecha("01/01/2024"));
    EXPECT_FALSE(data::EsFecha(Valor(QMetaType::fromType<QDate>())));
}

struct CasoVacio {
    const char* regla;
    Valor valor{};
    bool vacio = false;
};

class EstaVacio : public testing::TestWithParam<CasoVacio> {};

TEST_P(EstaVacio, DiceSiNoHayNada)
{
    EXPECT_EQ(data::EstaVacio(GetParam().valor), GetParam().vacio);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, EstaVacio,
    testing::Values(CasoVacio{"Vacio", Valor(), true}, CasoVacio{"Nulo", data::Nulo(), true},
                    CasoVacio{"Cero", 0, true}, CasoVacio{"CeroLargo", 0LL, true},
                    CasoVacio{"CeroDoble", 0.0, true}, CasoVacio{"CeroSimple", 0.0F, true},
                    CasoVacio{"OtroNumero", -1, false}, CasoVacio{"UnaDecima", 0.1, false},
                    CasoVacio{"TextoVacio", "", true}, CasoVacio{"UnBlanco", " ", false},
                    CasoVacio{"UnCeroEscrito", "0", false}, CasoVacio{"Falso", false, true},
                    CasoVacio{"Verdadero", true, false},
                    CasoVacio{"UnaFecha", QDate(2024, 1, 1), false},
                    CasoVacio{"UnaFechaQueNoEsta", QDate(), false}),
    [](const auto& caso) { return caso.param.regla; });

TEST(SinNulo, SoloElNuloPasaAVacio)
{
    EXPECT_FALSE(data::SinNulo(data::Nulo()).isValid());
    EXPECT_FALSE(data::SinNulo(Valor()).isValid());
    EXPECT_EQ(data::SinNulo("x"), Valor("x"));
    EXPECT_EQ(data::SinNulo(0), Valor(0));
}

struct CasoNumero {
    const char* regla;
    Valor valor{};
    double numero = 0;
};

class ValorNumerico : public testing::TestWithParam<CasoNumero> {};

TEST_P(ValorNumerico, DaElNumeroOCero)
{
    EXPECT_EQ(data::ValorNumerico(GetParam().valor), GetParam().numero);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ValorNumerico,
    testing::Values(CasoNumero{"Entero", 7, 7}, CasoNumero{"Doble", -2.5, -2.5},
                    CasoNumero{"Texto", "12.75", 12.75}, CasoNumero{"TextoConBlancos", "  8 ", 8},
                    CasoNumero{"TextoConSigno", "-3", -3},
                    CasoNumero{"TextoConExponente", "1.5E3", 1500},
                    CasoNumero{"TextoQueNoEsNumero", "12 kg", 0},
                    CasoNumero{"ComaDecimal", "12,75", 0}, CasoNumero{"Palabra", "nan", 0},
                    CasoNumero{"SoloUnSigno", "-", 0}, CasoNumero{"SoloBlancos", "  ", 0},
                    CasoNumero{"Nulo", data::Nulo(), 0}, CasoNumero{"Vacio", Valor(), 0},
                    CasoNumero{"Verdadero", true, -1}, CasoNumero{"Falso", false, 0},
                    CasoNumero{"Fecha", QDate(2024, 1, 1), 0}),
    [](const auto& caso) { return caso.param.regla; });

TEST(EsNumerico, MiraElTextoEntero)
{
    EXPECT_TRUE(data::EsNumerico("10"));
    EXPECT_TRUE(data::EsNumerico(" 10.5 "));
    EXPECT_TRUE(data::EsNumerico(".5"));
    EXPECT_FALSE(data::EsNumerico(""));
    EXPECT_FALSE(data::EsNumerico("10a"));
    EXPECT_FALSE(data::EsNumerico("1 0"));
    EXPECT_FALSE(data::EsNumerico("10\n"));
    EXPECT_FALSE(data::EsNumerico("inf"));
}

TEST(RellenaCeros, PorLaIzquierda)
{
    EXPECT_EQ(data::RellenaCeros("7", 3), "007");
    EXPECT_EQ(data::RellenaCeros("  7", 3), "007");
    EXPECT_EQ(data::RellenaCeros("7 ", 3), "07 ");
    EXPECT_EQ(data::RellenaCeros("", 2), "00");
    EXPECT_EQ(data::RellenaCeros("123", 3), "123");
}

TEST(RellenaCeros, UnTextoMasLargoVuelveComoEstaSinRecortar)
{
    EXPECT_EQ(data::RellenaCeros("1234", 3), "1234");
    EXPECT_EQ(data::RellenaCeros("   7", 3), "   7");
    EXPECT_EQ(data::RellenaCeros("7   ", 3, "R"), "7   ");
    EXPECT_EQ(data::RellenaCeros("7", 0), "7");
}

TEST(RellenaCeros, SinAnchoValeElDelTexto)
{
    EXPECT_EQ(data::RellenaCeros("  5"), "005");
    EXPECT_EQ(data::RellenaCeros("5  ", -1, "R"), "500");
}

TEST(RellenaCeros, PorCualquierOtroLadoDetras)
{
    EXPECT_EQ(data::RellenaCeros("7", 3, "R"), "700");
    EXPECT_EQ(data::RellenaCeros("7  ", 3, "R"), "700");
    EXPECT_EQ(data::RellenaCeros(" 7", 3, "D"), " 70");
    EXPECT_EQ(data::RellenaCeros("7", 3, "l"), "700");
}

TEST(Recorta, SoloQuitaBlancos)
{
    EXPECT_EQ(data::Recorta("  a b  "), "a b");
    EXPECT_EQ(data::Recorta("\ta\r\n"), "\ta\r\n");
    EXPECT_EQ(data::Recorta("   "), "");
    EXPECT_EQ(data::Recorta(""), "");
}

struct CasoLectura {
    const char* regla;
    QString texto{};
    QDateTime momento{};
};

class LeeFecha : public testing::TestWithParam<CasoLectura> {};

TEST_P(LeeFecha, DaElMomentoONada)
{
    EXPECT_EQ(data::LeeFecha(GetParam().texto), GetParam().momento);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, LeeFecha,
    testing::Values(
        CasoLectura{"DiaMesAno", "05/03/2024", data::SinZona(QDate(2024, 3, 5))},
        CasoLectura{"UnaCifra", "5/3/2024", data::SinZona(QDate(2024, 3, 5))},
        CasoLectura{"AnoMesDia", "2024/03/05", data::SinZona(QDate(2024, 3, 5))},
        CasoLectura{"ConGuiones", "2024-3-5", data::SinZona(QDate(2024, 3, 5))},
        CasoLectura{"ConHora", "2024-03-05 9:07", data::SinZona(QDate(2024, 3, 5), QTime(9, 7))},
        CasoLectura{"ConSegundos", "05/03/2024 19:07:08",
                    data::SinZona(QDate(2024, 3, 5), QTime(19, 7, 8))},
        CasoLectura{"EnLaHoraQueElCambioSalta", "31/03/2024 2:30",
                    data::SinZona(QDate(2024, 3, 31), QTime(2, 30))},
        CasoLectura{"ConBlancosAlrededor", " 05/03/2024 ", data::SinZona(QDate(2024, 3, 5))},
        CasoLectura{"DiaQueNoExiste", "30/02/2024", {}},
        CasoLectura{"FechaDeCeros", "0000-00-00", {}},
        CasoLectura{"SignosMezclados", "2024-03/05", {}},
        CasoLectura{"DiaConGuiones", "05-03-2024", {}}, CasoLectura{"AnoCorto", "05/03/24", {}},
        CasoLectura{"HoraQueNoExiste", "05/03/2024 24:00", {}},
        CasoLectura{"ConAlgoDetras", "05/03/2024 x", {}}, CasoLectura{"SinNada", "", {}},
        CasoLectura{"SoloElAno", "2024-", {}}, CasoLectura{"UnNumero", "45000", {}}),
    [](const auto& caso) { return caso.param.regla; });

// Spain's clocks went from 1:59:59 to 3:00:00 that night, and those of a shop's server needn't.
TEST(SinZona, LaHoraQueElCambioSaltaExiste)
{
    const QDateTime momento = data::SinZona(QDate(2024, 3, 31), QTime(2, 30));

    EXPECT_TRUE(momento.isValid());
    EXPECT_EQ(data::Texto(momento), "31/03/2024 2:30:00");
    EXPECT_LT(data::SinZona(QDate(2024, 3, 31), QTime(1, 59)), momento);
    EXPECT_LT(momento, data::SinZona(QDate(2024, 3, 31), QTime(2, 31)));
}

TEST(MomentoDe, DeUnaFechaEsSuMedianocheYDeUnMomentoElMismo)
{
    EXPECT_EQ(data::MomentoDe(QDate(2024, 3, 5)), data::SinZona(QDate(2024, 3, 5)));
    EXPECT_EQ(data::MomentoDe(QDateTime(QDate(2024, 3, 5), QTime(9, 7))),
              data::SinZona(QDate(2024, 3, 5), QTime(9, 7)));
    EXPECT_EQ(data::MomentoDe(QDateTime(QDate(2024, 3, 31), QTime(2, 30))),
              data::SinZona(QDate(2024, 3, 31), QTime(2, 30)));
}

} // namespace
