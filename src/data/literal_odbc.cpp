#include "data/literal_odbc.h"
#include <QLocale>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

constexpr int DecimalesDeUnDoble = 16;

QString EntreComillas(QString texto, bool mySql)
{
    texto.replace(u'\'', "''"_L1);
    if (mySql)
        texto.replace(u'\\', "\\\\"_L1);
    // Without its prefix SQL Server takes a text for one of its own code page.
    return (mySql ? "'"_L1 : "N'"_L1) + texto + u'\'';
}

/// Forms that a server reads alike whatever its settings.
QString TextoDeFecha(const Valor& valor, bool mySql)
{
    if (valor.typeId() == QMetaType::QDate)
        return valor.toDate().toString(mySql ? u"yyyy-MM-dd" : u"yyyyMMdd");
    const QDateTime momento = MomentoDe(valor);
    const bool conMilesimas = momento.time().msec() != 0;
    return momento.toString(conMilesimas ? u"yyyy-MM-ddTHH:mm:ss.zzz" : u"yyyy-MM-ddTHH:mm:ss");
}

bool TieneDecimales(const Valor& valor)
{
    return valor.typeId() == QMetaType::Double || valor.typeId() == QMetaType::Float;
}

} // namespace

QString Literal(const Valor& valor, bool mySql)
{
    if (valor.isNull())
        return u"NULL"_s;
    if (valor.typeId() == QMetaType::Bool)
        return valor.toBool() ? u"1"_s : u"0"_s;
    if (TieneDecimales(valor))
        return QString::number(valor.toDouble(), 'g', QLocale::FloatingPointShortest);
    if (EsNumero(valor))
        return Texto(valor);
    if (EsFecha(valor))
        return u'\'' + TextoDeFecha(valor, mySql) + u'\'';
    return EntreComillas(Texto(valor), mySql);
}

QString LiteralParaComparar(const Valor& valor, bool mySql)
{
    if (TieneDecimales(valor) && !EsNulo(valor))
        return QString::number(valor.toDouble(), 'e', DecimalesDeUnDoble);
    return Literal(valor, mySql);
}

} // namespace tolmo::data
