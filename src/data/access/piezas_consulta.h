#pragma once
#include "data/access/mdb/consulta_guardada.h"

namespace tolmo::data::access {

/// Takes the text of a query apart into what an Access file holds of it. Expressions stay as they
/// are written.
/// \throws ErrorSql for a text that isn't understood, and for what has no place in those pieces
std::vector<mdb::Pieza> PiezasDe(const QString& texto);

} // namespace tolmo::data::access
