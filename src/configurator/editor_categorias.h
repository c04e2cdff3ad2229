#pragma once
#include "data/proveedor.h"
#include <optional>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// The categories of an article under the filter of the grid's bar.
QString SqlLlenaGridCat(const QString& filtro, const QString& CodArticulo);

/// A category code that was accepted.
struct CategoriaTecleada {
    QString codigo{};        ///< in capitals
    data::Cambios otras{};   ///< what its row takes besides: article and description
    bool recuperada = false; ///< its options have become values: their grid is to be filled
};

/// Checks the code that was typed for a category of an article, and asks whether all options of
/// the category become values of the article at once.
/// \returns nothing, after a message, for a code that the master doesn't have
/// \throws data::FinDePrograma
std::optional<CategoriaTecleada>
CompruebaCategoria(data::Programa& programa, const QString& CodArticulo, const QString& texto);

/// Gives an article all options of a category as values, each ordered by its own code. As the code
/// stands there as a number, one that isn't a number is refused by the engine, which ends the
/// program. \returns false when the article has values of that category already
/// \throws data::FinDePrograma
bool InsertaValores(data::Programa& programa, const QString& CodArticulo,
                    const QString& CodCategoria);

/// What goes before a category of an article goes: its values, and the management program's
/// components and operations of them.
/// \throws data::FinDePrograma
void BorraValoresDeCategoria(data::Programa& programa, const QString& CodArticulo,
                             const QString& CodCategoria);

} // namespace tolmo::configurator
