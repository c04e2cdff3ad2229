#pragma once
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/exportacion.h"
#include "data/access/mdb/muestras.h"

namespace tolmo::data::access::mdb {

/// Does with a file all that this room can do. Of a damaged one only ErrorMdb may come out.
inline void LeeTodo(const QByteArray& fichero)
{
    try {
        const Base base(PaginasDe(fichero));
        Comprueba(base);
        for (const Objeto& objeto : base.catalogo().Objetos()) {
            try {
                if (objeto.EsConsulta())
                    base.SqlDeConsulta(objeto.nombre);
                if (objeto.clase != clase_objeto::TablaLocal)
                    continue;
                QBuffer salida;
                salida.open(QIODevice::WriteOnly);
                ExportaCsv(base.AbreTabla(objeto), salida);
            } catch (const ErrorMdb&) {
                continue;
            }
        }
    } catch (const ErrorMdb&) {
        return;
    }
}

} // namespace tolmo::data::access::mdb
