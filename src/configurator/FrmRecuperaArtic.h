#pragma once
#include "data/ui/ventana_consulta.h"

/// The articles of the company, for a window that needs the code of one. Those of the type 'OB'
/// can't be chosen.
class FrmRecuperaArtic : public tolmo::data::ui::VentanaConsulta {
    Q_OBJECT

  public:
    /// The references must outlive it. `llamante` is the window whose active control gets the code.
    FrmRecuperaArtic(tolmo::data::Programa& programa, tolmo::data::Escritorio& escritorio,
                     QWidget* llamante = nullptr);

    /// Why it is opened: "", "FAMILIA" or "F8". It is filled as soon as it is active in any case.
    void PonTag(const QString& tag);
    /// The condition that it opens with.
    void PonFiltro(const QString& condicion);
    /// Whether the alternative code is shown and given back; before it is shown.
    void PonDevuelveCodAlternativo(bool devuelve);

  protected:
    QString Origen() const override;
    void showEvent(QShowEvent* evento) override;
    void hideEvent(QHideEvent* evento) override;

  private:
    tolmo::data::Programa& programa_;
    tolmo::data::Dialecto dialectoDelLlamante_;
};
