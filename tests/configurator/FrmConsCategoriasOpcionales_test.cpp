#include "apoyo/programa_en_error.h"
#include "configurador_de_prueba.h"
#include "configurator/FrmConsCategoriasOpcionales.h"
#include "data/ui/articulos_en_pantalla.h"
#include "data/ui/control_activo.h"
#include "run/dialogo.h"
#include <QAction>
#include <QTabBar>
#include <QWheelEvent>
#include <gmock/gmock.h>

using namespace tolmo;
using configurator::ModoNavegador;
using data::Respuesta;

namespace {

constexpr int Atributos = 0;
constexpr int Valores = 1;
constexpr int SoloAviso = 48;
constexpr int PreguntaSiNo = 36;

const AvisosDePrueba::Caja ValorDeTres{"El valor debe tener obligatoriamente 3 caracteres",
                                       SoloAviso, ""};
const AvisosDePrueba::Caja CodigoDeTres{"El código debe tener obligatoriamente 3 caracteres",
                                        SoloAviso, ""};
const AvisosDePrueba::Caja ValorAjeno{"El valor debe pertenecer a la categoria seleccionada",
                                      SoloAviso, ""};
const AvisosDePrueba::Caja Propagar{
    "¿Desea actualizar esta categoria en las configuraciones existentes?", PreguntaSiNo, ""};
const AvisosDePrueba::Caja BajaCategoria{
    "La categoría se eliminará también en los artículos que lo contengan, ¿Continuar?",
    PreguntaSiNo, ""};
const AvisosDePrueba::Caja BajaOpcional{
    "El opcional se eliminará también en los artículos que lo contengan, ¿Continuar?", PreguntaSiNo,
    ""};

const QString SqlCategorias = "SELECT * FROM M_OPCIONALES_CAT";
const QString SqlMedidas = "select * from M_OPCIONALES WHERE CODCATEGORIA='MED'";
const QString SqlColores = "select * from M_OPCIONALES WHERE CODCATEGORIA='COL'";
const QString SqlNinguna = "select * from M_OPCIONALES WHERE FALSE";

/// A notch of the wheel towards the operator.
void GiraLaRueda(QWidget& control)
{
    const QPointF sitio = control.rect().center();
    constexpr QPoint Muesca(0, -120);
    QWheelEvent rueda(sitio, control.mapToGlobal(sitio), {}, Muesca, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&control, &rueda);
    Reposa();
}

/// The browser over the window that opens it; its first category is MED, its second COL.
class FrmConsCategoriasOpcionalesTest : public testing::Test, public ConfiguradorDePrueba {
  protected:
    void Abre()
    {
        Muestra(ventana);
        Reposa();
    }
    void AbreEnValores(const char* categoria)
    {
        ventana.PonModo(ModoNavegador::Valores, QString::fromUtf8(categoria));
        Abre();
    }
    data::ui::DataGrid& DataGrid1() { return Hijo<data::ui::DataGrid>(ventana, "DataGrid1"); }
    data::ui::DataGrid& DataGrid2() { return Hijo<data::ui::DataGrid>(ventana, "DataGrid2"); }
    QTabWidget& SSTab1() { return Hijo<QTabWidget>(ventana, "SSTab1"); }
    QPushButton& CmdRetorna() { return Hijo<QPushButton>(ventana, "CmdRetorna"); }
    QString LblCategoria() { return Hijo<QLabel>(ventana, "LblCategoria").text(); }
    /// The panel with the search box and the toolbar of a grid.
    QWidget& Panel(int numero)
    {
        return Hijo<QWidget>(ventana, qPrintable("PanelConsulta" + QString::number(numero)));
    }

    void PulsaPestana(int pestana)
    {
        QTabBar* barra = SSTab1().tabBar();
        QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(pestana).center());
        Reposa();
    }
    void PulsaTecla(Qt::Key tecla, Qt::KeyboardModifiers con = Qt::NoModifier)
    {
        QTest::keyClick(ventana.focusWidget(), tecla, con);
        Reposa();
    }
    /// Types into a cell and ends it with Enter; what is refused stays open.
    void Teclea(data::ui::DataGrid& grid, int fila, int columna, const char* texto)
    {
        TecleaEnCelda(grid, fila, columna, QString::fromUtf8(texto));
        PulsaTecla(Qt::Key_Return);
    }
    /// Goes to another row, with which the one that was typed into is written.
    void DejaLaFila(data::ui::DataGrid& grid)
    {
        PulsaCelda(grid, grid.currentIndex().row() == 0 ? 1 : 0, 1);
    }
    void Suprime(data::ui::DataGrid& grid, int fila)
    {
        PulsaCelda(grid, fila, 1);
        sentencias.clear();
        PulsaTecla(Qt::Key_Delete);
    }
    void PulsaRetorna()
    {
        QTest::mouseClick(&CmdRetorna(), Qt::LeftButton);
        Reposa();
    }
    /// All rows on the screen, without the one for adding, as Tabla gives them.
    static QString EnPantalla(data::ui::DataGrid& grid)
    {
        QStringList filas;
        for (int i = 0; i < grid.Modelo().Filas(); ++i) {
            QStringList fila;
            for (int j = 0; j < grid.model()->columnCount(); ++j)
                fila << Celda(grid, i, j);
            filas << fila.join('|');
        }
        return filas.join(' ');
    }
    QString Categorias() { return Tabla("SELECT * FROM M_OPCIONALES_CAT ORDER BY CODCATEGORIA"); }
    QString Opciones() { return Tabla("SELECT * FROM M_OPCIONALES ORDER BY CODOPCIONAL"); }
    QString Configurados()
    {
        return Tabla("SELECT CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT");
    }
    QString ValoresConfigurados()
    {
        return Tabla("SELECT VALOR FROM PS_CONF_ART_VAL ORDER BY VALOR");
    }

    EscritorioDePrueba escritorio{};
    QDialog llamante{};
    QLineEdit* destino = new QLineEdit(&llamante);
    FrmConsCategoriasOpcionales ventana{programa, escritorio, &llamante};
};

TEST_F(FrmConsCategoriasOpcionalesTest, TieneSusPestanasYSusColumnas)
{
    Abre();

    EXPECT_EQ(ventana.windowTitle(), "Atributos y Valores");
    EXPECT_EQ(SSTab1().count(), 2);
    EXPECT_EQ(SSTab1().tabText(Atributos), "ATRIBUTOS");
    EXPECT_EQ(SSTab1().tabText(Valores), "VALORES");
    EXPECT_EQ(Cabeceras(DataGrid1()), QStringList({"Código", "Descripción", "Valor Def.",
                                                   "Obligatorio", "Desde", "Hasta"}));
    EXPECT_EQ(DataGrid1().Definicion().DataFields(),
              QStringList(
                  {"CODCATEGORIA", "DESCRIPCION", "VALORDEF", "OBLIGATORIO", "RDESDE", "RHASTA"}));
    EXPECT_EQ(Cabeceras(DataGrid2()),
              QStringList({"Código", "Descripción", "Descripción Comercial"}));
    EXPECT_EQ(DataGrid2().Definicion().DataFields(),
              QStringList({"CODCATEGORIA", "CODOPCIONAL", "DESCRIPCION", "DescripcionComercial"}));
    EXPECT_TRUE(Hijo<QLineEdit>(ventana, "txtretorna").isHidden());
}

TEST_F(FrmConsCategoriasOpcionalesTest, SeAbreEnLosAtributosConLosValoresDelPrimero)
{
    Abre();

    EXPECT_EQ(sentencias, QStringList({SqlCategorias, SqlMedidas}));
    EXPECT_EQ(cambiables, sentencias) << "both can be edited";
    EXPECT_EQ(SSTab1().currentIndex(), Atributos);
    EXPECT_TRUE(Hijo<QLineEdit>(ventana, "Text1").hasFocus());
    EXPECT_EQ(EnPantalla(DataGrid1()), "MED|Medida|001|Sí|| COL|||No||");
    EXPECT_EQ(EnPantalla(DataGrid2()), "MED|010|14 cm| MED|020|18 cm|");
}

TEST_F(FrmConsCategoriasOpcionalesTest, SinNingunaCategoriaNoHayNingunValor)
{
    Ejecuta({"DELETE FROM M_OPCIONALES_CAT"});

    Abre();

    EXPECT_EQ(sentencias, QStringList({SqlCategorias, SqlNinguna}));
    EXPECT_EQ(EnPantalla(DataGrid1()), "");
    EXPECT_EQ(EnPantalla(DataGrid2()), "");
    EXPECT_EQ(LblCategoria(), "Ningún atributo elegido");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsCategoriasOpcionalesTest, CadaFilaTraeSusValores)
{
    Abre();
    sentencias.clear();

    PulsaCelda(DataGrid1(), 1, 1);
    EXPECT_EQ(sentencias, QStringList(SqlColores));
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|AZU|Azul|Azul mar");

    PulsaTecla(Qt::Key_Up);
    EXPECT_EQ(sentencias.back(), SqlMedidas);
    EXPECT_EQ(EnPantalla(DataGrid2()), "MED|010|14 cm| MED|020|18 cm|");
}

TEST_F(FrmConsCategoriasOpcionalesTest, LaFilaDelPieNoTieneValores)
{
    Abre();
    sentencias.clear();

    PulsaCelda(DataGrid1(), 2, 0);

    EXPECT_EQ(sentencias, QStringList(SqlNinguna));
    EXPECT_EQ(EnPantalla(DataGrid2()), "");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaCategoriaSinOpcionesMuestraUnGridVacio)
{
    Ejecuta({"DELETE FROM M_OPCIONALES WHERE CODCATEGORIA='COL'"});
    Abre();

    PulsaCelda(DataGrid1(), 1, 1);
    PulsaPestana(Valores);

    EXPECT_EQ(EnPantalla(DataGrid2()), "");
    EXPECT_EQ(DataGrid2().model()->rowCount(), 1) << "the row for adding";
    EXPECT_EQ(LblCategoria(), "Atributo COL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, SobreLosValoresSeLeeDeQueAtributoSon)
{
    Ejecuta({"UPDATE M_OPCIONALES_CAT SET DESCRIPCION='<b>Tono</b>' WHERE CODCATEGORIA='COL'"});
    Abre();

    PulsaPestana(Valores);
    EXPECT_TRUE(Hijo<QLabel>(ventana, "LblCategoria").isVisible());
    EXPECT_EQ(LblCategoria(), "Atributo MED: Medida");

    PulsaPestana(Atributos);
    PulsaCelda(DataGrid1(), 1, 1);
    EXPECT_EQ(LblCategoria(), "Atributo COL: <b>Tono</b>");
    EXPECT_EQ(Hijo<QLabel>(ventana, "LblCategoria").textFormat(), Qt::PlainText);
}

TEST_F(FrmConsCategoriasOpcionalesTest, ParaUnValorSeAbreEnLosDeLaCategoriaDeQuienLoPide)
{
    AbreEnValores("COL");

    EXPECT_EQ(sentencias, QStringList({SqlCategorias, SqlMedidas, SqlColores}));
    EXPECT_EQ(SSTab1().currentIndex(), Valores);
    EXPECT_TRUE(DataGrid2().hasFocus());
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|AZU|Azul|Azul mar");
    EXPECT_EQ(LblCategoria(), "Atributo COL");
    EXPECT_EQ(DataGrid1().currentIndex().row(), 1);
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaCategoriaQueNoEstaNoMuestraLosValoresDeOtra)
{
    for (const char* categoria : {"ZZZ", ""}) {
        AbreEnValores(categoria);

        EXPECT_EQ(EnPantalla(DataGrid2()), "") << categoria;
        EXPECT_FALSE(DataGrid1().currentIndex().isValid());
        EXPECT_EQ(LblCategoria(), "Ningún atributo elegido");
        EXPECT_TRUE(DataGrid2().hasFocus());
        ventana.reject();
    }
}

TEST_F(FrmConsCategoriasOpcionalesTest, MostradaOtraVezReleeYConservaLaFila)
{
    Abre();
    PulsaCelda(DataGrid1(), 1, 1);
    ventana.reject();
    Ejecuta({"UPDATE M_OPCIONALES_CAT SET DESCRIPCION='Tono' WHERE CODCATEGORIA='COL'",
             "INSERT INTO M_OPCIONALES VALUES ('COL','ROJ','Rojo',NULL)"});

    Abre();

    EXPECT_EQ(DataGrid1().currentIndex().row(), 1);
    EXPECT_EQ(Celda(DataGrid1(), 1, 1), "Tono");
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|AZU|Azul|Azul mar COL|ROJ|Rojo|");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaOpcionNuevaEsDeLaCategoriaActual)
{
    Abre();
    PulsaCelda(DataGrid1(), 1, 1);
    PulsaPestana(Valores);

    Teclea(DataGrid2(), 1, 1, "roj");
    Teclea(DataGrid2(), 1, 2, "Rojo");
    DejaLaFila(DataGrid2());

    EXPECT_EQ(Opciones(), "MED|010|14 cm|NULL MED|020|18 cm|NULL COL|AZU|Azul|Azul mar "
                          "COL|roj|Rojo|NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, SinCategoriaNoSeAnadenValores)
{
    Ejecuta({"DELETE FROM M_OPCIONALES_CAT", "DELETE FROM M_OPCIONALES"});
    Abre();
    PulsaPestana(Valores);

    Teclea(DataGrid2(), 0, 1, "ROJ");

    EXPECT_EQ(avisos.cajas,
              (Cajas{{"Elija antes un atributo en la pestaña ATRIBUTOS", SoloAviso, ""}}));
    PulsaTecla(Qt::Key_Escape);
    PulsaPestana(Atributos);
    EXPECT_EQ(Opciones(), "");
    EXPECT_EQ(avisos.cajas.size(), 1U);
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaCategoriaNuevaSePuedeLlenarEnseguida)
{
    Abre();
    Teclea(DataGrid1(), 2, 0, "Tam");
    Teclea(DataGrid1(), 2, 1, "Tamaño");

    PulsaPestana(Valores);
    EXPECT_EQ(LblCategoria(), "Atributo Tam: Tamaño");
    EXPECT_EQ(sentencias.back(), "select * from M_OPCIONALES WHERE CODCATEGORIA='Tam'");
    Teclea(DataGrid2(), 0, 1, "GRA");
    PulsaPestana(Atributos);

    EXPECT_EQ(Tabla("SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='Tam'"),
              "Tam|Tamaño|NULL|False|NULL|NULL");
    EXPECT_EQ(Tabla("SELECT * FROM M_OPCIONALES WHERE CODCATEGORIA='Tam'"), "Tam|GRA|NULL|NULL");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsCategoriasOpcionalesTest, TrasCambiarElCodigoLosValoresSonLosDelNuevo)
{
    Ejecuta({"INSERT INTO M_OPCIONALES VALUES ('TON','GRI','Gris',NULL)"});
    Abre();
    Teclea(DataGrid1(), 1, 0, "TON");

    PulsaPestana(Valores);

    EXPECT_EQ(LblCategoria(), "Atributo TON");
    EXPECT_EQ(EnPantalla(DataGrid2()), "TON|GRI|Gris|");
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElCodigoDeCategoriaTieneTresLetrasSinPasarAMayusculas)
{
    Abre();

    Teclea(DataGrid1(), 1, 0, "abc");
    DejaLaFila(DataGrid1());

    EXPECT_EQ(Categorias(), "abc|NULL|NULL|False|NULL|NULL MED|Medida|001|True|NULL|NULL");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnCodigoDeOtroLargoSeRechazaYLaDejaSinObligatorio)
{
    Abre();

    Teclea(DataGrid1(), 0, 0, "ME");
    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});
    ASSERT_NE(Editor(DataGrid1()), nullptr) << "the text stays to be mended";
    EXPECT_EQ(Editor(DataGrid1())->text(), "ME");
    EXPECT_EQ(Celda(DataGrid1(), 0, 3), "No");
    PulsaTecla(Qt::Key_Escape);
    DejaLaFila(DataGrid1());

    EXPECT_EQ(Tabla("SELECT CODCATEGORIA,OBLIGATORIO FROM M_OPCIONALES_CAT"),
              "MED|False COL|False");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnCodigoNuevoTambienLaDejaSinObligatorio)
{
    Abre();

    Teclea(DataGrid1(), 0, 0, "DIA");
    DejaLaFila(DataGrid1());

    EXPECT_EQ(Tabla("SELECT CODCATEGORIA,OBLIGATORIO FROM M_OPCIONALES_CAT"),
              "DIA|False COL|False");
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElCodigoSePuedeVaciar)
{
    Abre();

    Teclea(DataGrid1(), 1, 0, "");
    DejaLaFila(DataGrid1());

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Tabla("SELECT CODCATEGORIA FROM M_OPCIONALES_CAT"), "MED NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaFilaNuevaDeCodigoRechazadoNoSeEmpieza)
{
    Abre();
    Teclea(DataGrid1(), 2, 0, "TAMA");
    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});

    PulsaTecla(Qt::Key_Escape);
    DejaLaFila(DataGrid1());

    EXPECT_EQ(escrituras, 0);
    EXPECT_EQ(avisos.cajas.size(), 1U);
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElValorPorDefectoTieneTresLetras)
{
    Abre();
    sentencias.clear();

    Teclea(DataGrid1(), 0, 2, "10");

    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});
    EXPECT_TRUE(sentencias.isEmpty());
    PulsaTecla(Qt::Key_Escape);
    DejaLaFila(DataGrid1());
    EXPECT_EQ(Tabla("SELECT VALORDEF FROM M_OPCIONALES_CAT"), "001 NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest,
       ElValorPorDefectoSeCompruebaConLaOpcionActualYNoConLoTecleado)
{
    Abre();
    PulsaPestana(Valores);
    PulsaCelda(DataGrid2(), 1, 1);
    PulsaPestana(Atributos);
    sentencias.clear();

    Teclea(DataGrid1(), 0, 2, "zzz");
    EXPECT_EQ(
        sentencias,
        QStringList("SELECT * FROM M_OPCIONALES WHERE CodCategoria='MED' AND CodOpcional='020'"));
    DejaLaFila(DataGrid1());

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Tabla("SELECT VALORDEF FROM M_OPCIONALES_CAT"), "zzz NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, SinOpcionActualElValorPorDefectoSeRechazaAunqueExista)
{
    Abre();
    PulsaPestana(Valores);
    PulsaCelda(DataGrid2(), 2, 1);
    PulsaPestana(Atributos);

    Teclea(DataGrid1(), 0, 2, "010");
    EXPECT_EQ(avisos.cajas, Cajas{ValorAjeno});
    PulsaTecla(Qt::Key_Delete);
    PulsaTecla(Qt::Key_Return);
    EXPECT_EQ(avisos.cajas, (Cajas{ValorAjeno, ValorAjeno})) << "emptying it is checked as well";
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnValorQueOtroProgramaBorroYaNoEsDeLaCategoria)
{
    Abre();
    Ejecuta({"DELETE FROM M_OPCIONALES WHERE CODOPCIONAL='010'"});
    ASSERT_EQ(EnPantalla(DataGrid2()), "MED|010|14 cm| MED|020|18 cm|");

    Teclea(DataGrid1(), 0, 2, "010");

    EXPECT_EQ(avisos.cajas, Cajas{ValorAjeno});
}

struct CasoObligatorio {
    const char* tecleado;
    bool valor;
};

class ObligatorioTecleado : public FrmConsCategoriasOpcionalesTest,
                            public testing::WithParamInterface<CasoObligatorio> {};

TEST_P(ObligatorioTecleado, EsSiONo)
{
    const bool otro = !GetParam().valor;
    Ejecuta({otro ? "UPDATE M_OPCIONALES_CAT SET OBLIGATORIO=True"
                  : "UPDATE M_OPCIONALES_CAT SET OBLIGATORIO=False"});
    Abre();
    EXPECT_EQ(Celda(DataGrid1(), 1, 3), otro ? "Sí" : "No");

    Teclea(DataGrid1(), 1, 3, GetParam().tecleado);
    EXPECT_EQ(Celda(DataGrid1(), 1, 3), GetParam().valor ? "Sí" : "No");
    DejaLaFila(DataGrid1());

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Tabla("SELECT OBLIGATORIO FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='COL'"),
              GetParam().valor ? "True" : "False");
}

INSTANTIATE_TEST_SUITE_P(Casos, ObligatorioTecleado,
                         testing::Values(CasoObligatorio{"S", true}, CasoObligatorio{"s", true},
                                         CasoObligatorio{"SI", true}, CasoObligatorio{"SÍ", true},
                                         CasoObligatorio{"sí", true}, CasoObligatorio{"true", true},
                                         CasoObligatorio{"1", true}, CasoObligatorio{"No", false},
                                         CasoObligatorio{"", false}, CasoObligatorio{"0", false},
                                         CasoObligatorio{"-1", false},
                                         CasoObligatorio{"verdadero", false},
                                         CasoObligatorio{"Sí ", false}));

TEST_F(FrmConsCategoriasOpcionalesTest, LosExtremosDelRangoTienenTresLetras)
{
    Abre();

    Teclea(DataGrid1(), 0, 4, "1");
    EXPECT_EQ(avisos.cajas, Cajas{ValorDeTres});
    PulsaTecla(Qt::Key_Escape);
    Teclea(DataGrid1(), 0, 5, "0200");
    EXPECT_EQ(avisos.cajas, (Cajas{ValorDeTres, ValorDeTres}));
    PulsaTecla(Qt::Key_Escape);
    Teclea(DataGrid1(), 0, 4, "010");
    Teclea(DataGrid1(), 0, 5, "020");
    DejaLaFila(DataGrid1());
    EXPECT_EQ(Tabla("SELECT RDESDE,RHASTA FROM M_OPCIONALES_CAT"), "010|020 NULL|NULL");

    Teclea(DataGrid1(), 0, 4, "");
    DejaLaFila(DataGrid1());
    EXPECT_EQ(Tabla("SELECT RDESDE,RHASTA FROM M_OPCIONALES_CAT"), "NULL|020 NULL|NULL");
    EXPECT_EQ(avisos.cajas.size(), 2U);
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElCodigoDeOpcionTieneTresLetras)
{
    Abre();
    PulsaPestana(Valores);

    Teclea(DataGrid2(), 0, 1, "10");
    EXPECT_EQ(avisos.cajas, Cajas{CodigoDeTres});
    QTest::keyClicks(Editor(DataGrid2()), "a1b");
    PulsaTecla(Qt::Key_Return);
    DejaLaFila(DataGrid2());
    Teclea(DataGrid2(), 1, 1, "");
    DejaLaFila(DataGrid2());

    EXPECT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(Tabla("SELECT CODOPCIONAL FROM M_OPCIONALES WHERE CODCATEGORIA='MED'"), "a1b NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, LasDescripcionesDeUnValorSeEscriben)
{
    Abre();
    PulsaPestana(Valores);

    Teclea(DataGrid2(), 0, 2, "D'Arc");
    Teclea(DataGrid2(), 0, 3, "Catorce");
    DejaLaFila(DataGrid2());

    EXPECT_EQ(Tabla("SELECT * FROM M_OPCIONALES WHERE CODOPCIONAL='010'"), "MED|010|D'Arc|Catorce");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaDescripcionNuevaSeOfreceALosArticulosQueLaTienen)
{
    Abre();
    avisos.respuestas = {Respuesta::Si};
    sentencias.clear();

    Teclea(DataGrid1(), 0, 1, "Diámetro");

    EXPECT_EQ(avisos.cajas, Cajas{Propagar});
    EXPECT_EQ(sentencias,
              (QStringList{
                  "SELECT * FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='MED'",
                  "UPDATE PS_CONF_ART_CAT SET DESCRIPCION='Diámetro' WHERE CODCATEGORIA='MED'"}));
    EXPECT_EQ(Configurados(), "A1|MED|Diámetro");
    PulsaPestana(Valores);
    EXPECT_EQ(LblCategoria(), "Atributo MED: Diámetro");
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Diámetro NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, ConUnNoLosArticulosConservanLaSuya)
{
    Abre();
    avisos.respuestas = {Respuesta::No};

    Teclea(DataGrid1(), 0, 1, "Diámetro");
    DejaLaFila(DataGrid1());

    EXPECT_EQ(avisos.cajas, Cajas{Propagar});
    EXPECT_EQ(Configurados(), "A1|MED|Medida");
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Diámetro NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, SiNingunArticuloLaTieneNoSePregunta)
{
    Abre();

    Teclea(DataGrid1(), 1, 1, "Tono");
    Teclea(DataGrid1(), 0, 1, "Medida");

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Medida Tono");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaCategoriaSeVaDeLosArticulosYSusValoresQuedanHuerfanos)
{
    Abre();
    avisos.respuestas = {Respuesta::Si};

    Suprime(DataGrid1(), 0);

    EXPECT_EQ(avisos.cajas, Cajas{BajaCategoria}) << "and no question of the grid's own";
    EXPECT_EQ(sentencias,
              QStringList({"DELETE FROM PS_CONF_ART_CAT WHERE  CODCATEGORIA='MED'", SqlColores}));
    EXPECT_EQ(Categorias(), "COL|NULL|NULL|False|NULL|NULL");
    EXPECT_EQ(Configurados(), "");
    EXPECT_EQ(ValoresConfigurados(), "010 020");
    EXPECT_EQ(Tabla("SELECT CODOPCIONAL FROM M_OPCIONALES"), "010 020 AZU") << "the master's stay";
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|AZU|Azul|Azul mar");
}

TEST_F(FrmConsCategoriasOpcionalesTest, TrasBorrarLaUltimaNoQuedaNingunaActual)
{
    Ejecuta({"DELETE FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='COL'"});
    Abre();
    avisos.respuestas = {Respuesta::Si};

    Suprime(DataGrid1(), 0);

    EXPECT_EQ(Categorias(), "");
    EXPECT_EQ(sentencias.back(), SqlNinguna);
    EXPECT_EQ(LblCategoria(), "Ningún atributo elegido");
}

TEST_F(FrmConsCategoriasOpcionalesTest, ConUnNoLaCategoriaSeQueda)
{
    Abre();
    avisos.respuestas = {Respuesta::No};

    Suprime(DataGrid1(), 0);

    EXPECT_EQ(avisos.cajas, Cajas{BajaCategoria});
    EXPECT_EQ(Categorias(), "COL|NULL|NULL|False|NULL|NULL MED|Medida|001|True|NULL|NULL");
    EXPECT_EQ(Configurados(), "A1|MED|Medida");
    EXPECT_EQ(DataGrid1().currentIndex().row(), 0);
}

TEST_F(FrmConsCategoriasOpcionalesTest, DeVariasElegidasSePreguntaPorCadaUnaHastaElPrimerNo)
{
    Abre();
    PulsaCelda(DataGrid1(), 0, 1);
    PulsaCelda(DataGrid1(), 1, 1, Qt::ControlModifier);
    avisos.respuestas = {Respuesta::Si, Respuesta::No};

    PulsaTecla(Qt::Key_Delete);

    EXPECT_EQ(avisos.cajas, (Cajas{BajaCategoria, BajaCategoria}));
    EXPECT_EQ(Categorias(), "MED|Medida|001|True|NULL|NULL");
    EXPECT_EQ(Configurados(), "A1|MED|Medida");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaOpcionSeVaDeLaRelacionYDeLosValores)
{
    Ejecuta({"INSERT INTO REL_ART_OPC VALUES ('A1','MED','010')",
             "INSERT INTO REL_ART_OPC VALUES ('A1','MED','020')"});
    Abre();
    PulsaPestana(Valores);
    avisos.respuestas = {Respuesta::Si};

    Suprime(DataGrid2(), 0);

    EXPECT_EQ(avisos.cajas, Cajas{BajaOpcional});
    EXPECT_EQ(
        sentencias,
        (QStringList{"DELETE FROM REL_ART_OPC WHERE  CODCATEGORIA='MED' AND CODOPCIONAL='010'",
                     "DELETE FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='MED' AND VALOR='010'"}));
    EXPECT_EQ(EnPantalla(DataGrid2()), "MED|020|18 cm|");
    EXPECT_EQ(Opciones(), "MED|020|18 cm|NULL COL|AZU|Azul|Azul mar");
    EXPECT_EQ(Tabla("SELECT CODOPCIONAL FROM REL_ART_OPC"), "020");
    EXPECT_EQ(ValoresConfigurados(), "020");
}

TEST_F(FrmConsCategoriasOpcionalesTest, ConUnNoLaOpcionSeQueda)
{
    Abre();
    PulsaPestana(Valores);
    avisos.respuestas = {Respuesta::No};

    Suprime(DataGrid2(), 0);

    EXPECT_EQ(avisos.cajas, Cajas{BajaOpcional});
    EXPECT_TRUE(sentencias.isEmpty());
    EXPECT_EQ(EnPantalla(DataGrid2()), "MED|010|14 cm| MED|020|18 cm|");
    EXPECT_EQ(ValoresConfigurados(), "010 020");
}

TEST_F(FrmConsCategoriasOpcionalesTest, EnLaFilaDelPieSuprimirNoPreguntaNada)
{
    Abre();

    Suprime(DataGrid1(), 2);

    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnValorQueOtroProgramaBorroNoSePuedeCambiarYSeDice)
{
    Abre();
    PulsaPestana(Valores);
    Ejecuta({"DELETE FROM M_OPCIONALES WHERE CODOPCIONAL='010'"});

    Teclea(DataGrid2(), 0, 2, "Otro");
    PulsaPestana(Atributos);

    EXPECT_EQ(avisos.cajas,
              (Cajas{{"No se ha podido guardar la fila: El registro de M_OPCIONALES ya no existe",
                      SoloAviso, ""}}));
    EXPECT_EQ(SSTab1().currentIndex(), Valores) << "the row is still to be mended or given up";
    PulsaTecla(Qt::Key_Escape);
    PulsaPestana(Atributos);
    EXPECT_EQ(SSTab1().currentIndex(), Atributos);
    EXPECT_EQ(avisos.cajas.size(), 1U);
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaFilaRechazadaRetieneSuPestana)
{
    Ejecuta({"CREATE UNIQUE INDEX IDX_CAT ON M_OPCIONALES_CAT (CODCATEGORIA)"});
    Abre();
    Teclea(DataGrid1(), 1, 0, "MED");
    const auto sigue = [this](std::size_t veces) {
        EXPECT_EQ(SSTab1().currentIndex(), Atributos);
        ASSERT_EQ(avisos.cajas.size(), veces) << "told once each time";
        EXPECT_EQ(
            avisos.cajas.back().texto,
            "No se ha podido guardar la fila: El valor está duplicado en un índice único: M_OPCIONALES_CAT.CODCATEGORIA");
        EXPECT_EQ(Celda(DataGrid1(), 1, 0), "MED");
        EXPECT_TRUE(DataGrid1().hasFocus());
    };

    PulsaPestana(Valores);
    sigue(1);
    PulsaTecla(Qt::Key_Tab, Qt::ControlModifier);
    sigue(2);
    GiraLaRueda(*SSTab1().tabBar());
    sigue(3);
    ventana.reject();
    sigue(4);
    EXPECT_TRUE(ventana.isVisible());
    ventana.PermiteRetorno(true);
    PulsaRetorna();
    EXPECT_TRUE(ventana.isVisible());

    PulsaTecla(Qt::Key_Escape);
    GiraLaRueda(*SSTab1().tabBar());
    EXPECT_EQ(SSTab1().currentIndex(), Valores);
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElTecladoLlevaDeUnGridAlOtro)
{
    Abre();

    PulsaTecla(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_EQ(SSTab1().currentIndex(), Valores);
    EXPECT_TRUE(DataGrid2().hasFocus());
    PulsaTecla(Qt::Key_Backtab, Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_EQ(SSTab1().currentIndex(), Atributos);
    EXPECT_TRUE(DataGrid1().hasFocus());
    TecleaEnCelda(DataGrid1(), 1, 1, "Tono");
    PulsaTecla(Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(DataGrid2().hasFocus());
    EXPECT_EQ(LblCategoria(), "Atributo COL: Tono");
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Medida Tono");
}

TEST_F(FrmConsCategoriasOpcionalesTest, CerrarlaGuardaLoTecleado)
{
    Abre();
    Teclea(DataGrid1(), 1, 1, "Tono");
    EXPECT_EQ(escrituras, 0);

    ventana.reject();

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Medida Tono");
}

TEST_F(FrmConsCategoriasOpcionalesTest, CmdRetornaSoloEstaParaQuienLoPide)
{
    Abre();
    EXPECT_TRUE(CmdRetorna().isHidden());
    EXPECT_EQ(Rotulo(&CmdRetorna()), "Retorna valor");
    PulsaTecla(Qt::Key_Return);
    EXPECT_TRUE(ventana.isVisible());

    ventana.PermiteRetorno(true);
    EXPECT_TRUE(CmdRetorna().isVisible());
    PulsaTecla(Qt::Key_Escape);
    EXPECT_FALSE(ventana.isVisible());
}

/// What is chosen goes into a hidden box of the window below.
class RetornoDeOpcionales : public FrmConsCategoriasOpcionalesTest {
  protected:
    RetornoDeOpcionales()
    {
        destino->hide();
        destino->setText("antes");
        ventana.PermiteRetorno(true);
    }

    data::ui::ControlElegido elegido{*destino};
};

TEST_F(RetornoDeOpcionales, DevuelveLaCategoriaActual)
{
    Abre();
    PulsaCelda(DataGrid1(), 1, 3);

    PulsaRetorna();

    EXPECT_EQ(destino->text(), "COL");
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(ventana.result(), QDialog::Accepted);
}

TEST_F(RetornoDeOpcionales, DesdeLosValoresTambienDevuelveLaCategoriaSiEsLoQueSePide)
{
    Abre();
    PulsaPestana(Valores);
    PulsaCelda(DataGrid2(), 1, 1);

    PulsaRetorna();

    EXPECT_EQ(destino->text(), "MED");
}

TEST_F(RetornoDeOpcionales, ParaUnValorDevuelveLaOpcionActual)
{
    AbreEnValores("MED");
    PulsaCelda(DataGrid2(), 1, 2);

    PulsaRetorna();

    EXPECT_EQ(destino->text(), "020");
    EXPECT_EQ(ventana.result(), QDialog::Accepted);
}

TEST_F(RetornoDeOpcionales, LaTeclaIntroDevuelveLaFilaActual)
{
    AbreEnValores("MED");
    PulsaTecla(Qt::Key_Down);

    PulsaTecla(Qt::Key_Return);

    EXPECT_EQ(destino->text(), "020");
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(RetornoDeOpcionales, DevuelveLaOpcionQueSeAcabaDeTeclear)
{
    AbreEnValores("COL");
    TecleaEnCelda(DataGrid2(), 1, 1, "ROJ");

    PulsaRetorna();

    EXPECT_EQ(destino->text(), "ROJ");
    EXPECT_EQ(Tabla("SELECT CODOPCIONAL FROM M_OPCIONALES WHERE CODCATEGORIA='COL'"), "AZU ROJ");
}

TEST_F(RetornoDeOpcionales, DevuelveLoQueSeVeAunqueOtroProgramaLoBorrara)
{
    AbreEnValores("COL");
    Ejecuta({"DELETE FROM M_OPCIONALES"});

    PulsaRetorna();

    EXPECT_EQ(destino->text(), "AZU");
}

TEST_F(RetornoDeOpcionales, SinFilasSoloSeCierra)
{
    Ejecuta({"DELETE FROM M_OPCIONALES", "DELETE FROM M_OPCIONALES_CAT"});
    for (const ModoNavegador modo : {ModoNavegador::Categorias, ModoNavegador::Valores}) {
        ventana.PonModo(modo, "MED");
        Abre();

        PulsaRetorna();

        EXPECT_FALSE(ventana.isVisible());
        EXPECT_EQ(ventana.result(), QDialog::Rejected);
        EXPECT_EQ(destino->text(), "antes");
        EXPECT_TRUE(avisos.cajas.empty());
    }
}

TEST_F(RetornoDeOpcionales, EnLaFilaDelPieTambienSoloSeCierra)
{
    Abre();
    PulsaCelda(DataGrid1(), 2, 0);

    PulsaRetorna();

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(destino->text(), "antes");
}

TEST_F(FrmConsCategoriasOpcionalesTest, CadaRejillaTieneSuBusquedaYSuFiltro)
{
    Hijo<QLineEdit>(ventana, "TxtFiltro").setText("CODCATEGORIA='COL'");
    Hijo<QLineEdit>(ventana, "txtFiltro2").setText("DESCRIPCION='Rojo'");
    Ejecuta({"INSERT INTO M_OPCIONALES VALUES ('COL','ROJ','Rojo',NULL)"});

    Abre();

    EXPECT_EQ(sentencias.front(), "SELECT * FROM M_OPCIONALES_CAT where (CODCATEGORIA='COL')");
    EXPECT_EQ(Celda(DataGrid1(), 0, 0), "COL");
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|ROJ|Rojo|");
    PulsaPestana(Valores);
    auto& barra = Hijo<QToolBar>(ventana, "Toolbar2");
    for (QAction* entrada : Panel(2).actions())
        if (entrada->text() == "Quitar Filtros")
            entrada->trigger();
    EXPECT_EQ(EnPantalla(DataGrid2()), "COL|AZU|Azul|Azul mar COL|ROJ|Rojo|");
    Hijo<QAction>(barra, "ULTREG").trigger();
    EXPECT_EQ(DataGrid2().currentIndex().row(), 1);
    QTest::keyClicks(&Hijo<QLineEdit>(ventana, "Text2"), "AZ");
    EXPECT_EQ(DataGrid2().currentIndex().row(), 0);
}

TEST_F(FrmConsCategoriasOpcionalesTest, ElOrdenDeLosValoresSigueAlCambiarDeCategoria)
{
    Abre();
    PulsaPestana(Valores);
    PulsaCabecera(DataGrid2(), 2);
    PulsaPestana(Atributos);

    PulsaCelda(DataGrid1(), 1, 1);

    EXPECT_EQ(sentencias.back(), SqlColores + " order by DESCRIPCION");
}

/// Opens the browser on a company of its own, and goes on to the second category.
void PasaALaSegundaCategoria(const QString& ruta)
{
    ProgramaEnError proceso(ruta);
    EscritorioDePrueba escritorio;
    FrmConsCategoriasOpcionales ventana(proceso.programa, escritorio);
    ventana.show();
    std::fprintf(stderr, "abierta\n");
    Hijo<data::Adodc>(ventana, "Adodc1").Ultima();
    std::fprintf(stderr, "sigue\n");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaComillaEnUnCodigoCierraElProgramaAlIrASuFila)
{
    Ejecuta({"UPDATE M_OPCIONALES_CAT SET CODCATEGORIA='C''L' WHERE CODCATEGORIA='COL'"});

    EXPECT_EXIT(
        PasaALaSegundaCategoria(Base()), testing::ExitedWithCode(1),
        testing::AllOf(
            testing::HasSubstr("abierta"), testing::HasSubstr("caja 16: ERROR:"),
            testing::HasSubstr(
                "caja 64: select * from M_OPCIONALES WHERE CODCATEGORIA='C'L'\rEL PROGRAMA SE CERRARÁ"),
            testing::Not(testing::HasSubstr("sigue"))));
}

TEST_F(FrmConsCategoriasOpcionalesTest, SinLaTablaDeCategoriasElProgramaSeCierraAlAbrir)
{
    Ejecuta({"DROP TABLE M_OPCIONALES_CAT"});

    EXPECT_EXIT(PasaALaSegundaCategoria(Base()), testing::ExitedWithCode(1),
                testing::AllOf(testing::HasSubstr("caja 64: SELECT * FROM M_OPCIONALES_CAT\r"),
                               testing::Not(testing::HasSubstr("abierta"))));
}

/// Types a description with a quote on the first row, and says yes to its articles.
void RenombraConComilla(const QString& ruta)
{
    ProgramaEnError proceso(ruta);
    EscritorioDePrueba escritorio;
    FrmConsCategoriasOpcionales ventana(proceso.programa, escritorio);
    ventana.show();
    auto& grid = Hijo<data::ui::DataGrid>(ventana, "DataGrid1");
    grid.setCurrentIndex(grid.model()->index(0, 1));
    grid.edit(grid.currentIndex());
    Editor(grid)->setText("D'Arc");
    ventana.close();
    std::fprintf(stderr, "sigue\n");
}

TEST_F(FrmConsCategoriasOpcionalesTest,
       UnaComillaEnLaDescripcionCierraElProgramaAlPasarlaALosArticulos)
{
    EXPECT_EXIT(
        RenombraConComilla(Base()), testing::ExitedWithCode(1),
        testing::AllOf(
            testing::HasSubstr("caja 36: ¿Desea actualizar esta categoria"),
            testing::HasSubstr(
                "caja 64: UPDATE PS_CONF_ART_CAT SET DESCRIPCION='D'Arc' WHERE CODCATEGORIA='MED'\rEL PROGRAMA SE CERRARÁ"),
            testing::Not(testing::HasSubstr("sigue"))));
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT"), "Medida NULL");
}

TEST_F(FrmConsCategoriasOpcionalesTest, UnaComillaEnLaCategoriaDeQuienLoAbreLoCierra)
{
    ventana.PonModo(ModoNavegador::Valores, "C'L");

    EXPECT_EXIT(ventana.show(), testing::ExitedWithCode(1), "");
}

} // namespace
