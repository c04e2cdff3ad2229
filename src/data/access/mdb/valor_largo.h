#pragma once
#include "data/access/mdb/paginas.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// What a row holds of a memo or an OLE value.
struct CabeceraLarga {
    enum class Forma { EnLaFila, Sencilla, Encadenada };
    Forma forma = Forma::EnLaFila;
    quint32 largo = 0; ///< bytes
    Puntero primera{}; ///< of the pieces; none when the value is in the row
};

/// Bytes of that header; the data follow when they are in the row.
constexpr std::size_t TamCabeceraLarga = 12;

/// \throws ErrorMdb for an unknown form
CabeceraLarga LeeCabeceraLarga(Bytes enLaFila);

/// The whole value, up to its first `limite` bytes.
/// \throws ErrorMdb when a piece is missing
QByteArray LeeValorLargo(Paginas& paginas, Bytes enLaFila,
                         std::size_t limite = static_cast<std::size_t>(-1));

} // namespace tolmo::data::access::mdb
