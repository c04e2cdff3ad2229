#include "data/access/mdb/dato.h"
#include <gtest/gtest.h>
#include <limits>

using namespace tolmo;
using namespace tolmo::data::access::mdb;

namespace {

QDateTime Momento(int anio, int mes, int dia, int hora = 0, int minuto = 0, int segundo = 0)
{
    return data::SinZona(QDate(anio, mes, dia), QTime(hora, minuto, segundo));
}

TEST(FechaDeAccess, CuentaDiasDesdeElFinalDe1899)
{
    EXPECT_EQ(FechaHora(Fecha{0}), Momento(1899, 12, 30));
    EXPECT_EQ(FechaHora(Fecha{27293}), Momento(1974, 9, 21));
    EXPECT_EQ(FechaHora(Fecha{40000.5}), Momento(2009, 7, 6, 12));
}

TEST(FechaDeAccess, LaHoraNoTieneSignoTampocoAntesDe1899)
{
    EXPECT_EQ(FechaHora(Fecha{-1.25}), Momento(1899, 12, 29, 6));
    EXPECT_EQ(FechaHora(Fecha{-0.5}), Momento(1899, 12, 30, 12));
}

TEST(FechaDeAccess, SeRedondeaYNoSeCorta)
{
    // 23:59:59 of a day, which no fraction of a binary number holds exactly.
    EXPECT_EQ(FechaHora(Fecha{45000 + 86399.0 / 86400.0}), Momento(2023, 3, 15, 23, 59, 59));
}

TEST(FechaDeAccess, FueraDeLosAniosQuePuedeSerNoEsNinguna)
{
    EXPECT_EQ(FechaHora(Fecha{-657434}), Momento(100, 1, 1));
    EXPECT_EQ(FechaHora(Fecha{2958465}), Momento(9999, 12, 31));
    EXPECT_FALSE(FechaHora(Fecha{2958466}).isValid());
    EXPECT_FALSE(FechaHora(Fecha{-657435}).isValid());
    EXPECT_FALSE(FechaHora(Fecha{std::numeric_limits<double>::quiet_NaN()}).isValid());
    EXPECT_FALSE(FechaHora(Fecha{1e300}).isValid());
}

struct CasoTextoExacto {
    const char* regla;
    Dato dato;
    const char* texto;
};

class TextoDeDato : public testing::TestWithParam<CasoTextoExacto> {};

TEST_P(TextoDeDato, NoPierdeNada)
{
    EXPECT_EQ(TextoExacto(GetParam().dato).toStdString(), GetParam().texto);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, TextoDeDato,
    testing::Values(
        CasoTextoExacto{"Nulo", Dato(), ""}, CasoTextoExacto{"Verdadero", Dato(true), "-1"},
        CasoTextoExacto{"Falso", Dato(false), "0"},
        CasoTextoExacto{"Moneda", Dato(Moneda{35000}), "3.5"},
        CasoTextoExacto{"MonedaCero", Dato(Moneda{0}), "0"},
        CasoTextoExacto{"MonedaPequena", Dato(Moneda{-50}), "-0.005"},
        CasoTextoExacto{"Doble", Dato(444.555), "444.555"},
        CasoTextoExacto{"DobleSinFormaCorta", Dato(0.1 + 0.2), "0.30000000000000004"},
        CasoTextoExacto{"Fecha", Dato(Fecha{27293}), "1974-09-21 00:00:00"},
        CasoTextoExacto{"FechaConMilesimas", Dato(Fecha{27293 + 0.5 + 0.25 / 86400}),
                        "1974-09-21 12:00:00.250"},
        CasoTextoExacto{"FechaImposible", Dato(Fecha{10000005.25}), "10000005.25"},
        CasoTextoExacto{"NumericoDe128Bits",
                        Dato(Numerico{.palabras = {0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF, 0xFFFFFFFF},
                                      .escala = 10,
                                      .negativo = true}),
                        "-34028236692093846346337460743.1768211455"},
        CasoTextoExacto{"NumericoCeroNegativo", Dato(Numerico{.escala = 3, .negativo = true}), "0"},
        CasoTextoExacto{"Bytes", Dato(QByteArray("\x01\xAB", 2)), "01AB"}),
    [](const auto& caso) { return caso.param.regla; });

TEST(ValorDeDato, EsElQueElRestoDelProgramaConoce)
{
    EXPECT_TRUE(data::EsNulo(AValor(Dato())));
    EXPECT_EQ(AValor(Dato(true)), data::Valor(true));
    EXPECT_EQ(AValor(Dato(qint64{7})), data::Valor(7));
    EXPECT_EQ(AValor(Dato(qint64{1} << 40)), data::Valor(qlonglong{1} << 40));
    EXPECT_EQ(AValor(Dato(Moneda{123456})), data::Valor(12.3456));
    EXPECT_EQ(AValor(Dato(Fecha{27293.25})), data::Valor(Momento(1974, 9, 21, 6)));
    EXPECT_EQ(AValor(Dato(Numerico{.palabras = {0, 0, 0, 1234}, .escala = 2})), data::Valor(12.34));
    EXPECT_EQ(AValor(Dato(QString("año"))), data::Valor(QString("año")));
}

} // namespace
