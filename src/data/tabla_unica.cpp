#include "data/tabla_unica.h"
#include <QRegularExpression>

namespace tolmo::data {

QString TablaUnica(const QString& sql)
{
    constexpr auto Opciones =
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption;
    // Columns by their names only: behind an expression or an alias there is no column to write.
    static const QRegularExpression forma(
        QStringLiteral(R"(^\s*select\s+(?:\*|[\w`"\[\]]+(?:\s*,\s*[\w`"\[\]]+)*)\s+from\s+)"
                       R"([`"\[]?(\w+)[`"\]]?\s*(?:;?\s*$|\s(?:where|order\s+by|limit)\b))"),
        Opciones);
    // One of these in a literal costs a result that could have been changed, and no more.
    static const QRegularExpression mezcla(QStringLiteral(R"(\b(?:union|group\s+by|having)\b)"),
                                           Opciones);
    return mezcla.match(sql).hasMatch() ? QString() : forma.match(sql).captured(1);
}

} // namespace tolmo::data
