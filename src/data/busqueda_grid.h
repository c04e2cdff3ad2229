#pragma once
#include "data/adodc.h"

namespace tolmo::data {

/// The search of a browse window while its text is typed, in the column `columna`. Nothing happens
/// without rows, without a text, or for a text that the column can't be compared with: a miss
/// leaves the current row as it is. Never throws for what a text brings about.
void BuscaEnGrid(Adodc& adodc, const QString& columna, const QString& texto);

/// The next and the previous row that fit, beyond the current one. A search that runs off the end
/// leaves the current row as it is, and so does a text that the column can't be compared with.
void BuscaSiguiente(Adodc& adodc, const QString& columna, const QString& texto);
void BuscaAnterior(Adodc& adodc, const QString& columna, const QString& texto);

} // namespace tolmo::data
