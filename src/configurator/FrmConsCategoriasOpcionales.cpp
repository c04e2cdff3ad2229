#include "configurator/FrmConsCategoriasOpcionales.h"
#include "data/partes_consulta.h"
#include "data/plantilla.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "data/ui/pestanas_de_grids.h"
#include <QHBoxLayout>
#include <QShowEvent>
#include <QVBoxLayout>

using namespace tolmo;
using configurator::ModoNavegador;

namespace {

// clang-format off
constexpr data::Plantilla RotuloCategoria(u"Atributo {CodCategoria}");
constexpr data::Plantilla RotuloConDescripcion(u"Atributo {CodCategoria}: {descripcion}");

const QString SinCategoria = QStringLiteral("Ningún atributo elegido");
const QString EligeCategoria = QStringLiteral("Elija antes un atributo en la pestaña ATRIBUTOS");
// clang-format on

constexpr QSize Tamano(760, 480);
enum Pestana { Atributos, Valores };

/// A grid that is typed in, added to and deleted from, after the window's own question.
data::Grid Editable(std::vector<data::ColumnaGrid> columnas)
{
    return {.columnas = std::move(columnas),
            .AllowUpdate = true,
            .AllowAddNew = true,
            .AllowDelete = true,
            .preguntaAlBorrar = false};
}

} // namespace

FrmConsCategoriasOpcionales::FrmConsCategoriasOpcionales(data::Programa& programa,
                                                         data::Escritorio& escritorio,
                                                         QWidget* llamante)
    : QDialog(llamante), programa_(programa), SSTab1_(new QTabWidget(this)),
      categorias_(
          new data::ui::PanelConsulta(programa, programa.ConexionLocal, escritorio, 1, this)),
      valores_(new data::ui::PanelConsulta(programa, programa.ConexionLocal, escritorio, 2, this)),
      LblCategoria_(new QLabel(this)),
      CmdRetorna_(new QPushButton(QStringLiteral("&Retorna valor"), this)),
      txtretorna_(new QLineEdit(this))
{
    setObjectName(QStringLiteral("FrmConsCategoriasOpcionales"));
    setWindowTitle(QStringLiteral("Atributos y Valores"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    resize(Tamano);
    SSTab1_->setObjectName(QStringLiteral("SSTab1"));
    LblCategoria_->setObjectName(QStringLiteral("LblCategoria"));
    CmdRetorna_->setObjectName(QStringLiteral("CmdRetorna"));
    txtretorna_->setObjectName(QStringLiteral("txtretorna"));
    Coloca();
    DefineCategorias();
    DefineValores();
    IntercalaEventos();
    PermiteRetorno(false);
}

void FrmConsCategoriasOpcionales::Coloca()
{
    txtretorna_->hide();
    CmdRetorna_->setDefault(true);
    LblCategoria_->setTextFormat(Qt::PlainText);
    LblCategoria_->setWordWrap(true);
    QFont letra = LblCategoria_->font();
    letra.setBold(true);
    LblCategoria_->setFont(letra);

    auto* atributos = new QWidget;
    (new QVBoxLayout(atributos))->addWidget(categorias_);
    auto* valores = new QWidget;
    auto* columnaValores = new QVBoxLayout(valores);
    columnaValores->addWidget(LblCategoria_);
    columnaValores->addWidget(valores_, 1);
    SSTab1_->addTab(atributos, QStringLiteral("ATRIBUTOS"));
    SSTab1_->addTab(valores, QStringLiteral("VALORES"));

    auto* abajo = new QHBoxLayout;
    abajo->addStretch(1);
    abajo->addWidget(CmdRetorna_);
    auto* columna = new QVBoxLayout(this);
    columna->addWidget(SSTab1_, 1);
    columna->addLayout(abajo);
}

void FrmConsCategoriasOpcionales::DefineCategorias()
{
    // clang-format off
    categorias_->Rejilla().Define(Editable({
        {.DataField = QStringLiteral("CODCATEGORIA"), .Caption = QStringLiteral("Código"), .ancho = 80},
        {.DataField = QStringLiteral("DESCRIPCION"), .Caption = QStringLiteral("Descripción"), .ancho = 240},
        {.DataField = QStringLiteral("VALORDEF"), .Caption = QStringLiteral("Valor Def."), .ancho = 90},
        {.DataField = QStringLiteral("OBLIGATORIO"), .Caption = QStringLiteral("Obligatorio"), .ancho = 100},
        {.DataField = QStringLiteral("RDESDE"), .Caption = QStringLiteral("Desde"), .ancho = 80},
        {.DataField = QStringLiteral("RHASTA"), .Caption = QStringLiteral("Hasta"), .ancho = 80}}));
    // clang-format on
    categorias_->Llena = [this] {
        categorias_->AbreGrid(configurator::SqlCategoriasMaestras() + categorias_->Donde());
    };
    data::EventosGrid& eventos = categorias_->Rejilla().Eventos();
    eventos.antesDeColumna = [this](int columna, QString& texto) {
        return CompruebaCategoria(columna, texto);
    };
    eventos.trasColumna = [this](int columna) {
        const auto actual = [this](const char* nombre) {
            return data::Texto(categorias_->Rejilla().ValorActual(QLatin1StringView(nombre)));
        };
        if (columna == configurator::DESCRIPCION)
            configurator::PropagaDescripcion(programa_, actual("CODCATEGORIA"),
                                             actual("DESCRIPCION"));
    };
    eventos.antesDeBorrar = [this] {
        return configurator::PreparaBajaDeCategoria(programa_, *CategoriaActual());
    };
}

void FrmConsCategoriasOpcionales::DefineValores()
{
    // clang-format off
    valores_->Rejilla().Define(Editable({
        {.DataField = QStringLiteral("CODCATEGORIA"), .oculta = true},
        {.DataField = QStringLiteral("CODOPCIONAL"), .Caption = QStringLiteral("Código"), .ancho = 80},
        {.DataField = QStringLiteral("DESCRIPCION"), .Caption = QStringLiteral("Descripción"), .ancho = 240},
        {.DataField = QStringLiteral("DescripcionComercial"), .Caption = QStringLiteral("Descripción Comercial"), .ancho = 240}}));
    // clang-format on
    valores_->Llena = [this] { LlenaValores(); };
    data::EventosGrid& eventos = valores_->Rejilla().Eventos();
    eventos.filaNueva = [this] {
        return configurator::OpcionNueva(CategoriaActual().value_or(QString()));
    };
    eventos.antesDeColumna = [this](int columna, const QString& texto) {
        return CompruebaValor(columna, texto);
    };
    eventos.antesDeBorrar = [this] {
        const data::Recordset& filas = valores_->Datos().Filas();
        return configurator::PreparaBajaDeOpcion(programa_, data::Texto(filas["CODCATEGORIA"]),
                                                 data::Texto(filas["CODOPCIONAL"]));
    };
}

void FrmConsCategoriasOpcionales::IntercalaEventos()
{
    connect(SSTab1_, &QTabWidget::currentChanged, this,
            &FrmConsCategoriasOpcionales::MuestraCategoria);
    connect(&categorias_->Rejilla(), &data::ui::DataGrid::FilaCambiada, this,
            [this] { data::ui::EnFrontera(programa_.avisos, [this] { LlenaValores(); }); });
    auto* pestanas = new data::ui::PestanasDeGrids(*SSTab1_, [this] { return TomaLoEscrito(); });
    pestanas->PonFoco(*SSTab1_->widget(Atributos), categorias_->Rejilla());
    pestanas->PonFoco(*SSTab1_->widget(Valores), valores_->Rejilla());
    connect(CmdRetorna_, &QPushButton::clicked, this, &FrmConsCategoriasOpcionales::Retorna);
}

void FrmConsCategoriasOpcionales::PonModo(ModoNavegador Modo, const QString& CodCategoria)
{
    Modo_ = Modo;
    txtretorna_->setText(CodCategoria);
}

void FrmConsCategoriasOpcionales::PermiteRetorno(bool permitido)
{
    CmdRetorna_->setVisible(permitido);
}

void FrmConsCategoriasOpcionales::showEvent(QShowEvent* evento)
{
    QDialog::showEvent(evento);
    if (evento->spontaneous())
        return;
    const bool deValores = Modo_ == ModoNavegador::Valores;
    SSTab1_->setCurrentIndex(deValores ? Valores : Atributos);
    categorias_->Activa();
    if (deValores) {
        IrALaCategoria();
        valores_->Rejilla().setFocus();
    } else {
        categorias_->setFocus();
    }
}

void FrmConsCategoriasOpcionales::IrALaCategoria()
{
    const QString criterio = configurator::CriterioDeCategoria(txtretorna_->text());
    data::ui::EnFrontera(programa_.avisos, [&] {
        // The values of another category must not be taken for those of one that isn't there.
        if (!categorias_->Datos().Busca(criterio, 0))
            categorias_->Rejilla().selectionModel()->clear();
    });
}

std::optional<QString> FrmConsCategoriasOpcionales::CategoriaActual() const
{
    const data::Adodc& datos = categorias_->Datos();
    if (datos.Fila() < 0)
        return std::nullopt;
    return data::Texto(datos.Filas()["CODCATEGORIA"]);
}

void FrmConsCategoriasOpcionales::LlenaValores()
{
    llenada_ = CategoriaActual();
    valores_->AbreGrid(data::ConCondicion(configurator::SqlOpcionesMaestras(llenada_),
                                          valores_->Condicion().text()));
    MuestraCategoria();
}

/// As the values come into view, too: the category may have been typed or renamed on its row.
void FrmConsCategoriasOpcionales::MuestraCategoria()
{
    const auto actual = CategoriaActual();
    if (actual != llenada_)
        return data::ui::EnFrontera(programa_.avisos, [this] { LlenaValores(); });
    if (!actual)
        return LblCategoria_->setText(SinCategoria);
    const QString descripcion = data::Texto(categorias_->Datos().Filas()["DESCRIPCION"]);
    LblCategoria_->setText(
        descripcion.isEmpty()
            ? RotuloCategoria({{"CodCategoria", *actual}})
            : RotuloConDescripcion({{"CodCategoria", *actual}, {"descripcion", descripcion}}));
}

bool FrmConsCategoriasOpcionales::CompruebaCategoria(int columna, QString& texto)
{
    data::ui::DataGrid& rejilla = categorias_->Rejilla();
    const configurator::FilasActuales actuales{
        .CodCategoria = data::Texto(rejilla.ValorActual(QStringLiteral("CODCATEGORIA"))),
        .CodOpcional = data::Texto(valores_->Rejilla().ValorActual(QStringLiteral("CODOPCIONAL")))};
    const configurator::Tecleado tecleado =
        configurator::CompruebaColumnaCategoria(programa_, columna, texto, actuales);
    texto = tecleado.texto;
    for (const auto& [otra, valor] : tecleado.otras)
        rejilla.Modelo().PonValor(otra, valor);
    return tecleado.aceptado;
}

bool FrmConsCategoriasOpcionales::CompruebaValor(int columna, const QString& texto)
{
    if (CategoriaActual())
        return configurator::CompruebaColumnaOpcion(programa_, columna, texto);
    programa_.avisos.Muestra(EligeCategoria, data::estilo::Aviso);
    return false;
}

bool FrmConsCategoriasOpcionales::TomaLoEscrito()
{
    return categorias_->TomaLoEscrito() && valores_->TomaLoEscrito();
}

void FrmConsCategoriasOpcionales::Retorna()
{
    if (!TomaLoEscrito())
        return;
    std::optional<QString> codigo;
    data::ui::EnFrontera(programa_.avisos, [&] {
        codigo = configurator::CodigoDeRetorno(Modo_, categorias_->Datos().Filas(),
                                               valores_->Datos().Filas());
    });
    if (codigo)
        data::ui::PonValorControl(data::ui::ControlDelLlamante(*this), *codigo);
    done(codigo ? Accepted : Rejected);
}

void FrmConsCategoriasOpcionales::done(int resultado)
{
    // A row that can't be written keeps the window open; Escape in the grid gives it up.
    if (categorias_->Rejilla().GuardaFila() && valores_->Rejilla().GuardaFila())
        QDialog::done(resultado);
}
