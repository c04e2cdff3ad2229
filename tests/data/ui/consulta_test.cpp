#include "apoyo/programa_en_error.h"
#include "articulos_en_pantalla.h"
#include "data/ui/control_activo.h"
#include "data/ui/ventana_consulta.h"
#include "run/dialogo.h"
#include <QAction>
#include <QComboBox>
#include <QMenu>
#include <QToolButton>
#include <gmock/gmock.h>

using namespace tolmo;
using data::ui::PanelConsulta;
using data::ui::VentanaConsulta;

namespace {

const QString SqlArticulos = "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS order by ";

/// A browse window as each one is made.
class ConsultaDeArticulos : public VentanaConsulta {
  public:
    ConsultaDeArticulos(data::Programa& programa, const data::Grid& grid,
                        data::Escritorio& escritorio, QWidget* llamante = nullptr)
        : VentanaConsulta(programa, programa.ConexionLocal, escritorio, llamante)
    {
        Panel().Rejilla().Define(grid);
    }
    using VentanaConsulta::MuestraHija;
    QString tabla = "ARTICULOS";

  protected:
    QString Origen() const override { return tabla + Panel().Donde(); }
};

class ConsultaTest : public testing::Test, public ArticulosDePrueba {
  protected:
    void Abre()
    {
        Muestra(ventana);
        Reposa();
    }
    void AbreYOlvida()
    {
        Abre();
        sentencias.clear();
    }

    data::ui::DataGrid& Rejilla() { return ventana.Panel().Rejilla(); }
    QLineEdit& Text1() { return Hijo<QLineEdit>(ventana, "Text1"); }
    QLineEdit& TxtFiltro() { return Hijo<QLineEdit>(ventana, "TxtFiltro"); }
    QLabel& Label1() { return Hijo<QLabel>(ventana, "Label1"); }
    QToolBar& Toolbar1() { return Hijo<QToolBar>(ventana, "Toolbar1"); }
    QToolButton& Boton(const char* clave)
    {
        return *qobject_cast<QToolButton*>(
            Toolbar1().widgetForAction(&Hijo<QAction>(Toolbar1(), clave)));
    }
    void Pulsa(const char* clave)
    {
        QTest::mouseClick(&Boton(clave), Qt::LeftButton, {}, {8, 8});
        Reposa();
    }
    void Menu(const char* entrada)
    {
        for (QAction* accion : Boton("FILTRO").menu()->actions())
            if (accion->text() == entrada) {
                accion->trigger();
                return;
            }
        FAIL() << entrada;
    }
    void PulsaTecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(ventana.focusWidget(), tecla, con);
        Reposa();
    }
    /// The controls that a key goes through, beginning with the one that has the focus, until it
    /// comes back to it.
    QStringList Recorrido(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        const QWidget* primero = ventana.focusWidget();
        QStringList nombres;
        do {
            nombres << ventana.focusWidget()->objectName();
            PulsaTecla(tecla, con);
        } while (ventana.focusWidget() != primero && nombres.size() < 30);
        return nombres;
    }
    /// Types into a box of the filter bar, and stays there.
    void TecleaFiltro(const char* caja, const char* texto)
    {
        QTest::mouseClick(&Hijo<QLineEdit>(ventana, caja), Qt::LeftButton);
        QTest::keyClicks(&Hijo<QLineEdit>(ventana, caja), QString::fromUtf8(texto));
    }
    void Busca(const char* texto)
    {
        Text1().setFocus();
        Text1().selectAll();
        QTest::keyClicks(&Text1(), QString::fromUtf8(texto));
    }
    QString EnPantalla()
    {
        QStringList codigos;
        for (int i = 0; i < Rejilla().model()->rowCount(); ++i)
            codigos << Celda(Rejilla(), i, 0);
        return codigos.join(' ');
    }
    QString FilaActual() { return Celda(Rejilla(), Rejilla().currentIndex().row(), 0); }

    EscritorioDePrueba escritorio{};
    QDialog llamante{};
    QLineEdit* destino = new QLineEdit(&llamante);
    ConsultaDeArticulos ventana{programa, grid, escritorio, &llamante};
};

TEST_F(ConsultaTest, TieneSusControles)
{
    Abre();

    EXPECT_TRUE(Hijo<data::ui::DataGrid>(ventana, "DataGrid1").isVisible());
    EXPECT_EQ(&Hijo<data::Adodc>(ventana, "Adodc1"), &ventana.Panel().Datos());
    EXPECT_TRUE(TxtFiltro().isHidden());
    EXPECT_TRUE(Text1().hasFocus());
    EXPECT_EQ(Rotulo(&Hijo<QPushButton>(ventana, "CmdRetorna")), "Retorna valor");
    QStringList claves;
    for (const QAction* accion : Toolbar1().actions())
        claves << accion->objectName();
    EXPECT_EQ(claves, QStringList({"PRIMREG", "ULTREG", "FILTRO", "FINDANT", "FINDSIG"}));
    QStringList menu;
    for (const QAction* accion : Boton("FILTRO").menu()->actions())
        menu << accion->text();
    EXPECT_EQ(menu, QStringList({"Filtro Avanzado", "Quitar Filtros"}));
}

TEST_F(ConsultaTest, UnSegundoPanelTieneLosNombresDelSuyo)
{
    QWidget otra;
    PanelConsulta panel(programa, programa.ConexionLocal, escritorio, 2, &otra);

    Hijo<data::ui::DataGrid>(otra, "DataGrid2");
    Hijo<data::Adodc>(otra, "Adodc2");
    Hijo<QLineEdit>(otra, "Text2");
    Hijo<QLineEdit>(otra, "txtFiltro2");
    Hijo<QLabel>(otra, "Label2");
    Hijo<QToolBar>(otra, "Toolbar2");
}

TEST_F(ConsultaTest, LaCargaLlenaElGridYRotulaLaColumnaDeBusqueda)
{
    Abre();

    EXPECT_EQ(sentencias, QStringList(SqlArticulos + "CODIGO"));
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
    EXPECT_EQ(Label1().text(), "Código");
    EXPECT_EQ(Label1().property("Tag").toString(), "CODIGO");
    EXPECT_EQ(FilaActual(), "A1");
}

TEST_F(ConsultaTest, LaCargaBuscaElTextoQueYaHay)
{
    Text1().setText("B");

    Abre();

    EXPECT_EQ(FilaActual(), "B1");
}

TEST_F(ConsultaTest, MostradaOtraVezConservaLaFilaYRelee)
{
    Abre();
    PulsaCelda(Rejilla(), 2, 1);
    ventana.hide();
    Ejecuta({"INSERT INTO ARTICULOS (CODIGO,NOMBRE) VALUES ('A0','Antes')"});
    Text1().setText("A2");

    Abre();

    EXPECT_EQ(EnPantalla(), "A0 A1 A2 B1 B2");
    EXPECT_EQ(FilaActual(), "B1") << "only a load searches";
    EXPECT_EQ(Rejilla().currentIndex().column(), 1);
}

TEST_F(ConsultaTest, AlCerrarseUnaVentanaHijaSeRelee)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 0);
    QDialog ficha(&ventana);
    EnElDialogo([this](QWidget& hija) {
        Ejecuta({"UPDATE ARTICULOS SET NOMBRE='Cambiado' WHERE CODIGO='A2'"});
        static_cast<QDialog&>(hija).accept();
    });

    EXPECT_EQ(ventana.MuestraHija(ficha), QDialog::Accepted);

    EXPECT_EQ(Celda(Rejilla(), 1, 1), "Cambiado");
    EXPECT_EQ(FilaActual(), "A2");
}

TEST_F(ConsultaTest, TeclearEnText1BuscaEnLaColumnaDelRotulo)
{
    Abre();

    Busca("b");
    EXPECT_EQ(FilaActual(), "B1");
    Busca("B2");
    EXPECT_EQ(FilaActual(), "B2");
    Busca("x");
    EXPECT_EQ(FilaActual(), "B2");
}

TEST_F(ConsultaTest, LaCabezaDeUnaColumnaLaHaceDeBusquedaYOrdena)
{
    AbreYOlvida();

    PulsaCabecera(Rejilla(), 1);

    EXPECT_EQ(sentencias, QStringList(SqlArticulos + "NOMBRE"));
    EXPECT_EQ(Label1().text(), "Nombre");
    EXPECT_EQ(Label1().property("Tag").toString(), "NOMBRE");
    EXPECT_EQ(EnPantalla(), "B1 A2 A1 B2");
    Busca("torn");
    EXPECT_EQ(FilaActual(), "A1");
}

TEST_F(ConsultaTest, LaColumnaElegidaSeRecuerdaMientrasVivaLaVentana)
{
    Abre();
    PulsaCabecera(Rejilla(), 2);
    ventana.hide();
    sentencias.clear();

    Abre();

    EXPECT_EQ(sentencias, QStringList(SqlArticulos + "PRECIO"));
    EXPECT_EQ(Label1().text(), "Precio");
}

TEST_F(ConsultaTest, TextosConComillasAsteriscosYTantosPorCiento)
{
    Abre();
    PulsaCabecera(Rejilla(), 1);

    Busca("llave de d'a");
    EXPECT_EQ(FilaActual(), "A2");
    Busca("*largo");
    EXPECT_EQ(FilaActual(), "B2");
    Busca("%anda");
    EXPECT_EQ(FilaActual(), "B1");
    Busca("'");
    EXPECT_EQ(FilaActual(), "B1");
    Busca("[*");
    EXPECT_EQ(FilaActual(), "B1");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ConsultaTest, PrimeroYUltimo)
{
    Abre();

    Pulsa("ULTREG");
    EXPECT_EQ(FilaActual(), "B2");
    Pulsa("PRIMREG");
    EXPECT_EQ(FilaActual(), "A1");
}

TEST_F(ConsultaTest, SiguienteYAnteriorConElTextoDeText1)
{
    Abre();
    PulsaCabecera(Rejilla(), 1);
    Busca("torn");
    EXPECT_EQ(FilaActual(), "A1");

    Pulsa("FINDSIG");
    EXPECT_EQ(FilaActual(), "B2");
    Pulsa("FINDSIG");
    EXPECT_EQ(FilaActual(), "B2");
    Pulsa("FINDANT");
    EXPECT_EQ(FilaActual(), "A1");
    QTest::keyClick(&Text1(), Qt::Key_F3);
    EXPECT_EQ(FilaActual(), "B2");
    QTest::keyClick(&Text1(), Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(FilaActual(), "A1");
}

TEST_F(ConsultaTest, LasFlechasRecorrenLasFilasDesdeText1)
{
    Abre();
    Text1().setFocus();

    QTest::keyClick(&Text1(), Qt::Key_Down);
    QTest::keyClick(&Text1(), Qt::Key_Down);
    QTest::keyClick(&Text1(), Qt::Key_Up);

    EXPECT_EQ(FilaActual(), "A2");
    EXPECT_TRUE(Text1().hasFocus());
}

TEST_F(ConsultaTest, ElTabuladorRecorreLaBusquedaLaBarraDeFiltroYElGrid)
{
    Abre();

    EXPECT_EQ(Recorrido(Qt::Key_Tab),
              QStringList({"Text1", "FilterText_0", "FilterText_1", "FilterText_2", "FilterText_3",
                           "FilterText_4", "DataGrid1", "CmdRetorna"}));
    EXPECT_EQ(Recorrido(Qt::Key_Backtab, Qt::ShiftModifier),
              QStringList({"Text1", "CmdRetorna", "DataGrid1", "FilterText_4", "FilterText_3",
                           "FilterText_2", "FilterText_1", "FilterText_0"}));
}

TEST_F(ConsultaTest, CtrlInicioYCtrlFinTambienValenDesdeText1)
{
    Abre();

    PulsaTecla(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(FilaActual(), "B2");
    PulsaTecla(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(FilaActual(), "A1");
    EXPECT_TRUE(Text1().hasFocus());
}

TEST_F(ConsultaTest, SobreUnaTablaVaciaNadaFalla)
{
    Ejecuta({"DELETE FROM ARTICULOS"});
    Abre();

    for (const char* clave : {"PRIMREG", "ULTREG", "FINDANT", "FINDSIG"})
        Pulsa(clave);
    Busca("A*'");
    PulsaCabecera(Rejilla(), 1);
    QTest::keyClick(&Rejilla(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&Rejilla(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(avisos.cajas,
              (std::vector<AvisosDePrueba::Caja>{{"No hay ninguna fila seleccionada", 48, ""}}));
    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);

    EXPECT_TRUE(ventana.isVisible()) << "there is nothing to give back";
    EXPECT_EQ(EnPantalla(), "");
}

TEST_F(ConsultaTest, SinCondicionElBotonDelFiltroEstaSuelto)
{
    Abre();

    EXPECT_FALSE(Boton("FILTRO").isChecked());
    EXPECT_EQ(Boton("FILTRO").toolTip(), "Filtro Selección");
}

TEST_F(ConsultaTest, ConCondicionElBotonEstaPulsadoYLaMuestra)
{
    TxtFiltro().setText("PRECIO > 15");
    Abre();

    EXPECT_TRUE(Boton("FILTRO").isChecked());
    EXPECT_EQ(Boton("FILTRO").toolTip(), "PRECIO > 15");
    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (PRECIO > 15) order by CODIGO"));
    EXPECT_EQ(EnPantalla(), "A2 B1");

    TxtFiltro().clear();
    EXPECT_FALSE(Boton("FILTRO").isChecked());
    EXPECT_EQ(Boton("FILTRO").toolTip(), "Filtro Selección");
}

TEST_F(ConsultaTest, UnaCondicionQueParecenMarcasSeLeeComoEs)
{
    Abre();

    TxtFiltro().setText("<b>NOMBRE</b>");

    EXPECT_TRUE(Boton("FILTRO").toolTip().contains("&lt;b&gt;NOMBRE&lt;/b&gt;"));
}

/// Leaves the condition builder by one of its buttons.
void DejaConstructor(QWidget& constructor, const QString& boton)
{
    EXPECT_EQ(constructor.windowTitle(), "Constructor condiciones");
    QTest::mouseClick(&Hijo<QPushButton>(constructor, qPrintable(boton)), Qt::LeftButton);
}

TEST_F(ConsultaTest, FiltroAbreElConstructorYRelleneElGrid)
{
    AbreYOlvida();
    EnElDialogo([this](QWidget& constructor) {
        TxtFiltro().setText("PRECIO > 15");
        DejaConstructor(constructor, "CmdCancelar");
    });

    Pulsa("FILTRO");

    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (PRECIO > 15) order by CODIGO"));
    EXPECT_EQ(EnPantalla(), "A2 B1");
    EXPECT_TRUE(Boton("FILTRO").isChecked());
}

TEST_F(ConsultaTest, ElConstructorOfreceLasColumnasDelGrid)
{
    Abre();
    QStringList ofrecidas;
    EnElDialogo([&](QWidget& constructor) {
        const auto& lista = Hijo<QComboBox>(constructor, "CmbObjVar");
        for (int i = 0; i < lista.count(); ++i)
            ofrecidas << lista.itemText(i);
        DejaConstructor(constructor, "CmdCancelar");
    });

    Pulsa("FILTRO");

    EXPECT_EQ(ofrecidas, QStringList({"Código", "Nombre", "Precio", "Alta", "Activo", "(VACIO)"}));
}

TEST_F(ConsultaTest, ElConstructorEscribeEnElFiltroDeLaVentana)
{
    TxtFiltro().setText("PRECIO > 15");
    Abre();
    EnElDialogo([](QWidget& constructor) { DejaConstructor(constructor, "CmdQuitarFiltro"); });

    Menu("Filtro Avanzado");

    EXPECT_EQ(TxtFiltro().text(), "");
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
    EXPECT_FALSE(Boton("FILTRO").isChecked());
}

TEST_F(ConsultaTest, CancelarElConstructorDejaElFiltroQueHabia)
{
    TxtFiltro().setText("PRECIO > 15");
    Abre();
    EnElDialogo([](QWidget& constructor) { DejaConstructor(constructor, "CmdCancelar"); });

    Pulsa("FILTRO");

    EXPECT_EQ(TxtFiltro().text(), "PRECIO > 15");
    EXPECT_TRUE(Boton("FILTRO").isChecked());
    EXPECT_EQ(EnPantalla(), "A2 B1");
}

TEST_F(ConsultaTest, QuitarFiltrosVaciaTodosYLlenaDeNuevo)
{
    TxtFiltro().setText("PRECIO > 15");
    Abre();
    QLineEdit& caja = Hijo<QLineEdit>(ventana, "FilterText_1");
    QTest::mouseClick(&caja, Qt::LeftButton);
    QTest::keyClicks(&caja, "ara");
    QTest::mouseClick(&Text1(), Qt::LeftButton);
    EXPECT_EQ(EnPantalla(), "B1");
    sentencias.clear();
    cambiables.clear();

    Menu("Quitar Filtros");

    EXPECT_EQ(TxtFiltro().text(), "");
    EXPECT_EQ(caja.text(), "");
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
    const QString conCondicion =
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (PRECIO > 15) order by CODIGO";
    EXPECT_EQ(cambiables, QStringList(conCondicion));
    EXPECT_EQ(sentencias, QStringList({conCondicion, SqlArticulos + "CODIGO"}));
}

TEST_F(ConsultaTest, CtrlFAbreElConstructorYCtrlMayusculasFQuitaLosFiltros)
{
    Abre();
    EnElDialogo([this](QWidget& constructor) {
        TxtFiltro().setText("PRECIO > 15");
        DejaConstructor(constructor, "CmdCancelar");
    });

    PulsaTecla(Qt::Key_F, Qt::ControlModifier);
    EXPECT_EQ(EnPantalla(), "A2 B1");

    ventana.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    PulsaTecla(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(TxtFiltro().text(), "");
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
}

TEST_F(ConsultaTest, LasTeclasEstanEnLasAyudasYEnElMenu)
{
    EXPECT_EQ(Boton("PRIMREG").toolTip(), "Primer registro (Ctrl+Inicio)");
    EXPECT_EQ(Boton("ULTREG").toolTip(), "Último registro (Ctrl+Fin)");
    EXPECT_EQ(Boton("FINDANT").toolTip(), "Buscar anterior (Mayús+F3)");
    EXPECT_EQ(Boton("FINDSIG").toolTip(), "Buscar siguiente (F3)");
    QList<QKeySequence> teclas;
    for (const QAction* accion : Boton("FILTRO").menu()->actions())
        teclas << accion->shortcut();
    EXPECT_EQ(teclas, QList({QKeySequence("Ctrl+F"), QKeySequence("Ctrl+Shift+F")}));
}

TEST_F(ConsultaTest, LoTecleadoEnLaBarraSeAplicaAntesDeAbrirElConstructor)
{
    Abre();
    TecleaFiltro("FilterText_1", "torn");
    QString conElConstructor;
    EnElDialogo([&](QWidget& constructor) {
        conElConstructor = EnPantalla();
        DejaConstructor(constructor, "CmdCancelar");
    });

    PulsaTecla(Qt::Key_F, Qt::ControlModifier);

    EXPECT_EQ(conElConstructor, "A1 B2");
    EXPECT_EQ(EnPantalla(), "A1 B2");
    EXPECT_EQ(Hijo<QLineEdit>(ventana, "FilterText_1").text(), "torn");
}

TEST_F(ConsultaTest, LoTecleadoEnLaBarraSeTomaAlRellenarYAlOrdenar)
{
    Abre();
    TecleaFiltro("FilterText_1", "torn");
    ventana.Panel().Activa();
    EXPECT_EQ(EnPantalla(), "A1 B2");
    EXPECT_EQ(Hijo<QLineEdit>(ventana, "FilterText_1").text(), "torn");

    TecleaFiltro("FilterText_0", "B");
    PulsaCabecera(Rejilla(), 2);
    EXPECT_EQ(EnPantalla(), "B2");
}

TEST_F(ConsultaTest, UnTextoDeLaBarraQueNoSirveNoDejaHacerNada)
{
    Abre();
    TecleaFiltro("FilterText_2", "abc");

    Pulsa("ULTREG");

    EXPECT_EQ(avisos.cajas, (std::vector<AvisosDePrueba::Caja>{
                                {"El filtro de «Precio» tiene que ser un número.", 48, ""}}));
    EXPECT_EQ(FilaActual(), "A1");
    Pulsa("ULTREG");
    EXPECT_EQ(FilaActual(), "B2") << "the text is gone";
}

TEST_F(ConsultaTest, UnNumeroDondeVaUnaFechaEnLaBarraSeDice)
{
    AbreYOlvida();
    TecleaFiltro("FilterText_3", "15");

    PulsaTecla(Qt::Key_Tab);
    PulsaTecla(Qt::Key_Tab); // off the bar

    EXPECT_EQ(avisos.cajas,
              (std::vector<AvisosDePrueba::Caja>{
                  {"El filtro de «Alta» tiene que ser una fecha (dd/mm/aaaa).", 48, ""}}));
    EXPECT_EQ(Hijo<QLineEdit>(ventana, "FilterText_3").text(), "");
    EXPECT_EQ(sentencias, QStringList());
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
}

TEST_F(ConsultaTest, QuitarFiltrosNoMiraLoQueAunSeEscribe)
{
    Abre();
    TecleaFiltro("FilterText_2", "abc");

    PulsaTecla(Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);

    EXPECT_EQ(Hijo<QLineEdit>(ventana, "FilterText_2").text(), "");
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B2");
}

void TeclaDe(QWidget& ventana, Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
{
    QWidget* lista = QApplication::activePopupWidget();
    QTest::keyClick((lista ? lista : &ventana)->focusWidget(), tecla, con);
    Reposa();
}

/// Composes "Nombre = D'Arc" in the builder and accepts it.
void CompondComilla(QWidget& constructor)
{
    TeclaDe(constructor, Qt::Key_Return);
    TeclaDe(constructor, Qt::Key_Down);
    TeclaDe(constructor, Qt::Key_Down); // Nombre
    TeclaDe(constructor, Qt::Key_Return);
    TeclaDe(constructor, Qt::Key_Return); // =
    for (const char letra : {'D', '\'', 'A', 'r', 'c'}) {
        QWidget* lista = QApplication::activePopupWidget();
        QTest::sendKeyEvent(QTest::Click, (lista ? lista : &constructor)->focusWidget(),
                            Qt::Key_unknown, QString(letra), Qt::NoModifier);
        Reposa();
    }
    TeclaDe(constructor, Qt::Key_Return);
    TeclaDe(constructor, Qt::Key_Escape);
    TeclaDe(constructor, Qt::Key_Tab);
    TeclaDe(constructor, Qt::Key_Tab); // CmdAceptar
    TeclaDe(constructor, Qt::Key_Return);
}

void FiltraPorUnaComilla(const ArticulosDePrueba& prueba)
{
    ProgramaEnError proceso(prueba.Base());
    EscritorioDePrueba escritorio;
    ConsultaDeArticulos ventana(proceso.programa, prueba.grid, escritorio);
    Muestra(ventana);
    EnElDialogo([](QWidget& constructor) { CompondComilla(constructor); });
    QTest::keyClick(ventana.focusWidget(), Qt::Key_F, Qt::ControlModifier);
    std::fprintf(stderr, "sigue\n");
}

TEST_F(ConsultaTest, UnaComillaEnElConstructorCierraElProgramaConSuSentencia)
{
    // A child that only forks has no events of its own, and the builder waits for them.
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        FiltraPorUnaComilla(*this), testing::ExitedWithCode(1),
        testing::AllOf(
            testing::HasSubstr("caja 16: ERROR:"),
            testing::HasSubstr(
                "caja 64: Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where ((NOMBRE = 'D'Arc')) order by CODIGO\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR"),
            testing::Not(testing::HasSubstr("sigue"))));
}

TEST_F(ConsultaTest, UnFiltroQueElMotorRechazaCierraElPrograma)
{
    TxtFiltro().setText("NOMBRE = 'D'Arc'");

    EXPECT_EXIT(ventana.show(), testing::ExitedWithCode(1), "");
}

TEST_F(ConsultaTest, CmdRetornaEscribeLaColumnaActualEnElControlDelLlamanteYSeOculta)
{
    Muestra(llamante);
    destino->setFocus();
    Abre();
    PulsaCelda(Rejilla(), 2, 1);

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);

    EXPECT_EQ(destino->text(), "Arandela");
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Accepted);
}

TEST_F(ConsultaTest, CmdRetornaDaElValorQueSeVeAunqueOtroProgramaBorrara)
{
    Muestra(llamante);
    destino->setFocus();
    Abre();
    PulsaCelda(Rejilla(), 2, 1);
    Ejecuta({"DELETE FROM ARTICULOS WHERE CODIGO='B1'"});

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);

    EXPECT_EQ(destino->text(), "Arandela");
}

TEST_F(ConsultaTest, SiOtroProgramaBorraLaFilaActualQuedaLaDeSuSitio)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 0);
    Ejecuta({"DELETE FROM ARTICULOS WHERE CODIGO='A2'"});

    ventana.Panel().Activa();

    EXPECT_EQ(EnPantalla(), "A1 B1 B2");
    EXPECT_EQ(FilaActual(), "B1");
}

TEST_F(ConsultaTest, CmdRetornaPuedeDarSiempreLaMismaColumna)
{
    Muestra(llamante);
    destino->setFocus();
    ventana.PonColumnaDeRetorno("CODIGO");
    Abre();
    PulsaCelda(Rejilla(), 2, 1);

    QTest::keyClick(&Rejilla(), Qt::Key_Return);

    EXPECT_EQ(destino->text(), "B1");
}

TEST_F(ConsultaTest, ElControlOcultoDelLlamanteTambienRecibe)
{
    auto* oculto = new QLineEdit(&llamante);
    oculto->hide();
    Muestra(llamante);
    destino->setFocus();
    const data::ui::ControlElegido elegido(*oculto);
    Abre();

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);

    EXPECT_EQ(oculto->text(), "A1");
    EXPECT_EQ(destino->text(), "");
}

TEST_F(ConsultaTest, ElDobleClicTambienRetorna)
{
    Muestra(llamante);
    destino->setFocus();
    Abre();
    PulsaCelda(Rejilla(), 1, 0);

    QTest::mouseDClick(Rejilla().viewport(), Qt::LeftButton, {}, SitioDeCelda(Rejilla(), 1, 0));

    EXPECT_EQ(destino->text(), "A2");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(ConsultaTest, SinPermisoDeRetornoNoHayBotonNiDobleClic)
{
    Muestra(llamante);
    destino->setFocus();
    ventana.PermiteRetorno(false);
    Abre();

    QTest::mouseDClick(Rejilla().viewport(), Qt::LeftButton, {}, SitioDeCelda(Rejilla(), 1, 0));
    QTest::keyClick(&Text1(), Qt::Key_Return);

    EXPECT_FALSE(Hijo<QPushButton>(ventana, "CmdRetorna").isVisible());
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(destino->text(), "");
}

TEST_F(ConsultaTest, EscapeCierraSinDarNada)
{
    Muestra(llamante);
    destino->setText("antes");
    destino->setFocus();
    Abre();

    QTest::keyClick(&Text1(), Qt::Key_Escape);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(destino->text(), "antes");
    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

/// A browse window whose rows are edited in place.
class ConsultaEditable : public ConsultaTest {
  protected:
    ConsultaEditable()
    {
        grid.AllowUpdate = true;
        Rejilla().Define(grid);
    }
    void Teclea(int fila, int columna, const char* texto)
    {
        PulsaCelda(Rejilla(), fila, columna);
        QTest::keyClick(&Rejilla(), Qt::Key_F2);
        Editor(Rejilla())->selectAll();
        QTest::keyClicks(Editor(Rejilla()), QString::fromUtf8(texto));
    }
    QString NombreDe(const char* codigo)
    {
        return Tabla(QString("SELECT NOMBRE FROM ARTICULOS WHERE CODIGO='%1'").arg(codigo));
    }
};

TEST_F(ConsultaEditable, CerrarLaVentanaGuardaLaFila)
{
    Abre();
    Teclea(0, 1, "Clavo");

    ventana.close();

    EXPECT_EQ(NombreDe("A1"), "Clavo");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(ConsultaEditable, UnaFilaRechazadaNoDejaCerrarHastaQueSeAbandona)
{
    Abre();
    Teclea(1, 0, "A1");

    ventana.close();
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(avisos.cajas.size(), 1U);

    QTest::keyClick(&Rejilla(), Qt::Key_Escape);
    EXPECT_TRUE(ventana.isVisible()) << "the first Escape is for the row";
    EXPECT_EQ(Celda(Rejilla(), 1, 0), "A2");
    QTest::keyClick(&Rejilla(), Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(ConsultaEditable, SinFilaActualCmdRetornaNoDaNada)
{
    grid.AllowAddNew = true;
    Rejilla().Define(grid);
    Muestra(llamante);
    destino->setText("antes");
    destino->setFocus();
    Abre();
    PulsaCelda(Rejilla(), 4, 0); // the row for adding

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(ConsultaEditable, LosBotonesDejanLaFila)
{
    Abre();
    Teclea(0, 1, "Clavo");

    Pulsa("ULTREG");

    EXPECT_EQ(NombreDe("A1"), "Clavo");
    EXPECT_EQ(FilaActual(), "B2");
}

TEST_F(ConsultaEditable, ConUnaFilaRechazadaLosBotonesNoHacenNada)
{
    Abre();
    Teclea(1, 0, "A1");

    Pulsa("ULTREG");

    EXPECT_EQ(Rejilla().currentIndex().row(), 1);
    EXPECT_EQ(FilaActual(), "A1") << "as it was typed";
    EXPECT_FALSE(avisos.cajas.empty());
}

TEST_F(ConsultaEditable, AlVolverALaVentanaNoSePierdeLoQueSeEscribe)
{
    Abre();
    Teclea(0, 1, "Clavo");
    QTest::keyClick(Editor(Rejilla()), Qt::Key_Return);
    Reposa();
    sentencias.clear();

    ventana.Panel().Activa();

    EXPECT_TRUE(sentencias.isEmpty());
    EXPECT_EQ(Celda(Rejilla(), 0, 1), "Clavo");
}

} // namespace
