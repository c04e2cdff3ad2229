#include "data/access/funciones.h"
#include <cmath>

namespace tolmo::data::access {
namespace {

[[noreturn]] void DivisionPorCero()
{
    throw ErrorFuncion(QStringLiteral("División por cero"));
}

void Divide(Argumentos& a)
{
    const double divisor = a.Numero(1);
    if (divisor == 0)
        DivisionPorCero();
    a.Devuelve(a.Numero(0) / divisor);
}

// "\" and Mod work on whole numbers: both sides are rounded first.
void DivideEntero(Argumentos& a)
{
    const qlonglong divisor = a.Entero(1);
    if (divisor == 0)
        DivisionPorCero();
    a.Devuelve(a.Entero(0) / divisor);
}

void Resto(Argumentos& a)
{
    const qlonglong divisor = a.Entero(1);
    if (divisor == 0)
        DivisionPorCero();
    a.Devuelve(a.Entero(0) % divisor);
}

void Potencia(Argumentos& a)
{
    const double resultado = std::pow(a.Numero(0), a.Numero(1));
    if (!std::isfinite(resultado))
        throw ErrorFuncion(QStringLiteral("Argumento no válido en ^"));
    a.Devuelve(resultado);
}

template <double (*funcion)(double)> void Entera(Argumentos& a)
{
    if (a.EsEntero(0))
        a.DevuelveArgumento(0);
    else
        a.Devuelve(funcion(a.Numero(0)));
}

void Abs(Argumentos& a)
{
    if (a.EsEntero(0))
        a.Devuelve(std::abs(a.Entero(0)));
    else
        a.Devuelve(std::fabs(a.Numero(0)));
}

void Sgn(Argumentos& a)
{
    const double numero = a.Numero(0);
    a.Devuelve(numero < 0 ? -1 : numero > 0 ? 1 : 0);
}

void Round(Argumentos& a)
{
    const qlonglong decimales = a.Total() > 1 ? a.Entero(1) : 0;
    if (decimales < 0 || decimales > 22)
        throw ErrorFuncion(QStringLiteral("Argumento no válido en Round"));
    if (a.EsEntero(0))
        a.DevuelveArgumento(0);
    else
        a.Devuelve(RedondeaPar(a.Numero(0), static_cast<int>(decimales)));
}

void Sqr(Argumentos& a)
{
    const double numero = a.Numero(0);
    if (numero < 0)
        throw ErrorFuncion(QStringLiteral("Argumento no válido en Sqr"));
    a.Devuelve(std::sqrt(numero));
}

const FuncionSql Funciones[] = {
    {"kov_divide", 2, true, Divide},
    {"kov_divide_entero", 2, true, DivideEntero},
    {"kov_resto", 2, true, Resto},
    {"kov_potencia", 2, true, Potencia},
    {"kov_int", 1, true, Entera<std::floor>},
    {"kov_fix", 1, true, Entera<std::trunc>},
    {"kov_abs", 1, true, Abs},
    {"kov_sgn", 1, true, Sgn},
    {"kov_round", -1, true, Round},
    {"kov_sqr", 1, true, Sqr},
};

} // namespace

void RegistraDeNumero(sqlite3* base, const Ahora& ahora)
{
    for (const FuncionSql& funcion : Funciones)
        Registra(base, funcion, ahora);
}

} // namespace tolmo::data::access
