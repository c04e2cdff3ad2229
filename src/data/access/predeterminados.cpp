#include "data/access/predeterminados.h"
#include "data/access/errores_access.h"
#include "data/access/expresion_guardada.h"
#include "data/access/traductor.h"
#include <optional>

namespace tolmo::data::access {
namespace {

std::optional<QString> ValorDe(const Esquema& esquema, const ColumnaVista& columna)
{
    try {
        const PExpresion expresion = LeePredeterminado(columna.defecto);
        return AsignaA(columna, Traductor(esquema).TraduceGuardada(*expresion, {}));
    } catch (const ErrorSql&) {
        return std::nullopt;
    }
}

} // namespace

void AnadePredeterminados(const Esquema& esquema, const TablaVista& tabla, QStringList& columnas,
                          QStringList& valores)
{
    for (const ColumnaVista& columna : tabla.columnas) {
        const QString nombre = Identificador(columna.nombre);
        if (columna.defecto.isEmpty() || columnas.contains(nombre))
            continue;
        if (const auto valor = ValorDe(esquema, columna)) {
            columnas << nombre;
            valores << *valor;
        } else if (columna.obligatoria) {
            Rechaza(QStringLiteral("El valor predeterminado del campo %1.%2 no se entiende: %3")
                        .arg(tabla.nombre, columna.nombre, columna.defecto));
        }
    }
}

} // namespace tolmo::data::access
