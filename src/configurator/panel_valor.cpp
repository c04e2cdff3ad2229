#include "configurator/panel_valor.h"
#include "configurator/editor_valores.h"
#include "data/plantilla.h"
#include "data/programa.h"
#include "data/puertos.h"
#include "data/rutas.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "ui_panel_valor.h"
#include <utility>

namespace tolmo::configurator {
namespace {

constexpr data::Plantilla NoEsta(u"No se encuentra la imagen {ruta}");

bool EsUrl(const QString& ruta)
{
    return ruta.contains(QLatin1String("://"));
}

} // namespace

PanelValor::PanelValor(data::Programa& programa, data::Escritorio& escritorio, QWidget* padre)
    : QWidget(padre), programa_(programa), escritorio_(escritorio),
      ui_(std::make_unique<Ui::PanelValor>())
{
    ui_->setupUi(this);
    ui_->Picture1->PonAmpliar(false);
    data::ui::SeleccionaAlEntrar(*this);
    const auto pulsa = [this](QAbstractButton* boton, void (PanelValor::*accion)()) {
        connect(boton, &QAbstractButton::clicked, this,
                [this, accion] { Hace([this, accion] { (this->*accion)(); }); });
    };
    pulsa(ui_->CmdExaminar, &PanelValor::Examina);
    pulsa(ui_->CmdEditar, &PanelValor::Edita);
    pulsa(ui_->CmdQuitar, &PanelValor::Quita);
    connect(ui_->txtCampo_1, &QLineEdit::editingFinished, this,
            [this] { Hace([this] { GuardaLoEscrito(); }); });
    Muestra(std::nullopt);
}

PanelValor::~PanelValor()
{
    // The focus may leave the box while the window is taken away.
    disconnect(ui_->txtCampo_1, nullptr, this, nullptr);
}

void PanelValor::Hace(const std::function<void()>& accion)
{
    data::ui::EnFrontera(programa_.avisos, accion);
}

void PanelValor::Muestra(const std::optional<ValorDeArticulo>& valor)
{
    GuardaLoEscrito();
    std::optional<DetalleValor> detalle;
    if (valor)
        detalle = LeeDetalleValor(programa_, valor->CodArticulo, valor->CodCategoria, valor->valor);
    valor_ = detalle ? valor : std::nullopt;
    const QString anterior = std::exchange(guardada_, detalle ? detalle->Foto : QString());
    ui_->LblValor->setText(detalle ? detalle->descripcion : QString());
    ui_->txtCampo_1->setText(guardada_);
    setEnabled(valor_.has_value());
    if (guardada_ != anterior)
        CargaFoto();
}

void PanelValor::GuardaLoEscrito()
{
    const QString ruta = ui_->txtCampo_1->text();
    if (!valor_ || ruta == guardada_)
        return;
    if (!CabeFoto(programa_, ruta)) {
        ui_->txtCampo_1->setText(guardada_);
        return;
    }
    GuardaFoto(programa_, *valor_, ruta);
    guardada_ = ruta;
    CargaFoto();
}

void PanelValor::Examina()
{
    const std::optional<QString> elegida = eligeImagen();
    if (!elegida || !CabeFoto(programa_, *elegida))
        return;
    ui_->txtCampo_1->setText(*elegida);
    GuardaLoEscrito();
}

void PanelValor::Edita()
{
    GuardaLoEscrito();
    const QString ruta = RutaDeFoto(programa_, *valor_, guardada_);
    if (EsUrl(ruta) || data::ExisteFichero(ruta))
        escritorio_.AbreDocumento(ruta);
    else
        programa_.avisos.Muestra(NoEsta({{"ruta", ruta}}), data::estilo::Aviso);
}

void PanelValor::Quita()
{
    GuardaLoEscrito();
    if (!QuitaFoto(programa_, *valor_))
        return;
    guardada_.clear();
    ui_->txtCampo_1->clear();
    CargaFoto();
}

void PanelValor::CargaFoto()
{
    for (data::ui::VistaFoto* vista : {ui_->ImgFoto, ui_->Picture1}) {
        if (guardada_.isEmpty())
            vista->Limpia();
        else
            vista->Muestra(guardada_);
    }
}

} // namespace tolmo::configurator
