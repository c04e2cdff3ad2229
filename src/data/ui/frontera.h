#pragma once
#include "data/puertos.h"
#include <functional>

namespace tolmo::data::ui {

/// Ends the process at once with this exit status. No window is unloaded and nothing is undone:
/// the temporary table, the batch on disk and the log stay as they are.
[[noreturn]] void TerminaProceso(int codigo);

/// Runs what a slot does. No exception may travel through the event loop, so an error ends the
/// process here with status 1: in silence when its boxes were shown before (FinDePrograma), with
/// the box "ERROR: " and its description for all others.
void EnFrontera(Avisos& avisos, const std::function<void()>& accion);

} // namespace tolmo::data::ui
