// What a test shop holds: tables, rows and folder of each generation.
#include "apoyo/tienda.h"
#include <QElapsedTimer>
#include <QProcess>
#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {
using Filas = std::vector<QStringList>;

/// Type, whether it may be null, default ("NULL" without one) and extra of a column; empty if
/// absent.
Filas Columna(const TiendaDePrueba& tienda, const QString& tabla, const QString& columna)
{
    return tienda.Sql(QString("SELECT column_type,is_nullable,column_default,extra"
                              " FROM information_schema.columns WHERE table_schema=database()"
                              " AND table_name='ps_%1' AND column_name='%2'")
                          .arg(tabla, columna));
}

/// The columns of each key of a table, by the key's name.
Filas Claves(const TiendaDePrueba& tienda, const QString& tabla)
{
    return tienda.Sql(
        QString("SELECT min(non_unique),group_concat(column_name ORDER BY seq_in_index)"
                " FROM information_schema.statistics WHERE table_schema=database()"
                " AND table_name='ps_%1' GROUP BY index_name ORDER BY 2")
            .arg(tabla));
}

Filas Tamanos(const TiendaDePrueba& tienda)
{
    return tienda.Sql(
        "SELECT name,width,height,products,categories FROM ps_image_type ORDER BY name");
}

const QStringList SinDefecto{"date", "NO", "NULL", ""};
const QStringList DefectoCero{"date", "NO", "'0000-00-00'", ""};
} // namespace

TEST(Tienda156, TieneSusColumnasYClaves)
{
    const TiendaDePrueba& tienda = TiendaComun({.generacion = "1.5.6"});

    EXPECT_THAT(Columna(tienda, "configuration", "name"),
                ElementsAre(QStringList{"varchar(32)", "NO", "NULL", ""}));
    EXPECT_THAT(Columna(tienda, "product", "id_product"),
                ElementsAre(QStringList{"int(10) unsigned", "NO", "NULL", "auto_increment"}));
    EXPECT_THAT(Columna(tienda, "product", "available_date"), ElementsAre(SinDefecto));
    EXPECT_THAT(Columna(tienda, "product", "pack_stock_type"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "product_attribute", "unit_price_impact"),
                ElementsAre(QStringList{"decimal(17,2)", "NO", "0.00", ""}));
    EXPECT_THAT(Columna(tienda, "category", "display_from_sub"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "image", "cover"),
                ElementsAre(QStringList{"tinyint(1) unsigned", "NO", "0", ""}));
    EXPECT_THAT(Columna(tienda, "image_shop", "cover"),
                ElementsAre(QStringList{"tinyint(1)", "NO", "NULL", ""}));
    EXPECT_THAT(Columna(tienda, "specific_price", "reduction_tax"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "attachment", "file_size"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "product_tag", "id_lang"), IsEmpty());
    EXPECT_THAT(Claves(tienda, "image_shop"), IsEmpty());
    EXPECT_THAT(
        Claves(tienda, "image"),
        ElementsAre(QStringList{"0", "id_image"}, QStringList{"0", "id_image,id_product,cover"}));
}

TEST(Tienda156, TieneSusTamanosDeImagen)
{
    const TiendaDePrueba& tienda = TiendaComun({.generacion = "1.5.6"});

    EXPECT_THAT(Tamanos(tienda),
                ElementsAre(QStringList{"category_default", "500", "150", "0", "1"},
                            QStringList{"home_default", "124", "124", "1", "0"},
                            QStringList{"large_default", "264", "264", "1", "1"},
                            QStringList{"medium_default", "58", "58", "1", "1"},
                            QStringList{"small_default", "45", "45", "1", "1"},
                            QStringList{"thickbox_default", "600", "600", "1", "0"}));
}

TEST(Tienda160, TieneSusColumnasYClaves)
{
    const TiendaDePrueba& tienda = TiendaComun({.generacion = "1.6.0"});

    EXPECT_THAT(Columna(tienda, "configuration", "name"),
                ElementsAre(QStringList{"varchar(254)", "NO", "NULL", ""}));
    EXPECT_THAT(Columna(tienda, "product_shop", "available_date"), ElementsAre(SinDefecto));
    EXPECT_THAT(Columna(tienda, "product_shop", "pack_stock_type"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "product_attribute_shop", "unit_price_impact"),
                ElementsAre(QStringList{"decimal(20,6)", "NO", "0.000000", ""}));
    EXPECT_THAT(Columna(tienda, "product_attribute", "default_on"),
                ElementsAre(QStringList{"tinyint(1) unsigned", "NO", "0", ""}));
    EXPECT_THAT(Columna(tienda, "image_shop", "cover"),
                ElementsAre(QStringList{"tinyint(1)", "NO", "0", ""}));
    EXPECT_THAT(Columna(tienda, "image_shop", "id_product"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "specific_price", "reduction_tax"),
                ElementsAre(QStringList{"tinyint(1)", "NO", "1", ""}));
    EXPECT_THAT(Columna(tienda, "attachment", "file_size"),
                ElementsAre(QStringList{"bigint(10) unsigned", "NO", "0", ""}));
    EXPECT_THAT(Columna(tienda, "product_tag", "id_lang"), IsEmpty());
    EXPECT_THAT(Claves(tienda, "specific_price"),
                ElementsAre(QStringList{"0", "id_specific_price"}));
    EXPECT_THAT(
        Claves(tienda, "stock_available"),
        ElementsAre(QStringList{"0", "id_product,id_product_attribute,id_shop,id_shop_group"},
                    QStringList{"0", "id_stock_available"}));
}

TEST(Tienda161, TieneSusColumnasYClaves)
{
    const TiendaDePrueba& tienda = TiendaComun({.generacion = "1.6.1"});

    EXPECT_THAT(Columna(tienda, "product", "available_date"), ElementsAre(DefectoCero));
    EXPECT_THAT(Columna(tienda, "product", "pack_stock_type"),
                ElementsAre(QStringList{"int(11) unsigned", "NO", "3", ""}));
    EXPECT_THAT(Columna(tienda, "product", "redirect_type"),
                ElementsAre(QStringList{"enum('','404','301','302')", "NO", "''", ""}));
    EXPECT_THAT(Columna(tienda, "product", "condition"),
                ElementsAre(QStringList{"enum('new','used','refurbished')", "NO", "'new'", ""}));
    EXPECT_THAT(Columna(tienda, "image", "cover"),
                ElementsAre(QStringList{"tinyint(1) unsigned", "YES", "NULL", ""}));
    EXPECT_THAT(Columna(tienda, "product_attribute_shop", "default_on"),
                ElementsAre(QStringList{"tinyint(1) unsigned", "YES", "NULL", ""}));
    EXPECT_THAT(Columna(tienda, "category", "display_from_sub"),
                ElementsAre(QStringList{"tinyint(1) unsigned", "NO", "0", ""}));
    EXPECT_THAT(Columna(tienda, "product_tag", "id_lang"),
                ElementsAre(QStringList{"int(10) unsigned", "NO", "NULL", ""}));
    EXPECT_THAT(Claves(tienda, "image"), ElementsAre(QStringList{"0", "id_image"},
                                                     QStringList{"0", "id_image,id_product,cover"},
                                                     QStringList{"0", "id_product,cover"}));
    EXPECT_THAT(Claves(tienda, "image_shop"),
                ElementsAre(QStringList{"0", "id_image,id_shop"},
                            QStringList{"0", "id_product,id_shop,cover"}));
    EXPECT_THAT(
        Claves(tienda, "specific_price"),
        ElementsAre(
            QStringList{"0", "id_product,id_product_attribute,id_customer,id_cart,from,to,id_shop,"
                             "id_shop_group,id_currency,id_country,id_group,from_quantity,"
                             "id_specific_price_rule"},
            QStringList{"0", "id_specific_price"}));
}

TEST(Tienda161, TieneSusTamanosDeImagen)
{
    const TiendaDePrueba& tienda = TiendaComun({.generacion = "1.6.1"});

    EXPECT_THAT(Tamanos(tienda),
                ElementsAre(QStringList{"cart_default", "80", "80", "1", "0"},
                            QStringList{"category_default", "870", "217", "0", "1"},
                            QStringList{"home_default", "250", "250", "1", "0"},
                            QStringList{"large_default", "458", "458", "1", "0"},
                            QStringList{"medium_default", "125", "125", "1", "1"},
                            QStringList{"small_default", "98", "98", "1", "0"},
                            QStringList{"thickbox_default", "800", "800", "1", "0"}));
}

struct CasoVersion {
    const char* regla;
    OpcionesTienda opciones{};
    const char* version;
};

class VersionDeLaTienda : public testing::TestWithParam<CasoVersion> {};

TEST_P(VersionDeLaTienda, EstaEnLaTablaYEnLosAjustes)
{
    const TiendaDePrueba& tienda = TiendaComun(GetParam().opciones);

    EXPECT_THAT(tienda.Sql("SELECT value FROM ps_configuration WHERE name='ps_version_db'"),
                ElementsAre(QStringList{GetParam().version}));
    EXPECT_THAT(tienda.LeeFichero("config/settings.inc.php").toStdString(),
                HasSubstr(std::string("define('_PS_VERSION_', '") + GetParam().version + "');"));
}

INSTANTIATE_TEST_SUITE_P(
    Casos, VersionDeLaTienda,
    testing::Values(CasoVersion{"La156DeSerie", {.generacion = "1.5.6"}, "1.5.6.2"},
                    CasoVersion{"La160DeSerie", {.generacion = "1.6.0"}, "1.6.0.14"},
                    CasoVersion{"La161DeSerie", {.generacion = "1.6.1"}, "1.6.1.4"},
                    CasoVersion{
                        "LaPedida", {.generacion = "1.6.0", .version = "1.6.0.9"}, "1.6.0.9"}),
    [](const auto& caso) { return caso.param.regla; });

TEST(Tienda, TodasSusTablasSonInnoDBYUtf8)
{
    const TiendaDePrueba& tienda = TiendaComun();

    EXPECT_THAT(tienda.Sql("SELECT count(*),engine,table_collation FROM information_schema.tables"
                           " WHERE table_schema=database() GROUP BY engine,table_collation"),
                ElementsAre(QStringList{"37", "InnoDB", "utf8mb3_general_ci"}));
}

TEST(Tienda, NaceConLaRaizElInicioYSusIdiomas)
{
    const TiendaDePrueba& tienda = TiendaComun({.idiomas = 3});

    EXPECT_THAT(tienda.Sql("SELECT id_category,id_parent,level_depth,nleft,nright,is_root_category"
                           " FROM ps_category ORDER BY 1"),
                ElementsAre(QStringList{"1", "0", "0", "1", "4", "0"},
                            QStringList{"2", "1", "1", "2", "3", "1"}));
    EXPECT_THAT(tienda.Sql("SELECT id_category,id_lang,name FROM ps_category_lang ORDER BY 1,2"),
                ElementsAre(QStringList{"1", "1", "Raíz"}, QStringList{"1", "2", "Root"},
                            QStringList{"1", "3", "Racine"}, QStringList{"2", "1", "Inicio"},
                            QStringList{"2", "2", "Home"}, QStringList{"2", "3", "Accueil"}));
    EXPECT_THAT(tienda.Sql("SELECT id_category,id_shop FROM ps_category_shop ORDER BY 1"),
                ElementsAre(QStringList{"1", "1"}, QStringList{"2", "1"}));
    EXPECT_THAT(tienda.Sql("SELECT id_category,id_group FROM ps_category_group ORDER BY 1,2"),
                ElementsAre(QStringList{"1", "1"}, QStringList{"1", "2"}, QStringList{"1", "3"},
                            QStringList{"2", "1"}, QStringList{"2", "2"}, QStringList{"2", "3"}));
    EXPECT_THAT(tienda.Sql("SELECT id_lang,iso_code,active FROM ps_lang ORDER BY 1"),
                ElementsAre(QStringList{"1", "es", "1"}, QStringList{"2", "en", "1"},
                            QStringList{"3", "fr", "1"}));
    EXPECT_THAT(tienda.Sql("SELECT id_shop FROM ps_shop"), ElementsAre(QStringList{"1"}));
}

TEST(Tienda, LlevaElPrefijoQueSePide)
{
    const TiendaDePrueba& tienda = TiendaComun({.prefijo = "tst_", .idiomas = 1});

    EXPECT_THAT(tienda.Sql("SHOW TABLES LIKE 'tst\\_product'"),
                ElementsAre(QStringList{"tst_product"}));
    EXPECT_THAT(tienda.Sql("SHOW TABLES LIKE 'ps\\_%'"), IsEmpty());
    EXPECT_THAT(tienda.LeeFichero("config/settings.inc.php").toStdString(),
                HasSubstr("define('_DB_PREFIX_', 'tst_');"));
}

TEST(Tienda, SuServidorEsEstrictoComoLosDeHoy)
{
    const TiendaDePrueba& tienda = TiendaComun();

    EXPECT_THAT(tienda.Sql("SELECT @@global.sql_mode LIKE '%STRICT_TRANS_TABLES%'"),
                ElementsAre(QStringList{"1"}));
}

TEST(Tienda, SuCarpetaTieneLoQueUnaTiendaYaVisitada)
{
    const TiendaDePrueba& tienda = TiendaComun();

    const QStringList ficheros = tienda.Ficheros();

    for (const char* fichero :
         {".htaccess", "cache/cachefs/index.php", "cache/smarty/cache/index.php",
          "cache/smarty/compile/index.php", "config/settings.inc.php", "download/index.php",
          "img/c/index.php", "img/p/index.php", "index.php"})
        EXPECT_THAT(ficheros, Contains(QString(fichero)));
    EXPECT_GE(tienda.Ficheros("cache/smarty/cache").size(), 3);
    EXPECT_GE(tienda.Ficheros("cache/smarty/compile").size(), 3);
    EXPECT_GE(tienda.Ficheros("cache/cachefs").size(), 2);
}

TEST(Tienda, UnaConsultaDaNulosCerosYTextosConSaltos)
{
    const TiendaDePrueba& tienda = TiendaComun();
    tienda.Ejecuta("INSERT INTO ps_product (id_product) VALUES (71);"
                   "INSERT INTO ps_tag (id_lang,name) VALUES (1,'a\\tb\\nñ€\\\\')");

    EXPECT_THAT(tienda.Sql("SELECT ean13,available_date,price FROM ps_product"),
                ElementsAre(QStringList{"NULL", "0000-00-00", "0.000000"}));
    // The shop's utf8 holds "€" too.
    EXPECT_THAT(tienda.Sql("SELECT name FROM ps_tag"), ElementsAre(QStringList{"a\tb\nñ€\\"}));
    EXPECT_THAT(tienda.Sql("SELECT ''"), ElementsAre(QStringList{""}));
    EXPECT_THAT(tienda.Sql("SELECT id_tag FROM ps_tag WHERE id_lang=9"), IsEmpty());
}

TEST(Tienda, UnaConsultaMalaDiceLoQueDiceElServidor)
{
    const TiendaDePrueba& tienda = TiendaComun();

    try {
        tienda.Sql("SELECT nada FROM ps_tag");
        FAIL() << "no error";
    } catch (const ErrorTienda& error) {
        EXPECT_THAT(error.what(), HasSubstr("Unknown column 'nada'"));
    }
}

TEST(Tienda, AlReiniciarseVuelveANacer)
{
    TiendaDePrueba& tienda = TiendaComun();
    tienda.Ejecuta("INSERT INTO ps_product (id_product) VALUES (71)");
    tienda.Ejecuta("ALTER TABLE ps_category ADD kov_familia varchar(20)");
    tienda.EscribeFichero("img/p/7/1/71.jpg", "x");
    tienda.BorraFichero("cache/smarty/cache/index.php");
    tienda.PaginaWeb("estado");

    tienda.Reinicia({.generacion = "1.6.0", .idiomas = 1});

    EXPECT_THAT(tienda.Sql("SELECT id_product FROM ps_product"), IsEmpty());
    EXPECT_THAT(Columna(tienda, "category", "kov_familia"), IsEmpty());
    EXPECT_THAT(tienda.Sql("SELECT id_lang FROM ps_lang"), ElementsAre(QStringList{"1"}));
    EXPECT_FALSE(tienda.ExisteFichero("img/p/7"));
    EXPECT_TRUE(tienda.ExisteFichero("cache/smarty/cache/index.php"));
    EXPECT_THAT(tienda.PeticionesHttp(), IsEmpty());
    EXPECT_THAT(tienda.ComandosFtp(), IsEmpty());
}

TEST(Tienda, AlReiniciarseNoEsperaAQuienTieneUnaTablaCogida)
{
    TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero(
        "coge.php", "<?php include 'config/settings.inc.php';"
                    "$m = new mysqli('127.0.0.1', _DB_USER_, _DB_PASSWD_, _DB_NAME_, " +
                        QByteArray::number(tienda.PuertoMysql()) +
                        ");"
                        "$m->query('SET autocommit=0'); $m->query('SELECT * FROM ps_product');"
                        "ignore_user_abort(true); echo 'cogida'; flush(); sleep(20);");
    // The page's session keeps its lock for 20 s, long after curl has left.
    QProcess curl;
    curl.start("curl", {"-s", "--max-time", "1", tienda.Www() + "coge.php"});
    ASSERT_TRUE(curl.waitForFinished(10'000));
    ASSERT_THAT(
        tienda.Sql("SELECT count(*) FROM information_schema.processlist WHERE user='tienda'"),
        ElementsAre(QStringList{"1"}));

    QElapsedTimer reloj;

    reloj.start();
    tienda.Reinicia();

    EXPECT_LT(reloj.elapsed(), 10'000);
    EXPECT_THAT(
        tienda.Sql("SELECT count(*) FROM information_schema.processlist WHERE user='tienda'"),
        ElementsAre(QStringList{"0"}));
}
