#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas_escribibles.h"
#include "data/access/mdb/partes_definicion.h"

namespace tolmo::data::access::mdb {

/// Numbers the columns, in their order, and gives each its place in a row.
void Coloca(Definicion& definicion);

/// A definition without its indexes.
PartesDefinicion EscribeDefinicion(const Definicion& definicion);

/// Adds a column that has its number and its place in a row.
void AnadeColumna(PartesDefinicion& partes, const Columna& columna);
/// Writes a column anew, by its number.
void CambiaColumna(PartesDefinicion& partes, const Columna& columna);
/// Takes a column away; its number and its place in rows are never given again.
void QuitaColumna(PartesDefinicion& partes, const Columna& columna);

/// Adds an index with a tree of its own; `logico.real` and its number are set here.
void AnadeIndice(PartesDefinicion& partes, const IndiceReal& real, IndiceLogico logico);
/// Takes an index away, and its tree if no other uses it. \returns whether the tree goes
bool QuitaIndice(PartesDefinicion& partes, const IndiceLogico& logico);

/// Writes a definition into the pages that it has; takes more where they are too few, and gives
/// back those that it doesn't need.
void GuardaDefinicion(PaginasEscribibles& paginas, std::vector<quint32> suyas,
                      const PartesDefinicion& partes);

/// A definition of the file, to be changed.
class DefinicionAbierta {
  public:
    DefinicionAbierta(PaginasEscribibles& paginas, quint32 pagina);
    void Guarda() { GuardaDefinicion(paginas_, suyas_, partes); }

    PartesDefinicion partes{};

  private:
    PaginasEscribibles& paginas_;
    std::vector<quint32> suyas_{};
};

} // namespace tolmo::data::access::mdb
