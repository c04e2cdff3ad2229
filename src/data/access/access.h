#pragma once
#include "data/proveedor.h"
#include <QStringList>

namespace tolmo::data {

/// Opens the management database of a Jet connection text: the Access file that "Data Source="
/// names or, where there is none, its embedded form (the ending ".sqlite"). Opening never makes a
/// file.
/// \throws ErrorSql when there is neither, or it can't be opened
std::unique_ptr<Proveedor> AbreAccess(const QString& cadena);

/// The engine that a connection text names: Jet texts go to AbreAccess, those of the shop and of
/// SQL Server to AbreOdbc. It is the FabricaProveedor of the program.
/// \throws ErrorSql when it can't be reached, or the text names no known engine
std::unique_ptr<Proveedor> CreaProveedor(const QString& cadena, const QString& usuario,
                                         const QString& clave);

/// Makes a new, empty embedded database at a path of this machine.
/// \throws ErrorSql when the file exists or can't be made
void CreaBaseEmbebida(const QString& ruta);

/// Opens an embedded database by its path on this machine.
/// \throws ErrorSql when there is none
std::unique_ptr<Proveedor> AbreBaseEmbebida(const QString& ruta);

/// A statement of a script and the line that it begins on, from 1.
struct SentenciaGuion {
    QString texto{};
    int linea = 1;
};

/// Cuts a script into its statements: each ends with a ";" at the end of a line. Lines that begin
/// with "--" between two statements are remarks.
std::vector<SentenciaGuion> ParteGuion(const QString& guion);

/// Runs scripts of Access SQL on an embedded database, or on an Access file (the ending ".mdb"),
/// all in one transaction; the file is made when it is absent, and taken away again when a
/// statement fails. \throws ErrorSql that names the line and the statement that failed; then
/// nothing is changed
void EjecutaGuiones(const QString& ruta, const QStringList& guiones);

} // namespace tolmo::data
