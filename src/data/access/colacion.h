#pragma once
#include <QString>
#include <optional>
#include <string_view>

struct sqlite3;

namespace tolmo::data::access {

/// Name of the collation in the schema of a database.
constexpr const char* Colacion = "KOV";

/// The order of texts: letters first and without regard to case, then accents ("ñ" after "n"),
/// then what is ignored at first (hyphens, apostrophes, controls). Blanks at the end don't count.
/// The codes are those of the indexes of Access files, so that both forms of the database agree.
/// \returns below 0, 0, above 0
int ComparaTextos(std::string_view a, std::string_view b);
int ComparaTextos(const QString& a, const QString& b);

/// The bounds, as [desde, hasta), of all texts that begin with `prefijo`; wider where the order
/// of letters can't tell (an accent), never narrower.
struct Tramo {
    QString desde{};
    QString hasta{};
};
Tramo TramoDePrefijo(const QString& prefijo);
/// What the texts begin with that a bound `hasta` of TramoDePrefijo closes; nothing for any other
/// text.
std::optional<QString> PrincipioHasta(const QString& hasta);

void RegistraColacion(sqlite3* base);

} // namespace tolmo::data::access
