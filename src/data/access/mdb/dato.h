#pragma once
#include "data/valores.h"
#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <array>
#include <variant>

namespace tolmo::data::access::mdb {

/// Exact, in ten-thousandths.
struct Moneda {
    qint64 diezmilesimas = 0;
    bool operator==(const Moneda&) const = default;
};

/// As it is stored, so that nothing is lost: days since 30/12/1899, the time as their fraction
/// (without sign, also of a day before).
struct Fecha {
    double dias = 0;
    bool operator==(const Fecha&) const = default;
};

/// As it is stored: a number of 32 bits, two of 16, in little-endian order, and 8 bytes.
struct Guid {
    std::array<quint8, 16> bytes{};
    bool operator==(const Guid&) const = default;
};

/// A number of up to 28 digits: 128 bits, the highest word first, over 10 to the `escala`.
struct Numerico {
    std::array<quint32, 4> palabras{};
    quint8 escala = 0;
    bool negativo = false;
    bool operator==(const Numerico&) const = default;
};

/// The value of a column in a row; monostate is Null. Integers of all widths are qint64.
using Dato = std::variant<std::monostate, bool, qint64, Moneda, float, double, Fecha, Guid,
                          Numerico, QString, QByteArray>;

bool EsNulo(const Dato& dato);

/// The value where it is of that kind, else an empty one.
template <typename T> T Como(const Dato& dato)
{
    const T* valor = std::get_if<T>(&dato);
    return valor == nullptr ? T{} : *valor;
}

/// The moment, to the millisecond; invalid outside the years 100 to 9999.
QDateTime FechaHora(Fecha fecha);

/// The reverse, of a moment that is shown as it is, without a zone.
Fecha FechaDe(const QDateTime& momento);

/// The value in words without loss, "." as decimal symbol: a date as YYYY-MM-DD HH:MM:SS (with
/// milliseconds where there are any), truth as -1 and 0, bytes in hexadecimal, Null as nothing.
QString TextoExacto(const Dato& dato);

/// The value as the rest of the program holds it. Currency and numeric become doubles.
Valor AValor(const Dato& dato);

} // namespace tolmo::data::access::mdb
