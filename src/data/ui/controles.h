#pragma once
#include "data/valores.h"
#include <QWidget>

namespace tolmo::data::ui {

/// Selects the whole text of a text box, so that what is typed replaces it. Other controls are left
/// as they are.
void SeleccionaTexto(QWidget* control);

/// From now on selects the text of each text box in `ventana` as the focus enters it.
void SeleccionaAlEntrar(QWidget& ventana);

/// Writes a value into a control by its kind: the text of a text box, the position in the list of a
/// combo box, the tick of a check box. Without a value the control is cleared.
/// A combo box takes a number as the position (from 0) and any other value as the text of the entry
/// that is chosen; a text that no entry has goes into its edit field, where it has one.
/// Other kinds of control, and nullptr, are left as they are.
void PonValorControl(QWidget* control, const Valor& valor = {});

} // namespace tolmo::data::ui
