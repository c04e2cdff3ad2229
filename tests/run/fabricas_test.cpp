#include "data/ui/articulos_en_pantalla.h"
#include "dialogo.h"
#include "empresa_de_prueba.h"
#include "run/fabricas.h"
#include <QLabel>
#include <QPushButton>

using namespace tolmo;

namespace {

/// The main window over the windows of the program itself, open on the first company of a real
/// database.
class Fabricas : public testing::Test, public EmpresaDePrueba {
  protected:
    void SetUp() override
    {
        programa.TipoBaseDatos = data::Dialecto::Access;
        Ejecuta(
            {"CREATE TABLE USUARIOS (CODIGO nvarchar(5), NOMBRE nvarchar(50), LOGIN nvarchar(10), [PASSWORD] nvarchar(10), EMAIL nvarchar(100), EMPRESA nvarchar(20), CODTARIFA nvarchar(2))",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE) VALUES ('00001','Ana Ruiz')",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE) VALUES ('00003','Luis Gil')"});
        EnElDialogo([](QWidget& d) { Hijo<QPushButton>(d, "CmdAceptar").click(); });
        ASSERT_EQ(ventana.Carga(), run::Desenlace::Abierta);
        Muestra(ventana);
    }

    EscritorioDePrueba escritorio;
    FrmPrincipal ventana{programa, escritorio, {}, run::FabricasDelPrograma(programa, escritorio)};
};

TEST_F(Fabricas, LoQueSeCambiaEnConfiguracionValeALaVuelta)
{
    ASSERT_EQ(programa.parametros.Server_Bd, "c-server_bd");
    EnElDialogo([](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConfiguracion");
        Reposa();
        EXPECT_EQ(Hijo<QLineEdit>(d, "txtCampo_0").text(), "000001");
        EXPECT_EQ(Hijo<QLabel>(d, "LblEmpresa").text(), "Norte");
        auto& servidor = Hijo<QLineEdit>(d, "txtCampo_99");
        servidor.selectAll();
        QTest::keyClicks(&servidor, "bd.nueva");
        Hijo<QPushButton>(d, "CmdAceptar").click();
    });

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdParametros"), Qt::LeftButton);

    EXPECT_EQ(De("SERVER_BD"), "bd.nueva");
    EXPECT_EQ(programa.parametros.Server_Bd, "bd.nueva");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(Fabricas, LosUsuariosWebSonLosDeLaEmpresa)
{
    int filas = -1;
    EnElDialogo([&](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConsUsuarios");
        Reposa();
        filas = Hijo<data::ui::DataGrid>(d, "DataGrid1").model()->rowCount();
        d.close();
    });

    QTest::keyClick(&ventana, Qt::Key_U, Qt::ControlModifier);

    EXPECT_EQ(filas, 2);
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(Fabricas, LosAtributosSonLosDeLosArticulosDeLaEmpresa)
{
    Ejecuta(
        {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), DESCRIPCION nvarchar(60))",
         "INSERT INTO M_ARTIC VALUES ('A1','Olla')",
         "CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(60))",
         "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT, SECUENCIA INT, INC_PVP DOUBLE, INC_PVP2 DOUBLE, INC_PVP3 DOUBLE, INC_PVP4 DOUBLE, INC_PVP5 DOUBLE, PESO DOUBLE, FOTO nvarchar(255))"});
    programa.parametros.PS_TABLAARTIC = "M_ARTIC";
    QString descripcion;
    EnElDialogo([&](QWidget& d) {
        EXPECT_EQ(d.objectName(), "FrmConsPSArtConfigurador");
        Reposa();
        auto& articulo = Hijo<QLineEdit>(d, "txtCampo_0");
        QTest::keyClicks(&articulo, "A1");
        QTest::keyClick(&articulo, Qt::Key_Return);
        descripcion = Hijo<QLabel>(d, "LblDesArt").text();
        d.close();
    });

    QTest::mouseClick(&Hijo<QPushButton>(ventana, "CmdAtributosValores"), Qt::LeftButton);

    EXPECT_EQ(descripcion, "Olla");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(Fabricas, LosArticulosSonLosDeLaEmpresa)
{
    Ejecuta(
        {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), DESCRIPCION nvarchar(60), TIPOARTIC nvarchar(2))",
         "INSERT INTO M_ARTIC VALUES ('A1','Olla',NULL)",
         "INSERT INTO M_ARTIC VALUES ('A2','Olla vieja','OB')"});
    programa.parametros.PS_TABLAARTIC = "M_ARTIC";
    const auto selector = run::FabricasDelPrograma(programa, escritorio).articulos(&ventana);
    EXPECT_EQ(selector->objectName(), "FrmRecuperaArtic");

    selector->show();
    Reposa();

    auto& grid = Hijo<data::ui::DataGrid>(*selector, "DataGrid1");
    ASSERT_EQ(grid.model()->rowCount(), 1);
    EXPECT_EQ(Celda(grid, 0, 0), "A1");
}

} // namespace
