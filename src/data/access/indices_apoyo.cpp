#include "data/access/indices_apoyo.h"
#include "data/access/colacion.h"

namespace tolmo::data::access {
namespace {

QString Nombre(const QString& tabla, const QString& columna)
{
    return QStringLiteral("kov_apoyo_") + tabla + u'.' + columna;
}

QString NombreDisparador(const QString& apoyo, const char* cuando)
{
    return Identificador(apoyo + u'.' + QLatin1String(cuando));
}

} // namespace

QString NombreDeApoyo(const QString& tabla, const QString& columna)
{
    return Identificador(Nombre(tabla, columna));
}

void IndicesApoyo::Asegura(const QString& tabla, const QString& columna)
{
    const QString nombre = Nombre(tabla, columna);
    if (hechos_.contains(nombre))
        return;
    const QString apoyo = Identificador(nombre);
    const QString t = Identificador(tabla);
    const QString c = Identificador(columna);
    base_.Ejecuta(
        QStringLiteral(
            "CREATE TEMP TABLE %1 (clave TEXT COLLATE %2, fila INTEGER, PRIMARY KEY (clave, fila)) WITHOUT ROWID")
            .arg(apoyo, QLatin1String(Colacion)));
    base_.Ejecuta(
        QStringLiteral("INSERT INTO temp.%1 SELECT %2, rowid FROM main.%3 WHERE %2 IS NOT NULL")
            .arg(apoyo, c, t));
    const QString anade =
        QStringLiteral("INSERT INTO %1 SELECT new.%2, new.rowid WHERE new.%2 IS NOT NULL;")
            .arg(apoyo, c);
    const QString quita =
        QStringLiteral("DELETE FROM %1 WHERE clave = old.%2 AND fila = old.rowid;").arg(apoyo, c);
    const auto disparador = [&](const char* cuando, const QString& que) {
        base_.Ejecuta(QStringLiteral("CREATE TEMP TRIGGER %1 AFTER %2 ON main.%3 BEGIN %4 END")
                          .arg(NombreDisparador(nombre, cuando), QLatin1String(cuando), t, que));
    };
    disparador("INSERT", anade);
    disparador("DELETE", quita);
    disparador("UPDATE", quita + u' ' + anade);
    hechos_.insert(nombre);
}

void IndicesApoyo::Olvida()
{
    for (const QString& nombre : std::as_const(hechos_)) {
        for (const char* cuando : {"INSERT", "DELETE", "UPDATE"})
            base_.Ejecuta(QStringLiteral("DROP TRIGGER IF EXISTS temp.%1")
                              .arg(NombreDisparador(nombre, cuando)));
        base_.Ejecuta(QStringLiteral("DROP TABLE IF EXISTS temp.%1").arg(Identificador(nombre)));
    }
    hechos_.clear();
}

} // namespace tolmo::data::access
