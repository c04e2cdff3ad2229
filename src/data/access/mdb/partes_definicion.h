#pragma once
#include "data/access/mdb/bytes.h"
#include <QByteArray>
#include <QString>
#include <vector>

namespace tolmo::data::access::mdb {

/// The bytes of a definition cut into its parts, so that some can be changed and all others, known
/// or not, stay as they are.
struct PartesDefinicion {
    /// A block and the name that goes with it, which stands elsewhere.
    struct ConNombre {
        QByteArray bloque{};
        QString nombre{};
    };
    QByteArray cabecera{};
    std::vector<QByteArray> estadisticas{}; ///< one for each real index
    std::vector<ConNombre> columnas{};
    std::vector<QByteArray> reales{};
    std::vector<ConNombre> logicos{};
    std::vector<QByteArray> largas{}; ///< the maps of each column of long values
    QByteArray fin{};

    /// \throws ErrorMdb when the bytes end too early
    static PartesDefinicion De(Bytes bytes);
    /// The counts in the head are set here.
    QByteArray Une() const;
};

} // namespace tolmo::data::access::mdb
