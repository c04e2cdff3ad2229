#pragma once
#include "data/access/mdb/tabla.h"
#include <QIODevice>

namespace tolmo::data::access::mdb {

/// Writes a table as RFC 4180 says, in UTF-8: the names of the columns, then each row. A Null is
/// an empty field, an empty text is "".
/// \throws ErrorMdb, and ErrorFichero when `salida` can't be written
void ExportaCsv(const Tabla& tabla, QIODevice& salida);

} // namespace tolmo::data::access::mdb
