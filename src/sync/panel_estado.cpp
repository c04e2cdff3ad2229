#include "sync/panel_estado.h"
#include "data/ui/iconos.h"
#include "sync/lista_estado.h"
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QToolButton>
#include <QVBoxLayout>

using namespace tolmo;
using data::Sentido;
using data::ui::Dibujo;

namespace {

constexpr int AnchoDeBusqueda = 320;
constexpr int AltoDeLista = 110;

QToolButton* Boton(QWidget* padre, const char* nombre, Dibujo dibujo, const QString& ayuda)
{
    auto* boton = new QToolButton(padre);
    boton->setObjectName(QLatin1StringView(nombre));
    boton->setIcon(data::ui::Icono(dibujo));
    boton->setToolTip(ayuda);
    boton->setAccessibleName(ayuda);
    boton->setAutoRaise(true);
    return boton;
}

} // namespace

PanelEstado::PanelEstado(QWidget* padre)
    : QWidget(padre), busca_(new QLineEdit(this)),
      anterior_(Boton(this, "CmdBuscaAnterior", Dibujo::BuscaAnterior,
                      QStringLiteral("Buscar anterior (Mayús+F3)"))),
      siguiente_(Boton(this, "CmdBuscaSiguiente", Dibujo::BuscaSiguiente,
                       QStringLiteral("Buscar siguiente (F3)"))),
      final_(Boton(this, "CmdFinal", Dibujo::Abajo,
                   QStringLiteral("Ir a la última línea y seguir el proceso (Esc)"))),
      hallazgo_(new QLabel(this)), lista_(new ListaEstado(this))
{
    busca_->setObjectName(QStringLiteral("TxtBuscaEstado"));
    busca_->setPlaceholderText(QStringLiteral("Buscar en el estado (Ctrl+F)"));
    busca_->setClearButtonEnabled(true);
    busca_->setMaximumWidth(AnchoDeBusqueda);
    hallazgo_->setObjectName(QStringLiteral("LblHallazgo"));
    lista_->setObjectName(QStringLiteral("LstEstado"));
    lista_->setMinimumHeight(AltoDeLista);
    final_->setEnabled(false);
    setFocusProxy(busca_);
    Coloca();
    Conecta();
    PonAtajos();
}

void PanelEstado::Coloca()
{
    auto* rotulo = new QLabel(QStringLiteral("&Estado:"), this);
    rotulo->setBuddy(lista_);
    auto* arriba = new QHBoxLayout;
    arriba->addWidget(rotulo);
    arriba->addStretch(1);
    arriba->addWidget(hallazgo_);
    arriba->addWidget(busca_, 2);
    for (QToolButton* boton : {anterior_, siguiente_, final_})
        arriba->addWidget(boton);
    auto* columna = new QVBoxLayout(this);
    columna->setContentsMargins({});
    columna->addLayout(arriba);
    columna->addWidget(lista_, 1);
    QWidget* previo = busca_;
    for (QWidget* control : {static_cast<QWidget*>(anterior_), static_cast<QWidget*>(siguiente_),
                             static_cast<QWidget*>(final_), static_cast<QWidget*>(lista_)}) {
        setTabOrder(previo, control);
        previo = control;
    }
}

void PanelEstado::Conecta()
{
    connect(anterior_, &QToolButton::clicked, this, [this] { Busca(Sentido::Anterior); });
    connect(siguiente_, &QToolButton::clicked, this, [this] { Busca(Sentido::Siguiente); });
    connect(final_, &QToolButton::clicked, lista_, &ListaEstado::VuelveAlFinal);
    connect(lista_, &ListaEstado::SeguimientoCambiado, final_, &QToolButton::setDisabled);
    connect(busca_, &QLineEdit::textEdited, this, [this](const QString& texto) {
        MuestraHallazgo(texto.isEmpty() || lista_->BuscaDesdeAqui(texto));
    });
    connect(busca_, &QLineEdit::textChanged, this, [this](const QString& texto) {
        if (texto.isEmpty())
            MuestraHallazgo(true);
    });
}

void PanelEstado::PonAtajos()
{
    const auto atajo = [this](const QKeySequence& tecla, auto accion) {
        auto* nuevo = new QShortcut(tecla, this);
        connect(nuevo, &QShortcut::activated, this, accion);
    };
    atajo(QKeySequence::Find, [this] {
        busca_->setFocus();
        busca_->selectAll();
    });
    atajo(QKeySequence(Qt::Key_F3), [this] { Busca(Sentido::Siguiente); });
    atajo(QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { Busca(Sentido::Anterior); });
}

void PanelEstado::Busca(Sentido sentido)
{
    const QString texto = busca_->text();
    if (texto.isEmpty())
        busca_->setFocus();
    else
        MuestraHallazgo(lista_->Busca(texto, sentido));
}

void PanelEstado::MuestraHallazgo(bool hallado)
{
    hallazgo_->setText(hallado ? QString() : QStringLiteral("No se encuentra."));
}

void PanelEstado::keyPressEvent(QKeyEvent* evento)
{
    const bool intro = evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter;
    if (intro && busca_->hasFocus())
        return Busca(evento->modifiers() & Qt::ShiftModifier ? Sentido::Anterior
                                                             : Sentido::Siguiente);
    if (evento->key() != Qt::Key_Escape || (lista_->SigueElFinal() && busca_->text().isEmpty()))
        return QWidget::keyPressEvent(evento);
    busca_->clear();
    lista_->VuelveAlFinal();
}
