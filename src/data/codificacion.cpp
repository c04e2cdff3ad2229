#include "data/codificacion.h"
#include <algorithm>
#include <array>

namespace tolmo::data {
namespace {

constexpr unsigned PrimeroPropio = 0x80;
constexpr unsigned PrimeroComun = 0xA0;
constexpr unsigned UltimoComun = 0xFF;

// The code points of bytes 0x80 to 0x9F; all other bytes are their own code point. The free ones
// (81, 8D, 8F, 90 and 9D) stand for the control of their number.
constexpr std::array<char16_t, PrimeroComun - PrimeroPropio> Propios = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char AByte(char16_t caracter)
{
    if (caracter < PrimeroPropio || (caracter >= PrimeroComun && caracter <= UltimoComun))
        return static_cast<char>(caracter);
    const auto* hallado = std::find(Propios.begin(), Propios.end(), caracter);
    if (hallado == Propios.end())
        return '?';
    return static_cast<char>(PrimeroPropio + static_cast<unsigned>(hallado - Propios.begin()));
}

} // namespace

QByteArray AWindows1252(const QString& texto)
{
    QByteArray bytes(texto.size(), Qt::Uninitialized);
    char* destino = bytes.data();
    const QChar* const fin = texto.constEnd();
    for (const QChar* c = texto.constBegin(); c != fin; ++c) {
        *destino++ = AByte(c->unicode());
        // A character beyond the first 65,536 takes two places in the text and is one "?".
        if (c->isHighSurrogate() && c + 1 != fin && c[1].isLowSurrogate())
            ++c;
    }
    bytes.truncate(destino - bytes.constData());
    return bytes;
}

QString DesdeWindows1252(const QByteArray& bytes)
{
    QString texto(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), texto.begin(), [](char byte) {
        const auto numero = static_cast<unsigned char>(byte);
        const bool propio = numero >= PrimeroPropio && numero < PrimeroComun;
        return QChar(propio ? Propios[numero - PrimeroPropio] : char16_t{numero});
    });
    return texto;
}

} // namespace tolmo::data
