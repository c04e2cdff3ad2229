#include "data/access/funciones.h"
#include "data/access/decimales.h"
#include "data/valores.h"
#include <algorithm>
#include <cmath>
#include <limits>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

struct Registrada {
    const FuncionSql* funcion;
    const Ahora* ahora;
};

const Registrada& RegistradaDe(sqlite3_context* contexto)
{
    return *static_cast<const Registrada*>(sqlite3_user_data(contexto));
}

// No exception may go through the engine, which is written in C.
void Ejecuta(sqlite3_context* contexto, int total, sqlite3_value** valores) noexcept
{
    const FuncionSql& funcion = *RegistradaDe(contexto).funcion;
    Argumentos argumentos(contexto, total, valores);
    try {
        if (funcion.propagaNulo && argumentos.AlgunNulo())
            argumentos.DevuelveNulo();
        else
            funcion.cuerpo(argumentos);
    } catch (const std::exception& error) {
        sqlite3_result_error(contexto, error.what(), -1);
    }
}

struct Rango {
    double menor;
    double mayor;
};

Rango RangoDe(Tipo tipo)
{
    switch (tipo) {
    case Tipo::Byte:
        return {0, 255};
    case Tipo::Corto:
        return {-32768, 32767};
    case Tipo::Entero:
        return {-2147483648.0, 2147483647.0};
    case Tipo::Grande:
        return {-9.2e18, 9.2e18};
    case Tipo::Moneda:
        return {-922337203685477.5808, 922337203685477.5807};
    default:
        return {-std::numeric_limits<double>::max(), std::numeric_limits<double>::max()};
    }
}

} // namespace

void RegistraFunciones(sqlite3* base, const Ahora& ahora)
{
    RegistraDeConversion(base, ahora);
    RegistraDeTexto(base, ahora);
    RegistraDeNumero(base, ahora);
    RegistraDeFecha(base, ahora);
    RegistraAgregados(base);
}

void Registra(sqlite3* base, const FuncionSql& funcion, const Ahora& ahora)
{
    const int constante = funcion.constante ? SQLITE_DETERMINISTIC : 0;
    sqlite3_create_function_v2(base, funcion.nombre, funcion.argumentos,
                               SQLITE_UTF8 | SQLITE_INNOCUOUS | constante,
                               new Registrada{&funcion, &ahora}, Ejecuta, nullptr, nullptr,
                               [](void* dato) { delete static_cast<Registrada*>(dato); });
}

bool Argumentos::EsNulo(int i) const
{
    return sqlite3_value_type(valores_[i]) == SQLITE_NULL;
}

bool Argumentos::EsTexto(int i) const
{
    return sqlite3_value_type(valores_[i]) == SQLITE_TEXT;
}

bool Argumentos::EsEntero(int i) const
{
    return sqlite3_value_type(valores_[i]) == SQLITE_INTEGER;
}

bool Argumentos::AlgunNulo() const
{
    return std::any_of(valores_, valores_ + total_,
                       [](sqlite3_value* v) { return sqlite3_value_type(v) == SQLITE_NULL; });
}

std::string_view Argumentos::Bytes(int i) const
{
    const auto* bytes = reinterpret_cast<const char*>(sqlite3_value_text(valores_[i]));
    const int largo = sqlite3_value_bytes(valores_[i]);
    return {bytes ? bytes : "", bytes ? static_cast<std::size_t>(largo) : 0};
}

QString Argumentos::Texto(int i) const
{
    if (sqlite3_value_type(valores_[i]) == SQLITE_FLOAT)
        return data::Texto(sqlite3_value_double(valores_[i]));
    const std::string_view bytes = Bytes(i);
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

double Argumentos::Numero(int i) const
{
    if (!EsTexto(i))
        return sqlite3_value_double(valores_[i]);
    const QString texto = Texto(i);
    const auto numero = LeeNumero(texto);
    if (!numero)
        throw ErrorFuncion(
            QStringLiteral("No coinciden los tipos de datos: \"%1\" no es un número").arg(texto));
    return *numero;
}

qlonglong Argumentos::Entero(int i) const
{
    if (EsEntero(i))
        return sqlite3_value_int64(valores_[i]);
    return static_cast<qlonglong>(AjustaNumero(Numero(i), Tipo::Grande));
}

std::optional<Momento> Argumentos::MomentoSiLoEs(int i) const
{
    if (EsNulo(i))
        return std::nullopt;
    if (!EsTexto(i))
        return DesdeSerie(sqlite3_value_double(valores_[i]));
    const auto iso = LeeIso(Bytes(i));
    return iso ? iso : LeeMomento(Texto(i));
}

Momento Argumentos::MomentoDe(int i) const
{
    const auto momento = MomentoSiLoEs(i);
    if (!momento)
        throw ErrorFuncion(QStringLiteral("No coinciden los tipos de datos: \"%1\" no es una fecha")
                               .arg(Texto(i)));
    return *momento;
}

QDateTime Argumentos::Ahora() const
{
    return (*RegistradaDe(contexto_).ahora)();
}

void Argumentos::Devuelve(const QString& texto) const
{
    const QByteArray bytes = texto.toUtf8();
    sqlite3_result_text(contexto_, bytes.constData(), static_cast<int>(bytes.size()),
                        SQLITE_TRANSIENT);
}

void Argumentos::Devuelve(std::string_view bytes) const
{
    sqlite3_result_text(contexto_, bytes.data(), static_cast<int>(bytes.size()), SQLITE_TRANSIENT);
}

void Argumentos::Devuelve(double numero) const
{
    sqlite3_result_double(contexto_, numero);
}

void Argumentos::Devuelve(qlonglong numero) const
{
    sqlite3_result_int64(contexto_, numero);
}

void Argumentos::DevuelveNulo() const
{
    sqlite3_result_null(contexto_);
}

void Argumentos::DevuelveArgumento(int i) const
{
    sqlite3_result_value(contexto_, valores_[i]);
}

double RedondeaPar(double numero, int decimales)
{
    const double escala = decimales == 4 ? 1e4 : std::pow(10.0, decimales);
    const double ampliado = numero * escala;
    // So many digits that the multiplication would lose the last ones.
    if (std::fabs(ampliado) >= 0x1p52)
        return QString::number(numero, 'f', decimales).toDouble();
    const double cercano = std::nearbyint(ampliado);
    // 1.005 * 100 is 100.49999999999999: what stands behind the 15th digit is noise of the
    // multiplication and would hide a half. Far from a half it doesn't matter.
    constexpr double LejosDelMedio = 0.4;
    if (std::fabs(ampliado - cercano) < LejosDelMedio)
        return cercano / escala;
    return std::nearbyint(QString::number(ampliado, 'g', 15).toDouble()) / escala;
}

double NumeroAlPrincipio(QStringView texto)
{
    QString limpio;
    for (const QChar c : texto) {
        if (!c.isSpace())
            limpio += c;
    }
    const auto cifras = [&limpio](qsizetype desde) {
        while (desde < limpio.size() && limpio[desde] >= u'0' && limpio[desde] <= u'9')
            ++desde;
        return desde;
    };
    const bool signo = limpio.startsWith(u'-') || limpio.startsWith(u'+');
    qsizetype fin = cifras(signo ? 1 : 0);
    if (fin < limpio.size() && limpio[fin] == u'.')
        fin = cifras(fin + 1);
    if (fin + 1 < limpio.size() && limpio[fin].toLower() == u'e') {
        const bool otro = limpio[fin + 1] == u'-' || limpio[fin + 1] == u'+';
        const qsizetype exponente = fin + (otro ? 2 : 1);
        if (cifras(exponente) > exponente)
            fin = cifras(exponente);
    }
    return limpio.left(fin).toDouble();
}

std::optional<double> LeeNumero(QStringView texto)
{
    const QString recortado = texto.trimmed().toString();
    if (!EsNumerico(recortado))
        return std::nullopt;
    return recortado.toDouble();
}

double AjustaNumero(double numero, Tipo tipo)
{
    const bool entero =
        tipo == Tipo::Byte || tipo == Tipo::Corto || tipo == Tipo::Entero || tipo == Tipo::Grande;
    double ajustado = numero;
    if (entero)
        ajustado = RedondeaPar(numero, 0);
    else if (tipo == Tipo::Moneda)
        ajustado = RedondeaPar(numero, 4);
    else if (tipo == Tipo::Simple)
        ajustado = CabeEnSimple(numero) ? DecimalDeSimple(static_cast<float>(numero))
                                        : std::numeric_limits<double>::infinity();
    const Rango rango = RangoDe(tipo);
    if (!(ajustado >= rango.menor && ajustado <= rango.mayor))
        throw ErrorFuncion(QStringLiteral("Desbordamiento: %1").arg(data::Texto(numero)));
    return ajustado;
}

} // namespace tolmo::data::access
