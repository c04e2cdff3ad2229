#include "run/regional.h"
#include <QLocale>
#include <clocale>

namespace tolmo::run {

void PuntoComaRegional()
{
    QLocale::setDefault(QLocale::c());
    // The toolkit takes the user's settings for the C library too, and drivers print with it.
    std::setlocale(LC_NUMERIC, "C");
}

} // namespace tolmo::run
