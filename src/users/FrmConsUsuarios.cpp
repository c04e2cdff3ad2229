#include "users/FrmConsUsuarios.h"
#include "data/ui/frontera.h"
#include "users/FrmFichaUsuarios.h"
#include <QAction>
#include <QKeyEvent>

using namespace tolmo;

FrmConsUsuarios::FrmConsUsuarios(data::Programa& programa, data::Escritorio& escritorio,
                                 QWidget* llamante)
    : VentanaConsulta(programa, programa.ConexionLocal, escritorio, llamante), programa_(programa)
{
    setObjectName(QStringLiteral("FrmConsUsuarios"));
    setWindowTitle(QStringLiteral("Consulta de usuarios"));
    PermiteRetorno(false);
    Columna().insertWidget(0, CreaToolbar2());
    // clang-format off
    Panel().Rejilla().Define({.columnas = {
        {.DataField = QStringLiteral("CODIGO"), .Caption = QStringLiteral("Codigo"), .ancho = 80},
        {.DataField = QStringLiteral("NOMBRE"), .Caption = QStringLiteral("Nombre"), .ancho = 240},
        {.DataField = QStringLiteral("EMPRESA"), .Caption = QStringLiteral("Empresa"), .ancho = 160},
        {.DataField = QStringLiteral("EMAIL"), .Caption = QStringLiteral("Email"), .ancho = 240}}});
    // clang-format on
    connect(&Panel().Rejilla(), &QAbstractItemView::doubleClicked, this, &FrmConsUsuarios::Edita);
}

QString FrmConsUsuarios::Origen() const
{
    return QStringLiteral("USUARIOS") + Panel().Donde();
}

QToolBar* FrmConsUsuarios::CreaToolbar2()
{
    auto* barra = new QToolBar(this);
    barra->setObjectName(QStringLiteral("Toolbar2"));
    barra->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto anade = [this, barra](const char* clave, const QString& rotulo,
                                     const QString& ayuda) {
        QAction* accion = barra->addAction(rotulo);
        accion->setObjectName(QLatin1StringView(clave));
        accion->setToolTip(ayuda);
        return accion;
    };
    QAction* nuevo = anade("NUEVO", QStringLiteral("Nuevo"), QStringLiteral("Nuevo (Ins)"));
    nuevo->setShortcut(Qt::Key_Insert);
    connect(nuevo, &QAction::triggered, this, &FrmConsUsuarios::Nuevo);
    QAction* editar = anade("EDITAR", QStringLiteral("Editar"), QStringLiteral("Editar (Intro)"));
    connect(editar, &QAction::triggered, this, &FrmConsUsuarios::Edita);
    barra->addSeparator();
    // They belong to the bar of every such window and do nothing in this one.
    const QString sinAccion = QStringLiteral("Sin función para los usuarios web");
    anade("TRASPASAR", QStringLiteral("Traspasar documento"), sinAccion)->setEnabled(false);
    anade("IMPRIMIR", QStringLiteral("Imprimir"), sinAccion)->setEnabled(false);
    return barra;
}

void FrmConsUsuarios::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() == Qt::Key_Return || evento->key() == Qt::Key_Enter)
        return Edita();
    VentanaConsulta::keyPressEvent(evento);
}

void FrmConsUsuarios::Nuevo()
{
    if (Panel().TomaLoEscrito())
        AbreFicha({});
}

void FrmConsUsuarios::Edita()
{
    if (!Panel().TomaLoEscrito() || Panel().Datos().Fila() < 0)
        return;
    QString codigo;
    data::ui::EnFrontera(programa_.avisos,
                         [&] { codigo = data::Texto(Panel().Datos().Filas()["CODIGO"]); });
    AbreFicha(codigo);
}

void FrmConsUsuarios::AbreFicha(const QString& codigo)
{
    FrmFichaUsuarios ficha(programa_, this);
    ficha.Prepara(QStringLiteral("1"), codigo);
    MuestraHija(ficha);
}
