#pragma once
#include "configurator/modelo_combinaciones.h"
#include "configurator/panel_copia.h"
#include "configurator/panel_valor.h"
#include "data/ui/panel_consulta.h"
#include "data/ui/ventana_trabajo.h"
#include <QTimer>
#include <memory>

namespace Ui {
class FrmConsPSArtConfigurador;
}

/// The editor of the attributes and values that an article has combinations of: a grid of its
/// categories, a grid of the values of the current one with increments and picture, the copy to
/// other articles, and the combinations as the shop will have them.
class FrmConsPSArtConfigurador : public tolmo::data::ui::VentanaTrabajo {
    Q_OBJECT

  public:
    /// The references must outlive it.
    FrmConsPSArtConfigurador(tolmo::data::Programa& programa, tolmo::data::Escritorio& escritorio,
                             QWidget* padre = nullptr);
    ~FrmConsPSArtConfigurador() override;

    /// What is being typed is written first; a row that is refused keeps the window open.
    void done(int resultado) override;

  protected:
    void Activa(const QString&) override {} // no Tag asks for anything
    bool Ocupada() const override { return copiando_; }
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void Hace(const std::function<void()>& accion);
    void Coloca();
    void DefineCategorias();
    void DefineValores();
    void Conecta();

    void EligeArticulo();
    void DejaArticulo(bool aunqueSeaElMismo);
    void BuscaArticulo();
    void LlenaGridCat();
    void LlenaGridVal();
    void Llena(tolmo::data::ui::PanelConsulta& panel, const QString& sql);
    void MuestraValor();
    void Recuenta();

    QString CategoriaActual() const;
    bool TomaCategoria(int columna, QString& texto);
    bool TomaValor(int columna, QString& texto);
    void PonEnLaFila(tolmo::data::ui::PanelConsulta& panel, const tolmo::data::Cambios& cambios);
    bool BorraCategoria();
    bool BorraValor();
    void BuscaCategoria();
    void BuscaValor();
    QString Retornado(QDialog& hija);
    std::optional<QString> EligeImagen();

    void EligeDestino(const tolmo::configurator::PeticionArticulo& peticion, QLineEdit& caja);
    void Copia(const tolmo::configurator::SeleccionCopia& seleccion);
    void Habilita(bool habilitada);
    bool TomaLoEscrito();

    void Avanza(int posicion, int total) override;
    // It has no status list, and its bar always shows.
    void LimpiaEstado() override {}
    void LineaEstado(const QString&) override {}
    void MuestraBarra(bool) override {}
    void HabilitaPestanas(bool) override {}

    tolmo::data::Programa& programa_;
    tolmo::data::Escritorio& escritorio_;
    std::unique_ptr<Ui::FrmConsPSArtConfigurador> ui_;
    tolmo::data::ui::PanelConsulta* categorias_;
    tolmo::data::ui::PanelConsulta* valores_;
    tolmo::configurator::PanelValor* valor_;
    tolmo::configurator::PanelCopia* copia_;
    QLineEdit* txtretorna_;
    tolmo::configurator::ModeloCombinaciones combinaciones_{};
    QTimer reposo_{}; ///< rings when the changes of the moment are done
    QString articulo_{};
    QString CodCategoria_{}; ///< whose values are in their grid
    bool copiando_ = false;
};
