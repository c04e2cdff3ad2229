#pragma once
#include "data/access/fechas.h"
#include <QString>
#include <optional>

namespace tolmo::data::access {

/// A value as Format sees it: its text, and what else it reads as.
struct ValorFormato {
    QString texto{};
    std::optional<double> numero{};
    std::optional<Momento> momento{};
    bool esTexto = false; ///< held as text: a date or a text, never a number
};

/// How weeks are counted: first day (1 Sunday to 7 Saturday; 0 the country's, Monday) and first
/// week of the year (1 the one of January 1, 2 the first of four days, 3 the first full one).
struct Semana {
    int primerDia = 1;
    int primeraSemana = 1;
};

/// The function Format: a date by d, m, y, h, n, s, w, q; a number by 0, #, "." and ","; a text by
/// @, &, < and >; or by one of the named formats. What the value doesn't read as, it keeps its
/// text.
QString Formato(const ValorFormato& valor, const QString& formato, const Semana& semana = {});

// The three kinds, each in its own source.
QString FormatoFecha(const Momento& momento, const QString& formato, const Semana& semana);
QString FormatoNumero(double numero, const QString& formato);
QString FormatoTexto(const QString& texto, const QString& formato);

/// The parts of dates that DatePart, Format and Weekday share.
int DiaSemana(QDate dia, int primerDia);
int NumeroSemana(QDate dia, const Semana& semana);

} // namespace tolmo::data::access
