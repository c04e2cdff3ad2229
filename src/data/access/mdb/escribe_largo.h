#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// A long value up to this length lies in the row itself, where the row has room for it.
constexpr qsizetype MayorEnLaFila = 64;

/// What a row holds of a long value that lies in it.
QByteArray LargoEnLaFila(const QByteArray& valor);

/// Puts a long value into the pages of its column. \returns what the row holds of it
/// \throws ErrorMdb when the column has no pages for its values
QByteArray EscribeLargo(PaginasEscribibles& paginas, const Columna& columna,
                        const QByteArray& valor);

/// Gives back what the value takes outside the row.
void BorraLargo(PaginasEscribibles& paginas, const Columna& columna, Bytes enLaFila);

} // namespace tolmo::data::access::mdb
