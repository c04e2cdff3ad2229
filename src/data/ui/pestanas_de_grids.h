#pragma once
#include <QObject>
#include <QTabWidget>
#include <functional>
#include <map>

namespace tolmo::data::ui {

/// Keeps the pages of a tab widget in hand when they hold grids that are typed into: a page is left
/// only when what is being typed can be taken, Ctrl+Tab goes to the next page and Ctrl+Shift+Tab to
/// the one before (within a grid the tab keys go from cell to cell), and the page that comes in
/// front has the focus.
class PestanasDeGrids : public QObject {
    Q_OBJECT

  public:
    /// `tomaLoEscrito` writes what is being typed; with false, after its message, the page stays.
    PestanasDeGrids(QTabWidget& pestanas, std::function<bool()> tomaLoEscrito);

    /// The control of a page that gets the focus when it comes in front.
    void PonFoco(QWidget& pagina, QWidget& control) { focos_[&pagina] = &control; }

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void Pasa(int cuantas);
    void DaElFoco();

    QTabWidget& pestanas_;
    std::function<bool()> tomaLoEscrito_;
    std::map<QWidget*, QWidget*> focos_{}; ///< by page
};

} // namespace tolmo::data::ui
