#pragma once
#include <QString>

namespace tolmo::sync {

/// The text for the shop's link_rewrite columns: small letters, some signs as "-", and nothing but
/// "a" to "z", "0" to "9" and "-". Runs of "-" stay, other letters vanish, "ñ" included; the result
/// may be empty.
QString UrlAmigable(const QString& Cadena);

/// The folder of a picture under "img/p/", one level a character: "1234" gives "1/2/3/4".
QString CadenaDirImage(const QString& Cadena);

} // namespace tolmo::sync
