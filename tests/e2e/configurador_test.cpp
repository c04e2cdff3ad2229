#include "apoyo/corrida_real.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// A company whose management program has a configurator of its own: two attributes with two
/// values each, and lots of one of the four configurations.
struct ConConfigurador : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"PS_MODOCONFIGURADOR", "True"}});
        empresa->Sql(SqlArticulo("01A", {{"FECHAMODIFICACION", "Null"}}) + SqlOpciones() +
                     SqlConfiguracion() + SqlExistencias());
        corrida = empresa->Corre();
        soloStock = empresa->Corre("/STOCK:000001");
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static QString SqlOpciones()
    {
        const QString categoria = "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ";
        const QString opcion =
            "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ";
        return categoria + "('COL','Color');\n" + categoria + "('MED','Medida');\n" + opcion +
               "('COL','AZ','Azul');\n" + opcion + "('COL','RO','Rojo');\n" + opcion +
               "('MED','T1','Chico');\n" + opcion + "('MED','T2','Grande');\n";
    }
    /// With a value that was made by hand and one whose attribute the article doesn't carry.
    static QString SqlConfiguracion()
    {
        const QString categoria =
            "INSERT INTO CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPOVALOR) VALUES ";
        const QString valor =
            "INSERT INTO CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,PVP1) VALUES ";
        return categoria + "('01A','COL','Color','V');\n" + categoria +
               "('01A','MED','Medida','V');\n" + valor + "('01A','COL','RO',1,1,1);\n" + valor +
               "('01A','COL','AZ',2,2,2);\n" + valor + "('01A','MED','T2',3,1,0.5);\n" + valor +
               "('01A','MED','T1',4,2,0);\n" + valor + "('01A','ZZZ','T1',5,1,9);\n" +
               "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP) VALUES "
               "('01A','COL','ZZ',9,9,9);\n";
    }
    static QString SqlExistencias()
    {
        const QString ahora = QString::number(QDate::currentDate().year());
        const QString antes = QString::number(QDate::currentDate().year() - 1);
        const QString lote =
            "INSERT INTO M_EXIST_LOTE (CODARTICULO,LOTE,IDCONF,ANIO,CODALMACEN,EXISTENCIAS) VALUES ";
        return "INSERT INTO M_EXIST (CODARTICULO,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('01A'," +
               ahora + ",'01',12);\n" +
               "INSERT INTO M_EXIST (CODARTICULO,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('01A'," +
               antes + ",'01',100);\n" +
               "INSERT INTO CONFCAD (CODARTICULO,ID,CADENA) VALUES ('01A','000007','[COL:RO][MED:T1]');\n" +
               lote + "('01A','L1','000007'," + ahora + ",'01',3);\n" + lote +
               "('01A','L2','000007'," + ahora + ",'01',2.5);\n" + lote + "('01A','L3','000007'," +
               ahora + ",'01',-4);\n" + lote + "('01A','L4','000007'," + ahora + ",'02',50);\n" +
               lote + "('01A','L5','0'," + ahora + ",'01',8);\n";
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida corrida{}, soloStock{};
};

// The last attribute changes fastest, each value in its own order; the load adds no weight.
TEST_F(ConConfigurador, LasCombinacionesSonElCruceDeLoQueCargaDeLaGestion)
{
    const QString valor =
        "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT ";
    const QString fila =
        "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','";
    const QString desde = " From ps_product WHERE REFERENCE ='01A'";
    const auto id = [](int n) {
        return QString("CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','%1'),5)) ").arg(n);
    };

    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute_combination ")),
              EnLineas({valor + "001002," + id(1) + desde, valor + "002002," + id(1) + desde,
                        valor + "001002," + id(2) + desde, valor + "002001," + id(2) + desde,
                        valor + "001001," + id(3) + desde, valor + "002002," + id(3) + desde,
                        valor + "001001," + id(4) + desde, valor + "002001," + id(4) + desde}));
    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute ")),
              EnLineas({fila + "1'),5)) , ID_PRODUCT,1.5,0,1" + desde,
                        fila + "2'),5)) , ID_PRODUCT,1,0,NULL" + desde,
                        fila + "3'),5)) , ID_PRODUCT,2.5,0,NULL" + desde,
                        fila + "4'),5)) , ID_PRODUCT,2,0,NULL" + desde}));
}

// Only this year's lots, of the company's store, with something in them.
TEST_F(ConConfigurador, LaConfiguracionRecibeSusLotesYLaTiendaBuscaSuCombinacion)
{
    const QStringList esperadas{
        "DELETE FROM ps_stock_available WHERE id_product='1' ",
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('1000000','1',0,1,0,12,0,0) ",
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('1000007','1', (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='01A' AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=001002) AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=002001)),1,0,5.5,0,0) "};

    EXPECT_EQ(EnLineas(corrida.Sentencias().filter("ps_stock_available")), EnLineas(esperadas));
    EXPECT_EQ(EnLineas(soloStock.Sentencias()), EnLineas(esperadas));
}

TEST_F(ConConfigurador, LaTiendaTieneLasExistenciasDeLaCombinacion)
{
    EXPECT_EQ(tienda->Sql(
                  "SELECT id_product_attribute,price,weight FROM ps_product_attribute ORDER BY 1"),
              (Filas{{"100001", "1.500000", "0.000000"},
                     {"100002", "1.000000", "0.000000"},
                     {"100003", "2.500000", "0.000000"},
                     {"100004", "2.000000", "0.000000"}}));
    // The shop's column holds whole numbers and rounds the half.
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_stock_available,id_product,id_product_attribute,quantity FROM ps_stock_available ORDER BY 1"),
        (Filas{{"1000000", "1", "0", "12"}, {"1000007", "1", "100002", "6"}}));
    EXPECT_EQ(EnLineas((corrida.log + soloStock.log).filter("ERRORES")), "");
}

/// The same company in a database that reaches the management program's tables by stored queries
/// of its own: theirs give each value a weight, and take away the size T1.
struct EnPasoATraves : testing::Test {
    static void SetUpTestSuite()
    {
        EmpresaReal empresa(TiendaComun({.generacion = "1.6.0", .idiomas = 1}),
                            {{"PS_MODOCONFIGURADOR", "True"}});
        empresa.Sql(
            SqlArticulo("01A", {{"FECHAMODIFICACION", "Null"}}) + ConConfigurador::SqlOpciones() +
            ConConfigurador::SqlConfiguracion() +
            "CREATE VIEW PS_CONFIGURADOS_EN_PASO_A_TRAVES AS SELECT CODARTICULO FROM CONF_ART_CAT;\n"
            "CREATE PROCEDURE PS_BORRA_PS_CONF_ART_CAT AS DELETE FROM PS_CONF_ART_CAT;\n"
            "CREATE PROCEDURE PS_BORRA_PS_CONF_ART_VAL AS DELETE FROM PS_CONF_ART_VAL;\n"
            "CREATE PROCEDURE PS_CARGA_PS_CONF_ART_CAT AS INSERT INTO PS_CONF_ART_CAT (CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPO) SELECT CODARTICULO,CODCATEGORIA,DESCRIPCION,TIPOVALOR FROM CONF_ART_CAT;\n"
            "CREATE PROCEDURE PS_CARGA_PS_CONF_ART_VAL AS INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,PESO) SELECT CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,PVP1,0.25 FROM CONF_ART_VAL;\n"
            "CREATE PROCEDURE PS_QUITAR_VALORES_NO_USADOS AS DELETE FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='ZZZ' OR VALOR='T1';\n");
        corrida = empresa.Corre();
    }

    static inline ResultadoCorrida corrida{};
};

TEST_F(EnPasoATraves, LasConsultasDeLaEmpresaHacenLaCarga)
{
    const QString desde = " From ps_product WHERE REFERENCE ='01A'";
    const QString valor =
        "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT ";
    const QString fila =
        "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT ";
    const QString primera = "CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) ";
    const QString segunda = "CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5)) ";

    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute_combination ")),
              EnLineas({valor + "001002," + primera + desde, valor + "002002," + primera + desde,
                        valor + "001001," + segunda + desde, valor + "002002," + segunda + desde}));
    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute ")),
              EnLineas({fila + primera + ", ID_PRODUCT,1.5,0.5,1" + desde,
                        fila + segunda + ", ID_PRODUCT,2.5,0.5,NULL" + desde}));
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    EXPECT_EQ(corrida.errores, "");
}

} // namespace
