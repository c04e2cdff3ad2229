#include "apoyo/programa_en_error.h"
#include "data/ui/articulos_en_pantalla.h"
#include "run/dialogo.h"
#include "users/FrmFichaUsuarios.h"
#include "usuarios_de_prueba.h"
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <gmock/gmock.h>

using namespace tolmo;
using data::Respuesta;

namespace {

using Cajas = std::vector<AvisosDePrueba::Caja>;

class FrmFichaUsuariosTest : public testing::Test, public UsuariosDePrueba {
  protected:
    void Abre(const QString& codigo)
    {
        ventana.Prepara("1", codigo);
        Muestra(ventana);
        Reposa();
    }
    void AbreYOlvida(const QString& codigo)
    {
        Abre(codigo);
        sentencias.clear();
    }
    QLineEdit& Campo(int indice)
    {
        return Hijo<QLineEdit>(ventana, qPrintable("txtCampo_" + QString::number(indice)));
    }
    QComboBox& Combo1() { return Hijo<QComboBox>(ventana, "Combo1"); }
    QAbstractButton& Boton(const char* nombre) { return Hijo<QAbstractButton>(ventana, nombre); }
    void Pulsa(const char* nombre)
    {
        QTest::mouseClick(&Boton(nombre), Qt::LeftButton);
        Reposa();
    }
    /// Goes into a box with the mouse and types, as an operator does.
    void Teclea(int indice, const QString& texto)
    {
        QTest::mouseClick(&Campo(indice), Qt::LeftButton);
        Reposa();
        PulsaTecla(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(&Campo(indice), texto);
    }
    void PulsaTecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(ventana.focusWidget(), tecla, con);
        Reposa();
    }
    /// The whole card, as it stands on the screen.
    QString EnPantalla()
    {
        QStringList textos;
        for (const int indice : {0, 28, 1, 2, 3, 4})
            textos << Campo(indice).text();
        return (textos << Combo1().currentText()).join('|');
    }

    FrmFichaUsuarios ventana{programa};
};

TEST_F(FrmFichaUsuariosTest, TieneSusControlesConSusRotulosYAnchos)
{
    EXPECT_EQ(ventana.windowTitle(), "Consulta de Usuarios");
    struct Fila {
        const char* control;
        const char* etiqueta;
        const char* rotulo;
        int ancho;
        const char* columna;
    };
    for (const Fila& fila : {Fila{"txtCampo_0", "LblCampo_0", "Codigo:", 5, "CODIGO"},
                             Fila{"txtCampo_28", "LblCampo_28", "Nombre:", 50, "NOMBRE"},
                             Fila{"txtCampo_1", "LblCampo_1", "Usuario:", 10, "LOGIN"},
                             Fila{"txtCampo_2", "LblCampo_2", "Contraseña:", 10, "PASSWORD"},
                             Fila{"txtCampo_3", "LblCampo_3", "Email:", 100, "EMAIL"},
                             Fila{"txtCampo_4", "LblCampo_4", "Empresa:", 20, "EMPRESA"}}) {
        const auto& caja = Hijo<QLineEdit>(ventana, fila.control);
        EXPECT_EQ(Rotulo(&Hijo<QLabel>(ventana, fila.etiqueta)), fila.rotulo);
        EXPECT_EQ(Hijo<QLabel>(ventana, fila.etiqueta).buddy(), &caja);
        EXPECT_EQ(caja.maxLength(), fila.ancho) << fila.control;
        EXPECT_EQ(caja.property("Tag").toString(), fila.columna);
    }
    EXPECT_EQ(Rotulo(&Hijo<QLabel>(ventana, "LblCombo1")), "Tarifa:");
    EXPECT_EQ(Combo1().property("Tag").toString(), "CODTARIFA");
    EXPECT_EQ(Boton("CmdActualizar").text(), "A&ctualizar");
    EXPECT_EQ(Rotulo(&Boton("CmdAñadir")), "Añadir");
    EXPECT_EQ(Rotulo(&Boton("CmdBorrar")), "Borrar");
    EXPECT_EQ(Boton("Cmdanterior").toolTip(), "Anterior registro");
    EXPECT_EQ(Boton("CmdSiguiente").toolTip(), "Siguiente registro");
}

TEST_F(FrmFichaUsuariosTest, LaTarifaVaDelUnoAlCinco)
{
    QStringList tarifas;
    for (int i = 0; i < Combo1().count(); ++i)
        tarifas << Combo1().itemText(i);

    EXPECT_EQ(tarifas, QStringList({"", "1", "2", "3", "4", "5"}));
}

TEST_F(FrmFichaUsuariosTest, ElTabuladorVaDeArribaAbajo)
{
    Abre("1");
    Campo(0).setFocus();
    QStringList recorrido;
    for (int i = 0; i < 13; ++i) {
        recorrido << ventana.focusWidget()->objectName();
        PulsaTecla(Qt::Key_Tab);
    }

    EXPECT_EQ(recorrido,
              QStringList({"txtCampo_0", "Cmdanterior", "CmdSiguiente", "txtCampo_28", "txtCampo_1",
                           "txtCampo_2", "CmdVer_2", "txtCampo_3", "txtCampo_4", "Combo1",
                           "CmdActualizar", "CmdAñadir", "CmdBorrar"}));
    EXPECT_TRUE(Campo(0).hasFocus()) << "and begins again";
}

// Reading.

TEST_F(FrmFichaUsuariosTest, SeAbreConElUsuarioDeSuCodigo)
{
    Abre("00001");

    EXPECT_EQ(EnPantalla(), "00001|Ana Ruiz|ana|alfar7|ana@uno.example|Uno|1");
    EXPECT_TRUE(Boton("CmdBorrar").isEnabled());
    EXPECT_TRUE(Boton("CmdAñadir").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, SinCodigoSeAbreConElSiguiente)
{
    Abre("");

    EXPECT_EQ(EnPantalla(), "00008||||||");
    EXPECT_TRUE(Campo(0).isEnabled());
    EXPECT_TRUE(Boton("CmdActualizar").isEnabled());
    EXPECT_FALSE(Boton("CmdBorrar").isEnabled());
    EXPECT_FALSE(Boton("CmdAñadir").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, EnUnaTablaVaciaSeAbreConElPrimero)
{
    Ejecuta({"DELETE FROM USUARIOS"});

    Abre("");

    EXPECT_EQ(Campo(0).text(), "00001");
}

TEST_F(FrmFichaUsuariosTest, MostradaOtraVezConservaLoTecleado)
{
    Abre("00001");
    Teclea(28, "Otra");
    ventana.hide();
    sentencias.clear();

    Muestra(ventana);

    EXPECT_EQ(Campo(28).text(), "Otra");
    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(FrmFichaUsuariosTest, AlDejarElCodigoSeRellenaYSeLee)
{
    Abre("00001");

    Teclea(0, "7");
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(EnPantalla(), "00007|Eva Sanz|eva|botijo|eva@tres.example|Tres|");
}

TEST_F(FrmFichaUsuariosTest, LaTeclaIntroTrasElCodigoLeeYNoGuarda)
{
    Abre("00001");

    Teclea(0, "3");
    PulsaTecla(Qt::Key_Return);

    EXPECT_EQ(EnPantalla(), "00003|Luis Gil|luis||luis@dos.example||3");
    EXPECT_TRUE(Campo(28).hasFocus());
    EXPECT_EQ(avisos.cajas, Cajas{});
}

TEST_F(FrmFichaUsuariosTest, UnCodigoSinUsuarioVaciaLaFichaYQuedaComoNuevo)
{
    Abre("00001");

    Teclea(0, "5");
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(EnPantalla(), "00005||||||");
    EXPECT_FALSE(Boton("CmdBorrar").isEnabled());
    EXPECT_FALSE(Boton("CmdAñadir").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, BorrarElCodigoYDejarloProponeElSiguiente)
{
    Abre("00001");

    Teclea(0, "");
    PulsaTecla(Qt::Key_Delete);
    EXPECT_EQ(Campo(0).text(), "");
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(EnPantalla(), "00008||||||");
}

TEST_F(FrmFichaUsuariosTest, PasarPorElCodigoSinCambiarloNoPierdeLoTecleado)
{
    Abre("00001");
    Teclea(28, "Ana Ruiz Mora");
    sentencias.clear();

    Campo(0).setFocus();
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(Campo(28).text(), "Ana Ruiz Mora");
    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(FrmFichaUsuariosTest, NingunaCajaAdmiteMasQueSuColumna)
{
    Abre("");

    Teclea(0, "123456");
    EXPECT_EQ(Campo(0).text(), "12345");
    Teclea(1, "administrador");
    EXPECT_EQ(Campo(1).text(), "administra");
    Combo1().setFocus();
    QTest::keyClicks(&Combo1(), "123");
    EXPECT_EQ(Combo1().currentText(), "12");
}

// The password.

TEST_F(FrmFichaUsuariosTest, LaContrasenaSoloSeLeeConSuBotonPulsado)
{
    Abre("00001");
    EXPECT_EQ(Campo(2).echoMode(), QLineEdit::Password);

    Boton("CmdVer_2").setFocus();
    PulsaTecla(Qt::Key_Space);
    EXPECT_EQ(Campo(2).displayText(), "alfar7");

    Pulsa("CmdVer_2");
    EXPECT_EQ(Campo(2).echoMode(), QLineEdit::Password);
    EXPECT_EQ(Campo(2).text(), "alfar7");
}

TEST_F(FrmFichaUsuariosTest, AlLeerOtroUsuarioLaContrasenaVuelveAOcultarse)
{
    Abre("00001");
    Pulsa("CmdVer_2");
    EXPECT_EQ(Campo(2).displayText(), "alfar7");

    Teclea(0, "7");
    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(Campo(2).text(), "botijo");
    EXPECT_EQ(Campo(2).echoMode(), QLineEdit::Password);
    EXPECT_FALSE(Boton("CmdVer_2").isChecked());
}

// Saving.

TEST_F(FrmFichaUsuariosTest, ElNombrePuedeRepetirse)
{
    Abre("");
    Teclea(28, "Eva Sanz");

    PulsaTecla(Qt::Key_Return);

    EXPECT_EQ(avisos.cajas, (Cajas{{"Se ha creado usuario 00008", 64, ""}}));
    EXPECT_EQ(Tabla("SELECT CODIGO FROM USUARIOS WHERE NOMBRE='Eva Sanz' ORDER BY CODIGO"),
              "00007 00008");
}

TEST_F(FrmFichaUsuariosTest, UnoNuevoSeCreaYSeVuelveALeer)
{
    Abre("");
    Teclea(28, "Marta Noria");
    Teclea(1, "marta");
    Teclea(2, "s3creta");
    Combo1().setFocus();
    for (const char* tarifa : {"", "1", "2"}) {
        PulsaTecla(Qt::Key_Down);
        EXPECT_EQ(Combo1().currentText(), tarifa);
    }
    sentencias.clear();

    Pulsa("CmdActualizar");

    EXPECT_EQ(Usuario("00008"), "00008|Marta Noria|marta|s3creta|NULL|NULL|2");
    EXPECT_EQ(avisos.cajas, (Cajas{{"Se ha creado usuario 00008", 64, ""}}));
    EXPECT_EQ(sentencias.last(), "SELECT * FROM USUARIOS WHERE codigo='00008'");
    EXPECT_EQ(EnPantalla(), "00008|Marta Noria|marta|s3creta|||2");
    EXPECT_TRUE(Boton("CmdBorrar").isEnabled()) << "it is no new one any more";
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmFichaUsuariosTest, ElQueEstaSeActualiza)
{
    Abre("00003");
    Teclea(28, "Luis Gil Mas");

    PulsaTecla(Qt::Key_Return);

    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil Mas|luis|NULL|luis@dos.example|NULL|3");
    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario 00003 actualizado", 64, ""}}));
}

TEST_F(FrmFichaUsuariosTest, SinNombreNoSeGuarda)
{
    Abre("00003");
    Teclea(28, "");
    PulsaTecla(Qt::Key_Delete);

    Pulsa("CmdActualizar");

    EXPECT_EQ(avisos.cajas, (Cajas{{"Nombre no puede estar vacío", 48, ""}}));
    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|3");
    EXPECT_EQ(Campo(1).text(), "luis") << "the card stays as it was typed";
}

TEST_F(FrmFichaUsuariosTest, UnCodigoQueOtroProgramaHaTomadoNoSeAnade)
{
    Abre("");
    Teclea(28, "Marta Noria");
    Ejecuta({"INSERT INTO USUARIOS (CODIGO,NOMBRE) VALUES ('00008','El otro')"});

    Pulsa("CmdActualizar");

    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario existente, imposible añadir", 64, ""}}));
    EXPECT_EQ(EnPantalla(), "00008|El otro|||||") << "the record is read again";
}

TEST_F(FrmFichaUsuariosTest, UnUsuarioQueOtroProgramaHaBorradoQuedaComoNuevo)
{
    Abre("00003");
    Teclea(28, "Luis Gil Mas");
    Ejecuta({"DELETE FROM USUARIOS WHERE CODIGO='00003'"});

    Pulsa("CmdActualizar");

    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario 00003 actualizado", 64, ""}}));
    EXPECT_EQ(Codigos(), "00001 00007");
    EXPECT_EQ(EnPantalla(), "00003||||||");
    EXPECT_FALSE(Boton("CmdBorrar").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, LaLetraDelBotonLeeAntesElCodigoQueSeHaEscrito)
{
    Abre("00001");
    Teclea(0, "7");

    PulsaTecla(Qt::Key_C, Qt::AltModifier);
    QTest::qWait(150);

    EXPECT_EQ(avisos.cajas, (Cajas{{"Usuario 00007 actualizado", 64, ""}}));
    EXPECT_EQ(Usuario("00007"), "00007|Eva Sanz|eva|botijo|eva@tres.example|Tres|NULL");
}

TEST_F(FrmFichaUsuariosTest, UnaTarifaFueraDeLaListaSeConserva)
{
    Ejecuta({"UPDATE USUARIOS SET CODTARIFA='12' WHERE CODIGO='00003'"});
    Abre("00003");
    EXPECT_EQ(Combo1().currentText(), "12");

    Pulsa("CmdActualizar");

    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|12");
}

TEST_F(FrmFichaUsuariosTest, LaTarifaSePuedeQuitar)
{
    Abre("00003");
    Combo1().setFocus();
    for (int i = 0; i < 3; ++i)
        PulsaTecla(Qt::Key_Up);

    Pulsa("CmdActualizar");

    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|NULL");
}

// The other buttons.

TEST_F(FrmFichaUsuariosTest, AnteriorYSiguienteRecorrenLosCodigos)
{
    Abre("00003");

    Pulsa("CmdSiguiente");
    EXPECT_EQ(Campo(28).text(), "Eva Sanz");
    Pulsa("CmdSiguiente");
    EXPECT_EQ(EnPantalla(), "00007|Eva Sanz|eva|botijo|eva@tres.example|Tres|") << "no more";
    Boton("Cmdanterior").setFocus();
    PulsaTecla(Qt::Key_Space);
    PulsaTecla(Qt::Key_Space);
    EXPECT_EQ(Campo(28).text(), "Ana Ruiz");
    PulsaTecla(Qt::Key_Space);
    EXPECT_EQ(Campo(0).text(), "00001");
}

TEST_F(FrmFichaUsuariosTest, AnteriorDesdeUnCodigoNuevoLlevaAlUltimo)
{
    Abre("");

    Pulsa("Cmdanterior");

    EXPECT_EQ(Campo(0).text(), "00007");
    EXPECT_TRUE(Boton("CmdBorrar").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, AnadirProponeElSiguiente)
{
    AbreYOlvida("00003");

    Pulsa("CmdAñadir");

    EXPECT_EQ(EnPantalla(), "00008||||||");
    EXPECT_TRUE(Campo(0).isEnabled());
    EXPECT_TRUE(Campo(0).hasFocus());
    EXPECT_FALSE(Boton("CmdAñadir").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, BorrarPreguntaYVaciaLaFicha)
{
    Abre("00003");
    avisos.respuestas = {Respuesta::Aceptar};

    Pulsa("CmdBorrar");

    EXPECT_EQ(avisos.cajas, (Cajas{{"¿Seguro que quiere eliminar? \r00003 Luis Gil", 273,
                                    "Confirmación de eliminación"}}));
    EXPECT_EQ(Codigos(), "00001 00007");
    EXPECT_EQ(EnPantalla(), "||||||");
    EXPECT_FALSE(Boton("CmdBorrar").isEnabled());
}

TEST_F(FrmFichaUsuariosTest, ConElSegundoBotonNoSeBorraNada)
{
    Abre("00003");
    avisos.respuestas = {Respuesta::Cancelar};

    Pulsa("CmdBorrar");

    EXPECT_EQ(Codigos(), "00001 00003 00007");
    EXPECT_EQ(Campo(28).text(), "Luis Gil");
}

TEST_F(FrmFichaUsuariosTest, LaFichaVaciaNoSeGuarda)
{
    Abre("00003");
    avisos.respuestas = {Respuesta::Aceptar};
    Pulsa("CmdBorrar");
    avisos.cajas.clear();

    PulsaTecla(Qt::Key_C, Qt::AltModifier);
    QTest::qWait(150);

    EXPECT_EQ(avisos.cajas, (Cajas{{"Código de cliente no puede estar vacío", 48, ""}}));
}

TEST_F(FrmFichaUsuariosTest, TrasBorrarSePuedeAnadirOtro)
{
    Abre("00007");
    avisos.respuestas = {Respuesta::Aceptar};
    Pulsa("CmdBorrar");

    PulsaTecla(Qt::Key_Tab);

    EXPECT_EQ(EnPantalla(), "00004||||||");
}

TEST_F(FrmFichaUsuariosTest, EscapeCierraSinGuardar)
{
    Abre("00003");
    Teclea(28, "Otro");

    PulsaTecla(Qt::Key_Escape);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Usuario("00003"), "00003|Luis Gil|luis|NULL|luis@dos.example|NULL|3");
}

TEST_F(FrmFichaUsuariosTest, CerrarConUnCodigoAMediasNoLeeNada)
{
    AbreYOlvida("00003");
    Teclea(0, "'");

    ventana.close();

    EXPECT_EQ(sentencias, QStringList());
    EXPECT_EQ(avisos.cajas, Cajas{});
}

// A statement that fails ends the process.

void GuardaConComilla(const QString& ruta)
{
    ProgramaEnError proceso(ruta);
    FrmFichaUsuarios ficha(proceso.programa);
    ficha.Prepara("1", "00001");
    ficha.show();
    ficha.findChild<QLineEdit*>("txtCampo_28")->setText("D'Arc");
    ficha.findChild<QPushButton*>("CmdActualizar")->click();
    std::fprintf(stderr, "sigue\n");
}

TEST(FrmFichaUsuariosDeathTest, UnaComillaEnElNombreCierraElPrograma)
{
    UsuariosDePrueba usuarios;

    EXPECT_EXIT(GuardaConComilla(usuarios.Base()), testing::ExitedWithCode(1),
                testing::AllOf(testing::HasSubstr("NOMBRE='D'Arc'"),
                               testing::HasSubstr("EL PROGRAMA SE CERRARÁ"),
                               testing::Not(testing::HasSubstr("sigue"))));
}

} // namespace
