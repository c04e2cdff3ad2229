#pragma once
#include "data/programa.h"

namespace tolmo::run {

/// User and password of the SQL Server; empty under integrated security.
struct Credenciales {
    QString usuario{};
    QString clave{};
};

/// The connection text of the management database `catalogo` ("BDLOCAL", "BD000001"): the file
/// RutaBD, or a catalogue of the SQL Server, by the kind of database.
QString CadenaGestion(const data::Programa& programa, const QString& catalogo,
                      const Credenciales& credenciales);

} // namespace tolmo::run
