#include "apoyo/corrida_de_prueba.h"
#include "sync/sincronizador.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

/// The engine itself over doubles of both databases, and a site where nobody answers.
struct SincronizadorTest : testing::Test {
    CorridaDePrueba p{};

    SincronizadorTest()
    {
        p.programa.parametros.WWW = "http://127.0.0.1:1/";
        p.local.PermiteOrdenes();
        p.tienda.Permite("SHOW COLUMNS FROM ps_category LIKE 'kov_familia'",
                         HazFilas({"Field"}, {{"kov_familia"}}));
    }

    void Corre(const sync::Opciones& opciones)
    {
        sync::Sincronizador motor(p.programa, p.progreso, site::Esperas{});
        motor.SincronizaPrestashop(opciones);
    }
};

TEST_F(SincronizadorTest, UnaTiendaQueNoDiceSuVersionNoParaLaCorrida)
{
    p.tienda.Espera("SELECT value FROM ps_configuration where name='ps_version_db'", SinFilas);
    p.tienda.Espera("SELECT max(id_cart_rule) as numvale FROM ps_cart_rule",
                    HazFilas({"numvale"}, {{17}}));
    p.local.Espera(
        "SELECT * FROM VALESDTO WHERE ESTADO='1' AND not exists(SELECT 'C' FROM D_ALBCLI WHERE D_ALBCLI.CODARTICULO=VALESDTO.CODARTICULOVALE AND D_ALBCLI.NSERIE=VALESDTO.CODVALE) AND CODCLIENTE IS NULL",
        SinFilas);

    Corre({.proceso = sync::Proceso::Vales});

    const QString asteriscos(33, u'*');
    EXPECT_EQ(p.Log().mid(p.Log().size() - 4),
              (QStringList{asteriscos, "FIN VUELCO DATOS A PRESTASHOP ", asteriscos, "\r\n"}));
    EXPECT_TRUE(p.prueba.avisos.cajas.empty());
}

TEST_F(SincronizadorTest, UnPuertoDeFtpQueNoEsUnNumeroAcabaLaCorridaEnSuCabecera)
{
    p.programa.parametros.Puerto_Ftp = "ftp";

    try {
        Corre({.proceso = sync::Proceso::Todo});
        FAIL() << "the run went on";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 13);
    }

    const QString asteriscos(33, u'*');
    EXPECT_EQ(p.Log(), (QStringList{asteriscos, "INICIO VUELCO DATOS A PRESTASHOP ", asteriscos}));
    EXPECT_TRUE(p.tienda.todas.isEmpty());
    EXPECT_EQ(p.progreso.pestanas, std::vector<bool>{false}) << "the tabs stay disabled";
}

} // namespace
