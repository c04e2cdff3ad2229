#pragma once
#include <QByteArray>
#include <QString>

namespace tolmo::data {

/// The text in Windows-1252, the code page of every file that goes to the server; a character
/// outside it becomes "?".
QByteArray AWindows1252(const QString& texto);

/// The reverse; the five bytes that Windows-1252 leaves free give the control of that number.
QString DesdeWindows1252(const QByteArray& bytes);

} // namespace tolmo::data
