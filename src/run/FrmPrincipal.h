#pragma once
#include "run/arranque.h"
#include "sync/FrmSincronizar.h"
#include <QMainWindow>
#include <memory>

namespace Ui {
class FrmPrincipal;
}

/// The main window. Its load is the start of the process; every other window is modal over it.
class FrmPrincipal : public QMainWindow, private tolmo::run::VentanasDeArranque {
    Q_OBJECT

  public:
    /// `eco` gets the status lines of a run that the command line asked for.
    FrmPrincipal(tolmo::data::Programa& programa, const tolmo::run::Entorno& entorno,
                 tolmo::sync::FabricaMotor fabrica, FrmSincronizar::Eco eco = {});
    ~FrmPrincipal() override;

    /// The load, with the whole job of a command line. The window isn't shown by it.
    /// \throws data::FinDePrograma when a statement failed and its own boxes were shown
    tolmo::run::Desenlace Carga();

    /// True when the command line asked for something that this version can't do.
    bool TrabajoPendiente() const { return trabajoPendiente_; }

  signals:
    /// The window has unloaded.
    void Descargada();

  protected:
    bool event(QEvent* evento) override;
    void closeEvent(QCloseEvent* evento) override;

  private:
    void ConectaBotones();
    void Activa();
    void Sincroniza();
    void VuelveAlFrente();
    void MuestraInformacion();
    void EnProximaVersion(const QString& que);

    std::optional<tolmo::run::AccesoSql> PideServidorSql(const QString& servidor) override;
    std::optional<tolmo::run::EmpresaElegida> EligeEmpresa(const QStringList& empresas) override;
    void MuestraCmdSoloStock(bool visible) override;
    void HabilitaCmdAtributosValores(bool habilitado) override;
    void AbreConfiguracion(const QString& empresa, const QString& descripcion) override;
    void MuestraSincronizar(const QString& tag) override;
    void MuestraSolostocks(const QString& tag) override;

    tolmo::data::Programa& programa_;
    tolmo::run::Entorno entorno_;
    tolmo::sync::FabricaMotor fabrica_;
    FrmSincronizar::Eco eco_;
    std::unique_ptr<Ui::FrmPrincipal> ui_;
    tolmo::run::Arranque arranque_;
    bool activacionPendiente_ = false;
    bool trabajoPendiente_ = false;
};
