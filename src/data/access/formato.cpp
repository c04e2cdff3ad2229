#include "data/access/formato.h"
#include "data/valores.h"
#include <QHash>

namespace tolmo::data::access {
namespace {

// The formats that have a name; the texts are the country's.
const QHash<QString, QString>& FormatosConNombre()
{
    static const QHash<QString, QString> formatos{
        {"general date", "c"},
        {"long date", "dddddd"},
        {"medium date", "dd-mmm-yy"},
        {"short date", "ddddd"},
        {"long time", "ttttt"},
        {"medium time", "hh:nn AM/PM"},
        {"short time", "hh:nn"},
        {"currency", "#,##0.00 €"},
        {"fixed", "0.00"},
        {"standard", "#,##0.00"},
        {"percent", "0.00%"},
        {"scientific", "0.00E+00"},
        {"yes/no", "\"Sí\";\"Sí\";\"No\""},
        {"true/false", "\"Verdadero\";\"Verdadero\";\"Falso\""},
        {"on/off", "\"Activado\";\"Activado\";\"Desactivado\""},
    };
    return formatos;
}

QString SinFijos(const QString& formato)
{
    QString resto;
    bool comillas = false;
    for (qsizetype i = 0; i < formato.size(); ++i) {
        if (formato[i] == u'"')
            comillas = !comillas;
        else if (formato[i] == u'\\' && !comillas)
            ++i;
        else if (!comillas)
            resto += formato[i];
    }
    return resto;
}

bool TieneAlguno(const QString& texto, const QString& signos)
{
    for (const QChar c : texto) {
        if (signos.contains(c, Qt::CaseInsensitive))
            return true;
    }
    return false;
}

} // namespace

QString Formato(const ValorFormato& valor, const QString& formato, const Semana& semana)
{
    const QString nombre = formato.toLower();
    const QString usado = FormatosConNombre().value(nombre, formato);
    const QString signos = SinFijos(usado);
    if (usado.isEmpty() || nombre == QLatin1String("general number"))
        return valor.esTexto && !valor.numero && valor.momento ? TextoMomento(*valor.momento)
                                                               : valor.texto;
    const bool numerico = TieneAlguno(signos, QStringLiteral("0#")) || usado.contains(u';');
    if (numerico) {
        std::optional<double> numero = valor.numero;
        if (!numero && valor.momento)
            numero = Serie(*valor.momento);
        return numero ? FormatoNumero(*numero, usado) : valor.texto;
    }
    if (TieneAlguno(signos, QStringLiteral("dmyhnsqwtc")))
        return valor.momento ? FormatoFecha(*valor.momento, usado, semana) : valor.texto;
    return FormatoTexto(valor.texto, usado);
}

QString FormatoTexto(const QString& texto, const QString& formato)
{
    QString base = formato.contains(u'<')   ? texto.toLower()
                   : formato.contains(u'>') ? texto.toUpper()
                                            : texto;
    const qsizetype huecos = formato.count(u'@') + formato.count(u'&');
    if (huecos == 0)
        return base;
    // Filled from the right, so that a short text leaves the first places empty.
    qsizetype vacios = std::max<qsizetype>(huecos - base.size(), 0);
    qsizetype p = 0;
    qsizetype sobran = std::max<qsizetype>(base.size() - huecos, 0);
    QString resultado;
    for (const QChar c : formato) {
        if (c != u'@' && c != u'&') {
            if (!QStringLiteral("<>!\\\"").contains(c))
                resultado += c;
        } else if (vacios > 0) {
            --vacios;
            if (c == u'@')
                resultado += u' ';
        } else {
            resultado += base.mid(p, sobran + 1);
            p += sobran + 1;
            sobran = 0;
        }
    }
    return resultado;
}

} // namespace tolmo::data::access
