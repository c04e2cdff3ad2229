#include "data/errores.h"
#include "data/valor_columna.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Campo;
using data::Valor;

namespace {

Valor Lee(int tipo, const char* texto, int ancho = 0)
{
    return data::ValorDeColumna(Campo{.nombre = "C", .tipo = tipo, .ancho = ancho}, "Rótulo",
                                QString::fromUtf8(texto));
}

QString Rechazo(int tipo, const char* texto, int ancho = 0)
{
    try {
        Lee(tipo, texto, ancho);
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 3421);
        return error.Descripcion();
    }
    return {};
}

TEST(ValorDeColumna, CadaTipoTieneSuValor)
{
    EXPECT_EQ(Lee(202, "Ana", 3), Valor("Ana"));
    EXPECT_EQ(Lee(3, "12"), Valor(12.0));
    EXPECT_EQ(Lee(5, "1.5"), Valor(1.5));
    EXPECT_EQ(Lee(4, "0.1"), Valor(0.1F));
    EXPECT_EQ(Lee(6, "1.00004"), Valor(1.0));
    EXPECT_EQ(Lee(6, "-1.00006"), Valor(-1.0001));
    EXPECT_EQ(Lee(135, "15/03/2024"), Valor(data::SinZona(QDate(2024, 3, 15))));
    EXPECT_EQ(Lee(11, "sí"), Valor(true));
    EXPECT_EQ(Lee(11, ""), Valor(false));
}

TEST(NumeroTecleado, LaComaDecimalValeComoElPunto)
{
    EXPECT_EQ(data::NumeroTecleado("2,75"), "2.75");
    EXPECT_EQ(data::NumeroTecleado("-,5"), "-.5");
    EXPECT_EQ(data::NumeroTecleado("2.75"), "2.75");
    EXPECT_EQ(data::NumeroTecleado("1.234,5"), "1.234,5") << "no number either way";
    EXPECT_EQ(data::NumeroTecleado("tres, o más"), "tres, o más");
    EXPECT_EQ(data::NumeroTecleado(""), "");
}

TEST(ValorDeColumna, UnNumeroPuedeLlevarComaDecimal)
{
    EXPECT_EQ(Lee(5, "0,25").toDouble(), 0.25);
}

TEST(ValorDeColumna, SinTextoNoHayValor)
{
    for (const int tipo : {202, 203, 3, 5, 6, 7, 135})
        EXPECT_TRUE(data::EsNulo(Lee(tipo, ""))) << tipo;
}

TEST(ValorDeColumna, UnTextoMasLargoQueLaColumnaSeRechaza)
{
    EXPECT_EQ(Rechazo(202, "abcd", 3),
              "«Rótulo» admite como máximo 3 caracteres y el texto tiene 4.");
    EXPECT_EQ(Lee(202, "ñññ", 3), Valor("ñññ"));
    EXPECT_EQ(Lee(203, "sin límite"), Valor("sin límite"));
}

TEST(ValorDeColumna, LoQueNoEsDeSuClaseSeRechaza)
{
    EXPECT_EQ(Rechazo(5, "abc"), "«Rótulo» tiene que ser un número.");
    EXPECT_EQ(Rechazo(5, "1.234,5"), "«Rótulo» tiene que ser un número.");
    EXPECT_EQ(Rechazo(3, "1.5"), "«Rótulo» tiene que ser un número entero.");
    EXPECT_EQ(Rechazo(135, "15"), "«Rótulo» tiene que ser una fecha (dd/mm/aaaa).");
    EXPECT_EQ(Rechazo(7, "31/02/2024"), "«Rótulo» tiene que ser una fecha (dd/mm/aaaa).");
    EXPECT_EQ(Rechazo(11, "quizás"), "«Rótulo» tiene que ser Sí o No.");
}

} // namespace
