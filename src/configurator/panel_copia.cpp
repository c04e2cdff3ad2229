#include "configurator/panel_copia.h"
#include "configurator/busca_articulo.h"
#include "configurator/campos_copia.h"
#include "data/programa.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "ui_panel_copia.h"
#include <QKeyEvent>
#include <algorithm>

namespace tolmo::configurator {
namespace {

/// Opens the picker as a double click does.
constexpr int SinTecla = 0;

bool AbreElBuscador(int tecla)
{
    return tecla == Qt::Key_F8 || tecla == Qt::Key_F9 || tecla == Qt::Key_F11 ||
           tecla == Qt::Key_F12;
}

} // namespace

PanelCopia::PanelCopia(data::Programa& programa, QWidget* padre)
    : QWidget(padre), programa_(programa), ui_(std::make_unique<Ui::PanelCopia>())
{
    ui_->setupUi(this);
    QFont letra = ui_->RotuloAlternativo->font();
    letra.setBold(true);
    ui_->RotuloAlternativo->setFont(letra);
    data::ui::SeleccionaAlEntrar(*this);
    ConectaArticulo(*ui_->TxtArtDes, *ui_->Lblartdesde, false);
    ConectaArticulo(*ui_->TxtArtHas, *ui_->lblarthasta, false);
    ConectaArticulo(*ui_->TxtCodAlternativoDesde, *ui_->LblcodAltDesde, true);
    ConectaArticulo(*ui_->TxtCodAlternativoHasta, *ui_->LblcodAltHasta, true);
    ConectaCodigo(*ui_->TxtGrupo, *ui_->LblGrupo, false);
    ConectaCodigo(*ui_->TxtGrupo2, *ui_->LblGrupo2, false);
    ConectaCodigo(*ui_->TxtGrupo3, *ui_->LblGrupo3, false);
    ConectaCodigo(*ui_->TxtGrupo4, *ui_->LblGrupo4, false);
    ConectaCodigo(*ui_->TxtProvHab, *ui_->LblProvHab, true);
    setFocusProxy(ui_->TxtArtDes);
    connect(ui_->CmdExporta, &QPushButton::clicked, this, &PanelCopia::Exporta);
}

PanelCopia::~PanelCopia()
{
    // The focus may leave a box while the window is taken away.
    for (QLineEdit* caja : findChildren<QLineEdit*>())
        disconnect(caja, nullptr, this, nullptr);
}

/// The check of a field that is left; closing the window leaves it too, and nobody will see it.
void PanelCopia::AlDejar(QLineEdit& caja, const std::function<void()>& comprobacion)
{
    connect(&caja, &QLineEdit::editingFinished, this, [this, comprobacion] {
        if (window()->isVisible())
            data::ui::EnFrontera(programa_.avisos, comprobacion);
    });
}

void PanelCopia::ConectaArticulo(QLineEdit& caja, QLabel& etiqueta, bool alternativo)
{
    deArticulo_.push_back({.caja = &caja, .alternativo = alternativo});
    caja.installEventFilter(this);
    AlDejar(caja, [this, &caja, &etiqueta, alternativo] {
        const auto descripcion = alternativo ? DescripcionDeAlternativo(programa_, caja.text())
                                             : DescripcionDeArticulo(programa_, caja.text());
        etiqueta.setText(descripcion.value_or(QString()));
    });
}

void PanelCopia::ConectaCodigo(QLineEdit& caja, QLabel& etiqueta, bool deProveedor)
{
    AlDejar(caja, [this, &caja, &etiqueta, deProveedor] {
        const CodigoDescrito leido = deProveedor ? CompruebaProveedor(programa_, caja.text())
                                                 : CompruebaGrupo(programa_, caja.text());
        caja.setText(leido.codigo);
        etiqueta.setText(leido.descripcion);
    });
}

bool PanelCopia::eventFilter(QObject* objeto, QEvent* evento)
{
    const auto campo = std::ranges::find(deArticulo_, objeto, &CampoDeArticulo::caja);
    if (campo == deArticulo_.end())
        return QWidget::eventFilter(objeto, evento);
    if (evento->type() == QEvent::MouseButtonDblClick) {
        Elige(*campo, SinTecla);
        return true;
    }
    if (evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<const QKeyEvent*>(evento)->key();
        if (AbreElBuscador(tecla)) {
            Elige(*campo, tecla);
            return true;
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

void PanelCopia::Elige(const CampoDeArticulo& campo, int tecla)
{
    PeticionArticulo peticion{.DevuelveCodAlternativo = campo.alternativo};
    if (tecla == Qt::Key_F8)
        peticion.Tag = QStringLiteral("F8");
    if (tecla == Qt::Key_F9)
        peticion.filtro = campo.alternativo ? FiltroPorAlternativo(campo.caja->text())
                                            : FiltroPorArticulo(campo.caja->text());
    eligeArticulo(peticion, *campo.caja);
    // What it is called is looked up as if it had been typed.
    emit campo.caja->editingFinished();
}

SeleccionCopia PanelCopia::Seleccion() const
{
    return {.TxtArtDes = ui_->TxtArtDes->text(),
            .TxtArtHas = ui_->TxtArtHas->text(),
            .TxtCodAlternativoDesde = ui_->TxtCodAlternativoDesde->text(),
            .TxtCodAlternativoHasta = ui_->TxtCodAlternativoHasta->text(),
            .TxtGrupo = ui_->TxtGrupo->text(),
            .TxtGrupo2 = ui_->TxtGrupo2->text(),
            .TxtGrupo3 = ui_->TxtGrupo3->text(),
            .TxtGrupo4 = ui_->TxtGrupo4->text(),
            .TxtProvHab = ui_->TxtProvHab->text()};
}

QProgressBar& PanelCopia::PrgBar()
{
    return *ui_->PrgBar;
}

void PanelCopia::Exporta()
{
    // A button that is pressed by its letter doesn't take the focus from a field.
    if (auto* caja = qobject_cast<QLineEdit*>(focusWidget()))
        emit caja->editingFinished();
    copia(Seleccion());
}

} // namespace tolmo::configurator
