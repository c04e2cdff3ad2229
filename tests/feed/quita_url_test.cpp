#include "feed/quita_url.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct CasoUrl {
    const char* regla;
    QString texto{};
    QString limpio{};
};

class QuitaUrl : public testing::TestWithParam<CasoUrl> {};

TEST_P(QuitaUrl, QuitaElPrimerEnlace)
{
    EXPECT_EQ(feed::QuitaUrl(GetParam().texto), GetParam().limpio);
}

INSTANTIATE_TEST_SUITE_P(
    Textos, QuitaUrl,
    testing::Values(
        CasoUrl{"SinEnlaceQuedaIgual", "uno <b>dos</b> </a> <ahref", "uno <b>dos</b> </a> <ahref"},
        CasoUrl{"Vacio", "", ""},
        CasoUrl{"ElEnlaceSeVaConSuTexto", "uno <a href=\"x\">t</a> dos", "uno  dos"},
        CasoUrl{"SoloUnEnlaceNoDejaNada", "<a href=\"x\">t</a>", ""},
        CasoUrl{"LaAperturaValeEnMayusculas", "<A HREF=\"x\">t</a>.", "."},
        CasoUrl{"LosBlancosDeLaAperturaSonExactos", "<a  href=x>t</a>", "<a  href=x>t</a>"},
        CasoUrl{"SoloSeVaElPrimero", "1<a href=a>x</a>2<a href=b>y</a>3", "12<a href=b>y</a>3"},
        // Without an end, all of the text but its first three characters comes again.
        CasoUrl{"ElCierreEnMayusculasNoSeEncuentra", "ab<a HREF=\"x\">t</A>cd",
                "aba HREF=\"x\">t</A>cd"},
        CasoUrl{"SinCierre", "Ver <a href=x>la tienda", "Ver  <a href=x>la tienda"},
        // The end is looked for from the head of the text.
        CasoUrl{"UnCierreAnteriorSeTomaPorElSuyo", "x</a>y<a href=1>z", "x</a>yy<a href=1>z"}),
    [](const auto& caso) { return std::string(caso.param.regla); });

} // namespace
