#pragma once
#include <QIcon>

namespace tolmo::data::ui {

/// What buttons and menus show.
enum class Dibujo {
    // A browse window.
    Primero,
    Ultimo,
    Filtro,
    BuscaAnterior,
    BuscaSiguiente,
    // The main window.
    Sincroniza,
    Configura,
    Anuncia,
    Atributos,
    Programa,
    Usuarios,
    Registro,
    Sale,
    // A status list.
    Abajo,
};

/// A line drawing in the colour of the texts on buttons, some with a spot in the colour of what is
/// selected: it reads in light and dark alike, and at any size.
QIcon Icono(Dibujo dibujo);

/// The program's own icon.
QIcon IconoPrograma();

} // namespace tolmo::data::ui
