#include "data/ui/cajas.h"
#include "data/clase_columna.h"
#include <algorithm>

namespace tolmo::data::ui {
namespace {

// Digits that fit a whole number whichever they are.
constexpr int TipoCorto = 2;
constexpr int DigitosDeCorto = 4;
constexpr int DigitosDeEntero = 9;

} // namespace

void RevelaCon(QAbstractButton& boton, QLineEdit& clave)
{
    boton.setCheckable(true);
    clave.setEchoMode(QLineEdit::Password);
    QObject::connect(&boton, &QAbstractButton::toggled, &clave, [&clave](bool pulsado) {
        clave.setEchoMode(pulsado ? QLineEdit::Normal : QLineEdit::Password);
    });
}

int AnchoDe(const Recordset& filas, const QString& columna)
{
    if (!filas.TieneColumna(columna))
        return 0;
    const Campo& campo = filas.Campos()[static_cast<std::size_t>(filas.Indice(columna))];
    if (EsEntero(campo.tipo))
        return campo.tipo == TipoCorto ? DigitosDeCorto : DigitosDeEntero;
    return ClaseDe(campo.tipo) == ClaseColumna::Texto ? campo.ancho : 0;
}

void LimitaAnchos(QWidget& ventana, const Recordset& filas)
{
    for (QLineEdit* caja : ventana.findChildren<QLineEdit*>()) {
        const int ancho = AnchoDe(filas, caja->property("Tag").toString());
        if (ancho > 0)
            caja->setMaxLength(std::max(ancho, static_cast<int>(caja->text().size())));
    }
}

} // namespace tolmo::data::ui
