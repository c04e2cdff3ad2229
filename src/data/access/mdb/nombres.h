#pragma once
#include <QString>

namespace tolmo::data::access::mdb {

/// \throws ErrorMdb for a name that Access doesn't take for a table, a query, a column or an index
void CompruebaNombre(const QString& nombre);

/// Tables of such a name are the engine's own, and nobody else writes to them.
bool EsNombreDeSistema(const QString& tabla);

/// \throws ErrorMdb also for the name of a table of the engine
void CompruebaNombreDeTabla(const QString& nombre);

} // namespace tolmo::data::access::mdb
