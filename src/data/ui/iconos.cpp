#include "data/ui/iconos.h"
#include "data/ui/dibujos.h"
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <algorithm>
#include <functional>
#include <utility>

namespace tolmo::data::ui {
namespace {

/// Draws an icon anew for every size and palette, on a square of the side that is given. A wider
/// place leaves it air on both sides.
class MotorDeIcono : public QIconEngine {
  public:
    using Trazado = std::function<void(QPainter&, QIcon::Mode)>;

    MotorDeIcono(qreal lado, Trazado trazado) : lado_(lado), trazado_(std::move(trazado)) {}

    QIconEngine* clone() const override { return new MotorDeIcono(lado_, trazado_); }

    QPixmap pixmap(const QSize& tamano, QIcon::Mode modo, QIcon::State estado) override
    {
        QPixmap imagen(tamano);
        imagen.fill(Qt::transparent);
        QPainter pintor(&imagen);
        paint(&pintor, QRect(QPoint(), tamano), modo, estado);
        return imagen;
    }

    void paint(QPainter* pintor, const QRect& sitio, QIcon::Mode modo, QIcon::State) override
    {
        pintor->save();
        pintor->setRenderHint(QPainter::Antialiasing);
        const qreal escala = std::min(sitio.width(), sitio.height()) / lado_;
        pintor->translate(QRectF(sitio).center());
        pintor->scale(escala, escala);
        pintor->translate(-lado_ / 2, -lado_ / 2);
        trazado_(*pintor, modo);
        pintor->restore();
    }

  private:
    qreal lado_;
    Trazado trazado_;
};

void PintaConPaleta(QPainter& pintor, Dibujo dibujo, Tinta tinta, QIcon::Mode modo)
{
    const QPalette paleta = QGuiApplication::palette();
    const auto grupo = modo == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor trazo = paleta.color(grupo, QPalette::ButtonText);
    const bool sinAcento = tinta == Tinta::Una || modo == QIcon::Disabled;
    Pinta(pintor, dibujo, trazo, sinAcento ? trazo : paleta.color(grupo, QPalette::Highlight));
}

} // namespace

QIcon Icono(Dibujo dibujo, Tinta tinta)
{
    return QIcon(new MotorDeIcono(LadoDibujo, [=](QPainter& pintor, QIcon::Mode modo) {
        PintaConPaleta(pintor, dibujo, tinta, modo);
    }));
}

QIcon IconoPrograma()
{
    return QIcon(new MotorDeIcono(1, [](QPainter& pintor, QIcon::Mode) { PintaEmblema(pintor); }));
}

} // namespace tolmo::data::ui
