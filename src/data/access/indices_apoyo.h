#pragma once
#include "data/access/base.h"
#include <QSet>
#include <QString>

namespace tolmo::data::access {

/// The table of a companion index, as a quoted identifier of the engine.
QString NombreDeApoyo(const QString& tabla, const QString& columna);

/// Companion indexes, in the order of the language, of columns that another program indexed in
/// an order of its own. They live in the connection's own store and not in the file: an index
/// there would keep the other program, which lacks this order, from writing its tables.
class IndicesApoyo {
  public:
    explicit IndicesApoyo(const Base& base) : base_(base) {}

    /// Makes the index of a column the first time that it is asked for; from then on the changes
    /// made through this connection are followed.
    void Asegura(const QString& tabla, const QString& columna);

    /// Forgets them all: tables have changed from outside, or their definition has.
    void Olvida();
    bool Hay() const { return !hechos_.isEmpty(); }

  private:
    const Base& base_;
    QSet<QString> hechos_;
};

} // namespace tolmo::data::access
