#pragma once
#include "data/programa.h"
#include <QStringList>

namespace tolmo::run {

/// True when the database of companies lists any. Needs ConexionLocal open on it.
/// \throws data::FinDePrograma when the statement fails
bool HayEmpresas(data::Programa& programa);

/// The companies as the company dialog shows them, by rising code: code, a blank, description. The
/// first six characters are read as the code: a shorter one takes in part of the description.
/// \throws data::FinDePrograma when the statement fails
QStringList ListaEmpresas(data::Programa& programa);

} // namespace tolmo::run
