#pragma once
#include "data/access/mdb/paginas.h"
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

// What stands behind the key: the row's place and, in nodes, the child page.
constexpr std::size_t TamFila = 4;
constexpr std::size_t TamHijo = 4;

/// An entry of an index, whole: the key, the row's place and, in nodes, the child page.
class Entrada {
  public:
    Entrada() = default;
    Entrada(std::vector<quint8> bytes, bool deNodo);

    std::span<const quint8> Clave() const;
    /// The key with the row's place: what entries are ordered by.
    std::span<const quint8> ClaveYFila() const;
    std::span<const quint8> Todo() const { return bytes_; }
    Puntero Fila() const;
    quint32 Hijo() const;

  private:
    std::vector<quint8> bytes_{};
    std::size_t finClave_ = 0;
};

/// True when `a` stands before `b`.
bool Antes(std::span<const quint8> a, std::span<const quint8> b);
bool Iguales(std::span<const quint8> a, std::span<const quint8> b);

/// A leaf or a node of an index.
class PaginaIndice {
  public:
    /// \throws ErrorMdb when the page isn't one
    PaginaIndice(Pagina pagina, const Formato& formato);

    quint32 Numero() const { return pagina_.numero; }
    bool EsNodo() const { return esNodo_; }
    quint32 Tabla() const; ///< page of the definition
    quint32 Anterior() const;
    quint32 Siguiente() const;
    quint32 Cola() const; ///< of a node: the child behind the last entry
    std::size_t Entradas() const { return fines_.size(); }
    std::size_t Libres() const;                      ///< bytes, as the page says
    std::size_t Usados() const;                      ///< bytes of entries, as they are stored
    std::size_t Prefijo() const { return prefijo_; } ///< bytes that only the first entry holds
    std::span<const quint16> Fines() const { return fines_; } ///< of each entry, as it is stored
    std::span<const quint8> Guardados() const;                ///< bytes of entries
    Entrada En(std::size_t indice) const;
    /// The first entry that isn't before `bytes`; the number of entries when all are.
    std::size_t Busca(std::span<const quint8> bytes) const;

  private:
    std::size_t Principio(std::size_t indice) const { return indice == 0 ? 0 : fines_[indice - 1]; }
    bool VaAntes(std::size_t indice, std::span<const quint8> bytes) const;

    Pagina pagina_;
    const Formato* formato_;
    bool esNodo_ = false;
    std::size_t prefijo_ = 0;
    std::vector<quint16> fines_{};
};

/// Fetches page `numero` of an index of the table that page `definicion` defines.
/// \throws ErrorMdb when it is another thing
PaginaIndice LeePaginaIndice(Paginas& paginas, quint32 definicion, quint32 numero);

} // namespace tolmo::data::access::mdb
