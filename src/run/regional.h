#pragma once

namespace tolmo::run {

/// Makes numbers reach texts with "." as decimal symbol and no thousands separator, whatever the
/// machine's settings: those texts go straight into sentences. Only this process is changed.
void PuntoComaRegional();

} // namespace tolmo::run
