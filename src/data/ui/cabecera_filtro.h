#pragma once
#include <QHeaderView>
#include <QStringList>
#include <vector>

class QLineEdit;

namespace tolmo::data::ui {

/// The heads of a grid's columns and, below them, the filter bar: a box for each column. The boxes
/// are named FilterText_0, FilterText_1...
class CabeceraFiltro : public QHeaderView {
    Q_OBJECT

  public:
    explicit CabeceraFiltro(QWidget* padre);
    ~CabeceraFiltro() override;

    void MuestraBarra(bool visible);
    /// Puts a text into each box; there are as many boxes as texts.
    void PonTextos(const QStringList& textos);
    QStringList Textos() const;

    /// Puts each box under the head of its column, wherever that has been scrolled to.
    void ColocaCajas();

    QSize sizeHint() const override;

  signals:
    /// The focus has left the bar, or Enter was pressed in a box.
    void BarraDejada();

  protected:
    void updateGeometries() override;
    bool focusNextPrevChild(bool siguiente) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void SigueElFoco(const QWidget* antes, const QWidget* ahora);
    bool EsCaja(const QWidget* control) const;
    void PonAntesDelGrid(QWidget& caja);
    int AltoDeBarra() const;

    std::vector<QLineEdit*> cajas_{};
    bool barra_ = false;
};

} // namespace tolmo::data::ui
