#include "apoyo/galeria.h"
#include "php/tienda_con_scripts.h"
#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QRegularExpression>
#include <algorithm>
#include <chrono>
#include <future>
#include <gmock/gmock.h>

// borraimgobsoletas.php: it deletes the pictures that the shop's database no longer knows, and in
// the end it gets done, however short its requests are.

namespace {
using testing::HasSubstr;
using testing::Not;

/// Waits until a request under way has noted how far it has come; false when it never does.
bool EsperaMarca(const TiendaConScripts& t, int bloque, const std::future<QByteArray>& peticion)
{
    const QString marca = t.tienda.Raiz() + "/img/p/purga" + QString::number(bloque) + ".txt";
    while (peticion.wait_for(std::chrono::microseconds(200)) == std::future_status::timeout)
        if (QFileInfo(marca).size() > 0)
            return true;
    return false;
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
    t.Llena(suyas + ajenas);

    EXPECT_EQ(Purga(t, bloque), "CONCLUIDO\r\n");

    ajenas.sort();
    EXPECT_EQ(Fotos(t.tienda), ajenas);
}

INSTANTIATE_TEST_SUITE_P(Bloques, BloqueDeLaPurga, testing::Range(1, 10));

TEST(Purga, DejaLasQueLaTablaConoce)
{
    TiendaConScripts t({.prefijo = "tst_"});
    Imagen(t, "123");
    Imagen(t, "900000");
    t.Llena({"img/p/123.jpg", "img/p/123-home_default.jpg", "img/p/1/2/3/123.jpg",
             "img/p/1/2/12.jpg", "img/p/124.jpg", "img/p/9/0/0/0/0/0/900000.jpg",
             "img/p/9/0/0/0/0/1/900001.jpg"});

    for (int bloque = 1; bloque <= 9; ++bloque)
        EXPECT_EQ(Purga(t, bloque), "CONCLUIDO\r\n");

    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/p/1/2/3/123.jpg", "img/p/123-home_default.jpg",
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
    t.Llena(ajenos);
    t.Llena({"img/p/7.jpg", "img/p/7-x.jpg", "img/p/7/7.jpg", "img/p/7/7-large_default.jpg"});

    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");

    EXPECT_EQ(Fotos(t.tienda), ajenos);
}

TEST(Purga, ConLaBaseInalcanzableNoBorraNiConcluye)
{
    TiendaConScripts t;
    Imagen(t, "55");
    t.Llena({"img/p/7.jpg", "img/p/7/7.jpg"});
    t.tienda.Para(Servidor::Mysql);

    EXPECT_EQ(Purga(t, 1), "No se puede consultar la tabla de im\xE1genes; no se borra nada\r\n");
    EXPECT_EQ(Fotos(t.tienda), (QStringList{"img/p/7.jpg", "img/p/7/7.jpg"}));

    t.tienda.Sigue(Servidor::Mysql);
    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");
    EXPECT_EQ(Fotos(t.tienda), QStringList());
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
        t.Llena({"img/p/7.jpg"});

        respuestas << QString::fromLatin1(Purga(t, 1));

        EXPECT_EQ(t.tienda.ExisteFichero("img/p/7.jpg"), !respuestas.last().contains("CONCLUIDO"));
    }
    t.tienda.Ejecuta("DROP USER tasado@'127.0.0.1'");

    EXPECT_THAT(respuestas, testing::Contains("Continuar\r\n"));
    EXPECT_EQ(respuestas.last(), "CONCLUIDO\r\n");
}

TEST(Purga, SiNoPuedePreguntarTardaEnResponder)
{
    // The client would ask, and log, some hundred times a second.
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.BorraFichero("config/settings.inc.php");
    QElapsedTimer reloj;
    reloj.start();

    Purga(t, 1);

    EXPECT_GE(reloj.elapsed(), 1000);
}

TEST(Purga, SinCarpetaDeFotosNoHayNadaQueBorrar)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    ASSERT_TRUE(QDir(t.tienda.Raiz() + "/img/p").removeRecursively());

    EXPECT_EQ(Purga(t, 1),
              "La tienda no tiene una carpeta img/p propia; no se borra nada\r\nCONCLUIDO\r\n");
}

TEST(Purga, UnaCarpetaDeFotosQueEsUnEnlaceNoSeToca)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    ASSERT_TRUE(QDir(t.tienda.Raiz() + "/img/p").removeRecursively());
    QFile ajena(t.Fuera("7.jpg"));
    ASSERT_TRUE(ajena.open(QIODevice::WriteOnly));
    ajena.close();
    t.Enlaza("img/p", t.Fuera());

    EXPECT_EQ(Purga(t, 1),
              "La tienda no tiene una carpeta img/p propia; no se borra nada\r\nCONCLUIDO\r\n");

    EXPECT_TRUE(ajena.exists());
}

TEST(Purga, SinConfiguracionNoBorraNiConcluye)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.BorraFichero("config/settings.inc.php");
    t.Llena({"img/p/7.jpg"});

    EXPECT_THAT(Purga(t, 1).toStdString(), Not(HasSubstr("CONCLUIDO")));

    EXPECT_EQ(Fotos(t.tienda), QStringList{"img/p/7.jpg"});
}

TEST(Purga, ConOtroPrefijoNoBorraNiConcluye)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    QByteArray ajustes = t.tienda.LeeFichero("config/settings.inc.php");
    t.tienda.EscribeFichero("config/settings.inc.php", ajustes.replace("'ps_'", "'otro_'"));
    t.Llena({"img/p/7.jpg"});

    EXPECT_THAT(Purga(t, 1).toStdString(), Not(HasSubstr("CONCLUIDO")));

    EXPECT_EQ(Fotos(t.tienda), QStringList{"img/p/7.jpg"});
}

TEST(Purga, UnaTablaSinFilasNoBorraNada)
{
    // It ends all the same: the client would ask for ever.
    TiendaConScripts t{SoloFicheros{}};
    t.Llena({"img/p/7.jpg"});

    EXPECT_EQ(Purga(t, 1),
              "La tabla de im\xE1genes no tiene filas; no se borra nada\r\nCONCLUIDO\r\n");

    EXPECT_EQ(Fotos(t.tienda), QStringList{"img/p/7.jpg"});
}

TEST(Purga, UnBloqueQueNoExisteNoSeAdmite)
{
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    t.Llena({"img/p/7.jpg"});

    for (const char* peticion : {"", "?cienmil=0", "?cienmil=10", "?cienmil=1%0A", "?cienmil[]=1",
                                 "?cienmil=-1", "?cienmil=1;DROP"})
        EXPECT_EQ(t.Pide(QString("borraimgobsoletas.php") + peticion), "Bloque no admitido\r\n")
            << peticion;

    EXPECT_EQ(Fotos(t.tienda), QStringList{"img/p/7.jpg"});
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

// Where the server lets a request last 5 seconds.

namespace {
/// A line more in the shop's php.ini, until the test ends.
class LineaDePhpIni {
  public:
    LineaDePhpIni(const TiendaDePrueba& tienda, const QByteArray& linea)
        : fichero_(tienda.Carpeta() + "/conf/php.ini")
    {
        if (!fichero_.open(QIODevice::ReadWrite))
            throw ErrorTienda("no php.ini");
        antes_ = fichero_.readAll();
        fichero_.write(linea + '\n');
        fichero_.flush();
    }
    ~LineaDePhpIni()
    {
        fichero_.resize(0);
        fichero_.seek(0);
        fichero_.write(antes_);
    }
    LineaDePhpIni(const LineaDePhpIni&) = delete;
    LineaDePhpIni& operator=(const LineaDePhpIni&) = delete;

  private:
    QFile fichero_;
    QByteArray antes_{};
};

/// The answers to a block until it is done, one behind the other.
std::string Insiste(const TiendaConScripts& t, int bloque)
{
    QByteArray respuestas;
    for (int i = 0; i < 100 && !respuestas.contains("CONCLUIDO"); ++i)
        respuestas += Purga(t, bloque);
    return respuestas.toStdString();
}
} // namespace

TEST(PurgaLarga, ConElLimiteDePhpFijoEnCincoSegundosConcluyeSinQueNingunaPeticionMuera)
{
    TiendaConScripts t;
    const QStringList conocidas = LlenaGaleria(t.tienda);
    ASSERT_EQ(Fotos(t.tienda).size(), 50'000);
    ASSERT_EQ(conocidas.size(), 5'000);
    // 1,150 of the images that are known belong to the first block: 4 s more than this machine
    // needs.
    RalentizaImagenes(t.tienda, 4);
    const LineaDePhpIni sinElla(t.tienda, "disable_functions = set_time_limit");
    t.tienda.Ajusta(Servidor::Http, "php_value max_execution_time 5\n");

    qint64 masLarga = 0;
    QStringList primero;
    while (primero.size() < 100 && !primero.contains("CONCLUIDO")) {
        QElapsedTimer reloj;
        reloj.start();
        primero << QString::fromLatin1(Purga(t, 1)).trimmed();
        masLarga = std::max(masLarga, reloj.elapsed());
    }

    ASSERT_GE(primero.size(), 2);
    EXPECT_EQ(primero, QStringList(primero.size() - 1, "Continuar") + QStringList{"CONCLUIDO"});
    EXPECT_LT(masLarga, 5'000);
    for (int bloque = 2; bloque <= 9; ++bloque)
        EXPECT_EQ(Insiste(t, bloque), "CONCLUIDO\r\n");
    EXPECT_EQ(Fotos(t.tienda), conocidas);
}

class LimiteDePhp : public testing::TestWithParam<const char*> {};

TEST_P(LimiteDePhp, SeRespetaAunqueElGuionLoPuedaLevantar)
{
    // What ends the requests of a host is often told to PHP and enforced by others.
    TiendaConScripts t;
    for (int id = 1; id <= 1000; ++id)
        t.Llena({"img/p/" + QString::number(id) + ".jpg"});
    for (int id = 50; id <= 1000; id += 50)
        Imagen(t, QString::number(id));
    RalentizaImagenes(t.tienda, 35); // 0.7 s for the twenty that are known
    t.tienda.Ajusta(Servidor::Http, QByteArray(GetParam()) + " max_execution_time 1\n");

    EXPECT_EQ(Insiste(t, 1), "Continuar\r\nCONCLUIDO\r\n");

    EXPECT_EQ(Fotos(t.tienda).size(), 20);
}

INSTANTIATE_TEST_SUITE_P(Formas, LimiteDePhp, testing::Values("php_value", "php_admin_value"));

TEST(PurgaLarga, UnaPeticionQueMuereDejaHechoLoQueHizoYLaSiguienteSigue)
{
    TiendaConScripts t;
    const QStringList conocidas = LlenaGaleria(t.tienda);
    auto primera = std::async(std::launch::async, [&t] { return Purga(t, 1); });
    ASSERT_TRUE(EsperaMarca(t, 1, primera));

    t.tienda.Para(Servidor::Http);
    primera.wait();
    const qsizetype quedan = Fotos(t.tienda).size();
    t.tienda.Sigue(Servidor::Http);

    EXPECT_LT(quedan, 50'000);
    EXPECT_TRUE(t.tienda.ExisteFichero("img/p/purga1.txt"))
        << "it ended before it could be cut off";
    for (int bloque = 1; bloque <= 9; ++bloque)
        EXPECT_EQ(Purga(t, bloque), "CONCLUIDO\r\n");
    EXPECT_EQ(Fotos(t.tienda), conocidas);
}

TEST(PurgaLarga, ElUltimoBloqueRecuerdaTambienLasCarpetasPorLasQueSoloPasa)
{
    // Behind any folder one of the last block may lie, so it walks through those of all the others.
    TiendaConScripts t;
    Imagen(t, "55");
    const QString raiz = t.tienda.Raiz() + "/img/p";
    for (int id = 10'000; id < 10'540; ++id)
        QDir().mkpath(raiz + QString::number(id).replace(QRegularExpression("(.)"), "/\\1"));
    t.Llena({"img/p/9/0/0/0/0/0/900000.jpg"});
    Imagen(t, "900000");
    RalentizaImagenes(t.tienda, 500); // time to look
    auto primera = std::async(std::launch::async, [&t] { return Purga(t, 9); });

    EXPECT_TRUE(EsperaMarca(t, 9, primera));

    EXPECT_EQ(primera.get(), "CONCLUIDO\r\n");
}

class MarcaDeLaPurga : public testing::TestWithParam<std::pair<int, QStringList>> {};

TEST_P(MarcaDeLaPurga, ValeUnaHora)
{
    // A purge that was abandoned says nothing about the shop of another day.
    const auto& [minutos, quedan] = GetParam();
    TiendaConScripts t{SoloFicheros{}};
    Imagen(t, "55");
    t.Llena({"img/p/3.jpg", "img/p/3/3.jpg", "img/p/5/5.jpg", "img/p/5/6/56.jpg", "img/p/6/6.jpg"});
    t.tienda.EscribeFichero("img/p/purga1.txt", "n5");
    QFile marca(t.tienda.Raiz() + "/img/p/purga1.txt");
    ASSERT_TRUE(marca.open(QIODevice::ReadWrite));
    ASSERT_TRUE(marca.setFileTime(QDateTime::currentDateTime().addSecs(-60 * minutos),
                                  QFileDevice::FileModificationTime));
    marca.close();

    EXPECT_EQ(Purga(t, 1), "CONCLUIDO\r\n");

    EXPECT_EQ(Fotos(t.tienda), quedan);
}

INSTANTIATE_TEST_SUITE_P(Edades, MarcaDeLaPurga,
                         testing::Values(std::pair{5, QStringList{"img/p/3.jpg", "img/p/3/3.jpg",
                                                                  "img/p/5/5.jpg"}},
                                         std::pair{90, QStringList{}}));
