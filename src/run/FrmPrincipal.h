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
    /// Makes a window that is to be shown modally over `padre`.
    using FabricaVentana = std::function<std::unique_ptr<QDialog>(QWidget* padre)>;
    /// The same for FrmConfiguracion: on the company of this code and description, with this Tag.
    using FabricaConfiguracion = std::function<std::unique_ptr<QDialog>(
        const QString& tag, const QString& empresa, const QString& descripcion, QWidget* padre)>;

    /// What makes the windows that it opens, or the engines of those that it makes itself.
    struct Fabricas {
        tolmo::sync::FabricaMotor motor{};
        tolmo::feed::FabricaGenerador generador{};
        FabricaConfiguracion configuracion{};
        FabricaVentana usuarios{};  ///< FrmConsUsuarios
        FabricaVentana articulos{}; ///< FrmRecuperaArtic, for the windows that ask for an article
        FabricaVentana atributos{}; ///< FrmConsPSArtConfigurador
    };

    /// The references must outlive it. `eco` gets the status lines of a run that the command line
    /// asked for.
    FrmPrincipal(tolmo::data::Programa& programa, tolmo::data::Escritorio& escritorio,
                 const tolmo::run::Entorno& entorno, Fabricas fabricas,
                 FrmSincronizar::Eco eco = {});
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
    void PonIconos();
    void ConectaBotones();
    void ConectaMenu();
    void Activa();
    void Sincroniza();
    void Configura();
    void GeneraSolostocks();
    void ConfiguraAtributos();
    void MuestraUsuarios();
    void MuestraModal(const FabricaVentana& fabrica);
    void VuelveAlFrente();
    void AbreRegistro();
    void MuestraInformacion();

    std::optional<tolmo::run::AccesoSql> PideServidorSql(const QString& servidor) override;
    std::optional<tolmo::run::EmpresaElegida> EligeEmpresa(const QStringList& empresas) override;
    void MuestraCmdSoloStock(bool visible) override;
    void HabilitaCmdAtributosValores(bool habilitado) override;
    void AbreConfiguracion(const QString& empresa, const QString& descripcion) override;
    void MuestraSincronizar(const QString& tag) override;
    bool MuestraSolostocks(const QString& tag) override;

    tolmo::data::Programa& programa_;
    tolmo::data::Escritorio& escritorio_;
    tolmo::run::Entorno entorno_;
    Fabricas fabricas_;
    FrmSincronizar::Eco eco_;
    std::unique_ptr<Ui::FrmPrincipal> ui_;
    tolmo::run::Arranque arranque_;
    bool activacionPendiente_ = false;
};
