#pragma once
#include "data/access/mdb/bytes.h"
#include "data/access/mdb/formato.h"
#include <QString>
#include <compare>
#include <memory>
#include <vector>

namespace tolmo::data::access::mdb {

/// The place of a row: its page and its slot there.
struct Puntero {
    quint32 pagina = 0;
    quint8 fila = 0;

    /// As it is held in a number: the slot in the low byte, the page above it.
    static Puntero De(quint32 numero) { return {numero >> 8, static_cast<quint8>(numero & 0xFF)}; }
    quint32 Numero() const { return pagina << 8 | fila; }
    bool Nulo() const { return pagina == 0; }
    auto operator<=>(const Puntero&) const = default;
};

/// The bytes of one page, which stay as they are for as long as this value lives.
struct Pagina {
    quint32 numero = 0;
    Bytes bytes{};
    std::shared_ptr<const std::vector<quint8>> duenio{};
};

/// The pages of a database. All reading goes through here, so that a transaction that holds pages
/// not yet written can stand in the place of the file.
class Paginas {
  public:
    virtual ~Paginas() = default;

    /// \throws ErrorMdb when there is no such page, or it can't be read
    virtual Pagina Lee(quint32 numero) = 0;
    virtual quint32 Cuantas() const = 0;
    virtual const Formato& formato() const = 0;
    virtual const QString& Nombre() const = 0; ///< the file's, for messages
};

/// Tells pages that were met before, so that a chain that bites its tail ends.
class Visitadas {
  public:
    explicit Visitadas(quint32 cuantas) : vistas_(cuantas) {}

    /// False when the page was met before, or doesn't exist.
    bool Marca(quint32 pagina)
    {
        if (pagina >= vistas_.size() || vistas_[pagina])
            return false;
        vistas_[pagina] = true;
        return true;
    }

  private:
    std::vector<bool> vistas_;
};

} // namespace tolmo::data::access::mdb
