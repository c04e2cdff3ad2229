#include "run/FrmSeleccionaEmpresa.h"
#include "ui_FrmSeleccionaEmpresa.h"

FrmSeleccionaEmpresa::FrmSeleccionaEmpresa(const QStringList& empresas, QWidget* padre)
    : QDialog(padre), ui_(std::make_unique<Ui::FrmSeleccionaEmpresa>())
{
    ui_->setupUi(this);
    ui_->CmbEmpresa->addItems(empresas);
    ui_->CmbEmpresa->setCurrentIndex(empresas.isEmpty() ? -1 : 0);
    // A completer would put a listed company in the place of what was typed.
    ui_->CmbEmpresa->setCompleter(nullptr);
    connect(ui_->CmdAceptar, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->cmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

FrmSeleccionaEmpresa::~FrmSeleccionaEmpresa() = default;

tolmo::run::EmpresaElegida FrmSeleccionaEmpresa::Eleccion() const
{
    return {.texto = ui_->CmbEmpresa->currentText(),
            .configuracion = ui_->ChkConfiguracion->isChecked()};
}
