#include "run/FrmConexionSqlServer.h"
#include "ui_FrmConexionSqlServer.h"
#include <QEvent>

using tolmo::run::AccesoSql;

FrmConexionSqlServer::FrmConexionSqlServer(const QString& servidor, QWidget* padre)
    : QDialog(padre), ui_(std::make_unique<Ui::FrmConexionSqlServer>())
{
    ui_->setupUi(this);
    ui_->TxtServidor->setText(servidor);
    for (QLineEdit* caja : {ui_->TxtServidor, ui_->TxtCodUsuario, ui_->TxtClvUsuario})
        caja->installEventFilter(this);
    connect(ui_->Option2, &QRadioButton::toggled, this, [this](bool conUsuario) {
        ui_->TxtCodUsuario->setEnabled(conUsuario);
        ui_->TxtClvUsuario->setEnabled(conUsuario);
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

bool FrmConexionSqlServer::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() == QEvent::FocusIn)
        // Behind the press of the mouse that brings the focus, which would clear the selection.
        if (auto* caja = qobject_cast<QLineEdit*>(objeto))
            QMetaObject::invokeMethod(caja, &QLineEdit::selectAll, Qt::QueuedConnection);
    return QDialog::eventFilter(objeto, evento);
}
