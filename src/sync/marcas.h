#pragma once

namespace tolmo::sync {
struct Corrida;

/// Rewrites the shop's manufacturers from the group of article classes that `PSGrupoMarcas` names.
/// What was entered in the shop by hand goes.
void ActualizaMarcas(Corrida& corrida);

} // namespace tolmo::sync
