#pragma once
#include "data/valores.h"

namespace tolmo::sync {
struct Corrida;

/// Rewrites all categories of the shop above the two fixed ones from the family tree. The
/// nested-set numbers are computed here and written as data.
void CargaFamilias(Corrida& corrida);

/// Fills the work table wFAMPRESTA from the shop, which is the master of the category numbers.
void GuardaReferenciaFamiliasActuales(Corrida& corrida);

/// True for a family that goes to the shop: its `activoweb` isn't empty (a number 0 is) and stands
/// inside the parameter's list `cadActivoWeb`, or the company's number, between commas, inside its
/// `empresasweb`.
bool SeExporta(const data::Valor& activoweb, const QString& empresasweb,
               const QString& cadActivoWeb, const QString& codigoEmpresa);

} // namespace tolmo::sync
