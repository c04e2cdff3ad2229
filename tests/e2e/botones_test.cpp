#include "e2e/sentencias_esperadas.h"
#include "e2e/ventana_real.h"
#include <QImage>
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <memory>

namespace {

using namespace tolmo;
using Filas = std::vector<QStringList>;

/// A shop that holds the company's four articles and a product of its own, and a company where
/// nothing has changed but a family that is new.
struct Boton : testing::Test {
    static void Prepara(const QMap<QString, QString>& parametros = {})
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda, parametros);
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::red);
        foto.save(empresa->Actual() + "/rojo.jpg", "JPEG");
        empresa->Carpeta().Escribe("ficha.pdf", "Ficha");
        empresa->Sql(
            SqlFamilia("01", 0, "Cocina", {{"FOTO", "'" + empresa->Actual() + "/rojo.jpg'"}}) +
            SqlArticulo("01A") + SqlArticulo("01B") +
            SqlArticulo("01C", {{"FOTO", "'" + empresa->Actual() + "/rojo.jpg'"}}) +
            SqlArticulo("01D") +
            "INSERT INTO GESTION_DOC (TIPODOC,TIPO,CLAVE,RUTA,DESCRIPCION) VALUES "
            "('AR','W','01C','" +
            empresa->Actual() + "/ficha.pdf','Ficha');\n");
        ventana = std::make_unique<VentanaReal>(*empresa);
        ventana->Pulsa({.proceso = sync::Proceso::Todo, .stock = true, .regeneraIndices = false});
        tienda->Ejecuta(
            "INSERT INTO ps_product (id_product,reference,supplier_reference) VALUES (50,'AJENA','SU50')");
        empresa->Sql(SqlFamilia("02", 0, "Jardín") +
                     "UPDATE M_ARTIC SET DESCRIPCION='Otro nombre';\n");
    }
    static void TearDownTestSuite()
    {
        ventana.reset();
        empresa.reset();
    }
    static Filas Nombres()
    {
        return tienda->Sql("SELECT id_product,name FROM ps_product_lang ORDER BY id_product");
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline std::unique_ptr<VentanaReal> ventana{};
};

struct BotonArticulos : Boton {
    static void SetUpTestSuite()
    {
        Prepara();
        rango = ventana->Pulsa({.proceso = sync::Proceso::Articulos,
                                .desde = "01B",
                                .hasta = "01c",
                                .regeneraIndices = false});
        trasRango = Nombres();
        productos = tienda->Sql("SELECT COUNT(*) FROM ps_product");
        alReves =
            ventana->Pulsa({.proceso = sync::Proceso::Articulos, .desde = "01D", .hasta = "01A"});
        vacio = ventana->Pulsa({.proceso = sync::Proceso::Articulos});
        conTodo = ventana->Pulsa({.proceso = sync::Proceso::Articulos,
                                  .desde = "01C",
                                  .hasta = "01C",
                                  .fotosArt = true,
                                  .adjuntos = true,
                                  .stock = true,
                                  .eliminaEnRango = true,
                                  .regeneraIndices = false});
    }
    static inline ResultadoCorrida rango{}, alReves{}, vacio{}, conTodo{};
    static inline Filas trasRango{}, productos{};
};

// Without any of its boxes: no withdrawal, no picture, no document, no stock, no index.
TEST_F(BotonArticulos, EscribeLosDelRangoCambiadosONoYNadaMas)
{
    const QString actual = empresa->Actual();
    QStringList esperado = CabeceraDelLog();
    esperado << "Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."
             << "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."
             << "SUBIENDO FICHERO "
             << "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin"
             << "Error subiendo fichero " + actual + "\\sentencias.sql"
             << "ERROR SUBIENDO FICHERO sentencias.sql"
             << "Actualizando y modificando articulos"
             << "Actualizando articulo 01B / ALT01B"
             << "Actualizando articulo 01C / ALT01C"
             << "SUBIENDO FICHERO sentencias.sql"
             << "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"
             << "Error subiendo fichero " + actual + "\\creapath.txt"
             << "ERROR SUBIENDO FICHERO creapath.txt"
             << "ELIMINANDO FOTOS ANTIGUAS..."
             << "Error subiendo fichero " + actual + "\\imgborra.txt"
             << "ERROR SUBIENDO FICHERO imgborra.txt"
             << "BORRANDO CACHÉ DE PRESTASHOP";
    EXPECT_EQ(EnLineas(rango.log), EnLineas(esperado + FinDelLog()));
    EXPECT_EQ(
        trasRango,
        (Filas{{"1", "Art 01A"}, {"2", "Otro nombre"}, {"3", "Otro nombre"}, {"4", "Art 01D"}}));
    EXPECT_EQ(productos, (Filas{{"5"}}));
}

TEST_F(BotonArticulos, SinSusCasillasNoHayFotosDocumentosNiExistencias)
{
    const QStringList sentencias = rango.Sentencias();
    const qsizetype segunda =
        sentencias.indexOf(QRegularExpression("^UPDATE ps_product SET .* WHERE id_product='3'$"));
    QStringList comienzos;
    for (const QString& sentencia : sentencias.mid(segunda))
        comienzos << sentencia.section(u' ', 0, 2);

    EXPECT_EQ(EnLineas(comienzos),
              EnLineas({"UPDATE ps_product SET", "UPDATE ps_product_shop SET",
                        "UPDATE ps_product_lang SET", "DELETE FROM ps_product_tag",
                        "DELETE FROM ps_category_product", "INSERT INTO ps_category_product",
                        "DELETE FROM ps_specific_price", "INSERT INTO ps_specific_price",
                        "INSERT INTO ps_specific_price", "INSERT INTO ps_specific_price",
                        "INSERT INTO ps_specific_price", "INSERT INTO ps_specific_price",
                        "DELETE FROM ps_product_attribute",
                        "DELETE FROM ps_product_attribute_combination",
                        "DELETE FROM ps_product_attribute_shop",
                        "DELETE FROM ps_product_attribute_image"}));
}

TEST_F(BotonArticulos, TrasUnaListaDeBorradoVaciaSeAbreOtraSesion)
{
    QStringList esperados = PasosDeCabecera() + PasosDeLote().mid(0, 4);
    esperados << "sesion" << PasosDeLote() << "DELE creapath.txt"
              << "STOR creapath.txt"
              << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion";

    EXPECT_EQ(EnLineas(PasosFtp(rango.ftp)), EnLineas(esperados));
}

TEST_F(BotonArticulos, UnRangoAlRevesOVacioNoEligeNadaNiHaceLote)
{
    for (const ResultadoCorrida& corrida : {alReves, vacio}) {
        EXPECT_EQ(EnLineas(corrida.Titulos()),
                  EnLineas({"EJECUTANDO REMOTAMENTE Actualización de familias ...Fin"}));
        EXPECT_EQ(EnLineas(corrida.Sentencias()), "");
        EXPECT_TRUE(corrida.log.contains("REGENERANDO INDICES DE BÚSQUEDA..."));
    }
}

TEST_F(BotonArticulos, ConSusCasillasRetiraYEnviaFotosDocumentosYExistencias)
{
    const QString actual = empresa->Actual();
    QStringList esperado = CabeceraDelLog();
    esperado << "Comprobando articulos que ya no estan..."
             << "Borrando Artículo 50 / SU50"
             << "SUBIENDO FICHERO sentencias.sql"
             << "EJECUTANDO REMOTAMENTE Borrando artículos (...5)"
             << "Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."
             << "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."
             << "SUBIENDO FICHERO "
             << "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin"
             << "Error subiendo fichero " + actual + "\\sentencias.sql"
             << "ERROR SUBIENDO FICHERO sentencias.sql"
             << "Actualizando y modificando articulos"
             << "Actualizando articulo 01C / ALT01C"
             << "SUBIENDO FICHERO sentencias.sql"
             << "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"
             << "ELIMINANDO FOTOS ANTIGUAS..."
             << "BORRANDO CACHÉ DE PRESTASHOP"
             << "SUBIENDO FICHEROS ADJUNTOS..."
             << "Subiendo adjunto " + actual + "/ficha.pdf"
             << "SUBIENDO FICHERO sentencias.sql"
             << "EJECUTANDO REMOTAMENTE actualización de adjuntos"
             << "SUBIENDO FOTOS ARTICULOS..."
             << "Subiendo imagen " + actual + "/rojo.jpg -> 1.jpg"
             << "Dimensionando rango de artículos subidos";
    EXPECT_EQ(EnLineas(conTodo.log), EnLineas(esperado + FinDelLog()));
    EXPECT_EQ(tienda->Sql("SELECT COUNT(*) FROM ps_product"), (Filas{{"4"}}));
    EXPECT_EQ(conTodo.Sentencias("INSERT INTO ps_stock_available ").size(), 1);
    EXPECT_EQ(tienda->LeeFichero("download/ficha.pdf"), "Ficha");
    EXPECT_TRUE(tienda->ExisteFichero("img/p/1/1-home_default.jpg"));
}

TEST_F(BotonArticulos, LasPestanasSeApaganDuranteLaCorrida)
{
    EXPECT_EQ(ventana->progreso.pestanas.front(), false);
    EXPECT_EQ(ventana->progreso.pestanas.back(), true);
    EXPECT_EQ(ventana->progreso.barra.back(), false);
}

struct BotonFamilias : Boton {
    static void SetUpTestSuite()
    {
        Prepara();
        conFotos = ventana->Pulsa({.proceso = sync::Proceso::Familias, .fotosFam = true});
        sinFotos = ventana->Pulsa({.proceso = sync::Proceso::Familias, .regeneraIndices = false});
    }
    static inline ResultadoCorrida conFotos{}, sinFotos{};
};

TEST_F(BotonFamilias, EnviaElArbolYSusFotosYNingunArticulo)
{
    QStringList esperado = CabeceraDelLog();
    esperado << "Actualizando tablas maestras IVA, FAMILIAS, MARCAS..."
             << "CARGANDO FAMILIAS"
             << "Recopilando información de categorías"
             << "Actualizando Familia 01"
             << "Actualizando Familia 02"
             << "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."
             << "SUBIENDO FICHERO sentencias.sql"
             << "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin"
             << "Actualizando y modificando articulos"
             << "REGENERANDO INDICES DE BÚSQUEDA..."
             << "ELIMINANDO FOTOS ANTIGUAS..."
             << "SUBIENDO FOTOS FAMILIAS..."
             << "Subiendo imagen " + empresa->Actual() + "/rojo.jpg -> 3.jpg"
             << "Dimensionando rango de familias subidas"
             << "BORRANDO CACHÉ DE PRESTASHOP";
    EXPECT_EQ(EnLineas(conFotos.log), EnLineas(esperado + FinDelLog()));
    EXPECT_EQ(tienda->Sql("SELECT id_category,kov_familia FROM ps_category WHERE id_category>2"),
              (Filas{{"3", "01"}, {"4", "02"}}));
    EXPECT_EQ(EnLineas(conFotos.Sentencias().filter("ps_product")), "");
    EXPECT_EQ(EnLineas(conFotos.Lineas("imgborra.txt")),
              EnLineas({"img/c/3.jpg;", "img/c/3-*.jpg;", "img/c/4.jpg;", "img/c/4-*.jpg;"}));
    EXPECT_EQ(conFotos.Lineas("imgfam.txt"), (QStringList{"img/c/3.jpg;"}));
    EXPECT_TRUE(tienda->ExisteFichero("img/c/3-category_default.jpg"));
}

TEST_F(BotonFamilias, LaConversacionSigueSuOrden)
{
    QStringList esperados = PasosDeCabecera() + PasosDeLote();
    esperados << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion"
              << "STOR 3.jpg"
              << "DELE imgfam.txt"
              << "STOR imgfam.txt"
              << "sesion";
    EXPECT_EQ(EnLineas(PasosFtp(conFotos.ftp)), EnLineas(esperados));
    EXPECT_EQ(EnLineas(conFotos.http),
              EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200",
                        "GET /borraimg.php?sufijofoto=_default 200",
                        "GET /dimensiona.php?fichero=imgfam.txt&sufijofoto=_default 200",
                        "GET /borracache.php 200", "GET /borracache.php 200"}));
}

TEST_F(BotonFamilias, SinSuCasillaLasFotosDeLaTiendaSeQuedan)
{
    EXPECT_EQ(EnLineas(sinFotos.log.filter("FOTOS")), EnLineas({"ELIMINANDO FOTOS ANTIGUAS..."}));
    EXPECT_EQ(sinFotos.Lineas("imgborra.txt"), QStringList());
    EXPECT_TRUE(tienda->ExisteFichero("img/c/3-category_default.jpg"));
}

struct BotonVales : Boton {
    static void SetUpTestSuite()
    {
        Prepara({{"PSGRUPOMARCAS", "'1'"}});
        sinVales = ventana->Pulsa({.proceso = sync::Proceso::Vales});
        const QString vale =
            "INSERT INTO VALESDTO (CODVALE,CODARTICULOVALE,CODCLIENTE,ESTADO,TIPODTO,"
            "VALOR,DESCRIPCION,FECHADESDE,FECHAHASTA,NUSOS) VALUES ";
        const QString fechas = "#01/02/2024#,#12/31/2024#,5);\n";
        empresa->Sql(
            "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,7,'Casa Uno');\n" +
            vale + "('V10','VALE',Null,'1','D',10,'Verano'," + fechas + vale +
            "('V25','VALE',Null,'1','I',25.5,'Otoño'," + fechas + vale +
            "('VENDIDO','VALE',Null,'1','I',5,'x'," + fechas + vale +
            "('SUYO','VALE','000009','1','I',5,'x'," + fechas + vale +
            "('GASTADO','VALE',Null,'2','I',5,'x'," + fechas +
            "INSERT INTO D_ALBCLI (NUMALB,LINEA,CODARTICULO,NSERIE) VALUES (1,1,'VALE','VENDIDO');\n");
        nuevos = ventana->Pulsa({.proceso = sync::Proceso::Vales});
        otraVez = ventana->Pulsa({.proceso = sync::Proceso::Vales});
        empresa->Sql("DELETE FROM VALESDTO;\n" + vale + "('VQ','VALE',Null,'1','D',10,'d''Estiu'," +
                     fechas + vale + "('VS','VALE',Null,'1','D',10,'Otro'," + fechas);
        conComilla = ventana->Pulsa({.proceso = sync::Proceso::Vales});
    }
    static QStringList LogHastaLasMarcas()
    {
        return CabeceraDelLog() + QStringList{"CARGANDO MARCAS FABRICANTES",
                                              "SUBIENDO FICHERO sentencias.sql",
                                              "SINCRONIZANDO MARCAS FABRICANTES",
                                              "PREPARANDO CARGA DE VALES DE DESCUENTO"};
    }
    static inline ResultadoCorrida sinVales{}, nuevos{}, otraVez{}, conComilla{};
};

TEST_F(BotonVales, SinValesSoloVanLasMarcas)
{
    EXPECT_EQ(EnLineas(sinVales.log), EnLineas(LogHastaLasMarcas() + FinDelLog()));
    EXPECT_EQ(EnLineas(sinVales.Sentencias()),
              EnLineas({"DELETE FROM ps_manufacturer", "DELETE FROM ps_manufacturer_lang",
                        "DELETE FROM ps_manufacturer_shop"}));
    EXPECT_EQ(EnLineas(sinVales.http), EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200",
                                                 "GET /borracache.php 200"}));
    EXPECT_EQ(EnLineas(PasosFtp(sinVales.ftp)), EnLineas(PasosDeCabecera() + PasosDeLote()));
}

// The counter starts at 1 on an empty table and is raised before its first use.
TEST_F(BotonVales, LosQueNiSeVendieronNiSonDeUnClienteSePublicanEnUnLote)
{
    const QString hoy = HoyMysql();
    const QString regla =
        "INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping, country_restriction, carrier_restriction, group_restriction, cart_rule_restriction, product_restriction, shop_restriction, free_shipping, reduction_percent, reduction_amount, reduction_tax, reduction_currency, reduction_product, gift_product, gift_product_attribute, highlight, active, date_add, date_upd) VALUES ";
    const QString fechas = ",0,CAST('2024/01/02' AS DATE),CAST('2024/12/31' AS DATE),";

    EXPECT_EQ(EnLineas(nuevos.log),
              EnLineas(LogHastaLasMarcas() +
                       QStringList{"Preparando Vale Descuento V10. Añadiendo",
                                   "Preparando Vale Descuento V25. Añadiendo",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"} +
                       FinDelLog()));
    EXPECT_EQ(
        EnLineas(nuevos.SentenciasDe(1)),
        EnLineas(
            {regla + "(2" + fechas +
                 "'Verano',5,1,1,1,'V10',0,1,1,0,0,0,0,0,0,0,0,10,0,1,1,0,0,0,0,1," + hoy + "," +
                 hoy + ")",
             "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (2,1,'Verano')",
             regla + "(3" + fechas +
                 "'Otoño',5,1,1,1,'V25',25.5,1,1,0,0,0,0,0,0,0,0,0,25.5,1,1,0,0,0,0,1," + hoy +
                 "," + hoy + ")",
             "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (3,1,'Otoño')"}));
    EXPECT_EQ(
        tienda->Sql(
            "SELECT id_cart_rule,code,reduction_percent,reduction_amount,minimum_amount FROM ps_cart_rule WHERE code IN ('V10','V25') ORDER BY id_cart_rule"),
        (Filas{{"2", "V10", "10.00", "0.00", "0.00"}, {"3", "V25", "0.00", "25.50", "25.50"}}));
}

TEST_F(BotonVales, LosQueYaEstanSoloSeCuentan)
{
    const QString actual = empresa->Actual();
    EXPECT_EQ(EnLineas(otraVez.log),
              EnLineas(LogHastaLasMarcas() +
                       QStringList{"Preparando Vale Descuento V10. Ya existe en la web.",
                                   "Preparando Vale Descuento V25. Ya existe en la web.",
                                   "SUBIENDO FICHERO ", "SINCRONIZANDO NUEVOS VALES DE DESCUENTO",
                                   "Error subiendo fichero " + actual + "\\sentencias.sql",
                                   "ERROR SUBIENDO FICHERO sentencias.sql"} +
                       FinDelLog()));
    EXPECT_EQ(otraVez.lotes.value(1), "");
}

// Its number is used up, and the next voucher takes the one behind it.
TEST_F(BotonVales, UnaComillaEnLaDescripcionRompeLasDosSentenciasDeSuVale)
{
    const QString hoy = HoyMysql();
    // clang-format off
    EXPECT_EQ(EnLineas(conComilla.log),
              EnLineas(LogHastaLasMarcas() +
                       QStringList{"Preparando Vale Descuento VQ. Añadiendo",
                                   "Preparando Vale Descuento VS. Añadiendo",
                                   "SUBIENDO FICHERO sentencias.sql",
                                   "SINCRONIZANDO NUEVOS VALES DE DESCUENTO"} +
                       DetalleDeErrores({{ErrorDeSintaxis("Estiu',5,1,1,1,'VQ',0,1,1,0,0,0,0,0,0,0,0,10,0,1,1,0,0,0,0,1," + hoy + "," + hoy + ")"),
                                          "INSERT INTO ps_cart_rule(id_cart_rule, id_customer, date_from, date_to, description, quantity, quantity_per_user, priority, partial_use, code, minimum_amount, minimum_amount_tax, minimum_amount_currency, minimum_amount_shipping"},
                                         {ErrorDeSintaxis("Estiu')"), "INSERT INTO ps_cart_rule_lang (id_cart_rule,ID_LANG,NAME) VALUES (4,1,'d'Estiu')"}}) +
                       FinDelLog()));
    // clang-format on
    EXPECT_EQ(tienda->Sql("SELECT id_cart_rule,code FROM ps_cart_rule ORDER BY id_cart_rule"),
              (Filas{{"2", "V10"}, {"3", "V25"}, {"5", "VS"}}));
}

} // namespace
