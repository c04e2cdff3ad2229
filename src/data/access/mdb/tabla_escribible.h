#pragma once
#include "data/access/mdb/indices_tabla.h"
#include "data/access/mdb/paginas_escribibles.h"
#include "data/access/mdb/tabla.h"
#include <memory>
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

/// Adds, changes and deletes rows of a table, and keeps every index, map and count of it right.
/// Each call is whole or throws before it has changed anything that matters; what a failed call
/// leaves is undone by the transaction of its pages.
class TablaEscribible {
  public:
    /// The tables of the system are changed by this engine alone.
    enum class Clase { DeUsuario, DeSistema };

    /// \throws ErrorMdb when the table can't be written: an index in an order whose keys aren't
    /// known, a type that isn't supported, a linked or a system table
    TablaEscribible(std::shared_ptr<PaginasEscribibles> paginas, const Tabla& tabla,
                    Clase clase = Clase::DeUsuario);
    TablaEscribible(TablaEscribible&&) noexcept;
    TablaEscribible& operator=(TablaEscribible&&) noexcept;
    ~TablaEscribible();

    /// A value for each column of the definition, in its order. Null for an autonumber gives it the
    /// next number. \returns the row's place for life
    /// \throws ErrorMdb with Motivo::ClaveRepetida for a key that a unique index has already,
    /// Motivo::SinValor for a Null that a column or index doesn't take, Motivo::Valor for what a
    /// column can't hold, Motivo::Relacion for a reference to a row that isn't there
    Puntero Inserta(std::span<const Dato> valores);

    /// The columns that change, by their places in the definition's list; the others keep their
    /// values, long ones untouched. \returns false when the row is no longer there
    struct Cambio {
        std::size_t columna = 0;
        Dato valor{};
    };
    bool Actualiza(Puntero fila, std::span<const Cambio> cambios);

    /// \returns false when the row is no longer there
    bool Borra(Puntero fila);

    /// The last autonumber that was given out; 0 for none.
    qint32 UltimoAutonumerico() const;

  private:
    class Interior;
    std::unique_ptr<Interior> interior_;
};

} // namespace tolmo::data::access::mdb
