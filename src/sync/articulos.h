#pragma once
#include "data/valores.h"
#include <QDate>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::sync {
struct Corrida;

/// Rebuilds the process's temporary table of notes: an article's notes are long text, which the
/// big joined SELECT of a run can't take in the shape that the run wants.
void CreaTablaNotas(data::Programa& programa);

/// Reads the highest ids of the shop's tables.
void LeeContadores(Corrida& corrida);

/// The article pass: walks the published articles in the order of their codes, writes those that
/// are new or changed and hands over a batch every 25 records.
void PasaArticulos(Corrida& corrida);

/// The text of the pass's query.
QString SqlDeArticulos(const Corrida& corrida);

/// The query for the shop's rows of an article, one for each of its pictures; an article without a
/// picture has one row all the same, and one that the shop doesn't know has none.
QString SqlDeProductos(const QString& CodArticulo);

/// True when an article that the shop has goes out again: the shop's date is earlier than the
/// article's, or the article was changed today (each run of that day sends it), or it has no date.
/// A product that the shop never dated counts as earlier than any change.
bool HaCambiado(const data::Valor& date_upd, const data::Valor& FECHAMODIFICACION,
                const QDate& hoy);

} // namespace tolmo::sync
