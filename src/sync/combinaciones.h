#pragma once

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// Removes all combinations of an article that the shop had already.
void BorraCombinaciones(Corrida& corrida, const Articulo& articulo);

/// Writes one combination for every member of the cross product of the article's values.
void EscribeCombinaciones(Corrida& corrida, const Articulo& articulo);

} // namespace tolmo::sync
