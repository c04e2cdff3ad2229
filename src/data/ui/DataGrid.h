#pragma once
#include "data/modelo_grid.h"
#include <QPointer>
#include <QTableView>

namespace tolmo::data::ui {

class CabeceraFiltro;

/// The browse grid: the rows of a data control, the heads of its columns, a filter bar. A grid that
/// may be edited writes a row when it is left: for another row or for another control.
/// Ctrl+C copies the selected rows, Ctrl+A selects all, Del deletes where it is allowed, Escape
/// gives up the cell that is being typed and, pressed again, the whole row. In a column with a
/// button F11 and F12 press it.
class DataGrid : public QTableView {
    Q_OBJECT

  public:
    explicit DataGrid(QWidget* padre = nullptr);
    ~DataGrid() override;

    /// Shows the rows of `adodc`, once; it and `escritorio` must outlive the grid.
    void Enlaza(Adodc& adodc, Escritorio& escritorio);

    /// Its columns and what may be done in it.
    void Define(Grid definicion);
    const Grid& Definicion() const { return grid_; }
    void MuestraBarraFiltro(bool visible);
    /// What the window has a say in while the grid is edited; after Enlaza.
    EventosGrid& Eventos() { return modelo_->eventos; }
    ModeloGrid& Modelo() { return *modelo_; }

    /// As data::LlenaGrid, data::AbreGrid and data::QuitaFiltroGrid, on this grid.
    /// \throws FinDePrograma
    EtiquetaGrid LlenaGrid(const QString& origen, const QString& campos = {});
    EtiquetaGrid AbreGrid(const QString& sql);
    void QuitaFiltroGrid();
    /// Applies what was typed in the filter bar, as leaving it does. \returns false when a text or
    /// the row that is being typed into is refused, after the message
    bool TomaFiltros();

    /// Writes what is being typed. \returns false when it is refused, after the message: whatever
    /// was about to leave the row must not go on
    bool GuardaFila();

    /// The DataField of the current column, or of the first one.
    QString ColumnaActual() const;
    /// A column of the current row, as it is being typed; Empty without a current row.
    Valor ValorActual(const QString& columna) const;
    /// Puts a text into a column of the current row as if it had been typed: it is checked, and may
    /// be refused. \returns false when it is, after the message, or when it can't be edited
    bool Teclea(const QString& columna, const QString& texto);
    /// The selected rows, from 0 and in their order.
    std::vector<int> SelBookmarks() const;
    void SeleccionaTodoGrid();
    void CopiaSeleccion();
    void BorraSeleccion();

    void selectAll() override { SeleccionaTodoGrid(); }
    void reset() override;

  signals:
    /// Another row is current, or none; also after the rows were read anew. What it leads to in
    /// the engine goes through EnFrontera.
    void FilaCambiada();
    /// The button of a column (its index) was pressed in the current row. What is being typed into
    /// the cell has been given up.
    void BotonPulsado(int columna);
    /// The head of a column was clicked and the rows stand in its order.
    void Ordenado(const tolmo::data::EtiquetaGrid& etiqueta);

  protected:
    void currentChanged(const QModelIndex& actual, const QModelIndex& anterior) override;
    QModelIndex moveCursor(CursorAction accion, Qt::KeyboardModifiers teclas) override;
    void keyPressEvent(QKeyEvent* evento) override;
    void mousePressEvent(QMouseEvent* evento) override;
    void mouseReleaseEvent(QMouseEvent* evento) override;
    void mouseDoubleClickEvent(QMouseEvent* evento) override;
    void contextMenuEvent(QContextMenuEvent* evento) override;

  protected slots:
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint destino) override;

  private:
    class Delegado;

    void Frontera(const std::function<void()>& accion);
    void PulsaCabecera(int columna);
    bool RecogeFiltros(Grid& destino);
    void TrasReabrir();
    void SigueAlConjunto();
    void SigueElFoco(const QWidget* antes, const QWidget* ahora);
    void Toma(const QModelIndex& indice, const QString& texto);
    bool CierraEditor();
    bool AnadeAlPie(CursorAction accion) const;
    void VuelveALaCelda(const QModelIndex& celda);
    void PonAnchos();
    int PrimeraVisible() const;
    bool TieneBoton(const QModelIndex& celda) const;
    QModelIndex CeldaDelBoton(const QPoint& sitio) const;
    bool EsTeclaDeBoton(const QKeyEvent& tecla) const;
    void PulsaBoton();

    Grid grid_{};
    Adodc* adodc_ = nullptr;
    Escritorio* escritorio_ = nullptr;
    ModeloGrid* modelo_ = nullptr;
    CabeceraFiltro* cabecera_;
    QPointer<QWidget> editor_{};
    QPersistentModelIndex pulsada_{}; ///< the cell whose button is held down
    bool rechazada_ = false;          ///< the text that was committed last
    bool tomando_ = false;            ///< a typed text is being handed to the model
    bool acompasando_ = false; ///< one of grid and record set is being moved to where the other is
    bool anchosPuestos_ = false;
    int columna_ = 0;
};

} // namespace tolmo::data::ui
