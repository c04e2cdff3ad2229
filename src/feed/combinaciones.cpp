#include "feed/combinaciones.h"
#include "configurator/consulta_combinaciones.h"
#include "data/consultas.h"
#include "data/plantilla.h"
#include "feed/documento.h"
#include "feed/producto.h"

namespace tolmo::feed {
namespace {

using data::Plantilla;
using data::Recordset;
using data::Texto;

// clang-format off
constexpr Plantilla SqlNombreCategoria(u"SELECT DESCRIPCION FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='{codcategoria}'");
constexpr Plantilla SqlNombreOpcion(u"SELECT DESCRIPCION FROM M_OPCIONALES WHERE CODCATEGORIA='{codcategoria}' AND CODOPCIONAL='{valor}'");
constexpr Plantilla SufijoCodigo(u"_{n}");
constexpr Plantilla SufijoTitulo(u" ({categoria} : {opcion})");
// clang-format on

/// Empty for a code that the masters don't hold: the product goes out all the same.
QString LeeNombre(data::Programa& programa, QString sql)
{
    const auto fila = data::AbreLectura(programa, sql, programa.ConexionLocal);
    return fila.Fin() ? QString() : Texto(fila["DESCRIPCION"]);
}

QString TituloDe(data::Programa& programa, const Recordset& combinacion, int cuantas)
{
    QString titulo;
    for (int i = 1; i <= cuantas; ++i) {
        const auto campo = [&](const QString& columna) {
            return Texto(combinacion[configurator::ColumnaDeCombinacion(i, cuantas, columna)]);
        };
        const QString codcategoria = campo(QStringLiteral("CODCATEGORIA"));
        const QString valor = campo(QStringLiteral("VALOR"));
        titulo += SufijoTitulo(
            {{"categoria",
              LeeNombre(programa, SqlNombreCategoria({{"codcategoria", codcategoria}}))},
             {"opcion", LeeNombre(programa, SqlNombreOpcion({{"codcategoria", codcategoria},
                                                             {"valor", valor}}))}});
    }
    return titulo;
}

} // namespace

QString ColumnaDeIncremento(const QString& CampoPrecio)
{
    if (CampoPrecio == QLatin1String("PVP1"))
        return QStringLiteral("INC_PVP");
    return QStringLiteral("INC_PVP") + CampoPrecio.right(1);
}

void GeneraCombinaciones(Documento& documento, const Recordset& articulo,
                         const QStringList& categorias)
{
    data::Programa& programa = documento.programa;
    QString sql =
        configurator::SqlCombinaciones(Texto(articulo["CodArticulo"]), categorias,
                                       ColumnaDeIncremento(documento.configuracion.CampoPrecio));
    auto filas = data::AbreLectura(programa, sql, programa.ConexionLocal);
    for (; !filas.Fin(); filas.Siguiente())
        GeneraProducto(documento, SufijoCodigo({{"n", Texto(filas.AbsolutePosition())}}),
                       TituloDe(programa, filas, static_cast<int>(categorias.size())),
                       data::ValorNumerico(filas["INC_PVP_COMBINA"]), articulo);
}

} // namespace tolmo::feed
