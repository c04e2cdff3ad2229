#include "apoyo/dobles.h"
#include "data/errores.h"
#include "feed/FrmGenerarXMLsolostock.h"
#include "feed/generador_de_prueba.h"
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <cstdio>
#include <gmock/gmock.h>

using namespace tolmo;

namespace {

const QString Inicial = "/casa\\HISTORICOWEB\\solostocks.xml -> /tienda/";

class FrmGenerarXMLsolostockTest : public testing::Test {
  protected:
    template <class Control> Control* C(const char* nombre)
    {
        auto* control = ventana.findChild<Control*>(nombre);
        if (!control)
            throw std::logic_error(nombre);
        return control;
    }
    void Pulsa(const char* boton) { QTest::mouseClick(C<QPushButton>(boton), Qt::LeftButton); }
    /// Types over what a box holds.
    void Escribe(const char* caja, const QString& texto)
    {
        C<QLineEdit>(caja)->selectAll();
        QTest::keyClicks(C<QLineEdit>(caja), texto);
    }
    void Muestra()
    {
        ventana.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    }

    GeneracionesDePrueba generaciones;
    AvisosDePrueba avisos;
    FrmGenerarXMLsolostock ventana{avisos, generaciones.Fabrica()};
};

// The screen.

TEST_F(FrmGenerarXMLsolostockTest, TieneSusTextos)
{
    const auto rotulo = [this](const char* control) {
        return ventana.findChild<QWidget*>(control)->property("text").toString().remove('&');
    };

    // Misspelt on purpose: it is the name by which the window is known.
    EXPECT_EQ(ventana.windowTitle(), "Generación de fichero XML para SOLOSOTCK");
    EXPECT_EQ(
        rotulo("Label2"),
        "Va a generarse un fichero .XML para solostocks. IMPORTANTE que la  tienda prestashop esté correctamente sincronizada ");
    EXPECT_EQ(rotulo("Label1"), "Ruta Destino:");
    EXPECT_EQ(rotulo("Label3"), "Carpeta FTP Destino:");
    EXPECT_EQ(rotulo("CmdSi"), "Generar");
    EXPECT_EQ(rotulo("CmdNo"), "Cancelar");
}

TEST_F(FrmGenerarXMLsolostockTest, LasCajasEmpiezanPorElDestinoInicialYSePuedenCambiar)
{
    EXPECT_EQ(C<QLineEdit>("TxtDestino")->text(), "/casa\\HISTORICOWEB\\solostocks.xml");
    EXPECT_EQ(C<QLineEdit>("TxtUrlDestino")->text(), "/tienda/");
    EXPECT_FALSE(C<QLineEdit>("TxtDestino")->isReadOnly());
    EXPECT_FALSE(C<QLineEdit>("TxtUrlDestino")->isReadOnly());
    EXPECT_EQ(C<QProgressBar>("ProgressBar1")->value(), 0);
}

TEST_F(FrmGenerarXMLsolostockTest, PorPequenaQueSeHagaSeLeeEntera)
{
    Muestra();
    ventana.resize(1, 1);
    QCoreApplication::processEvents();

    for (const QPushButton* boton : ventana.findChildren<QPushButton*>())
        EXPECT_GE(boton->width(), boton->sizeHint().width()) << boton->objectName().toStdString();
    const auto* aviso = C<QLabel>("Label2");
    EXPECT_GE(aviso->height(), aviso->heightForWidth(aviso->width()));
    ventana.resize(900, 500);
    QCoreApplication::processEvents();
    EXPECT_GT(C<QLineEdit>("TxtDestino")->width(), 600);
}

TEST_F(FrmGenerarXMLsolostockTest, ElTabuladorVaDeLasCajasALosBotones)
{
    Muestra();
    C<QLineEdit>("TxtDestino")->setFocus();
    QStringList recorrido;
    for (int i = 0; i < 4; ++i) {
        recorrido << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(recorrido, (QStringList{"TxtDestino", "TxtUrlDestino", "CmdSi", "CmdNo"}));
}

// The buttons.

TEST_F(FrmGenerarXMLsolostockTest, GenerarLanzaConLoQueDicenLasCajasYCierra)
{
    Muestra();

    Pulsa("CmdSi");

    EXPECT_EQ(generaciones.destinos, QStringList{Inicial});
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmGenerarXMLsolostockTest, LoEscritoEnLasCajasEsElDestino)
{
    Muestra();
    Escribe("TxtDestino", "C:\\feed.xml");
    Escribe("TxtUrlDestino", "/web/ xml");

    Pulsa("CmdSi");

    EXPECT_EQ(generaciones.destinos, QStringList{"C:\\feed.xml -> /web/ xml"});
}

TEST_F(FrmGenerarXMLsolostockTest, IntroEsGenerarYSusLetrasTambien)
{
    generaciones.resultados = {false, false};
    Muestra();

    QTest::keyClick(C<QLineEdit>("TxtDestino"), Qt::Key_Return);
    EXPECT_EQ(generaciones.destinos, QStringList{Inicial});

    QTest::keyClick(&ventana, Qt::Key_G, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return generaciones.destinos.size() == 2; }));
}

TEST_F(FrmGenerarXMLsolostockTest, CancelarCierraSinGenerar)
{
    Muestra();
    Pulsa("CmdNo");
    EXPECT_FALSE(ventana.isVisible());

    Muestra();
    QTest::keyClick(&ventana, Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());

    EXPECT_EQ(generaciones.destinos, QStringList{});
}

TEST_F(FrmGenerarXMLsolostockTest, SiNoLlegaASuFinSigueAbiertaConSusValores)
{
    generaciones.resultados = {false, true};
    Muestra();
    Escribe("TxtUrlDestino", "/web/");

    Pulsa("CmdSi");

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(C<QLineEdit>("TxtUrlDestino")->text(), "/web/");

    Pulsa("CmdSi");

    EXPECT_EQ(generaciones.destinos.size(), 2);
    EXPECT_EQ(generaciones.destinos[0], generaciones.destinos[1]);
    EXPECT_FALSE(ventana.isVisible());
}

// The Tag.

TEST_F(FrmGenerarXMLsolostockTest, ElTagAutoGeneraAlMostrarseYCierra)
{
    bool visible = false;
    generaciones.enMedio = [&](data::Progreso&) { visible = ventana.isVisible(); };

    EXPECT_TRUE(ventana.Muestra("AUTO"));

    EXPECT_EQ(generaciones.destinos, QStringList{Inicial});
    EXPECT_TRUE(visible);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmGenerarXMLsolostockTest, SinTagOConOtroEsperaALosBotones)
{
    for (const char* tag : {"", "auto", "STOCK"}) {
        FrmGenerarXMLsolostock otra(avisos, generaciones.Fabrica());
        QTimer::singleShot(300, &otra, &QWidget::close);

        EXPECT_TRUE(otra.Muestra(tag));

        EXPECT_EQ(generaciones.destinos, QStringList{}) << tag;
    }
}

TEST_F(FrmGenerarXMLsolostockTest, LaActivacionVieneUnaSolaVez)
{
    ventana.Muestra("AUTO");
    ventana.show();
    QTest::qWait(300);

    EXPECT_EQ(generaciones.destinos.size(), 1);
}

TEST_F(FrmGenerarXMLsolostockTest, ConOperadorElTagQueNoLlegaASuFinLoDejaEnSusManos)
{
    generaciones.resultados = {false, true};
    QTimer::singleShot(400, &ventana, [this] {
        EXPECT_TRUE(ventana.isVisible());
        Pulsa("CmdSi");
    });

    EXPECT_TRUE(ventana.Muestra("AUTO"));

    EXPECT_EQ(generaciones.destinos.size(), 2);
}

TEST_F(FrmGenerarXMLsolostockTest, SinOperadorElTagQueNoLlegaASuFinSeCierraYLoDice)
{
    generaciones.resultados = {false};
    FrmGenerarXMLsolostock sola(avisos, generaciones.Fabrica(), nullptr, false);

    EXPECT_FALSE(sola.Muestra("AUTO"));

    EXPECT_EQ(generaciones.destinos.size(), 1);
    EXPECT_FALSE(sola.isVisible());
}

TEST_F(FrmGenerarXMLsolostockTest, SinOperadorElTagQueLlegaASuFinEstaHecho)
{
    FrmGenerarXMLsolostock sola(avisos, generaciones.Fabrica(), nullptr, false);

    EXPECT_TRUE(sola.Muestra("AUTO"));
}

// While a generation is under way.

TEST_F(FrmGenerarXMLsolostockTest, EnMarchaNoSeCierraNiEmpiezaOtra)
{
    Muestra();
    QStringList cerrada;
    generaciones.enMedio = [&](data::Progreso& progreso) {
        QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdSi"); });
        QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdNo"); });
        QTest::qWait(20);
        progreso.CedeEventos();
        cerrada << (ventana.isVisible() ? "no" : "botones");
        ventana.close();
        cerrada << (ventana.isVisible() ? "no" : "close");
        QTest::keyClick(&ventana, Qt::Key_Escape);
        cerrada << (ventana.isVisible() ? "no" : "Esc");
    };

    Pulsa("CmdSi");

    EXPECT_EQ(cerrada, (QStringList{"no", "no", "no"}));
    EXPECT_EQ(generaciones.destinos.size(), 1);
    EXPECT_FALSE(ventana.isVisible());
}

/// Counts how often a widget is painted.
struct Pintadas : QObject {
    int cuantas = 0;
    bool eventFilter(QObject*, QEvent* evento) override
    {
        cuantas += evento->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(FrmGenerarXMLsolostockTest, LaBarraSePintaSinTurnoDeEventos)
{
    Muestra();
    auto* barra = C<QProgressBar>("ProgressBar1");
    Pintadas pintadas;
    barra->installEventFilter(&pintadas);
    std::vector<int> valores;
    generaciones.enMedio = [&](data::Progreso& progreso) {
        constexpr std::pair<int, int> Pasos[] = {{1, 3}, {2, 3}, {3, 3}, {90'000'000, 100'000'000}};
        for (const auto& [posicion, total] : Pasos) {
            const int antes = pintadas.cuantas;
            progreso.Avanza(posicion, total);
            EXPECT_GT(pintadas.cuantas, antes);
            valores.push_back(barra->value());
        }
    };

    Pulsa("CmdSi");

    EXPECT_EQ(valores, (std::vector{33, 66, 100, 90}));
}

TEST_F(FrmGenerarXMLsolostockTest, LosTurnosSeguidosNoRepartenEventosCadaVez)
{
    Muestra();
    int repartos = 0;
    QTimer siempre;
    QObject::connect(&siempre, &QTimer::timeout, [&] { ++repartos; });
    generaciones.enMedio = [&](data::Progreso& progreso) {
        siempre.start(0);
        for (int i = 0; i < 10000; ++i)
            progreso.CedeEventos();
        siempre.stop();
    };

    Pulsa("CmdSi");

    EXPECT_GE(repartos, 1);
    EXPECT_LT(repartos, 100);
}

// Errors.

TEST(FrmGenerarXMLsolostockSinConfiguracion, ElErrorDeLaCargaSaleDelConstructor)
{
    AvisosDePrueba avisos;
    const feed::FabricaGenerador fabrica = [](data::Progreso&) -> std::unique_ptr<feed::Generador> {
        throw data::ErrorFichero("sin configuración");
    };

    EXPECT_THROW(FrmGenerarXMLsolostock(avisos, fabrica), data::ErrorFichero);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmGenerarXMLsolostockTest, ElErrorDeLaGeneracionDeUnTagLlegaAQuienMostroLaVentana)
{
    generaciones.enMedio = [](data::Progreso&) { throw data::ErrorEjecucion(3265, "sin campo"); };

    try {
        ventana.Muestra("AUTO");
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Descripcion(), "sin campo");
    }
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(ventana.isVisible());
}

/// Boxes on standard error, where a test of the end of the process can read them.
struct AvisosEnError : data::Avisos {
    data::Respuesta Muestra(const QString& texto, int estilo, const QString&) override
    {
        std::fprintf(stderr, "caja %d: %s\n", estilo, qPrintable(texto));
        return data::Respuesta::Aceptar;
    }
};

void PulsaGenerarConError(const std::function<void()>& error)
{
    AvisosEnError avisos;
    GeneracionesDePrueba generaciones;
    generaciones.enMedio = [&](data::Progreso&) { error(); };
    FrmGenerarXMLsolostock ventana(avisos, generaciones.Fabrica());
    ventana.show();
    ventana.findChild<QPushButton*>("CmdSi")->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmGenerarXMLsolostockDeathTest, ElErrorDelBotonSeMuestraYTerminaElPrograma)
{
    EXPECT_EXIT(PulsaGenerarConError([] { throw data::ErrorEjecucion(3265, "sin campo"); }),
                testing::ExitedWithCode(1), "caja 16: ERROR: sin campo\n$");
}

TEST(FrmGenerarXMLsolostockDeathTest, ElFinDelProgramaNoMuestraOtraCaja)
{
    EXPECT_EXIT(PulsaGenerarConError([] { throw data::FinDePrograma{}; }),
                testing::ExitedWithCode(1), testing::Not(testing::ContainsRegex("caja|sigue")));
}

} // namespace
