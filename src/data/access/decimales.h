#pragma once
#include "data/access/mdb/dato.h"
#include <QByteArray>
#include <QStringView>
#include <optional>

namespace tolmo::data::access {

/// A number as it is written in decimal digits, however many, without loss.
struct Decimal {
    bool negativo = false;
    QByteArray cifras{}; ///< without zeros in front; empty for zero
    int escala = 0;      ///< how many of them stand behind the point, never below 0
};

/// The number that the whole text reads as, blanks around allowed; nothing for a text that is none,
/// and for one with an exponent beyond any double.
std::optional<Decimal> LeeDecimal(QStringView texto);

/// The number of fewest digits that reads back as the same finite one.
Decimal DecimalDe(double numero);
Decimal DecimalDe(qint64 numero);

/// With `escala` digits behind the point, a half rounded to the even side.
Decimal Redondeado(Decimal numero, int escala);

/// From here on a double doesn't tell all amounts of four decimals apart.
constexpr double PrimeroSinMoneda = 0x1p38;

/// The number as columns of Access hold it, rounded; nothing when it has too many digits.
std::optional<mdb::Moneda> MonedaDe(const Decimal& numero);
std::optional<mdb::Numerico> NumericoDe(const Decimal& numero, int precision, int escala);

/// True when a double holds all the digits of a number that is written so.
bool CabeEnDoble(const QString& texto);

/// The number of fewest decimal digits that a single holds in its place: 0.1, and not what its bits
/// are exactly. Both forms of the database give and keep singles so.
double DecimalDeSimple(float simple);

/// True when a single can hold the number, to its own precision.
bool CabeEnSimple(double numero);

} // namespace tolmo::data::access
