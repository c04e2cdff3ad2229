#pragma once
#include "data/ui/ventana_trabajo.h"
#include "sync/motor.h"
#include <QString>
#include <functional>
#include <memory>

namespace Ui {
class FrmSincronizar;
}

/// The screen of the synchronisation. It starts the runs of its buttons or of its Tag ("AUTO",
/// "SOLOARTIC", "SOLOARTIC_SIN_STOCK", "STOCK") and shows how they go.
class FrmSincronizar : public tolmo::data::ui::VentanaTrabajo {
    Q_OBJECT

  public:
    /// A copy of each status line for whoever follows the run elsewhere.
    using Eco = std::function<void(const QString&)>;
    /// Makes a window over `padre` that writes the code of an article into its active control.
    using FabricaSelector = std::function<std::unique_ptr<QDialog>(QWidget* padre)>;

    /// The load of the window: the engine is made here.
    /// \throws data::ErrorSql when the shop can't be reached
    FrmSincronizar(tolmo::data::Avisos& avisos, const tolmo::sync::FabricaMotor& fabrica,
                   QWidget* padre = nullptr, Eco eco = {});
    ~FrmSincronizar() override;

    /// What a double click on the boxes of the range opens; nothing as long as there is none.
    void PonSelectorDeArticulos(FabricaSelector fabrica) { selector_ = std::move(fabrica); }

  protected:
    void Activa(const QString& tag) override;
    bool Ocupada() const override;
    void keyPressEvent(QKeyEvent* evento) override;

  private:
    void ConectaBotones();
    void Lanza(const tolmo::sync::Opciones& opciones);
    void LanzaYCierra(const tolmo::sync::Opciones& opciones);
    void BorraImagenesObsoletas();
    void EligeArticulo();
    bool eventFilter(QObject* objeto, QEvent* evento) override;

    tolmo::sync::Opciones OpcionesTodo() const;
    tolmo::sync::Opciones OpcionesArticulos() const;
    tolmo::sync::Opciones OpcionesFamilias() const;

    void LimpiaEstado() override;
    void LineaEstado(const QString& linea) override;
    void MuestraBarra(bool visible) override;
    void Avanza(int posicion, int total) override;
    bool SigueElPrograma() const override;
    void HabilitaPestanas(bool habilitadas) override;

    Eco eco_;
    FabricaSelector selector_{};
    std::unique_ptr<Ui::FrmSincronizar> ui_;
    std::unique_ptr<tolmo::sync::Motor> motor_;
    bool purgando_ = false;
    bool finPedido_ = false; ///< the desktop asked the program to end during the purge
};
