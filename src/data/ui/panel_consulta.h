#pragma once
#include "data/ui/DataGrid.h"
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QToolBar>
#include <functional>

namespace tolmo::data::ui {

/// What every browse window is made of: the grid over its data control, the search box with the
/// label of the search column, the hidden text of the filter and the toolbar. A window may hold
/// two of them.
class PanelConsulta : public QWidget {
    Q_OBJECT

  public:
    /// Why the window is shown, or shown again.
    enum class Motivo { Carga, Filtro, Otro };

    /// `numero` closes the names of its controls: DataGrid1, Adodc1, Text1, Label1, Toolbar1 and
    /// TxtFiltro, or DataGrid2 ... and txtFiltro2. The arguments must outlive it.
    PanelConsulta(Programa& programa, Conexion& conexion, Escritorio& escritorio, int numero = 1,
                  QWidget* padre = nullptr);

    /// Fills the grid: the window calls LlenaGrid or AbreGrid with its own origin and Donde().
    std::function<void()> Llena{};

    /// As data::LlenaGrid and data::AbreGrid; the label takes the search column.
    /// \throws FinDePrograma
    void LlenaGrid(const QString& origen, const QString& campos = {});
    void AbreGrid(const QString& sql);

    /// The condition of the filter for the end of an origin: " where (...)", or nothing.
    QString Donde() const;

    /// The window has become active: the grid is filled, by the reason that was set for it. A load
    /// also searches for what stands in the search box; without a reason the current row is kept.
    /// A row that is being typed into isn't disturbed.
    void Activa();
    void PonMotivo(Motivo motivo) { motivo_ = motivo; }

    /// Applies what was typed in the filter bar and writes the row that is being typed into, as an
    /// action of the window begins: a key or a button may have left the focus there.
    /// \returns false when one is refused, after the message
    bool TomaLoEscrito();

    /// Opens the condition builder on the grid, and fills the grid again.
    void Filtra();
    void QuitaFiltros();

    DataGrid& Rejilla() { return *grid_; }
    Adodc& Datos() { return *adodc_; }
    QLineEdit& Busqueda() { return *texto_; }
    QLineEdit& Condicion() { return *filtro_; }
    QToolBar& Barra() { return *barra_; }

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void CreaBarra();
    void Coloca();
    void NombraControles(int numero);
    QAction* Anade(const char* clave, const QIcon& icono, const QString& ayuda,
                   const std::function<void()>& accion);
    void PonTecla(QAction& accion, const QKeySequence& tecla);
    void AnadeFiltro();
    void MuestraEstadoDeFiltro();
    void PonEtiqueta(const EtiquetaGrid& etiqueta);
    void Hace(const std::function<void()>& accion);

    Programa& programa_;
    Adodc* adodc_;
    QWidget* franja_; ///< above the grid: toolbar and search box
    DataGrid* grid_;
    QToolBar* barra_;
    QLabel* rotulo_;
    QLineEdit* texto_;
    QLineEdit* filtro_;
    QAction* botonFiltro_ = nullptr;
    EtiquetaGrid etiqueta_{};
    Motivo motivo_ = Motivo::Carga;
};

} // namespace tolmo::data::ui
