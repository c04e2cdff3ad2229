#pragma once
#include "data/access/mdb/pagina_indice.h"
#include "data/access/mdb/tabla.h"
#include <optional>
#include <unordered_set>

namespace tolmo::data::access::mdb {

/// Walks the entries of an index in their order.
class RecorridoIndice {
  public:
    /// `indice` is one of those of `tabla`, which outlive the walk. It stands before the first
    /// entry.
    RecorridoIndice(const Tabla& tabla, const IndiceReal& indice);

    /// Goes on; false when there is no further entry.
    /// \throws ErrorMdb when the tree is broken or its leaves form a ring
    bool Siguiente();
    /// Stands before the first entry that isn't before `bytes`, a key or the front part of one.
    void Busca(std::span<const quint8> bytes);

    const Entrada& entrada() const { return entrada_; }
    quint32 Pagina() const { return hoja_ ? hoja_->Numero() : 0; }

  private:
    PaginaIndice Lee(quint32 numero);
    void VeAHoja(PaginaIndice hoja);

    Tabla tabla_;
    const IndiceReal& indice_;
    std::optional<PaginaIndice> hoja_{};
    std::size_t proxima_ = 0;
    std::unordered_set<quint32> visitadas_{};
    Entrada entrada_{};
};

/// The places of the rows whose key starts with `bytes`, in order.
std::vector<Puntero> FilasConClave(const Tabla& tabla, const IndiceReal& indice,
                                   std::span<const quint8> bytes);

/// A page of an index of this table.
/// \throws ErrorMdb when it is another thing
PaginaIndice LeePaginaIndice(const Tabla& tabla, quint32 numero);

} // namespace tolmo::data::access::mdb
