#include "data/conexion.h"
#include "data/errores.h"

namespace tolmo::data {

Conexion::Conexion(FabricaProveedor fabrica) : fabrica_(std::move(fabrica)) {}

void Conexion::Conecta(const QString& cadena, const QString& usuario, const QString& clave)
{
    Desconecta();
    proveedor_ = fabrica_(cadena, usuario, clave);
}

void Conexion::Desconecta()
{
    proveedor_.reset();
}

Recordset Conexion::Abre(const QString& sql, Cursor, Bloqueo bloqueo)
{
    Proveedor& proveedor = Exige();
    const bool actualizable = bloqueo != Bloqueo::SoloLectura;
    return Recordset(proveedor.Consulta(sql, actualizable), actualizable ? proveedor_ : nullptr);
}

long long Conexion::Ejecuta(const QString& sql)
{
    return Exige().Ejecuta(sql);
}

bool Conexion::ExisteTabla(const QString& nombre)
{
    for (const TablaEsquema& tabla : Exige().Tablas()) {
        const QString tipo = tabla.tipo.toUpper();
        const bool cuenta = tipo == QLatin1String("TABLE") || tipo == QLatin1String("LINK") ||
                            tipo == QLatin1String("VIEW");
        if (cuenta && tabla.nombre.toUpper() == nombre.toUpper())
            return true;
    }
    return false;
}

Proveedor& Conexion::Exige() const
{
    if (!proveedor_)
        throw ErrorSql(
            numero_error::Conexion,
            QStringLiteral("La conexión está cerrada; no se puede usar para esta operación."),
            QStringLiteral("Conexion"));
    return *proveedor_;
}

} // namespace tolmo::data
