#include "data/dialecto.h"
#include "data/errores.h"
#include "data/plantilla.h"
#include "data/traductor.h"
#include <cmath>
#include <string_view>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

// clang-format off
constexpr Plantilla SqlFechaSqlServer(u"CAST('{valor}' AS NVARCHAR)");
constexpr Plantilla SqlFechaMySql(u"CAST('{valor}' AS DATE)");
constexpr Plantilla SqlFechaAccess(u"Format('{valor}','dd/mm/yyyy')");
// clang-format on

QString ComoFechaMySql(QDate fecha)
{
    return fecha.toString(u"yyyy/MM/dd");
}

QString ComoFechaMySql(const Valor& valor)
{
    if (EsFecha(valor))
        return ComoFechaMySql(valor.toDate());
    // A date held as a number counts days from this one on; it may be any of this many.
    const QDate diaCero(1899, 12, 30);
    constexpr double UltimoDia = 2958465;
    if (EsNumero(valor) && std::fabs(valor.toDouble()) <= UltimoDia)
        return ComoFechaMySql(diaCero.addDays(static_cast<qint64>(valor.toDouble())));
    const QString texto = Texto(valor);
    const QDateTime leida = LeeFecha(texto);
    return leida.isValid() ? ComoFechaMySql(leida.date()) : texto;
}

QString ComoDia(const Valor& valor)
{
    return Texto(EsFecha(valor) ? Valor(valor.toDate()) : valor);
}

} // namespace

QString NombreDialecto(Dialecto dialecto)
{
    switch (dialecto) {
    case Dialecto::SqlServer:
        return u"SQLSERVER"_s;
    case Dialecto::MySql:
        return u"MYSQL"_s;
    case Dialecto::Access:
        break;
    }
    return u"ACCESS"_s;
}

Dialecto DialectoDeConstruccion()
{
    constexpr std::string_view tipo = KOV_TIPO_BASE_DATOS;
    static_assert(tipo == "ACCESS" || tipo == "SQLSERVER");
    return tipo == "ACCESS" ? Dialecto::Access : Dialecto::SqlServer;
}

QString TraduceSql(Dialecto dialecto, const QString& sql)
{
    switch (dialecto) {
    case Dialecto::SqlServer:
        return TraduceSqlServer(sql);
    case Dialecto::MySql:
        return TraduceMySql(sql);
    case Dialecto::Access:
        break;
    }
    return sql;
}

QString FechaSql(Dialecto dialecto, const Valor& valor)
{
    switch (dialecto) {
    case Dialecto::SqlServer:
        return SqlFechaSqlServer({{"valor", ComoDia(valor)}});
    case Dialecto::MySql:
        return SqlFechaMySql({{"valor", ComoFechaMySql(valor)}});
    case Dialecto::Access:
        break;
    }
    return SqlFechaAccess({{"valor", ComoDia(valor)}});
}

} // namespace tolmo::data
