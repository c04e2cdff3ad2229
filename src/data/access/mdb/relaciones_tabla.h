#pragma once
#include "data/access/mdb/indices_tabla.h"
#include <memory>
#include <optional>
#include <vector>

namespace tolmo::data::access::mdb {

/// The enforced relationships of a table. They are only kept from being broken: nothing is changed
/// or deleted in cascade.
class RelacionesDeTabla {
  public:
    /// `tabla` and its `indices` outlive this.
    RelacionesDeTabla(std::shared_ptr<PaginasEscribibles> paginas, const Tabla& tabla,
                      IndicesDeTabla& indices);

    /// Before a row takes these values, of which `cambia` tells those that are new.
    /// \throws ErrorMdb with Motivo::Relacion when it would refer to a row that isn't there
    void CompruebaNueva(std::span<const Dato> valores, const std::vector<bool>& cambia);

    /// Before a row gives up its values, of which `cambia` tells those that go.
    /// \throws ErrorMdb with Motivo::Relacion when another refers to it
    void CompruebaVieja(std::span<const Dato> valores, const std::vector<bool>& cambia);

  private:
    struct Relacion {
        QString nombre{};
        bool esLaAjena = false; ///< this table's rows refer to the other's
        std::size_t indice = 0; ///< real, of this table
        quint32 otraTabla = 0;
        quint32 otroIndice = 0; ///< logical, of the other table
    };
    struct Otra {
        Otra(PaginasEscribibles& paginas, const Tabla& otra) : tabla(otra), indices(paginas, tabla)
        {
        }
        Tabla tabla;
        IndicesDeTabla indices;
    };
    bool Toca(const Relacion& relacion, const std::vector<bool>& cambia) const;
    std::optional<std::vector<Dato>> ClaveDe(const Relacion& relacion,
                                             std::span<const Dato> valores) const;
    bool EstaEnLaOtra(const Relacion& relacion, const std::vector<Dato>& clave);
    bool EsElla(const Relacion& relacion, std::span<const Dato> valores,
                const std::vector<Dato>& clave) const;
    [[noreturn]] void Falla(const Relacion& relacion, const QString& frase);
    Otra& Abre(quint32 pagina);

    std::shared_ptr<PaginasEscribibles> paginas_;
    const Tabla& tabla_;
    IndicesDeTabla& indices_;
    std::vector<Relacion> relaciones_{};
    std::vector<std::pair<quint32, std::unique_ptr<Otra>>> otras_{};
};

} // namespace tolmo::data::access::mdb
