#include "apoyo/programa_de_prueba.h"
#include "configurator/FrmRecuperaImagen.h"
#include "data/rutas.h"
#include "data/ui/articulos_en_pantalla.h"
#include "data/ui/control_activo.h"
#include "data/ui/fotos_de_prueba.h"
#include "data/ui/vista_foto.h"
#include "run/dialogo.h"
#include <QComboBox>
#include <QElapsedTimer>
#include <QListWidget>
#include <QPushButton>
#include <QSignalSpy>
#include <sys/stat.h>
#include <unistd.h>

using namespace tolmo;

namespace {

const QString Imagenes = "Imagenes (*.jpg,*.bmp,*.tif)|*.jpg;*.bmp;*.tif";

/// An office with the drives C: and D: and a share, below the folder of the test.
class FrmRecuperaImagenTest : public testing::Test, public ProgramaDePrueba {
  protected:
    FrmRecuperaImagenTest()
    {
        const QString mapa = "C:=" + carpeta.Ruta("c") + ";D:=" + carpeta.Ruta("d") +
                             ";\\\\srv\\fotos=" + carpeta.Ruta("srv");
        qputenv("KOV_UNIDADES", mapa.toUtf8());
        const QByteArray foto = fotos::DeUnColor({40, 20}, Qt::red, "jpeg");
        carpeta.Escribe("c/raiz.jpg", foto);
        carpeta.Escribe("c/fotos/Olla.JPG", foto);
        carpeta.Escribe("c/fotos/cazo.bmp", fotos::DeUnColor({40, 20}, Qt::blue, "bmp"));
        carpeta.Escribe("c/fotos/tapa.tif", "rota");
        carpeta.Escribe("c/fotos/leeme.txt", "texto");
        carpeta.Escribe("c/fotos/nuestro programa.EXE", "MZ");
        carpeta.CreaCarpeta("c/fotos/2024");
        carpeta.CreaCarpeta("c/Archivo");
        carpeta.Escribe("srv/compartida.jpg", foto);
        programa.carpetaActual = "C:";
        txtretorna->setObjectName("txtretorna");
        txtretorna->setText(Imagenes);
        destino->setText("antes");
    }
    ~FrmRecuperaImagenTest() override { qunsetenv("KOV_UNIDADES"); }

    void Abre()
    {
        destino->setFocus();
        Muestra(*ventana);
        Reposa();
    }
    void AbreDeNuevo()
    {
        ventana = std::make_unique<FrmRecuperaImagen>(programa, &llamante);
        Abre();
    }
    QComboBox& Drive1() { return Hijo<QComboBox>(*ventana, "Drive1"); }
    QListWidget& Dir1() { return Hijo<QListWidget>(*ventana, "Dir1"); }
    QListWidget& File1() { return Hijo<QListWidget>(*ventana, "File1"); }
    data::ui::VistaFoto& Image1() { return Hijo<data::ui::VistaFoto>(*ventana, "Image1"); }
    QString Ruta() { return Hijo<QLineEdit>(*ventana, "TxtRuta").text(); }

    static QString Nombres(const QListWidget& lista)
    {
        QStringList nombres;
        for (int i = 0; i < lista.count(); ++i)
            nombres << lista.item(i)->text();
        return nombres.join('|');
    }
    static QPoint Sitio(QListWidget& lista, const QString& nombre)
    {
        const auto hallados = lista.findItems(nombre, Qt::MatchExactly);
        if (hallados.isEmpty())
            throw std::logic_error(nombre.toStdString());
        lista.scrollToItem(hallados.first());
        return lista.visualItemRect(hallados.first()).center();
    }
    void Elige(const QString& fichero)
    {
        QTest::mouseClick(File1().viewport(), Qt::LeftButton, {}, Sitio(File1(), fichero));
        Reposa();
    }
    void Entra(const QString& nombre)
    {
        const QPoint sitio = Sitio(Dir1(), nombre);
        QTest::mouseClick(Dir1().viewport(), Qt::LeftButton, {}, sitio);
        QTest::mouseDClick(Dir1().viewport(), Qt::LeftButton, {}, sitio);
        Reposa();
    }
    void EligeUnidad(const QString& nombre)
    {
        const int indice = Drive1().findText(nombre);
        ASSERT_GE(indice, 0);
        Drive1().showPopup();
        QAbstractItemView* lista = Drive1().view();
        lista->setCurrentIndex(lista->model()->index(indice, 0));
        QTest::keyClick(lista, Qt::Key_Return);
        Reposa();
    }
    void Pulsa(const char* boton)
    {
        QTest::mouseClick(&Hijo<QPushButton>(*ventana, boton), Qt::LeftButton);
        Reposa();
    }
    bool EsperaVista()
    {
        QSignalSpy cargadas(&Image1(), &data::ui::VistaFoto::Cargada);
        return Image1().HayFoto() || (cargadas.wait() && Image1().HayFoto());
    }

    QDialog llamante{};
    QLineEdit* destino = new QLineEdit(&llamante);
    QLineEdit* txtretorna = new QLineEdit(&llamante);
    std::unique_ptr<FrmRecuperaImagen> ventana =
        std::make_unique<FrmRecuperaImagen>(programa, &llamante);
};

TEST_F(FrmRecuperaImagenTest, TieneSusControlesYSusRotulos)
{
    Abre();

    EXPECT_EQ(ventana->windowTitle(), "Seleccionar Imagen");
    QStringList rotulos;
    for (const QLabel* rotulo : ventana->findChildren<QLabel*>())
        if (rotulo->buddy())
            rotulos << rotulo->buddy()->objectName() + ' ' + Rotulo(rotulo);
    rotulos.sort();
    EXPECT_EQ(rotulos, QStringList({"Dir1 Carpetas:", "Drive1 Unidad:", "File1 Ficheros:"}));
    EXPECT_EQ(Hijo<QLabel>(*ventana, "Label2").buddy(), &File1());
    EXPECT_EQ(Rotulo(&Hijo<QPushButton>(*ventana, "CmdAceptar")), "Aceptar");
    EXPECT_EQ(Rotulo(&Hijo<QPushButton>(*ventana, "CmdCancelar")), "Cancelar");
    EXPECT_TRUE(Image1().isVisible());
    EXPECT_FALSE(Image1().HayFoto());
}

TEST_F(FrmRecuperaImagenTest, OfreceLasUnidadesYLaRaizDelEquipo)
{
    Abre();

    QStringList unidades;
    for (int i = 0; i < Drive1().count(); ++i)
        unidades << Drive1().itemText(i);
    EXPECT_EQ(unidades, QStringList({"C:", "D:", "\\\\srv\\fotos", "/"}));
    EXPECT_EQ(Drive1().currentText(), "C:");
    EXPECT_EQ(Ruta(), "C:\\");
    EXPECT_EQ(Nombres(Dir1()), "Archivo|fotos");
    EXPECT_EQ(Nombres(File1()), "raiz.jpg");
}

TEST_F(FrmRecuperaImagenTest, LasMascarasNoMiranMayusculas)
{
    Abre();
    Entra("fotos");

    EXPECT_EQ(Nombres(Dir1()), "..|2024");
    EXPECT_EQ(Nombres(File1()), "cazo.bmp|Olla.JPG|tapa.tif");
}

TEST_F(FrmRecuperaImagenTest, ElValorEsLaRutaEntera)
{
    Abre();
    Entra("fotos");
    Elige("Olla.JPG");
    EXPECT_EQ(Ruta(), "C:\\fotos\\Olla.JPG");
    EXPECT_TRUE(EsperaVista());

    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), "C:\\fotos\\Olla.JPG");
    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(data::RutaLocal(destino->text()), carpeta.Ruta("c/fotos/Olla.JPG"));
    EXPECT_EQ(txtretorna->text(), Imagenes);
}

TEST_F(FrmRecuperaImagenTest, EnLaRaizNoHaySegundaBarra)
{
    Abre();
    Elige("raiz.jpg");
    Pulsa("CmdAceptar");
    EXPECT_EQ(destino->text(), "C:\\raiz.jpg");

    AbreDeNuevo();
    EligeUnidad("\\\\srv\\fotos");
    Elige("compartida.jpg");
    Pulsa("CmdAceptar");
    EXPECT_EQ(destino->text(), "\\\\srv\\fotos\\compartida.jpg");
}

TEST_F(FrmRecuperaImagenTest, DesdeLaRaizDelEquipoElValorTambienLlevaAlFichero)
{
    Abre();
    EligeUnidad("/");
    EXPECT_EQ(Ruta(), "\\");
    for (const QString& nombre : (carpeta.Ruta() + "/c").split('/', Qt::SkipEmptyParts))
        Entra(nombre);
    Elige("raiz.jpg");
    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), carpeta.Ruta().replace('/', '\\') + "\\c\\raiz.jpg");
    EXPECT_EQ(data::RutaLocal(destino->text()), carpeta.Ruta("c/raiz.jpg"));
}

TEST_F(FrmRecuperaImagenTest, ElDobleClicSobreUnFicheroLoDevuelve)
{
    Abre();
    Elige("raiz.jpg");
    QTest::mouseDClick(File1().viewport(), Qt::LeftButton, {}, Sitio(File1(), "raiz.jpg"));
    Reposa();

    EXPECT_EQ(destino->text(), "C:\\raiz.jpg");
    EXPECT_FALSE(ventana->isVisible());
}

TEST_F(FrmRecuperaImagenTest, ConElTecladoSeLlegaALaFoto)
{
    Abre();
    EXPECT_TRUE(Dir1().hasFocus());
    QTest::keyClick(&Dir1(), Qt::Key_Down);
    QTest::keyClick(&Dir1(), Qt::Key_Return);
    ASSERT_EQ(Ruta(), "C:\\fotos");
    QTest::keyClick(&Dir1(), Qt::Key_Tab);
    ASSERT_TRUE(File1().hasFocus());
    QTest::keyClick(&File1(), Qt::Key_Return);
    EXPECT_TRUE(ventana->isVisible()) << "nothing is chosen";
    QTest::keyClick(&File1(), Qt::Key_Down);
    EXPECT_EQ(Ruta(), "C:\\fotos\\cazo.bmp");
    QTest::keyClick(&File1(), Qt::Key_Down);
    QTest::keyClick(&File1(), Qt::Key_Return);

    EXPECT_EQ(destino->text(), "C:\\fotos\\Olla.JPG");
    EXPECT_FALSE(ventana->isVisible());
}

TEST_F(FrmRecuperaImagenTest, IntroEnUnBotonLoPulsa)
{
    Abre();
    Elige("raiz.jpg");
    QTest::keyClick(&Hijo<QPushButton>(*ventana, "CmdCancelar"), Qt::Key_Tab);
    Hijo<QPushButton>(*ventana, "CmdCancelar").setFocus();
    QTest::keyClick(&Hijo<QPushButton>(*ventana, "CmdCancelar"), Qt::Key_Return);

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaImagenTest, SeSubeALaCarpetaDeArribaYSeQuedaSobreLaDeAntes)
{
    Abre();
    Entra("fotos");
    Entra("2024");
    EXPECT_EQ(Ruta(), "C:\\fotos\\2024");
    EXPECT_EQ(Nombres(File1()), "");
    Entra("..");
    EXPECT_EQ(Dir1().currentItem()->text(), "2024");
    Entra("..");

    EXPECT_EQ(Ruta(), "C:\\");
    EXPECT_EQ(Dir1().currentItem()->text(), "fotos");
}

TEST_F(FrmRecuperaImagenTest, OtraCarpetaOlvidaElFicheroElegido)
{
    Abre();
    Elige("raiz.jpg");
    ASSERT_TRUE(EsperaVista());
    Entra("fotos");
    EXPECT_FALSE(Image1().HayFoto());

    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaImagenTest, SinValorAceptarSoloEsconde)
{
    Abre();

    Pulsa("CmdAceptar");

    EXPECT_FALSE(ventana->isVisible());
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaImagenTest, CanceladaDejaElControlComoEstaba)
{
    Abre();
    Elige("raiz.jpg");
    Pulsa("CmdCancelar");
    EXPECT_FALSE(ventana->isVisible());

    AbreDeNuevo();
    Elige("raiz.jpg");
    QTest::keyClick(&File1(), Qt::Key_Escape);
    EXPECT_FALSE(ventana->isVisible());

    EXPECT_EQ(destino->text(), "antes");
    EXPECT_EQ(txtretorna->text(), Imagenes);
}

TEST_F(FrmRecuperaImagenTest, PuedeDevolverEnElMismoTxtretorna)
{
    const data::ui::ControlElegido elegido(*txtretorna);
    Abre();
    Elige("raiz.jpg");

    Pulsa("CmdAceptar");

    EXPECT_EQ(txtretorna->text(), "C:\\raiz.jpg");
    EXPECT_EQ(destino->text(), "antes");
}

// The filter.

TEST_F(FrmRecuperaImagenTest, UnProgramaVaEntreComillasYNoSeEnsena)
{
    txtretorna->setText("Programas (*.exe)|*.exe");
    Abre();
    Entra("fotos");
    EXPECT_EQ(Nombres(File1()), "nuestro programa.EXE");
    QSignalSpy cargadas(&Image1(), &data::ui::VistaFoto::Cargada);
    Elige("nuestro programa.EXE");
    EXPECT_FALSE(cargadas.wait(200)) << "it isn't even read";

    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), "\"C:\\fotos\\nuestro programa.EXE\"");
}

TEST_F(FrmRecuperaImagenTest, SinFiltroOConElDeTodosSalenTodosLosFicheros)
{
    for (const char* filtro : {"", "Todos (*.*)|*.*", "*"}) {
        txtretorna->setText(filtro);
        AbreDeNuevo();
        EligeUnidad("D:");
        EligeUnidad("C:");
        Entra("fotos");
        EXPECT_EQ(Nombres(File1()), "cazo.bmp|leeme.txt|nuestro programa.EXE|Olla.JPG|tapa.tif")
            << filtro;
        ventana->close();
        llamante.setProperty("UltimaCarpeta", {});
    }
}

TEST_F(FrmRecuperaImagenTest, SinTxtretornaSalenTodosLosFicheros)
{
    delete txtretorna;
    Abre();
    Entra("fotos");

    EXPECT_EQ(File1().count(), 5);
}

// Folders.

TEST_F(FrmRecuperaImagenTest, ConElTagDirectorioSeEligeUnaCarpeta)
{
    const int ancho = ventana->width();
    ventana->PonTag("Directorio");
    Abre();
    EXPECT_FALSE(Hijo<QLabel>(*ventana, "Label2").isVisible());
    EXPECT_FALSE(File1().isVisible());
    EXPECT_LT(ventana->width(), ancho);
    Entra("fotos");

    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), "C:\\fotos");
}

TEST_F(FrmRecuperaImagenTest, UnaCarpetaEnLaRaizNoLlevaSegundaBarra)
{
    ventana->PonTag("Directorio");
    Abre();
    Pulsa("CmdAceptar");
    EXPECT_EQ(destino->text(), "C:\\");
}

TEST_F(FrmRecuperaImagenTest, EntreCarpetasNoSeEntrecomillaNada)
{
    txtretorna->setText("*.exe");
    ventana->PonTag("Directorio");
    Abre();
    Pulsa("CmdAceptar");
    EXPECT_EQ(destino->text(), "C:\\");
}

// What isn't there.

TEST_F(FrmRecuperaImagenTest, UnaUnidadSinDiscoAvisaYSePuedeElegirOtraVez)
{
    Abre();
    Entra("fotos");
    const AvisosDePrueba::Caja caja{"Inserte un Disco en la Unidad", 48, ""};

    Drive1().setFocus();
    QTest::keyClick(&Drive1(), Qt::Key_Down);
    EXPECT_EQ(avisos.cajas, std::vector{caja});
    EXPECT_EQ(Drive1().currentText(), "C:");
    EXPECT_EQ(Ruta(), "C:\\fotos");
    EXPECT_EQ(Nombres(Dir1()), "..|2024");

    QTest::keyClick(&Drive1(), Qt::Key_Down);
    EXPECT_EQ(avisos.cajas.size(), 2U);
    carpeta.Escribe("d/disco.jpg", "foto");
    QTest::keyClick(&Drive1(), Qt::Key_Down);
    EXPECT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(Ruta(), "D:\\");
    EXPECT_EQ(Nombres(File1()), "disco.jpg");
}

TEST_F(FrmRecuperaImagenTest, UnaCarpetaQueHaDesaparecidoAvisaYNadaCambia)
{
    Abre();
    QDir(carpeta.Ruta("c/Archivo")).removeRecursively();

    Entra("Archivo");

    EXPECT_EQ(
        avisos.cajas,
        (std::vector{AvisosDePrueba::Caja{"No se puede leer la carpeta C:\\Archivo", 48, ""}}));
    EXPECT_EQ(Ruta(), "C:\\");
}

TEST_F(FrmRecuperaImagenTest, UnaCarpetaCerradaAvisaYNadaCambia)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "nothing is closed to the superuser";
    Abre();
    QFile::setPermissions(carpeta.Ruta("c/Archivo"), {});

    Entra("Archivo");

    EXPECT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(Ruta(), "C:\\");
    QFile::setPermissions(carpeta.Ruta("c/Archivo"), QFile::ReadOwner | QFile::ExeOwner);
}

TEST_F(FrmRecuperaImagenTest, SinLaCarpetaDelProgramaEmpiezaEnLaPrimeraUnidadQueHaya)
{
    programa.carpetaActual = "C:\\no_esta";
    Abre();
    EXPECT_EQ(Ruta(), "C:\\");
    ventana->close();
    llamante.setProperty("UltimaCarpeta", {});
    QDir(carpeta.Ruta("c")).removeRecursively();

    AbreDeNuevo();

    EXPECT_EQ(Ruta(), "\\\\srv\\fotos");
    EXPECT_EQ(Drive1().currentText(), "\\\\srv\\fotos");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmRecuperaImagenTest, LaCarpetaDelProgramaSeVePorSuUnidad)
{
    programa.carpetaActual = carpeta.Ruta("c/fotos");
    Abre();
    EXPECT_EQ(Ruta(), "C:\\fotos");
    EXPECT_EQ(configurator::DesdeSuRaiz(carpeta.Ruta("c")), "C:\\");
    EXPECT_EQ(configurator::DesdeSuRaiz(carpeta.Ruta("srv/a/b")), "\\\\srv\\fotos\\a\\b");
    EXPECT_EQ(configurator::DesdeSuRaiz("/otra/c"), "\\otra\\c") << "below no drive";
    EXPECT_EQ(configurator::DesdeSuRaiz(carpeta.Ruta("cuatro")),
              carpeta.Ruta("cuatro").replace('/', '\\'))
        << "the name of another folder begins so";
    EXPECT_EQ(configurator::DesdeSuRaiz("D:"), "D:\\");
    qputenv("KOV_UNIDADES", "Z:=/");
    EXPECT_EQ(configurator::DesdeSuRaiz("/otra/c"), "Z:\\otra\\c");
    EXPECT_EQ(configurator::DesdeSuRaiz("/"), "Z:\\");
}

TEST_F(FrmRecuperaImagenTest, ElMismoLlamanteVuelveALaUltimaCarpeta)
{
    Abre();
    Entra("fotos");
    Elige("Olla.JPG");
    Pulsa("CmdAceptar");

    AbreDeNuevo();

    EXPECT_EQ(Ruta(), "C:\\fotos");
    EXPECT_EQ(Nombres(File1()), "cazo.bmp|Olla.JPG|tapa.tif");
}

TEST_F(FrmRecuperaImagenTest, UnaFotoQueNoSeLeeDejaLaVistaVaciaYSePuedeElegir)
{
    Abre();
    Entra("fotos");
    Elige("Olla.JPG");
    ASSERT_TRUE(EsperaVista());
    Elige("tapa.tif");
    EXPECT_FALSE(EsperaVista());

    Pulsa("CmdAceptar");

    EXPECT_EQ(destino->text(), "C:\\fotos\\tapa.tif");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmRecuperaImagenTest, LoQueNoEsFicheroNiTieneNombreQueValgaNoSale)
{
    ASSERT_EQ(mkfifo(carpeta.Ruta("c/tuberia.jpg").toUtf8().constData(), 0600), 0);
    carpeta.CreaCarpeta("c/carpeta.jpg");
    carpeta.Escribe("c/con\\barra.jpg", "foto");
    carpeta.CreaCarpeta("c/otra\\barra");
    Abre();

    EXPECT_EQ(Nombres(File1()), "raiz.jpg");
    EXPECT_EQ(Nombres(Dir1()), "Archivo|carpeta.jpg|fotos");
}

TEST_F(FrmRecuperaImagenTest, UnaCarpetaConVeinteMilFotosSeAbreEnSeguida)
{
    for (int i = 0; i < 20'000; ++i)
        carpeta.Escribe("c/Archivo/f" + QString::number(i) + ".jpg", "f");
    Abre();
    QElapsedTimer cronometro;
    cronometro.start();

    Entra("Archivo");

    EXPECT_EQ(File1().count(), 20'000);
    EXPECT_LT(cronometro.elapsed(), 2'000);
    RecordProperty("ms", static_cast<int>(cronometro.elapsed()));
}

} // namespace
