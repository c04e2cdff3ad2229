#include "run/FrmConfiguracion.h"
#include "data/ui/cajas.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "run/ficha_empresa.h"
#include "ui_FrmConfiguracion.h"
#include <QKeyEvent>
#include <QShowEvent>
#include <utility>

using namespace tolmo;
using data::ui::EnFrontera;

namespace {

// clang-format off
const QString AvisoConfigurador = QStringLiteral("ATENCIÓN. Si selecciona esta opción los atributos y combinaciones serán ELIMINADOS. Estos datos serán los del configurador de productos de KOV MARLA");
// clang-format on

constexpr int AnchoIdioma = 70;
constexpr int AnchoCampo = 170;

data::Grid GridIdiomas()
{
    data::Grid grid{.AllowUpdate = true, .AllowAddNew = true, .AllowDelete = true};
    for (const char* columna :
         {"IDIOMA", "CAMPODESCRIPCION", "CAMPODESCORTA", "CAMPONOTAS", "CAMPOFAMDESCRIPCION",
          "CAMPOFAMNOTAS", "KEYWORDS", "KEYWORDS_FAM", "METATITULO_ART", "METADESCRIPCION_ART",
          "METATITULO_FAM", "METADESCRIPCION_FAM"})
        grid.columnas.push_back(
            {.DataField = QLatin1StringView(columna),
             .Caption = QLatin1StringView(columna),
             .ancho = qstrcmp(columna, "IDIOMA") == 0 ? AnchoIdioma : AnchoCampo});
    return grid;
}

} // namespace

FrmConfiguracion::FrmConfiguracion(data::Programa& programa, data::Escritorio& escritorio,
                                   QWidget* padre)
    : QDialog(padre), programa_(programa), ui_(std::make_unique<Ui::FrmConfiguracion>()),
      adodc_(new data::Adodc(programa, programa.ConexionLocal, this))
{
    ui_->setupUi(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    DefineIdiomas(escritorio);
    data::ui::RevelaCon(*ui_->CmdVer_98, *ui_->txtCampo_98);
    data::ui::RevelaCon(*ui_->CmdVer_103, *ui_->txtCampo_103);
    data::ui::SeleccionaAlEntrar(*this);
    connect(ui_->txtCampo_113, &QLineEdit::editingFinished, this, &FrmConfiguracion::DejaIdioma);
    // By the operator alone: as the row is read, nothing is to be asked.
    connect(ui_->ChkConfigurador, &QCheckBox::clicked, this,
            &FrmConfiguracion::PreguntaConfigurador);
    connect(ui_->CmdAceptar, &QPushButton::clicked, this, &FrmConfiguracion::Acepta);
}

FrmConfiguracion::~FrmConfiguracion()
{
    // The focus may leave the box while the window is taken away.
    disconnect(ui_->txtCampo_113, nullptr, this, nullptr);
}

void FrmConfiguracion::DefineIdiomas(data::Escritorio& escritorio)
{
    adodc_->setObjectName(QStringLiteral("Adodc1"));
    ui_->DataGrid1->Define(GridIdiomas());
    ui_->DataGrid1->Enlaza(*adodc_, escritorio);
    ui_->DataGrid1->Eventos().filaNueva = [this] {
        return data::Cambios{{QStringLiteral("CODEMPRESA"), Empresa()}};
    };
    ui_->DataGrid1->installEventFilter(this);
}

void FrmConfiguracion::Prepara(const QString& tag, const QString& empresa,
                               const QString& descripcion)
{
    Tag_ = tag;
    ui_->txtCampo_0->setText(empresa);
    ui_->LblEmpresa->setText(descripcion);
}

QString FrmConfiguracion::Empresa() const
{
    return ui_->txtCampo_0->text();
}

int FrmConfiguracion::exec()
{
    const int resultado = QDialog::exec();
    if (fallo_)
        std::rethrow_exception(std::exchange(fallo_, nullptr));
    return resultado;
}

void FrmConfiguracion::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (evento->spontaneous())
        return;
    try {
        Activa();
    } catch (...) {
        // For whoever called exec: the load of the main window has an answer of its own.
        fallo_ = std::current_exception();
        QMetaObject::invokeMethod(
            this, [this] { QDialog::done(Rejected); }, Qt::QueuedConnection);
    }
}

void FrmConfiguracion::Activa()
{
    const data::Recordset empresa = run::AbreFichaEmpresa(programa_, Empresa());
    if (std::exchange(Tag_, {}) == QLatin1String("1")) {
        data::ui::PonFicha(*this, empresa);
        data::ui::LimitaAnchos(*this, empresa);
    }
    // A row that is being typed into isn't disturbed.
    if (!ui_->DataGrid1->Modelo().HayCambios())
        ui_->DataGrid1->AbreGrid(run::ConsultaIdiomas(Empresa()));
}

void FrmConfiguracion::DejaIdioma()
{
    if (!data::EsNumerico(ui_->txtCampo_113->text()))
        ui_->txtCampo_113->clear();
}

void FrmConfiguracion::PreguntaConfigurador(bool marcado)
{
    constexpr int Estilo = data::estilo::SiNo + data::estilo::Aviso;
    if (marcado && programa_.avisos.Muestra(AvisoConfigurador, Estilo) == data::Respuesta::No)
        ui_->ChkConfigurador->setChecked(false);
}

void FrmConfiguracion::Acepta()
{
    // The button may be pressed by its letter, which leaves neither the box nor the row.
    DejaIdioma();
    if (!ui_->DataGrid1->GuardaFila())
        return;
    EnFrontera(programa_.avisos, [this] {
        run::GuardaFichaEmpresa(programa_, data::ui::CamposFicha(*this), Empresa());
    });
    accept();
}

void FrmConfiguracion::done(int resultado)
{
    // A row that can't be written keeps the window open; Escape in the grid gives it up.
    if (ui_->DataGrid1->GuardaFila())
        QDialog::done(resultado);
}

void FrmConfiguracion::keyPressEvent(QKeyEvent* evento)
{
    const bool intro = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    if (intro && ui_->DataGrid1->hasFocus()) {
        // On a cell it begins to type; the default button would save and close.
        ui_->DataGrid1->edit(ui_->DataGrid1->currentIndex());
        return;
    }
    QDialog::keyPressEvent(evento);
}

bool FrmConfiguracion::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == ui_->DataGrid1 && evento->type() == QEvent::KeyPress) {
        // Tab goes from cell to cell; with Ctrl it leaves the grid.
        const auto* tecla = static_cast<const QKeyEvent*>(evento);
        if (tecla->modifiers() & Qt::ControlModifier &&
            (tecla->key() == Qt::Key_Tab || tecla->key() == Qt::Key_Backtab)) {
            focusNextPrevChild(tecla->key() == Qt::Key_Tab);
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}
