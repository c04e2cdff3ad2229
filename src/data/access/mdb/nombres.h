#pragma once
#include <QString>

namespace tolmo::data::access::mdb {

/// \throws ErrorMdb for a name that Access doesn't take for a table, a query, a column or an index
void CompruebaNombre(const QString& nombre);

} // namespace tolmo::data::access::mdb
