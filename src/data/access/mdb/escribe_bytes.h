#pragma once
#include "data/access/mdb/bytes.h"
#include <QByteArray>

namespace tolmo::data::access::mdb {

/// Appends a number in little-endian order.
template <typename T> void Anade(QByteArray& bytes, T numero)
{
    char trozo[sizeof(T)];
    qToLittleEndian(numero, trozo);
    bytes.append(trozo, sizeof(T));
}

/// Writes a number into bytes that are there. \throws ErrorMdb when it would leave them
template <typename T> void Pon(std::span<quint8> bytes, std::size_t posicion, T numero)
{
    if (posicion > bytes.size() || sizeof(T) > bytes.size() - posicion)
        FueraDeLosBytes();
    qToLittleEndian(numero, bytes.data() + posicion);
}

template <typename T> void Pon(QByteArray& bytes, std::size_t posicion, T numero)
{
    Pon(std::span(reinterpret_cast<quint8*>(bytes.data()), static_cast<std::size_t>(bytes.size())),
        posicion, numero);
}

/// A loan of the bytes of `bytes`, which outlives it.
inline Bytes BytesDe(const QByteArray& bytes)
{
    return Bytes(
        {reinterpret_cast<const quint8*>(bytes.data()), static_cast<std::size_t>(bytes.size())});
}

inline QByteArray CopiaDe(Bytes bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

} // namespace tolmo::data::access::mdb
