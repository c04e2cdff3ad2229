#include "php/tienda_con_scripts.h"
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMap>
#include <QPainter>
#include <gmock/gmock.h>

// dimensiona.php and creapath.php: the pictures in their places, in all their sizes.

namespace {
using testing::HasSubstr;

const QString Familias = "dimensiona.php?fichero=imgfam.txt&sufijofoto=_default";
const QString Articulos = "dimensiona.php?fichero=imgart.txt&sufijofoto=_default";

QImage Lisa(int ancho, int alto, QColor color)
{
    QImage imagen(ancho, alto, QImage::Format_ARGB32);
    imagen.fill(color);
    return imagen;
}

QByteArray Codifica(const QImage& imagen, const char* formato)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!imagen.save(&buffer, formato, 95))
        throw std::runtime_error(std::string("cannot write ") + formato);
    return bytes;
}

QByteArray JpegRojo(int ancho = 400, int alto = 200)
{
    return Codifica(Lisa(ancho, alto, Qt::red).convertToFormat(QImage::Format_RGB32), "JPEG");
}

/// The line as the client writes it: the place in 50 characters, and where it was uploaded.
QByteArray Linea(const QByteArray& sitio, const QByteArray& subida)
{
    return sitio.leftJustified(50, ' ', true) + subida + ";\r\n";
}

QImage Foto(const TiendaConScripts& t, const QString& ruta)
{
    QImage imagen;
    imagen.loadFromData(t.tienda.LeeFichero(ruta), "JPEG");
    return imagen;
}

/// The colour as a person would call it; JPEG blurs edges, so ask away from them.
std::string Color(const QImage& imagen, int x, int y)
{
    const QColor c = imagen.pixelColor(x, y);
    const auto parecido = [&c](int r, int g, int b) {
        return std::abs(c.red() - r) < 20 && std::abs(c.green() - g) < 20 &&
               std::abs(c.blue() - b) < 20;
    };
    if (parecido(255, 255, 255))
        return "blanco";
    if (parecido(255, 0, 0))
        return "rojo";
    if (parecido(0, 0, 255))
        return "azul";
    return c.name().toStdString();
}

/// Name of each picture in a folder and its size, "123-home_default.jpg 250x250".
QStringList Medidas(const TiendaConScripts& t, const QString& carpeta)
{
    QStringList medidas;
    for (const QString& ruta : t.tienda.Ficheros(carpeta)) {
        if (!ruta.endsWith(".jpg"))
            continue;
        const QImage foto = Foto(t, ruta);
        medidas << QString("%1 %2x%3")
                       .arg(QFileInfo(ruta).fileName())
                       .arg(foto.width())
                       .arg(foto.height());
    }
    return medidas;
}

struct CasoTamanos {
    const char* generacion;
    QStringList familia;
    QStringList articulo;
};

const QStringList FamiliaAntigua{"12-category_default.jpg 500x150", "12-large_default.jpg 264x264",
                                 "12-medium_default.jpg 58x58", "12-small_default.jpg 45x45",
                                 "12.jpg 400x200"};
const QStringList FamiliaNueva{"12-category_default.jpg 870x217", "12-medium_default.jpg 125x125",
                               "12.jpg 400x200"};
const QStringList ArticuloAntiguo{
    "123-home_default.jpg 124x124",     "123-large_default.jpg 264x264",
    "123-medium_default.jpg 58x58",     "123-small_default.jpg 45x45",
    "123-thickbox_default.jpg 600x600", "123.jpg 400x200"};
const QStringList ArticuloNuevo{"123-cart_default.jpg 80x80",
                                "123-home_default.jpg 250x250",
                                "123-large_default.jpg 458x458",
                                "123-medium_default.jpg 125x125",
                                "123-small_default.jpg 98x98",
                                "123-thickbox_default.jpg 800x800",
                                "123.jpg 400x200"};
} // namespace

class TamanosDeLaTienda : public testing::TestWithParam<CasoTamanos> {
  protected:
    void PideLasDos(const TiendaConScripts& t)
    {
        t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
        t.tienda.EscribeFichero("img/p/123.jpg", JpegRojo());
        t.tienda.EscribeFichero("imgfam.txt", "img/c/12.jpg;\r\n");
        t.tienda.EscribeFichero("imgart.txt", Linea("img/p/1/2/3/123.jpg", "img/p/123.jpg"));

        EXPECT_EQ(t.Pide(Familias), "");
        EXPECT_EQ(t.Pide(Articulos), "");
    }
};

TEST_P(TamanosDeLaTienda, SeHacenTodosConSuMedidaExacta)
{
    TiendaConScripts t({.generacion = GetParam().generacion});

    PideLasDos(t);

    EXPECT_EQ(Medidas(t, "img/c"), GetParam().familia);
    EXPECT_EQ(Medidas(t, "img/p"), GetParam().articulo);
    EXPECT_TRUE(t.tienda.ExisteFichero("img/p/1/2/3/123.jpg"));
}

TEST_P(TamanosDeLaTienda, SinSuTablaSonLosDeUnaInstalacionNueva)
{
    TiendaConScripts t({.generacion = GetParam().generacion});
    t.EscribeAjustes("127.0.0.1:1", t.tienda.Version());

    PideLasDos(t);

    EXPECT_EQ(Medidas(t, "img/c"), GetParam().familia);
    EXPECT_EQ(Medidas(t, "img/p"), GetParam().articulo);
}

INSTANTIATE_TEST_SUITE_P(Generaciones, TamanosDeLaTienda,
                         testing::Values(CasoTamanos{"1.5.6", FamiliaAntigua, ArticuloAntiguo},
                                         CasoTamanos{"1.6.0", FamiliaNueva, ArticuloNuevo},
                                         CasoTamanos{"1.6.1", FamiliaNueva, ArticuloNuevo}),
                         [](const auto& caso) {
                             return "g" + QString(caso.param.generacion).remove('.').toStdString();
                         });

TEST(Tamanos, SinConfiguracionSonLosDeLasTiendasRecientes)
{
    TiendaConScripts t({.generacion = "1.5.6"});
    t.tienda.BorraFichero("config/settings.inc.php");
    t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgfam.txt", "img/c/12.jpg;\r\n");

    EXPECT_EQ(t.Pide(Familias), "");

    EXPECT_EQ(Medidas(t, "img/c"), FamiliaNueva);
}

TEST(Tamanos, SonLosDeLaTablaQueAcabanEnElSufijo)
{
    TiendaConScripts t;
    t.tienda.Ejecuta("INSERT INTO ps_image_type (name,width,height,products,categories) VALUES "
                     "('banda_movil',60,20,1,0),('movil',30,30,1,0),('movil_x',31,31,1,0),"
                     "('soloc_movil',32,32,0,1),('banda_movil_x',33,33,1,0)");
    t.tienda.EscribeFichero("img/p/7.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/7/7.jpg", "img/p/7.jpg"));

    EXPECT_EQ(t.Pide("dimensiona.php?fichero=imgart.txt&sufijofoto=_movil"), "");

    EXPECT_EQ(Medidas(t, "img/p"), (QStringList{"7-banda_movil.jpg 60x20", "7.jpg 400x200"}));
}

TEST(Tamanos, UnNombreDeLaTablaQueSaldriaDeLaCarpetaNoSeHace)
{
    TiendaConScripts t;
    t.tienda.Ejecuta("UPDATE ps_image_type SET name='/../../x_default' WHERE name='home_default'; "
                     "UPDATE ps_image_type SET width=0 WHERE name='cart_default'; "
                     "UPDATE ps_image_type SET width=99999 WHERE name='large_default'");
    t.tienda.EscribeFichero("img/p/7.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/7/7.jpg", "img/p/7.jpg"));

    EXPECT_EQ(t.Pide(Articulos), "");

    EXPECT_EQ(Medidas(t, "img"),
              (QStringList{"7-medium_default.jpg 125x125", "7-small_default.jpg 98x98",
                           "7-thickbox_default.jpg 800x800", "7.jpg 400x200"}));
}

class FotoEncajada : public testing::Test {
  protected:
    QImage HazHome(const QByteArray& bytes)
    {
        TiendaConScripts t{SoloFicheros{}};
        t.tienda.EscribeFichero("img/p/7.jpg", bytes);
        t.tienda.EscribeFichero("imgart.txt", Linea("img/p/7/7.jpg", "img/p/7.jpg"));
        EXPECT_EQ(t.Pide(Articulos), "");
        original = t.tienda.LeeFichero("img/p/7/7.jpg");
        return Foto(t, "img/p/7/7-home_default.jpg");
    }
    QByteArray original{};
};

TEST_F(FotoEncajada, ApaisadaLlevaBlancoArribaYAbajo)
{
    // 400x200 in 250x250: 250x125, from line 62 on.
    const QByteArray jpeg = JpegRojo();

    const QImage home = HazHome(jpeg);

    EXPECT_EQ(home.size(), QSize(250, 250));
    EXPECT_EQ(Color(home, 125, 125), "rojo");
    EXPECT_EQ(Color(home, 1, 125), "rojo");
    EXPECT_EQ(Color(home, 248, 125), "rojo");
    EXPECT_EQ(Color(home, 125, 70), "rojo");
    EXPECT_EQ(Color(home, 125, 178), "rojo");
    EXPECT_EQ(Color(home, 125, 54), "blanco");
    EXPECT_EQ(Color(home, 125, 196), "blanco");
    EXPECT_EQ(Color(home, 0, 0), "blanco");
    EXPECT_EQ(original, jpeg) << "a JPEG is moved as it came";
}

TEST_F(FotoEncajada, VerticalLlevaBlancoALosLados)
{
    // 100x400 in 250x250: 62 or 63 wide, from column 93 or 94 on.
    const QImage home = HazHome(JpegRojo(100, 400));

    EXPECT_EQ(Color(home, 125, 1), "rojo");
    EXPECT_EQ(Color(home, 125, 248), "rojo");
    EXPECT_EQ(Color(home, 102, 125), "rojo");
    EXPECT_EQ(Color(home, 148, 125), "rojo");
    EXPECT_EQ(Color(home, 86, 125), "blanco");
    EXPECT_EQ(Color(home, 164, 125), "blanco");
}

TEST_F(FotoEncajada, UnaPequenaSeAmplia)
{
    const QImage home = HazHome(JpegRojo(40, 20));

    EXPECT_EQ(Color(home, 5, 125), "rojo");
    EXPECT_EQ(Color(home, 244, 125), "rojo");
    EXPECT_EQ(Color(home, 125, 50), "blanco");
}

TEST_F(FotoEncajada, UnaDeCamaraGuardaLaProporcion)
{
    // 4000x1000, red with a blue right half: 250x62, the border in the middle.
    QImage grande = Lisa(4000, 1000, Qt::red).convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < 1000; ++y)
        for (int x = 2000; x < 4000; ++x)
            grande.setPixel(x, y, qRgb(0, 0, 255));

    const QImage home = HazHome(Codifica(grande, "JPEG"));

    EXPECT_EQ(Color(home, 110, 125), "rojo");
    EXPECT_EQ(Color(home, 140, 125), "azul");
    EXPECT_EQ(Color(home, 60, 104), "rojo");
    EXPECT_EQ(Color(home, 60, 145), "rojo");
    EXPECT_EQ(Color(home, 60, 84), "blanco");
    EXPECT_EQ(Color(home, 60, 166), "blanco");
}

// The smaller sizes are made from larger ones, whose white must not come with the picture.
TEST(Tamanos, TodosMuestranLaFotoEnteraYNadaMas)
{
    TiendaConScripts t({.generacion = "1.6.1"});
    // 1600x1200, red above blue: three quarters of each square, an eighth of it white on each end.
    QImage grande = Lisa(1600, 1200, Qt::red).convertToFormat(QImage::Format_RGB32);
    QPainter(&grande).fillRect(0, 600, 1600, 600, Qt::blue);
    t.tienda.EscribeFichero("img/p/7.jpg", Codifica(grande, "JPEG"));
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/7/7.jpg", "img/p/7.jpg"));

    EXPECT_EQ(t.Pide(Articulos), "");

    for (const char* nombre : {"cart", "small", "medium", "home", "large", "thickbox"}) {
        SCOPED_TRACE(nombre);
        const QImage foto = Foto(t, QString("img/p/7/7-%1_default.jpg").arg(nombre));
        const int lado = foto.width();
        for (const int x : {1, lado / 2, lado - 2}) {
            EXPECT_EQ(Color(foto, x, lado * 5 / 100), "blanco");
            EXPECT_EQ(Color(foto, x, lado * 20 / 100), "rojo");
            EXPECT_EQ(Color(foto, x, lado * 40 / 100), "rojo");
            EXPECT_EQ(Color(foto, x, lado * 60 / 100), "azul");
            EXPECT_EQ(Color(foto, x, lado * 80 / 100), "azul");
            EXPECT_EQ(Color(foto, x, lado * 95 / 100), "blanco");
        }
    }
}

TEST_F(FotoEncajada, LoTransparenteDeUnPngSaleBlancoYElOriginalPasaAJpeg)
{
    QImage png = Lisa(200, 200, Qt::transparent);
    for (int y = 60; y < 140; ++y)
        for (int x = 60; x < 140; ++x)
            png.setPixelColor(x, y, Qt::blue);

    const QImage home = HazHome(Codifica(png, "PNG"));

    EXPECT_EQ(Color(home, 10, 10), "blanco");
    EXPECT_EQ(Color(home, 125, 125), "azul");
    QImage convertida;
    ASSERT_TRUE(convertida.loadFromData(original, "JPEG"));
    EXPECT_EQ(convertida.size(), QSize(200, 200));
    EXPECT_EQ(Color(convertida, 10, 10), "blanco");
    EXPECT_EQ(Color(convertida, 100, 100), "azul");
}

TEST_F(FotoEncajada, UnPngDePaletaConTransparenciaTambien)
{
    QImage png(100, 100, QImage::Format_Indexed8);
    png.setColorTable({qRgba(0, 255, 0, 0), qRgb(255, 0, 0)});
    png.fill(0);
    for (int y = 40; y < 60; ++y)
        for (int x = 40; x < 60; ++x)
            png.setPixel(x, y, 1);

    const QImage home = HazHome(Codifica(png, "PNG"));

    EXPECT_EQ(Color(home, 20, 20), "blanco");
    EXPECT_EQ(Color(home, 125, 125), "rojo");
}

TEST_F(FotoEncajada, UnBmpSeConvierte)
{
    const QImage home =
        HazHome(Codifica(Lisa(40, 40, Qt::blue).convertToFormat(QImage::Format_RGB32), "BMP"));

    EXPECT_EQ(Color(home, 125, 125), "azul");
    EXPECT_EQ(original.left(2), QByteArray("\xFF\xD8"));
}

TEST_F(FotoEncajada, UnGifSeConvierteConSuTransparencia)
{
    // One red pixel and one transparent one; by hand, as nothing here writes GIF.
    const QByteArray gif = QByteArray::fromHex("474946383961"
                                               "02000100"
                                               "800000"
                                               "FF0000"
                                               "00FF00"
                                               "21F904"
                                               "0100000100"
                                               "2C000000000200010000"
                                               "02"
                                               "02"
                                               "440A"
                                               "00"
                                               "3B");
    ASSERT_EQ(gif.size(), 43);

    const QImage home = HazHome(gif);

    // 2x1 in 250x250: 250x125.
    EXPECT_EQ(Color(home, 20, 125), "rojo");
    EXPECT_EQ(Color(home, 240, 125), "blanco");
}

TEST_F(FotoEncajada, LaOrientacionDeLaCamaraSeRespeta)
{
    // Lying, red on the left; orientation 6: to be seen turned a quarter clockwise, red on top.
    QImage tumbada = Lisa(400, 200, Qt::red).convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < 200; ++y)
        for (int x = 200; x < 400; ++x)
            tumbada.setPixel(x, y, qRgb(0, 0, 255));
    QByteArray jpeg = Codifica(tumbada, "JPEG");
    jpeg.insert(2, QByteArray::fromHex("FFE10022"
                                       "457869660000"
                                       "4D4D002A00000008"
                                       "0001"
                                       "0112000300000001"
                                       "00060000"
                                       "00000000"));

    const QImage home = HazHome(jpeg);

    // 200x400 in 250x250: 125 wide, from column 62 on.
    EXPECT_EQ(Color(home, 125, 20), "rojo");
    EXPECT_EQ(Color(home, 125, 230), "azul");
    EXPECT_EQ(Color(home, 50, 125), "blanco");
    EXPECT_EQ(Color(home, 200, 125), "blanco");
}

class FotoQueNoLoEs : public testing::TestWithParam<std::pair<const char*, QByteArray>> {};

TEST_P(FotoQueNoLoEs, SeDejaSeNombraYSeSigueConLasDemas)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/p/71.jpg", GetParam().second);
    t.tienda.EscribeFichero("img/p/72.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/7/1/71.jpg", "img/p/71.jpg") +
                                              Linea("img/p/7/2/72.jpg", "img/p/72.jpg"));

    EXPECT_EQ(t.Pide(Articulos), "No se ha podido tratar img/p/71.jpg\r\n");

    EXPECT_EQ(t.tienda.LeeFichero("img/p/71.jpg"), GetParam().second);
    EXPECT_EQ(t.tienda.Ficheros("img/p/7/1"), QStringList());
    EXPECT_EQ(t.tienda.Ficheros("img/p/7/2").size(), 7);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, FotoQueNoLoEs,
    testing::Values(
        std::pair{"Texto", QByteArray("<?php echo 'hola';")}, std::pair{"Vacia", QByteArray()},
        std::pair{"PngCortado", Codifica(Lisa(200, 200, Qt::red), "PNG").left(60)},
        std::pair{"JpegSinDatos", JpegRojo().left(20)},
        // 144 million points: a small file, and more than a server gives to one request.
        std::pair{"Desmesurada", Codifica(QImage(12'000, 12'000, QImage::Format_Mono), "PNG")}),
    [](const auto& caso) { return caso.param.first; });

TEST(ListaDeFotos, LaQueNoSubioSeNombraYNoDejaCarpeta)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/9/9/99.jpg", "img/p/99.jpg"));

    EXPECT_EQ(t.Pide(Articulos), "No se ha podido tratar img/p/99.jpg\r\n");

    EXPECT_FALSE(t.tienda.ExisteFichero("img/p/9"));
}

TEST(ListaDeFotos, LaListaSeGasta)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgfam.txt", "img/c/12.jpg;\r\n");
    t.Pide(Familias);
    EXPECT_FALSE(t.tienda.ExisteFichero("imgfam.txt"));
    t.tienda.BorraFichero("img/c/12-medium_default.jpg");

    EXPECT_EQ(t.Pide(Familias), "");

    EXPECT_FALSE(t.tienda.ExisteFichero("img/c/12-medium_default.jpg"));
}

TEST(ListaDeFotos, SinListaNoHaceNada)
{
    TiendaConScripts t{SoloFicheros{}};

    EXPECT_EQ(t.Pide(Familias), "");
}

struct CasoSitio {
    const char* regla;
    QByteArray linea;
    const char* sitio;
};

class SitioDelArticulo : public testing::TestWithParam<CasoSitio> {};

TEST_P(SitioDelArticulo, SaleDelPrimerCampoODelNumero)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/p/123.jpg", JpegRojo());
    t.tienda.EscribeFichero("img/p/12345678901234.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgart.txt", GetParam().linea);
    const QStringList fuera = t.tienda.Ficheros("img/c");

    EXPECT_EQ(t.Pide("dimensiona.php?fichero=imgart.txt&sufijofoto=home_default"), "");

    EXPECT_TRUE(t.tienda.ExisteFichero(GetParam().sitio));
    EXPECT_TRUE(t.tienda.ExisteFichero(QString(GetParam().sitio).chopped(4) + "-home_default.jpg"));
    EXPECT_EQ(t.tienda.Ficheros("img/c"), fuera);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, SitioDelArticulo,
    testing::Values(CasoSitio{"ElDelCampo", Linea("img/p/1/2/3/123.jpg", "img/p/123.jpg"),
                              "img/p/1/2/3/123.jpg"},
                    CasoSitio{"LaCarpetaLlanaDeLasTiendasViejas",
                              Linea("img/p/123.jpg", "img/p/123.jpg"), "img/p/123.jpg"},
                    // 6 + 28 + 18 characters: two are cut off.
                    CasoSitio{"ElCampoCortado",
                              Linea("img/p/1/2/3/4/5/6/7/8/9/0/1/2/3/4/12345678901234.jpg",
                                    "img/p/12345678901234.jpg"),
                              "img/p/1/2/3/4/5/6/7/8/9/0/1/2/3/4/12345678901234.jpg"},
                    CasoSitio{"ElCampoEnBlanco", Linea("", "img/p/123.jpg"), "img/p/1/2/3/123.jpg"},
                    CasoSitio{"UnCampoHaciaArriba", Linea("img/p/../c/123.jpg", "img/p/123.jpg"),
                              "img/p/1/2/3/123.jpg"},
                    CasoSitio{"UnCampoAbsoluto", Linea("/tmp/123.jpg", "img/p/123.jpg"),
                              "img/p/1/2/3/123.jpg"},
                    CasoSitio{"OtroNombreEnElCampo", Linea("img/p/1/2/3/x.php", "img/p/123.jpg"),
                              "img/p/1/2/3/123.jpg"}),
    [](const auto& caso) { return caso.param.regla; });

class EntradaHostil : public testing::TestWithParam<QByteArray> {};

TEST_P(EntradaHostil, NoTocaNada)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/p/123.jpg", JpegRojo());
    t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
    t.tienda.EscribeFichero("secreto.jpg", JpegRojo());
    const QStringList antes = t.tienda.Ficheros("img");
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/1/2/3/123.jpg", GetParam()));
    t.tienda.EscribeFichero("imgfam.txt", GetParam() + ";\r\n");

    EXPECT_EQ(t.Pide(Articulos), "Entrada no admitida\r\n");
    EXPECT_EQ(t.Pide(Familias), "Entrada no admitida\r\n");

    EXPECT_EQ(t.tienda.Ficheros("img"), antes);
    EXPECT_EQ(t.tienda.LeeFichero("secreto.jpg"), JpegRojo());
}

INSTANTIATE_TEST_SUITE_P(Entradas, EntradaHostil,
                         testing::Values("../secreto.jpg", "/secreto.jpg",
                                         "img/p/../../secreto.jpg", "img/c/../../secreto.jpg",
                                         "img/x/12.jpg", "http://127.0.0.1/1.jpg", "img/p/123.php",
                                         QByteArray("img/p/123.php\0.jpg", 18), "img/p/123%00.jpg",
                                         "img/p/*.jpg", "img\\p\\123.jpg"));

class PeticionHostil : public testing::TestWithParam<const char*> {};

TEST_P(PeticionHostil, NoHaceNada)
{
    TiendaConScripts t{SoloFicheros{}};
    const QStringList listas{"imgfam.txt", "imgart.txt", "imgborra.txt"};
    for (const QString& lista : listas)
        t.tienda.EscribeFichero(lista, "img/c/12.jpg;\r\n");
    t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
    const QStringList antes = t.tienda.Ficheros();

    EXPECT_EQ(t.Pide(QString("dimensiona.php") + GetParam()), "Lista o sufijo no admitidos\r\n");

    EXPECT_EQ(t.tienda.Ficheros(), antes);
}

INSTANTIATE_TEST_SUITE_P(Peticiones, PeticionHostil,
                         testing::Values("",
                                         "?fichero=", "?fichero=imgborra.txt&sufijofoto=_default",
                                         "?fichero=../imgfam.txt&sufijofoto=_default",
                                         "?fichero=imgfam.txt%00&sufijofoto=_default",
                                         "?fichero[]=imgfam.txt&sufijofoto=_default",
                                         "?fichero=config/settings.inc.php",
                                         "?fichero=imgfam.txt&sufijofoto=../../x",
                                         "?fichero=imgfam.txt&sufijofoto=%27%20OR%201",
                                         "?fichero=imgfam.txt&sufijofoto=_default%0A"));

TEST(EnlacesSimbolicos, UnaCarpetaQueLlevaFueraNoSeSigue)
{
    TiendaConScripts t{SoloFicheros{}};
    t.Enlaza("img/p/1", t.Fuera());
    t.tienda.EscribeFichero("img/p/123.jpg", JpegRojo());
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/1/2/3/123.jpg", "img/p/123.jpg"));
    t.tienda.EscribeFichero("creapath.txt", "1/2/3;\r\n1;\r\n");

    EXPECT_EQ(t.Pide(Articulos), "No se ha podido tratar img/p/123.jpg\r\n");
    EXPECT_EQ(t.Pide("creapath.php"),
              "No se puede crear img/p/1/2/3\r\nNo se puede crear img/p/1\r\n");

    EXPECT_EQ(QDir(t.Fuera()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList());
}

TEST(EnlacesSimbolicos, UnaFotoSubidaQueEsUnEnlaceNoSeToca)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/p/1.jpg", JpegRojo());
    ASSERT_TRUE(QFile::rename(t.tienda.Raiz() + "/img/p/1.jpg", t.Fuera("ajena.jpg")));
    t.Enlaza("img/p/123.jpg", t.Fuera("ajena.jpg"));
    t.tienda.EscribeFichero("imgart.txt", Linea("img/p/1/2/3/123.jpg", "img/p/123.jpg"));

    EXPECT_EQ(t.Pide(Articulos), "No se ha podido tratar img/p/123.jpg\r\n");

    EXPECT_TRUE(QFile::exists(t.Fuera("ajena.jpg")));
    EXPECT_FALSE(t.tienda.ExisteFichero("img/p/1"));
}

TEST(EnlacesSimbolicos, UnTamanoQueEsUnEnlaceSeSustituyeSinSeguirlo)
{
    TiendaConScripts t{SoloFicheros{}};
    QFile ajeno(t.Fuera("ajeno.jpg"));
    ASSERT_TRUE(ajeno.open(QIODevice::WriteOnly));
    ajeno.write("ajeno");
    ajeno.close();
    QFile::setPermissions(t.Fuera("ajeno.jpg"), QFile::Permissions(0x6666));
    t.tienda.EscribeFichero("img/c/12.jpg", JpegRojo());
    t.Enlaza("img/c/12-medium_default.jpg", t.Fuera("ajeno.jpg"));
    t.tienda.EscribeFichero("imgfam.txt", "img/c/12.jpg;\r\n");

    EXPECT_EQ(t.Pide(Familias), "");

    ASSERT_TRUE(ajeno.open(QIODevice::ReadOnly));
    EXPECT_EQ(ajeno.readAll(), "ajeno");
    EXPECT_EQ(Foto(t, "img/c/12-medium_default.jpg").size(), QSize(125, 125));
}

TEST(CreaPath, HaceTodasLasCarpetasDelCamino)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("creapath.txt", "1/2/3;\r\n1/2/4;\r\n7;\r\n\r\n");

    EXPECT_EQ(t.Pide("creapath.php"), "");

    for (const char* carpeta : {"1/2/3", "1/2/4", "7"})
        EXPECT_TRUE(QFileInfo(t.tienda.Raiz() + "/img/p/" + carpeta).isDir()) << carpeta;
    EXPECT_FALSE(t.tienda.ExisteFichero("creapath.txt"));
    EXPECT_EQ(t.Pide("creapath.php"), "");
}

TEST(CreaPath, UnaCarpetaQueYaEstaNoEstorba)
{
    TiendaConScripts t{SoloFicheros{}};
    t.tienda.EscribeFichero("img/p/1/2/12.jpg", "x");
    t.tienda.EscribeFichero("creapath.txt", "1/2;\r\n1/2/3;\r\n");

    EXPECT_EQ(t.Pide("creapath.php"), "");

    EXPECT_TRUE(t.tienda.ExisteFichero("img/p/1/2/12.jpg"));
    EXPECT_TRUE(t.tienda.ExisteFichero("img/p/1/2/3"));
}

class CaminoHostil : public testing::TestWithParam<QByteArray> {};

TEST_P(CaminoHostil, NoCreaNada)
{
    TiendaConScripts t{SoloFicheros{}};
    const auto carpetas = [&t] {
        return QDir(t.tienda.Carpeta() + "/ftp")
                   .entryInfoList(QDir::NoDotAndDotDot | QDir::Dirs)
                   .size() +
               QDir(t.tienda.Raiz()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size() +
               QDir(t.tienda.Raiz() + "/img/p")
                   .entryList(QDir::NoDotAndDotDot | QDir::AllEntries)
                   .size();
    };
    t.Pide("creapath.php");
    const auto antes = carpetas();
    t.tienda.EscribeFichero("creapath.txt", GetParam() + ";\r\n");

    EXPECT_EQ(t.Pide("creapath.php"), "Entrada no admitida\r\n");

    EXPECT_EQ(carpetas(), antes);
}

INSTANTIATE_TEST_SUITE_P(Entradas, CaminoHostil,
                         testing::Values("../1", "1/../../../7", "/7/7", "7//7", "a", "7/a", "7/",
                                         ".", "7\\7", "7%00", QByteArray("7\0a", 3), "img/p/7",
                                         "7\r\n8",
                                         QByteArray(60, '7') + "/" + QByteArray(60, '7')));
