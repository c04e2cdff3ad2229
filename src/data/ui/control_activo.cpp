#include "data/ui/control_activo.h"
#include <QVariant>

namespace tolmo::data::ui {
namespace {

/// Where a window keeps the control that was chosen for it.
constexpr const char* Propiedad = "ControlElegido";

} // namespace

QWidget* ControlDelLlamante(const QWidget& hija)
{
    const QWidget* llamante = hija.window()->parentWidget();
    return llamante ? ControlActivo(*llamante) : nullptr;
}

QWidget* ControlActivo(const QWidget& dentro)
{
    const QWidget* ventana = dentro.window();
    auto* elegido = qobject_cast<QWidget*>(ventana->property(Propiedad).value<QObject*>());
    return elegido ? elegido : ventana->focusWidget();
}

ControlElegido::ControlElegido(QWidget& control)
    : ventana_(control.window()), anterior_(ventana_->property(Propiedad))
{
    ventana_->setProperty(Propiedad, QVariant::fromValue<QObject*>(&control));
}

ControlElegido::~ControlElegido()
{
    if (ventana_)
        ventana_->setProperty(Propiedad, anterior_);
}

} // namespace tolmo::data::ui
