#include "data/campo_odbc.h"
#include <QDateTime>
#include <QSqlField>
#include <algorithm>
#include <limits>
#include <sqlext.h>

namespace tolmo::data {
namespace {

// ADO's numbers of the kinds of columns.
constexpr int TipoCorto = 2;
constexpr int TipoEntero = 3;
constexpr int TipoSimple = 4;
constexpr int TipoDoble = 5;
constexpr int TipoLogico = 11;
constexpr int TipoOcteto = 17;
constexpr int TipoLargo = 20;
constexpr int TipoDecimal = 131;
constexpr int TipoFecha = 135;
constexpr int TipoTexto = 202;
constexpr int TipoTextoLargo = 203;
constexpr int TipoBinario = 204;

/// ADO's number for the kind of a column.
int TipoAdo(const QSqlField& campo)
{
    switch (campo.metaType().id()) {
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return TipoFecha;
    case QMetaType::QByteArray:
        return TipoBinario;
    default:
        break;
    }
    switch (campo.typeID()) {
    case SQL_TINYINT:
        return TipoOcteto;
    case SQL_SMALLINT:
        return TipoCorto;
    case SQL_INTEGER:
        return TipoEntero;
    case SQL_BIGINT:
        return TipoLargo;
    case SQL_REAL:
        return TipoSimple;
    case SQL_FLOAT:
    case SQL_DOUBLE:
        return TipoDoble;
    case SQL_NUMERIC:
    case SQL_DECIMAL:
        return TipoDecimal;
    case SQL_BIT:
        return TipoLogico;
    case SQL_LONGVARCHAR:
    case SQL_WLONGVARCHAR:
        return TipoTextoLargo;
    default:
        return TipoTexto;
    }
}

/// Behind the table's name Qt hands on what its buffer held before.
QString SinResto(const QString& nombre)
{
    const qsizetype fin = nombre.indexOf(QChar(u'\0'));
    return fin < 0 ? nombre : nombre.left(fin);
}

} // namespace

Campo ComoCampo(const QSqlField& campo)
{
    const int tipo = TipoAdo(campo);
    return {.nombre = campo.name(),
            .tabla = SinResto(campo.tableName()),
            .columna = campo.name(),
            .tipo = tipo,
            .ancho = tipo == TipoTexto ? std::max(0, campo.length()) : 0};
}

Valor ComoValor(const QVariant& leido, const Campo& campo)
{
    if (leido.isNull())
        return Nulo();
    // A single comes as text, a bit as a number, a negative byte as the large number of its bits.
    if (campo.tipo == TipoSimple)
        return leido.toFloat();
    if (campo.tipo == TipoLogico)
        return leido.toInt() != 0;
    if (campo.tipo == TipoOcteto)
        return static_cast<int>(leido.toUInt());
    switch (leido.typeId()) {
    case QMetaType::UInt:
        return leido.toUInt() <= std::numeric_limits<int>::max() ? Valor(leido.toInt())
                                                                 : Valor(leido.toLongLong());
    case QMetaType::QDate:
        return leido.toDate().isValid() ? leido : Nulo();
    case QMetaType::QDateTime: {
        const QDateTime momento = MomentoDe(leido);
        return momento.isValid() ? Valor(momento) : Nulo();
    }
    default:
        return leido;
    }
}

bool SirveParaReconocer(const Campo& campo, const Valor& valor)
{
    switch (campo.tipo) {
    case TipoSimple:
    case TipoDoble:
    case TipoTextoLargo:
        return false;
    case TipoFecha:
        return !EsNulo(valor);
    default:
        return true;
    }
}

} // namespace tolmo::data
