#include "users/FrmFichaUsuarios.h"
#include "data/ui/cajas.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "ui_FrmFichaUsuarios.h"
#include "users/usuario.h"
#include <QKeyEvent>
#include <QShowEvent>

using namespace tolmo;
using data::Sentido;
using data::ui::CamposFicha;

FrmFichaUsuarios::FrmFichaUsuarios(data::Programa& programa, QWidget* padre)
    : QDialog(padre), programa_(programa), ui_(std::make_unique<Ui::FrmFichaUsuarios>())
{
    ui_->setupUi(this);
    // The position of a tariff is its number, for databases that keep it as one.
    ui_->Combo1->addItems({QString(), QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("3"),
                           QStringLiteral("4"), QStringLiteral("5")});
    // A completer would put a listed tariff in the place of what was typed.
    ui_->Combo1->setCompleter(nullptr);
    data::ui::RevelaCon(*ui_->CmdVer_2, *ui_->txtCampo_2);
    data::ui::SeleccionaAlEntrar(*this);
    ui_->txtCampo_0->installEventFilter(this);
    Conecta();
    PonNuevo(true);
}

FrmFichaUsuarios::~FrmFichaUsuarios()
{
    // The focus may leave the box while the window is taken away.
    disconnect(ui_->txtCampo_0, nullptr, this, nullptr);
}

void FrmFichaUsuarios::Conecta()
{
    const auto pulsa = [this](QAbstractButton* boton, auto accion) {
        connect(boton, &QAbstractButton::clicked, this,
                [this, accion] { Hace([this, accion] { (this->*accion)(); }); });
    };
    pulsa(ui_->CmdActualizar, &FrmFichaUsuarios::Actualiza);
    pulsa(ui_->CmdAñadir, &FrmFichaUsuarios::Anade);
    pulsa(ui_->CmdBorrar, &FrmFichaUsuarios::Borra);
    connect(ui_->Cmdanterior, &QAbstractButton::clicked, this,
            [this] { Hace([this] { VaA(Sentido::Anterior); }); });
    connect(ui_->CmdSiguiente, &QAbstractButton::clicked, this,
            [this] { Hace([this] { VaA(Sentido::Siguiente); }); });
    connect(ui_->txtCampo_0, &QLineEdit::editingFinished, this,
            [this] { Hace([this] { DejaCodigo(); }); });
}

void FrmFichaUsuarios::Hace(const std::function<void()>& accion)
{
    data::ui::EnFrontera(programa_.avisos, accion);
}

void FrmFichaUsuarios::Prepara(const QString& tag, const QString& codigo)
{
    Tag_ = tag;
    ui_->txtCampo_0->setText(codigo);
}

void FrmFichaUsuarios::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (!evento->spontaneous())
        Hace([this] { Activa(); });
}

void FrmFichaUsuarios::Activa()
{
    if (Tag_ != QLatin1String("1"))
        return;
    Tag_.clear();
    Lee();
}

bool FrmFichaUsuarios::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == ui_->txtCampo_0 && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<const QKeyEvent*>(evento)->key();
        if (tecla == Qt::Key_Return || tecla == Qt::Key_Enter) {
            // Enter behind a code asks for its user; the window's default button would save.
            ui_->txtCampo_28->setFocus();
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}

/// The code that is shown already isn't read again: what has been typed for it would be lost.
void FrmFichaUsuarios::DejaCodigo()
{
    if (isHidden())
        return; // closing the window takes the focus from the box, and nobody will see the card
    const QString codigo = ui_->txtCampo_0->text();
    if (codigo.isEmpty() || codigo != leido_)
        Lee();
}

void FrmFichaUsuarios::Lee()
{
    // Who revealed one password doesn't see those of the users read after it.
    ui_->CmdVer_2->setChecked(false);
    const users::Lectura leida = users::LeeUsuario(programa_, ui_->txtCampo_0->text());
    // The other boxes have widths of their own.
    if (const int ancho = data::ui::AnchoDe(leida.fila, QStringLiteral("CODTARIFA")); ancho > 0)
        ui_->Combo1->lineEdit()->setMaxLength(ancho);
    if (leida.nuevo)
        data::ui::LimpiaFicha(*this);
    else
        data::ui::PonFicha(*this, leida.fila);
    ui_->txtCampo_0->setText(leida.codigo);
    leido_ = ui_->txtCampo_0->text();
    PonNuevo(leida.nuevo);
}

void FrmFichaUsuarios::PonNuevo(bool nuevo)
{
    nuevo_ = nuevo;
    ui_->txtCampo_0->setEnabled(true);
    ui_->CmdActualizar->setEnabled(true);
    ui_->CmdBorrar->setEnabled(!nuevo);
    ui_->CmdAñadir->setEnabled(!nuevo);
}

void FrmFichaUsuarios::Actualiza()
{
    // A button that is pressed by its letter doesn't take the focus from the code.
    if (ui_->txtCampo_0->text() != leido_)
        Lee();
    if (users::GuardaUsuario(programa_, CamposFicha(*this), nuevo_))
        Lee();
}

void FrmFichaUsuarios::Anade()
{
    ui_->txtCampo_0->clear();
    ui_->txtCampo_0->setEnabled(true);
    Lee();
    ui_->txtCampo_0->setFocus();
}

void FrmFichaUsuarios::Borra()
{
    if (ui_->txtCampo_0->text() != leido_)
        Lee();
    if (nuevo_ || !users::BorraUsuario(programa_, CamposFicha(*this)))
        return;
    data::ui::LimpiaFicha(*this);
    leido_.clear();
    PonNuevo(true);
    ui_->CmdAñadir->setEnabled(true);
    ui_->txtCampo_0->setFocus();
}

void FrmFichaUsuarios::VaA(Sentido sentido)
{
    const auto vecino = users::UsuarioVecino(programa_, sentido, ui_->txtCampo_0->text());
    if (!vecino)
        return;
    ui_->txtCampo_0->setText(*vecino);
    Lee();
}
