#include "editor_en_pantalla.h"
#include <QProgressBar>

using namespace tolmo;
using data::Respuesta;

namespace {

const AvisosDePrueba::Caja SinSeleccion{"Especificar antes la selección.", 48, ""};
const AvisosDePrueba::Caja Reemplazar{
    "Atención, la configuración reemplazará la que tengan \rlos artículos de la selección, ¿Continuar?",
    36, ""};
const AvisosDePrueba::Caja Concluida{"Exportación concluida", 64, ""};

/// The editor at the copy of A1. A2 of its group has a configuration of its own.
class PanelCopiaTest : public EditorEnPantalla {
  protected:
    PanelCopiaTest()
    {
        Ejecuta(
            {"CREATE TABLE M_GRUPART (CODGRUPO nvarchar(4), DESCRIPCION nvarchar(40))",
             "CREATE TABLE M_PROVE (CODPROVEEDOR nvarchar(6), DESCRIPCION nvarchar(40))",
             "INSERT INTO M_GRUPART VALUES ('0007','Ollas')",
             "INSERT INTO M_GRUPART VALUES ('0012','Cocina')",
             "INSERT INTO M_PROVE VALUES ('000021','Talleres Sol')",
             "INSERT INTO PS_CONF_ART_CAT VALUES ('A2','COL','Color','V')",
             "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA) VALUES ('A2','COL','AZU',60,1)"});
    }
    void AbreEnCopia(const QString& articulo = "A1")
    {
        AbreCon(articulo);
        VeA("PaginaCopia");
        sentencias.clear();
    }
    void Exporta(std::vector<Respuesta> respuestas)
    {
        avisos.respuestas.assign(respuestas.begin(), respuestas.end());
        Pulsa("CmdExporta");
    }
    QLineEdit& Campo(const char* nombre) { return Hijo<QLineEdit>(ventana, nombre); }
    /// Looks at the picker that a key opens, and chooses a row of it.
    void EligeCon(const char* nombre, Qt::Key tecla, const QString& enTxtFiltro, int fila)
    {
        Campo(nombre).setFocus();
        MiraElBuscador(enTxtFiltro, fila);
        QTest::keyClick(&Campo(nombre), tecla);
        Reposa();
    }
    static void MiraElBuscador(const QString& enTxtFiltro, int fila)
    {
        EnElDialogo([enTxtFiltro, fila](QWidget& buscador) {
            EXPECT_EQ(buscador.objectName(), "FrmRecuperaArtic");
            EXPECT_EQ(Hijo<QLineEdit>(buscador, "TxtFiltro").text(), enTxtFiltro);
            PulsaCelda(Hijo<data::ui::DataGrid>(buscador, "DataGrid1"), fila, 0);
            QTest::mouseClick(&Hijo<QPushButton>(buscador, "CmdRetorna"), Qt::LeftButton);
        });
    }
};

TEST_F(PanelCopiaTest, TieneSusCamposYSusRotulos)
{
    Abre();
    const auto rotulo = [this](const char* nombre) {
        return ::Rotulo(&Hijo<QLabel>(ventana, nombre));
    };

    EXPECT_EQ(rotulo("RotuloArtDes"), "Art. Desde");
    EXPECT_EQ(rotulo("RotuloArtHas"), "Art. Hasta");
    EXPECT_EQ(rotulo("RotuloCodAlternativoDesde"), "Desde");
    EXPECT_EQ(rotulo("RotuloCodAlternativoHasta"), "Hasta");
    EXPECT_EQ(rotulo("RotuloGrupo"), "Grupo 1:");
    EXPECT_EQ(rotulo("RotuloGrupo2"), "Grupo 2:");
    EXPECT_EQ(rotulo("RotuloGrupo3"), "Grupo 3:");
    EXPECT_EQ(rotulo("RotuloGrupo4"), "Grupo 4:");
    EXPECT_EQ(rotulo("RotuloProvHab"), "Prov. Habitual:");
    EXPECT_EQ(Hijo<QPushButton>(ventana, "CmdExporta").text(), "&Comenzar Exportación");
    EXPECT_EQ(Hijo<QProgressBar>(ventana, "PrgBar").value(), 0);
}

TEST_F(PanelCopiaTest, LosGruposYElProveedorSeRellenanConCerosYDicenSuNombre)
{
    AbreEnCopia();

    Rellena("TxtGrupo", "7");
    Rellena("TxtGrupo2", "12");
    Rellena("TxtGrupo3", "99");
    Rellena("TxtGrupo4", "");
    Rellena("TxtProvHab", "21");

    EXPECT_EQ(Caja("TxtGrupo") + ' ' + Rotulo("LblGrupo"), "0007 Ollas");
    EXPECT_EQ(Caja("TxtGrupo2") + ' ' + Rotulo("LblGrupo2"), "0012 Cocina");
    EXPECT_EQ(Caja("TxtGrupo3") + ' ' + Rotulo("LblGrupo3"), "0099 ");
    EXPECT_EQ(Caja("TxtGrupo4") + ' ' + Rotulo("LblGrupo4"), " ");
    EXPECT_EQ(Caja("TxtProvHab") + ' ' + Rotulo("LblProvHab"), "000021 Talleres Sol");
    EXPECT_TRUE(sentencias.contains("SELECT * FROM M_GRUPART WHERE CodGrupo='0007'"));
    EXPECT_TRUE(sentencias.contains("SELECT * FROM M_PROVE WHERE CodProveedor='000021'"));
}

TEST_F(PanelCopiaTest, LosArticulosDicenSuDescripcionPorSuCodigoOPorElAlternativo)
{
    AbreEnCopia();

    Rellena("TxtArtDes", "A2");
    Rellena("TxtArtHas", "A9");
    Rellena("TxtCodAlternativoDesde", "X3");
    Rellena("TxtCodAlternativoHasta", "X1");

    EXPECT_EQ(Rotulo("Lblartdesde"), "Cazo");
    EXPECT_EQ(Rotulo("lblarthasta"), "");
    EXPECT_EQ(Rotulo("LblcodAltDesde"), "Tapa");
    EXPECT_EQ(Rotulo("LblcodAltHasta"), "Olla");
    EXPECT_TRUE(sentencias.contains(
        "select CODARTICULO,DESCRIPCION from M_ARTIC where CODALTERNATIVO='X3'"));
}

TEST_F(PanelCopiaTest, CadaTeclaAbreElBuscadorASuModo)
{
    AbreEnCopia();

    EligeCon("TxtArtDes", Qt::Key_F11, "", 1);
    EXPECT_EQ(Caja("TxtArtDes") + ' ' + Rotulo("Lblartdesde"), "A2 Cazo");

    EligeCon("TxtArtHas", Qt::Key_F12, "", 2);
    EXPECT_EQ(Caja("TxtArtHas") + ' ' + Rotulo("lblarthasta"), "A3 Tapa");

    Campo("TxtArtHas").setText("A");
    EligeCon("TxtArtHas", Qt::Key_F9, "(codarticulo like 'A%')", 0);
    EXPECT_EQ(Caja("TxtArtHas"), "A1");

    EligeCon("TxtCodAlternativoDesde", Qt::Key_F11, "", 1);
    EXPECT_EQ(Caja("TxtCodAlternativoDesde") + ' ' + Rotulo("LblcodAltDesde"), "X2 Cazo");

    Campo("TxtCodAlternativoHasta").setText("X3");
    EligeCon("TxtCodAlternativoHasta", Qt::Key_F9, "(codalternativo like 'X3%')", 0);
    EXPECT_EQ(Caja("TxtCodAlternativoHasta") + ' ' + Rotulo("LblcodAltHasta"), "X3 Tapa");
}

TEST_F(PanelCopiaTest, F8LoAbreConSuTag)
{
    AbreEnCopia();
    Campo("TxtArtDes").setFocus();
    QString tag = "-";
    EnElDialogo([&tag](QWidget& buscador) {
        tag = buscador.property("Tag").toString();
        buscador.close();
    });

    QTest::keyClick(&Campo("TxtArtDes"), Qt::Key_F8);

    EXPECT_EQ(tag, "F8");
    EXPECT_EQ(Caja("TxtArtDes"), "");
}

TEST_F(PanelCopiaTest, ElDobleClicLoAbreSinMas)
{
    AbreEnCopia();
    MiraElBuscador("", 0);

    QTest::mouseDClick(&Campo("TxtArtDes"), Qt::LeftButton);
    Reposa();

    EXPECT_EQ(Caja("TxtArtDes") + ' ' + Rotulo("Lblartdesde"), "A1 Olla");
}

TEST_F(PanelCopiaTest, SinSeleccionSeAvisa)
{
    AbreEnCopia();

    Exporta({});

    EXPECT_EQ(avisos.cajas, Cajas{SinSeleccion});
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|COL|Color");
}

TEST_F(PanelCopiaTest, ConUnNoNoSeCopia)
{
    AbreEnCopia();
    Rellena("TxtGrupo", "7");

    Exporta({Respuesta::No});

    EXPECT_EQ(avisos.cajas, Cajas{Reemplazar});
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|COL|Color");
}

TEST_F(PanelCopiaTest, LosDelGrupoTomanLaConfiguracionYElOrigenLaConserva)
{
    AbreEnCopia();
    Rellena("TxtGrupo", "7");
    sentencias.clear();

    Exporta({Respuesta::Si});

    EXPECT_EQ(avisos.cajas, (Cajas{Reemplazar, Concluida}));
    EXPECT_TRUE(
        sentencias.contains("SELECT * FROM M_ARTIC WHERE CODARTICULO<>'A1' AND CODGRUPO='0007' "));
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|MED|Medida");
    EXPECT_EQ(Valores(), "A1|MED|010|41|1|1.5|0|0|0|0|0.25 A1|MED|020|7|2|NULL|0|0|0|0|NULL "
                         "A2|MED|010|41|1|1.5|0|0|0|0|0.25 A2|MED|020|7|2|NULL|0|0|0|0|NULL");
    EXPECT_EQ(Tabla("SELECT FOTO FROM PS_CONF_ART_VAL WHERE CODARTICULO='A2' AND VALOR='010'"),
              "C:\\f\\a.jpg");
}

TEST_F(PanelCopiaTest, UnCodigoSinRellenarSeRellenaAlEmpezarPorSuLetra)
{
    AbreEnCopia();
    Campo("TxtGrupo").setFocus();
    QTest::keyClicks(&Campo("TxtGrupo"), "7");
    avisos.respuestas = {Respuesta::Si};

    QTest::keyClick(&Campo("TxtGrupo"), Qt::Key_C, Qt::AltModifier);

    // The button shows itself pressed for a moment first.
    ASSERT_TRUE(QTest::qWaitFor([this] { return avisos.cajas.size() == 2; }));
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|MED|Medida");
}

TEST_F(PanelCopiaTest, UnOrigenSinFilasDejaSinConfiguracionALosDestinos)
{
    AbreEnCopia("A3");
    Rellena("TxtArtDes", "A2");
    Rellena("TxtArtHas", "A2");

    Exporta({Respuesta::Si});

    EXPECT_EQ(Categorias(), "A1|MED|Medida");
    EXPECT_EQ(avisos.cajas, (Cajas{Reemplazar, Concluida}));
}

TEST_F(PanelCopiaTest, SinArticuloDeOrigenTodosLosElegidosLaPierden)
{
    Abre();
    VeA("PaginaCopia");
    Rellena("TxtArtDes", "A1");

    Exporta({Respuesta::Si});

    EXPECT_EQ(Categorias() + Valores(), "");
}

TEST_F(PanelCopiaTest, UnaSeleccionSinArticulosConcluyeSinTocarNada)
{
    AbreEnCopia();
    Rellena("TxtArtDes", "B");

    Exporta({Respuesta::Si});

    EXPECT_EQ(avisos.cajas, (Cajas{Reemplazar, Concluida}));
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|COL|Color");
}

TEST_F(PanelCopiaTest, MientrasCopiaNiSeCierraNiSeTocaYSeVeElAvance)
{
    const auto base = AbreBase(Base());
    for (int i = 100; i < 500; ++i)
        base->Ejecuta("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('B" + QString::number(i) + "')");
    AbreEnCopia();
    Rellena("TxtArtDes", "B");
    int avance = 0;
    bool tocable = true;
    bool sigue = false;
    QTimer turno;
    QObject::connect(&turno, &QTimer::timeout, [&] {
        // The copy gives the window's events a turn.
        avance = Hijo<QProgressBar>(ventana, "PrgBar").value();
        if (avance == 0)
            return;
        turno.stop();
        tocable = Hijo<QPushButton>(ventana, "CmdExporta").isEnabled() || txtCampo_0().isEnabled();
        ventana.close();
        sigue = ventana.isVisible();
    });

    turno.start(0);
    avisos.respuestas = {Respuesta::Si};
    Hijo<QPushButton>(ventana, "CmdExporta").click();

    EXPECT_GT(avance, 0);
    EXPECT_LT(avance, 100);
    EXPECT_FALSE(tocable);
    EXPECT_TRUE(sigue) << "it isn't left in the middle";
    EXPECT_TRUE(Hijo<QPushButton>(ventana, "CmdExporta").isEnabled());
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='MED'"), "401");
    ventana.close();
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(PanelCopiaTest, UnCampoQueSeDejaPorOtraPestanaTambienSeRellena)
{
    AbreEnCopia();
    Campo("TxtGrupo").setFocus();
    QTest::keyClicks(&Campo("TxtGrupo"), "7");

    SSTab1().setCurrentIndex(0);
    Reposa();

    EXPECT_EQ(Caja("TxtGrupo"), "0007");
}

TEST_F(PanelCopiaTest, UnArticuloMalTecleadoNoVaciaALosDestinos)
{
    AbreEnCopia();
    Rellena("TxtArtDes", "A2");
    txtCampo_0().setText("A9");

    Hijo<QPushButton>(ventana, "CmdExporta").click();

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|COL|Color");
    EXPECT_EQ(txtCampo_0().text(), "");
}

TEST_F(PanelCopiaTest, TrasUnNoElFocoSigueDondeEstaba)
{
    AbreEnCopia();
    Campo("TxtGrupo").setFocus();
    QTest::keyClicks(&Campo("TxtGrupo"), "7");
    avisos.respuestas = {Respuesta::No};

    Hijo<QPushButton>(ventana, "CmdExporta").click();

    EXPECT_TRUE(Campo("TxtGrupo").hasFocus());
    EXPECT_TRUE(Campo("TxtGrupo").isEnabled());
}

} // namespace
