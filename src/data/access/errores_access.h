#pragma once
#include "data/errores.h"

namespace tolmo::data::access {

/// A statement that is refused, in words for the box that closes the program.
/// \throws ErrorSql always
[[noreturn]] void Rechaza(const QString& descripcion);

/// The same, with the place in the statement's text, counted from 0, and told from 1.
/// \throws ErrorSql always
[[noreturn]] void RechazaEn(qsizetype posicion, const QString& descripcion);

/// A value that a column of an open record set can't take.
/// \throws ErrorSql always, with number 3421
[[noreturn]] void RechazaValor(const QString& descripcion);

} // namespace tolmo::data::access
