#include "data/ui/celdas_condicion.h"
#include <QAbstractItemView>
#include <QCoreApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>
#include <optional>

namespace tolmo::data::ui {
namespace {

using Salida = CeldasCondicion::Salida;

std::optional<Salida> SalidaDe(const QEvent& evento)
{
    if (evento.type() != QEvent::KeyPress)
        return std::nullopt;
    switch (static_cast<const QKeyEvent&>(evento).key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return Salida::Intro;
    case Qt::Key_Tab:
        return Salida::Tabulador;
    case Qt::Key_Backtab:
        return Salida::Atras;
    case Qt::Key_Escape:
        return Salida::Escape;
    default:
        return std::nullopt;
    }
}

/// True for what writes or moves in a line of text and has no use in a list.
bool EsDeTexto(const QEvent& evento)
{
    if (evento.type() == QEvent::InputMethod)
        return true;
    if (evento.type() != QEvent::KeyPress)
        return false;
    const auto& tecla = static_cast<const QKeyEvent&>(evento);
    return !tecla.text().isEmpty() || tecla.key() == Qt::Key_Left || tecla.key() == Qt::Key_Right;
}

} // namespace

CeldasCondicion::CeldasCondicion(const std::array<CajaDeCelda, 4>& cajas) : cajas_(cajas)
{
    QList<QComboBox*> distintas;
    for (const CajaDeCelda& celda : cajas_)
        if (!distintas.contains(celda.caja))
            distintas << celda.caja;
    for (QComboBox* caja : distintas) {
        caja->view()->installEventFilter(this);
        connect(caja, &QComboBox::activated, this, [this, caja] {
            // A typed text that is an entry of the list is chosen once more when the box goes away.
            if (!caja->isHidden())
                emit commitData(caja);
        });
    }
}

QComboBox* CeldasCondicion::Abierta() const
{
    const auto abierta = std::find_if(cajas_.begin(), cajas_.end(),
                                      [](const auto& celda) { return !celda.caja->isHidden(); });
    return abierta == cajas_.end() ? nullptr : abierta->caja;
}

bool CeldasCondicion::Tocada() const
{
    const QComboBox* caja = Abierta();
    return caja && caja->currentText() != alEntrar_;
}

void CeldasCondicion::Cierra(bool escribe)
{
    QComboBox* caja = Abierta();
    if (!caja)
        return;
    caja->hidePopup();
    if (escribe)
        emit commitData(caja);
    emit closeEditor(caja);
}

void CeldasCondicion::Despliega() const
{
    QComboBox* caja = Abierta();
    if (!caja)
        return;
    caja->showPopup();
    // Without a choice yet, the first entry would be passed over by the first press of the arrow.
    if (caja->currentIndex() < 0)
        caja->view()->setCurrentIndex({});
}

QWidget* CeldasCondicion::createEditor(QWidget*, const QStyleOptionViewItem&,
                                       const QModelIndex& celda) const
{
    return cajas_.at(static_cast<std::size_t>(celda.column())).caja;
}

void CeldasCondicion::setEditorData(QWidget*, const QModelIndex& celda) const
{
    const CajaDeCelda& lugar = cajas_.at(static_cast<std::size_t>(celda.column()));
    QComboBox& caja = *lugar.caja;
    const QString texto = celda.data().toString();
    const int posicion = caja.findText(texto, Qt::MatchExactly | Qt::MatchCaseSensitive);
    caja.setEditable(lugar.editable);
    caja.setCurrentIndex(posicion < 0 && lugar.conPrimera ? 0 : posicion);
    if (lugar.editable) {
        // A completer would put a listed field in the place of what was typed.
        caja.setCompleter(nullptr);
        caja.setEditText(texto);
        caja.lineEdit()->selectAll();
        // For accents that take two keys: a list has no use for them and would not ask for them.
        caja.view()->setAttribute(Qt::WA_InputMethodEnabled);
    }
    alEntrar_ = caja.currentText();
}

void CeldasCondicion::setModelData(QWidget* editor, QAbstractItemModel*,
                                   const QModelIndex& celda) const
{
    emit Escribe(celda.row(), celda.column(), dynamic_cast<QComboBox&>(*editor).currentText());
}

void CeldasCondicion::updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcion,
                                           const QModelIndex&) const
{
    editor->setGeometry(opcion.rect);
}

void CeldasCondicion::destroyEditor(QWidget* editor, const QModelIndex&) const
{
    editor->hide();
}

bool CeldasCondicion::eventFilter(QObject* objeto, QEvent* evento)
{
    if (qobject_cast<QComboBox*>(objeto))
        return SalePorTecla(*evento) || QStyledItemDelegate::eventFilter(objeto, evento);
    QComboBox* caja = Abierta();
    return caja && caja->view() == objeto && EnLista(*caja, *evento);
}

/// What reaches the list while it is dropped down. It holds the keyboard, so that a text is begun
/// here and goes on in the box.
bool CeldasCondicion::EnLista(QComboBox& caja, QEvent& evento)
{
    const auto salida = SalidaDe(evento);
    if (salida) {
        const QModelIndexList marcadas = caja.view()->selectionModel()->selectedIndexes();
        caja.hidePopup();
        if (*salida != Salida::Escape && !marcadas.isEmpty())
            caja.setCurrentIndex(marcadas.first().row());
        return SalePorTecla(evento);
    }
    if (!caja.isEditable() || !EsDeTexto(evento))
        return false;
    caja.hidePopup();
    QCoreApplication::sendEvent(&caja, &evento);
    return true;
}

bool CeldasCondicion::SalePorTecla(const QEvent& evento)
{
    const auto salida = SalidaDe(evento);
    if (salida)
        emit Sale(*salida);
    return salida.has_value();
}

} // namespace tolmo::data::ui
