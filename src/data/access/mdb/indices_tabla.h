#pragma once
#include "data/access/mdb/arbol_indice.h"
#include "data/access/mdb/clave.h"
#include "data/access/mdb/tabla.h"
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

/// The trees of a table, and the keys of its rows in them. The values of a row are those of the
/// columns of the definition, in its order; only those of the index's own columns matter.
class IndicesDeTabla {
  public:
    /// `tabla` outlives this. \throws ErrorMdb when the keys of an index aren't known
    IndicesDeTabla(PaginasEscribibles& paginas, const Tabla& tabla);

    std::size_t Cuantos() const { return indices_.size(); }
    /// The places of the index's columns in the list of the definition.
    const std::vector<std::size_t>& Columnas(std::size_t indice) const
    {
        return indices_[indice].columnas;
    }

    /// The key of new values.
    /// \throws ErrorMdb with Motivo::Valor for a text that can't be ordered, Motivo::SinValor for
    /// a Null that the index doesn't take
    ClaveDeFila Clave(std::size_t indice, std::span<const Dato> valores) const;

    /// The key of values that a row has already; it may have another in the index, where the engine
    /// of Access 2000 counted a letter twice.
    ClaveDeFila ClaveVieja(std::size_t indice, std::span<const Dato> valores) const;

    /// \throws ErrorMdb with Motivo::ClaveRepetida
    void CompruebaUnica(std::size_t indice, std::span<const Dato> valores);

    /// True when there is an entry for these values; they are those of the index's columns.
    bool Tiene(std::size_t indice, std::span<const Dato> deSusColumnas);

    void Anade(std::size_t indice, const ClaveDeFila& clave, Puntero fila);
    /// Fills an index that is empty with the entries of all rows.
    /// \throws ErrorMdb as Clave and CompruebaUnica do
    void Llena(std::size_t indice);
    /// Takes the entry of a row away, whose values were `valores`.
    /// \throws ErrorMdb when there is none
    void Quita(std::size_t indice, std::span<const Dato> valores, Puntero fila);

  private:
    struct Indice {
        const IndiceReal* real = nullptr;
        QString nombre{};
        bool unico = false;
        bool obligatorio = false;
        std::vector<std::size_t> columnas{};
        ArbolIndice arbol;
    };
    std::vector<Dato> Suyos(std::size_t indice, std::span<const Dato> valores) const;
    ClaveDeFila ClaveCon(std::size_t indice, std::span<const Dato> suyos,
                         Expansion expansion) const;
    QByteArray PrincipioSeguro(std::size_t indice, std::span<const Dato> suyos) const;
    QString Campos(const Indice& indice) const;
    [[noreturn]] void Repetida(const Indice& indice) const;
    void CompruebaNulos(const Indice& indice, std::span<const Dato> suyos) const;
    quint32 CuantasDistintas(std::size_t indice, std::span<const BytesEntrada> entradas) const;
    bool TieneNulos(std::size_t indice, Puntero fila) const;
    void CuentaUnicas(std::size_t indice, quint32 cuantas);

    PaginasEscribibles& paginas_;
    const Tabla& tabla_;
    std::vector<Indice> indices_{};
};

/// \throws ErrorMdb always, with Motivo::SinValor
[[noreturn]] void FaltaValor(const Definicion& definicion, const Columna& columna,
                             const QString& indice = {});

/// A column as messages name it: "table.column".
QString Campo(const Definicion& definicion, const Columna& columna);

} // namespace tolmo::data::access::mdb
