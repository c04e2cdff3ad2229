#pragma once
#include <QString>

namespace tolmo::data {

/// A SELECT cut at the words " FROM ", " WHERE ", " GROUP BY " and " ORDER BY " of its outer level:
/// what stands between brackets or quotes is not looked at. A part that it lacks is empty.
struct PartesConsulta {
    QString seleccion{}; ///< "Select CODIGO,NOMBRE"
    QString tabla{};
    QString condicion{};
    QString grupo{};
    QString orden{};
};

PartesConsulta ParteConsulta(const QString& sql);

/// The same query in another order.
QString ConOrden(const QString& sql, const QString& orden);

/// The same query with a condition more; an empty one changes nothing.
QString ConCondicion(const QString& sql, const QString& condicion);

} // namespace tolmo::data
