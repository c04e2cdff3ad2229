#include "data/busqueda_grid.h"
#include "grid_de_prueba.h"

using namespace tolmo;
using data::BuscaAnterior;
using data::BuscaEnGrid;
using data::BuscaSiguiente;

namespace {

class BusquedaGrid : public testing::Test, public ArticulosDePrueba {
  protected:
    void Llena(const QString& origen = "ARTICULOS")
    {
        data::LlenaGrid(grid, adodc, origen);
        sentencias.clear();
    }
};

TEST_F(BusquedaGrid, ElTextoSeBuscaPorSuPrincipioDesdeLaPrimeraFila)
{
    Llena();
    adodc.Ultima();

    BuscaEnGrid(adodc, "NOMBRE", "torn");

    EXPECT_EQ(Actual(), "A1");
    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(BusquedaGrid, LaComillaSeDobla)
{
    Llena();

    BuscaEnGrid(adodc, "NOMBRE", "llave de D'A");

    EXPECT_EQ(Actual(), "A2");
}

TEST_F(BusquedaGrid, SinHallazgoLaFilaSigueSiendoLaMisma)
{
    Llena();
    adodc.PonFila(2);

    BuscaEnGrid(adodc, "NOMBRE", "xyz");
    EXPECT_EQ(Actual(), "B1");
    BuscaEnGrid(adodc, "NOMBRE", "");
    EXPECT_EQ(Actual(), "B1");
}

TEST_F(BusquedaGrid, EnUnaTablaVaciaNoHaceNada)
{
    Llena("ARTICULOS where FALSE");

    for (const char* texto : {"A", "'", "*", "%"}) {
        BuscaEnGrid(adodc, "NOMBRE", texto);
        BuscaSiguiente(adodc, "NOMBRE", texto);
        BuscaAnterior(adodc, "NOMBRE", texto);
    }

    EXPECT_EQ(adodc.Fila(), -1);
    EXPECT_TRUE(sentencias.isEmpty());
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(BusquedaGrid, ElNumeroExactoVaAntesQueElTramo)
{
    Llena();

    BuscaEnGrid(adodc, "PRECIO", "20");
    EXPECT_EQ(Actual(), "B1");
    BuscaEnGrid(adodc, "PRECIO", "25");
    EXPECT_EQ(Actual(), "A2");
    BuscaEnGrid(adodc, "PRECIO", "5");
    EXPECT_EQ(Actual(), "A1");
    BuscaEnGrid(adodc, "PRECIO", "31");
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, EnOrdenDescendenteElTramoEsHasta)
{
    data::AbreGrid(grid, adodc, "SELECT * FROM ARTICULOS WHERE PRECIO>0 ORDER BY PRECIO DESC");

    BuscaEnGrid(adodc, "PRECIO", "25");

    EXPECT_EQ(Actual(), "B1");
}

TEST_F(BusquedaGrid, LaFechaSeBuscaComoElNumero)
{
    Llena();

    BuscaEnGrid(adodc, "ALTA", "15/03/2024");
    EXPECT_EQ(Actual(), "B1");
    BuscaEnGrid(adodc, "ALTA", "02/03/2024");
    EXPECT_EQ(Actual(), "A1");
    BuscaEnGrid(adodc, "ALTA", "02/03");
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, ElLogicoSeBuscaPorSuValor)
{
    Llena();

    BuscaEnGrid(adodc, "ACTIVO", "n");

    EXPECT_EQ(Actual(), "A2");
}

TEST_F(BusquedaGrid, UnTextoQueNoEsNumeroNoHaceNada)
{
    Llena();
    adodc.PonFila(1);

    BuscaEnGrid(adodc, "PRECIO", "abc");
    BuscaSiguiente(adodc, "PRECIO", "abc");
    BuscaAnterior(adodc, "PRECIO", "'");

    EXPECT_EQ(Actual(), "A2");
    EXPECT_TRUE(avisos.cajas.empty());
}

TEST_F(BusquedaGrid, UnaColumnaQueNoEstaNoHaceNada)
{
    Llena();

    BuscaEnGrid(adodc, "COLOR", "rojo");
    BuscaSiguiente(adodc, "COLOR", "rojo");

    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, UnPatronSePreguntaAlMotorConLaFuenteDelConjunto)
{
    Llena("ARTICULOS where (PRECIO>5 OR PRECIO IS NULL)");

    BuscaEnGrid(adodc, "NOMBRE", "*largo");

    EXPECT_EQ(
        sentencias,
        QStringList(
            "SELECT TOP 1 NOMBRE FROM ARTICULOS WHERE NOMBRE LIKE '%largo%' AND ((PRECIO>5 OR PRECIO IS NULL)) ORDER BY CODIGO"));
    EXPECT_EQ(Actual(), "B2");
}

TEST_F(BusquedaGrid, ElPatronSinCondicionNiOrden)
{
    adodc.Abre("SELECT * FROM ARTICULOS", false);
    sentencias.clear();

    BuscaEnGrid(adodc, "NOMBRE", "%d'arc");

    EXPECT_EQ(sentencias,
              QStringList("SELECT TOP 1 NOMBRE FROM ARTICULOS WHERE NOMBRE LIKE '%d''arc%'"));
    EXPECT_EQ(Actual(), "A2");
}

TEST_F(BusquedaGrid, ElPatronConAgrupacion)
{
    adodc.Abre(
        "SELECT NOMBRE,MAX(CODIGO) AS CODIGO FROM ARTICULOS WHERE PRECIO>5 GROUP BY NOMBRE ORDER BY NOMBRE",
        false);
    sentencias.clear();

    BuscaEnGrid(adodc, "NOMBRE", "*nill");

    EXPECT_EQ(
        sentencias,
        QStringList(
            "SELECT TOP 1 NOMBRE FROM ARTICULOS WHERE NOMBRE LIKE '%nill%' AND (PRECIO>5) GROUP BY NOMBRE ORDER BY NOMBRE"));
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, ElPatronNoVeLoQueLaBarraDeFiltroEsconde)
{
    Llena();
    grid.columnas[2].FilterText = "15";
    data::AplicaFiltroColumnas(grid, adodc);

    BuscaEnGrid(adodc, "NOMBRE", "*");

    EXPECT_EQ(
        sentencias.last(),
        "SELECT TOP 1 NOMBRE FROM ARTICULOS WHERE NOMBRE LIKE '%%' AND (PRECIO >= 15) ORDER BY CODIGO");
    EXPECT_EQ(Actual(), "A2");
}

TEST_F(BusquedaGrid, UnPatronSobreNumerosBuscaElValorHallado)
{
    Llena();

    BuscaEnGrid(adodc, "PRECIO", "*0");

    EXPECT_EQ(Actual(), "A1");
    BuscaEnGrid(adodc, "PRECIO", "3*");
    EXPECT_EQ(Actual(), "A2");
}

TEST_F(BusquedaGrid, UnPatronSinHallazgoDejaLaFila)
{
    Llena();
    adodc.PonFila(1);

    BuscaEnGrid(adodc, "NOMBRE", "*xyz");

    EXPECT_EQ(Actual(), "A2");
}

TEST(BusquedaGridSinMotor, UnPatronQueElMotorRechazaDejaTodoComoEstaba)
{
    ProveedorDePrueba base;
    ProgramaDePrueba prueba(base.Fabrica());
    prueba.programa.ConexionLocal.Conecta("base");
    base.Espera("Select NOMBRE from T order by NOMBRE", HazFilas({"NOMBRE"}, {{"Ana"}, {"Eva"}}));
    base.EsperaFallo("SELECT TOP 1 NOMBRE FROM T WHERE NOMBRE LIKE '[%%' ORDER BY NOMBRE",
                     data::ErrorSql(-2147217900, "Cadena de modelo no válida", "Jet"));
    data::Adodc adodc(prueba.programa, prueba.programa.ConexionLocal);
    adodc.Abre("Select NOMBRE from T order by NOMBRE", false);
    adodc.PonFila(1);

    BuscaEnGrid(adodc, "NOMBRE", "[*");

    EXPECT_EQ(adodc.Fila(), 1);
    EXPECT_TRUE(prueba.avisos.cajas.empty());
}

TEST_F(BusquedaGrid, SiguienteYAnteriorVanDeLaActualEnAdelanteYHaciaAtras)
{
    Llena();

    BuscaSiguiente(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "B2");
    BuscaSiguiente(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "B2");
    BuscaAnterior(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "A1");
    BuscaAnterior(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, SiguienteYAnteriorPorTramoDeNumerosYFechas)
{
    Llena();

    BuscaSiguiente(adodc, "PRECIO", "15");
    EXPECT_EQ(Actual(), "A2");
    BuscaSiguiente(adodc, "PRECIO", "15");
    EXPECT_EQ(Actual(), "B1");
    BuscaSiguiente(adodc, "PRECIO", "15");
    EXPECT_EQ(Actual(), "B1");
    BuscaAnterior(adodc, "PRECIO", "15");
    EXPECT_EQ(Actual(), "A2");
    BuscaAnterior(adodc, "ALTA", "05/03/2024");
    EXPECT_EQ(Actual(), "A1");
}

TEST_F(BusquedaGrid, SiguienteEntiendeLosComodinesYLasComillas)
{
    Llena();

    BuscaSiguiente(adodc, "NOMBRE", "*d'arc");
    EXPECT_EQ(Actual(), "A2");
    BuscaSiguiente(adodc, "NOMBRE", "%l%go");
    EXPECT_EQ(Actual(), "B2");
}

TEST_F(BusquedaGrid, SinFilaActualSeBuscaEntreTodas)
{
    Llena();
    adodc.PonFila(-1);
    EXPECT_EQ(Actual(), "-");

    BuscaSiguiente(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "-");
    BuscaAnterior(adodc, "NOMBRE", "torn");
    EXPECT_EQ(Actual(), "B2");
}

} // namespace
