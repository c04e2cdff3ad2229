#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <memory>

namespace tolmo::data::access::mdb {

struct NuevaColumna {
    QString nombre{};
    TipoColumna tipo = TipoColumna::Texto;
    int ancho = 0; ///< characters of a text, bytes of binary values; 0: as many as there can be
    quint8 precision = 18;
    quint8 escala = 0;
    bool obligatoria = false;
    bool autonumerica = false;
    QString predeterminado{}; ///< an expression, kept for whoever asks; empty for none
};

struct NuevoIndice {
    struct Parte {
        QString columna{};
        bool descendente = false;
    };
    QString nombre{};
    std::vector<Parte> columnas{};
    bool primario = false;
    bool unico = false;
    bool sinNulos = false; ///< a row of Nulls has no entry
    bool obligatorio = false;
};

struct NuevaTabla {
    QString nombre{};
    std::vector<NuevaColumna> columnas{};
    std::vector<NuevoIndice> indices{};
};

/// Adds a table without rows. \returns the page of its definition
/// \throws ErrorMdb when a name can't be used or is taken, or a column or index can't be made
quint32 CreaTabla(const std::shared_ptr<PaginasEscribibles>& paginas, const NuevaTabla& tabla);

/// Adds an index to a table, with the entries of the rows that it has. Tables that are open have to
/// be opened again. \throws ErrorMdb when the rows contradict it, besides
void CreaIndice(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla,
                const NuevoIndice& indice);

/// Takes a table away, and gives all its pages back.
/// \throws ErrorMdb when it is a linked or a system table, or a relationship names it
void BorraTabla(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& tabla);

} // namespace tolmo::data::access::mdb
