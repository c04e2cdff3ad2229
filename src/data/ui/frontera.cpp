#include "data/ui/frontera.h"
#include "data/errores.h"
#include <cstdio>
#include <cstdlib>

namespace tolmo::data::ui {

void TerminaProceso(int codigo)
{
    std::fflush(nullptr);
    // Not std::exit: it would take static objects away under windows that still stand.
    std::_Exit(codigo);
}

void EnFrontera(Avisos& avisos, const std::function<void()>& accion)
{
    try {
        accion();
    } catch (const FinDePrograma&) {
        TerminaProceso(1);
    } catch (const std::runtime_error& error) {
        avisos.Muestra(QStringLiteral("ERROR: ") + QString::fromUtf8(error.what()), estilo::Error);
        TerminaProceso(1);
    }
}

} // namespace tolmo::data::ui
