#include "apoyo/programa_en_error.h"
#include "editor_en_pantalla.h"
#include <QTabBar>

using namespace tolmo;
using data::Respuesta;

namespace {

constexpr int SoloAviso = 48;

const AvisosDePrueba::Caja CodigoIncorrecto{"Codigo de categoria incorrecto", SoloAviso, ""};
const AvisosDePrueba::Caja ValorNoValido{"Valor no valido", SoloAviso, ""};
const AvisosDePrueba::Caja RecuperarValores{
    "Desea recuperar todos los valores de la categoria seleccionada?", 36, ""};
const AvisosDePrueba::Caja EliminarFila{"¿Eliminar la fila seleccionada?", 292, ""};

const QString DosValores = "A1|MED|010|41|1|1.5|0|0|0|0|0.25 A1|MED|020|7|2|NULL|0|0|0|0|NULL";

class FrmConsPSArtConfiguradorTest : public EditorEnPantalla {};

TEST_F(FrmConsPSArtConfiguradorTest, TieneSusPestanasYSusColumnas)
{
    Abre();

    EXPECT_EQ(ventana.windowTitle(), "Combinaciones de atributos y valores");
    EXPECT_EQ(::Rotulo(&Hijo<QLabel>(ventana, "Label3")), "Artículo:");
    QStringList pestanas;
    for (int i = 0; i < SSTab1().count(); ++i)
        pestanas << SSTab1().tabText(i);
    EXPECT_EQ(pestanas,
              QStringList({"Atributos", "Valores", "Exportar a otros artículos", "Combinaciones"}));
    const auto columnas = [](const data::ui::DataGrid& grid) {
        QStringList vistas;
        for (int i = 0; i < grid.model()->columnCount(); ++i)
            if (!grid.isColumnHidden(i))
                vistas << grid.model()->headerData(i, Qt::Horizontal).toString();
        return vistas;
    };
    EXPECT_EQ(columnas(DataGrid1()), QStringList({"Cod. Categoria", "Descripción"}));
    EXPECT_EQ(columnas(DataGrid2()),
              QStringList({"Valor", "Secuencia", "Inc PVP1", "Inc PVP2", "Inc PVP3", "Inc PVP4",
                           "Inc PVP5", "Inc. Peso"}));
    EXPECT_EQ(DataGrid1().Definicion().DataFields(),
              QStringList({"CODARTICULO", "CODCATEGORIA", "DESCRIPCION"}));
    EXPECT_EQ(DataGrid2().Definicion().DataFields(),
              QStringList({"CODARTICULO", "CODCATEGORIA", "VALOR", "ID", "SECUENCIA", "INC_PVP",
                           "INC_PVP2", "INC_PVP3", "INC_PVP4", "INC_PVP5", "PESO"}));
    EXPECT_TRUE(txtCampo_0().hasFocus());
}

TEST_F(FrmConsPSArtConfiguradorTest, SinArticuloNoHayNadaQueEditar)
{
    Abre();

    EXPECT_FALSE(DataGrid1().isEnabled());
    EXPECT_FALSE(DataGrid2().isEnabled());
    EXPECT_TRUE(Hijo<QWidget>(ventana, "CmdExporta").isEnabled())
        << "an empty source isn't refused";
    EXPECT_EQ(Rotulo("LblCombinaciones"), "");
}

TEST_F(FrmConsPSArtConfiguradorTest, ElArticuloElegidoLlenaLosGridsYRecibeElFoco)
{
    Abre();
    sentencias.clear();

    AbreCon("A1");

    EXPECT_EQ(Rotulo("LblDesArt"), "Olla");
    EXPECT_EQ(
        sentencias.mid(0, 3),
        QStringList(
            {"SELECT * FROM M_ARTIC where CodArticulo='A1'",
             "SELECT * FROM PS_CONF_ART_CAT WHERE  True  AND CODARTICULO='A1' ORDER BY CODCATEGORIA ASC",
             "SELECT * FROM PS_CONF_ART_VAL WHERE  True  AND CODARTICULO='A1' AND CodCategoria='MED' ORDER BY SECUENCIA"}));
    EXPECT_EQ(EnPantalla(DataGrid1()), "MED|Medida");
    EXPECT_EQ(EnPantalla(DataGrid2()), "010|1|1.5|0|0|0|0|0.25 020|2||0|0|0|0|");
    EXPECT_TRUE(DataGrid1().hasFocus());
    EXPECT_EQ(Rotulo("LblCategoria"), "MED · Medida");
}

TEST_F(FrmConsPSArtConfiguradorTest, ElTabuladorTambienLoElige)
{
    Abre();
    EscribeArticulo("A2");

    QTest::keyClick(&txtCampo_0(), Qt::Key_Tab);
    Reposa();

    EXPECT_EQ(Rotulo("LblDesArt"), "Cazo");
    EXPECT_TRUE(DataGrid1().hasFocus());
    EXPECT_EQ(EnPantalla(DataGrid1()), "");
    EXPECT_TRUE(DataGrid1().isEnabled()) << "the first category is added here";
}

TEST_F(FrmConsPSArtConfiguradorTest, ElQueYaEstaNoSeLeeOtraVezAlPasar)
{
    AbreCon("A1");
    txtCampo_0().setFocus();
    sentencias.clear();

    QTest::keyClick(&txtCampo_0(), Qt::Key_Tab);
    Reposa();

    EXPECT_EQ(sentencias, QStringList());
}

TEST_F(FrmConsPSArtConfiguradorTest, UnArticuloDesconocidoVaciaElCampoSuRotuloYLosGrids)
{
    AbreCon("A1");

    AbreCon("A9");

    EXPECT_EQ(txtCampo_0().text(), "");
    EXPECT_EQ(Rotulo("LblDesArt"), "");
    EXPECT_EQ(txtCampo_0().placeholderText(), "No existe A9");
    EXPECT_EQ(EnPantalla(DataGrid1()), "");
    EXPECT_EQ(EnPantalla(DataGrid2()), "");
    EXPECT_FALSE(DataGrid1().isEnabled());
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaComillaEnElCodigoTerminaElProgramaComoTodaSentenciaRota)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            ProgramaEnError otro(Base());
            otro.programa.parametros.PS_TABLAARTIC = "M_ARTIC";
            FrmConsPSArtConfigurador suya(otro.programa, escritorio);
            Muestra(suya);
            auto& caja = Hijo<QLineEdit>(suya, "txtCampo_0");
            QTest::keyClicks(&caja, "O'1");
            QTest::keyClick(&caja, Qt::Key_Return);
        },
        testing::ExitedWithCode(1), "CodArticulo='O'1'");
    EXPECT_EQ(Valores(), DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaCategoriaTecleadaSeGuardaEnMayusculasConSuDescripcion)
{
    AbreCon("A1");
    avisos.respuestas = {Respuesta::No};

    Teclea(DataGrid1(), 1, Categoria, "tal");
    EXPECT_EQ(EnPantalla(DataGrid1()), "MED|Medida");
    PulsaCelda(DataGrid1(), 0, Categoria);

    EXPECT_EQ(avisos.cajas, Cajas{RecuperarValores});
    EXPECT_EQ(Categorias(), "A1|MED|Medida A1|TAL|Talla");
    EXPECT_EQ(Valores(), DosValores) << "without its values";
}

TEST_F(FrmConsPSArtConfiguradorTest, ConUnSiLlegaConTodosSusValores)
{
    AbreCon("A1");
    avisos.respuestas = {Respuesta::Si};

    Teclea(DataGrid1(), 1, Categoria, "TAL");

    EXPECT_EQ(EnPantalla(DataGrid2()), "036|36|0|0|0|0|0|0 038|38|0|0|0|0|0|0");
    EXPECT_EQ(Rotulo("LblCategoria"), "TAL · Talla");
    PulsaCelda(DataGrid1(), 0, Categoria);
    EXPECT_EQ(Valores(), DosValores + " A1|TAL|036|42|36|0|0|0|0|0|0 A1|TAL|038|43|38|0|0|0|0|0|0");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaDescripcionNulaDeLaMaestraQuedaVacia)
{
    AbreCon("A2");
    avisos.respuestas = {Respuesta::No};

    Teclea(DataGrid1(), 0, Categoria, "COL");
    VeA("PaginaCopia");
    Hijo<QLineEdit>(ventana, "TxtArtDes").setFocus();
    Reposa();

    EXPECT_EQ(Categorias(), "A1|MED|Medida A2|COL|");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaCategoriaDesconocidaSeRechazaYSigueEnLaCelda)
{
    AbreCon("A1");

    Teclea(DataGrid1(), 1, Categoria, "zzz");

    EXPECT_EQ(avisos.cajas, Cajas{CodigoIncorrecto});
    ASSERT_NE(Editor(DataGrid1()), nullptr);
    EXPECT_EQ(Editor(DataGrid1())->text(), "zzz");
    QTest::keyClick(Editor(DataGrid1()), Qt::Key_Escape);
    Reposa();
    ventana.close();
    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Categorias(), "A1|MED|Medida");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaCategoriaSinOpcionesNoTraeValores)
{
    Ejecuta({"DELETE FROM M_OPCIONALES WHERE CODCATEGORIA='COL'"});
    AbreCon("A1");
    avisos.respuestas = {Respuesta::Si};

    Teclea(DataGrid1(), 1, Categoria, "COL");
    PulsaCelda(DataGrid1(), 0, Categoria);

    EXPECT_EQ(Categorias(), "A1|COL| A1|MED|Medida");
    EXPECT_EQ(Valores(), DosValores);
    EXPECT_EQ(Rotulo("LblCombinaciones"), "2 combinaciones") << "a category without values is none";
}

TEST_F(FrmConsPSArtConfiguradorTest, OtraFilaDeCategoriasTraeSusValores)
{
    Ejecuta(
        {"INSERT INTO PS_CONF_ART_CAT VALUES ('A1','TAL','Talla','V')",
         "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA) VALUES ('A1','TAL','038',50,1)"});
    AbreCon("A1");
    sentencias.clear();

    PulsaCelda(DataGrid1(), 1, Categoria);

    EXPECT_EQ(
        sentencias.value(0),
        "SELECT * FROM PS_CONF_ART_VAL WHERE  True  AND CODARTICULO='A1' AND CodCategoria='TAL' ORDER BY SECUENCIA");
    EXPECT_EQ(EnPantalla(DataGrid2()), "038|1||||||");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnValorNuevoRecibeElSiguienteNumeroYCeros)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 2, Valor, "0a0");
    PulsaCelda(DataGrid2(), 0, Valor);

    EXPECT_EQ(Valores(), DosValores + " A1|MED|0A0|42|0|0|0|0|0|0|0");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(FrmConsPSArtConfiguradorTest, ElPrimeroDeTodosRecibeElUno)
{
    Ejecuta({"DELETE FROM PS_CONF_ART_VAL"});
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 0, Valor, "010");
    EXPECT_TRUE(DataGrid2().GuardaFila());

    EXPECT_EQ(Valores(), "A1|MED|010|1|0|0|0|0|0|0|0");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnValorQueLaCategoriaNoTieneSeRechaza)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 0, Valor, "036");

    EXPECT_EQ(avisos.cajas, Cajas{ValorNoValido}) << "036 is of another category";
    ASSERT_NE(Editor(DataGrid2()), nullptr);
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
    EXPECT_EQ(Valores(), DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnValorBorradoEnLaMaestraYaNoSeAdmite)
{
    AbreCon("A1");
    VeA("PaginaValores");
    Ejecuta({"DELETE FROM M_OPCIONALES WHERE CODOPCIONAL='0A0' OR CODOPCIONAL='010'"});

    Teclea(DataGrid2(), 2, Valor, "0A0");
    EXPECT_EQ(avisos.cajas, Cajas{ValorNoValido});
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
    QTest::keyClick(&DataGrid2(), Qt::Key_Escape);
    PulsaCelda(DataGrid2(), 1, Valor);
    PulsaCelda(DataGrid2(), 0, Valor);

    EXPECT_EQ(Rotulo("LblValor"), "") << "the value stays, without a description";
    EXPECT_EQ(Valores(), DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnValorVaciadoEsNulo)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 1, Valor, "");
    PulsaCelda(DataGrid2(), 0, Valor);

    EXPECT_EQ(Valores(), "A1|MED|NULL|7|2|0|0|0|0|0|NULL A1|MED|010|41|1|1.5|0|0|0|0|0.25");
}

TEST_F(FrmConsPSArtConfiguradorTest, LosIncrementosSeHacenNumeroYElPesoQuedaComoSeTeclea)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 0, IncPvp, "caro");
    Teclea(DataGrid2(), 0, IncPvp2, "2,75");
    Teclea(DataGrid2(), 0, Peso, "");
    PulsaCelda(DataGrid2(), 1, Secuencia);
    EXPECT_EQ(Valores(), "A1|MED|010|41|1|0|2.75|0|0|0|NULL A1|MED|020|7|2|NULL|0|0|0|0|NULL");

    Teclea(DataGrid2(), 1, Secuencia, "5");
    PulsaCelda(DataGrid2(), 0, Secuencia);
    EXPECT_EQ(Valores(), "A1|MED|010|41|1|0|2.75|0|0|0|NULL A1|MED|020|7|5|0|0|0|0|0|NULL")
        << "any column that changes makes the empty increments 0, and leaves the weight";
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaFilaEmpezadaPorOtraColumnaTambienEsDeEsaCategoria)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 2, Secuencia, "3");
    PulsaCelda(DataGrid2(), 0, Secuencia);

    EXPECT_EQ(Valores(), "A1|MED|NULL|42|3|0|0|0|0|0|0 " + DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaCategoriaSeVaConLoQueCuelgaDeElla)
{
    Ejecuta({"INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',41)",
             "INSERT INTO CONF_COMPONENTES VALUES ('A2','MED','010',41)",
             "INSERT INTO CONF_OPERACIONES VALUES ('A1','MED','010')"});
    AbreCon("A1");
    avisos.respuestas = {Respuesta::Si};
    sentencias.clear();

    QTest::keyClick(&DataGrid1(), Qt::Key_Delete);
    Reposa();

    EXPECT_EQ(avisos.cajas, Cajas{EliminarFila});
    EXPECT_EQ(sentencias.mid(0, 3),
              QStringList(
                  {"DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'",
                   "DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'",
                   "DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED'"}));
    EXPECT_EQ(Categorias() + Valores(), "");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM CONF_COMPONENTES"), "A2");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM CONF_OPERACIONES"), "");
    EXPECT_EQ(EnPantalla(DataGrid2()), "");
    EXPECT_EQ(Rotulo("LblCombinaciones"), "Sin combinaciones");
}

TEST_F(FrmConsPSArtConfiguradorTest, ConUnNoLaCategoriaSeQueda)
{
    AbreCon("A1");
    avisos.respuestas = {Respuesta::No};

    QTest::keyClick(&DataGrid1(), Qt::Key_Delete);

    EXPECT_EQ(Categorias(), "A1|MED|Medida");
    EXPECT_EQ(Valores(), DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnValorSeVaConSusComponentesYOperaciones)
{
    Ejecuta({"INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',41)",
             "INSERT INTO CONF_COMPONENTES VALUES ('A1','MED','010',99)"});
    AbreCon("A1");
    VeA("PaginaValores");
    PulsaCelda(DataGrid2(), 0, Secuencia);
    avisos.respuestas = {Respuesta::Si};
    sentencias.clear();

    QTest::keyClick(&DataGrid2(), Qt::Key_Delete);
    Reposa();

    EXPECT_EQ(
        sentencias.mid(0, 2),
        QStringList(
            {"DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010' AND ID=41",
             "DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'"}));
    EXPECT_EQ(Tabla("SELECT ID FROM CONF_COMPONENTES"), "99");
    EXPECT_EQ(Valores(), "A1|MED|020|7|2|NULL|0|0|0|0|NULL");
    EXPECT_EQ(Categorias(), "A1|MED|Medida");
}

TEST_F(FrmConsPSArtConfiguradorTest, LaCategoriaElegidaEnElNavegadorPasaPorLaMismaComprobacion)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    avisos.respuestas = {Respuesta::No};
    EnElDialogo([](QWidget& navegador) {
        EXPECT_EQ(navegador.objectName(), "FrmConsCategoriasOpcionales");
        auto& retorna = Hijo<QPushButton>(navegador, "CmdRetorna");
        EXPECT_TRUE(retorna.isVisible());
        PulsaCelda(Hijo<data::ui::DataGrid>(navegador, "DataGrid1"), 2, 1); // TAL
        QTest::mouseClick(&retorna, Qt::LeftButton);
    });

    QTest::keyClick(&DataGrid1(), Qt::Key_F12);
    Reposa();
    PulsaCelda(DataGrid1(), 0, Categoria);

    EXPECT_EQ(avisos.cajas, Cajas{RecuperarValores});
    EXPECT_EQ(Categorias(), "A1|MED|Medida A1|TAL|Talla");
    EXPECT_EQ(Caja("txtretorna"), "");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnNavegadorCanceladoDejaLaCeldaComoEstaba)
{
    AbreCon("A1");
    EnElDialogo([](QWidget& navegador) { navegador.close(); });

    QTest::keyClick(&DataGrid1(), Qt::Key_F12);
    Reposa();

    EXPECT_EQ(EnPantalla(DataGrid1()), "MED|Medida");
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(DataGrid1().Modelo().HayCambios());
}

TEST_F(FrmConsPSArtConfiguradorTest, ElValorSeEligeEntreLosDeSuCategoria)
{
    AbreCon("A1");
    VeA("PaginaValores");
    PulsaCelda(DataGrid2(), 2, Valor);
    EnElDialogo([](QWidget& navegador) {
        auto& opciones = Hijo<data::ui::DataGrid>(navegador, "DataGrid2");
        EXPECT_TRUE(opciones.isVisible());
        EXPECT_EQ(Celda(opciones, 2, 1), "0A0");
        PulsaCelda(opciones, 2, 1);
        QTest::mouseClick(&Hijo<QPushButton>(navegador, "CmdRetorna"), Qt::LeftButton);
    });

    QTest::keyClick(&DataGrid2(), Qt::Key_F11);
    Reposa();
    PulsaCelda(DataGrid2(), 0, Valor);

    EXPECT_EQ(Valores(), DosValores + " A1|MED|0A0|42|0|0|0|0|0|0|0");
}

TEST_F(FrmConsPSArtConfiguradorTest, ElArticuloSeEligeEnSuBuscador)
{
    Abre();
    for (const auto tecla : {Qt::Key_F11, Qt::Key_F12}) {
        EscribeArticulo("X");
        EnElDialogo([](QWidget& buscador) {
            EXPECT_EQ(buscador.objectName(), "FrmRecuperaArtic");
            auto& articulos = Hijo<data::ui::DataGrid>(buscador, "DataGrid1");
            PulsaCelda(articulos, 1, 0);
            QTest::mouseClick(&Hijo<QPushButton>(buscador, "CmdRetorna"), Qt::LeftButton);
        });
        QTest::keyClick(&txtCampo_0(), tecla);
        Reposa();
        EXPECT_EQ(txtCampo_0().text(), "A2");
        EXPECT_EQ(Rotulo("LblDesArt"), "Cazo");
    }
    EnElDialogo([](QWidget& buscador) { buscador.close(); });
    QTest::mouseDClick(&txtCampo_0(), Qt::LeftButton);
    EXPECT_EQ(txtCampo_0().text(), "A2") << "a cancelled picker changes nothing";
}

TEST_F(FrmConsPSArtConfiguradorTest, LosFiltrosDeCadaGridVanEnSuSentencia)
{
    AbreCon("A1");
    Hijo<QLineEdit>(ventana, "TxtFiltro").setText("DESCRIPCION='Nada'");
    Hijo<QLineEdit>(ventana, "txtFiltro2").setText("VALOR='020'");
    sentencias.clear();

    QTest::keyClick(&txtCampo_0(), Qt::Key_Return);
    Reposa();

    EXPECT_EQ(
        sentencias.mid(1, 2),
        QStringList(
            {"SELECT * FROM PS_CONF_ART_CAT WHERE DESCRIPCION='Nada' AND CODARTICULO='A1' ORDER BY CODCATEGORIA ASC",
             "SELECT * FROM PS_CONF_ART_VAL WHERE VALOR='020' AND CODARTICULO='A1' AND CodCategoria='' ORDER BY SECUENCIA"}));
}

TEST_F(FrmConsPSArtConfiguradorTest, ElFiltroAvanzadoSeAbreSobreSuGridYAlCancelarRigeElDeAntes)
{
    AbreCon("A1");
    VeA("PaginaValores");
    Hijo<QLineEdit>(ventana, "txtFiltro2").setText("VALOR='020'");
    EnElDialogo([](QWidget& constructor) {
        EXPECT_EQ(constructor.objectName(), "FrmCadenaBooleanaAvanzada");
        constructor.close();
    });

    Hijo<QAction>(Hijo<QToolBar>(ventana, "Toolbar2"), "FILTRO").trigger();
    Reposa();

    EXPECT_EQ(EnPantalla(DataGrid2()), "020|2||0|0|0|0|");
    EXPECT_EQ(Caja("txtFiltro2"), "VALOR='020'");
    EXPECT_EQ(Caja("TxtFiltro"), "");
}

TEST_F(FrmConsPSArtConfiguradorTest, QuitarFiltrosLosQuitaDelGridDeSuBarra)
{
    AbreCon("A1");
    VeA("PaginaValores");
    Hijo<QLineEdit>(ventana, "TxtFiltro").setText("TIPO='V'");
    Hijo<QLineEdit>(ventana, "txtFiltro2").setText("VALOR='020'");

    Hijo<QAction>(Hijo<QToolBar>(ventana, "Toolbar2"), "Quitar Filtros").trigger();
    Reposa();

    EXPECT_EQ(Caja("txtFiltro2"), "");
    EXPECT_EQ(Caja("TxtFiltro"), "TIPO='V'");
    EXPECT_EQ(EnPantalla(DataGrid2()), "010|1|1.5|0|0|0|0|0.25 020|2||0|0|0|0|");
}

TEST_F(FrmConsPSArtConfiguradorTest, LosBotonesDeLaBarraRecorrenSuGrid)
{
    AbreCon("A1");
    VeA("PaginaValores");
    auto& barra = Hijo<QToolBar>(ventana, "Toolbar2");

    Hijo<QAction>(barra, "ULTREG").trigger();
    EXPECT_EQ(DataGrid2().currentIndex().row(), 1);
    Hijo<QAction>(barra, "PRIMREG").trigger();
    EXPECT_EQ(DataGrid2().currentIndex().row(), 0);
    QTest::keyClicks(&Hijo<QLineEdit>(ventana, "Text2"), "02");
    Hijo<QAction>(barra, "FINDSIG").trigger();
    EXPECT_EQ(DataGrid2().currentIndex().row(), 1);
}

TEST_F(FrmConsPSArtConfiguradorTest, AlCerrarSeGuardaLoQueSeEstabaTecleando)
{
    AbreCon("A1");
    VeA("PaginaValores");
    TecleaEnCelda(DataGrid2(), 0, IncPvp, "9");

    ventana.close();

    EXPECT_FALSE(ventana.isVisible());
    EXPECT_EQ(Valores(), "A1|MED|010|41|1|9|0|0|0|0|0.25 A1|MED|020|7|2|NULL|0|0|0|0|NULL");
}

TEST_F(FrmConsPSArtConfiguradorTest, ConUnValorRechazadoNoSeCierra)
{
    AbreCon("A1");
    VeA("PaginaValores");
    TecleaEnCelda(DataGrid2(), 0, Valor, "no");

    ventana.close();

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(avisos.cajas, Cajas{ValorNoValido});
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
    ventana.close();
    EXPECT_FALSE(ventana.isVisible());
}

TEST_F(FrmConsPSArtConfiguradorTest, CuantasCombinacionesTieneSeVeMientrasSeEdita)
{
    AbreCon("A1");
    EXPECT_EQ(Rotulo("LblCombinaciones"), "2 combinaciones");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 2, Valor, "0A0");
    PulsaCelda(DataGrid2(), 0, Valor);
    EXPECT_EQ(Rotulo("LblCombinaciones"), "3 combinaciones");

    Teclea(DataGrid2(), 0, IncPvp, "7");
    PulsaCelda(DataGrid2(), 1, Valor);
    VeA("PaginaCombinaciones");
    auto& lista = Hijo<QTableView>(ventana, "GridCombinaciones");
    EXPECT_EQ(Celda(lista, 0, 1), "0A0 · 20 cm") << "its order is 0";
    EXPECT_EQ(Celda(lista, 1, 1), "010 · 14 cm");
    EXPECT_EQ(Celda(lista, 1, 2), "7");
}

/// Three categories, of which TAL has values of the same codes as MED.
class ConVariasCategorias : public FrmConsPSArtConfiguradorTest {
  protected:
    ConVariasCategorias()
    {
        Ejecuta(
            {"INSERT INTO M_OPCIONALES VALUES ('TAL','010','Diez',NULL)",
             "INSERT INTO PS_CONF_ART_CAT VALUES ('A1','COL','Color','V')",
             "INSERT INTO PS_CONF_ART_CAT VALUES ('A1','TAL','Talla','V')",
             "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA) VALUES ('A1','COL','AZU',50,1)",
             "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA) VALUES ('A1','TAL','010',51,1)"});
    }
    QString Quedan()
    {
        return Tabla("SELECT CODCATEGORIA,VALOR FROM PS_CONF_ART_VAL ORDER BY CODCATEGORIA,VALOR");
    }
};

TEST_F(ConVariasCategorias, VariasQueSeEliminanSeLlevanCadaUnaSusValores)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 0, Categoria);
    PulsaCelda(DataGrid1(), 2, Categoria, Qt::ControlModifier); // COL and TAL, not MED between them
    avisos.respuestas = {Respuesta::Si};

    QTest::keyClick(&DataGrid1(), Qt::Key_Delete);
    Reposa();

    EXPECT_EQ(Categorias(), "A1|MED|Medida");
    EXPECT_EQ(Quedan(), "MED|010 MED|020");
}

TEST_F(ConVariasCategorias, SeEliminaLaMarcadaAunqueOtraTengaElCursor)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 0, Categoria);
    PulsaCelda(DataGrid1(), 1, Categoria, Qt::ControlModifier);
    PulsaCelda(DataGrid1(), 1, Categoria, Qt::ControlModifier); // current, and not selected
    avisos.respuestas = {Respuesta::Si};

    QTest::keyClick(&DataGrid1(), Qt::Key_Delete);
    Reposa();

    EXPECT_EQ(Quedan(), "MED|010 MED|020 TAL|010");
}

TEST_F(ConVariasCategorias, UnaCategoriaQueSeDeshaceDevuelveSusValores)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 0, Categoria);
    avisos.respuestas = {Respuesta::No};
    Teclea(DataGrid1(), 0, Categoria, "TAL");
    EXPECT_EQ(Rotulo("LblCategoria"), "TAL · Talla");

    QTest::keyClick(&DataGrid1(), Qt::Key_Escape);
    Reposa();

    EXPECT_EQ(EnPantalla(DataGrid1()), "COL|Color MED|Medida TAL|Talla");
    EXPECT_EQ(Rotulo("LblCategoria"), "COL · Color");
    EXPECT_EQ(EnPantalla(DataGrid2()), "AZU|1||||||");
}

TEST_F(ConVariasCategorias, UnNavegadorCanceladoNoPierdeLaFilaQueSeTeclea)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    VeA("PaginaValores");
    Teclea(DataGrid2(), 2, Secuencia, "3");
    PulsaCelda(DataGrid2(), 2, Valor);
    EnElDialogo([](QWidget& navegador) { navegador.close(); });

    QTest::keyClick(&DataGrid2(), Qt::Key_F11);
    Reposa();

    EXPECT_EQ(Celda(DataGrid2(), 2, Secuencia), "3");
    EXPECT_EQ(DataGrid2().currentIndex().row(), 2);
}

TEST_F(ConVariasCategorias, LoQueElNavegadorBorraYaNoSeVeAlVolver)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    EnElDialogo([this](QWidget& navegador) {
        Ejecuta({"DELETE FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='COL'"});
        navegador.close();
    });

    QTest::keyClick(&DataGrid1(), Qt::Key_F11);
    Reposa();

    EXPECT_EQ(EnPantalla(DataGrid1()), "MED|Medida TAL|Talla");
    EXPECT_EQ(DataGrid1().currentIndex().row(), 0) << "the same category";
    EXPECT_EQ(Rotulo("LblCategoria"), "MED · Medida");
}

TEST_F(ConVariasCategorias, UnaCeldaRechazadaNoDejaElegirArticulo)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    VeA("PaginaValores");
    TecleaEnCelda(DataGrid2(), 0, Valor, "no");
    bool abierto = false;
    QTimer::singleShot(0, &ventana,
                       [&] { abierto = QApplication::activeModalWidget() != nullptr; });

    Pulsa("CmdBuscaArticulo");

    EXPECT_FALSE(abierto);
    EXPECT_EQ(avisos.cajas, Cajas{ValorNoValido});
    ASSERT_NE(Editor(DataGrid2()), nullptr);
    EXPECT_EQ(Editor(DataGrid2())->text(), "no");
    EXPECT_EQ(txtCampo_0().text(), "A1");
}

TEST_F(ConVariasCategorias, ElBotonDelArticuloLoEscribeEnSuCaja)
{
    AbreCon("A1");
    EnElDialogo([](QWidget& buscador) {
        PulsaCelda(Hijo<data::ui::DataGrid>(buscador, "DataGrid1"), 2, 0);
        QTest::mouseClick(&Hijo<QPushButton>(buscador, "CmdRetorna"), Qt::LeftButton);
    });

    Pulsa("CmdBuscaArticulo");

    EXPECT_EQ(txtCampo_0().text(), "A3");
    EXPECT_EQ(Rotulo("LblDesArt"), "Tapa");
    EXPECT_EQ(Categorias(), "A1|COL|Color A1|MED|Medida A1|TAL|Talla");
}

TEST_F(ConVariasCategorias, UnaFilaRechazadaRetieneSuPestana)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    VeA("PaginaValores");
    TecleaEnCelda(DataGrid2(), 0, Valor, "no");

    QTabBar* barra = SSTab1().tabBar();
    QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(0).center());
    Reposa();
    EXPECT_EQ(SSTab1().currentIndex(), 1);
    QTest::keyClick(&ventana, Qt::Key_Tab, Qt::ControlModifier);
    Reposa();
    EXPECT_EQ(SSTab1().currentIndex(), 1);

    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
    QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(0).center());
    EXPECT_EQ(SSTab1().currentIndex(), 0);
}

TEST_F(ConVariasCategorias, CadaPestanaRecibeElFocoTambienPorTeclado)
{
    AbreCon("A1");
    QTabBar* barra = SSTab1().tabBar();

    QTest::mouseClick(barra, Qt::LeftButton, {}, barra->tabRect(1).center());
    EXPECT_TRUE(DataGrid2().hasFocus());
    QTest::keyClick(&DataGrid2(), Qt::Key_Tab, Qt::ControlModifier);
    EXPECT_TRUE(Hijo<QLineEdit>(ventana, "TxtArtDes").hasFocus());
    QTest::keyClick(ventana.focusWidget(), Qt::Key_Backtab,
                    Qt::ControlModifier | Qt::ShiftModifier);
    QTest::keyClick(ventana.focusWidget(), Qt::Key_Backtab,
                    Qt::ControlModifier | Qt::ShiftModifier);
    EXPECT_TRUE(DataGrid1().hasFocus());
}

TEST_F(ConVariasCategorias, ConUnValorRechazadoElCierreTraeSuPestana)
{
    AbreCon("A1");
    PulsaCelda(DataGrid1(), 1, Categoria);
    VeA("PaginaValores");
    TecleaEnCelda(DataGrid2(), 0, Valor, "no");
    SSTab1().setCurrentIndex(3);

    ventana.close();

    EXPECT_TRUE(ventana.isVisible());
    EXPECT_EQ(SSTab1().currentIndex(), 1);
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
}

TEST_F(FrmConsPSArtConfiguradorTest, SinAtributoNoSeAnadenValores)
{
    AbreCon("A2");
    VeA("PaginaValores");

    TecleaEnCelda(DataGrid2(), 0, Secuencia, "5");
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Return);
    Reposa();

    EXPECT_EQ(avisos.cajas,
              (Cajas{{"Elija antes un atributo en la pestaña Atributos", SoloAviso, ""}}));
    QTest::keyClick(Editor(DataGrid2()), Qt::Key_Escape);
    EXPECT_EQ(Valores(), DosValores);
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaCategoriaNuevaNoSeEmpiezaPorSuDescripcion)
{
    AbreCon("A1");

    Teclea(DataGrid1(), 1, DescripcionCategoria, "Talla");

    EXPECT_EQ(avisos.cajas, Cajas{CodigoIncorrecto});
    QTest::keyClick(Editor(DataGrid1()), Qt::Key_Escape);
    EXPECT_EQ(Categorias(), "A1|MED|Medida");
}

TEST_F(FrmConsPSArtConfiguradorTest, CorregirElValorDeUnaFilaNuevaNoPierdeSusIncrementos)
{
    AbreCon("A1");
    VeA("PaginaValores");

    Teclea(DataGrid2(), 2, Valor, "0A0");
    Teclea(DataGrid2(), 2, IncPvp, "9");
    Teclea(DataGrid2(), 2, Valor, "010");
    EXPECT_TRUE(DataGrid2().GuardaFila());

    EXPECT_EQ(Tabla("SELECT VALOR,ID,INC_PVP FROM PS_CONF_ART_VAL WHERE ID=42"), "010|42|9");
}

TEST_F(FrmConsPSArtConfiguradorTest, UnaTablaSinUnaColumnaDelGridSeDice)
{
    Ejecuta({"ALTER TABLE PS_CONF_ART_VAL DROP COLUMN INC_PVP5"});
    Abre();
    avisos.cajas.clear();

    EscribeArticulo("A1");
    QTest::keyClick(&txtCampo_0(), Qt::Key_Return);

    ASSERT_FALSE(avisos.cajas.empty());
    EXPECT_EQ(avisos.cajas.front(),
              (AvisosDePrueba::Caja{"Ocurrio un error al actualizar el grid", SoloAviso, ""}));
}

} // namespace
