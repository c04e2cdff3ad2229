#pragma once
#include "configurator/navegador_opcionales.h"
#include "data/ui/panel_consulta.h"
#include <QDialog>
#include <QPushButton>
#include <QTabWidget>

/// The masters of the attributes and of their values: a tab and a grid for each, the values those
/// of the attribute that is current. A window may open it to have one of them chosen.
class FrmConsCategoriasOpcionales : public QDialog {
    Q_OBJECT

  public:
    /// The references must outlive it. `llamante` is the window below, into whose active control
    /// CmdRetorna writes.
    FrmConsCategoriasOpcionales(tolmo::data::Programa& programa,
                                tolmo::data::Escritorio& escritorio, QWidget* llamante = nullptr);

    /// Before it is shown: what is chosen in it. For a value it opens on those of `CodCategoria`.
    void PonModo(tolmo::configurator::ModoNavegador Modo, const QString& CodCategoria);
    /// Whether CmdRetorna is there; it isn't at first.
    void PermiteRetorno(bool permitido);

    void done(int resultado) override;

  protected:
    void showEvent(QShowEvent* evento) override;

  private:
    void Coloca();
    void DefineCategorias();
    void DefineValores();
    void IntercalaEventos();

    void IrALaCategoria();
    void LlenaValores();
    void MuestraCategoria();
    std::optional<QString> CategoriaActual() const;
    bool CompruebaCategoria(int columna, QString& texto);
    bool CompruebaValor(int columna, const QString& texto);
    bool TomaLoEscrito();
    void Retorna();

    tolmo::data::Programa& programa_;
    QTabWidget* SSTab1_;
    tolmo::data::ui::PanelConsulta* categorias_;
    tolmo::data::ui::PanelConsulta* valores_;
    QLabel* LblCategoria_;
    QPushButton* CmdRetorna_;
    QLineEdit* txtretorna_; ///< the category of the window below
    tolmo::configurator::ModoNavegador Modo_ = tolmo::configurator::ModoNavegador::Categorias;
    std::optional<QString> llenada_{}; ///< the category whose values are in the grid
};
