#include "apoyo/corrida_con_base.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/atributos.h"
#include "sync/combinaciones.h"
#include "sync/existencias.h"
#include "sync/precios.h"
#include "sync/retirados.h"
#include "sync/vales.h"
#include <gtest/gtest.h>

// The rules that only the management database's answer shows: the phases over a real one.

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

QString Valores(const QString& articulo, const QString& categoria, const QString& valor,
                int secuencia, const QString& incremento = "0", const QString& foto = "NULL")
{
    return QString(
               "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,PESO,FOTO) VALUES ('%1','%2','%3',1,%4,%5,100,0.5,%6)")
        .arg(articulo, categoria, valor, QString::number(secuencia), incremento, foto);
}

struct SobreBase : testing::Test {
    CorridaConBase p{};
    FilaDeArticulo fila{};
    const data::Recordset registro = fila.Fila();
    const sync::Articulo articulo{.fila = registro, .CodArticulo = "0101A", .id = "71"};

    void CreaOpciones()
    {
        p.Ejecuta(
            {"CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(50))",
             "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3), DESCRIPCION nvarchar(50))",
             "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT, SECUENCIA INT, INC_PVP CURRENCY, INC_PVP2 CURRENCY, PESO DOUBLE, FOTO nvarchar(255))"});
    }
    void Opcion(const QString& categoria, const QString& opcion, const QString& descripcion)
    {
        p.Ejecuta({QString("INSERT INTO M_OPCIONALES VALUES ('%1','%2','%3')")
                       .arg(categoria, opcion, descripcion)});
    }
    void ColorYTalla()
    {
        CreaOpciones();
        p.Ejecuta({"INSERT INTO M_OPCIONALES_CAT VALUES ('TAL','Talla')",
                   "INSERT INTO M_OPCIONALES_CAT VALUES ('COL','Color')"});
        for (const char* color : {"ROJ", "AZU", "VER"})
            Opcion("COL", color, color);
        for (const char* talla : {"L", "M", "S", "X"})
            Opcion("TAL", talla, talla);
    }
    /// The tables of what is on hand, for a company that has the configurator.
    void CreaExistencias()
    {
        p.opciones.stock = true;
        p.programa.parametros.PS_MODOCONFIGURADOR = true;
        p.Ejecuta(
            {"CREATE TABLE m_Exist (CODARTICULO nvarchar(20), ANIO INT, CODALMACEN nvarchar(2), EXISTENCIAS DOUBLE)",
             "CREATE TABLE m_Exist_Lote (CODARTICULO nvarchar(20), ANIO INT, CODALMACEN nvarchar(2), IDCONF nvarchar(6), EXISTENCIAS DOUBLE)",
             "CREATE TABLE CONFCAD (codarticulo nvarchar(20), id nvarchar(6), Cadena nvarchar(255))"});
    }
    /// A configuration of the article with one lot of this year.
    void Configuracion(const QString& id, const QString& cadena, int existencias)
    {
        const QString ano = QString::number(QDate::currentDate().year());
        p.Ejecuta({"INSERT INTO CONFCAD VALUES ('0101A','" + id + "','" + cadena + "')",
                   "INSERT INTO m_Exist_Lote VALUES ('0101A'," + ano + ",'01','" + id + "'," +
                       QString::number(existencias) + ")"});
    }
    /// The second column of the sentences for ps_product_attribute_combination: attribute and n.
    static QStringList AtributosDe(const QStringList& sentencias)
    {
        QStringList atributos;
        for (const QString& sentencia : sentencias)
            if (sentencia.startsWith("INSERT INTO ps_product_attribute_combination"))
                atributos << sentencia.section("SELECT ", 1).section(",CONCAT", 0, 0) + " " +
                                 sentencia.section("'00000','", 1).section("'", 0, 0);
        return atributos;
    }
};

TEST_F(SobreBase, DosCategoriasDeTresYCuatroValoresDanDoceFilasPorLaSecuenciaDeLaPrimera)
{
    ColorYTalla();
    p.Ejecuta({Valores("0101A", "COL", "ROJ", 1), Valores("0101A", "COL", "AZU", 2),
               Valores("0101A", "COL", "VER", 3), Valores("0101A", "TAL", "X", 4),
               Valores("0101A", "TAL", "L", 5), Valores("0101A", "TAL", "M", 6),
               Valores("0101A", "TAL", "S", 7), Valores("OTRO", "COL", "ROJ", 1)});

    sync::EscribeCombinaciones(p.fase, articulo);

    const QStringList sentencias = p.Sentencias();
    // COL is category 1: AZU 1, ROJ 2, VER 3; TAL is 2: L 1, M 2, S 3, X 4.
    const QStringList filas = {"001002 1",  "002004 1",  "001002 2",  "002001 2",  "001002 3",
                               "002002 3",  "001002 4",  "002003 4",  "001001 5",  "002004 5",
                               "001001 6",  "002001 6",  "001001 7",  "002002 7",  "001001 8",
                               "002003 8",  "001003 9",  "002004 9",  "001003 10", "002001 10",
                               "001003 11", "002002 11", "001003 12", "002003 12"};
    EXPECT_EQ(AtributosDe(sentencias), filas);
    EXPECT_EQ(sentencias.size(), 12 * 4);
    EXPECT_EQ(sentencias.filter(",1 From ps_product").size(), 2) << "one default, in two tables";
    EXPECT_TRUE(sentencias.at(2).endsWith(",0,1,1 From ps_product WHERE REFERENCE ='0101A'||"));
}

TEST_F(SobreBase, TresCategoriasDeDosTresYCuatroValoresDanVeinticuatroFilas)
{
    ColorYTalla();
    p.Ejecuta({"INSERT INTO M_OPCIONALES_CAT VALUES ('MAT','Material')"});
    for (const char* material : {"ALU", "HIE", "ORO"})
        Opcion("MAT", material, material);
    p.Ejecuta({Valores("0101A", "COL", "ROJ", 2, "1"), Valores("0101A", "COL", "AZU", 1, "0"),
               Valores("0101A", "MAT", "ORO", 1, "10"), Valores("0101A", "MAT", "ALU", 2, "20"),
               Valores("0101A", "MAT", "HIE", 3, "30"), Valores("0101A", "TAL", "X", 1, "100"),
               Valores("0101A", "TAL", "L", 2, "200"), Valores("0101A", "TAL", "M", 3, "300"),
               Valores("0101A", "TAL", "S", 4, "400")});

    sync::EscribeCombinaciones(p.fase, articulo);

    const QStringList sentencias = p.Sentencias();
    // COL is category 1, MAT 2 and TAL 3: each one's values by their sequence, the last one
    // fastest.
    QStringList filas;
    int n = 0;
    for (const char* color : {"001001", "001002"})
        for (const char* material : {"002003", "002001", "002002"})
            for (const char* talla : {"003004", "003001", "003002", "003003"}) {
                ++n;
                for (const char* atributo : {color, material, talla})
                    filas << QString("%1 %2").arg(atributo).arg(n);
            }
    EXPECT_EQ(AtributosDe(sentencias), filas);
    ASSERT_EQ(sentencias.size(), 24 * 5);
    EXPECT_TRUE(sentencias[3].contains("'1'),5)) , ID_PRODUCT,110,1.5,1 From "));
    EXPECT_TRUE(sentencias[118].contains("'24'),5)) , ID_PRODUCT,431,1.5,NULL From "));
}

TEST_F(SobreBase, UnAtributoSinValoresNoCuentaYLosValoresSinAtributoSi)
{
    ColorYTalla();
    p.Ejecuta(
        {"CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(50), TIPO nvarchar(1))",
         "INSERT INTO PS_CONF_ART_CAT VALUES ('0101A','COL','Color','V')"});

    sync::EscribeCombinaciones(p.fase, articulo);
    EXPECT_TRUE(p.Sentencias().isEmpty());

    p.Ejecuta({Valores("0101A", "TAL", "S", 1)});
    sync::EscribeCombinaciones(p.fase, articulo);
    EXPECT_EQ(AtributosDe(p.Sentencias()), QStringList{"002003 1"});
}

TEST_F(SobreBase, ElIncrementoEsLaSumaDeLaTarifaDeDefecto)
{
    ColorYTalla();
    p.Ejecuta({Valores("0101A", "COL", "ROJ", 1, "1.25"), Valores("0101A", "TAL", "X", 1, "-0.5")});

    sync::EscribeCombinaciones(p.fase, articulo);
    p.programa.parametros.Ps_pvpdef = 2;
    sync::EscribeCombinaciones(p.fase, articulo);

    EXPECT_TRUE(p.Sentencias().at(2).contains(" , ID_PRODUCT,0.75,1,1 From "));
    EXPECT_TRUE(p.Sentencias().at(6).contains(" , ID_PRODUCT,200,1,1 From "));
}

TEST_F(SobreBase, UnIncrementoNuloHaceCeroLaSumaEntera)
{
    ColorYTalla();
    p.Ejecuta({Valores("0101A", "COL", "ROJ", 1, "NULL"), Valores("0101A", "TAL", "X", 1, "3")});

    sync::EscribeCombinaciones(p.fase, articulo);

    EXPECT_TRUE(p.Sentencias().at(2).contains(" , ID_PRODUCT,0,1,1 From "));
}

TEST_F(SobreBase, UnaOpcionQueFaltaEnElMaestroTomaElRangoDeLaAnterior)
{
    ColorYTalla();
    p.Ejecuta({Valores("0101A", "COL", "AAA", 1), Valores("0101A", "COL", "NEG", 2)});

    sync::EscribeCombinaciones(p.fase, articulo);

    EXPECT_EQ(AtributosDe(p.Sentencias()), (QStringList{"001000 1", "001001 2"}));
}

TEST_F(SobreBase, LosMaestrosYLasCombinacionesDanElMismoAtributo)
{
    ColorYTalla();
    p.Ejecuta({Valores("0101A", "TAL", "S", 1)});

    sync::CargaAtributos(p.fase);
    sync::EscribeCombinaciones(p.fase, articulo);

    ASSERT_EQ(p.red.Lotes().size(), 2U);
    EXPECT_TRUE(p.red.Lotes()[1].contains(
        "INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES (002003,3,'S')||"));
    EXPECT_EQ(AtributosDe(p.Sentencias()), QStringList{"002003 1"});
}

TEST_F(SobreBase, LosAtributosSeColocanPorSuDescripcionYSeNumeranPorSuCodigo)
{
    CreaOpciones();
    p.Ejecuta({"INSERT INTO M_OPCIONALES_CAT VALUES ('TAL','Talla')",
               "INSERT INTO M_OPCIONALES_CAT VALUES ('COL','Color')"});
    Opcion("TAL", "001", "Media");
    Opcion("COL", "002", "azul");
    Opcion("COL", "001", "Verde");

    sync::CargaAtributos(p.fase);

    const QStringList lote = p.red.Lotes().at(1);
    EXPECT_EQ(
        lote.filter("INTO ps_attribute ("),
        (QStringList{
            "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (001002,1,'#000000',1)||",
            "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (002001,2,'#000000',2)||",
            "INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES (001001,1,'#000000',3)||"}));
}

TEST_F(SobreBase, ElStockSumaLosAlmacenesDelAnoConLoNegativoYLosLotesSoloLoPositivo)
{
    ColorYTalla();
    CreaExistencias();
    p.programa.parametros.PSAlmacenes = "01,02";
    const QString ano = QString::number(QDate::currentDate().year());
    const QString pasado = QString::number(QDate::currentDate().year() - 1);
    p.Ejecuta({"INSERT INTO m_Exist VALUES ('0101A'," + ano + ",'01',10.5)",
               "INSERT INTO m_Exist VALUES ('0101A'," + ano + ",'02',-3)",
               "INSERT INTO m_Exist VALUES ('0101A'," + ano + ",'03',100)",
               "INSERT INTO m_Exist VALUES ('0101A'," + pasado + ",'01',1000)",
               "INSERT INTO CONFCAD VALUES ('0101A','7','[COL:ROJ][TAL:S]')",
               "INSERT INTO CONFCAD VALUES ('0101A','0','[COL:AZU]')",
               "INSERT INTO m_Exist_Lote VALUES ('0101A'," + ano + ",'01','7',4)",
               "INSERT INTO m_Exist_Lote VALUES ('0101A'," + ano + ",'02','7',2)",
               "INSERT INTO m_Exist_Lote VALUES ('0101A'," + ano + ",'02','7',-5)",
               "INSERT INTO m_Exist_Lote VALUES ('0101A'," + ano + ",'01','0',50)",
               "INSERT INTO m_Exist_Lote VALUES ('0101A'," + pasado + ",'01','7',60)"});

    sync::EscribeExistencias(p.fase, articulo);

    const QStringList sentencias = p.Sentencias();
    ASSERT_EQ(sentencias.size(), 3);
    EXPECT_TRUE(sentencias[1].contains("('71000000','71',0,1,0,7.5,0,0) ||"));
    EXPECT_TRUE(sentencias[2].contains("VALUES ('717','71', (SELECT "));
    EXPECT_TRUE(sentencias[2].contains("id_attribute=001002) AND EXISTS("));
    EXPECT_TRUE(sentencias[2].endsWith("id_attribute=002003)),1,0,6,0,0) ||"));
}

TEST_F(SobreBase, LasConfiguracionesSalenPorSuNumeroComoTexto)
{
    CreaExistencias();
    Configuracion("9", "", 1);
    Configuracion("10", "", 2);
    Configuracion("000007", "", 3);

    sync::EscribeExistencias(p.fase, articulo);

    const QStringList sentencias = p.Sentencias();
    ASSERT_EQ(sentencias.size(), 5);
    EXPECT_TRUE(sentencias[2].contains(" VALUES ('71000007','71', (SELECT "));
    EXPECT_TRUE(sentencias[2].endsWith("),1,0,3,0,0) ||"));
    EXPECT_TRUE(sentencias[3].contains(" VALUES ('7110','71', (SELECT "));
    EXPECT_TRUE(sentencias[3].endsWith("),1,0,2,0,0) ||"));
    EXPECT_TRUE(sentencias[4].contains(" VALUES ('719','71', (SELECT "));
    EXPECT_TRUE(sentencias[4].endsWith("),1,0,1,0,0) ||"));
}

// It names no category and no value, and both have the rank 0.
TEST_F(SobreBase, UnCorcheteQueCierraSinAbrirPideElAtributoCero)
{
    ColorYTalla();
    CreaExistencias();
    Configuracion("7", "]", 4);

    sync::EscribeExistencias(p.fase, articulo);

    EXPECT_EQ(
        p.Sentencias().value(2),
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('717','71', (SELECT ps_product_attribute.id_product_attribute FROM ps_product_attribute inner join ps_product on ps_product_attribute.id_product=ps_product.id_product  WHERE ps_product.reference='0101A' AND EXISTS(SELECT 'C' FROM ps_product_attribute_combination inner join ps_attribute on  ps_product_attribute_combination.id_attribute = ps_attribute.id_attribute  Where ps_product_attribute_combination.id_product_attribute = ps_product_attribute.id_product_attribute AND ps_attribute.id_attribute=000000)),1,0,4,0,0) ||");
}

TEST_F(SobreBase, SinExistenciasLaCantidadEsCero)
{
    p.opciones.stock = true;
    p.Ejecuta(
        {"CREATE TABLE m_Exist (CODARTICULO nvarchar(20), ANIO INT, CODALMACEN nvarchar(2), EXISTENCIAS DOUBLE)"});

    sync::EscribeExistencias(p.fase, articulo);

    EXPECT_TRUE(p.Sentencias().at(1).contains(",0,1,0,0,0,0) ||"));
}

/// Offers of the article 0101A over its own row; the sentences of the five tariffs are left out.
struct OfertasSobreBase : SobreBase {
    OfertasSobreBase()
    {
        p.Ejecuta(
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), PVP1 CURRENCY, PVP2 CURRENCY, PVP3 CURRENCY, PVP4 CURRENCY, PVP5 CURRENCY)",
             "INSERT INTO M_ARTIC VALUES ('0101A',10,100.1,8,7,6)",
             "CREATE TABLE OFERTAS (CODARTICULO nvarchar(20), IDCONF nvarchar(6), DTOCOM1 DOUBLE, DTOCOM2 DOUBLE, DTOCOM3 DOUBLE, DTOCOM4 DOUBLE, pvpdef INT, PRECIO CURRENCY, tarifaoprov INT, fechadesde DATETIME, fechahasta DATETIME)"});
    }

    void PrecioNeto(const QString& idconf, const QString& precio, int tarifa)
    {
        p.Ejecuta(
            {QString(
                 "INSERT INTO OFERTAS VALUES ('0101A','%1',0,0,0,0,NULL,%2,%3,#3/1/2024#,#12/31/2024#)")
                 .arg(idconf, precio, QString::number(tarifa))});
    }

    QStringList Escribe()
    {
        const data::Recordset suya =
            sync::LeeLocal(p.fase, "SELECT * FROM M_ARTIC WHERE CODARTICULO='0101A'");
        sync::EscribePrecios(p.fase, {.fila = suya, .CodArticulo = "0101A", .id = "71"});
        return p.Sentencias().mid(5);
    }
};

TEST_F(OfertasSobreBase, ElDineroSeRestaSinRestosDeComaFlotante)
{
    PrecioNeto("0", "100", 2);

    const QStringList ofertas = Escribe();

    ASSERT_EQ(ofertas.size(), 1);
    EXPECT_TRUE(ofertas[0].contains(" VALUES (6,71,0,0,0,5,100.1,1,0.1,'amount',"))
        << qPrintable(ofertas[0]);
}

TEST_F(OfertasSobreBase, LaDeUnaConfiguracionNoSePublica)
{
    PrecioNeto("7", "50", 2);
    PrecioNeto("0", "95", 2);
    PrecioNeto("00", "60", 2);

    const QStringList ofertas = Escribe();

    ASSERT_EQ(ofertas.size(), 1);
    EXPECT_TRUE(ofertas[0].contains(" VALUES (6,71,0,0,0,5,100.1,1,5.1,'amount',"))
        << qPrintable(ofertas[0]);
}

TEST_F(SobreBase, SeQuedanLosPublicadosPorSuMarcaOPorSuEmpresaYSeVanLosDemas)
{
    p.Ejecuta(
        {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), ACTIVOWEB nvarchar(1), EMPRESASWEB nvarchar(50), TIPOARTIC nvarchar(2))",
         "INSERT INTO M_ARTIC VALUES ('marca','S',NULL,NULL)",
         "INSERT INTO M_ARTIC VALUES ('empresa','N',',000001,','AR')",
         "INSERT INTO M_ARTIC VALUES ('obra','S',',000001,','OB')",
         "INSERT INTO M_ARTIC VALUES ('apagado','N',',000002,',NULL)"});
    p.tienda.Espera(
        "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.supplier_reference FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product",
        HazFilas({"id_product", "reference", "id_image", "supplier_reference"},
                 {{1, "MARCA", Nulo(), "a"},
                  {2, "empresa", Nulo(), "b"},
                  {3, "obra", Nulo(), "c"},
                  {4, "apagado", Nulo(), "d"},
                  {5, "desconocido", Nulo(), "e"}}));

    sync::RetiraArticulos(p.fase);

    EXPECT_EQ(p.Log().filter("Borrando Artículo"),
              (QStringList{"Borrando Artículo 3 / c", "Borrando Artículo 4 / d",
                           "Borrando Artículo 5 / e"}));
}

TEST_F(SobreBase, NiLosValesVendidosNiLosDeUnClienteNiLosDeOtroEstadoSePublican)
{
    p.Ejecuta(
        {"CREATE TABLE VALESDTO (CODVALE nvarchar(20), CODARTICULOVALE nvarchar(20), ESTADO nvarchar(1), CODCLIENTE nvarchar(6), TIPODTO nvarchar(1), Valor CURRENCY, fechadesde DATETIME, fechahasta DATETIME, Descripcion nvarchar(50), nusos INT)",
         "CREATE TABLE D_ALBCLI (CODARTICULO nvarchar(20), NSERIE nvarchar(20))",
         "INSERT INTO VALESDTO VALUES ('LIBRE','VALE','1',NULL,'I',7.25,#2/1/2024#,#12/31/2024#,'x',1)",
         "INSERT INTO VALESDTO VALUES ('VENDIDO','VALE','1',NULL,'I',7,#2/1/2024#,#12/31/2024#,'x',1)",
         "INSERT INTO VALESDTO VALUES ('CLIENTE','VALE','1','000123','I',7,#2/1/2024#,#12/31/2024#,'x',1)",
         "INSERT INTO VALESDTO VALUES ('CERRADO','VALE','2',NULL,'I',7,#2/1/2024#,#12/31/2024#,'x',1)",
         "INSERT INTO D_ALBCLI VALUES ('VALE','VENDIDO')",
         "INSERT INTO D_ALBCLI VALUES ('OTRO','LIBRE')"});
    p.tienda.Espera("SELECT max(id_cart_rule) as numvale FROM ps_cart_rule",
                    HazFilas({"numvale"}, {{17}}));
    p.tienda.Espera("SELECT * FROM ps_cart_rule where code='LIBRE'", SinFilas);

    sync::SincronizaValesDescuento(p.fase);

    EXPECT_EQ(p.Log().filter("Vale Descuento "),
              QStringList{"Preparando Vale Descuento LIBRE. Añadiendo"});
    const QString vale = p.red.Lotes().at(0).at(0);
    EXPECT_TRUE(vale.contains(
        "VALUES (18,0,CAST('2024/02/01' AS DATE),CAST('2024/12/31' AS DATE),'x',1,1,1,1,'LIBRE',7.25,"));
}

TEST_F(SobreBase, VeinteMilCombinacionesSalenTodasEnSuOrden)
{
    CreaOpciones();
    p.Ejecuta({"INSERT INTO M_OPCIONALES_CAT VALUES ('AAA','A')",
               "INSERT INTO M_OPCIONALES_CAT VALUES ('BBB','B')"});
    for (int i = 1; i <= 200; ++i) {
        const QString valor = QString::number(i).rightJustified(3, u'0');
        Opcion("AAA", valor, valor);
        p.Ejecuta({Valores("0101A", "AAA", valor, i)});
        if (i <= 100) {
            Opcion("BBB", valor, valor);
            p.Ejecuta({Valores("0101A", "BBB", valor, i)});
        }
    }

    sync::EscribeCombinaciones(p.fase, articulo);

    const QStringList sentencias = p.Sentencias();
    ASSERT_EQ(sentencias.size(), 20000 * 4);
    EXPECT_EQ(AtributosDe(sentencias.mid(4 * 12345, 4)),
              (QStringList{"001124 12346", "002046 12346"}));
    EXPECT_TRUE(sentencias.back().contains("CONCAT('000000','20000'),5)) ,1,0,1,NULL From "));
}

} // namespace
