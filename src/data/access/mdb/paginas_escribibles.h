#pragma once
#include "data/access/mdb/paginas.h"
#include <span>

namespace tolmo::data::access::mdb {

/// Pages that may be changed. A change shows at once to whoever reads through the same object, and
/// to nobody else until the transaction that they belong to is confirmed. A Pagina that was read
/// before a change keeps the bytes that it had.
class PaginasEscribibles : public Paginas {
  public:
    /// The bytes of a page for changing them; valid until the next call of a member.
    /// \throws ErrorMdb when there is no such page
    virtual std::span<quint8> Cambia(quint32 numero) = 0;

    /// Makes the file longer by a page of zeros. \returns its number
    /// \throws ErrorMdb when the file is as large as the format lets it be
    virtual quint32 Alarga() = 0;
};

} // namespace tolmo::data::access::mdb
