#include "data/condicion_literales.h"
#include "data/plantilla.h"
#include <QStringList>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

// clang-format off
constexpr Plantilla SqlTexto(u"'{valor}'");
constexpr Plantilla SqlHora(u"Format('{valor}','hh:mm:ss')");
constexpr Plantilla CrystalFecha(u" Date({ano},{mes},{dia})");
// clang-format on

QString LitFechaCrystal(const QString& valor)
{
    const QDate fecha = LeeFecha(valor).date();
    return CrystalFecha(
        {{"ano", Texto(fecha.year())}, {"mes", Texto(fecha.month())}, {"dia", Texto(fecha.day())}});
}

// "SÍ" and "sí" are not among the words: only "Sí", letter by letter.
bool EsVerdad(const QString& valor)
{
    static const QStringList palabras{u"S"_s, u"SI"_s, u"VERDAD"_s, u"TRUE"_s};
    return palabras.contains(valor.toUpper()) || valor == u"Sí"_s;
}

} // namespace

Letra Tipo(int tipoAdo)
{
    switch (tipoAdo) {
    case 202:
        return Letra::Texto;
    case 7:
    case 135:
        return Letra::Fecha;
    case 2:
    case 3:
    case 5:
        return Letra::Numero;
    default:
        return Letra::Logica;
    }
}

QString PonSegunTipo(Dialecto dialecto, const QString& valor, Letra letra, Lenguaje destino)
{
    if (letra == Letra::Logica)
        return EsVerdad(valor) ? u"TRUE"_s : u"FALSE"_s;
    if (valor.isEmpty())
        return u"NULL"_s;
    switch (letra) {
    case Letra::Fecha:
        return destino == Lenguaje::Crystal ? LitFechaCrystal(valor) : LitFechaSql(dialecto, valor);
    case Letra::Texto:
        return SqlTexto({{"valor", valor}});
    default:
        return valor;
    }
}

QString LitFechaSql(Dialecto dialecto, const QString& valor)
{
    const QDateTime fecha = LeeFecha(valor);
    return FechaSql(dialecto, fecha.isValid() ? Valor(fecha.date()) : Valor(valor));
}

QString LitHoraSql(const QString& valor)
{
    return SqlHora({{"valor", valor}});
}

} // namespace tolmo::data
