#include "configurator/carga_configurador.h"
#include "data/consultas.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;

/// A database in which the management program's tables are reached through pass-through queries
/// lists this name.
const QString EnPasoATraves = QStringLiteral("PS_CONFIGURADOS_EN_PASO_A_TRAVES");

/// Stored queries of the company's database, run by name; nothing is known of their text.
constexpr Plantilla ConsultasGuardadas[] = {
    Plantilla(u"PS_BORRA_PS_CONF_ART_CAT"), Plantilla(u"PS_BORRA_PS_CONF_ART_VAL"),
    Plantilla(u"PS_CARGA_PS_CONF_ART_CAT"), Plantilla(u"PS_CARGA_PS_CONF_ART_VAL"),
    Plantilla(u"PS_QUITAR_VALORES_NO_USADOS")};

// clang-format off
/// The management program has no weight increment, so a combination never adds weight.
constexpr Plantilla Sentencias[] = {
    Plantilla(u"DELETE FROM PS_CONF_ART_CAT"),
    Plantilla(u"DELETE FROM PS_CONF_ART_VAL"),
    Plantilla(u"insert into PS_CONF_ART_CAT (CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPO) SELECT CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPOVALOR FROM CONF_ART_CAT"),
    Plantilla(u"insert into PS_CONF_ART_VAL (CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, INC_PVP, INC_PVP2, INC_PVP3, INC_PVP4, INC_PVP5, PESO, FOTO)SELECT CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, PVP1, PVP2, PVP3, PVP4, PVP5, 0, LINK FROM CONF_ART_VAL"),
    Plantilla(u"DELETE FROM PS_CONF_ART_VAL WHERE NOT EXISTS (SELECT 'C' FROM PS_CONF_ART_CAT WHERE PS_CONF_ART_VAL.CODCATEGORIA=PS_CONF_ART_CAT.CODCATEGORIA AND PS_CONF_ART_VAL.CODARTICULO=PS_CONF_ART_CAT.CODARTICULO)")};
// clang-format on

} // namespace

void CargaDatosConfigurador(data::Programa& programa)
{
    const bool guardadas = programa.ConexionLocal.ExisteTabla(EnPasoATraves);
    for (const Plantilla& orden : guardadas ? ConsultasGuardadas : Sentencias) {
        QString sql = orden();
        data::EjecutaSql(programa, sql, programa.ConexionLocal);
    }
}

} // namespace tolmo::configurator
