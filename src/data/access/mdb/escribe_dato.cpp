#include "data/access/mdb/escribe_dato.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/texto.h"
#include <algorithm>
#include <cmath>
#include <limits>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint8 SignoNegativo = 0x80;
constexpr qsizetype MayorLargo = 0x3FFFFFFF;

using Palabras = std::array<quint32, 4>;

[[noreturn]] void NoVale(const QString& frase)
{
    throw ErrorMdb(Motivo::Valor, frase);
}

template <typename T> const T& Del(const Dato& dato)
{
    const T* valor = std::get_if<T>(&dato);
    if (valor == nullptr)
        NoVale(QStringLiteral("El valor no es del tipo de la columna"));
    return *valor;
}

template <typename T> Dato Entero(const Dato& dato)
{
    const qint64 numero = Del<qint64>(dato);
    if (numero < std::numeric_limits<T>::min() || numero > std::numeric_limits<T>::max())
        NoVale(QStringLiteral("El número %1 no cabe").arg(numero));
    return numero;
}

template <typename T> Dato Fraccionario(const Dato& dato)
{
    const T numero = Del<T>(dato);
    if (!std::isfinite(numero))
        NoVale(QStringLiteral("El valor no es un número"));
    return numero;
}

bool EsCero(const Palabras& palabras)
{
    return std::all_of(palabras.begin(), palabras.end(), [](quint32 p) { return p == 0; });
}

/// \returns the digit that falls out
quint32 EntreDiez(Palabras& palabras)
{
    quint64 resto = 0;
    for (quint32& palabra : palabras) {
        const quint64 parte = resto << 32 | palabra;
        palabra = static_cast<quint32>(parte / 10);
        resto = parte % 10;
    }
    return static_cast<quint32>(resto);
}

void PorDiez(Palabras& palabras)
{
    quint64 acarreo = 0;
    for (auto palabra = palabras.rbegin(); palabra != palabras.rend(); ++palabra) {
        const quint64 parte = quint64{*palabra} * 10 + acarreo;
        *palabra = static_cast<quint32>(parte);
        acarreo = parte >> 32;
    }
    if (acarreo != 0)
        NoVale(QStringLiteral("El número no cabe"));
}

int Cifras(Palabras palabras)
{
    int cifras = 0;
    for (; !EsCero(palabras); ++cifras)
        EntreDiez(palabras);
    return cifras;
}

Dato AjustaNumerico(const Columna& columna, Numerico numero)
{
    for (; numero.escala < columna.escala; ++numero.escala)
        PorDiez(numero.palabras);
    for (; numero.escala > columna.escala; --numero.escala) {
        if (EntreDiez(numero.palabras) != 0)
            NoVale(QStringLiteral("El número tiene más de %1 decimales").arg(columna.escala));
    }
    if (Cifras(numero.palabras) > columna.precision)
        NoVale(QStringLiteral("El número tiene más de %1 cifras").arg(columna.precision));
    numero.negativo = numero.negativo && !EsCero(numero.palabras);
    return numero;
}

Dato AjustaFecha(Fecha fecha)
{
    if (!FechaHora(fecha).isValid())
        NoVale(QStringLiteral("La fecha no está entre los años 100 y 9999"));
    return fecha;
}

Dato AjustaTexto(const Columna& columna, QString texto)
{
    const int caben = columna.largo / 2;
    if (texto.size() > caben)
        NoVale(
            QStringLiteral("El texto tiene %1 caracteres y caben %2").arg(texto.size()).arg(caben));
    // A text of fixed width is filled up with zeros.
    while (columna.Fija() && texto.endsWith(QChar(0)))
        texto.chop(1);
    return texto;
}

Dato AjustaBytes(const Columna& columna, QByteArray bytes)
{
    if (bytes.size() > columna.largo)
        NoVale(QStringLiteral("El valor tiene %1 bytes y caben %2")
                   .arg(bytes.size())
                   .arg(columna.largo));
    if (columna.Fija())
        bytes.append(columna.largo - bytes.size(), '\0');
    return bytes;
}

Dato AjustaValor(const Columna& columna, const Dato& dato)
{
    switch (columna.tipo) {
    case TipoColumna::Logico:
        return Del<bool>(dato);
    case TipoColumna::Byte:
        return Entero<quint8>(dato);
    case TipoColumna::Entero:
        return Entero<qint16>(dato);
    case TipoColumna::Largo:
        return Entero<qint32>(dato);
    case TipoColumna::Grande:
        return Entero<qint64>(dato);
    case TipoColumna::Moneda:
        return Del<Moneda>(dato);
    case TipoColumna::Simple:
        return Fraccionario<float>(dato);
    case TipoColumna::Doble:
        return Fraccionario<double>(dato);
    case TipoColumna::Fecha:
        return AjustaFecha(Del<Fecha>(dato));
    case TipoColumna::Guid:
        return Del<Guid>(dato);
    case TipoColumna::Numerico:
        return AjustaNumerico(columna, Del<Numerico>(dato));
    case TipoColumna::Texto:
        return AjustaTexto(columna, Del<QString>(dato));
    case TipoColumna::Binario:
    case TipoColumna::BinarioFijo:
        return AjustaBytes(columna, Del<QByteArray>(dato));
    case TipoColumna::Memo:
        return Del<QString>(dato);
    case TipoColumna::Ole:
        return Del<QByteArray>(dato);
    default:
        throw ErrorMdb(Motivo::NoAdmitido, QStringLiteral("El tipo %1 de una columna no se escribe")
                                               .arg(static_cast<int>(columna.tipo)));
    }
}

QByteArray DeNumerico(const Numerico& numero)
{
    QByteArray bytes(1, numero.negativo ? static_cast<char>(SignoNegativo) : '\0');
    for (const quint32 palabra : numero.palabras)
        Anade(bytes, palabra);
    return bytes;
}

QByteArray DeTexto(const Columna& columna, const QString& texto)
{
    QByteArray bytes = EscribeTexto(texto, columna.Comprime() && !columna.Fija());
    if (columna.Fija())
        bytes.append(columna.largo - bytes.size(), '\0');
    return bytes;
}

template <typename T> QByteArray DeNumero(T numero)
{
    QByteArray bytes;
    Anade(bytes, numero);
    return bytes;
}

QByteArray Escribe(const Columna& columna, const Dato& dato)
{
    switch (columna.tipo) {
    case TipoColumna::Byte:
        return DeNumero(static_cast<quint8>(Como<qint64>(dato)));
    case TipoColumna::Entero:
        return DeNumero(static_cast<qint16>(Como<qint64>(dato)));
    case TipoColumna::Largo:
        return DeNumero(static_cast<qint32>(Como<qint64>(dato)));
    case TipoColumna::Grande:
        return DeNumero(Como<qint64>(dato));
    case TipoColumna::Moneda:
        return DeNumero(Como<Moneda>(dato).diezmilesimas);
    case TipoColumna::Simple:
        return DeNumero(Como<float>(dato));
    case TipoColumna::Doble:
        return DeNumero(Como<double>(dato));
    case TipoColumna::Fecha:
        return DeNumero(Como<Fecha>(dato).dias);
    case TipoColumna::Guid: {
        const auto& bytes = std::get<Guid>(dato).bytes;
        return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
    }
    case TipoColumna::Numerico:
        return DeNumerico(Como<Numerico>(dato));
    case TipoColumna::Texto:
    case TipoColumna::Memo:
        return DeTexto(columna, Como<QString>(dato));
    default:
        return Como<QByteArray>(dato);
    }
}

} // namespace

Dato Ajusta(const Columna& columna, const Dato& dato)
{
    if (EsNulo(dato))
        return columna.tipo == TipoColumna::Logico ? Dato{false} : dato;
    return EnLugar([&] { return Lugar{.columna = columna.nombre}; },
                   [&] { return AjustaValor(columna, dato); });
}

QByteArray EscribeDato(const Columna& columna, const Dato& dato)
{
    return EnLugar([&] { return Lugar{.columna = columna.nombre}; },
                   [&] {
                       QByteArray bytes = Escribe(columna, dato);
                       const bool cabe = columna.Larga() ? bytes.size() <= MayorLargo
                                                         : columna.tipo != TipoColumna::Texto ||
                                                               bytes.size() <= columna.largo;
                       if (!cabe)
                           NoVale(QStringLiteral("El valor es demasiado largo"));
                       return bytes;
                   });
}

} // namespace tolmo::data::access::mdb
