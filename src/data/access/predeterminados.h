#pragma once
#include "data/access/esquema.h"
#include <QStringList>

namespace tolmo::data::access {

/// Adds to the columns and values of an INSERT, both ready for the engine, those columns that it
/// doesn't name and that have a default. A default that isn't understood leaves its column without
/// a value. \throws ErrorSql when the column needs one
void AnadePredeterminados(const Esquema& esquema, const TablaVista& tabla, QStringList& columnas,
                          QStringList& valores);

} // namespace tolmo::data::access
