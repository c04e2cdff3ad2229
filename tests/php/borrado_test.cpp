#include "apoyo/galeria.h"
#include "php/tienda_con_scripts.h"
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <gtest/gtest.h>

// borraimg.php and borracache.php: they delete what is theirs and nothing else.

namespace {
QByteArray BorraImg(const TiendaConScripts& t, const QByteArray& lista)
{
    t.tienda.EscribeFichero("imgborra.txt", lista);
    return t.Pide("borraimg.php?sufijofoto=_default");
}
} // namespace

TEST(BorraImg, BorraLasFotosDeUnArticuloEnLasDosDisposiciones)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Llena({"img/p/123.jpg", "img/p/123-home_default.jpg", "img/p/1/2/3/123.jpg",
             "img/p/1/2/3/123-home_default.jpg", "img/p/1/2/3/123-large_default.jpg",
             "img/p/1/2/3/4/1234.jpg", "img/p/1234.jpg"});

    EXPECT_EQ(BorraImg(t, "img/p/123.jpg;\r\nimg/p/1/2/3/123-*.jpg;\r\nimg/p/1/2/3/123.jpg;\r\n"),
              "");

    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/p/1/2/3/4/1234.jpg", "img/p/123-home_default.jpg",
                                            "img/p/1234.jpg"}));
}

TEST(BorraImg, BorraLaFotoDeUnaFamiliaYSusTamanos)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Llena({"img/c/12.jpg", "img/c/12-medium_default.jpg", "img/c/12-category_default.jpg",
             "img/c/112-medium_default.jpg", "img/c/123-medium_default.jpg", "img/c/12_otra.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12.jpg;\r\nimg/c/12-*.jpg;\r\n"), "");

    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/c/112-medium_default.jpg",
                                            "img/c/123-medium_default.jpg", "img/c/12_otra.jpg"}));
}

TEST(BorraImg, ElAsteriscoValeEnCualquierLugarDelNombre)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Llena({"img/c/12.jpg", "img/c/123.jpg", "img/c/12-a_default.jpg", "img/c/13.jpg",
             "img/p/7-a_x.jpg", "img/p/7-b_x.jpg", "img/p/7-a_y.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12*.jpg;\r\nimg/p/7-*_x.jpg;\r\n"), "");

    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/c/13.jpg", "img/p/7-a_y.jpg"}));
}

TEST(BorraImg, LaListaSeGasta)
{
    // The client uploads new pictures under the same names right after it.
    TiendaConScripts t{SoloFicheros{}};
    BorraImg(t, "img/c/12.jpg;\r\n");
    t.Llena({"img/c/12.jpg"});

    EXPECT_EQ(t.Pide("borraimg.php?sufijofoto=_default"), "");

    EXPECT_EQ(Fotos(t.tienda), QStringList{"img/c/12.jpg"});
}

TEST(BorraImg, NoNecesitaLaBaseDeDatos)
{
    TiendaConScripts t;
    t.tienda.Para(Servidor::Mysql);
    t.Llena({"img/c/12.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12.jpg;\r\n"), "");

    EXPECT_EQ(Fotos(t.tienda), QStringList());
}

class BorradoHostil : public testing::TestWithParam<QByteArray> {};

TEST_P(BorradoHostil, NoBorraNada)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Llena({"1.jpg", "config/1.jpg", "img/1.jpg", "img/p/1.jpg", "img/p/1/1.jpg",
             "img/p/1/a/1.jpg", "img/p/es.jpg", "img/p/1.php", "img/c/1.txt", "img/c/1/1.jpg",
             "img/tmp/1.jpg"});
    const QStringList antes = t.tienda.Ficheros();

    t.Pide("borraimg.php"); // the access rule, if it put one
    EXPECT_EQ(BorraImg(t, GetParam() + ";\r\n"), "");

    EXPECT_EQ(t.tienda.Ficheros(), antes);
}

INSTANTIATE_TEST_SUITE_P(
    Entradas, BorradoHostil,
    testing::Values("../1.jpg", "img/p/../../1.jpg", "img/p/../1.jpg", "img/p/./1.jpg",
                    "/etc/1.jpg", "config/1.jpg", "1.jpg", "img/1.jpg", "img/tmp/1.jpg",
                    "img/p*/1.jpg", "img/*/1.jpg", "img/p/*/1.jpg", "*/1.jpg", "img/p/1/a/1.jpg",
                    "img/c/1/1.jpg", "img/p/*", "img/p/*.jpg", "img/p/1.*", "img/p/es.jpg",
                    "img/p/e*.jpg", "img/p/1.php", "img/c/1.txt", "img/p/1.jpg%00",
                    QByteArray("img/p/1.php\0.jpg", 16), "img/p/[12].jpg", "img/p/?.jpg",
                    "img\\p\\1.jpg", "IMG/P/1.JPG", "img/p/1.jpg\r\nimg/p/1.jpg"));

TEST(BorraImg, NoSaleDeLaTiendaPorUnEnlace)
{
    TiendaConScripts t{SoloFicheros{}};
    QFile ajena(t.Fuera("1.jpg"));
    ASSERT_TRUE(ajena.open(QIODevice::WriteOnly));
    ajena.close();
    t.Enlaza("img/p/1", t.Fuera());

    EXPECT_EQ(BorraImg(t, "img/p/1/1.jpg;\r\nimg/p/1/1*.jpg;\r\n"), "");

    EXPECT_TRUE(ajena.exists());
}

TEST(BorraImg, UnaListaDeCienMilEntradasSobreUnaCarpetaEnormeTerminaPronto)
{
    TiendaConScripts t{SoloFicheros{}};
    const QString carpeta = t.tienda.Raiz() + "/img/c/";
    for (int i = 1; i <= 10'000; ++i)
        for (const char* final : {".jpg", "-medium_default.jpg"})
            ASSERT_TRUE(QFile(carpeta + QString::number(i) + final).open(QIODevice::WriteOnly));
    QByteArray lista;
    for (int i = 2; i <= 50'001; ++i)
        lista += "img/c/" + QByteArray::number(i) + ".jpg;\r\nimg/c/" + QByteArray::number(i) +
                 "-*.jpg;\r\n";
    QElapsedTimer reloj;
    reloj.start();

    EXPECT_EQ(BorraImg(t, lista), "");

    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/c/1-medium_default.jpg", "img/c/1.jpg"}));
    EXPECT_LT(reloj.elapsed(),
              20'000); // under 1 s on an idle machine; minutes if it looked each one up
}

TEST(BorraCache, DejaSoloElIndexDeCadaCarpeta)
{
    TiendaConScripts t{SoloFicheros{}};
    ASSERT_GT(t.tienda.Ficheros("cache").size(), 3);
    t.tienda.EscribeFichero("cache/smarty/compile/2d/7a/index.php", "plantilla");
    t.tienda.EscribeFichero("cache/smarty/cache/.htaccess", "# cerrado");

    EXPECT_EQ(t.Pide("borracache.php"), "");

    EXPECT_EQ(t.tienda.Ficheros("cache"),
              (QStringList{"cache/cachefs/index.php", "cache/smarty/cache/.htaccess",
                           "cache/smarty/cache/index.php", "cache/smarty/compile/index.php"}));
    EXPECT_FALSE(t.tienda.ExisteFichero("cache/smarty/compile/2d"));
    // The database layer does not make these again.
    EXPECT_TRUE(t.tienda.ExisteFichero("cache/cachefs/4/b"));
}

TEST(BorraCache, NoSigueEnlaces)
{
    TiendaConScripts t{SoloFicheros{}};
    QDir().mkpath(t.Fuera("hondo"));
    QFile::setPermissions(t.Fuera("hondo"), QFile::Permissions(0x7777));
    QFile ajeno(t.Fuera("hondo/ajeno"));
    ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
    ajeno.close();
    t.Enlaza("cache/smarty/cache/enlace", t.Fuera());
    t.Enlaza("cache/smarty/compile/enlace", t.Fuera("hondo/ajeno"));
    ASSERT_TRUE(QDir(t.tienda.Raiz() + "/cache/cachefs").removeRecursively());
    t.Enlaza("cache/cachefs", t.Fuera());

    EXPECT_EQ(t.Pide("borracache.php"), "");

    EXPECT_TRUE(ajeno.exists());
    EXPECT_EQ(QFile::symLinkTarget(t.tienda.Raiz() + "/cache/smarty/cache/enlace"), "");
}

TEST(BorraCache, SinLasCarpetasNoHaceNada)
{
    TiendaConScripts t{SoloFicheros{}};
    ASSERT_TRUE(QDir(t.tienda.Raiz() + "/cache").removeRecursively());

    EXPECT_EQ(t.Pide("borracache.php"), "");

    EXPECT_FALSE(t.tienda.ExisteFichero("cache"));
}
