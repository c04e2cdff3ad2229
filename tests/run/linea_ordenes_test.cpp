#include "run/linea_ordenes.h"
#include "run/pantalla.h"
#include <QtGlobal>
#include <gtest/gtest.h>
#include <utility>

using namespace tolmo;
using run::Modo;
using run::VentanaDeModo;

namespace {

struct CasoModo {
    const char* regla;
    QString linea{};
    std::optional<Modo> modo{};
};

class ModoDeLinea : public testing::TestWithParam<CasoModo> {};

TEST_P(ModoDeLinea, SigueLaTablaDeConmutadores)
{
    EXPECT_EQ(run::ModoDeLinea(GetParam().linea), GetParam().modo);
}

const Modo Auto{VentanaDeModo::Sincronizar, "AUTO"};
const Modo SinStock{VentanaDeModo::Sincronizar, "SOLOARTIC_SIN_STOCK"};
const Modo SoloArtic{VentanaDeModo::Sincronizar, "SOLOARTIC"};
const Modo Solostocks{VentanaDeModo::Solostocks, "AUTO"};
const Modo Stock{VentanaDeModo::Sincronizar, "STOCK"};

INSTANTIATE_TEST_SUITE_P(
    Casos, ModoDeLinea,
    testing::Values(CasoModo{"Prestashop", "/PRESTASHOP:000001", Auto},
                    CasoModo{"SoloarticSinStock", "/SOLOARTIC_SIN_STOCK:000001", SinStock},
                    CasoModo{"Soloartic", "/SOLOARTIC:000001", SoloArtic},
                    CasoModo{"Solostocks", "/SOLOSTOCKS:000001", Solostocks},
                    CasoModo{"Stock", "/STOCK:000001", Stock},
                    CasoModo{"LasMinusculasValen", "/solostocks:000001", Solostocks},
                    CasoModo{"GanaElPrimeroDelOrdenFijo", "/STOCK:000002 /PRESTASHOP:000001", Auto},
                    CasoModo{"ElOrdenNoEsElDeLaLinea", "/SOLOSTOCKS /SOLOARTIC 000001", SoloArtic},
                    CasoModo{"EnCualquierParteDeLaLinea", "x y/STOCKz 000001", Stock},
                    CasoModo{"SinLaBarraNoEsConmutador", "STOCK:000001", std::nullopt},
                    CasoModo{"OtroTexto", "000001", std::nullopt},
                    CasoModo{"LineaVacia", "", std::nullopt}),
    [](const auto& caso) { return caso.param.regla; });

TEST(EmpresaDeLinea, SonLosSeisUltimosCaracteresSinMirarLosDosPuntos)
{
    EXPECT_EQ(run::EmpresaDeLinea("/STOCK:000001"), "000001");
    EXPECT_EQ(run::EmpresaDeLinea("/STOCK 000001"), "000001");
    EXPECT_EQ(run::EmpresaDeLinea("/PRESTASHOP:000007 /STOCK:000001"), "000001");
}

TEST(EmpresaDeLinea, UnCodigoCortoTomaCaracteresDelConmutador)
{
    EXPECT_EQ(run::EmpresaDeLinea("/PRESTASHOP:"), "ASHOP:");
    EXPECT_EQ(run::EmpresaDeLinea("/STOCK:12"), "OCK:12");
    EXPECT_EQ(run::EmpresaDeLinea("7"), "7");
}

/// Sets environment variables for one test and puts back what there was.
class Variables {
  public:
    explicit Variables(const std::vector<std::pair<const char*, QByteArray>>& valores)
    {
        for (const auto& [nombre, valor] : valores) {
            antes_.emplace_back(nombre, qgetenv(nombre), qEnvironmentVariableIsSet(nombre));
            qputenv(nombre, valor);
        }
    }
    ~Variables()
    {
        for (const auto& [nombre, valor, puesta] : antes_) {
            if (puesta)
                qputenv(nombre, valor);
            else
                qunsetenv(nombre);
        }
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

  private:
    std::vector<std::tuple<const char*, QByteArray, bool>> antes_{};
};

TEST(LeeEntorno, LosArgumentosSeUnenConUnBlanco)
{
    const char* argumentos[] = {"kovtolmo", "/STOCK", "-platform", "000001"};

    EXPECT_EQ(run::LeeEntorno(4, argumentos).lineaOrdenes, "/STOCK -platform 000001");
    EXPECT_EQ(run::LeeEntorno(1, argumentos).lineaOrdenes, "");
}

TEST(LeeEntorno, TomaLasDosVariables)
{
    const Variables puestas({{"PATH_CONNECT", "/datos/kov"}, {"PATH_KOVSERVER", "OFICINA"}});
    const char* argumentos[] = {"kovtolmo"};

    const run::Entorno entorno = run::LeeEntorno(1, argumentos);

    EXPECT_EQ(entorno.PATH_CONNECT, "/datos/kov");
    EXPECT_EQ(entorno.PATH_KOVSERVER, "OFICINA");
}

TEST(LeeEntorno, MiraSiHayPantalla)
{
    const char* argumentos[] = {"kovtolmo"};
    {
        const Variables puestas({{"DISPLAY", ":7"}, {"WAYLAND_DISPLAY", ""}});
        EXPECT_TRUE(run::LeeEntorno(1, argumentos).hayPantalla);
    }
    const Variables puestas({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
    EXPECT_FALSE(run::LeeEntorno(1, argumentos).hayPantalla);
}

TEST(HayPantalla, BastaUnaDeLasDosVariables)
{
    {
        const Variables puestas({{"DISPLAY", ":7"}, {"WAYLAND_DISPLAY", ""}});
        EXPECT_TRUE(run::HayPantalla());
    }
    {
        const Variables puestas({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", "wayland-7"}});
        EXPECT_TRUE(run::HayPantalla());
    }
    const Variables puestas({{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}});
    EXPECT_FALSE(run::HayPantalla());
}

} // namespace
