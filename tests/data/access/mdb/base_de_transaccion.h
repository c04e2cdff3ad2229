#pragma once
#include "apoyo/carpeta.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/transaccion_paginas.h"
#include <algorithm>

namespace tolmo::data::access::mdb {

/// A copy of a file of Access with several tables, which a test may write to.
struct BaseDeTransaccion {
    CarpetaDePrueba carpeta{};
    QString ruta = carpeta.Ruta("prueba.mdb");

    explicit BaseDeTransaccion(const QString& muestra = QStringLiteral("2003-indices.mdb"))
    {
        carpeta.Escribe("prueba.mdb", BytesDeMuestra(muestra));
    }
    QByteArray Bytes() const { return carpeta.Lee("prueba.mdb"); }
};

/// Fills a page with a byte, but for its kind and owner.
inline void Rellena(PaginasEscribibles& paginas, quint32 numero, quint8 byte)
{
    const auto bytes = paginas.Cambia(numero);
    std::fill(bytes.begin() + 8, bytes.end(), byte);
}

inline quint8 RellenoDe(Paginas& paginas, quint32 numero)
{
    return paginas.Lee(numero).bytes.U8(100);
}

/// The file without its marks of change, which count on whatever happens.
inline QByteArray SinMarcas(QByteArray fichero)
{
    return fichero.replace(MarcasDeCambio::Posicion, MarcasDeCambio::Tam,
                           QByteArray(MarcasDeCambio::Tam, '\0'));
}

} // namespace tolmo::data::access::mdb
