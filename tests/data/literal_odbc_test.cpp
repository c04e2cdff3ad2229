#include "data/literal_odbc.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct CasoLiteral {
    const char* regla;
    data::Valor valor{};
    QString mySql{};
    QString sqlServer{};
};

class Literal : public testing::TestWithParam<CasoLiteral> {};

TEST_P(Literal, SeLeeComoElValor)
{
    EXPECT_EQ(data::Literal(GetParam().valor, true), GetParam().mySql);
    EXPECT_EQ(data::Literal(GetParam().valor, false), GetParam().sqlServer);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, Literal,
    testing::Values(
        CasoLiteral{"Nulo", data::Nulo(), "NULL", "NULL"},
        CasoLiteral{"Vacio", data::Valor(), "NULL", "NULL"}, CasoLiteral{"Entero", -7, "-7", "-7"},
        CasoLiteral{"Largo", 9007199254740993LL, "9007199254740993", "9007199254740993"},
        CasoLiteral{"Doble", 10.5, "10.5", "10.5"}, CasoLiteral{"Verdadero", true, "1", "1"},
        CasoLiteral{"Falso", false, "0", "0"},
        CasoLiteral{"TextoConComilla", "L'Ampolla €", "'L''Ampolla €'", "N'L''Ampolla €'"},
        CasoLiteral{"TextoConBarra", R"(C:\a\')", R"('C:\\a\\''')", R"(N'C:\a\''')"},
        CasoLiteral{"TextoVacio", "", "''", "N''"},
        CasoLiteral{"Fecha", QDate(2024, 3, 5), "'2024-03-05'", "'20240305'"},
        CasoLiteral{"Momento", QDateTime(QDate(2024, 3, 5), QTime(9, 5, 7)),
                    "'2024-03-05T09:05:07'", "'2024-03-05T09:05:07'"},
        CasoLiteral{"EnLaHoraQueElCambioSalta", QDateTime(QDate(2024, 3, 31), QTime(2, 30)),
                    "'2024-03-31T02:30:00'", "'2024-03-31T02:30:00'"},
        CasoLiteral{"MomentoConMilesimas", QDateTime(QDate(2024, 3, 5), QTime(9, 5, 7, 120)),
                    "'2024-03-05T09:05:07.120'", "'2024-03-05T09:05:07.120'"}),
    [](const auto& caso) { return caso.param.regla; });

TEST(LiteralParaComparar, UnDobleVaConExponente)
{
    EXPECT_EQ(data::LiteralParaComparar(10.5, true), "1.0500000000000000e+01");
    EXPECT_EQ(data::LiteralParaComparar(7, true), "7");
    EXPECT_EQ(data::LiteralParaComparar("a'b", false), "N'a''b'");
}

} // namespace
