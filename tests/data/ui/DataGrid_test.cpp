#include "articulos_en_pantalla.h"
#include "data/ui/DataGrid.h"
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace tolmo;
using data::Respuesta;
using data::ui::DataGrid;

namespace {

constexpr int Codigo = 0;
constexpr int Nombre = 1;
constexpr int Precio = 2;
constexpr int Alta = 3;
constexpr int FilaNueva = 4;

/// A window with an editable grid and a box beside it.
class DataGridTest : public testing::Test, public ArticulosDePrueba {
  protected:
    DataGridTest()
    {
        auto* columna = new QVBoxLayout(&ventana);
        columna->addWidget(rejilla);
        columna->addWidget(otra);
        ventana.resize(700, 400);
        rejilla->Enlaza(adodc, escritorio);
        grid.AllowUpdate = grid.AllowAddNew = grid.AllowDelete = true;
        rejilla->Define(grid);
    }

    void SetUp() override
    {
        Abre();
        Muestra(ventana);
        rejilla->setFocus();
        escrituras = 0;
        sentencias.clear();
    }

    virtual void Abre() { adodc.Abre("SELECT * FROM ARTICULOS ORDER BY CODIGO", true); }

    /// Types into a cell, and leaves its editor open.
    void Teclea(int fila, int columna, const char* texto)
    {
        TecleaEnCelda(*rejilla, fila, columna, QString::fromUtf8(texto));
    }
    void Intro()
    {
        QTest::keyClick(Editor(*rejilla), Qt::Key_Return);
        Reposa();
    }
    QString EnBase(const QString& codigo)
    {
        return Tabla("SELECT NOMBRE,PRECIO FROM ARTICULOS WHERE CODIGO='" + codigo + "'");
    }
    /// A press on the head of a row.
    void PulsaFila(int fila)
    {
        QHeaderView* filas = rejilla->verticalHeader();
        QTest::mouseClick(filas->viewport(), Qt::LeftButton, {},
                          {4, filas->sectionViewportPosition(fila) + 5});
        Reposa();
    }
    int FilaActual() const { return rejilla->currentIndex().row(); }

    EscritorioDePrueba escritorio{};
    QWidget ventana{};
    DataGrid* rejilla = new DataGrid(&ventana);
    QLineEdit* otra = new QLineEdit(&ventana);
};

TEST_F(DataGridTest, LaPrimeraFilaEsLaActual)
{
    EXPECT_EQ(FilaActual(), 0);
    EXPECT_EQ(Actual(), "A1");
    EXPECT_EQ(rejilla->SelBookmarks(), std::vector<int>{0});
}

TEST_F(DataGridTest, UnaPulsacionHaceActualSuFila)
{
    QSignalSpy cambios(rejilla, &DataGrid::FilaCambiada);

    PulsaCelda(*rejilla, 2, Nombre);
    EXPECT_EQ(Actual(), "B1");
    EXPECT_EQ(rejilla->ColumnaActual(), "NOMBRE");
    PulsaCelda(*rejilla, 2, Precio);
    EXPECT_EQ(rejilla->ColumnaActual(), "PRECIO");

    EXPECT_EQ(cambios.count(), 1);
}

TEST_F(DataGridTest, ElValorActualEsElQueSeEstaEscribiendo)
{
    EXPECT_EQ(rejilla->ValorActual("nombre"), data::Valor("Tornillo"));
    EXPECT_EQ(rejilla->ValorActual("EMPRESA"), data::Valor("000001")) << "a column not shown";

    Teclea(0, Nombre, "Clavo");
    Intro();
    EXPECT_EQ(rejilla->ValorActual("NOMBRE"), data::Valor("Clavo"));
    EXPECT_FALSE(rejilla->ValorActual("COLOR").isValid());
    PulsaCelda(*rejilla, FilaNueva, Codigo);
    EXPECT_FALSE(rejilla->ValorActual("NOMBRE").isValid());
}

TEST_F(DataGridTest, LaPosicionDelConjuntoLlevaAlGrid)
{
    adodc.Ultima();
    EXPECT_EQ(FilaActual(), 3);
    EXPECT_EQ(rejilla->SelBookmarks(), std::vector<int>{3});

    QTest::keyClick(rejilla, Qt::Key_Up);
    EXPECT_EQ(Actual(), "B1");
}

TEST_F(DataGridTest, EnLaFilaDelPieNoHayFilaActual)
{
    PulsaCelda(*rejilla, FilaNueva, Codigo);

    EXPECT_EQ(Actual(), "-");
    EXPECT_TRUE(rejilla->SelBookmarks().empty());
}

TEST_F(DataGridTest, LaFilaSeEscribeAlIrAOtra)
{
    Teclea(0, Nombre, "Clavo");
    Intro();
    EXPECT_EQ(escrituras, 0) << "Enter ends the cell, not the row";
    Teclea(0, Precio, "12.5");
    EXPECT_EQ(EnBase("A1"), "Tornillo|10");

    PulsaCelda(*rejilla, 2, Nombre);

    EXPECT_EQ(EnBase("A1"), "Clavo|12.5");
    EXPECT_EQ(escrituras, 1);
    EXPECT_EQ(FilaActual(), 2);
    EXPECT_EQ(Editor(*rejilla), nullptr);
}

TEST_F(DataGridTest, LaFilaSeEscribeAlIrAOtraConElTeclado)
{
    Teclea(0, Nombre, "Clavo");
    Intro();

    QTest::keyClick(rejilla, Qt::Key_Down);

    EXPECT_EQ(EnBase("A1"), "Clavo|10");
    EXPECT_EQ(FilaActual(), 1);
}

TEST_F(DataGridTest, ElTabuladorPasaALaCeldaSiguienteYNoEscribe)
{
    Teclea(0, Nombre, "Clavo");
    QTest::keyClick(Editor(*rejilla), Qt::Key_Tab);
    Reposa();

    EXPECT_EQ(rejilla->currentIndex(), rejilla->model()->index(0, Precio));
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_EQ(Editor(*rejilla)->text(), "10");
    EXPECT_EQ(escrituras, 0);
}

TEST_F(DataGridTest, LaFilaSeEscribeAlIrAOtroControl)
{
    Teclea(0, Nombre, "Clavo");

    QTest::mouseClick(otra, Qt::LeftButton);
    Reposa();

    EXPECT_EQ(EnBase("A1"), "Clavo|10");
    EXPECT_TRUE(otra->hasFocus());
}

TEST_F(DataGridTest, OtraVentanaDelanteNoEsDejarLaFila)
{
    Teclea(0, Nombre, "Clavo");

    QWidget delante;
    Muestra(delante);
    delante.setFocus();
    Reposa();

    EXPECT_EQ(escrituras, 0);
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_EQ(Editor(*rejilla)->text(), "Clavo");
}

TEST_F(DataGridTest, TeclearSobreLaCeldaSustituyeSuTexto)
{
    PulsaCelda(*rejilla, 0, Nombre);

    QTest::keyClick(rejilla, 'Z');
    ASSERT_NE(Editor(*rejilla), nullptr);
    Intro();

    EXPECT_EQ(Celda(*rejilla, 0, Nombre).toUpper(), "Z");
}

TEST_F(DataGridTest, ElPrimerEscapeDejaLaCeldaYElSegundoLaFila)
{
    Teclea(0, Nombre, "Clavo");
    Intro();
    Teclea(0, Precio, "99");

    QTest::keyClick(Editor(*rejilla), Qt::Key_Escape);
    Reposa();
    EXPECT_EQ(Celda(*rejilla, 0, Precio), "10");
    EXPECT_EQ(Celda(*rejilla, 0, Nombre), "Clavo");

    QTest::keyClick(rejilla, Qt::Key_Escape);
    EXPECT_EQ(Celda(*rejilla, 0, Nombre), "Tornillo");
    QTest::keyClick(rejilla, Qt::Key_Down);
    EXPECT_EQ(escrituras, 0);
}

TEST_F(DataGridTest, UnTextoMasLargoQueLaColumnaDejaAbiertaLaCelda)
{
    Teclea(0, Nombre, "veintiuna letras justas");
    Intro();

    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(
        avisos.cajas[0].texto,
        "ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e intentelo de nuevo: «Nombre» admite como máximo 20 caracteres y el texto tiene 23.");
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_EQ(Editor(*rejilla)->text(), "veintiuna letras justas");
    EXPECT_TRUE(Editor(*rejilla)->hasFocus());

    QTest::keyClick(Editor(*rejilla), Qt::Key_Escape);
    Reposa();
    EXPECT_EQ(Editor(*rejilla), nullptr);
    EXPECT_EQ(Celda(*rejilla, 0, Nombre), "Tornillo");
    EXPECT_EQ(avisos.cajas.size(), 1U);
}

TEST_F(DataGridTest, UnNumeroDondeVaUnaFechaNoDejaIrANingunSitio)
{
    Teclea(0, Alta, "15");

    PulsaCelda(*rejilla, 2, Nombre);
    EXPECT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(FilaActual(), 0);
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_EQ(Editor(*rejilla)->text(), "15");

    PulsaCelda(*rejilla, 0, Nombre);
    EXPECT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(Editor(*rejilla)->text(), "15");

    QTest::mouseClick(otra, Qt::LeftButton);
    Reposa();
    EXPECT_EQ(avisos.cajas.size(), 3U);
    EXPECT_TRUE(Editor(*rejilla)->hasFocus());

    QTest::keyClick(Editor(*rejilla), Qt::Key_Tab);
    Reposa();
    EXPECT_EQ(avisos.cajas.size(), 4U);
    EXPECT_EQ(Editor(*rejilla)->text(), "15");
    EXPECT_EQ(escrituras, 0);
    EXPECT_EQ(
        avisos.cajas[3].texto,
        "ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e intentelo de nuevo: «Alta» tiene que ser una fecha (dd/mm/aaaa).");
}

TEST_F(DataGridTest, DesdeLaCabeceraDeFilasTampocoSeDejaUnTextoRechazado)
{
    Teclea(0, Alta, "15");

    PulsaFila(2);

    EXPECT_EQ(FilaActual(), 0);
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_EQ(Editor(*rejilla)->text(), "15");
}

TEST_F(DataGridTest, LaCabeceraDeFilasDejaLaFilaComoCualquierOtra)
{
    Teclea(0, Nombre, "Clavo");
    Intro();

    PulsaFila(2);

    EXPECT_EQ(EnBase("A1"), "Clavo|10");
    EXPECT_EQ(FilaActual(), 2);
}

TEST_F(DataGridTest, UnaFilaQueElMotorRechazaSigueSiendoLaActual)
{
    Teclea(1, Codigo, "A1");
    Intro();

    QTest::keyClick(rejilla, Qt::Key_Down);
    EXPECT_EQ(FilaActual(), 1);
    PulsaCelda(*rejilla, 3, Nombre);
    EXPECT_EQ(FilaActual(), 1);
    PulsaCabecera(*rejilla, Nombre);
    EXPECT_EQ(avisos.cajas.size(), 3U);
    PulsaFila(2);

    EXPECT_EQ(FilaActual(), 1);
    EXPECT_EQ(Celda(*rejilla, 1, Codigo), "A1");
    EXPECT_EQ(avisos.cajas.size(), 4U);
    EXPECT_EQ(
        avisos.cajas[0].texto,
        "No se ha podido guardar la fila: El valor está duplicado en un índice único: ARTICULOS.CODIGO");
    EXPECT_EQ(EnBase("A2"), "Llave de D'Arc|30");
}

TEST_F(DataGridTest, AlIrAOtroControlUnaFilaRechazadaRecuperaElFoco)
{
    Teclea(1, Codigo, "A1");
    Intro();

    QTest::mouseClick(otra, Qt::LeftButton);
    Reposa();

    EXPECT_EQ(avisos.cajas.size(), 1U);
    EXPECT_TRUE(rejilla->hasFocus());
    EXPECT_EQ(Celda(*rejilla, 1, Codigo), "A1");
}

TEST_F(DataGridTest, UnaFilaQueOtroProgramaBorroSePuedeAbandonar)
{
    Teclea(1, Nombre, "Otra");
    Ejecuta({"DELETE FROM ARTICULOS WHERE CODIGO='A2'"});

    PulsaCelda(*rejilla, 0, Nombre);
    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(avisos.cajas[0].texto,
              "No se ha podido guardar la fila: El registro de ARTICULOS ya no existe");
    EXPECT_EQ(Celda(*rejilla, 1, Nombre), "Otra");
    EXPECT_EQ(FilaActual(), 1);

    QTest::keyClick(rejilla, Qt::Key_Escape);
    PulsaCelda(*rejilla, 0, Nombre);
    EXPECT_EQ(FilaActual(), 0);
}

TEST_F(DataGridTest, AlPieSeAnadenFilasUnaTrasOtra)
{
    rejilla->Eventos().filaNueva = [] { return data::Cambios{{"EMPRESA", "000009"}}; };
    Teclea(FilaNueva, Codigo, "C1");
    QTest::keyClick(Editor(*rejilla), Qt::Key_Tab);
    Reposa();
    QTest::keyClicks(Editor(*rejilla), "Primera");
    Intro();
    EXPECT_EQ(escrituras, 0);

    QTest::keyClick(rejilla, Qt::Key_Down);
    EXPECT_EQ(Tabla("SELECT NOMBRE,EMPRESA FROM ARTICULOS WHERE CODIGO='C1'"), "Primera|000009");
    EXPECT_EQ(FilaActual(), 5);

    Teclea(5, Codigo, "C2");
    Intro();
    Teclea(5, Nombre, "Segunda");
    PulsaCelda(*rejilla, 0, Codigo);
    EXPECT_EQ(Tabla("SELECT CODIGO FROM ARTICULOS WHERE EMPRESA='000009' ORDER BY CODIGO"),
              "C1 C2");
    EXPECT_EQ(rejilla->model()->rowCount(), 7);
}

TEST_F(DataGridTest, LaTeclaSuprimirBorraConSuPregunta)
{
    QSignalSpy cambios(rejilla, &DataGrid::FilaCambiada);
    avisos.respuestas = {Respuesta::No, Respuesta::Si};
    PulsaCelda(*rejilla, 1, Nombre);

    QTest::keyClick(rejilla, Qt::Key_Delete);
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
    QTest::keyClick(rejilla, Qt::Key_Delete);

    EXPECT_EQ(Tabla("SELECT CODIGO FROM ARTICULOS ORDER BY CODIGO"), "A1 B1 B2");
    EXPECT_EQ(Actual(), "B1");
    EXPECT_EQ(FilaActual(), 1);
    EXPECT_EQ(rejilla->SelBookmarks(), std::vector<int>{1});
    EXPECT_GE(cambios.count(), 2);
}

TEST_F(DataGridTest, BorrarVariasDejaElGridYElConjuntoDeAcuerdo)
{
    avisos.respuestas = {Respuesta::Si};
    PulsaCelda(*rejilla, 2, Nombre);
    PulsaCelda(*rejilla, 3, Nombre, Qt::ControlModifier);

    QTest::keyClick(rejilla, Qt::Key_Delete);

    EXPECT_EQ(Codigos(), "A1 A2");
    EXPECT_EQ(Actual(), "A2");
    EXPECT_EQ(FilaActual(), 1);
    PulsaCelda(*rejilla, 0, Nombre);
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(DataGridTest, SinPermisoSuprimirNoBorra)
{
    grid.AllowDelete = false;
    rejilla->Define(grid);
    PulsaCelda(*rejilla, 1, Nombre);

    QTest::keyClick(rejilla, Qt::Key_Delete);

    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
}

TEST_F(DataGridTest, CtrlCCopiaLasFilasElegidas)
{
    PulsaCelda(*rejilla, 0, Nombre);
    PulsaCelda(*rejilla, 2, Nombre, Qt::ControlModifier);

    QTest::keyClick(rejilla, Qt::Key_C, Qt::ControlModifier);

    EXPECT_EQ(
        escritorio.copiado,
        QStringList("A1\tTornillo\t10\t05/03/2024\tSí\r\nB1\tArandela\t20\t15/03/2024\tSí\r\n"));
    EXPECT_EQ(avisos.cajas.back().texto, "Los datos han sido copiados al portapapeles");
}

TEST_F(DataGridTest, CtrlAEligeTodasMenosLaDelPie)
{
    QTest::keyClick(rejilla, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(rejilla->SelBookmarks(), (std::vector<int>{0, 1, 2, 3}));
    EXPECT_TRUE(escritorio.copiado.isEmpty());

    QTest::keyClick(rejilla, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(escritorio.copiado.value(0).count("\r\n"), 4);
}

TEST_F(DataGridTest, SinNingunaFilaElegidaSoloSeDice)
{
    rejilla->clearSelection();

    QTest::keyClick(rejilla, Qt::Key_C, Qt::ControlModifier);

    EXPECT_TRUE(escritorio.copiado.isEmpty());
    EXPECT_EQ(avisos.cajas.back().texto, "No hay ninguna fila seleccionada");
}

TEST_F(DataGridTest, LaCabeceraOrdenaYNoSelecciona)
{
    QSignalSpy ordenes(rejilla, &DataGrid::Ordenado);

    PulsaCabecera(*rejilla, Nombre);

    EXPECT_EQ(sentencias, QStringList("SELECT * FROM ARTICULOS order by NOMBRE"));
    EXPECT_EQ(Codigos(), "B1 A2 A1 B2");
    EXPECT_EQ(rejilla->SelBookmarks(), std::vector<int>{0});
    ASSERT_EQ(ordenes.count(), 1);
    EXPECT_EQ(ordenes[0][0].value<data::EtiquetaGrid>(), (data::EtiquetaGrid{"NOMBRE", "Nombre"}));
    EXPECT_EQ(rejilla->horizontalHeader()->sortIndicatorSection(), Nombre);
}

TEST_F(DataGridTest, LaFlechaEstaEnLaColumnaDelOrdenSiLoHay)
{
    const QHeaderView* cabecera = rejilla->horizontalHeader();
    EXPECT_EQ(cabecera->sortIndicatorSection(), Codigo);

    rejilla->AbreGrid("SELECT * FROM ARTICULOS");
    EXPECT_EQ(cabecera->sortIndicatorSection(), -1);
    rejilla->AbreGrid("SELECT * FROM ARTICULOS ORDER BY nombre ASC");
    EXPECT_EQ(cabecera->sortIndicatorSection(), Nombre);
    rejilla->AbreGrid("SELECT * FROM ARTICULOS ORDER BY EMPRESA");
    EXPECT_EQ(cabecera->sortIndicatorSection(), -1) << "a column not shown";
}

TEST_F(DataGridTest, OrdenarGuardaAntesLoEscrito)
{
    Teclea(0, Nombre, "Zueco");

    PulsaCabecera(*rejilla, Nombre);

    EXPECT_EQ(EnBase("A1"), "Zueco|10");
    EXPECT_EQ(Codigos(), "B1 A2 B2 A1");
}

TEST_F(DataGridTest, ReabiertoMientrasSeEscribeNoQuedaNingunEditor)
{
    Teclea(0, Nombre, "Clavo");

    Abre();
    Reposa();

    EXPECT_EQ(Editor(*rejilla), nullptr);
    EXPECT_TRUE(rejilla->hasFocus());
    EXPECT_TRUE(rejilla->GuardaFila());
    EXPECT_EQ(escrituras, 0);
}

TEST_F(DataGridTest, ElFinDelProgramaEnLoQueDiceLaVentanaNoCruzaLosEventos)
{
    rejilla->Eventos().antesDeColumna = [](int, QString&) -> bool { throw data::FinDePrograma{}; };
    Teclea(0, Nombre, "Clavo");

    EXPECT_EXIT(Intro(), testing::ExitedWithCode(1), "");
}

TEST_F(DataGridTest, LosAnchosDadosValenYLosDemasSeTomanDeLosTextos)
{
    Ejecuta({"UPDATE ARTICULOS SET NOMBRE='mmmmmmmmmmmmmmmmmmmm' WHERE CODIGO='A1'"});
    grid.columnas[Precio].ancho = 123;
    rejilla->Define(grid);
    Abre();

    EXPECT_EQ(rejilla->columnWidth(Precio), 123);
    EXPECT_GT(rejilla->columnWidth(Nombre), rejilla->columnWidth(Codigo));
    rejilla->setColumnWidth(Nombre, 77);
    Abre();
    EXPECT_EQ(rejilla->columnWidth(Nombre), 77) << "what the operator has changed stays";
}

/// A grid that is only looked at, with its filter bar.
class BarraDeFiltro : public DataGridTest {
  protected:
    BarraDeFiltro()
    {
        grid.AllowUpdate = grid.AllowAddNew = grid.AllowDelete = false;
        rejilla->Define(grid);
        rejilla->MuestraBarraFiltro(true);
    }
    void Abre() override { rejilla->LlenaGrid("ARTICULOS"); }

    QLineEdit& Caja(int columna)
    {
        return Hijo<QLineEdit>(*rejilla, qPrintable(QString("FilterText_%1").arg(columna)));
    }
    void Filtra(int columna, const char* texto)
    {
        QTest::mouseClick(&Caja(columna), Qt::LeftButton);
        Caja(columna).clear();
        QTest::keyClicks(&Caja(columna), QString::fromUtf8(texto));
    }
    void DejaLaBarra()
    {
        QTest::mouseClick(otra, Qt::LeftButton);
        Reposa();
    }
};

TEST_F(BarraDeFiltro, HayUnaCajaBajoCadaCabeza)
{
    QHeaderView* cabecera = rejilla->horizontalHeader();

    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(Caja(i).isVisible()) << i;
        EXPECT_EQ(Caja(i).x(), cabecera->sectionViewportPosition(i)) << i;
        EXPECT_EQ(Caja(i).width(), cabecera->sectionSize(i)) << i;
        EXPECT_GE(Caja(i).y(), cabecera->viewport()->height()) << i;
        EXPECT_LE(Caja(i).geometry().bottom(), cabecera->height()) << i;
    }
}

TEST_F(BarraDeFiltro, LasCajasSiguenALasColumnas)
{
    QHeaderView* cabecera = rejilla->horizontalHeader();

    rejilla->setColumnWidth(Codigo, 900);
    EXPECT_EQ(Caja(Codigo).width(), 900);
    EXPECT_EQ(Caja(Nombre).x(), 900);

    Reposa();
    rejilla->horizontalScrollBar()->setValue(rejilla->horizontalScrollBar()->maximum());
    EXPECT_LT(cabecera->sectionViewportPosition(Nombre), 900);
    EXPECT_EQ(Caja(Nombre).x(), cabecera->sectionViewportPosition(Nombre));
}

TEST_F(BarraDeFiltro, SeAplicaAlDejarLaBarraYNoAntes)
{
    Filtra(Nombre, "torn");
    EXPECT_TRUE(sentencias.isEmpty());
    QTest::keyClick(&Caja(Nombre), Qt::Key_Tab);
    EXPECT_TRUE(Caja(Precio).hasFocus());
    QTest::keyClicks(&Caja(Precio), "5");
    EXPECT_TRUE(sentencias.isEmpty()) << "from box to box the bar isn't left";

    DejaLaBarra();

    EXPECT_EQ(
        sentencias,
        QStringList(
            "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO FROM ARTICULOS WHERE NOMBRE LIKE 'torn%' AND PRECIO >= 5 ORDER BY CODIGO"));
    EXPECT_EQ(Codigos(), "A1");
    EXPECT_EQ(Caja(Nombre).text(), "torn");
}

TEST_F(BarraDeFiltro, LaTeclaIntroTambienLaAplica)
{
    Filtra(Nombre, "torn");

    QTest::keyClick(&Caja(Nombre), Qt::Key_Return);

    EXPECT_EQ(Codigos(), "A1 B2");
    EXPECT_TRUE(Caja(Nombre).hasFocus());
}

TEST_F(BarraDeFiltro, DejarlaSinCambiosNoPreguntaNada)
{
    Filtra(Nombre, "");

    DejaLaBarra();

    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(BarraDeFiltro, VaciarLaCajaQuitaSuFiltro)
{
    Filtra(Nombre, "torn");
    DejaLaBarra();
    Filtra(Nombre, "");
    DejaLaBarra();

    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
}

TEST_F(BarraDeFiltro, UnTextoQueNoSirveSeDiceYNoFiltra)
{
    Filtra(Precio, "abc");

    DejaLaBarra();

    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(avisos.cajas[0].texto, "El filtro de «Precio» tiene que ser un número.");
    EXPECT_EQ(avisos.cajas[0].estilo, 48);
    EXPECT_EQ(Caja(Precio).text(), "");
    EXPECT_TRUE(sentencias.isEmpty());
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
}

TEST_F(BarraDeFiltro, UnaComillaEnLaCajaSeDobla)
{
    Filtra(Nombre, "llave de d'");

    DejaLaBarra();

    EXPECT_EQ(Codigos(), "A2");
}

TEST_F(BarraDeFiltro, LaUltimaCajaLlevaAlGrid)
{
    QTest::mouseClick(&Caja(4), Qt::LeftButton);

    QTest::keyClick(&Caja(4), Qt::Key_Tab);

    EXPECT_TRUE(rejilla->hasFocus());
}

TEST_F(BarraDeFiltro, QuitarLosFiltrosVaciaLasCajas)
{
    Filtra(Nombre, "torn");
    DejaLaBarra();

    rejilla->QuitaFiltroGrid();

    EXPECT_EQ(Caja(Nombre).text(), "");
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
}

TEST_F(BarraDeFiltro, UnGridQueSoloSeMiraNoSeEdita)
{
    PulsaCelda(*rejilla, 0, Nombre);
    QTest::keyClick(rejilla, Qt::Key_F2);
    QTest::keyClicks(rejilla, "zz");

    EXPECT_EQ(Editor(*rejilla), nullptr);
    EXPECT_FALSE(rejilla->verticalHeader()->isVisible());
    EXPECT_EQ(rejilla->model()->rowCount(), 4);
}

TEST_F(BarraDeFiltro, ElTabuladorSaleDeUnGridQueSoloSeMira)
{
    rejilla->setFocus();

    QTest::keyClick(rejilla, Qt::Key_Tab);

    EXPECT_FALSE(rejilla->hasFocus());
    EXPECT_EQ(FilaActual(), 0);
}

/// The same with a button in the names, and the codes hidden.
class DataGridConBoton : public DataGridTest {
  protected:
    DataGridConBoton()
    {
        grid.columnas[Codigo].oculta = true;
        grid.columnas[Nombre].boton = true;
        grid.columnas[Nombre].ancho = 200;
        rejilla->Define(grid);
        QObject::connect(rejilla, &DataGrid::BotonPulsado,
                         [this](int columna) { pulsados << columna; });
    }

    QPoint SitioDelBoton(int fila)
    {
        const QRect celda = rejilla->visualRect(rejilla->model()->index(fila, Nombre));
        return {celda.right() - 5, celda.center().y()};
    }
    void PulsaBoton(int fila)
    {
        QTest::mouseClick(rejilla->viewport(), Qt::LeftButton, {}, SitioDelBoton(fila));
        Reposa();
    }

    QList<int> pulsados{};
};

TEST_F(DataGridConBoton, UnaColumnaOcultaNoSeVeNiEsDondeSeEntraEnUnaFila)
{
    EXPECT_TRUE(rejilla->isColumnHidden(Codigo));
    EXPECT_EQ(rejilla->currentIndex().column(), Nombre);
    EXPECT_EQ(data::EtiquetaDe(rejilla->Definicion()).Tag, "NOMBRE");
    EXPECT_EQ(rejilla->ValorActual("CODIGO").toString(), "A1") << "it is read all the same";
}

TEST_F(DataGridConBoton, SoloLaFilaActualTieneBoton)
{
    PulsaBoton(2);
    EXPECT_TRUE(pulsados.isEmpty()) << "the press chose the row";
    EXPECT_EQ(rejilla->currentIndex().row(), 2);

    PulsaBoton(2);
    EXPECT_EQ(pulsados, QList<int>{Nombre});
}

TEST_F(DataGridConBoton, FueraDelBotonLaCeldaSeEditaComoCualquiera)
{
    PulsaCelda(*rejilla, 0, Nombre);
    QTest::mouseDClick(rejilla->viewport(), Qt::LeftButton, {}, SitioDeCelda(*rejilla, 0, Nombre));

    EXPECT_TRUE(pulsados.isEmpty());
    ASSERT_NE(Editor(*rejilla), nullptr);
    EXPECT_LT(Editor(*rejilla)->geometry().right(), SitioDelBoton(0).x()) << "the button shows";
}

TEST_F(DataGridConBoton, ElRatonQueSeVaDelBotonNoLoPulsa)
{
    QTest::mousePress(rejilla->viewport(), Qt::LeftButton, {}, SitioDelBoton(0));
    QTest::mouseRelease(rejilla->viewport(), Qt::LeftButton, {}, SitioDeCelda(*rejilla, 2, Nombre));

    EXPECT_TRUE(pulsados.isEmpty());
    EXPECT_EQ(rejilla->currentIndex().row(), 0);
}

TEST_F(DataGridConBoton, F11YF12LoPulsanYDejanLoEmpezadoEnLaCelda)
{
    QTest::keyClick(rejilla, Qt::Key_F11);
    EXPECT_EQ(pulsados, QList<int>{Nombre});

    Teclea(0, Nombre, "Cua");
    QTest::keyClick(Editor(*rejilla), Qt::Key_F12);
    Reposa();

    EXPECT_EQ(pulsados, (QList<int>{Nombre, Nombre}));
    EXPECT_EQ(Editor(*rejilla), nullptr);
    EXPECT_EQ(Celda(*rejilla, 0, Nombre), "Tornillo");

    PulsaCelda(*rejilla, 0, Precio);
    QTest::keyClick(rejilla, Qt::Key_F12);
    EXPECT_EQ(pulsados.size(), 2) << "that column has none";
}

TEST_F(DataGridConBoton, SinPermisoParaCambiarNoHayBoton)
{
    grid.AllowUpdate = false;
    rejilla->Define(grid);

    PulsaBoton(0);
    EXPECT_TRUE(pulsados.isEmpty());

    PulsaCelda(*rejilla, FilaNueva, Nombre);
    PulsaBoton(FilaNueva);
    EXPECT_EQ(pulsados, QList<int>{Nombre}) << "rows may be added";
}

TEST_F(DataGridConBoton, LoElegidoSeCompruebaComoSiSeTecleara)
{
    rejilla->Eventos().antesDeColumna = [](int columna, QString& texto) {
        texto = texto.toUpper();
        return columna == Nombre && texto != QLatin1String("MALO");
    };

    EXPECT_TRUE(rejilla->Teclea("nombre", "perno"));
    EXPECT_FALSE(rejilla->Teclea("NOMBRE", "malo"));
    EXPECT_FALSE(rejilla->Teclea("NOHAY", "perno"));

    EXPECT_EQ(Celda(*rejilla, 0, Nombre), "PERNO");
    EXPECT_TRUE(rejilla->GuardaFila());
    EXPECT_EQ(EnBase("A1"), "PERNO|10");
}

} // namespace
