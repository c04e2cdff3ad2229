#include "apoyo/dobles.h"
#include "run/regional.h"
#include "run/sufijo.h"
#include <QLocale>
#include <clocale>
#include <cstdio>
#include <gtest/gtest.h>

using namespace tolmo;

TEST(MarcaTiempo, SonDoceCifrasConCerosDelante)
{
    EXPECT_EQ(run::MarcaTiempo(QDateTime(QDate(2024, 3, 5), QTime(9, 8, 7))), "240305090807");
    EXPECT_EQ(run::MarcaTiempo(QDateTime(QDate(2009, 12, 31), QTime(23, 59, 0))), "091231235900");
}

TEST(NumeroAleatorio, SonLasUltimasCifrasConCerosDelante)
{
    RelojDePrueba reloj;
    reloj.azar = 987654301;

    EXPECT_EQ(run::NumeroAleatorio(reloj, 2), "01");
    EXPECT_EQ(run::NumeroAleatorio(reloj, 4), "4301");
    reloj.azar = 0;
    EXPECT_EQ(run::NumeroAleatorio(reloj, 3), "000");
}

TEST(NuevoSufijoTemporal, EsElMomentoYDosCifrasAlAzar)
{
    RelojDePrueba reloj;

    EXPECT_EQ(run::NuevoSufijoTemporal(reloj), "24031509050789");
}

TEST(PuntoComaRegional, LosNumerosSalenConPuntoAunqueElSistemaDigaComa)
{
    QLocale::setDefault(QLocale(QLocale::Spanish, QLocale::Spain));
    ASSERT_EQ(QLocale().toString(12345.5, 'f', 1), "12.345,5");

    run::PuntoComaRegional();

    EXPECT_EQ(QLocale().decimalPoint(), ".");
    EXPECT_EQ(QLocale().groupSeparator(), ",");
    EXPECT_STREQ(std::setlocale(LC_NUMERIC, nullptr), "C");
}
