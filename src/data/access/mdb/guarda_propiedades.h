#pragma once
#include "data/access/mdb/catalogo.h"
#include "data/access/mdb/paginas_escribibles.h"
#include "data/access/mdb/propiedades.h"
#include <memory>

namespace tolmo::data::access::mdb {

/// Gives an object these properties in place of those that it has, and notes that it has changed.
void GuardaPropiedades(const std::shared_ptr<PaginasEscribibles>& paginas, const Objeto& objeto,
                       const std::vector<Propiedad>& propiedades);

} // namespace tolmo::data::access::mdb
