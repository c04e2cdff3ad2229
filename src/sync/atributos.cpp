#include "sync/atributos.h"
#include "sync/corrida.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlBorraGrupos(u"DELETE FROM ps_attribute_group||");
constexpr Plantilla SqlBorraTextosGrupo(u"DELETE FROM ps_attribute_group_lang||");
constexpr Plantilla SqlBorraTiendasGrupo(u"DELETE FROM ps_attribute_group_shop||");
constexpr Plantilla SqlCategorias(u"SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES_CAT.CODCATEGORIA) AS NCAT FROM M_OPCIONALES_CAT ORDER BY CODCATEGORIA");
constexpr Plantilla SqlInsertaGrupo(u"INSERT INTO ps_attribute_group(ID_ATTRIBUTE_GROUP,IS_COLOR_GROUP,GROUP_TYPE,POSITION) VALUES ({NCAT},0,'select',{NCAT})||");
constexpr Plantilla SqlInsertaTextoGrupo(u"INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES ({NCAT},{lang},'{Descripcion}','{Descripcion}')||");
constexpr Plantilla SqlInsertaTiendaGrupo(u"INSERT INTO ps_attribute_group_shop(ID_ATTRIBUTE_GROUP,ID_SHOP) VALUES ({NCAT},1)||");

constexpr Plantilla SqlBorraAtributos(u"DELETE FROM ps_attribute||");
constexpr Plantilla SqlBorraTextosAtributo(u"DELETE FROM ps_attribute_lang||");
constexpr Plantilla SqlBorraTiendasAtributo(u"DELETE FROM ps_attribute_shop||");
constexpr Plantilla SqlOpciones(u"SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES.CODCATEGORIA) AS NCAT ,(SELECT COUNT(*) FROM M_OPCIONALES AS OPC2 WHERE OPC2.CODCATEGORIA=M_OPCIONALES.CODCATEGORIA AND OPC2.CODOPCIONAL<=M_OPCIONALES.CODOPCIONAL) AS NOPC  FROM M_OPCIONALES ORDER BY DESCRIPCION");
constexpr Plantilla SqlInsertaAtributo(u"INSERT INTO ps_attribute (ID_ATTRIBUTE,ID_ATTRIBUTE_GROUP,COLOR,POSITION) VALUES ({idatributo},{NCAT},'#000000',{posicion})||");
constexpr Plantilla SqlInsertaTextoAtributo(u"INSERT INTO ps_attribute_lang (ID_ATTRIBUTE,ID_LANG,NAME) VALUES ({idatributo},{lang},'{Descripcion}')||");
constexpr Plantilla SqlInsertaTiendaAtributo(u"INSERT INTO ps_attribute_shop (ID_ATTRIBUTE,ID_SHOP) VALUES ({idatributo},1)||");

constexpr Plantilla SqlRangos(u"SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<='{categoria}') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='{categoria}' AND CODOPCIONAL<='{valor}'");
// clang-format on

constexpr int FilasPorLote = 200;
constexpr int AnchoDeRango = 3;

/// The one local description goes to every language, its quotes as they stand.
void EscribeGrupo(Corrida& corrida, const data::Recordset& categoria)
{
    const QString ncat = Texto(categoria["NCAT"]);
    const QString descripcion = TextoO(categoria["Descripcion"]);
    corrida.lote.EscribeSentencia(SqlInsertaGrupo({{"NCAT", ncat}}));
    for (const data::FichaIdioma& idioma : corrida.Parametros().Idiomas)
        corrida.lote.EscribeSentencia(SqlInsertaTextoGrupo(
            {{"NCAT", ncat}, {"lang", Texto(idioma.Idioma)}, {"Descripcion", descripcion}}));
    corrida.lote.EscribeSentencia(SqlInsertaTiendaGrupo({{"NCAT", ncat}}));
}

void EscribeAtributo(Corrida& corrida, const data::Recordset& opcion)
{
    const QString ncat = Texto(opcion["NCAT"]);
    const QString idatributo = IdAtributo(ncat, Texto(opcion["NOPC"]));
    const QString descripcion = TextoO(opcion["Descripcion"]);
    // The position counts over all groups, in the order of the descriptions.
    corrida.lote.EscribeSentencia(
        SqlInsertaAtributo({{"idatributo", idatributo},
                            {"NCAT", ncat},
                            {"posicion", Texto(opcion.AbsolutePosition())}}));
    for (const data::FichaIdioma& idioma : corrida.Parametros().Idiomas)
        corrida.lote.EscribeSentencia(SqlInsertaTextoAtributo({{"idatributo", idatributo},
                                                               {"lang", Texto(idioma.Idioma)},
                                                               {"Descripcion", descripcion}}));
    corrida.lote.EscribeSentencia(SqlInsertaTiendaAtributo({{"idatributo", idatributo}}));
}

using EscribeFila = void (*)(Corrida&, const data::Recordset&);

/// Writes every row and hands over a batch each 200 and at the end. Without rows there is none:
/// the sentences that emptied the tables then go out with the next batch.
void RecorreMaestro(Corrida& corrida, const Plantilla& sql, EscribeFila escribe,
                    const QString& titulo)
{
    auto filas = LeeLocal(corrida, sql());
    while (!filas.Fin()) {
        escribe(corrida, filas);
        const int posicion = filas.AbsolutePosition();
        corrida.progreso.Avanza(posicion, filas.RecordCount());
        filas.Siguiente();
        if (posicion % FilasPorLote == 0 || filas.Fin())
            VuelcaLote(corrida, titulo);
        corrida.progreso.CedeEventos();
    }
}

} // namespace

void CargaAtributos(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("CARGANDO TABLA ATRIBUTOS Y VALORES"));
    for (const Plantilla& borra : {SqlBorraGrupos, SqlBorraTextosGrupo, SqlBorraTiendasGrupo})
        corrida.lote.EscribeSentencia(borra());
    RecorreMaestro(corrida, SqlCategorias, EscribeGrupo,
                   QStringLiteral("EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos"));
    for (const Plantilla& borra :
         {SqlBorraAtributos, SqlBorraTextosAtributo, SqlBorraTiendasAtributo})
        corrida.lote.EscribeSentencia(borra());
    RecorreMaestro(corrida, SqlOpciones, EscribeAtributo,
                   QStringLiteral("EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones"));
}

QString IdAtributo(const QString& NCAT, const QString& NOPC)
{
    return data::RellenaCeros(NCAT, AnchoDeRango) + data::RellenaCeros(NOPC, AnchoDeRango);
}

std::optional<QString> BuscadorDeAtributos::operator()(const QString& categoria,
                                                       const QString& valor)
{
    const std::pair clave(categoria, valor);
    const auto hallado = hallados_.constFind(clave);
    if (hallado != hallados_.constEnd())
        return *hallado;
    return *hallados_.insert(clave, Pregunta(categoria, valor));
}

std::optional<QString> BuscadorDeAtributos::Pregunta(const QString& categoria,
                                                     const QString& valor) const
{
    const auto rangos = LeeLocal(corrida_, SqlRangos({{"categoria", categoria}, {"valor", valor}}));
    if (rangos.Fin())
        return std::nullopt;
    return IdAtributo(Texto(rangos["NCAT"]), Texto(rangos["NOPC"]));
}

} // namespace tolmo::sync
