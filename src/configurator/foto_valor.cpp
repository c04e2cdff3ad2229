#include "configurator/foto_valor.h"
#include "configurator/apoyo_local.h"
#include "data/plantilla.h"

namespace tolmo::configurator {
namespace {

using data::Plantilla;

// clang-format off
constexpr Plantilla SqlGuardaFoto(u"UPDATE PS_CONF_ART_VAL SET FOTO='{ruta}' WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}' AND VALOR='{valor}'");
constexpr Plantilla SqlQuitaFoto(u"UPDATE PS_CONF_ART_VAL SET FOTO=NULL WHERE CODARTICULO='{CodArticulo}' AND CODCATEGORIA='{CodCategoria}' AND VALOR='{valor}'");
constexpr Plantilla PreguntaQuitar(u"Desea eliminar la imagen de la Categoria: {CodCategoria} Valor: {valor}?");
constexpr Plantilla FicheroDeFoto(u"{RutaBase}\\FOTOS\\{CodArticulo}{CodCategoria}{valor}.JPG");
const QString RutaLarga = QStringLiteral("La ruta de la fotografía no puede ser de más de 255 caracteres");
// clang-format on

/// As the picker gives it where the disks have no letters.
bool EsDesdeLaRaiz(const QString& ruta)
{
    const bool deRed = ruta.startsWith(QLatin1String("\\\\"));
    return !deRed && (ruta.startsWith(u'\\') || ruta.startsWith(u'/'));
}

} // namespace

bool CabeFoto(data::Programa& programa, const QString& ruta)
{
    if (ruta.size() <= AnchoFoto)
        return true;
    Avisa(programa, RutaLarga);
    return false;
}

void GuardaFoto(data::Programa& programa, const ValorDeArticulo& de, const QString& ruta)
{
    EjecutaLocal(programa, SqlGuardaFoto({{"ruta", ruta},
                                          {"CodArticulo", de.CodArticulo},
                                          {"CodCategoria", de.CodCategoria},
                                          {"valor", de.valor}}));
}

bool QuitaFoto(data::Programa& programa, const ValorDeArticulo& de)
{
    if (!Pregunta(programa,
                  PreguntaQuitar({{"CodCategoria", de.CodCategoria}, {"valor", de.valor}})))
        return false;
    EjecutaLocal(programa, SqlQuitaFoto({{"CodArticulo", de.CodArticulo},
                                         {"CodCategoria", de.CodCategoria},
                                         {"valor", de.valor}}));
    return true;
}

QString RutaDeFoto(const data::Programa& programa, const ValorDeArticulo& de, const QString& Foto)
{
    if (Foto.contains(u':') || EsDesdeLaRaiz(Foto))
        return Foto;
    return FicheroDeFoto({{"RutaBase", programa.RutaBase},
                          {"CodArticulo", de.CodArticulo},
                          {"CodCategoria", de.CodCategoria},
                          {"valor", de.valor}});
}

} // namespace tolmo::configurator
