#include "data/access/access.h"
#include "data/access/mdb/base_nueva.h"
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace tolmo;

namespace {

constexpr int Articulos = 100'000;

enum Forma { Access, Embebida };

/// 20 columns of all kinds, as those of a table of articles.
const QString Columnas = QStringLiteral(
    "(ID INT,CODIGO nvarchar(20),NOMBRE nvarchar(80),NOTAS MEMO,ALTA DATETIME,CAMBIO DATETIME,ACTIVO YESNO,WEB YESNO,NIVEL BYTE,ORDEN SMALLINT,PRECIO0 CURRENCY,PRECIO1 CURRENCY,PRECIO2 CURRENCY,PRECIO3 CURRENCY,STOCK0 DOUBLE,STOCK1 DOUBLE,STOCK2 DOUBLE,TEXTO0 nvarchar(40),TEXTO1 nvarchar(40),TEXTO2 nvarchar(40))");

/// A database with 100,000 articles, on the disk of the current folder: the one for temporary files
/// may be memory, which makes nobody wait.
class Empresa {
  public:
    explicit Empresa(Forma forma)
    {
        if (forma == Access) {
            data::access::mdb::CreaBase(Ruta("banco.mdb"));
            base = data::AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" +
                                    Ruta("banco.mdb"));
        } else {
            data::CreaBaseEmbebida(Ruta("banco.sqlite"));
            base = data::AbreBaseEmbebida(Ruta("banco.sqlite"));
        }
        base->Ejecuta("CREATE TABLE N (I INT)");
        base->Ejecuta("INSERT INTO N VALUES (0)");
        for (int i = 1; i < Articulos; i *= 2)
            base->Ejecuta(QStringLiteral("INSERT INTO N SELECT I+%1 AS I FROM N WHERE I+%1<%2")
                              .arg(i)
                              .arg(Articulos));
        base->Ejecuta("CREATE TABLE M_ARTIC " + Columnas);
        base->Ejecuta("CREATE UNIQUE INDEX IDX_CODIGO ON M_ARTIC (CODIGO)");
        base->Ejecuta(
            "INSERT INTO M_ARTIC SELECT I AS ID,'ART' & FORMAT(I*7919 MOD 100000,'00000') AS CODIGO,'Artículo número ' & I & ' de la casa' AS NOMBRE,STRING(40+I MOD 200,'n') AS NOTAS,#01/15/2009#+I MOD 3000 AS ALTA,#01/15/2015 12:00:00#+I MOD 3000 AS CAMBIO,I MOD 2=0 AS ACTIVO,I MOD 3=0 AS WEB,I MOD 200 AS NIVEL,I MOD 30000 AS ORDEN,I*0.0137 AS PRECIO0,I*0.0138 AS PRECIO1,I*0.0139 AS PRECIO2,I*0.014 AS PRECIO3,I*1.37 AS STOCK0,I*1.37+1 AS STOCK1,I*1.37+2 AS STOCK2,'valor ' & I MOD 977 AS TEXTO0,'valor ' & I MOD 978 AS TEXTO1,'valor ' & I MOD 979 AS TEXTO2 FROM N");
    }

    std::unique_ptr<data::Proveedor> base;

  private:
    QString Ruta(const char* fichero) const { return carpeta_.filePath(fichero); }

    QTemporaryDir carpeta_{"banco-"};
};

data::Proveedor& Base(benchmark::State& estado)
{
    const bool deAccess = estado.range(0) == Access;
    estado.SetLabel(deAccess ? "mdb" : "sqlite");
    if (deAccess) {
        static const Empresa empresa(Access);
        return *empresa.base;
    }
    static const Empresa empresa(Embebida);
    return *empresa.base;
}

void LeeTodo(benchmark::State& estado)
{
    auto& base = Base(estado);
    for ([[maybe_unused]] auto vuelta : estado)
        benchmark::DoNotOptimize(base.Consulta("SELECT * FROM M_ARTIC", false));
    estado.SetItemsProcessed(estado.iterations() * Articulos);
}

void Copia(benchmark::State& estado, std::initializer_list<const char*> indices)
{
    auto& base = Base(estado);
    for ([[maybe_unused]] auto vuelta : estado) {
        estado.PauseTiming();
        base.Ejecuta("CREATE TABLE COPIA " + Columnas);
        for (const char* indice : indices)
            base.Ejecuta(indice);
        estado.ResumeTiming();
        base.Ejecuta("INSERT INTO COPIA SELECT * FROM M_ARTIC");
        estado.PauseTiming();
        base.Ejecuta("DROP TABLE COPIA");
        estado.ResumeTiming();
    }
    estado.SetItemsProcessed(estado.iterations() * Articulos);
}

void CopiaSinIndices(benchmark::State& estado)
{
    Copia(estado, {});
}

void CopiaConTresIndices(benchmark::State& estado)
{
    Copia(estado, {"CREATE UNIQUE INDEX UNO ON COPIA (CODIGO)", "CREATE INDEX DOS ON COPIA (ALTA)",
                   "CREATE INDEX TRES ON COPIA (TEXTO0,PRECIO0 DESC)"});
}

void CreaIndice(benchmark::State& estado)
{
    auto& base = Base(estado);
    for ([[maybe_unused]] auto vuelta : estado) {
        estado.PauseTiming();
        base.Ejecuta("CREATE TABLE COPIA " + Columnas);
        base.Ejecuta("INSERT INTO COPIA SELECT * FROM M_ARTIC");
        estado.ResumeTiming();
        base.Ejecuta("CREATE INDEX UNO ON COPIA (CODIGO)");
        estado.PauseTiming();
        base.Ejecuta("DROP TABLE COPIA");
        estado.ResumeTiming();
    }
}

/// By a column of which the file has an index, and by one of which it hasn't.
void Busca(benchmark::State& estado, const char* condicion)
{
    auto& base = Base(estado);
    int i = 0;
    for ([[maybe_unused]] auto vuelta : estado) {
        i = (i + 7919) % Articulos;
        benchmark::DoNotOptimize(
            base.Consulta(QString::fromLatin1(condicion).arg(i, 5, 10, QChar('0')), false));
    }
}

void BuscaConIndice(benchmark::State& estado)
{
    Busca(estado, "SELECT * FROM M_ARTIC WHERE CODIGO='ART%1'");
}

void BuscaSinIndice(benchmark::State& estado)
{
    Busca(estado, "SELECT * FROM M_ARTIC WHERE ID=%1");
}

void BuscaPorPrincipio(benchmark::State& estado)
{
    Busca(estado, "SELECT CODIGO FROM M_ARTIC WHERE CODIGO LIKE 'ART%1%'");
}

void Cambia(benchmark::State& estado, const char* cambio)
{
    auto& base = Base(estado);
    for ([[maybe_unused]] auto vuelta : estado)
        base.Ejecuta(QString::fromLatin1(cambio));
    estado.SetItemsProcessed(estado.iterations() * Articulos);
}

void CambiaTodas(benchmark::State& estado)
{
    Cambia(estado, "UPDATE M_ARTIC SET PRECIO0=PRECIO0+1,TEXTO1='otro valor'");
}

void CambiaTodasLasClaves(benchmark::State& estado)
{
    Cambia(estado, "UPDATE M_ARTIC SET CODIGO=IIF(LEFT(CODIGO,1)='A','B','A') & MID(CODIGO,2)");
}

void BorraTodas(benchmark::State& estado)
{
    auto& base = Base(estado);
    for ([[maybe_unused]] auto vuelta : estado) {
        estado.PauseTiming();
        base.Ejecuta("CREATE TABLE COPIA " + Columnas);
        base.Ejecuta("CREATE UNIQUE INDEX UNO ON COPIA (CODIGO)");
        base.Ejecuta("INSERT INTO COPIA SELECT * FROM M_ARTIC");
        estado.ResumeTiming();
        base.Ejecuta("DELETE FROM COPIA");
        estado.PauseTiming();
        base.Ejecuta("DROP TABLE COPIA");
        estado.ResumeTiming();
    }
}

void EnAmbas(benchmark::internal::Benchmark* banco)
{
    banco->Arg(Access)->Arg(Embebida)->UseRealTime();
}

BENCHMARK(LeeTodo)->Apply(EnAmbas)->Unit(benchmark::kMillisecond);
BENCHMARK(CopiaSinIndices)->Apply(EnAmbas)->Unit(benchmark::kMillisecond);
BENCHMARK(CopiaConTresIndices)->Apply(EnAmbas)->Unit(benchmark::kMillisecond);
BENCHMARK(CreaIndice)->Apply(EnAmbas)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(BuscaConIndice)->Apply(EnAmbas)->Unit(benchmark::kMicrosecond);
BENCHMARK(BuscaSinIndice)->Apply(EnAmbas)->Unit(benchmark::kMicrosecond);
BENCHMARK(BuscaPorPrincipio)->Apply(EnAmbas)->Unit(benchmark::kMicrosecond);
BENCHMARK(CambiaTodas)->Apply(EnAmbas)->Unit(benchmark::kMillisecond);
BENCHMARK(CambiaTodasLasClaves)->Apply(EnAmbas)->Unit(benchmark::kMillisecond);
BENCHMARK(BorraTodas)->Apply(EnAmbas)->Unit(benchmark::kMillisecond)->Iterations(1);

} // namespace

BENCHMARK_MAIN();
