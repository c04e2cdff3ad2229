#pragma once
#include "data/adodc.h"
#include <QDialog>
#include <exception>
#include <memory>

namespace Ui {
class FrmConfiguracion;
}

/// The editor of a company's parameters, and in a grid of its own those of each language. The
/// fields are written by CmdAceptar alone, a row of the grid as it is left.
class FrmConfiguracion : public QDialog {
    Q_OBJECT

  public:
    /// The references must outlive it.
    FrmConfiguracion(tolmo::data::Programa& programa, tolmo::data::Escritorio& escritorio,
                     QWidget* padre = nullptr);
    ~FrmConfiguracion() override;

    /// What it opens on. With the Tag "1" the fields are read as it is shown; shown again, it keeps
    /// what was typed.
    void Prepara(const QString& tag, const QString& empresa, const QString& descripcion);

    /// \throws ErrorDatos, FinDePrograma what kept it from being filled
    int exec() override;
    void done(int resultado) override;

  protected:
    void showEvent(QShowEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void DefineIdiomas(tolmo::data::Escritorio& escritorio);
    void Activa();
    void DejaIdioma();
    void PreguntaConfigurador(bool marcado);
    void Acepta();
    QString Empresa() const;

    tolmo::data::Programa& programa_;
    std::unique_ptr<Ui::FrmConfiguracion> ui_;
    tolmo::data::Adodc* adodc_;
    QString Tag_{};
    std::exception_ptr fallo_{};
};
