#include "php/tienda_con_scripts.h"
#include <gmock/gmock.h>

// The two columns that ejecuta.php makes fit for what the batches bring.

namespace {
// Product 4295 and six digits: the first row id that an INT UNSIGNED does not hold.
const QByteArray Existencias =
    "INSERT INTO ps_stock_available (id_stock_available,id_product,id_product_attribute,id_shop,"
    "id_shop_group,quantity) VALUES (4295000000,4295,0,1,0,7)||\r\n";
const QByteArray Adjunto =
    "INSERT INTO ps_attachment (id_attachment,file,file_name,file_size,mime)  VALUES "
    "(3,'a.pdf','a.pdf',5000000000,'C:\\\\a.pdf')||\r\n";

QString Columna(const TiendaConScripts& t, const QString& tabla, const QString& columna)
{
    return t.Dato("SELECT CONCAT_WS('|',COLUMN_TYPE,IS_NULLABLE,IFNULL(COLUMN_DEFAULT,'-'),EXTRA) "
                  "FROM information_schema.COLUMNS WHERE TABLE_SCHEMA='tienda' AND TABLE_NAME='" +
                  tabla + "' AND COLUMN_NAME='" + columna + "'");
}

/// Counts the changes of tables that reach the server while it lives.
class CuentaCambios {
  public:
    explicit CuentaCambios(const TiendaConScripts& t) : t_(t)
    {
        t_.tienda.Ejecuta("SET GLOBAL log_output='TABLE'; TRUNCATE mysql.general_log; "
                          "SET GLOBAL general_log=1");
    }
    ~CuentaCambios() { t_.tienda.Ejecuta("SET GLOBAL general_log=0"); }
    QString Cuantos() const
    {
        return t_.Dato("SELECT COUNT(*) FROM mysql.general_log WHERE argument LIKE 'ALTER%'");
    }

  private:
    const TiendaConScripts& t_;
};
} // namespace

class ColumnasDeLaTienda : public testing::TestWithParam<const char*> {};

TEST_P(ColumnasDeLaTienda, AdmitenLoQueTraeElMismoLote)
{
    TiendaConScripts t({.generacion = GetParam()});

    EXPECT_EQ(t.EjecutaLote(Existencias + Adjunto), "");

    EXPECT_EQ(t.Dato("SELECT quantity FROM ps_stock_available WHERE id_stock_available=4295000000"),
              "7");
    EXPECT_EQ(t.Dato("SELECT file_size FROM ps_attachment WHERE id_attachment=3"), "5000000000");
    EXPECT_EQ(Columna(t, "ps_stock_available", "id_stock_available"),
              "bigint(20) unsigned|NO|-|auto_increment");
}

INSTANTIATE_TEST_SUITE_P(Generaciones, ColumnasDeLaTienda,
                         testing::Values("1.5.6", "1.6.0", "1.6.1"), [](const auto& caso) {
                             return "g" + QString(caso.param).remove('.').toStdString();
                         });

TEST(ColumnaFileSize, SeAnadeDondeFalta)
{
    TiendaConScripts t({.generacion = "1.5.6"});
    ASSERT_EQ(Columna(t, "ps_attachment", "file_size"), "");

    t.EjecutaLote("");

    // A batch with nothing in it changes nothing either: there may never be another.
    EXPECT_EQ(t.EjecutaLote("SELECT 1||"), "");
    EXPECT_EQ(Columna(t, "ps_attachment", "file_size"), "bigint(20) unsigned|NO|0|");
}

TEST(ColumnasDeLaTienda, SeCambianUnaSolaVez)
{
    TiendaConScripts t({.generacion = "1.5.6"});
    CuentaCambios cambios(t);

    t.EjecutaLote("SELECT 1||");
    EXPECT_EQ(cambios.Cuantos(), "2");
    t.EjecutaLote("SELECT 1||");

    EXPECT_EQ(cambios.Cuantos(), "2");
}

TEST(ColumnasDeLaTienda, SinPermisoSigueEnSilencio)
{
    TiendaConScripts t({.generacion = "1.5.6"});
    t.tienda.Ejecuta("REVOKE ALTER ON tienda.* FROM 'tienda'@'127.0.0.1'");

    const QByteArray respuesta =
        t.EjecutaLote("INSERT INTO ps_tag (id_tag,id_lang,name) VALUES (9,1,'x')||");
    t.tienda.Ejecuta("GRANT ALTER ON tienda.* TO 'tienda'@'127.0.0.1'");

    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(t.Dato("SELECT name FROM ps_tag WHERE id_tag=9"), "x");
    EXPECT_EQ(Columna(t, "ps_stock_available", "id_stock_available"),
              "int(11) unsigned|NO|-|auto_increment");
}

TEST(ColumnasDeLaTienda, SinLasTablasSigueEnSilencio)
{
    TiendaConScripts t({.generacion = "1.5.6"});
    t.tienda.Ejecuta("DROP TABLE ps_stock_available, ps_attachment");

    EXPECT_EQ(t.EjecutaLote("INSERT INTO ps_tag (id_tag,id_lang,name) VALUES (9,1,'x')||"), "");

    EXPECT_EQ(t.Dato("SELECT name FROM ps_tag WHERE id_tag=9"), "x");
}

TEST(ColumnasDeLaTienda, ElPrefijoEsElDeLaConfiguracion)
{
    TiendaConScripts t({.generacion = "1.5.6", .prefijo = "tst_"});

    EXPECT_EQ(t.EjecutaLote("SELECT 1||"), "");

    EXPECT_EQ(Columna(t, "tst_stock_available", "id_stock_available"),
              "bigint(20) unsigned|NO|-|auto_increment");
    EXPECT_EQ(Columna(t, "tst_attachment", "file_size"), "bigint(20) unsigned|NO|0|");
}

class PrefijoDelLote : public testing::TestWithParam<const char*> {};

TEST_P(PrefijoDelLote, SinConfiguracionSeSacaDeLasSentencias)
{
    TiendaConScripts t({.generacion = "1.5.6", .prefijo = "tst_"});
    t.tienda.BorraFichero("config/settings.inc.php");
    t.tienda.Ajusta(Servidor::Http, "php_admin_value mysqli.default_socket \"" +
                                        t.tienda.SocketMysql().toUtf8() + "\"\n");

    EXPECT_EQ(t.EjecutaLote(QByteArray("UPDATE tst_lang SET active=1||\r\n") + GetParam() + "||"),
              "");

    EXPECT_EQ(Columna(t, "tst_stock_available", "id_stock_available"),
              "bigint(20) unsigned|NO|-|auto_increment");
    EXPECT_EQ(Columna(t, "tst_attachment", "file_size"), "bigint(20) unsigned|NO|0|");
    EXPECT_EQ(Columna(t, "tst_product_attachment", "file_size"), "");
}

INSTANTIATE_TEST_SUITE_P(
    Sentencias, PrefijoDelLote,
    testing::Values("DELETE FROM tst_stock_available WHERE id_product=1",
                    "INSERT INTO tst_attachment (id_attachment,file_size) VALUES (1,2)",
                    "DELETE FROM tst_product_attachment WHERE id_product=1",
                    "UPDATE tst_stock_available SET quantity=1"));
