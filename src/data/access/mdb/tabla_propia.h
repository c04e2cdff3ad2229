#pragma once
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/errores_mdb.h"

namespace tolmo::data::access::mdb {

/// \throws ErrorMdb always, for what a file doesn't allow
[[noreturn]] void NoSeHace(const QString& frase, const Lugar& lugar = {});

/// \throws ErrorMdb for a file whose tables can't be changed in their shape
void CompruebaVersion(const Paginas& paginas);

/// An object of this file whose table may be changed in its shape.
/// \throws ErrorMdb when there is none of that name, or it is a linked or a system table
Objeto TablaPropia(const Base& base, const QString& nombre);

/// Does something with a table; errors tell which.
template <typename Tarea>
decltype(auto) EnTabla(const Paginas& paginas, const QString& tabla, Tarea&& tarea)
{
    return EnLugar([&] { return Lugar{.fichero = paginas.Nombre(), .tabla = tabla}; },
                   std::forward<Tarea>(tarea));
}

} // namespace tolmo::data::access::mdb
