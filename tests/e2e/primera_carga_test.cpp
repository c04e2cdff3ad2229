#include "apoyo/corrida_real.h"
#include "data/access/access.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

/// A whole first run of "/PRESTASHOP" on an empty shop, compared word by word: a family with one
/// below it, and an article with an offer on a tariff that isn't the default one.
struct PrimeraCarga : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .version = "1.6.0.14", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"CAMPOFAMALT", "'OTRASFAM'"},
                                            {"PS_INDICES1", "'" + tienda->Www() + "uno.php'"},
                                            {"PS_INDICES2", "'" + tienda->Www() + "dos.php'"}});
        empresa->Sql(SqlFamilia("01", 0, "Cocina") +
                     SqlFamilia("0101", 1, "Ollas", {{"NOTAS", "'De la casa & más'"}}) +
                     SqlArticulo("0101A", {{"DESCRIPCION", "'Olla d''acero'"},
                                           {"NOTAS", "'uno' & Chr(13) & Chr(10) & 'dos €'"},
                                           {"FAVORITO", "True"},
                                           {"OTRASFAM", "'01,99'"}}) +
                     "INSERT INTO OFERTAS (CODARTICULO,IDCONF,DTOCOM1,DTOCOM2,PVPDEF,TARIFAOPROV,"
                     "FECHADESDE,FECHAHASTA) VALUES ('0101A','0',10,20,3,2,#03/01/2024#,"
                     "#12/31/2024#);\n");
        corrida = empresa->Corre();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida corrida{};
};

TEST_F(PrimeraCarga, TerminaBienYSinCajas)
{
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, "");
}

TEST_F(PrimeraCarga, ElLoteDeFamiliasEsExacto)
{
    const QString hoy = HoyMysql();
    // The third is that of the documents: its upload began and found no file to send.
    ASSERT_EQ(corrida.lotes.size(), 3);
    EXPECT_EQ(corrida.lotes[2], "");

    const QStringList sentencias = corrida.Sentencias().mid(0, 38);

    QStringList esperadas{
        "DELETE FROM ps_attribute_group",
        "DELETE FROM ps_attribute_group_lang",
        "DELETE FROM ps_attribute_group_shop",
        "DELETE FROM ps_attribute",
        "DELETE FROM ps_attribute_lang",
        "DELETE FROM ps_attribute_shop",
        "DELETE FROM ps_category WHERE id_category>2",
        "DELETE FROM ps_category_group WHERE id_category>2",
        "DELETE FROM ps_category_lang WHERE id_category>2",
        "DELETE FROM ps_category_shop WHERE id_category>2",
        "UPDATE ps_category set nleft=1 WHERE id_category=1",
        "UPDATE ps_category set nleft=2 WHERE id_category=2",
        "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES (3,2,3,0,2,1," +
            hoy + "," + hoy + ",01,'01')"};
    for (int k = 1; k <= 8; ++k)
        esperadas
            << QString("INSERT INTO ps_category_group (id_category,id_group) VALUES (3,%1)").arg(k);
    esperadas
        << "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,1,'Cocina','cocina','','','Cocina','')"
        << "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (3,1,01)"
        << "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES (4,3,4,0,3,1," +
               hoy + "," + hoy + ",0101,'0101')";
    for (int k = 1; k <= 8; ++k)
        esperadas
            << QString("INSERT INTO ps_category_group (id_category,id_group) VALUES (4,%1)").arg(k);
    esperadas
        << "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (4,1,'Ollas','ollas','De la casa & más','','Ollas','De la casa & más')"
        << "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (4,1,0101)"
        << "UPDATE ps_category set nright=5 WHERE kov_familia='0101'"
        << "UPDATE ps_category set nright=6 WHERE kov_familia='01'"
        << "UPDATE ps_category set nright=7 WHERE id_category=2"
        << "UPDATE ps_category set nright=8 WHERE id_category=1";
    EXPECT_EQ(EnLineas(sentencias), EnLineas(esperadas));
}

TEST_F(PrimeraCarga, ElLoteDeArticulosEsExacto)
{
    const QString hoy = HoyMysql();

    const QString tarifa =
        "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,reduction_tax) VALUES ";
    EXPECT_EQ(
        EnLineas(corrida.Sentencias().mid(38)),
        EnLineas(
            {"INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,minimal_quantity,out_of_stock,quantity_discount,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,cache_has_attachments) VALUES (1,null,null,1,4,0,null,0,0,10.5,0,'0101A','ALT0101A',NULL,1.25,1,1,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",'1')",
             "INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES (1,1,1,4,0,0,10.5,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",1)",
             "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,1,'olla-d-acero','','Olla d´acero','uno\r\ndos €','Olla d´acero','uno<br>dos € ','Corta 0101A')",
             "DELETE FROM ps_product_tag where id_product='1'",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (4,1,1)",
             tarifa + "(1,1,0,0,0,4,10.5,1,0,'amount',0)",
             tarifa + "(2,1,0,0,0,5,9.25,1,0,'amount',0)",
             tarifa + "(3,1,0,0,0,6,8,1,0,'amount',0)", tarifa + "(4,1,0,0,0,7,7.1,1,0,'amount',0)",
             tarifa + "(5,1,0,0,0,8,6.0005,1,0,'amount',0)",
             "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`,reduction_tax) VALUES (6,1,0,0,0,5,8,1,0.28,'percentage',CAST('2024/03/01' AS DATE),CAST('2024/12/31' AS DATE),0)",
             "DELETE FROM ps_stock_available WHERE id_product='1' ",
             "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('1000000','1',0,1,0,0,0,0) ",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (2,1,1)",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (3,1,1)"}));
}

TEST_F(PrimeraCarga, ElLogDelDiaCuentaLaCorridaEntera)
{
    const QString actual = empresa->Actual();
    const QString asteriscos(33, u'*');

    EXPECT_EQ(EnLineas(corrida.log),
              EnLineas({asteriscos,
                        "INICIO VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "Comprobando articulos que ya no estan...",
                        "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                        "CARGANDO TABLA ATRIBUTOS Y VALORES",
                        "CARGANDO FAMILIAS",
                        "Recopilando información de categorías",
                        "Actualizando Familia 01",
                        "Actualizando Familia 0101",
                        "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                        "Actualizando y modificando articulos",
                        "Añadiendo artículo 0101A / ALT0101A",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                        "Error subiendo fichero " + actual + "\\creapath.txt",
                        "ERROR SUBIENDO FICHERO creapath.txt",
                        "REGENERANDO INDICES DE BÚSQUEDA...",
                        "ELIMINANDO FOTOS ANTIGUAS...",
                        "SUBIENDO FOTOS FAMILIAS...",
                        "Error subiendo fichero " + actual + "\\imgfam.txt",
                        "ERROR SUBIENDO FICHERO imgfam.txt",
                        "Dimensionando rango de familias subidas",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "SUBIENDO FICHEROS ADJUNTOS...",
                        "SUBIENDO FICHERO ",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                        "Error subiendo fichero " + actual + "\\sentencias.sql",
                        "ERROR SUBIENDO FICHERO sentencias.sql",
                        "SUBIENDO FOTOS ARTICULOS...",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        asteriscos,
                        "FIN VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "",
                        "",
                        ""}));
}

TEST_F(PrimeraCarga, LasLineasDelLogSalenTambienPorLaSalida)
{
    EXPECT_TRUE(corrida.salida.contains("] Añadiendo artículo 0101A / ALT0101A\n"));
    EXPECT_TRUE(corrida.salida.contains("] FIN VUELCO DATOS A PRESTASHOP \n"));
}

TEST_F(PrimeraCarga, LasListasQueLleganNombranLasFotosAntiguasDeLasFamilias)
{
    QStringList nombres;
    for (const ResultadoCorrida::Lista& lista : corrida.listas)
        nombres << lista.nombre;

    // The first and the last had nothing in them: their uploads began and found no file to send.
    EXPECT_EQ(nombres, (QStringList{"creapath.txt", "imgborra.txt", "imgfam.txt"}));
    EXPECT_EQ(corrida.Lineas("creapath.txt"), QStringList());
    EXPECT_EQ(EnLineas(corrida.Lineas("imgborra.txt")),
              EnLineas({"img/c/3.jpg;", "img/c/3-*.jpg;", "img/c/4.jpg;", "img/c/4-*.jpg;"}));
    EXPECT_EQ(corrida.Lineas("imgfam.txt"), QStringList());
}

TEST_F(PrimeraCarga, LaConversacionConElServidorWebSigueSuOrden)
{
    QStringList esperadas{"GET /borracache.php 200", "GET /ejecuta.php 200", "GET /ejecuta.php 200",
                          "GET /creapath.php 200", "GET /uno.php 404"};
    for (int vez = 0; vez < 20; ++vez)
        esperadas << "GET /dos.php 404";
    esperadas << "GET /borraimg.php?sufijofoto=_default 200"
              << "GET /dimensiona.php?fichero=imgfam.txt&sufijofoto=_default 200"
              << "GET /borracache.php 200"
              << "GET /ejecuta.php 200"
              << "GET /borracache.php 200";

    EXPECT_EQ(EnLineas(corrida.http), EnLineas(esperadas));
}

TEST_F(PrimeraCarga, LaConversacionPorFtpSigueSuOrden)
{
    QStringList esperados = PasosDeCabecera() + PasosDeLote();
    esperados << "sesion" << PasosDeLote() << "DELE creapath.txt"
              << "STOR creapath.txt" // the list that isn't there: opened and given up
              << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion"
              << "DELE imgfam.txt"
              << "STOR imgfam.txt"
              << "sesion"
              << "sesion"
              << "DELE bdtolmo.ccc"
              << "STOR bdtolmo.ccc"
              << "DELE sentencias.sql"
              << "STOR sentencias.sql"
              << "sesion";

    EXPECT_EQ(EnLineas(PasosFtp(corrida.ftp)), EnLineas(esperados));
}

TEST_F(PrimeraCarga, LaTiendaTieneElCatalogo)
{
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_category,id_parent,nleft,nright,level_depth,position,kov_familia FROM ps_category ORDER BY id_category"),
        (std::vector<QStringList>{{"1", "0", "1", "8", "0", "0", "NULL"},
                                  {"2", "1", "2", "7", "1", "0", "NULL"},
                                  {"3", "2", "3", "6", "2", "1", "01"},
                                  {"4", "3", "4", "5", "3", "101", "0101"}}));
    EXPECT_EQ(
        tienda->Sql(
            "SELECT name,description,description_short,meta_description FROM ps_product_lang"),
        (std::vector<QStringList>{
            {"Olla d´acero", "uno<br>dos € ", "Corta 0101A", "uno\r\ndos €"}}));
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_group,price,reduction,reduction_type,reduction_tax FROM ps_specific_price ORDER BY id_specific_price"),
        (std::vector<QStringList>{{"4", "10.500000", "0.000000", "amount", "0"},
                                  {"5", "9.250000", "0.000000", "amount", "0"},
                                  {"6", "8.000000", "0.000000", "amount", "0"},
                                  {"7", "7.100000", "0.000000", "amount", "0"},
                                  {"8", "6.000500", "0.000000", "amount", "0"},
                                  {"5", "8.000000", "0.280000", "percentage", "0"}}));
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_category FROM ps_category_product WHERE id_product=1 ORDER BY id_category"),
        (std::vector<QStringList>{{"2"}, {"3"}, {"4"}}));
}

TEST_F(PrimeraCarga, NoQuedanCredencialesNiLotesEnNingunSitio)
{
    for (const char* nombre : {"bdtolmo.ccc", "sentencias.sql"})
        EXPECT_FALSE(tienda->ExisteFichero(nombre)) << nombre;
    EXPECT_FALSE(empresa->Carpeta().Existe("PHPSHOP/bdtolmo.ccc"));
    EXPECT_FALSE(empresa->Carpeta().Existe("sentencias.sql"));
}

TEST_F(PrimeraCarga, LaTablaTemporalSeBorraAlTerminar)
{
    const auto base = tolmo::data::AbreAccess(empresa->CadenaDeBase());
    QStringList tablas;
    for (const tolmo::data::TablaEsquema& tabla : base->Tablas())
        tablas << tabla.nombre;

    EXPECT_TRUE(tablas.contains("M_ARTIC"));
    EXPECT_TRUE(tablas.contains("wFAMPRESTA"));
    EXPECT_EQ(tablas.filter("WKOVTOLMO_ARTIC"), QStringList());
}

} // namespace
