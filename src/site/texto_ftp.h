#pragma once
#include <QByteArray>
#include <QString>

namespace tolmo::site {

/// What a server sent, as text: UTF-8 if it is that, else Windows-1252.
QString TextoDelServidor(const QByteArray& bytes);

} // namespace tolmo::site
