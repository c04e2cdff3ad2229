#pragma once
#include <QString>

namespace tolmo::data {

/// The rewrites of TraduceSql, one function for each engine; both work on raw text.

/// A rewrite that does not find its place leaves the text as far as it came.
QString TraduceSqlServer(QString sql);

/// \throws ErrorTraduccion when a "TOP", a "CSTR(" or a "&" doesn't find its place
QString TraduceMySql(QString sql);

} // namespace tolmo::data
