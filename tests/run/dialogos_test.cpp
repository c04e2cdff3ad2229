#include "dialogo.h"
#include "run/FrmConexionSqlServer.h"
#include "run/FrmSeleccionaEmpresa.h"
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QToolButton>

using namespace tolmo;

namespace {

template <class Control> Control* C(QWidget& ventana, const char* nombre)
{
    auto* control = ventana.findChild<Control*>(nombre);
    if (!control)
        throw std::logic_error(nombre);
    return control;
}

void Pulsa(QWidget& ventana, const char* boton)
{
    QTest::mouseClick(C<QPushButton>(ventana, boton), Qt::LeftButton);
}

/// The controls that Tab goes through, beginning with the one that has the focus.
QStringList Recorrido(QWidget& ventana)
{
    QStringList nombres;
    for (QWidget* control = ventana.focusWidget(); !nombres.contains(control->objectName());
         control = ventana.focusWidget()) {
        nombres << control->objectName();
        QTest::keyClick(control, Qt::Key_Tab);
    }
    return nombres;
}

class FrmSeleccionaEmpresaTest : public testing::Test {
  protected:
    void SetUp() override
    {
        ventana.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    }
    QComboBox* Caja() { return C<QComboBox>(ventana, "CmbEmpresa"); }

    FrmSeleccionaEmpresa ventana{{"000001 Ferretería Norte", "000002 Jardinería Sur"}};
};

TEST_F(FrmSeleccionaEmpresaTest, TieneSusTextos)
{
    EXPECT_EQ(ventana.windowTitle(), "Seleccione Empresa");
    EXPECT_EQ(Rotulo(C<QLabel>(ventana, "LblCmbEmpresa")), "Empresa:");
    EXPECT_EQ(Rotulo(C<QCheckBox>(ventana, "ChkConfiguracion")),
              "Ejecutar antes configuración parámetros");
    EXPECT_EQ(Rotulo(C<QPushButton>(ventana, "CmdAceptar")), "Aceptar");
    EXPECT_EQ(Rotulo(C<QPushButton>(ventana, "cmdCancelar")), "Cancelar");
}

TEST_F(FrmSeleccionaEmpresaTest, LaPrimeraEmpresaEstaElegidaDesdeElPrincipio)
{
    EXPECT_EQ(Caja()->count(), 2);
    EXPECT_EQ(Caja()->currentText(), "000001 Ferretería Norte");
    EXPECT_FALSE(C<QCheckBox>(ventana, "ChkConfiguracion")->isChecked());
}

TEST_F(FrmSeleccionaEmpresaTest, AceptaLaElegida)
{
    QTest::keyClick(Caja(), Qt::Key_Down);
    Pulsa(ventana, "CmdAceptar");

    EXPECT_EQ(ventana.result(), QDialog::Accepted);
    EXPECT_EQ(ventana.Eleccion().texto, "000002 Jardinería Sur");
    EXPECT_FALSE(ventana.Eleccion().configuracion);
}

TEST_F(FrmSeleccionaEmpresaTest, LaTeclaIntroAcepta)
{
    QTest::keyClick(Caja(), Qt::Key_Return);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Accepted);
}

TEST_F(FrmSeleccionaEmpresaTest, LoEscritoAManoPasaComoEsta)
{
    auto* texto = Caja()->lineEdit();
    texto->selectAll();
    QTest::keyClicks(texto, "0000");
    Pulsa(ventana, "CmdAceptar");

    EXPECT_EQ(ventana.Eleccion().texto, "0000");
}

TEST_F(FrmSeleccionaEmpresaTest, LaCajaMarcadaPideLaConfiguracion)
{
    QTest::keyClick(C<QCheckBox>(ventana, "ChkConfiguracion"), Qt::Key_Space);
    Pulsa(ventana, "CmdAceptar");

    EXPECT_TRUE(ventana.Eleccion().configuracion);
}

TEST_F(FrmSeleccionaEmpresaTest, CancelarYEscapeLaDejanSinAceptar)
{
    Pulsa(ventana, "cmdCancelar");
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Rejected);

    ventana.setResult(QDialog::Accepted);
    ventana.show();
    QTest::keyClick(&ventana, Qt::Key_Escape);
    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

TEST_F(FrmSeleccionaEmpresaTest, CerrarElMarcoEsCancelar)
{
    ventana.setResult(QDialog::Accepted);

    ventana.close();

    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

TEST_F(FrmSeleccionaEmpresaTest, ElTabuladorVaDeArribaAbajo)
{
    EXPECT_EQ(Recorrido(ventana),
              QStringList({"CmbEmpresa", "ChkConfiguracion", "CmdAceptar", "cmdCancelar"}));
}

TEST_F(FrmSeleccionaEmpresaTest, LaLetraDeCadaControlLlegaAEl)
{
    QTest::keyClick(&ventana, Qt::Key_P, Qt::AltModifier);
    auto* casilla = C<QCheckBox>(ventana, "ChkConfiguracion");
    EXPECT_TRUE(QTest::qWaitFor([casilla] { return casilla->isChecked(); }));

    QTest::keyClick(&ventana, Qt::Key_E, Qt::AltModifier);
    EXPECT_EQ(ventana.focusWidget()->objectName(), "CmbEmpresa");

    QTest::keyClick(&ventana, Qt::Key_C, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !ventana.isVisible(); }));
    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

class FrmConexionSqlServerTest : public testing::Test {
  protected:
    void SetUp() override
    {
        ventana.show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    }
    void Elige(const char* opcion)
    {
        QTest::keyClick(C<QRadioButton>(ventana, opcion), Qt::Key_Space);
    }

    FrmConexionSqlServer ventana{"OFICINA"};
};

TEST_F(FrmConexionSqlServerTest, TieneSusTextos)
{
    EXPECT_EQ(ventana.windowTitle(), "Conexion servidor SQL SERVER");
    EXPECT_EQ(Rotulo(C<QLabel>(ventana, "LblServidor")), "Servidor SQL SERVER:");
    EXPECT_EQ(Rotulo(C<QRadioButton>(ventana, "Option1")),
              "Realizar conexión con identificación de Windows");
    EXPECT_EQ(Rotulo(C<QRadioButton>(ventana, "Option2")),
              "Realizar conexión con un usuario y contraseña");
    EXPECT_EQ(C<QGroupBox>(ventana, "Frame1")->title(), "Identificación de usuario");
    EXPECT_EQ(Rotulo(C<QLabel>(ventana, "LblCodUsuario")), "Usuario:");
    EXPECT_EQ(Rotulo(C<QLabel>(ventana, "LblClvUsuario")), "Clave:");
    EXPECT_EQ(C<QLineEdit>(ventana, "TxtServidor")->text(), "OFICINA");
    EXPECT_EQ(C<QLineEdit>(ventana, "TxtCodUsuario")->text(), "Usuario");
    EXPECT_EQ(C<QLineEdit>(ventana, "TxtClvUsuario")->text(), "Clave");
}

TEST_F(FrmConexionSqlServerTest, LaClaveNoSeLee)
{
    auto* clave = C<QLineEdit>(ventana, "TxtClvUsuario");

    EXPECT_EQ(clave->echoMode(), QLineEdit::Password);
    EXPECT_NE(clave->displayText(), "Clave");
}

TEST_F(FrmConexionSqlServerTest, LaClaveSeLeeMientrasSuBotonEstaPulsado)
{
    auto* ver = C<QToolButton>(ventana, "CmdVer");
    EXPECT_FALSE(ver->isEnabled());
    Elige("Option2");
    EXPECT_TRUE(ver->isEnabled());

    QTest::keyClick(ver, Qt::Key_Space);
    EXPECT_EQ(C<QLineEdit>(ventana, "TxtClvUsuario")->displayText(), "Clave");

    QTest::keyClick(ver, Qt::Key_Space);
    EXPECT_EQ(C<QLineEdit>(ventana, "TxtClvUsuario")->echoMode(), QLineEdit::Password);
}

TEST_F(FrmConexionSqlServerTest, ElUsuarioSoloSePideConLaSegundaOpcion)
{
    Elige("Option2");
    EXPECT_TRUE(C<QLineEdit>(ventana, "TxtCodUsuario")->isEnabled());
    EXPECT_TRUE(C<QLineEdit>(ventana, "TxtClvUsuario")->isEnabled());

    Elige("Option1");
    EXPECT_FALSE(C<QLineEdit>(ventana, "TxtCodUsuario")->isEnabled());
    EXPECT_FALSE(C<QLineEdit>(ventana, "TxtClvUsuario")->isEnabled());
}

TEST_F(FrmConexionSqlServerTest, CadaCajaSeSeleccionaEnteraAlEntrarEnElla)
{
    Elige("Option2");
    for (const char* nombre : {"TxtServidor", "TxtCodUsuario", "TxtClvUsuario"}) {
        auto* caja = C<QLineEdit>(ventana, nombre);
        ventana.setFocus();

        QTest::mouseClick(caja, Qt::LeftButton);
        QCoreApplication::processEvents();

        EXPECT_EQ(caja->selectedText(), caja->text()) << nombre;
    }
}

TEST_F(FrmConexionSqlServerTest, SeAbreConElServidorSeleccionado)
{
    auto* servidor = C<QLineEdit>(ventana, "TxtServidor");
    QCoreApplication::processEvents();

    EXPECT_TRUE(servidor->hasFocus());
    EXPECT_EQ(servidor->selectedText(), "OFICINA");
    EXPECT_TRUE(C<QRadioButton>(ventana, "Option1")->isChecked());
    EXPECT_FALSE(C<QLineEdit>(ventana, "TxtCodUsuario")->isEnabled());
    EXPECT_FALSE(C<QLineEdit>(ventana, "TxtClvUsuario")->isEnabled());
}

TEST_F(FrmConexionSqlServerTest, ElMarcoContieneUsuarioYClave)
{
    auto* marco = C<QGroupBox>(ventana, "Frame1");

    EXPECT_TRUE(marco->isAncestorOf(C<QLineEdit>(ventana, "TxtCodUsuario")));
    EXPECT_TRUE(marco->isAncestorOf(C<QLineEdit>(ventana, "TxtClvUsuario")));
    EXPECT_FALSE(marco->isAncestorOf(C<QLineEdit>(ventana, "TxtServidor")));
}

TEST_F(FrmConexionSqlServerTest, ElTabuladorVaDeArribaAbajoPorLoQueSePuedeUsar)
{
    // Of the two options Tab stops at the one that is chosen; the arrows go to the other.
    EXPECT_EQ(Recorrido(ventana),
              QStringList({"TxtServidor", "Option1", "CmmAceptar", "CmdCancelar"}));

    C<QRadioButton>(ventana, "Option1")->setFocus();
    QTest::keyClick(ventana.focusWidget(), Qt::Key_Down);
    EXPECT_TRUE(C<QRadioButton>(ventana, "Option2")->isChecked());
    C<QLineEdit>(ventana, "TxtServidor")->setFocus();
    EXPECT_EQ(Recorrido(ventana),
              QStringList({"TxtServidor", "Option2", "TxtCodUsuario", "TxtClvUsuario", "CmdVer",
                           "CmmAceptar", "CmdCancelar"}));
}

TEST_F(FrmConexionSqlServerTest, CadaCajaSeSeleccionaTambienAlEntrarConElTabulador)
{
    Elige("Option2");
    C<QRadioButton>(ventana, "Option2")->setFocus();
    for (const char* nombre : {"TxtCodUsuario", "TxtClvUsuario"}) {
        QTest::keyClick(ventana.focusWidget(), Qt::Key_Tab);
        QCoreApplication::processEvents();

        EXPECT_EQ(ventana.focusWidget()->objectName(), nombre);
        EXPECT_EQ(C<QLineEdit>(ventana, nombre)->selectedText(),
                  C<QLineEdit>(ventana, nombre)->text());
    }
}

TEST_F(FrmConexionSqlServerTest, IntroAceptaYEscapeCancela)
{
    QTest::keyClick(C<QLineEdit>(ventana, "TxtServidor"), Qt::Key_Return);
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Accepted);

    ventana.show();
    QTest::keyClick(C<QLineEdit>(ventana, "TxtServidor"), Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

TEST_F(FrmConexionSqlServerTest, ConIdentificacionDeWindowsNoHayUsuario)
{
    auto* servidor = C<QLineEdit>(ventana, "TxtServidor");
    servidor->selectAll();
    QTest::keyClicks(servidor, "CENTRAL");
    Pulsa(ventana, "CmmAceptar");

    EXPECT_EQ(ventana.result(), QDialog::Accepted);
    EXPECT_EQ(ventana.Acceso().servidor, "CENTRAL");
    EXPECT_TRUE(ventana.Acceso().integrada);
    EXPECT_EQ(ventana.Acceso().credenciales.usuario, "");
    EXPECT_EQ(ventana.Acceso().credenciales.clave, "");
}

TEST_F(FrmConexionSqlServerTest, ConUsuarioVanElUsuarioYLaClave)
{
    Elige("Option2");
    for (const auto& [nombre, texto] :
         {std::pair("TxtCodUsuario", "ana"), std::pair("TxtClvUsuario", "s3creta")}) {
        auto* caja = C<QLineEdit>(ventana, nombre);
        caja->selectAll();
        QTest::keyClicks(caja, texto);
    }
    Pulsa(ventana, "CmmAceptar");

    EXPECT_FALSE(ventana.Acceso().integrada);
    EXPECT_EQ(ventana.Acceso().credenciales.usuario, "ana");
    EXPECT_EQ(ventana.Acceso().credenciales.clave, "s3creta");
}

TEST_F(FrmConexionSqlServerTest, CancelarYCerrarElMarcoSonLoMismo)
{
    Pulsa(ventana, "CmdCancelar");
    EXPECT_EQ(ventana.result(), QDialog::Rejected);

    ventana.setResult(QDialog::Accepted);
    ventana.show();
    ventana.close();
    EXPECT_EQ(ventana.result(), QDialog::Rejected);
}

} // namespace
