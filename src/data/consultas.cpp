#include "data/consultas.h"

namespace tolmo::data {
namespace {

const QString PrefijoDeAutor = QStringLiteral("ps_");
const QString ClaveVersion = QStringLiteral("ps_version_db");
const QString ClaveProtegida = QStringLiteral("PSVERSIONBD_CAMBIAR");

template <class Accion> auto OCierra(Programa& programa, const QString& sql, Accion accion)
{
    try {
        return accion();
    } catch (const ErrorDatos& error) {
        // No caller has an error path: what it does next relies on this statement.
        CierraPrograma(programa, sql, error);
    }
}

Recordset AbreTraducida(Programa& programa, QString& sql, Conexion& conexion, Cursor cursor,
                        Bloqueo bloqueo)
{
    return OCierra(programa, sql, [&] {
        sql = TraduceSql(programa.DialectoActivo, sql);
        sql = PonPrefijo(sql, programa.parametros.PS_PREFIJO);
        return conexion.Abre(sql, cursor, bloqueo);
    });
}

} // namespace

QString PonPrefijo(QString sql, const QString& prefijo)
{
    sql.replace(ClaveVersion, ClaveProtegida);
    sql.replace(PrefijoDeAutor, prefijo);
    return sql.replace(ClaveProtegida, ClaveVersion);
}

Recordset AbreConsulta(Programa& programa, QString& sql, Conexion& conexion, Cursor cursor,
                       Bloqueo bloqueo)
{
    return AbreTraducida(programa, sql, conexion, cursor, bloqueo);
}

Recordset AbreConsulta(Programa& programa, QString& sql)
{
    return AbreConsulta(programa, sql, programa.ConexionTienda);
}

Recordset AbreLectura(Programa& programa, QString& sql, Conexion& conexion, Cursor cursor,
                      Bloqueo bloqueo)
{
    return AbreTraducida(programa, sql, conexion, cursor, bloqueo);
}

Recordset AbreLectura(Programa& programa, QString& sql)
{
    return AbreLectura(programa, sql, programa.ConexionTienda);
}

long long EjecutaSql(Programa& programa, QString& sql, Conexion& conexion)
{
    return OCierra(programa, sql, [&] {
        sql = TraduceSql(programa.DialectoActivo, sql);
        return conexion.Ejecuta(sql);
    });
}

long long EjecutaSql(Programa& programa, QString& sql)
{
    return EjecutaSql(programa, sql, programa.ConexionTienda);
}

void MuestraError(Avisos& avisos, const ErrorDatos& error, const QString& detalle)
{
    if (error.Numero() == numero_error::DialogoCancelado)
        return;
    if (error.Numero() == numero_error::CampoIncorrecto) {
        avisos.Muestra(
            QStringLiteral(
                "ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e intentelo de nuevo: ") +
                detalle,
            estilo::Error);
        return;
    }
    avisos.Muestra(QStringLiteral("ERROR: ") + QString::number(error.Numero()) +
                       QStringLiteral("Descripción: ") + error.Descripcion() +
                       QStringLiteral("Módulo: ") + error.Modulo(),
                   estilo::Error);
}

void CierraPrograma(Programa& programa, const QString& sql, const ErrorDatos& error)
{
    MuestraError(programa.avisos, error);
    programa.avisos.Muestra(
        sql + QStringLiteral("\rEL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR"),
        estilo::Informacion);
    throw FinDePrograma{};
}

} // namespace tolmo::data
