#include "data/ui/FrmCadenaBooleanaAvanzada.h"
#include "data/programa.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "ui_FrmCadenaBooleanaAvanzada.h"
#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QStyle>
#include <algorithm>
#include <utility>

using namespace tolmo;
using data::ConstructorCondicion;
using data::ui::CeldasCondicion;
using data::ui::EnFrontera;

namespace {

QString TextoControl(const QWidget* control)
{
    if (const auto* caja = qobject_cast<const QLineEdit*>(control))
        return caja->text();
    const auto* lista = qobject_cast<const QComboBox*>(control);
    return lista ? lista->currentText() : QString();
}

/// A key that enters the cell that is marked.
bool Entra(const QKeyEvent& tecla)
{
    switch (tecla.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_F2:
    case Qt::Key_F4:
    case Qt::Key_Space:
        return true;
    default:
        return tecla.key() == Qt::Key_Down && tecla.modifiers().testFlag(Qt::AltModifier);
    }
}

bool EsEscritura(const QKeyEvent& tecla)
{
    const bool orden = tecla.modifiers().testFlag(Qt::ControlModifier) ||
                       tecla.modifiers().testFlag(Qt::AltModifier);
    return !orden && !tecla.text().isEmpty() && tecla.text().front().isPrint();
}

} // namespace

FrmCadenaBooleanaAvanzada::FrmCadenaBooleanaAvanzada(data::Programa& programa, QWidget* destino,
                                                     QWidget* padre)
    : QDialog(padre), programa_(programa), destino_(destino), motor_(programa),
      ui_(std::make_unique<Ui::FrmCadenaBooleanaAvanzada>())
{
    ui_->setupUi(this);
    PreparaRejilla();
    ConectaBotones();
}

FrmCadenaBooleanaAvanzada::~FrmCadenaBooleanaAvanzada() = default;

void FrmCadenaBooleanaAvanzada::ArrayFiltro(std::span<const data::ColumnaGrid> columnas,
                                            std::span<const data::Campo> campos)
{
    motor_.ArrayFiltro(columnas, campos);
}

void FrmCadenaBooleanaAvanzada::ArrayDirectoFiltro(std::vector<data::EntradaFiltro> entradas)
{
    motor_.ArrayDirectoFiltro(std::move(entradas));
}

void FrmCadenaBooleanaAvanzada::PreparaRejilla()
{
    for (QComboBox* caja : {ui_->CmbAndOr, ui_->CmbObjVar, ui_->CmbOperador})
        caja->setParent(ui_->FlexCond->viewport());
    celdas_ = std::make_unique<CeldasCondicion>(
        std::array<data::ui::CajaDeCelda, 4>{{{.caja = ui_->CmbAndOr, .conPrimera = true},
                                              {.caja = ui_->CmbObjVar},
                                              {.caja = ui_->CmbOperador, .conPrimera = true},
                                              {.caja = ui_->CmbObjVar, .editable = true}}});
    ui_->FlexCond->setItemDelegate(celdas_.get());
    ui_->FlexCond->installEventFilter(this);
    connect(celdas_.get(), &CeldasCondicion::Sale, this, &FrmCadenaBooleanaAvanzada::DejaCelda);
    connect(celdas_.get(), &CeldasCondicion::Escribe, this,
            [this](int fila, int columna, const QString& texto) {
                motor_.PonCelda(fila, columna, texto);
                MuestraFilas();
            });
    connect(ui_->FlexCond, &QTableWidget::cellClicked, this,
            &FrmCadenaBooleanaAvanzada::PonComboEnCelda);
    connect(ui_->FlexCond, &QTableWidget::currentCellChanged, this, [this](int fila, int columna) {
        // The mouse enters a cell when its button comes up: before, that would choose in the list.
        if (QGuiApplication::mouseButtons() == Qt::NoButton && ui_->FlexCond->hasFocus())
            PonComboEnCelda(fila, columna);
    });
}

void FrmCadenaBooleanaAvanzada::ConectaBotones()
{
    const auto alPulsar = [this](QPushButton* boton, auto accion) {
        connect(boton, &QPushButton::clicked, this,
                [this, accion] { EnFrontera(programa_.avisos, accion); });
    };
    alPulsar(ui_->CmdAceptar, [this] {
        if (ConstruirCondicion())
            Entrega(motor_.Resultado());
    });
    alPulsar(ui_->CmdSobreAnterior, [this] {
        if (ConstruirCondicion())
            Entrega(motor_.ResultadoSobre(TextoControl(destino_)));
    });
    alPulsar(ui_->CmdQuitarFiltro, [this] {
        motor_.QuitaCondicion();
        Entrega({});
    });
    alPulsar(ui_->CmdEliminarFila, [this] { EliminaFila(); });
    connect(ui_->CmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmCadenaBooleanaAvanzada::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (!evento->spontaneous())
        InicializaGrid();
}

void FrmCadenaBooleanaAvanzada::InicializaGrid()
{
    motor_.EmpiezaDeNuevo();
    ui_->FlexCond->setHorizontalHeaderLabels({QString(), QStringLiteral("Condicion 1"),
                                              QStringLiteral("Op."), QStringLiteral("Condicion 2"),
                                              QStringLiteral("Sentencia")});
    const auto llena = [](QComboBox* caja, const QStringList& textos) {
        caja->clear();
        caja->addItems(textos);
        const int barra = caja->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        caja->view()->setMinimumWidth(caja->view()->sizeHintForColumn(0) + barra);
    };
    llena(ui_->CmbAndOr, ConstructorCondicion::Nexos());
    llena(ui_->CmbObjVar, motor_.Objetos());
    llena(ui_->CmbOperador, ConstructorCondicion::Operadores());
    QHeaderView* cabecera = ui_->FlexCond->horizontalHeader();
    cabecera->setSectionResizeMode(QHeaderView::Stretch);
    for (const auto& [columna, caja] :
         {std::pair(ConstructorCondicion::Nexo, ui_->CmbAndOr),
          std::pair(ConstructorCondicion::Operador, ui_->CmbOperador)}) {
        cabecera->setSectionResizeMode(columna, QHeaderView::Fixed);
        cabecera->resizeSection(columna, caja->sizeHint().width());
    }
    ui_->FlexCond->verticalHeader()->setDefaultSectionSize(ui_->CmbObjVar->sizeHint().height());
    MuestraFilas();
    const QSignalBlocker sinEntrar(ui_->FlexCond);
    ui_->FlexCond->setCurrentCell(0, ConstructorCondicion::Condicion1);
    ui_->FlexCond->setFocus();
}

void FrmCadenaBooleanaAvanzada::MuestraFilas()
{
    const QSignalBlocker sinEntrar(ui_->FlexCond);
    ui_->FlexCond->setRowCount(static_cast<int>(motor_.Filas().size()));
    for (int fila = 0; fila < ui_->FlexCond->rowCount(); ++fila)
        for (int columna = 0; columna < ui_->FlexCond->columnCount(); ++columna) {
            if (!ui_->FlexCond->item(fila, columna))
                ui_->FlexCond->setItem(fila, columna, new QTableWidgetItem);
            QTableWidgetItem* celda = ui_->FlexCond->item(fila, columna);
            const bool editable = ConstructorCondicion::CeldaEditable(fila, columna);
            celda->setFlags(celda->flags().setFlag(Qt::ItemIsEditable, editable));
            celda->setText(motor_.TextoCelda(fila, columna));
            celda->setToolTip(celda->text());
        }
}

void FrmCadenaBooleanaAvanzada::PonComboEnCelda(int fila, int columna)
{
    celdas_->Cierra(true);
    const QSignalBlocker sinEntrar(ui_->FlexCond);
    ui_->FlexCond->setCurrentCell(fila, columna);
    if (!ConstructorCondicion::CeldaEditable(fila, columna))
        return;
    ui_->FlexCond->editItem(ui_->FlexCond->item(fila, columna));
    celdas_->Despliega();
}

void FrmCadenaBooleanaAvanzada::DejaCelda(Salida salida)
{
    if (salida == Salida::Escape) {
        celdas_->Cierra(false);
        return;
    }
    // Who only passes through the row for the next condition doesn't begin it.
    const int fila = ui_->FlexCond->currentRow();
    celdas_->Cierra(salida == Salida::Intro || celdas_->Tocada() || !motor_.FilaVacia(fila));
    if (salida == Salida::Atras)
        Avanza(-1);
    else if (motor_.FilaVacia(fila))
        focusNextPrevChild(true);
    else
        Avanza(1);
}

/// Enters the next cell that takes something; behind the last one and before the first one the
/// focus leaves the grid.
void FrmCadenaBooleanaAvanzada::Avanza(int sentido)
{
    const int columnas = ui_->FlexCond->columnCount();
    const int celdas = ui_->FlexCond->rowCount() * columnas;
    int celda = ui_->FlexCond->currentRow() * columnas + ui_->FlexCond->currentColumn();
    do
        celda += sentido;
    while (celda >= 0 && celda < celdas &&
           !ConstructorCondicion::CeldaEditable(celda / columnas, celda % columnas));
    if (celda >= 0 && celda < celdas)
        PonComboEnCelda(celda / columnas, celda % columnas);
    else
        focusNextPrevChild(sentido > 0);
}

bool FrmCadenaBooleanaAvanzada::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == ui_->FlexCond && evento->type() == QEvent::KeyPress &&
        TeclaEnRejilla(static_cast<QKeyEvent&>(*evento)))
        return true;
    return QDialog::eventFilter(objeto, evento);
}

bool FrmCadenaBooleanaAvanzada::TeclaEnRejilla(QKeyEvent& tecla)
{
    const auto entra = [this] {
        PonComboEnCelda(ui_->FlexCond->currentRow(), ui_->FlexCond->currentColumn());
    };
    if (Entra(tecla)) {
        entra();
    } else if (tecla.key() == Qt::Key_Tab) {
        DejaCelda(Salida::Tabulador);
    } else if (tecla.key() == Qt::Key_Backtab) {
        DejaCelda(Salida::Atras);
    } else if (tecla.key() == Qt::Key_Delete) {
        EnFrontera(programa_.avisos, [this] { EliminaFila(); });
    } else if (EsEscritura(tecla)) {
        entra();
        if (QComboBox* caja = celdas_->Abierta())
            QCoreApplication::sendEvent(caja->view(), &tecla);
    } else {
        return false;
    }
    return true;
}

void FrmCadenaBooleanaAvanzada::EliminaFila()
{
    const int fila = ui_->FlexCond->currentRow();
    celdas_->Cierra(false);
    motor_.EliminaFila(fila);
    MuestraFilas();
    const QSignalBlocker sinEntrar(ui_->FlexCond);
    ui_->FlexCond->setCurrentCell(std::min(fila, ui_->FlexCond->rowCount() - 1),
                                  ConstructorCondicion::Condicion1);
    ui_->FlexCond->setFocus();
}

bool FrmCadenaBooleanaAvanzada::ConstruirCondicion()
{
    celdas_->Cierra(true);
    const bool construida = motor_.ConstruirCondicion();
    MuestraFilas();
    return construida;
}

void FrmCadenaBooleanaAvanzada::Entrega(const QString& condicion)
{
    data::ui::PonValorControl(destino_, condicion);
    accept();
}
