#include "apoyo/corrida_real.h"
#include <QImage>
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// A run in which every step of the conversation has something to do.
struct ConversacionEntera : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.1", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"PSGRUPOMARCAS", "'1'"},
                                            {"PS_SUFIJOFOTO", "'_default'"},
                                            {"PS_INDICES1", "'" + tienda->Www() + "uno.php'"},
                                            {"PS_INDICES2", "'" + tienda->Www() + "dos.php?a=1'"}});
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::red);
        foto.save(empresa->Actual() + "/rojo.jpg", "JPEG");
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa->Carpeta().Escribe("PHPSHOP/000001finalizar.sql",
                                   "UPDATE ps_product SET quantity=77||\r\n");
        empresa->Sql(SqlCasa("'" + empresa->Actual() + "/rojo.jpg'"));
        tienda->Ejecuta(
            "INSERT INTO ps_product (id_product,reference,supplier_reference) VALUES (50,'AJENA','SU50'); "
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (90,50,1,1)");
        for (const char* fichero : {"img/p/9/0/90.jpg", "img/p/9/0/90-home_default.jpg",
                                    "img/p/9/0/91.jpg", "cache/smarty/compile/a.php"})
            tienda->EscribeFichero(fichero, "x");
        corrida = empresa->Corre();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static QString SqlCasa(const QString& foto)
    {
        return "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,7,'Casa Uno');\n"
               "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','Color');\n"
               "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ('COL','AZ','Azul');\n"
               "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES ('AR','W','01A','" +
               empresa->Actual() + "/ficha.pdf','Ficha');\n" +
               SqlFamilia("01", 0, "Cocina", {{"FOTO", foto}}) +
               SqlArticulo("01A", {{"FOTO", foto}, {"CODGRUPO", "7"}});
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida corrida{};
};

TEST_F(ConversacionEntera, ElRegistroCuentaCadaPasoYNingunError)
{
    const QString asteriscos(33, u'*');
    const QString actual = empresa->Actual();
    EXPECT_EQ(EnLineas(corrida.log),
              EnLineas({asteriscos,
                        "INICIO VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "CARGANDO MARCAS FABRICANTES",
                        "SUBIENDO FICHERO sentencias.sql",
                        "SINCRONIZANDO MARCAS FABRICANTES",
                        "Comprobando articulos que ya no estan...",
                        "Borrando Artículo 50 / SU50",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Borrando artículos (...1)",
                        "Actualizando tablas maestras IVA, FAMILIAS, MARCAS...",
                        "CARGANDO TABLA ATRIBUTOS Y VALORES",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones",
                        "CARGANDO FAMILIAS",
                        "Recopilando información de categorías",
                        "Actualizando Familia 01",
                        "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                        "Actualizando y modificando articulos",
                        "Añadiendo artículo 01A / ALT01A",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                        "REGENERANDO INDICES DE BÚSQUEDA...",
                        "ELIMINANDO FOTOS ANTIGUAS...",
                        "SUBIENDO FOTOS FAMILIAS...",
                        "Subiendo imagen " + actual + "/rojo.jpg -> 3.jpg",
                        "Dimensionando rango de familias subidas",
                        "SUBIENDO FICHERO 000001finalizar.sql",
                        "EJECUTANDO REMOTAMENTE Sentencias final de proceso",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        "SUBIENDO FICHEROS ADJUNTOS...",
                        "Subiendo adjunto " + actual + "/ficha.pdf",
                        "SUBIENDO FICHERO sentencias.sql",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos",
                        "SUBIENDO FOTOS ARTICULOS...",
                        "Subiendo imagen " + actual + "/rojo.jpg -> 1.jpg",
                        "Dimensionando rango de artículos subidos",
                        "BORRANDO CACHÉ DE PRESTASHOP",
                        asteriscos,
                        "FIN VUELCO DATOS A PRESTASHOP ",
                        asteriscos,
                        "",
                        "",
                        ""}));
}

TEST_F(ConversacionEntera, LasPeticionesSiguenElOrdenDeLosPasos)
{
    QStringList esperadas{
        "GET /borracache.php 200", "GET /ejecuta.php 200",  "GET /ejecuta.php 200",
        "GET /ejecuta.php 200",    "GET /ejecuta.php 200",  "GET /ejecuta.php 200",
        "GET /ejecuta.php 200",    "GET /creapath.php 200", "GET /uno.php 404"};
    for (int vez = 0; vez < 20; ++vez)
        esperadas << "GET /dos.php?a=1 404";
    esperadas << "GET /borraimg.php?sufijofoto=_default 200"
              << "GET /dimensiona.php?fichero=imgfam.txt&sufijofoto=_default 200"
              << "GET /ejecuta.php 200"
              << "GET /borracache.php 200"
              << "GET /ejecuta.php 200"
              << "GET /dimensiona.php?fichero=imgart.txt&sufijofoto=_default 200"
              << "GET /borracache.php 200";

    EXPECT_EQ(EnLineas(corrida.http), EnLineas(esperadas));
}

TEST_F(ConversacionEntera, LasOrdenesDeFtpTambien)
{
    QStringList esperados = PasosDeCabecera();
    for (int lote = 0; lote < 5; ++lote) // makers, withdrawn, groups, attributes, families
        esperados << PasosDeLote();
    esperados << "sesion" << PasosDeLote() << "DELE creapath.txt"
              << "STOR creapath.txt"
              << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion"
              << "STOR 3.jpg"
              << "DELE imgfam.txt"
              << "STOR imgfam.txt"
              << "sesion" << PasosDeLote() // the user's
              << "sesion"
              << "DELE ficha.pdf"
              << "STOR ficha.pdf" << PasosDeLote() << "sesion"
              << "STOR 1.jpg"
              << "DELE imgart.txt"
              << "STOR imgart.txt"
              << "sesion";

    EXPECT_EQ(EnLineas(PasosFtp(corrida.ftp)), EnLineas(esperados));
}

TEST_F(ConversacionEntera, CadaSubidaVaASuCarpeta)
{
    QStringList carpetas;
    QString carpeta;
    for (const QString& orden : corrida.ftp) {
        if (orden.startsWith("CWD "))
            carpeta = orden.section(u' ', 1, -2);
        if (orden.startsWith("STOR ") && !orden.contains("bdtolmo") && !orden.contains(".sql"))
            carpetas << carpeta + orden.section(u' ', 1, 1);
    }

    EXPECT_EQ(EnLineas(carpetas.mid(6)),
              EnLineas({"/tienda/creapath.txt", "/tienda/imgborra.txt", "/tienda/img/c/3.jpg",
                        "/tienda/imgfam.txt", "/tienda/download/ficha.pdf", "/tienda/img/p/1.jpg",
                        "/tienda/imgart.txt"}));
}

TEST_F(ConversacionEntera, LasListasLleganAlGuionQueLasUsa)
{
    QStringList listas;
    for (const ResultadoCorrida::Lista& lista : corrida.listas)
        listas << lista.nombre + ": " + lista.lineas.join(u' ');

    EXPECT_EQ(
        EnLineas(listas),
        EnLineas(
            {"creapath.txt: 1;",
             "imgborra.txt: img/p/90.jpg; img/p/9/0/90.jpg; img/p/9/0/90-*.jpg; img/c/3.jpg; img/c/3-*.jpg;",
             "imgfam.txt: img/c/3.jpg;",
             "imgart.txt: img/p/1/1.jpg                                     img/p/1.jpg;"}));
}

TEST_F(ConversacionEntera, ElServidorQuedaConLosFicherosDeLaEmpresaYSinRestos)
{
    EXPECT_EQ(EnLineas(tienda->Ficheros("img").filter(".jpg")),
              EnLineas({"img/c/3-category_default.jpg", "img/c/3-medium_default.jpg", "img/c/3.jpg",
                        "img/p/1/1-cart_default.jpg", "img/p/1/1-home_default.jpg",
                        "img/p/1/1-large_default.jpg", "img/p/1/1-medium_default.jpg",
                        "img/p/1/1-small_default.jpg", "img/p/1/1-thickbox_default.jpg",
                        "img/p/1/1.jpg", "img/p/9/0/91.jpg"}));
    EXPECT_EQ(tienda->LeeFichero("download/ficha.pdf"), "Ficha");
    EXPECT_FALSE(tienda->ExisteFichero("cache/smarty/compile/a.php"));
    for (const char* nombre : {"bdtolmo.ccc", "sentencias.sql", "creapath.txt", "imgborra.txt",
                               "imgfam.txt", "imgart.txt"})
        EXPECT_FALSE(tienda->ExisteFichero(nombre)) << nombre;
    for (const char* nombre :
         {"sentencias.sql", "creapath.txt", "imgfam.txt", "imgart.txt", "PHPSHOP/bdtolmo.ccc"})
        EXPECT_FALSE(empresa->Carpeta().Existe(nombre)) << nombre;
    // Sent once, and gone only with the head of the next run.
    EXPECT_TRUE(empresa->Carpeta().Existe("imgborra.txt"));
}

TEST_F(ConversacionEntera, ElCatalogoTieneLoDeCadaPaso)
{
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_product,reference,id_manufacturer,id_category_default,quantity FROM ps_product"),
        (Filas{{"1", "01A", "7", "3", "77"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_manufacturer,name FROM ps_manufacturer"),
              (Filas{{"7", "Casa Uno"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_attribute,name FROM ps_attribute_lang"),
              (Filas{{"1001", "Azul"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_image,id_product FROM ps_image"), (Filas{{"1", "1"}}));
}

} // namespace
