#include "data/rutas.h"
#include "data/unidades.h"
#include <QDir>
#include <QFileInfo>
#include <optional>

namespace tolmo::data {
namespace {

QString ConBarras(QString ruta)
{
    return ruta.replace(u'\\', u'/');
}

bool EstaBajo(const QString& ruta, const QString& raiz)
{
    if (!ruta.startsWith(raiz, Qt::CaseInsensitive))
        return false;
    // "C:a.jpg" lies on the drive too; a share's name goes as far as the next separator.
    return ruta.size() == raiz.size() || raiz.endsWith(u':') || ruta[raiz.size()] == u'/';
}

/// Of two roots that fit, the longer one is meant: a share inside a server that is mapped whole.
QString PonUnidad(const QString& ruta)
{
    std::optional<Unidad> elegida;
    for (const Unidad& unidad : UnidadesMapeadas()) {
        const bool mejor = !elegida || unidad.raiz.size() > elegida->raiz.size();
        if (mejor && EstaBajo(ruta, unidad.raiz))
            elegida = unidad;
    }
    if (!elegida)
        return ruta;
    QString resto = ruta.mid(elegida->raiz.size());
    while (resto.startsWith(u'/'))
        resto.remove(0, 1);
    if (resto.isEmpty())
        return elegida->carpeta;
    return elegida->carpeta.endsWith(u'/') ? elegida->carpeta + resto
                                           : elegida->carpeta + u'/' + resto;
}

QString Bajo(const QString& carpeta, const QString& nombre)
{
    if (carpeta.isEmpty())
        return nombre;
    return carpeta.endsWith(u'/') ? carpeta + nombre : carpeta + u'/' + nombre;
}

/// The names in `carpeta` that are `nombre` in any case: the exact one first, the others in order.
QStringList Candidatos(const QString& carpeta, const QString& nombre)
{
    QStringList candidatos;
    if (QFileInfo::exists(Bajo(carpeta, nombre)))
        candidatos << nombre;
    const QDir dir(carpeta.isEmpty() ? QStringLiteral(".") : carpeta);
    for (const QString& otro : dir.entryList(
             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name))
        if (otro != nombre && otro.compare(nombre, Qt::CaseInsensitive) == 0)
            candidatos << otro;
    return candidatos;
}

/// Follows `nombres` down from `carpeta`, going back where two names differ only in case.
std::optional<QString> Sigue(const QString& carpeta, const QStringList& nombres)
{
    if (nombres.isEmpty())
        return carpeta;
    for (const QString& nombre : Candidatos(carpeta, nombres.front()))
        if (auto hallada = Sigue(Bajo(carpeta, nombre), nombres.mid(1)))
            return hallada;
    return std::nullopt;
}

std::optional<QString> SinMirarMayusculas(const QString& ruta)
{
    if (QFileInfo::exists(ruta))
        return ruta;
    const QString raiz = ruta.startsWith(u'/') ? QStringLiteral("/") : QString();
    return Sigue(raiz, ruta.split(u'/', Qt::SkipEmptyParts));
}

} // namespace

QString RutaLocal(const QString& ruta)
{
#ifdef Q_OS_WIN
    return ConBarras(ruta);
#else
    QString mapeada = PonUnidad(ConBarras(ruta));
    if (mapeada.isEmpty())
        return mapeada;
    if (const auto hallada = SinMirarMayusculas(mapeada))
        return *hallada;
    // A file that is about to be written goes into the folder that is there.
    const qsizetype corte = mapeada.lastIndexOf(u'/');
    if (corte > 0)
        if (const auto carpeta = SinMirarMayusculas(mapeada.left(corte)))
            return Bajo(*carpeta, mapeada.mid(corte + 1));
    return mapeada;
#endif
}

bool ExisteFichero(const QString& ruta)
{
    return QFileInfo(RutaLocal(ruta)).isFile();
}

QString NombreEnDisco(const QString& ruta)
{
    return ExisteFichero(ruta) ? QFileInfo(RutaLocal(ruta)).fileName() : QString();
}

QString NombreFichero(const QString& ruta)
{
    const qsizetype barra = std::max(ruta.lastIndexOf(u'\\'), ruta.lastIndexOf(u'/'));
    return ruta.mid(barra + 1);
}

} // namespace tolmo::data
