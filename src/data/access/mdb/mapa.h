#pragma once
#include "data/access/mdb/paginas.h"
#include <vector>

namespace tolmo::data::access::mdb {

/// A usage map: a set of pages.
struct Mapa {
    std::vector<quint32> paginas{}; ///< ascending, only those that the file has
    bool pasaDelFinal = false;      ///< it also holds pages past the end of the file
    std::vector<quint32> deBits{};  ///< the bitmap pages that it is made of, if any
};

/// The global map, whose pages are the free ones.
constexpr Puntero MapaGlobal{.pagina = 1, .fila = 0};

/// Reads the map that `puntero` leads to; a null pointer gives an empty one.
/// \throws ErrorMdb when there is no map
Mapa LeeMapa(Paginas& paginas, Puntero puntero);

/// The same for a map of pages in use, which can't name pages that don't exist.
/// \throws ErrorMdb when it does
std::vector<quint32> PaginasEnUso(Paginas& paginas, Puntero puntero);

} // namespace tolmo::data::access::mdb
