#pragma once
#include "data/valores.h"

namespace tolmo::data {

/// The engine that a text is meant for.
enum class Dialecto { Access, SqlServer, MySql };

/// "ACCESS", "SQLSERVER", "MYSQL".
QString NombreDialecto(Dialecto dialecto);

/// The kind of management database that this program was built for: Access or SqlServer.
Dialecto DialectoDeConstruccion();

/// Rewrites a text of the Access dialect for `dialecto`. It works on the raw text with no parser:
/// literals and names are not protected, and callers rely on it. "ACCESS" is the identity.
/// \throws ErrorTraduccion when a rewrite doesn't find its place (a "&" without any bracket, a
/// "TOP" without a blank behind its number, a "CSTR(" that isn't closed)
QString TraduceSql(Dialecto dialecto, const QString& sql);

/// A date literal for `dialecto`. A value that is no date goes in as its text, but for MySql, which
/// formats it as a date first; a Null gives the empty text between the quotes.
QString FechaSql(Dialecto dialecto, const Valor& valor);

} // namespace tolmo::data
