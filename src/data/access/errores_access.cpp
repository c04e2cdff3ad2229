#include "data/access/errores_access.h"

namespace tolmo::data::access {
namespace {

const QString Modulo = QStringLiteral("MotorAccess");

} // namespace

void Rechaza(const QString& descripcion)
{
    throw ErrorSql(numero_error::Sentencia, descripcion, Modulo);
}

void RechazaEn(qsizetype posicion, const QString& descripcion)
{
    Rechaza(QStringLiteral("%1 (posición %2)").arg(descripcion).arg(posicion + 1));
}

void RechazaValor(const QString& descripcion)
{
    throw ErrorSql(numero_error::CampoIncorrecto, descripcion, Modulo);
}

} // namespace tolmo::data::access
