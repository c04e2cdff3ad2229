#include "data/ui/ventana_consulta.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include <QHBoxLayout>
#include <QShowEvent>

namespace tolmo::data::ui {
namespace {

constexpr QSize Tamano(760, 480);

} // namespace

VentanaConsulta::VentanaConsulta(Programa& programa, Conexion& conexion, Escritorio& escritorio,
                                 QWidget* llamante)
    : QDialog(llamante), programa_(programa), columna_(new QVBoxLayout(this)),
      panel_(new PanelConsulta(programa, conexion, escritorio, 1, this)),
      retorno_(new QPushButton(QStringLiteral("&Retorna valor"), this))
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(Tamano);
    retorno_->setObjectName(QStringLiteral("CmdRetorna"));
    retorno_->setDefault(true);
    auto* abajo = new QHBoxLayout;
    abajo->addStretch(1);
    abajo->addWidget(retorno_);
    columna_->addWidget(panel_, 1);
    columna_->addLayout(abajo);
    panel_->Llena = [this] { panel_->LlenaGrid(Origen(), Campos()); };
    connect(retorno_, &QPushButton::clicked, this, &VentanaConsulta::Retorna);
    connect(&panel_->Rejilla(), &QAbstractItemView::doubleClicked, this, [this] {
        if (!retorno_->isHidden() && !panel_->Rejilla().Definicion().Edita())
            Retorna();
    });
    panel_->setFocus();
}

void VentanaConsulta::PermiteRetorno(bool permitido)
{
    retorno_->setVisible(permitido);
}

void VentanaConsulta::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (!evento->spontaneous())
        panel_->Activa();
}

int VentanaConsulta::MuestraHija(QDialog& hija, PanelConsulta::Motivo motivo)
{
    panel_->PonMotivo(motivo);
    const int resultado = hija.exec();
    panel_->Activa();
    return resultado;
}

void VentanaConsulta::Retorna()
{
    if (!panel_->TomaLoEscrito() || panel_->Datos().Fila() < 0)
        return;
    EnFrontera(programa_.avisos, [this] {
        const QString columna =
            columnaDeRetorno_.isEmpty() ? panel_->Rejilla().ColumnaActual() : columnaDeRetorno_;
        PonValorControl(ControlDelLlamante(*this), panel_->Datos().Filas()[columna]);
    });
    done(Accepted);
}

void VentanaConsulta::done(int resultado)
{
    // A row that can't be written keeps the window open; Escape in the grid gives it up.
    if (panel_->Rejilla().GuardaFila())
        QDialog::done(resultado);
}

} // namespace tolmo::data::ui
