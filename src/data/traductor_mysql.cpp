#include "data/busca_palabra.h"
#include "data/errores.h"
#include "data/traductor.h"
#include <QStringBuilder>
#include <algorithm>

namespace tolmo::data {
namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1StringView Longitud = " CHAR_LENGTH"_L1;
constexpr QLatin1StringView Comodin = "& '%'"_L1;
constexpr QLatin1StringView Concatena = " CONCAT"_L1;

/// The words that a text holds, found in one go: most texts hold none and are done with that.
struct Presentes {
    bool ntext = false;
    bool len = false;
    bool like = false;
    bool top = false;
    bool iif = false;
    bool entero = false;
    bool cstr = false;
    bool ampersand = false;

    bool Alguna() const
    {
        return ntext || len || like || top || iif || entero || cstr || ampersand;
    }
};

void Anota(Presentes& presentes, QStringView texto, qsizetype i)
{
    switch (EnMayuscula(texto[i].unicode())) {
    case u'&':
        presentes.ampersand = true;
        break;
    case u'N':
        presentes.ntext |= EstaEn(texto, i, "NTEXT"_L1);
        break;
    case u'L':
        presentes.len |= EstaEn(texto, i, "LEN"_L1);
        presentes.like |= EstaEn(texto, i, "LIKE"_L1);
        break;
    case u' ':
        presentes.top |= EstaEn(texto, i, " TOP "_L1);
        break;
    case u'I':
        presentes.iif |= EstaEn(texto, i, "IIF"_L1);
        presentes.entero |= EstaEn(texto, i, "INT("_L1);
        break;
    case u'C':
        presentes.cstr |= EstaEn(texto, i, "CSTR"_L1);
        break;
    default:
        break;
    }
}

Presentes Examina(QStringView texto)
{
    Presentes presentes;
    for (qsizetype i = 0; i < texto.size(); ++i)
        Anota(presentes, texto, i);
    return presentes;
}

/// True when a bracket opens at `desde`, blanks in front of it aside.
bool AbreParentesis(const QString& sql, qsizetype desde)
{
    while (desde < sql.size() && sql[desde] == u' ')
        ++desde;
    return desde < sql.size() && sql[desde] == u'(';
}

void TraduceLen(QString& sql)
{
    for (qsizetype p = BuscaPalabra(sql, "LEN"_L1); p >= 0;
         // As far as the new word reaches, hit or not: it holds the old one.
         p = BuscaPalabra(sql, "LEN"_L1, p + Longitud.size() - 1))
        if (AbreParentesis(sql, p + 3))
            sql.replace(p, 3, Longitud);
}

/// Only the first LIKE of the text, and only one whose operand holds no blank.
void TraduceLike(QString& sql)
{
    const qsizetype like = BuscaPalabra(sql, "LIKE"_L1);
    if (like < 0 || !sql.contains("'%'"_L1))
        return;
    const qsizetype blanco = sql.indexOf(u' ', like + 5);
    if (blanco < 0)
        return;
    QStringView resto = QStringView(sql).mid(blanco);
    while (resto.startsWith(u' '))
        resto = resto.mid(1);
    if (!resto.startsWith(Comodin))
        return;
    while (resto.endsWith(u' '))
        resto.chop(1);
    const QStringView vista(sql);
    sql = vista.left(like + 5) % "CONCAT("_L1 % vista.mid(like + 4, blanco - like - 4) %
          ",'%')"_L1 % resto.mid(Comodin.size());
}

/// Only the first TOP: its number goes to the end of the text as a LIMIT.
void TraduceTop(QString& sql)
{
    const qsizetype top = BuscaPalabra(sql, " TOP "_L1);
    if (top < 0)
        return;
    const qsizetype antes = sql.indexOf(u' ', top + 1);
    const qsizetype despues = sql.indexOf(u' ', antes + 2);
    if (despues < 0)
        throw ErrorTraduccion(u"TOP sin un blanco detrás de su número"_s);
    const QStringView vista(sql);
    sql = vista.left(top) % vista.mid(despues) % " LIMIT "_L1 % vista.mid(antes, despues - antes);
}

/// The call ends at the first ")": brackets inside it are not paired.
void TraduceCstr(QString& sql)
{
    for (qsizetype p = BuscaPalabra(sql, "CSTR"_L1); p >= 0;
         p = BuscaPalabra(sql, "CSTR"_L1, p + 5)) {
        if (!AbreParentesis(sql, p + 4))
            continue;
        const qsizetype cierra = sql.indexOf(u')', p + 4);
        if (cierra < 0)
            throw ErrorTraduccion(u"CSTR( sin cerrar"_s);
        sql.replace(cierra, 1, " AS CHAR)"_L1);
        // One character behind the word goes with it: the bracket, or a blank in front of it.
        sql.replace(p, 5, " CAST("_L1);
    }
}

bool EsParentesis(QChar c)
{
    return c == u'(' || c == u')';
}

qsizetype ParentesisDetras(QStringView sql, qsizetype desde)
{
    while (desde < sql.size() && !EsParentesis(sql[desde]))
        ++desde;
    return desde;
}

qsizetype ParentesisDelante(QStringView sql, qsizetype desde)
{
    while (desde >= 0 && !EsParentesis(sql[desde]))
        --desde;
    return desde;
}

/// The "(" that the "&" at `signo` belongs to: the last one before it, else the first of all.
qsizetype AbreDe(QStringView sql, qsizetype signo)
{
    const qsizetype antes = sql.first(signo).lastIndexOf(u'(');
    const qsizetype abre = antes >= 0 ? antes : sql.indexOf(u'(');
    if (abre < 0)
        throw ErrorTraduccion(u"& sin ningún paréntesis"_s);
    return abre;
}

/// Rewrites the "&" at `signo`, and those after it in the same pair of brackets.
/// \returns from where on there may be more
qsizetype TraduceSigno(QString& sql, qsizetype signo)
{
    const qsizetype abre = AbreDe(sql, signo);
    const qsizetype detras = ParentesisDetras(sql, signo + 1);
    if (detras < sql.size() && sql[detras] == u')') {
        // Put together as the rule says, the text would keep its "&" for ever.
        if (detras < abre)
            throw ErrorTraduccion(u"& dentro de un paréntesis que no se abre"_s);
        std::replace(sql.begin() + signo, sql.begin() + detras, QChar(u'&'), QChar(u','));
        sql.insert(abre, Concatena);
        return detras + Concatena.size();
    }
    const qsizetype delante = ParentesisDelante(sql, signo - 1);
    sql[signo] = u',';
    if (delante < 0 || sql[delante] != u')')
        sql.insert(abre, Concatena);
    return signo + 1;
}

void TraduceConcat(QString& sql)
{
    qsizetype signo = sql.indexOf(u'&');
    while (signo >= 0)
        signo = sql.indexOf(u'&', TraduceSigno(sql, signo));
}

} // namespace

QString TraduceMySql(QString sql)
{
    const Presentes presentes = Examina(sql);
    if (!presentes.Alguna())
        return sql;
    if (presentes.ntext)
        ReemplazaPalabra(sql, "NTEXT"_L1, "LONGTEXT"_L1);
    if (presentes.len)
        TraduceLen(sql);
    if (presentes.like)
        TraduceLike(sql);
    // A LEN behind a TOP brings it the blank that makes it one.
    if (presentes.top || presentes.len)
        TraduceTop(sql);
    if (presentes.iif)
        ReemplazaPalabra(sql, "IIF"_L1, "IF"_L1);
    if (presentes.entero)
        ReemplazaPalabra(sql, "INT("_L1, "FLOOR("_L1);
    if (presentes.cstr)
        TraduceCstr(sql);
    if (presentes.ampersand)
        TraduceConcat(sql);
    return sql;
}

} // namespace tolmo::data
