#pragma once
#include "data/access/mdb/definicion.h"
#include <QByteArray>
#include <optional>
#include <span>

namespace tolmo::data::access::mdb {

/// A row can't be longer; a page would hold 20 bytes more, but Access leaves them.
constexpr std::size_t MayorFila = 4060;

/// The bytes of a column as a row holds them; nothing for Null. Of a Boolean column there are none:
/// an empty value is true, nothing is false.
using Crudo = std::optional<QByteArray>;

/// Bytes of a row with these values, one for each column of the definition, in its order.
std::size_t LargoDeFila(const Definicion& definicion, std::span<const Crudo> crudos);

/// Lays a row out. \throws ErrorMdb with Motivo::Valor when it would be too long
QByteArray EscribeFila(const Definicion& definicion, std::span<const Crudo> crudos);

} // namespace tolmo::data::access::mdb
