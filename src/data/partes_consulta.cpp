#include "data/partes_consulta.h"
#include "data/plantilla.h"
#include "data/valores.h"
#include <array>

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla SqlOrdenada(u"{consulta} order by {orden}");
constexpr Plantilla SqlCondiciones(u"({una}) AND ({otra})");
// clang-format on

constexpr std::array<QLatin1StringView, 4> Palabras{
    QLatin1StringView(" FROM "), QLatin1StringView(" WHERE "), QLatin1StringView(" GROUP BY "),
    QLatin1StringView(" ORDER BY ")};

/// The place of a word of the outer level, from `desde` on, or -1.
qsizetype Busca(const QString& sql, QLatin1StringView palabra, qsizetype desde)
{
    int fondo = 0;
    QChar comilla;
    for (qsizetype p = desde; p < sql.size(); ++p) {
        const QChar c = sql[p];
        if (!comilla.isNull()) {
            if (c == comilla)
                comilla = QChar();
        } else if (c == u'\'' || c == u'"') {
            comilla = c;
        } else if (c == u'(') {
            ++fondo;
        } else if (c == u')') {
            --fondo;
        } else if (fondo == 0 && QStringView(sql).mid(p).startsWith(palabra, Qt::CaseInsensitive)) {
            return p;
        }
    }
    return -1;
}

QString UnePartes(const PartesConsulta& partes)
{
    QString sql = partes.seleccion;
    const auto anade = [&sql](QLatin1StringView palabra, const QString& parte) {
        if (!parte.isEmpty())
            sql += palabra + parte;
    };
    anade(Palabras[0], partes.tabla);
    anade(Palabras[1], partes.condicion);
    anade(Palabras[2], partes.grupo);
    anade(Palabras[3], partes.orden);
    return sql;
}

} // namespace

PartesConsulta ParteConsulta(const QString& sql)
{
    PartesConsulta partes;
    const std::array<QString*, 4> destinos{&partes.tabla, &partes.condicion, &partes.grupo,
                                           &partes.orden};
    QString* destino = &partes.seleccion;
    qsizetype desde = 0;
    for (std::size_t i = 0; i < Palabras.size(); ++i) {
        const qsizetype p = Busca(sql, Palabras[i], desde);
        if (p < 0)
            continue;
        *destino = Recorta(sql.mid(desde, p - desde));
        destino = destinos[i];
        // The blank behind a word may be the one in front of the next.
        desde = p + Palabras[i].size() - 1;
    }
    *destino = Recorta(sql.mid(desde));
    return partes;
}

QString ConOrden(const QString& sql, const QString& orden)
{
    const qsizetype p = Busca(sql, Palabras[3], 0);
    return SqlOrdenada({{"consulta", p < 0 ? sql : sql.left(p)}, {"orden", orden}});
}

QString ConCondicion(const QString& sql, const QString& condicion)
{
    if (condicion.isEmpty())
        return sql;
    PartesConsulta partes = ParteConsulta(sql);
    partes.condicion = partes.condicion.isEmpty()
                           ? condicion
                           : SqlCondiciones({{"una", partes.condicion}, {"otra", condicion}});
    return UnePartes(partes);
}

} // namespace tolmo::data
