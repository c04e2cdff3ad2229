#include "data/access/plan_mdb.h"
#include "data/access/colacion.h"
#include "data/access/valores_mdb.h"
#include <algorithm>
#include <cmath>
#include <span>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

using mdb::TipoColumna;

/// Reading a row on the way through all, one that an index leads to, and going down an index.
constexpr double CosteDeFila = 1;
constexpr double CosteDeSalto = 3;
constexpr double CosteDeBusqueda = 12;
constexpr double FilasPorDefecto = 1000;

/// What the engine offers of a column, as places in its list; -1 for nothing.
struct Condiciones {
    int igual = -1;
    int desde = -1;
    int hasta = -1;
};

struct Candidato {
    PlanLectura plan{};
    std::vector<int> argumentos{}; ///< places in the engine's list
    double filas = 0;
    double coste = 0;
};

class Eleccion {
  public:
    Eleccion(const mdb::Definicion& definicion, sqlite3_index_info& info)
        : definicion_(definicion), info_(info),
          ofrecidas_(info.aConstraint, static_cast<std::size_t>(info.nConstraint)),
          total_(definicion.filas > 0 ? static_cast<double>(definicion.filas) : FilasPorDefecto)
    {
    }

    Candidato Mejor() const
    {
        Candidato mejor{.filas = total_, .coste = total_ * CosteDeFila + CosteDeBusqueda};
        const auto prueba = [&mejor](const std::optional<Candidato>& otro) {
            if (otro && otro->coste < mejor.coste)
                mejor = *otro;
        };
        prueba(PorFila());
        for (std::size_t i = 0; i < definicion_.indicesReales.size(); ++i)
            prueba(PorIndice(static_cast<int>(i)));
        for (std::size_t i = 0; i < definicion_.columnas.size(); ++i)
            prueba(PorDispersion(static_cast<int>(i)));
        return mejor;
    }

  private:
    /// A text is compared in the order of the indexes only where the engine compares in it.
    bool Vale(int lugar, const mdb::Columna& columna) const
    {
        return columna.tipo != TipoColumna::Texto ||
               sqlite3_stricmp(sqlite3_vtab_collation(&info_, lugar), Colacion) == 0;
    }

    Condiciones De(int columnaDelMotor, const mdb::Columna& columna) const
    {
        Condiciones c;
        for (int i = 0; i < info_.nConstraint; ++i) {
            const auto& una = ofrecidas_[static_cast<std::size_t>(i)];
            if (!una.usable || una.iColumn != columnaDelMotor || !Vale(i, columna))
                continue;
            if (una.op == SQLITE_INDEX_CONSTRAINT_EQ)
                c.igual = i;
            else if (una.op == SQLITE_INDEX_CONSTRAINT_GE || una.op == SQLITE_INDEX_CONSTRAINT_GT)
                c.desde = i;
            else if (una.op == SQLITE_INDEX_CONSTRAINT_LE || una.op == SQLITE_INDEX_CONSTRAINT_LT)
                c.hasta = i;
        }
        return c;
    }

    std::optional<Candidato> PorFila() const
    {
        for (int i = 0; i < info_.nConstraint; ++i) {
            const auto& una = ofrecidas_[static_cast<std::size_t>(i)];
            if (una.usable && una.iColumn < 0 && una.op == SQLITE_INDEX_CONSTRAINT_EQ)
                return Candidato{.plan = {.modo = PlanLectura::Modo::Fila, .partes = "="},
                                 .argumentos = {i},
                                 .filas = 1,
                                 .coste = CosteDeSalto};
        }
        return std::nullopt;
    }

    std::optional<Candidato> PorIndice(int indice) const
    {
        const mdb::IndiceReal& real = definicion_.indicesReales[static_cast<std::size_t>(indice)];
        Candidato candidato{.plan = {.modo = PlanLectura::Modo::Indice, .indice = indice}};
        std::size_t iguales = 0;
        bool tramo = false;
        for (const mdb::ColumnaIndice& deIndice : real.columnas) {
            const mdb::Columna* columna = definicion_.ColumnaDe(deIndice.numero);
            if (!columna || !SeBusca(*columna))
                break;
            const Condiciones c =
                De(static_cast<int>(columna - definicion_.columnas.data()), *columna);
            if (c.igual >= 0) {
                candidato.plan.partes += '=';
                candidato.argumentos.push_back(c.igual);
                ++iguales;
                if (SeBuscaExacta(columna->tipo))
                    continue;
                break;
            }
            if (c.desde >= 0) {
                candidato.plan.partes += '>';
                candidato.argumentos.push_back(c.desde);
            }
            if (c.hasta >= 0) {
                candidato.plan.partes += '<';
                candidato.argumentos.push_back(c.hasta);
            }
            tramo = c.desde >= 0 || c.hasta >= 0;
            break;
        }
        if (candidato.argumentos.empty())
            return std::nullopt;
        candidato.filas = FilasDe(real, iguales, tramo);
        candidato.coste = CosteDeBusqueda + candidato.filas * CosteDeSalto;
        return candidato;
    }

    double FilasDe(const mdb::IndiceReal& real, std::size_t iguales, bool tramo) const
    {
        const std::size_t todas = real.columnas.size();
        if (iguales == todas && real.Unico())
            return 1;
        const double claves = std::max(1.0, static_cast<double>(real.unicas));
        double filas = total_;
        if (iguales > 0)
            filas /= std::pow(claves, static_cast<double>(iguales) / static_cast<double>(todas));
        if (tramo)
            filas /= 4;
        return std::clamp(filas, 1.0, total_);
    }

    std::optional<Candidato> PorDispersion(int lugar) const
    {
        const mdb::Columna& columna = definicion_.columnas[static_cast<std::size_t>(lugar)];
        if (!SeBusca(columna) || !SeBuscaExacta(columna.tipo) ||
            columna.tipo == TipoColumna::Logico)
            return std::nullopt;
        const Condiciones c = De(lugar, columna);
        if (c.igual < 0)
            return std::nullopt;
        const double filas = std::max(1.0, std::sqrt(total_));
        return Candidato{
            .plan = {.modo = PlanLectura::Modo::Dispersion, .indice = lugar, .partes = "="},
            .argumentos = {c.igual},
            .filas = filas,
            .coste = CosteDeBusqueda * 2 + filas * CosteDeSalto};
    }

    const mdb::Definicion& definicion_;
    sqlite3_index_info& info_;
    std::span<const sqlite3_index_info::sqlite3_index_constraint> ofrecidas_;
    double total_;
};

} // namespace

PlanLectura PlanLectura::De(int numero, const char* partes)
{
    return {.modo = static_cast<Modo>(numero & 0xFF), .indice = numero >> 8, .partes = partes};
}

void EligePlan(const mdb::Definicion& definicion, sqlite3_index_info& info)
{
    const Candidato mejor = Eleccion(definicion, info).Mejor();
    int argumento = 0;
    for (const int lugar : mejor.argumentos)
        info.aConstraintUsage[lugar].argvIndex = ++argumento;
    info.idxNum = mejor.plan.Numero();
    info.idxStr = sqlite3_mprintf("%s", mejor.plan.partes.constData());
    info.needToFreeIdxStr = 1;
    info.estimatedCost = mejor.coste;
    info.estimatedRows = static_cast<sqlite3_int64>(mejor.filas);
    if (mejor.plan.modo == PlanLectura::Modo::Fila)
        info.idxFlags = SQLITE_INDEX_SCAN_UNIQUE;
}

} // namespace tolmo::data::access
