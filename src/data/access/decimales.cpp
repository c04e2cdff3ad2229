#include "data/access/decimales.h"
#include "data/valores.h"
#include <algorithm>
#include <charconv>
#include <cmath>

namespace tolmo::data::access {
namespace {

/// Half a step above the largest single: from here on a number is rounded to none.
constexpr double PrimeroSinSimple = 0x1.ffffffp+127;
constexpr int MayorExponente = 400;
constexpr int DecimalesDeMoneda = 4;
constexpr int MayorPrecision = 28;

void QuitaCerosDelante(QByteArray& cifras)
{
    qsizetype ceros = 0;
    while (ceros < cifras.size() && cifras[ceros] == '0')
        ++ceros;
    cifras.remove(0, ceros);
}

/// The digits and the point of a number, which has no sign.
Decimal ConCifras(QStringView texto)
{
    Decimal numero;
    const qsizetype punto = texto.indexOf(u'.');
    numero.cifras = texto.toLatin1();
    if (punto >= 0) {
        numero.cifras.remove(punto, 1);
        numero.escala = static_cast<int>(numero.cifras.size() - punto);
    }
    return numero;
}

/// Moves the point to the right, or to the left where `lugares` is negative.
void MuevePunto(Decimal& numero, int lugares)
{
    numero.escala -= lugares;
    if (numero.escala < 0) {
        numero.cifras.append(-numero.escala, '0');
        numero.escala = 0;
    }
}

void Suma1(QByteArray& cifras)
{
    for (qsizetype i = cifras.size(); i-- > 0;) {
        if (cifras[i] != '9') {
            ++cifras[i];
            return;
        }
        cifras[i] = '0';
    }
    cifras.prepend('1');
}

} // namespace

std::optional<Decimal> LeeDecimal(QStringView texto)
{
    texto = texto.trimmed();
    if (!EsNumerico(texto.toString()))
        return std::nullopt;
    const bool negativo = texto.startsWith(u'-');
    if (negativo || texto.startsWith(u'+'))
        texto = texto.mid(1);
    const qsizetype e = texto.indexOf(u'e', 0, Qt::CaseInsensitive);
    const int exponente = e < 0 ? 0 : texto.mid(e + 1).toInt();
    if (std::abs(exponente) > MayorExponente)
        return std::nullopt;
    Decimal numero = ConCifras(e < 0 ? texto : texto.left(e));
    MuevePunto(numero, exponente);
    QuitaCerosDelante(numero.cifras);
    numero.negativo = negativo && !numero.cifras.isEmpty();
    return numero;
}

Decimal DecimalDe(double numero)
{
    char bufer[32];
    const char* fin = std::to_chars(bufer, bufer + sizeof bufer, numero).ptr;
    return LeeDecimal(QString::fromLatin1(bufer, fin - bufer)).value_or(Decimal{});
}

Decimal DecimalDe(qint64 numero)
{
    return LeeDecimal(QString::number(numero)).value_or(Decimal{});
}

Decimal Redondeado(Decimal numero, int escala)
{
    const int sobran = numero.escala - escala;
    if (sobran <= 0) {
        if (!numero.cifras.isEmpty())
            numero.cifras.append(-sobran, '0');
        numero.escala = escala;
        return numero;
    }
    const QByteArray todas = numero.cifras.rightJustified(sobran, '0');
    const QByteArray fuera = todas.right(sobran);
    numero.cifras = todas.chopped(sobran);
    numero.escala = escala;
    const QByteArray medio = '5' + QByteArray(sobran - 1, '0');
    const bool impar = !numero.cifras.isEmpty() && (numero.cifras.back() - '0') % 2 == 1;
    if (fuera > medio || (fuera == medio && impar))
        Suma1(numero.cifras);
    QuitaCerosDelante(numero.cifras);
    numero.negativo = numero.negativo && !numero.cifras.isEmpty();
    return numero;
}

std::optional<mdb::Moneda> MonedaDe(const Decimal& numero)
{
    const Decimal redondo = Redondeado(numero, DecimalesDeMoneda);
    if (redondo.cifras.isEmpty())
        return mdb::Moneda{};
    bool cabe = false;
    const QByteArray partes = (redondo.negativo ? "-" : "") + redondo.cifras;
    const mdb::Moneda moneda{partes.toLongLong(&cabe)};
    return cabe ? std::optional(moneda) : std::nullopt;
}

std::optional<mdb::Numerico> NumericoDe(const Decimal& numero, int precision, int escala)
{
    const Decimal redondo = Redondeado(numero, escala);
    if (redondo.cifras.size() > std::min(precision, MayorPrecision))
        return std::nullopt;
    mdb::Numerico numerico{.escala = static_cast<quint8>(escala), .negativo = redondo.negativo};
    for (const char cifra : redondo.cifras) {
        auto acarreo = static_cast<quint64>(cifra - '0');
        for (auto palabra = numerico.palabras.rbegin(); palabra != numerico.palabras.rend();
             ++palabra) {
            acarreo += quint64{*palabra} * 10;
            *palabra = static_cast<quint32>(acarreo);
            acarreo >>= 32;
        }
    }
    return numerico;
}

bool CabeEnDoble(const QString& texto)
{
    constexpr qsizetype CifrasDeDoble = 15;
    return std::count_if(texto.begin(), texto.end(), [](QChar c) { return c.isDigit(); }) <=
           CifrasDeDoble;
}

double DecimalDeSimple(float simple)
{
    char bufer[32];
    const char* fin = std::to_chars(bufer, bufer + sizeof bufer, simple).ptr;
    double numero = 0;
    std::from_chars(bufer, fin, numero);
    return numero;
}

bool CabeEnSimple(double numero)
{
    return std::fabs(numero) < PrimeroSinSimple;
}

} // namespace tolmo::data::access
