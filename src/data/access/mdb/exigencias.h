#pragma once
#include "data/access/mdb/definicion.h"
#include <memory>

namespace tolmo::data::access::mdb {

/// A rule that values have to keep, an expression, and what to say of one that doesn't; both may be
/// empty.
struct ReglaDeValores {
    QString expresion{};
    QString aviso{};
};

/// What Access keeps beside the definition of a column and asks of its values.
struct ExigenciasDeColumna {
    bool obligatoria = false;
    bool admiteVacio = true;  ///< a text of no characters
    QString predeterminado{}; ///< an expression; empty for none
    ReglaDeValores regla{};
};

struct ExigenciasDeTabla {
    std::vector<ExigenciasDeColumna> columnas{}; ///< in the order of the definition
    ReglaDeValores regla{};                      ///< of whole rows
};

/// Reads what is asked of the rows of a table.
/// \throws ErrorMdb when the properties of the table aren't coherent
ExigenciasDeTabla LeeExigencias(const std::shared_ptr<Paginas>& paginas,
                                const Definicion& definicion);

} // namespace tolmo::data::access::mdb
