#include "data/ui/iconos.h"
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPalette>

namespace tolmo::data::ui {
namespace {

/// The drawings are laid out on a square of this side.
constexpr qreal Lado = 16;
constexpr qreal Trazo = 1.5;

void PintaExtremo(QPainter& pintor)
{
    pintor.drawLine(QPointF(3.5, 3), QPointF(3.5, 13));
    pintor.drawPolygon(QPolygonF({{12.5, 3.5}, {12.5, 12.5}, {6, 8}}));
}

void PintaFiltro(QPainter& pintor)
{
    pintor.drawPolygon(
        QPolygonF({{2, 3}, {14, 3}, {9.5, 8.5}, {9.5, 13.5}, {6.5, 12}, {6.5, 8.5}}));
}

void PintaLupa(QPainter& pintor)
{
    pintor.setBrush(Qt::NoBrush);
    pintor.drawEllipse(QPointF(9, 7), 5, 5);
    pintor.drawLine(QPointF(5.4, 10.6), QPointF(2, 14));
    pintor.drawPolyline(QPolygonF({{10.2, 4.6}, {7.8, 7}, {10.2, 9.4}}));
}

/// What goes forward is the mirror image of what goes back.
bool EsReflejo(Dibujo dibujo)
{
    return dibujo == Dibujo::Ultimo || dibujo == Dibujo::BuscaSiguiente;
}

class MotorDeIcono : public QIconEngine {
  public:
    explicit MotorDeIcono(Dibujo dibujo) : dibujo_(dibujo) {}

    QIconEngine* clone() const override { return new MotorDeIcono(dibujo_); }

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
        const auto grupo = modo == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        const QColor color = QGuiApplication::palette().color(grupo, QPalette::ButtonText);
        pintor->save();
        pintor->setRenderHint(QPainter::Antialiasing);
        pintor->translate(sitio.topLeft());
        pintor->scale(sitio.width() / Lado, sitio.height() / Lado);
        if (EsReflejo(dibujo_)) {
            pintor->translate(Lado, 0);
            pintor->scale(-1, 1);
        }
        pintor->setPen(QPen(color, Trazo, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pintor->setBrush(color);
        Pinta(*pintor);
        pintor->restore();
    }

  private:
    void Pinta(QPainter& pintor) const
    {
        switch (dibujo_) {
        case Dibujo::Primero:
        case Dibujo::Ultimo:
            return PintaExtremo(pintor);
        case Dibujo::Filtro:
            return PintaFiltro(pintor);
        case Dibujo::BuscaAnterior:
        case Dibujo::BuscaSiguiente:
            return PintaLupa(pintor);
        }
    }

    Dibujo dibujo_;
};

} // namespace

QIcon Icono(Dibujo dibujo)
{
    return QIcon(new MotorDeIcono(dibujo));
}

} // namespace tolmo::data::ui
