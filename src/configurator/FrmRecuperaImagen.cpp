#include "configurator/FrmRecuperaImagen.h"
#include "data/plantilla.h"
#include "data/rutas.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include "ui_FrmRecuperaImagen.h"
#include <QKeyEvent>
#include <QPushButton>
#include <QStyle>

using namespace tolmo;
using namespace tolmo::configurator;

namespace {

constexpr data::Plantilla CarpetaIlegible(u"No se puede leer la carpeta {carpeta}");
const QString SinDisco = QStringLiteral("Inserte un Disco en la Unidad");
const QString CarpetaDeArriba = QStringLiteral("..");

/// Where the calling window keeps the folder in which the last choice ended.
constexpr const char* UltimaCarpeta = "UltimaCarpeta";

QWidget* Llamante(const QWidget& ventana)
{
    return ventana.parentWidget() ? ventana.parentWidget()->window() : nullptr;
}

QString TextoDelFiltro(const QWidget& ventana)
{
    const QWidget* llamante = Llamante(ventana);
    const auto* caja =
        llamante ? llamante->findChild<QLineEdit*>(QStringLiteral("txtretorna")) : nullptr;
    return caja ? caja->text() : QString();
}

} // namespace

FrmRecuperaImagen::FrmRecuperaImagen(data::Programa& programa, QWidget* llamante)
    : QDialog(llamante), programa_(programa), ui_(std::make_unique<Ui::FrmRecuperaImagen>())
{
    ui_->setupUi(this);
    ui_->File1->installEventFilter(this);
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    Conecta();
}

FrmRecuperaImagen::~FrmRecuperaImagen() = default;

void FrmRecuperaImagen::Conecta()
{
    connect(ui_->Drive1, &QComboBox::activated, this, &FrmRecuperaImagen::CambiaDeUnidad);
    connect(ui_->Dir1, &QAbstractItemView::doubleClicked, this, &FrmRecuperaImagen::AbreElegida);
    connect(ui_->File1, &QListWidget::itemSelectionChanged, this, &FrmRecuperaImagen::PonFichero);
    connect(ui_->File1, &QAbstractItemView::doubleClicked, this, &FrmRecuperaImagen::Acepta);
    connect(ui_->CmdAceptar, &QPushButton::clicked, this, &FrmRecuperaImagen::Acepta);
    connect(ui_->CmdCancelar, &QPushButton::clicked, this, &QDialog::reject);
}

void FrmRecuperaImagen::PonTag(const QString& tag)
{
    setProperty("Tag", tag);
    const bool ficheros = !EligeCarpetas();
    for (QWidget* control : {static_cast<QWidget*>(ui_->Label2), static_cast<QWidget*>(ui_->File1),
                             static_cast<QWidget*>(ui_->Image1)})
        control->setVisible(ficheros);
    constexpr int AnchoDeCarpetas = 340;
    if (!ficheros)
        resize(AnchoDeCarpetas, height());
}

bool FrmRecuperaImagen::EligeCarpetas() const
{
    return property("Tag").toString() == QLatin1String("Directorio");
}

QString FrmRecuperaImagen::CarpetaInicial() const
{
    const QWidget* llamante = Llamante(*this);
    QStringList candidatas;
    if (llamante)
        candidatas << llamante->property(UltimaCarpeta).toString();
    candidatas << DesdeSuRaiz(programa_.carpetaActual) << Raices();
    for (const QString& carpeta : candidatas)
        if (!RaizDe(carpeta).isEmpty() && SeLeeLaCarpeta(carpeta))
            return carpeta;
    return candidatas.last();
}

void FrmRecuperaImagen::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (evento->spontaneous())
        return;
    filtro_ = FiltroDeFicheros(TextoDelFiltro(*this));
    ui_->Drive1->clear();
    for (const QString& raiz : Raices())
        ui_->Drive1->addItem(NombreDeRaiz(raiz), raiz);
    PonCarpeta(CarpetaInicial());
    ui_->Dir1->setFocus();
}

void FrmRecuperaImagen::CambiaDeUnidad(int indice)
{
    const QString raiz = ui_->Drive1->itemData(indice).toString();
    if (EstaLaCarpeta(raiz))
        return AbreCarpeta(raiz);
    programa_.avisos.Muestra(SinDisco, data::estilo::Aviso);
    ui_->Drive1->setCurrentIndex(ui_->Drive1->findData(RaizDe(carpeta_)));
}

void FrmRecuperaImagen::AbreElegida()
{
    const QListWidgetItem* elegida = ui_->Dir1->currentItem();
    if (!elegida)
        return;
    const QString nombre = elegida->text();
    AbreCarpeta(nombre == CarpetaDeArriba ? Superior(carpeta_) : Dentro(carpeta_, nombre));
}

void FrmRecuperaImagen::AbreCarpeta(const QString& carpeta)
{
    if (SeLeeLaCarpeta(carpeta))
        return PonCarpeta(carpeta);
    programa_.avisos.Muestra(CarpetaIlegible({{"carpeta", carpeta}}), data::estilo::Aviso);
    ui_->Drive1->setCurrentIndex(ui_->Drive1->findData(RaizDe(carpeta_)));
}

void FrmRecuperaImagen::PonCarpeta(const QString& carpeta)
{
    const QString anterior = std::exchange(carpeta_, carpeta);
    const QString raiz = RaizDe(carpeta);
    ui_->Drive1->setCurrentIndex(ui_->Drive1->findData(raiz));
    ui_->Dir1->clear();
    if (carpeta != raiz)
        ui_->Dir1->addItem(new QListWidgetItem(style()->standardIcon(QStyle::SP_FileDialogToParent),
                                               CarpetaDeArriba));
    const QIcon icono = style()->standardIcon(QStyle::SP_DirIcon);
    for (const QString& nombre : Subcarpetas(carpeta))
        ui_->Dir1->addItem(new QListWidgetItem(icono, nombre));
    // Up from a folder, that one is where one was.
    const auto deDonde = ui_->Dir1->findItems(data::NombreFichero(anterior), Qt::MatchExactly);
    ui_->Dir1->setCurrentRow(deDonde.isEmpty() ? 0 : ui_->Dir1->row(deDonde.first()));
    ui_->File1->clear();
    if (!EligeCarpetas())
        ui_->File1->addItems(Ficheros(carpeta, filtro_.Mascaras()));
    PonEleccion(EligeCarpetas() ? carpeta : QString());
}

void FrmRecuperaImagen::PonFichero()
{
    const auto elegidos = ui_->File1->selectedItems();
    PonEleccion(elegidos.isEmpty() ? QString() : Dentro(carpeta_, elegidos.first()->text()));
}

void FrmRecuperaImagen::PonEleccion(const QString& ruta)
{
    eleccion_ = ruta;
    ui_->TxtRuta->setText(ruta.isEmpty() ? carpeta_ : ruta);
    const bool conVista = !EligeCarpetas() && !filtro_.EsDeProgramas() && !ruta.isEmpty();
    if (conVista)
        ui_->Image1->Muestra(ruta);
    else
        ui_->Image1->Limpia();
}

void FrmRecuperaImagen::Acepta()
{
    if (!eleccion_.isEmpty())
        data::ui::PonValorControl(data::ui::ControlDelLlamante(*this),
                                  EligeCarpetas() ? eleccion_ : filtro_.Valor(eleccion_));
    accept();
}

void FrmRecuperaImagen::done(int resultado)
{
    if (QWidget* llamante = Llamante(*this))
        llamante->setProperty(UltimaCarpeta, carpeta_);
    ui_->Image1->Limpia();
    QDialog::done(resultado);
}

/// Enter opens a folder, and elsewhere accepts what is chosen; with nothing chosen it isn't meant.
void FrmRecuperaImagen::keyPressEvent(QKeyEvent* evento)
{
    if (evento->key() != Qt::Key_Return && evento->key() != Qt::Key_Enter)
        return QDialog::keyPressEvent(evento);
    QWidget* foco = focusWidget();
    if (auto* boton = qobject_cast<QPushButton*>(foco))
        boton->click();
    else if (foco == ui_->Dir1)
        AbreElegida();
    else if (!eleccion_.isEmpty())
        Acepta();
}

/// The list stands on its first file as soon as it has the focus, without choosing it: the first
/// arrow must not go past it.
bool FrmRecuperaImagen::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto == ui_->File1 && evento->type() == QEvent::KeyPress) {
        const int tecla = static_cast<const QKeyEvent*>(evento)->key();
        QListWidgetItem* actual = ui_->File1->currentItem();
        if (tecla == Qt::Key_Down && actual && ui_->File1->selectedItems().isEmpty()) {
            actual->setSelected(true);
            return true;
        }
    }
    return QDialog::eventFilter(objeto, evento);
}
