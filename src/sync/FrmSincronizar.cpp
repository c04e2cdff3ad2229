#include "sync/FrmSincronizar.h"
#include "data/ui/frontera.h"
#include "sync/lista_estado.h"
#include "ui_FrmSincronizar.h"
#include <QApplication>
#include <QKeyEvent>
#include <algorithm>
#include <utility>

using namespace tolmo;
using data::ui::EnFrontera;
using sync::Opciones;
using sync::Proceso;

FrmSincronizar::FrmSincronizar(data::Avisos& avisos, const sync::FabricaMotor& fabrica,
                               QWidget* padre, Eco eco)
    : VentanaTrabajo(avisos, padre), eco_(std::move(eco)),
      ui_(std::make_unique<Ui::FrmSincronizar>())
{
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    // The list must not jump when a run shows the bar.
    QSizePolicy reserva = ui_->ProgressBar1->sizePolicy();
    reserva.setRetainSizeWhenHidden(true);
    ui_->ProgressBar1->setSizePolicy(reserva);
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

void FrmSincronizar::Activa(const QString& tag)
{
    const bool soloArticulos = tag == QLatin1String("SOLOARTIC");
    const bool sinStock = tag == QLatin1String("SOLOARTIC_SIN_STOCK");
    Opciones opciones{.proceso = Proceso::Todo, .fotosArt = true, .adjuntos = true, .stock = true};
    if (tag == QLatin1String("AUTO")) {
        opciones.fotosFam = true;
    } else if (soloArticulos || sinStock) {
        ui_->ChkTodosFam->setChecked(false);
        opciones.stock = soloArticulos;
    } else if (tag == QLatin1String("STOCK")) {
        opciones = {.proceso = Proceso::Stock, .stock = true};
    } else {
        return;
    }
    LanzaYCierra(opciones);
}

void FrmSincronizar::Lanza(const Opciones& opciones)
{
    // The tabs can come back in the middle of a run, and with them the buttons.
    if (motor_->EnMarcha())
        return;
    EnFrontera(AvisosDeVentana(), [&] { LanzaYCierra(opciones); });
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
    EnFrontera(AvisosDeVentana(), [this] { motor_->BorraImagenesObsoletas(); });
    qApp->removeEventFilter(this);
    purgando_ = false;
    if (std::exchange(finPedido_, false))
        QCoreApplication::quit();
}

bool FrmSincronizar::Ocupada() const
{
    return motor_->EnMarcha() || !ui_->SSTab1->isEnabled();
}

/// Enter presses the button that has the focus. None is the default one: in the boxes of the range
/// the key must not start a run.
void FrmSincronizar::keyPressEvent(QKeyEvent* evento)
{
    const bool intro = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    auto* boton = qobject_cast<QPushButton*>(focusWidget());
    if (intro && boton)
        boton->click();
    else
        VentanaTrabajo::keyPressEvent(evento);
}

/// The picker writes into the box that was clicked, as that one has the focus.
void FrmSincronizar::EligeArticulo()
{
    if (selector_ && !motor_->EnMarcha())
        EnFrontera(AvisosDeVentana(), [this] { selector_(this)->exec(); });
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
        EligeArticulo();
        return true;
    }
    return VentanaTrabajo::eventFilter(objeto, evento);
}

void FrmSincronizar::LimpiaEstado()
{
    ui_->Estado->Lista().Vacia();
}

void FrmSincronizar::LineaEstado(const QString& linea)
{
    ui_->Estado->Lista().Anade(linea);
    // The request that follows may hold the window for minutes.
    if (purgando_)
        ui_->Estado->Lista().MuestraYa();
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

bool FrmSincronizar::SigueElPrograma() const
{
    return !finPedido_;
}

void FrmSincronizar::HabilitaPestanas(bool habilitadas)
{
    const QWidget* foco = focusWidget();
    const bool dentro = foco && ui_->SSTab1->isAncestorOf(foco);
    ui_->SSTab1->setEnabled(habilitadas);
    // The keyboard goes where it can still be used.
    if (!habilitadas && dentro)
        ui_->Estado->setFocus();
}
