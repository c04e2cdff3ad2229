#pragma once
#include "data/proveedor.h"

namespace tolmo::data {

/// Opens a MySQL or SQL Server connection text over ODBC. A driver that the manager doesn't know
/// is replaced by the installed one of the same protocol. A MySQL session asks for Unicode
/// (utf8mb4) and an empty sql_mode, in which a column without a default takes the zero of its
/// type, as the shop expects. It waits 30 s for the server, or the seconds that the text names as
/// "Connect Timeout".
/// \throws ErrorSql when there is no such driver or the server refuses
std::unique_ptr<Proveedor> AbreOdbc(const QString& cadena, const QString& usuario,
                                    const QString& clave);

/// The text that goes to the driver manager for `cadena`, given the names of the installed
/// drivers: the driver replaced, credentials added, no ";" at the end (the MariaDB driver refuses
/// a text that ends in one).
/// \throws ErrorSql when no installed driver speaks the protocol
QString CadenaOdbc(const QString& cadena, const QString& usuario, const QString& clave,
                   const QStringList& instalados);

} // namespace tolmo::data
