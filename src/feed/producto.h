#pragma once
#include <QString>

namespace tolmo::data {
class Recordset;
}

namespace tolmo::feed {
struct Documento;

/// Writes the block of one product: the article that the row set stands on, or a combination of it
/// when there are suffixes. The pictures are looked up in the shop by the article's own code.
/// \param incremento what the combination adds to the price
/// \throws data::ErrorEjecucion (3265) for a field of the configuration that the row doesn't have,
///         an empty name of the sector's or the price's included; (13) for a price that isn't a
///         number, where one that is empty counts 0
/// \throws data::FinDePrograma after a failed statement
void GeneraProducto(Documento& documento, const QString& sufijoCodigo, const QString& sufijoTitulo,
                    double incremento, const data::Recordset& articulo);

} // namespace tolmo::feed
