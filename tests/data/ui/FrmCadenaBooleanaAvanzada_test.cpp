#include "apoyo/programa_de_prueba.h"
#include "data/ui/FrmCadenaBooleanaAvanzada.h"
#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <gmock/gmock.h>

using namespace tolmo;
using data::Letra;
using data::Respuesta;
using testing::ElementsAre;
using Caja = AvisosDePrueba::Caja;

void PrintTo(const QString& texto, std::ostream* salida)
{
    *salida << '"' << texto.toStdString() << '"';
}

namespace {

enum { Nexo, Condicion1, Operador, Condicion2, Sentencia };

/// The window over its caller, used as an operator does: by keys and clicks.
class FrmCadenaBooleanaAvanzadaTest : public testing::Test {
  protected:
    void SetUp() override
    {
        p.programa.DialectoActivo = data::Dialecto::Access;
        TxtFiltro.hide();
        ventana.ArrayDirectoFiltro({{"Nombre", "NOMBRE", Letra::Texto},
                                    {"Correo", "EMAIL", Letra::Texto},
                                    {"Alta", "FECHAALTA", Letra::Fecha},
                                    {"Tarifa", "CODTARIFA", Letra::Numero}});
        Abre();
    }
    void Abre()
    {
        ventana.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    }

    template <class Control> Control* C(const char* nombre)
    {
        auto* control = ventana.findChild<Control*>(nombre);
        if (!control)
            throw std::logic_error(nombre);
        return control;
    }
    QTableWidget* FlexCond() { return C<QTableWidget>("FlexCond"); }

    /// A key, as the desktop hands it on: to the list that is dropped down, else to the window.
    void Tecla(Qt::Key tecla, Qt::KeyboardModifiers con = {})
    {
        QTest::keyClick(DelTeclado(), tecla, con);
        QCoreApplication::processEvents();
    }
    void Escribe(const QString& texto)
    {
        for (const QChar c : texto) {
            QTest::sendKeyEvent(QTest::Click, DelTeclado(), Qt::Key_unknown, QString(c),
                                Qt::NoModifier);
            QCoreApplication::processEvents();
        }
    }
    QWidget* DelTeclado()
    {
        QWidget* lista = QApplication::activePopupWidget();
        return (lista ? lista : &ventana)->focusWidget();
    }
    void Pulsa(const char* boton) { QTest::mouseClick(C<QPushButton>(boton), Qt::LeftButton); }
    QRect LugarDe(int fila, int columna)
    {
        return FlexCond()->visualItemRect(FlexCond()->item(fila, columna));
    }
    /// Where a cell is in the window.
    QPoint EnVentana(int fila, int columna)
    {
        return FlexCond()->viewport()->mapTo(&ventana, LugarDe(fila, columna).center());
    }
    void PulsaCelda(int fila, int columna)
    {
        QTest::mouseClick(ventana.windowHandle(), Qt::LeftButton, {}, EnVentana(fila, columna));
        QCoreApplication::processEvents();
    }
    void PulsaEnLista(const char* caja, int posicion)
    {
        QAbstractItemView* lista = C<QComboBox>(caja)->view();
        const QModelIndex elegida = lista->model()->index(posicion, 0);
        QTest::mouseClick(lista->viewport(), Qt::LeftButton, {},
                          lista->visualRect(elegida).center());
        QCoreApplication::processEvents();
    }

    /// The box that stands over a cell, with its list dropped down or not; nullptr for none.
    QComboBox* Abierta()
    {
        QComboBox* abierta = nullptr;
        for (const char* nombre : {"CmbAndOr", "CmbObjVar", "CmbOperador"})
            if (C<QComboBox>(nombre)->isVisible()) {
                EXPECT_EQ(abierta, nullptr) << "two boxes at once";
                abierta = C<QComboBox>(nombre);
            }
        return abierta;
    }
    QString NombreDeAbierta() { return Abierta() ? Abierta()->objectName() : QString(); }
    bool Desplegada() { return Abierta() && Abierta()->view()->isVisible(); }

    QStringList Fila(int fila)
    {
        QStringList celdas;
        for (int columna = Nexo; columna < Sentencia; ++columna)
            celdas << FlexCond()->item(fila, columna)->text();
        return celdas;
    }
    QStringList Textos(const char* caja)
    {
        QStringList textos;
        for (int i = 0; i < C<QComboBox>(caja)->count(); ++i)
            textos << C<QComboBox>(caja)->itemText(i);
        return textos;
    }
    /// Writes "Nombre = valor" into the first row, by keys.
    void EscribePrimeraFila(const QString& valor)
    {
        PulsaCelda(0, Condicion1);
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Return);
        Escribe(valor);
        Tecla(Qt::Key_Return);
    }

    ProgramaDePrueba p{};
    QWidget llamante{};
    QLineEdit TxtFiltro{"(EMAIL IS NULL)", &llamante};
    FrmCadenaBooleanaAvanzada ventana{p.programa, &TxtFiltro};
};

TEST_F(FrmCadenaBooleanaAvanzadaTest, TieneSusTextos)
{
    EXPECT_EQ(ventana.windowTitle(), "Constructor condiciones");
    EXPECT_EQ(C<QPushButton>("CmdSobreAnterior")->text(), "&Aplicar sobre anterior");
    EXPECT_EQ(C<QPushButton>("CmdQuitarFiltro")->text(), "&Quitar condic.");
    EXPECT_EQ(C<QPushButton>("CmdEliminarFila")->text(), "Eliminar Fila");
    QStringList titulos;
    for (int columna = 0; columna < FlexCond()->columnCount(); ++columna)
        titulos << FlexCond()->horizontalHeaderItem(columna)->text();
    EXPECT_EQ(titulos, QStringList({"", "Condicion 1", "Op.", "Condicion 2", "Sentencia"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, EmpiezaConUnaFilaVaciaYSinCajas)
{
    EXPECT_EQ(FlexCond()->rowCount(), 1);
    EXPECT_EQ(Fila(0), QStringList({"", "", "", ""}));
    EXPECT_EQ(Abierta(), nullptr);
    EXPECT_TRUE(FlexCond()->hasFocus());
    EXPECT_EQ(FlexCond()->currentColumn(), Condicion1);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LasCajasTienenSusPalabras)
{
    EXPECT_EQ(Textos("CmbAndOr"), QStringList({"Y", "O", "Y NO", "O NO"}));
    EXPECT_EQ(C<QComboBox>("CmbAndOr")->currentText(), "Y");
    EXPECT_EQ(Textos("CmbOperador"), QStringList({"=", "<", ">", "<=", ">=", "<>", "Cont."}));
    EXPECT_EQ(C<QComboBox>("CmbOperador")->currentText(), "=");
    EXPECT_EQ(Textos("CmbObjVar"), QStringList({"Nombre", "Correo", "Alta", "Tarifa", "(VACIO)"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, CadaCeldaTieneSuCajaDesplegadaEncima)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    const char* cajas[] = {"CmbAndOr", "CmbObjVar", "CmbOperador", "CmbObjVar"};
    for (int columna = Nexo; columna <= Condicion2; ++columna) {
        PulsaCelda(1, columna);

        EXPECT_EQ(NombreDeAbierta(), cajas[columna]);
        EXPECT_TRUE(Desplegada()) << columna;
        EXPECT_EQ(Abierta()->geometry(), LugarDe(1, columna));
        EXPECT_EQ(Abierta()->isEditable(), columna == Condicion2);
        Tecla(Qt::Key_Escape);
    }
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, NiLaPrimeraPalabraNiLasSentenciasTienenCaja)
{
    PulsaCelda(0, Condicion1);
    Tecla(Qt::Key_Escape);

    PulsaCelda(0, Nexo);
    EXPECT_EQ(Abierta(), nullptr);
    PulsaCelda(0, Sentencia);
    EXPECT_EQ(Abierta(), nullptr);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SeConstruyeConElTeclado)
{
    Tecla(Qt::Key_Return); // Condicion 1
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(NombreDeAbierta(), "CmbOperador");
    Tecla(Qt::Key_End); // Cont.
    Tecla(Qt::Key_Return);
    Escribe("ana");
    Tecla(Qt::Key_Return);
    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "Cont.", "ana"}));
    EXPECT_EQ(FlexCond()->rowCount(), 2);
    EXPECT_EQ(NombreDeAbierta(), "CmbAndOr");
    Tecla(Qt::Key_Down); // O
    Tecla(Qt::Key_Return);
    Escribe("A"); // Alta, by its letter
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Down); // <
    Tecla(Qt::Key_Return);
    Escribe("5/3/2024");
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(Fila(1), QStringList({"O", "Alta", "<", "5/3/2024"}));
    Tecla(Qt::Key_Tab); // the new row isn't begun
    EXPECT_TRUE(C<QPushButton>("CmdEliminarFila")->hasFocus());
    Tecla(Qt::Key_Tab);
    EXPECT_TRUE(C<QPushButton>("CmdAceptar")->hasFocus());
    Tecla(Qt::Key_Return);

    EXPECT_EQ(TxtFiltro.text(),
              "(NOMBRE Like '%ana%'   Or FECHAALTA < Format('05/03/2024','dd/mm/yyyy'))");
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SeConstruyeConElRaton)
{
    PulsaCelda(0, Condicion1);
    PulsaEnLista("CmbObjVar", 1); // Correo
    EXPECT_EQ(Fila(0), QStringList({"", "Correo", "", ""}));
    PulsaCelda(0, Operador);
    PulsaEnLista("CmbOperador", 5); // <>
    PulsaCelda(0, Condicion2);
    PulsaEnLista("CmbObjVar", 0); // Nombre
    EXPECT_EQ(FlexCond()->rowCount(), 2);
    PulsaCelda(1, Nexo);
    PulsaEnLista("CmbAndOr", 2); // Y NO
    PulsaCelda(1, Condicion1);
    PulsaEnLista("CmbObjVar", 3); // Tarifa
    PulsaCelda(1, Condicion2);
    PulsaEnLista("CmbObjVar", 4); // (VACIO)
    EXPECT_EQ(Fila(1), QStringList({"Y NO", "Tarifa", "=", "(VACIO)"}));
    Pulsa("CmdAceptar");

    EXPECT_EQ(TxtFiltro.text(), "(EMAIL <> NOMBRE  And Not CODTARIFA IS NULL)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ElRatonEntraAlSoltarElBoton)
{
    // Before, letting it go would choose the entry that came up below the mouse.
    QTest::mousePress(ventana.windowHandle(), Qt::LeftButton, {}, EnVentana(0, Operador));
    QCoreApplication::processEvents();
    EXPECT_EQ(Abierta(), nullptr);

    QTest::mouseRelease(ventana.windowHandle(), Qt::LeftButton, {}, EnVentana(0, Operador));
    QCoreApplication::processEvents();
    EXPECT_TRUE(Desplegada());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, DeUnaListaDesplegadaSePasaAOtraCelda)
{
    PulsaCelda(0, Condicion1);
    PulsaCelda(0, Condicion2); // takes the list up
    EXPECT_FALSE(Desplegada());
    PulsaCelda(0, Condicion2);

    EXPECT_EQ(FlexCond()->currentColumn(), Condicion2);
    EXPECT_TRUE(Desplegada());
    EXPECT_EQ(Abierta()->geometry(), LugarDe(0, Condicion2));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, UnaTeclaEntraEnLaCeldaMarcada)
{
    for (const Qt::Key tecla :
         {Qt::Key_Return, Qt::Key_Enter, Qt::Key_F2, Qt::Key_F4, Qt::Key_Space}) {
        Tecla(tecla);
        EXPECT_TRUE(Desplegada()) << tecla;
        Tecla(Qt::Key_Escape);
        EXPECT_TRUE(FlexCond()->hasFocus());
    }
    Tecla(Qt::Key_Down, Qt::AltModifier);
    EXPECT_TRUE(Desplegada());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LoQueSeEscribeSobreLaCeldaMarcadaEmpiezaLaEleccion)
{
    Escribe("t");
    Tecla(Qt::Key_Return);

    EXPECT_EQ(Fila(0), QStringList({"", "Tarifa", "", ""}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LasFlechasEntranEnOtraCelda)
{
    Tecla(Qt::Key_Right);

    EXPECT_EQ(NombreDeAbierta(), "CmbOperador");
    EXPECT_TRUE(Desplegada());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ElTabuladorTomaElOperadorQueSeVe)
{
    PulsaCelda(0, Condicion1);
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Tab);
    Tecla(Qt::Key_Tab);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", ""}));
    EXPECT_EQ(NombreDeAbierta(), "CmbObjVar");
    EXPECT_TRUE(Desplegada());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LoEscritoNoSeCompletaConUnCampo)
{
    EscribePrimeraFila("Nom");

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Nom"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LoEscritoPuedeCorregirseYSustituyeALoQueHabia)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);

    PulsaCelda(0, Condicion2);
    EXPECT_EQ(Abierta()->currentText(), "Ana");
    Escribe("Evá");
    Tecla(Qt::Key_Backspace);
    Escribe("a");
    Tecla(Qt::Key_Return);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Eva"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ConLasFlechasSeTocaLoQueHabiaSinBorrarlo)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);

    PulsaCelda(0, Condicion2);
    Tecla(Qt::Key_Right);
    Escribe("x");
    Tecla(Qt::Key_Return);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Anax"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, UnaPalabraYaElegidaSeVeAlVolver)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    PulsaCelda(0, Operador);
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Escape);

    PulsaCelda(0, Operador);

    EXPECT_EQ(Abierta()->currentText(), "<");
    Tecla(Qt::Key_Return);
    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "<", "Ana"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, EscapeCierraLaCajaYDespuesLaVentana)
{
    PulsaCelda(0, Condicion1);
    Tecla(Qt::Key_Down);

    Tecla(Qt::Key_Escape);
    EXPECT_EQ(Abierta(), nullptr);
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(Fila(0), QStringList({"", "", "", ""}));

    Tecla(Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(TxtFiltro.text(), "(EMAIL IS NULL)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, EscapeDejaElValorComoEstaba)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    PulsaCelda(0, Condicion2);
    Escribe("otra");

    Tecla(Qt::Key_Escape);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Ana"}));
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, EntrarEnOtraCeldaGuardaLoEscrito)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    PulsaCelda(0, Condicion2);
    Escribe("Eva");

    PulsaCelda(0, Operador);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Eva"}));
    EXPECT_EQ(NombreDeAbierta(), "CmbOperador");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, IntroTomaLaPalabraQueUneYElTabuladorPasaDeLargo)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Tab);
    EXPECT_EQ(Fila(1), QStringList({"", "", "", ""}));
    EXPECT_TRUE(C<QPushButton>("CmdEliminarFila")->hasFocus());

    PulsaCelda(1, Nexo);
    Tecla(Qt::Key_Return);
    EXPECT_EQ(Fila(1), QStringList({"Y", "", "", ""}));
    EXPECT_EQ(FlexCond()->currentColumn(), Condicion1);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ElTabuladorTomaLaPalabraQueSeHaMarcado)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Down);
    Tecla(Qt::Key_Tab);

    EXPECT_EQ(Fila(1), QStringList({"O", "", "", ""}));
    EXPECT_EQ(FlexCond()->currentColumn(), Condicion1);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, MayusculasTabuladorVaHaciaAtras)
{
    EscribePrimeraFila("Ana");

    Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(FlexCond()->currentRow(), 0);
    EXPECT_EQ(FlexCond()->currentColumn(), Condicion2);
    EXPECT_EQ(Fila(1), QStringList({"", "", "", ""}));
    Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(FlexCond()->currentColumn(), Condicion1);
    Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(Abierta(), nullptr);
    EXPECT_TRUE(C<QPushButton>("CmdCancelar")->hasFocus());
    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Ana"}));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ElTabuladorVaEnElOrdenDeLaVista)
{
    const QStringList orden{"FlexCond",         "CmdEliminarFila", "CmdAceptar",
                            "CmdSobreAnterior", "CmdQuitarFiltro", "CmdCancelar"};
    C<QPushButton>("CmdEliminarFila")->setFocus();
    for (int i = 1; i < orden.size(); ++i) {
        EXPECT_EQ(ventana.focusWidget()->objectName(), orden[i]);
        Tecla(Qt::Key_Tab);
    }
    EXPECT_TRUE(FlexCond()->hasFocus());
    Tecla(Qt::Key_Backtab, Qt::ShiftModifier); // over the cells, to the first one
    while (Abierta())
        Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    for (auto i = orden.size() - 1; i > 0; --i) {
        EXPECT_EQ(ventana.focusWidget()->objectName(), orden[i]);
        Tecla(Qt::Key_Backtab, Qt::ShiftModifier);
    }
    EXPECT_TRUE(FlexCond()->hasFocus());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LaSentenciaSeVeAlCompletarLaFila)
{
    EscribePrimeraFila("Ana");

    EXPECT_EQ(FlexCond()->item(0, Sentencia)->text(), "NOMBRE = 'Ana'");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LaPrimeraFilaNoSeElimina)
{
    PulsaCelda(0, Condicion1);
    Tecla(Qt::Key_Escape);
    Pulsa("CmdEliminarFila");

    EXPECT_THAT(p.avisos.cajas, ElementsAre(Caja{"No se puede eliminar la primera fila", 48, ""}));
    EXPECT_EQ(FlexCond()->rowCount(), 1);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LaFilaMarcadaSeEliminaYSuCajaSeVa)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Return);
    PulsaEnLista("CmbObjVar", 1);
    ASSERT_EQ(Fila(1), QStringList({"Y", "Correo", "", ""}));

    Pulsa("CmdEliminarFila");

    EXPECT_EQ(Abierta(), nullptr);
    EXPECT_TRUE(FlexCond()->hasFocus());
    EXPECT_EQ(FlexCond()->rowCount(), 2);
    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "Ana"}));
    EXPECT_EQ(Fila(1), QStringList({"", "", "", ""}));
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LaTeclaSuprimirEliminaLaFila)
{
    for (const Qt::KeyboardModifier con : {Qt::NoModifier, Qt::ControlModifier}) {
        EscribePrimeraFila("Ana");
        Tecla(Qt::Key_Down);
        Tecla(Qt::Key_Return);
        Tecla(Qt::Key_Escape);
        ASSERT_EQ(Fila(1).first(), "O");

        Tecla(Qt::Key_Delete, con);

        // A button that is pressed by its key stays down for a moment.
        EXPECT_TRUE(QTest::qWaitFor([&] { return Fila(1).join("").isEmpty(); }));
        EXPECT_EQ(FlexCond()->rowCount(), 2);
    }
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SuprimirDentroDeUnValorBorraTexto)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    PulsaCelda(0, Condicion2);
    Tecla(Qt::Key_Delete);
    Escribe("x");
    Tecla(Qt::Key_Return);

    EXPECT_EQ(Fila(0), QStringList({"", "Nombre", "=", "x"}));
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SinFilasAceptarEscribeLosParentesis)
{
    Pulsa("CmdAceptar");

    EXPECT_EQ(TxtFiltro.text(), "()");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SobreAnteriorAnadeLaCondicion)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    Pulsa("CmdSobreAnterior");

    EXPECT_EQ(TxtFiltro.text(), "(EMAIL IS NULL) AND (NOMBRE = 'Ana')");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, SobreAnteriorSinAnteriorSoloPoneLaCondicion)
{
    TxtFiltro.clear();
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    Pulsa("CmdSobreAnterior");

    EXPECT_EQ(TxtFiltro.text(), "(NOMBRE = 'Ana')");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, QuitarCondicionVaciaElControl)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    Pulsa("CmdQuitarFiltro");

    EXPECT_EQ(TxtFiltro.text(), "");
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, CancelarYCerrarElMarcoDejanElControlComoEstaba)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    Pulsa("CmdCancelar");
    EXPECT_EQ(TxtFiltro.text(), "(EMAIL IS NULL)");
    EXPECT_FALSE(ventana.isVisible());

    Abre();
    ventana.close();
    EXPECT_EQ(TxtFiltro.text(), "(EMAIL IS NULL)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LoQueNoVaSeDiceYLaVentanaSigue)
{
    PulsaCelda(0, Condicion1);
    PulsaEnLista("CmbObjVar", 2); // Alta
    PulsaCelda(0, Condicion2);
    Escribe("ayer");
    Pulsa("CmdAceptar");

    EXPECT_THAT(p.avisos.cajas,
                ElementsAre(Caja{"No está permitido. Linea 1\r\nEl valor tiene que ser una fecha.",
                                 48, ""}));
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(Fila(0), QStringList({"", "Alta", "=", "ayer"}));
    EXPECT_EQ(FlexCond()->item(0, Sentencia)->text(), "");
    EXPECT_EQ(Abierta(), nullptr);
    EXPECT_EQ(TxtFiltro.text(), "(EMAIL IS NULL)");
    EXPECT_EQ(FlexCond()->verticalHeader()->model()->headerData(0, Qt::Vertical), 1);
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, UnaFilaAMediasSePregunta)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Escape);
    p.avisos.respuestas = {Respuesta::No, Respuesta::Si};

    Pulsa("CmdAceptar");
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(Fila(1), QStringList({"Y", "", "", ""}));

    Pulsa("CmdAceptar");
    EXPECT_THAT(p.avisos.cajas,
                ElementsAre(Caja{"La última fila no está completa, ¿Eliminar?", 52, ""},
                            Caja{"La última fila no está completa, ¿Eliminar?", 52, ""}));
    EXPECT_EQ(TxtFiltro.text(), "(NOMBRE = 'Ana')");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LoQueAunSeEscribeCuentaAlAceptarPorSuTecla)
{
    PulsaCelda(0, Condicion1);
    PulsaEnLista("CmbObjVar", 3); // Tarifa
    PulsaCelda(0, Condicion2);
    Escribe("7");
    Tecla(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !ventana.isVisible(); }));

    EXPECT_EQ(TxtFiltro.text(), "(CODTARIFA = 7)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, UnSiTecleadoEsVerdadEnUnCampoLogico)
{
    ventana.close();
    ventana.ArrayDirectoFiltro({{"Activo", "ACTIVO", Letra::Logica}});
    Abre();
    EscribePrimeraFila("si");
    EXPECT_EQ(Fila(0), QStringList({"", "Activo", "=", "si"}));
    Tecla(Qt::Key_Escape);
    Tecla(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !ventana.isVisible(); }));

    EXPECT_EQ(TxtFiltro.text(), "(ACTIVO = TRUE)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, ContieneConUnaFechaNoEscribeUnaFecha)
{
    Tecla(Qt::Key_Return);
    Escribe("A"); // Alta
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_End); // Cont.
    Tecla(Qt::Key_Return);
    Escribe("5/3/2024");
    Tecla(Qt::Key_Return);
    EXPECT_EQ(Fila(0), QStringList({"", "Alta", "Cont.", "5/3/2024"}));
    Tecla(Qt::Key_Escape);
    Tecla(Qt::Key_E, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return !ventana.isVisible(); }));

    EXPECT_EQ(TxtFiltro.text(), "(FECHAALTA Like '%5/3/2024%')");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, CadaAperturaEmpiezaDeNuevo)
{
    EscribePrimeraFila("Ana");
    Tecla(Qt::Key_Escape);
    Pulsa("CmdAceptar");

    Abre();

    EXPECT_EQ(FlexCond()->rowCount(), 1);
    EXPECT_EQ(Fila(0), QStringList({"", "", "", ""}));
    Pulsa("CmdAceptar");
    EXPECT_EQ(TxtFiltro.text(), "()");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LosCamposPuedenVenirDeUnGrid)
{
    ventana.close();
    const std::vector<data::ColumnaGrid> columnas{{.DataField = "CODARTICULO", .Caption = "Código"},
                                                  {.DataField = "SECUENCIA", .Caption = "Orden"}};
    const std::vector<data::Campo> campos{{.nombre = "CODARTICULO", .tipo = 202},
                                          {.nombre = "SECUENCIA", .tipo = 3}};

    ventana.ArrayFiltro(columnas, campos);
    Abre();

    EXPECT_EQ(Textos("CmbObjVar"), QStringList({"Código", "Orden", "(VACIO)"}));
    PulsaCelda(0, Condicion1);
    PulsaEnLista("CmbObjVar", 1);
    PulsaCelda(0, Condicion2);
    Escribe("7");
    Tecla(Qt::Key_Return);
    Tecla(Qt::Key_Escape);
    Pulsa("CmdAceptar");
    EXPECT_EQ(TxtFiltro.text(), "(SECUENCIA = 7)");
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, LaCajaSigueALaCeldaCuandoLaVentanaCambia)
{
    PulsaCelda(0, Condicion2);
    const int antes = Abierta()->width();
    Tecla(Qt::Key_Down, Qt::AltModifier); // the list goes up, the box stays
    ASSERT_NE(Abierta(), nullptr);

    ventana.resize(ventana.width() + 300, ventana.height() + 100);
    QCoreApplication::processEvents();

    EXPECT_GT(Abierta()->width(), antes);
    EXPECT_EQ(Abierta()->geometry(), LugarDe(0, Condicion2));
}

TEST_F(FrmCadenaBooleanaAvanzadaTest, NadaQuedaCortadoNiEnLoMasPequeno)
{
    ventana.resize(1, 1);
    QCoreApplication::processEvents();

    EXPECT_LE(ventana.width(), 1280);
    EXPECT_LE(ventana.height(), 720);
    for (const QPushButton* boton : ventana.findChildren<QPushButton*>()) {
        EXPECT_GE(boton->width(), boton->sizeHint().width()) << boton->text().toStdString();
        EXPECT_TRUE(ventana.rect().contains(boton->geometry())) << boton->text().toStdString();
    }
    EXPECT_GE(FlexCond()->columnWidth(Nexo), C<QComboBox>("CmbAndOr")->sizeHint().width());
    EXPECT_GE(FlexCond()->columnWidth(Operador), C<QComboBox>("CmbOperador")->sizeHint().width());
    EXPECT_GE(FlexCond()->rowHeight(0), C<QComboBox>("CmbObjVar")->sizeHint().height());
}

TEST(FrmCadenaBooleanaAvanzadaSinControl, SinControlQueLaRecibaLaCondicionSePierde)
{
    ProgramaDePrueba p;
    auto control = std::make_unique<QLineEdit>();
    FrmCadenaBooleanaAvanzada ventana(p.programa, control.get());
    control.reset();
    ventana.show();

    QTest::mouseClick(ventana.findChild<QPushButton*>("CmdSobreAnterior"), Qt::LeftButton);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_TRUE(p.avisos.cajas.empty());
}

} // namespace
