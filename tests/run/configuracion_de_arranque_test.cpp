#include "data/ui/articulos_en_pantalla.h"
#include "dialogo.h"
#include "empresa_de_prueba.h"
#include "run/fabricas.h"
#include <QCheckBox>
#include <QPushButton>

using namespace tolmo;
using run::Desenlace;

namespace {

/// A start whose company dialog asks for the parameters first, on a real database.
class ConfiguracionDeArranque : public testing::Test, public EmpresaDePrueba {
  protected:
    /// `enElEditor` is what is done in the editor, if it opens.
    Desenlace Carga(const std::function<void(QWidget&)>& enElEditor = {})
    {
        programa.TipoBaseDatos = data::Dialecto::Access;
        EnElDialogo([enElEditor](QWidget& d) {
            if (enElEditor)
                EnElDialogo(enElEditor);
            Hijo<QCheckBox>(d, "ChkConfiguracion").setChecked(true);
            Hijo<QPushButton>(d, "CmdAceptar").click();
        });
        return ventana.Carga();
    }

    EscritorioDePrueba escritorio;
    FrmPrincipal ventana{programa, escritorio, {}, run::FabricasDelPrograma(programa, escritorio)};
};

TEST_F(ConfiguracionDeArranque, SalvaUnaEmpresaQueNoSeCargaria)
{
    Ejecuta({"UPDATE M_EMPRESA SET SERVER_FTP=NULL WHERE CODEMPRESA='000001'"});

    const Desenlace desenlace = Carga([](QWidget& editor) {
        EXPECT_EQ(editor.objectName(), "FrmConfiguracion");
        QTest::keyClicks(&Hijo<QLineEdit>(editor, "txtCampo_104"), "ftp.nuevo");
        Hijo<QPushButton>(editor, "CmdAceptar").click();
    });

    EXPECT_EQ(desenlace, Desenlace::Abierta);
    EXPECT_EQ(programa.parametros.Server_Ftp, "ftp.nuevo");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(ConfiguracionDeArranque, SiNoSePuedeLlenarDaLaCajaDelArranque)
{
    Ejecuta({"ALTER TABLE M_EMPRESA DROP COLUMN PS_PESO"});

    EXPECT_EQ(Carga(), Desenlace::Fallo);

    EXPECT_EQ(avisos.cajas,
              (std::vector<AvisosDePrueba::Caja>{
                  {"No se ha podido conectar al servidor web.Compruebe los valores de conexión.",
                   64, ""}}));
}

TEST_F(ConfiguracionDeArranque, UnaSentenciaSuyaQueFallaTerminaElPrograma)
{
    Ejecuta({"DROP TABLE PS_IDIOMAS"});

    EXPECT_THROW(Carga(), data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(
        avisos.cajas[1].texto,
        "SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001'\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
}

} // namespace
