#include "apoyo/dobles.h"
#include "data/grid.h"
#include "grid_de_prueba.h"

using namespace tolmo;
using data::EtiquetaGrid;

namespace {

class GridTest : public testing::Test, public ArticulosDePrueba {};

TEST_F(GridTest, LlenaGridLeeSusColumnasEnElOrdenDeLaPrimera)
{
    const EtiquetaGrid etiqueta = data::LlenaGrid(grid, adodc, "ARTICULOS");

    EXPECT_EQ(
        sentencias,
        QStringList("Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS order by CODIGO"));
    EXPECT_EQ(etiqueta, (EtiquetaGrid{"CODIGO", "Código"}));
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(GridTest, LosCamposDadosSustituyenALosDeLasColumnas)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS", "CODIGO,EMPRESA");

    EXPECT_EQ(sentencias, QStringList("Select CODIGO,EMPRESA from ARTICULOS order by CODIGO"));
}

TEST_F(GridTest, ElOrigenLlevaLaCondicionDeLaVentana)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS where (PRECIO>15)");

    EXPECT_EQ(
        sentencias.last(),
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (PRECIO>15) order by CODIGO");
    EXPECT_EQ(Codigos(), "A2 B1");
}

TEST_F(GridTest, UnGridQueSeEditaSeAbreParaCambiarlo)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    EXPECT_TRUE(cambiables.isEmpty());
    EXPECT_FALSE(adodc.Filas().Cambiable());

    for (bool data::Grid::*permiso :
         {&data::Grid::AllowUpdate, &data::Grid::AllowAddNew, &data::Grid::AllowDelete}) {
        cambiables.clear();
        data::Grid editable = grid;
        editable.*permiso = true;
        data::LlenaGrid(editable, adodc, "ARTICULOS");
        EXPECT_EQ(cambiables.size(), 1);
        EXPECT_TRUE(adodc.Filas().Cambiable());
    }
}

TEST_F(GridTest, UnaColumnaSinCampoNoSeLee)
{
    grid.columnas.insert(grid.columnas.begin(), {.Caption = "Botón"});
    const EtiquetaGrid etiqueta = data::LlenaGrid(grid, adodc, "ARTICULOS");

    EXPECT_EQ(sentencias.last(),
              "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS order by CODIGO");
    EXPECT_EQ(etiqueta.Tag, "CODIGO");
}

TEST_F(GridTest, UnaCondicionQueElMotorRechazaCierraElPrograma)
{
    EXPECT_THROW(data::LlenaGrid(grid, adodc, "ARTICULOS where (NOMBRE='D'Arc')"),
                 data::FinDePrograma);
    EXPECT_EQ(
        avisos.cajas.back().texto,
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (NOMBRE='D'Arc') order by CODIGO\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR");
}

TEST_F(GridTest, LaCabeceraPulsadaOrdenaYSeRecuerda)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS where (CODIGO<>'')");

    const EtiquetaGrid etiqueta = data::OrdenaGrid(grid, adodc, 1);

    EXPECT_EQ(etiqueta, (EtiquetaGrid{"NOMBRE", "Nombre"}));
    EXPECT_EQ(
        sentencias.last(),
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where (CODIGO<>'') order by NOMBRE");
    EXPECT_EQ(Codigos(), "B1 A2 A1 B2");

    data::LlenaGrid(grid, adodc, "ARTICULOS");
    EXPECT_EQ(sentencias.last(),
              "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS order by NOMBRE");
}

TEST_F(GridTest, UnaColumnaSinCampoNoOrdena)
{
    grid.columnas.push_back({.Caption = "Botón"});
    data::LlenaGrid(grid, adodc, "ARTICULOS");

    EXPECT_EQ(data::OrdenaGrid(grid, adodc, 5).Tag, "CODIGO");
    EXPECT_EQ(sentencias.size(), 1);
}

TEST_F(GridTest, UnaSentenciaPropiaConservaSuOrdenHastaQueSePideOtro)
{
    data::AbreGrid(grid, adodc, "SELECT * FROM ARTICULOS WHERE TRUE ORDER BY PRECIO DESC");
    EXPECT_EQ(sentencias.last(), "SELECT * FROM ARTICULOS WHERE TRUE ORDER BY PRECIO DESC");

    data::OrdenaGrid(grid, adodc, 1);
    EXPECT_EQ(sentencias.last(), "SELECT * FROM ARTICULOS WHERE TRUE order by NOMBRE");

    data::AbreGrid(grid, adodc, "SELECT * FROM ARTICULOS WHERE PRECIO>1 ORDER BY PRECIO DESC");
    EXPECT_EQ(sentencias.last(), "SELECT * FROM ARTICULOS WHERE PRECIO>1 order by NOMBRE");
}

TEST_F(GridTest, FiltroColumnasUneLasCondicionesDeLaBarra)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    grid.columnas[1].FilterText = "D'Arc";
    grid.columnas[2].FilterText = "15";
    grid.columnas[3].FilterText = "5/3/2024";
    grid.columnas[4].FilterText = "sí";

    EXPECT_EQ(
        data::FiltroColumnas(grid, adodc.Filas().Campos(), data::Dialecto::Access),
        "NOMBRE LIKE 'D''Arc%' AND PRECIO >= 15 AND ALTA >= Format('05/03/2024','dd/mm/yyyy') AND ACTIVO = TRUE");
    EXPECT_EQ(data::FiltroColumnas(grid, adodc.Filas().Campos(), data::Dialecto::MySql)
                  .section(" AND ", 2, 2),
              "ALTA >= CAST('2024/03/05' AS DATE)");
}

TEST_F(GridTest, SinTextosNoHayFiltro)
{
    EXPECT_EQ(data::FiltroColumnas(grid, {}, data::Dialecto::Access), "");
}

struct CasoFiltro {
    const char* regla;
    std::size_t columna;
    const char* texto;
    const char* codigos;
};

class FiltroEnBase : public testing::TestWithParam<CasoFiltro>, public ArticulosDePrueba {};

TEST_P(FiltroEnBase, DejaLasFilasQueLoCumplen)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS where CODIGO<>'' OR CODIGO='Z'");
    grid.columnas[GetParam().columna].FilterText = GetParam().texto;

    data::AplicaFiltroColumnas(grid, adodc);

    EXPECT_EQ(Codigos(), GetParam().codigos);
    EXPECT_EQ(
        adodc.RecordSource(),
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS where CODIGO<>'' OR CODIGO='Z' order by CODIGO");
}

INSTANTIATE_TEST_SUITE_P(Casos, FiltroEnBase,
                         testing::Values(CasoFiltro{"TextoPorSuPrincipio", 1, "torn", "A1 B2"},
                                         CasoFiltro{"TextoConComilla", 1, "llave de d'", "A2"},
                                         CasoFiltro{"TextoConComodin", 1, "%largo", "B2"},
                                         CasoFiltro{"NumeroDesde", 2, "20", "A2 B1"},
                                         CasoFiltro{"FechaDesde", 3, "05/03/2024", "A1 B1"},
                                         CasoFiltro{"LogicoSi", 4, "S", "A1 B1"},
                                         CasoFiltro{"LogicoNo", 4, "no", "A2 B2"}),
                         [](const auto& caso) { return caso.param.regla; });

TEST_F(GridTest, LaBarraSigueFiltrandoAlOrdenarYAlLlenar)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    grid.columnas[2].FilterText = "15";
    data::AplicaFiltroColumnas(grid, adodc);
    EXPECT_EQ(
        sentencias.last(),
        "Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO FROM ARTICULOS WHERE PRECIO >= 15 ORDER BY CODIGO");

    data::OrdenaGrid(grid, adodc, 1);
    EXPECT_EQ(Codigos(), "B1 A2");
    data::LlenaGrid(grid, adodc, "ARTICULOS where (PRECIO<30)");
    EXPECT_EQ(Codigos(), "B1");
}

TEST_F(GridTest, QuitaFiltroGridVaciaLaBarraYReabreParaCambiar)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    grid.columnas[1].FilterText = "torn";
    grid.columnas[2].FilterText = "1";
    data::AplicaFiltroColumnas(grid, adodc);
    cambiables.clear();

    data::QuitaFiltroGrid(grid, adodc);

    for (const auto& columna : grid.columnas)
        EXPECT_EQ(columna.FilterText, "");
    EXPECT_EQ(
        cambiables,
        QStringList("Select CODIGO,NOMBRE,PRECIO,ALTA,ACTIVO from ARTICULOS order by CODIGO"));
    EXPECT_EQ(Codigos(), "A1 A2 B1 B2");
}

TEST_F(GridTest, UnTextoDeLaBarraQueNoSirveSeDice)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    const auto rechazo = [&](std::size_t columna, const char* texto) {
        return data::RechazoDeFiltro(grid.columnas[columna], adodc.Filas().Campos(), texto);
    };

    EXPECT_EQ(rechazo(2, "abc"), "El filtro de «Precio» tiene que ser un número.");
    EXPECT_EQ(rechazo(3, "15"), "El filtro de «Alta» tiene que ser una fecha (dd/mm/aaaa).");
    EXPECT_EQ(rechazo(4, "quizás"), "El filtro de «Activo» tiene que ser Sí o No.");
    for (const std::size_t columna : {0U, 1U, 2U, 3U, 4U})
        EXPECT_EQ(rechazo(columna, ""), "") << columna;
    EXPECT_EQ(rechazo(1, "lo que sea"), "");
    EXPECT_EQ(rechazo(2, "1.5"), "");
    EXPECT_EQ(rechazo(3, "1/3/2024"), "");
    EXPECT_EQ(rechazo(4, "S"), "");
}

TEST_F(GridTest, CopiaSeleccionSinFilasSoloLoDice)
{
    EscritorioDePrueba escritorio;
    data::LlenaGrid(grid, adodc, "ARTICULOS");

    data::CopiaSeleccion(grid, adodc, {}, escritorio);

    EXPECT_TRUE(escritorio.copiado.isEmpty());
    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(avisos.cajas[0].texto, "No hay ninguna fila seleccionada");
    EXPECT_EQ(avisos.cajas[0].estilo, 48);
}

TEST_F(GridTest, CopiaSeleccionPoneTabuladoresYFinesDeLinea)
{
    EscritorioDePrueba escritorio;
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    adodc.PonFila(2);
    const std::vector<int> marcas{1, 3};

    data::CopiaSeleccion(grid, adodc, marcas, escritorio);

    EXPECT_EQ(
        escritorio.copiado,
        QStringList("A2\tLlave de D'Arc\t30\t01/03/2024\tNo\r\nB2\tTornillo largo\t\t\tNo\r\n"));
    ASSERT_EQ(avisos.cajas.size(), 1U);
    EXPECT_EQ(avisos.cajas[0].texto, "Los datos han sido copiados al portapapeles");
    EXPECT_EQ(avisos.cajas[0].estilo, 64);
    EXPECT_EQ(Actual(), "B1");
}

TEST_F(GridTest, LaMarcaVuelveALaMismaFilaAunqueSeMueva)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    adodc.PonFila(2);
    const data::MarcaDeFila marca(adodc, "CODIGO");
    Ejecuta({"INSERT INTO ARTICULOS (CODIGO,NOMBRE) VALUES ('A0','Antes')"});

    data::LlenaGrid(grid, adodc, "ARTICULOS");
    EXPECT_EQ(Actual(), "A0");
    marca.Vuelve(adodc);

    EXPECT_EQ(Actual(), "B1");
}

TEST_F(GridTest, SiLaFilaYaNoEstaSeQuedaEnSuSitio)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    adodc.PonFila(3);
    const data::MarcaDeFila marca(adodc, "CODIGO");
    Ejecuta({"DELETE FROM ARTICULOS WHERE CODIGO='B2'"});

    data::LlenaGrid(grid, adodc, "ARTICULOS");
    marca.Vuelve(adodc);

    EXPECT_EQ(Actual(), "B1");
}

TEST_F(GridTest, EntreIgualesVuelveALaMasCercana)
{
    Ejecuta({"UPDATE ARTICULOS SET NOMBRE='Igual' WHERE CODIGO<>'A2'"});
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    adodc.PonFila(2);
    const data::MarcaDeFila marca(adodc, "NOMBRE");

    data::LlenaGrid(grid, adodc, "ARTICULOS");
    marca.Vuelve(adodc);

    EXPECT_EQ(Actual(), "B1");
}

TEST_F(GridTest, PrimeraYUltimaSinFilasNoHacenNada)
{
    data::LlenaGrid(grid, adodc, "ARTICULOS where FALSE");

    adodc.Primera();
    adodc.Ultima();

    EXPECT_EQ(adodc.Fila(), -1);
    data::LlenaGrid(grid, adodc, "ARTICULOS");
    adodc.Ultima();
    EXPECT_EQ(Actual(), "B2");
    adodc.Primera();
    EXPECT_EQ(Actual(), "A1");
}

} // namespace
