#include "data/condicion_literales.h"
#include <gtest/gtest.h>

using namespace tolmo::data;

namespace {

TEST(Tipo, LosTiposMasCorrientesTienenSuLetra)
{
    EXPECT_EQ(Tipo(202), Letra::Texto);
    EXPECT_EQ(Tipo(135), Letra::Fecha);
    EXPECT_EQ(Tipo(7), Letra::Fecha);
    EXPECT_EQ(Tipo(5), Letra::Numero);
    EXPECT_EQ(Tipo(3), Letra::Numero);
    EXPECT_EQ(Tipo(2), Letra::Numero);
    EXPECT_EQ(Tipo(11), Letra::Logica);
}

TEST(Tipo, TextosLargosMonedasYSimplesCuentanComoLogicos)
{
    for (const int tipo : {203, 6, 4, 17, 20, 131, 200, 204, 0})
        EXPECT_EQ(Tipo(tipo), Letra::Logica) << tipo;
}

TEST(Tipo, LasLetrasSonLasDeSiempre)
{
    EXPECT_EQ(static_cast<char16_t>(Letra::Texto), u'\'');
    EXPECT_EQ(static_cast<char16_t>(Letra::Fecha), u'D');
    EXPECT_EQ(static_cast<char16_t>(Letra::Numero), u'N');
    EXPECT_EQ(static_cast<char16_t>(Letra::Logica), u'B');
}

struct CasoValor {
    const char* regla;
    QString valor{};
    Letra letra = Letra::Texto;
    QString sql{};
    QString crystal{};
};

class PonSegunTipoTest : public testing::TestWithParam<CasoValor> {};

TEST_P(PonSegunTipoTest, EscribeElValorSegunLaLetra)
{
    const auto& [regla, valor, letra, sql, crystal] = GetParam();

    EXPECT_EQ(PonSegunTipo(Dialecto::Access, valor, letra, Lenguaje::Sql), sql);
    EXPECT_EQ(PonSegunTipo(Dialecto::Access, valor, letra, Lenguaje::Crystal), crystal);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Casos, PonSegunTipoTest,
    testing::Values(
        CasoValor{"NumeroComoSeEscribio", " 012.50", Letra::Numero, " 012.50", " 012.50"},
        CasoValor{"NumeroVacio", "", Letra::Numero, "NULL", "NULL"},
        CasoValor{"Texto", "Ana Ruiz", Letra::Texto, "'Ana Ruiz'", "'Ana Ruiz'"},
        CasoValor{"TextoConComillaSinDoblar", "O'Neil", Letra::Texto, "'O'Neil'", "'O'Neil'"},
        CasoValor{"TextoConLlavesSeQueda", "{valor}", Letra::Texto, "'{valor}'", "'{valor}'"},
        CasoValor{"TextoVacio", "", Letra::Texto, "NULL", "NULL"},
        CasoValor{"Fecha", "5/3/2024", Letra::Fecha, "Format('05/03/2024','dd/mm/yyyy')", " Date(2024,3,5)"},
        CasoValor{"FechaConHoraLaPierde", "15/03/2024 18:30", Letra::Fecha, "Format('15/03/2024','dd/mm/yyyy')", " Date(2024,3,15)"},
        CasoValor{"FechaVacia", "", Letra::Fecha, "NULL", "NULL"},
        CasoValor{"VerdadS", "s", Letra::Logica, "TRUE", "TRUE"},
        CasoValor{"VerdadSi", "si", Letra::Logica, "TRUE", "TRUE"},
        CasoValor{"VerdadVerdad", "Verdad", Letra::Logica, "TRUE", "TRUE"},
        CasoValor{"VerdadTrue", "tRUE", Letra::Logica, "TRUE", "TRUE"},
        CasoValor{"VerdadSiConAcento", "Sí", Letra::Logica, "TRUE", "TRUE"},
        CasoValor{"ConAcentoSoloVerdadTalCual", "SÍ", Letra::Logica, "FALSE", "FALSE"},
        CasoValor{"ConAcentoEnMinusculaTampoco", "sí", Letra::Logica, "FALSE", "FALSE"},
        CasoValor{"UnNumeroNoEsVerdad", "-1", Letra::Logica, "FALSE", "FALSE"},
        CasoValor{"LogicoNo", "no", Letra::Logica, "FALSE", "FALSE"},
        CasoValor{"LogicoVacio", "", Letra::Logica, "FALSE", "FALSE"}),
    [](const auto& caso) { return caso.param.regla; });
// clang-format on

TEST(LitFechaSql, SeEscribeEnCadaDialecto)
{
    EXPECT_EQ(LitFechaSql(Dialecto::SqlServer, "5/3/2024"), "CAST('05/03/2024' AS NVARCHAR)");
    EXPECT_EQ(LitFechaSql(Dialecto::MySql, "5/3/2024"), "CAST('2024/03/05' AS DATE)");
    EXPECT_EQ(LitFechaSql(Dialecto::Access, "5/3/2024"), "Format('05/03/2024','dd/mm/yyyy')");
    EXPECT_EQ(LitFechaSql(Dialecto::Access, "2024-03-05"), "Format('05/03/2024','dd/mm/yyyy')");
}

TEST(LitFechaSql, LoQueNoEsFechaVaComoEsta)
{
    EXPECT_EQ(LitFechaSql(Dialecto::Access, "ayer"), "Format('ayer','dd/mm/yyyy')");
    EXPECT_EQ(LitFechaSql(Dialecto::SqlServer, "31/02/2024"), "CAST('31/02/2024' AS NVARCHAR)");
}

TEST(LitHoraSql, VaComoEsta)
{
    EXPECT_EQ(LitHoraSql("8:05"), "Format('8:05','hh:mm:ss')");
}

} // namespace
