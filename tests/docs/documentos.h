#pragma once
#include <QDir>
#include <QFile>
#include <QString>

/// A text file of the project in UTF-8, by its path from the root; empty when it isn't there.
inline QString LeeDelProyecto(const QString& ruta)
{
    QFile fichero(QDir(KOV_FUENTES).filePath(ruta));
    return fichero.open(QIODevice::ReadOnly) ? QString::fromUtf8(fichero.readAll()) : QString();
}
