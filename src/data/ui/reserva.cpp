#include "data/ui/reserva.h"
#include <QRegularExpression>
#include <algorithm>
#include <utility>
#include <vector>

namespace tolmo::data::ui {
namespace {

const QString Oculta = QStringLiteral("***");

bool EsNombreDeClave(QStringView nombre)
{
    static const QRegularExpression clave(QStringLiteral("pass|pwd|clave"),
                                          QRegularExpression::CaseInsensitiveOption);
    return clave.match(nombre.toString()).hasMatch();
}

/// A piece of a text, between its commas.
struct Trozo {
    qsizetype desde = 0;
    qsizetype hasta = 0;
};

/// The pieces of a bracketed list whose "(" stands at `abre`, and the place of its ")". Commas and
/// brackets inside quotes or inner brackets belong to their piece. A list that isn't closed ends
/// with the text.
std::pair<std::vector<Trozo>, qsizetype> ParteLista(const QString& texto, qsizetype abre)
{
    std::vector<Trozo> trozos;
    qsizetype desde = abre + 1;
    int fondo = 0;
    bool comillas = false;
    qsizetype p = desde;
    for (; p < texto.size(); ++p) {
        if (texto[p] == u'\'')
            comillas = !comillas;
        if (comillas)
            continue;
        if (texto[p] == u'(')
            ++fondo;
        if (texto[p] == u')' && --fondo < 0)
            break;
        if (texto[p] == u',' && fondo == 0) {
            trozos.push_back({desde, p});
            desde = p + 1;
        }
    }
    trozos.push_back({desde, p});
    return {trozos, p};
}

/// Behind a name and "=", as far as `valor` reaches.
QString OcultaDetras(QString texto, const QString& valor)
{
    const QRegularExpression asignacion(
        QStringLiteral(R"((\w*(?:pass|pwd|clave)\w*[\]`"]?\s*=\s*))") + valor,
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
    return texto.replace(asignacion, QStringLiteral("\\1") + Oculta);
}

bool EsCadenaDeConexion(const QString& texto)
{
    return texto.startsWith(QLatin1String("Driver="), Qt::CaseInsensitive) ||
           texto.startsWith(QLatin1String("Provider="), Qt::CaseInsensitive);
}

QString OcultaInsercion(QString texto)
{
    static const QRegularExpression insercion(QStringLiteral(R"(INSERT\s+INTO\s+[^\s(]+\s*\()"),
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression valores(QStringLiteral(R"(\G\s*VALUES\s*\()"),
                                            QRegularExpression::CaseInsensitiveOption);
    const auto cabeza = insercion.match(texto);
    if (!cabeza.hasMatch())
        return texto;
    const auto [columnas, cierre] = ParteLista(texto, cabeza.capturedEnd() - 1);
    const auto cola = valores.match(texto, cierre + 1);
    if (!cola.hasMatch())
        return texto;
    const auto [datos, fin] = ParteLista(texto, cola.capturedEnd() - 1);
    // From the last to the first, so that the places in front stay where they were found.
    for (auto i = std::min(columnas.size(), datos.size()); i-- > 0;) {
        const QStringView nombre =
            QStringView(texto).mid(columnas[i].desde, columnas[i].hasta - columnas[i].desde);
        if (EsNombreDeClave(nombre))
            texto.replace(datos[i].desde, datos[i].hasta - datos[i].desde, Oculta);
    }
    return texto;
}

} // namespace

QString SinClaves(const QString& texto)
{
    static const QString valorDeCadena = QStringLiteral("[^;]*");
    static const QString valorDeSentencia =
        QStringLiteral(R"(('(?:[^']|'')*'?|"[^"]*"?|[^\s;,'")]+))");
    if (EsCadenaDeConexion(texto))
        return OcultaDetras(texto, valorDeCadena);
    return OcultaInsercion(OcultaDetras(texto, valorDeSentencia));
}

} // namespace tolmo::data::ui
