#include "feed/quita_url.h"

namespace tolmo::feed {

QString QuitaUrl(const QString& texto)
{
    const qsizetype inicio = texto.indexOf(QLatin1String("<a href"), 0, Qt::CaseInsensitive);
    if (inicio < 0)
        return texto;
    // Counted from 1, and 0 when it isn't there: what is kept is measured from this number.
    const qsizetype fin = texto.indexOf(QLatin1String("</a>")) + 1;
    return texto.left(inicio) + texto.right(texto.size() - fin - 3);
}

} // namespace tolmo::feed
