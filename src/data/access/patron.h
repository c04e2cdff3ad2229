#pragma once
#include <QString>
#include <string_view>

namespace tolmo::data::access {

/// The signs that stand for anything in a LIKE: "%" and "_" in the statements that come through a
/// connection; "*", "?", "#" (a digit) and lists in brackets in the text of a stored query.
enum class Comodines { Conexion, ConsultaGuardada };

/// True when the whole text fits the pattern, without regard to case; accents count.
bool CasaPatron(std::string_view texto, std::string_view patron, Comodines comodines);

/// The same for a pattern that is `principio` and then anything, as in LIKE CLAVE & '%'; faster
/// when `principio` has no such signs itself.
bool CasaPrincipio(std::string_view texto, std::string_view principio, Comodines comodines);

/// What stands before the first such sign.
QString PrincipioFijo(const QString& patron, Comodines comodines);

} // namespace tolmo::data::access
