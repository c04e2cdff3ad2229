#include "data/access/mdb/tabla_propia.h"

namespace tolmo::data::access::mdb {

void NoSeHace(const QString& frase, const Lugar& lugar)
{
    throw ErrorMdb(Motivo::NoAdmitido, frase, lugar);
}

void CompruebaVersion(const Paginas& paginas)
{
    if (paginas.formato().EsJet3())
        NoSeHace(QStringLiteral("Los ficheros de Access 97 sólo se leen"));
}

Objeto TablaPropia(const Base& base, const QString& nombre)
{
    const Objeto* objeto = base.catalogo().TablaDe(nombre);
    if (objeto == nullptr)
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La tabla no existe"));
    if (objeto->EsEnlace())
        NoSeHace(QStringLiteral("La tabla está vinculada a otro fichero"));
    if (objeto->DeSistema())
        NoSeHace(QStringLiteral("Las tablas del sistema no se cambian"));
    return *objeto;
}

} // namespace tolmo::data::access::mdb
