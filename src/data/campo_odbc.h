#pragma once
#include "data/proveedor.h"

class QSqlField;

namespace tolmo::data {

/// A column of an ODBC result, with ADO's number for its kind.
Campo ComoCampo(const QSqlField& campo);

/// A field as the rest of the system knows it: one Null, whole numbers as int or qlonglong, others
/// as double or float, and no date that isn't one.
Valor ComoValor(const QVariant& leido, const Campo& campo);

/// True when the old value of a field can tell its row from others: what was read of a single, a
/// double or a long text isn't exactly what is held, and a date of zeros was read as a Null.
bool SirveParaReconocer(const Campo& campo, const Valor& valor);

} // namespace tolmo::data
