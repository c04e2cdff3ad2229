#include "feed/FrmGenerarXMLsolostock.h"
#include "data/ui/frontera.h"
#include "ui_FrmGenerarXMLsolostock.h"
#include <QCoreApplication>
#include <QShowEvent>
#include <QTimer>
#include <chrono>
#include <stdexcept>
#include <utility>

using namespace tolmo;
using data::ui::EnFrontera;

namespace {

/// Between two turns of the window's events: an upload gives one after each block of 255 bytes.
constexpr int MilisegundosEntreTurnos = 50;

/// The writing of the document gives no turn to the events at all: a window that hadn't been drawn
/// before would stand empty to its end.
constexpr std::chrono::milliseconds EsperaDePintado{150};

} // namespace

FrmGenerarXMLsolostock::FrmGenerarXMLsolostock(data::Avisos& avisos,
                                               const feed::FabricaGenerador& fabrica,
                                               QWidget* padre, bool hayOperador)
    : QDialog(padre), avisos_(avisos), ui_(std::make_unique<Ui::FrmGenerarXMLsolostock>()),
      hayOperador_(hayOperador)
{
    ui_->setupUi(this);
    connect(ui_->CmdSi, &QPushButton::clicked, this, &FrmGenerarXMLsolostock::Pulsa);
    connect(ui_->CmdNo, &QPushButton::clicked, this, &QDialog::reject);
    generador_ = fabrica(*this);
    const feed::Destino destino = generador_->DestinoInicial();
    ui_->TxtDestino->setText(destino.ruta);
    ui_->TxtUrlDestino->setText(destino.carpeta);
}

FrmGenerarXMLsolostock::~FrmGenerarXMLsolostock() = default;

bool FrmGenerarXMLsolostock::Muestra(const QString& tag)
{
    Tag_ = tag;
    exec();
    if (fallo_)
        std::rethrow_exception(std::exchange(fallo_, nullptr));
    return !inacabada_;
}

void FrmGenerarXMLsolostock::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (std::exchange(activada_, true) || Tag_ != QLatin1String("AUTO"))
        return;
    QTimer::singleShot(EsperaDePintado, this, &FrmGenerarXMLsolostock::Activa);
}

void FrmGenerarXMLsolostock::Activa()
{
    EnFrontera(avisos_, [this] {
        try {
            Genera();
        } catch (const std::runtime_error&) {
            // For whoever showed the window: it may not cross the event loop of Muestra.
            fallo_ = std::current_exception();
            QDialog::done(Rejected);
        }
    });
}

void FrmGenerarXMLsolostock::Pulsa()
{
    EnFrontera(avisos_, [this] { Genera(); });
}

void FrmGenerarXMLsolostock::Genera()
{
    if (generador_->EnMarcha())
        return;
    const bool acabada = generador_->Genera(
        {.ruta = ui_->TxtDestino->text(), .carpeta = ui_->TxtUrlDestino->text()});
    inacabada_ = !acabada && !hayOperador_;
    if (acabada || inacabada_)
        QDialog::done(acabada ? Accepted : Rejected);
}

/// Every way of closing comes through here.
void FrmGenerarXMLsolostock::done(int resultado)
{
    if (!generador_->EnMarcha())
        QDialog::done(resultado);
}

void FrmGenerarXMLsolostock::Avanza(int posicion, int total)
{
    ui_->ProgressBar1->setValue(static_cast<int>(static_cast<long long>(posicion) * 100 / total));
    ui_->ProgressBar1->repaint();
}

void FrmGenerarXMLsolostock::CedeEventos()
{
    if (ultimoTurno_.isValid() && ultimoTurno_.elapsed() < MilisegundosEntreTurnos)
        return;
    QCoreApplication::processEvents();
    ultimoTurno_.start();
}
