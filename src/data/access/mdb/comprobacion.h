#pragma once
#include "data/access/mdb/base_mdb.h"
#include <QStringList>
#include <vector>

namespace tolmo::data::access::mdb {

/// What was found out about an index.
struct EstadoIndice {
    QString nombre{};
    quint64 entradas = 0;
    bool rehecho = true; ///< its entries were compared with the keys of the rows
    QStringList faltas{};
};

/// What was found out about a table.
struct EstadoTabla {
    QString nombre{};
    quint64 filas = 0;
    quint64 filasDeclaradas = 0; ///< as its definition says, which Access doesn't always keep right
    QStringList faltas{};
    std::vector<EstadoIndice> indices{};
};

struct Informe {
    std::vector<EstadoTabla> tablas{};
    QStringList faltas{}; ///< of the file as a whole

    bool Sano() const;
};

/// Reads all that the tables of a file hold, those of the system too, and compares it: rows with
/// their count, each index with its rows, pages with the maps that name them. Linked tables live
/// elsewhere and are left out.
Informe Comprueba(const Base& base);

/// The list of faults grows no longer than this; a file full of them tells nothing more.
void AnadeFalta(QStringList& faltas, const QString& falta);

} // namespace tolmo::data::access::mdb
