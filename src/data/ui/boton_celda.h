#pragma once
#include <QPainter>
#include <QRect>
#include <QStyle>

namespace tolmo::data::ui {

/// The button at the end of a grid's cell that opens the window which its value is chosen in.
QRect SitioDeBoton(const QRect& celda);
void PintaBoton(QPainter& pintor, const QStyle& estilo, const QPalette& paleta, const QRect& celda,
                bool pulsado);

} // namespace tolmo::data::ui
