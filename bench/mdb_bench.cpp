#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/comprobacion.h"
#include <QFile>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace tolmo::data::access::mdb;

namespace {

constexpr int Filas = 100'000;

/// A table as those of articles are: 20 columns of all kinds.
std::vector<ColumnaFabricada> Columnas()
{
    std::vector<ColumnaFabricada> columnas = {
        {"ID", TipoColumna::Largo},         {"CODIGO", TipoColumna::Texto, 20},
        {"NOMBRE", TipoColumna::Texto, 80}, {"NOTAS", TipoColumna::Memo},
        {"ALTA", TipoColumna::Fecha},       {"CAMBIO", TipoColumna::Fecha},
        {"ACTIVO", TipoColumna::Logico},    {"WEB", TipoColumna::Logico},
        {"NIVEL", TipoColumna::Byte},       {"ORDEN", TipoColumna::Entero}};
    for (int i = 0; i < 4; ++i)
        columnas.push_back({QStringLiteral("PRECIO%1").arg(i), TipoColumna::Moneda});
    for (int i = 0; i < 3; ++i)
        columnas.push_back({QStringLiteral("STOCK%1").arg(i), TipoColumna::Doble});
    for (int i = 0; i < 3; ++i)
        columnas.push_back({QStringLiteral("TEXTO%1").arg(i), TipoColumna::Texto, 40});
    return columnas;
}

std::vector<Dato> Fila(int i)
{
    std::vector<Dato> fila = {qint64{i},
                              QStringLiteral("ART%1").arg(i, 8, 10, QLatin1Char('0')),
                              QStringLiteral("Artículo número %1 de la casa").arg(i),
                              QString(40 + i % 200, u'n'),
                              Fecha{40000.0 + i % 3000},
                              Fecha{42000.5 + i % 3000},
                              i % 2 == 0,
                              i % 3 == 0,
                              qint64{i % 200},
                              qint64{i % 30000}};
    for (int n = 0; n < 4; ++n)
        fila.emplace_back(Moneda{qint64{i} * 137 + n});
    for (int n = 0; n < 3; ++n)
        fila.emplace_back(i * 1.37 + n);
    for (int n = 0; n < 3; ++n)
        fila.emplace_back(QStringLiteral("valor %1").arg(i % 977 + n));
    return fila;
}

/// The file on disk, made once.
const QString& Fichero()
{
    static const QTemporaryDir carpeta;
    static const QString ruta = [] {
        BaseFabricada base;
        base.Tabla("M_ARTIC", Columnas(), Filas, Fila);
        QFile fichero(carpeta.filePath("articulos.mdb"));
        if (fichero.open(QIODevice::WriteOnly))
            fichero.write(base.Termina());
        return fichero.fileName();
    }();
    return ruta;
}

void LeeColumnas(benchmark::State& estado, std::size_t cuantas)
{
    const Base base(Fichero());
    for ([[maybe_unused]] auto vuelta : estado) {
        const Tabla tabla = base.AbreTabla("M_ARTIC");
        for (Cursor cursor(tabla); cursor.Siguiente();) {
            for (std::size_t c = 0; c < cuantas; ++c)
                benchmark::DoNotOptimize(cursor.fila().Lee(tabla.definicion().columnas[c]));
        }
    }
    estado.SetItemsProcessed(static_cast<int64_t>(estado.iterations()) * Filas);
}

void LasVeinteColumnas(benchmark::State& estado)
{
    LeeColumnas(estado, 20);
}

void DosColumnas(benchmark::State& estado)
{
    LeeColumnas(estado, 2);
}

void Comprobacion(benchmark::State& estado)
{
    const Base base(Fichero());
    for ([[maybe_unused]] auto vuelta : estado)
        benchmark::DoNotOptimize(Comprueba(base));
}

BENCHMARK(LasVeinteColumnas)->Unit(benchmark::kMillisecond);
BENCHMARK(DosColumnas)->Unit(benchmark::kMillisecond);
BENCHMARK(Comprobacion)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
