#pragma once
#include "data/access/mdb/bytes.h"
#include "data/access/mdb/formato.h"
#include <QByteArray>
#include <QString>

namespace tolmo::data::access::mdb {

/// A text as a row holds it: compressed when it says so, else as TextoSinComprimir.
QString LeeTexto(Bytes bytes, const Formato& formato);

/// A text that is never compressed: UTF-16, in Access 97 Windows-1252.
QString TextoSinComprimir(Bytes bytes, const Formato& formato);

/// The reverse of LeeTexto, as Access 2000 and later write it. Only a text whose column says so is
/// compressed, from three characters on and when that is shorter.
/// \throws ErrorMdb for the few texts that have no form at all
QByteArray EscribeTexto(const QString& texto, bool comprime);

} // namespace tolmo::data::access::mdb
