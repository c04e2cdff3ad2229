#pragma once
#include "data/valores.h"
#include <QStringList>
#include <vector>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// One combination as the shop will have it.
struct Combinacion {
    long long ordinal = 0; ///< from 1; the first one is the shop's default
    QStringList valores{}; ///< the chosen value of each category
    QString INC_PVP{};     ///< as the shop gets it: a sum without a number somewhere is 0
    QString PESO{};
    bool operator==(const Combinacion&) const = default;
};

/// The combinations of an article. Only the values of each category are read, one query for each,
/// so that an article with millions of combinations costs no more than one with a few.
class CombinacionesDeArticulo {
  public:
    /// What an article can have: its combinations are numbered with five digits.
    static constexpr long long Limite = 99999;

    /// \param tarifa price list of the increments, from 1 \throws data::FinDePrograma
    CombinacionesDeArticulo(data::Programa& programa, const QString& CodArticulo, int tarifa);

    /// The codes of the categories that have values, in their order.
    const QStringList& Categorias() const { return categorias_; }
    /// How many there are; at most the highest number that the type holds.
    long long Cuantas() const;
    bool CabenEnLaTienda() const { return Cuantas() <= Limite; }

    /// Up to `cuantas` of them from the ordinal `desde` (from 1) on, in the order of a run.
    std::vector<Combinacion> Pagina(long long desde, int cuantas) const;

  private:
    struct Opcion {
        QString VALOR{};
        data::Valor incremento{};
        data::Valor peso{};
    };

    Combinacion EnOrdinal(long long ordinal) const;

    QStringList categorias_{};
    std::vector<std::vector<Opcion>> opciones_{}; ///< of each category
};

} // namespace tolmo::configurator
