#include "data/access/mdb/nombres.h"
#include "data/access/mdb/errores_mdb.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr qsizetype MayorNombre = 64;

} // namespace

void CompruebaNombre(const QString& nombre)
{
    const auto prohibido = [](QChar c) {
        return c.unicode() < 0x20 || QStringLiteral(".![]`").contains(c);
    };
    if (nombre.isEmpty() || nombre.size() > MayorNombre || nombre.startsWith(u' ') ||
        std::any_of(nombre.begin(), nombre.end(), prohibido))
        throw ErrorMdb(Motivo::NoAdmitido, QStringLiteral("El nombre no se puede usar: ") + nombre);
}

bool EsNombreDeSistema(const QString& tabla)
{
    return tabla.startsWith(QStringLiteral("MSys"), Qt::CaseInsensitive);
}

void CompruebaNombreDeTabla(const QString& nombre)
{
    CompruebaNombre(nombre);
    if (EsNombreDeSistema(nombre))
        throw ErrorMdb(
            Motivo::NoAdmitido,
            QStringLiteral("Los nombres que empiezan por MSys son de las tablas del sistema"));
}

} // namespace tolmo::data::access::mdb
