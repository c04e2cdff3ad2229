#include "data/ui/DataGrid.h"
#include "data/partes_consulta.h"
#include "data/ui/boton_celda.h"
#include "data/ui/cabecera_filtro.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include <QApplication>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <set>
#include <utility>

namespace tolmo::data::ui {
namespace {

/// A column without a width of its own takes that of its texts, up to this one.
constexpr int AnchoMaximo = 360;
/// Rows that are looked at for it.
constexpr int FilasDeMuestra = 100;

QStringList TextosDeFiltro(const Grid& grid)
{
    QStringList textos;
    for (const ColumnaGrid& columna : grid.columnas)
        textos << columna.FilterText;
    return textos;
}

/// The column whose order the rows of a query come in, or -1: a window's own statement may name
/// none.
int ColumnaDelOrden(const Grid& grid, const QString& sql)
{
    const QString orden = ParteConsulta(sql).orden.section(u' ', 0, 0);
    const auto suya = std::ranges::find_if(grid.columnas, [&](const ColumnaGrid& columna) {
        return columna.DataField.compare(orden, Qt::CaseInsensitive) == 0;
    });
    return orden.isEmpty() || suya == grid.columnas.end()
               ? -1
               : static_cast<int>(suya - grid.columnas.begin());
}

} // namespace

/// The editor of a cell. It stays open until the grid closes it: its text may be refused, and then
/// it must not go because another window came in front.
class DataGrid::Delegado : public QStyledItemDelegate {
  public:
    explicit Delegado(DataGrid& grid) : QStyledItemDelegate(&grid), grid_(grid) {}

    QWidget* createEditor(QWidget* padre, const QStyleOptionViewItem& opcion,
                          const QModelIndex& indice) const override
    {
        grid_.editor_ = QStyledItemDelegate::createEditor(padre, opcion, indice);
        return grid_.editor_;
    }

    void setEditorData(QWidget* editor, const QModelIndex& indice) const override
    {
        // While a text is being taken the row changes under it; a refused one must stay.
        if (!grid_.tomando_)
            QStyledItemDelegate::setEditorData(editor, indice);
    }

    void setModelData(QWidget* editor, QAbstractItemModel*,
                      const QModelIndex& indice) const override
    {
        if (const auto* caja = qobject_cast<QLineEdit*>(editor))
            grid_.Toma(indice, caja->text());
    }

    void paint(QPainter* pintor, const QStyleOptionViewItem& opcion,
               const QModelIndex& indice) const override
    {
        QStyledItemDelegate::paint(pintor, opcion, indice);
        if (grid_.TieneBoton(indice))
            PintaBoton(*pintor, *grid_.style(), grid_.palette(), opcion.rect,
                       indice == grid_.pulsada_);
    }

    /// The button stays beside the editor.
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& opcion,
                              const QModelIndex& indice) const override
    {
        QStyledItemDelegate::updateEditorGeometry(editor, opcion, indice);
        if (grid_.TieneBoton(indice))
            editor->resize(editor->width() - SitioDeBoton(opcion.rect).width(), editor->height());
    }

  protected:
    bool eventFilter(QObject* objeto, QEvent* evento) override
    {
        if (evento->type() == QEvent::KeyPress &&
            grid_.EsTeclaDeBoton(*static_cast<QKeyEvent*>(evento))) {
            grid_.PulsaBoton();
            return true;
        }
        return evento->type() != QEvent::FocusOut &&
               QStyledItemDelegate::eventFilter(objeto, evento);
    }

  private:
    DataGrid& grid_;
};

DataGrid::DataGrid(QWidget* padre) : QTableView(padre), cabecera_(new CabeceraFiltro(this))
{
    setHorizontalHeader(cabecera_);
    // The head of a column orders; it doesn't select.
    disconnect(cabecera_, &QHeaderView::sectionPressed, this, nullptr);
    disconnect(cabecera_, &QHeaderView::sectionEntered, this, nullptr);
    cabecera_->setSortIndicatorShown(true);
    cabecera_->setStretchLastSection(true);
    cabecera_->setResizeContentsPrecision(FilasDeMuestra);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setItemDelegate(new Delegado(*this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setHorizontalScrollMode(ScrollPerPixel);
    connect(cabecera_, &QHeaderView::sectionClicked, this, &DataGrid::PulsaCabecera);
    connect(cabecera_, &CabeceraFiltro::BarraDejada, this, &DataGrid::TomaFiltros);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, cabecera_,
            &CabeceraFiltro::ColocaCajas);
    connect(qApp, &QApplication::focusChanged, this, &DataGrid::SigueElFoco);
}

DataGrid::~DataGrid()
{
    // The focus may leave its children while they are taken away.
    disconnect(qApp, nullptr, this, nullptr);
}

void DataGrid::Enlaza(Adodc& adodc, Escritorio& escritorio)
{
    adodc_ = &adodc;
    escritorio_ = &escritorio;
    modelo_ = new ModeloGrid(grid_, adodc, this);
    setModel(modelo_);
    connect(adodc_, &Adodc::Reabierto, this, &DataGrid::TrasReabrir);
    connect(adodc_, &Adodc::Movido, this, &DataGrid::SigueAlConjunto);
    Define(std::move(grid_));
}

void DataGrid::Define(Grid definicion)
{
    grid_ = std::move(definicion);
    anchosPuestos_ = false;
    setTabKeyNavigation(grid_.Edita());
    verticalHeader()->setVisible(grid_.Edita());
    if (!modelo_)
        return;
    modelo_->Rehaz();
    for (int i = 0; i < modelo_->columnCount(); ++i)
        setColumnHidden(i, grid_.columnas[static_cast<std::size_t>(i)].oculta);
    columna_ = PrimeraVisible();
    TrasReabrir();
}

void DataGrid::MuestraBarraFiltro(bool visible)
{
    cabecera_->MuestraBarra(visible);
}

EtiquetaGrid DataGrid::LlenaGrid(const QString& origen, const QString& campos)
{
    RecogeFiltros(grid_);
    return data::LlenaGrid(grid_, *adodc_, origen, campos);
}

EtiquetaGrid DataGrid::AbreGrid(const QString& sql)
{
    RecogeFiltros(grid_);
    return data::AbreGrid(grid_, *adodc_, sql);
}

void DataGrid::QuitaFiltroGrid()
{
    data::QuitaFiltroGrid(grid_, *adodc_);
}

/// What reaches the engine from an event of this widget.
void DataGrid::Frontera(const std::function<void()>& accion)
{
    EnFrontera(adodc_->programa().avisos, accion);
}

void DataGrid::PulsaCabecera(int columna)
{
    if (!adodc_ || adodc_->RecordSource().isEmpty() || !GuardaFila())
        return;
    RecogeFiltros(grid_);
    EtiquetaGrid etiqueta;
    Frontera([&] { etiqueta = OrdenaGrid(grid_, *adodc_, columna); });
    emit Ordenado(etiqueta);
}

/// Takes the texts of the filter bar into `destino`. \returns false when one is refused, after the
/// message; the others are taken
bool DataGrid::RecogeFiltros(Grid& destino)
{
    const QStringList textos = cabecera_->Textos();
    bool valen = true;
    for (std::size_t i = 0; i < destino.columnas.size(); ++i) {
        ColumnaGrid& columna = destino.columnas[i];
        const QString texto = textos.value(static_cast<qsizetype>(i));
        if (texto == columna.FilterText)
            continue;
        const QString rechazo = RechazoDeFiltro(columna, adodc_->Filas().Campos(), texto);
        if (rechazo.isEmpty()) {
            columna.FilterText = texto;
            continue;
        }
        valen = false;
        adodc_->programa().avisos.Muestra(rechazo, estilo::Aviso);
    }
    return valen;
}

bool DataGrid::TomaFiltros()
{
    if (!adodc_)
        return true;
    Grid nueva = grid_;
    bool tomados = RecogeFiltros(nueva);
    if (TextosDeFiltro(nueva) != TextosDeFiltro(grid_)) {
        if (GuardaFila()) {
            grid_ = nueva;
            Frontera([&] { AplicaFiltroColumnas(grid_, *adodc_); });
        } else {
            tomados = false;
        }
    }
    cabecera_->PonTextos(TextosDeFiltro(grid_));
    return tomados;
}

void DataGrid::TrasReabrir()
{
    cabecera_->PonTextos(TextosDeFiltro(grid_));
    cabecera_->setSortIndicator(ColumnaDelOrden(grid_, adodc_->RecordSource()), Qt::AscendingOrder);
    PonAnchos();
    SigueAlConjunto();
    if (adodc_->Fila() < 0)
        emit FilaCambiada();
}

/// The rows go, and with them an open editor: its focus stays in the grid.
void DataGrid::reset()
{
    const bool conFoco = editor_ && editor_->hasFocus();
    editor_.clear();
    if (conFoco) {
        const QScopedValueRollback guarda(acompasando_, true);
        setFocus();
    }
    QTableView::reset();
}

void DataGrid::PonAnchos()
{
    if (anchosPuestos_ || modelo_->Filas() == 0)
        return;
    anchosPuestos_ = true;
    for (int i = 0; i < modelo_->columnCount(); ++i) {
        const int ancho = grid_.columnas[static_cast<std::size_t>(i)].ancho;
        if (ancho == 0)
            resizeColumnToContents(i);
        setColumnWidth(i, ancho > 0 ? ancho : std::min(columnWidth(i), AnchoMaximo));
    }
}

/// True for the cells of the current row whose column has a button, where it may be changed.
bool DataGrid::TieneBoton(const QModelIndex& celda) const
{
    return celda.isValid() && celda.row() == currentIndex().row() &&
           grid_.columnas.at(static_cast<std::size_t>(celda.column())).boton &&
           celda.flags().testFlag(Qt::ItemIsEditable);
}

/// The cell on whose button a place of the viewport lies.
QModelIndex DataGrid::CeldaDelBoton(const QPoint& sitio) const
{
    const QModelIndex celda = indexAt(sitio);
    return TieneBoton(celda) && SitioDeBoton(visualRect(celda)).contains(sitio) ? celda
                                                                                : QModelIndex();
}

bool DataGrid::EsTeclaDeBoton(const QKeyEvent& tecla) const
{
    return (tecla.key() == Qt::Key_F11 || tecla.key() == Qt::Key_F12) && TieneBoton(currentIndex());
}

void DataGrid::PulsaBoton()
{
    if (editor_)
        closeEditor(editor_, QAbstractItemDelegate::RevertModelCache);
    emit BotonPulsado(currentIndex().column());
}

bool DataGrid::Teclea(const QString& columna, const QString& texto)
{
    const auto suya = std::ranges::find_if(grid_.columnas, [&](const ColumnaGrid& una) {
        return una.DataField.compare(columna, Qt::CaseInsensitive) == 0;
    });
    if (suya == grid_.columnas.end() || !currentIndex().isValid())
        return false;
    Toma(modelo_->index(currentIndex().row(), static_cast<int>(suya - grid_.columnas.begin())),
         texto);
    return !std::exchange(rechazada_, false);
}

/// Makes the current row of the record set that of the grid.
void DataGrid::SigueAlConjunto()
{
    const int fila = adodc_->Fila();
    if (acompasando_ || fila < 0 || modelo_->columnCount() == 0)
        return;
    const int columna = std::clamp(columna_, 0, modelo_->columnCount() - 1);
    const QModelIndex celda = modelo_->index(fila, columna);
    if (celda != currentIndex() || !selectionModel()->isSelected(celda))
        selectionModel()->setCurrentIndex(celda, QItemSelectionModel::ClearAndSelect |
                                                     QItemSelectionModel::Rows);
    scrollTo(celda);
}

void DataGrid::currentChanged(const QModelIndex& actual, const QModelIndex& anterior)
{
    QTableView::currentChanged(actual, anterior);
    if (!adodc_ || acompasando_)
        return;
    const bool otraFila = !anterior.isValid() || actual.row() != anterior.row();
    if (anterior.isValid() && (editor_ || (otraFila && !GuardaFila()))) {
        VuelveALaCelda(anterior);
        return;
    }
    if (actual.isValid())
        columna_ = actual.column();
    if (!otraFila)
        return;
    const QScopedValueRollback guarda(acompasando_, true);
    adodc_->PonFila(actual.row() < modelo_->Filas() ? actual.row() : -1);
    emit FilaCambiada();
}

/// A row that is refused can't be left, whichever way the current cell went away from it.
void DataGrid::VuelveALaCelda(const QModelIndex& celda)
{
    QMetaObject::invokeMethod(
        this,
        [this, celda = QPersistentModelIndex(celda)] {
            const QScopedValueRollback guarda(acompasando_, true);
            selectionModel()->setCurrentIndex(celda, QItemSelectionModel::ClearAndSelect |
                                                         QItemSelectionModel::Rows);
        },
        Qt::QueuedConnection);
}

/// Where a row is entered.
int DataGrid::PrimeraVisible() const
{
    const auto visible = std::ranges::find(grid_.columnas, false, &ColumnaGrid::oculta);
    return visible == grid_.columnas.end() ? 0 : static_cast<int>(visible - grid_.columnas.begin());
}

bool DataGrid::GuardaFila()
{
    if (!modelo_)
        return true;
    if (!CierraEditor())
        return false;
    bool guardada = true;
    Frontera([&] { guardada = modelo_->GuardaFila(); });
    return guardada;
}

/// Takes what stands in the open editor. \returns false when it is refused; it then stays open
bool DataGrid::CierraEditor()
{
    if (!editor_)
        return true;
    commitData(editor_);
    const bool tomado = !rechazada_;
    closeEditor(editor_, QAbstractItemDelegate::NoHint);
    return tomado;
}

void DataGrid::Toma(const QModelIndex& indice, const QString& texto)
{
    const QScopedValueRollback guarda(tomando_, true);
    Frontera([&] { rechazada_ = !modelo_->setData(indice, texto); });
}

void DataGrid::commitData(QWidget* editor)
{
    rechazada_ = false;
    QTableView::commitData(editor);
}

void DataGrid::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint destino)
{
    const bool seAbandona = destino == QAbstractItemDelegate::RevertModelCache;
    if (std::exchange(rechazada_, false) && !seAbandona) {
        SeleccionaTexto(editor);
        editor->setFocus();
        return;
    }
    editor_.clear();
    // Enter would write the row at once, and Escape give all of it up: a row is written as it is
    // left, and the first Escape is for its cell.
    const bool deTodaLaFila = seAbandona || destino == QAbstractItemDelegate::SubmitModelCache;
    QTableView::closeEditor(editor, deTodaLaFila ? QAbstractItemDelegate::NoHint : destino);
}

/// True when a movement leads from the row for adding to the next one, which is there only when
/// the first has been written.
bool DataGrid::AnadeAlPie(CursorAction accion) const
{
    const QModelIndex celda = currentIndex();
    const bool alFinal = celda.column() == modelo_->columnCount() - 1;
    return modelo_->HayCambios() && modelo_->EsFilaNueva(celda.row()) &&
           (accion == MoveDown || (accion == MoveNext && alFinal));
}

QModelIndex DataGrid::moveCursor(CursorAction accion, Qt::KeyboardModifiers teclas)
{
    if (modelo_ && AnadeAlPie(accion) && !GuardaFila())
        return currentIndex();
    const QModelIndex destino = QTableView::moveCursor(accion, teclas);
    if (destino.isValid() && destino.row() != currentIndex().row() && !GuardaFila())
        return currentIndex();
    return destino;
}

void DataGrid::mousePressEvent(QMouseEvent* evento)
{
    const QModelIndex destino = indexAt(evento->position().toPoint());
    pulsada_ = CeldaDelBoton(evento->position().toPoint());
    if (pulsada_.isValid() && evento->button() == Qt::LeftButton) {
        // The value is about to be chosen: what was begun in its cell is given up, in another one
        // it is taken.
        if (editor_ && pulsada_ == currentIndex())
            closeEditor(editor_, QAbstractItemDelegate::RevertModelCache);
        if (!CierraEditor()) {
            pulsada_ = QModelIndex();
            return;
        }
        setCurrentIndex(pulsada_);
        return viewport()->update();
    }
    const bool mismaFila = destino.row() == currentIndex().row();
    if (!(mismaFila ? CierraEditor() : GuardaFila()))
        return;
    QTableView::mousePressEvent(evento);
}

void DataGrid::mouseReleaseEvent(QMouseEvent* evento)
{
    if (!pulsada_.isValid())
        return QTableView::mouseReleaseEvent(evento);
    const bool encima = CeldaDelBoton(evento->position().toPoint()) == pulsada_;
    pulsada_ = QModelIndex();
    viewport()->update();
    if (encima)
        PulsaBoton();
}

void DataGrid::mouseDoubleClickEvent(QMouseEvent* evento)
{
    // On a button the second press isn't one that opens the editor.
    if (!CeldaDelBoton(evento->position().toPoint()).isValid())
        QTableView::mouseDoubleClickEvent(evento);
}

void DataGrid::keyPressEvent(QKeyEvent* evento)
{
    if (!modelo_)
        return QTableView::keyPressEvent(evento);
    if (evento->matches(QKeySequence::Copy))
        return CopiaSeleccion();
    if (evento->key() == Qt::Key_Delete && grid_.AllowDelete)
        return BorraSeleccion();
    if (EsTeclaDeBoton(*evento))
        return PulsaBoton();
    if (evento->key() == Qt::Key_Escape && modelo_->HayCambios())
        return modelo_->DescartaFila();
    QTableView::keyPressEvent(evento);
}

void DataGrid::contextMenuEvent(QContextMenuEvent* evento)
{
    if (!modelo_)
        return;
    QMenu menu(this);
    menu.addAction(QStringLiteral("&Copiar\tCtrl+C"), this, &DataGrid::CopiaSeleccion);
    menu.addAction(QStringLiteral("&Seleccionar todo\tCtrl+A"), this, &DataGrid::selectAll);
    if (grid_.AllowDelete)
        menu.addAction(QStringLiteral("&Eliminar\tSupr"), this, &DataGrid::BorraSeleccion);
    menu.exec(evento->globalPos());
}

/// The row is left for another control of the window, not for another window that came in front.
void DataGrid::SigueElFoco(const QWidget* antes, const QWidget* ahora)
{
    const auto dentro = [this](const QWidget* control) {
        return control == this || isAncestorOf(control);
    };
    if (!antes || !ahora || ahora->window() != window() || !dentro(antes) || dentro(ahora))
        return;
    if (!GuardaFila())
        QMetaObject::invokeMethod(
            this, [this] { (editor_ ? editor_.data() : this)->setFocus(); }, Qt::QueuedConnection);
}

QString DataGrid::ColumnaActual() const
{
    const int columna = currentIndex().isValid() ? currentIndex().column() : columna_;
    const auto indice = static_cast<std::size_t>(columna);
    const QString actual =
        indice < grid_.columnas.size() ? grid_.columnas[indice].DataField : QString();
    return actual.isEmpty() ? grid_.DataFields().value(0) : actual;
}

Valor DataGrid::ValorActual(const QString& columna) const
{
    return modelo_->ValorDe(currentIndex().row(), columna);
}

std::vector<int> DataGrid::SelBookmarks() const
{
    std::set<int> filas;
    for (const QItemSelectionRange& tramo : selectionModel()->selection())
        for (int fila = tramo.top(); fila <= tramo.bottom(); ++fila)
            if (!modelo_->EsFilaNueva(fila))
                filas.insert(fila);
    return {filas.begin(), filas.end()};
}

void DataGrid::SeleccionaTodoGrid()
{
    if (!modelo_ || modelo_->Filas() == 0)
        return;
    const QItemSelection todas(modelo_->index(0, 0),
                               modelo_->index(modelo_->Filas() - 1, modelo_->columnCount() - 1));
    selectionModel()->select(todas, QItemSelectionModel::ClearAndSelect);
}

void DataGrid::CopiaSeleccion()
{
    data::CopiaSeleccion(grid_, *adodc_, SelBookmarks(), *escritorio_);
}

void DataGrid::BorraSeleccion()
{
    if (editor_)
        closeEditor(editor_, QAbstractItemDelegate::RevertModelCache);
    {
        const QScopedValueRollback guarda(acompasando_, true);
        Frontera([&] { modelo_->BorraFilas(SelBookmarks()); });
    }
    SigueAlConjunto();
    emit FilaCambiada();
}

} // namespace tolmo::data::ui
