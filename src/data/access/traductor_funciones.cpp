#include "data/access/errores_access.h"
#include "data/access/traductor.h"
#include <QHash>
#include <algorithm>

namespace tolmo::data::access {
namespace {

/// A function that is a call of one of the engine's. `argumentos` has a letter for each argument,
/// of which the first `minimo` are needed: t text, n number, d the digits of a number, f date, v as
/// it stands. `delante` goes before them.
struct Ficha {
    const char* funcion;
    const char* argumentos;
    int minimo;
    Tipo tipo;
    const char* delante = "";
};

const QHash<QString, Ficha>& Catalogo()
{
    static const QHash<QString, Ficha> catalogo{
        {"LEN", {"kov_len", "t", 1, Tipo::Entero}},
        {"LEFT", {"kov_left", "tn", 2, Tipo::Texto}},
        {"RIGHT", {"kov_right", "tn", 2, Tipo::Texto}},
        {"MID", {"kov_mid", "tnn", 2, Tipo::Texto}},
        {"INSTRREV", {"kov_instrrev", "ttnn", 2, Tipo::Entero}},
        {"UCASE", {"kov_ucase", "t", 1, Tipo::Texto}},
        {"LCASE", {"kov_lcase", "t", 1, Tipo::Texto}},
        {"TRIM", {"kov_trim", "t", 1, Tipo::Texto}},
        {"LTRIM", {"kov_ltrim", "t", 1, Tipo::Texto}},
        {"RTRIM", {"kov_rtrim", "t", 1, Tipo::Texto}},
        {"REPLACE", {"kov_replace", "tttnnn", 3, Tipo::Texto}},
        {"SPACE", {"kov_space", "n", 1, Tipo::Texto}},
        {"STRING", {"kov_string", "nv", 2, Tipo::Texto}},
        {"STRCOMP", {"kov_strcomp", "ttn", 2, Tipo::Corto}},
        {"ASC", {"kov_asc", "t", 1, Tipo::Corto}},
        {"CHR", {"kov_chr", "n", 1, Tipo::Texto}},
        {"VAL", {"kov_val", "t", 1, Tipo::Doble}},
        {"STR", {"kov_str", "d", 1, Tipo::Texto}},
        {"FORMAT", {"kov_format", "vtnn", 1, Tipo::Texto}},
        {"INT", {"kov_int", "n", 1, Tipo::Nulo}},
        {"FIX", {"kov_fix", "n", 1, Tipo::Nulo}},
        {"ABS", {"kov_abs", "n", 1, Tipo::Nulo}},
        {"SGN", {"kov_sgn", "n", 1, Tipo::Corto}},
        {"ROUND", {"kov_round", "nn", 1, Tipo::Nulo}},
        {"SQR", {"kov_sqr", "n", 1, Tipo::Doble}},
        {"CSTR", {"kov_texto", "t", 1, Tipo::Texto}},
        {"CBYTE", {"kov_convierte", "v", 1, Tipo::Byte}},
        {"CINT", {"kov_convierte", "v", 1, Tipo::Corto}},
        {"CLNG", {"kov_convierte", "v", 1, Tipo::Entero}},
        {"CSNG", {"kov_convierte", "v", 1, Tipo::Simple}},
        {"CDBL", {"kov_convierte", "v", 1, Tipo::Doble}},
        {"CCUR", {"kov_convierte", "v", 1, Tipo::Moneda}},
        {"CBOOL", {"kov_convierte_logico", "v", 1, Tipo::Condicion}},
        {"CDATE", {"kov_cdate", "f", 1, Tipo::Fecha}},
        {"CVDATE", {"kov_cdate", "f", 1, Tipo::Fecha}},
        {"DATE", {"kov_date", "", 0, Tipo::Fecha}},
        {"NOW", {"kov_now", "", 0, Tipo::Fecha}},
        {"TIME", {"kov_time", "", 0, Tipo::Fecha}},
        {"YEAR", {"kov_datepart", "f", 1, Tipo::Corto, "'yyyy'"}},
        {"MONTH", {"kov_datepart", "f", 1, Tipo::Corto, "'m'"}},
        {"DAY", {"kov_datepart", "f", 1, Tipo::Corto, "'d'"}},
        {"HOUR", {"kov_datepart", "f", 1, Tipo::Corto, "'h'"}},
        {"MINUTE", {"kov_datepart", "f", 1, Tipo::Corto, "'n'"}},
        {"SECOND", {"kov_datepart", "f", 1, Tipo::Corto, "'s'"}},
        {"WEEKDAY", {"kov_weekday", "fn", 1, Tipo::Corto}},
        {"DATEADD", {"kov_dateadd", "tnf", 3, Tipo::Fecha}},
        {"DATEDIFF", {"kov_datediff", "tffnn", 3, Tipo::Entero}},
        {"DATEPART", {"kov_datepart", "tfnn", 2, Tipo::Corto}},
        {"DATESERIAL", {"kov_dateserial", "nnn", 3, Tipo::Fecha}},
        {"TIMESERIAL", {"kov_timeserial", "nnn", 3, Tipo::Fecha}},
        {"DATEVALUE", {"kov_datevalue", "f", 1, Tipo::Fecha}},
        {"TIMEVALUE", {"kov_timevalue", "f", 1, Tipo::Fecha}},
        {"ISNUMERIC", {"kov_es_numero", "v", 1, Tipo::Condicion}},
        {"GENGUID", {"kov_genguid", "", 0, Tipo::Texto}},
        {"ISDATE", {"kov_es_fecha", "v", 1, Tipo::Condicion}},
    };
    return catalogo;
}

const QHash<QString, const char*>& Agregados()
{
    static const QHash<QString, const char*> agregados{
        {"SUM", "sum"},     {"AVG", "avg"},         {"MIN", "min"},      {"MAX", "max"},
        {"COUNT", "count"}, {"FIRST", "kov_first"}, {"LAST", "kov_last"}};
    return agregados;
}

QString Argumento(char letra, const Trozo& trozo)
{
    switch (letra) {
    case 't':
        return ATexto(trozo).sql;
    case 'n':
        return ANumero(trozo).sql;
    case 'd':
        return ConSusDigitos(ANumero(trozo)).sql;
    default:
        return AValor(trozo).sql;
    }
}

[[noreturn]] void ArgumentosDeMas(const Expresion& e)
{
    RechazaEn(e.posicion,
              QStringLiteral("Número de argumentos incorrecto en la función %1").arg(e.nombre));
}

void ExigeArgumentos(const Expresion& e, std::size_t minimo, std::size_t maximo)
{
    if (e.hijos.size() < minimo || e.hijos.size() > maximo)
        ArgumentosDeMas(e);
}

} // namespace

bool TieneAgregado(const Expresion& e)
{
    if (e.clase == Expresion::Clase::Funcion && Agregados().contains(e.nombre))
        return true;
    return std::any_of(e.hijos.begin(), e.hijos.end(),
                       [](const PExpresion& hijo) { return TieneAgregado(*hijo); });
}

Trozo Traductor::ExprFuncion(const Expresion& e, const Ambito& ambito)
{
    if (Agregados().contains(e.nombre))
        return ExprAgregado(e, ambito);
    if (e.nombre == QLatin1String("IIF"))
        return ExprIif(e, ambito);
    if (e.nombre == QLatin1String("NZ"))
        return ExprNz(e, ambito);
    if (e.nombre == QLatin1String("CHOOSE"))
        return ExprElige(e, ambito);
    if (e.nombre == QLatin1String("SWITCH"))
        return ExprSegun(e, ambito);
    if (e.nombre == QLatin1String("ISNULL")) {
        ExigeArgumentos(e, 1, 1);
        const Trozo valor = Expr(*e.hijos[0], ambito);
        Trozo trozo;
        trozo.sql = QStringLiteral("(%1 IS NULL)").arg(valor.sql);
        trozo.tipo = Tipo::Condicion;
        return trozo;
    }
    return ExprDeCatalogo(e, ambito);
}

Trozo Traductor::ExprDeCatalogo(const Expresion& e, const Ambito& ambito)
{
    // With three arguments InStr begins with the start, with two it doesn't.
    static const Ficha instr{"kov_instr", "tt", 2, Tipo::Entero};
    static const Ficha instrDesde{"kov_instr", "nttn", 3, Tipo::Entero};
    const bool esInstr = e.nombre == QLatin1String("INSTR");
    const auto hallada = Catalogo().constFind(e.nombre);
    if (hallada == Catalogo().constEnd() && !esInstr)
        RechazaEn(e.posicion, QStringLiteral("No se conoce la función %1").arg(e.nombre));
    const Ficha& ficha = esInstr ? (e.hijos.size() > 2 ? instrDesde : instr) : *hallada;
    ExigeArgumentos(e, static_cast<std::size_t>(ficha.minimo), qstrlen(ficha.argumentos));
    Trozo trozo;
    trozo.tipo = ficha.tipo;
    QStringList argumentos;
    if (*ficha.delante)
        argumentos << QLatin1String(ficha.delante);
    for (std::size_t i = 0; i < e.hijos.size(); ++i) {
        const Trozo argumento = Expr(*e.hijos[i], ambito);
        argumentos << Argumento(ficha.argumentos[i], argumento);
        // Nulo: the result is of the kind of the first argument.
        if (ficha.tipo == Tipo::Nulo && i == 0)
            trozo.tipo = ANumero(argumento).tipo;
    }
    if (qstrcmp(ficha.funcion, "kov_convierte") == 0)
        argumentos << QString::number(static_cast<int>(ficha.tipo));
    trozo.sql = QLatin1String(ficha.funcion) + u'(' + argumentos.join(QStringLiteral(", ")) + u')';
    return trozo;
}

Trozo Traductor::ExprAgregado(const Expresion& e, const Ambito& ambito)
{
    ExigeArgumentos(e, 1, 1);
    if (enAgregado_ || !ambito.agrupado)
        RechazaEn(e.posicion,
                  QStringLiteral("La función de agregado %1 no cabe en este lugar").arg(e.nombre));
    const bool cuenta = e.nombre == QLatin1String("COUNT");
    const QString funcion = QLatin1String(Agregados().value(e.nombre));
    Trozo trozo;
    trozo.tipo = Tipo::Entero;
    if (cuenta && e.hijos[0]->clase == Expresion::Clase::Asterisco) {
        trozo.sql = QStringLiteral("count(*)");
        return trozo;
    }
    enAgregado_ = true;
    Trozo valor = AValor(Expr(*e.hijos[0], ambito));
    enAgregado_ = false;
    const bool suma = e.nombre == QLatin1String("SUM") || e.nombre == QLatin1String("AVG");
    if (suma) {
        valor = ANumero(valor);
        trozo.tipo = valor.tipo == Tipo::Moneda ? Tipo::Moneda : Tipo::Doble;
    } else if (!cuenta) {
        trozo.tipo = valor.tipo;
        trozo.ancho = valor.ancho;
    }
    trozo.sql = funcion + u'(' + (suma || cuenta ? valor.sql : ConColacion(valor)) + u')';
    return trozo;
}

Trozo Traductor::ExprIif(const Expresion& e, const Ambito& ambito)
{
    ExigeArgumentos(e, 2, 3);
    const Trozo condicion = Expr(*e.hijos[0], ambito);
    const Trozo a = AValor(Expr(*e.hijos[1], ambito));
    Trozo b;
    b.sql = QStringLiteral("NULL");
    b.tipo = Tipo::Nulo;
    if (e.hijos.size() == 3)
        b = AValor(Expr(*e.hijos[2], ambito));
    Trozo trozo;
    trozo.tipo = TipoComun(a.tipo, b.tipo);
    trozo.sql =
        QStringLiteral("(CASE WHEN %1 THEN %2 ELSE %3 END)")
            .arg(ACondicion(condicion), AlTipo(a, trozo.tipo).sql, AlTipo(b, trozo.tipo).sql);
    return trozo;
}

Trozo Traductor::ExprNz(const Expresion& e, const Ambito& ambito)
{
    ExigeArgumentos(e, 1, 2);
    const Trozo valor = AValor(Expr(*e.hijos[0], ambito));
    Trozo otro;
    otro.tipo = EsNumero(valor.tipo) ? Tipo::Entero : Tipo::Texto;
    otro.sql = EsNumero(valor.tipo) ? QStringLiteral("0") : QStringLiteral("''");
    if (e.hijos.size() == 2)
        otro = AValor(Expr(*e.hijos[1], ambito));
    Trozo trozo;
    trozo.tipo = TipoComun(valor.tipo, otro.tipo);
    trozo.sql = QStringLiteral("ifnull(%1, %2)")
                    .arg(AlTipo(valor, trozo.tipo).sql, AlTipo(otro, trozo.tipo).sql);
    return trozo;
}

// Choose(n, a, b, ...): the n-th one, Null beyond the list; n loses its decimals.
Trozo Traductor::ExprElige(const Expresion& e, const Ambito& ambito)
{
    ExigeArgumentos(e, 2, 100);
    const Trozo indice = ANumero(Expr(*e.hijos[0], ambito));
    std::vector<Trozo> opciones;
    Trozo trozo;
    trozo.tipo = Tipo::Nulo;
    for (std::size_t i = 1; i < e.hijos.size(); ++i) {
        opciones.push_back(AValor(Expr(*e.hijos[i], ambito)));
        trozo.tipo = TipoComun(trozo.tipo, opciones.back().tipo);
    }
    trozo.sql = QStringLiteral("(CASE kov_fix(%1)").arg(indice.sql);
    for (std::size_t i = 0; i < opciones.size(); ++i)
        trozo.sql += QStringLiteral(" WHEN %1 THEN %2")
                         .arg(QString::number(i + 1), AlTipo(opciones[i], trozo.tipo).sql);
    trozo.sql += QStringLiteral(" END)");
    return trozo;
}

// Switch(condition, value, ...): the value of the first condition that holds.
Trozo Traductor::ExprSegun(const Expresion& e, const Ambito& ambito)
{
    if (e.hijos.size() < 2 || e.hijos.size() % 2 != 0)
        ArgumentosDeMas(e);
    std::vector<Trozo> trozos;
    Trozo trozo;
    trozo.tipo = Tipo::Nulo;
    for (std::size_t i = 0; i < e.hijos.size(); ++i) {
        trozos.push_back(Expr(*e.hijos[i], ambito));
        if (i % 2 == 1)
            trozo.tipo = TipoComun(trozo.tipo, AValor(trozos.back()).tipo);
    }
    trozo.sql = QStringLiteral("(CASE");
    for (std::size_t i = 0; i < trozos.size(); i += 2)
        trozo.sql += QStringLiteral(" WHEN %1 THEN %2")
                         .arg(ACondicion(trozos[i]), AlTipo(trozos[i + 1], trozo.tipo).sql);
    trozo.sql += QStringLiteral(" END)");
    return trozo;
}

} // namespace tolmo::data::access
