#pragma once
#include "configurator/carpetas.h"
#include "data/programa.h"
#include <QDialog>
#include <memory>

namespace Ui {
class FrmRecuperaImagen;
}

/// The folders and pictures of this machine, for a window that needs the path of one. Which files
/// it offers, the caller says in its own text box `txtretorna`.
class FrmRecuperaImagen : public QDialog {
    Q_OBJECT

  public:
    /// `programa` must outlive it. `llamante` is the window whose active control gets the path.
    explicit FrmRecuperaImagen(tolmo::data::Programa& programa, QWidget* llamante = nullptr);
    ~FrmRecuperaImagen() override;

    /// "Directorio" makes it choose a folder; before it is shown.
    void PonTag(const QString& tag);

    void done(int resultado) override;

  protected:
    void showEvent(QShowEvent* evento) override;
    void keyPressEvent(QKeyEvent* evento) override;
    bool eventFilter(QObject* objeto, QEvent* evento) override;

  private:
    void Conecta();
    bool EligeCarpetas() const;
    QString CarpetaInicial() const;
    void CambiaDeUnidad(int indice);
    void AbreElegida();
    void AbreCarpeta(const QString& carpeta);
    void PonCarpeta(const QString& carpeta);
    void PonFichero();
    void PonEleccion(const QString& ruta);
    void Acepta();

    tolmo::data::Programa& programa_;
    std::unique_ptr<Ui::FrmRecuperaImagen> ui_;
    tolmo::configurator::FiltroDeFicheros filtro_{};
    QString carpeta_{};
    QString eleccion_{}; ///< full path; empty while nothing is chosen
};
