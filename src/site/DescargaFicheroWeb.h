#pragma once
#include "site/esperas.h"
#include <QString>

namespace tolmo::site {

/// Fetches a URL afresh, never from a cache, into a local file. Redirections are followed; an empty
/// URL, no answer within the waits, or any status but 200 give false and leave `Destino` alone.
bool DescargaFichero(const QString& URL, const QString& Destino, const Esperas& esperas = {});

/// The body of a page, read as Windows-1252, or an empty text on any failure.
QString RecuperaPagina(const QString& URL, const Esperas& esperas = {});

} // namespace tolmo::site
