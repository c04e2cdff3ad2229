#pragma once
#include "run/FrmPrincipal.h"

namespace tolmo::run {

/// The windows and engines of the program itself, on its databases and the company's shop.
/// The references must outlive them.
FrmPrincipal::Fabricas FabricasDelPrograma(data::Programa& programa, data::Escritorio& escritorio);

} // namespace tolmo::run
