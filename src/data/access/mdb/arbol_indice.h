#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// Changes the tree of one index of a table. Keys are the bytes of clave.h, without the row's
/// place.
class ArbolIndice {
  public:
    /// `definicion` is the page of the table's definition. The references outlive the tree.
    ArbolIndice(PaginasEscribibles& paginas, quint32 definicion, const IndiceReal& indice);

    /// Adds the entry of a row. \throws ErrorMdb when the tree is broken or has it already
    void Inserta(const QByteArray& clave, Puntero fila);

    /// Takes the entry of a row away. \returns false when it isn't there
    bool Borra(const QByteArray& clave, Puntero fila);

    /// Takes away the entry of a row whose key isn't known for certain: first among those that are
    /// equal in the front part `principio`, then in the whole index. \returns false when no entry
    /// leads to the row
    bool BorraDeFila(const QByteArray& principio, Puntero fila);

    /// True when there is an entry with exactly this key, of whatever row.
    bool Tiene(const QByteArray& clave);

    /// Writes an empty leaf into a page that was just taken, as the root of a new index.
    static void EscribeRaizVacia(PaginasEscribibles& paginas, quint32 definicion, quint32 pagina);

    /// Gives all pages of the index back, the root too.
    void Suelta();

  private:
    PaginasEscribibles& paginas_;
    quint32 definicion_;
    const IndiceReal& indice_;
};

} // namespace tolmo::data::access::mdb
