#include "data/access/mdb/clave.h"
#include <QtEndian>
#include <algorithm>
#include <bit>

namespace tolmo::data::access::mdb {
namespace {

constexpr char Nulo = 0x00;
constexpr char NuloDescendente = '\xFF';
constexpr char ConValor = 0x7F;
constexpr char ConValorDescendente = '\x80';
constexpr qsizetype TamGrupo = 8;
constexpr char SigueGrupo = 9;
constexpr char FinDeCodigos = 1; ///< in no code of a letter

QByteArray Complemento(QByteArray bytes)
{
    for (char& byte : bytes)
        byte = static_cast<char>(~byte);
    return bytes;
}

template <typename T> QByteArray DeMayorAMenor(T numero)
{
    QByteArray bytes(sizeof(T), Qt::Uninitialized);
    qToBigEndian(numero, bytes.data());
    return bytes;
}

template <typename T> QByteArray Entero(qint64 numero)
{
    constexpr T signo = static_cast<T>(T{1} << (8 * sizeof(T) - 1));
    return DeMayorAMenor(static_cast<T>(static_cast<T>(numero) ^ signo));
}

/// Of a number with a fraction the bits order as they stand, those below zero the other way round.
template <typename T> QByteArray Fraccionario(T bits)
{
    constexpr T signo = static_cast<T>(T{1} << (8 * sizeof(T) - 1));
    return DeMayorAMenor(static_cast<T>((bits & signo) != 0 ? ~bits : bits ^ signo));
}

QByteArray DeDoble(double numero)
{
    return Fraccionario(std::bit_cast<quint64>(numero));
}

/// The order of the text of a GUID, whose first three parts are stored the other way round.
QByteArray OrdenDeTexto(const Guid& guid)
{
    QByteArray bytes(reinterpret_cast<const char*>(guid.bytes.data()),
                     static_cast<qsizetype>(guid.bytes.size()));
    std::reverse(bytes.begin(), bytes.begin() + 4);
    std::reverse(bytes.begin() + 4, bytes.begin() + 6);
    std::reverse(bytes.begin() + 6, bytes.begin() + 8);
    return bytes;
}

/// In groups of eight, each with a byte behind it: 9 when another follows, else how many count.
/// Descending, all is complemented but the nines.
QByteArray Binario(const QByteArray& bytes, bool descendente)
{
    QByteArray clave;
    for (qsizetype desde = 0; desde < bytes.size(); desde += TamGrupo) {
        const bool sigue = desde + TamGrupo < bytes.size();
        QByteArray grupo = bytes.mid(desde, TamGrupo);
        const auto cuantos = static_cast<char>(grupo.size());
        grupo.append(TamGrupo - grupo.size(), '\0');
        if (!sigue)
            grupo += cuantos;
        clave += descendente ? Complemento(grupo) : grupo;
        if (sigue)
            clave += SigueGrupo;
    }
    return clave;
}

/// The sign of a Jet file is never complemented; that is a mistake of its engine, and every file
/// holds it. Access 2007 mended it in its own files.
QByteArray DeNumerico(const Numerico& numero, bool descendente, Version version)
{
    QByteArray magnitud;
    for (const quint32 palabra : numero.palabras)
        magnitud += DeMayorAMenor(palabra);
    if (version >= Version::Ace2007) {
        magnitud.prepend('\xFF');
        return numero.negativo != descendente ? Complemento(magnitud) : magnitud;
    }
    const QByteArray cuerpo = numero.negativo != descendente ? Complemento(magnitud) : magnitud;
    return QByteArray(1, numero.negativo ? '\x00' : '\xFF') + cuerpo;
}

/// The bytes of a value, ascending, for the types whose descending form is their complement.
std::optional<QByteArray> Ascendente(const Dato& dato, TipoColumna tipo)
{
    switch (tipo) {
    case TipoColumna::Logico:
        return QByteArray(1, Como<bool>(dato) ? '\x00' : '\xFF');
    case TipoColumna::Byte:
        return QByteArray(1, static_cast<char>(Como<qint64>(dato)));
    case TipoColumna::Entero:
        return Entero<quint16>(Como<qint64>(dato));
    case TipoColumna::Largo:
    case TipoColumna::Complejo:
        return Entero<quint32>(Como<qint64>(dato));
    case TipoColumna::Grande:
        return Entero<quint64>(Como<qint64>(dato));
    case TipoColumna::Moneda:
        return Entero<quint64>(Como<Moneda>(dato).diezmilesimas);
    case TipoColumna::Simple:
        return Fraccionario(std::bit_cast<quint32>(Como<float>(dato)));
    case TipoColumna::Doble:
        return DeDoble(Como<double>(dato));
    case TipoColumna::Fecha:
        return DeDoble(Como<Fecha>(dato).dias);
    default:
        return std::nullopt;
    }
}

std::optional<QByteArray> DeTexto(const QString& texto, const Columna& columna, bool descendente,
                                  const ReglasClave& reglas)
{
    // Access 97 has tables of its own.
    if (reglas.version == Version::Jet3)
        return std::nullopt;
    auto clave = ClaveTexto(texto, columna.orden, reglas.expansion);
    if (!clave || !descendente)
        return clave;
    return Complemento(*clave) + '\0';
}

std::optional<QByteArray> SinMarca(const Dato& dato, const Columna& columna, bool descendente,
                                   const ReglasClave& reglas)
{
    switch (columna.tipo) {
    case TipoColumna::Texto:
    case TipoColumna::Memo:
        return DeTexto(Como<QString>(dato), columna, descendente, reglas);
    case TipoColumna::Binario:
    case TipoColumna::BinarioFijo:
        return Binario(Como<QByteArray>(dato), descendente);
    case TipoColumna::Guid:
        return Binario(OrdenDeTexto(Como<Guid>(dato)), descendente);
    case TipoColumna::Numerico:
        return DeNumerico(Como<Numerico>(dato), descendente, reglas.version);
    default:
        const auto clave = Ascendente(dato, columna.tipo);
        return clave && descendente ? Complemento(*clave) : clave;
    }
}

} // namespace

std::optional<QByteArray> ClaveDeValor(const Dato& dato, const Columna& columna, bool descendente,
                                       const ReglasClave& reglas)
{
    if (EsNulo(dato))
        return QByteArray(1, descendente ? NuloDescendente : Nulo);
    const auto clave = SinMarca(dato, columna, descendente, reglas);
    if (!clave)
        return std::nullopt;
    return (descendente ? ConValorDescendente : ConValor) + *clave;
}

QByteArray HastaFinDeCodigos(const QByteArray& clave, bool descendente)
{
    const auto fin = static_cast<char>(descendente ? ~FinDeCodigos : FinDeCodigos);
    return clave.left(clave.indexOf(fin, 1));
}

ClaveDeFila ClaveDe(const Definicion& definicion, const IndiceReal& indice,
                    std::span<const Dato> valores, const ReglasClave& reglas)
{
    if (indice.SinNulos() && std::all_of(valores.begin(), valores.end(), EsNulo))
        return {.caso = ClaveDeFila::Caso::SinEntrada};
    ClaveDeFila clave{.caso = ClaveDeFila::Caso::Entrada};
    for (std::size_t i = 0; i < indice.columnas.size() && i < valores.size(); ++i) {
        const Columna* columna = definicion.ColumnaDe(indice.columnas[i].numero);
        const auto parte =
            columna == nullptr
                ? std::nullopt
                : ClaveDeValor(valores[i], *columna, indice.columnas[i].descendente, reglas);
        if (!parte)
            return {};
        clave.bytes += *parte;
    }
    return clave;
}

ClaveDeFila ClaveDe(const Tabla& tabla, const IndiceReal& indice, const Fila& fila,
                    Expansion expansion)
{
    std::vector<Dato> valores;
    for (const ColumnaIndice& en : indice.columnas) {
        const Columna* columna = tabla.definicion().ColumnaDe(en.numero);
        if (columna == nullptr)
            return {};
        valores.push_back(fila.Lee(*columna));
    }
    return ClaveDe(tabla.definicion(), indice, valores,
                   {.version = tabla.paginas().formato().version, .expansion = expansion});
}

} // namespace tolmo::data::access::mdb
