#include "data/access/consultas_guardadas.h"
#include "data/access/analizador.h"
#include "data/access/errores_access.h"
#include <algorithm>

namespace tolmo::data::access {

Guardada AbreGuardada(const TablaVista& consulta, qsizetype posicion)
{
    if (!consulta.impedimento.isEmpty())
        RechazaEn(posicion, consulta.impedimento);
    Guardada guardada = EnConsulta(consulta, [&] { return AnalizaGuardada(consulta.texto); });
    if (!guardada.parametros.empty())
        RechazaEn(posicion, QStringLiteral("A la consulta %1 le falta el valor del parámetro %2")
                                .arg(consulta.nombre, guardada.parametros.front().nombre));
    return guardada;
}

ErrorEnConsulta::ErrorEnConsulta(const ErrorSql& error, const QString& consulta)
    : ErrorSql(error.Numero(),
               QStringLiteral("%1, en la consulta %2").arg(error.Descripcion(), consulta),
               error.Modulo())
{
}

bool EsVista(const QString& texto)
{
    try {
        const std::vector<Lexema> lexemas = Lexemas(texto);
        // INTO is no name of anything: it makes a table, wherever it stands.
        return (lexemas[0].Es("SELECT") || lexemas[0].EsSigno("(")) &&
               std::none_of(lexemas.begin(), lexemas.end(),
                            [](const Lexema& lexema) { return lexema.Es("INTO"); });
    } catch (const ErrorSql&) {
        return false;
    }
}

} // namespace tolmo::data::access
