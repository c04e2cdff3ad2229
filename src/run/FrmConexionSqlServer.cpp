#include "run/FrmConexionSqlServer.h"
#include "data/ui/cajas.h"
#include "data/ui/controles.h"
#include "ui_FrmConexionSqlServer.h"

using tolmo::run::AccesoSql;

FrmConexionSqlServer::FrmConexionSqlServer(const QString& servidor, QWidget* padre)
    : QDialog(padre), ui_(std::make_unique<Ui::FrmConexionSqlServer>())
{
    ui_->setupUi(this);
    ui_->TxtServidor->setText(servidor);
    tolmo::data::ui::SeleccionaAlEntrar(*this);
    tolmo::data::ui::RevelaCon(*ui_->CmdVer, *ui_->TxtClvUsuario);
    connect(ui_->Option2, &QRadioButton::toggled, this, [this](bool conUsuario) {
        ui_->TxtCodUsuario->setEnabled(conUsuario);
        ui_->TxtClvUsuario->setEnabled(conUsuario);
        ui_->CmdVer->setEnabled(conUsuario);
    });
    connect(ui_->CmmAceptar, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->CmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

FrmConexionSqlServer::~FrmConexionSqlServer() = default;

AccesoSql FrmConexionSqlServer::Acceso() const
{
    AccesoSql acceso{.servidor = ui_->TxtServidor->text(), .integrada = ui_->Option1->isChecked()};
    if (!acceso.integrada)
        acceso.credenciales = {.usuario = ui_->TxtCodUsuario->text(),
                               .clave = ui_->TxtClvUsuario->text()};
    return acceso;
}
