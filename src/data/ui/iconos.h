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

/// How many colours a drawing has.
enum class Tinta {
    Una, ///< for menus, where the entry that is chosen stands on the colour of what is selected
    Dos, ///< some with a spot in the colour of what is selected
};

/// A line drawing in the colour of the texts on buttons: it reads in light and dark alike, and at
/// any size.
QIcon Icono(Dibujo dibujo, Tinta tinta = Tinta::Dos);

/// The program's own icon.
QIcon IconoPrograma();

} // namespace tolmo::data::ui
