#include "apoyo/corrida_de_prueba.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/precios.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

TEST(ConColumnaImpuesto, ValenLasCuatroVersionesExactasYCualquierEsquemaNuevo)
{
    for (const char* version : {"1.6.0.11", "1.6.0.12", "1.6.0.13", "1.6.0.14"})
        EXPECT_TRUE(sync::ConColumnaImpuesto(version, 0)) << version;
    for (const char* version : {"1.6.0.10", "1.6.0.15", "1.5.6.2", "1.6.0.1", ""})
        EXPECT_FALSE(sync::ConColumnaImpuesto(version, 0)) << version;
    EXPECT_TRUE(sync::ConColumnaImpuesto("1.5.6.2", 1));
    EXPECT_FALSE(sync::ConColumnaImpuesto("1.5.6.2", -1));
}

TEST(DescuentoCombinado, EncadenaLosCuatro)
{
    EXPECT_EQ(sync::DescuentoCombinado(0, 0, 0, 0), 0);
    EXPECT_DOUBLE_EQ(sync::DescuentoCombinado(10, 0, 0, 0), 10);
    EXPECT_DOUBLE_EQ(sync::DescuentoCombinado(10, 20, 0, 0), 28);      // 1 - 0.9 * 0.8
    EXPECT_DOUBLE_EQ(sync::DescuentoCombinado(50, 50, 50, 50), 93.75); // 1 - 0.0625
    EXPECT_DOUBLE_EQ(sync::DescuentoCombinado(100, 20, 0, 0), 100);
}

struct PreciosTest : testing::Test {
    CorridaDePrueba p{};
    FilaDeArticulo fila{};

    PreciosTest() { p.corrida.contadores.mprecio = 100; }

    void Ofertas(std::initializer_list<std::initializer_list<Valor>> ofertas)
    {
        p.local.Espera("SELECT * FROM OFERTAS WHERE CODARTICULO='0101A' AND IDCONF='0'",
                       HazFilas({"DTOCOM1", "DTOCOM2", "DTOCOM3", "DTOCOM4", "pvpdef", "PRECIO",
                                 "tarifaoprov", "fechadesde", "fechahasta"},
                                ofertas));
    }

    /// The sentences behind those of the five tariffs.
    QStringList SentenciasDeOferta(std::initializer_list<std::initializer_list<Valor>> ofertas)
    {
        Ofertas(ofertas);
        const data::Recordset registro = fila.Fila();
        sync::EscribePrecios(p.corrida, {.fila = registro, .CodArticulo = "0101A", .id = "71"});
        return p.Sentencias().mid(5);
    }
};

const QDateTime Desde(QDate(2024, 3, 1), QTime(0, 0));
const QDateTime Hasta(QDate(2024, 12, 31), QTime(0, 0));

TEST_F(PreciosTest, LasCincoTarifasSalenSiempreSinImpuesto)
{
    Ofertas({});
    const data::Recordset registro = fila.Fila();

    sync::EscribePrecios(p.corrida, {.fila = registro, .CodArticulo = "0101A", .id = "71"});

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES (101,71,0,0,0,4,10.5,1,0,'amount')||",
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES (102,71,0,0,0,5,9.25,1,0,'amount')||",
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES (103,71,0,0,0,6,8,1,0,'amount')||",
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES (104,71,0,0,0,7,7.1,1,0,'amount')||",
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE) VALUES (105,71,0,0,0,8,6.0005,1,0,'amount')||"}));
    EXPECT_EQ(p.corrida.contadores.mprecio, 105);
}

TEST_F(PreciosTest, ConImpuestoLaTarifaLlevaLaColumna)
{
    p.corrida.VersionTienda = "1.6.0.14";
    Ofertas({});
    const data::Recordset registro = fila.Fila();

    sync::EscribePrecios(p.corrida, {.fila = registro, .CodArticulo = "0101A", .id = "71"});

    EXPECT_EQ(
        p.Sentencias().value(1),
        "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,reduction_tax) VALUES (102,71,0,0,0,5,9.25,1,0,'amount',0)||");
}

TEST_F(PreciosTest, UnaTarifaNulaDejaElHuecoEntreLasComas)
{
    fila.Pon("PVP3", Nulo());
    Ofertas({});
    const data::Recordset registro = fila.Fila();

    sync::EscribePrecios(p.corrida, {.fila = registro, .CodArticulo = "0101A", .id = "71"});

    EXPECT_TRUE(p.Sentencias().value(2).contains("(103,71,0,0,0,6,,1,0,'amount')||"));
}

TEST_F(PreciosTest, UnDescuentoSaleComoFraccionDeLaTarifaDeLaOferta)
{
    EXPECT_EQ(
        SentenciasDeOferta({{10.0, Nulo(), 0.0, 0.0, 3, Nulo(), 2, Desde, Hasta}}),
        QStringList{
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`) VALUES (106,71,0,0,0,5,8,1,0.1,'percentage',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE))||"});
}

TEST_F(PreciosTest, LaOfertaConImpuestoLlevaLaColumnaAlFinal)
{
    p.programa.parametros.PS_VERSION = 1;

    EXPECT_EQ(
        SentenciasDeOferta({{10.0, 20.0, 0.0, 0.0, 3, Nulo(), 2, Desde, Hasta}}),
        QStringList{
            "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`,reduction_tax) VALUES (106,71,0,0,0,5,8,1,0.28,'percentage',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)||"});
}

TEST_F(PreciosTest, UnPrecioNetoSaleComoTarifaMenosUnImporte)
{
    const QStringList sentencias =
        SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, Nulo(), 7.05, 2, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 1);
    // 9.25 less 7.05
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,5,9.25,1,2.2,'amount',"))
        << qPrintable(sentencias[0]);
}

TEST_F(PreciosTest, UnaOfertaSinPrecioDejaElHuecoDeLaRebaja)
{
    const QStringList sentencias =
        SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, Nulo(), Nulo(), 2, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 1);
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,5,9.25,1,,'amount',"))
        << qPrintable(sentencias[0]);
}

TEST_F(PreciosTest, UnaTarifaNulaDejaLosHuecosDelPrecioNetoYDeSuRebaja)
{
    fila.Pon("PVP2", Nulo());

    const QStringList sentencias =
        SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, Nulo(), 7.05, 2, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 1);
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,5,,1,,'amount',"))
        << qPrintable(sentencias[0]);
}

TEST_F(PreciosTest, UnPrecioNetoConDescuentoParteDelPrecioDeLaOferta)
{
    const QStringList sentencias =
        SentenciasDeOferta({{5.0, 0.0, 0.0, 0.0, Nulo(), 7.05, 2, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 1);
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,5,7.05,1,0.05,'percentage',"))
        << qPrintable(sentencias[0]);
}

TEST_F(PreciosTest, SinDescuentosYConTarifaDePartidaLaFilaDiceLaTarifa)
{
    const QStringList sentencias =
        SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, 4, 1.0, 2, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 1);
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,5,7.1,1,0,'amount',"))
        << qPrintable(sentencias[0]);
}

TEST_F(PreciosTest, LaOfertaDeLaTarifaPorDefectoLlegaTambienALosGruposGenerales)
{
    p.programa.parametros.Ps_pvpdef = 3;

    const QStringList sentencias =
        SentenciasDeOferta({{10.0, 0.0, 0.0, 0.0, 3, Nulo(), 3, Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 4);
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,1,8,1,0.1,"));
    EXPECT_TRUE(sentencias[1].contains("VALUES (107,71,0,0,0,2,8,1,0.1,"));
    EXPECT_TRUE(sentencias[2].contains("VALUES (108,71,0,0,0,3,8,1,0.1,"));
    EXPECT_TRUE(sentencias[3].contains("VALUES (109,71,0,0,0,6,8,1,0.1,"));
    EXPECT_EQ(p.corrida.contadores.mprecio, 109);
}

TEST_F(PreciosTest, DesdeLaTarifaSeisLaOfertaNoSePublica)
{
    EXPECT_EQ(SentenciasDeOferta({{10.0, 0.0, 0.0, 0.0, 3, Nulo(), 6, Desde, Hasta},
                                  {10.0, 0.0, 0.0, 0.0, Nulo(), 5.0, 7, Desde, Hasta}}),
              QStringList{});
    EXPECT_EQ(p.corrida.contadores.mprecio, 105);
}

TEST_F(PreciosTest, UnaTarifaGuardadaComoTextoValeComoNumero)
{
    p.programa.parametros.Ps_pvpdef = 2;

    const QStringList sentencias =
        SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, Nulo(), 7.05, "2", Desde, Hasta},
                            {0.0, 0.0, 0.0, 0.0, Nulo(), 7.05, "6", Desde, Hasta}});

    ASSERT_EQ(sentencias.size(), 4) << "groups 1 to 3 and 5, and none for the supplier's";
    EXPECT_TRUE(sentencias[0].contains("VALUES (106,71,0,0,0,1,9.25,1,2.2,'amount',"));
    EXPECT_TRUE(sentencias[3].contains("VALUES (109,71,0,0,0,5,9.25,1,2.2,'amount',"));
}

TEST_F(PreciosTest, UnaOfertaSinTarifaSePasaPorAlto)
{
    EXPECT_EQ(SentenciasDeOferta({{0.0, 0.0, 0.0, 0.0, Nulo(), 5.0, Nulo(), Desde, Hasta}}),
              QStringList{});
}

TEST_F(PreciosTest, UnaFechaNulaDaElTextoVacioEntreLasComillas)
{
    const QStringList sentencias =
        SentenciasDeOferta({{10.0, 0.0, 0.0, 0.0, 3, Nulo(), 2, Desde, Nulo()}});

    ASSERT_EQ(sentencias.size(), 1);
    EXPECT_TRUE(sentencias[0].endsWith("CAST('2024/03/01' AS DATE),CAST('' AS DATE))||"));
}

TEST_F(PreciosTest, UnaTarifaDePartidaQueNoExisteEsErrorDeLaCorrida)
{
    EXPECT_THROW(SentenciasDeOferta({{10.0, 0.0, 0.0, 0.0, 9, Nulo(), 2, Desde, Hasta}}),
                 data::ErrorDatos);
}

TEST_F(PreciosTest, ElBorradoEsUnaSentenciaAparte)
{
    const data::Recordset registro = fila.Fila();

    sync::BorraPrecios(p.corrida, {.fila = registro, .id = "71"});

    EXPECT_EQ(p.Sentencias(), QStringList{"DELETE FROM ps_specific_price WHERE id_product='71'||"});
}

TEST_F(PreciosTest, LasOfertasSeLeenEnAccessYLasFechasSeEscribenEnMysql)
{
    SentenciasDeOferta({});

    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::MySql);
}

} // namespace
