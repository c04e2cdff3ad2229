#include "sync/lista_estado.h"
#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <algorithm>
#include <utility>

using namespace tolmo;
using data::Sentido;

namespace {

/// Draws a line, and gives all of them the size of the widest: to ask each for its own would take
/// longer with every line that comes.
class PintorDeLineas : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// What a server answered may hold line ends; here it is one line.
    QString displayText(const QVariant& valor, const QLocale&) const override
    {
        QString texto = valor.toString();
        texto.remove(u'\r');
        return texto.replace(u'\n', u' ');
    }

    QSize sizeHint(const QStyleOptionViewItem& opcion, const QModelIndex& indice) const override
    {
        QStyleOptionViewItem deLinea = opcion;
        initStyleOption(&deLinea, indice);
        deLinea.text = masLarga;
        return deLinea.widget->style()->sizeFromContents(QStyle::CT_ItemViewItem, &deLinea, {},
                                                         deLinea.widget);
    }

    QString masLarga{};
};

PintorDeLineas& Pintor(const ListaEstado& lista)
{
    return *static_cast<PintorDeLineas*>(lista.itemDelegate());
}

} // namespace

ListaEstado::ListaEstado(QWidget* padre) : QListView(padre)
{
    setModel(&modelo_);
    setItemDelegate(new PintorDeLineas(this));
    setUniformItemSizes(true);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTextElideMode(Qt::ElideNone);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    turno_.setSingleShot(true);
    connect(&turno_, &QTimer::timeout, this, &ListaEstado::Recoge);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ListaEstado::RevisaSeguimiento);
    connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ListaEstado::RevisaSeguimiento);
    // Also when the window changes its size.
    connect(verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        if (sigue_)
            PonAlFinal();
    });
    CreaMenu();
}

void ListaEstado::CreaMenu()
{
    const auto entrada = [this](const char* nombre, const QString& texto,
                                QKeySequence::StandardKey tecla, auto accion) {
        auto* nueva = new QAction(texto, this);
        nueva->setObjectName(QLatin1StringView(nombre));
        nueva->setShortcut(tecla);
        nueva->setShortcutContext(Qt::WidgetShortcut);
        connect(nueva, &QAction::triggered, this, accion);
        addAction(nueva);
    };
    entrada("AccionCopiar", QStringLiteral("&Copiar"), QKeySequence::Copy,
            &ListaEstado::CopiaSeleccion);
    entrada("AccionSeleccionarTodo", QStringLiteral("Seleccionar &todo"), QKeySequence::SelectAll,
            &ListaEstado::selectAll);
    setContextMenuPolicy(Qt::ActionsContextMenu);
}

void ListaEstado::Anade(const QString& linea)
{
    llegadas_ << linea;
    if (!turno_.isActive())
        turno_.start(0);
}

void ListaEstado::Vacia()
{
    turno_.stop();
    llegadas_.clear();
    Pintor(*this).masLarga.clear();
    modelo_.Vacia();
    RevisaSeguimiento();
}

void ListaEstado::MuestraYa()
{
    turno_.stop();
    Recoge();
    viewport()->repaint();
}

void ListaEstado::Recoge()
{
    const QStringList lineas = std::exchange(llegadas_, {});
    MideLineas(lineas);
    modelo_.Anade(lineas);
    // The bar gets its new range here, and with it the place where it is to stand.
    executeDelayedItemsLayout();
    if (sigue_)
        PonAlFinal();
}

void ListaEstado::MideLineas(const QStringList& lineas)
{
    QString& masLarga = Pintor(*this).masLarga;
    int ancho = fontMetrics().horizontalAdvance(masLarga);
    for (const QString& linea : lineas) {
        // Letters differ in width, though not by so much over a whole line.
        if (linea.size() * 4 < masLarga.size() * 3)
            continue;
        const QString vista = Pintor(*this).displayText(linea, locale());
        const int suyo = fontMetrics().horizontalAdvance(vista);
        if (suyo <= ancho)
            continue;
        ancho = suyo;
        masLarga = vista;
    }
}

void ListaEstado::RevisaSeguimiento()
{
    const QScrollBar& barra = *verticalScrollBar();
    const bool sigue = barra.value() == barra.maximum() && !selectionModel()->hasSelection();
    if (std::exchange(sigue_, sigue) != sigue)
        emit SeguimientoCambiado(sigue);
}

void ListaEstado::PonAlFinal()
{
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
}

void ListaEstado::VuelveAlFinal()
{
    // Without a current row either, so that no line is marked.
    selectionModel()->clear();
    PonAlFinal();
    RevisaSeguimiento();
}

int ListaEstado::FilaElegida() const
{
    int primera = -1;
    for (const QItemSelectionRange& tramo : selectionModel()->selection())
        primera = primera < 0 ? tramo.top() : std::min(primera, tramo.top());
    return primera;
}

bool ListaEstado::Busca(const QString& texto, Sentido sentido)
{
    return Elige(modelo_.Busca(texto, FilaElegida(), sentido));
}

bool ListaEstado::BuscaDesdeAqui(const QString& texto)
{
    return Elige(modelo_.Busca(texto, FilaElegida() - 1, Sentido::Siguiente));
}

bool ListaEstado::Elige(int fila)
{
    if (fila < 0)
        return false;
    const QModelIndex indice = modelo_.index(fila);
    // Not setCurrentIndex: with Shift held down, as for the line before, it would select a range.
    selectionModel()->setCurrentIndex(indice, QItemSelectionModel::ClearAndSelect);
    scrollTo(indice, PositionAtCenter);
    return true;
}

void ListaEstado::CopiaSeleccion() const
{
    QItemSelection tramos = selectionModel()->selection();
    std::sort(tramos.begin(), tramos.end(),
              [](const auto& uno, const auto& otro) { return uno.top() < otro.top(); });
    QStringList lineas;
    for (const QItemSelectionRange& tramo : tramos)
        lineas += modelo_.Lineas().mid(tramo.top(), tramo.height());
    if (!lineas.isEmpty())
        QGuiApplication::clipboard()->setText(lineas.join(u'\n'));
}
