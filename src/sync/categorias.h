#pragma once

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// Takes the article out of all its categories.
void BorraCategorias(Corrida& corrida, const Articulo& articulo);

/// The link to the default category, unless that is empty.
void EnlazaCategoria(Corrida& corrida, const Articulo& articulo);

/// The link to the shop's home category for a favourite.
void EnlazaInicio(Corrida& corrida, const Articulo& articulo);

/// A link for each alternative family that the shop knows. Nothing prevents a link that stands
/// already: the server reports it.
void EnlazaFamiliasAlternativas(Corrida& corrida, const Articulo& articulo);

} // namespace tolmo::sync
