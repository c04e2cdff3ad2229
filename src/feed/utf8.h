#pragma once
#include <QString>

namespace tolmo::feed {

/// Writes a file in Windows-1252 anew in UTF-8, with its byte-order mark, over whatever stands at
/// the destination.
/// \throws data::ErrorFichero when the source holds nothing to be read, or the destination can't
///         be written; what stood at the destination is then still there
void UTF8(const QString& origen, const QString& destino);

/// Turns a file into UTF-8 where it stands, by way of one with a "1" behind its name.
/// \throws data::ErrorFichero naming the file; the document is then in one of the two
void PasaAUtf8(const QString& ruta);

} // namespace tolmo::feed
