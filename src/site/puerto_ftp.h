#pragma once
#include <QString>

namespace tolmo::site {

/// The FTP port of the parameters, which hold it as text.
/// \throws data::ErrorEjecucion (13) when it isn't a number
int PuertoFtp(const QString& puerto);

} // namespace tolmo::site
