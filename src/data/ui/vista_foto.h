#pragma once
#include <QFutureWatcher>
#include <QImage>
#include <QLabel>
#include <QTimer>

namespace tolmo::data::ui {

/// Shows a picture file fitted into its own box, with its proportion. It is read in another thread,
/// so that neither its size nor a slow disk holds the window; what can't be read (see LeeFoto)
/// leaves the box empty.
class VistaFoto : public QLabel {
    Q_OBJECT

  public:
    explicit VistaFoto(QWidget* padre = nullptr);
    ~VistaFoto() override;

    /// Whether a picture that is smaller than the box is made larger to fill it, as it is without
    /// this call; for the next one that is shown.
    void PonAmpliar(bool ampliar) { ampliar_ = ampliar; }

    /// Shows the file of a path as the databases hold it, in the place of what is shown or on its
    /// way. Cargada tells when that is done.
    void Muestra(const QString& ruta);
    void Limpia();
    bool HayFoto() const { return !pixmap().isNull(); }

    QSize sizeHint() const override { return {200, 150}; }
    QSize minimumSizeHint() const override { return {40, 30}; }

  signals:
    /// The file was read; `hay` is false when the box stays empty. It comes again when the box has
    /// got another size.
    void Cargada(bool hay);

  protected:
    void resizeEvent(QResizeEvent* evento) override;

  private:
    void Lee();
    void Abandona();
    void Recibe();

    QString ruta_{};
    bool ampliar_ = true;
    QFutureWatcher<QImage> lectura_{};
    QTimer trasCambiarDeTamano_{};
};

} // namespace tolmo::data::ui
