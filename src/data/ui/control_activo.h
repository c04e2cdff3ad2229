#pragma once
#include <QPointer>
#include <QWidget>

namespace tolmo::data::ui {

/// The control that a window opened over another one writes its result into: the active control of
/// the window below. nullptr when `hija` has no window below, or that one has no active control.
QWidget* ControlDelLlamante(const QWidget& hija);

/// The active control of the window that `dentro` is or stands in: the one that a ControlElegido
/// names, else the one that has the focus in that window, or had it before another window took it.
QWidget* ControlActivo(const QWidget& dentro);

/// Makes a control the active one of its window for as long as this lives. It is for hidden
/// controls, which can't take the focus and yet receive what a child window gives back:
///
///     const ControlElegido elegido(*TxtFiltro);
///     constructor.exec();
class ControlElegido {
  public:
    explicit ControlElegido(QWidget& control);
    ~ControlElegido();
    ControlElegido(const ControlElegido&) = delete;
    ControlElegido& operator=(const ControlElegido&) = delete;

  private:
    QPointer<QWidget> ventana_;
    QVariant anterior_;
};

} // namespace tolmo::data::ui
