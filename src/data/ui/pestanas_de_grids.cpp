#include "data/ui/pestanas_de_grids.h"
#include <QEvent>
#include <QShortcut>
#include <QTabBar>

namespace tolmo::data::ui {

PestanasDeGrids::PestanasDeGrids(QTabWidget& pestanas, std::function<bool()> tomaLoEscrito)
    : QObject(&pestanas), pestanas_(pestanas), tomaLoEscrito_(std::move(tomaLoEscrito))
{
    pestanas_.tabBar()->installEventFilter(this);
    const auto tecla = [this](const QKeyCombination& cual, int cuantas) {
        connect(new QShortcut(cual, pestanas_.window()), &QShortcut::activated, this,
                [this, cuantas] { Pasa(cuantas); });
    };
    tecla(Qt::CTRL | Qt::Key_Tab, 1);
    tecla(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1);
    connect(&pestanas_, &QTabWidget::currentChanged, this, &PestanasDeGrids::DaElFoco);
}

bool PestanasDeGrids::eventFilter(QObject* objeto, QEvent* evento)
{
    const bool cambia =
        evento->type() == QEvent::MouseButtonPress || evento->type() == QEvent::Wheel;
    return (cambia && !tomaLoEscrito_()) || QObject::eventFilter(objeto, evento);
}

void PestanasDeGrids::Pasa(int cuantas)
{
    if (!tomaLoEscrito_())
        return;
    // A page that is off is passed over.
    const int todas = pestanas_.count();
    for (int i = 1; i < todas; ++i) {
        const int destino = (pestanas_.currentIndex() + todas + i * cuantas) % todas;
        if (!pestanas_.isTabEnabled(destino))
            continue;
        pestanas_.setCurrentIndex(destino);
        DaElFoco();
        return;
    }
}

void PestanasDeGrids::DaElFoco()
{
    const auto foco = focos_.find(pestanas_.currentWidget());
    if (foco != focos_.end() && foco->second->isEnabled())
        foco->second->setFocus();
}

} // namespace tolmo::data::ui
