#include "data/plantilla.h"
#include <gtest/gtest.h>
#include <stdexcept>

using tolmo::data::Plantilla;

namespace {

TEST(Plantilla, PoneCadaValorEnSuLugar)
{
    constexpr Plantilla sentencia(u"DELETE FROM ps_image where id_image={id_image} and l={lang}||");

    EXPECT_EQ(sentencia({{"lang", "3"}, {"id_image", "71"}}),
              "DELETE FROM ps_image where id_image=71 and l=3||");
}

TEST(Plantilla, UnNombrePuedeVenirVariasVeces)
{
    constexpr Plantilla sentencia(u"{id}-{id}");

    EXPECT_EQ(sentencia({{"id", "71"}}), "71-71");
}

TEST(Plantilla, SinLugaresEsElTexto)
{
    constexpr Plantilla sentencia(u"SELECT * FROM m_empresa");
    constexpr Plantilla vacia(u"");

    EXPECT_EQ(sentencia(), "SELECT * FROM m_empresa");
    EXPECT_EQ(vacia(), "");
}

TEST(Plantilla, UnValorQueParecUnLugarSigueSiendoDato)
{
    constexpr Plantilla sentencia(u"'{nombre}','{id}'");

    EXPECT_EQ(sentencia({{"nombre", "{id} %1 {"}, {"id", "{nombre}"}}), "'{id} %1 {','{nombre}'");
}

TEST(Plantilla, UnaLlaveSinNombreEsTexto)
{
    constexpr Plantilla sentencia(u"{} { x } {1a} {a-b} }{ {sin {id} {");

    EXPECT_EQ(sentencia({{"id", "71"}}), "{} { x } {1a} {a-b} }{ {sin 71 {");
}

TEST(Plantilla, LosNombresDistinguenMayusculas)
{
    constexpr Plantilla sentencia(u"{PS_PREFIJO}{ps_prefijo}{_a1}");

    EXPECT_EQ(sentencia({{"PS_PREFIJO", "A"}, {"ps_prefijo", "b"}, {"_a1", "c"}}), "Abc");
}

TEST(Plantilla, UnLugarSinValorEsUnFalloDelCodigo)
{
    constexpr Plantilla sentencia(u"{id}{lang}");

    EXPECT_THROW(sentencia({{"id", "71"}}), std::logic_error);
}

TEST(Plantilla, UnValorSinLugarEsUnFalloDelCodigo)
{
    constexpr Plantilla sentencia(u"{id}");

    EXPECT_THROW(sentencia({{"id", "71"}, {"lang", "3"}}), std::logic_error);
    EXPECT_THROW(sentencia({{"id", "71"}, {"id", "72"}}), std::logic_error);
}

TEST(Plantilla, ConservaLosCaracteresDeSuTexto)
{
    constexpr Plantilla sentencia(u"'{notas} '||ñ€´");

    EXPECT_EQ(sentencia({{"notas", QString()}}), QString::fromUtf8("' '||ñ€´"));
}

} // namespace
