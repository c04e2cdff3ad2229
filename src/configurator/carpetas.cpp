#include "configurator/carpetas.h"
#include "data/rutas.h"
#include "data/unidades.h"
#include <QDir>
#include <QFileInfo>

namespace tolmo::configurator {
namespace {

const QString RaizPropia = QStringLiteral("\\");

QString ConBarrasInversas(QString ruta)
{
    return ruta.replace(u'/', u'\\');
}

/// "C:" is a drive's name, and the current folder of that drive; its root is "C:\".
QString ComoRaiz(const QString& unidad)
{
    const QString raiz = ConBarrasInversas(unidad);
    return raiz.endsWith(u':') ? raiz + u'\\' : raiz;
}

bool EstaBajo(const QString& carpeta, const QString& raiz)
{
    return carpeta.compare(raiz, Qt::CaseInsensitive) == 0 ||
           carpeta.startsWith(Dentro(raiz, {}), Qt::CaseInsensitive);
}

QStringList Lista(const QString& carpeta, const QStringList& mascaras, QDir::Filters clase)
{
    QStringList nombres =
        QDir(data::RutaLocal(carpeta))
            .entryList(mascaras, clase | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    // In a path it would part the name in two.
    nombres.removeIf([](const QString& nombre) { return nombre.contains(u'\\'); });
    return nombres;
}

} // namespace

QStringList Raices()
{
    QStringList raices;
#ifdef Q_OS_WIN
    for (const QFileInfo& unidad : QDir::drives())
        raices << ConBarrasInversas(unidad.filePath());
#else
    for (const data::Unidad& unidad : data::UnidadesMapeadas())
        raices << ComoRaiz(unidad.raiz);
    raices << RaizPropia;
#endif
    return raices;
}

QString RaizDe(const QString& carpeta)
{
    QString mejor;
    for (const QString& raiz : Raices())
        if (raiz.size() > mejor.size() && EstaBajo(carpeta, raiz))
            mejor = raiz;
    return mejor;
}

QString NombreDeRaiz(const QString& raiz)
{
    if (raiz == RaizPropia)
        return QStringLiteral("/");
    return raiz.endsWith(u'\\') ? raiz.chopped(1) : raiz;
}

QString DesdeSuRaiz(const QString& carpetaLocal)
{
    const QString carpeta = ConBarrasInversas(carpetaLocal);
    QString mejor;
    QString desdeLaMejor = ComoRaiz(carpeta);
    for (const data::Unidad& unidad : data::UnidadesMapeadas()) {
        const QString suya = Dentro(ConBarrasInversas(unidad.carpeta), {});
        if (suya.size() <= mejor.size() || !Dentro(carpeta, {}).startsWith(suya))
            continue;
        mejor = suya;
        desdeLaMejor = Dentro(ComoRaiz(unidad.raiz), carpeta.mid(suya.size()));
    }
    return desdeLaMejor;
}

bool EstaLaCarpeta(const QString& carpeta)
{
    return QFileInfo(data::RutaLocal(carpeta)).isDir();
}

bool SeLeeLaCarpeta(const QString& carpeta)
{
    const QFileInfo local(data::RutaLocal(carpeta));
    return local.isDir() && local.isReadable() && local.isExecutable();
}

QString Dentro(const QString& carpeta, const QString& nombre)
{
    return carpeta.endsWith(u'\\') ? carpeta + nombre : carpeta + u'\\' + nombre;
}

QString Superior(const QString& carpeta)
{
    const QString raiz = RaizDe(carpeta);
    const qsizetype barra = carpeta.lastIndexOf(u'\\');
    return barra < raiz.size() ? raiz : carpeta.left(barra);
}

QStringList Subcarpetas(const QString& carpeta)
{
    return Lista(carpeta, {}, QDir::Dirs);
}

QStringList Ficheros(const QString& carpeta, const QStringList& mascaras)
{
    return Lista(carpeta, mascaras, QDir::Files);
}

FiltroDeFicheros::FiltroDeFicheros(const QString& texto)
    : mascaras_(texto.section(u'|', texto.contains(u'|') ? 1 : 0, texto.contains(u'|') ? 1 : 0)
                    .split(u';', Qt::SkipEmptyParts))
{
    for (QString& mascara : mascaras_) {
        mascara = mascara.trimmed();
        if (mascara == QLatin1String("*.*"))
            mascara = QStringLiteral("*");
    }
}

bool FiltroDeFicheros::EsDeProgramas() const
{
    return mascaras_.contains(QStringLiteral("*.exe"), Qt::CaseInsensitive);
}

QString FiltroDeFicheros::Valor(const QString& ruta) const
{
    return EsDeProgramas() ? u'"' + ruta + u'"' : ruta;
}

} // namespace tolmo::configurator
