#pragma once
#include <QString>
#include <QStringList>

namespace tolmo::configurator {

/// The query for the categories that an article has values of, in the order of their codes. An
/// article without rows has no combinations.
QString SqlCategoriasDeArticulo(const QString& CodArticulo);

/// The query for the combinations of an article: one sub-select for each of its `categorias`,
/// joined without a condition, so that its rows are the cross product of the values, those of the
/// first category first. Beside their columns it gives CUANTASCAT, INC_PVP_COMBINA and
/// PESO_COMBINA, plain sums over the chosen values.
/// \param incremento column of PS_CONF_ART_VAL that the prices' increments come from
QString SqlCombinaciones(const QString& CodArticulo, const QStringList& categorias,
                         const QString& incremento);
/// The same for the increments of a price list, from 1.
QString SqlCombinaciones(const QString& CodArticulo, const QStringList& categorias, int tarifa);

/// The name under which a row of that query holds a column of category `k` (from 1) of `cuantas`:
/// T002.VALOR when there are several, and plain when there is one, as nothing clashes then.
QString ColumnaDeCombinacion(int k, int cuantas, const QString& columna);

} // namespace tolmo::configurator
