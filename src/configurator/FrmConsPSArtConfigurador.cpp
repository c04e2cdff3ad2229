#include "configurator/FrmConsPSArtConfigurador.h"
#include "configurator/FrmConsCategoriasOpcionales.h"
#include "configurator/FrmRecuperaArtic.h"
#include "configurator/FrmRecuperaImagen.h"
#include "configurator/apoyo_local.h"
#include "configurator/busca_articulo.h"
#include "configurator/editor_categorias.h"
#include "configurator/editor_valores.h"
#include "data/plantilla.h"
#include "data/ui/control_activo.h"
#include "data/ui/controles.h"
#include "data/ui/frontera.h"
#include "data/ui/pestanas_de_grids.h"
#include "ui_FrmConsPSArtConfigurador.h"
#include <QHeaderView>
#include <QKeyEvent>
#include <QScopedValueRollback>

using namespace tolmo;
using configurator::ModoNavegador;
using data::ui::PanelConsulta;

namespace {

/// Of the list of combinations, at least.
constexpr int AnchoDeColumna = 90;

/// Columns of the two grids.
constexpr int CODCATEGORIA = 1;
constexpr int VALOR = 2;

constexpr data::Plantilla NoExiste(u"No existe {CodArticulo}");
const QString SinCategoria = QStringLiteral("Elija antes un atributo en la pestaña Atributos");
const QString CodigoIncorrecto = QStringLiteral("Codigo de categoria incorrecto");
const QString FalloDelGrid = QStringLiteral("Ocurrio un error al actualizar el grid");
const QString FiltroDeImagenes = QStringLiteral("Imagenes (*.jpg,*.bmp,*.tif)|*.jpg;*.bmp;*.tif");

data::Grid Editable(std::vector<data::ColumnaGrid> columnas)
{
    return {.columnas = std::move(columnas),
            .AllowUpdate = true,
            .AllowAddNew = true,
            .AllowDelete = true};
}

} // namespace

FrmConsPSArtConfigurador::FrmConsPSArtConfigurador(data::Programa& programa,
                                                   data::Escritorio& escritorio, QWidget* padre)
    : VentanaTrabajo(programa.avisos, padre), programa_(programa), escritorio_(escritorio),
      ui_(std::make_unique<Ui::FrmConsPSArtConfigurador>()),
      categorias_(new PanelConsulta(programa, programa.ConexionLocal, escritorio, 1, this)),
      valores_(new PanelConsulta(programa, programa.ConexionLocal, escritorio, 2, this)),
      valor_(new configurator::PanelValor(programa, escritorio, this)),
      copia_(new configurator::PanelCopia(programa, this)), txtretorna_(new QLineEdit(this))
{
    ui_->setupUi(this);
    Coloca();
    DefineCategorias();
    DefineValores();
    Conecta();
    BuscaArticulo();
}

FrmConsPSArtConfigurador::~FrmConsPSArtConfigurador()
{
    // The focus may leave the box while the window is taken away.
    disconnect(ui_->txtCampo_0, nullptr, this, nullptr);
}

void FrmConsPSArtConfigurador::Hace(const std::function<void()>& accion)
{
    data::ui::EnFrontera(programa_.avisos, accion);
}

void FrmConsPSArtConfigurador::Coloca()
{
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    txtretorna_->setObjectName(QStringLiteral("txtretorna"));
    txtretorna_->hide();
    ui_->ColumnaAtributos->addWidget(categorias_);
    ui_->ColumnaValores->addWidget(valores_, 3);
    ui_->ColumnaValores->addWidget(valor_, 2);
    ui_->ColumnaCopia->addWidget(copia_);
    ui_->GridCombinaciones->setModel(&combinaciones_);
    ui_->GridCombinaciones->horizontalHeader()->setMinimumSectionSize(AnchoDeColumna);
    data::ui::SeleccionaAlEntrar(*this);
    auto* pestanas =
        new data::ui::PestanasDeGrids(*ui_->SSTab1, [this] { return TomaLoEscrito(); });
    pestanas->PonFoco(*ui_->PaginaAtributos, categorias_->Rejilla());
    pestanas->PonFoco(*ui_->PaginaValores, valores_->Rejilla());
    pestanas->PonFoco(*ui_->PaginaCopia, *copia_);
    pestanas->PonFoco(*ui_->PaginaCombinaciones, *ui_->GridCombinaciones);
}

void FrmConsPSArtConfigurador::DefineCategorias()
{
    // clang-format off
    categorias_->Rejilla().Define(Editable({
        {.DataField = QStringLiteral("CODARTICULO"), .oculta = true},
        {.DataField = QStringLiteral("CODCATEGORIA"), .Caption = QStringLiteral("Cod. Categoria"), .ancho = 160, .boton = true},
        {.DataField = QStringLiteral("DESCRIPCION"), .Caption = QStringLiteral("Descripción"), .ancho = 360}}));
    // clang-format on
    categorias_->Llena = [this] { LlenaGridCat(); };
    data::EventosGrid& eventos = categorias_->Rejilla().Eventos();
    eventos.filaNueva = [this] {
        return data::Cambios{{QStringLiteral("CODARTICULO"), articulo_}};
    };
    eventos.antesDeColumna = [this](int columna, QString& texto) {
        return TomaCategoria(columna, texto);
    };
    eventos.trasColumna = [this](int columna) {
        if (columna == CODCATEGORIA)
            LlenaGridVal();
    };
    eventos.antesDeBorrar = [this] { return BorraCategoria(); };
}

void FrmConsPSArtConfigurador::DefineValores()
{
    // clang-format off
    valores_->Rejilla().Define(Editable({
        {.DataField = QStringLiteral("CODARTICULO"), .oculta = true},
        {.DataField = QStringLiteral("CODCATEGORIA"), .oculta = true},
        {.DataField = QStringLiteral("VALOR"), .Caption = QStringLiteral("Valor"), .ancho = 90, .boton = true},
        {.DataField = QStringLiteral("ID"), .oculta = true},
        {.DataField = QStringLiteral("SECUENCIA"), .Caption = QStringLiteral("Secuencia"), .ancho = 110},
        {.DataField = QStringLiteral("INC_PVP"), .Caption = QStringLiteral("Inc PVP1"), .ancho = 85},
        {.DataField = QStringLiteral("INC_PVP2"), .Caption = QStringLiteral("Inc PVP2"), .ancho = 85},
        {.DataField = QStringLiteral("INC_PVP3"), .Caption = QStringLiteral("Inc PVP3"), .ancho = 85},
        {.DataField = QStringLiteral("INC_PVP4"), .Caption = QStringLiteral("Inc PVP4"), .ancho = 85},
        {.DataField = QStringLiteral("INC_PVP5"), .Caption = QStringLiteral("Inc PVP5"), .ancho = 85},
        {.DataField = QStringLiteral("PESO"), .Caption = QStringLiteral("Inc. Peso"), .ancho = 85}}));
    // clang-format on
    valores_->Llena = [this] { LlenaGridVal(); };
    data::EventosGrid& eventos = valores_->Rejilla().Eventos();
    eventos.antesDeColumna = [this](int columna, QString& texto) {
        return TomaValor(columna, texto);
    };
    eventos.antesDeBorrar = [this] { return BorraValor(); };
}

void FrmConsPSArtConfigurador::Conecta()
{
    ui_->txtCampo_0->installEventFilter(this);
    connect(ui_->txtCampo_0, &QLineEdit::editingFinished, this,
            [this] { Hace([this] { DejaArticulo(false); }); });
    connect(ui_->CmdBuscaArticulo, &QAbstractButton::clicked, this,
            &FrmConsPSArtConfigurador::EligeArticulo);
    using data::ui::DataGrid;
    connect(&categorias_->Rejilla(), &DataGrid::FilaCambiada, this,
            [this] { Hace([this] { LlenaGridVal(); }); });
    connect(&valores_->Rejilla(), &DataGrid::FilaCambiada, this,
            [this] { Hace([this] { MuestraValor(); }); });
    connect(&categorias_->Rejilla(), &DataGrid::BotonPulsado, this,
            &FrmConsPSArtConfigurador::BuscaCategoria);
    connect(&valores_->Rejilla(), &DataGrid::BotonPulsado, this,
            &FrmConsPSArtConfigurador::BuscaValor);
    valor_->eligeImagen = [this] { return EligeImagen(); };
    copia_->eligeArticulo = [this](const auto& peticion, QLineEdit& caja) {
        EligeDestino(peticion, caja);
    };
    copia_->copia = [this](const auto& seleccion) { Hace([&] { Copia(seleccion); }); };

    reposo_.setSingleShot(true);
    connect(&reposo_, &QTimer::timeout, this, [this] {
        Hace([this] {
            Recuenta();
            if (CategoriaActual() != CodCategoria_)
                LlenaGridVal(); // a code that was typed has been given up
            MuestraValor();     // a row that was added is a value now
        });
    });
    for (PanelConsulta* panel : {categorias_, valores_}) {
        panel->PonMotivo(PanelConsulta::Motivo::Otro);
        const data::ModeloGrid& modelo = panel->Rejilla().Modelo();
        const auto cambia = [this] { reposo_.start(0); };
        connect(&modelo, &QAbstractItemModel::dataChanged, this, cambia);
        connect(&modelo, &QAbstractItemModel::rowsRemoved, this, cambia);
        connect(&modelo, &QAbstractItemModel::modelReset, this, cambia);
    }
}

bool FrmConsPSArtConfigurador::eventFilter(QObject* objeto, QEvent* evento)
{
    if (objeto != ui_->txtCampo_0)
        return VentanaTrabajo::eventFilter(objeto, evento);
    if (evento->type() == QEvent::MouseButtonDblClick) {
        EligeArticulo();
        return true;
    }
    if (evento->type() == QEvent::KeyPress) {
        switch (static_cast<const QKeyEvent*>(evento)->key()) {
        case Qt::Key_F11:
        case Qt::Key_F12:
            EligeArticulo();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Hace([this] { DejaArticulo(true); });
            return true;
        default:
            break;
        }
    }
    return VentanaTrabajo::eventFilter(objeto, evento);
}

void FrmConsPSArtConfigurador::EligeArticulo()
{
    if (copiando_ || !TomaLoEscrito())
        return;
    const QString antes = ui_->txtCampo_0->text();
    ui_->txtCampo_0->setFocus();
    {
        const data::ui::ControlElegido elegido(*ui_->txtCampo_0);
        FrmRecuperaArtic buscador(programa_, escritorio_, this);
        buscador.exec();
    }
    if (ui_->txtCampo_0->text() != antes)
        Hace([this] { DejaArticulo(false); });
}

/// The article that is shown already isn't read again when its field is merely passed through.
void FrmConsPSArtConfigurador::DejaArticulo(bool aunqueSeaElMismo)
{
    // Closing the window takes the focus from the box, and nobody will see the article.
    if (!isVisible() || (!aunqueSeaElMismo && ui_->txtCampo_0->text() == articulo_))
        return;
    BuscaArticulo();
    // Who has clicked elsewhere is there already.
    if (articulo_.isEmpty() || QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    ui_->SSTab1->setCurrentWidget(ui_->PaginaAtributos);
    categorias_->Rejilla().setFocus();
}

void FrmConsPSArtConfigurador::BuscaArticulo()
{
    const QString codigo = ui_->txtCampo_0->text();
    const auto descripcion =
        codigo.isEmpty() ? std::nullopt : configurator::DescripcionDeArticulo(programa_, codigo);
    articulo_ = descripcion ? codigo : QString();
    ui_->txtCampo_0->setText(articulo_);
    ui_->LblDesArt->setText(descripcion.value_or(QString()));
    ui_->txtCampo_0->setPlaceholderText(
        articulo_.isEmpty() && !codigo.isEmpty() ? NoExiste({{"CodArticulo", codigo}}) : QString());
    for (QWidget* pagina : {ui_->PaginaAtributos, ui_->PaginaValores})
        pagina->setEnabled(descripcion.has_value());
    LlenaGridCat();
}

/// The values follow: another row of the categories is current then, or none.
void FrmConsPSArtConfigurador::LlenaGridCat()
{
    Llena(*categorias_, configurator::SqlLlenaGridCat(categorias_->Condicion().text(), articulo_));
}

void FrmConsPSArtConfigurador::LlenaGridVal()
{
    CodCategoria_ = CategoriaActual();
    const QString descripcion =
        data::Texto(categorias_->Rejilla().ValorActual(QStringLiteral("DESCRIPCION")));
    ui_->LblCategoria->setText(descripcion.isEmpty()
                                   ? CodCategoria_
                                   : CodCategoria_ + QStringLiteral(" · ") + descripcion);
    Llena(*valores_,
          configurator::SqlLlenaGridVal(valores_->Condicion().text(), articulo_, CodCategoria_));
}

/// A table that lacks a column of its grid can't be edited in it.
void FrmConsPSArtConfigurador::Llena(PanelConsulta& panel, const QString& sql)
{
    panel.AbreGrid(sql);
    const data::Recordset& filas = panel.Datos().Filas();
    for (const QString& columna : panel.Rejilla().Definicion().DataFields())
        if (!filas.TieneColumna(columna))
            return configurator::Avisa(programa_, FalloDelGrid);
}

void FrmConsPSArtConfigurador::MuestraValor()
{
    const QString valor = data::Texto(valores_->Rejilla().ValorActual(QStringLiteral("VALOR")));
    if (valores_->Datos().Fila() < 0 || valor.isEmpty())
        valor_->Muestra(std::nullopt);
    else
        valor_->Muestra(configurator::ValorDeArticulo{
            .CodArticulo = articulo_, .CodCategoria = CodCategoria_, .valor = valor});
}

/// How many combinations there are now, and which.
void FrmConsPSArtConfigurador::Recuenta()
{
    combinaciones_.Lee(programa_, articulo_);
    ui_->LblCombinaciones->setText(combinaciones_.Resumen());
    ui_->GridCombinaciones->resizeColumnsToContents();
}

QString FrmConsPSArtConfigurador::CategoriaActual() const
{
    return data::Texto(categorias_->Rejilla().ValorActual(QStringLiteral("CODCATEGORIA")));
}

void FrmConsPSArtConfigurador::PonEnLaFila(PanelConsulta& panel, const data::Cambios& cambios)
{
    for (const auto& [columna, valor] : cambios)
        panel.Rejilla().Modelo().PonValor(columna, valor);
}

bool FrmConsPSArtConfigurador::TomaCategoria(int columna, QString& texto)
{
    if (columna != CODCATEGORIA) {
        // A row without its code would be one of no category.
        if (!CategoriaActual().isEmpty())
            return true;
        configurator::Avisa(programa_, CodigoIncorrecto);
        return false;
    }
    const auto categoria = configurator::CompruebaCategoria(programa_, articulo_, texto);
    if (!categoria)
        return false;
    texto = categoria->codigo;
    PonEnLaFila(*categorias_, categoria->otras);
    return true;
}

bool FrmConsPSArtConfigurador::TomaValor(int columna, QString& texto)
{
    if (CodCategoria_.isEmpty()) {
        configurator::Avisa(programa_, SinCategoria);
        return false;
    }
    const data::ui::DataGrid& rejilla = valores_->Rejilla();
    const auto actual = [&rejilla](const QString& nombre) { return rejilla.ValorActual(nombre); };
    // A new row is begun once, at whichever column, and keeps what is typed into it after that.
    const bool seEmpieza =
        valores_->Datos().Fila() < 0 && !data::EsNumero(actual(QStringLiteral("ID")));
    if (columna == VALOR) {
        const auto valor =
            configurator::CompruebaValor(programa_, articulo_, CodCategoria_, texto, seEmpieza);
        if (!valor)
            return false;
        texto = valor->valor;
        PonEnLaFila(*valores_, valor->otras);
    } else if (seEmpieza) {
        PonEnLaFila(*valores_, configurator::ValorNuevo(programa_, articulo_, CodCategoria_));
    }
    PonEnLaFila(*valores_, configurator::IncrementosVacios(actual));
    const QString nombre =
        rejilla.Definicion().columnas.at(static_cast<std::size_t>(columna)).DataField;
    texto = configurator::TextoDeColumna(nombre, texto);
    return true;
}

/// The row that goes is the one of the record set; the cell that is current may be of another.
bool FrmConsPSArtConfigurador::BorraCategoria()
{
    configurator::BorraValoresDeCategoria(
        programa_, articulo_, data::Texto(categorias_->Datos().Filas()["CODCATEGORIA"]));
    return true;
}

bool FrmConsPSArtConfigurador::BorraValor()
{
    const data::Recordset& fila = valores_->Datos().Filas();
    configurator::BorraComponentesDeValor(programa_, articulo_, CodCategoria_,
                                          data::Texto(fila["VALOR"]), fila["ID"]);
    return true;
}

/// Shows a window that gives back a choice. \returns it; empty when nothing was chosen
QString FrmConsPSArtConfigurador::Retornado(QDialog& hija)
{
    txtretorna_->clear();
    const data::ui::ControlElegido elegido(*txtretorna_);
    hija.exec();
    const QString retornado = txtretorna_->text();
    txtretorna_->clear();
    return retornado;
}

void FrmConsPSArtConfigurador::BuscaCategoria()
{
    FrmConsCategoriasOpcionales navegador(programa_, escritorio_, this);
    navegador.PermiteRetorno(true);
    if (const QString elegida = Retornado(navegador); !elegida.isEmpty())
        categorias_->Rejilla().Teclea(QStringLiteral("CODCATEGORIA"), elegida);
    else
        categorias_->Activa(); // a description may have been changed for all articles
}

void FrmConsPSArtConfigurador::BuscaValor()
{
    FrmConsCategoriasOpcionales navegador(programa_, escritorio_, this);
    navegador.PonModo(ModoNavegador::Valores, CodCategoria_);
    navegador.PermiteRetorno(true);
    if (const QString elegido = Retornado(navegador); !elegido.isEmpty())
        valores_->Rejilla().Teclea(QStringLiteral("VALOR"), elegido);
    else if (!valores_->Rejilla().Modelo().HayCambios())
        categorias_->Activa(); // and with it the values
}

std::optional<QString> FrmConsPSArtConfigurador::EligeImagen()
{
    txtretorna_->setText(FiltroDeImagenes);
    const data::ui::ControlElegido elegido(*txtretorna_);
    FrmRecuperaImagen buscador(programa_, this);
    buscador.exec();
    const QString ruta = txtretorna_->text();
    txtretorna_->clear();
    return ruta == FiltroDeImagenes ? std::nullopt : std::optional(ruta);
}

void FrmConsPSArtConfigurador::EligeDestino(const configurator::PeticionArticulo& peticion,
                                            QLineEdit& caja)
{
    if (copiando_)
        return;
    const data::ui::ControlElegido elegido(caja);
    FrmRecuperaArtic buscador(programa_, escritorio_, this);
    buscador.PonTag(peticion.Tag);
    buscador.PonFiltro(peticion.filtro);
    buscador.PonDevuelveCodAlternativo(peticion.DevuelveCodAlternativo);
    buscador.exec();
}

void FrmConsPSArtConfigurador::Copia(const configurator::SeleccionCopia& seleccion)
{
    // An article that was typed and not left yet; an unknown one must not empty the targets.
    const QString tecleado = ui_->txtCampo_0->text();
    if (tecleado != articulo_) {
        BuscaArticulo();
        if (articulo_ != tecleado)
            return;
    }
    copia_->PrgBar().setValue(0);
    {
        const QScopedValueRollback guarda(copiando_, true);
        configurator::CopiaConfiguracion(programa_, *this, articulo_, seleccion);
    }
    Habilita(true);
    copia_->PrgBar().setValue(0);
}

/// While a copy is under way its events get their turns, and nothing may be changed by them.
void FrmConsPSArtConfigurador::Habilita(bool habilitada)
{
    if (ui_->SSTab1->isEnabled() == habilitada)
        return;
    ui_->Cabecera->setEnabled(habilitada);
    ui_->SSTab1->setEnabled(habilitada);
    if (habilitada)
        copia_->setFocus();
}

void FrmConsPSArtConfigurador::Avanza(int posicion, int total)
{
    Habilita(false);
    copia_->PrgBar().setValue(static_cast<int>(static_cast<long long>(posicion) * 100 / total));
}

/// Writes what is being typed. What is refused is shown.
bool FrmConsPSArtConfigurador::TomaLoEscrito()
{
    for (const auto& [panel, pagina] :
         {std::pair(categorias_, ui_->PaginaAtributos), std::pair(valores_, ui_->PaginaValores)}) {
        if (panel->Rejilla().GuardaFila())
            continue;
        ui_->SSTab1->setCurrentWidget(pagina);
        return false;
    }
    Hace([this] { valor_->GuardaLoEscrito(); });
    return true;
}

void FrmConsPSArtConfigurador::done(int resultado)
{
    if (Ocupada() || TomaLoEscrito())
        VentanaTrabajo::done(resultado);
}
