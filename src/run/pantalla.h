#pragma once
#include "run/linea_ordenes.h"

namespace tolmo::run {

/// The command line and the environment of this process. The arguments are joined by one blank and
/// never split again; none of them is the toolkit's.
Entorno LeeEntorno(int argc, const char* const* argv);

/// False where nobody can see a window: neither DISPLAY nor WAYLAND_DISPLAY is set.
bool HayPantalla();

/// Makes the toolkit work without a screen. To be called before the application is made.
void TrabajaSinPantalla();

/// Gives the process a UTF-8 locale when it was started with none, as schedulers do; the toolkit
/// would do the same with a warning on each run. To be called before the application is made.
void AseguraUtf8();

} // namespace tolmo::run
