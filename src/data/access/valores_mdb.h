#pragma once
#include "data/access/mdb/dato.h"
#include "data/access/mdb/definicion.h"
#include "data/access/tipos.h"
#include <optional>

struct sqlite3_context;
struct sqlite3_value;

namespace tolmo::data::access {

class Preparada;

/// How a column of an Access file is declared to the engine.
TipoDeclarado TipoDeColumna(const mdb::Columna& columna);

/// Gives the engine a value in the form that the embedded database holds it in: dates as ISO texts,
/// truth as -1 and 0.
void Entrega(sqlite3_context* contexto, const mdb::Dato& dato);
/// The same, but as text where a double can't hold all the digits.
void EntregaExacta(sqlite3_context* contexto, const mdb::Dato& dato);
/// True for the columns where that may happen.
bool PasaDeDoble(const mdb::Columna& columna);
/// Gives the value as a parameter, from 1, of a statement, as Entrega does.
void Liga(Preparada& preparada, int parametro, const mdb::Dato& dato);

/// A value of the engine as the column holds it, for writing.
/// \throws ErrorSql for one that the column can't hold
mdb::Dato DatoDe(sqlite3_value* valor, const mdb::Columna& columna);

/// What a comparison with a value may find in a column: all that lies between the two bounds, which
/// may be wider than what is sought. Nothing for a value that tells nothing of the column's.
struct Margen {
    mdb::Dato desde{};
    mdb::Dato hasta{};
    bool exacto = false; ///< one value, in one form
};
std::optional<Margen> MargenDe(sqlite3_value* valor, const mdb::Columna& columna);

/// Whether MargenDe gives one exact value, so that further columns of an index may follow.
bool SeBuscaExacta(mdb::TipoColumna tipo);
/// Whether a column of this type can be sought in an index at all.
bool SeBusca(const mdb::Columna& columna);

} // namespace tolmo::data::access
