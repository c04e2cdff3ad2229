#pragma once
#include "data/ficha.h"
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

/// The controls of a card for InsertaFicha and ActualizaFicha, in the order in which the window
/// made them: the text boxes, combo boxes and check boxes whose dynamic property "Tag" names a
/// column.
std::vector<CampoFicha> CamposFicha(const QWidget& ventana);

/// Writes the current row of a record set into those controls, each by the column of its Tag.
/// \throws ErrorDatos 3265 for a Tag that is no column
void PonFicha(QWidget& ventana, const Recordset& filas);

/// Clears those controls.
void LimpiaFicha(QWidget& ventana);

} // namespace tolmo::data::ui
