#pragma once
#include "data/recordset.h"
#include <QAbstractButton>
#include <QLineEdit>

namespace tolmo::data::ui {

/// Hides what stands in a box behind dots, but while `boton`, which can be checked, is pressed.
void RevelaCon(QAbstractButton& boton, QLineEdit& clave);

/// How many characters may be typed for a column of the rows; 0 when it sets no limit.
int AnchoDe(const Recordset& filas, const QString& columna);

/// Lets the boxes of a card take no more than the columns of their Tags hold. A column without a
/// declared width sets no limit, and a text that stands in a box already is never cut.
void LimitaAnchos(QWidget& ventana, const Recordset& filas);

} // namespace tolmo::data::ui
