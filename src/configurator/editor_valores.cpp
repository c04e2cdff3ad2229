#include "configurator/editor_valores.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"
#include "data/valor_columna.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlValores(u"SELECT * FROM PS_CONF_ART_VAL WHERE {filtro} AND CODARTICULO='{CodArticulo}' AND CodCategoria='{CodCategoria}' ORDER BY SECUENCIA");
constexpr Plantilla SqlUltimoId(u"SELECT MAX(id) as MID FROM PS_CONF_ART_VAL");
constexpr Plantilla SqlOpcion(u"SELECT * FROM M_OPCIONALES WHERE CODCATEGORIA='{CodCategoria}' AND CODOPCIONAL='{valor}'");
constexpr Plantilla SqlValor(u"SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}' AND VALOR='{valor}'");
constexpr Plantilla SqlBorraComponentes(u"DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}' AND VALOR='{valor}' AND ID={id}");
constexpr Plantilla SqlBorraOperaciones(u"DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}' AND VALOR='{valor}'");
// clang-format on

const QString Siempre = QStringLiteral(" True ");
const QString ValorNoValido = QStringLiteral("Valor no valido");

const QStringList Incrementos = {QStringLiteral("INC_PVP"), QStringLiteral("INC_PVP2"),
                                 QStringLiteral("INC_PVP3"), QStringLiteral("INC_PVP4"),
                                 QStringLiteral("INC_PVP5")};

} // namespace

QString CondicionDeGrid(const QString& filtro)
{
    return filtro.isEmpty() ? Siempre : filtro;
}

QString SqlLlenaGridVal(const QString& filtro, const QString& CodArticulo,
                        const QString& CodCategoria)
{
    return SqlValores({{"filtro", CondicionDeGrid(filtro)},
                       {"CodArticulo", CodArticulo},
                       {"CodCategoria", CodCategoria}});
}

double SiguienteId(data::Programa& programa)
{
    const auto ultimo = LeeLocal(programa, SqlUltimoId());
    return data::ValorNumerico(ultimo["MID"]) + 1;
}

data::Cambios ValorNuevo(data::Programa& programa, const QString& CodArticulo,
                         const QString& CodCategoria)
{
    data::Cambios fila = {{QStringLiteral("Codarticulo"), CodArticulo},
                          {QStringLiteral("CodCategoria"), CodCategoria},
                          {QStringLiteral("id"), SiguienteId(programa)},
                          {QStringLiteral("secuencia"), 0}};
    for (const QString& incremento : Incrementos)
        fila.emplace_back(incremento, 0);
    fila.emplace_back(QStringLiteral("PESO"), 0);
    return fila;
}

std::optional<ValorTecleado> CompruebaValor(data::Programa& programa, const QString& CodArticulo,
                                            const QString& CodCategoria, const QString& texto,
                                            bool filaNueva)
{
    if (texto.isEmpty())
        return ValorTecleado{};
    ValorTecleado tecleado{.valor = texto.toUpper()};
    const QString opcion = SqlOpcion({{"CodCategoria", CodCategoria}, {"valor", tecleado.valor}});
    if (LeeLocal(programa, opcion).Fin()) {
        Avisa(programa, ValorNoValido);
        return std::nullopt;
    }
    if (filaNueva)
        tecleado.otras = ValorNuevo(programa, CodArticulo, CodCategoria);
    return tecleado;
}

QString TextoDeColumna(const QString& columna, const QString& texto)
{
    return Incrementos.contains(columna, Qt::CaseInsensitive)
               ? Texto(data::ValorNumerico(data::NumeroTecleado(texto)))
               : texto;
}

data::Cambios IncrementosVacios(const std::function<data::Valor(const QString&)>& valor)
{
    data::Cambios cambios;
    for (const QString& incremento : Incrementos) {
        const data::Valor actual = valor(incremento);
        if (data::EsNulo(actual) || !data::EsNumero(actual))
            cambios.emplace_back(incremento, data::ValorNumerico(actual));
    }
    return cambios;
}

void BorraComponentesDeValor(data::Programa& programa, const QString& CodArticulo,
                             const QString& CodCategoria, const QString& valor,
                             const data::Valor& id)
{
    EjecutaLocal(programa, SqlBorraComponentes({{"CodArticulo", CodArticulo},
                                                {"CodCategoria", CodCategoria},
                                                {"valor", valor},
                                                {"id", Texto(id)}}));
    EjecutaLocal(programa, SqlBorraOperaciones({{"CodArticulo", CodArticulo},
                                                {"CodCategoria", CodCategoria},
                                                {"valor", valor}}));
}

std::optional<DetalleValor> LeeDetalleValor(data::Programa& programa, const QString& CodArticulo,
                                            const QString& CodCategoria, const QString& valor)
{
    const auto fila = LeeLocal(
        programa,
        SqlValor({{"CodArticulo", CodArticulo}, {"CodCategoria", CodCategoria}, {"valor", valor}}));
    if (fila.Fin())
        return std::nullopt;
    const auto opcion =
        LeeLocal(programa, SqlOpcion({{"CodCategoria", CodCategoria}, {"valor", valor}}));
    return DetalleValor{.descripcion = opcion.Fin() ? QString() : Texto(opcion["Descripcion"]),
                        .Foto = Texto(fila["Foto"])};
}

} // namespace tolmo::configurator
