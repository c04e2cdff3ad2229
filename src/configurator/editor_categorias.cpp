#include "configurator/editor_categorias.h"
#include "configurator/apoyo_local.h"
#include "configurator/editor_valores.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlCategorias(u"SELECT * FROM PS_CONF_ART_CAT WHERE {filtro} AND CODARTICULO='{CodArticulo}' ORDER BY CODCATEGORIA ASC");
constexpr Plantilla SqlCategoria(u"SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlTieneValores(u"SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='{CodArticulo}' AND CodCategoria='{CodCategoria}'");
constexpr Plantilla SqlOpciones(u"SELECT * FROM M_OPCIONALES WHERE CodCategoria='{CodCategoria}' ORDER BY CODCATEGORIA");
constexpr Plantilla SqlInsertaValor(u"INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('{CodArticulo}','{CodCategoria}','{CODOPCIONAL}',{id},{CODOPCIONAL},0,0,0,0,0,0)");
constexpr Plantilla SqlBorraValores(u"DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlBorraComponentes(u"DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlBorraOperaciones(u"DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}'");
// clang-format on

const QString CodigoIncorrecto = QStringLiteral("Codigo de categoria incorrecto");
const QString RecuperarValores =
    QStringLiteral("Desea recuperar todos los valores de la categoria seleccionada?");

} // namespace

QString SqlLlenaGridCat(const QString& filtro, const QString& CodArticulo)
{
    return SqlCategorias({{"filtro", CondicionDeGrid(filtro)}, {"CodArticulo", CodArticulo}});
}

std::optional<CategoriaTecleada>
CompruebaCategoria(data::Programa& programa, const QString& CodArticulo, const QString& texto)
{
    CategoriaTecleada categoria{.codigo = texto.toUpper()};
    const auto maestra = LeeLocal(programa, SqlCategoria({{"CodCategoria", categoria.codigo}}));
    if (maestra.Fin()) {
        Avisa(programa, CodigoIncorrecto);
        return std::nullopt;
    }
    categoria.otras = {{QStringLiteral("CODARTICULO"), CodArticulo},
                       {QStringLiteral("DESCRIPCION"), Texto(maestra["Descripcion"])}};
    if (Pregunta(programa, RecuperarValores))
        categoria.recuperada = InsertaValores(programa, CodArticulo, categoria.codigo);
    return categoria;
}

bool InsertaValores(data::Programa& programa, const QString& CodArticulo,
                    const QString& CodCategoria)
{
    const QString tiene =
        SqlTieneValores({{"CodArticulo", CodArticulo}, {"CodCategoria", CodCategoria}});
    if (!LeeLocal(programa, tiene).Fin())
        return false;
    double id = SiguienteId(programa);
    auto opciones = LeeLocal(programa, SqlOpciones({{"CodCategoria", CodCategoria}}));
    for (; !opciones.Fin(); opciones.Siguiente(), ++id)
        EjecutaLocal(programa, SqlInsertaValor({{"CodArticulo", CodArticulo},
                                                {"CodCategoria", CodCategoria},
                                                {"CODOPCIONAL", Texto(opciones["CODOPCIONAL"])},
                                                {"id", Texto(id)}}));
    return true;
}

void BorraValoresDeCategoria(data::Programa& programa, const QString& CodArticulo,
                             const QString& CodCategoria)
{
    for (const Plantilla& borra : {SqlBorraValores, SqlBorraComponentes, SqlBorraOperaciones})
        EjecutaLocal(programa,
                     borra({{"CodArticulo", CodArticulo}, {"CodCategoria", CodCategoria}}));
}

} // namespace tolmo::configurator
