#pragma once
#include "data/access/mdb/define_tabla.h"

namespace tolmo::data::access::mdb {

/// Adds a column to a table. In the rows that it has the column is Null, truth false; an autonumber
/// counts them. Tables that are open have to be opened again after each change of these.
/// \throws ErrorMdb when the name is taken, or the column can't be made
void AnadeColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                  const NuevaColumna& columna);

/// Takes a column away, and its long values. Its number, and its place in rows, are never given
/// again. \throws ErrorMdb when it is the only one, or an index or a relationship names it
void QuitaColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                  const QString& columna);

/// Takes column `vieja` away and gives its name, its place among those that are shown and its
/// properties to `nueva`, whose own ones stay. \throws ErrorMdb as QuitaColumna does
void SustituyeColumna(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                      const QString& vieja, const QString& nueva);

/// Takes an index away. \throws ErrorMdb when there is none, or a relationship needs it
void BorraIndice(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                 const QString& indice);

} // namespace tolmo::data::access::mdb
