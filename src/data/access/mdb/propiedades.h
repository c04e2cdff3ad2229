#pragma once
#include "data/access/mdb/paginas.h"
#include <QByteArray>
#include <QString>
#include <memory>
#include <vector>

namespace tolmo::data::access::mdb {

/// A property of a table or of one of its columns, as Access keeps it beside the definition.
struct Propiedad {
    QString columna{}; ///< empty: of the table itself
    QString nombre{};
    quint8 tipo = 0;
    QByteArray valor{};
    quint8 marca = 1; ///< 1: of the engine; 0: of a program that uses it
};

namespace propiedad {
inline const QString Obligatoria = QStringLiteral("Required");
inline const QString Predeterminado = QStringLiteral("DefaultValue");
inline const QString AdmiteVacio = QStringLiteral("AllowZeroLength");
inline const QString Regla = QStringLiteral("ValidationRule");
inline const QString TextoRegla = QStringLiteral("ValidationText");
} // namespace propiedad

Propiedad PropiedadDeTexto(const QString& columna, const QString& nombre, const QString& valor);
Propiedad PropiedadLogica(const QString& columna, const QString& nombre, bool valor);
/// The text of a property that holds one.
QString TextoDe(const Propiedad& propiedad);
bool VerdadDe(const Propiedad& propiedad);

/// What an object's column LvProp holds; an empty one has no properties.
/// \throws ErrorMdb when it isn't coherent
std::vector<Propiedad> LeePropiedades(Bytes bytes);

/// Nothing when there are none.
QByteArray EscribePropiedades(const std::vector<Propiedad>& propiedades);

/// The properties of the table whose definition is on `pagina`.
std::vector<Propiedad> PropiedadesDeTabla(const std::shared_ptr<Paginas>& paginas, quint32 pagina);

} // namespace tolmo::data::access::mdb
