#include "data/clase_columna.h"
#include <QStringList>

namespace tolmo::data {
namespace {

// ADO's numbers of the kinds of columns.
enum Ado {
    Corto = 2,
    Entero = 3,
    Simple = 4,
    Doble = 5,
    Moneda = 6,
    Fecha = 7,
    Logico = 11,
    DecimalVariante = 14,
    OctetoConSigno = 16,
    Octeto = 17,
    CortoSinSigno = 18,
    EnteroSinSigno = 19,
    Largo = 20,
    LargoSinSigno = 21,
    Decimal = 131,
    SoloFecha = 133,
    SoloHora = 134,
    FechaHora = 135,
    NumeroVariable = 139
};

} // namespace

ClaseColumna ClaseDe(int tipo)
{
    switch (tipo) {
    case Logico:
        return ClaseColumna::Logico;
    case Fecha:
    case SoloFecha:
    case SoloHora:
    case FechaHora:
        return ClaseColumna::Fecha;
    case Simple:
    case Doble:
    case Moneda:
    case DecimalVariante:
    case Decimal:
    case NumeroVariable:
        return ClaseColumna::Numero;
    default:
        return EsEntero(tipo) ? ClaseColumna::Numero : ClaseColumna::Texto;
    }
}

bool EsEntero(int tipo)
{
    switch (tipo) {
    case Corto:
    case Entero:
    case OctetoConSigno:
    case Octeto:
    case CortoSinSigno:
    case EnteroSinSigno:
    case Largo:
    case LargoSinSigno:
        return true;
    default:
        return false;
    }
}

std::optional<bool> LeeLogico(const QString& texto)
{
    static const QStringList verdaderos{QStringLiteral("S"),         QStringLiteral("SI"),
                                        QStringLiteral("SÍ"),        QStringLiteral("TRUE"),
                                        QStringLiteral("VERDADERO"), QStringLiteral("1"),
                                        QStringLiteral("-1")};
    static const QStringList falsos{QString(),
                                    QStringLiteral("N"),
                                    QStringLiteral("NO"),
                                    QStringLiteral("FALSE"),
                                    QStringLiteral("FALSO"),
                                    QStringLiteral("0")};
    const QString mayusculas = Recorta(texto).toUpper();
    if (verdaderos.contains(mayusculas))
        return true;
    if (falsos.contains(mayusculas))
        return false;
    return std::nullopt;
}

QString TextoCelda(const Valor& valor)
{
    if (valor.typeId() == QMetaType::Bool && !EsNulo(valor))
        return valor.toBool() ? QStringLiteral("Sí") : QStringLiteral("No");
    return Texto(valor);
}

} // namespace tolmo::data
