#pragma once
#include "data/valores.h"
#include <optional>

namespace tolmo::data {

/// What the record and grid helpers make of a column.
enum class ClaseColumna { Texto, Numero, Fecha, Logico };

/// The class of an ADO type number (see Campo). Long text counts as text, and so does every number
/// that isn't known: what is quoted harms no engine.
ClaseColumna ClaseDe(int tipo);

/// True for the numbers without decimals.
bool EsEntero(int tipo);

/// Reads "S", "SI", "SÍ", "TRUE", "VERDADERO", "1" and "-1" in any case as true, "N", "NO",
/// "FALSE", "FALSO", "0" and an empty text as false; nothing for any other text.
std::optional<bool> LeeLogico(const QString& texto);

/// A value as a cell of a grid shows it: "Sí" or "No" for a boolean, the default text for others.
QString TextoCelda(const Valor& valor);

} // namespace tolmo::data
