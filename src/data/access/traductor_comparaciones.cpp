#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include "data/access/indices_apoyo.h"
#include "data/access/traductor.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

/// The common ground on which two values are compared.
enum class Terreno { Texto, Numero, Fecha, Verdad };

Trozo Condicion(const QString& sql)
{
    Trozo trozo;
    trozo.sql = sql;
    trozo.tipo = Tipo::Condicion;
    return trozo;
}

Terreno TerrenoDe(const Trozo& a, const Trozo& b)
{
    if (a.tipo == Tipo::Fecha || b.tipo == Tipo::Fecha)
        return EsNumero(a.tipo) || EsNumero(b.tipo) ? Terreno::Numero : Terreno::Fecha;
    if (EsVerdad(a.tipo) && EsVerdad(b.tipo))
        return Terreno::Verdad;
    return EsNumero(a.tipo) || EsNumero(b.tipo) ? Terreno::Numero : Terreno::Texto;
}

QString Numero(const Trozo& trozo)
{
    if (EsNumero(trozo.tipo) || trozo.tipo == Tipo::Nulo)
        return AValor(trozo).sql;
    if (trozo.tipo == Tipo::Fecha)
        return ANumero(trozo).sql;
    // A text that is no number equals none: a search for the code 'A1' among numbers finds nothing.
    return QStringLiteral("kov_numero(%1)").arg(trozo.sql);
}

QString Fecha(const Trozo& trozo)
{
    if (trozo.tipo == Tipo::Nulo || (trozo.tipo == Tipo::Fecha && !trozo.esColumna))
        return trozo.sql;
    const bool literal = trozo.literal && trozo.literal->tipo == Tipo::Texto;
    return (literal ? QStringLiteral("kov_fecha_exigida(%1)") : QStringLiteral("kov_fecha(%1)"))
        .arg(trozo.sql);
}

QString En(Terreno terreno, const Trozo& trozo)
{
    switch (terreno) {
    case Terreno::Numero:
        return Numero(trozo);
    case Terreno::Fecha:
        return Fecha(trozo);
    case Terreno::Verdad:
        // True is -1 and comes before False; the engine's own truth is 1.
        return QStringLiteral("(-(%1))").arg(ACondicion(trozo));
    default:
        return trozo.tipo == Tipo::Desconocido ? trozo.sql : ATexto(trozo).sql;
    }
}

// The left side tells the order that a comparison goes by.
QString Izquierda(Terreno terreno, const Trozo& trozo)
{
    const QString sql = En(terreno, trozo);
    return terreno == Terreno::Texto ? sql + QStringLiteral(" COLLATE ") + QLatin1String(Colacion)
                                     : sql;
}

// A LIKE whose pattern begins with a fixed text asks the index for that stretch first.
QString TramoDeIndice(const Trozo& texto, const Trozo& patron, Comodines comodines)
{
    const bool sirve = texto.esColumna && texto.columna.propia &&
                       comodines == Comodines::Conexion && patron.literal &&
                       !PrincipioFijo(patron.literal->texto, comodines).isEmpty();
    if (!sirve)
        return {};
    return QStringLiteral("%1 >= kov_prefijo_desde(%2) AND %1 < kov_prefijo_hasta(%2) AND ")
        .arg(ConColacion(texto), patron.sql);
}

bool EsLiteral(const Expresion& e, const QString& texto)
{
    return e.clase == Expresion::Clase::Literal && e.literal.tipo == Tipo::Texto &&
           e.literal.texto == texto;
}

} // namespace

// The engine damages a set of single texts that takes "", then a blank and then "" again, which are
// equal but not of one length: what equals "" goes in as "".
QString ComoMiembro(const QString& sql)
{
    return QStringLiteral("iif(%1 = '' COLLATE %2, '', %1)").arg(sql, QLatin1String(Colacion));
}

// The conditions of a WHERE or ON that must all hold: only there a companion index may narrow an
// equality, as it can't tell a Null from a falsehood.
QString Traductor::Filtro(const Expresion& e, const Ambito& ambito)
{
    const bool binaria = e.clase == Expresion::Clase::Binario;
    if (binaria && e.nombre == QLatin1String("AND"))
        return u'(' + Filtro(*e.hijos[0], ambito) + QStringLiteral(" AND ") +
               Filtro(*e.hijos[1], ambito) + u')';
    if (!binaria || e.nombre != QLatin1String("="))
        return ACondicion(Expr(e, ambito));
    const Trozo a = Expr(*e.hijos[0], ambito);
    const Trozo b = Expr(*e.hijos[1], ambito);
    QString apoyo = ConApoyo(b, a, ambito);
    if (apoyo.isEmpty())
        apoyo = ConApoyo(a, b, ambito);
    return Compara(e.nombre, a, b).sql + apoyo;
}

QString Traductor::ConApoyo(const Trozo& columna, const Trozo& valor, const Ambito& ambito)
{
    const bool deAqui =
        std::any_of(ambito.fuentes.begin(), ambito.fuentes.end(),
                    [&](const auto& f) { return f.alias == columna.fuente && !f.tabla.isEmpty(); });
    if (!deAqui || !columna.columna.conIndiceAjeno || !EsTexto(valor.tipo) ||
        columna.fuente == valor.fuente)
        return {};
    const ColumnaVista& c = columna.columna;
    apoyos_.emplace_back(c.tabla, c.columna);
    return QStringLiteral(" AND %1.rowid IN (SELECT fila FROM temp.%2 WHERE clave = %3)")
        .arg(Identificador(columna.fuente), NombreDeApoyo(c.tabla, c.columna), valor.sql);
}

Trozo Traductor::Compara(const QString& signo, const Trozo& a, const Trozo& b)
{
    const Terreno terreno = TerrenoDe(a, b);
    return Condicion(u'(' + Izquierda(terreno, a) + u' ' + signo + u' ' + En(terreno, b) + u')');
}

Trozo Traductor::ExprComo(const Expresion& e, const Ambito& ambito)
{
    const Comodines comodines = guardadas_ > 0 ? Comodines::ConsultaGuardada : Comodines::Conexion;
    const QString sufijo = guardadas_ > 0 ? QStringLiteral("_guardada") : QString();
    const QString todo = guardadas_ > 0 ? QStringLiteral("*") : QStringLiteral("%");
    const Trozo texto = ATexto(Expr(*e.hijos[0], ambito));
    const Expresion& patron = *e.hijos[1];
    QString sql;
    // `'{code}' LIKE CLAVE & '%'` is asked of every family for every article.
    const bool principio = patron.clase == Expresion::Clase::Binario &&
                           patron.nombre == QLatin1String("&") && EsLiteral(*patron.hijos[1], todo);
    if (principio) {
        const Trozo cabeza = ATexto(Expr(*patron.hijos[0], ambito));
        sql =
            QStringLiteral("kov_empieza%1(%2, ifnull(%3, ''))").arg(sufijo, texto.sql, cabeza.sql);
    } else {
        const Trozo molde = ATexto(Expr(patron, ambito));
        sql = TramoDeIndice(texto, molde, comodines) +
              QStringLiteral("kov_como%1(%2, %3)").arg(sufijo, texto.sql, molde.sql);
    }
    return Condicion((e.negado ? QStringLiteral("(NOT (%1))") : QStringLiteral("(%1)")).arg(sql));
}

// The two bounds may stand in either order.
Trozo Traductor::ExprEntre(const Expresion& e, const Ambito& ambito)
{
    const Trozo valor = Expr(*e.hijos[0], ambito);
    const Trozo a = Expr(*e.hijos[1], ambito);
    const Trozo b = Expr(*e.hijos[2], ambito);
    const auto entre = [&](const Trozo& menor, const Trozo& mayor) {
        return QStringLiteral("%1 AND %2")
            .arg(Compara(QStringLiteral(">="), valor, menor).sql,
                 Compara(QStringLiteral("<="), valor, mayor).sql);
    };
    const QString sql =
        QStringLiteral("(%1(%2 OR %3))")
            .arg(e.negado ? QStringLiteral("NOT ") : QString(), entre(a, b), entre(b, a));
    return Condicion(sql);
}

Trozo Traductor::ExprEnLista(const Expresion& e, const Ambito& ambito)
{
    const Trozo valor = Expr(*e.hijos[0], ambito);
    std::vector<Trozo> elementos;
    for (std::size_t i = 1; i < e.hijos.size(); ++i)
        elementos.push_back(Expr(*e.hijos[i], ambito));
    Terreno terreno = TerrenoDe(valor, elementos[0]);
    QStringList lista;
    for (const Trozo& elemento : elementos) {
        if (TerrenoDe(valor, elemento) != terreno && elemento.tipo != Tipo::Nulo)
            terreno = terreno == Terreno::Verdad ? Terreno::Numero
                                                 : std::max(terreno, TerrenoDe(valor, elemento));
    }
    for (const Trozo& elemento : elementos) {
        const QString sql = En(terreno, elemento);
        lista << (terreno == Terreno::Texto ? ComoMiembro(sql) : sql);
    }
    return Condicion(QStringLiteral("(%1 %2IN (%3))")
                         .arg(Izquierda(terreno, valor),
                              e.negado ? QStringLiteral("NOT ") : QString(),
                              lista.join(QStringLiteral(", "))));
}

Trozo Traductor::ExprEnConsulta(const Expresion& e, const Ambito& ambito)
{
    const Trozo valor = Expr(*e.hijos[0], ambito);
    std::vector<ColumnaVista> columnas;
    QString sql = TraduceConsulta(*e.consulta, &ambito, columnas);
    if (columnas.size() != 1)
        RechazaEn(e.posicion, QStringLiteral("La subconsulta de IN ha de dar un solo campo"));
    Trozo columna;
    columna.sql = QStringLiteral("kov_in.") + Identificador(columnas[0].nombre);
    columna.tipo = columnas[0].tipo;
    columna.esColumna = true;
    const Terreno terreno = TerrenoDe(valor, columna);
    const QString convertida = En(terreno, columna);
    if (terreno == Terreno::Texto)
        sql = QStringLiteral("SELECT %1 FROM (%2) AS kov_in").arg(ComoMiembro(columna.sql), sql);
    else if (convertida != columna.sql)
        sql = QStringLiteral("SELECT %1 FROM (%2) AS kov_in").arg(convertida, sql);
    return Condicion(
        QStringLiteral("(%1 %2IN (%3))")
            .arg(Izquierda(terreno, valor), e.negado ? QStringLiteral("NOT ") : QString(), sql));
}

} // namespace tolmo::data::access
