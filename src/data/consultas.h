#pragma once
#include "data/errores.h"
#include "data/programa.h"

namespace tolmo::data {

/// Replaces every "ps_" by the prefix of the shop's tables, everywhere and in small letters only;
/// the word "ps_version_db" is a value of the shop's configuration and keeps its name.
QString PonPrefijo(QString sql, const QString& prefijo);

/// Opens a row set that can be changed. `sql` is rewritten in place: translated for the active
/// dialect and given the shop's prefix. Any failure shows its boxes and ends the program.
/// Without a connection the shop's is meant.
/// \throws FinDePrograma
Recordset AbreConsulta(Programa& programa, QString& sql, Conexion& conexion,
                       Cursor cursor = Cursor::Dinamico, Bloqueo bloqueo = Bloqueo::Optimista);
Recordset AbreConsulta(Programa& programa, QString& sql);

/// The same for a row set that is only read.
Recordset AbreLectura(Programa& programa, QString& sql, Conexion& conexion,
                      Cursor cursor = Cursor::Estatico, Bloqueo bloqueo = Bloqueo::SoloLectura);
Recordset AbreLectura(Programa& programa, QString& sql);

/// Runs a statement. It is translated in place but gets no prefix: a caller that writes to a table
/// of the shop puts the prefix itself. \returns rows affected
/// \throws FinDePrograma
long long EjecutaSql(Programa& programa, QString& sql, Conexion& conexion);
long long EjecutaSql(Programa& programa, QString& sql);

/// The box of an error, by its number: 3421 with `detalle`, nothing for a cancelled dialog, the
/// number, description and module for all others.
void MuestraError(Avisos& avisos, const ErrorDatos& error,
                  const QString& detalle = QStringLiteral(" "));

/// Shows the error and the statement with the notice that the program closes, and ends it.
[[noreturn]] void CierraPrograma(Programa& programa, const QString& sql, const ErrorDatos& error);

} // namespace tolmo::data
