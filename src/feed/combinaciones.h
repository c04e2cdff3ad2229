#pragma once
#include <QStringList>

namespace tolmo::data {
class Recordset;
}

namespace tolmo::feed {
struct Documento;

/// The column of the configurator's increments that goes with a price: the one without a number for
/// "PVP1", and for all others the one that the last character of the price's name tells.
QString ColumnaDeIncremento(const QString& CampoPrecio);

/// Writes one product for each combination of the article's `categorias`, numbered from 1.
/// \throws as GeneraProducto does
void GeneraCombinaciones(Documento& documento, const data::Recordset& articulo,
                         const QStringList& categorias);

} // namespace tolmo::feed
