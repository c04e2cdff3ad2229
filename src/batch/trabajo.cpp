#include "batch/trabajo.h"
#include "data/rutas.h"
#include <QFile>

namespace tolmo::batch {

FicherosTrabajo::FicherosTrabajo(const data::Programa& programa)
    : Sentencias(programa.RutaActual(QStringLiteral("\\sentencias.sql"))),
      ListaImgBorra(programa.RutaActual(QStringLiteral("\\imgborra.txt"))),
      ListaImgFam(programa.RutaActual(QStringLiteral("\\imgfam.txt"))),
      ListaImgArt(programa.RutaActual(QStringLiteral("\\imgart.txt"))),
      ListaCreaPath(programa.RutaActual(QStringLiteral("\\creapath.txt")))
{
}

void FicherosTrabajo::BorraTodos() const
{
    for (const QString& ruta : {Sentencias, ListaImgBorra, ListaImgFam, ListaImgArt, ListaCreaPath})
        BorraFicheroLocal(ruta);
}

QString NombreFicheroLog(const data::Programa& programa)
{
    return programa.RutaActual(QStringLiteral("\\HISTORICOWEB\\") +
                               programa.reloj.Hoy().toString(QStringLiteral("yyyyMMdd")) +
                               QStringLiteral("VUELCOPRESTASHOP.TXT"));
}

void BorraFicheroLocal(const QString& ruta)
{
    if (data::ExisteFichero(ruta))
        QFile::remove(data::RutaLocal(ruta));
}

} // namespace tolmo::batch
