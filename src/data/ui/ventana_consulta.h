#pragma once
#include "data/ui/panel_consulta.h"
#include <QDialog>
#include <QPushButton>
#include <QVBoxLayout>

namespace tolmo::data::ui {

/// The base of the browse windows. A window defines the columns of its grid, gives the origin of
/// its rows and adds what is its own:
///
///     FrmConsUsuarios::FrmConsUsuarios(...) : VentanaConsulta(...)
///     {
///         setWindowTitle("Consulta de usuarios");
///         Panel().Rejilla().Define({.columnas = {...}});
///     }
///     QString FrmConsUsuarios::Origen() const { return "USUARIOS" + Panel().Donde(); }
class VentanaConsulta : public QDialog {
    Q_OBJECT

  public:
    /// The references must outlive it. `llamante` is the window below, into whose active control
    /// CmdRetorna writes.
    VentanaConsulta(Programa& programa, Conexion& conexion, Escritorio& escritorio,
                    QWidget* llamante = nullptr);

    PanelConsulta& Panel() { return *panel_; }
    const PanelConsulta& Panel() const { return *panel_; }

    /// Whether CmdRetorna is there; where it isn't, a double click does nothing.
    void PermiteRetorno(bool permitido);
    /// The column whose value is given back; empty for the current one.
    void PonColumnaDeRetorno(const QString& columna) { columnaDeRetorno_ = columna; }

    void done(int resultado) override;

  protected:
    /// A table, and behind it the window's own condition.
    virtual QString Origen() const = 0;
    /// The columns that are read; empty for those of the grid.
    virtual QString Campos() const { return {}; }

    /// Shows a window over this one and waits for its end; then this one is active again, for
    /// `motivo`. \returns the result of the window
    int MuestraHija(QDialog& hija, PanelConsulta::Motivo motivo = PanelConsulta::Motivo::Otro);

    /// The rows of widgets: what a window adds goes in front of the panel or behind it.
    QVBoxLayout& Columna() { return *columna_; }

    void showEvent(QShowEvent* evento) override;

  private:
    void Retorna();

    Programa& programa_;
    QVBoxLayout* columna_;
    PanelConsulta* panel_;
    QPushButton* retorno_;
    QString columnaDeRetorno_{};
};

} // namespace tolmo::data::ui
