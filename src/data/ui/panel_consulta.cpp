#include "data/ui/panel_consulta.h"
#include "data/busqueda_grid.h"
#include "data/ui/FrmCadenaBooleanaAvanzada.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "data/ui/iconos.h"
#include <QAction>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QToolButton>
#include <QVBoxLayout>

namespace tolmo::data::ui {
namespace {

const QString SinCondicion = QStringLiteral("Filtro Selección");

} // namespace

PanelConsulta::PanelConsulta(Programa& programa, Conexion& conexion, Escritorio& escritorio,
                             int numero, QWidget* padre)
    : QWidget(padre), programa_(programa), adodc_(new Adodc(programa, conexion, this)),
      franja_(new QWidget(this)), grid_(new DataGrid(this)), barra_(new QToolBar(franja_)),
      rotulo_(new QLabel(franja_)), texto_(new QLineEdit(franja_)), filtro_(new QLineEdit(this))
{
    NombraControles(numero);
    grid_->Enlaza(*adodc_, escritorio);
    grid_->MuestraBarraFiltro(true);
    CreaBarra();
    Coloca();
    MuestraEstadoDeFiltro();
    connect(filtro_, &QLineEdit::textChanged, this, &PanelConsulta::MuestraEstadoDeFiltro);
    connect(grid_, &DataGrid::Ordenado, this, &PanelConsulta::PonEtiqueta);
    connect(texto_, &QLineEdit::textEdited, this, [this](const QString& texto) {
        Hace([&] { BuscaEnGrid(*adodc_, etiqueta_.Tag, texto); });
    });
    SeleccionaAlEntrar(*this);
    texto_->installEventFilter(this);
}

void PanelConsulta::NombraControles(int numero)
{
    const auto nombra = [numero](QObject* control, const char* nombre) {
        control->setObjectName(QLatin1StringView(nombre) + QString::number(numero));
    };
    nombra(this, "PanelConsulta");
    nombra(franja_, "CoolBar");
    nombra(grid_, "DataGrid");
    nombra(adodc_, "Adodc");
    nombra(texto_, "Text");
    nombra(rotulo_, "Label");
    nombra(barra_, "Toolbar");
    if (numero == 1)
        filtro_->setObjectName(QStringLiteral("TxtFiltro"));
    else
        nombra(filtro_, "txtFiltro");
}

void PanelConsulta::Coloca()
{
    filtro_->hide();
    rotulo_->setBuddy(texto_);
    texto_->setClearButtonEnabled(true);
    texto_->setToolTip(QStringLiteral("Buscar; * o % valen por cualquier texto"));
    auto* arriba = new QHBoxLayout(franja_);
    arriba->setContentsMargins({});
    arriba->addWidget(barra_);
    arriba->addWidget(rotulo_);
    arriba->addWidget(texto_, 1);
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins({});
    columna->addWidget(franja_);
    columna->addWidget(grid_, 1);
    setTabOrder(texto_, grid_);
    setFocusProxy(texto_);
}

void PanelConsulta::CreaBarra()
{
    Anade("PRIMREG", Icono(Dibujo::Primero), QStringLiteral("Primer registro (Ctrl+Inicio)"),
          [this] { adodc_->Primera(); });
    Anade("ULTREG", Icono(Dibujo::Ultimo), QStringLiteral("Último registro (Ctrl+Fin)"),
          [this] { adodc_->Ultima(); });
    AnadeFiltro();
    QAction* anterior =
        Anade("FINDANT", Icono(Dibujo::BuscaAnterior), QStringLiteral("Buscar anterior (Mayús+F3)"),
              [this] { BuscaAnterior(*adodc_, etiqueta_.Tag, texto_->text()); });
    QAction* siguiente =
        Anade("FINDSIG", Icono(Dibujo::BuscaSiguiente), QStringLiteral("Buscar siguiente (F3)"),
              [this] { BuscaSiguiente(*adodc_, etiqueta_.Tag, texto_->text()); });
    PonTecla(*anterior, Qt::SHIFT | Qt::Key_F3);
    PonTecla(*siguiente, Qt::Key_F3);
}

/// A key for an action wherever in the panel the focus is; a window may hold two panels.
void PanelConsulta::PonTecla(QAction& accion, const QKeySequence& tecla)
{
    accion.setShortcut(tecla);
    accion.setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(&accion);
}

QAction* PanelConsulta::Anade(const char* clave, const QIcon& icono, const QString& ayuda,
                              const std::function<void()>& accion)
{
    QAction* boton = barra_->addAction(icono, ayuda);
    boton->setObjectName(QLatin1StringView(clave));
    connect(boton, &QAction::triggered, this, [this, accion] { Hace(accion); });
    return boton;
}

void PanelConsulta::AnadeFiltro()
{
    botonFiltro_ = Anade("FILTRO", Icono(Dibujo::Filtro), SinCondicion, [this] { Filtra(); });
    botonFiltro_->setCheckable(true);
    // The press of the button must not change how it shows the filter.
    connect(botonFiltro_, &QAction::toggled, this, &PanelConsulta::MuestraEstadoDeFiltro);
    auto* menu = new QMenu(barra_);
    // The keys stand here: the tool tip of the button is for the condition.
    const auto entrada = [this, menu](const QString& texto, const QKeySequence& tecla,
                                      const std::function<void()>& accion) {
        QAction* elegida = menu->addAction(texto, this, accion);
        elegida->setObjectName(texto);
        PonTecla(*elegida, tecla);
    };
    entrada(QStringLiteral("Filtro Avanzado"), Qt::CTRL | Qt::Key_F,
            [this] { Hace([this] { Filtra(); }); });
    entrada(QStringLiteral("Quitar Filtros"), Qt::CTRL | Qt::SHIFT | Qt::Key_F, [this] {
        // What was typed in the filter bar goes too, and isn't taken before.
        if (grid_->GuardaFila())
            EnFrontera(programa_.avisos, [this] { QuitaFiltros(); });
    });
    auto* boton = qobject_cast<QToolButton*>(barra_->widgetForAction(botonFiltro_));
    boton->setMenu(menu);
    boton->setPopupMode(QToolButton::MenuButtonPopup);
}

bool PanelConsulta::TomaLoEscrito()
{
    return grid_->TomaFiltros() && grid_->GuardaFila();
}

/// What a button does: what is being typed is left for it, and an error ends here.
void PanelConsulta::Hace(const std::function<void()>& accion)
{
    if (TomaLoEscrito())
        EnFrontera(programa_.avisos, accion);
}

void PanelConsulta::MuestraEstadoDeFiltro()
{
    const QString condicion = filtro_->text();
    botonFiltro_->setChecked(!condicion.isEmpty());
    // A condition may look like mark-up: "A<B AND C>D".
    const QString ayuda =
        Qt::mightBeRichText(condicion) ? Qt::convertFromPlainText(condicion) : condicion;
    botonFiltro_->setToolTip(condicion.isEmpty() ? SinCondicion : ayuda);
}

void PanelConsulta::PonEtiqueta(const EtiquetaGrid& etiqueta)
{
    etiqueta_ = etiqueta;
    rotulo_->setProperty("Tag", etiqueta.Tag);
    rotulo_->setText(etiqueta.Caption);
}

void PanelConsulta::LlenaGrid(const QString& origen, const QString& campos)
{
    PonEtiqueta(grid_->LlenaGrid(origen, campos));
}

void PanelConsulta::AbreGrid(const QString& sql)
{
    PonEtiqueta(grid_->AbreGrid(sql));
}

QString PanelConsulta::Donde() const
{
    const QString condicion = filtro_->text();
    return condicion.isEmpty() ? QString()
                               : QStringLiteral(" where (") + condicion + QStringLiteral(")");
}

void PanelConsulta::Activa()
{
    const Motivo motivo = std::exchange(motivo_, Motivo::Otro);
    if (motivo == Motivo::Otro && grid_->Modelo().HayCambios())
        return;
    EnFrontera(programa_.avisos, [&] {
        const MarcaDeFila marca(*adodc_, grid_->Definicion().ColumnaDeMarca());
        Llena();
        if (motivo == Motivo::Carga)
            BuscaEnGrid(*adodc_, etiqueta_.Tag, texto_->text());
        else if (motivo == Motivo::Otro)
            marca.Vuelve(*adodc_);
    });
}

void PanelConsulta::Filtra()
{
    motivo_ = Motivo::Filtro;
    FrmCadenaBooleanaAvanzada constructor(programa_, filtro_, window());
    constructor.ArrayFiltro(grid_->Definicion().columnas, adodc_->Filas().Campos());
    constructor.exec();
    Activa();
}

void PanelConsulta::QuitaFiltros()
{
    filtro_->clear();
    grid_->QuitaFiltroGrid();
    Llena();
}

bool PanelConsulta::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == texto_ && evento->type() == QEvent::KeyPress) {
        // From the search box the rows are gone through without leaving it.
        const auto& tecla = static_cast<const QKeyEvent&>(*evento);
        switch (tecla.key()) {
        case Qt::Key_Home:
        case Qt::Key_End:
            if (tecla.modifiers() != Qt::ControlModifier)
                break;
            [[fallthrough]];
        case Qt::Key_Up:
        case Qt::Key_Down:
        case Qt::Key_PageUp:
        case Qt::Key_PageDown:
            QCoreApplication::sendEvent(grid_, evento);
            return true;
        default:
            break;
        }
    }
    return QWidget::eventFilter(objeto, evento);
}

} // namespace tolmo::data::ui
