#pragma once
#include <QString>

namespace tolmo::feed {

/// Takes the first link out of a text, its words with it; the others stay. The end of the link is
/// looked for from the head of the text and in small letters only: one that isn't found, or that
/// stands before the link, gives a text with a part of it twice. That is the rule; do not mend it.
QString QuitaUrl(const QString& texto);

} // namespace tolmo::feed
