#pragma once
#include <QDateTime>
#include <QList>
#include <QString>
#include <optional>

namespace tolmo::site {

/// Attributes of a found entry.
namespace atributo {
constexpr quint32 SoloLectura = 1;
constexpr quint32 Carpeta = 16;
constexpr quint32 Normal = 128; ///< a file with no other attribute
} // namespace atributo

/// What a search tells of one entry. A listing names one moment only, by the server's clock.
struct DatosBusqueda {
    quint32 atributos = 0;
    QDateTime escritura{}; ///< last write as the listing shows it; invalid if it shows none
    quint64 tamano = 0;    ///< bytes
    QString nombre{};      ///< bare, without folders
};

/// Reads one line of a listing, of the kind of Unix servers ("-rw-r--r-- 1 u g 12 Mar 15 09:05 a")
/// or of Windows servers ("03-15-24 09:05AM 12 a"). Anything else, and the entries "." and "..",
/// give nothing. Lines of the last months carry no year: `hoy` tells it.
std::optional<DatosBusqueda> LeeLineaListado(const QString& linea, const QDate& hoy);

/// All entries of a listing, in its order.
QList<DatosBusqueda> LeeListado(const QString& listado, const QDate& hoy);

/// True when `nombre` is one that the filter names: "*" for any characters, "?" for one.
bool CumpleFiltro(const QString& nombre, const QString& filtro);

} // namespace tolmo::site
