#pragma once

namespace tolmo::sync {
struct Corrida;

/// Publishes as cart rules the vouchers that are open, unsold and tied to no customer. It only
/// adds: one that the shop knows by its code is left as it is, and nothing is ever withdrawn.
void SincronizaValesDescuento(Corrida& corrida);

} // namespace tolmo::sync
