#include "sync/FrmSincronizar.h"
#include "data/ui/frontera.h"
#include "ui_FrmSincronizar.h"
#include <QApplication>
#include <QEvent>
#include <QShowEvent>
#include <algorithm>
#include <stdexcept>
#include <utility>

using namespace tolmo;
using data::ui::EnFrontera;
using sync::Opciones;
using sync::Proceso;

namespace {

/// Between two turns of the window's events. A run gives one after each record and each block of
/// an upload; to lay the list out and paint for all of them took longer than the run's own work.
constexpr int MilisegundosEntreTurnos = 50;

} // namespace

FrmSincronizar::FrmSincronizar(data::Avisos& avisos, const sync::FabricaMotor& fabrica,
                               QWidget* padre, Eco eco)
    : QDialog(padre), avisos_(avisos), eco_(std::move(eco)),
      ui_(std::make_unique<Ui::FrmSincronizar>())
{
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    // The list must not jump when a run shows the bar.
    QSizePolicy reserva = ui_->ProgressBar1->sizePolicy();
    reserva.setRetainSizeWhenHidden(true);
    ui_->ProgressBar1->setSizePolicy(reserva);
    desplazamiento_.setSingleShot(true);
    connect(&desplazamiento_, &QTimer::timeout, ui_->LstEstado, &QListWidget::scrollToBottom);
    ui_->TxtArtDesde->installEventFilter(this);
    ui_->TxtArtHasta->installEventFilter(this);
    connect(ui_->ChkTodosFam, &QCheckBox::toggled, this, [this](bool marcada) {
        if (!marcada)
            ui_->ChkTFamFotos->setChecked(false);
        ui_->ChkTFamFotos->setEnabled(marcada);
    });
    ConectaBotones();
    motor_ = fabrica(*this);
}

FrmSincronizar::~FrmSincronizar() = default;

void FrmSincronizar::ConectaBotones()
{
    connect(ui_->CmdSincronizaTodo, &QPushButton::clicked, this, [this] { Lanza(OpcionesTodo()); });
    connect(ui_->CmdSincronizarArticulos, &QPushButton::clicked, this,
            [this] { Lanza(OpcionesArticulos()); });
    connect(ui_->CmdSincronizarFamilias, &QPushButton::clicked, this,
            [this] { Lanza(OpcionesFamilias()); });
    connect(ui_->CmdStock, &QPushButton::clicked, this,
            [this] { Lanza({.proceso = Proceso::Stock, .stock = true}); });
    connect(ui_->CmdValesDto, &QPushButton::clicked, this,
            [this] { Lanza({.proceso = Proceso::Vales}); });
    connect(ui_->CmdBorrarImagenesObsoletas, &QPushButton::clicked, this,
            [this] { BorraImagenesObsoletas(); });
}

Opciones FrmSincronizar::OpcionesTodo() const
{
    return {.proceso = Proceso::Todo,
            .fotosFam = ui_->ChkTFamFotos->isChecked(),
            .fotosArt = ui_->ChkTArtFotos->isChecked(),
            .adjuntos = ui_->ChkTAdjuntos->isChecked(),
            .stock = ui_->ChkTStock->isChecked()};
}

Opciones FrmSincronizar::OpcionesArticulos() const
{
    return {.proceso = Proceso::Articulos,
            .desde = ui_->TxtArtDesde->text(),
            .hasta = ui_->TxtArtHasta->text(),
            .fotosArt = ui_->ChkArtFotos->isChecked(),
            .adjuntos = ui_->ChkAdjuntos->isChecked(),
            .stock = ui_->ChkArtStock->isChecked()};
}

Opciones FrmSincronizar::OpcionesFamilias() const
{
    return {.proceso = Proceso::Familias, .fotosFam = ui_->ChkFamFotos->isChecked()};
}

void FrmSincronizar::Muestra(const QString& tag)
{
    Tag_ = tag;
    exec();
    if (fallo_)
        std::rethrow_exception(std::exchange(fallo_, nullptr));
}

void FrmSincronizar::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (std::exchange(activada_, true))
        return;
    // Behind the events of showing, so that the window stands before a run takes hold of it.
    QMetaObject::invokeMethod(this, &FrmSincronizar::Activa, Qt::QueuedConnection);
}

void FrmSincronizar::Activa()
{
    const bool soloArticulos = Tag_ == QLatin1String("SOLOARTIC");
    const bool sinStock = Tag_ == QLatin1String("SOLOARTIC_SIN_STOCK");
    Opciones opciones{.proceso = Proceso::Todo, .fotosArt = true, .adjuntos = true, .stock = true};
    if (Tag_ == QLatin1String("AUTO")) {
        opciones.fotosFam = true;
    } else if (soloArticulos || sinStock) {
        ui_->ChkTodosFam->setChecked(false);
        opciones.stock = soloArticulos;
    } else if (Tag_ == QLatin1String("STOCK")) {
        opciones = {.proceso = Proceso::Stock, .stock = true};
    } else {
        return;
    }
    EnFrontera(avisos_, [&] {
        try {
            LanzaYCierra(opciones);
        } catch (const std::runtime_error&) {
            // For whoever showed the window: it may not cross the event loop of Muestra.
            fallo_ = std::current_exception();
            QDialog::done(Rejected);
        }
    });
}

void FrmSincronizar::Lanza(const Opciones& opciones)
{
    // The tabs can come back in the middle of a run, and with them the buttons.
    if (motor_->EnMarcha())
        return;
    EnFrontera(avisos_, [&] { LanzaYCierra(opciones); });
}

/// One run, with the boxes that govern its phases; at its end the window goes away, whoever
/// started it.
void FrmSincronizar::LanzaYCierra(const Opciones& opciones)
{
    Opciones completas = opciones;
    completas.familias = ui_->ChkTodosFam->isChecked();
    completas.eliminaEnTodo = ui_->ChkTodosArticulosNoEstan->isChecked();
    completas.eliminaEnRango = ui_->ChkEliminarArticNoEstan->isChecked();
    completas.regeneraIndices = ui_->ChkRegenerarIndicesBusqueda->isChecked();
    motor_->SincronizaPrestashop(completas);
    QDialog::done(Accepted);
}

/// The one job that may go on for ever: the desktop must still be able to end the program. The
/// window stays at its end.
void FrmSincronizar::BorraImagenesObsoletas()
{
    if (motor_->EnMarcha())
        return;
    purgando_ = true;
    qApp->installEventFilter(this);
    EnFrontera(avisos_, [this] { motor_->BorraImagenesObsoletas(); });
    qApp->removeEventFilter(this);
    purgando_ = false;
    if (std::exchange(finPedido_, false))
        QCoreApplication::quit();
}

/// Every way of closing comes through here.
void FrmSincronizar::done(int resultado)
{
    if (motor_->EnMarcha() || !ui_->SSTab1->isEnabled())
        return;
    QDialog::done(resultado);
}

void FrmSincronizar::EnProximaVersion(const QString& que)
{
    if (motor_->EnMarcha())
        return;
    avisos_.Muestra(que + QStringLiteral(" todavía no está disponible en esta versión."),
                    data::estilo::Informacion);
}

bool FrmSincronizar::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == qApp && evento->type() == QEvent::Quit) {
        // Asked for again when the purge has stopped: till then the window would refuse it.
        finPedido_ = true;
        return true;
    }
    const bool enElRango = objeto == ui_->TxtArtDesde || objeto == ui_->TxtArtHasta;
    if (enElRango && evento->type() == QEvent::MouseButtonDblClick) {
        EnProximaVersion(QStringLiteral("El selector de artículos"));
        return true;
    }
    return QDialog::eventFilter(objeto, evento);
}

void FrmSincronizar::LimpiaEstado()
{
    ui_->LstEstado->clear();
}

void FrmSincronizar::LineaEstado(const QString& linea)
{
    ui_->LstEstado->addItem(linea);
    ui_->LstEstado->setCurrentRow(-1);
    desplazamiento_.start(0);
    if (purgando_) {
        // The request that follows may hold the window for minutes.
        ui_->LstEstado->scrollToBottom();
        ui_->LstEstado->viewport()->repaint();
    }
    if (eco_)
        eco_(linea);
}

void FrmSincronizar::MuestraBarra(bool visible)
{
    ui_->ProgressBar1->setVisible(visible);
}

void FrmSincronizar::Avanza(int posicion, int total)
{
    // Past the last record the position is negative.
    const auto porcentaje = total > 0 ? static_cast<long long>(posicion) * 100 / total : 0;
    ui_->ProgressBar1->setValue(static_cast<int>(std::clamp(porcentaje, 0LL, 100LL)));
}

void FrmSincronizar::CedeEventos()
{
    if (ultimoTurno_.isValid() && ultimoTurno_.elapsed() < MilisegundosEntreTurnos)
        return;
    QCoreApplication::processEvents();
    ultimoTurno_.start();
}

bool FrmSincronizar::SigueElPrograma() const
{
    return !finPedido_;
}

void FrmSincronizar::HabilitaPestanas(bool habilitadas)
{
    ui_->SSTab1->setEnabled(habilitadas);
}
