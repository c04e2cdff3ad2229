#pragma once
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/tabla.h"

namespace tolmo::data::access::mdb {

/// Checks the tree of an index (order, bounds, chain of leaves, pages), then each entry against the
/// row that it leads to. `filas` is how many rows should have an entry.
/// As no two entries are alike, each fits its row, and there are as many as rows, none is missing.
EstadoIndice CompruebaIndice(const Tabla& tabla, std::size_t indiceReal, quint64 filas);

/// Checks the tree alone.
void CompruebaArbol(const Tabla& tabla, const IndiceReal& indice, QStringList& faltas);

} // namespace tolmo::data::access::mdb
