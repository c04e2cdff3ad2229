#include "sync/lista_estado.h"
#include "sync/panel_estado.h"
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

class PanelEstadoTest : public testing::Test {
  protected:
    void SetUp() override
    {
        panel.resize(700, 260);
        panel.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&panel));
    }

    template <class Control> Control* C(const char* nombre)
    {
        auto* control = panel.findChild<Control*>(nombre);
        if (!control)
            throw std::logic_error(nombre);
        return control;
    }
    void Pulsa(const char* boton) { QTest::mouseClick(C<QToolButton>(boton), Qt::LeftButton); }

    /// Adds "linea 1" to "linea n", and the events get their turn.
    void Llena(int cuantas, const QString& que = "linea ")
    {
        for (int i = 1; i <= cuantas; ++i)
            lista.Anade(que + QString::number(i));
        QCoreApplication::processEvents();
    }
    QModelIndex Linea(int fila) { return lista.model()->index(fila, 0); }
    QModelIndex Ultima() { return Linea(lista.model()->rowCount() - 1); }
    bool SeVe(const QModelIndex& linea)
    {
        return lista.viewport()->rect().contains(lista.visualRect(linea));
    }
    void Clic(int fila, Qt::KeyboardModifiers teclas = {})
    {
        QTest::mouseClick(lista.viewport(), Qt::LeftButton, teclas,
                          lista.visualRect(Linea(fila)).center());
    }
    QStringList Elegidas()
    {
        QStringList textos;
        for (const QModelIndex& indice : lista.selectionModel()->selectedRows())
            textos << indice.data().toString();
        return textos;
    }

    PanelEstado panel;
    ListaEstado& lista = panel.Lista();
};

// At the end of the list, or where somebody reads.

TEST_F(PanelEstadoTest, LaUltimaLineaSeVeSinMarcarNinguna)
{
    Llena(300);

    EXPECT_EQ(Ultima().data(), "linea 300");
    EXPECT_TRUE(SeVe(Ultima()));
    EXPECT_EQ(Elegidas(), QStringList{});
    EXPECT_FALSE(lista.currentIndex().isValid());
}

TEST_F(PanelEstadoTest, UnaLineaElegidaSeQuedaDondeEsta)
{
    Llena(300);
    Clic(298);
    const int sitio = lista.verticalScrollBar()->value();

    Llena(100, "nueva ");

    EXPECT_EQ(lista.verticalScrollBar()->value(), sitio);
    EXPECT_EQ(Elegidas(), QStringList{"linea 299"});
    EXPECT_EQ(Ultima().data(), "nueva 100");
    EXPECT_FALSE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, QuienSubeSeQuedaDondeEsta)
{
    Llena(300);
    auto* barra = lista.verticalScrollBar();
    QTest::keyClick(barra, Qt::Key_PageUp);
    const int sitio = barra->value();
    ASSERT_LT(sitio, barra->maximum());

    Llena(100, "nueva ");

    EXPECT_EQ(barra->value(), sitio);
    EXPECT_FALSE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, QuienBajaOtraVezSigueElFinal)
{
    Llena(300);
    auto* barra = lista.verticalScrollBar();
    QTest::keyClick(barra, Qt::Key_PageUp);
    QTest::keyClick(barra, Qt::Key_End);

    Llena(100, "nueva ");

    EXPECT_TRUE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, SubirVariasVecesEntreLineasNoDevuelveAlFinal)
{
    Llena(300);
    auto* barra = lista.verticalScrollBar();
    for (int i = 0; i < 5; ++i) {
        QTest::keyClick(barra, Qt::Key_PageUp);
        const int sitio = barra->value();
        Llena(10, "nueva ");
        EXPECT_EQ(barra->value(), sitio);
    }
}

TEST_F(PanelEstadoTest, ElBotonDelFinalAcabaLaLectura)
{
    Llena(300);
    EXPECT_FALSE(C<QToolButton>("CmdFinal")->isEnabled());
    Clic(299);
    Llena(100, "nueva ");
    ASSERT_TRUE(C<QToolButton>("CmdFinal")->isEnabled());

    Pulsa("CmdFinal");

    EXPECT_TRUE(SeVe(Ultima()));
    EXPECT_EQ(Elegidas(), QStringList{});
    EXPECT_FALSE(lista.currentIndex().isValid());
    EXPECT_FALSE(C<QToolButton>("CmdFinal")->isEnabled());
    Llena(100, "otra ");
    EXPECT_TRUE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, EscapeAcabaLaLectura)
{
    Llena(300);
    Clic(299);
    Llena(100, "nueva ");

    QTest::keyClick(&lista, Qt::Key_Escape);

    EXPECT_EQ(Elegidas(), QStringList{});
    EXPECT_TRUE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, AlCambiarDeTamanoSigueViendoseElFinal)
{
    Llena(300);

    panel.resize(700, 180);
    QCoreApplication::processEvents();
    EXPECT_TRUE(SeVe(Ultima()));

    panel.resize(700, 320);
    QCoreApplication::processEvents();
    EXPECT_TRUE(SeVe(Ultima()));
}

TEST_F(PanelEstadoTest, AlCambiarDeTamanoNoSeMueveLaLectura)
{
    Llena(300);
    auto* barra = lista.verticalScrollBar();
    QTest::keyClick(barra, Qt::Key_Home);

    panel.resize(700, 180);
    Llena(10, "nueva ");

    EXPECT_EQ(barra->value(), 0);
}

TEST_F(PanelEstadoTest, VaciaVuelveAEmpezarPorElFinal)
{
    Llena(300);
    Clic(299);

    lista.Anade("antigua");
    lista.Vacia();
    Llena(200, "nueva ");

    EXPECT_EQ(lista.model()->rowCount(), 200);
    EXPECT_EQ(Linea(0).data(), "nueva 1");
    EXPECT_TRUE(SeVe(Ultima()));
}

// What a line looks like.

TEST_F(PanelEstadoTest, UnaLineaLargaSePuedeLeerHastaSuFin)
{
    const QString larga = "ERROR " + QString(400, u'W') + " fin";
    lista.Anade("corta");
    lista.Anade(larga);
    lista.Anade("corta");
    QCoreApplication::processEvents();

    EXPECT_GE(lista.visualRect(Linea(1)).width(), lista.fontMetrics().horizontalAdvance(larga));
    EXPECT_GT(lista.horizontalScrollBar()->maximum(), 0);
}

TEST_F(PanelEstadoTest, UnaLineaConFinesDeLineaOcupaUnaSola)
{
    Llena(2);
    const int alto = lista.visualRect(Linea(0)).height();

    lista.Anade("ERROR: uno\r\ndos\ntres\r\n\r\n");
    QCoreApplication::processEvents();

    EXPECT_EQ(lista.visualRect(Ultima()).height(), alto);
    EXPECT_EQ(Ultima().data(), "ERROR: uno\r\ndos\ntres\r\n\r\n");
}

// Copying.

TEST_F(PanelEstadoTest, CopiaLasLineasElegidasEnElOrdenDeLaLista)
{
    Llena(9);
    Clic(6);
    Clic(2, Qt::ControlModifier);
    Clic(3, Qt::ControlModifier);

    QTest::keyClick(&lista, Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "linea 3\nlinea 4\nlinea 7");
}

TEST_F(PanelEstadoTest, CopiaUnTramo)
{
    Llena(9);
    Clic(2);
    Clic(4, Qt::ShiftModifier);

    QTest::keyClick(&lista, Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "linea 3\nlinea 4\nlinea 5");
}

TEST_F(PanelEstadoTest, CopiaTodo)
{
    Llena(3);
    lista.setFocus();

    QTest::keyClick(&lista, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&lista, Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "linea 1\nlinea 2\nlinea 3");
}

TEST_F(PanelEstadoTest, SinNadaElegidoElPortapapelesSeQuedaComoEsta)
{
    QGuiApplication::clipboard()->setText("lo de antes");
    Llena(3);
    lista.setFocus();

    QTest::keyClick(&lista, Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(QGuiApplication::clipboard()->text(), "lo de antes");
}

TEST_F(PanelEstadoTest, ElMenuDeLaListaOfreceCopiarYSeleccionarTodo)
{
    EXPECT_EQ(lista.contextMenuPolicy(), Qt::ActionsContextMenu);
    ASSERT_EQ(lista.actions().size(), 2);
    EXPECT_EQ(lista.actions()[0]->text().remove('&'), "Copiar");
    EXPECT_EQ(lista.actions()[1]->text().remove('&'), "Seleccionar todo");
}

// Searching.

class BusquedaEnElEstado : public PanelEstadoTest {
  protected:
    void SetUp() override
    {
        PanelEstadoTest::SetUp();
        for (int i = 1; i <= 300; ++i)
            lista.Anade((i % 100 == 50 ? "ERROR " : "linea ") + QString::number(i));
        QCoreApplication::processEvents();
        caja->setFocus();
    }
    QString Hallada() { return Elegidas().join('|'); }
    QString Aviso() { return C<QLabel>("LblHallazgo")->text(); }

    QLineEdit* caja = C<QLineEdit>("TxtBuscaEstado");
};

TEST_F(BusquedaEnElEstado, AlEscribirSeEligeLaPrimeraLineaQueLoTiene)
{
    QTest::keyClicks(caja, "error");

    EXPECT_EQ(Hallada(), "ERROR 50");
    EXPECT_TRUE(SeVe(Linea(49)));
    EXPECT_EQ(Aviso(), "");
    EXPECT_TRUE(caja->hasFocus());
}

TEST_F(BusquedaEnElEstado, AlSeguirEscribiendoLaLineaElegidaSigueSiLoTiene)
{
    QTest::keyClicks(caja, "error");
    QTest::keyClick(caja, Qt::Key_Return);
    ASSERT_EQ(Hallada(), "ERROR 150");

    QTest::keyClicks(caja, " 1");

    EXPECT_EQ(Hallada(), "ERROR 150");
}

TEST_F(BusquedaEnElEstado, IntroVaALaSiguienteYMayusculasIntroALaAnterior)
{
    QTest::keyClicks(caja, "error");

    QTest::keyClick(caja, Qt::Key_Return);
    EXPECT_EQ(Hallada(), "ERROR 150");
    QTest::keyClick(caja, Qt::Key_Enter);
    EXPECT_EQ(Hallada(), "ERROR 250");
    QTest::keyClick(caja, Qt::Key_Return);
    EXPECT_EQ(Hallada(), "ERROR 50");

    QTest::keyClick(caja, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Hallada(), "ERROR 250");
    QTest::keyClick(caja, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(Hallada(), "ERROR 150");
}

TEST_F(BusquedaEnElEstado, LosBotonesYSusTeclasHacenLoMismo)
{
    QTest::keyClicks(caja, "error");

    Pulsa("CmdBuscaSiguiente");
    EXPECT_EQ(Hallada(), "ERROR 150");
    QTest::keyClick(&panel, Qt::Key_F3);
    EXPECT_EQ(Hallada(), "ERROR 250");
    Pulsa("CmdBuscaAnterior");
    EXPECT_EQ(Hallada(), "ERROR 150");
    QTest::keyClick(&panel, Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(Hallada(), "ERROR 50");
}

TEST_F(BusquedaEnElEstado, SigueDesdeLaLineaQueEligeElOperador)
{
    QTest::keyClicks(caja, "error");
    QTest::keyClick(lista.verticalScrollBar(), Qt::Key_End);
    Clic(298);

    QTest::keyClick(&lista, Qt::Key_F3, Qt::ShiftModifier);

    EXPECT_EQ(Hallada(), "ERROR 250");
}

TEST_F(BusquedaEnElEstado, LoQueNoEstaSeDiceYDejaLaLineaComoEstaba)
{
    QTest::keyClicks(caja, "error");
    QTest::keyClicks(caja, "zz");

    EXPECT_EQ(Aviso(), "No se encuentra.");
    EXPECT_EQ(Hallada(), "ERROR 50");

    QTest::keyClick(caja, Qt::Key_Backspace);
    QTest::keyClick(caja, Qt::Key_Backspace);
    EXPECT_EQ(Aviso(), "");
}

TEST_F(BusquedaEnElEstado, LoHalladoEsUnaLecturaYLasLineasNuevasNoLaMueven)
{
    QTest::keyClicks(caja, "error");
    const int sitio = lista.verticalScrollBar()->value();

    Llena(100, "nueva ");

    EXPECT_EQ(lista.verticalScrollBar()->value(), sitio);
    EXPECT_EQ(Hallada(), "ERROR 50");
}

TEST_F(BusquedaEnElEstado, EscapeBorraLaBusquedaYVuelveAlFinal)
{
    QTest::keyClicks(caja, "error");

    QTest::keyClick(caja, Qt::Key_Escape);

    EXPECT_EQ(caja->text(), "");
    EXPECT_EQ(Hallada(), "");
    EXPECT_TRUE(SeVe(Ultima()));
}

TEST_F(BusquedaEnElEstado, CtrlFLlevaALaBusqueda)
{
    QTest::keyClicks(caja, "error");
    lista.setFocus();

    QTest::keyClick(&lista, Qt::Key_F, Qt::ControlModifier);

    EXPECT_TRUE(caja->hasFocus());
    EXPECT_EQ(caja->selectedText(), "error");
}

TEST_F(BusquedaEnElEstado, SinTextoLosBotonesLlevanALaCaja)
{
    lista.setFocus();

    Pulsa("CmdBuscaSiguiente");

    EXPECT_TRUE(caja->hasFocus());
    EXPECT_EQ(Hallada(), "");
}

TEST_F(BusquedaEnElEstado, ElTabuladorVaDeLaBusquedaALaLista)
{
    QTest::keyClicks(caja, "error");
    QStringList recorrido;
    for (int i = 0; i < 5; ++i) {
        recorrido << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }

    EXPECT_EQ(recorrido, (QStringList{"TxtBuscaEstado", "CmdBuscaAnterior", "CmdBuscaSiguiente",
                                      "CmdFinal", "LstEstado"}));
}

} // namespace
