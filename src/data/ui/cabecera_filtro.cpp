#include "data/ui/cabecera_filtro.h"
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace tolmo::data::ui {

CabeceraFiltro::CabeceraFiltro(QWidget* padre) : QHeaderView(Qt::Horizontal, padre)
{
    setSectionsClickable(true);
    setHighlightSections(false);
    connect(this, &QHeaderView::sectionResized, this, &CabeceraFiltro::ColocaCajas);
    connect(qApp, &QApplication::focusChanged, this, &CabeceraFiltro::SigueElFoco);
}

CabeceraFiltro::~CabeceraFiltro()
{
    // The focus may leave the boxes while they are taken away.
    disconnect(qApp, nullptr, this, nullptr);
}

void CabeceraFiltro::MuestraBarra(bool visible)
{
    barra_ = visible;
    updateGeometries();
    emit geometriesChanged();
}

void CabeceraFiltro::PonTextos(const QStringList& textos)
{
    const auto cuantas = static_cast<std::size_t>(textos.size());
    while (cajas_.size() > cuantas) {
        delete cajas_.back();
        cajas_.pop_back();
    }
    while (cajas_.size() < cuantas) {
        auto* caja = new QLineEdit(this);
        caja->setObjectName(QStringLiteral("FilterText_%1").arg(cajas_.size()));
        caja->setToolTip(QStringLiteral("Filtro de la columna"));
        caja->installEventFilter(this);
        PonAntesDelGrid(*caja);
        cajas_.push_back(caja);
    }
    for (std::size_t i = 0; i < cuantas; ++i)
        cajas_[i]->setText(textos[static_cast<qsizetype>(i)]);
    updateGeometries();
    emit geometriesChanged();
}

/// Tab goes from the bar into the rows below it.
void CabeceraFiltro::PonAntesDelGrid(QWidget& caja)
{
    QWidget* anterior = parentWidget();
    do
        anterior = anterior->previousInFocusChain();
    while (anterior != parentWidget() && !(anterior->focusPolicy() & Qt::TabFocus));
    if (anterior != parentWidget())
        setTabOrder(anterior, &caja);
}

QStringList CabeceraFiltro::Textos() const
{
    QStringList textos;
    for (const QLineEdit* caja : cajas_)
        textos << caja->text();
    return textos;
}

int CabeceraFiltro::AltoDeBarra() const
{
    return barra_ && !cajas_.empty() ? cajas_.front()->sizeHint().height() : 0;
}

QSize CabeceraFiltro::sizeHint() const
{
    const QSize cabezas = QHeaderView::sizeHint();
    return {cabezas.width(), cabezas.height() + AltoDeBarra()};
}

void CabeceraFiltro::updateGeometries()
{
    setViewportMargins(0, 0, 0, AltoDeBarra());
    QHeaderView::updateGeometries();
    ColocaCajas();
}

void CabeceraFiltro::ColocaCajas()
{
    const int arriba = height() - AltoDeBarra();
    for (int i = 0; i < static_cast<int>(cajas_.size()); ++i) {
        QLineEdit& caja = *cajas_[static_cast<std::size_t>(i)];
        const bool visible = barra_ && i < count() && !isSectionHidden(i);
        if (visible)
            caja.setGeometry(sectionViewportPosition(i), arriba, sectionSize(i), AltoDeBarra());
        caja.setVisible(visible);
    }
}

bool CabeceraFiltro::EsCaja(const QWidget* control) const
{
    return std::ranges::find(cajas_, control) != cajas_.end();
}

void CabeceraFiltro::SigueElFoco(const QWidget* antes, const QWidget* ahora)
{
    // While another window is in front, the bar has not been left.
    if (ahora && ahora->window() == window() && EsCaja(antes) && !EsCaja(ahora))
        emit BarraDejada();
}

bool CabeceraFiltro::focusNextPrevChild(bool siguiente)
{
    // The grid, which the boxes stand in, would take the key for its cells.
    QWidget* destino = window()->focusWidget();
    do
        destino = siguiente ? destino->nextInFocusChain() : destino->previousInFocusChain();
    while (!destino->isVisible() || !destino->isEnabled() ||
           !(destino->focusPolicy() & Qt::TabFocus));
    destino->setFocus(siguiente ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

bool CabeceraFiltro::eventFilter(QObject* objeto, QEvent* evento)
{
    if (evento->type() != QEvent::KeyPress)
        return QHeaderView::eventFilter(objeto, evento);
    const int tecla = static_cast<const QKeyEvent*>(evento)->key();
    if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
        // Not on to the window, whose default button it would press.
        emit BarraDejada();
        return true;
    }
    return QHeaderView::eventFilter(objeto, evento);
}

} // namespace tolmo::data::ui
