#include "data/ui/articulos_en_pantalla.h"
#include "run/dialogo.h"
#include "users/FrmConsUsuarios.h"
#include "usuarios_de_prueba.h"
#include <QAction>
#include <QToolButton>

using namespace tolmo;

namespace {

class FrmConsUsuariosTest : public testing::Test, public UsuariosDePrueba {
  protected:
    void Abre()
    {
        Muestra(ventana);
        Reposa();
    }
    data::ui::DataGrid& Rejilla() { return ventana.Panel().Rejilla(); }
    QToolBar& Toolbar2() { return Hijo<QToolBar>(ventana, "Toolbar2"); }
    QAction& Accion(const char* clave) { return Hijo<QAction>(Toolbar2(), clave); }
    void Pulsa(const char* clave)
    {
        QTest::mouseClick(Toolbar2().widgetForAction(&Accion(clave)), Qt::LeftButton);
        Reposa();
    }
    QString EnPantalla()
    {
        QStringList codigos;
        for (int i = 0; i < Rejilla().model()->rowCount(); ++i)
            codigos << Celda(Rejilla(), i, 0);
        return codigos.join(' ');
    }
    /// Notes what the card opens with, and closes it.
    void MiraLaFicha(QString& codigo)
    {
        EnElDialogo([&codigo](QWidget& ficha) {
            EXPECT_EQ(ficha.objectName(), "FrmFichaUsuarios");
            codigo = Hijo<QLineEdit>(ficha, "txtCampo_0").text();
            ficha.close();
        });
    }

    EscritorioDePrueba escritorio{};
    FrmConsUsuarios ventana{programa, escritorio};
};

TEST_F(FrmConsUsuariosTest, TieneSusColumnasYSuBarra)
{
    Abre();

    EXPECT_EQ(ventana.windowTitle(), "Consulta de usuarios");
    EXPECT_EQ(Cabeceras(Rejilla()), QStringList({"Codigo", "Nombre", "Empresa", "Email"}));
    EXPECT_EQ(sentencias,
              QStringList("Select CODIGO,NOMBRE,EMPRESA,EMAIL from USUARIOS order by CODIGO"));
    EXPECT_EQ(EnPantalla(), "00001 00003 00007");
    QStringList barra;
    for (const QAction* accion : Toolbar2().actions())
        if (!accion->isSeparator())
            barra << accion->objectName() + '=' + accion->text();
    EXPECT_EQ(barra, QStringList({"NUEVO=Nuevo", "EDITAR=Editar", "TRASPASAR=Traspasar documento",
                                  "IMPRIMIR=Imprimir"}));
    EXPECT_TRUE(Hijo<QToolBar>(ventana, "Toolbar1").isVisible());
    EXPECT_TRUE(Hijo<QLineEdit>(ventana, "Text1").hasFocus());
}

TEST_F(FrmConsUsuariosTest, TraspasarEImprimirNoHacenNada)
{
    Abre();

    for (const char* clave : {"TRASPASAR", "IMPRIMIR"}) {
        EXPECT_TRUE(Toolbar2().widgetForAction(&Accion(clave))->isVisible());
        EXPECT_FALSE(Accion(clave).isEnabled());
        EXPECT_EQ(Accion(clave).toolTip(), "Sin función para los usuarios web");
        Pulsa(clave);
    }
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(FrmConsUsuariosTest, NuevoAbreLaFichaConElSiguienteCodigo)
{
    Abre();
    QString codigo;
    MiraLaFicha(codigo);

    Pulsa("NUEVO");

    EXPECT_EQ(codigo, "00008");
}

TEST_F(FrmConsUsuariosTest, EditarAbreLaFichaDeLaFilaActual)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 1);
    QString codigo;
    MiraLaFicha(codigo);

    Pulsa("EDITAR");

    EXPECT_EQ(codigo, "00003");
}

TEST_F(FrmConsUsuariosTest, ElTecladoYElDobleClicTambienAbrenLaFicha)
{
    Abre();
    QString codigo;
    PulsaCelda(Rejilla(), 2, 1);
    MiraLaFicha(codigo);
    QTest::keyClick(&Rejilla(), Qt::Key_Return);
    EXPECT_EQ(codigo, "00007");

    QLineEdit& busqueda = Hijo<QLineEdit>(ventana, "Text1");
    busqueda.setFocus();
    QTest::keyClicks(&busqueda, "00003");
    MiraLaFicha(codigo);
    QTest::keyClick(&busqueda, Qt::Key_Return);
    EXPECT_EQ(codigo, "00003");

    ventana.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&ventana));
    MiraLaFicha(codigo);
    QTest::keyClick(&busqueda, Qt::Key_Insert);
    EXPECT_EQ(codigo, "00008");

    PulsaCelda(Rejilla(), 0, 1);
    MiraLaFicha(codigo);
    QTest::mouseDClick(Rejilla().viewport(), Qt::LeftButton, {}, SitioDeCelda(Rejilla(), 0, 1));
    Reposa();
    EXPECT_EQ(codigo, "00001");
}

TEST_F(FrmConsUsuariosTest, EditarSobreUnaTablaVaciaNoAbreNada)
{
    Ejecuta({"DELETE FROM USUARIOS"});
    Abre();

    Pulsa("EDITAR");

    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(ventana.isVisible());
}

TEST_F(FrmConsUsuariosTest, SobreUnaTablaVaciaNadaFallaYNuevoProponeElPrimero)
{
    Ejecuta({"DELETE FROM USUARIOS"});
    Abre();
    auto& barra = Hijo<QToolBar>(ventana, "Toolbar1");
    for (const char* clave : {"PRIMREG", "ULTREG", "FINDANT", "FINDSIG"}) {
        Hijo<QAction>(barra, clave).trigger();
        Reposa();
    }
    QTest::keyClick(&Hijo<QLineEdit>(ventana, "Text1"), Qt::Key_Return);
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(avisos.cajas.empty());
    QString codigo;
    MiraLaFicha(codigo);

    Pulsa("NUEVO");

    EXPECT_EQ(codigo, "00001");
}

TEST_F(FrmConsUsuariosTest, UnUsuarioQueOtroProgramaHaBorradoSeAbreComoNuevo)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 1);
    Ejecuta({"DELETE FROM USUARIOS WHERE CODIGO='00003'"});
    QString codigo;
    EnElDialogo([&codigo](QWidget& ficha) {
        codigo = Hijo<QLineEdit>(ficha, "txtCampo_0").text();
        EXPECT_EQ(Hijo<QLineEdit>(ficha, "txtCampo_28").text(), "");
        EXPECT_FALSE(Hijo<QPushButton>(ficha, "CmdBorrar").isEnabled());
        ficha.close();
    });

    Pulsa("EDITAR");

    EXPECT_EQ(codigo, "00003");
    EXPECT_EQ(EnPantalla(), "00001 00007");
    EXPECT_EQ(Rejilla().currentIndex().row(), 1) << "the row that stands in its place";
}

TEST_F(FrmConsUsuariosTest, EditarTomaAntesLoTecleadoEnLaBarraDeFiltro)
{
    Abre();
    QTest::keyClicks(&Hijo<QLineEdit>(ventana, "FilterText_1"), "Eva");
    QString codigo;
    MiraLaFicha(codigo);

    Pulsa("EDITAR");

    EXPECT_EQ(codigo, "00007");
    EXPECT_EQ(EnPantalla(), "00007");
}

TEST_F(FrmConsUsuariosTest, SinCmdRetornaElTabuladorVuelveDelGridALaBusqueda)
{
    Abre();
    const QStringList orden{"Text1",        "FilterText_0", "FilterText_1",
                            "FilterText_2", "FilterText_3", "DataGrid1"};
    for (const QString& nombre : orden) {
        EXPECT_EQ(ventana.focusWidget()->objectName().toStdString(), nombre.toStdString());
        QTest::keyClick(ventana.focusWidget(), Qt::Key_Tab);
    }
    for (auto i = orden.size(); i-- > 0;) {
        QTest::keyClick(ventana.focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_EQ(ventana.focusWidget()->objectName().toStdString(), orden[i].toStdString());
    }
}

TEST_F(FrmConsUsuariosTest, LoQueSeHaceEnLaFichaSeVeALaVuelta)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 1);
    EnElDialogo([](QWidget& ficha) {
        auto& nombre = Hijo<QLineEdit>(ficha, "txtCampo_28");
        nombre.setFocus();
        nombre.selectAll();
        QTest::keyClicks(&nombre, "Luisa Gil");
        QTest::keyClick(&nombre, Qt::Key_Return);
        ficha.close();
    });

    Pulsa("EDITAR");

    EXPECT_EQ(Celda(Rejilla(), 1, 1), "Luisa Gil");
    EXPECT_EQ(Rejilla().currentIndex().row(), 1) << "the row stays";
}

TEST_F(FrmConsUsuariosTest, ElFiltroVaDetrasDeLaTabla)
{
    Hijo<QLineEdit>(ventana, "TxtFiltro").setText("NOMBRE='Eva Sanz'");

    Abre();

    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODIGO,NOMBRE,EMPRESA,EMAIL from USUARIOS where (NOMBRE='Eva Sanz') order by CODIGO"));
    EXPECT_EQ(EnPantalla(), "00007");
}

TEST_F(FrmConsUsuariosTest, AQuienLaAbreNoSeLeDevuelveNada)
{
    Abre();

    EXPECT_TRUE(Hijo<QPushButton>(ventana, "CmdRetorna").isHidden());
    QTest::keyClick(&ventana, Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
}

} // namespace
