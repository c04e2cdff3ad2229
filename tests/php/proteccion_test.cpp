#include "php/tienda_con_scripts.h"
#include <QFile>
#include <gmock/gmock.h>

// The rule in the shop's .htaccess that keeps the web away from the files of the client.

namespace {
const QByteArray Bloque =
    "# KOV TOLMO: inicio\n"
    "<FilesMatch \"(?i)^(bdtolmo\\.ccc|sentencias\\.sql|(imgart|imgfam|imgborra|creapath)\\.txt)(\\..*)?$\">\n"
    "    <IfModule mod_authz_core.c>\n"
    "        Require all denied\n"
    "    </IfModule>\n"
    "    <IfModule !mod_authz_core.c>\n"
    "        Order allow,deny\n"
    "        Deny from all\n"
    "    </IfModule>\n"
    "</FilesMatch>\n"
    "# KOV TOLMO: fin\n";
} // namespace

class ReglaDeAcceso : public testing::TestWithParam<const char*> {};

TEST_P(ReglaDeAcceso, CierraLosFicherosDelClienteYNadaMas)
{
    TiendaConScripts t{SoloFicheros{}};
    const QStringList suyos{"bdtolmo.ccc",  "sentencias.sql", "imgart.txt",         "imgfam.txt",
                            "imgborra.txt", "creapath.txt",   "sentencias.sql.0a1b"};
    t.Pide(GetParam());
    for (const QString& nombre : suyos)
        t.tienda.EscribeFichero(nombre, "secreto");
    t.tienda.EscribeFichero("otras-sentencias.sql", "de la tienda");

    for (const QString& nombre : suyos)
        EXPECT_EQ(t.tienda.PaginaWeb(nombre).estado, 403) << nombre.toStdString();
    EXPECT_EQ(t.Pide("otras-sentencias.sql"), "de la tienda");
}

TEST_P(ReglaDeAcceso, DejaLasDeLaTiendaComoEstabanYEnVigor)
{
    TiendaConScripts t{SoloFicheros{}};
    const QByteArray antes = t.tienda.LeeFichero(".htaccess");

    t.Pide(GetParam());

    EXPECT_EQ(t.tienda.LeeFichero(".htaccess"), antes + "\n" + Bloque);
    EXPECT_EQ(t.Pide("estado"), "tienda abierta\n");
}

TEST_P(ReglaDeAcceso, SePoneUnaSolaVez)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Pide(GetParam());
    const QByteArray una = t.tienda.LeeFichero(".htaccess");

    t.Pide(GetParam());

    EXPECT_EQ(t.tienda.LeeFichero(".htaccess"), una);
}

TEST_P(ReglaDeAcceso, SeCreaElFicheroSiNoLoHay)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.BorraFichero(".htaccess");

    t.Pide(GetParam());

    EXPECT_EQ(t.tienda.LeeFichero(".htaccess"), Bloque);
}

TEST_P(ReglaDeAcceso, UnBloqueViejoSeRenuevaEnSuSitio)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero(".htaccess", "RewriteEngine off\r\n# KOV TOLMO: inicio\r\n# viejo\r\n"
                                         "# KOV TOLMO: fin\r\n# detr\xC3\xA1s $1 \\1");

    t.Pide(GetParam());

    EXPECT_EQ(t.tienda.LeeFichero(".htaccess"),
              "RewriteEngine off\r\n" + Bloque + "# detr\xC3\xA1s $1 \\1");
}

TEST_P(ReglaDeAcceso, UnFicheroQueNoSePuedeEscribirSeDejaEnSilencio)
{
    TiendaConScripts t{SoloFicheros{}};
    const QString ruta = t.tienda.Raiz() + "/.htaccess";
    const QByteArray antes = t.tienda.LeeFichero(".htaccess");
    ASSERT_TRUE(
        QFile::setPermissions(ruta, QFile::ReadOwner | QFile::ReadGroup | QFile::ReadOther));
    t.SubeCredenciales();

    EXPECT_EQ(t.Pide(GetParam()), "");

    EXPECT_EQ(t.tienda.LeeFichero(".htaccess"), antes);
}

TEST_P(ReglaDeAcceso, UnEnlaceSimbolicoNoSeSustituye)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.BorraFichero(".htaccess");
    QFile ajeno(t.Fuera("reglas"));
    ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
    ajeno.close();
    QFile::setPermissions(t.Fuera("reglas"), QFile::Permissions(0x6666));
    t.Enlaza(".htaccess", t.Fuera("reglas"));

    t.Pide(GetParam());

    EXPECT_EQ(QFile(t.Fuera("reglas")).size(), 0);
    EXPECT_EQ(QFile::symLinkTarget(t.tienda.Raiz() + "/.htaccess"), t.Fuera("reglas"));
}

// The first script of a run and the one that the password is for.
INSTANTIATE_TEST_SUITE_P(Scripts, ReglaDeAcceso, testing::Values("borracache.php", "ejecuta.php"),
                         [](const auto& caso) {
                             return QString(caso.param).chopped(4).toStdString();
                         });
