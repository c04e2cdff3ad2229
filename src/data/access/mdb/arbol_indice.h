#pragma once
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/edicion_indice.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/pagina_indice.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

/// Changes the tree of one index of a table. Keys are the bytes of clave.h, without the row's
/// place.
class ArbolIndice {
  public:
    /// `definicion` is the page of the table's definition. The references outlive the tree.
    ArbolIndice(PaginasEscribibles& paginas, quint32 definicion, const IndiceReal& indice);

    /// Adds the entry of a row. \returns whether no other row has this key
    /// \throws ErrorMdb when the tree is broken or has it already, or the key is too long: two
    /// entries have to have room in a page
    bool Inserta(const QByteArray& clave, Puntero fila);

    /// Fills an empty index. Each entry is one of a leaf, and they are in order.
    /// \throws ErrorMdb when a key is too long
    void Llena(std::vector<BytesEntrada> entradas);

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

    /// Gives all pages of the index back, the root too, and empties its map.
    void Suelta();

  private:
    struct Paso;
    struct Mitades;
    using Camino = std::vector<Paso>;

    PaginaIndice Lee(quint32 numero) const;
    PaginaIndice Vecina(quint32 numero, const PaginaIndice& pagina) const;
    Entrada EntradaEn(const PaginaIndice& pagina, std::size_t lugar) const;
    Camino Baja(std::span<const quint8> bytes) const;
    template <typename Vista> void Recorre(std::span<const quint8> desde, Vista&& vista) const;
    template <typename Tarea> auto EnSuPagina(quint32 pagina, Tarea&& tarea) const
    {
        return EnLugar([&] { return Lugar{.fichero = paginas_.Nombre(), .pagina = pagina}; },
                       std::forward<Tarea>(tarea));
    }
    [[noreturn]] void Falla(const QString& frase, quint32 pagina) const;

    bool HayVecina(const Paso& lugar, const QByteArray& clave) const;
    void Mete(const Camino& camino, std::size_t nivel, const std::vector<quint8>& entrada);
    std::vector<BytesEntrada> LlenaNivel(std::span<const BytesEntrada> entradas, bool deNodo,
                                         quint32& cola);
    void ParteRaiz(Mitades& mitades);
    void Parte(const Camino& camino, std::size_t nivel, Mitades& mitades);
    void SeparaHijos(quint32 ultimo);
    bool BorraEntrada(const std::vector<quint8>& entrada);
    void BajaLimite(const Camino& camino, std::span<const quint8> ultima);
    void QuitaPagina(const Camino& camino, std::size_t nivel);

    PaginasEscribibles& paginas_;
    quint32 definicion_;
    const IndiceReal& indice_;
};

} // namespace tolmo::data::access::mdb
