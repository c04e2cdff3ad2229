#include "data/access/lexico.h"
#include "data/access/base.h"
#include "data/access/errores_access.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

bool EmpiezaNombre(QChar c)
{
    return c.isLetter() || c == u'_' || c.isSurrogate();
}

bool SigueNombre(QChar c)
{
    return EmpiezaNombre(c) || c.isDigit() || c.isMark() || c == u'$' || c == u'@';
}

class Cortador {
  public:
    explicit Cortador(const QString& sql) : sql_(sql) {}

    std::vector<Lexema> Corta()
    {
        std::vector<Lexema> lexemas;
        do
            lexemas.push_back(Siguiente());
        while (lexemas.back().ficha != Ficha::Fin);
        return lexemas;
    }

  private:
    QChar Mira(qsizetype adelante = 0) const
    {
        return p_ + adelante < sql_.size() ? sql_[p_ + adelante] : QChar(u'\0');
    }

    Lexema Siguiente()
    {
        while (p_ < sql_.size() && (sql_[p_].isSpace() || sql_[p_] == u'\0'))
            ++p_;
        const qsizetype inicio = p_;
        Lexema lexema = p_ < sql_.size() ? Palabra() : Lexema{};
        lexema.posicion = inicio;
        lexema.fin = p_;
        return lexema;
    }

    Lexema Palabra()
    {
        const QChar c = Mira();
        if (c == u'\'' || c == u'"')
            return {Ficha::Texto, EntreComillas(c)};
        if (c == u'[')
            return {Ficha::NombreEntreMarcas,
                    Hasta(u']', QStringLiteral("falta el corchete que cierra el nombre"))};
        if (c == u'`')
            return {Ficha::NombreEntreMarcas,
                    Hasta(u'`', QStringLiteral("falta la comilla que cierra el nombre"))};
        if (c == u'#')
            return {Ficha::Fecha,
                    Hasta(u'#', QStringLiteral("falta el signo # que cierra la fecha"))};
        if (c.isDigit() || (c == u'.' && Mira(1).isDigit()))
            return Numero();
        if (EmpiezaNombre(c))
            return Nombre();
        return Signo();
    }

    QString EntreComillas(QChar comilla)
    {
        const qsizetype inicio = p_++;
        QString texto;
        for (; p_ < sql_.size(); ++p_) {
            if (sql_[p_] == comilla && Mira(1) != comilla) {
                ++p_;
                return texto;
            }
            if (sql_[p_] == comilla)
                ++p_;
            texto += sql_[p_];
        }
        RechazaEn(inicio,
                  QStringLiteral("Error de sintaxis: falta la comilla que cierra el texto"));
    }

    QString Hasta(QChar cierre, const QString& falta)
    {
        const qsizetype fin = sql_.indexOf(cierre, p_ + 1);
        if (fin < 0)
            RechazaEn(p_, QStringLiteral("Error de sintaxis: ") + falta);
        QString texto = sql_.mid(p_ + 1, fin - p_ - 1);
        p_ = fin + 1;
        return texto;
    }

    Lexema Numero()
    {
        const qsizetype inicio = p_;
        bool decimal = false;
        while (Mira().isDigit())
            ++p_;
        if (Mira() == u'.') {
            decimal = true;
            ++p_;
            while (Mira().isDigit())
                ++p_;
        }
        const bool signo = Mira(1) == u'+' || Mira(1) == u'-';
        if (Mira().toLower() == u'e' && Mira(signo ? 2 : 1).isDigit()) {
            decimal = true;
            p_ += signo ? 2 : 1;
            while (Mira().isDigit())
                ++p_;
        }
        return {decimal ? Ficha::Decimal : Ficha::Entero, sql_.mid(inicio, p_ - inicio)};
    }

    Lexema Nombre()
    {
        const qsizetype inicio = p_;
        while (p_ < sql_.size() && SigueNombre(sql_[p_]))
            ++p_;
        return {Ficha::Nombre, sql_.mid(inicio, p_ - inicio)};
    }

    Lexema Signo()
    {
        for (const QString& doble :
             {QStringLiteral("<>"), QStringLiteral("<="), QStringLiteral(">=")}) {
            if (QStringView(sql_).mid(p_).startsWith(doble)) {
                p_ += 2;
                return {Ficha::Signo, doble};
            }
        }
        const QChar c = Mira();
        if (!QStringLiteral("=<>+-*/\\^&(),.!;").contains(c))
            RechazaEn(p_, QStringLiteral("Error de sintaxis: no se conoce el signo \"%1\"").arg(c));
        ++p_;
        return {Ficha::Signo, QString(c)};
    }

    const QString& sql_;
    qsizetype p_ = 0;
};

// What of a literal the translation depends on: its kind, and whether a pattern begins with a
// fixed text, which decides if an index can serve.
QString HuellaLiteral(const Lexema& lexema, bool patron)
{
    if (lexema.EsLargo())
        return QStringLiteral("?n");
    switch (lexema.ficha) {
    case Ficha::Texto:
        if (patron && !lexema.texto.isEmpty() && !QStringLiteral("%_").contains(lexema.texto[0]))
            return QStringLiteral("?p");
        return QStringLiteral("?t");
    case Ficha::Entero:
        return lexema.texto.size() < 10 ? QStringLiteral("?e") : QStringLiteral("?g");
    case Ficha::Decimal:
        return QStringLiteral("?d");
    default:
        return QStringLiteral("?f");
    }
}

} // namespace

bool Lexema::Es(const char* palabra) const
{
    return ficha == Ficha::Nombre &&
           texto.compare(QLatin1String(palabra), Qt::CaseInsensitive) == 0;
}

bool Lexema::EsSigno(const char* signo) const
{
    return ficha == Ficha::Signo && texto == QLatin1String(signo);
}

bool Lexema::EsLiteral() const
{
    return ficha == Ficha::Texto || ficha == Ficha::Entero || ficha == Ficha::Decimal ||
           ficha == Ficha::Fecha;
}

bool Lexema::EsLargo() const
{
    constexpr qsizetype CifrasDeDoble = 15;
    bool cabe = true;
    if (ficha == Ficha::Entero)
        texto.toLongLong(&cabe);
    return !cabe || (ficha == Ficha::Decimal && texto.size() > CifrasDeDoble);
}

std::vector<Lexema> Lexemas(const QString& sql)
{
    return Cortador(sql).Corta();
}

QString Forma(std::vector<Lexema>& lexemas)
{
    QString forma;
    int literales = 0;
    bool ordenada = false;
    // A term of GROUP BY is the same as one of the list only with the same literals.
    const bool agrupada =
        std::any_of(lexemas.begin(), lexemas.end(), [](const Lexema& l) { return l.Es("GROUP"); });
    bool enDonde = false;
    for (std::size_t i = 0; i < lexemas.size(); ++i) {
        Lexema& lexema = lexemas[i];
        const Lexema* anterior = i > 0 ? &lexemas[i - 1] : nullptr;
        ordenada = ordenada || lexema.Es("ORDER");
        const bool numero = lexema.ficha == Ficha::Entero || lexema.ficha == Ficha::Decimal;
        if (lexema.Es("WHERE"))
            enDonde = true;
        else if (lexema.Es("SELECT") || lexema.Es("GROUP"))
            enDonde = false;
        const bool fijo = (numero && (ordenada || (anterior && anterior->Es("TOP")))) ||
                          (agrupada && !enDonde) || (anterior && anterior->Es("IN"));
        if (lexema.EsLiteral() && !fijo) {
            lexema.literal = literales++;
            forma += HuellaLiteral(lexema, anterior && anterior->Es("LIKE"));
        } else if (lexema.ficha == Ficha::Texto) {
            forma += TextoLiteral(lexema.texto);
        } else if (lexema.ficha == Ficha::Fecha) {
            forma += u'#' + lexema.texto + u'#';
        } else if (lexema.ficha == Ficha::NombreEntreMarcas) {
            forma += u'[' + lexema.texto + u']';
        } else {
            forma += lexema.texto;
        }
        forma += u' ';
    }
    return forma;
}

} // namespace tolmo::data::access
