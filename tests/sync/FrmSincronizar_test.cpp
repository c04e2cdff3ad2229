#include "apoyo/dobles.h"
#include "data/errores.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include "sync/FrmSincronizar.h"
#include "sync/lista_estado.h"
#include "sync/motor_de_prueba.h"
#include <QCheckBox>
#include <QClipboard>
#include <QCoreApplication>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>
#include <QThread>
#include <QTimer>
#include <cstdio>
#include <gmock/gmock.h>

using namespace tolmo;

namespace {

/// A caption as it is read: without the mark of its mnemonic.
QString Rotulo(const QString& texto)
{
    QString visible = texto;
    return visible.remove('&');
}

class FrmSincronizarTest : public testing::Test {
  protected:
    template <class Control> Control* C(const char* nombre)
    {
        auto* control = ventana.findChild<Control*>(nombre);
        if (!control)
            throw std::logic_error(nombre);
        return control;
    }
    void Marca(const char* caja, bool marcada) { C<QCheckBox>(caja)->setChecked(marcada); }
    bool Marcada(const char* caja) { return C<QCheckBox>(caja)->isChecked(); }

    /// Clicks on a button as the operator does: on its tab, with the mouse.
    void Pulsa(const char* boton)
    {
        auto* control = C<QPushButton>(boton);
        auto* pestanas = C<QTabWidget>("SSTab1");
        for (int i = 0; i < pestanas->count(); ++i)
            if (pestanas->widget(i)->isAncestorOf(control))
                pestanas->setCurrentIndex(i);
        QTest::mouseClick(control, Qt::LeftButton);
    }

    /// What the runs were started with, one after the other.
    QStringList Corridas()
    {
        QStringList todas;
        for (const auto& opciones : corridas.opciones)
            todas << EnPalabras(opciones);
        return todas;
    }

    ListaEstado& Lista() { return *C<ListaEstado>("LstEstado"); }
    int Lineas() { return Lista().model()->rowCount(); }
    QString Linea(int fila) { return Lista().model()->index(fila, 0).data().toString(); }
    bool SeVe(int fila)
    {
        return Lista().viewport()->rect().contains(
            Lista().visualRect(Lista().model()->index(fila, 0)));
    }
    /// A run that adds lines and lets the events have their turn.
    static void Escribe(data::Progreso& progreso, int cuantas, const QString& que)
    {
        for (int i = 1; i <= cuantas; ++i)
            progreso.LineaEstado(que + QString::number(i));
        Turno(progreso);
    }
    /// A turn of the events that isn't too soon behind the one before.
    static void Turno(data::Progreso& progreso)
    {
        QThread::msleep(60);
        progreso.CedeEventos();
    }

    CorridasDePrueba corridas;
    AvisosDePrueba avisos;
    FrmSincronizar ventana{avisos, corridas.Fabrica()};
};

struct CasoRotulo {
    const char* control;
    QString rotulo{};
};

class RotuloDe : public FrmSincronizarTest, public testing::WithParamInterface<CasoRotulo> {};

TEST_P(RotuloDe, EsElSuyo)
{
    auto* control = ventana.findChild<QWidget*>(GetParam().control);
    ASSERT_NE(control, nullptr);

    EXPECT_EQ(Rotulo(control->property("text").toString()), GetParam().rotulo);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Controles, RotuloDe,
    testing::Values(
        CasoRotulo{"CmdSincronizaTodo", "Sincronizar todos los cambios"},
        CasoRotulo{"Label3", "Se sincronizarán familias y sólo los artículos que hayan tenido cambios desde la última actualización"},
        CasoRotulo{"ChkTFamFotos", "Subir Fotos Familias"},
        CasoRotulo{"ChkTArtFotos", "Subir fotos Artículos"},
        CasoRotulo{"ChkTAdjuntos", "Subir Adjuntos"},
        CasoRotulo{"ChkTStock", "Actualizar Stock"},
        CasoRotulo{"ChkTodosFam", "SUBIR FAMILIAS (OJO, si se desmarca las familias no han debido tener cambios)."},
        CasoRotulo{"ChkTodosArticulosNoEstan", "Eliminar artículos que ya no están"},
        CasoRotulo{"CmdSincronizarArticulos", "Sincronizar artículos"},
        CasoRotulo{"Label5", "Se sincronizarán todos los artículos en el rango de selección Desde/Hasta"},
        CasoRotulo{"Label1", "Artículo Desde:"},
        CasoRotulo{"Label2", "Artículo Hasta:"},
        CasoRotulo{"TxtArtDesde", ""},
        CasoRotulo{"TxtArtHasta", ""},
        CasoRotulo{"ChkArtFotos", "Subir fotos"},
        CasoRotulo{"ChkAdjuntos", "Subir Adjuntos"},
        CasoRotulo{"ChkArtStock", "Actualizar Stock"},
        CasoRotulo{"ChkEliminarArticNoEstan", "Eliminar artículos que ya no están"},
        CasoRotulo{"CmdSincronizarFamilias", "Sincronizar sólo familias"},
        CasoRotulo{"Label4", "Se sincronizarán todas las familias"},
        CasoRotulo{"ChkFamFotos", "Subir fotos"},
        CasoRotulo{"CmdStock", "Actualizar STOCK"},
        CasoRotulo{"CmdValesDto", "Actualizar Vales de Descuento"},
        CasoRotulo{"CmdBorrarImagenesObsoletas", "Borrar imágenes no usadas para ganar espacio WEB."},
        CasoRotulo{"ChkRegenerarIndicesBusqueda", "Regenerar índices de búsqueda al finalizar (Esta opción es más lenta, pero necesaria para las búsquedas en la web)"}),
    [](const auto& caso) { return std::string(caso.param.control); });
// clang-format on

TEST_F(FrmSincronizarTest, ElTituloEsElSuyo)
{
    EXPECT_EQ(ventana.windowTitle(), "Sincronizar articulos con la Web");
}

TEST_F(FrmSincronizarTest, TodasLasCajasEmpiezanMarcadasMenosUna)
{
    for (const QCheckBox* caja : ventana.findChildren<QCheckBox*>())
        EXPECT_EQ(caja->isChecked(), caja->objectName() != "ChkEliminarArticNoEstan")
            << caja->objectName().toStdString();
    EXPECT_EQ(ventana.findChildren<QCheckBox*>().size(), 12);
}

TEST_F(FrmSincronizarTest, EnUnaPantallaPequenaCabeEnteraYSeLeenTodosLosRotulos)
{
    ventana.show();
    ventana.resize(1, 1);
    for (int i : {1, 0}) {
        C<QTabWidget>("SSTab1")->setCurrentIndex(i);
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&ventana));
        QCoreApplication::processEvents();
    }

    EXPECT_LE(ventana.width(), 1280);
    EXPECT_LE(ventana.height(), 720);
    for (const QCheckBox* caja : ventana.findChildren<QCheckBox*>())
        EXPECT_GE(caja->width(), caja->sizeHint().width()) << caja->objectName().toStdString();
    for (const QPushButton* boton : ventana.findChildren<QPushButton*>())
        EXPECT_GE(boton->width(), boton->sizeHint().width()) << boton->objectName().toStdString();
}

TEST_F(FrmSincronizarTest, ElTabuladorRecorreLosControlesEnElOrdenDeLaLectura)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    C<QPushButton>("CmdSincronizaTodo")->setFocus();
    QStringList recorrido;
    do {
        recorrido << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    } while (QApplication::focusWidget()->objectName() != recorrido.first() &&
             recorrido.size() < 40);

    EXPECT_EQ(recorrido, (QStringList{"CmdSincronizaTodo",
                                      "ChkTFamFotos",
                                      "ChkTArtFotos",
                                      "ChkTAdjuntos",
                                      "ChkTStock",
                                      "ChkTodosFam",
                                      "ChkTodosArticulosNoEstan",
                                      "CmdSincronizarArticulos",
                                      "TxtArtDesde",
                                      "TxtArtHasta",
                                      "ChkArtFotos",
                                      "ChkAdjuntos",
                                      "ChkArtStock",
                                      "ChkEliminarArticNoEstan",
                                      "CmdSincronizarFamilias",
                                      "ChkFamFotos",
                                      "ChkRegenerarIndicesBusqueda",
                                      "TxtBuscaEstado",
                                      "CmdBuscaAnterior",
                                      "CmdBuscaSiguiente",
                                      "LstEstado",
                                      "qt_tabwidget_tabbar"}));
}

TEST_F(FrmSincronizarTest, IntroPulsaElBotonQueTieneElFoco)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    C<QPushButton>("CmdSincronizarFamilias")->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    EXPECT_EQ(Corridas(), QStringList{"F [][] FotosFam con familias eliminaT indices"});
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, IntroEnUnaCasillaNoLanzaNada)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    C<QCheckBox>("ChkTStock")->setFocus();

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);

    EXPECT_EQ(Corridas(), QStringList{});
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, LasLetrasDeLosBotonesLosPulsan)
{
    const std::vector<std::pair<Qt::Key, QString>> letras{
        {Qt::Key_T, "T [][] FotosFam FotosArt Adjuntos Stock con familias eliminaT indices"},
        {Qt::Key_A, "A [][] FotosArt Adjuntos Stock con familias eliminaT indices"},
        {Qt::Key_F, "F [][] FotosFam con familias eliminaT indices"}};
    for (const auto& [letra, corrida] : letras) {
        corridas.opciones.clear();
        ventana.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));

        QTest::keyClick(&ventana, letra, Qt::AltModifier);

        EXPECT_TRUE(QTest::qWaitFor([this] { return corridas.opciones.size() == 1; }));
        EXPECT_EQ(Corridas(), QStringList{corrida});
    }
}

TEST_F(FrmSincronizarTest, NingunaLetraEsDeDosControlesDeUnaMismaPestana)
{
    auto* pestanas = C<QTabWidget>("SSTab1");
    for (int i = 0; i < pestanas->count(); ++i) {
        QString letras;
        for (int p = 0; p < pestanas->count(); ++p)
            letras += QKeySequence::mnemonic(pestanas->tabText(p)).toString().right(1);
        for (const QWidget* control : ventana.findChildren<QWidget*>()) {
            const bool enOtra =
                pestanas->isAncestorOf(control) && !pestanas->widget(i)->isAncestorOf(control);
            if (!enOtra)
                letras += QKeySequence::mnemonic(control->property("text").toString())
                              .toString()
                              .right(1);
        }
        for (const QChar letra : letras)
            EXPECT_EQ(letras.count(letra), 1) << i << ": " << letras.toStdString();
    }
}

TEST_F(FrmSincronizarTest, LaTeclaIntroEnElRangoNoLanzaNada)
{
    ventana.show();
    auto* desde = C<QLineEdit>("TxtArtDesde");
    desde->setFocus();

    QTest::keyClicks(desde, "A1");
    QTest::keyClick(desde, Qt::Key_Return);

    EXPECT_EQ(Corridas(), QStringList{});
    EXPECT_TRUE(ventana.isVisible());
}

// The families box.

TEST_F(FrmSincronizarTest, SinFamiliasNoHayFotosDeFamilias)
{
    ventana.show();

    QTest::mouseClick(C<QCheckBox>("ChkTodosFam"), Qt::LeftButton, {}, QPoint(10, 10));

    EXPECT_FALSE(Marcada("ChkTodosFam"));
    EXPECT_FALSE(Marcada("ChkTFamFotos"));
    EXPECT_FALSE(C<QCheckBox>("ChkTFamFotos")->isEnabled());

    QTest::mouseClick(C<QCheckBox>("ChkTodosFam"), Qt::LeftButton, {}, QPoint(10, 10));

    EXPECT_TRUE(C<QCheckBox>("ChkTFamFotos")->isEnabled());
    EXPECT_FALSE(Marcada("ChkTFamFotos"));
}

// The table of starts.

TEST_F(FrmSincronizarTest, TodosLosCambiosConLasCajasComoEmpiezan)
{
    ventana.show();

    Pulsa("CmdSincronizaTodo");

    EXPECT_EQ(Corridas(),
              QStringList{"T [][] FotosFam FotosArt Adjuntos Stock con familias eliminaT indices"});
}

struct CasoCaja {
    const char* caja;
    const char* boton;
    QString corrida{};
};

class CajaDesmarcada : public FrmSincronizarTest, public testing::WithParamInterface<CasoCaja> {};

TEST_P(CajaDesmarcada, QuitaLoSuyoYNadaMas)
{
    ventana.show();
    Marca(GetParam().caja, !Marcada(GetParam().caja));

    Pulsa(GetParam().boton);

    EXPECT_EQ(Corridas(), QStringList{GetParam().corrida});
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Arranques, CajaDesmarcada,
    testing::Values(
        CasoCaja{"ChkTFamFotos", "CmdSincronizaTodo", "T [][] FotosArt Adjuntos Stock con familias eliminaT indices"},
        CasoCaja{"ChkTArtFotos", "CmdSincronizaTodo", "T [][] FotosFam Adjuntos Stock con familias eliminaT indices"},
        CasoCaja{"ChkTAdjuntos", "CmdSincronizaTodo", "T [][] FotosFam FotosArt Stock con familias eliminaT indices"},
        CasoCaja{"ChkTStock", "CmdSincronizaTodo", "T [][] FotosFam FotosArt Adjuntos con familias eliminaT indices"},
        CasoCaja{"ChkTodosFam", "CmdSincronizaTodo", "T [][] FotosArt Adjuntos Stock con eliminaT indices"},
        CasoCaja{"ChkTodosArticulosNoEstan", "CmdSincronizaTodo", "T [][] FotosFam FotosArt Adjuntos Stock con familias indices"},
        CasoCaja{"ChkRegenerarIndicesBusqueda", "CmdSincronizaTodo", "T [][] FotosFam FotosArt Adjuntos Stock con familias eliminaT"},
        CasoCaja{"ChkArtFotos", "CmdSincronizarArticulos", "A [][] Adjuntos Stock con familias eliminaT indices"},
        CasoCaja{"ChkAdjuntos", "CmdSincronizarArticulos", "A [][] FotosArt Stock con familias eliminaT indices"},
        CasoCaja{"ChkArtStock", "CmdSincronizarArticulos", "A [][] FotosArt Adjuntos con familias eliminaT indices"},
        CasoCaja{"ChkEliminarArticNoEstan", "CmdSincronizarArticulos", "A [][] FotosArt Adjuntos Stock con familias eliminaT eliminaA indices"},
        CasoCaja{"ChkTFamFotos", "CmdSincronizarArticulos", "A [][] FotosArt Adjuntos Stock con familias eliminaT indices"},
        CasoCaja{"ChkFamFotos", "CmdSincronizarFamilias", "F [][] con familias eliminaT indices"},
        CasoCaja{"ChkTFamFotos", "CmdSincronizarFamilias", "F [][] FotosFam con familias eliminaT indices"},
        CasoCaja{"ChkTStock", "CmdStock", "S [][] Stock con familias eliminaT indices"},
        CasoCaja{"ChkTStock", "CmdValesDto", "V [][] con familias eliminaT indices"}),
    [](const auto& caso) { return std::string(caso.param.caja) + "En" + caso.param.boton; });
// clang-format on

TEST_F(FrmSincronizarTest, LosArticulosVanConElRangoEscrito)
{
    ventana.show();
    QTest::keyClicks(C<QLineEdit>("TxtArtDesde"), "A 10");
    QTest::keyClicks(C<QLineEdit>("TxtArtHasta"), "B'20");

    Pulsa("CmdSincronizarArticulos");

    EXPECT_EQ(Corridas(),
              QStringList{"A [A 10][B'20] FotosArt Adjuntos Stock con familias eliminaT indices"});
}

TEST_F(FrmSincronizarTest, ElRangoEscritoNoVaEnLosDemasProcesos)
{
    QTest::keyClicks(C<QLineEdit>("TxtArtDesde"), "A");
    QTest::keyClicks(C<QLineEdit>("TxtArtHasta"), "B");

    for (const char* boton :
         {"CmdSincronizaTodo", "CmdSincronizarFamilias", "CmdStock", "CmdValesDto"}) {
        ventana.show();
        Pulsa(boton);
    }

    EXPECT_EQ(Corridas(),
              (QStringList{"T [][] FotosFam FotosArt Adjuntos Stock con familias eliminaT indices",
                           "F [][] FotosFam con familias eliminaT indices",
                           "S [][] Stock con familias eliminaT indices",
                           "V [][] con familias eliminaT indices"}));
}

struct CasoTag {
    const char* tag;
    QString corrida{};
};

class TagDeArranque : public FrmSincronizarTest, public testing::WithParamInterface<CasoTag> {};

TEST_P(TagDeArranque, LanzaSuProcesoYSeCierra)
{
    ventana.Muestra(GetParam().tag);

    EXPECT_EQ(Corridas(), QStringList{GetParam().corrida});
    EXPECT_FALSE(ventana.isVisible());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(
    Arranques, TagDeArranque,
    testing::Values(
        CasoTag{"AUTO", "T [][] FotosFam FotosArt Adjuntos Stock con familias eliminaT indices"},
        CasoTag{"SOLOARTIC", "T [][] FotosArt Adjuntos Stock con eliminaT indices"},
        CasoTag{"SOLOARTIC_SIN_STOCK", "T [][] FotosArt Adjuntos con eliminaT indices"},
        CasoTag{"STOCK", "S [][] Stock con familias eliminaT indices"}),
    [](const auto& caso) { return caso.param.tag; });
// clang-format on

TEST_F(FrmSincronizarTest, LaVentanaYaSeVeCuandoSuTagLanzaElProceso)
{
    bool visible = false;
    corridas.enMedio = [&](data::Progreso&) { visible = ventana.isVisible(); };

    ventana.Muestra("STOCK");

    EXPECT_TRUE(visible);
}

TEST_F(FrmSincronizarTest, SinTagOConOtroEsperaALosBotones)
{
    for (const char* tag : {"", "CONFIG", "auto"}) {
        FrmSincronizar otra(avisos, corridas.Fabrica());
        QTimer::singleShot(300, &otra, &QWidget::close);

        otra.Muestra(tag);

        EXPECT_EQ(Corridas(), QStringList{}) << tag;
    }
}

TEST_F(FrmSincronizarTest, LaActivacionVieneUnaSolaVez)
{
    ventana.Muestra("STOCK");
    ventana.show();
    QTest::qWait(300);

    EXPECT_EQ(corridas.opciones.size(), 1U);
}

TEST_F(FrmSincronizarTest, UnBotonMasRapidoQueElTagSeLlevaLaCorrida)
{
    QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdSincronizarFamilias"); });
    corridas.enMedio = [](data::Progreso& progreso) {
        QTest::qWait(300);
        progreso.CedeEventos();
    };

    ventana.Muestra("STOCK");

    EXPECT_EQ(Corridas(), QStringList{"F [][] FotosFam con familias eliminaT indices"});
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, AlAcabarElProcesoDeUnBotonLaVentanaSeCierra)
{
    ventana.show();

    Pulsa("CmdStock");

    EXPECT_FALSE(ventana.isVisible());
}

// While a run is under way.

TEST_F(FrmSincronizarTest, ConLasPestanasApagadasNoSeCierraPorNingunCamino)
{
    ventana.show();
    QStringList cerrada;
    corridas.enMedio = [&](data::Progreso& progreso) {
        EXPECT_FALSE(C<QTabWidget>("SSTab1")->isEnabled());
        ventana.close();
        cerrada << (ventana.isVisible() ? "no" : "close");
        QTest::keyClick(&ventana, Qt::Key_Escape);
        progreso.CedeEventos();
        cerrada << (ventana.isVisible() ? "no" : "Esc");
        ventana.accept();
        cerrada << (ventana.isVisible() ? "no" : "accept");
    };

    Pulsa("CmdSincronizaTodo");

    EXPECT_EQ(cerrada, (QStringList{"no", "no", "no"}));
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, ParadaSeCierraConEscape)
{
    ventana.show();

    QTest::keyClick(&ventana, Qt::Key_Escape);

    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, AunqueVuelvanLasPestanasNoEmpiezaOtroProcesoNiSeCierra)
{
    ventana.show();
    corridas.enMedio = [&](data::Progreso& progreso) {
        progreso.HabilitaPestanas(true);
        QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdStock"); });
        QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdValesDto"); });
        QTimer::singleShot(0, &ventana, [this] { Pulsa("CmdBorrarImagenesObsoletas"); });
        QTest::qWait(20);
        progreso.CedeEventos();
        EXPECT_TRUE(ventana.isVisible());
        ventana.close();
        EXPECT_TRUE(ventana.isVisible());
    };

    Pulsa("CmdSincronizarFamilias");

    EXPECT_EQ(Corridas(), QStringList{"F [][] FotosFam con familias eliminaT indices"});
    EXPECT_EQ(corridas.purgas, 0);
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, LaListaMuestraLaUltimaLineaSinMarcarla)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&ventana));
    corridas.enMedio = [&](data::Progreso& progreso) {
        Escribe(progreso, 300, "[15/03/2024 9:05:07] linea ");
        EXPECT_TRUE(Lista().isVisible());
        EXPECT_EQ(Lineas(), 300);
        EXPECT_TRUE(SeVe(299));
    };

    Pulsa("CmdSincronizaTodo");

    EXPECT_EQ(Linea(299), "[15/03/2024 9:05:07] linea 300");
    EXPECT_FALSE(Lista().currentIndex().isValid());
    EXPECT_FALSE(Lista().selectionModel()->hasSelection());
}

TEST_F(FrmSincronizarTest, ElMotorPuedeVaciarLaLista)
{
    corridas.enMedio = [](data::Progreso& progreso) {
        progreso.LineaEstado("antigua");
        progreso.LimpiaEstado();
        progreso.LineaEstado("nueva");
        progreso.CedeEventos();
    };
    ventana.show();

    Pulsa("CmdStock");

    ASSERT_EQ(Lineas(), 1);
    EXPECT_EQ(Linea(0), "nueva");
}

TEST_F(FrmSincronizarTest, EnPlenaCorridaSeBuscaYSeCopiaEnLaLista)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    auto* caja = C<QLineEdit>("TxtBuscaEstado");
    int sitio = -1;
    corridas.enMedio = [&](data::Progreso& progreso) {
        Escribe(progreso, 200, "articulo ");
        EXPECT_FALSE(C<QTabWidget>("SSTab1")->isEnabled());
        QTimer::singleShot(0, &ventana, [&] {
            QTest::mouseClick(caja, Qt::LeftButton);
            QTest::keyClicks(caja, "articulo 12");
            QTest::keyClick(caja, Qt::Key_Return);
            QTest::keyClick(&Lista(), Qt::Key_C, Qt::ControlModifier);
            sitio = Lista().verticalScrollBar()->value();
        });
        Turno(progreso);
        Escribe(progreso, 200, "mas ");
    };

    Pulsa("CmdSincronizaTodo");

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "articulo 120");
    EXPECT_EQ(Lista().currentIndex().data(), "articulo 120");
    EXPECT_EQ(Lista().verticalScrollBar()->value(), sitio);
    EXPECT_EQ(Lineas(), 400);
    EXPECT_EQ(Corridas().size(), 1);
}

TEST_F(FrmSincronizarTest, QuienSubeEnPlenaCorridaNoVuelveAlFinalHastaQueQuiere)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    corridas.enMedio = [&](data::Progreso& progreso) {
        Escribe(progreso, 200, "linea ");
        QTest::keyClick(Lista().verticalScrollBar(), Qt::Key_Home);
        Escribe(progreso, 200, "mas ");
        EXPECT_TRUE(SeVe(0));
        QTest::keyClick(&Lista(), Qt::Key_Escape);
        EXPECT_TRUE(SeVe(399));
        Escribe(progreso, 200, "otra ");
        EXPECT_TRUE(SeVe(599));
    };

    Pulsa("CmdSincronizaTodo");

    EXPECT_EQ(Lineas(), 600);
}

TEST_F(FrmSincronizarTest, AlApagarseLasPestanasElFocoPasaALaBusqueda)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    C<QPushButton>("CmdSincronizaTodo")->setFocus();
    QString foco;
    corridas.enMedio = [&](data::Progreso&) { foco = QApplication::focusWidget()->objectName(); };

    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);

    EXPECT_EQ(foco, "TxtBuscaEstado");
}

TEST_F(FrmSincronizarTest, IntroEnLaBusquedaNoLanzaNada)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    auto* caja = C<QLineEdit>("TxtBuscaEstado");
    caja->setFocus();

    QTest::keyClicks(caja, "error");
    QTest::keyClick(caja, Qt::Key_Return);

    EXPECT_EQ(Corridas(), QStringList{});
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, EscapeAcabaPrimeroLaLecturaYLuegoCierra)
{
    corridas.enMedio = [&](data::Progreso& progreso) { Escribe(progreso, 200, "linea "); };
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    Pulsa("CmdBorrarImagenesObsoletas");
    Lista().setFocus();
    QTest::keyClick(&Lista(), Qt::Key_A, Qt::ControlModifier);

    QTest::keyClick(&Lista(), Qt::Key_Escape);
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_FALSE(Lista().selectionModel()->hasSelection());

    QTest::keyClick(&Lista(), Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, LosTurnosSeguidosNoRepartenEventosCadaVez)
{
    ventana.show();
    int repartos = 0;
    QTimer siempre;
    QObject::connect(&siempre, &QTimer::timeout, [&] { ++repartos; });
    corridas.enMedio = [&](data::Progreso& progreso) {
        siempre.start(0);
        for (int i = 0; i < 10000; ++i)
            progreso.CedeEventos();
        siempre.stop();
    };

    Pulsa("CmdStock");

    EXPECT_GE(repartos, 1);
    EXPECT_LT(repartos, 100);
}

TEST_F(FrmSincronizarTest, LaBarraSoloSeVeCuandoSePide)
{
    auto* barra = C<QProgressBar>("ProgressBar1");
    ventana.show();
    EXPECT_FALSE(barra->isVisible());
    std::vector<bool> vista;
    corridas.enMedio = [&](data::Progreso& progreso) {
        progreso.MuestraBarra(true);
        vista.push_back(barra->isVisible());
        progreso.MuestraBarra(false);
        vista.push_back(barra->isVisible());
    };

    Pulsa("CmdStock");

    EXPECT_EQ(vista, (std::vector{true, false}));
}

TEST_F(FrmSincronizarTest, LaBarraEsLaPosicionPorCienEntreElTotal)
{
    auto* barra = C<QProgressBar>("ProgressBar1");
    std::vector<int> valores;
    corridas.enMedio = [&](data::Progreso& progreso) {
        constexpr std::pair<int, int> Pasos[] = {{1, 8},  {7, 8}, {8, 8},
                                                 {-3, 8}, {0, 0}, {90'000'000, 100'000'000}};
        for (const auto& [posicion, total] : Pasos) {
            progreso.Avanza(posicion, total);
            valores.push_back(barra->value());
        }
    };
    ventana.show();

    Pulsa("CmdStock");

    EXPECT_EQ(valores, (std::vector{12, 87, 100, 0, 0, 90}));
}

TEST_F(FrmSincronizarTest, LasLineasTienenEcoParaQuienSigueElProcesoDesdeFuera)
{
    QStringList eco;
    FrmSincronizar seguida(avisos, corridas.Fabrica(), nullptr,
                           [&](const QString& linea) { eco << linea; });
    corridas.enMedio = [](data::Progreso& progreso) {
        progreso.LineaEstado("una");
        progreso.LineaEstado("dos");
    };

    seguida.Muestra("AUTO");

    EXPECT_EQ(eco, (QStringList{"una", "dos"}));
}

// The picker of articles.

TEST_F(FrmSincronizarTest, ElDobleClicEnElRangoAbreElSelectorYTomaElCodigo)
{
    QStringList codigos{"A2", "B7"};
    ventana.PonSelectorDeArticulos([&codigos](QWidget* padre) {
        auto selector = std::make_unique<QDialog>(padre);
        QTimer::singleShot(0, selector.get(), [&codigos, s = selector.get()] {
            data::ui::PonValorControl(data::ui::ControlDelLlamante(*s), codigos.takeFirst());
            s->accept();
        });
        return selector;
    });
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));

    QTest::mouseDClick(C<QLineEdit>("TxtArtDesde"), Qt::LeftButton);
    QTest::mouseDClick(C<QLineEdit>("TxtArtHasta"), Qt::LeftButton);

    EXPECT_EQ(C<QLineEdit>("TxtArtDesde")->text(), "A2");
    EXPECT_EQ(C<QLineEdit>("TxtArtHasta")->text(), "B7");
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, SinSelectorElDobleClicNoAbreNada)
{
    ventana.show();

    QTest::mouseDClick(C<QLineEdit>("TxtArtDesde"), Qt::LeftButton);

    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmSincronizarTest, EnPlenaCorridaNoSeAbreElSelector)
{
    int abiertos = 0;
    ventana.PonSelectorDeArticulos([&abiertos](QWidget* padre) {
        ++abiertos;
        return std::make_unique<QDialog>(padre);
    });
    corridas.enMedio = [this](data::Progreso&) {
        C<QTabWidget>("SSTab1")->setEnabled(true);
        QTest::mouseDClick(C<QLineEdit>("TxtArtDesde"), Qt::LeftButton);
    };
    ventana.show();

    Pulsa("CmdStock");

    EXPECT_EQ(abiertos, 0);
    EXPECT_EQ(Corridas().size(), 1);
}

// The purge of pictures.

TEST_F(FrmSincronizarTest, ElBorradoDeImagenesNoEsUnaCorridaNiCierraLaVentana)
{
    ventana.show();

    Pulsa("CmdBorrarImagenesObsoletas");

    EXPECT_EQ(corridas.purgas, 1);
    EXPECT_EQ(Corridas(), QStringList{});
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmSincronizarTest, ElBorradoDeImagenesPuedePedirseOtraVezAlAcabar)
{
    ventana.show();

    Pulsa("CmdBorrarImagenesObsoletas");
    Pulsa("CmdBorrarImagenesObsoletas");
    Pulsa("CmdStock");

    EXPECT_EQ(corridas.purgas, 2);
    EXPECT_EQ(Corridas(), QStringList{"S [][] Stock con familias eliminaT indices"});
}

TEST_F(FrmSincronizarTest, DuranteElBorradoDeImagenesNoEmpiezaNadaMas)
{
    ventana.show();
    int pulsados = 0;
    corridas.enMedio = [&](data::Progreso& progreso) {
        EXPECT_TRUE(C<QTabWidget>("SSTab1")->isEnabled());
        for (const char* boton :
             {"CmdSincronizaTodo", "CmdSincronizarArticulos", "CmdSincronizarFamilias", "CmdStock",
              "CmdValesDto", "CmdBorrarImagenesObsoletas"})
            QTimer::singleShot(0, &ventana, [&, boton] {
                Pulsa(boton);
                ++pulsados;
            });
        QTimer::singleShot(0, &ventana, [&] {
            QTest::mouseDClick(C<QLineEdit>("TxtArtDesde"), Qt::LeftButton);
            ++pulsados;
        });
        progreso.CedeEventos();
    };

    Pulsa("CmdBorrarImagenesObsoletas");

    EXPECT_EQ(pulsados, 7);
    EXPECT_EQ(corridas.purgas, 1);
    EXPECT_EQ(Corridas(), QStringList{});
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmSincronizarTest, DuranteElBorradoDeImagenesNoSeCierraPorNingunCamino)
{
    ventana.show();
    QStringList cerrada;
    corridas.enMedio = [&](data::Progreso& progreso) {
        QTimer::singleShot(0, &ventana, &QWidget::close);
        progreso.CedeEventos();
        cerrada << (ventana.isVisible() ? "no" : "close");
        QTest::keyClick(&ventana, Qt::Key_Escape);
        cerrada << (ventana.isVisible() ? "no" : "Esc");
        ventana.accept();
        cerrada << (ventana.isVisible() ? "no" : "accept");
        EXPECT_TRUE(progreso.SigueElPrograma());
    };

    Pulsa("CmdBorrarImagenesObsoletas");

    EXPECT_EQ(cerrada, (QStringList{"no", "no", "no"}));
    EXPECT_TRUE(ventana.isVisible());
    ventana.close();
    EXPECT_FALSE(ventana.isVisible());
}

/// Counts how often a widget is painted.
struct Pintadas : QObject {
    int veces = 0;
    bool eventFilter(QObject*, QEvent* evento) override
    {
        veces += evento->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

TEST_F(FrmSincronizarTest, LasLineasDelBorradoDeImagenesSeVenAntesDeLaPeticionQueLasSigue)
{
    ventana.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&ventana));
    Pintadas pintadas;
    Lista().viewport()->installEventFilter(&pintadas);
    corridas.enMedio = [&](data::Progreso& progreso) {
        for (int i = 0; i < 100; ++i)
            progreso.LineaEstado("[15/03/2024 9:05:07] linea");
        pintadas.veces = 0;
        progreso.LineaEstado("[15/03/2024 9:05:07] Comenzando bloque 2 / 9");
        EXPECT_EQ(pintadas.veces, 1);
        EXPECT_TRUE(SeVe(100));
    };

    Pulsa("CmdBorrarImagenesObsoletas");

    EXPECT_EQ(Lineas(), 101);
    Lista().viewport()->removeEventFilter(&pintadas);
}

TEST_F(FrmSincronizarTest, SiElEscritorioAcabaElProgramaElBorradoDeImagenesParaYTodoSeCierra)
{
    bool seguia = false, sigue = true;
    corridas.enMedio = [&](data::Progreso& progreso) {
        seguia = progreso.SigueElPrograma();
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        progreso.CedeEventos();
        sigue = progreso.SigueElPrograma();
        EXPECT_TRUE(ventana.isVisible());
    };
    QTimer::singleShot(0, &ventana, [&] {
        QTimer::singleShot(0, &ventana, [&] { Pulsa("CmdBorrarImagenesObsoletas"); });
        ventana.Muestra();
    });
    QTimer::singleShot(10'000, &ventana, [] { QCoreApplication::exit(9); });

    EXPECT_EQ(QApplication::exec(), 0);

    EXPECT_EQ(corridas.purgas, 1);
    EXPECT_TRUE(seguia);
    EXPECT_FALSE(sigue);
    EXPECT_FALSE(ventana.isVisible());
}

// Errors.

TEST(FrmSincronizarSinTienda, ElErrorDeLaCargaSaleDelConstructor)
{
    AvisosDePrueba avisos;
    const sync::FabricaMotor fabrica = [](data::Progreso&) -> std::unique_ptr<sync::Motor> {
        throw data::ErrorSql(data::numero_error::Conexion, "sin tienda", "ODBC");
    };

    EXPECT_THROW(FrmSincronizar(avisos, fabrica), data::ErrorSql);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmSincronizarTest, ElErrorDelProcesoDeUnTagLlegaAQuienMostroLaVentana)
{
    corridas.enMedio = [](data::Progreso&) { throw data::ErrorEjecucion(94, "uso de Null"); };

    try {
        ventana.Muestra("AUTO");
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Descripcion(), "uso de Null");
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

void PulsaConError(const char* boton, const std::function<void()>& error)
{
    AvisosEnError avisos;
    CorridasDePrueba corridas;
    corridas.enMedio = [&](data::Progreso&) { error(); };
    FrmSincronizar ventana(avisos, corridas.Fabrica());
    ventana.show();
    ventana.findChild<QPushButton*>(boton)->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmSincronizarDeathTest, ElErrorDelProcesoDeUnBotonSeMuestraYTerminaElPrograma)
{
    for (const char* boton : {"CmdStock", "CmdBorrarImagenesObsoletas"})
        EXPECT_EXIT(PulsaConError(boton, [] { throw data::ErrorEjecucion(94, "uso de Null"); }),
                    testing::ExitedWithCode(1), "caja 16: ERROR: uso de Null\n$");
}

TEST(FrmSincronizarDeathTest, ElFinDelProgramaNoMuestraOtraCaja)
{
    EXPECT_EXIT(PulsaConError("CmdStock", [] { throw data::FinDePrograma{}; }),
                testing::ExitedWithCode(1), testing::Not(testing::ContainsRegex("caja|sigue")));
}

} // namespace
