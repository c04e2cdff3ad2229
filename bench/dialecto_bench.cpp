#include "data/codificacion.h"
#include "data/consultas.h"
#include "data/dialecto.h"
#include "data/plantilla.h"
#include "data/valores.h"
#include <benchmark/benchmark.h>

using namespace tolmo;

namespace {

constexpr qsizetype LargoDeSentencia = 2000;

/// What an article's update looks like: names and texts, quoted, and no word to translate.
QString Sentencia()
{
    const QString cabeza = "UPDATE ps_product_lang SET name='Cafetera italiana de 6 tazas',"
                           "description_short='Aluminio pulido, mango frío',description='";
    const QString frase = "Una cafetera de toda la vida, hecha para durar en cualquier cocina. ";
    const QString cola = "' WHERE id_product=71 AND id_lang=3||";
    QString sentencia = cabeza + frase.repeated(LargoDeSentencia / frase.size());
    sentencia.truncate(LargoDeSentencia - cola.size());
    return sentencia + cola;
}

void TraduceSentenciaSinPalabras(benchmark::State& estado)
{
    const QString sentencia = Sentencia();
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::TraduceSql(data::Dialecto::MySql, sentencia));
    estado.SetBytesProcessed(estado.iterations() * sentencia.size());
}
BENCHMARK(TraduceSentenciaSinPalabras);

/// Notes in HTML hold an "&" for each accent.
void TraduceSentenciaConSignos(benchmark::State& estado)
{
    QString sentencia = "INSERT INTO ps_product_lang VALUES(71,3,'" + Sentencia() + "')||";
    sentencia.replace("cocina", "cocina &aacute;");
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::TraduceSql(data::Dialecto::MySql, sentencia));
    estado.SetBytesProcessed(estado.iterations() * sentencia.size());
}
BENCHMARK(TraduceSentenciaConSignos);

void TraduceConsultaCorta(benchmark::State& estado)
{
    const QString consulta = "SELECT TOP 1 id_product, LEN(name) AS n FROM ps_product_lang WHERE "
                             "name LIKE 'caf' & '%' AND IIF(active=1,1,0)=1";
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::TraduceSql(data::Dialecto::MySql, consulta));
}
BENCHMARK(TraduceConsultaCorta);

void PonPrefijoAUnaSentencia(benchmark::State& estado)
{
    const QString sentencia = Sentencia();
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::PonPrefijo(sentencia, "tst_"));
}
BENCHMARK(PonPrefijoAUnaSentencia);

void LlenaPlantilla(benchmark::State& estado)
{
    constexpr data::Plantilla plantilla(
        u"UPDATE ps_product SET price={precio},weight={peso},reference='{ref}' WHERE id={id}||");
    const QString precio = "12.5";
    const QString peso = "0.75";
    const QString ref = "CAF-006";
    const QString id = "71";
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(
            plantilla({{"precio", precio}, {"peso", peso}, {"ref", ref}, {"id", id}}));
}
BENCHMARK(LlenaPlantilla);

void TextoDeDobleConDecimales(benchmark::State& estado)
{
    double numero = 1234567.89;
    for (auto vuelta : estado) {
        benchmark::DoNotOptimize(data::Texto(numero));
        numero += 0.01;
    }
}
BENCHMARK(TextoDeDobleConDecimales);

void TextoDeDobleEntero(benchmark::State& estado)
{
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::Texto(21.0));
}
BENCHMARK(TextoDeDobleEntero);

void TextoDeUnMomento(benchmark::State& estado)
{
    const data::Valor momento = QDateTime(QDate(2024, 3, 15), QTime(9, 5, 7));
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::Texto(momento));
}
BENCHMARK(TextoDeUnMomento);

void FechaParaMySql(benchmark::State& estado)
{
    const data::Valor fecha = QDate(2024, 3, 15);
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::FechaSql(data::Dialecto::MySql, fecha));
}
BENCHMARK(FechaParaMySql);

void SentenciaAWindows1252(benchmark::State& estado)
{
    const QString sentencia = Sentencia();
    for (auto vuelta : estado)
        benchmark::DoNotOptimize(data::AWindows1252(sentencia));
    estado.SetBytesProcessed(estado.iterations() * sentencia.size());
}
BENCHMARK(SentenciaAWindows1252);

} // namespace

BENCHMARK_MAIN();
