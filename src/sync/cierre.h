#pragma once

namespace tolmo::sync {
struct Corrida;

/// The closing steps of every run but that of vouchers: search indexes, old pictures, family
/// pictures, the user's final sentences, the shop's cache, attachments and article pictures.
void CierraCorrida(Corrida& corrida);

} // namespace tolmo::sync
