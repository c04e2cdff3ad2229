#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// Numbers the columns, in their order, and gives each its place in a row.
void Coloca(Definicion& definicion);

/// The bytes of a definition without its indexes.
QByteArray EscribeDefinicion(const Definicion& definicion);

/// Adds an index, with a tree of its own, to the bytes of a definition; `logico.real` is set here.
void AnadeIndice(QByteArray& bytes, const IndiceReal& real, IndiceLogico logico);

/// Writes the bytes of a definition into the pages that it has, and takes more where they are too
/// few.
void GuardaDefinicion(PaginasEscribibles& paginas, std::vector<quint32> suyas, QByteArray bytes);

} // namespace tolmo::data::access::mdb
