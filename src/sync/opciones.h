#pragma once
#include <QString>

namespace tolmo::sync {

/// What a run is for; the letters are "T", "A", "F", "S" and "V".
enum class Proceso { Todo, Articulos, Familias, Stock, Vales };

/// What a run was started with: the arguments of its button or run mode, and the boxes of the
/// window that it looks at while it works.
struct Opciones {
    Proceso proceso = Proceso::Todo;
    QString desde{}; ///< first article code of the range; used with Articulos only
    QString hasta{}; ///< last one
    bool fotosFam = false;
    bool fotosArt = false;
    bool adjuntos = false;
    bool stock = false;
    bool familias = true;        ///< ChkTodosFam: the family load of Todo
    bool eliminaEnTodo = true;   ///< ChkTodosArticulosNoEstan: the withdrawal of Todo
    bool eliminaEnRango = false; ///< ChkEliminarArticNoEstan: the withdrawal of Articulos
    bool regeneraIndices = true; ///< ChkRegenerarIndicesBusqueda
};

} // namespace tolmo::sync
