#pragma once
#include "data/access/mdb/indice.h"
#include "data/access/mdb/tabla.h"
#include "data/access/plan_mdb.h"
#include <optional>
#include <span>

struct sqlite3_value;

namespace tolmo::data::access {

class DispersionMdb;

/// Walks the rows of a table of an Access file by a plan.
class LecturaMdb {
  public:
    explicit LecturaMdb(mdb::Tabla tabla) : tabla_(std::move(tabla)) {}

    void EmpiezaPorTodo();
    void EmpiezaPorFila(mdb::Puntero fila);
    void EmpiezaPorFilas(std::vector<mdb::Puntero> filas);
    /// By a stretch of an index. Where an argument tells nothing of its column it is by all rows; a
    /// Null is equal to nothing and there are none.
    void EmpiezaPorIndice(const PlanLectura& plan, std::span<sqlite3_value* const> argumentos);
    void EmpiezaSinFilas() { EmpiezaPorFilas({}); }

    /// Goes to the next row; false at the end. The first one needs it too.
    bool Siguiente();

    const mdb::Fila& Fila() const { return fila_; }
    mdb::Puntero Puntero() const { return puntero_; }

  private:
    bool SiguienteDelIndice();
    bool Toma(mdb::Puntero fila);

    mdb::Tabla tabla_;
    std::optional<mdb::Cursor> todo_{};
    std::optional<mdb::RecorridoIndice> recorrido_{};
    QByteArray principio_{}; ///< that the entries of the stretch share
    QByteArray hasta_{};     ///< the last key behind it; empty for none
    std::vector<mdb::Puntero> filas_{};
    std::size_t proxima_ = 0;
    mdb::Fila fila_{};
    mdb::Puntero puntero_{};
};

} // namespace tolmo::data::access
