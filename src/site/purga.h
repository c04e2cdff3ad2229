#pragma once

namespace tolmo::batch {
class Registro;
}
namespace tolmo::data {
class Progreso;
}

namespace tolmo::site {
class Sitio;

/// Lets the shop's server delete the pictures that its database no longer knows: nine blocks, each
/// asked for again and again, without a pause, until the script says that it is done. A server
/// that never says so is asked for as long as the program runs.
void BorraImagenesObsoletas(Sitio& sitio, batch::Registro& registro, data::Progreso& progreso);

} // namespace tolmo::site
