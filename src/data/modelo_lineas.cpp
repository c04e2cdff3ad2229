#include "data/modelo_lineas.h"

namespace tolmo::data {

void ModeloLineas::Anade(const QStringList& lineas)
{
    if (lineas.isEmpty())
        return;
    const int primera = rowCount();
    beginInsertRows({}, primera, primera + static_cast<int>(lineas.size()) - 1);
    lineas_ += lineas;
    endInsertRows();
}

void ModeloLineas::Vacia()
{
    beginResetModel();
    lineas_.clear();
    endResetModel();
}

int ModeloLineas::Busca(const QString& texto, int fila, Sentido sentido) const
{
    const int total = rowCount();
    if (texto.isEmpty() || total == 0)
        return -1;
    const int paso = sentido == Sentido::Siguiente ? 1 : total - 1;
    const int sinFila = sentido == Sentido::Siguiente ? total - 1 : 0;
    int mirada = fila >= 0 && fila < total ? fila : sinFila;
    for (int i = 0; i < total; ++i) {
        mirada = (mirada + paso) % total;
        if (lineas_[mirada].contains(texto, Qt::CaseInsensitive))
            return mirada;
    }
    return -1;
}

int ModeloLineas::rowCount(const QModelIndex& padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(lineas_.size());
}

QVariant ModeloLineas::data(const QModelIndex& indice, int papel) const
{
    if (papel != Qt::DisplayRole || !indice.isValid() || indice.row() >= rowCount())
        return {};
    return lineas_[indice.row()];
}

} // namespace tolmo::data
