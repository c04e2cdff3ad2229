#pragma once
#include "data/access/mdb/tabla.h"
#include <QString>
#include <vector>

namespace tolmo::data::access::mdb {

/// A row of MSysQueries: one piece of a saved query.
struct Pieza {
    int atributo = 0;
    int marca = 0; ///< 0 when it is Null
    int extra = 0;
    QString nombre1{};
    QString nombre2{};
    QString expresion{};
    QByteArray orden{};
};

/// What a saved query does.
enum class ClaseConsulta {
    Seleccion = 1,
    CreaTabla = 2,
    Anexion = 3,
    Actualizacion = 4,
    Borrado = 5,
    Cruzada = 6,
    Definicion = 7,
    PasoATraves = 8,
    Union = 9
};

/// The pieces of the query `id`, in order.
std::vector<Pieza> LeeConsulta(const Tabla& consultas, qint32 id);

ClaseConsulta ClaseDe(const std::vector<Pieza>& piezas);

/// The text of a query that selects rows, a union among them.
/// \throws ErrorMdb for any other class, and for pieces that make no query
QString SqlDe(const std::vector<Pieza>& piezas);

} // namespace tolmo::data::access::mdb
