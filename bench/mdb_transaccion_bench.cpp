#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/transaccion_paginas.h"
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace tolmo::data::access::mdb;

namespace {

/// A file with that many pages, on the disk of the current folder: the one for temporary files may
/// be memory, which makes nobody wait.
class Fichero {
  public:
    explicit Fichero(quint32 paginas)
    {
        BaseFabricada base;
        QByteArray bytes = base.Termina();
        bytes.append(QByteArray(qsizetype{paginas} * 4096 - bytes.size(), '\0'));
        QFile fichero(Ruta());
        if (fichero.open(QIODevice::WriteOnly))
            fichero.write(bytes);
    }
    QString Ruta() const { return carpeta_.filePath("banco.mdb"); }

  private:
    QTemporaryDir carpeta_{"banco-"};
};

void Refresco(benchmark::State& estado)
{
    const Fichero fichero(1000);
    TransaccionPaginas paginas(fichero.Ruta());
    for ([[maybe_unused]] auto vuelta : estado)
        benchmark::DoNotOptimize(paginas.Refresca());
}

void Lectura(benchmark::State& estado)
{
    const Fichero fichero(1000);
    TransaccionPaginas paginas(fichero.Ruta());
    for ([[maybe_unused]] auto vuelta : estado) {
        const LecturaDePaginas lectura(paginas);
        benchmark::DoNotOptimize(lectura.Cambiadas());
    }
}

/// Replaces pages that are there already.
void Confirmacion(benchmark::State& estado)
{
    const auto cuantas = static_cast<quint32>(estado.range(0));
    const Fichero fichero(cuantas + 100);
    TransaccionPaginas paginas(fichero.Ruta());
    quint8 byte = 0;
    for ([[maybe_unused]] auto vuelta : estado) {
        paginas.Empieza();
        ++byte;
        for (quint32 i = 0; i < cuantas; ++i)
            paginas.Cambia(50 + i)[100] = byte;
        paginas.Confirma();
    }
}

BENCHMARK(Refresco)->Unit(benchmark::kMicrosecond);
BENCHMARK(Lectura)->Unit(benchmark::kMicrosecond);
BENCHMARK(Confirmacion)
    ->Arg(1)
    ->Arg(100)
    ->Arg(10'000)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

} // namespace

BENCHMARK_MAIN();
