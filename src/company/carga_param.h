#pragma once
#include "data/programa.h"

namespace tolmo::company {

/// Reads the current company's settings into `programa.parametros`: defaults for what is empty,
/// the two paths brought into form, the languages with the main one first. The stored row isn't
/// changed. Needs ConexionLocal open on the company's database and LblEmpresa set.
/// \throws data::ErrorDatos 3021 for a company without a row, 3265 for a column that isn't there
/// \throws data::ErrorEjecucion 94 for a Null in a column that may not hold one; what was read
///         before it stays set
/// \throws data::FinDePrograma when a statement fails
void CargaParam(data::Programa& programa);

/// "shop" and "/shop/" both give "/shop/"; nothing gives "/".
QString NormalizaCarpeta(const QString& carpeta);

/// Adds a "/" at the end unless there is one.
QString NormalizaWww(const QString& www);

} // namespace tolmo::company
