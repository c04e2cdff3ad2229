#pragma once
#include "data/access/mdb/paginas.h"

namespace tolmo::data::access::mdb {

/// What a slot of a data page holds.
enum class EstadoRanura {
    Fila,
    Movida,  ///< the row's new place
    Destino, ///< a row that came from another place, and is reached through that one only
    Borrada
};

/// A page of rows: those of a table, pieces of long values, usage maps.
class PaginaDatos {
  public:
    /// \throws ErrorMdb when it isn't one
    PaginaDatos(Pagina pagina, const Formato& formato);

    quint32 Numero() const { return pagina_.numero; }
    /// The page of the owner's definition; 0 for usage maps, DuenioLargo for long values.
    quint32 Duenio() const;
    std::size_t Ranuras() const { return ranuras_; }
    std::size_t Libres() const; ///< bytes, as the page says
    /// Bytes between the slots and the lowest row.
    std::size_t Hueco() const;

    EstadoRanura Estado(std::size_t ranura) const;
    /// The bytes of a slot, whatever its state.
    /// \throws ErrorMdb when there is no such slot
    Bytes Contenido(std::size_t ranura) const;
    const Pagina& pagina() const { return pagina_; }

  private:
    std::size_t Principio(std::size_t ranura) const;

    Pagina pagina_;
    std::size_t tabla_;
    std::size_t ranuras_;
};

/// "LVAL", what pages of long values say in the place of their owner.
constexpr quint32 DuenioLargo = 0x4C41564C;

/// Fetches page `numero` as one of rows.
PaginaDatos LeePaginaDatos(Paginas& paginas, quint32 numero);

} // namespace tolmo::data::access::mdb
