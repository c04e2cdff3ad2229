#pragma once
#include "data/access/base.h"
#include "data/access/lexico.h"
#include "data/access/traductor.h"
#include "data/proveedor.h"

namespace tolmo::data::access {

/// Fetches all that a prepared query gives, up to its TOP and the ties of the last row.
void LeeFilas(Preparada& preparada, const Plan& plan, Filas& filas);

/// Gives the literals of a statement to its parameters.
/// \throws ErrorSql for a date literal that is none
void LigaLiterales(Preparada& preparada, const std::vector<Lexema>& lexemas);

/// Gives a value to a parameter: dates as they are held, truth as -1 and 0, Empty as Null.
void LigaValor(Preparada& preparada, int parametro, const Valor& valor);

/// A parameter with the kind of what LigaValor will give it.
Trozo TrozoDeValor(int parametro, const Valor& valor);

} // namespace tolmo::data::access
