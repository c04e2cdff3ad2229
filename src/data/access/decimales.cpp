#include "data/access/decimales.h"
#include <charconv>
#include <cmath>

namespace tolmo::data::access {
namespace {

/// Half a step above the largest single: from here on a number is rounded to none.
constexpr double PrimeroSinSimple = 0x1.ffffffp+127;

} // namespace

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
