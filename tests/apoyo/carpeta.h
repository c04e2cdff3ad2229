#pragma once
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

/// A folder that goes with the test.
struct CarpetaDePrueba {
    QTemporaryDir carpeta{};

    QString Ruta(const QString& nombre = {}) const
    {
        return nombre.isEmpty() ? carpeta.path() : carpeta.filePath(nombre);
    }
    bool Existe(const QString& nombre) const { return QFile::exists(Ruta(nombre)); }
    QByteArray Lee(const QString& nombre) const
    {
        QFile fichero(Ruta(nombre));
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    void Escribe(const QString& nombre, const QByteArray& contenido) const
    {
        QDir().mkpath(QFileInfo(Ruta(nombre)).path());
        QFile fichero(Ruta(nombre));
        if (fichero.open(QIODevice::WriteOnly))
            fichero.write(contenido);
    }
    void CreaCarpeta(const QString& nombre) const { QDir().mkpath(Ruta(nombre)); }
};
