#pragma once
#include <QString>

namespace tolmo::data {

/// Turns a path as the databases and parameters hold it (`C:\fotos\a.jpg`, `\\srv\f\a.jpg`) into
/// the path of this machine, for opening a file and for nothing else. "\" and "/" are the same;
/// drives and shares are mapped by the environment variable KOV_UNIDADES
/// (`C:=/mnt/c;\\srv\f=/srv/f`); a name that isn't found is looked for without regard to case.
/// A drive or share that isn't mapped leads nowhere: the letter is not dropped, or two drives would
/// fall together. A path that leads nowhere comes back mapped, with "/"; where only its last name
/// is missing, as of a file to be written, its folder is the one that was found.
QString RutaLocal(const QString& ruta);

/// True when the path leads to a file (a folder is none).
bool ExisteFichero(const QString& ruta);

/// The name of a file as its folder holds it, or nothing when it isn't there.
QString NombreEnDisco(const QString& ruta);

/// The part of a path behind the last "\" or "/".
QString NombreFichero(const QString& ruta);

} // namespace tolmo::data
