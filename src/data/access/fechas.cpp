#include "data/access/fechas.h"
#include "data/valores.h"
#include <algorithm>
#include <array>
#include <cmath>

namespace tolmo::data::access {
namespace {

constexpr int SegundosDia = 86400;
const QDate DiaCero(1899, 12, 30);

/// Reads a text from left to right.
class Lector {
  public:
    explicit Lector(QStringView texto) : resto_(texto.trimmed()) {}

    bool Acabado() const { return resto_.isEmpty(); }

    /// A number of 1 to 4 digits, -1 when there is none.
    int Numero()
    {
        int numero = -1;
        cifras_ = 0;
        while (cifras_ < 5 && !resto_.isEmpty() && resto_.front() >= u'0' &&
               resto_.front() <= u'9') {
            numero = std::max(numero, 0) * 10 + (resto_.front().unicode() - u'0');
            resto_ = resto_.mid(1);
            ++cifras_;
        }
        return cifras_ < 5 ? numero : -1;
    }
    int Cifras() const { return cifras_; }

    QChar Separador()
    {
        if (resto_.isEmpty())
            return {};
        const QChar c = resto_.front();
        resto_ = resto_.mid(1);
        return c;
    }
    QChar Mira() const { return resto_.isEmpty() ? QChar() : resto_.front(); }
    void SaltaBlancos() { resto_ = resto_.trimmed(); }
    bool Si(QStringView palabra)
    {
        if (!resto_.startsWith(palabra, Qt::CaseInsensitive))
            return false;
        resto_ = resto_.mid(palabra.size());
        return true;
    }

  private:
    QStringView resto_;
    int cifras_ = 0;
};

// Two digits of a year mean 1930 to 2029.
int AnioCompleto(int anio, int cifras)
{
    if (cifras > 2)
        return anio;
    return anio < 30 ? 2000 + anio : 1900 + anio;
}

std::optional<QDate> Dia(const std::array<int, 3>& partes, const std::array<int, 3>& cifras,
                         OrdenFecha orden)
{
    int dia = partes[0];
    int mes = partes[1];
    int anio = AnioCompleto(partes[2], cifras[2]);
    if (cifras[0] > 2) {
        anio = partes[0];
        dia = partes[2];
    } else if (orden == OrdenFecha::MesDia && partes[0] <= 12) {
        std::swap(dia, mes);
    }
    const QDate fecha(anio, mes, dia);
    return fecha.isValid() ? std::optional(fecha) : std::nullopt;
}

std::optional<int> Hora(Lector& lector, int hora)
{
    if (lector.Separador() != u':')
        return std::nullopt;
    const int minuto = lector.Numero();
    int segundo = 0;
    if (lector.Mira() == u':') {
        lector.Separador();
        segundo = lector.Numero();
    }
    lector.SaltaBlancos();
    const bool tarde = lector.Si(u"PM");
    if (tarde || lector.Si(u"AM")) {
        if (hora < 1 || hora > 12)
            return std::nullopt;
        hora = hora % 12 + (tarde ? 12 : 0);
    }
    if (!lector.Acabado() || hora < 0 || hora > 23 || minuto < 0 || minuto > 59 || segundo < 0 ||
        segundo > 59)
        return std::nullopt;
    return hora * 3600 + minuto * 60 + segundo;
}

int Cifra(std::string_view texto, std::size_t lugar)
{
    return texto[lugar] >= '0' && texto[lugar] <= '9' ? texto[lugar] - '0' : -10000;
}

int DosCifras(std::string_view texto, std::size_t lugar)
{
    return Cifra(texto, lugar) * 10 + Cifra(texto, lugar + 1);
}

} // namespace

std::optional<Momento> LeeMomento(QStringView texto, OrdenFecha orden)
{
    Lector lector(texto);
    std::array<int, 3> partes{};
    std::array<int, 3> cifras{};
    partes[0] = lector.Numero();
    cifras[0] = lector.Cifras();
    if (partes[0] < 0)
        return std::nullopt;
    if (lector.Mira() == u':') {
        const auto segundos = Hora(lector, partes[0]);
        return segundos ? std::optional(Momento{DiaCero, *segundos}) : std::nullopt;
    }
    const QChar separador = lector.Separador();
    if (separador != u'/' && separador != u'-')
        return std::nullopt;
    partes[1] = lector.Numero();
    if (lector.Separador() != separador)
        return std::nullopt;
    partes[2] = lector.Numero();
    cifras[2] = lector.Cifras();
    const auto dia = partes[1] < 0 || partes[2] < 0 ? std::nullopt : Dia(partes, cifras, orden);
    if (!dia || lector.Acabado())
        return dia ? std::optional(Momento{*dia, 0}) : std::nullopt;
    if (lector.Mira() != u' ' && !lector.Si(u"T"))
        return std::nullopt;
    lector.SaltaBlancos();
    const auto segundos = Hora(lector, lector.Numero());
    return segundos ? std::optional(Momento{*dia, *segundos}) : std::nullopt;
}

std::optional<Momento> LeeIso(std::string_view texto)
{
    const bool conHora =
        texto.size() == 19 && texto[10] == ' ' && texto[13] == ':' && texto[16] == ':';
    if ((texto.size() != 10 && !conHora) || texto[4] != '-' || texto[7] != '-')
        return std::nullopt;
    Momento momento;
    momento.dia = QDate(DosCifras(texto, 0) * 100 + DosCifras(texto, 2), DosCifras(texto, 5),
                        DosCifras(texto, 8));
    if (conHora) {
        const int hora = DosCifras(texto, 11);
        const int minuto = DosCifras(texto, 14);
        const int segundo = DosCifras(texto, 17);
        if (!QTime(hora, minuto, segundo).isValid())
            return std::nullopt;
        momento.segundos = hora * 3600 + minuto * 60 + segundo;
    }
    return momento.dia.isValid() ? std::optional(momento) : std::nullopt;
}

// Without a general formatter, which took a quarter of the time of reading a table with two dates.
QString Iso(const Momento& momento)
{
    int anio = 0;
    int mes = 0;
    int dia = 0;
    momento.dia.getDate(&anio, &mes, &dia);
    QString texto =
        QString::number(anio).rightJustified(4, u'0') + QStringLiteral("-00-00 00:00:00");
    QChar* letra = texto.end();
    const auto ponDelante = [&letra](int numero) {
        *--letra = QChar(u'0' + numero % 10);
        *--letra = QChar(u'0' + numero / 10);
        --letra;
    };
    ponDelante(momento.segundos % 60);
    ponDelante(momento.segundos / 60 % 60);
    ponDelante(momento.segundos / 3600);
    ponDelante(dia);
    ponDelante(mes);
    return texto;
}

QString TextoMomento(const Momento& momento)
{
    QString hora = QString::asprintf("%d:%02d:%02d", momento.segundos / 3600,
                                     momento.segundos / 60 % 60, momento.segundos % 60);
    if (momento.dia == DiaCero)
        return hora;
    const QString dia = QString::asprintf("%02d/%02d/%04d", momento.dia.day(), momento.dia.month(),
                                          momento.dia.year());
    return momento.segundos == 0 ? dia : dia + u' ' + hora;
}

double Serie(const Momento& momento)
{
    const double dias = static_cast<double>(DiaCero.daysTo(momento.dia));
    const double fraccion = static_cast<double>(momento.segundos) / SegundosDia;
    return dias < 0 ? dias - fraccion : dias + fraccion;
}

Momento DesdeSerie(double serie)
{
    // Far beyond any date, but not beyond what a day can count.
    constexpr double MuyLejos = 1e8;
    serie = std::isnan(serie) ? MuyLejos : std::clamp(serie, -MuyLejos, MuyLejos);
    double dias = std::trunc(serie);
    long segundos = std::lround(std::fabs(serie - dias) * SegundosDia);
    if (segundos == SegundosDia) {
        segundos = 0;
        dias += serie < 0 ? -1 : 1;
    }
    return {DiaCero.addDays(static_cast<qint64>(dias)), static_cast<int>(segundos)};
}

bool CabeEnColumna(const Momento& momento)
{
    const int anio = momento.dia.year();
    return momento.dia.isValid() && anio >= 100 && anio <= 9999;
}

QDateTime AFechaHora(const Momento& momento)
{
    return SinZona(momento.dia, QTime::fromMSecsSinceStartOfDay(momento.segundos * 1000));
}

Momento DesdeFechaHora(const QDateTime& fecha)
{
    return {fecha.date(), fecha.time().msecsSinceStartOfDay() / 1000};
}

} // namespace tolmo::data::access
