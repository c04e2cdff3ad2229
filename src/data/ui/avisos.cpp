#include "data/ui/avisos.h"
#include "data/ui/reserva.h"
#include "data/ui/sistema.h"
#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <memory>
#include <utility>
#include <vector>

namespace tolmo::data::ui {
namespace {

const QString TituloPrograma = QStringLiteral("KOV TOLMO");

/// Beyond these a message box would outgrow a small screen, its buttons out of reach.
constexpr qsizetype CaracteresDeCaja = 1200;
constexpr qsizetype LineasDeCaja = 20;

constexpr int MascaraBotones = 7;
constexpr int MascaraIcono = 0xF0;

struct Boton {
    Respuesta respuesta = Respuesta::Aceptar;
    QString texto{};
    QDialogButtonBox::ButtonRole papel = QDialogButtonBox::AcceptRole;
};

std::vector<Boton> Botones(int estilo)
{
    const Boton aceptar{Respuesta::Aceptar, QStringLiteral("Aceptar"),
                        QDialogButtonBox::AcceptRole};
    switch (estilo & MascaraBotones) {
    case estilo::AceptarCancelar:
        return {aceptar,
                {Respuesta::Cancelar, QStringLiteral("Cancelar"), QDialogButtonBox::RejectRole}};
    case estilo::SiNo:
        return {{Respuesta::Si, QStringLiteral("&Sí"), QDialogButtonBox::YesRole},
                {Respuesta::No, QStringLiteral("&No"), QDialogButtonBox::NoRole}};
    default:
        return {aceptar};
    }
}

QStyle::StandardPixmap Dibujo(int estilo)
{
    switch (estilo & MascaraIcono) {
    case estilo::Error:
        return QStyle::SP_MessageBoxCritical;
    case estilo::Pregunta:
        return QStyle::SP_MessageBoxQuestion;
    case estilo::Aviso:
        return QStyle::SP_MessageBoxWarning;
    default:
        return QStyle::SP_MessageBoxInformation;
    }
}

QMessageBox::Icon Icono(int estilo)
{
    switch (estilo & MascaraIcono) {
    case estilo::Error:
        return QMessageBox::Critical;
    case estilo::Pregunta:
        return QMessageBox::Question;
    case estilo::Aviso:
        return QMessageBox::Warning;
    case estilo::Informacion:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// The answer of a box that was closed without a button: the one that changes least.
Respuesta RespuestaDeCierre(int estilo)
{
    return Botones(estilo).back().respuesta;
}

Respuesta MuestraCorta(const QString& texto, int estilo, const QString& titulo)
{
    QMessageBox caja(QApplication::activeWindow());
    caja.setIcon(Icono(estilo));
    caja.setWindowTitle(titulo);
    caja.setTextFormat(Qt::PlainText);
    caja.setText(texto);
    std::vector<std::pair<QAbstractButton*, Respuesta>> botones;
    for (const Boton& boton : Botones(estilo)) {
        // Both enumerations number the roles alike.
        const auto papel = static_cast<QMessageBox::ButtonRole>(boton.papel);
        QPushButton* nuevo = caja.addButton(boton.texto, papel);
        if (boton.respuesta == RespuestaPorDefecto(estilo))
            caja.setDefaultButton(nuevo);
        if (boton.respuesta == RespuestaDeCierre(estilo))
            caja.setEscapeButton(nuevo);
        botones.emplace_back(nuevo, boton.respuesta);
    }
    caja.exec();
    for (const auto& [boton, respuesta] : botones)
        if (caja.clickedButton() == boton)
            return respuesta;
    return RespuestaDeCierre(estilo);
}

Respuesta MuestraLarga(const QString& texto, int estilo, const QString& titulo)
{
    QDialog caja(QApplication::activeWindow());
    caja.setWindowTitle(titulo);
    auto* rejilla = new QGridLayout(&caja);
    auto* dibujo = new QLabel(&caja);
    dibujo->setPixmap(caja.style()->standardIcon(Dibujo(estilo)).pixmap(32, 32));
    auto* lectura = new QPlainTextEdit(texto, &caja);
    lectura->setReadOnly(true);
    lectura->setTabChangesFocus(true);
    auto* botonera = new QDialogButtonBox(&caja);
    rejilla->addWidget(dibujo, 0, 0, Qt::AlignTop);
    rejilla->addWidget(lectura, 0, 1);
    rejilla->addWidget(botonera, 1, 0, 1, 2);
    Respuesta elegida = RespuestaDeCierre(estilo);
    for (const Boton& boton : Botones(estilo)) {
        QPushButton* nuevo = botonera->addButton(boton.texto, boton.papel);
        QObject::connect(nuevo, &QPushButton::clicked, &caja, [&caja, &elegida, boton] {
            elegida = boton.respuesta;
            caja.accept();
        });
        if (boton.respuesta == RespuestaPorDefecto(estilo)) {
            nuevo->setDefault(true);
            nuevo->setFocus();
        }
    }
    caja.resize(720, 420);
    caja.exec();
    return elegida;
}

} // namespace

Respuesta RespuestaPorDefecto(int estilo)
{
    const std::vector<Boton> botones = Botones(estilo);
    const bool segundo = (estilo & estilo::SegundoBoton) != 0 && botones.size() > 1;
    return botones[segundo ? 1 : 0].respuesta;
}

QString ConSaltosDeLinea(const QString& texto)
{
    QString mostrado = texto;
    mostrado.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return mostrado.replace(u'\r', u'\n');
}

Respuesta AvisosVentana::Muestra(const QString& texto, int estilo, const QString& titulo)
{
    const QString mostrado = ConSaltosDeLinea(SinClaves(texto));
    const QString rotulo = titulo.isEmpty() ? TituloPrograma : titulo;
    const bool cabe = mostrado.size() <= CaracteresDeCaja && mostrado.count(u'\n') < LineasDeCaja;
    return cabe ? MuestraCorta(mostrado, estilo, rotulo) : MuestraLarga(mostrado, estilo, rotulo);
}

AvisosConsola::AvisosConsola(Salida salida) : salida_(std::move(salida))
{
    if (!salida_)
        salida_ = EscribeEnError;
}

Respuesta AvisosConsola::Muestra(const QString& texto, int estilo, const QString&)
{
    salida_(ConSaltosDeLinea(SinClaves(texto)));
    return RespuestaPorDefecto(estilo);
}

} // namespace tolmo::data::ui
