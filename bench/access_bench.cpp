#include "data/access/access.h"
#include <QTemporaryDir>
#include <benchmark/benchmark.h>

using namespace tolmo;

namespace {

constexpr int Articulos = 10000;
constexpr int Familias = 300;
constexpr int ColumnasDeMas = 60;

/// A company with many wide articles, as a whole run meets it.
class Empresa {
  public:
    Empresa()
    {
        const QString ruta = carpeta_.filePath("BD000001.sqlite");
        data::CreaBaseEmbebida(ruta);
        base = data::AbreBaseEmbebida(ruta);
        QString columnas;
        for (int i = 0; i < ColumnasDeMas; ++i)
            columnas += QStringLiteral(",C%1 %2").arg(QString::number(i),
                                                      i % 3 ? "nvarchar(50)" : "CURRENCY");
        base->Ejecuta(
            "CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20) PRIMARY KEY,DESCRIPCION nvarchar(80),NOTAS NTEXT,ACTIVOWEB nvarchar(1),EMPRESASWEB nvarchar(50),TIPOARTIC nvarchar(2),FECHAMODIFICACION DATETIME" +
            columnas + ")");
        base->Ejecuta(
            "CREATE TABLE M_FAMILIA (CLAVE nvarchar(20) PRIMARY KEY,NIVEL INT,DESCRIPCION nvarchar(50),ACTIVOWEB nvarchar(1),EMPRESASWEB nvarchar(50))");
        base->Ejecuta("CREATE TABLE N (I INT)");
        base->Ejecuta("INSERT INTO N VALUES (0)");
        for (int i = 1; i < 16384; i *= 2)
            base->Ejecuta(QStringLiteral("INSERT INTO N SELECT I+%1 AS I FROM N").arg(i));
        base->Ejecuta(
            QStringLiteral(
                "INSERT INTO M_ARTIC (CODARTICULO,DESCRIPCION,NOTAS,ACTIVOWEB,TIPOARTIC,FECHAMODIFICACION) SELECT FORMAT(I MOD %1,'000') & FORMAT(I,'00000'),'Artículo número ' & I,STRING(300,'x'),'S','AR',#03/15/2024# FROM N WHERE I<%2")
                .arg(Familias)
                .arg(Articulos));
        QString cambios;
        for (int i = 0; i < ColumnasDeMas; ++i)
            cambios += QStringLiteral("%1C%2=%3")
                           .arg(i ? "," : "", QString::number(i),
                                i % 3 ? "'valor " + QString::number(i) + "'" : QString("12.5"));
        base->Ejecuta("UPDATE M_ARTIC SET " + cambios);
        base->Ejecuta(
            QStringLiteral(
                "INSERT INTO M_FAMILIA (CLAVE,NIVEL,DESCRIPCION,ACTIVOWEB) SELECT FORMAT(I,'000'),I MOD 4,'Familia ' & I,'S' FROM N WHERE I<%1")
                .arg(Familias));
    }

    static QString Codigo(int i)
    {
        return QStringLiteral("%1%2")
            .arg(i % Familias, 3, 10, QChar('0'))
            .arg(i, 5, 10, QChar('0'));
    }

    std::unique_ptr<data::Proveedor> base;

  private:
    QTemporaryDir carpeta_;
};

Empresa& LaEmpresa()
{
    static Empresa empresa;
    return empresa;
}

void TablaDeNotas(benchmark::State& estado)
{
    auto& base = *LaEmpresa().base;
    for (auto vuelta : estado) {
        base.Ejecuta("CREATE TABLE WKOVTOLMO_ARTIC1 (CODART nvarchar(20),PSNOTAS0 NTEXT)");
        base.Ejecuta(
            "INSERT INTO WKOVTOLMO_ARTIC1 (CODART,PSNOTAS0) SELECT CODARTICULO,NOTAS FROM M_ARTIC");
        estado.PauseTiming();
        base.Ejecuta("DROP TABLE WKOVTOLMO_ARTIC1");
        estado.ResumeTiming();
    }
    estado.SetItemsProcessed(estado.iterations() * Articulos);
}
BENCHMARK(TablaDeNotas)->Unit(benchmark::kMillisecond);

void SeleccionDeArticulos(benchmark::State& estado)
{
    auto& base = *LaEmpresa().base;
    base.Ejecuta("CREATE TABLE WKOVTOLMO_ARTIC2 (CODART nvarchar(20),PSNOTAS0 NTEXT)");
    base.Ejecuta(
        "INSERT INTO WKOVTOLMO_ARTIC2 (CODART,PSNOTAS0) SELECT CODARTICULO,NOTAS FROM M_ARTIC");
    for (auto vuelta : estado) {
        auto filas = base.Consulta(
            "SELECT DESCRIPCION AS PSCAMPODESCRIPCION0,NULL AS FAMALT,* FROM M_ARTIC LEFT JOIN WKOVTOLMO_ARTIC2 ON M_ARTIC.CODARTICULO=WKOVTOLMO_ARTIC2.CODART WHERE (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL) ORDER BY CODARTICULO",
            false);
        benchmark::DoNotOptimize(filas);
    }
    base.Ejecuta("DROP TABLE WKOVTOLMO_ARTIC2");
    estado.SetItemsProcessed(estado.iterations() * Articulos);
}
BENCHMARK(SeleccionDeArticulos)->Unit(benchmark::kMillisecond);

void FamiliaDeArticulo(benchmark::State& estado)
{
    auto& base = *LaEmpresa().base;
    int i = 0;
    for (auto vuelta : estado) {
        i = (i + 1) % Articulos;
        auto filas = base.Consulta(
            "SELECT TOP 1 * FROM M_FAMILIA WHERE '" + Empresa::Codigo(i) +
                "' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') ORDER BY NIVEL DESC",
            false);
        benchmark::DoNotOptimize(filas);
    }
}
BENCHMARK(FamiliaDeArticulo)->Unit(benchmark::kMicrosecond);

void PreguntaPorCodigo(benchmark::State& estado)
{
    auto& base = *LaEmpresa().base;
    int i = 0;
    for (auto vuelta : estado) {
        i = (i + 1) % Articulos;
        auto filas = base.Consulta(
            "SELECT CODARTICULO FROM M_ARTIC WHERE CODARTICULO='" + Empresa::Codigo(i) +
                "' AND ( ACTIVOWEB IN ('S')  OR EMPRESASWEB LIKE '%,000001,%')AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)",
            false);
        benchmark::DoNotOptimize(filas);
    }
}
BENCHMARK(PreguntaPorCodigo)->Unit(benchmark::kMicrosecond);

} // namespace

BENCHMARK_MAIN();
