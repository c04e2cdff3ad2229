#include "data/access/valores_mdb.h"
#include "data/access/base.h"
#include "data/access/decimales.h"
#include "data/access/errores_access.h"
#include "data/access/fechas.h"
#include "data/access/mdb/clave_texto.h"
#include <QUuid>
#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

using mdb::Dato;
using mdb::TipoColumna;

/// Half a second and a bit, in days: dates are shown to the second, and held finer.
constexpr double MargenDeFecha = 0.6 / 86400;
constexpr double PartesDeMoneda = 10000;
constexpr double LimiteDeMoneda = 9e18;
constexpr int CifrasDeDoble = 15;

std::string_view Bytes(sqlite3_value* valor)
{
    const void* bytes = sqlite3_value_blob(valor);
    const int largo = sqlite3_value_bytes(valor);
    return {static_cast<const char*>(bytes), bytes ? static_cast<std::size_t>(largo) : 0};
}

QString Texto(sqlite3_value* valor)
{
    const auto* texto = reinterpret_cast<const char*>(sqlite3_value_text(valor));
    return QString::fromUtf8(texto, sqlite3_value_bytes(valor));
}

bool EsNumero(sqlite3_value* valor)
{
    const int clase = sqlite3_value_type(valor);
    return clase == SQLITE_INTEGER || clase == SQLITE_FLOAT;
}

QString TextoDeGuid(const mdb::Guid& guid)
{
    const auto& b = guid.bytes;
    const auto u32 = qFromLittleEndian<quint32>(b.data());
    const auto u16 = [&b](std::size_t donde) {
        return qFromLittleEndian<quint16>(b.data() + donde);
    };
    return QUuid(u32, u16(4), u16(6), b[8], b[9], b[10], b[11], b[12], b[13], b[14], b[15])
        .toString(QUuid::WithBraces)
        .toUpper();
}

mdb::Guid GuidDe(const QString& texto)
{
    const QUuid id = QUuid::fromString(texto);
    if (id.isNull() && !texto.contains(QLatin1String("00000000-0000")))
        Rechaza(QStringLiteral("«%1» no es un identificador GUID").arg(texto));
    mdb::Guid guid;
    qToLittleEndian<quint32>(id.data1, guid.bytes.data());
    qToLittleEndian<quint16>(id.data2, guid.bytes.data() + 4);
    qToLittleEndian<quint16>(id.data3, guid.bytes.data() + 6);
    std::copy(std::begin(id.data4), std::end(id.data4), guid.bytes.begin() + 8);
    return guid;
}

/// The result of a call of the engine's.
struct EnResultado {
    sqlite3_context* contexto;
    void PonNulo() const { sqlite3_result_null(contexto); }
    void Pon(qint64 numero) const { sqlite3_result_int64(contexto, numero); }
    void Pon(double numero) const { sqlite3_result_double(contexto, numero); }
    void Pon(const QString& texto) const
    {
        const QByteArray bytes = texto.toUtf8();
        sqlite3_result_text64(contexto, bytes.constData(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT,
                              SQLITE_UTF8);
    }
    void Pon(const QByteArray& bytes) const
    {
        sqlite3_result_blob64(contexto, bytes.constData(),
                              static_cast<sqlite3_uint64>(bytes.size()), SQLITE_TRANSIENT);
    }
};

/// A parameter of a statement.
struct EnParametro {
    Preparada& preparada;
    int numero;
    void PonNulo() const { preparada.LigaNulo(numero); }
    template <class T> void Pon(const T& valor) const { preparada.Liga(numero, valor); }
};

template <class Destino> void EntregaEn(const Destino& destino, const Dato& dato)
{
    struct Visita {
        const Destino& d;
        void operator()(std::monostate) const { d.PonNulo(); }
        void operator()(bool verdad) const { d.Pon(qint64{verdad ? -1 : 0}); }
        void operator()(qint64 numero) const { d.Pon(numero); }
        void operator()(const mdb::Moneda& moneda) const
        {
            constexpr qint64 Partes = 10000;
            constexpr qint64 MayorExacto = qint64{1} << 53;
            if (moneda.diezmilesimas % Partes == 0)
                d.Pon(moneda.diezmilesimas / Partes);
            else if (moneda.diezmilesimas > MayorExacto || moneda.diezmilesimas < -MayorExacto)
                d.Pon(mdb::AValor(Dato(moneda)).toDouble());
            else
                d.Pon(static_cast<double>(moneda.diezmilesimas) / PartesDeMoneda);
        }
        void operator()(float numero) const { d.Pon(DecimalDeSimple(numero)); }
        void operator()(double numero) const { d.Pon(numero); }
        void operator()(const mdb::Fecha& fecha) const { d.Pon(Iso(DesdeSerie(fecha.dias))); }
        void operator()(const mdb::Guid& guid) const { d.Pon(TextoDeGuid(guid)); }
        void operator()(const mdb::Numerico& numero) const
        {
            d.Pon(mdb::AValor(Dato(numero)).toDouble());
        }
        void operator()(const QString& texto) const { d.Pon(texto); }
        void operator()(const QByteArray& bytes) const { d.Pon(bytes); }
    };
    std::visit(Visita{destino}, dato);
}

[[noreturn]] void NoCabe(sqlite3_value* valor, const mdb::Columna& columna)
{
    Rechaza(
        QStringLiteral("El número %1 no cabe en el campo %2").arg(Texto(valor), columna.nombre));
}

/// All the digits of a number, which may have come as text.
Decimal DecimalEn(sqlite3_value* valor, const mdb::Columna& columna)
{
    if (sqlite3_value_type(valor) == SQLITE_INTEGER)
        return DecimalDe(qint64{sqlite3_value_int64(valor)});
    const double numero = sqlite3_value_double(valor);
    if (sqlite3_value_type(valor) == SQLITE_FLOAT && std::isfinite(numero))
        return DecimalDe(numero);
    const auto decimal = LeeDecimal(Texto(valor));
    if (!decimal)
        NoCabe(valor, columna);
    return *decimal;
}

mdb::Moneda MonedaEn(sqlite3_value* valor, const mdb::Columna& columna)
{
    const double numero = sqlite3_value_double(valor);
    if (std::abs(numero) < PrimeroSinMoneda)
        return {static_cast<qint64>(std::nearbyint(numero * PartesDeMoneda))};
    const auto moneda = MonedaDe(DecimalEn(valor, columna));
    if (!moneda)
        NoCabe(valor, columna);
    return *moneda;
}

mdb::Numerico NumericoEn(sqlite3_value* valor, const mdb::Columna& columna)
{
    const auto numero = NumericoDe(DecimalEn(valor, columna), columna.precision, columna.escala);
    if (!numero)
        NoCabe(valor, columna);
    return *numero;
}

std::optional<double> SerieDe(sqlite3_value* valor)
{
    if (EsNumero(valor))
        return sqlite3_value_double(valor);
    const auto momento = LeeIso(Bytes(valor));
    return momento ? std::optional(Serie(*momento)) : std::nullopt;
}

/// The nearest single; beyond the largest one, the infinite one.
float ASimple(double numero)
{
    if (CabeEnSimple(numero))
        return static_cast<float>(numero);
    return std::copysign(std::numeric_limits<float>::infinity(),
                         static_cast<float>(numero > 0 ? 1 : -1));
}

qint64 AEntero(double numero)
{
    constexpr double Limite = 9.2e18;
    return static_cast<qint64>(std::clamp(numero, -Limite, Limite));
}

/// The whole numbers around a number, which are the same where it is whole.
Margen MargenEntero(double numero)
{
    return {.desde = AEntero(std::floor(numero)),
            .hasta = AEntero(std::ceil(numero)),
            .exacto = std::floor(numero) == numero};
}

std::optional<std::pair<qint64, qint64>> LimitesDe(TipoColumna tipo)
{
    switch (tipo) {
    case TipoColumna::Byte:
        return std::pair<qint64, qint64>(0, 255);
    case TipoColumna::Entero:
        return std::pair<qint64, qint64>(-32768, 32767);
    case TipoColumna::Largo:
        return std::pair<qint64, qint64>(std::numeric_limits<qint32>::min(),
                                         std::numeric_limits<qint32>::max());
    default:
        return std::nullopt;
    }
}

} // namespace

TipoDeclarado TipoDeColumna(const mdb::Columna& columna)
{
    switch (columna.tipo) {
    case TipoColumna::Logico:
        return {Tipo::Logico};
    case TipoColumna::Byte:
        return {Tipo::Byte};
    case TipoColumna::Entero:
        return {Tipo::Corto};
    case TipoColumna::Largo:
    case TipoColumna::Complejo:
        return {Tipo::Entero};
    case TipoColumna::Grande:
        return {Tipo::Grande};
    case TipoColumna::Moneda:
        return {Tipo::Moneda};
    case TipoColumna::Simple:
        return {Tipo::Simple};
    case TipoColumna::Doble:
        return {Tipo::Doble};
    case TipoColumna::Numerico:
        return {.tipo = Tipo::Doble, .precision = columna.precision, .escala = columna.escala};
    case TipoColumna::Fecha:
        return {Tipo::Fecha};
    case TipoColumna::Texto:
        return {Tipo::Texto, columna.largo / 2};
    case TipoColumna::Guid:
        return {Tipo::Texto, 38};
    case TipoColumna::Memo:
        return {Tipo::Memo};
    case TipoColumna::FechaExtendida:
        return {Tipo::Texto, 42};
    case TipoColumna::Binario:
    case TipoColumna::BinarioFijo:
    case TipoColumna::Ole:
        break;
    }
    return {Tipo::Binario};
}

void Entrega(sqlite3_context* contexto, const Dato& dato)
{
    EntregaEn(EnResultado{contexto}, dato);
}

void EntregaExacta(sqlite3_context* contexto, const Dato& dato)
{
    const auto* moneda = std::get_if<mdb::Moneda>(&dato);
    const bool pequena = moneda && std::abs(static_cast<double>(moneda->diezmilesimas)) <
                                       PrimeroSinMoneda * PartesDeMoneda;
    const QString texto = pequena || mdb::EsNulo(dato) ? QString() : mdb::TextoExacto(dato);
    if (texto.isEmpty() || (!moneda && CabeEnDoble(texto)))
        Entrega(contexto, dato);
    else
        EnResultado{contexto}.Pon(texto);
}

bool PasaDeDoble(const mdb::Columna& columna)
{
    return columna.tipo == TipoColumna::Moneda ||
           (columna.tipo == TipoColumna::Numerico && columna.precision > CifrasDeDoble);
}

void Liga(Preparada& preparada, int parametro, const Dato& dato)
{
    EntregaEn(EnParametro{preparada, parametro}, dato);
}

Dato DatoDe(sqlite3_value* valor, const mdb::Columna& columna)
{
    if (sqlite3_value_type(valor) == SQLITE_NULL) {
        // Truth has no Null.
        return columna.tipo == TipoColumna::Logico ? Dato(false) : Dato();
    }
    switch (columna.tipo) {
    case TipoColumna::Logico:
        return sqlite3_value_double(valor) != 0;
    case TipoColumna::Byte:
    case TipoColumna::Entero:
    case TipoColumna::Largo:
    case TipoColumna::Complejo:
    case TipoColumna::Grande:
        return static_cast<qint64>(sqlite3_value_int64(valor));
    case TipoColumna::Moneda:
        return MonedaEn(valor, columna);
    case TipoColumna::Simple:
        return ASimple(sqlite3_value_double(valor));
    case TipoColumna::Doble:
        return sqlite3_value_double(valor);
    case TipoColumna::Numerico:
        return NumericoEn(valor, columna);
    case TipoColumna::Fecha:
        if (const auto serie = SerieDe(valor))
            return mdb::Fecha{*serie};
        Rechaza(QStringLiteral("El campo %1 tiene que ser una fecha").arg(columna.nombre));
    case TipoColumna::Guid:
        return GuidDe(Texto(valor));
    case TipoColumna::Texto:
    case TipoColumna::Memo:
    case TipoColumna::FechaExtendida:
        return Texto(valor);
    case TipoColumna::Binario:
    case TipoColumna::BinarioFijo:
    case TipoColumna::Ole:
        break;
    }
    const std::string_view bytes = Bytes(valor);
    return QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

bool SeBuscaExacta(TipoColumna tipo)
{
    return tipo == TipoColumna::Texto || tipo == TipoColumna::Byte || tipo == TipoColumna::Entero ||
           tipo == TipoColumna::Largo || tipo == TipoColumna::Grande ||
           tipo == TipoColumna::Moneda || tipo == TipoColumna::Logico;
}

bool SeBusca(const mdb::Columna& columna)
{
    if (columna.tipo == TipoColumna::Texto)
        return mdb::OrdenConocido(columna.orden);
    return SeBuscaExacta(columna.tipo) || columna.tipo == TipoColumna::Simple ||
           columna.tipo == TipoColumna::Doble || columna.tipo == TipoColumna::Fecha;
}

std::optional<Margen> MargenDe(sqlite3_value* valor, const mdb::Columna& columna)
{
    const bool esTexto = sqlite3_value_type(valor) == SQLITE_TEXT;
    switch (columna.tipo) {
    case TipoColumna::Texto: {
        if (!esTexto)
            return std::nullopt;
        const Dato texto = Texto(valor);
        return Margen{.desde = texto, .hasta = texto, .exacto = true};
    }
    case TipoColumna::Fecha: {
        const auto serie = esTexto ? SerieDe(valor) : std::nullopt;
        // Before 1900 the order of the numbers isn't that of the moments.
        if (!serie || *serie < 1)
            return std::nullopt;
        return Margen{.desde = mdb::Fecha{*serie - MargenDeFecha},
                      .hasta = mdb::Fecha{*serie + MargenDeFecha}};
    }
    default:
        break;
    }
    if (!EsNumero(valor))
        return std::nullopt;
    const double numero = sqlite3_value_double(valor);
    switch (columna.tipo) {
    case TipoColumna::Simple:
    case TipoColumna::Doble: {
        // A step to either side: the two zeros, and what rounding to a single number leaves.
        const double paso = std::max(std::abs(numero) * 1e-6, 1e-30);
        if (columna.tipo == TipoColumna::Doble)
            return Margen{.desde = numero - paso, .hasta = numero + paso};
        return Margen{.desde = ASimple(numero - paso), .hasta = ASimple(numero + paso)};
    }
    case TipoColumna::Moneda: {
        const double partes = numero * PartesDeMoneda;
        if (std::abs(partes) > LimiteDeMoneda)
            return std::nullopt;
        if (std::abs(numero) >= PrimeroSinMoneda) {
            // Several amounts are the same number.
            const double paso = std::abs(partes) * std::numeric_limits<double>::epsilon() + 1;
            return Margen{.desde = mdb::Moneda{AEntero(std::floor(partes - paso))},
                          .hasta = mdb::Moneda{AEntero(std::ceil(partes + paso))}};
        }
        // What a double leaves of the four decimals is no other amount.
        const double cercano = std::nearbyint(partes);
        const Margen margen = MargenEntero(std::abs(partes - cercano) < 1e-3 ? cercano : partes);
        return Margen{.desde = mdb::Moneda{mdb::Como<qint64>(margen.desde)},
                      .hasta = mdb::Moneda{mdb::Como<qint64>(margen.hasta)},
                      .exacto = margen.exacto};
    }
    case TipoColumna::Logico:
        if (numero != 0 && numero != -1)
            return std::nullopt;
        return Margen{.desde = numero != 0, .hasta = numero != 0, .exacto = true};
    case TipoColumna::Byte:
    case TipoColumna::Entero:
    case TipoColumna::Largo:
    case TipoColumna::Grande: {
        const auto limites = LimitesDe(columna.tipo);
        if (limites && (numero < static_cast<double>(limites->first) ||
                        numero > static_cast<double>(limites->second)))
            return std::nullopt;
        return MargenEntero(numero);
    }
    default:
        return std::nullopt;
    }
}

} // namespace tolmo::data::access
