#include "apoyo/proveedor_de_prueba.h"
#include "data/find.h"

using namespace tolmo;
using data::Recordset;
using data::Sentido;

namespace {

/// Rows of all kinds of columns; the third has nothing but its code.
Recordset Articulos()
{
    const auto dia = [](int d) { return QDateTime(QDate(2024, 3, d), QTime(0, 0)); };
    const data::Valor nada = data::Nulo();
    return Recordset(HazFilas({"CODIGO", "NOMBRE", "PRECIO", "ALTA", "ACTIVO"},
                              {{"A1", "Tornillo", 10, dia(5), true},
                               {"a2", "D'Arc", 2.5, dia(1), false},
                               {"A3", nada, nada, nada, nada},
                               {"B1", "tornillo largo", 30, dia(15), false},
                               {"B2", "Tuerca 100%", 10, dia(20), true}}));
}

/// The place where a search from the first row ends, from 1; 0 for a miss.
int Lugar(const QString& criterio)
{
    Recordset filas = Articulos();
    return data::Find(filas, criterio) ? filas.AbsolutePosition() : 0;
}

struct CasoFind {
    const char* regla;
    const char* criterio;
    int lugar;
};

class FindCriterio : public testing::TestWithParam<CasoFind> {};

TEST_P(FindCriterio, LlevaALaPrimeraFilaQueLoCumple)
{
    EXPECT_EQ(Lugar(QString::fromUtf8(GetParam().criterio)), GetParam().lugar);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, FindCriterio,
    testing::Values(CasoFind{"TextoIgualSinMirarLaCaja", "CODIGO = 'A2'", 2},
                    CasoFind{"LaColumnaEnCualquierCaja", "codigo='b1'", 4},
                    CasoFind{"LaColumnaEntreCorchetes", "[NOMBRE] = 'D''Arc'", 2},
                    CasoFind{"LaComillaVaDoblada", "NOMBRE like 'd''a*'", 2},
                    CasoFind{"PrincipioDeTexto", "NOMBRE like 'TORN*'", 1},
                    CasoFind{"ComoSinAsteriscoEsIgual", "NOMBRE LIKE 'tornillo largo'", 4},
                    CasoFind{"AsteriscoEnMedioYPorDelante", "NOMBRE like '*nillo*go*'", 4},
                    CasoFind{"ElTantoPorCientoTambienValeTodo", "NOMBRE like '%largo'", 4},
                    CasoFind{"ElFinalNoPuedeCasarDosVeces", "NOMBRE like 'Tuerca 100*0%'", 0},
                    CasoFind{"ElTrozoFinalVaDetrasDeLosDemas", "CODIGO like 'A1*1'", 0},
                    CasoFind{"ComoSobreUnNumeroMiraSuTexto", "PRECIO like '2.*'", 2},
                    CasoFind{"NumeroIgual", "PRECIO = 30", 4},
                    CasoFind{"NumeroEntreComillas", "PRECIO = '30'", 4},
                    CasoFind{"NumeroMayorOIgual", "PRECIO >= 11", 4},
                    CasoFind{"NumeroMenorOIgual", "PRECIO <= 9", 2},
                    CasoFind{"NumeroMayor", "PRECIO > 10", 4},
                    CasoFind{"NumeroMenor", "PRECIO<10", 2},
                    CasoFind{"DistintoNoCuentaLosNulos", "PRECIO <> 10", 2},
                    CasoFind{"FechaIgual", "ALTA = 15/03/2024", 4},
                    CasoFind{"FechaEntreSusMarcas", "ALTA = #2024-03-20#", 5},
                    CasoFind{"FechaMayorOIgual", "ALTA >= 06/03/2024", 4},
                    CasoFind{"LogicoVerdadero", "ACTIVO = TRUE", 1},
                    CasoFind{"LogicoFalso", "ACTIVO = no", 2},
                    CasoFind{"TextoPorOrden", "CODIGO >= 'a9'", 4},
                    CasoFind{"TextoSinComillas", "CODIGO = B2", 5},
                    CasoFind{"LoQueNoEstaNoSeHalla", "CODIGO = 'Z'", 0}),
    [](const auto& caso) { return caso.param.regla; });

TEST(Find, DesdeLaActualHaciaDelanteYHaciaAtras)
{
    Recordset filas = Articulos();
    filas.PonPosicion(2);

    EXPECT_TRUE(data::Find(filas, "PRECIO = 10"));
    EXPECT_EQ(filas.AbsolutePosition(), 5);
    EXPECT_TRUE(data::Find(filas, "PRECIO = 10", 0, Sentido::Anterior));
    EXPECT_EQ(filas.AbsolutePosition(), 5);
    EXPECT_TRUE(data::Find(filas, "PRECIO = 10", 1, Sentido::Anterior));
    EXPECT_EQ(filas.AbsolutePosition(), 1);
}

TEST(Find, SinHallazgoQuedaEnElExtremo)
{
    Recordset filas = Articulos();

    EXPECT_FALSE(data::Find(filas, "PRECIO = 99"));
    EXPECT_TRUE(filas.Fin());
    filas.Ultimo();
    EXPECT_FALSE(data::Find(filas, "PRECIO = 99", 0, Sentido::Anterior));
    EXPECT_TRUE(filas.Principio());
}

TEST(Find, EnUnConjuntoVacioNoHayNada)
{
    Recordset vacio(HazFilas({"CODIGO"}, {}));

    EXPECT_FALSE(data::Find(vacio, "CODIGO = '1'"));
    EXPECT_FALSE(data::Find(vacio, "CODIGO = '1'", 1, Sentido::Anterior));
}

TEST(Find, UnCriterioQueNoSeEntiendeEsElError3001YNoMueveNada)
{
    for (const char* criterio :
         {"CODIGO", "= 'A'", "CODIGO ~ 'A'", "CODIGO = 'A", "CODIGO = 'A'B'", "PRECIO = diez",
          "PRECIO >= ", "ALTA >= 31/02/2024", "ALTA = 15", "ACTIVO = quizás", "ACTIVO = "}) {
        Recordset filas = Articulos();
        filas.PonPosicion(2);
        int numero = 0;
        try {
            data::Find(filas, QString::fromUtf8(criterio));
        } catch (const data::ErrorDatos& error) {
            numero = error.Numero();
        }
        EXPECT_EQ(numero, 3001) << criterio;
        EXPECT_EQ(filas.AbsolutePosition(), 2) << criterio;
    }
}

TEST(Find, UnaColumnaQueNoEstaEsElError3265)
{
    Recordset filas = Articulos();

    EXPECT_THROW(data::Find(filas, "COLOR = 'rojo'"), data::ErrorDatos);
    try {
        data::Find(filas, "COLOR = 'rojo'");
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 3265);
    }
}

} // namespace
