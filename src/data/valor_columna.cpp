#include "data/valor_columna.h"
#include "data/clase_columna.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include <cmath>

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla NoEsNumero(u"«{columna}» tiene que ser un número.");
constexpr Plantilla NoEsEntero(u"«{columna}» tiene que ser un número entero.");
constexpr Plantilla NoEsFecha(u"«{columna}» tiene que ser una fecha (dd/mm/aaaa).");
constexpr Plantilla NoEsLogico(u"«{columna}» tiene que ser Sí o No.");
constexpr Plantilla NoCabe(u"«{columna}» admite como máximo {ancho} caracteres y el texto tiene {largo}.");
// clang-format on

constexpr int TipoSimple = 4;
constexpr int TipoMoneda = 6;
constexpr double PartesDeMoneda = 10000;

[[noreturn]] void Rechaza(const QString& motivo)
{
    throw ErrorDatos(numero_error::CampoIncorrecto, motivo, QStringLiteral("ModeloGrid"));
}

/// As the engine will keep it, so that what is on screen is what the database holds.
Valor Numero(const Campo& campo, const QString& rotulo, const QString& texto)
{
    if (!EsNumerico(texto))
        Rechaza(NoEsNumero({{"columna", rotulo}}));
    const double numero = ValorNumerico(texto);
    if (EsEntero(campo.tipo)) {
        if (std::trunc(numero) != numero)
            Rechaza(NoEsEntero({{"columna", rotulo}}));
        return numero;
    }
    if (campo.tipo == TipoMoneda)
        return std::nearbyint(numero * PartesDeMoneda) / PartesDeMoneda;
    if (campo.tipo == TipoSimple)
        return static_cast<float>(numero);
    return numero;
}

} // namespace

Valor ValorDeColumna(const Campo& campo, const QString& rotulo, const QString& texto)
{
    const ClaseColumna clase = ClaseDe(campo.tipo);
    if (clase == ClaseColumna::Logico) {
        const auto logico = LeeLogico(texto);
        if (!logico)
            Rechaza(NoEsLogico({{"columna", rotulo}}));
        return *logico;
    }
    if (texto.isEmpty())
        return Nulo();
    if (clase == ClaseColumna::Numero)
        return Numero(campo, rotulo, NumeroTecleado(texto));
    if (clase == ClaseColumna::Fecha) {
        const QDateTime fecha = LeeFecha(texto);
        if (!fecha.isValid())
            Rechaza(NoEsFecha({{"columna", rotulo}}));
        return fecha;
    }
    if (campo.ancho > 0 && texto.size() > campo.ancho)
        Rechaza(NoCabe({{"columna", rotulo},
                        {"ancho", Texto(campo.ancho)},
                        {"largo", Texto(static_cast<int>(texto.size()))}}));
    return texto;
}

QString NumeroTecleado(const QString& texto)
{
    QString conPunto = texto;
    conPunto.replace(u',', u'.');
    return EsNumerico(conPunto) ? conPunto : texto;
}

} // namespace tolmo::data
