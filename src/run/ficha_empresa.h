#pragma once
#include "data/ficha.h"

namespace tolmo::run {

/// The company's row, whose columns the parameter editor shows. \throws data::FinDePrograma
data::Recordset AbreFichaEmpresa(data::Programa& programa, const QString& empresa);

/// Writes what the editor holds into it. \throws data::FinDePrograma
void GuardaFichaEmpresa(data::Programa& programa, std::span<const data::CampoFicha> ficha,
                        const QString& empresa);

/// The query of the company's languages.
QString ConsultaIdiomas(const QString& empresa);

} // namespace tolmo::run
