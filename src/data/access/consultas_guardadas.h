#pragma once
#include "data/access/arbol.h"
#include "data/access/esquema.h"
#include "data/errores.h"

namespace tolmo::data::access {

/// Reads a stored query that a statement names at `posicion`.
/// \throws ErrorSql when it can't be used: its text isn't understood, it is of a kind that isn't
/// run here, or it asks for the value of a parameter
Guardada AbreGuardada(const TablaVista& consulta, qsizetype posicion);

/// What is wrong with the text of a stored query: where it tells a position, it is that text's.
class ErrorEnConsulta : public ErrorSql {
  public:
    ErrorEnConsulta(const ErrorSql& error, const QString& consulta);
};

/// Does something with the text of a stored query, which an error then names; of several inside one
/// another, the innermost.
template <class Accion> auto EnConsulta(const TablaVista& consulta, Accion accion)
{
    try {
        return accion();
    } catch (const ErrorEnConsulta&) {
        throw;
    } catch (const ErrorSql& error) {
        throw ErrorEnConsulta(error, consulta.nombre);
    }
}

/// True for the text of a query that gives rows by itself, which a listing shows as a view: one
/// that only acts, or waits for a parameter, is none.
bool EsVista(const QString& texto);

} // namespace tolmo::data::access
