#pragma once
#include "data/access/mdb/paginas_escribibles.h"
#include <vector>

namespace tolmo::data::access::mdb {

/// Gives all pages of a map back.
void SueltaTodas(PaginasEscribibles& paginas, Puntero mapa);

/// Takes the rows of maps away, the pages that those are made of, and the pages that hold no other
/// maps.
void SueltaMapas(PaginasEscribibles& paginas, const std::vector<Puntero>& mapas);

} // namespace tolmo::data::access::mdb
