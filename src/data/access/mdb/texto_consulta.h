#pragma once
#include "data/access/mdb/consulta_guardada.h"

namespace tolmo::data::access::mdb {

/// The name as a statement holds it: in brackets where it needs them.
QString NombreEnTexto(const QString& nombre);

/// The text of a saved query.
/// \throws ErrorMdb for one whose text isn't for this engine (a crosstab, a pass-through query),
/// and for pieces that make no query
QString SqlDe(const std::vector<Pieza>& piezas);

} // namespace tolmo::data::access::mdb
