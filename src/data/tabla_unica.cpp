#include "data/tabla_unica.h"
#include <QRegularExpression>

namespace tolmo::data {

QString TablaUnica(const QString& sql)
{
    // Columns by their names only: behind an expression or an alias there is no column to write.
    static const QRegularExpression forma(
        QStringLiteral(R"(^\s*select\s+(?:\*|[\w`"\[\]]+(?:\s*,\s*[\w`"\[\]]+)*)\s+from\s+)"
                       R"([`"\[]?(\w+)[`"\]]?\s*(?:;?\s*$|\s(?:where|order\s+by|limit)\b))"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return forma.match(sql).captured(1);
}

} // namespace tolmo::data
