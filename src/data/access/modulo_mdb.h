#pragma once
#include <QString>

struct sqlite3;

namespace tolmo::data::access {

class Esquema;
class FicheroAccess;

/// Lets the engine see the tables of an Access file. The file outlives the engine's connection, and
/// the schema whatever is written.
void RegistraModuloMdb(sqlite3* base, FicheroAccess& fichero, const Esquema& esquema);

/// The statement that makes a table of the file known under its name; and the one that ends it,
/// which leaves the file as it is.
QString SqlConectaTabla(const QString& nombre);
/// The same of a table of another file.
QString SqlConectaTabla(const QString& nombre, const QString& fichero, const QString& tabla);
QString SqlDesconectaTabla(const QString& nombre);

/// The name of the column, which nobody sees, beside one of money or of decimal numbers: it gives
/// the value for keeping, as text where a double can't hold it.
QString ColumnaExacta(const QString& columna);

} // namespace tolmo::data::access
