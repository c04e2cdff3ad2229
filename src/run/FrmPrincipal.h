#pragma once
#include "feed/FrmGenerarXMLsolostock.h"
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
    /// What makes the engines of the windows that it opens.
    struct Fabricas {
        tolmo::sync::FabricaMotor motor{};
        tolmo::feed::FabricaGenerador generador{};
    };

    /// `eco` gets the status lines of a run that the command line asked for.
    FrmPrincipal(tolmo::data::Programa& programa, const tolmo::run::Entorno& entorno,
                 Fabricas fabricas, FrmSincronizar::Eco eco = {});
    ~FrmPrincipal() override;

    /// The load, with the whole job of a command line. The window isn't shown by it.
    /// \throws data::FinDePrograma when a statement failed and its own boxes were shown
    tolmo::run::Desenlace Carga();

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
    void GeneraSolostocks();
    void VuelveAlFrente();
    void MuestraInformacion();
    void EnProximaVersion(const QString& que);

    std::optional<tolmo::run::AccesoSql> PideServidorSql(const QString& servidor) override;
    std::optional<tolmo::run::EmpresaElegida> EligeEmpresa(const QStringList& empresas) override;
    void MuestraCmdSoloStock(bool visible) override;
    void HabilitaCmdAtributosValores(bool habilitado) override;
    void AbreConfiguracion(const QString& empresa, const QString& descripcion) override;
    void MuestraSincronizar(const QString& tag) override;
    bool MuestraSolostocks(const QString& tag) override;

    tolmo::data::Programa& programa_;
    tolmo::run::Entorno entorno_;
    Fabricas fabricas_;
    FrmSincronizar::Eco eco_;
    std::unique_ptr<Ui::FrmPrincipal> ui_;
    tolmo::run::Arranque arranque_;
    bool activacionPendiente_ = false;
};
