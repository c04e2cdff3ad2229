#pragma once
#include "data/recordset.h"

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// Removes the old pictures of an article, over the shop's rows of it, until the product changes
/// or the set ends. Only with the article photo flag.
void QuitaImagenes(Corrida& corrida, const Articulo& articulo, data::Recordset& productos);

/// Writes the rows of the article's pictures and puts their files on the list of uploads. Only
/// with the article photo flag. A picture keeps the position of its column, gaps included.
void AnadeImagenes(Corrida& corrida, const Articulo& articulo);

/// Writes the rows of the picture of an option value and puts its file on the list of uploads.
/// The caller has looked at the flag and at what the article has already.
/// \param ruta local path of the picture
/// \param k ordinal of the value's category, from 1
/// \returns the picture's id in the shop
QString AnadeImagenDeValor(Corrida& corrida, const Articulo& articulo, const QString& ruta, int k);

} // namespace tolmo::sync
