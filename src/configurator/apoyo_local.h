#pragma once
#include "data/consultas.h"

namespace tolmo::configurator {

/// Statements on the management database, for texts that nobody looks at afterwards.
/// \throws data::FinDePrograma
inline data::Recordset LeeLocal(data::Programa& programa, QString sql)
{
    return data::AbreLectura(programa, sql, programa.ConexionLocal);
}
inline void EjecutaLocal(data::Programa& programa, QString sql)
{
    data::EjecutaSql(programa, sql, programa.ConexionLocal);
}

/// A question of yes or no. \returns true for yes
inline bool Pregunta(data::Programa& programa, const QString& texto)
{
    return programa.avisos.Muestra(texto, data::estilo::SiNo + data::estilo::Pregunta) ==
           data::Respuesta::Si;
}

inline void Avisa(data::Programa& programa, const QString& texto)
{
    programa.avisos.Muestra(texto, data::estilo::Aviso);
}

} // namespace tolmo::configurator
