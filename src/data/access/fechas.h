#pragma once
#include <QDateTime>
#include <QString>
#include <optional>
#include <string_view>

namespace tolmo::data::access {

/// A date with its time of day, without any time zone. 30/12/1899 is the day of a bare time.
struct Momento {
    QDate dia{1899, 12, 30};
    int segundos = 0; ///< since midnight

    bool operator==(const Momento&) const = default;
};

/// Which number stands first where the year doesn't.
enum class OrdenFecha { DiaMes, MesDia };

/// Reads dd/mm/yyyy, yyyy/mm/dd, yyyy-mm-dd, each alone or with H:mm[:ss], or a bare time.
/// With MesDia, as literals between "#" are written, mm/dd/yyyy, and a first number above 12 is
/// taken for the day.
std::optional<Momento> LeeMomento(QStringView texto, OrdenFecha orden = OrdenFecha::DiaMes);

/// Reads the form in which dates are held, YYYY-MM-DD HH:MM:SS or the day alone, and nothing else.
std::optional<Momento> LeeIso(std::string_view texto);

/// The form in which dates are held.
QString Iso(const Momento& momento);
/// dd/mm/yyyy, with the time behind it if there is one; a bare time alone.
QString TextoMomento(const Momento& momento);

/// Days since 30/12/1899, the time as their fraction (also of a day before).
double Serie(const Momento& momento);
Momento DesdeSerie(double serie);

/// True in the years 100 to 9999, which are those that a column of dates holds.
bool CabeEnColumna(const Momento& momento);

QDateTime AFechaHora(const Momento& momento);
Momento DesdeFechaHora(const QDateTime& fecha);

} // namespace tolmo::data::access
