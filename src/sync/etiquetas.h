#pragma once
#include <QStringList>

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// Cuts a list at its commas, each tag without the blanks at its ends.
/// The last character is read and never kept: "rojo,azul" gives "rojo" and "azu", and only a list
/// closed by a comma keeps its last tag whole. That is the rule; do not mend it here.
QStringList ParteEtiquetas(const QString& texto);

/// Replaces the tags of the article in every language: one DELETE in the batch, then one link for
/// each tag. A tag that the shop lacks is created there at once, outside the batch.
void EscribeEtiquetas(Corrida& corrida, const Articulo& articulo);

} // namespace tolmo::sync
