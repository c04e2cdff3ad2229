#pragma once
#include <QtGlobal>
#include <array>

namespace tolmo::data::access::mdb {

/// What a character adds to the key of a text.
struct CodigoTexto {
    enum class Clase : quint8 {
        Visible,      ///< codes, and for an accent an extra byte
        NoImprimible, ///< a code that counts only when all else is equal
        Ignorado
    };
    Clase clase = Clase::Ignorado;
    quint8 largo = 0; ///< of its codes
    std::array<quint8, 4> codigos{};
    quint8 extra = 0; ///< of an accent, or the code of what isn't printed
};

/// The orders of texts, by their number in a column.
enum class OrdenGeneral { Antiguo = 0, De2010 = 1 };

/// The codes of a character, or nullptr when they aren't known.
const CodigoTexto* CodigoDe(char16_t caracter, OrdenGeneral orden);

} // namespace tolmo::data::access::mdb
