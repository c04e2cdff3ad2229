#pragma once
#include "data/access/mdb/disco.h"
#include "data/access/mdb/paginas.h"
#include <map>
#include <span>

namespace tolmo::data::access::mdb {

/// The pages that a transaction has changed and not yet written, with points to come back to.
/// Beyond a limit of memory they go to a temporary file.
class PaginasCambiadas {
  public:
    PaginasCambiadas(quint32 tamPagina, std::size_t limite);

    bool Vacias() const { return paginas_.empty(); }
    std::vector<quint32> Numeros() const; ///< in rising order

    /// The page as it was changed; nothing when it wasn't.
    std::optional<Pagina> Lee(quint32 numero);

    /// The bytes of a page for changing them, valid until the next call of a member. `limpia` is
    /// asked for the page when it is changed for the first time.
    template <typename DaLimpia> std::span<quint8> Cambia(quint32 numero, DaLimpia&& limpia)
    {
        if (!paginas_.contains(numero))
            Estrena(numero, limpia());
        return Propias(numero);
    }
    void Estrena(quint32 numero, std::vector<quint8> bytes);

    /// Remembers the pages as they are. Marks nest; they are counted from 1.
    std::size_t Marca();
    /// As it was at the mark, which stays; later ones are gone.
    void VuelveA(std::size_t marca);
    /// Gives up a mark and the later ones; the changes stay.
    void Suelta(std::size_t marca);

    void Olvida();

  private:
    struct Imagen {
        std::shared_ptr<std::vector<quint8>> bytes{}; ///< null: only in the temporary file
        qint64 hueco = -1;                            ///< its place there
        bool guardada = false;                        ///< the place holds these bytes
    };
    using Referencia = std::shared_ptr<Imagen>;
    /// What the pages were that changed since a mark; null: not changed yet then.
    using Antes = std::map<quint32, Referencia>;

    std::span<quint8> Propias(quint32 numero);
    void Recuerda(quint32 numero);
    void Trae(const Referencia& imagen);
    void Anota(const Referencia& imagen);
    void Aparta();
    FicheroDeDisco& Aparte();
    qint64 SitioDe(const Imagen& imagen) const { return imagen.hueco * tamPagina_; }

    quint32 tamPagina_;
    std::size_t caben_;
    std::map<quint32, Referencia> paginas_{};
    std::vector<Antes> marcas_{};
    std::vector<std::weak_ptr<Imagen>> enMemoria_{};
    std::unique_ptr<FicheroDeDisco> aparte_{};
    qint64 huecos_ = 0;
};

} // namespace tolmo::data::access::mdb
