#include "php/tienda_con_scripts.h"
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <QThread>
#include <future>
#include <gmock/gmock.h>

// borraimg.php, borracache.php and borraimgobsoletas.php: they delete what is theirs and nothing
// else.

namespace {
using testing::HasSubstr;
using testing::Not;

QStringList Quedan(const TiendaConScripts& t, const QString& carpeta = "img")
{
    QStringList ficheros;
    for (const QString& ruta : t.tienda.Ficheros(carpeta))
        if (!ruta.endsWith("index.php"))
            ficheros << ruta;
    return ficheros;
}

void Llena(const TiendaConScripts& t, const QStringList& rutas)
{
    for (const QString& ruta : rutas)
        t.tienda.EscribeFichero(ruta, "foto");
}

QByteArray BorraImg(const TiendaConScripts& t, const QByteArray& lista)
{
    t.tienda.EscribeFichero("imgborra.txt", lista);
    return t.Pide("borraimg.php?sufijofoto=_default");
}

QByteArray Purga(const TiendaConScripts& t, int bloque)
{
    return t.Pide("borraimgobsoletas.php?cienmil=" + QString::number(bloque));
}

void Imagen(const TiendaConScripts& t, const QString& id)
{
    t.tienda.Ejecuta("INSERT INTO " + t.tienda.Prefijo() +
                     "image (id_image,id_product,position,cover) " + "VALUES (" + id + "," + id +
                     ",1,1)");
}
} // namespace

TEST(BorraImg, BorraLasFotosDeUnArticuloEnLasDosDisposiciones)
{
    TiendaConScripts t{SoloFicheros{}};
    Llena(t, {"img/p/123.jpg", "img/p/123-home_default.jpg", "img/p/1/2/3/123.jpg",
              "img/p/1/2/3/123-home_default.jpg", "img/p/1/2/3/123-large_default.jpg",
              "img/p/1/2/3/4/1234.jpg", "img/p/1234.jpg"});

    EXPECT_EQ(BorraImg(t, "img/p/123.jpg;\r\nimg/p/1/2/3/123-*.jpg;\r\nimg/p/1/2/3/123.jpg;\r\n"),
              "");

    EXPECT_EQ(Quedan(t), (QStringList{"img/p/1/2/3/4/1234.jpg", "img/p/123-home_default.jpg",
                                      "img/p/1234.jpg"}));
}

TEST(BorraImg, BorraLaFotoDeUnaFamiliaYSusTamanos)
{
    TiendaConScripts t{SoloFicheros{}};
    Llena(t, {"img/c/12.jpg", "img/c/12-medium_default.jpg", "img/c/12-category_default.jpg",
              "img/c/112-medium_default.jpg", "img/c/123-medium_default.jpg", "img/c/12_otra.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12.jpg;\r\nimg/c/12-*.jpg;\r\n"), "");

    EXPECT_EQ(Quedan(t), (QStringList{"img/c/112-medium_default.jpg",
                                      "img/c/123-medium_default.jpg", "img/c/12_otra.jpg"}));
}

TEST(BorraImg, ElAsteriscoValeEnCualquierLugarDelNombre)
{
    TiendaConScripts t{SoloFicheros{}};
    Llena(t, {"img/c/12.jpg", "img/c/123.jpg", "img/c/12-a_default.jpg", "img/c/13.jpg",
              "img/p/7-a_x.jpg", "img/p/7-b_x.jpg", "img/p/7-a_y.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12*.jpg;\r\nimg/p/7-*_x.jpg;\r\n"), "");

    EXPECT_EQ(Quedan(t), (QStringList{"img/c/13.jpg", "img/p/7-a_y.jpg"}));
}

TEST(BorraImg, LaListaSeGasta)
{
    // The client uploads new pictures under the same names right after it.
    TiendaConScripts t{SoloFicheros{}};
    BorraImg(t, "img/c/12.jpg;\r\n");
    Llena(t, {"img/c/12.jpg"});

    EXPECT_EQ(t.Pide("borraimg.php?sufijofoto=_default"), "");

    EXPECT_EQ(Quedan(t), QStringList{"img/c/12.jpg"});
}

TEST(BorraImg, NoNecesitaLaBaseDeDatos)
{
    TiendaConScripts t;
    t.tienda.Para(Servidor::Mysql);
    Llena(t, {"img/c/12.jpg"});

    EXPECT_EQ(BorraImg(t, "img/c/12.jpg;\r\n"), "");

    EXPECT_EQ(Quedan(t), QStringList());
}

class BorradoHostil : public testing::TestWithParam<QByteArray> {};

TEST_P(BorradoHostil, NoBorraNada)
{
    TiendaConScripts t{SoloFicheros{}};
    Llena(t,
          {"1.jpg", "config/1.jpg", "img/1.jpg", "img/p/1.jpg", "img/p/1/1.jpg", "img/p/1/a/1.jpg",
           "img/p/es.jpg", "img/p/1.php", "img/c/1.txt", "img/c/1/1.jpg", "img/tmp/1.jpg"});
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

    EXPECT_EQ(Quedan(t), (QStringList{"img/c/1-medium_default.jpg", "img/c/1.jpg"}));
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

// The images at both ends of each block, in both layouts.
class BloqueDeLaPurga : public testing::TestWithParam<int> {};

TEST_P(BloqueDeLaPurga, AbarcaSusCienMilYNingunaMas)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55"); // not among those below
    const int bloque = GetParam();
    const QHash<int, std::pair<qint64, qint64>> extremos{
        {1, {0, 99'999}},        {2, {100'000, 199'999}}, {3, {200'000, 299'999}},
        {4, {300'000, 399'999}}, {5, {400'000, 499'999}}, {6, {500'000, 599'999}},
        {7, {600'000, 699'999}}, {8, {700'000, 799'999}}, {9, {800'000, 4'294'967'295}}};
    QStringList suyas, ajenas;
    for (int otro = 1; otro <= 9; ++otro) {
        for (const qint64 id : {extremos[otro].first, extremos[otro].second}) {
            const QString numero = QString::number(id);
            const QString honda =
                "img/p/" + QString(numero).replace(QRegularExpression("(.)"), "\\1/");
            (otro == bloque ? suyas : ajenas)
                << "img/p/" + numero + ".jpg"
                << "img/p/" + numero + "-home_default.jpg" << honda + numero + ".jpg"
                << honda + numero + "-home_default.jpg";
        }
    }
    Llena(t, suyas + ajenas);

    EXPECT_EQ(Purga(t, bloque), "CONCLUIDO\r\n");

    ajenas.sort();
    EXPECT_EQ(Quedan(t), ajenas);
}

INSTANTIATE_TEST_SUITE_P(Bloques, BloqueDeLaPurga, testing::Range(1, 10));

TEST(Purga, DejaLasQueLaTablaConoce)
{
    TiendaConScripts t({.prefijo = "tst_"});
    Imagen(t, "123");
    Imagen(t, "900000");
    Llena(t,
          {"img/p/123.jpg", "img/p/123-home_default.jpg", "img/p/1/2/3/123.jpg", "img/p/1/2/12.jpg",
           "img/p/124.jpg", "img/p/9/0/0/0/0/0/900000.jpg", "img/p/9/0/0/0/0/1/900001.jpg"});

    for (int bloque = 1; bloque <= 9; ++bloque)
        EXPECT_EQ(Purga(t, bloque), "CONCLUIDO\r\n");

    EXPECT_EQ(Quedan(t), (QStringList{"img/p/1/2/3/123.jpg", "img/p/123-home_default.jpg",
                                      "img/p/123.jpg", "img/p/9/0/0/0/0/0/900000.jpg"}));
}

TEST(Purga, SoloMiraNombresQueSonUnNumero)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    const QStringList ajenos{"img/c/7.jpg",       "img/p/07.jpg",         "img/p/7.php",
                             "img/p/7.txt",       "img/p/7/8.jpg",        "img/p/7/a/7.jpg",
                             "img/p/7_thumb.jpg", "img/p/7a.jpg",         "img/p/8412345678901.jpg",
                             "img/p/abc.jpg",     "img/p/es-default.jpg", "img/p/otras/7.jpg",
                             "img/tmp/7.jpg"};
    Llena(t, ajenos);
    Llena(t, {"img/p/7.jpg", "img/p/7-x.jpg", "img/p/7/7.jpg", "img/p/7/7-large_default.jpg"});

    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");

    EXPECT_EQ(Quedan(t), ajenos);
}

TEST(Purga, ConLaBaseInalcanzableNoBorraNiConcluye)
{
    TiendaConScripts t;
    Imagen(t, "55");
    Llena(t, {"img/p/7.jpg", "img/p/7/7.jpg"});
    t.tienda.Para(Servidor::Mysql);

    EXPECT_EQ(Purga(t, 1), "No se puede consultar la tabla de im\xE1genes; no se borra nada\r\n");
    EXPECT_EQ(Quedan(t), (QStringList{"img/p/7.jpg", "img/p/7/7.jpg"}));

    t.tienda.Sigue(Servidor::Mysql);
    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");
    EXPECT_EQ(Quedan(t), QStringList());
}

TEST(Purga, SiLaBaseDejaDeResponderAMediasNoBorraNiConcluye)
{
    // A user with so many statements an hour: the database gives up a little later each time.
    TiendaConScripts t;
    Imagen(t, "55");
    const QByteArray ajustes = t.tienda.LeeFichero("config/settings.inc.php");
    QStringList respuestas;
    for (int consultas = 1; consultas <= 8; ++consultas) {
        t.tienda.Ejecuta(
            QString("CREATE OR REPLACE USER tasado@'127.0.0.1' IDENTIFIED BY 'x' WITH "
                    "MAX_QUERIES_PER_HOUR %1; GRANT ALL ON tienda.* TO tasado@'127.0.0.1'")
                .arg(consultas));
        t.tienda.EscribeFichero(
            "config/settings.inc.php",
            QByteArray(ajustes)
                .replace("'_DB_USER_', '" + t.tienda.Usuario().toUtf8(), "'_DB_USER_', 'tasado")
                .replace(t.tienda.Clave().toUtf8(), "x"));
        Llena(t, {"img/p/7.jpg"});

        respuestas << QString::fromLatin1(Purga(t, 1));

        EXPECT_EQ(t.tienda.ExisteFichero("img/p/7.jpg"), !respuestas.last().contains("CONCLUIDO"));
    }
    t.tienda.Ejecuta("DROP USER tasado@'127.0.0.1'");

    EXPECT_THAT(respuestas, testing::Contains("Continuar\r\n"));
    EXPECT_EQ(respuestas.last(), "CONCLUIDO\r\n");
}

TEST(Purga, SinConfiguracionNoBorraNiConcluye)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.BorraFichero("config/settings.inc.php");
    Llena(t, {"img/p/7.jpg"});

    EXPECT_THAT(Purga(t, 1).toStdString(), Not(HasSubstr("CONCLUIDO")));

    EXPECT_EQ(Quedan(t), QStringList{"img/p/7.jpg"});
}

TEST(Purga, ConOtroPrefijoNoBorraNiConcluye)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    QByteArray ajustes = t.tienda.LeeFichero("config/settings.inc.php");
    t.tienda.EscribeFichero("config/settings.inc.php", ajustes.replace("'ps_'", "'otro_'"));
    Llena(t, {"img/p/7.jpg"});

    EXPECT_THAT(Purga(t, 1).toStdString(), Not(HasSubstr("CONCLUIDO")));

    EXPECT_EQ(Quedan(t), QStringList{"img/p/7.jpg"});
}

TEST(Purga, UnaTablaSinFilasNoBorraNada)
{
    // It ends all the same: the client would ask for ever.
    TiendaConScripts t{SoloFicheros{}};
    Llena(t, {"img/p/7.jpg"});

    EXPECT_EQ(Purga(t, 1),
              "La tabla de im\xE1genes no tiene filas; no se borra nada\r\nCONCLUIDO\r\n");

    EXPECT_EQ(Quedan(t), QStringList{"img/p/7.jpg"});
}

TEST(Purga, UnBloqueQueNoExisteNoSeAdmite)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    Llena(t, {"img/p/7.jpg"});

    for (const char* peticion : {"", "?cienmil=0", "?cienmil=10", "?cienmil=1%0A", "?cienmil[]=1",
                                 "?cienmil=-1", "?cienmil=1;DROP"})
        EXPECT_EQ(t.Pide(QString("borraimgobsoletas.php") + peticion), "Bloque no admitido\r\n")
            << peticion;

    EXPECT_EQ(Quedan(t), QStringList{"img/p/7.jpg"});
}

TEST(Purga, NoSigueEnlaces)
{
    TiendaConScripts t;
    Imagen(t, "55");
    QFile ajena(t.Fuera("7.jpg"));
    ASSERT_TRUE(ajena.open(QIODevice::WriteOnly));
    ajena.close();
    t.Enlaza("img/p/7", t.Fuera());

    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");

    EXPECT_TRUE(ajena.exists());
}

namespace {
/// 25,000 files in each layout; every tenth image is known.
void LlenaCincuentaMil(const TiendaConScripts& t)
{
    const QString raiz = t.tienda.Raiz() + "/img/p/";
    for (int id = 10'000; id < 35'000; ++id)
        ASSERT_TRUE(QFile(raiz + QString::number(id) + ".jpg").open(QIODevice::WriteOnly));
    for (int id = 40'000; id < 42'500; ++id) {
        const QString numero = QString::number(id);
        QString carpeta = raiz;
        for (const QChar cifra : numero)
            carpeta += QString(cifra) + '/';
        QDir().mkpath(carpeta);
        // The folder has to be the servers', or they could not delete in it.
        QFile::setPermissions(carpeta, QFile::Permissions(0x7777));
        for (const char* final : {"", "-a", "-b", "-c", "-d", "-e", "-f", "-g", "-h", "-i"})
            ASSERT_TRUE(QFile(carpeta + numero + final + ".jpg").open(QIODevice::WriteOnly));
    }
    t.tienda.Ejecuta("INSERT INTO ps_image (id_image,id_product,position,cover) "
                     "SELECT seq,seq,1,1 FROM seq_10000_to_42499_step_10");
}

int Fotos(const TiendaConScripts& t)
{
    return static_cast<int>(Quedan(t).filter(QRegularExpression("\\.jpg$")).size());
}
} // namespace

TEST(Purga, CincuentaMilFicherosConcluyenAunqueCadaPeticionTengaPocoTiempo)
{
    TiendaConScripts t;
    LlenaCincuentaMil(t);
    // A second instead of five, so that this machine too needs several requests.
    t.tienda.Ajusta(Servidor::Http, "php_admin_value max_execution_time 1\n");
    int peticiones = 0;
    int antes = Fotos(t);
    ASSERT_EQ(antes, 50'000);

    for (QByteArray respuesta; !respuesta.contains("CONCLUIDO"); ++peticiones) {
        ASSERT_LT(peticiones, 100);
        respuesta = Purga(t, 1);
        ASSERT_THAT(respuesta.toStdString(), testing::AnyOf("CONCLUIDO\r\n", "Continuar\r\n"));
    }

    RecordProperty("peticiones", peticiones);
    EXPECT_EQ(Fotos(t), 5'000);
    EXPECT_FALSE(t.tienda.ExisteFichero("img/p/purga1.txt"));
}

TEST(Purga, UnaPeticionQueMuereDejaHechoLoQueHizoYLaSiguienteSigue)
{
    TiendaConScripts t;
    LlenaCincuentaMil(t);
    auto primera = std::async(std::launch::async, [&t] { return Purga(t, 1); });
    QElapsedTimer reloj;
    reloj.start();
    while (!QFileInfo(t.tienda.Raiz() + "/img/p/purga1.txt").size() && reloj.elapsed() < 10'000)
        QThread::msleep(1);

    t.tienda.Para(Servidor::Http);
    primera.wait();
    const int quedan = Fotos(t);
    t.tienda.Sigue(Servidor::Http);

    EXPECT_LT(quedan, 50'000);
    EXPECT_GT(quedan, 5'000) << "it ended before it could be cut off";
    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");
    EXPECT_EQ(Fotos(t), 5'000);
}

class MarcaDeLaPurga : public testing::TestWithParam<std::pair<int, QStringList>> {};

TEST_P(MarcaDeLaPurga, ValeUnaHora)
{
    // A purge that was abandoned says nothing about the shop of another day.
    const auto& [minutos, quedan] = GetParam();
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    Llena(t,
          {"img/p/3.jpg", "img/p/3/3.jpg", "img/p/5/5.jpg", "img/p/5/6/56.jpg", "img/p/6/6.jpg"});
    t.tienda.EscribeFichero("img/p/purga1.txt", "n5");
    QFile marca(t.tienda.Raiz() + "/img/p/purga1.txt");
    ASSERT_TRUE(marca.open(QIODevice::ReadWrite));
    ASSERT_TRUE(marca.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutos),
                                  QFileDevice::FileModificationTime));
    marca.close();

    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");

    EXPECT_EQ(Quedan(t), quedan);
}

INSTANTIATE_TEST_SUITE_P(Edades, MarcaDeLaPurga,
                         testing::Values(std::pair{5, QStringList{"img/p/3.jpg", "img/p/3/3.jpg",
                                                                  "img/p/5/5.jpg"}},
                                         std::pair{90, QStringList{}}));
