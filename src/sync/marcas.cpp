#include "sync/marcas.h"
#include "sync/corrida.h"

namespace tolmo::sync {
namespace {

using data::Plantilla;
using data::Texto;

// clang-format off
constexpr Plantilla SqlMarcas(u"SELECT * FROM M_GRUPART WHERE PARTICIPA={PSGrupoMarcas}");
constexpr Plantilla SqlBorraMarcas(u"DELETE FROM ps_manufacturer||");
constexpr Plantilla SqlBorraTextos(u"DELETE FROM ps_manufacturer_lang||");
constexpr Plantilla SqlBorraTiendas(u"DELETE FROM ps_manufacturer_shop||");
constexpr Plantilla SqlInsertaMarca(u"INSERT INTO ps_manufacturer (id_manufacturer,name,date_add,date_upd,active) VALUES ({CODGRUPO},'{nombre}',{hoy},{hoy},1)||");
constexpr Plantilla SqlInsertaTienda(u"INSERT INTO ps_manufacturer_shop (id_manufacturer,id_shop) VALUES ({CODGRUPO},1)||");
constexpr Plantilla SqlInsertaTexto(u"INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES ({CODGRUPO},{lang},'{nombre}','{nombre}','{nombre}','{nombre}','{nombre}')||");
// clang-format on

void EscribeMarca(Corrida& corrida, const data::Recordset& grupo)
{
    const QString codigo = Texto(grupo["CODGRUPO"]);
    const QString nombre = TextoO(grupo["Descripcion"]);
    corrida.lote.EscribeSentencia(SqlInsertaMarca(
        {{"CODGRUPO", codigo}, {"nombre", nombre}, {"hoy", HoySql(corrida.programa)}}));
    corrida.lote.EscribeSentencia(SqlInsertaTienda({{"CODGRUPO", codigo}}));
    for (const data::FichaIdioma& idioma : corrida.Parametros().Idiomas)
        corrida.lote.EscribeSentencia(SqlInsertaTexto(
            {{"CODGRUPO", codigo}, {"lang", Texto(idioma.Idioma)}, {"nombre", nombre}}));
}

} // namespace

void ActualizaMarcas(Corrida& corrida)
{
    corrida.RegistraLog(QStringLiteral("CARGANDO MARCAS FABRICANTES"));
    auto grupos =
        LeeLocal(corrida, SqlMarcas({{"PSGrupoMarcas", corrida.Parametros().PSGrupoMarcas}}));
    for (const Plantilla& borra : {SqlBorraMarcas, SqlBorraTextos, SqlBorraTiendas})
        corrida.lote.EscribeSentencia(borra());
    for (; !grupos.Fin(); grupos.Siguiente()) {
        EscribeMarca(corrida, grupos);
        corrida.progreso.Avanza(grupos.AbsolutePosition(), grupos.RecordCount());
        corrida.progreso.CedeEventos();
    }
    // One batch of whatever size: in two, a failure would leave half of the makers.
    VuelcaLote(corrida, QStringLiteral("SINCRONIZANDO MARCAS FABRICANTES"));
}

} // namespace tolmo::sync
