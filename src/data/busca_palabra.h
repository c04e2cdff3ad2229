#pragma once
#include <QLatin1StringView>
#include <QString>

namespace tolmo::data {

/// Searches in SQL text that ignore the case of the letters A to Z and of no others, so that no
/// position moves: the capitals of a text can be longer than the text ("ß" and "SS").

constexpr char16_t EnMayuscula(char16_t c)
{
    return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

/// True when `palabra`, in capitals, stands at `posicion`.
inline bool EstaEn(QStringView texto, qsizetype posicion, QLatin1StringView palabra)
{
    if (posicion + palabra.size() > texto.size())
        return false;
    const char16_t* sitio = texto.utf16() + posicion;
    for (qsizetype i = 0; i < palabra.size(); ++i)
        if (EnMayuscula(sitio[i]) != palabra[i].unicode())
            return false;
    return true;
}

/// First position of `palabra`, in capitals, from `desde` on; -1 when it is not there.
inline qsizetype BuscaPalabra(QStringView texto, QLatin1StringView palabra, qsizetype desde = 0)
{
    for (; desde + palabra.size() <= texto.size(); ++desde)
        if (EstaEn(texto, desde, palabra))
            return desde;
    return -1;
}

/// Replaces every `palabra`, from left to right; what was put in is not looked at again.
inline void ReemplazaPalabra(QString& texto, QLatin1StringView palabra, QLatin1StringView nueva)
{
    qsizetype hallada = BuscaPalabra(texto, palabra);
    while (hallada >= 0) {
        texto.replace(hallada, palabra.size(), nueva);
        hallada = BuscaPalabra(texto, palabra, hallada + nueva.size());
    }
}

} // namespace tolmo::data
