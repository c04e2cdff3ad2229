#pragma once
#include "data/proveedor.h"
#include <functional>
#include <optional>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// The condition of a grid's bar, or one that is always true.
QString CondicionDeGrid(const QString& filtro);

/// The values of a category of an article under the filter of the grid's bar.
QString SqlLlenaGridVal(const QString& filtro, const QString& CodArticulo,
                        const QString& CodCategoria);

/// The number of the next value by hand: one more than the highest of the whole table, or 1.
/// \throws data::FinDePrograma
double SiguienteId(data::Programa& programa);

/// What a new row of the values begins with: its article, its category, the next number and zeros.
/// \throws data::FinDePrograma
data::Cambios ValorNuevo(data::Programa& programa, const QString& CodArticulo,
                         const QString& CodCategoria);

/// A value that was accepted.
struct ValorTecleado {
    QString valor{};       ///< in capitals; empty becomes a Null
    data::Cambios otras{}; ///< what its row takes besides
};

/// Checks the text that was typed for a value of a category. A new row also gets what
/// ValorNuevo gives.
/// \returns nothing, after a message, for a value that the category doesn't have
/// \throws data::FinDePrograma
std::optional<ValorTecleado> CompruebaValor(data::Programa& programa, const QString& CodArticulo,
                                            const QString& CodCategoria, const QString& texto,
                                            bool filaNueva);

/// The text as it goes into a column of the values' grid: that of an increment of price becomes
/// its number. PESO stays as it was typed.
QString TextoDeColumna(const QString& columna, const QString& texto);

/// The increments of price of a row that hold no number, as the zeros that they become when any
/// column of the row is changed. `valor` gives the row's value of a column.
data::Cambios IncrementosVacios(const std::function<data::Valor(const QString&)>& valor);

/// What goes before a value of an article goes: the management program's components and
/// operations of it.
/// \throws data::FinDePrograma
void BorraComponentesDeValor(data::Programa& programa, const QString& CodArticulo,
                             const QString& CodCategoria, const QString& valor,
                             const data::Valor& id);

/// What the window shows beside the grid of the current value.
struct DetalleValor {
    QString descripcion{}; ///< of the option; empty when the master doesn't have it
    QString Foto{};
    bool operator==(const DetalleValor&) const = default;
};

/// \returns nothing for a value that the article doesn't have
/// \throws data::FinDePrograma
std::optional<DetalleValor> LeeDetalleValor(data::Programa& programa, const QString& CodArticulo,
                                            const QString& CodCategoria, const QString& valor);

} // namespace tolmo::configurator
