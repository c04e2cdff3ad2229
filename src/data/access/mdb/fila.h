#pragma once
#include "data/access/mdb/dato.h"
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/paginas.h"
#include <optional>

namespace tolmo::data::access::mdb {

/// A row: its bytes, and the place of each column in them. A column is read when it is asked for.
class Fila {
  public:
    Fila() = default;
    /// `pagina` holds `bytes`; definition and pages outlive the row.
    /// \throws ErrorMdb when the row doesn't hold its own tables
    Fila(const Definicion& definicion, Paginas& paginas, Pagina pagina, Bytes bytes);

    /// \throws ErrorMdb when the column's bytes can't be its value
    Dato Lee(const Columna& columna) const;

    /// The bytes of a column as they are stored; nothing for Null and for Boolean columns.
    std::optional<Bytes> Crudo(const Columna& columna) const;

    /// Where the part of fixed width ends, columns that the table no longer has among it; counted
    /// from the first of them. Not of files of Access 97.
    std::size_t FinDeFijas() const;

    Bytes Todo() const { return bytes_; }
    quint32 NumeroDePagina() const { return pagina_.numero; }

  private:
    bool TieneValor(const Columna& columna) const;
    void LeeRanuras();
    std::size_t FinDeRanura(std::size_t ranura) const;
    Dato LeeValor(const Columna& columna, Bytes crudo) const;
    std::size_t Contador(std::size_t posicion) const;

    const Definicion* definicion_ = nullptr;
    const Formato* formato_ = nullptr;
    Paginas* paginas_ = nullptr;
    Pagina pagina_{};
    Bytes bytes_{};
    std::size_t columnas_ = 0; ///< that the row knows
    std::size_t mascara_ = 0;  ///< position of the null mask
    std::size_t ranuras_ = 0;
    std::size_t tablaRanuras_ = 0; ///< position of the offset of slot 0; the others lie before it
    std::size_t saltos_ = 0;       ///< Access 97: jump marks, right before the count of slots
};

/// Bytes that a column of fixed width takes in a row.
std::size_t AnchoFijo(const Columna& columna);

/// What the bytes of a column of fixed width hold, and what those of a variable one do; memo and
/// OLE columns aside, whose bytes only lead to the value.
Dato LeeDato(const Columna& columna, Bytes crudo, const Formato& formato);

} // namespace tolmo::data::access::mdb
