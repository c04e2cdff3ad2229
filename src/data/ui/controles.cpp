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

QString Tag(const QWidget& control)
{
    return control.property("Tag").toString();
}

/// The controls that stand for a column, in the order of the window.
QList<QWidget*> ControlesDeFicha(const QWidget& ventana)
{
    QList<QWidget*> controles = ventana.findChildren<QWidget*>();
    controles.removeIf([](const QWidget* control) {
        const bool deFicha = qobject_cast<const QLineEdit*>(control) ||
                             qobject_cast<const QComboBox*>(control) ||
                             qobject_cast<const QCheckBox*>(control);
        return !deFicha || Tag(*control).isEmpty();
    });
    return controles;
}

/// Behind a text that was typed the list still stands where it stood before.
int Posicion(const QComboBox& lista)
{
    return lista.isEditable() ? lista.findText(lista.currentText(), Qt::MatchFixedString)
                              : lista.currentIndex();
}

CampoFicha ComoCampo(const QWidget& control)
{
    using Clase = CampoFicha::Clase;
    if (const auto* casilla = qobject_cast<const QCheckBox*>(&control))
        return {.Tag = Tag(control), .clase = Clase::Casilla, .marcada = casilla->isChecked()};
    if (const auto* lista = qobject_cast<const QComboBox*>(&control))
        return {.Tag = Tag(control),
                .clase = Clase::Lista,
                .texto = lista->currentText(),
                .posicion = Posicion(*lista)};
    return {.Tag = Tag(control), .texto = qobject_cast<const QLineEdit*>(&control)->text()};
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

std::vector<CampoFicha> CamposFicha(const QWidget& ventana)
{
    std::vector<CampoFicha> campos;
    for (const QWidget* control : ControlesDeFicha(ventana))
        campos.push_back(ComoCampo(*control));
    return campos;
}

void PonFicha(QWidget& ventana, const Recordset& filas)
{
    for (QWidget* control : ControlesDeFicha(ventana))
        PonValorControl(control, filas[Tag(*control)]);
}

void LimpiaFicha(QWidget& ventana)
{
    for (QWidget* control : ControlesDeFicha(ventana))
        PonValorControl(control);
}

} // namespace tolmo::data::ui
