#pragma once
#include "data/access/mdb/bytes.h"
#include "data/access/mdb/formato.h"
#include <QString>

namespace tolmo::data::access::mdb {

/// A text as a row holds it: compressed when it says so, else as TextoSinComprimir.
QString LeeTexto(Bytes bytes, const Formato& formato);

/// A text that is never compressed: UTF-16, in Access 97 Windows-1252.
QString TextoSinComprimir(Bytes bytes, const Formato& formato);

} // namespace tolmo::data::access::mdb
