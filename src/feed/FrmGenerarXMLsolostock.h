#pragma once
#include "feed/generador.h"
#include <QDialog>
#include <QElapsedTimer>
#include <QString>
#include <exception>
#include <memory>

namespace Ui {
class FrmGenerarXMLsolostock;
}

/// The screen of the feed for Solostocks. It refuses to close while a generation is under way.
class FrmGenerarXMLsolostock : public QDialog, private tolmo::data::Progreso {
    Q_OBJECT

  public:
    /// The load of the window: the engine is made here.
    /// \param hayOperador false where nobody can press a button: the window then goes away where it
    ///        would stay for another press
    /// \throws data::ErrorSql, data::ErrorFichero as the engine's load does
    FrmGenerarXMLsolostock(tolmo::data::Avisos& avisos,
                           const tolmo::feed::FabricaGenerador& fabrica, QWidget* padre = nullptr,
                           bool hayOperador = true);
    ~FrmGenerarXMLsolostock() override;

    /// Shows the window and waits for its end. With the Tag "AUTO" it generates as soon as it
    /// stands.
    /// \returns false when the generation came to no end and nobody can try again
    /// \throws data::ErrorDatos, data::ErrorEjecucion what ended the generation of a Tag; the error
    ///         of a button's ends the process on the spot
    bool Muestra(const QString& tag = {});

    void done(int resultado) override;

  protected:
    void showEvent(QShowEvent* evento) override;

  private:
    void Activa();
    void Pulsa();
    void Genera();

    void Avanza(int posicion, int total) override;
    void CedeEventos() override;
    // It has no status list and no tabs, and its bar always shows.
    void LimpiaEstado() override {}
    void LineaEstado(const QString&) override {}
    void MuestraBarra(bool) override {}
    void HabilitaPestanas(bool) override {}

    tolmo::data::Avisos& avisos_;
    std::unique_ptr<Ui::FrmGenerarXMLsolostock> ui_;
    std::unique_ptr<tolmo::feed::Generador> generador_;
    bool hayOperador_;
    QString Tag_{};
    bool activada_ = false;
    bool inacabada_ = false;      ///< it stopped before its end, and nobody can try again
    QElapsedTimer ultimoTurno_{}; ///< since the events had their last turn
    std::exception_ptr fallo_{};
};
