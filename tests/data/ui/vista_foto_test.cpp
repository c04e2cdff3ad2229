#include "apoyo/carpeta.h"
#include "data/ui/jpeg.h"
#include "data/ui/vista_foto.h"
#include "fotos_de_prueba.h"
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace tolmo::data::ui;

namespace {

constexpr QSize TamanoDeCaja(120, 60);

class VistaFotoTest : public testing::Test, public CarpetaDePrueba {
  protected:
    VistaFotoTest() { vista.resize(TamanoDeCaja); }

    /// Waits for what a reading comes to. \returns whether there is a picture
    bool Espera()
    {
        if (cargadas.isEmpty())
            cargadas.wait(30'000);
        if (cargadas.size() != 1)
            throw std::runtime_error(std::to_string(cargadas.size()) + " signals");
        const bool hay = cargadas.takeFirst().first().toBool();
        EXPECT_EQ(hay, vista.HayFoto());
        return hay;
    }
    bool Carga(const QString& ruta)
    {
        vista.Muestra(ruta);
        return Espera();
    }
    bool Carga(const QString& nombre, const QByteArray& bytes)
    {
        Escribe(nombre, bytes);
        return Carga(Ruta(nombre));
    }
    QSize Foto() const { return vista.pixmap().size(); }
    /// The colours of its four corners, "rojo" or "azul", from the top left one by the rows.
    QStringList Esquinas() const
    {
        const QImage foto = vista.pixmap().toImage();
        const int x = foto.width() - 3;
        const int y = foto.height() - 3;
        QStringList colores;
        for (const QPoint& esquina : {QPoint(2, 2), QPoint(x, 2), QPoint(2, y), QPoint(x, y)}) {
            const QColor color = foto.pixelColor(esquina);
            colores << (color.red() > 200 ? "rojo" : color.blue() > 200 ? "azul" : color.name());
        }
        return colores;
    }

    VistaFoto vista{};
    QSignalSpy cargadas{&vista, &VistaFoto::Cargada};
};

TEST_F(VistaFotoTest, EmpiezaVacia)
{
    EXPECT_FALSE(vista.HayFoto());
}

TEST_F(VistaFotoTest, ElLadoMayorLlenaLaCajaYLaProporcionQueda)
{
    ASSERT_TRUE(Carga("ancha.jpg", fotos::DeUnColor({800, 200}, Qt::red, "jpeg")));
    EXPECT_EQ(Foto(), QSize(120, 30));
    ASSERT_TRUE(Carga("alta.jpg", fotos::DeUnColor({300, 900}, Qt::red, "jpeg")));
    EXPECT_EQ(Foto(), QSize(20, 60));
}

TEST_F(VistaFotoTest, UnaFotoMenorQueLaCajaSeAmpliaSiNoSeDiceOtraCosa)
{
    const QByteArray menor = fotos::DeUnColor({20, 20}, Qt::red, "png");
    ASSERT_TRUE(Carga("menor.png", menor));
    EXPECT_EQ(Foto(), QSize(60, 60));

    vista.PonAmpliar(false);
    ASSERT_TRUE(Carga("menor.png", menor));
    EXPECT_EQ(Foto(), QSize(20, 20));
    ASSERT_TRUE(Carga("mayor.png", fotos::DeUnColor({240, 240}, Qt::red, "png")));
    EXPECT_EQ(Foto(), QSize(60, 60));
}

TEST_F(VistaFotoTest, UnaFotoDeUnPuntoDeAltoNoSePierde)
{
    ASSERT_TRUE(Carga("raya.png", fotos::DeUnColor({5000, 1}, Qt::red, "png")));
    EXPECT_EQ(Foto(), QSize(120, 1));
}

TEST_F(VistaFotoTest, TodosLosFormatosSeVenEnterosYConSusColores)
{
    for (const char* formato : {"jpeg", "png", "bmp", "tiff"}) {
        ASSERT_TRUE(Carga(QString("foto.") + formato, fotos::RojaYAzul({1200, 600}, formato)))
            << formato;
        EXPECT_EQ(Foto(), TamanoDeCaja) << formato;
        EXPECT_EQ(Esquinas(), QStringList({"rojo", "azul", "rojo", "azul"})) << formato;
    }
    ASSERT_TRUE(Carga("progresiva.jpg", fotos::RojaYAzul({1200, 600}, "jpeg", true)));
    EXPECT_EQ(Esquinas(), QStringList({"rojo", "azul", "rojo", "azul"}));
}

TEST_F(VistaFotoTest, UnGifSeVe)
{
    const auto gif =
        QByteArray::fromBase64("R0lGODlhAQABAIAAAP8AAAAAACH5BAAAAAAALAAAAAABAAEAAAICRAEAOw==");
    ASSERT_TRUE(Carga("punto.gif", gif));
    EXPECT_EQ(Foto(), QSize(60, 60));
}

TEST_F(VistaFotoTest, ElNombreNoDiceElFormato)
{
    ASSERT_TRUE(Carga("un.bmp", fotos::RojaYAzul({1200, 600}, "jpeg")));
    EXPECT_EQ(Esquinas(), QStringList({"rojo", "azul", "rojo", "azul"}));
    EXPECT_TRUE(Carga("un.jpg", fotos::DeUnColor({10, 10}, Qt::red, "tiff")));
    EXPECT_TRUE(Carga("sin_nada", fotos::DeUnColor({10, 10}, Qt::red, "png")));
}

TEST_F(VistaFotoTest, LaOrientacionDeLaCamaraSeRespeta)
{
    const QByteArray foto = fotos::RojaYAzul({800, 400}, "jpeg");
    // How EXIF counts: 3 is upside down, 6 held to the right, 8 to the left, 2 seen in a mirror.
    const std::vector<std::pair<quint16, QStringList>> casos{
        {1, {"rojo", "azul", "rojo", "azul"}}, {2, {"azul", "rojo", "azul", "rojo"}},
        {3, {"azul", "rojo", "azul", "rojo"}}, {6, {"rojo", "rojo", "azul", "azul"}},
        {8, {"azul", "azul", "rojo", "rojo"}}, {5, {"rojo", "rojo", "azul", "azul"}},
        {7, {"azul", "azul", "rojo", "rojo"}}};
    for (const auto& [orientacion, esquinas] : casos) {
        ASSERT_TRUE(Carga("girada.jpg", fotos::ConOrientacion(foto, orientacion))) << orientacion;
        EXPECT_EQ(Esquinas(), esquinas) << orientacion;
        EXPECT_EQ(Foto(), orientacion < 5 ? QSize(120, 60) : QSize(30, 60)) << orientacion;
    }
}

TEST_F(VistaFotoTest, UnaRutaDeLaBaseSeTraduce)
{
    qputenv("KOV_UNIDADES", "C:=" + Ruta().toUtf8());
    Escribe("fotos/Olla.JPG", fotos::DeUnColor({10, 10}, Qt::red, "jpeg"));

    EXPECT_TRUE(Carga("C:\\FOTOS\\olla.jpg"));
    EXPECT_FALSE(Carga("D:\\FOTOS\\olla.jpg")) << "a drive that isn't there";
    qunsetenv("KOV_UNIDADES");
}

// What can't be shown.

TEST_F(VistaFotoTest, LoQueNoEsUnaFotoDejaLaCajaVacia)
{
    EXPECT_FALSE(Carga(""));
    EXPECT_FALSE(Carga(Ruta("no_esta.jpg")));
    EXPECT_FALSE(Carga("http://tienda.example/a.jpg"));
    EXPECT_FALSE(Carga(Ruta())) << "a folder";
    EXPECT_FALSE(Carga("/dev/zero"));
    EXPECT_FALSE(Carga("vacia.jpg", {}));
    EXPECT_FALSE(Carga("texto.jpg", "no soy una foto"));
    EXPECT_FALSE(Carga("ceros.jpg", QByteArray(5000, 0)));
    EXPECT_FALSE(
        Carga("dibujo.png", "/* XPM */\nstatic char*a[]={\"1 1 1 1\",\"a c red\",\"a\"};"));
}

TEST_F(VistaFotoTest, UnaTuberiaNoSeAbre)
{
    ASSERT_EQ(mkfifo(Ruta("tuberia.jpg").toUtf8().constData(), 0600), 0);

    EXPECT_FALSE(Carga(Ruta("tuberia.jpg")));
}

TEST_F(VistaFotoTest, UnFicheroQueNoSePuedeLeerDejaLaCajaVacia)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is closed to the superuser";
    Escribe("cerrada.jpg", fotos::DeUnColor({10, 10}, Qt::red, "jpeg"));
    QFile::setPermissions(Ruta("cerrada.jpg"), {});

    EXPECT_FALSE(Carga(Ruta("cerrada.jpg")));
}

TEST_F(VistaFotoTest, UnaFotoCortadaDejaLaCajaVacia)
{
    for (const char* formato : {"jpeg", "png", "bmp", "tiff"}) {
        const QByteArray entera = fotos::RojaYAzul({400, 300}, formato);
        for (const qsizetype queda : {entera.size() / 2, entera.size() - 40, qsizetype(20)})
            EXPECT_FALSE(Carga("cortada", entera.left(queda))) << formato << ' ' << queda;
        EXPECT_TRUE(Carga("entera", entera)) << formato;
    }
}

TEST_F(VistaFotoTest, UnaFotoConAlgoDetrasSeVe)
{
    for (const char* formato : {"jpeg", "png", "bmp", "tiff"})
        EXPECT_TRUE(Carga("foto", fotos::RojaYAzul({40, 30}, formato) + QByteArray(3000, 'x')))
            << formato;
}

TEST_F(VistaFotoTest, UnaMiniaturaDentroNoEsElFinalDeLaFoto)
{
    const QByteArray miniatura = fotos::DeUnColor({40, 30}, Qt::red, "jpeg");
    const QByteArray foto = fotos::RojaYAzul({400, 300}, "jpeg");
    const QByteArray conMiniatura = foto.left(2) + fotos::Segmento(0xE1, miniatura) + foto.mid(2);

    EXPECT_TRUE(Carga("entera.jpg", conMiniatura));
    EXPECT_FALSE(Carga("cortada.jpg", conMiniatura.chopped(100)));
}

TEST_F(VistaFotoTest, UnaCabeceraQueMienteDejaLaCajaVacia)
{
    EXPECT_FALSE(Carga("a.bmp", fotos::CabeceraBmp(3000, 3000)));
    EXPECT_FALSE(Carga("b.bmp", fotos::CabeceraBmp(2'000'000'000, 2'000'000'000)));
    EXPECT_FALSE(Carga("c.bmp", fotos::CabeceraBmp(0, 0)));
    EXPECT_FALSE(Carga("d.bmp", fotos::CabeceraBmp(-5, 10)));
    EXPECT_FALSE(Carga("a.png", fotos::CabeceraPng(20000, 20000, 8, 2, 0)));
    EXPECT_FALSE(Carga("b.png", fotos::CabeceraPng(0, 10, 8, 2, 0)));
    EXPECT_FALSE(Carga("c.png", fotos::CabeceraPng(20000, 20000, 8, 2, 1)));
    QByteArray jpeg = fotos::RojaYAzul({400, 300}, "jpeg");
    const auto marco = jpeg.indexOf("\xFF\xC0");
    ASSERT_GT(marco, 0);
    EXPECT_FALSE(Carga("cero.jpg", QByteArray(jpeg).replace(marco + 5, 4, QByteArray(4, 0))));
}

// Size and time.

long PicoEnMegas()
{
    QFile estado("/proc/self/status");
    EXPECT_TRUE(estado.open(QIODevice::ReadOnly));
    for (const QByteArray& linea : estado.readAll().split('\n'))
        if (linea.startsWith("VmHWM:"))
            return linea.mid(6).trimmed().split(' ').first().toLong() / 1024;
    return -1;
}

/// What the process takes at most from here on begins anew.
void OlvidaElPico()
{
    QFile olvido("/proc/self/clear_refs");
    EXPECT_TRUE(olvido.open(QIODevice::WriteOnly));
    olvido.write("5");
}

class FotoEnorme : public VistaFotoTest {
  protected:
    bool CargaYMide(const QByteArray& bytes)
    {
        Escribe("enorme", bytes);
        OlvidaElPico();
        const long antes = PicoEnMegas();
        const bool hay = Carga(Ruta("enorme"));
        EXPECT_LT(PicoEnMegas() - antes, 300);
        return hay;
    }
};

TEST_F(FotoEnorme, UnJpegSeLeeYaReducido)
{
    ASSERT_TRUE(CargaYMide(fotos::JpegGris(20000, 20000)));
    EXPECT_EQ(Foto(), QSize(60, 60));
}

TEST_F(FotoEnorme, UnJpegProgresivoSeDejaPorqueHabriaQueTenerloEntero)
{
    EXPECT_FALSE(CargaYMide(fotos::JpegGris(20000, 20000, 0xC2, 3)));
    EXPECT_TRUE(CargaYMide(fotos::JpegGris(2000, 2000, 0xC2)));
}

TEST_F(FotoEnorme, UnPngSeLeePorFilas)
{
    ASSERT_TRUE(CargaYMide(fotos::PngNegro(20000, 4000)));
    EXPECT_EQ(Foto(), QSize(120, 24));
}

TEST_F(FotoEnorme, UnPngGrisSoloSeLeeHastaCuarentaMillonesDePuntos)
{
    EXPECT_TRUE(CargaYMide(fotos::PngNegro(8000, 5000, true)));
    EXPECT_FALSE(CargaYMide(fotos::PngNegro(8000, 5001, true)));
}

TEST_F(FotoEnorme, UnBmpQueNoCabeSeDeja)
{
    Escribe("enorme.bmp", fotos::CabeceraBmp(20000, 20000));
    // Its rows are there, as zeros that take no place on the disk.
    ASSERT_TRUE(QFile::resize(Ruta("enorme.bmp"), 54 + 20000LL * 60000));
    OlvidaElPico();
    const long antes = PicoEnMegas();
    EXPECT_FALSE(Carga(Ruta("enorme.bmp")));
    EXPECT_LT(PicoEnMegas() - antes, 300);
}

TEST_F(FotoEnorme, LoQueDaUnaCamaraSeVeEnCualquierFormato)
{
    for (const char* formato : {"jpeg", "png", "bmp", "tiff"})
        EXPECT_TRUE(CargaYMide(fotos::DeUnColor({7360, 4912}, Qt::red, formato))) << formato;
}

TEST(Jpeg, DiceLoQueCuestaElQueVieneEnVariosBarridos)
{
    const auto examina = [](QByteArray bytes) {
        QBuffer fichero(&bytes);
        fichero.open(QIODevice::ReadOnly);
        return ExaminaJpeg(fichero);
    };
    const auto llano = examina(fotos::JpegGris(1000, 500));
    ASSERT_TRUE(llano);
    EXPECT_TRUE(llano->entero);
    EXPECT_EQ(llano->barridos, 1);
    EXPECT_EQ(llano->memoria, 0);
    const auto progresivo = examina(fotos::JpegGris(1000, 500, 0xC2, 3));
    ASSERT_TRUE(progresivo);
    EXPECT_EQ(progresivo->memoria, 1000 * 500 * 3 * 2);
    EXPECT_FALSE(examina(fotos::JpegGris(1000, 500).chopped(1))->entero);
    EXPECT_FALSE(examina("BM"));
    EXPECT_FALSE(examina(""));
}

// One after another.

TEST_F(VistaFotoTest, LaUltimaQueSePideEsLaQueSeVe)
{
    Escribe("enorme.jpg", fotos::JpegGris(20000, 20000));
    Escribe("menor.png", fotos::DeUnColor({10, 10}, Qt::blue, "png"));

    vista.Muestra(Ruta("enorme.jpg"));
    vista.Muestra(Ruta("menor.png"));

    ASSERT_TRUE(Espera());
    EXPECT_EQ(Esquinas(), QStringList({"azul", "azul", "azul", "azul"}));
    EXPECT_FALSE(cargadas.wait(300)) << "nothing comes of the first one";
}

TEST_F(VistaFotoTest, LoQueSeLimpiaNoVuelve)
{
    ASSERT_TRUE(Carga("foto.png", fotos::DeUnColor({10, 10}, Qt::blue, "png")));
    vista.Limpia();
    EXPECT_FALSE(vista.HayFoto());

    vista.Muestra(Ruta("foto.png"));
    vista.Limpia();
    vista.resize(300, 300);

    EXPECT_FALSE(cargadas.wait(300));
    EXPECT_FALSE(vista.HayFoto());
}

TEST_F(VistaFotoTest, UnaFotoMalaBorraLaDeAntes)
{
    ASSERT_TRUE(Carga("foto.png", fotos::DeUnColor({10, 10}, Qt::blue, "png")));

    EXPECT_FALSE(Carga("mala.png", "mala"));
}

TEST_F(VistaFotoTest, PuedeDestruirseMientrasLee)
{
    Escribe("enorme.jpg", fotos::JpegGris(20000, 20000));
    QElapsedTimer reloj;
    for (int i = 0; i < 20; ++i) {
        const auto otra = std::make_unique<VistaFoto>();
        otra->Muestra(Ruta("enorme.jpg"));
        if (i % 2)
            QTest::qWait(5);
        reloj.start();
    }
    EXPECT_LT(reloj.elapsed(), 200) << "it isn't waited for";
    EXPECT_TRUE(Carga("foto.png", fotos::DeUnColor({10, 10}, Qt::blue, "png")));
}

TEST_F(VistaFotoTest, ConOtroTamanoSeLeeOtraVez)
{
    ASSERT_TRUE(Carga("foto.jpg", fotos::DeUnColor({800, 400}, Qt::red, "jpeg")));
    vista.show();
    vista.resize(400, 300);

    ASSERT_TRUE(Espera());

    EXPECT_EQ(Foto(), QSize(400, 200));
    EXPECT_EQ(vista.size(), QSize(400, 300)) << "the picture doesn't move the window";
}

TEST_F(VistaFotoTest, NoPideMasSitioQueElSuyo)
{
    const QSize antes = vista.sizeHint();
    ASSERT_TRUE(Carga("foto.jpg", fotos::DeUnColor({800, 400}, Qt::red, "jpeg")));

    EXPECT_EQ(vista.sizeHint(), antes);
    EXPECT_LE(vista.minimumSizeHint().width(), 40);
}

} // namespace
