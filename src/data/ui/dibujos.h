#pragma once
#include "data/ui/iconos.h"
#include <QColor>

class QPainter;

namespace tolmo::data::ui {

/// The drawings are laid out on a square of this side.
constexpr double LadoDibujo = 16;

/// Draws on that square.
void Pinta(QPainter& pintor, Dibujo dibujo, const QColor& trazo, const QColor& acento);

/// The emblem of the program, on a square of side 1.
void PintaEmblema(QPainter& pintor);

} // namespace tolmo::data::ui
