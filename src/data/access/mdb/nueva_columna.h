#pragma once
#include "data/access/mdb/define_tabla.h"
#include "data/access/mdb/propiedades.h"

namespace tolmo::data::access::mdb {

/// That a table can have, those that were taken away among them.
constexpr std::size_t MasColumnas = 255;

/// How new columns order texts: as the file says.
OrdenTexto OrdenDelFichero(Paginas& paginas);

/// A new column as definitions have it, without its number and its place in rows.
/// \throws ErrorMdb for a width or a type that can't be
Columna ColumnaDe(const NuevaColumna& nueva, quint16 posicion, OrdenTexto orden);

bool EsVariable(TipoColumna tipo);

/// What Access keeps beside the definition of the column.
std::vector<Propiedad> PropiedadesDe(const NuevaColumna& columna);

/// \throws ErrorMdb when a row of Nulls wouldn't fit into a page
void CompruebaQueCabe(const Definicion& definicion);

} // namespace tolmo::data::access::mdb
