#pragma once
#include "sync/motor.h"
#include <QDialog>
#include <QElapsedTimer>
#include <QString>
#include <QTimer>
#include <exception>
#include <functional>
#include <memory>

namespace Ui {
class FrmSincronizar;
}

/// The screen of the synchronisation. It starts the runs of its buttons or of its Tag, shows how
/// they go, and refuses to close while one is under way.
class FrmSincronizar : public QDialog, private tolmo::data::Progreso {
    Q_OBJECT

  public:
    /// A copy of each status line for whoever follows the run elsewhere.
    using Eco = std::function<void(const QString&)>;

    /// The load of the window: the engine is made here.
    /// \throws data::ErrorSql when the shop can't be reached
    FrmSincronizar(tolmo::data::Avisos& avisos, const tolmo::sync::FabricaMotor& fabrica,
                   QWidget* padre = nullptr, Eco eco = {});
    ~FrmSincronizar() override;

    /// Shows the window and waits for its end. With a Tag ("AUTO", "SOLOARTIC",
    /// "SOLOARTIC_SIN_STOCK", "STOCK") it starts that run as soon as it stands.
    /// \throws data::ErrorDatos, data::ErrorEjecucion, data::ErrorFichero what ended the run of a
    ///         Tag; the error of a button's run ends the process on the spot
    void Muestra(const QString& tag = {});

    void done(int resultado) override;

  protected:
    void showEvent(QShowEvent* evento) override;

  private:
    void ConectaBotones();
    void Activa();
    void Lanza(const tolmo::sync::Opciones& opciones);
    void LanzaYCierra(const tolmo::sync::Opciones& opciones);
    void BorraImagenesObsoletas();
    void EnProximaVersion(const QString& que);
    bool eventFilter(QObject* objeto, QEvent* evento) override;

    tolmo::sync::Opciones OpcionesTodo() const;
    tolmo::sync::Opciones OpcionesArticulos() const;
    tolmo::sync::Opciones OpcionesFamilias() const;

    void LimpiaEstado() override;
    void LineaEstado(const QString& linea) override;
    void MuestraBarra(bool visible) override;
    void Avanza(int posicion, int total) override;
    void CedeEventos() override;
    bool SigueElPrograma() const override;
    void HabilitaPestanas(bool habilitadas) override;

    tolmo::data::Avisos& avisos_;
    Eco eco_;
    std::unique_ptr<Ui::FrmSincronizar> ui_;
    std::unique_ptr<tolmo::sync::Motor> motor_;
    QString Tag_{};
    bool activada_ = false;
    QTimer desplazamiento_{}; ///< brings the list to its last line, once for each turn of events
    QElapsedTimer ultimoTurno_{}; ///< since the events had their last turn
    bool purgando_ = false;
    bool finPedido_ = false; ///< the desktop asked the program to end during the purge
    std::exception_ptr fallo_{};
};
