#include "data/ui/boton_celda.h"
#include <QStyleOptionButton>
#include <algorithm>

namespace tolmo::data::ui {
namespace {

constexpr int Ancho = 24;

} // namespace

QRect SitioDeBoton(const QRect& celda)
{
    const int ancho = std::min(Ancho, celda.width() / 2);
    return {celda.right() - ancho + 1, celda.top(), ancho, celda.height()};
}

void PintaBoton(QPainter& pintor, const QStyle& estilo, const QPalette& paleta, const QRect& celda,
                bool pulsado)
{
    QStyleOptionButton opcion;
    opcion.rect = SitioDeBoton(celda);
    opcion.palette = paleta;
    opcion.text = QStringLiteral("…");
    opcion.state = QStyle::State_Enabled | (pulsado ? QStyle::State_Sunken : QStyle::State_Raised);
    estilo.drawControl(QStyle::CE_PushButton, &opcion, &pintor);
}

} // namespace tolmo::data::ui
