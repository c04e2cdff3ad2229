#include "configurator/consulta_combinaciones.h"
#include "data/plantilla.h"
#include "data/valores.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlCategorias(u"SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='{CodArticulo}' ORDER BY CODCATEGORIA");
constexpr Plantilla SqlProducto(u"SELECT {campos},* FROM {desde} ORDER BY {orden}");
constexpr Plantilla Campos(u"{k} AS CUANTASCAT,{incremento} AS INC_PVP_COMBINA,{peso} AS PESO_COMBINA");
constexpr Plantilla ValoresDeCategoria(u"(SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='{codcategoria}' AND CODARTICULO='{CodArticulo}' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS {T}");
constexpr Plantilla OrdenDeCategoria(u"{p}SECUENCIA,{p}CODCATEGORIA,{p}VALOR");
// clang-format on

/// The name of the k-th sub-select: T001, T002...
QString Alias(int k)
{
    return QStringLiteral("T") + (QStringLiteral("000") + data::Texto(k)).right(3);
}

} // namespace

QString SqlCategoriasDeArticulo(const QString& CodArticulo)
{
    return SqlCategorias({{"CodArticulo", CodArticulo}});
}

QString SqlCombinaciones(const QString& CodArticulo, const QStringList& categorias,
                         const QString& incremento)
{
    const int cuantas = static_cast<int>(categorias.size());
    QString precio = QStringLiteral("0");
    QString peso = QStringLiteral("0");
    QStringList desde;
    QStringList orden;
    for (int k = 1; k <= cuantas; ++k) {
        const QString alias = Alias(k);
        precio += QStringLiteral(" + ") + alias + u'.' + incremento;
        peso += QStringLiteral(" + ") + alias + QStringLiteral(".PESO");
        desde << ValoresDeCategoria(
            {{"codcategoria", categorias[k - 1]}, {"CodArticulo", CodArticulo}, {"T", alias}});
        orden << OrdenDeCategoria({{"p", ColumnaDeCombinacion(k, cuantas, {})}});
    }
    return SqlProducto(
        {{"campos", Campos({{"k", data::Texto(cuantas)}, {"incremento", precio}, {"peso", peso}})},
         {"desde", desde.join(QStringLiteral(" , "))},
         {"orden", orden.join(u',')}});
}

QString SqlCombinaciones(const QString& CodArticulo, const QStringList& categorias, int tarifa)
{
    // The column of price list 1 has no number.
    const QString numero = tarifa == 1 ? QString() : data::Texto(tarifa);
    return SqlCombinaciones(CodArticulo, categorias, QStringLiteral("INC_PVP") + numero);
}

QString ColumnaDeCombinacion(int k, int cuantas, const QString& columna)
{
    return cuantas > 1 ? Alias(k) + u'.' + columna : columna;
}

} // namespace tolmo::configurator
