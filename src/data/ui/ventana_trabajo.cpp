#include "data/ui/ventana_trabajo.h"
#include "data/ui/frontera.h"
#include <QCoreApplication>
#include <QShowEvent>
#include <QTimer>
#include <chrono>
#include <stdexcept>
#include <utility>

namespace tolmo::data::ui {
namespace {

/// Between two turns of the window's events. A job gives one after each record and each block of
/// an upload; to lay out and paint for all of them takes longer than the job's own work.
constexpr int MilisegundosEntreTurnos = 50;

/// A job may go on for seconds before it gives the events their first turn: a window that hadn't
/// been drawn before would stand empty.
constexpr std::chrono::milliseconds EsperaDePintado{150};

} // namespace

VentanaTrabajo::VentanaTrabajo(Avisos& avisos, QWidget* padre) : QDialog(padre), avisos_(avisos) {}

void VentanaTrabajo::Muestra(const QString& tag)
{
    Tag_ = tag;
    exec();
    if (fallo_)
        std::rethrow_exception(std::exchange(fallo_, nullptr));
}

void VentanaTrabajo::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (!std::exchange(activada_, true))
        QTimer::singleShot(EsperaDePintado, this, &VentanaTrabajo::HazTrabajoDelTag);
}

void VentanaTrabajo::HazTrabajoDelTag()
{
    // The operator may have been faster, with a button or with the frame.
    if (Ocupada() || !isVisible())
        return;
    EnFrontera(avisos_, [this] {
        try {
            Activa(Tag_);
        } catch (const std::runtime_error&) {
            // For whoever showed the window: it may not cross the event loop of Muestra.
            fallo_ = std::current_exception();
            QDialog::done(Rejected);
        }
    });
}

void VentanaTrabajo::done(int resultado)
{
    if (!Ocupada())
        QDialog::done(resultado);
}

void VentanaTrabajo::CedeEventos()
{
    if (ultimoTurno_.isValid() && ultimoTurno_.elapsed() < MilisegundosEntreTurnos)
        return;
    QCoreApplication::processEvents();
    ultimoTurno_.start();
}

} // namespace tolmo::data::ui
