#include "configurator/copia.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;
using data::Texto;

/// A field of the selection and its clause.
struct Clausula {
    QString SeleccionCopia::*campo;
    Plantilla texto;
};

// clang-format off
constexpr Clausula Clausulas[] = {
    {&SeleccionCopia::TxtArtDes, Plantilla(u" AND CODARTICULO>='{texto}' ")},
    {&SeleccionCopia::TxtArtHas, Plantilla(u" AND CODARTICULO<='{texto}' ")},
    {&SeleccionCopia::TxtCodAlternativoDesde, Plantilla(u" AND CODALTERNATIVO>='{texto}' ")},
    {&SeleccionCopia::TxtCodAlternativoHasta, Plantilla(u" AND CODALTERNATIVO<='{texto}' ")},
    {&SeleccionCopia::TxtGrupo, Plantilla(u" AND CODGRUPO='{texto}' ")},
    {&SeleccionCopia::TxtGrupo2, Plantilla(u" AND GRUPO2='{texto}' ")},
    {&SeleccionCopia::TxtGrupo3, Plantilla(u" AND GRUPO3='{texto}' ")},
    {&SeleccionCopia::TxtGrupo4, Plantilla(u" AND GRUPO4='{texto}' ")},
    {&SeleccionCopia::TxtProvHab, Plantilla(u" AND CODPROVHAB='{texto}' ")}};

constexpr Plantilla SqlDestinos(u"SELECT * FROM {PS_TABLAARTIC} WHERE CODARTICULO<>'{X}'{clausulas}");
constexpr Plantilla SqlBorraCategorias(u"DELETE FROM PS_CONF_ART_CAT WHERE CODARTICULO='{Y}'");
constexpr Plantilla SqlBorraValores(u"DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='{Y}'");
constexpr Plantilla SqlCopiaCategorias(u"INSERT INTO PS_CONF_ART_CAT  SELECT '{Y}' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT WHERE  CODARTICULO='{X}'");
constexpr Plantilla SqlCopiaValores(u"INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO) SELECT '{Y}' AS CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO FROM PS_CONF_ART_VAL WHERE  CODARTICULO='{X}'");

const QString SinSeleccion = QStringLiteral("Especificar antes la selección.");
const QString PreguntaReemplazar = QStringLiteral("Atención, la configuración reemplazará la que tengan \rlos artículos de la selección, ¿Continuar?");
const QString Concluida = QStringLiteral("Exportación concluida");
// clang-format on

void CopiaEn(data::Programa& programa, const QString& origen, const QString& destino)
{
    EjecutaLocal(programa, SqlBorraCategorias({{"Y", destino}}));
    EjecutaLocal(programa, SqlBorraValores({{"Y", destino}}));
    EjecutaLocal(programa, SqlCopiaCategorias({{"Y", destino}, {"X", origen}}));
    EjecutaLocal(programa, SqlCopiaValores({{"Y", destino}, {"X", origen}}));
}

} // namespace

QString ClausulasDe(const SeleccionCopia& seleccion)
{
    QString clausulas;
    for (const Clausula& clausula : Clausulas)
        if (const QString& texto = seleccion.*clausula.campo; !texto.isEmpty())
            clausulas += clausula.texto({{"texto", texto}});
    return clausulas;
}

bool CopiaConfiguracion(data::Programa& programa, data::Progreso& progreso,
                        const QString& CodArticulo, const SeleccionCopia& seleccion)
{
    const QString clausulas = ClausulasDe(seleccion);
    if (clausulas.isEmpty()) {
        Avisa(programa, SinSeleccion);
        return false;
    }
    if (!Pregunta(programa, PreguntaReemplazar))
        return false;
    auto destinos =
        LeeLocal(programa, SqlDestinos({{"PS_TABLAARTIC", programa.parametros.PS_TABLAARTIC},
                                        {"X", CodArticulo},
                                        {"clausulas", clausulas}}));
    for (; !destinos.Fin(); destinos.Siguiente()) {
        CopiaEn(programa, CodArticulo, Texto(destinos["CODARTICULO"]));
        progreso.Avanza(destinos.AbsolutePosition(), destinos.RecordCount());
        progreso.CedeEventos();
    }
    programa.avisos.Muestra(Concluida, data::estilo::Informacion);
    return true;
}

} // namespace tolmo::configurator
