#pragma once
#include <QtEndian>
#include <cstddef>
#include <span>

namespace tolmo::data::access::mdb {

/// \throws ErrorMdb always: something points outside the bytes that hold it
[[noreturn]] void FueraDeLosBytes();

/// A loan of bytes of a file, read in little-endian order. Nothing in a file can be trusted, so
/// every read is checked; one that leaves the bytes throws ErrorMdb.
class Bytes {
  public:
    Bytes() = default;
    explicit Bytes(std::span<const quint8> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    const quint8* data() const { return bytes_.data(); }
    std::span<const quint8> Todo() const { return bytes_; }

    quint8 U8(std::size_t posicion) const { return Lee<quint8>(posicion); }
    quint16 U16(std::size_t posicion) const { return Lee<quint16>(posicion); }
    quint32 U32(std::size_t posicion) const { return Lee<quint32>(posicion); }
    qint16 I16(std::size_t posicion) const { return Lee<qint16>(posicion); }
    qint32 I32(std::size_t posicion) const { return Lee<qint32>(posicion); }
    qint64 I64(std::size_t posicion) const { return Lee<qint64>(posicion); }
    float F32(std::size_t posicion) const { return Lee<float>(posicion); }
    double F64(std::size_t posicion) const { return Lee<double>(posicion); }

    Bytes Trozo(std::size_t desde, std::size_t largo) const
    {
        Comprueba(desde, largo);
        return Bytes(bytes_.subspan(desde, largo));
    }
    Bytes Desde(std::size_t desde) const
    {
        Comprueba(desde, 0);
        return Bytes(bytes_.subspan(desde));
    }

  private:
    void Comprueba(std::size_t desde, std::size_t largo) const
    {
        if (desde > bytes_.size() || largo > bytes_.size() - desde) [[unlikely]]
            FueraDeLosBytes();
    }
    template <typename T> T Lee(std::size_t posicion) const
    {
        Comprueba(posicion, sizeof(T));
        return qFromLittleEndian<T>(bytes_.data() + posicion);
    }

    std::span<const quint8> bytes_{};
};

} // namespace tolmo::data::access::mdb
