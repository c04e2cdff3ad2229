#pragma once
#include "data/access/mdb/dato.h"
#include "data/access/mdb/definicion.h"

namespace tolmo::data::access::mdb {

/// The value as it would be read back from the column: a numeric one in the column's scale, bytes
/// of fixed width filled up, false for Null where there is no Null.
/// \throws ErrorMdb with Motivo::Valor and the column's name when the column can't hold it
Dato Ajusta(const Columna& columna, const Dato& dato);

/// The bytes of an adjusted value that isn't Null; the reverse of LeeDato. Of a memo or OLE column
/// they are the value itself, wherever it comes to lie.
QByteArray EscribeDato(const Columna& columna, const Dato& dato);

} // namespace tolmo::data::access::mdb
