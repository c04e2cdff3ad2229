#include "run/FrmPrincipal.h"
#include "data/ui/frontera.h"
#include "run/FrmConexionSqlServer.h"
#include "run/FrmSeleccionaEmpresa.h"
#include "ui_FrmPrincipal.h"
#include <QApplication>
#include <QCloseEvent>
#include <utility>

using namespace tolmo;
using data::ui::EnFrontera;

namespace {

// clang-format off
const QString InformacionProgramacion = QStringList{
    QStringLiteral("Llamar al programa Kov Tolmo.exe + parámetros para programar tarea:"),
    QStringLiteral("/PRESTASHOP:[CODEMPRESA] -> Sincronización Todos (Familias completas, Artículos sólo cambios)"),
    QStringLiteral("/SOLOARTIC_SIN_STOCK:[CODEMPRESA] -> Sincronización Sólo Artículos con cambios (SIN ACTUALIZAR STOCK)"),
    QStringLiteral("/SOLOARTIC:[CODEMPRESA] -> Sincronización Sólo Artículos con cambios"),
    QStringLiteral("/SOLOSTOCKS:[CODEMPRESA] -> Generación proceso fichero para SOLOSTOCKS"),
    QStringLiteral("/STOCK:[CODEMPRESA] -> Actulización de existencias en la tienda prestashop"),
}.join(QStringLiteral("\r\n"));
// clang-format on

} // namespace

FrmPrincipal::FrmPrincipal(data::Programa& programa, const run::Entorno& entorno, Fabricas fabricas,
                           FrmSincronizar::Eco eco)
    : programa_(programa), entorno_(entorno), fabricas_(std::move(fabricas)), eco_(std::move(eco)),
      ui_(std::make_unique<Ui::FrmPrincipal>()), arranque_(programa, entorno, *this)
{
    ui_->setupUi(this);
    ui_->CmdSoloStock->hide();
    ConectaBotones();
}

FrmPrincipal::~FrmPrincipal() = default;

void FrmPrincipal::ConectaBotones()
{
    connect(ui_->CmdSincronizar, &QPushButton::clicked, this, &FrmPrincipal::Sincroniza);
    connect(ui_->CmdParametros, &QPushButton::clicked, this, [this] {
        AbreConfiguracion(programa_.CodigoEmpresa(), programa_.DescripcionEmpresa());
    });
    connect(ui_->CmdSoloStock, &QPushButton::clicked, this, &FrmPrincipal::GeneraSolostocks);
    connect(ui_->CmdAtributosValores, &QPushButton::clicked, this,
            [this] { EnProximaVersion(ui_->CmdAtributosValores->text()); });
    connect(ui_->CmdInfoProgramacion, &QPushButton::clicked, this,
            &FrmPrincipal::MuestraInformacion);
    connect(ui_->CmdSalir, &QPushButton::clicked, this, &QWidget::close);
}

run::Desenlace FrmPrincipal::Carga()
{
    const run::Desenlace desenlace = arranque_.Carga();
    ui_->LblEmpresa->setText(programa_.LblEmpresa);
    return desenlace;
}

bool FrmPrincipal::event(QEvent* evento)
{
    const bool tratado = QMainWindow::event(evento);
    if (evento->type() == QEvent::WindowActivate)
        Activa();
    return tratado;
}

void FrmPrincipal::Activa()
{
    // While another window is modal over this one, a run may be under way that relies on the
    // parameters and the dialect as they are.
    activacionPendiente_ = QApplication::activeModalWidget() != nullptr;
    if (!activacionPendiente_)
        EnFrontera(programa_.avisos, [this] { arranque_.Activa(); });
}

void FrmPrincipal::closeEvent(QCloseEvent* evento)
{
    arranque_.Descarga();
    evento->accept();
    emit Descargada();
}

void FrmPrincipal::Sincroniza()
{
    EnFrontera(programa_.avisos, [this] { MuestraSincronizar({}); });
    if (!entorno_.lineaOrdenes.isEmpty())
        close();
    else
        VuelveAlFrente();
}

void FrmPrincipal::GeneraSolostocks()
{
    EnFrontera(programa_.avisos, [this] { MuestraSolostocks({}); });
    VuelveAlFrente();
}

/// Not every desktop activates the window below a dialog that goes away, and one may have done it
/// while the dialog stood.
void FrmPrincipal::VuelveAlFrente()
{
    if (!isActiveWindow())
        activateWindow();
    else if (activacionPendiente_)
        Activa();
}

void FrmPrincipal::MuestraInformacion()
{
    programa_.avisos.Muestra(InformacionProgramacion, data::estilo::Informacion);
}

void FrmPrincipal::EnProximaVersion(const QString& que)
{
    QString nombre = que;
    nombre.remove(u'&');
    programa_.avisos.Muestra(u'"' + nombre +
                                 QStringLiteral("\" todavía no está disponible en esta versión."),
                             data::estilo::Informacion);
}

std::optional<run::AccesoSql> FrmPrincipal::PideServidorSql(const QString& servidor)
{
    FrmConexionSqlServer dialogo(servidor);
    if (dialogo.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialogo.Acceso();
}

std::optional<run::EmpresaElegida> FrmPrincipal::EligeEmpresa(const QStringList& empresas)
{
    FrmSeleccionaEmpresa dialogo(empresas);
    if (dialogo.exec() != QDialog::Accepted)
        return std::nullopt;
    return dialogo.Eleccion();
}

void FrmPrincipal::MuestraCmdSoloStock(bool visible)
{
    ui_->CmdSoloStock->setVisible(visible);
}

void FrmPrincipal::HabilitaCmdAtributosValores(bool habilitado)
{
    ui_->CmdAtributosValores->setEnabled(habilitado);
}

void FrmPrincipal::AbreConfiguracion(const QString&, const QString&)
{
    EnProximaVersion(ui_->CmdParametros->text());
}

void FrmPrincipal::MuestraSincronizar(const QString& tag)
{
    FrmSincronizar ventana(programa_.avisos, fabricas_.motor, isVisible() ? this : nullptr,
                           tag.isEmpty() ? FrmSincronizar::Eco{} : eco_);
    ventana.Muestra(tag);
}

bool FrmPrincipal::MuestraSolostocks(const QString& tag)
{
    FrmGenerarXMLsolostock ventana(programa_.avisos, fabricas_.generador,
                                   isVisible() ? this : nullptr, entorno_.hayPantalla);
    return ventana.Muestra(tag);
}
