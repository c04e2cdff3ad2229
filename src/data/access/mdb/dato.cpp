#include "data/access/mdb/dato.h"
#include "data/access/mdb/bytes.h"
#include <charconv>
#include <cmath>

namespace tolmo::data::access::mdb {
namespace {

constexpr double MsPorDia = 86'400'000.0;
constexpr int DecimalesMoneda = 4;
// The days of 1/1/100 and 31/12/9999.
constexpr double PrimerDia = -657434;
constexpr double UltimoDia = 2958465;

/// Puts the decimal point into a row of digits, and drops the zeros behind it.
QString ConDecimales(QString digitos, int decimales, bool negativo)
{
    digitos = digitos.rightJustified(decimales + 1, u'0');
    if (decimales > 0) {
        digitos.insert(digitos.size() - decimales, u'.');
        while (digitos.endsWith(u'0'))
            digitos.chop(1);
        if (digitos.endsWith(u'.'))
            digitos.chop(1);
    }
    return negativo ? u'-' + digitos : digitos;
}

QString TextoMoneda(Moneda moneda)
{
    const bool negativo = moneda.diezmilesimas < 0;
    const auto magnitud = static_cast<quint64>(moneda.diezmilesimas);
    return ConDecimales(QString::number(negativo ? 0 - magnitud : magnitud), DecimalesMoneda,
                        negativo);
}

QString TextoNumerico(Numerico numero)
{
    QString digitos;
    bool queda = true;
    while (queda) {
        quint64 resto = 0;
        queda = false;
        for (quint32& palabra : numero.palabras) {
            const quint64 parte = resto << 32 | palabra;
            palabra = static_cast<quint32>(parte / 10);
            resto = parte % 10;
            queda = queda || palabra != 0;
        }
        digitos.prepend(QChar(static_cast<char16_t>(u'0' + resto)));
    }
    const bool cero = digitos == QStringLiteral("0");
    return ConDecimales(digitos, numero.escala, numero.negativo && !cero);
}

/// The shortest text that reads back as the same number.
template <typename T> QString TextoCorto(T numero)
{
    char bufer[64];
    const auto fin = std::to_chars(bufer, bufer + sizeof bufer, numero).ptr;
    return QString::fromLatin1(bufer, fin - bufer);
}

QString TextoFecha(Fecha fecha)
{
    const QDateTime momento = FechaHora(fecha);
    if (!momento.isValid())
        return TextoCorto(fecha.dias);
    return momento.toString(momento.time().msec() != 0 ? QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")
                                                       : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString TextoGuid(const Guid& guid)
{
    const Bytes b{std::span<const quint8>(guid.bytes)};
    const auto hexa = [](quint64 numero, int cifras) {
        return QString::number(numero, 16).toUpper().rightJustified(cifras, u'0');
    };
    QString texto =
        u'{' + hexa(b.U32(0), 8) + u'-' + hexa(b.U16(4), 4) + u'-' + hexa(b.U16(6), 4) + u'-';
    for (std::size_t i = 8; i < guid.bytes.size(); ++i) {
        if (i == 10)
            texto += u'-';
        texto += hexa(guid.bytes[i], 2);
    }
    return texto + u'}';
}

struct EnPalabras {
    QString operator()(std::monostate) const { return {}; }
    QString operator()(bool verdad) const
    {
        return verdad ? QStringLiteral("-1") : QStringLiteral("0");
    }
    QString operator()(qint64 numero) const { return QString::number(numero); }
    QString operator()(Moneda moneda) const { return TextoMoneda(moneda); }
    QString operator()(float numero) const { return TextoCorto(numero); }
    QString operator()(double numero) const { return TextoCorto(numero); }
    QString operator()(Fecha fecha) const { return TextoFecha(fecha); }
    QString operator()(const Guid& guid) const { return TextoGuid(guid); }
    QString operator()(const Numerico& numero) const { return TextoNumerico(numero); }
    QString operator()(const QString& texto) const { return texto; }
    QString operator()(const QByteArray& bytes) const
    {
        return QString::fromLatin1(bytes.toHex().toUpper());
    }
};

struct EnValor {
    Valor operator()(std::monostate) const { return Nulo(); }
    Valor operator()(bool verdad) const { return verdad; }
    Valor operator()(qint64 numero) const
    {
        const auto corto = static_cast<int>(numero);
        return corto == numero ? Valor(corto) : Valor(qlonglong{numero});
    }
    Valor operator()(Moneda moneda) const { return TextoMoneda(moneda).toDouble(); }
    Valor operator()(float numero) const { return numero; }
    Valor operator()(double numero) const { return numero; }
    Valor operator()(Fecha fecha) const { return FechaHora(fecha); }
    Valor operator()(const Guid& guid) const { return TextoGuid(guid); }
    Valor operator()(const Numerico& numero) const { return TextoNumerico(numero).toDouble(); }
    Valor operator()(const QString& texto) const { return texto; }
    Valor operator()(const QByteArray& bytes) const { return bytes; }
};

} // namespace

bool EsNulo(const Dato& dato)
{
    return std::holds_alternative<std::monostate>(dato);
}

QDateTime FechaHora(Fecha fecha)
{
    if (!(fecha.dias >= PrimerDia && fecha.dias < UltimoDia + 1))
        return {};
    const double dia = std::trunc(fecha.dias);
    const double ms = std::round(std::fabs(fecha.dias - dia) * MsPorDia);
    const QDate fechaSola = QDate(1899, 12, 30).addDays(static_cast<qint64>(dia));
    return SinZona(fechaSola).addMSecs(static_cast<qint64>(ms));
}

Fecha FechaDe(const QDateTime& momento)
{
    const auto dia = static_cast<double>(QDate(1899, 12, 30).daysTo(momento.date()));
    const double fraccion = momento.time().msecsSinceStartOfDay() / MsPorDia;
    // The time has no sign of its own, also before the first day.
    return {dia < 0 ? dia - fraccion : dia + fraccion};
}

QString TextoExacto(const Dato& dato)
{
    return std::visit(EnPalabras{}, dato);
}

Valor AValor(const Dato& dato)
{
    return std::visit(EnValor{}, dato);
}

} // namespace tolmo::data::access::mdb
