#pragma once
#include "data/access/mdb/define_tabla.h"
#include <optional>

namespace tolmo::data::access::mdb {

/// Rows for the maps of a table, on pages of their own.
class PaginasDeMapas {
  public:
    /// `pagina` is tried first; 0 for none.
    explicit PaginasDeMapas(PaginasEscribibles& paginas, quint32 pagina = 0)
        : paginas_(paginas), pagina_(pagina)
    {
    }
    /// An empty map.
    Puntero Nuevo();

  private:
    PaginasEscribibles& paginas_;
    quint32 pagina_;
};

/// Builds what a table is made of into the page of its definition: maps, roots, the definition
/// itself. Its columns need their types, widths and marks.
void MontaTabla(PaginasEscribibles& paginas, Definicion definicion,
                const std::vector<NuevoIndice>& indices, PaginasDeMapas& mapas);

/// A new tree without entries.
IndiceReal MontaIndice(PaginasEscribibles& paginas, const Definicion& definicion,
                       const NuevoIndice& indice, PaginasDeMapas& mapas);

/// Its name and kind, without the numbers that only a definition gives.
IndiceLogico LogicoDe(const NuevoIndice& indice);

} // namespace tolmo::data::access::mdb
