#include "data/access/access.h"
#include "data/busqueda_grid.h"
#include "data/ui/DataGrid.h"
#include "sin_operador.h"
#include <QApplication>
#include <QScrollBar>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>
#include <stdexcept>

using namespace tolmo;

namespace {

constexpr int Filas = 50000;

/// Nobody looks at the boxes of a benchmark: one that comes up is a mistake.
struct SinAvisos : data::Avisos {
    data::Respuesta Muestra(const QString& texto, int, const QString&) override
    {
        throw std::logic_error(texto.toStdString());
    }
};

/// A grid on a large table of articles, on the screen.
class Consulta {
  public:
    Consulta()
        : programa(avisos_, reloj_, Abre(), carpeta_.path()),
          adodc(programa, programa.ConexionLocal)
    {
        programa.DialectoActivo = data::Dialecto::Access;
        data::CreaBaseEmbebida(Ruta());
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
        for (
            const char* sql :
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20) PRIMARY KEY,DESCRIPCION nvarchar(80),PRECIO CURRENCY,ALTA DATETIME,FAMILIA nvarchar(20))",
             "CREATE TABLE N (I INT)", "INSERT INTO N VALUES (0)"})
            programa.ConexionLocal.Ejecuta(QString::fromUtf8(sql));
        for (int i = 1; i < 65536; i *= 2)
            programa.ConexionLocal.Ejecuta(
                QStringLiteral("INSERT INTO N SELECT I+%1 AS I FROM N").arg(i));
        programa.ConexionLocal.Ejecuta(
            QStringLiteral(
                "INSERT INTO M_ARTIC SELECT FORMAT(I,'00000') AS CODARTICULO,'Artículo ' & (I*7919 MOD 50021) & ' de ferretería' AS DESCRIPCION,(I*31 MOD 9973)/100 AS PRECIO,DATEADD('d',I MOD 3000,#01/01/2016#) AS ALTA,'F' & (I MOD 300) AS FAMILIA FROM N WHERE I<%1")
                .arg(Filas));
        grid.Enlaza(adodc, escritorio);
        grid.Define({.columnas = {{.DataField = "CODARTICULO", .Caption = "Código"},
                                  {.DataField = "DESCRIPCION", .Caption = "Descripción"},
                                  {.DataField = "PRECIO", .Caption = "Precio"},
                                  {.DataField = "ALTA", .Caption = "Alta"},
                                  {.DataField = "FAMILIA", .Caption = "Familia"}}});
        grid.resize(1200, 700);
        grid.show();
        Llena();
    }

    void Llena(const char* columna = "")
    {
        data::Grid definicion = grid.Definicion();
        if (definicion.columnaRecordada != QLatin1String(columna)) {
            definicion.columnaRecordada = QLatin1String(columna);
            grid.Define(definicion);
        }
        grid.LlenaGrid(QStringLiteral("M_ARTIC"));
        Pinta();
    }

    /// What the operator waits for: the screen as it is after the change.
    void Pinta()
    {
        QCoreApplication::processEvents();
        grid.grab();
    }

  private:
    QString Ruta() const { return carpeta_.filePath(QStringLiteral("BD000001.sqlite")); }
    data::FabricaProveedor Abre()
    {
        return [this](const QString&, const QString&, const QString&) {
            return data::AbreBaseEmbebida(Ruta());
        };
    }

    QTemporaryDir carpeta_{};
    SinAvisos avisos_{};
    SinReloj reloj_{};

  public:
    data::Programa programa;
    data::Adodc adodc;
    SinEscritorio escritorio{};
    data::ui::DataGrid grid{};
};

std::unique_ptr<Consulta> laConsulta;

Consulta& LaConsulta()
{
    return *laConsulta;
}

void Exige(bool cumplido, const char* que)
{
    if (!cumplido)
        throw std::logic_error(que);
}

void AbreOrdenada(benchmark::State& estado, const char* columna)
{
    Consulta& consulta = LaConsulta();
    for ([[maybe_unused]] auto _ : estado)
        consulta.Llena(columna);
    Exige(consulta.adodc.Filas().RecordCount() == Filas, "all rows are read");
}
BENCHMARK_CAPTURE(AbreOrdenada, PorCodigo, "CODARTICULO")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AbreOrdenada, PorDescripcion, "DESCRIPCION")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AbreOrdenada, PorPrecio, "PRECIO")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(AbreOrdenada, PorFecha, "ALTA")->Unit(benchmark::kMillisecond);

void AbreEditable(benchmark::State& estado)
{
    Consulta& consulta = LaConsulta();
    data::Grid definicion = consulta.grid.Definicion();
    definicion.AllowUpdate = definicion.AllowAddNew = true;
    consulta.grid.Define(definicion);
    for ([[maybe_unused]] auto _ : estado)
        consulta.Llena("CODARTICULO");
    definicion.AllowUpdate = definicion.AllowAddNew = false;
    consulta.grid.Define(definicion);
}
BENCHMARK(AbreEditable)->Unit(benchmark::kMillisecond);

void Busca(benchmark::State& estado, const char* columna, const char* texto, int fila)
{
    Consulta& consulta = LaConsulta();
    consulta.Llena("CODARTICULO");
    for ([[maybe_unused]] auto _ : estado) {
        consulta.adodc.PonFila(0);
        data::BuscaEnGrid(consulta.adodc, QLatin1String(columna), QString::fromUtf8(texto));
        consulta.Pinta();
    }
    Exige(fila < 0 || consulta.adodc.Fila() == fila, "the search ends where it should");
}
BENCHMARK_CAPTURE(Busca, CodigoDelFinal, "CODARTICULO", "49999", 49999)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Busca, TextoQueNoEsta, "DESCRIPCION", "zzz", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Busca, NumeroQueNoEsta, "PRECIO", "1000", 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Busca, Patron, "DESCRIPCION", "*culo 41 *", -1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Busca, PatronQueNoEsta, "DESCRIPCION", "*zzz", 0)->Unit(benchmark::kMillisecond);

void BuscaSiguiente(benchmark::State& estado)
{
    Consulta& consulta = LaConsulta();
    consulta.Llena("CODARTICULO");
    for ([[maybe_unused]] auto _ : estado) {
        data::BuscaSiguiente(consulta.adodc, QStringLiteral("FAMILIA"), QStringLiteral("F299"));
        consulta.Pinta();
        if (consulta.adodc.Fila() > Filas - 400)
            consulta.adodc.PonFila(0);
    }
}
BENCHMARK(BuscaSiguiente)->Unit(benchmark::kMillisecond);

void PasaPagina(benchmark::State& estado)
{
    Consulta& consulta = LaConsulta();
    QScrollBar& barra = *consulta.grid.verticalScrollBar();
    for ([[maybe_unused]] auto _ : estado) {
        barra.setValue(barra.value() >= barra.maximum() ? 0 : barra.value() + barra.pageStep());
        consulta.Pinta();
    }
}
BENCHMARK(PasaPagina)->Unit(benchmark::kMillisecond);

void CopiaTodo(benchmark::State& estado)
{
    Consulta& consulta = LaConsulta();
    std::vector<int> marcas;
    for ([[maybe_unused]] auto _ : estado) {
        consulta.grid.SeleccionaTodoGrid();
        marcas = consulta.grid.SelBookmarks();
        benchmark::DoNotOptimize(
            data::TextoDeFilas(consulta.grid.Definicion(), consulta.adodc.Filas(), marcas));
    }
    Exige(marcas.size() == Filas, "all rows are selected");
}
BENCHMARK(CopiaTodo)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    benchmark::Initialize(&argc, argv);
    laConsulta = std::make_unique<Consulta>();
    benchmark::RunSpecifiedBenchmarks();
    laConsulta.reset();
    return 0;
}
