#pragma once
#include <string_view>

namespace tolmo::data::access {

/// Takes the first character off a text in UTF-8; a byte that belongs to none counts as itself.
inline char32_t TomaCaracter(std::string_view& texto)
{
    const auto byte = [&texto](std::size_t i) { return static_cast<unsigned char>(texto[i]); };
    const unsigned char primero = byte(0);
    const std::size_t largo = primero < 0xC2   ? 1
                              : primero < 0xE0 ? 2
                              : primero < 0xF0 ? 3
                              : primero < 0xF5 ? 4
                                               : 1;
    if (largo == 1 || largo > texto.size()) {
        texto.remove_prefix(1);
        return primero;
    }
    char32_t caracter = primero & (0xFFU >> (largo + 1));
    for (std::size_t i = 1; i < largo; ++i)
        caracter = caracter << 6 | (byte(i) & 0x3FU);
    texto.remove_prefix(largo);
    return caracter;
}

} // namespace tolmo::data::access
