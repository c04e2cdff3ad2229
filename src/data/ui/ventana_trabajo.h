#pragma once
#include "data/puertos.h"
#include <QDialog>
#include <QElapsedTimer>
#include <exception>

namespace tolmo::data::ui {

/// The base of the windows over a long job, which a button starts or the Tag that the window is
/// shown with. The job runs in the thread of the window and reports to it; while it does, the
/// window refuses to close.
class VentanaTrabajo : public QDialog, protected Progreso {
    Q_OBJECT

  public:
    /// `avisos` must outlive it.
    explicit VentanaTrabajo(Avisos& avisos, QWidget* padre = nullptr);

    /// Shows the window and waits for its end.
    /// \throws ErrorDatos, ErrorEjecucion, ErrorFichero what ended the job of the Tag; the error of
    ///         a button's job ends the process on the spot
    void Muestra(const QString& tag = {});

    /// Every way of closing comes through here.
    void done(int resultado) override;

  protected:
    /// The job that the Tag asks for, if it does. Called once in the life of the window, when it
    /// stands and has been drawn.
    virtual void Activa(const QString& tag) = 0;
    /// True while a job is under way, or anything else that the window must not be closed in.
    virtual bool Ocupada() const = 0;

    Avisos& AvisosDeVentana() const { return avisos_; }

    void showEvent(QShowEvent* evento) override;
    void CedeEventos() override;

  private:
    void HazTrabajoDelTag();

    Avisos& avisos_;
    QString Tag_{};
    bool activada_ = false;
    QElapsedTimer ultimoTurno_{}; ///< since the events had their last turn
    std::exception_ptr fallo_{};
};

} // namespace tolmo::data::ui
