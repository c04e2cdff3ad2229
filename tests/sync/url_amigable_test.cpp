#include "sync/url_amigable.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct CasoUrl {
    const char* regla;
    const char* nombre;
    const char* url;
};

class UrlAmigable : public testing::TestWithParam<CasoUrl> {};

TEST_P(UrlAmigable, DaElTextoDelEnlace)
{
    EXPECT_EQ(sync::UrlAmigable(QString::fromUtf8(GetParam().nombre)), GetParam().url);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, UrlAmigable,
    testing::Values(CasoUrl{"PasaAMinusculasAntesDeReemplazar", "ÁRBOL", "arbol"},
                    CasoUrl{"LasVocalesAgudasPierdenElAcento", "áéíóú", "aeiou"},
                    CasoUrl{"DeLasGravesSoloLaA", "àèìòù", "a"}, CasoUrl{"LaEneSeCae", "año", "ao"},
                    CasoUrl{"LaEneMayusculaTambien", "Ñandú", "andu"},
                    CasoUrl{"OtrasLetrasSeCaenSinRastro", "pingüino ça", "pingino-a"},
                    CasoUrl{"LosGuionesSeguidosNoSeJuntan", "A & B", "a---b"},
                    CasoUrl{"LosGuionesDeLosBordesSeQuedan", "(oferta)", "-oferta-"},
                    CasoUrl{"TodosLosSignosDanGuion", "a b&c´d+e*f%g.h,i;j/k(l)m\"n'o",
                            "a-b-c-d-e-f-g-h-i-j-k-l-m-n-o"},
                    CasoUrl{"DigitosGuionesYLetrasPasan", "abc-123", "abc-123"},
                    CasoUrl{"ElSaltoDeLineaJuntaLasPalabras", "uno\r\ndos", "unodos"},
                    CasoUrl{"ElSubrayadoSeCae", "a_b", "ab"},
                    CasoUrl{"PuedeQuedarVacio", "ñÑüç", ""}, CasoUrl{"VacioDaVacio", "", ""}),
    [](const auto& caso) { return caso.param.regla; });

struct CasoCarpeta {
    const char* regla;
    const char* numero;
    const char* carpeta;
};

class CadenaDirImage : public testing::TestWithParam<CasoCarpeta> {};

TEST_P(CadenaDirImage, DaUnaCarpetaPorCaracter)
{
    EXPECT_EQ(sync::CadenaDirImage(QString::fromUtf8(GetParam().numero)), GetParam().carpeta);
}

INSTANTIATE_TEST_SUITE_P(Casos, CadenaDirImage,
                         testing::Values(CasoCarpeta{"CuatroCifras", "1234", "1/2/3/4"},
                                         CasoCarpeta{"UnaCifraSeDaASiMisma", "7", "7"},
                                         CasoCarpeta{"VacioDaVacio", "", ""},
                                         CasoCarpeta{"NoMiraQueCaracteresSon", "a-", "a/-"}),
                         [](const auto& caso) { return caso.param.regla; });

} // namespace
