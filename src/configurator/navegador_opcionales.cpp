#include "configurator/navegador_opcionales.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"
#include <QStringList>

namespace tolmo::configurator {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlCategorias(u"SELECT * FROM M_OPCIONALES_CAT");
constexpr Plantilla SqlOpciones(u"select * from M_OPCIONALES WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlNingunaOpcion(u"select * from M_OPCIONALES WHERE FALSE");
constexpr Plantilla Criterio(u"CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlOpcion(u"SELECT * FROM M_OPCIONALES WHERE CodCategoria='{CodCategoria}' AND CodOpcional='{CodOpcional}'");
constexpr Plantilla SqlEnArticulos(u"SELECT * FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlCambiaDescripcion(u"UPDATE PS_CONF_ART_CAT SET DESCRIPCION='{descripcion}' WHERE CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlBorraCategoria(u"DELETE FROM PS_CONF_ART_CAT WHERE  CODCATEGORIA='{CodCategoria}'");
constexpr Plantilla SqlBorraRelacion(u"DELETE FROM REL_ART_OPC WHERE  CODCATEGORIA='{CodCategoria}' AND CODOPCIONAL='{CodOpcional}'");
constexpr Plantilla SqlBorraValores(u"DELETE FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='{CodCategoria}' AND VALOR='{CodOpcional}'");

const QString ValorDeTres = QStringLiteral("El valor debe tener obligatoriamente 3 caracteres");
const QString CodigoDeTres = QStringLiteral("El código debe tener obligatoriamente 3 caracteres");
const QString ValorAjeno = QStringLiteral("El valor debe pertenecer a la categoria seleccionada");
const QString PreguntaPropagar = QStringLiteral("¿Desea actualizar esta categoria en las configuraciones existentes?");
const QString PreguntaCategoria = QStringLiteral("La categoría se eliminará también en los artículos que lo contengan, ¿Continuar?");
const QString PreguntaOpcional = QStringLiteral("El opcional se eliminará también en los artículos que lo contengan, ¿Continuar?");
// clang-format on

constexpr int LargoCodigo = 3;

bool TieneSuLargo(data::Programa& programa, const QString& texto, const QString& mensaje)
{
    if (texto.isEmpty() || texto.size() == LargoCodigo)
        return true;
    Avisa(programa, mensaje);
    return false;
}

bool EsOpcionDeLaCategoria(data::Programa& programa, const FilasActuales& actuales)
{
    const QString opcion =
        SqlOpcion({{"CodCategoria", actuales.CodCategoria}, {"CodOpcional", actuales.CodOpcional}});
    if (!LeeLocal(programa, opcion).Fin())
        return true;
    Avisa(programa, ValorAjeno);
    return false;
}

bool EsAfirmativo(const QString& texto)
{
    static const QStringList Afirmativos = {QStringLiteral("S"), QStringLiteral("SI"),
                                            QStringLiteral("SÍ"), QStringLiteral("TRUE"),
                                            QStringLiteral("1")};
    return Afirmativos.contains(texto.toUpper());
}

} // namespace

QString SqlCategoriasMaestras()
{
    return SqlCategorias();
}

QString SqlOpcionesMaestras(const std::optional<QString>& CodCategoria)
{
    return CodCategoria ? SqlOpciones({{"CodCategoria", *CodCategoria}}) : SqlNingunaOpcion();
}

QString CriterioDeCategoria(const QString& CodCategoria)
{
    return Criterio({{"CodCategoria", CodCategoria}});
}

data::Cambios OpcionNueva(const QString& CodCategoria)
{
    return {{QStringLiteral("CODCATEGORIA"), CodCategoria}};
}

Tecleado CompruebaColumnaCategoria(data::Programa& programa, int columna, const QString& texto,
                                   const FilasActuales& actuales)
{
    Tecleado tecleado{.aceptado = true, .texto = texto};
    switch (columna) {
    case CODCATEGORIA:
        tecleado.aceptado = TieneSuLargo(programa, texto, ValorDeTres);
        tecleado.otras = {{QStringLiteral("OBLIGATORIO"), false}};
        break;
    case VALORDEF:
        tecleado.aceptado =
            TieneSuLargo(programa, texto, ValorDeTres) && EsOpcionDeLaCategoria(programa, actuales);
        break;
    case OBLIGATORIO:
        tecleado.texto = data::Texto(data::Valor(EsAfirmativo(texto)));
        break;
    case RDESDE:
    case RHASTA:
        tecleado.aceptado = TieneSuLargo(programa, texto, ValorDeTres);
        break;
    default:
        break;
    }
    return tecleado;
}

bool CompruebaColumnaOpcion(data::Programa& programa, int columna, const QString& texto)
{
    return columna != CODOPCIONAL || TieneSuLargo(programa, texto, CodigoDeTres);
}

void PropagaDescripcion(data::Programa& programa, const QString& CodCategoria,
                        const QString& descripcion)
{
    if (LeeLocal(programa, SqlEnArticulos({{"CodCategoria", CodCategoria}})).Fin() ||
        !Pregunta(programa, PreguntaPropagar))
        return;
    EjecutaLocal(programa, SqlCambiaDescripcion(
                               {{"descripcion", descripcion}, {"CodCategoria", CodCategoria}}));
}

bool PreparaBajaDeCategoria(data::Programa& programa, const QString& CodCategoria)
{
    if (!Pregunta(programa, PreguntaCategoria))
        return false;
    EjecutaLocal(programa, SqlBorraCategoria({{"CodCategoria", CodCategoria}}));
    return true;
}

bool PreparaBajaDeOpcion(data::Programa& programa, const QString& CodCategoria,
                         const QString& CodOpcional)
{
    if (!Pregunta(programa, PreguntaOpcional))
        return false;
    for (const Plantilla& borra : {SqlBorraRelacion, SqlBorraValores})
        EjecutaLocal(programa,
                     borra({{"CodCategoria", CodCategoria}, {"CodOpcional", CodOpcional}}));
    return true;
}

std::optional<QString> CodigoDeRetorno(ModoNavegador Modo, const data::Recordset& categorias,
                                       const data::Recordset& opciones)
{
    const bool valores = Modo == ModoNavegador::Valores;
    const data::Recordset& filas = valores ? opciones : categorias;
    if (filas.Fin() || filas.Principio())
        return std::nullopt;
    return data::Texto(filas[valores ? "CODOPCIONAL" : "CODCATEGORIA"]);
}

} // namespace tolmo::configurator
