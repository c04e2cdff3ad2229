#pragma once
#include <QString>
#include <QStringList>
#include <vector>

namespace tolmo::data {

/// A connection text in its pieces, "key=value" each, the value with its braces if it has them.
struct PiezaConexion {
    QString clave{};
    QString valor{};
};

std::vector<PiezaConexion> PartesDeConexion(const QString& cadena);

/// What `clave`, in any case, holds, without braces; empty when it isn't named.
QString ValorDeConexion(const QString& cadena, const QString& clave);

/// True for a text that leads to a MySQL server.
bool EsCadenaMySql(const QString& cadena);

/// True for the driver whose limits of waiting are set in the text and nowhere else.
bool EsControladorMariaDb(const QString& cadena);

/// The text for that driver with its limits, in seconds: for reaching the server, and for each
/// answer, the greeting included. One that the text names itself stays.
QString ConEsperas(const QString& cadena, int alConectar, int porRespuesta);

} // namespace tolmo::data
