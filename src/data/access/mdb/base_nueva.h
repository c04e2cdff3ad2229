#pragma once
#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace tolmo::data::access::mdb {

/// The bytes of a new file of Access 2000-2003 without tables of the user's.
QByteArray BaseNueva(const QDateTime& creacion = QDateTime::currentDateTime());

/// Writes such a file. \throws ErrorMdb when there is one of that name, or it can't be written
void CreaBase(const QString& ruta);

} // namespace tolmo::data::access::mdb
