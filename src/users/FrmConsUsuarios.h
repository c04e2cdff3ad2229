#pragma once
#include "data/ui/ventana_consulta.h"

/// The web users of the company, and the way to their cards.
class FrmConsUsuarios : public tolmo::data::ui::VentanaConsulta {
    Q_OBJECT

  public:
    /// As VentanaConsulta. No window asks for a user, so that there is nothing to give back.
    FrmConsUsuarios(tolmo::data::Programa& programa, tolmo::data::Escritorio& escritorio,
                    QWidget* llamante = nullptr);

  protected:
    QString Origen() const override;
    void keyPressEvent(QKeyEvent* evento) override;

  private:
    QToolBar* CreaToolbar2();
    void Nuevo();
    void Edita();
    void AbreFicha(const QString& codigo);

    tolmo::data::Programa& programa_;
};
