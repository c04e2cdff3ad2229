#pragma once
#include "data/ui/ventana_trabajo.h"
#include "feed/generador.h"
#include <QString>
#include <memory>

namespace Ui {
class FrmGenerarXMLsolostock;
}

/// The screen of the feed for Solostocks. With the Tag "AUTO" it generates as soon as it stands.
class FrmGenerarXMLsolostock : public tolmo::data::ui::VentanaTrabajo {
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

    /// As the base does.
    /// \returns false when the generation came to no end and nobody can try again
    bool Muestra(const QString& tag = {});

  protected:
    void Activa(const QString& tag) override;
    bool Ocupada() const override;

  private:
    void Pulsa();
    void Genera();

    void Avanza(int posicion, int total) override;
    // It has no status list and no tabs, and its bar always shows.
    void LimpiaEstado() override {}
    void LineaEstado(const QString&) override {}
    void MuestraBarra(bool) override {}
    void HabilitaPestanas(bool) override {}

    std::unique_ptr<Ui::FrmGenerarXMLsolostock> ui_;
    std::unique_ptr<tolmo::feed::Generador> generador_;
    bool hayOperador_;
    bool inacabada_ = false; ///< it stopped before its end, and nobody can try again
};
