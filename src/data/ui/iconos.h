#pragma once
#include <QIcon>

namespace tolmo::data::ui {

/// What the buttons of a browse window show.
enum class Dibujo { Primero, Ultimo, Filtro, BuscaAnterior, BuscaSiguiente };

/// A line drawing in the colour of the texts on buttons, so that it reads in light and dark alike.
QIcon Icono(Dibujo dibujo);

} // namespace tolmo::data::ui
