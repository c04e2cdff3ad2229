#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/paginas_en_memoria.h"
#include <gmock/gmock.h>
#include <random>

using namespace tolmo::data::access::mdb;

namespace {

struct EntradaLeida {
    QByteArray clave{};
    Puntero fila{};
};

std::vector<EntradaLeida> Lee(const Tabla& tabla, const IndiceReal& indice)
{
    std::vector<EntradaLeida> entradas;
    for (RecorridoIndice recorrido(tabla, indice); recorrido.Siguiente();) {
        const auto clave = recorrido.entrada().Clave();
        entradas.push_back({.clave = QByteArray(reinterpret_cast<const char*>(clave.data()),
                                                static_cast<qsizetype>(clave.size())),
                            .fila = recorrido.entrada().Fila()});
    }
    return entradas;
}

/// A copy of a file that Access wrote, whose indexes are changed.
class ArbolDeMuestra : public testing::TestWithParam<const char*> {
  protected:
    template <typename Tarea> void EnCadaIndice(Tarea&& tarea)
    {
        for (const QString& nombre : TablasLocales(base_)) {
            const Tabla tabla = base_.AbreTabla(nombre);
            for (const IndiceReal& indice : tabla.definicion().indicesReales) {
                std::vector<EntradaLeida> entradas = Lee(tabla, indice);
                std::shuffle(entradas.begin(), entradas.end(), azar_);
                tarea(ArbolIndice(*paginas_, tabla.definicion().pagina, indice), entradas);
                tocadas_ += entradas.size();
            }
        }
    }
    void Comprueba() const
    {
        EXPECT_GT(tocadas_, 100U);
        EXPECT_TRUE(tolmo::data::access::mdb::Comprueba(base_).Sano());
    }

    std::shared_ptr<PaginasEnMemoria> paginas_ =
        std::make_shared<PaginasEnMemoria>(BytesDeMuestra(GetParam()));
    Base base_{paginas_};
    std::mt19937 azar_{11};
    std::size_t tocadas_ = 0;
};

TEST_P(ArbolDeMuestra, CadaEntradaSaleYVuelve)
{
    EnCadaIndice([](ArbolIndice arbol, const std::vector<EntradaLeida>& entradas) {
        for (const auto& [clave, fila] : entradas) {
            EXPECT_TRUE(arbol.Tiene(clave));
            EXPECT_TRUE(arbol.Borra(clave, fila));
            EXPECT_FALSE(arbol.Borra(clave, fila));
            arbol.Inserta(clave, fila);
        }
    });

    Comprueba();
}

TEST_P(ArbolDeMuestra, UnIndiceSeVaciaYSeVuelveALlenar)
{
    EnCadaIndice([](ArbolIndice arbol, const std::vector<EntradaLeida>& entradas) {
        for (const auto& [clave, fila] : entradas)
            EXPECT_TRUE(arbol.BorraDeFila(clave.first(clave.size() / 2), fila));
        for (const auto& [clave, fila] : entradas)
            arbol.Inserta(clave, fila);
    });

    Comprueba();
}

TEST_P(ArbolDeMuestra, LoQueSeAnadeYSeQuitaNoDejaRastro)
{
    EnCadaIndice([](ArbolIndice arbol, const std::vector<EntradaLeida>& entradas) {
        for (quint32 vuelta = 1; vuelta <= 5; ++vuelta) {
            for (const auto& [clave, fila] : entradas)
                arbol.Inserta(clave, {.pagina = fila.pagina + 10'000 * vuelta, .fila = fila.fila});
        }
        for (quint32 vuelta = 1; vuelta <= 5; ++vuelta) {
            for (const auto& [clave, fila] : entradas)
                EXPECT_TRUE(arbol.Borra(
                    clave, {.pagina = fila.pagina + 10'000 * vuelta, .fila = fila.fila}));
        }
    });

    Comprueba();
}

INSTANTIATE_TEST_SUITE_P(Todas, ArbolDeMuestra,
                         testing::Values("2000-composite-index.mdb", "2000-deleted-rows.mdb",
                                         "2003-indices.mdb", "2003-numeric.mdb",
                                         "2003-overflow.mdb", "2003-saved-queries.mdb"));

} // namespace
