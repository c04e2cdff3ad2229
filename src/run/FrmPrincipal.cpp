#include "run/FrmPrincipal.h"
#include "batch/trabajo.h"
#include "data/plantilla.h"
#include "data/rutas.h"
#include "data/ui/frontera.h"
#include "data/ui/iconos.h"
#include "run/FrmConexionSqlServer.h"
#include "run/FrmSeleccionaEmpresa.h"
#include "ui_FrmPrincipal.h"
#include <QApplication>
#include <QCloseEvent>
#include <utility>

using namespace tolmo;
using data::ui::Dibujo;
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

constexpr data::Plantilla AvisoSinRegistro(u"Todavía no hay registro de hoy: lo empezará la primera sincronización del día, en {fichero}");
// clang-format on

constexpr int LadoEmblema = 48;
/// The longest name of a company takes so many at the window's smallest.
constexpr int LineasDeEmpresa = 3;

} // namespace

FrmPrincipal::FrmPrincipal(data::Programa& programa, data::Escritorio& escritorio,
                           const run::Entorno& entorno, Fabricas fabricas, FrmSincronizar::Eco eco)
    : programa_(programa), escritorio_(escritorio), entorno_(entorno),
      fabricas_(std::move(fabricas)), eco_(std::move(eco)),
      ui_(std::make_unique<Ui::FrmPrincipal>()), arranque_(programa, entorno, *this)
{
    ui_->setupUi(this);
    ui_->CmdSoloStock->hide();
    ui_->LblEmpresa->setMinimumHeight(LineasDeEmpresa *
                                      ui_->LblEmpresa->fontMetrics().lineSpacing());
    PonIconos();
    ConectaBotones();
    ConectaMenu();
}

FrmPrincipal::~FrmPrincipal() = default;

void FrmPrincipal::PonIconos()
{
    ui_->Emblema->setPixmap(
        data::ui::IconoPrograma().pixmap(QSize(LadoEmblema, LadoEmblema), devicePixelRatio()));
    for (const auto& [boton, dibujo] : {std::pair(ui_->CmdSincronizar, Dibujo::Sincroniza),
                                        std::pair(ui_->CmdParametros, Dibujo::Configura),
                                        std::pair(ui_->CmdSoloStock, Dibujo::Anuncia),
                                        std::pair(ui_->CmdAtributosValores, Dibujo::Atributos),
                                        std::pair(ui_->CmdInfoProgramacion, Dibujo::Programa),
                                        std::pair(ui_->CmdSalir, Dibujo::Sale)})
        boton->setIcon(data::ui::Icono(dibujo));
    for (const auto& [accion, dibujo] : {std::pair(ui_->AccionUsuarios, Dibujo::Usuarios),
                                         std::pair(ui_->AccionRegistro, Dibujo::Registro),
                                         std::pair(ui_->AccionInformacion, Dibujo::Programa),
                                         std::pair(ui_->AccionSalir, Dibujo::Sale)})
        accion->setIcon(data::ui::Icono(dibujo, data::ui::Tinta::Una));
}

void FrmPrincipal::ConectaBotones()
{
    const auto pulsa = [this](QPushButton* boton, auto accion) {
        connect(boton, &QPushButton::clicked, this, accion);
    };
    pulsa(ui_->CmdSincronizar, &FrmPrincipal::Sincroniza);
    pulsa(ui_->CmdParametros, &FrmPrincipal::Configura);
    pulsa(ui_->CmdSoloStock, &FrmPrincipal::GeneraSolostocks);
    pulsa(ui_->CmdAtributosValores, &FrmPrincipal::ConfiguraAtributos);
    pulsa(ui_->CmdInfoProgramacion, &FrmPrincipal::MuestraInformacion);
    pulsa(ui_->CmdSalir, &QWidget::close);
}

void FrmPrincipal::ConectaMenu()
{
    const auto elige = [this](QAction* entrada, auto accion) {
        connect(entrada, &QAction::triggered, this, accion);
    };
    elige(ui_->AccionUsuarios, &FrmPrincipal::MuestraUsuarios);
    elige(ui_->AccionRegistro, &FrmPrincipal::AbreRegistro);
    elige(ui_->AccionInformacion, &FrmPrincipal::MuestraInformacion);
    elige(ui_->AccionSalir, &QWidget::close);
}

run::Desenlace FrmPrincipal::Carga()
{
    const run::Desenlace desenlace = arranque_.Carga();
    ui_->LblEmpresa->setText(programa_.LblEmpresa);
    // Without a company there is no database to work on.
    const bool hayEmpresa = desenlace != run::Desenlace::SinEmpresa;
    for (QPushButton* boton : {ui_->CmdSincronizar, ui_->CmdParametros, ui_->CmdAtributosValores})
        boton->setEnabled(hayEmpresa);
    ui_->AccionUsuarios->setEnabled(hayEmpresa);
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

void FrmPrincipal::Configura()
{
    EnFrontera(programa_.avisos, [this] { arranque_.Configura(); });
    VuelveAlFrente();
}

void FrmPrincipal::GeneraSolostocks()
{
    EnFrontera(programa_.avisos, [this] { MuestraSolostocks({}); });
    VuelveAlFrente();
}

void FrmPrincipal::ConfiguraAtributos()
{
    MuestraModal(fabricas_.atributos);
}

void FrmPrincipal::MuestraUsuarios()
{
    MuestraModal(fabricas_.usuarios);
}

void FrmPrincipal::MuestraModal(const FabricaVentana& fabrica)
{
    EnFrontera(programa_.avisos, [&] { fabrica(this)->exec(); });
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

void FrmPrincipal::AbreRegistro()
{
    const QString fichero = batch::NombreFicheroLog(programa_);
    if (data::ExisteFichero(fichero))
        escritorio_.AbreDocumento(fichero);
    else
        programa_.avisos.Muestra(AvisoSinRegistro({{"fichero", fichero}}),
                                 data::estilo::Informacion);
}

void FrmPrincipal::MuestraInformacion()
{
    programa_.avisos.Muestra(InformacionProgramacion, data::estilo::Informacion);
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

void FrmPrincipal::AbreConfiguracion(const QString& empresa, const QString& descripcion)
{
    fabricas_
        .configuracion(QStringLiteral("1"), empresa, descripcion, isVisible() ? this : nullptr)
        ->exec();
}

void FrmPrincipal::MuestraSincronizar(const QString& tag)
{
    FrmSincronizar ventana(programa_.avisos, fabricas_.motor, isVisible() ? this : nullptr,
                           tag.isEmpty() ? FrmSincronizar::Eco{} : eco_);
    ventana.PonSelectorDeArticulos(fabricas_.articulos);
    ventana.Muestra(tag);
}

bool FrmPrincipal::MuestraSolostocks(const QString& tag)
{
    FrmGenerarXMLsolostock ventana(programa_.avisos, fabricas_.generador,
                                   isVisible() ? this : nullptr, entorno_.hayPantalla);
    return ventana.Muestra(tag);
}
