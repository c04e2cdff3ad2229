#include "sync/lista_estado.h"
#include "sync/panel_estado.h"
#include <QApplication>
#include <benchmark/benchmark.h>

namespace {

/// The status list of a long run, on the screen.
struct Estado {
    Estado()
    {
        panel.resize(1000, 200);
        panel.show();
    }
    void Anade(int cuantas)
    {
        for (int i = 0; i < cuantas; ++i)
            lista.Anade(QStringLiteral("[15/03/2024 9:05:07] Actualizando articulo %1 / REF-%1")
                            .arg(lista.model()->rowCount() + i));
    }

    PanelEstado panel{};
    ListaEstado& lista = panel.Lista();
};

/// One turn of the events with 50 new lines, in a list of so many.
void UnTurno(benchmark::State& medida)
{
    Estado estado;
    estado.Anade(static_cast<int>(medida.range(0)));
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto _ : medida) {
        estado.Anade(50);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(UnTurno)->Arg(100)->Arg(10000)->Arg(100000)->Iterations(100)->Unit(
    benchmark::kMillisecond);

/// The same while somebody reads with all lines selected.
void UnTurnoConTodoElegido(benchmark::State& medida)
{
    Estado estado;
    estado.Anade(static_cast<int>(medida.range(0)));
    QCoreApplication::processEvents();
    estado.lista.selectAll();
    for ([[maybe_unused]] auto _ : medida) {
        estado.Anade(50);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(UnTurnoConTodoElegido)->Arg(100000)->Iterations(100)->Unit(benchmark::kMillisecond);

/// A text that no line holds: the search looks at all of them.
void BuscaLoQueNoEsta(benchmark::State& medida)
{
    Estado estado;
    estado.Anade(static_cast<int>(medida.range(0)));
    QCoreApplication::processEvents();
    for ([[maybe_unused]] auto _ : medida)
        benchmark::DoNotOptimize(
            estado.lista.Busca(QStringLiteral("error"), tolmo::data::Sentido::Siguiente));
}
BENCHMARK(BuscaLoQueNoEsta)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
