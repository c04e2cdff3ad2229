#pragma once
#include "data/programa.h"
#include "data/sentido.h"
#include <QDialog>
#include <functional>
#include <memory>

namespace Ui {
class FrmFichaUsuarios;
}

/// The card of a web user.
class FrmFichaUsuarios : public QDialog {
    Q_OBJECT

  public:
    /// `programa` must outlive it.
    explicit FrmFichaUsuarios(tolmo::data::Programa& programa, QWidget* padre = nullptr);
    ~FrmFichaUsuarios() override;

    /// What it opens on: with the Tag "1" the user of that code is read as it is shown, or the next
    /// new one for an empty code. Shown again, it keeps what was typed.
    void Prepara(const QString& tag, const QString& codigo);

  protected:
    void showEvent(QShowEvent* evento) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void Conecta();
    void Hace(const std::function<void()>& accion);
    void Activa();
    void DejaCodigo();
    void Lee();
    void PonNuevo(bool nuevo);
    void Actualiza();
    void Anade();
    void Borra();
    void VaA(tolmo::data::Sentido sentido);

    tolmo::data::Programa& programa_;
    std::unique_ptr<Ui::FrmFichaUsuarios> ui_;
    QString Tag_{};
    QString leido_{};    ///< the code that the card shows the user of
    bool nuevo_ = false; ///< no user has that code
};
