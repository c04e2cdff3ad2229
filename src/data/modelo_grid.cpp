#include "data/modelo_grid.h"
#include "data/clase_columna.h"
#include "data/plantilla.h"
#include "data/valor_columna.h"
#include <algorithm>

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla NoSeGuarda(u"No se ha podido guardar la fila: {motivo}");
constexpr Plantilla NoSeBorra(u"No se ha podido eliminar la fila: {motivo}");
constexpr Plantilla BorraVarias(u"¿Eliminar las {cuantas} filas seleccionadas?");
// clang-format on

const QString BorraUna = QStringLiteral("¿Eliminar la fila seleccionada?");
constexpr int TipoBinario = 204;

auto Busca(auto& cambios, const QString& columna)
{
    return std::find_if(cambios.begin(), cambios.end(), [&](const auto& cambio) {
        return cambio.first.compare(columna, Qt::CaseInsensitive) == 0;
    });
}

void Avisa(Avisos& avisos, const ErrorDatos& error, const Plantilla& mensaje)
{
    if (error.Numero() == numero_error::CampoIncorrecto)
        MuestraError(avisos, error, error.Descripcion());
    else
        avisos.Muestra(mensaje({{"motivo", error.Descripcion()}}), estilo::Aviso);
}

} // namespace

ModeloGrid::ModeloGrid(const Grid& grid, Adodc& adodc, QObject* padre)
    : QAbstractTableModel(padre), grid_(grid), adodc_(adodc)
{
    connect(&adodc_, &Adodc::Reabierto, this, &ModeloGrid::Rehaz);
    Rehaz();
}

void ModeloGrid::Rehaz()
{
    beginResetModel();
    borrador_.reset();
    filas_ = adodc_.Filas().RecordCount();
    columnas_.clear();
    for (const ColumnaGrid& columna : grid_.columnas) {
        const bool esta = adodc_.Filas().TieneColumna(columna.DataField);
        columnas_.push_back(esta ? adodc_.Filas().Indice(columna.DataField) : -1);
    }
    endResetModel();
}

int ModeloGrid::rowCount(const QModelIndex& padre) const
{
    if (padre.isValid())
        return 0;
    return filas_ + (grid_.AllowAddNew && adodc_.Filas().Cambiable() ? 1 : 0);
}

int ModeloGrid::columnCount(const QModelIndex& padre) const
{
    return padre.isValid() ? 0 : static_cast<int>(columnas_.size());
}

int ModeloGrid::ColumnaDeFilas(int columna) const
{
    return columnas_.at(static_cast<std::size_t>(columna));
}

QString ModeloGrid::Rotulo(int columna) const
{
    const ColumnaGrid& de = grid_.columnas.at(static_cast<std::size_t>(columna));
    return de.Caption.isEmpty() ? de.DataField : de.Caption;
}

Valor ModeloGrid::ValorDe(int fila, const QString& columna) const
{
    if (borrador_ && borrador_->fila == fila) {
        const auto cambio = Busca(borrador_->cambios, columna);
        if (cambio != borrador_->cambios.end())
            return cambio->second;
    }
    const Recordset& filas = adodc_.Filas();
    if (fila < 0 || fila >= filas_ || !filas.TieneColumna(columna))
        return {};
    return filas.En(fila, filas.Indice(columna));
}

QString ModeloGrid::TextoDe(int fila, int columna) const
{
    if (borrador_ && borrador_->fila == fila)
        return TextoCelda(
            ValorDe(fila, grid_.columnas.at(static_cast<std::size_t>(columna)).DataField));
    const int enFilas = ColumnaDeFilas(columna);
    if (fila >= filas_ || enFilas < 0)
        return {};
    return TextoCelda(adodc_.Filas().En(fila, enFilas));
}

QVariant ModeloGrid::data(const QModelIndex& indice, int papel) const
{
    if (!indice.isValid())
        return {};
    if (papel == Qt::DisplayRole || papel == Qt::EditRole)
        return TextoDe(indice.row(), indice.column());
    const int columna = ColumnaDeFilas(indice.column());
    if (papel == Qt::TextAlignmentRole && columna >= 0) {
        const Campo& campo = adodc_.Filas().Campos()[static_cast<std::size_t>(columna)];
        if (ClaseDe(campo.tipo) == ClaseColumna::Numero)
            return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    }
    return {};
}

QVariant ModeloGrid::headerData(int seccion, Qt::Orientation orientacion, int papel) const
{
    if (papel != Qt::DisplayRole)
        return {};
    if (orientacion == Qt::Horizontal)
        return Rotulo(seccion);
    return EsFilaNueva(seccion) ? QStringLiteral("*") : QStringLiteral(" ");
}

Qt::ItemFlags ModeloGrid::flags(const QModelIndex& indice) const
{
    Qt::ItemFlags banderas = QAbstractTableModel::flags(indice);
    if (!indice.isValid())
        return banderas;
    const int columna = ColumnaDeFilas(indice.column());
    const bool permitido = EsFilaNueva(indice.row()) ? grid_.AllowAddNew : grid_.AllowUpdate;
    if (permitido && columna >= 0 && adodc_.Filas().Cambiable() &&
        adodc_.Filas().Campos()[static_cast<std::size_t>(columna)].tipo != TipoBinario)
        banderas |= Qt::ItemIsEditable;
    return banderas;
}

bool ModeloGrid::setData(const QModelIndex& indice, const QVariant& valor, int papel)
{
    if (papel != Qt::EditRole || !flags(indice).testFlag(Qt::ItemIsEditable))
        return false;
    const QString texto = valor.toString();
    if (texto == TextoDe(indice.row(), indice.column()))
        return true;
    if (borrador_ && borrador_->fila != indice.row() && !GuardaFila())
        return false;
    const bool recienAbierto = AbreBorrador(indice.row());
    const bool tomado = Toma(indice.column(), texto);
    // A new row in which nothing was accepted has not been begun.
    const bool sinNada = borrador_ && (borrador_->cambios.empty() || EsFilaNueva(indice.row()));
    if (!tomado && recienAbierto && sinNada)
        borrador_.reset();
    CambiaFila(indice.row());
    return tomado;
}

/// \returns true when the row wasn't being typed into before
bool ModeloGrid::AbreBorrador(int fila)
{
    if (borrador_)
        return false;
    borrador_ = Borrador{.fila = fila};
    if (EsFilaNueva(fila) && eventos.filaNueva)
        borrador_->cambios = eventos.filaNueva();
    return true;
}

bool ModeloGrid::Toma(int columna, QString texto)
{
    if (eventos.antesDeColumna && !eventos.antesDeColumna(columna, texto))
        return false;
    const int enFilas = ColumnaDeFilas(columna);
    const Campo& campo = adodc_.Filas().Campos()[static_cast<std::size_t>(enFilas)];
    try {
        PonValor(campo.nombre, ValorDeColumna(campo, Rotulo(columna), texto));
    } catch (const ErrorDatos& error) {
        Avisa(adodc_.programa().avisos, error, NoSeGuarda);
        return false;
    }
    if (eventos.trasColumna)
        eventos.trasColumna(columna);
    return true;
}

void ModeloGrid::PonValor(const QString& columna, const Valor& valor)
{
    if (!borrador_)
        return;
    const auto cambio = Busca(borrador_->cambios, columna);
    if (cambio != borrador_->cambios.end())
        cambio->second = valor;
    else
        borrador_->cambios.emplace_back(columna, valor);
}

bool ModeloGrid::GuardaFila()
{
    if (!borrador_)
        return true;
    try {
        Escribe();
    } catch (const ErrorDatos& error) {
        Avisa(adodc_.programa().avisos, error, NoSeGuarda);
        return false;
    }
    return true;
}

void ModeloGrid::Escribe()
{
    const int fila = borrador_->fila;
    Recordset& filas = adodc_.Filas();
    if (EsFilaNueva(fila)) {
        filas.Inserta(borrador_->cambios);
        // The row that was typed into is a row now, and a new empty one stands below it.
        borrador_.reset();
        beginInsertRows({}, filas_ + 1, filas_ + 1);
        ++filas_;
        endInsertRows();
        emit headerDataChanged(Qt::Vertical, fila, fila + 1);
    } else {
        filas.PonPosicion(fila + 1);
        filas.Actualiza(borrador_->cambios);
        borrador_.reset();
    }
    CambiaFila(fila);
}

void ModeloGrid::DescartaFila()
{
    if (!borrador_)
        return;
    const int fila = borrador_->fila;
    borrador_.reset();
    CambiaFila(fila);
}

void ModeloGrid::CambiaFila(int fila)
{
    emit dataChanged(index(fila, 0), index(fila, columnCount() - 1));
}

void ModeloGrid::BorraFilas(std::vector<int> filas)
{
    std::erase_if(filas, [this](int fila) { return fila < 0 || fila >= filas_; });
    if (filas.empty())
        return;
    const QString pregunta =
        filas.size() == 1 ? BorraUna
                          : BorraVarias({{"cuantas", Texto(static_cast<int>(filas.size()))}});
    constexpr int Estilo = estilo::SiNo + estilo::Pregunta + estilo::SegundoBoton;
    Avisos& avisos = adodc_.programa().avisos;
    if (grid_.preguntaAlBorrar && avisos.Muestra(pregunta, Estilo) != Respuesta::Si)
        return;
    if (borrador_ && std::ranges::find(filas, borrador_->fila) != filas.end())
        DescartaFila();
    if (!GuardaFila())
        return;
    // From the last to the first, so that the places of the others stay.
    std::sort(filas.begin(), filas.end(), std::greater<>());
    for (const int fila : filas)
        if (!Borra(fila))
            return;
}

bool ModeloGrid::Borra(int fila)
{
    adodc_.PonFila(fila);
    if (eventos.antesDeBorrar && !eventos.antesDeBorrar())
        return false;
    try {
        adodc_.Filas().Borra();
    } catch (const ErrorDatos& error) {
        Avisa(adodc_.programa().avisos, error, NoSeBorra);
        return false;
    }
    beginRemoveRows({}, fila, fila);
    --filas_;
    endRemoveRows();
    adodc_.PonFila(std::min(fila, filas_ - 1));
    return true;
}

} // namespace tolmo::data
