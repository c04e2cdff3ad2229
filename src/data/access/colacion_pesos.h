#pragma once
#include <cstddef>

namespace tolmo::data::access {

/// What a character counts in the general order of Access texts: one or two codes of the first
/// level, an accent of the second, or, for what is ignored at first (hyphen, apostrophe, controls),
/// a code of the third. Upper and lower case share their codes.
struct Peso {
    unsigned char primero = 0;
    unsigned char segundo = 0;
    unsigned char acento = 0;
    unsigned char ignorado = 0;
};

/// The characters U+0000 to U+00FF.
extern const Peso PesosLatinos[256];

struct PesoSuelto {
    char32_t caracter = 0;
    Peso peso{};
};

/// The characters of Windows-1252 beyond U+00FF, by rising number.
constexpr std::size_t PesosSueltosTotales = 27;
extern const PesoSuelto PesosSueltos[PesosSueltosTotales];

} // namespace tolmo::data::access
