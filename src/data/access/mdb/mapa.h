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

/// How a map is laid out. In the row itself: the form, the first page, bits. By reference: the
/// form, then the numbers of bitmap pages, each with a header and bits.
namespace forma_mapa {
constexpr quint8 EnLaFila = 0;
constexpr quint8 PorReferencia = 1;
constexpr std::size_t CabeceraEnLaFila = 5;
constexpr std::size_t CabeceraPorReferencia = 1;
constexpr std::size_t TamReferencia = 4;
constexpr std::size_t CabeceraDeBits = 4;

/// The pages that one bitmap page covers.
inline quint32 PaginasPorReferencia(const Formato& formato)
{
    return 8 * (formato.tamPagina - static_cast<quint32>(CabeceraDeBits));
}
} // namespace forma_mapa

/// Reads the map that `puntero` leads to; a null pointer gives an empty one.
/// \throws ErrorMdb when there is no map
Mapa LeeMapa(Paginas& paginas, Puntero puntero);

/// The same for a map of pages in use, which can't name pages that don't exist.
/// \throws ErrorMdb when it does
std::vector<quint32> PaginasEnUso(Paginas& paginas, Puntero puntero);

} // namespace tolmo::data::access::mdb
