#include "articulos_en_pantalla.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

using namespace tolmo;
using data::CampoFicha;
using data::ui::PonValorControl;

namespace {

TEST(SeleccionaTexto, SeleccionaTodoElTextoDeUnaCaja)
{
    QLineEdit caja("00007");

    data::ui::SeleccionaTexto(&caja);

    EXPECT_EQ(caja.selectionStart(), 0);
    EXPECT_EQ(caja.selectedText(), "00007");
}

TEST(SeleccionaTexto, LosDemasControlesQuedanComoEstan)
{
    QCheckBox casilla;

    data::ui::SeleccionaTexto(&casilla);
    data::ui::SeleccionaTexto(nullptr);

    EXPECT_FALSE(casilla.isChecked());
}

TEST(SeleccionaAlEntrar, LoQueSeTecleaSustituyeAlTexto)
{
    QWidget ventana;
    auto* columna = new QVBoxLayout(&ventana);
    auto* una = new QLineEdit("uno");
    auto* otra = new QLineEdit("dos");
    columna->addWidget(una);
    columna->addWidget(otra);
    data::ui::SeleccionaAlEntrar(ventana);
    Muestra(ventana);
    una->setFocus();
    Reposa();

    QTest::mouseClick(otra, Qt::LeftButton);
    Reposa();
    EXPECT_EQ(otra->selectedText(), "dos");
    QTest::keyClick(otra, 'x');
    EXPECT_EQ(otra->text(), "x");

    QTest::keyClick(otra, Qt::Key_Backtab);
    Reposa();
    EXPECT_EQ(una->selectedText(), "uno");
}

TEST(PonValorControl, LaCajaDeTextoTomaElTexto)
{
    QLineEdit caja;

    PonValorControl(&caja, QDate(2024, 3, 15));
    EXPECT_EQ(caja.text(), "15/03/2024");
    PonValorControl(&caja, 1.5);
    EXPECT_EQ(caja.text(), "1.5");
    PonValorControl(&caja, data::Nulo());
    EXPECT_EQ(caja.text(), "");
    caja.setText("algo");
    PonValorControl(&caja);
    EXPECT_EQ(caja.text(), "");
}

TEST(PonValorControl, LaListaTomaLaPosicion)
{
    QComboBox lista;
    lista.addItems({"General", "Plata", "Oro"});

    PonValorControl(&lista, 2);
    EXPECT_EQ(lista.currentText(), "Oro");
    PonValorControl(&lista, "plata");
    EXPECT_EQ(lista.currentText(), "Plata");
    PonValorControl(&lista, 7);
    EXPECT_EQ(lista.currentIndex(), -1);
    lista.setCurrentIndex(1);
    PonValorControl(&lista, "Bronce");
    EXPECT_EQ(lista.currentIndex(), -1);
    lista.setCurrentIndex(1);
    PonValorControl(&lista);
    EXPECT_EQ(lista.currentIndex(), -1);
}

TEST(PonValorControl, UnaListaEnLaQueSeEscribeConservaLoQueNoTiene)
{
    QComboBox lista;
    lista.setEditable(true);
    lista.addItems({"General", "Plata"});

    PonValorControl(&lista, "Bronce");
    EXPECT_EQ(lista.currentText(), "Bronce");
    PonValorControl(&lista, 9);
    EXPECT_EQ(lista.currentText(), "9");
    PonValorControl(&lista);
    EXPECT_EQ(lista.currentText(), "");
}

TEST(PonValorControl, LaCasillaSeMarcaConCualquierForma)
{
    QCheckBox casilla;

    for (const data::Valor& si : {data::Valor(true), data::Valor(1), data::Valor(-1),
                                  data::Valor("S"), data::Valor("sí")}) {
        casilla.setChecked(false);
        PonValorControl(&casilla, si);
        EXPECT_TRUE(casilla.isChecked()) << qPrintable(si.toString());
    }
    for (const data::Valor& no : {data::Valor(false), data::Valor(0), data::Valor("N"),
                                  data::Valor("otro"), data::Nulo(), data::Valor()}) {
        casilla.setChecked(true);
        PonValorControl(&casilla, no);
        EXPECT_FALSE(casilla.isChecked()) << qPrintable(no.toString());
    }
}

TEST(PonValorControl, OtrosControlesQuedanComoEstan)
{
    QSpinBox otro;
    otro.setValue(3);

    PonValorControl(&otro, 7);
    PonValorControl(nullptr, 7);

    EXPECT_EQ(otro.value(), 3);
}

/// A card with a control of each kind and one that takes no part.
class FichaEnPantalla : public testing::Test {
  protected:
    FichaEnPantalla()
    {
        lista->addItems({"General", "Plata", "Oro"});
        Etiqueta(codigo, "CODIGO");
        Etiqueta(lista, "CODTARIFA");
        Etiqueta(casilla, "ACTIVO");
        Etiqueta(interior, "EMAIL");
    }
    static void Etiqueta(QWidget* control, const char* tag)
    {
        control->setProperty("Tag", QString(tag));
    }

    QWidget ventana{};
    QLineEdit* codigo = new QLineEdit(&ventana);
    QLineEdit* sinTag = new QLineEdit(&ventana);
    QComboBox* lista = new QComboBox(&ventana);
    QWidget* marco = new QWidget(&ventana);
    QLineEdit* interior = new QLineEdit(marco);
    QCheckBox* casilla = new QCheckBox(&ventana);
};

TEST_F(FichaEnPantalla, SusCamposVanEnElOrdenDeLaVentana)
{
    codigo->setText("00007");
    sinTag->setText("no cuenta");
    lista->setCurrentIndex(2);
    interior->setText("a@b.es");
    casilla->setChecked(true);

    const auto campos = data::ui::CamposFicha(ventana);

    ASSERT_EQ(campos.size(), 4U);
    EXPECT_EQ(campos[0].Tag, "CODIGO");
    EXPECT_EQ(campos[0].clase, CampoFicha::Clase::Texto);
    EXPECT_EQ(campos[0].texto, "00007");
    EXPECT_EQ(campos[1].Tag, "CODTARIFA");
    EXPECT_EQ(campos[1].clase, CampoFicha::Clase::Lista);
    EXPECT_EQ(campos[1].posicion, 2);
    EXPECT_EQ(campos[1].texto, "Oro");
    EXPECT_EQ(campos[2].Tag, "EMAIL");
    EXPECT_EQ(campos[2].texto, "a@b.es");
    EXPECT_EQ(campos[3].Tag, "ACTIVO");
    EXPECT_EQ(campos[3].clase, CampoFicha::Clase::Casilla);
    EXPECT_TRUE(campos[3].marcada);
}

TEST_F(FichaEnPantalla, LoEscritoEnUnaListaNoTieneLaPosicionDeAntes)
{
    lista->setEditable(true);
    lista->setCurrentIndex(1);
    lista->setEditText("otra");
    EXPECT_EQ(data::ui::CamposFicha(ventana)[1].posicion, -1);

    lista->setEditText("oro");
    EXPECT_EQ(data::ui::CamposFicha(ventana)[1].posicion, 2);
}

TEST_F(FichaEnPantalla, UnaFilaSeEscribeEnSusControlesYSeLimpia)
{
    sinTag->setText("se queda");
    const data::Recordset filas(
        HazFilas({"codigo", "CodTarifa", "EMAIL", "ACTIVO"}, {{"00007", 1, data::Nulo(), true}}));
    interior->setText("algo");

    data::ui::PonFicha(ventana, filas);
    EXPECT_EQ(codigo->text(), "00007");
    EXPECT_EQ(lista->currentText(), "Plata");
    EXPECT_EQ(interior->text(), "");
    EXPECT_TRUE(casilla->isChecked());

    data::ui::LimpiaFicha(ventana);
    EXPECT_EQ(codigo->text(), "");
    EXPECT_EQ(lista->currentIndex(), -1);
    EXPECT_FALSE(casilla->isChecked());
    EXPECT_EQ(sinTag->text(), "se queda");
}

TEST_F(FichaEnPantalla, UnTagQueNoEsColumnaEsElError3265)
{
    const data::Recordset filas(HazFilas({"CODIGO"}, {{"00007"}}));

    EXPECT_THROW(data::ui::PonFicha(ventana, filas), data::ErrorDatos);
}

/// A window with two boxes, one of them hidden, and another window over it.
class ControlActivoTest : public testing::Test {
  protected:
    ControlActivoTest() { oculta->hide(); }
    void SetUp() override
    {
        visible->setFocus();
        Muestra(llamante);
        Muestra(hija);
        boton->setFocus();
    }

    QDialog llamante{};
    QLineEdit* visible = new QLineEdit(&llamante);
    QLineEdit* oculta = new QLineEdit(&llamante);
    QDialog hija{&llamante};
    QPushButton* boton = new QPushButton(&hija);
};

TEST_F(ControlActivoTest, EsElQueTeniaElFocoEnLaVentanaDeDebajo)
{
    EXPECT_EQ(hija.focusWidget(), boton);
    EXPECT_EQ(data::ui::ControlDelLlamante(hija), visible);
    EXPECT_EQ(data::ui::ControlDelLlamante(*boton), visible);
    EXPECT_EQ(data::ui::ControlActivo(llamante), visible);
}

TEST_F(ControlActivoTest, UnoOcultoLoEsMientrasEstaElegido)
{
    {
        const data::ui::ControlElegido elegido(*oculta);
        EXPECT_EQ(data::ui::ControlDelLlamante(hija), oculta);
        {
            const data::ui::ControlElegido otro(*visible);
            EXPECT_EQ(data::ui::ControlDelLlamante(hija), visible);
        }
        EXPECT_EQ(data::ui::ControlDelLlamante(hija), oculta);
    }
    EXPECT_EQ(data::ui::ControlDelLlamante(hija), visible);
}

TEST_F(ControlActivoTest, SinVentanaDebajoNoHayNinguno)
{
    EXPECT_EQ(data::ui::ControlDelLlamante(llamante), nullptr);
}

} // namespace
