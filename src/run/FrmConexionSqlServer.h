#pragma once
#include "run/ventanas_de_arranque.h"
#include <QDialog>
#include <memory>

namespace Ui {
class FrmConexionSqlServer;
}

/// Asks where the SQL Server is and how to log in. Left in any way but by its accept button, it
/// counts as cancelled.
class FrmConexionSqlServer : public QDialog {
    Q_OBJECT

  public:
    /// `servidor` is offered as data source.
    explicit FrmConexionSqlServer(const QString& servidor, QWidget* padre = nullptr);
    ~FrmConexionSqlServer() override;

    /// What was typed; no user and password under integrated security.
    tolmo::run::AccesoSql Acceso() const;

  private:
    std::unique_ptr<Ui::FrmConexionSqlServer> ui_;
};
