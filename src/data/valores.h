#pragma once
#include <QDateTime>
#include <QString>
#include <QVariant>

namespace tolmo::data {

/// A field or an argument of any kind. Invalid is Empty, a typed variant without a value is Null.
using Valor = QVariant;

/// The Null that a field without a value delivers.
Valor Nulo();

/// True for a typed variant without a value; Empty is not Null.
bool EsNulo(const Valor& valor);

/// True for the kinds integer, long, single, double and currency.
bool EsNumero(const Valor& valor);

/// True for dates and for dates with a time.
bool EsFecha(const Valor& valor);

/// The default conversion to text: nothing for Null and Empty; a number with up to 15 significant
/// digits, "." and neither trailing zeros nor thousands separator; a date as dd/mm/yyyy with the
/// time (H:mm:ss) behind it if it has one; "True" or "False" for a boolean.
QString Texto(const Valor& valor);

/// The same conversion for a number at hand.
QString Texto(double numero);
QString Texto(int numero);

/// The text of a field that may not be Null: a Null there is a run-time error (94).
/// \throws ErrorEjecucion for Null
QString TextoSinNulo(const Valor& valor);

/// The system's test for "nothing there": Empty, Null, a number 0, the text "", False.
/// A value of any other kind, a date for instance, is never empty.
bool EstaVacio(const Valor& valor);

/// Empty for a Null, else the value itself.
Valor SinNulo(const Valor& valor);

/// The number in `valor`, 0 when it is empty or doesn't read as a number.
double ValorNumerico(const Valor& valor);

/// A moment as the databases hold it, without a zone. Held as UTC, where no clock changes: in local
/// time the hour that is skipped in spring doesn't exist, and a moment in it would be none.
QDateTime SinZona(const QDate& dia, const QTime& hora = QTime(0, 0));

/// The moment of a date, with or without a time, for comparing.
QDateTime MomentoDe(const Valor& fecha);

/// True when the whole text reads as a number ("." as decimal symbol, blanks around allowed).
bool EsNumerico(const QString& texto);

/// Puts "0" in front up to `ancho` characters (side "L", after cutting the blanks on the left),
/// or behind (any other side, after cutting those on the right).
/// A text longer than `ancho` comes back as it stands; a negative width means the text's own.
QString RellenaCeros(const QString& texto, int ancho = -1,
                     const QString& lado = QStringLiteral("L"));

/// Cuts the blanks at both ends; tabs and line ends stay.
QString Recorta(const QString& texto);

/// Reads dd/mm/yyyy, yyyy/mm/dd, yyyy-mm-dd (one or two digits for day and month), each with an
/// optional H:mm[:ss]; anything else gives an invalid moment.
QDateTime LeeFecha(const QString& texto);

} // namespace tolmo::data
