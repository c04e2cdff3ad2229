#include "data/access/formato.h"
#include "data/access/funciones.h"

namespace tolmo::data::access {
namespace {

[[noreturn]] void ArgumentoNoValido(const char* funcion)
{
    throw ErrorFuncion(QStringLiteral("Argumento no válido en %1").arg(QString::fromUtf8(funcion)));
}

Semana SemanaDe(const Argumentos& a, int i)
{
    Semana semana;
    if (a.Total() > i)
        semana.primerDia = static_cast<int>(a.Entero(i));
    if (a.Total() > i + 1)
        semana.primeraSemana = static_cast<int>(a.Entero(i + 1));
    return semana;
}

void Date(Argumentos& a)
{
    a.Devuelve(Iso({a.Ahora().date(), 0}));
}

void Now(Argumentos& a)
{
    a.Devuelve(Iso(DesdeFechaHora(a.Ahora())));
}

void Time(Argumentos& a)
{
    Momento momento;
    momento.segundos = DesdeFechaHora(a.Ahora()).segundos;
    a.Devuelve(Iso(momento));
}

// DatePart(interval, date [, first day [, first week]]).
int Parte(const QString& intervalo, const Momento& m, const Semana& semana)
{
    const QString letra = intervalo.toLower();
    if (letra == QLatin1String("yyyy"))
        return m.dia.year();
    if (letra == QLatin1String("q"))
        return (m.dia.month() + 2) / 3;
    if (letra == QLatin1String("m"))
        return m.dia.month();
    if (letra == QLatin1String("y"))
        return m.dia.dayOfYear();
    if (letra == QLatin1String("d"))
        return m.dia.day();
    if (letra == QLatin1String("w"))
        return DiaSemana(m.dia, semana.primerDia);
    if (letra == QLatin1String("ww"))
        return NumeroSemana(m.dia, semana);
    if (letra == QLatin1String("h"))
        return m.segundos / 3600;
    if (letra == QLatin1String("n"))
        return m.segundos / 60 % 60;
    if (letra == QLatin1String("s"))
        return m.segundos % 60;
    ArgumentoNoValido("DatePart");
}

void DatePart(Argumentos& a)
{
    a.Devuelve(Parte(a.Texto(0), a.MomentoDe(1), SemanaDe(a, 2)));
}

void Weekday(Argumentos& a)
{
    a.Devuelve(DiaSemana(a.MomentoDe(0).dia, SemanaDe(a, 1).primerDia));
}

Momento MasSegundos(const Momento& momento, qlonglong segundos)
{
    const qlonglong total = momento.segundos + segundos;
    const qlonglong dias = total >= 0 ? total / 86400 : -((86399 - total) / 86400);
    return {momento.dia.addDays(dias), static_cast<int>(total - dias * 86400)};
}

Momento Mas(const QString& intervalo, qlonglong n, Momento m)
{
    const QString letra = intervalo.toLower();
    if (letra == QLatin1String("yyyy"))
        m.dia = m.dia.addYears(static_cast<int>(n));
    else if (letra == QLatin1String("q"))
        m.dia = m.dia.addMonths(static_cast<int>(n * 3));
    else if (letra == QLatin1String("m"))
        m.dia = m.dia.addMonths(static_cast<int>(n));
    else if (letra == QLatin1String("d") || letra == QLatin1String("y") ||
             letra == QLatin1String("w"))
        m.dia = m.dia.addDays(n);
    else if (letra == QLatin1String("ww"))
        m.dia = m.dia.addDays(n * 7);
    else if (letra == QLatin1String("h"))
        m = MasSegundos(m, n * 3600);
    else if (letra == QLatin1String("n"))
        m = MasSegundos(m, n * 60);
    else if (letra == QLatin1String("s"))
        m = MasSegundos(m, n);
    else
        ArgumentoNoValido("DateAdd");
    if (!CabeEnColumna(m))
        ArgumentoNoValido("DateAdd");
    return m;
}

void DateAdd(Argumentos& a)
{
    a.Devuelve(Iso(Mas(a.Texto(0), a.Entero(1), a.MomentoDe(2))));
}

// Borders that lie between two moments: from 31 December to 1 January is one year.
qlonglong Diferencia(const QString& intervalo, const Momento& a, const Momento& b,
                     const Semana& semana)
{
    const QString letra = intervalo.toLower();
    const qlonglong dias = a.dia.daysTo(b.dia);
    const qlonglong meses = (b.dia.year() - a.dia.year()) * 12LL + b.dia.month() - a.dia.month();
    if (letra == QLatin1String("yyyy"))
        return b.dia.year() - a.dia.year();
    if (letra == QLatin1String("q"))
        return (b.dia.year() - a.dia.year()) * 4LL + (b.dia.month() - 1) / 3 -
               (a.dia.month() - 1) / 3;
    if (letra == QLatin1String("m"))
        return meses;
    if (letra == QLatin1String("d") || letra == QLatin1String("y"))
        return dias;
    if (letra == QLatin1String("w"))
        return dias / 7;
    if (letra == QLatin1String("ww")) {
        const auto inicio = [&semana](QDate dia) {
            return dia.addDays(1 - DiaSemana(dia, semana.primerDia));
        };
        return inicio(a.dia).daysTo(inicio(b.dia)) / 7;
    }
    if (letra == QLatin1String("h"))
        return dias * 24 + b.segundos / 3600 - a.segundos / 3600;
    if (letra == QLatin1String("n"))
        return dias * 1440 + b.segundos / 60 - a.segundos / 60;
    if (letra == QLatin1String("s"))
        return dias * 86400 + b.segundos - a.segundos;
    ArgumentoNoValido("DateDiff");
}

void DateDiff(Argumentos& a)
{
    a.Devuelve(Diferencia(a.Texto(0), a.MomentoDe(1), a.MomentoDe(2), SemanaDe(a, 3)));
}

// Months and days beyond their range run over: day 0 is the last one of the month before.
void DateSerial(Argumentos& a)
{
    const auto anio = static_cast<int>(a.Entero(0));
    const int completo = anio < 0 ? -1 : anio < 30 ? anio + 2000 : anio < 100 ? anio + 1900 : anio;
    const QDate dia =
        QDate(completo, 1, 1).addMonths(static_cast<int>(a.Entero(1)) - 1).addDays(a.Entero(2) - 1);
    if (completo < 0 || !CabeEnColumna({dia, 0}))
        ArgumentoNoValido("DateSerial");
    a.Devuelve(Iso({dia, 0}));
}

void TimeSerial(Argumentos& a)
{
    a.Devuelve(Iso(MasSegundos({}, a.Entero(0) * 3600 + a.Entero(1) * 60 + a.Entero(2))));
}

void DateValue(Argumentos& a)
{
    a.Devuelve(Iso({a.MomentoDe(0).dia, 0}));
}

void TimeValue(Argumentos& a)
{
    Momento momento;
    momento.segundos = a.MomentoDe(0).segundos;
    a.Devuelve(Iso(momento));
}

void CDate(Argumentos& a)
{
    a.Devuelve(Iso(a.MomentoDe(0)));
}

const FuncionSql Funciones[] = {
    {"kov_date", 0, false, Date, false},     {"kov_now", 0, false, Now, false},
    {"kov_time", 0, false, Time, false},     {"kov_datepart", -1, true, DatePart},
    {"kov_weekday", -1, true, Weekday},      {"kov_dateadd", 3, true, DateAdd},
    {"kov_datediff", -1, true, DateDiff},    {"kov_dateserial", 3, true, DateSerial},
    {"kov_timeserial", 3, true, TimeSerial}, {"kov_datevalue", 1, true, DateValue},
    {"kov_timevalue", 1, true, TimeValue},   {"kov_cdate", 1, true, CDate},
};

} // namespace

void RegistraDeFecha(sqlite3* base, const Ahora& ahora)
{
    for (const FuncionSql& funcion : Funciones)
        Registra(base, funcion, ahora);
}

} // namespace tolmo::data::access
