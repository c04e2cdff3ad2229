#pragma once
#include "data/sentido.h"
#include <QAbstractListModel>
#include <QStringList>

namespace tolmo::data {

/// Lines that grow at their end, and the search in them: what a status list shows.
class ModeloLineas : public QAbstractListModel {
  public:
    using QAbstractListModel::QAbstractListModel;

    void Anade(const QStringList& lineas);
    void Vacia();
    const QStringList& Lineas() const { return lineas_; }

    /// The nearest row behind `fila` (or before it) whose line holds `texto`, in any case. Behind
    /// the last line comes the first one, and `fila` itself is the last to be looked at. With a
    /// `fila` that doesn't exist the search begins at the first line (or at the last one).
    /// \returns -1 when no line holds it; an empty text is in no line
    int Busca(const QString& texto, int fila, Sentido sentido) const;

    int rowCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;

  private:
    QStringList lineas_{};
};

} // namespace tolmo::data
