#include "data/access/colacion.h"
#include "data/access/decimales.h"
#include "data/access/funciones.h"
#include "data/access/patron.h"
#include "data/valores.h"
#include <cmath>
#include <sqlite3.h>

namespace tolmo::data::access {
namespace {

template <Comodines comodines> void Como(Argumentos& a)
{
    a.DevuelveVerdad(CasaPatron(a.Bytes(0), a.Bytes(1), comodines));
}

template <Comodines comodines> void Empieza(Argumentos& a)
{
    a.DevuelveVerdad(CasaPrincipio(a.Bytes(0), a.Bytes(1), comodines));
}

void PrefijoDesde(Argumentos& a)
{
    a.Devuelve(TramoDePrefijo(PrincipioFijo(a.Texto(0), Comodines::Conexion)).desde);
}

void PrefijoHasta(Argumentos& a)
{
    a.Devuelve(TramoDePrefijo(PrincipioFijo(a.Texto(0), Comodines::Conexion)).hasta);
}

void ATexto(Argumentos& a)
{
    if (a.EsTexto(0))
        a.DevuelveArgumento(0);
    else
        a.Devuelve(a.Texto(0));
}

void FechaATexto(Argumentos& a)
{
    const auto momento = a.MomentoSiLoEs(0);
    a.Devuelve(momento ? TextoMomento(*momento) : a.Texto(0));
}

// The digits that a text shows of a single; a whole number shows all of its own.
void DigitosDeSimple(Argumentos& a)
{
    const double numero = a.Numero(0);
    if (std::trunc(numero) == numero)
        a.DevuelveArgumento(0);
    else
        a.Devuelve(data::Texto(Valor(static_cast<float>(numero))).toDouble());
}

// The number that a value reads as, Null for one that doesn't: it equals nothing.
void Numero(Argumentos& a)
{
    if (!a.EsTexto(0)) {
        a.DevuelveArgumento(0);
        return;
    }
    const auto numero = LeeNumero(a.Texto(0));
    if (numero)
        a.Devuelve(*numero);
    else
        a.DevuelveNulo();
}

void NumeroExigido(Argumentos& a)
{
    if (a.EsTexto(0))
        a.Devuelve(a.Numero(0));
    else
        a.DevuelveArgumento(0);
}

void Fecha(Argumentos& a)
{
    if (a.EsTexto(0) && a.Bytes(0).size() == 19 && LeeIso(a.Bytes(0))) {
        a.DevuelveArgumento(0);
        return;
    }
    const auto momento = a.MomentoSiLoEs(0);
    if (momento && CabeEnColumna(*momento))
        a.Devuelve(Iso(*momento));
    else
        a.DevuelveNulo();
}

void FechaExigida(Argumentos& a)
{
    a.Devuelve(Iso(a.MomentoDe(0)));
}

void SerieDeFecha(Argumentos& a)
{
    if (a.EsTexto(0))
        a.Devuelve(Serie(a.MomentoDe(0)));
    else
        a.DevuelveArgumento(0);
}

void FechaDeSerie(Argumentos& a)
{
    const Momento momento = DesdeSerie(a.Numero(0));
    if (!CabeEnColumna(momento))
        throw ErrorFuncion(QStringLiteral("La fecha no está entre los años 100 y 9999"));
    a.Devuelve(Iso(momento));
}

// "&": Null counts as empty, but Null with Null stays Null.
void Une(Argumentos& a)
{
    QString texto;
    bool alguno = false;
    for (int i = 0; i < a.Total(); ++i) {
        alguno = alguno || !a.EsNulo(i);
        if (!a.EsNulo(i))
            texto += a.Texto(i);
    }
    if (alguno)
        a.Devuelve(texto);
    else
        a.DevuelveNulo();
}

// "+" on values whose kind shows only row by row: two texts are joined, all else is added.
void Suma(Argumentos& a)
{
    if (a.EsTexto(0) && a.EsTexto(1))
        a.Devuelve(a.Texto(0) + a.Texto(1));
    else
        a.Devuelve(a.Numero(0) + a.Numero(1));
}

// Into columns: (value, width, column), (value, column), (value, kind, column).

void AsignaTexto(Argumentos& a)
{
    const QString texto = a.EsNulo(0) ? QString() : a.Texto(0);
    const qlonglong ancho = a.Entero(1);
    if (texto.size() > ancho)
        throw ErrorFuncion(
            QStringLiteral("El texto para el campo %1 tiene %2 caracteres y caben %3")
                .arg(a.Texto(2))
                .arg(texto.size())
                .arg(ancho));
    if (a.EsNulo(0) || a.EsTexto(0))
        a.DevuelveArgumento(0);
    else
        a.Devuelve(texto);
}

void AsignaFecha(Argumentos& a)
{
    const auto momento = a.MomentoSiLoEs(0);
    if (momento && !CabeEnColumna(*momento))
        throw ErrorFuncion(
            QStringLiteral("La fecha para el campo %1 no está entre los años 100 y 9999")
                .arg(a.Texto(1)));
    if (momento)
        a.Devuelve(Iso(*momento));
    else if (a.EsNulo(0))
        a.DevuelveNulo();
    else
        throw ErrorFuncion(QStringLiteral("El campo %1 es una fecha y no admite \"%2\"")
                               .arg(a.Texto(1), a.Texto(0)));
}

void DevuelveNumero(const Argumentos& a, double numero, Tipo tipo)
{
    const bool entero = tipo != Tipo::Simple && tipo != Tipo::Doble && tipo != Tipo::Moneda;
    if (entero)
        a.Devuelve(static_cast<qlonglong>(numero));
    else
        a.Devuelve(numero);
}

double NumeroPara(const Argumentos& a, const QString& campo)
{
    const auto numero = a.EsTexto(0) ? LeeNumero(a.Texto(0)) : std::optional(a.Numero(0));
    if (!numero)
        throw ErrorFuncion(
            QStringLiteral("El campo %1 es un número y no admite \"%2\"").arg(campo, a.Texto(0)));
    return *numero;
}

[[noreturn]] void NoCabe(const Argumentos& a, const QString& campo)
{
    throw ErrorFuncion(
        QStringLiteral("El número %1 no cabe en el campo %2").arg(a.Texto(0), campo));
}

/// All the digits of the number.
Decimal DecimalPara(const Argumentos& a, const QString& campo)
{
    const double numero = NumeroPara(a, campo);
    if (a.EsEntero(0))
        return DecimalDe(a.Entero(0));
    const auto decimal = a.EsTexto(0)            ? LeeDecimal(a.Texto(0))
                         : std::isfinite(numero) ? std::optional(DecimalDe(numero))
                                                 : std::nullopt;
    if (!decimal)
        NoCabe(a, campo);
    return *decimal;
}

void AsignaMoneda(Argumentos& a)
{
    const QString campo = a.Texto(2);
    if (!a.EsTexto(0) && std::fabs(a.Numero(0)) < PrimeroSinMoneda) {
        a.Devuelve(RedondeaPar(a.Numero(0), 4));
        return;
    }
    const auto moneda = MonedaDe(DecimalPara(a, campo));
    if (!moneda)
        NoCabe(a, campo);
    const QString texto = mdb::TextoExacto(*moneda);
    if (std::fabs(texto.toDouble()) < PrimeroSinMoneda)
        a.Devuelve(texto.toDouble());
    else
        a.Devuelve(texto);
}

// (value, digits, digits behind the point, column).
void AsignaDecimal(Argumentos& a)
{
    if (a.EsNulo(0)) {
        a.DevuelveNulo();
        return;
    }
    const QString campo = a.Texto(3);
    const auto numero = NumericoDe(DecimalPara(a, campo), static_cast<int>(a.Entero(1)),
                                   static_cast<int>(a.Entero(2)));
    if (!numero)
        NoCabe(a, campo);
    const QString texto = mdb::TextoExacto(*numero);
    if (CabeEnDoble(texto))
        a.Devuelve(texto.toDouble());
    else
        a.Devuelve(texto);
}

void AsignaNumero(Argumentos& a)
{
    const auto tipo = static_cast<Tipo>(a.Entero(1));
    if (a.EsNulo(0)) {
        a.DevuelveNulo();
        return;
    }
    if (tipo == Tipo::Moneda) {
        AsignaMoneda(a);
        return;
    }
    if (tipo == Tipo::Grande && a.EsEntero(0)) {
        a.DevuelveArgumento(0);
        return;
    }
    const double numero = NumeroPara(a, a.Texto(2));
    try {
        DevuelveNumero(a, AjustaNumero(numero, tipo), tipo);
    } catch (const ErrorFuncion&) {
        NoCabe(a, a.Texto(2));
    }
}

bool VerdadDe(const Argumentos& a, const QString& campo)
{
    if (a.EsTexto(0)) {
        const QString texto = a.Texto(0).trimmed().toUpper();
        if (texto == QLatin1String("TRUE") || texto == QLatin1String("VERDADERO"))
            return true;
        if (texto == QLatin1String("FALSE") || texto == QLatin1String("FALSO"))
            return false;
    }
    return NumeroPara(a, campo) != 0;
}

// A column of truth has no Null: it counts as false.
void AsignaLogico(Argumentos& a)
{
    a.Devuelve(!a.EsNulo(0) && VerdadDe(a, a.Texto(1)) ? -1 : 0);
}

// CInt, CLng, CDbl and the others: (value, kind).
void Convierte(Argumentos& a)
{
    const auto tipo = static_cast<Tipo>(a.Entero(1));
    double numero = 0;
    if (a.EsTexto(0) && !LeeNumero(a.Texto(0)) && LeeIso(a.Bytes(0)))
        numero = Serie(a.MomentoDe(0));
    else
        numero = a.Numero(0);
    DevuelveNumero(a, AjustaNumero(numero, tipo), tipo);
}

void ConvierteLogico(Argumentos& a)
{
    a.DevuelveVerdad(VerdadDe(a, QStringLiteral("CBool")));
}

void EsNumerica(Argumentos& a)
{
    a.DevuelveVerdad(!a.EsNulo(0) && (!a.EsTexto(0) || LeeNumero(a.Texto(0))));
}

void EsFecha(Argumentos& a)
{
    a.DevuelveVerdad(a.EsTexto(0) && a.MomentoSiLoEs(0).has_value());
}

const FuncionSql Funciones[] = {
    {"kov_como", 2, true, Como<Comodines::Conexion>},
    {"kov_como_guardada", 2, true, Como<Comodines::ConsultaGuardada>},
    {"kov_empieza", 2, true, Empieza<Comodines::Conexion>},
    {"kov_empieza_guardada", 2, true, Empieza<Comodines::ConsultaGuardada>},
    {"kov_prefijo_desde", 1, true, PrefijoDesde},
    {"kov_prefijo_hasta", 1, true, PrefijoHasta},
    {"kov_texto", 1, true, ATexto},
    {"kov_simple", 1, true, DigitosDeSimple},
    {"kov_fecha_texto", 1, true, FechaATexto},
    {"kov_numero", 1, true, Numero},
    {"kov_numero_exigido", 1, true, NumeroExigido},
    {"kov_fecha", 1, true, Fecha},
    {"kov_fecha_exigida", 1, true, FechaExigida},
    {"kov_serie", 1, true, SerieDeFecha},
    {"kov_desde_serie", 1, true, FechaDeSerie},
    {"kov_une", -1, false, Une},
    {"kov_suma", 2, true, Suma},
    {"kov_asigna_texto", 3, false, AsignaTexto},
    {"kov_asigna_fecha", 2, false, AsignaFecha},
    {"kov_asigna_numero", 3, false, AsignaNumero},
    {"kov_asigna_decimal", 4, false, AsignaDecimal},
    {"kov_asigna_logico", 2, false, AsignaLogico},
    {"kov_convierte", 2, true, Convierte},
    {"kov_convierte_logico", 1, true, ConvierteLogico},
    {"kov_es_numero", 1, false, EsNumerica},
    {"kov_es_fecha", 1, false, EsFecha},
};

} // namespace

void RegistraDeConversion(sqlite3* base, const Ahora& ahora)
{
    for (const FuncionSql& funcion : Funciones)
        Registra(base, funcion, ahora);
}

} // namespace tolmo::data::access
