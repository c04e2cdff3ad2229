#include "data/ui/controles.h"
#include "data/clase_columna.h"
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace tolmo::data::ui {
namespace {

class SelectorAlEntrar : public QObject {
  public:
    using QObject::QObject;

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override
    {
        if (evento->type() == QEvent::FocusIn)
            // Behind the press of the mouse that brings the focus, which would clear the selection.
            QMetaObject::invokeMethod(
                objeto, [objeto] { SeleccionaTexto(qobject_cast<QWidget*>(objeto)); },
                Qt::QueuedConnection);
        return QObject::eventFilter(objeto, evento);
    }
};

void PonEnLista(QComboBox& lista, const Valor& valor)
{
    const QString texto = Texto(valor);
    int posicion = -1;
    if (EsNumero(valor))
        posicion = valor.toInt();
    else if (!texto.isEmpty())
        posicion = lista.findText(texto, Qt::MatchFixedString);
    const bool hallada = posicion >= 0 && posicion < lista.count();
    lista.setCurrentIndex(hallada ? posicion : -1);
    if (lista.isEditable() && !hallada)
        lista.setEditText(texto);
}

bool Marcada(const Valor& valor)
{
    if (EsNumero(valor) || valor.typeId() == QMetaType::Bool)
        return !EstaVacio(valor);
    return LeeLogico(Texto(valor)).value_or(false);
}

} // namespace

void SeleccionaTexto(QWidget* control)
{
    if (auto* caja = qobject_cast<QLineEdit*>(control))
        caja->selectAll();
}

void SeleccionaAlEntrar(QWidget& ventana)
{
    auto* selector = new SelectorAlEntrar(&ventana);
    for (QLineEdit* caja : ventana.findChildren<QLineEdit*>())
        caja->installEventFilter(selector);
}

void PonValorControl(QWidget* control, const Valor& valor)
{
    if (auto* caja = qobject_cast<QLineEdit*>(control))
        caja->setText(Texto(valor));
    else if (auto* lista = qobject_cast<QComboBox*>(control))
        PonEnLista(*lista, valor);
    else if (auto* casilla = qobject_cast<QCheckBox*>(control))
        casilla->setChecked(Marcada(valor));
}

} // namespace tolmo::data::ui
