#pragma once
#include <QComboBox>
#include <QStyledItemDelegate>
#include <array>

namespace tolmo::data::ui {

/// The box of a column.
struct CajaDeCelda {
    QComboBox* caja = nullptr;
    bool conPrimera = false; ///< an empty cell starts on the first entry of the list
    bool editable = false;   ///< a text that isn't in the list may be typed
};

/// Lays a combo box over the cell that is entered in the grid of conditions. The boxes belong to
/// the window: a cell that is left only hides its box.
class CeldasCondicion : public QStyledItemDelegate {
    Q_OBJECT

  public:
    /// The key by which the operator leaves a cell.
    enum class Salida { Intro, Tabulador, Atras, Escape };

    /// `cajas` go over the columns, from the first one on; one box may serve several.
    explicit CeldasCondicion(const std::array<CajaDeCelda, 4>& cajas);

    /// The box that stands over a cell, or nullptr.
    QComboBox* Abierta() const;
    /// Drops its list down.
    void Despliega() const;
    /// True when something was chosen or typed since the cell was entered.
    bool Tocada() const;
    /// Hides the box, its text written into the cell or not.
    void Cierra(bool escribe);

    QWidget* createEditor(QWidget* padre, const QStyleOptionViewItem& opcion,
                          const QModelIndex& celda) const override;
    void setEditorData(QWidget* editor, const QModelIndex& celda) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* modelo,
                      const QModelIndex& celda) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcion,
                              const QModelIndex& celda) const override;
    void destroyEditor(QWidget* editor, const QModelIndex& celda) const override;

  signals:
    /// A cell takes this text.
    void Escribe(int fila, int columna, const QString& texto) const;
    /// The box is still there: whoever hears this closes it.
    void Sale(tolmo::data::ui::CeldasCondicion::Salida salida);

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    bool EnLista(QComboBox& caja, QEvent& evento);
    bool SalePorTecla(const QEvent& evento);

    std::array<CajaDeCelda, 4> cajas_;
    mutable QString alEntrar_{};
};

} // namespace tolmo::data::ui
