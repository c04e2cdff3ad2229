#pragma once
#include <QString>

namespace tolmo::data {

/// The table of a query that shows rows of one table as they are ("SELECT * FROM t WHERE ..."),
/// without the marks around its name; empty for every other query.
QString TablaUnica(const QString& sql);

} // namespace tolmo::data
