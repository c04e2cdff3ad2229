#pragma once
#include "data/valores.h"

namespace tolmo::data {

/// A value as it is written into a statement: NULL, a number, 0 or 1, or a text between quotes with
/// its quotes doubled, for MySQL its backslashes too.
QString Literal(const Valor& valor, bool mySql);

/// The same for a comparison with what a column holds. A number with decimals goes in the form that
/// makes the server compare as doubles: that is what the column's value was when it was read.
QString LiteralParaComparar(const Valor& valor, bool mySql);

} // namespace tolmo::data
