#include "apoyo/programa_de_prueba.h"
#include "apoyo/proveedor_de_prueba.h"
#include "configurator/carga_configurador.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

/// In the shop's dialect, which holds when a run begins with the load.
struct CargaConfigurador : testing::Test {
    ProveedorDePrueba local{};
    ProgramaDePrueba p{local.Fabrica()};

    QStringList Carga()
    {
        local.PermiteOrdenes();
        p.programa.DialectoActivo = data::Dialecto::MySql;
        p.programa.ConexionLocal.Conecta("local");
        configurator::CargaDatosConfigurador(p.programa);
        return local.todas;
    }
};

TEST_F(CargaConfigurador, SinPasoATravesCorrenCincoSentenciasEnSuOrden)
{
    local.tablas = {{"PS_CONFIGURADOS", "TABLE"}, {"CONF_ART_VAL", "LINK"}};

    EXPECT_EQ(
        Carga(),
        (QStringList{
            "DELETE FROM PS_CONF_ART_CAT", "DELETE FROM PS_CONF_ART_VAL",
            "insert into PS_CONF_ART_CAT (CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPO) SELECT CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPOVALOR FROM CONF_ART_CAT",
            "insert into PS_CONF_ART_VAL (CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, INC_PVP, INC_PVP2, INC_PVP3, INC_PVP4, INC_PVP5, PESO, FOTO)SELECT CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, PVP1, PVP2, PVP3, PVP4, PVP5, 0, LINK FROM CONF_ART_VAL",
            "DELETE FROM PS_CONF_ART_VAL WHERE NOT EXISTS (SELECT 'C' FROM PS_CONF_ART_CAT WHERE PS_CONF_ART_VAL.CODCATEGORIA=PS_CONF_ART_CAT.CODCATEGORIA AND PS_CONF_ART_VAL.CODARTICULO=PS_CONF_ART_CAT.CODARTICULO)"}));
}

TEST_F(CargaConfigurador, ConPasoATravesCorrenLasCincoConsultasGuardadasPorSuNombre)
{
    local.tablas = {{"M_ARTIC", "TABLE"}, {"ps_configurados_en_Paso_a_Traves", "view"}};

    EXPECT_EQ(Carga(), (QStringList{"PS_BORRA_PS_CONF_ART_CAT", "PS_BORRA_PS_CONF_ART_VAL",
                                    "PS_CARGA_PS_CONF_ART_CAT", "PS_CARGA_PS_CONF_ART_VAL",
                                    "PS_QUITAR_VALORES_NO_USADOS"}));
}

TEST_F(CargaConfigurador, UnaTablaDelSistemaConEseNombreNoCuenta)
{
    local.tablas = {{"PS_CONFIGURADOS_EN_PASO_A_TRAVES", "SYSTEM TABLE"}};

    EXPECT_EQ(Carga().value(0), "DELETE FROM PS_CONF_ART_CAT");
}

} // namespace
