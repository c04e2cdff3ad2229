#pragma once
#include "data/proveedor.h"

namespace tolmo::data {

/// The value that a text typed into a grid has in its column; an empty text is Null, or False where
/// the column is a boolean. A number may have a decimal comma. `rotulo` is the column's name in the
/// message.
/// \throws ErrorDatos 3421 with what is wrong: a text longer than the column, a text where a
/// number, a whole number, a date or a yes or no is wanted
Valor ValorDeColumna(const Campo& campo, const QString& rotulo, const QString& texto);

/// A number that was typed with a decimal comma as the databases write it; any other text as it is.
QString NumeroTecleado(const QString& texto);

} // namespace tolmo::data
