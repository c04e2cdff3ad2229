#include "configurator/modelo_combinaciones.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"
#include <QLocale>

namespace tolmo::configurator {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlCategoria(u"SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlOpciones(u"SELECT * FROM M_OPCIONALES WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SonTantas(u"{cuantas} combinaciones");
constexpr Plantilla NoCaben(u"{cuantas} combinaciones: no caben en la tienda, que admite {limite} por artículo");
const QString Ninguna = QStringLiteral("Sin combinaciones");
const QString UnaSola = QStringLiteral("1 combinación");
const QString Innumerables = QStringLiteral("Demasiadas combinaciones: no caben en la tienda");
// clang-format on

/// The columns around those of the categories.
constexpr int Delante = 1;
constexpr int Detras = 2;
/// That a value has increments for.
constexpr int Tarifas = 5;

QString ConMiles(long long numero)
{
    // Of the library's locales with a point, the Spanish one leaves it out of millions: "1000.000".
    return QLocale(QLocale::German).toString(numero);
}

/// A company whose price list isn't set yet has its combinations counted all the same.
int TarifaDe(int Ps_pvpdef)
{
    return Ps_pvpdef >= 1 && Ps_pvpdef <= Tarifas ? Ps_pvpdef : 1;
}

} // namespace

void ModeloCombinaciones::Lee(data::Programa& programa, const QString& CodArticulo)
{
    beginResetModel();
    combinaciones_.reset();
    nombres_.clear();
    opciones_.clear();
    try {
        if (!CodArticulo.isEmpty()) {
            combinaciones_.emplace(programa, CodArticulo, TarifaDe(programa.parametros.Ps_pvpdef));
            LeeDescripciones(programa);
        }
    } catch (...) {
        // Whoever shows the rows is left with none, not in the middle of a change.
        combinaciones_.reset();
        endResetModel();
        throw;
    }
    endResetModel();
}

void ModeloCombinaciones::LeeDescripciones(data::Programa& programa)
{
    for (const QString& codigo : combinaciones_->Categorias()) {
        const auto categoria = LeeLocal(programa, SqlCategoria({{"CodCategoria", codigo}}));
        const QString nombre = categoria.Fin() ? QString() : Texto(categoria["DESCRIPCION"]);
        nombres_ << (nombre.isEmpty() ? codigo : nombre);
        auto filas = LeeLocal(programa, SqlOpciones({{"CodCategoria", codigo}}));
        auto& opciones = opciones_.emplace_back();
        for (; !filas.Fin(); filas.Siguiente())
            opciones.insert(Texto(filas["CODOPCIONAL"]), Texto(filas["DESCRIPCION"]));
    }
}

QString ModeloCombinaciones::Resumen() const
{
    if (!combinaciones_)
        return {};
    const long long cuantas = Cuantas();
    if (cuantas == 0)
        return Ninguna;
    if (cuantas == 1)
        return UnaSola;
    if (CabenEnLaTienda())
        return SonTantas({{"cuantas", ConMiles(cuantas)}});
    if (cuantas == std::numeric_limits<long long>::max())
        return Innumerables;
    return NoCaben(
        {{"cuantas", ConMiles(cuantas)}, {"limite", ConMiles(CombinacionesDeArticulo::Limite)}});
}

int ModeloCombinaciones::rowCount(const QModelIndex& padre) const
{
    return padre.isValid() || !CabenEnLaTienda() ? 0 : static_cast<int>(Cuantas());
}

int ModeloCombinaciones::columnCount(const QModelIndex& padre) const
{
    return padre.isValid() ? 0 : Delante + static_cast<int>(nombres_.size()) + Detras;
}

QString ModeloCombinaciones::TextoDeValor(int categoria, const QString& valor) const
{
    const QString descripcion = opciones_.at(static_cast<std::size_t>(categoria)).value(valor);
    return descripcion.isEmpty() ? valor : valor + QStringLiteral(" · ") + descripcion;
}

QVariant ModeloCombinaciones::data(const QModelIndex& indice, int papel) const
{
    if (!indice.isValid())
        return {};
    const int categoria = indice.column() - Delante;
    const bool deCategoria = categoria >= 0 && categoria < nombres_.size();
    if (papel == Qt::TextAlignmentRole && !deCategoria)
        return QVariant::fromValue(Qt::Alignment(Qt::AlignRight | Qt::AlignVCenter));
    if (papel != Qt::DisplayRole)
        return {};
    const auto pagina = combinaciones_->Pagina(indice.row() + 1, 1);
    const Combinacion& combinacion = pagina.front();
    if (categoria < 0)
        return QString::number(combinacion.ordinal);
    if (deCategoria)
        return TextoDeValor(categoria, combinacion.valores[categoria]);
    return categoria == nombres_.size() ? combinacion.INC_PVP : combinacion.PESO;
}

QVariant ModeloCombinaciones::headerData(int seccion, Qt::Orientation orientacion, int papel) const
{
    if (papel != Qt::DisplayRole || orientacion != Qt::Horizontal)
        return {};
    const int categoria = seccion - Delante;
    if (categoria < 0)
        return QStringLiteral("Nº");
    if (categoria < nombres_.size())
        return nombres_[categoria];
    return categoria == nombres_.size() ? QStringLiteral("Incremento") : QStringLiteral("Peso");
}

} // namespace tolmo::configurator
