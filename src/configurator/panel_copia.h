#pragma once
#include "configurator/copia.h"
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

namespace Ui {
class PanelCopia;
}

namespace tolmo::configurator {

/// How the article picker is opened for a field.
struct PeticionArticulo {
    QString Tag{};
    QString filtro{}; ///< the condition that it opens with
    bool DevuelveCodAlternativo = false;
};

/// The fields that choose the articles which take another one's configuration, each with what its
/// code is called.
class PanelCopia : public QWidget {
    Q_OBJECT

  public:
    /// `programa` must outlive it.
    explicit PanelCopia(data::Programa& programa, QWidget* padre = nullptr);
    ~PanelCopia() override;

    /// Opens the picker over the window; what is chosen goes into the box.
    std::function<void(const PeticionArticulo&, QLineEdit& caja)> eligeArticulo{};
    /// Copies to a selection.
    std::function<void(const SeleccionCopia&)> copia{};

    SeleccionCopia Seleccion() const;
    QProgressBar& PrgBar();

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    struct CampoDeArticulo {
        QLineEdit* caja = nullptr;
        bool alternativo = false;
    };

    void ConectaArticulo(QLineEdit& caja, QLabel& etiqueta, bool alternativo);
    void ConectaCodigo(QLineEdit& caja, QLabel& etiqueta, bool deProveedor);
    void AlDejar(QLineEdit& caja, const std::function<void()>& comprobacion);
    void Elige(const CampoDeArticulo& campo, int tecla);
    void Exporta();

    data::Programa& programa_;
    std::unique_ptr<Ui::PanelCopia> ui_;
    std::vector<CampoDeArticulo> deArticulo_{};
};

} // namespace tolmo::configurator
