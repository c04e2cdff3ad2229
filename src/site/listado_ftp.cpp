#include "site/listado_ftp.h"
#include "data/valores.h"
#include <QRegularExpression>

namespace tolmo::site {
namespace {

int Mes(const QString& nombre)
{
    static const QString meses = QStringLiteral("janfebmaraprmayjunjulaugsepoctnovdec");
    const qsizetype p = meses.indexOf(nombre.toLower());
    return p < 0 || p % 3 != 0 ? 0 : static_cast<int>(p / 3) + 1;
}

/// A line with an hour has no year: it is the last time that the day came round. A day ahead is
/// allowed for a server in another time zone.
QDate ConAno(int mes, int dia, const QDate& hoy)
{
    const QDate esteAno(hoy.year(), mes, dia);
    return esteAno.isValid() && esteAno <= hoy.addDays(1) ? esteAno
                                                          : QDate(hoy.year() - 1, mes, dia);
}

QString Desnudo(const QString& nombre)
{
    return nombre.mid(nombre.lastIndexOf(u'/') + 1);
}

bool EsEntrada(const QString& nombre)
{
    return !nombre.isEmpty() && nombre != u"." && nombre != u"..";
}

QDateTime MomentoUnix(const QRegularExpressionMatch& m, const QDate& hoy)
{
    const int mes = Mes(m.captured(QStringLiteral("mes")));
    const int dia = m.captured(QStringLiteral("dia")).toInt();
    const QString cuando = m.captured(QStringLiteral("cuando"));
    const qsizetype dosPuntos = cuando.indexOf(u':');
    if (dosPuntos < 0)
        return data::SinZona(QDate(cuando.toInt(), mes, dia));
    const QDate fecha = ConAno(mes, dia, hoy);
    return data::SinZona(fecha,
                         QTime(cuando.left(dosPuntos).toInt(), cuando.mid(dosPuntos + 1).toInt()));
}

std::optional<DatosBusqueda> LeeUnix(const QString& linea, const QDate& hoy)
{
    static const QRegularExpression forma(QStringLiteral(
        R"(^(?<clase>[-dlbcps])(?<lee>[-r])(?<escribe>[-w])\S{7,8}\s+\d+\s+.*?\s(?<tamano>\d+)\s+(?<mes>[A-Za-z]{3})\s+(?<dia>\d{1,2})\s+(?<cuando>\d{1,2}:\d{2}|\d{4}) (?<nombre>.+)$)"));
    const QRegularExpressionMatch m = forma.match(linea);
    if (!m.hasMatch())
        return std::nullopt;
    QString nombre = m.captured(QStringLiteral("nombre"));
    const QString clase = m.captured(QStringLiteral("clase"));
    if (clase == u"l")
        nombre = nombre.section(QStringLiteral(" -> "), 0, 0);
    nombre = Desnudo(nombre);
    if (!EsEntrada(nombre))
        return std::nullopt;
    quint32 atributos = clase == u"d" ? atributo::Carpeta : 0;
    if (m.captured(QStringLiteral("escribe")) != u"w")
        atributos |= atributo::SoloLectura;
    return DatosBusqueda{.atributos = atributos == 0 ? atributo::Normal : atributos,
                         .escritura = MomentoUnix(m, hoy),
                         .tamano = m.captured(QStringLiteral("tamano")).toULongLong(),
                         .nombre = nombre};
}

std::optional<DatosBusqueda> LeeWindows(const QString& linea)
{
    static const QRegularExpression forma(QStringLiteral(
        R"(^(\d{2})-(\d{2})-(\d{2}|\d{4})\s+(\d{1,2}):(\d{2})\s*([AaPp])[Mm]\s+(<DIR>|\d+)\s+(.+)$)"));
    const QRegularExpressionMatch m = forma.match(linea);
    if (!m.hasMatch() || !EsEntrada(m.captured(8)))
        return std::nullopt;
    const int ano = m.captured(3).toInt();
    const int siglo = ano >= 100 ? 0 : ano < 70 ? 2000 : 1900;
    const bool tarde = m.captured(6).toLower() == u"p";
    const int hora = m.captured(4).toInt() % 12 + (tarde ? 12 : 0);
    const bool carpeta = m.captured(7) == u"<DIR>";
    return DatosBusqueda{
        .atributos = carpeta ? atributo::Carpeta : atributo::Normal,
        .escritura = data::SinZona(QDate(siglo + ano, m.captured(1).toInt(), m.captured(2).toInt()),
                                   QTime(hora, m.captured(5).toInt())),
        .tamano = carpeta ? 0 : m.captured(7).toULongLong(),
        .nombre = Desnudo(m.captured(8))};
}

} // namespace

std::optional<DatosBusqueda> LeeLineaListado(const QString& linea, const QDate& hoy)
{
    const std::optional<DatosBusqueda> entrada = LeeUnix(linea, hoy);
    return entrada ? entrada : LeeWindows(linea);
}

QList<DatosBusqueda> LeeListado(const QString& listado, const QDate& hoy)
{
    QList<DatosBusqueda> entradas;
    for (QString linea : listado.split(u'\n')) {
        if (linea.endsWith(u'\r'))
            linea.chop(1);
        if (const auto entrada = LeeLineaListado(linea, hoy))
            entradas << *entrada;
        else if (linea.endsWith(u':'))
            break; // what follows lies inside a folder that the wildcard met
    }
    return entradas;
}

bool CumpleFiltro(const QString& nombre, const QString& filtro)
{
    QString forma = QRegularExpression::escape(filtro);
    forma.replace(QStringLiteral("\\*"), QStringLiteral(".*"));
    forma.replace(QStringLiteral("\\?"), QStringLiteral("."));
    const QRegularExpression expresion(QRegularExpression::anchoredPattern(forma),
                                       QRegularExpression::DotMatchesEverythingOption);
    return expresion.match(nombre).hasMatch();
}

} // namespace tolmo::site
