// The servers of a running test shop: files, logs, single stops.
#include "e2e/tienda_apoyo.h"
#include <QDateTime>
#include <gmock/gmock.h>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(TiendaServidores, LoQueSubePorFtpLoSirveLaWebYLoCambiaPhp)
{
    const TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero("cambia.php",
                          "<?php file_put_contents('nota.txt', 'dos'); echo 'hecho';");
    tienda.EscribeFichero("borra.php", "<?php echo unlink('nota.txt') ? 'hecho' : 'no';");

    ASSERT_EQ(Sube(tienda, "tienda/nota.txt", "uno").codigo, 0);

    EXPECT_EQ(tienda.PaginaWeb("nota.txt").cuerpo, "uno");
    EXPECT_EQ(tienda.PaginaWeb("cambia.php").cuerpo, "hecho");
    EXPECT_EQ(tienda.LeeFichero("nota.txt"), "dos");
    EXPECT_EQ(Sube(tienda, "tienda/nota.txt", "tres").codigo, 0);
    EXPECT_EQ(tienda.PaginaWeb("nota.txt").cuerpo, "tres");
    EXPECT_EQ(tienda.PaginaWeb("borra.php").cuerpo, "hecho");
    EXPECT_EQ(tienda.PaginaWeb("nota.txt").estado, 404);
}

TEST(TiendaServidores, FtpEscribeEnLaCarpetaQueHizoPhpYPhpEnLaQueHizoFtp)
{
    const TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero("haz.php", "<?php mkdir('de_php'); "
                                     "file_put_contents('de_ftp/b.txt', 'b'); echo 'hecho';");
    ASSERT_EQ(Corre("curl", {"-sS", "-l", "-Q", "MKD /tienda/de_ftp", UrlFtp(tienda, "")}).codigo,
              0);

    EXPECT_EQ(tienda.PaginaWeb("haz.php").cuerpo, "hecho");
    EXPECT_EQ(Sube(tienda, "tienda/de_php/a.txt", "a").codigo, 0);

    EXPECT_EQ(tienda.LeeFichero("de_php/a.txt"), "a");
    EXPECT_EQ(tienda.LeeFichero("de_ftp/b.txt"), "b");
}

TEST(TiendaServidores, UnScriptQueSeSubeDeNuevoEsElQueCorre)
{
    const TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero("di.php", "<?php echo 'uno';");
    // Old enough to be worth keeping compiled.
    QFile fichero(tienda.Raiz() + "/di.php");
    ASSERT_TRUE(fichero.open(QIODevice::ReadWrite));
    fichero.setFileTime(QDateTime::currentDateTime().addSecs(-3600), QFile::FileModificationTime);
    fichero.close();
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(tienda.PaginaWeb("di.php").cuerpo, "uno");

    Sube(tienda, "tienda/di.php", "<?php echo 'dos';");

    for (int i = 0; i < 20; ++i)
        EXPECT_EQ(tienda.PaginaWeb("di.php").cuerpo, "dos");
}

TEST(TiendaServidores, FtpNoSaleDeSuCarpeta)
{
    const TiendaDePrueba& tienda = TiendaComun();

    const Salida raiz = Corre("curl", {"-sS", "-l", "--path-as-is", UrlFtp(tienda, "../../")});

    EXPECT_EQ(raiz.texto, "tienda\n");
}

TEST(TiendaServidores, ElRegistroDeFtpTieneCadaOrdenConSuRespuesta)
{
    TiendaDePrueba& tienda = TiendaComun();
    Sube(tienda, "tienda/antes.txt", "x");
    tienda.Marca();

    Sube(tienda, "tienda/img/c/12.jpg", "x", {"-P", "127.0.0.1", "--disable-eprt"});
    Corre("curl", {"-sS", UrlFtp(tienda, "tienda/no_esta.txt"), "--disable-epsv"});

    const QStringList comandos = tienda.ComandosFtp();
    ASSERT_EQ(comandos.size(), 18) << comandos.join('\n').toStdString();
    EXPECT_THAT(comandos.mid(0, 6), ElementsAre("USER tienda 331", "PASS (hidden) 230", "PWD 257",
                                                "CWD tienda 250", "CWD img 250", "CWD c 250"));
    EXPECT_THAT(comandos[6].toStdString(),
                testing::MatchesRegex("PORT 127,0,0,1,[0-9]+,[0-9]+ 200"));
    EXPECT_THAT(comandos.mid(7, 3), ElementsAre("TYPE I 200", "STOR 12.jpg 226", "QUIT 221"));
    EXPECT_THAT(comandos.mid(10, 8),
                ElementsAre("USER tienda 331", "PASS (hidden) 230", "PWD 257", "CWD tienda 250",
                            "PASV 227", "TYPE I 200", "SIZE no_esta.txt 550", "QUIT 221"));
    const auto ordenes = tienda.OrdenesFtp();
    EXPECT_EQ(ordenes.front().sesion, ordenes[9].sesion);
    EXPECT_NE(ordenes.front().sesion, ordenes.back().sesion);
}

TEST(TiendaServidores, ElRegistroDeLaWebTieneCadaPeticionConSuEstado)
{
    TiendaDePrueba& tienda = TiendaComun();
    tienda.PaginaWeb("index.php");
    tienda.Marca();

    tienda.PaginaWeb("estado");
    tienda.PaginaWeb("no_esta.php?a=1&b=2");

    EXPECT_THAT(tienda.PeticionesHttp(),
                ElementsAre("GET /estado 200", "GET /no_esta.php?a=1&b=2 404"));
}

TEST(TiendaServidores, LasReglasDeLaTiendaValen)
{
    const TiendaDePrueba& tienda = TiendaComun();

    EXPECT_EQ(tienda.PaginaWeb("estado").cuerpo, "tienda abierta\n");
    EXPECT_EQ(tienda.PaginaWeb(".htaccess").estado, 403);
}

TEST(TiendaServidores, PhpTieneLoQueEnUnServidorDeTiendas)
{
    const TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero(
        "mira.php", "<?php echo ini_get('max_execution_time'), ' ', ini_get('memory_limit'), ' ',"
                    "var_export((bool)ini_get('display_errors'), true), ' ',"
                    "function_exists('mysqli_connect') ? 'mysqli' : '', ' ',"
                    "function_exists('imagecreatetruecolor') ? 'gd' : '';");

    EXPECT_EQ(tienda.PaginaWeb("mira.php").cuerpo, "120 256M false mysqli gd");
}

TEST(TiendaServidores, ElUsuarioDeLaTiendaEntraPorTcpYPorSocketYSoloEnLoSuyo)
{
    const TiendaDePrueba& tienda = TiendaComun();
    const QStringList quien{"--no-defaults", "-BN", "-u" + tienda.Usuario(), "-p" + tienda.Clave()};
    const QStringList porTcp{"-h127.0.0.1", "-P" + QString::number(tienda.PuertoMysql())};
    const QStringList porSocket{"-S" + tienda.SocketMysql()};

    EXPECT_EQ(
        Corre("mariadb", quien + porTcp + QStringList{tienda.Bd()}, "select id_shop from ps_shop")
            .texto,
        "1\n");
    EXPECT_EQ(Corre("mariadb", quien + porSocket + QStringList{tienda.Bd()},
                    "select id_shop from ps_shop")
                  .texto,
              "1\n");
    EXPECT_THAT(
        Corre("mariadb", quien + porTcp, "select * from mysql.global_priv").texto.toStdString(),
        HasSubstr("denied"));
}

TEST(TiendaServidores, CadaUnoSeParaYVuelveEnSuPuerto)
{
    TiendaDePrueba& tienda = TiendaComun();
    tienda.Ejecuta("INSERT INTO ps_tag (id_tag,id_lang,name) VALUES (5,1,'queda')");
    const std::pair<Servidor, int> servidores[] = {{Servidor::Mysql, tienda.PuertoMysql()},
                                                   {Servidor::Ftp, tienda.PuertoFtp()},
                                                   {Servidor::Http, tienda.PuertoHttp()}};
    for (const auto& [servidor, puerto] : servidores) {
        tienda.Para(servidor);
        EXPECT_FALSE(Escucha(puerto));
        for (const auto& [otro, suyo] : servidores)
            EXPECT_TRUE(otro == servidor || Escucha(suyo));

        tienda.Sigue(servidor);
        EXPECT_TRUE(Escucha(puerto));
    }
    EXPECT_THAT(tienda.Sql("SELECT name FROM ps_tag"), ElementsAre(QStringList{"queda"}));
    EXPECT_EQ(tienda.PaginaWeb("estado").estado, 200);
    EXPECT_EQ(Sube(tienda, "tienda/a.txt", "a").codigo, 0);
}

TEST(TiendaServidores, AlReiniciarVuelvenLosParados)
{
    TiendaDePrueba& tienda = TiendaComun();
    for (const Servidor servidor : {Servidor::Mysql, Servidor::Ftp, Servidor::Http})
        tienda.Para(servidor);

    tienda.Reinicia();

    EXPECT_EQ(tienda.PaginaWeb("estado").estado, 200);
    EXPECT_EQ(Sube(tienda, "tienda/a.txt", "a").codigo, 0);
    EXPECT_THAT(tienda.Sql("SELECT id_shop FROM ps_shop"), ElementsAre(QStringList{"1"}));
}

TEST(TiendaServidores, UnAjusteValeHastaReiniciar)
{
    TiendaDePrueba& tienda = TiendaComun();
    const auto ofreceUtf8 = [&] {
        return Corre("curl", {"-sSv", "-Q", "FEAT", UrlFtp(tienda, "")}).texto.contains("UTF8");
    };
    ASSERT_TRUE(ofreceUtf8());

    tienda.Ajusta(Servidor::Ftp, "LangEngine off\n");
    EXPECT_FALSE(ofreceUtf8());

    tienda.Reinicia();
    EXPECT_TRUE(ofreceUtf8());
}

TEST(TiendaServidores, UnFicheroDeReglasRechazaUnaSubida)
{
    TiendaDePrueba& tienda = TiendaComun();
    tienda.EscribeFichero(".ftpaccess", "PathDenyFilter \"ejecuta\\.php$\"\n");

    EXPECT_NE(Sube(tienda, "tienda/ejecuta.php", "x").codigo, 0);
    EXPECT_EQ(Sube(tienda, "tienda/otro.php", "x").codigo, 0);

    EXPECT_FALSE(tienda.ExisteFichero("ejecuta.php"));
    EXPECT_THAT(tienda.ComandosFtp(), Contains("STOR ejecuta.php 550"));
}

class SubidaCortada : public testing::Test {
  protected:
    TiendaDePrueba& tienda_ = TiendaComun();
    QProcess lenta_;

    void SetUp() override
    {
        lenta_.start(
            "curl", {"-sS", "--limit-rate", "20K", "-T", "-", UrlFtp(tienda_, "tienda/lenta.bin")});
        lenta_.write(QByteArray(400'000, 'x'));
        lenta_.closeWriteChannel();
        ASSERT_TRUE(EsperaHasta([&] { return tienda_.ExisteFichero("lenta.bin"); }, 10'000));
    }
};

TEST_F(SubidaCortada, CortarFtpAcabaConLaSesionYNoConElServidor)
{
    tienda_.CortaFtp();

    ASSERT_TRUE(lenta_.waitForFinished(10'000));
    EXPECT_NE(lenta_.exitCode(), 0);
    EXPECT_LT(tienda_.LeeFichero("lenta.bin").size(), 400'000);
    EXPECT_EQ(Sube(tienda_, "tienda/otra.txt", "x").codigo, 0);
}

TEST_F(SubidaCortada, PararFtpAcabaTambienConLasSesiones)
{
    tienda_.Para(Servidor::Ftp);

    ASSERT_TRUE(lenta_.waitForFinished(10'000));
    EXPECT_NE(lenta_.exitCode(), 0);
    EXPECT_FALSE(Escucha(tienda_.PuertoFtp()));
}
