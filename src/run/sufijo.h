#pragma once
#include "data/puertos.h"

namespace tolmo::run {

/// The moment as twelve digits: year (its last two), month, day, hour, minute, second.
QString MarcaTiempo(const QDateTime& momento);

/// A random number of exactly `cifras` digits.
QString NumeroAleatorio(data::Reloj& reloj, int cifras);

/// Fourteen digits that tell this process's temporary table from those of others that work on the
/// same database.
QString NuevoSufijoTemporal(data::Reloj& reloj);

} // namespace tolmo::run
