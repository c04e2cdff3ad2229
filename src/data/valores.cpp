#include "data/valores.h"
#include "data/errores.h"
#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace tolmo::data {
namespace {

// A double holds 15 decimal digits for certain, a single 7: what stands behind is noise.
constexpr int DigitosDoble = 15;
constexpr int DigitosSimple = 7;
constexpr double PrimeroConExponente = 1e15;
constexpr double UltimoConExponente = 1e-15;
constexpr double MenorSinCerosDetras = 1e-4;

QString DesdeBufer(char* desde, char* hasta)
{
    std::replace(desde, hasta, 'e', 'E');
    return QString::fromLatin1(desde, hasta - desde);
}

/// A number below 0.0001 without exponent: 0.000025.
QString TextoPequeno(double numero, int digitos)
{
    char bufer[64];
    const int ceros = -static_cast<int>(std::floor(std::log10(std::fabs(numero))));
    char* fin = std::to_chars(bufer, bufer + sizeof bufer, numero, std::chars_format::fixed,
                              digitos - 1 + ceros)
                    .ptr;
    while (fin[-1] == '0')
        --fin;
    return DesdeBufer(bufer, fin);
}

QString TextoNumero(double numero, int digitos)
{
    const double magnitud = std::fabs(numero);
    if (magnitud < PrimeroConExponente && std::trunc(numero) == numero)
        return QString::number(static_cast<qlonglong>(numero));
    if (magnitud < MenorSinCerosDetras && magnitud > UltimoConExponente)
        return TextoPequeno(numero, digitos);
    char bufer[64];
    char* fin =
        std::to_chars(bufer, bufer + sizeof bufer, numero, std::chars_format::general, digitos).ptr;
    return DesdeBufer(bufer, fin);
}

QString DosCifras(int numero)
{
    return QString::number(numero).rightJustified(2, u'0');
}

QString TextoFecha(QDate fecha)
{
    if (!fecha.isValid())
        return {};
    return DosCifras(fecha.day()) + u'/' + DosCifras(fecha.month()) + u'/' +
           QString::number(fecha.year()).rightJustified(4, u'0');
}

QString TextoHora(QTime hora)
{
    return QString::number(hora.hour()) + u':' + DosCifras(hora.minute()) + u':' +
           DosCifras(hora.second());
}

QString TextoMomento(const QDateTime& momento)
{
    QString fecha = TextoFecha(momento.date());
    if (fecha.isEmpty() || momento.time() == QTime(0, 0))
        return fecha;
    return fecha + u' ' + TextoHora(momento.time());
}

QStringView RecortaIzquierda(QStringView texto)
{
    while (texto.startsWith(u' '))
        texto = texto.mid(1);
    return texto;
}

QStringView RecortaDerecha(QStringView texto)
{
    while (texto.endsWith(u' '))
        texto.chop(1);
    return texto;
}

std::optional<double> LeeNumero(const QString& texto)
{
    const QStringView recortado = RecortaIzquierda(RecortaDerecha(texto));
    // Words such as "nan" and "inf" read as numbers for the library, not for the system.
    const auto ajena = [](QChar c) {
        return !(c >= u'0' && c <= u'9') && !QStringView(u"+-.eE").contains(c);
    };
    if (std::any_of(recortado.begin(), recortado.end(), ajena))
        return std::nullopt;
    bool bien = false;
    const double numero = recortado.toDouble(&bien);
    return bien ? std::optional(numero) : std::nullopt;
}

/// Reads a text from left to right; the first thing that is not there makes it fail for good.
class Lector {
  public:
    explicit Lector(QStringView texto) : resto_(texto) {}

    /// A number of `minimo` to `maximo` digits.
    int Numero(int minimo, int maximo)
    {
        int numero = 0;
        int cifras = 0;
        while (cifras < maximo && !resto_.isEmpty() && EsCifra(resto_.front())) {
            numero = numero * 10 + (resto_.front().unicode() - u'0');
            resto_ = resto_.mid(1);
            ++cifras;
        }
        bien_ = bien_ && cifras >= minimo;
        return numero;
    }

    void Signo(QChar signo) { bien_ = Toma(signo) && bien_; }

    bool Toma(QChar signo)
    {
        if (!resto_.startsWith(signo))
            return false;
        resto_ = resto_.mid(1);
        return true;
    }

    bool Agotado() const { return resto_.isEmpty(); }
    bool Bien() const { return bien_; }
    QStringView Resto() const { return resto_; }

  private:
    static bool EsCifra(QChar c) { return c >= u'0' && c <= u'9'; }

    QStringView resto_;
    bool bien_ = true;
};

QDate LeeDia(Lector& lector)
{
    const bool anoDelante =
        lector.Resto().size() > 4 && (lector.Resto()[4] == u'/' || lector.Resto()[4] == u'-');
    if (!anoDelante) {
        const int dia = lector.Numero(1, 2);
        lector.Signo(u'/');
        const int mes = lector.Numero(1, 2);
        lector.Signo(u'/');
        const int ano = lector.Numero(4, 4);
        return {ano, mes, dia};
    }
    const int ano = lector.Numero(4, 4);
    const QChar signo = lector.Resto().isEmpty() ? u'-' : lector.Resto().front();
    lector.Signo(signo);
    const int mes = lector.Numero(1, 2);
    lector.Signo(signo);
    const int dia = lector.Numero(1, 2);
    return {ano, mes, dia};
}

QTime LeeHora(Lector& lector)
{
    const int horas = lector.Numero(1, 2);
    lector.Signo(u':');
    const int minutos = lector.Numero(2, 2);
    const int segundos = lector.Toma(u':') ? lector.Numero(2, 2) : 0;
    return {horas, minutos, segundos};
}

} // namespace

Valor Nulo()
{
    return Valor(QMetaType::fromType<QString>());
}

bool EsNulo(const Valor& valor)
{
    return valor.isValid() && valor.isNull();
}

bool EsNumero(const Valor& valor)
{
    switch (valor.typeId()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Float:
    case QMetaType::Double:
        return !EsNulo(valor);
    default:
        return false;
    }
}

bool EsFecha(const Valor& valor)
{
    const int tipo = valor.typeId();
    return (tipo == QMetaType::QDate || tipo == QMetaType::QDateTime) && !EsNulo(valor);
}

QString Texto(const Valor& valor)
{
    if (valor.isNull())
        return {};
    switch (valor.typeId()) {
    case QMetaType::QString:
        return *static_cast<const QString*>(valor.constData());
    case QMetaType::Bool:
        return valor.toBool() ? QStringLiteral("True") : QStringLiteral("False");
    case QMetaType::Double:
        return Texto(valor.toDouble());
    case QMetaType::Float:
        return TextoNumero(static_cast<double>(valor.toFloat()), DigitosSimple);
    case QMetaType::QDate:
        return TextoFecha(valor.toDate());
    case QMetaType::QDateTime:
        return TextoMomento(valor.toDateTime());
    case QMetaType::QTime:
        return TextoHora(valor.toTime());
    default:
        return valor.toString();
    }
}

QString Texto(double numero)
{
    return TextoNumero(numero, DigitosDoble);
}

QString Texto(int numero)
{
    return QString::number(numero);
}

QString TextoSinNulo(const Valor& valor)
{
    if (EsNulo(valor))
        throw ErrorEjecucion(numero_error::UsoDeNulo, QStringLiteral("Uso no válido de Null"));
    return Texto(valor);
}

bool EstaVacio(const Valor& valor)
{
    if (valor.isNull())
        return true;
    if (EsNumero(valor))
        return valor.toDouble() == 0.0;
    if (valor.typeId() == QMetaType::QString)
        return static_cast<const QString*>(valor.constData())->isEmpty();
    return valor.typeId() == QMetaType::Bool && !valor.toBool();
}

Valor SinNulo(const Valor& valor)
{
    return EsNulo(valor) ? Valor() : valor;
}

double ValorNumerico(const Valor& valor)
{
    if (EstaVacio(valor))
        return 0;
    if (EsNumero(valor))
        return valor.toDouble();
    // True counts -1, as in the management database.
    if (valor.typeId() == QMetaType::Bool)
        return -1;
    return EsFecha(valor) ? 0 : LeeNumero(valor.toString()).value_or(0);
}

bool EsNumerico(const QString& texto)
{
    return LeeNumero(texto).has_value();
}

QDateTime SinZona(const QDate& dia, const QTime& hora)
{
    return {dia, hora, Qt::UTC};
}

QDateTime MomentoDe(const Valor& fecha)
{
    if (fecha.typeId() == QMetaType::QDate)
        return SinZona(fecha.toDate());
    const QDateTime momento = fecha.toDateTime();
    return SinZona(momento.date(), momento.time());
}

QString RellenaCeros(const QString& texto, int ancho, const QString& lado)
{
    const qsizetype total = ancho < 0 ? texto.size() : ancho;
    if (texto.size() > total)
        return texto;
    if (lado == u'L')
        return RecortaIzquierda(texto).toString().rightJustified(total, u'0');
    return RecortaDerecha(texto).toString().leftJustified(total, u'0');
}

QString Recorta(const QString& texto)
{
    return RecortaIzquierda(RecortaDerecha(texto)).toString();
}

QDateTime LeeFecha(const QString& texto)
{
    Lector lector(RecortaIzquierda(RecortaDerecha(texto)));
    const QDate dia = LeeDia(lector);
    QTime hora(0, 0);
    if (lector.Toma(u' '))
        hora = LeeHora(lector);
    if (!lector.Bien() || !lector.Agotado() || !dia.isValid() || !hora.isValid())
        return {};
    return SinZona(dia, hora);
}

} // namespace tolmo::data
