#include "data/ui/vista_foto.h"
#include "editor_en_pantalla.h"
#include <QImage>

using namespace tolmo;
using data::Respuesta;
using data::ui::VistaFoto;

namespace {

const AvisosDePrueba::Caja RutaLarga{
    "La ruta de la fotografía no puede ser de más de 255 caracteres", 48, ""};
const AvisosDePrueba::Caja Quitar{"Desea eliminar la imagen de la Categoria: MED Valor: 010?", 36,
                                  ""};
const QString SqlFoto =
    "UPDATE PS_CONF_ART_VAL SET FOTO='%1' WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'";

/// The editor at the values of A1; 010 has the picture C:\f\a.jpg, which is on no drive of this
/// machine, and 020 has none.
class PanelValorTest : public EditorEnPantalla {
  protected:
    void AbreEnValores()
    {
        AbreCon("A1");
        VeA("PaginaValores");
        sentencias.clear();
    }
    VistaFoto& ImgFoto() { return Hijo<VistaFoto>(ventana, "ImgFoto"); }
    VistaFoto& Picture1() { return Hijo<VistaFoto>(ventana, "Picture1"); }
    QString CreaFoto(const char* nombre, const QSize& tamano)
    {
        const QString ruta = carpeta.Ruta(QString::fromUtf8(nombre));
        QImage foto(tamano, QImage::Format_RGB32);
        foto.fill(Qt::red);
        EXPECT_TRUE(foto.save(ruta, "JPG"));
        return ruta;
    }
    /// Chooses a file of a folder in the picker.
    static void EligeEnElBuscador(const QString& fichero)
    {
        EnElDialogo([fichero](QWidget& buscador) {
            EXPECT_EQ(buscador.objectName(), "FrmRecuperaImagen");
            auto& lista = Hijo<QAbstractItemView>(buscador, "File1");
            for (int i = 0; i < lista.model()->rowCount(); ++i) {
                const QModelIndex fila = lista.model()->index(i, 0);
                if (fila.data().toString() == fichero)
                    lista.setCurrentIndex(fila);
            }
            QTest::mouseClick(&Hijo<QPushButton>(buscador, "CmdAceptar"), Qt::LeftButton);
        });
    }
};

TEST_F(PanelValorTest, CadaValorTraeSuDescripcionYSuFoto)
{
    AbreEnValores();
    EXPECT_EQ(Rotulo("LblValor"), "14 cm");
    EXPECT_EQ(Caja("txtCampo_1"), "C:\\f\\a.jpg");

    PulsaCelda(DataGrid2(), 1, Valor);

    EXPECT_EQ(
        sentencias.mid(0, 2),
        QStringList(
            {"SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='020'",
             "SELECT * FROM M_OPCIONALES WHERE CODCATEGORIA='MED' AND CODOPCIONAL='020'"}));
    EXPECT_EQ(Rotulo("LblValor"), "18 cm");
    EXPECT_EQ(Caja("txtCampo_1"), "");
}

TEST_F(PanelValorTest, LaFilaParaAnadirNoTieneFoto)
{
    AbreEnValores();

    PulsaCelda(DataGrid2(), 2, Valor);

    EXPECT_EQ(Rotulo("LblValor"), "");
    EXPECT_EQ(Caja("txtCampo_1"), "");
    EXPECT_FALSE(Hijo<QWidget>(ventana, "CmdExaminar").isEnabled());
}

TEST_F(PanelValorTest, UnValorRecienGuardadoRecibeSuPanelAlVolverAEl)
{
    AbreEnValores();

    Teclea(DataGrid2(), 2, Valor, "0A0");
    EXPECT_TRUE(DataGrid2().GuardaFila());
    Reposa();

    EXPECT_EQ(Rotulo("LblValor"), "20 cm");
    EXPECT_TRUE(Hijo<QWidget>(ventana, "CmdExaminar").isEnabled());
}

TEST_F(PanelValorTest, LaRutaSeGuardaAlDejarElCampo)
{
    AbreEnValores();

    Rellena("txtCampo_1", "https://tienda.example/olla.jpg");

    EXPECT_TRUE(
        sentencias.contains(QString(SqlFoto).replace("%1", "https://tienda.example/olla.jpg")));
    EXPECT_EQ(Foto("010"), "https://tienda.example/olla.jpg");
    EXPECT_EQ(Foto("020"), "NULL");
}

TEST_F(PanelValorTest, PasarPorElCampoNoEscribeNada)
{
    AbreEnValores();
    PulsaCelda(DataGrid2(), 1, Valor);
    sentencias.clear();

    auto& campo = Hijo<QLineEdit>(ventana, "txtCampo_1");
    campo.setFocus();
    QTest::keyClick(&campo, Qt::Key_Tab);

    EXPECT_EQ(Foto("020"), "NULL");
    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(PanelValorTest, UnaRutaQueSeTecleaEsDelValorAunqueSeVayaAOtro)
{
    AbreEnValores();
    auto& campo = Hijo<QLineEdit>(ventana, "txtCampo_1");
    campo.setFocus();
    campo.selectAll();
    QTest::keyClicks(&campo, "D:/b.jpg");

    PulsaCelda(DataGrid2(), 1, Valor);

    EXPECT_EQ(Foto("010"), "D:/b.jpg");
    EXPECT_EQ(Foto("020"), "NULL");
    EXPECT_EQ(Caja("txtCampo_1"), "");
}

TEST_F(PanelValorTest, UnaRutaDeMasDe255CaracteresSeDesecha)
{
    AbreEnValores();

    Rellena("txtCampo_1", "C:\\" + QString(253, 'a'));

    EXPECT_EQ(avisos.cajas, Cajas{RutaLarga});
    EXPECT_EQ(Caja("txtCampo_1"), "C:\\f\\a.jpg");
    EXPECT_EQ(Foto("010"), "C:\\f\\a.jpg");

    Rellena("txtCampo_1", "C:\\" + QString(252, 'a'));
    EXPECT_EQ(avisos.cajas.size(), 1U) << "255 fit";
    EXPECT_EQ(Foto("010"), "C:\\" + QString(252, 'a'));
}

TEST_F(PanelValorTest, ExaminarGuardaLaImagenElegida)
{
    CreaFoto("olla.jpg", {400, 100});
    AbreEnValores();
    ventana.setProperty("UltimaCarpeta", carpeta.Ruta().replace('/', '\\'));
    EligeEnElBuscador("olla.jpg");

    Pulsa("CmdExaminar");

    EXPECT_TRUE(Foto("010").endsWith("\\olla.jpg"));
    EXPECT_EQ(Foto("010"), Caja("txtCampo_1"));
    EXPECT_EQ(Caja("txtretorna"), "");
}

TEST_F(PanelValorTest, UnaImagenElegidaDeMasDe255CaracteresSeDesecha)
{
    const QString larga(240, 'x');
    carpeta.CreaCarpeta(larga);
    CreaFoto(qPrintable(larga + "/olla.jpg"), {4, 4});
    AbreEnValores();
    ventana.setProperty("UltimaCarpeta", carpeta.Ruta(larga).replace('/', '\\'));
    EligeEnElBuscador("olla.jpg");

    Pulsa("CmdExaminar");

    EXPECT_EQ(avisos.cajas, Cajas{RutaLarga});
    EXPECT_EQ(Caja("txtCampo_1"), "C:\\f\\a.jpg");
    EXPECT_EQ(Foto("010"), "C:\\f\\a.jpg");
}

TEST_F(PanelValorTest, UnCampoVaciadoDejaLaFotoVacia)
{
    AbreEnValores();

    Rellena("txtCampo_1", "");

    EXPECT_TRUE(sentencias.contains(QString(SqlFoto).replace("%1", "")));
}

TEST_F(PanelValorTest, UnBuscadorCanceladoDejaLaImagenQueHabia)
{
    AbreEnValores();
    EnElDialogo([](QWidget& buscador) { buscador.close(); });

    Pulsa("CmdExaminar");

    EXPECT_EQ(Caja("txtCampo_1"), "C:\\f\\a.jpg");
    EXPECT_EQ(Foto("010"), "C:\\f\\a.jpg");
    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(PanelValorTest, LasDosFotosCarganElFichero)
{
    const QString ruta = CreaFoto("olla.jpg", {400, 100});
    AbreEnValores();

    Rellena("txtCampo_1", ruta);

    ASSERT_TRUE(QTest::qWaitFor([&] { return ImgFoto().HayFoto() && Picture1().HayFoto(); }));
    EXPECT_EQ(ImgFoto().pixmap().width(), 137) << "the wider side fills the box";
    EXPECT_NEAR(ImgFoto().pixmap().height(), 34, 1);
    EXPECT_LE(Picture1().pixmap().width(), 400) << "and the other isn't made larger than it is";
}

TEST_F(PanelValorTest, UnaFotoEnUnaUnidadQueNoEstaDejaLasDosVacias)
{
    const QString ruta = CreaFoto("olla.jpg", {40, 40});
    AbreEnValores();
    Rellena("txtCampo_1", ruta);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ImgFoto().HayFoto() && Picture1().HayFoto(); }));

    Rellena("txtCampo_1", "Q:\\fotos\\olla.jpg");

    ASSERT_TRUE(QTest::qWaitFor([&] { return !ImgFoto().HayFoto() && !Picture1().HayFoto(); }));
    EXPECT_EQ(Foto("010"), "Q:\\fotos\\olla.jpg") << "the path stays all the same";
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(PanelValorTest, QuitarPreguntaYConUnNoNoQuita)
{
    AbreEnValores();
    avisos.respuestas = {Respuesta::No};

    Pulsa("CmdQuitar");

    EXPECT_EQ(avisos.cajas, Cajas{Quitar});
    EXPECT_EQ(Foto("010"), "C:\\f\\a.jpg");
    EXPECT_EQ(Caja("txtCampo_1"), "C:\\f\\a.jpg");
}

TEST_F(PanelValorTest, ConUnSiLaImagenSeVa)
{
    const QString ruta = CreaFoto("olla.jpg", {40, 40});
    AbreEnValores();
    Rellena("txtCampo_1", ruta);
    ASSERT_TRUE(QTest::qWaitFor([&] { return ImgFoto().HayFoto() && Picture1().HayFoto(); }));
    avisos.respuestas = {Respuesta::Si};

    Pulsa("CmdQuitar");

    EXPECT_EQ(
        sentencias.last(),
        "UPDATE PS_CONF_ART_VAL SET FOTO=NULL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'");
    EXPECT_EQ(Foto("010"), "NULL");
    EXPECT_EQ(Caja("txtCampo_1"), "");
    EXPECT_FALSE(ImgFoto().HayFoto());
    EXPECT_FALSE(Picture1().HayFoto());
}

TEST_F(PanelValorTest, EditarAbreLaRutaSiTieneUnidadODireccion)
{
    AbreEnValores();
    Rellena("txtCampo_1", "https://tienda.example/olla.jpg");

    Pulsa("CmdEditar");

    EXPECT_EQ(escritorio.abiertos, QStringList("https://tienda.example/olla.jpg"));
}

TEST_F(PanelValorTest, SinUnidadAbreLaDeLaCarpetaDeFotos)
{
    programa.RutaBase = carpeta.Ruta();
    carpeta.CreaCarpeta("FOTOS");
    CreaFoto("FOTOS/A1MED020.JPG", {4, 4});
    AbreEnValores();
    PulsaCelda(DataGrid2(), 1, Valor);

    Pulsa("CmdEditar");

    EXPECT_EQ(escritorio.abiertos, QStringList(programa.RutaBase + "\\FOTOS\\A1MED020.JPG"));
}

TEST_F(PanelValorTest, UnaImagenQueNoEstaSeDice)
{
    AbreEnValores();

    Pulsa("CmdEditar");

    EXPECT_EQ(avisos.cajas, (Cajas{{"No se encuentra la imagen C:\\f\\a.jpg", 48, ""}}));
    EXPECT_EQ(escritorio.abiertos, QStringList());
}

} // namespace
