#include "data/unidades.h"
#include <QStringList>

namespace tolmo::data {
namespace {

QString Limpia(const QString& ruta)
{
    QString limpia = ruta.trimmed().replace(u'\\', u'/');
    while (limpia.size() > 1 && limpia.endsWith(u'/'))
        limpia.chop(1);
    return limpia;
}

} // namespace

std::vector<Unidad> UnidadesMapeadas()
{
    std::vector<Unidad> unidades;
    const QString texto = qEnvironmentVariable("KOV_UNIDADES");
    for (const QString& par : texto.split(u';', Qt::SkipEmptyParts)) {
        const qsizetype igual = par.indexOf(u'=');
        if (igual > 0)
            unidades.push_back({Limpia(par.left(igual)), Limpia(par.mid(igual + 1))});
    }
    return unidades;
}

} // namespace tolmo::data
