#pragma once
#include "data/recordset.h"
#include <vector>

namespace tolmo::sync {
struct Articulo;
struct Corrida;

/// One attribute of a configuration.
struct ParDeCadena {
    QString categoria{};
    QString valor{};
    bool operator==(const ParDeCadena&) const = default;
};

/// The pairs in the text of a configuration: "[" category ":" value "]", repeated. Every "]" gives
/// a pair, whatever stands before it; a text without brackets gives none.
std::vector<ParDeCadena> ParteCadena(const QString& Cadena);

/// Writes the stock of an article and of its configurations. Only with the stock flag.
void EscribeExistencias(Corrida& corrida, const Articulo& articulo);

/// The stock-only branch: the same sentences once for each row of the shop's product set, and
/// nothing else of the article.
void EscribeSoloExistencias(Corrida& corrida, const data::Recordset& fila,
                            data::Recordset& productos);

} // namespace tolmo::sync
