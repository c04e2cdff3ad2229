#pragma once
#include "data/dialecto.h"

namespace tolmo::data {

/// What a field holds as far as a condition minds, by the letter that its entry carries.
enum class Letra : char16_t { Texto = u'\'', Fecha = u'D', Numero = u'N', Logica = u'B' };

/// The language that a condition is written in.
enum class Lenguaje { Sql, Crystal };

/// The letter of a field of this ADO type. Only the commonest text, date and number types have
/// letters of their own: a long text, a currency or a single counts as a logical field, too.
Letra Tipo(int tipoAdo);

/// A typed value as a literal. An empty one is NULL, and FALSE for a logical field. Quotes within
/// a text are not doubled. For Crystal a date must be one that LeeFecha reads.
QString PonSegunTipo(Dialecto dialecto, const QString& valor, Letra letra, Lenguaje destino);

/// A date literal; the time of day, if there is one, is left out, and a text that is no date goes
/// in as it stands.
QString LitFechaSql(Dialecto dialecto, const QString& valor);

/// A literal of a time of day, for Access.
QString LitHoraSql(const QString& valor);

} // namespace tolmo::data
