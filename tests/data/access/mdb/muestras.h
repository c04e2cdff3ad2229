#pragma once
#include "data/access/mdb/base_mdb.h"
#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <memory>
#include <stdexcept>

namespace tolmo::data::access::mdb {

inline QString RutaMuestra(const QString& nombre)
{
    return QStringLiteral(KOV_FUENTES "/tests/data/access/mdb/muestras/") + nombre;
}

/// The files that Access wrote.
inline QStringList Muestras()
{
    return QDir(RutaMuestra({})).entryList({"*.mdb", "*.accdb"}, QDir::Files, QDir::Name);
}

inline QByteArray BytesDeMuestra(const QString& nombre)
{
    QFile fichero(RutaMuestra(nombre));
    if (!fichero.open(QIODevice::ReadOnly))
        throw std::runtime_error("no sample " + nombre.toStdString());
    return fichero.readAll();
}

/// The pages of a file that is in memory.
inline std::shared_ptr<Paginas> PaginasDe(const QByteArray& fichero, const Apertura& apertura = {})
{
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(fichero);
    bufer->open(QIODevice::ReadOnly);
    return std::make_shared<FicheroPaginas>(std::move(bufer), "prueba.mdb", apertura);
}

/// The tables that live in a file, those of the system too.
inline QStringList TablasLocales(const Base& base)
{
    QStringList nombres;
    for (const Objeto& objeto : base.catalogo().Objetos()) {
        if (objeto.clase == clase_objeto::TablaLocal)
            nombres << objeto.nombre;
    }
    return nombres;
}

} // namespace tolmo::data::access::mdb
