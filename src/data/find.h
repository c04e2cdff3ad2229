#pragma once
#include "data/recordset.h"
#include "data/sentido.h"

namespace tolmo::data {

/// Looks in an open record set for the nearest row that fits a criterion, from the current row on.
/// `criterio` is one comparison: a column, an operator (=, <>, <, >, <=, >=, LIKE) and a value,
/// either as it is or between quotes, "'" then doubled; a "*" or "%" in the value of LIKE stands
/// for any text. Texts are compared without regard to case. A Null fits nothing.
/// `saltar` rows are passed over first: with 1 the current row isn't looked at.
/// \returns false when no row fits; the record set then stands at its end, or before its first row
/// \throws ErrorDatos 3001 for a criterion that doesn't read as one, or a value that its column
/// can't be compared with; 3265 for a column that isn't there
bool Find(Recordset& filas, const QString& criterio, int saltar = 0,
          Sentido sentido = Sentido::Siguiente);

} // namespace tolmo::data
