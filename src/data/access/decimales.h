#pragma once

namespace tolmo::data::access {

/// The number of fewest decimal digits that a single holds in its place: 0.1, and not what its bits
/// are exactly. Both forms of the database give and keep singles so.
double DecimalDeSimple(float simple);

/// True when a single can hold the number, to its own precision.
bool CabeEnSimple(double numero);

} // namespace tolmo::data::access
