#include "data/access/tipos.h"
#include <QHash>
#include <QRegularExpression>
#include <algorithm>

namespace tolmo::data::access {
namespace {

constexpr int AnchoSinDeclarar = 255;
constexpr int AnchoDeGuid = 38;
constexpr int MayorPrecision = 28;

const QHash<QString, Tipo>& TiposPorNombre()
{
    static const QHash<QString, Tipo> tipos{
        {"NVARCHAR", Tipo::Texto},     {"VARCHAR", Tipo::Texto},   {"CHAR", Tipo::Texto},
        {"NCHAR", Tipo::Texto},        {"CHARACTER", Tipo::Texto}, {"STRING", Tipo::Texto},
        {"ALPHANUMERIC", Tipo::Texto}, {"TEXT", Tipo::Memo},       {"NTEXT", Tipo::Memo},
        {"MEMO", Tipo::Memo},          {"LONGTEXT", Tipo::Memo},   {"LONGCHAR", Tipo::Memo},
        {"NOTE", Tipo::Memo},          {"CLOB", Tipo::Memo},       {"BYTE", Tipo::Byte},
        {"TINYINT", Tipo::Byte},       {"SMALLINT", Tipo::Corto},  {"SHORT", Tipo::Corto},
        {"INT", Tipo::Entero},         {"INTEGER", Tipo::Entero},  {"LONG", Tipo::Entero},
        {"COUNTER", Tipo::Entero},     {"IDENTITY", Tipo::Entero}, {"AUTOINCREMENT", Tipo::Entero},
        {"BIGINT", Tipo::Grande},      {"SINGLE", Tipo::Simple},   {"DOUBLE", Tipo::Doble},
        {"FLOAT", Tipo::Doble},        {"REAL", Tipo::Doble},      {"NUMBER", Tipo::Doble},
        {"NUMERIC", Tipo::Doble},      {"DECIMAL", Tipo::Doble},   {"CURRENCY", Tipo::Moneda},
        {"MONEY", Tipo::Moneda},       {"DATETIME", Tipo::Fecha},  {"DATE", Tipo::Fecha},
        {"TIME", Tipo::Fecha},         {"TIMESTAMP", Tipo::Fecha}, {"YESNO", Tipo::Logico},
        {"BIT", Tipo::Logico},         {"LOGICAL", Tipo::Logico},  {"BOOLEAN", Tipo::Logico},
        {"BOOL", Tipo::Logico},        {"BINARY", Tipo::Binario},  {"VARBINARY", Tipo::Binario},
        {"LONGBINARY", Tipo::Binario}, {"IMAGE", Tipo::Binario},   {"BLOB", Tipo::Binario},
        {"GUID", Tipo::Texto},
    };
    return tipos;
}

bool EsEntero(Tipo tipo)
{
    return tipo == Tipo::Byte || tipo == Tipo::Corto || tipo == Tipo::Entero || EsVerdad(tipo);
}

} // namespace

bool EsTexto(Tipo tipo)
{
    return tipo == Tipo::Texto || tipo == Tipo::Memo;
}

bool EsVerdad(Tipo tipo)
{
    return tipo == Tipo::Logico || tipo == Tipo::Condicion;
}

bool EsNumero(Tipo tipo)
{
    return (tipo >= Tipo::Byte && tipo <= Tipo::Moneda) || EsVerdad(tipo);
}

int NumeroAdo(Tipo tipo)
{
    switch (tipo) {
    case Tipo::Memo:
        return 203;
    case Tipo::Byte:
        return 17;
    case Tipo::Corto:
    case Tipo::Condicion:
        return 2;
    case Tipo::Entero:
        return 3;
    case Tipo::Grande:
        return 20;
    case Tipo::Simple:
        return 4;
    case Tipo::Doble:
        return 5;
    case Tipo::Moneda:
        return 6;
    case Tipo::Fecha:
        return 7;
    case Tipo::Logico:
        return 11;
    case Tipo::Binario:
        return 204;
    default:
        return 202;
    }
}

TipoDeclarado LeeTipo(const QString& declaracion)
{
    static const QRegularExpression forma(
        QStringLiteral("^\\s*([A-Za-z]+)(?:[^(]*\\(\\s*(\\d+)(?:\\s*,\\s*(\\d+))?)?"));
    const auto partes = forma.match(declaracion);
    const QString nombre = partes.captured(1).toUpper();
    TipoDeclarado tipo{TiposPorNombre().value(nombre, Tipo::Desconocido)};
    const int ancho = partes.captured(2).toInt();
    if (nombre == QLatin1String("TEXT") && ancho > 0)
        tipo.tipo = Tipo::Texto;
    tipo.guid = nombre == QLatin1String("GUID");
    if (tipo.guid)
        tipo.ancho = AnchoDeGuid;
    else if (tipo.tipo == Tipo::Texto)
        tipo.ancho = ancho > 0 ? ancho : AnchoSinDeclarar;
    else if (tipo.tipo == Tipo::Binario)
        tipo.ancho = ancho;
    else if (nombre == QLatin1String("DECIMAL") || nombre == QLatin1String("NUMERIC")) {
        tipo.precision = std::min(ancho, MayorPrecision);
        tipo.escala = std::min(partes.captured(3).toInt(), tipo.precision);
    }
    return tipo;
}

QString Declaracion(TipoDeclarado tipo)
{
    switch (tipo.tipo) {
    case Tipo::Texto:
        return QStringLiteral("nvarchar(%1)").arg(tipo.ancho > 0 ? tipo.ancho : AnchoSinDeclarar);
    case Tipo::Byte:
        return QStringLiteral("BYTE");
    case Tipo::Corto:
    case Tipo::Condicion:
        return QStringLiteral("SMALLINT");
    case Tipo::Entero:
        return QStringLiteral("INT");
    case Tipo::Grande:
        return QStringLiteral("BIGINT");
    case Tipo::Simple:
        return QStringLiteral("SINGLE");
    case Tipo::Doble:
        return tipo.precision == 0
                   ? QStringLiteral("DOUBLE")
                   : QStringLiteral("DECIMAL(%1,%2)").arg(tipo.precision).arg(tipo.escala);
    case Tipo::Moneda:
        return QStringLiteral("CURRENCY");
    case Tipo::Fecha:
        return QStringLiteral("DATETIME");
    case Tipo::Logico:
        return QStringLiteral("YESNO");
    case Tipo::Binario:
        return QStringLiteral("BLOB");
    case Tipo::Nulo:
        return QStringLiteral("nvarchar(255)");
    default:
        // MEMO would have the affinity of a number: '007' would be kept as 7.
        return QStringLiteral("NTEXT");
    }
}

Tipo TipoAritmetico(Tipo a, Tipo b)
{
    if (EsEntero(a) && EsEntero(b))
        return Tipo::Entero;
    if (a == Tipo::Nulo || b == Tipo::Nulo)
        return Tipo::Nulo;
    const bool moneda = a == Tipo::Moneda || b == Tipo::Moneda;
    const Tipo otro = a == Tipo::Moneda ? b : a;
    if (moneda && (EsEntero(otro) || otro == Tipo::Moneda || otro == Tipo::Grande))
        return Tipo::Moneda;
    if ((a == Tipo::Grande || EsEntero(a)) && (b == Tipo::Grande || EsEntero(b)))
        return Tipo::Grande;
    return Tipo::Doble;
}

Tipo TipoComun(Tipo a, Tipo b)
{
    if (a == b)
        return a;
    if (a == Tipo::Nulo || b == Tipo::Nulo)
        return a == Tipo::Nulo ? b : a;
    if (a == Tipo::Desconocido || b == Tipo::Desconocido)
        return Tipo::Desconocido;
    if (EsTexto(a) && EsTexto(b))
        return Tipo::Memo;
    if (EsNumero(a) && EsNumero(b)) {
        if (EsVerdad(a) && EsVerdad(b))
            return Tipo::Corto;
        if (EsVerdad(a) || EsVerdad(b))
            return EsVerdad(a) ? b : a;
        return (a == Tipo::Moneda) != (b == Tipo::Moneda) && (EsEntero(a) || EsEntero(b))
                   ? Tipo::Moneda
                   : std::max(a, b);
    }
    return a == Tipo::Memo || b == Tipo::Memo ? Tipo::Memo : Tipo::Texto;
}

} // namespace tolmo::data::access
