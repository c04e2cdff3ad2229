#pragma once
#include <QString>

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// True for the sentence form with the column reduction_tax: a newer schema, or one of the four
/// versions of the shop that already had the column.
bool ConColumnaImpuesto(const QString& VersionTienda, int PS_VERSION);

/// Four chained percentages as one: 100 less 100 times the product of what each leaves.
double DescuentoCombinado(double dto1, double dto2, double dto3, double dto4);

/// Writes the five tariffs and the offers of an article as specific prices.
void EscribePrecios(Corrida& corrida, const Articulo& articulo);

/// The DELETE that goes before them when the article was in the shop already.
void BorraPrecios(Corrida& corrida, const Articulo& articulo);

} // namespace tolmo::sync
