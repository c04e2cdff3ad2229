#include "data/access/mdb/errores_mdb.h"
#include <QStringList>

namespace tolmo::data::access::mdb {
namespace {

QString Descripcion(const QString& frase, const Lugar& lugar)
{
    QStringList partes;
    if (!lugar.fichero.isEmpty())
        partes << QStringLiteral("fichero ") + lugar.fichero;
    if (!lugar.tabla.isEmpty())
        partes << QStringLiteral("tabla ") + lugar.tabla;
    if (!lugar.columna.isEmpty())
        partes << QStringLiteral("columna ") + lugar.columna;
    if (!lugar.indice.isEmpty())
        partes << QStringLiteral("índice ") + lugar.indice;
    if (lugar.pagina)
        partes << QStringLiteral("página ") + QString::number(*lugar.pagina);
    return partes.isEmpty() ? frase : frase + " (" + partes.join(", ") + u')';
}

int NumeroDe(Motivo motivo)
{
    switch (motivo) {
    case Motivo::NoHallado:
    case Motivo::Danado:
    case Motivo::NoAdmitido:
    case Motivo::SinValor:
    case Motivo::ClaveRepetida:
    case Motivo::Relacion:
    case Motivo::EnUso:
    case Motivo::NoSeEscribe:
    case Motivo::Lleno:
        return numero_error::Sentencia;
    case Motivo::Valor:
        return numero_error::CampoIncorrecto;
    default:
        return numero_error::Conexion;
    }
}

} // namespace

ErrorMdb::ErrorMdb(Motivo motivo, const QString& frase, const Lugar& lugar)
    : ErrorSql(NumeroDe(motivo), mdb::Descripcion(frase, lugar), QStringLiteral("MotorAccess")),
      motivo_(motivo), frase_(frase), lugar_(lugar)
{
}

ErrorMdb ErrorMdb::En(const Lugar& lugar) const
{
    Lugar completo = lugar_;
    if (completo.fichero.isEmpty())
        completo.fichero = lugar.fichero;
    if (completo.tabla.isEmpty())
        completo.tabla = lugar.tabla;
    if (completo.columna.isEmpty())
        completo.columna = lugar.columna;
    if (completo.indice.isEmpty())
        completo.indice = lugar.indice;
    if (!completo.pagina)
        completo.pagina = lugar.pagina;
    return {motivo_, frase_, completo};
}

void Danado(const QString& frase, const Lugar& lugar)
{
    throw ErrorMdb(Motivo::Danado, frase, lugar);
}

} // namespace tolmo::data::access::mdb
