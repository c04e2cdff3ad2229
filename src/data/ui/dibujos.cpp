#include "data/ui/dibujos.h"
#include <QPainter>
#include <QPainterPath>

namespace tolmo::data::ui {
namespace {

constexpr qreal Grosor = 1.5;

/// A painter and its two colours.
struct Lapiz {
    QPainter& pintor;
    QColor trazo{};
    QColor acento{};

    void Linea() const { Pon(trazo, Qt::NoBrush); }
    void Lleno() const { Pon(trazo, trazo); }
    void Acento() const { Pon(acento, acento); }
    void LineaDeAcento() const { Pon(acento, Qt::NoBrush); }

  private:
    void Pon(const QColor& color, const QBrush& relleno) const
    {
        pintor.setPen(QPen(color, Grosor, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        pintor.setBrush(relleno);
    }
};

void PintaExtremo(const Lapiz& lapiz)
{
    lapiz.Lleno();
    lapiz.pintor.drawLine(QPointF(3.5, 3), QPointF(3.5, 13));
    lapiz.pintor.drawPolygon(QPolygonF({{12.5, 3.5}, {12.5, 12.5}, {6, 8}}));
}

void PintaFiltro(const Lapiz& lapiz)
{
    lapiz.Lleno();
    lapiz.pintor.drawPolygon(
        QPolygonF({{2, 3}, {14, 3}, {9.5, 8.5}, {9.5, 13.5}, {6.5, 12}, {6.5, 8.5}}));
}

void PintaLupa(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawEllipse(QPointF(9, 7), 5, 5);
    lapiz.pintor.drawLine(QPointF(5.4, 10.6), QPointF(2, 14));
    lapiz.pintor.drawPolyline(QPolygonF({{10.2, 4.6}, {7.8, 7}, {10.2, 9.4}}));
}

/// Two arrows that follow each other round.
void PintaSincroniza(const Lapiz& lapiz)
{
    for (int vuelta = 0; vuelta < 2; ++vuelta) {
        QPainterPath arco;
        arco.arcMoveTo(QRectF(2.5, 2.5, 11, 11), 170);
        arco.arcTo(QRectF(2.5, 2.5, 11, 11), 170, -130);
        lapiz.Linea();
        lapiz.pintor.drawPath(arco);
        lapiz.Acento();
        lapiz.pintor.drawPolygon(QPolygonF({{13.6, 2.8}, {13.6, 6.2}, {10.2, 6.2}}));
        lapiz.pintor.translate(LadoDibujo, LadoDibujo);
        lapiz.pintor.rotate(180);
    }
}

/// Three sliders.
void PintaConfigura(const Lapiz& lapiz)
{
    constexpr QPointF Mandos[] = {{10.5, 3.5}, {5, 8}, {11, 12.5}};
    lapiz.Linea();
    for (const QPointF& mando : Mandos)
        lapiz.pintor.drawLine(QPointF(2, mando.y()), QPointF(14, mando.y()));
    lapiz.Acento();
    for (const QPointF& mando : Mandos)
        lapiz.pintor.drawEllipse(mando, 1.4, 1.4);
}

void PintaHoja(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawPolygon(QPolygonF({{3, 1.5}, {9.8, 1.5}, {13, 4.7}, {13, 14.5}, {3, 14.5}}));
}

/// A document of tags.
void PintaAnuncia(const Lapiz& lapiz)
{
    PintaHoja(lapiz);
    lapiz.LineaDeAcento();
    lapiz.pintor.drawPolyline(QPolygonF({{7, 8}, {5.2, 10}, {7, 12}}));
    lapiz.pintor.drawPolyline(QPolygonF({{9.2, 8}, {11, 10}, {9.2, 12}}));
}

/// Four values, one of them chosen.
void PintaAtributos(const Lapiz& lapiz)
{
    lapiz.Linea();
    for (const QPointF& esquina : {QPointF(2, 2), QPointF(9.5, 2), QPointF(2, 9.5)})
        lapiz.pintor.drawRoundedRect(QRectF(esquina, QSizeF(4.5, 4.5)), 1, 1);
    lapiz.Acento();
    lapiz.pintor.drawRoundedRect(QRectF(9.5, 9.5, 4.5, 4.5), 1, 1);
}

/// A clock.
void PintaPrograma(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawEllipse(QPointF(8, 8), 6, 6);
    lapiz.LineaDeAcento();
    lapiz.pintor.drawPolyline(QPolygonF({{8, 4.4}, {8, 8}, {10.8, 9.6}}));
}

void PintaPersona(const Lapiz& lapiz, qreal x, qreal y)
{
    lapiz.pintor.drawEllipse(QPointF(x, y), 2.2, 2.2);
    QPainterPath hombros(QPointF(x - 4, y + 8));
    hombros.quadTo(QPointF(x - 4, y + 3.8), QPointF(x, y + 3.8));
    hombros.quadTo(QPointF(x + 4, y + 3.8), QPointF(x + 4, y + 8));
    hombros.closeSubpath();
    lapiz.pintor.drawPath(hombros);
}

void PintaUsuarios(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawArc(QRectF(8.6, 2.2, 4.4, 4.4), -110 * 16, 220 * 16);
    QPainterPath hombro(QPointF(11.6, 8.8));
    hombro.quadTo(QPointF(14.5, 9), QPointF(14.5, 13));
    hombro.lineTo(QPointF(12.6, 13));
    lapiz.pintor.drawPath(hombro);
    lapiz.Acento();
    PintaPersona(lapiz, 6, 5);
}

/// A written sheet.
void PintaRegistro(const Lapiz& lapiz)
{
    PintaHoja(lapiz);
    lapiz.LineaDeAcento();
    for (const qreal y : {7.5, 9.8, 12.1})
        lapiz.pintor.drawLine(QPointF(5.5, y), QPointF(10.5, y));
}

/// A door and the way out.
void PintaSale(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawPolyline(QPolygonF({{9, 2}, {2.5, 2}, {2.5, 14}, {9, 14}}));
    lapiz.LineaDeAcento();
    lapiz.pintor.drawLine(QPointF(6.5, 8), QPointF(13.5, 8));
    lapiz.pintor.drawPolyline(QPolygonF({{10.8, 5}, {13.8, 8}, {10.8, 11}}));
}

void PintaAbajo(const Lapiz& lapiz)
{
    lapiz.Linea();
    lapiz.pintor.drawLine(QPointF(3, 14), QPointF(13, 14));
    lapiz.pintor.drawLine(QPointF(8, 2), QPointF(8, 10.5));
    lapiz.pintor.drawPolyline(QPolygonF({{4.2, 7}, {8, 10.8}, {11.8, 7}}));
}

/// What goes forward is the mirror image of what goes back.
bool EsReflejo(Dibujo dibujo)
{
    return dibujo == Dibujo::Ultimo || dibujo == Dibujo::BuscaSiguiente;
}

void PintaFigura(const Lapiz& lapiz, Dibujo dibujo)
{
    switch (dibujo) {
    case Dibujo::Primero:
    case Dibujo::Ultimo:
        return PintaExtremo(lapiz);
    case Dibujo::Filtro:
        return PintaFiltro(lapiz);
    case Dibujo::BuscaAnterior:
    case Dibujo::BuscaSiguiente:
        return PintaLupa(lapiz);
    case Dibujo::Sincroniza:
        return PintaSincroniza(lapiz);
    case Dibujo::Configura:
        return PintaConfigura(lapiz);
    case Dibujo::Anuncia:
        return PintaAnuncia(lapiz);
    case Dibujo::Atributos:
        return PintaAtributos(lapiz);
    case Dibujo::Programa:
        return PintaPrograma(lapiz);
    case Dibujo::Usuarios:
        return PintaUsuarios(lapiz);
    case Dibujo::Registro:
        return PintaRegistro(lapiz);
    case Dibujo::Sale:
        return PintaSale(lapiz);
    case Dibujo::Abajo:
        return PintaAbajo(lapiz);
    }
}

} // namespace

void Pinta(QPainter& pintor, Dibujo dibujo, const QColor& trazo, const QColor& acento)
{
    if (EsReflejo(dibujo)) {
        pintor.translate(LadoDibujo, 0);
        pintor.scale(-1, 1);
    }
    PintaFigura({pintor, trazo, acento}, dibujo);
}

void PintaEmblema(QPainter& pintor)
{
    QLinearGradient fondo(0, 0, 0, 1);
    fondo.setColorAt(0, QColor(0x2f, 0x7f, 0xb8));
    fondo.setColorAt(1, QColor(0x17, 0x4a, 0x7c));
    pintor.setPen(Qt::NoPen);
    pintor.setBrush(fondo);
    pintor.drawRoundedRect(QRectF(0.03, 0.03, 0.94, 0.94), 0.2, 0.2);
    // To the shop and back.
    pintor.setBrush(Qt::white);
    pintor.drawPolygon(QPolygonF({{0.18, 0.31},
                                  {0.56, 0.31},
                                  {0.56, 0.20},
                                  {0.82, 0.37},
                                  {0.56, 0.54},
                                  {0.56, 0.43},
                                  {0.18, 0.43}}));
    pintor.setBrush(QColor(0xff, 0xc2, 0x4b));
    pintor.drawPolygon(QPolygonF({{0.82, 0.57},
                                  {0.44, 0.57},
                                  {0.44, 0.46},
                                  {0.18, 0.63},
                                  {0.44, 0.80},
                                  {0.44, 0.69},
                                  {0.82, 0.69}}));
}

} // namespace tolmo::data::ui
