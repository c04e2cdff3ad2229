#pragma once
#include "data/conexion.h"
#include "data/dialecto.h"
#include "data/parametros.h"
#include "data/puertos.h"

namespace tolmo::data {

/// The values of the whole process, made in main and handed down by reference. There are no other
/// globals. Each value has one writer, named beside it.
struct Programa {
    Programa(Avisos& avisos, Reloj& reloj, const FabricaProveedor& fabrica,
             const QString& carpetaActual);

    Dialecto TipoBaseDatos = DialectoDeConstruccion();
    Dialecto DialectoActivo = DialectoDeConstruccion(); ///< set by callers, and by nobody put back
    Conexion ConexionLocal;                             ///< management database; opened at start-up
    Conexion
        ConexionTienda; ///< the shop's MySQL; opened by the synchronisation window and the feed
    QString CadenaConexion{}; ///< the last connection text that was built
    QString RutaBase{};       ///< folder of the databases; start-up
    QString RutaBD{};         ///< the open database file; start-up
    QString ServidorSql{};
    QString ModoAutenticacion{}; ///< "WINDOWS", or user and password
    QString SufijoTemporal{};    ///< 14 digits that tell this process's temporary table; start-up
    QString LblEmpresa{};    ///< company code, a blank, its description; the only holder of both
    Parametros parametros{}; ///< CargaParam
    QString carpetaActual{}; ///< current folder of the process, without an ending separator

    Avisos& avisos;
    Reloj& reloj;

    /// The first six characters of LblEmpresa.
    QString CodigoEmpresa() const { return LblEmpresa.left(6); }
    /// LblEmpresa from the eighth character on.
    QString DescripcionEmpresa() const { return LblEmpresa.mid(7); }
    /// The connection text of the shop, made of the parameters.
    QString CadenaTienda() const;
    /// A path below the current folder: RutaActual("\\PHPSHOP\\ejecuta.php").
    QString RutaActual(const QString& resto) const { return carpetaActual + resto; }
};

/// A date literal in the dialect that is active now.
QString FechaSql(const Programa& programa, const Valor& valor);

} // namespace tolmo::data
