#pragma once
#include "data/grid.h"
#include <QAbstractTableModel>
#include <functional>
#include <optional>

namespace tolmo::data {

/// What a window has a say in while its grid is edited. Each may be left out.
struct EventosGrid {
    /// What a new row begins with, by column; the columns need not be shown.
    std::function<Cambios()> filaNueva{};
    /// A text was typed into a column (its index in the grid). The window may rewrite it and set
    /// other columns of the row; with false, after its own message, the text is refused.
    std::function<bool(int columna, QString& texto)> antesDeColumna{};
    /// The text has become the value of the column; the row isn't written yet.
    std::function<void(int columna)> trasColumna{};
    /// A row, current in the record set, is about to be deleted; with false it stays.
    std::function<bool()> antesDeBorrar{};
};

/// The rows of a data control under the columns of a grid. What is typed is kept until its row is
/// left, and then written in one go; what is refused, by a column or by the engine, is told in a
/// box and stays as it was typed.
class ModeloGrid : public QAbstractTableModel {
    Q_OBJECT

  public:
    /// `grid` and `adodc` must outlive it.
    ModeloGrid(const Grid& grid, Adodc& adodc, QObject* padre = nullptr);

    EventosGrid eventos{};

    int rowCount(const QModelIndex& padre = {}) const override;
    int columnCount(const QModelIndex& padre = {}) const override;
    QVariant data(const QModelIndex& indice, int papel = Qt::DisplayRole) const override;
    QVariant headerData(int seccion, Qt::Orientation orientacion,
                        int papel = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& indice) const override;
    /// Takes a typed text. \returns false when it is refused, after its message
    bool setData(const QModelIndex& indice, const QVariant& valor,
                 int papel = Qt::EditRole) override;

    /// Shows the grid's columns as they are now; what was typed is given up.
    void Rehaz();

    /// The rows of the record set, without the one for adding.
    int Filas() const { return filas_; }
    /// True for the empty row at the foot, where rows are added.
    bool EsFilaNueva(int fila) const { return fila == filas_; }
    /// True while typed values wait to be written.
    bool HayCambios() const { return borrador_.has_value(); }

    /// Writes the row that was typed into. \returns false when the engine refuses it, after the
    /// message; the values wait on. True when nothing waits.
    bool GuardaFila();
    /// Gives up what was typed into the row.
    void DescartaFila();
    /// Asks, and deletes rows (from 0). The row for adding is passed over. What the engine refuses
    /// is told, and ends it.
    void BorraFilas(std::vector<int> filas);

    /// A column of a row as it will be written; Empty without such a column or row.
    Valor ValorDe(int fila, const QString& columna) const;
    /// Sets another column of the row that is being typed into.
    void PonValor(const QString& columna, const Valor& valor);

  private:
    struct Borrador {
        int fila = 0;
        Cambios cambios{};
    };

    int ColumnaDeFilas(int columna) const;
    QString TextoDe(int fila, int columna) const;
    QString Rotulo(int columna) const;
    bool AbreBorrador(int fila);
    bool Toma(int columna, QString texto);
    void Escribe();
    bool Borra(int fila);
    void CambiaFila(int fila);

    const Grid& grid_;
    Adodc& adodc_;
    std::vector<int> columnas_{}; ///< places in the record set, -1 for a column that it lacks
    int filas_ = 0;
    std::optional<Borrador> borrador_{};
};

} // namespace tolmo::data
