#pragma once

namespace tolmo::sync {
struct Corrida;

/// Removes from the shop every product whose `reference` is no published article's code: the
/// shop's own products vanish too, unless they bear one. Hands over a batch each 100 products
/// examined; where nothing was written since the last one there is none.
void RetiraArticulos(Corrida& corrida);

} // namespace tolmo::sync
