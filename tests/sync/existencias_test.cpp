#include "apoyo/corrida_con_sitio.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/existencias.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;
using sync::ParDeCadena;

namespace {

struct CasoCadena {
    const char* regla;
    const char* cadena;
    std::vector<ParDeCadena> pares;
};

void PrintTo(const CasoCadena& caso, std::ostream* salida)
{
    *salida << caso.cadena;
}

class ParteCadena : public testing::TestWithParam<CasoCadena> {};

TEST_P(ParteCadena, CadaCorcheteCerradoDaUnPar)
{
    EXPECT_EQ(sync::ParteCadena(GetParam().cadena), GetParam().pares);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ParteCadena,
    testing::Values(
        CasoCadena{"UnPar", "[COL:AZU]", {{"COL", "AZU"}}},
        CasoCadena{"VariosPares", "[COL:AZU][TAL:L]", {{"COL", "AZU"}, {"TAL", "L"}}},
        CasoCadena{"VaciaNoDaNinguno", "", {}},
        CasoCadena{"SinCorchetesNoDaNinguno", "COL:AZU", {}},
        CasoCadena{"SinCerrarNoDaNinguno", "[COL:AZU", {}},
        CasoCadena{"ElSegundoCierreDaUnParVacio", "[COL:AZU]]", {{"COL", "AZU"}, {"", ""}}},
        CasoCadena{"SinAbrirLaCategoriaQuedaVacia", "COL:AZU]", {{"", "AZU"}}},
        CasoCadena{"SinDosPuntosElValorEsLaMarca", "[COL]", {{"COL", "$"}}},
        CasoCadena{"DosAperturasJuntanLasCategorias", "[CO[L:AZU]", {{"COL", "AZU"}}},
        CasoCadena{
            "LoDeEntreParesVaAlValorQueLaAperturaBorra", "[A:1]-[B:2]", {{"A", "1"}, {"B", "2"}}},
        CasoCadena{"UnValorQueEmpiezaPorLaMarcaPasaALaCategoria", "[A:$5]", {{"A5", "$"}}}),
    [](const auto& caso) { return caso.param.regla; });

struct Existencias : testing::Test {
    CorridaConSitio p{};
    FilaDeArticulo fila{};

    Existencias()
    {
        p.opciones.stock = true;
        p.programa.parametros.PSAlmacenes = "01,02";
    }

    void EnAlmacen(const Valor& exi)
    {
        p.local.Espera(
            "SELECT SUM(EXISTENCIAS) AS EXI from m_Exist WHERE CODARTICULO='0101A' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01','02')",
            HazFilas({"EXI"}, {{exi}}));
    }
    void Lotes(std::initializer_list<std::initializer_list<Valor>> lotes)
    {
        p.programa.parametros.PS_MODOCONFIGURADOR = true;
        p.local.Espera(
            "SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='0101A' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01','02') AND IDCONF<>'0'  AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA",
            HazFilas({"CODARTICULO", "CADENA", "IDCONF", "EXI"}, lotes));
    }
    void Rango(const QString& categoria, const QString& valor, int ncat, int nopc)
    {
        p.local.Espera(
            QString(
                "SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<='%1') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='%1' AND CODOPCIONAL<='%2'")
                .replace("%1", categoria)
                .replace("%2", valor),
            HazFilas({"NCAT", "NOPC"}, {{ncat, nopc}}));
    }
    QStringList Escribe(const QString& id = "71")
    {
        const data::Recordset registro = fila.Fila();
        sync::EscribeExistencias(p.fase, {.fila = registro, .CodArticulo = "0101A", .id = id});
        return p.Sentencias();
    }
    /// The stock-only way, over rows of the shop with these product ids.
    QStringList EscribeSolo(int id, int otro)
    {
        data::Recordset productos(HazFilas({"id_product", "reference", "id_image", "date_upd"},
                                           {{id, "0101A", 1, Nulo()}, {otro, "0101A", 2, Nulo()}}));
        sync::EscribeSoloExistencias(p.fase, fila.Fila(), productos);
        return p.Sentencias();
    }
};

TEST_F(Existencias, LaFilaDelArticuloSustituyeALasAnteriores)
{
    EnAlmacen(12.5);

    EXPECT_EQ(
        Escribe(),
        (QStringList{
            "DELETE FROM ps_stock_available WHERE id_product='71' ||",
            "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('71000000','71',0,1,0,12.5,0,0) ||"}));
}

TEST_F(Existencias, SinFilasDelAnoLaCantidadEsCero)
{
    EnAlmacen(Nulo());

    EXPECT_TRUE(Escribe().at(1).contains("('71000000','71',0,1,0,0,0,0) ||"));
}

TEST_F(Existencias, LoNegativoTambienSePublica)
{
    EnAlmacen(-3);

    EXPECT_TRUE(Escribe().at(1).contains("('71000000','71',0,1,0,-3,0,0) ||"));
}

TEST_F(Existencias, LaTiendaBuscaLaCombinacionPorTodosSusAtributos)
{
    EnAlmacen(9);
    Lotes({{"0101A", "[COL:AZU][TAL:L]", "345", 4}});
    Rango("COL", "AZU", 2, 4);
    Rango("TAL", "L", 5, 9);

    EXPECT_EQ(
        Escribe().at(2),
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('71345','71', (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='0101A' AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=002004) AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=005009)),1,0,4,0,0) ||");
}

TEST_F(Existencias, UnaCadenaVaciaOSinCorchetesNoPoneFiltro)
{
    EnAlmacen(9);
    Lotes({{"0101A", Nulo(), "345", 4}, {"0101A", "COL:AZU", "346", 5}});

    const QStringList sentencias = Escribe();

    ASSERT_EQ(sentencias.size(), 4);
    EXPECT_TRUE(sentencias[2].contains("WHERE ps_product.reference='0101A'),1,0,4,0,0) ||"));
    EXPECT_TRUE(sentencias[3].contains("WHERE ps_product.reference='0101A'),1,0,5,0,0) ||"));
}

TEST_F(Existencias, SinElModoConfiguradorNoSeMiranLosLotes)
{
    EnAlmacen(9);

    EXPECT_EQ(Escribe().size(), 2);
    EXPECT_EQ(p.local.consultas.size(), 1);
}

TEST_F(Existencias, SinLaMarcaDeStockNoSeHaceNada)
{
    p.opciones.stock = false;

    EXPECT_TRUE(Escribe().isEmpty());
    EXPECT_TRUE(p.local.consultas.isEmpty());
}

TEST_F(Existencias, SoloStockRepiteSusSentenciasPorCadaFilaDelProductoConUnaLineaDeRegistro)
{
    EnAlmacen(9);

    const QStringList sentencias = EscribeSolo(71, 71);

    const QString borra = "DELETE FROM ps_stock_available WHERE id_product='71' ||";
    const QString inserta =
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('71000000','71',0,1,0,9,0,0) ||";
    EXPECT_EQ(sentencias, (QStringList{borra, inserta, borra, inserta}));
    EXPECT_EQ(p.Log(), QStringList{"Actualizando STOCK articulo 0101A / ALT7"});
}

TEST_F(Existencias, SoloStockEscribeCadaFilaConElIdDeSuProducto)
{
    EnAlmacen(9);

    EXPECT_EQ(
        EscribeSolo(71, 72),
        (QStringList{
            "DELETE FROM ps_stock_available WHERE id_product='71' ||",
            "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('71000000','71',0,1,0,9,0,0) ||",
            "DELETE FROM ps_stock_available WHERE id_product='72' ||",
            "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('72000000','72',0,1,0,9,0,0) ||"}));
}

TEST_F(Existencias, SoloStockRepiteTambienLasConfiguracionesDetrasDeSuArticulo)
{
    EnAlmacen(9);
    Lotes({{"0101A", "", "345", 4}, {"0101A", "", "346", 5}});

    const QString inserta =
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ";
    const QString combinacion =
        " (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='0101A'),1,0,";
    EXPECT_EQ(EscribeSolo(71, 72),
              (QStringList{"DELETE FROM ps_stock_available WHERE id_product='71' ||",
                           inserta + "('71000000','71',0,1,0,9,0,0) ||",
                           inserta + "('71345','71'," + combinacion + "4,0,0) ||",
                           inserta + "('71346','71'," + combinacion + "5,0,0) ||",
                           "DELETE FROM ps_stock_available WHERE id_product='72' ||",
                           inserta + "('72000000','72',0,1,0,9,0,0) ||",
                           inserta + "('72345','72'," + combinacion + "4,0,0) ||",
                           inserta + "('72346','72'," + combinacion + "5,0,0) ||"}));
}

// Nothing parts the two numbers; that two products may share an id is accepted.
TEST_F(Existencias, ElProductoYLaConfiguracionSeJuntanSinSeparadorYPuedenCoincidir)
{
    EnAlmacen(9);
    Lotes({{"0101A", "", "345", 4}});
    Escribe("12");
    EnAlmacen(9);
    Lotes({{"0101A", "", "45", 5}});

    const QStringList sentencias = Escribe("123");

    ASSERT_EQ(sentencias.size(), 6);
    EXPECT_TRUE(sentencias[2].contains(" VALUES ('12345','12', (SELECT "));
    EXPECT_TRUE(sentencias[5].contains(" VALUES ('12345','123', (SELECT "));
}

} // namespace
