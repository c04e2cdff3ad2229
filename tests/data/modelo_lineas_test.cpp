#include "data/modelo_lineas.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Sentido;

namespace {

class ModeloLineasTest : public testing::Test {
  protected:
    ModeloLineasTest()
    {
        modelo.Anade({"Comenzando bloque 1", "Intento 1", "Intento 2"});
        modelo.Anade({"Finalizado bloque 1"});
    }

    data::ModeloLineas modelo;
};

TEST_F(ModeloLineasTest, GuardaLasLineasEnSuOrden)
{
    ASSERT_EQ(modelo.rowCount(), 4);
    EXPECT_EQ(modelo.data(modelo.index(0)), "Comenzando bloque 1");
    EXPECT_EQ(modelo.data(modelo.index(3)), "Finalizado bloque 1");
    EXPECT_EQ(modelo.data(modelo.index(3), Qt::DecorationRole), QVariant());
    EXPECT_EQ(modelo.rowCount(modelo.index(0)), 0);
}

TEST_F(ModeloLineasTest, AnadirNadaNoCambiaNada)
{
    modelo.Anade({});

    EXPECT_EQ(modelo.rowCount(), 4);
}

TEST_F(ModeloLineasTest, VaciaNoTieneLineas)
{
    modelo.Vacia();

    EXPECT_EQ(modelo.rowCount(), 0);
    EXPECT_EQ(modelo.Busca("Intento", -1, Sentido::Siguiente), -1);
}

struct CasoBusqueda {
    const char* regla;
    QString texto{};
    int fila = -1;
    Sentido sentido = Sentido::Siguiente;
    int hallada = -1;
};

class BuscaEnLineas : public ModeloLineasTest, public testing::WithParamInterface<CasoBusqueda> {};

TEST_P(BuscaEnLineas, DaLaFilaQueLaTiene)
{
    const CasoBusqueda& caso = GetParam();

    EXPECT_EQ(modelo.Busca(caso.texto, caso.fila, caso.sentido), caso.hallada);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, BuscaEnLineas,
    testing::Values(CasoBusqueda{"DesdeElPrincipio", "Intento", -1, Sentido::Siguiente, 1},
                    CasoBusqueda{"DesdeElFinal", "Intento", -1, Sentido::Anterior, 2},
                    CasoBusqueda{"DetrasDeLaFila", "Intento", 1, Sentido::Siguiente, 2},
                    CasoBusqueda{"DelanteDeLaFila", "Intento", 2, Sentido::Anterior, 1},
                    CasoBusqueda{"TrasLaUltimaLaPrimera", "bloque", 3, Sentido::Siguiente, 0},
                    CasoBusqueda{"AntesDeLaPrimeraLaUltima", "bloque", 0, Sentido::Anterior, 3},
                    CasoBusqueda{"LaMismaSiNoHayOtra", "Comenzando", 0, Sentido::Siguiente, 0},
                    CasoBusqueda{"LaMismaHaciaAtras", "Comenzando", 0, Sentido::Anterior, 0},
                    CasoBusqueda{"SinMirarMayusculas", "INTENTO 2", -1, Sentido::Siguiente, 2},
                    CasoBusqueda{"FilaQueNoExiste", "bloque", 99, Sentido::Siguiente, 0},
                    CasoBusqueda{"TextoQueNoEsta", "error", 0, Sentido::Siguiente, -1},
                    CasoBusqueda{"TextoVacio", "", 0, Sentido::Siguiente, -1}),
    [](const auto& caso) { return caso.param.regla; });

} // namespace
