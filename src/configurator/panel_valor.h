#pragma once
#include "configurator/foto_valor.h"
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

namespace Ui {
class PanelValor;
}
namespace tolmo::data {
struct Programa;
class Escritorio;
} // namespace tolmo::data

namespace tolmo::configurator {

/// What the editor shows beside the grid of the values: the description of the current one and its
/// picture, which is chosen, typed, opened and taken away here.
class PanelValor : public QWidget {
    Q_OBJECT

  public:
    /// The references must outlive it.
    PanelValor(data::Programa& programa, data::Escritorio& escritorio, QWidget* padre = nullptr);
    ~PanelValor() override;

    /// Lets the operator choose a picture; nothing when he doesn't.
    std::function<std::optional<QString>()> eligeImagen{};

    /// Shows a value; without one, or for one that the article doesn't have, the panel is empty.
    /// \throws data::FinDePrograma
    void Muestra(const std::optional<ValorDeArticulo>& valor);

    /// Keeps a path that is still being typed. \throws data::FinDePrograma
    void GuardaLoEscrito();

  private:
    void Hace(const std::function<void()>& accion);
    void Examina();
    void Edita();
    void Quita();
    void CargaFoto();

    data::Programa& programa_;
    data::Escritorio& escritorio_;
    std::unique_ptr<Ui::PanelValor> ui_;
    std::optional<ValorDeArticulo> valor_{};
    QString guardada_{}; ///< the picture as the table has it
};

} // namespace tolmo::configurator
