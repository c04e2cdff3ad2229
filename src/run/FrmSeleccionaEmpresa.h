#pragma once
#include "run/ventanas_de_arranque.h"
#include <QDialog>
#include <memory>

namespace Ui {
class FrmSeleccionaEmpresa;
}

/// Asks which company to open. The first one is chosen from the start; a text typed by hand passes
/// as it stands.
class FrmSeleccionaEmpresa : public QDialog {
    Q_OBJECT

  public:
    explicit FrmSeleccionaEmpresa(const QStringList& empresas, QWidget* padre = nullptr);
    ~FrmSeleccionaEmpresa() override;

    tolmo::run::EmpresaElegida Eleccion() const;

  private:
    std::unique_ptr<Ui::FrmSeleccionaEmpresa> ui_;
};
