#include "apoyo/corrida_con_sitio.h"
#include "sync/vales.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

const QString SqlVales =
    "SELECT * FROM VALESDTO WHERE ESTADO='1' AND not exists(SELECT 'C' FROM D_ALBCLI WHERE D_ALBCLI.CODARTICULO=VALESDTO.CODARTICULOVALE AND D_ALBCLI.NSERIE=VALESDTO.CODVALE) AND CODCLIENTE IS NULL";

const QDateTime Desde(QDate(2024, 2, 1), QTime(0, 0));
const QDateTime Hasta(QDate(2024, 12, 31), QTime(0, 0));

struct Vales : testing::Test {
    CorridaConSitio p{};

    void Mayor(const Valor& numvale)
    {
        p.tienda.Espera("SELECT max(id_cart_rule) as numvale FROM ps_cart_rule",
                        HazFilas({"numvale"}, {{numvale}}));
    }
    void Vale(std::initializer_list<std::initializer_list<Valor>> vales)
    {
        p.local.Espera(SqlVales, HazFilas({"CODVALE", "TIPODTO", "Valor", "fechadesde",
                                           "fechahasta", "Descripcion", "nusos"},
                                          vales));
    }
    void EnTienda(const QString& codigo, bool existe)
    {
        p.tienda.Espera("SELECT * FROM ps_cart_rule where code='" + codigo + "'",
                        existe ? HazFilas({"id_cart_rule"}, {{9}}) : SinFilas);
    }
    QStringList Lote()
    {
        sync::SincronizaValesDescuento(p.fase);
        return p.red.Lotes().empty() ? QStringList() : p.red.Lotes().at(0);
    }
};

TEST_F(Vales, UnPorcentajeVaComoReduccionSinMinimo)
{
    Mayor(17);
    Vale({{"V8", "D", 12.5, Desde, Hasta, "Vale de marzo", 4}});
    EnTienda("V8", false);

    EXPECT_EQ(
        Lote(),
        (QStringList{
            "INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping, country_restriction, carrier_restriction, group_restriction, cart_rule_restriction, product_restriction, shop_restriction, free_shipping, reduction_percent, reduction_amount, reduction_tax, reduction_currency, reduction_product, gift_product, gift_product_attribute, highlight, active, date_add, date_upd) VALUES (18,0,CAST('2024/02/01' AS DATE),CAST('2024/12/31' AS DATE),'Vale de marzo',4,1,1,1,'V8',0,1,1,0,0,0,0,0,0,0,0,12.5,0,1,1,0,0,0,0,1,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE))||",
            "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (18,3,'Vale de marzo')||",
            "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (18,1,'Vale de marzo')||"}));
}

TEST_F(Vales, UnImporteFijoPideUnaCestaDeSuValor)
{
    Mayor(17);
    Vale({{"V8", "I", 20, Desde, Hasta, "x", 1}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains("'V8',20,1,1,0,0,0,0,0,0,0,0,0,20,1,1,0,"));
}

TEST_F(Vales, OtroTipoDejaElValorComoMinimoYNoRebajaNada)
{
    Mayor(17);
    Vale({{"V8", "Z", 20, Desde, Hasta, "x", 1}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains("'V8',20,1,1,0,0,0,0,0,0,0,0,0,0,1,1,0,"));
}

TEST_F(Vales, UnPorcentajeSinValorDejaElHueco)
{
    Mayor(17);
    Vale({{"V8", "D", Nulo(), Desde, Hasta, "x", 1}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains("'V8',0,1,1,0,0,0,0,0,0,0,0,,0,1,1,0,"));
}

TEST_F(Vales, UnImporteSinValorDejaElHuecoTambienEnElMinimo)
{
    Mayor(17);
    Vale({{"V8", "I", Nulo(), Desde, Hasta, "x", 1}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains("'V8',,1,1,0,0,0,0,0,0,0,0,0,,1,1,0,"));
}

TEST_F(Vales, SinTipoElValorEsElMinimoYNoSeRebajaNada)
{
    Mayor(17);
    Vale({{"V8", Nulo(), 20, Desde, Hasta, "x", 1}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains("'V8',20,1,1,0,0,0,0,0,0,0,0,0,0,1,1,0,"));
}

TEST_F(Vales, LoNuloQuedaVacioYElApostrofoNoSeToca)
{
    Mayor(17);
    Vale({{"V8", "D", 5, Nulo(), Hasta, "d'any", Nulo()}});
    EnTienda("V8", false);

    EXPECT_TRUE(Lote().at(0).contains(
        "VALUES (18,0,CAST('' AS DATE),CAST('2024/12/31' AS DATE),'d'any',,1,1,1,'V8',"));
}

TEST_F(Vales, EnUnaTablaVaciaElPrimeroEsElDos)
{
    Mayor(Nulo());
    Vale({{"V8", "D", 5, Desde, Hasta, "x", 1}, {"V9", "D", 5, Desde, Hasta, "y", 1}});
    EnTienda("V8", false);
    EnTienda("V9", false);

    const QStringList lote = Lote();
    EXPECT_TRUE(lote.at(0).contains(" VALUES (2,0,"));
    EXPECT_TRUE(lote.at(3).contains(" VALUES (3,0,"));
}

TEST_F(Vales, ElQueYaEstaSeDejaYNoGastaNumero)
{
    Mayor(17);
    Vale({{"V7", "D", 5, Desde, Hasta, "x", 1}, {"V8", "D", 5, Desde, Hasta, "y", 1}});
    EnTienda("V7", true);
    EnTienda("V8", false);

    EXPECT_EQ(Lote().size(), 3);
    EXPECT_TRUE(p.red.Lotes().at(0).at(0).contains(" VALUES (18,0,"));
    EXPECT_EQ(p.Log(), (QStringList{"PREPARANDO CARGA DE VALES DE DESCUENTO",
                                    "Preparando Vale Descuento V7. Ya existe en la web.",
                                    "Preparando Vale Descuento V8. Añadiendo",
                                    "SUBIENDO FICHERO sentencias.sql",
                                    "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"}));
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
}

TEST_F(Vales, SiTodosEstanYaElLoteVaIgualYSinFichero)
{
    Mayor(17);
    Vale({{"V7", "D", 5, Desde, Hasta, "x", 1}});
    EnTienda("V7", true);

    sync::SincronizaValesDescuento(p.fase);

    EXPECT_EQ(p.Log().mid(2),
              (QStringList{"SUBIENDO FICHERO ", "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"}));
}

TEST_F(Vales, SinValesNoHayLote)
{
    Mayor(17);
    p.local.Espera(SqlVales, SinFilas);

    sync::SincronizaValesDescuento(p.fase);

    EXPECT_TRUE(p.red.pasos.isEmpty());
    EXPECT_EQ(p.Log(), QStringList{"PREPARANDO CARGA DE VALES DE DESCUENTO"});
}

} // namespace
