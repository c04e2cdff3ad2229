#include "data/clase_columna.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::ClaseColumna;

namespace {

TEST(ClaseColumna, CadaTipoDeAdoTieneLaSuya)
{
    for (const int numero : {2, 3, 4, 5, 6, 14, 16, 17, 18, 19, 20, 21, 131, 139})
        EXPECT_EQ(data::ClaseDe(numero), ClaseColumna::Numero) << numero;
    for (const int fecha : {7, 133, 134, 135})
        EXPECT_EQ(data::ClaseDe(fecha), ClaseColumna::Fecha) << fecha;
    EXPECT_EQ(data::ClaseDe(11), ClaseColumna::Logico);
    for (const int texto : {8, 129, 130, 200, 201, 202, 203, 204, 0, 9999})
        EXPECT_EQ(data::ClaseDe(texto), ClaseColumna::Texto) << texto;
}

TEST(ClaseColumna, LosDecimalesNoSonEnteros)
{
    for (const int entero : {2, 3, 16, 17, 18, 19, 20, 21})
        EXPECT_TRUE(data::EsEntero(entero)) << entero;
    for (const int otro : {4, 5, 6, 131, 7, 11, 202})
        EXPECT_FALSE(data::EsEntero(otro)) << otro;
}

TEST(LeeLogico, EntiendeLasFormasDeSiYDeNo)
{
    for (const char* si : {"S", "si", "Sí", "SÍ", "true", "Verdadero", "1", "-1", " s "})
        EXPECT_EQ(data::LeeLogico(QString::fromUtf8(si)), true) << si;
    for (const char* no : {"", "n", "No", "FALSE", "falso", "0"})
        EXPECT_EQ(data::LeeLogico(QString::fromUtf8(no)), false) << no;
    for (const char* otro : {"quizás", "2", "sino"})
        EXPECT_EQ(data::LeeLogico(QString::fromUtf8(otro)), std::nullopt) << otro;
}

TEST(TextoCelda, UnLogicoSeLeeEnEspanol)
{
    EXPECT_EQ(data::TextoCelda(true), "Sí");
    EXPECT_EQ(data::TextoCelda(false), "No");
    EXPECT_EQ(data::TextoCelda(data::Nulo()), "");
    EXPECT_EQ(data::TextoCelda(data::Valor(QMetaType::fromType<bool>())), "");
    EXPECT_EQ(data::TextoCelda(1.5), "1.5");
    EXPECT_EQ(data::TextoCelda(QDate(2024, 3, 15)), "15/03/2024");
}

} // namespace
