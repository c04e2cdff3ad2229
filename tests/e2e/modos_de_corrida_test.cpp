#include "apoyo/corrida_real.h"
#include <QImage>
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// A shop that was loaded whole, and a company where since then one article has changed, one is
/// new, one is gone and a family has come.
struct ModosDeCorrida : testing::Test {
    static ResultadoCorrida CorreTrasLaCarga(const QString& modo)
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        for (const char* nombre : {"rojo.jpg", "azul.jpg"}) {
            QImage foto(20, 20, QImage::Format_RGB32);
            foto.fill(Qt::red);
            foto.save(Ruta(nombre), "JPEG");
        }
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa->Carpeta().Escribe("otra.pdf", "Otra");
        empresa->Sql(SqlFamilia("01", 0, "Cocina") +
                     SqlArticulo("01A", {{"FOTO", "'" + Ruta("rojo.jpg") + "'"}}) +
                     SqlArticulo("01C") + Existencias("01A", 7) + Documento("01A", "ficha.pdf"));
        empresa->Corre();
        // Two more pictures of the article than the company knows.
        tienda->Ejecuta(
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (8,1,2,2),(9,1,3,3)");
        empresa->Sql("UPDATE M_ARTIC SET FECHAMODIFICACION=Null WHERE CODARTICULO='01A';\n"
                     "UPDATE M_ARTIC SET ACTIVOWEB='N' WHERE CODARTICULO='01C';\n"
                     "UPDATE M_EXIST SET EXISTENCIAS=9;\n" +
                     SqlFamilia("02", 0, "Jardín") +
                     SqlArticulo("02B", {{"FOTO", "'" + Ruta("azul.jpg") + "'"}}) +
                     Existencias("02B", 4) + Documento("02B", "otra.pdf"));
        return empresa->Corre(modo + ":000001");
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static QString Ruta(const QString& nombre) { return empresa->Actual() + "/" + nombre; }
    static QString Existencias(const QString& codigo, int cantidad)
    {
        return QString(
                   "INSERT INTO M_EXIST (CODARTICULO,ANIO,CODALMACEN,EXISTENCIAS) VALUES ('%1',%2,'01',%3);\n")
            .arg(codigo)
            .arg(QDate::currentDate().year())
            .arg(cantidad);
    }
    static QString Documento(const QString& codigo, const QString& nombre)
    {
        return "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','" +
               codigo + "','" + Ruta(nombre) + "','Ficha');\n";
    }
    /// The log of both runs that leave the families and send changed articles.
    static QStringList LogDeSoloArticulos()
    {
        const QString asteriscos(33, u'*');
        return {asteriscos,
                "INICIO VUELCO DATOS A PRESTASHOP ",
                asteriscos,
                "BORRANDO CACHÉ DE PRESTASHOP",
                "Comprobando articulos que ya no estan...",
                "Borrando Artículo 2 / ALT01C",
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE Borrando artículos (...2)",
                "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                "CARGANDO TABLA ATRIBUTOS Y VALORES",
                "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                "Actualizando y modificando articulos",
                "Actualizando articulo 01A / ALT01A",
                "Añadiendo artículo 02B / ALT02B",
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                "REGENERANDO INDICES DE BÚSQUEDA...",
                "ELIMINANDO FOTOS ANTIGUAS...",
                "BORRANDO CACHÉ DE PRESTASHOP",
                "SUBIENDO FICHEROS ADJUNTOS...",
                "Subiendo adjunto " + Ruta("ficha.pdf"),
                "Subiendo adjunto " + Ruta("otra.pdf"),
                "SUBIENDO FICHERO sentencias.sql",
                "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                "SUBIENDO FOTOS ARTICULOS...",
                "Subiendo imagen " + Ruta("rojo.jpg") + " -> 10.jpg",
                "Subiendo imagen " + Ruta("azul.jpg") + " -> 11.jpg",
                "Dimensionando rango de artículos subidos",
                "BORRANDO CACHÉ DE PRESTASHOP",
                asteriscos,
                "FIN VUELCO DATOS A PRESTASHOP ",
                asteriscos,
                "",
                "",
                ""};
    }
    static Filas Productos()
    {
        return tienda->Sql(
            "SELECT id_product,reference,id_category_default FROM ps_product ORDER BY id_product");
    }
    static Filas Cantidades()
    {
        return tienda->Sql(
            "SELECT id_product,quantity FROM ps_stock_available ORDER BY id_product");
    }
    static Filas Familias()
    {
        return tienda->Sql("SELECT kov_familia FROM ps_category WHERE id_category>2");
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida corrida{};
};

struct ModoSoloArtic : ModosDeCorrida {
    static void SetUpTestSuite() { corrida = CorreTrasLaCarga("/SOLOARTIC"); }
};

TEST_F(ModoSoloArtic, ElLogEsElDeUnaCorridaSinFamilias)
{
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogDeSoloArticulos()));
    EXPECT_EQ(corrida.estado, 0);
}

TEST_F(ModoSoloArtic, LasFamiliasDeLaTiendaSeQuedanYElArticuloNuevoVaALaRaiz)
{
    EXPECT_EQ(EnLineas(corrida.SentenciasDe(1)),
              EnLineas({"DELETE FROM ps_attribute_group", "DELETE FROM ps_attribute_group_lang",
                        "DELETE FROM ps_attribute_group_shop", "DELETE FROM ps_attribute",
                        "DELETE FROM ps_attribute_lang", "DELETE FROM ps_attribute_shop"}));
    EXPECT_EQ(Familias(), (Filas{{"01"}}));
    EXPECT_EQ(Productos(), (Filas{{"1", "01A", "3"}, {"2", "02B", "1"}}));
}

TEST_F(ModoSoloArtic, LasExistenciasLasFotosYLosDocumentosVan)
{
    EXPECT_EQ(Cantidades(), (Filas{{"1", "9"}, {"2", "4"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_image,id_product FROM ps_image ORDER BY id_image"),
              (Filas{{"10", "1"}, {"11", "2"}}));
    EXPECT_EQ(EnLineas(corrida.Lineas("imgborra.txt")),
              EnLineas({"img/p/.jpg;", "img/p//.jpg;", "img/p//-*.jpg;", // of the one that is gone
                        "img/p/1.jpg;", "img/p/1/1-*.jpg;", "img/p/1/1.jpg;", "img/p/8.jpg;",
                        "img/p/8/8-*.jpg;", "img/p/8/8.jpg;", "img/p/9.jpg;", "img/p/9/9-*.jpg;",
                        "img/p/9/9.jpg;"}));
    EXPECT_FALSE(tienda->ExisteFichero("img/p/1/1.jpg"));
    EXPECT_TRUE(tienda->ExisteFichero("img/p/1/0/10.jpg"));
    EXPECT_EQ(tienda->LeeFichero("download/otra.pdf"), "Otra");
}

TEST_F(ModoSoloArtic, LaConversacionSigueSuOrden)
{
    QStringList esperados = PasosDeCabecera() + PasosDeLote() + PasosDeLote();
    esperados << "sesion" << PasosDeLote() << "DELE creapath.txt"
              << "STOR creapath.txt"
              << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion"
              << "DELE ficha.pdf"
              << "STOR ficha.pdf"
              << "DELE otra.pdf"
              << "STOR otra.pdf" << PasosDeLote() << "sesion"
              << "STOR 10.jpg"
              << "STOR 11.jpg"
              << "DELE imgart.txt"
              << "STOR imgart.txt"
              << "sesion";

    EXPECT_EQ(EnLineas(PasosFtp(corrida.ftp)), EnLineas(esperados));
    EXPECT_EQ(EnLineas(corrida.http),
              EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200", "GET /ejecuta.php 200",
                        "GET /ejecuta.php 200", "GET /creapath.php 200",
                        "GET /borraimg.php?sufijofoto=_default 200", "GET /borracache.php 200",
                        "GET /ejecuta.php 200",
                        "GET /dimensiona.php?fichero=imgart.txt&sufijofoto=_default 200",
                        "GET /borracache.php 200"}));
}

struct ModoSoloArticSinStock : ModosDeCorrida {
    static void SetUpTestSuite() { corrida = CorreTrasLaCarga("/SOLOARTIC_SIN_STOCK"); }
};

TEST_F(ModoSoloArticSinStock, ElLogEsElMismo)
{
    EXPECT_EQ(EnLineas(corrida.log), EnLineas(LogDeSoloArticulos()));
}

TEST_F(ModoSoloArticSinStock, LasExistenciasSeQuedanComoEstaban)
{
    EXPECT_EQ(
        EnLineas(corrida.Sentencias().filter("ps_stock_available")),
        EnLineas({"DELETE FROM ps_stock_available WHERE id_product='2' "})); // the withdrawal's
    EXPECT_EQ(Cantidades(), (Filas{{"1", "7"}}));
    EXPECT_EQ(Productos(), (Filas{{"1", "01A", "3"}, {"2", "02B", "1"}}));
    EXPECT_EQ(Familias(), (Filas{{"01"}}));
}

struct ModoStock : ModosDeCorrida {
    static void SetUpTestSuite() { corrida = CorreTrasLaCarga("/STOCK"); }
};

TEST_F(ModoStock, ElLogNoTieneMaestrosNiCierreDeFotos)
{
    const QString asteriscos(33, u'*');
    const QString actual = empresa->Actual();
    EXPECT_EQ(EnLineas(corrida.log),
              EnLineas({asteriscos,
                        "INICIO VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                        "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                        "SUBIENDO FICHERO ",
                        "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                        "Error subiendo fichero " + actual + "\\sentencias.sql",
                        "ERROR SUBIENDO FICHERO sentencias.sql",
                        "Actualizando y modificando articulos",
                        "Actualizando STOCK articulo 01A / ALT01A",
                        "Añadiendo artículo 02B / ALT02B",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                        "Error subiendo fichero " + actual + "\\creapath.txt",
                        "ERROR SUBIENDO FICHERO creapath.txt",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        asteriscos,
                        "FIN VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "",
                        "",
                        ""}));
    EXPECT_EQ(corrida.estado, 0);
}

// Once for each of its three pictures; the new one goes whole, without picture and document.
TEST_F(ModoStock, ElQueEstaRecibeSoloSusExistenciasYElNuevoSeInsertaEntero)
{
    const QString hoy = HoyMysql();
    const QString borra = "DELETE FROM ps_stock_available WHERE id_product='1' ";
    const QString inserta =
        "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('1000000','1',0,1,0,9,0,0) ";
    const QString tarifa =
        "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,reduction_tax) VALUES ";

    EXPECT_EQ(
        EnLineas(corrida.Sentencias()),
        EnLineas(
            {borra, inserta, borra, inserta, borra, inserta,
             "INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,minimal_quantity,out_of_stock,quantity_discount,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,cache_has_attachments) VALUES (3,null,null,1,1,0,null,0,0,10.5,0,'02B','ALT02B',NULL,1.25,1,1,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",'1')",
             "INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES (3,1,1,1,0,0,10.5,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",1)",
             "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (3,1,'art-02b','','Art 02B','Notas 02B','Art 02B','Notas 02B ','Corta 02B')",
             "DELETE FROM ps_product_tag where id_product='3'",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (1,3,3)",
             tarifa + "(11,3,0,0,0,4,10.5,1,0,'amount',0)",
             tarifa + "(12,3,0,0,0,5,9.25,1,0,'amount',0)",
             tarifa + "(13,3,0,0,0,6,8,1,0,'amount',0)",
             tarifa + "(14,3,0,0,0,7,7.1,1,0,'amount',0)",
             tarifa + "(15,3,0,0,0,8,6.0005,1,0,'amount',0)",
             "DELETE FROM ps_stock_available WHERE id_product='3' ",
             "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,id_shop_group,quantity,depends_on_stock,out_of_stock) VALUES ('3000000','3',0,1,0,4,0,0) "}));
}

TEST_F(ModoStock, LoDemasDeLaTiendaNoCambia)
{
    EXPECT_EQ(Productos(), (Filas{{"1", "01A", "3"}, {"2", "01C", "3"}, {"3", "02B", "1"}}));
    EXPECT_EQ(Cantidades(), (Filas{{"1", "9"}, {"2", "0"}, {"3", "4"}}));
    EXPECT_EQ(Familias(), (Filas{{"01"}}));
    EXPECT_EQ(EnLineas(corrida.Lineas("imgborra.txt")), "");
    EXPECT_EQ(
        EnLineas(corrida.http),
        EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200", "GET /ejecuta.php 200",
                  "GET /creapath.php 200", "GET /borracache.php 200", "GET /borracache.php 200"}));
}

} // namespace
