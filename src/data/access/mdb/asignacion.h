#pragma once
#include "data/access/mdb/paginas_escribibles.h"

namespace tolmo::data::access::mdb {

/// Takes a page for an owner: the lowest free one, or a new one at the end of the file. It is
/// zeroed and noted in the owner's map; the caller writes what it is to hold. With a null `mapa` it
/// is noted nowhere, as pages of definitions and of maps aren't.
/// \throws ErrorMdb when a map can't be read, or the file is full
quint32 PidePagina(PaginasEscribibles& paginas, Puntero mapa);

/// Gives a page back: it goes out of the owner's map (a null one: of none), can't be mistaken for a
/// live one any more and is free. \throws ErrorMdb when it is free already
void SueltaPagina(PaginasEscribibles& paginas, quint32 pagina, Puntero mapa);

/// Puts a page into a map or takes it out, whatever form the map has; one that is in it already, or
/// isn't, changes nothing. A map that can't hold the page grows into the form of references. In a
/// null map there is nothing, and nothing can be put.
void AnadeAlMapa(PaginasEscribibles& paginas, Puntero mapa, quint32 pagina);
void QuitaDelMapa(PaginasEscribibles& paginas, Puntero mapa, quint32 pagina);
bool EstaEnElMapa(Paginas& paginas, Puntero mapa, quint32 pagina);

/// Gives back all pages of a map, and the bitmap pages that it is made of. It is empty then, in the
/// form that it has in a new table.
void VaciaMapa(PaginasEscribibles& paginas, Puntero mapa);

} // namespace tolmo::data::access::mdb
