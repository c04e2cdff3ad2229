#pragma once
#include "data/access/mdb/tabla.h"
#include <optional>
#include <vector>

namespace tolmo::data::access {

/// The rows of a table by the values of one column, for a column that the file has no index of. It
/// tells values apart by a number, so that it may give rows that weren't asked for.
class DispersionMdb {
  public:
    DispersionMdb(const mdb::Tabla& tabla, const mdb::Columna& columna);

    /// The places of the rows that may hold the value, in order; nothing when it can't be told.
    std::optional<std::vector<mdb::Puntero>> Filas(const mdb::Dato& valor) const;

  private:
    struct Entrada {
        quint64 numero = 0;
        mdb::Puntero fila{};
        auto operator<=>(const Entrada&) const = default;
    };

    mdb::Columna columna_;
    std::vector<Entrada> entradas_{};
    std::vector<mdb::Puntero> inciertas_{}; ///< whose value can't be told apart
};

} // namespace tolmo::data::access
