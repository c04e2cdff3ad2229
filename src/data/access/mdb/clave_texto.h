#pragma once
#include "data/access/mdb/definicion.h"
#include <QByteArray>
#include <QString>
#include <optional>

namespace tolmo::data::access::mdb {

/// How many places a letter counts that stands for two, as the sharp s. The engine of Access 2000
/// counted two, later ones count one; it shows only where an accent or a hyphen follows.
enum class Expansion { UnLugar, DosLugares };

/// The orders whose keys are known. A text column of any other can be read, but its index neither
/// checked nor changed.
bool OrdenConocido(OrdenTexto orden);

/// The bytes by which an index orders a text, ascending, without the byte in front that tells it
/// from Null. Nothing when the order isn't known, or a character has no code in it.
std::optional<QByteArray> ClaveTexto(QStringView texto, OrdenTexto orden,
                                     Expansion expansion = Expansion::UnLugar);

} // namespace tolmo::data::access::mdb
