#pragma once
#include "configurator/combinaciones_articulo.h"
#include <QAbstractTableModel>
#include <QHash>
#include <optional>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// The combinations of an article as rows: ordinal, the value of each category by its description,
/// summed increment and weight. A row is put together when it is asked for. An article with more
/// combinations than the shop takes is counted and has no rows.
class ModeloCombinaciones : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    /// Reads an article with the increments of the company's price list; an empty one has none.
    /// \throws data::FinDePrograma
    void Lee(data::Programa& programa, const QString& CodArticulo);

    long long Cuantas() const { return combinaciones_ ? combinaciones_->Cuantas() : 0; }
    bool CabenEnLaTienda() const { return !combinaciones_ || combinaciones_->CabenEnLaTienda(); }
    /// How many there are, in words for the operator; empty without an article.
    QString Resumen() const;

    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;
    QVariant headerData(int seccion, Qt::Orientation orientacion,
                        int papel = Qt::DisplayRole) const override;

  private:
    void LeeDescripciones(data::Programa& programa);
    QString TextoDeValor(int categoria, const QString& valor) const;

    std::optional<CombinacionesDeArticulo> combinaciones_{};
    QStringList nombres_{};                           ///< of the categories, in their order
    std::vector<QHash<QString, QString>> opciones_{}; ///< of each category: descriptions by code
};

} // namespace tolmo::configurator
