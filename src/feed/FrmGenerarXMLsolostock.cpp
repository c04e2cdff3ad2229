#include "feed/FrmGenerarXMLsolostock.h"
#include "data/ui/frontera.h"
#include "ui_FrmGenerarXMLsolostock.h"

using namespace tolmo;
using data::ui::EnFrontera;

FrmGenerarXMLsolostock::FrmGenerarXMLsolostock(data::Avisos& avisos,
                                               const feed::FabricaGenerador& fabrica,
                                               QWidget* padre, bool hayOperador)
    : VentanaTrabajo(avisos, padre), ui_(std::make_unique<Ui::FrmGenerarXMLsolostock>()),
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
    VentanaTrabajo::Muestra(tag);
    return !inacabada_;
}

void FrmGenerarXMLsolostock::Activa(const QString& tag)
{
    if (tag == QLatin1String("AUTO"))
        Genera();
}

void FrmGenerarXMLsolostock::Pulsa()
{
    EnFrontera(AvisosDeVentana(), [this] { Genera(); });
}

void FrmGenerarXMLsolostock::Genera()
{
    if (Ocupada())
        return;
    const bool acabada = generador_->Genera(
        {.ruta = ui_->TxtDestino->text(), .carpeta = ui_->TxtUrlDestino->text()});
    inacabada_ = !acabada && !hayOperador_;
    if (acabada || inacabada_)
        QDialog::done(acabada ? Accepted : Rejected);
}

bool FrmGenerarXMLsolostock::Ocupada() const
{
    return generador_->EnMarcha();
}

void FrmGenerarXMLsolostock::Avanza(int posicion, int total)
{
    ui_->ProgressBar1->setValue(static_cast<int>(static_cast<long long>(posicion) * 100 / total));
    ui_->ProgressBar1->repaint();
}
