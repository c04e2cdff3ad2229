#include "apoyo/programa_con_base.h"
#include "configurator/FrmRecuperaArtic.h"
#include "configurator/busca_articulo.h"
#include "data/ui/articulos_en_pantalla.h"
#include "data/ui/control_activo.h"
#include <QAction>
#include <QDialog>
#include <QPushButton>

using namespace tolmo;

namespace {

const QString SinFiltro =
    "Select CODARTICULO,DESCRIPCION from M_ARTIC where tipoartic is null OR TipoArtic<>'OB'  order by CODARTICULO";

class FrmRecuperaArticTest : public testing::Test, public ProgramaConBase {
  protected:
    FrmRecuperaArticTest()
    {
        programa.TipoBaseDatos = data::Dialecto::Access;
        programa.parametros.PS_TABLAARTIC = "M_ARTIC";
        Ejecuta(
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), CODALTERNATIVO nvarchar(20), DESCRIPCION nvarchar(60), TIPOARTIC nvarchar(2))",
             "INSERT INTO M_ARTIC VALUES ('A2','X3','Cazo','MP')",
             "INSERT INTO M_ARTIC VALUES ('A1','X4','Olla',NULL)",
             "INSERT INTO M_ARTIC VALUES ('A3','X1','Olla vieja','OB')",
             "INSERT INTO M_ARTIC VALUES ('B1',NULL,'Tapa','')",
             "INSERT INTO M_ARTIC VALUES ('B''2','X''2','Olla d''Oro','PT')"});
        destino->setText("antes");
        destino->setFocus();
    }
    void Abre()
    {
        Muestra(ventana);
        Reposa();
    }
    data::ui::DataGrid& Rejilla() { return ventana.Panel().Rejilla(); }
    QLineEdit& Text1() { return Hijo<QLineEdit>(ventana, "Text1"); }
    void Retorna()
    {
        QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdRetorna"), Qt::LeftButton);
        Reposa();
    }
    void Accion(const char* clave)
    {
        Hijo<QAction>(Hijo<QToolBar>(ventana, "Toolbar1"), clave).trigger();
        Reposa();
    }
    QString EnPantalla()
    {
        QStringList codigos;
        for (int i = 0; i < Rejilla().model()->rowCount(); ++i)
            codigos << Celda(Rejilla(), i, 0);
        return codigos.join(' ');
    }

    EscritorioDePrueba escritorio{};
    QDialog llamante{};
    QLineEdit* destino = new QLineEdit(&llamante);
    FrmRecuperaArtic ventana{programa, escritorio, &llamante};
};

TEST_F(FrmRecuperaArticTest, TieneSusControlesYSusColumnas)
{
    Abre();

    EXPECT_EQ(ventana.windowTitle(), "Seleccionar Artículo");
    EXPECT_EQ(Cabeceras(Rejilla()), QStringList({"Código", "Descripción"}));
    for (const char* control : {"DataGrid1", "Text1", "Label1", "Toolbar1", "CmdRetorna"})
        EXPECT_TRUE(Hijo<QWidget>(ventana, control).isVisible()) << control;
    EXPECT_TRUE(Hijo<QLineEdit>(ventana, "TxtFiltro").isHidden());
    EXPECT_EQ(Hijo<QLabel>(ventana, "Label1").text(), "Código");
}

TEST_F(FrmRecuperaArticTest, SinFiltroSalenTodosMenosLosDeTipoOB)
{
    Abre();

    EXPECT_EQ(sentencias, QStringList(SinFiltro));
    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B'2");
}

TEST_F(FrmRecuperaArticTest, ConFiltroTampocoSalenLosDeTipoOB)
{
    ventana.PonFiltro("DESCRIPCION like 'Olla%' or CODARTICULO='A3'");

    Abre();

    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODARTICULO,DESCRIPCION from M_ARTIC where (DESCRIPCION like 'Olla%' or CODARTICULO='A3') AND (tipoartic is null OR TipoArtic<>'OB')  order by CODARTICULO"));
    EXPECT_EQ(EnPantalla(), "A1 B'2");
    EXPECT_TRUE(Hijo<QAction>(Hijo<QToolBar>(ventana, "Toolbar1"), "FILTRO").isChecked());
}

TEST_F(FrmRecuperaArticTest, LaBarraDeFiltroTampocoDejaPasarLosDeTipoOB)
{
    Abre();

    QTest::keyClicks(&Hijo<QLineEdit>(ventana, "FilterText_1"), "Olla");
    QTest::keyClick(&Hijo<QLineEdit>(ventana, "FilterText_1"), Qt::Key_Return);
    Reposa();

    EXPECT_EQ(EnPantalla(), "A1 B'2");
}

TEST_F(FrmRecuperaArticTest, ElFiltroDeUnCampoEmpezadoDejaLosQueEmpiezanAsi)
{
    ventana.PonFiltro(configurator::FiltroPorArticulo("a"));

    Abre();

    EXPECT_EQ(EnPantalla(), "A1 A2");
}

TEST_F(FrmRecuperaArticTest, QuitarFiltrosDejaTodosLosQueSePuedenElegir)
{
    ventana.PonFiltro("CODARTICULO='A2'");
    Abre();
    ASSERT_EQ(EnPantalla(), "A2");

    QTest::keyClick(&Text1(), Qt::Key_F, Qt::ControlModifier | Qt::ShiftModifier);
    Reposa();

    EXPECT_EQ(EnPantalla(), "A1 A2 B1 B'2");
}

TEST_F(FrmRecuperaArticTest, CmdRetornaDevuelveElCodigoYEsconde)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 1);

    Retorna();

    EXPECT_EQ(destino->text(), "A2") << "the code, whatever the column";
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmRecuperaArticTest, ElDobleClicDevuelveElCodigo)
{
    Abre();
    PulsaCelda(Rejilla(), 2, 1);
    QTest::mouseDClick(Rejilla().viewport(), Qt::LeftButton, {}, SitioDeCelda(Rejilla(), 2, 1));
    Reposa();

    EXPECT_EQ(destino->text(), "B1");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmRecuperaArticTest, IntroDevuelveLoBuscado)
{
    Abre();
    QTest::keyClicks(&Text1(), "a2");
    QTest::keyClick(&Text1(), Qt::Key_Return);

    EXPECT_EQ(destino->text(), "A2");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmRecuperaArticTest, IntroEnLaFilaLaDevuelve)
{
    Abre();
    PulsaCelda(Rejilla(), 0, 1);
    QTest::keyClick(&Rejilla(), Qt::Key_Down);
    QTest::keyClick(&Rejilla(), Qt::Key_Return);

    EXPECT_EQ(destino->text(), "A2");
}

TEST_F(FrmRecuperaArticTest, DevuelveAlControlQueElLlamanteHaElegido)
{
    QLineEdit otro(&llamante);
    const data::ui::ControlElegido elegido(otro);
    Abre();
    PulsaCelda(Rejilla(), 0, 0);

    Retorna();

    EXPECT_EQ(otro.text(), "A1");
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaArticTest, UnCodigoConComillaSeBuscaYSeDevuelve)
{
    Abre();
    QTest::keyClicks(&Text1(), "B'");
    Retorna();

    EXPECT_EQ(destino->text(), "B'2");
}

TEST_F(FrmRecuperaArticTest, CanceladaDejaElControlComoEstaba)
{
    Abre();
    PulsaCelda(Rejilla(), 1, 0);
    QTest::keyClick(&Rejilla(), Qt::Key_Escape);

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaArticTest, SinArticulosNadaFallaYNadaSeDevuelve)
{
    Ejecuta({"DELETE FROM M_ARTIC"});
    Abre();
    for (const char* clave : {"PRIMREG", "ULTREG", "FINDANT", "FINDSIG"})
        Accion(clave);
    QTest::keyClicks(&Text1(), "A");

    Retorna();

    EXPECT_EQ(destino->text(), "antes");
    EXPECT_TRUE(avisos.cajas.empty());
    QTest::keyClick(&Text1(), Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmRecuperaArticTest, SoloArticulosDeTipoOBEsComoNinguno)
{
    Ejecuta({"DELETE FROM M_ARTIC WHERE CODARTICULO<>'A3'"});
    Abre();

    Retorna();

    EXPECT_EQ(EnPantalla(), "");
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmRecuperaArticTest, LaCabeceraOrdenaYPasaASerLaDeBusqueda)
{
    Abre();
    PulsaCabecera(Rejilla(), 1);

    EXPECT_EQ(EnPantalla(), "A2 A1 B'2 B1");
    EXPECT_EQ(Hijo<QLabel>(ventana, "Label1").text(), "Descripción");
    QTest::keyClicks(&Text1(), "Tapa");
    Retorna();
    EXPECT_EQ(destino->text(), "B1");
}

TEST_F(FrmRecuperaArticTest, LasTeclasDeLaBarraSonLasDeCualquierConsulta)
{
    Abre();
    Accion("ULTREG");
    EXPECT_EQ(Rejilla().currentIndex().row(), 3);
    Accion("PRIMREG");
    EXPECT_EQ(Rejilla().currentIndex().row(), 0);
    Text1().setText("A");
    Accion("FINDSIG");
    EXPECT_EQ(Rejilla().currentIndex().row(), 1);
    Accion("FINDANT");
    EXPECT_EQ(Rejilla().currentIndex().row(), 0);
}

TEST_F(FrmRecuperaArticTest, ConElCodigoAlternativoSeVeYSeDevuelveEse)
{
    ventana.PonDevuelveCodAlternativo(true);
    Abre();

    EXPECT_EQ(Cabeceras(Rejilla()), QStringList({"Cod. Alternativo", "Descripción"}));
    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODALTERNATIVO,DESCRIPCION from M_ARTIC where tipoartic is null OR TipoArtic<>'OB'  order by CODALTERNATIVO"));
    QTest::keyClicks(&Text1(), "X4");
    PulsaCelda(Rejilla(), Rejilla().currentIndex().row(), 1);
    Retorna();
    EXPECT_EQ(destino->text(), "X4");
}

TEST_F(FrmRecuperaArticTest, ConElCodigoAlternativoElFiltroEsElSuyo)
{
    ventana.PonDevuelveCodAlternativo(true);
    ventana.PonFiltro(configurator::FiltroPorAlternativo("X"));

    Abre();

    EXPECT_EQ(EnPantalla(), "X'2 X3 X4");
}

TEST_F(FrmRecuperaArticTest, UnAlternativoSinValorDejaElControlVacio)
{
    ventana.PonDevuelveCodAlternativo(true);
    ventana.PonFiltro("CODARTICULO='B1'");
    Abre();

    Retorna();

    EXPECT_EQ(destino->text(), "");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmRecuperaArticTest, CadaTagSeLlenaAlActivarse)
{
    for (const char* tag : {"", "FAMILIA", "F8"}) {
        sentencias.clear();
        ventana.PonTag(tag);
        Abre();
        EXPECT_EQ(ventana.property("Tag").toString(), tag);
        EXPECT_EQ(sentencias, QStringList(SinFiltro)) << tag;
        EXPECT_EQ(EnPantalla(), "A1 A2 B1 B'2") << tag;
        ventana.close();
    }
}

TEST_F(FrmRecuperaArticTest, UnaFamiliaSeLlenaConSuCondicion)
{
    ventana.PonTag("FAMILIA");
    ventana.PonFiltro("DESCRIPCION='Olla vieja' or DESCRIPCION='Tapa'");

    Abre();

    EXPECT_EQ(EnPantalla(), "B1");
}

TEST_F(FrmRecuperaArticTest, SobreLaTiendaHablaElDialectoDeLaGestionYLoDejaComoEstaba)
{
    programa.DialectoActivo = data::Dialecto::MySql;
    Abre();
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::Access);
    QTest::keyClicks(&Text1(), "*2");
    EXPECT_EQ(Celda(Rejilla(), Rejilla().currentIndex().row(), 0), "A2");

    Retorna();

    EXPECT_EQ(destino->text(), "A2");
    EXPECT_EQ(programa.DialectoActivo, data::Dialecto::MySql);
}

} // namespace
