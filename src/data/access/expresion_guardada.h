#pragma once
#include "data/access/arbol.h"

namespace tolmo::data::access {

/// Reads the default value of a column as Access keeps it: an expression without fields, with or
/// without "=" in front.
/// \throws ErrorSql for what isn't understood
PExpresion LeePredeterminado(const QString& texto);

/// Reads a rule of values as Access keeps it. That of a column, `campo`, may leave it unnamed where
/// it is compared: ">0 And <100", "Like \"A*\"", "\"M\" Or \"F\"". That of a table names its
/// fields; it has no `campo`. \throws ErrorSql for what isn't understood
PExpresion LeeRegla(const QString& texto, const QString& campo = {});

} // namespace tolmo::data::access
