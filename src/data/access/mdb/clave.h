#pragma once
#include "data/access/mdb/clave_texto.h"
#include "data/access/mdb/dato.h"
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/tabla.h"
#include <QByteArray>
#include <optional>
#include <span>

namespace tolmo::data::access::mdb {

/// What a key depends on besides its values.
struct ReglasClave {
    Version version = Version::Jet4;
    Expansion expansion = Expansion::UnLugar;
};

/// The bytes of one value in a key, the flag in front included. Nothing when they can't be known:
/// a text in an order without a table, a type that can't be indexed.
std::optional<QByteArray> ClaveDeValor(const Dato& dato, const Columna& columna, bool descendente,
                                       const ReglasClave& reglas);

/// The front part of what ClaveDeValor gave for a text: the codes of its letters, which every text
/// that goes on after them shares.
QByteArray HastaFinDeCodigos(const QByteArray& clave, bool descendente);

/// The entry of a row in an index.
struct ClaveDeFila {
    enum class Caso {
        Entrada,
        SinEntrada, ///< all columns are Null, and the index leaves such rows out
        NoSeSabe
    };
    Caso caso = Caso::NoSeSabe;
    QByteArray bytes{}; ///< without the row's place
};

/// The key of the values of the index's columns, in its order.
ClaveDeFila ClaveDe(const Definicion& definicion, const IndiceReal& indice,
                    std::span<const Dato> valores, const ReglasClave& reglas);

/// The same for a row of a table.
ClaveDeFila ClaveDe(const Tabla& tabla, const IndiceReal& indice, const Fila& fila,
                    Expansion expansion = Expansion::UnLugar);

} // namespace tolmo::data::access::mdb
