#include "sync/url_amigable.h"
#include <utility>

namespace tolmo::sync {
namespace {

/// In this order. Only "à" of the grave vowels is handled, and "ñ" on purpose isn't: it is dropped
/// later like any other letter outside "a" to "z".
constexpr std::pair<char16_t, char16_t> Reemplazos[] = {
    {u'á', u'a'}, {u'é', u'e'}, {u'í', u'i'}, {u'ó', u'o'}, {u'ú', u'u'},
    {u'à', u'a'}, {u' ', u'-'}, {u'&', u'-'}, {u'´', u'-'}, {u'+', u'-'},
    {u'*', u'-'}, {u'%', u'-'}, {u'.', u'-'}, {u',', u'-'}, {u';', u'-'},
    {u'/', u'-'}, {u'(', u'-'}, {u')', u'-'}, {u'"', u'-'}, {u'\'', u'-'}};

QChar Reemplaza(QChar caracter)
{
    for (const auto& [viejo, nuevo] : Reemplazos)
        if (caracter == viejo)
            return nuevo;
    return caracter;
}

bool SeConserva(QChar caracter)
{
    return (caracter >= u'a' && caracter <= u'z') || (caracter >= u'0' && caracter <= u'9') ||
           caracter == u'-';
}

} // namespace

QString UrlAmigable(const QString& Cadena)
{
    QString url;
    url.reserve(Cadena.size());
    for (const QChar caracter : Cadena.toLower()) {
        const QChar nuevo = Reemplaza(caracter);
        if (SeConserva(nuevo))
            url += nuevo;
    }
    return url;
}

QString CadenaDirImage(const QString& Cadena)
{
    QString carpeta;
    carpeta.reserve(Cadena.size() * 2);
    for (const QChar caracter : Cadena) {
        carpeta += caracter;
        carpeta += u'/';
    }
    carpeta.chop(1);
    return carpeta;
}

} // namespace tolmo::sync
