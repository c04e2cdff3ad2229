#include "php/tienda_con_scripts.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <gmock/gmock.h>

// ejecuta.php: what it reads, what it runs and what it answers.

namespace {
using testing::HasSubstr;
using testing::Not;

const QByteArray SinConexion = "No se puede conectar con Mysql\r\n";

/// The shop with a small table of its own, so that each test sees what ran and in which order.
struct TiendaConTabla : TiendaConScripts {
    TiendaConTabla() : TiendaConTabla(SoloFicheros{}) {}
    template <class Modo> explicit TiendaConTabla(Modo modo) : TiendaConScripts(modo)
    {
        tienda.Ejecuta("CREATE TABLE ps_prueba (id INT AUTO_INCREMENT PRIMARY KEY, texto TEXT) "
                       "ENGINE=InnoDB CHARSET=utf8");
    }
    QStringList Textos() const
    {
        QStringList textos;
        for (const QStringList& fila : tienda.Sql("SELECT texto FROM ps_prueba ORDER BY id"))
            textos << fila.value(0);
        return textos;
    }
};

QByteArray Inserta(const QByteArray& texto)
{
    return "INSERT INTO ps_prueba (texto) VALUES ('" + texto + "')||\r\n";
}
} // namespace

TEST(EjecutaCredenciales, SinElFicheroNoHayConexionYElLoteNoSeToca)
{
    TiendaConTabla t;
    t.tienda.EscribeFichero("sentencias.sql", Inserta("no"));

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);

    EXPECT_EQ(t.tienda.LeeFichero("sentencias.sql"), Inserta("no"));
    EXPECT_EQ(t.Textos(), QStringList());
}

TEST(EjecutaCredenciales, ConClaveEquivocadaSoloDiceQueNoPuedeConectar)
{
    TiendaConTabla t;
    t.SubeCredenciales("clave-mala-77");
    t.tienda.EscribeFichero("sentencias.sql", Inserta("no"));

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);

    EXPECT_FALSE(t.tienda.ExisteFichero("bdtolmo.ccc"));
    EXPECT_EQ(t.Textos(), QStringList());
}

TEST(EjecutaCredenciales, SeBorranAunqueElServidorDeDatosNoResponda)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.SubeCredenciales();
    t.tienda.Para(Servidor::Mysql);

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);

    EXPECT_FALSE(t.tienda.ExisteFichero("bdtolmo.ccc"));
}

TEST(EjecutaCredenciales, FaltandoUnaLineaNoHayConexion)
{
    TiendaConTabla t;
    t.tienda.EscribeFichero("bdtolmo.ccc", t.tienda.Bd().toLatin1() + "\r\n");

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);
}

TEST(EjecutaCredenciales, LosBlancosDeLaClaveSonDeLaClave)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ejecuta("CREATE USER raro@'127.0.0.1' IDENTIFIED BY ' con blancos '; "
                     "GRANT ALL ON tienda.* TO raro@'127.0.0.1'");
    t.tienda.EscribeFichero("bdtolmo.ccc", "tienda\r\nraro\r\n con blancos \r\n");
    t.tienda.EscribeFichero("sentencias.sql", Inserta("si"));

    const QByteArray respuesta = t.Pide("ejecuta.php");
    t.tienda.Ejecuta("DROP USER raro@'127.0.0.1'");

    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(t.Textos(), QStringList{"si"});
}

TEST(EjecutaCredenciales, UnaClaveConAcentosValeAunqueElServidorLaTengaEnUtf8)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ejecuta("CREATE USER raro@'127.0.0.1' IDENTIFIED BY 'contraseña'; "
                     "GRANT ALL ON tienda.* TO raro@'127.0.0.1'");
    t.tienda.EscribeFichero("bdtolmo.ccc", "tienda\r\nraro\r\ncontrase\xF1"
                                           "a\r\n");
    t.tienda.EscribeFichero("sentencias.sql", Inserta("si"));

    const QByteArray respuesta = t.Pide("ejecuta.php");
    t.tienda.Ejecuta("DROP USER raro@'127.0.0.1'");

    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(t.Textos(), QStringList{"si"});
}

TEST(EjecutaCredenciales, UnEnlaceSimbolicoNoSeLee)
{
    TiendaConTabla t;
    t.SubeCredenciales();
    ASSERT_TRUE(QFile::rename(t.tienda.Raiz() + "/bdtolmo.ccc", t.Fuera("claves")));
    t.Enlaza("bdtolmo.ccc", t.Fuera("claves"));

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);

    EXPECT_TRUE(QFile::exists(t.Fuera("claves")));
}

TEST(EjecutaServidor, SeTomaDeLaConfiguracionPorSocket)
{
    TiendaConTabla t;
    t.EscribeAjustes("localhost:" + t.tienda.SocketMysql(), "1.6.0.14");

    EXPECT_EQ(t.EjecutaLote(Inserta("si")), "");

    EXPECT_EQ(t.Textos(), QStringList{"si"});
}

TEST(EjecutaServidor, SinConfiguracionValeElDelPropioServidorWeb)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.BorraFichero("config/settings.inc.php");
    t.tienda.Ajusta(Servidor::Http, "php_admin_value mysqli.default_socket \"" +
                                        t.tienda.SocketMysql().toUtf8() + "\"\n");

    EXPECT_EQ(t.EjecutaLote(Inserta("si")), "");

    EXPECT_EQ(t.Textos(), QStringList{"si"});
}

TEST(EjecutaServidor, LaConfiguracionSeLeeYNoSeEjecuta)
{
    TiendaConTabla t;
    const QByteArray buena = t.tienda.LeeFichero("config/settings.inc.php").mid(6);
    t.tienda.EscribeFichero("config/settings.inc.php",
                            "<?php\n"
                            "file_put_contents(__DIR__ . '/../ejecutado.txt', 'si');\n"
                            "// define('_DB_SERVER_', '127.0.0.1:1');\n"
                            "# define('_DB_SERVER_', '127.0.0.1:2');\n"
                            "/* antes: define('_DB_SERVER_', '127.0.0.1:3');\n */\n"
                            "$x = \"define('_DB_SERVER_', '127.0.0.1:4')\";\n" +
                                buena);

    EXPECT_EQ(t.EjecutaLote(Inserta("si")), "");

    EXPECT_EQ(t.Textos(), QStringList{"si"});
    EXPECT_FALSE(t.tienda.ExisteFichero("ejecutado.txt"));
}

TEST(EjecutaLote, VacioOAusenteDaUnaRespuestaVacia)
{
    TiendaConTabla t;

    EXPECT_EQ(t.EjecutaLote(""), "");
    EXPECT_EQ(t.EjecutaLote("\r\n \t||\r\n||  "), "");
    t.SubeCredenciales();
    EXPECT_EQ(t.Pide("ejecuta.php"), "");
}

TEST(EjecutaLote, LoQueFallaSeDiceYLoDemasSeHace)
{
    TiendaConTabla t;

    const QByteArray respuesta = t.EjecutaLote(
        Inserta("uno") + "INSERT INTO ps_noexiste\r\n (x)  VALUES (7)||\r\n" + Inserta("dos"));

    EXPECT_EQ(respuesta, "Error al ejecutar consulta: Table 'tienda.ps_noexiste' doesn't exist\r\n"
                         "INSERT INTO ps_noexiste (x) VALUES (7)\r\n");
    EXPECT_EQ(t.Textos(), (QStringList{"uno", "dos"}));
}

TEST(EjecutaLote, CadaFalloLlevaSuFraseYElPrincipioDeSuSentencia)
{
    TiendaConTabla t;
    const QByteArray larga = "DELETE FROM ps_b WHERE x='" + QByteArray(500, 'z') + "'";

    const QByteArray respuesta = t.EjecutaLote("DELETE FROM ps_a||\r\n" + larga + "||\r\n");

    EXPECT_EQ(respuesta, "Error al ejecutar consulta: Table 'tienda.ps_a' doesn't exist\r\n"
                         "DELETE FROM ps_a\r\n"
                         "Error al ejecutar consulta: Table 'tienda.ps_b' doesn't exist\r\n" +
                             larga.left(200) + "\r\n");
}

TEST(EjecutaLote, ElMensajeNoDescubreAlUsuarioDeLaBase)
{
    TiendaConTabla t;

    const QByteArray respuesta = t.EjecutaLote("SELECT * FROM mysql.global_priv||\r\n");

    EXPECT_THAT(respuesta.toStdString(), HasSubstr("SELECT command denied to user *** for table"));
    EXPECT_THAT(respuesta.toStdString(), Not(HasSubstr("127.0.0.1")));
}

TEST(EjecutaLote, SeParteSoloPorDosBarras)
{
    TiendaConTabla t;

    const QByteArray respuesta =
        t.EjecutaLote("  INSERT INTO ps_prueba (texto)\r\n VALUES ('a;\r\nb | c') ||"
                      "INSERT INTO ps_prueba (texto) VALUES ('d')||||\r\n\r\n");

    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(t.Textos(), (QStringList{"a;\r\nb | c", "d"}));
}

TEST(EjecutaLote, UnaSentenciaSinTerminarNoSeEjecutaYSeDice)
{
    // An upload that breaks off can end in a shorter sentence that is valid and means something
    // else.
    TiendaConTabla t;

    const QByteArray respuesta =
        t.EjecutaLote(Inserta("uno") + Inserta("dos") + "DELETE FROM ps_prueba ");

    EXPECT_EQ(
        respuesta,
        "Error al ejecutar consulta: Falta \"||\" al final; la sentencia no se ha ejecutado\r\n"
        "DELETE FROM ps_prueba\r\n");
    EXPECT_EQ(t.Textos(), (QStringList{"uno", "dos"}));
}

TEST(EjecutaLote, LosTextosLleganDeWindows1252)
{
    TiendaConTabla t;

    const QByteArray respuesta =
        t.EjecutaLote(Inserta("ni\xF1o \x80 \x93x\x94 l\xB4"
                              "agua \x85") +
                      Inserta("\x81\x8D\x8F\x90\x9D") + Inserta("a\\'b\r\nc"));

    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(
        t.Textos(),
        (QStringList{QString::fromUtf8("niño € “x” l´agua …"),
                     QString::fromUtf8("\xC2\x81\xC2\x8D\xC2\x8F\xC2\x90\xC2\x9D"), "a'b\r\nc"}));
}

TEST(EjecutaLote, LaRespuestaSaleEnWindows1252)
{
    TiendaConTabla t;

    const QByteArray respuesta = t.EjecutaLote("DELETE FROM ps_a\xF1o WHERE x='\x80'||\r\n");

    EXPECT_EQ(respuesta, "Error al ejecutar consulta: Table 'tienda.ps_a\xF1o' doesn't exist\r\n"
                         "DELETE FROM ps_a\xF1o WHERE x='\x80'\r\n");
    const QStringList cabeceras = t.Cabeceras("ejecuta.php");
    EXPECT_THAT(cabeceras, testing::Contains("Content-Type: text/plain; charset=windows-1252"));
    EXPECT_THAT(cabeceras, testing::Contains("Cache-Control: no-store"));
}

TEST(EjecutaLote, LasColumnasSinValorTomanElCeroDeSuTipo)
{
    TiendaConTabla t{OpcionesTienda{}};

    EXPECT_EQ(t.EjecutaLote("INSERT INTO ps_manufacturer (id_manufacturer,name) VALUES (7,'x')||"),
              "");

    EXPECT_EQ(t.Dato("SELECT date_add FROM ps_manufacturer WHERE id_manufacturer=7"),
              "0000-00-00 00:00:00");
}

TEST(EjecutaLote, LasFilasDeUnaConsultaNoEstorban)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ejecuta("CREATE PROCEDURE filas() SELECT * FROM ps_lang");

    EXPECT_EQ(t.EjecutaLote("SELECT * FROM ps_lang||CALL filas()||" + Inserta("tras")), "");

    EXPECT_EQ(t.Textos(), QStringList{"tras"});
}

TEST(EjecutaLote, UnaSegundaPeticionNoEjecutaNada)
{
    TiendaConTabla t;
    EXPECT_EQ(t.EjecutaLote(Inserta("una vez")), "");
    EXPECT_FALSE(t.tienda.ExisteFichero("bdtolmo.ccc"));
    EXPECT_FALSE(t.tienda.ExisteFichero("sentencias.sql"));

    EXPECT_EQ(t.Pide("ejecuta.php"), SinConexion);
    t.SubeCredenciales();
    EXPECT_EQ(t.Pide("ejecuta.php"), "");

    EXPECT_EQ(t.Textos(), QStringList{"una vez"});
}

TEST(EjecutaLote, UnEnlaceSimbolicoNoSeEjecutaNiSeBorraSuDestino)
{
    TiendaConTabla t;
    QFile ajeno(t.Fuera("ajeno.sql"));
    ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
    ajeno.write(Inserta("ajeno"));
    ajeno.close();
    t.Enlaza("sentencias.sql", t.Fuera("ajeno.sql"));
    t.SubeCredenciales();

    EXPECT_EQ(t.Pide("ejecuta.php"), "");

    EXPECT_EQ(t.Textos(), QStringList());
    EXPECT_TRUE(QFile::exists(t.Fuera("ajeno.sql")));
}

TEST(EjecutaLote, LaSentenciaQueNoCabeEnElServidorSeDiceYLasDemasSeHacen)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ejecuta("SET GLOBAL max_allowed_packet=1048576");
    const QByteArray enorme =
        "INSERT INTO ps_prueba (texto) VALUES ('" + QByteArray(1'200'000, 'x') + "')";

    const QByteArray respuesta = t.EjecutaLote(Inserta("uno") + enorme + "||" + Inserta("dos"));
    t.tienda.Ejecuta("SET GLOBAL max_allowed_packet=16777216");

    EXPECT_EQ(respuesta,
              "Error al ejecutar consulta: La sentencia es mayor que max_allowed_packet\r\n" +
                  enorme.left(200) + "\r\n");
    EXPECT_EQ(t.Textos(), (QStringList{"uno", "dos"}));
}

TEST(EjecutaLote, SiElServidorWebLoInterrumpeSeDiceYNadaQuedaHecho)
{
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ajusta(Servidor::Http, "php_admin_value memory_limit 8M\n");
    const QStringList antes = t.tienda.Ficheros();

    const QByteArray respuesta =
        t.EjecutaLote(Inserta("a") + "INSERT INTO ps_prueba (texto) VALUES ('" +
                      QByteArray(9'000'000, 'x') + "')||");

    EXPECT_EQ(respuesta,
              "Error al ejecutar consulta: El servidor web ha interrumpido el lote; no se "
              "ha aplicado nada de este lote\r\n");
    EXPECT_EQ(t.Textos(), QStringList());
    EXPECT_EQ(t.tienda.Ficheros(), antes);
}

TEST(EjecutaLote, VeinteMegasSeEjecutanConPocaMemoria)
{
    // Less memory than half the batch: it may take what a sentence needs and no more.
    TiendaConTabla t{OpcionesTienda{}};
    t.tienda.Ajusta(Servidor::Http, "php_admin_value memory_limit 8M\n");
    constexpr int Sentencias = 60'000;
    QByteArray lote;
    for (int i = 0; i < Sentencias; ++i)
        lote += Inserta(QByteArray::number(i) + QByteArray(290, 'x'));
    ASSERT_GT(lote.size(), 20'000'000);
    QElapsedTimer reloj;
    reloj.start();

    const QByteArray respuesta = t.EjecutaLote(lote);

    const qint64 tardado = reloj.elapsed();
    RecordProperty("milisegundos", static_cast<int>(tardado));
    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(
        t.Dato("SELECT CONCAT(COUNT(*),' ',MAX(id),' ',SUM(LENGTH(texto)>290)) FROM ps_prueba"),
        "60000 60000 60000");
    EXPECT_LT(tardado, 30'000); // some 3 s on an idle machine
}

TEST(EjecutaLote, UnaSentenciaDeVariosBloquesLlegaEntera)
{
    TiendaConTabla t;
    t.tienda.Ejecuta("ALTER TABLE ps_prueba MODIFY texto LONGTEXT");
    // Blocks are read by powers of two: the terminator falls on each side of their edges.
    QByteArray lote;
    for (int largo : {65'536, 131'072, 300'000})
        for (int i = -41; i <= -36; ++i)
            lote += "INSERT INTO ps_prueba (texto) VALUES ('" + QByteArray(largo + i, 'y') + "')||";

    EXPECT_EQ(t.EjecutaLote(lote), "");

    EXPECT_EQ(t.Dato("SELECT GROUP_CONCAT(LENGTH(texto) ORDER BY id) FROM ps_prueba"),
              "65495,65496,65497,65498,65499,65500,131031,131032,131033,131034,131035,131036,"
              "299959,299960,299961,299962,299963,299964");
}
