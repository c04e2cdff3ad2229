#include "feed/configuracion.h"
#include "data/codificacion.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include "data/programa.h"
#include "data/rutas.h"
#include <QFile>

namespace tolmo::feed {
namespace {

// clang-format off
constexpr data::Plantilla Ruta(u"\\PHPSHOP\\{CodigoEmpresa}solostocks_config.txt");
constexpr data::Plantilla NoSeLee(u"No se puede leer el fichero de configuración {ruta}.");
// clang-format on

constexpr qsizetype LargoCabecera = 10;

struct ClaveDeTexto {
    QLatin1String cabecera;
    QString Configuracion::*valor;
};

constexpr ClaveDeTexto ClavesDeTexto[] = {
    {QLatin1String("COMPANY:  "), &Configuracion::Company},
    {QLatin1String("SUFNOTAS: "), &Configuracion::SufijoNotas},
    {QLatin1String("SECTOR:   "), &Configuracion::CampoSector},
    {QLatin1String("PRECIO:   "), &Configuracion::CampoPrecio},
    {QLatin1String("KEYWORDS: "), &Configuracion::CampoKeywords},
};

void InterpretaLinea(const QString& linea, Configuracion& configuracion)
{
    const QString cabecera = linea.left(LargoCabecera);
    const QString valor = linea.mid(LargoCabecera);
    for (const ClaveDeTexto& clave : ClavesDeTexto)
        if (cabecera == clave.cabecera)
            configuracion.*clave.valor = valor;
    if (cabecera == QLatin1String("CODALT:   "))
        configuracion.UsaCodAlternativo = valor == u'S';
    if (cabecera == QLatin1String("COMB:     "))
        configuracion.GeneraCombinaciones = valor != u'N';
}

} // namespace

QString RutaConfiguracion(const data::Programa& programa)
{
    return programa.RutaActual(Ruta({{"CodigoEmpresa", programa.CodigoEmpresa()}}));
}

Configuracion InterpretaConfiguracion(const QString& texto)
{
    QString lineas = texto;
    lineas.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
    Configuracion configuracion;
    for (const QString& linea : lineas.split(u'\n'))
        InterpretaLinea(linea, configuracion);
    return configuracion;
}

Configuracion LeeConfiguracion(const data::Programa& programa)
{
    const QString ruta = RutaConfiguracion(programa);
    QFile fichero(data::RutaLocal(ruta));
    if (!fichero.open(QIODevice::ReadOnly))
        throw data::ErrorFichero(NoSeLee({{"ruta", ruta}}));
    return InterpretaConfiguracion(data::DesdeWindows1252(fichero.readAll()));
}

} // namespace tolmo::feed
