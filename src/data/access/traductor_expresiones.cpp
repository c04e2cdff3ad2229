#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include "data/access/fechas.h"
#include "data/access/traductor.h"
#include "data/valores.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

Trozo Envuelto(const QString& funcion, const Trozo& trozo, Tipo tipo)
{
    Trozo nuevo;
    nuevo.sql = funcion + u'(' + trozo.sql + u')';
    nuevo.tipo = tipo;
    return nuevo;
}

Trozo Nuevo(const QString& sql, Tipo tipo)
{
    Trozo trozo;
    trozo.sql = sql;
    trozo.tipo = tipo;
    return trozo;
}

QString LiteralFijo(const Literal& literal, qsizetype posicion)
{
    if (literal.tipo == Tipo::Texto)
        return TextoLiteral(literal.texto);
    if (literal.tipo != Tipo::Fecha)
        return literal.texto;
    const auto momento = LeeMomento(literal.texto, OrdenFecha::MesDia);
    if (!momento)
        RechazaEn(posicion,
                  QStringLiteral("Error de sintaxis en la fecha #%1#").arg(literal.texto));
    return TextoLiteral(Iso(*momento));
}

} // namespace

Trozo AValor(const Trozo& trozo)
{
    if (trozo.tipo != Tipo::Condicion)
        return trozo;
    return Nuevo(QStringLiteral("(-(%1))").arg(trozo.sql), Tipo::Corto);
}

Trozo ConSusDigitos(const Trozo& numero)
{
    return numero.tipo == Tipo::Simple
               ? Envuelto(QStringLiteral("kov_simple"), numero, Tipo::Simple)
               : numero;
}

Trozo ATexto(const Trozo& trozo)
{
    if (EsTexto(trozo.tipo) || trozo.tipo == Tipo::Nulo)
        return trozo;
    if (trozo.tipo == Tipo::Fecha)
        return Envuelto(QStringLiteral("kov_fecha_texto"), trozo, Tipo::Texto);
    return Envuelto(QStringLiteral("kov_texto"), ConSusDigitos(AValor(trozo)), Tipo::Texto);
}

Trozo ANumero(const Trozo& trozo)
{
    if (EsNumero(trozo.tipo) || trozo.tipo == Tipo::Nulo)
        return AValor(trozo);
    if (trozo.tipo == Tipo::Fecha)
        return Envuelto(QStringLiteral("kov_serie"), trozo, Tipo::Doble);
    return Envuelto(QStringLiteral("kov_numero_exigido"), trozo, Tipo::Doble);
}

QString ACondicion(const Trozo& trozo)
{
    if (trozo.tipo == Tipo::Condicion)
        return trozo.sql;
    return u'(' + ANumero(trozo).sql + QStringLiteral(" <> 0)");
}

Trozo AlTipo(const Trozo& trozo, Tipo tipo)
{
    if (trozo.tipo == tipo || trozo.tipo == Tipo::Nulo)
        return trozo;
    if (EsTexto(tipo))
        return ATexto(trozo);
    return AValor(trozo);
}

namespace {

/// Amounts of money and decimal numbers may have more digits than a double.
QString AsignaNumero(const ColumnaVista& destino, const Trozo& valor, const QString& campo)
{
    const bool decimal = destino.precision > 0;
    const bool exacta = (decimal || destino.tipo == Tipo::Moneda) && !valor.exacto.isEmpty();
    const QString sql = exacta                      ? valor.exacto
                        : valor.tipo == Tipo::Fecha ? ANumero(valor).sql
                                                    : AValor(valor).sql;
    const bool iguales = valor.esColumna && valor.tipo == destino.tipo &&
                         (!decimal || (valor.columna.precision == destino.precision &&
                                       valor.columna.escala == destino.escala));
    if (iguales)
        return sql;
    if (decimal)
        return QStringLiteral("kov_asigna_decimal(%1, %2, %3, %4)")
            .arg(sql, QString::number(destino.precision), QString::number(destino.escala), campo);
    return QStringLiteral("kov_asigna_numero(%1, %2, %3)")
        .arg(sql, QString::number(static_cast<int>(destino.tipo)), campo);
}

} // namespace

QString AsignaA(const ColumnaVista& destino, const Trozo& valor)
{
    const QString campo = TextoLiteral(destino.tabla + u'.' + destino.nombre);
    const bool mismaColumna = valor.esColumna && valor.tipo == destino.tipo;
    if (destino.tipo == Tipo::Logico) {
        if (valor.tipo == Tipo::Condicion)
            return QStringLiteral("ifnull(%1, 0)").arg(AValor(valor).sql);
        return QStringLiteral("kov_asigna_logico(%1, %2)").arg(valor.sql, campo);
    }
    if (valor.tipo == Tipo::Nulo)
        return QStringLiteral("NULL");
    if (destino.tipo == Tipo::Texto && destino.ancho > 0) {
        if (mismaColumna && valor.ancho > 0 && valor.ancho <= destino.ancho)
            return valor.sql;
        return QStringLiteral("kov_asigna_texto(%1, %2, %3)")
            .arg(ATexto(valor).sql, QString::number(destino.ancho), campo);
    }
    if (EsTexto(destino.tipo))
        return ATexto(valor).sql;
    if (EsNumero(destino.tipo))
        return AsignaNumero(destino, valor, campo);
    if (destino.tipo == Tipo::Fecha)
        return QStringLiteral("kov_asigna_fecha(%1, %2)").arg(AValor(valor).sql, campo);
    return AValor(valor).sql;
}

QString ConColacion(const Trozo& trozo)
{
    if (!EsTexto(trozo.tipo) && trozo.tipo != Tipo::Desconocido)
        return trozo.sql;
    return trozo.sql + QStringLiteral(" COLLATE ") + QLatin1String(Colacion);
}

Trozo Traductor::Expr(const Expresion& e, const Ambito& ambito)
{
    if (!PuedeSerGrupo(e, ambito))
        return ExprSuelta(e, ambito);
    enAgregado_ = true;
    const Trozo trozo = ExprSuelta(e, ambito);
    enAgregado_ = false;
    return ambito.grupos.contains(trozo.sql) ? trozo : ExprSuelta(e, ambito);
}

// A compound expression that stands in GROUP BY may hold fields that don't stand there alone.
bool Traductor::PuedeSerGrupo(const Expresion& e, const Ambito& ambito) const
{
    const bool compuesta = e.clase == Expresion::Clase::Binario ||
                           e.clase == Expresion::Clase::Unario ||
                           e.clase == Expresion::Clase::Funcion;
    return ambito.agrupado && !enAgregado_ && compuesta && !ambito.grupos.isEmpty() &&
           !TieneAgregado(e);
}

Trozo Traductor::ExprSuelta(const Expresion& e, const Ambito& ambito)
{
    using Clase = Expresion::Clase;
    switch (e.clase) {
    case Clase::Literal:
        return ExprLiteral(e);
    case Clase::Columna:
        return ExprColumna(e, ambito);
    case Clase::Unario:
        return ExprUnaria(e, ambito);
    case Clase::Binario:
        return ExprBinaria(e, ambito);
    case Clase::Como:
        return ExprComo(e, ambito);
    case Clase::Entre:
        return ExprEntre(e, ambito);
    case Clase::EnLista:
        return ExprEnLista(e, ambito);
    case Clase::EnConsulta:
        return ExprEnConsulta(e, ambito);
    case Clase::Existe:
        return ExprExiste(e, ambito);
    case Clase::Escalar:
        return ExprEscalar(e, ambito);
    case Clase::EsNulo: {
        const Trozo valor = Expr(*e.hijos[0], ambito);
        return Nuevo(QStringLiteral("(%1 IS %2NULL)")
                         .arg(valor.sql, e.negado ? QStringLiteral("NOT ") : QString()),
                     Tipo::Condicion);
    }
    case Clase::Funcion:
        return ExprFuncion(e, ambito);
    case Clase::Asterisco:
        break;
    }
    RechazaEn(e.posicion, QStringLiteral("Error de sintaxis: * sólo cabe en COUNT(*)"));
}

Trozo Traductor::ExprLiteral(const Expresion& e) const
{
    Trozo trozo;
    trozo.literal = &e.literal;
    trozo.tipo = e.literal.tipo;
    const bool parametro = e.literal.indice >= 0 && guardadas_ == 0;
    if (e.literal.tipo == Tipo::Nulo)
        trozo.sql = QStringLiteral("NULL");
    else
        trozo.sql = parametro ? u'?' + QString::number(e.literal.indice + 1)
                              : LiteralFijo(e.literal, e.posicion);
    if (e.literal.largo) {
        trozo.exacto = parametro ? trozo.sql : TextoLiteral(e.literal.texto);
        trozo.sql = QStringLiteral("kov_numero_exigido(%1)").arg(trozo.exacto);
    }
    return trozo;
}

Trozo Traductor::ExprColumna(const Expresion& e, const Ambito& ambito)
{
    bool tablaHallada = false;
    for (const Ambito* a = &ambito; a; a = a->exterior) {
        const std::vector<Trozo> halladas = ColumnasDe(e, *a, tablaHallada);
        if (halladas.size() > 1)
            RechazaEn(e.posicion,
                      QStringLiteral("El campo %1 puede ser de más de una tabla").arg(e.nombre));
        if (halladas.size() == 1) {
            ExigeAgrupado(e, *a, halladas[0]);
            return halladas[0];
        }
        const Expresion* definicion = a == &ambito ? DeAlias(e, *a) : nullptr;
        if (definicion) {
            aliasAbiertos_.insert(definicion);
            Trozo trozo = Expr(*definicion, ambito);
            aliasAbiertos_.remove(definicion);
            return trozo;
        }
    }
    if (e.tabla.isEmpty())
        RechazaEn(e.posicion, QStringLiteral("No se conoce el campo %1").arg(e.nombre));
    if (e.tabla.contains(u'!'))
        RechazaEn(e.posicion,
                  QStringLiteral("Falta el valor del parámetro %1!%2").arg(e.tabla, e.nombre));
    RechazaEn(e.posicion,
              tablaHallada
                  ? QStringLiteral("No se conoce el campo %1.%2").arg(e.tabla, e.nombre)
                  : QStringLiteral("No se conoce la tabla %1 en esta sentencia").arg(e.tabla));
}

// What a name can mean in the sources of one level.
std::vector<Trozo> Traductor::ColumnasDe(const Expresion& e, const Ambito& ambito,
                                         bool& tablaHallada) const
{
    std::vector<Trozo> halladas;
    for (const auto& fuente : ambito.fuentes) {
        if (!e.tabla.isEmpty() && Llave(fuente.alias) != Llave(e.tabla))
            continue;
        tablaHallada = true;
        const auto columna = std::find_if(
            fuente.columnas.begin(), fuente.columnas.end(),
            [&e](const ColumnaVista& c) { return Llave(c.nombre) == Llave(e.nombre); });
        if (columna == fuente.columnas.end())
            continue;
        Trozo trozo = Nuevo(Identificador(fuente.alias) + u'.' + Identificador(columna->nombre),
                            columna->tipo);
        trozo.ancho = columna->ancho;
        trozo.columna = *columna;
        trozo.esColumna = true;
        trozo.fuente = fuente.alias;
        if (!columna->exacta.isEmpty() && !ambito.agrupado)
            trozo.exacto = Identificador(fuente.alias) + u'.' + Identificador(columna->exacta);
        halladas.push_back(std::move(trozo));
    }
    return halladas;
}

// A name that no source has may be the alias of another item of the list; not of one that is
// being read, which would be defined by itself.
const Expresion* Traductor::DeAlias(const Expresion& e, const Ambito& ambito) const
{
    if (!e.tabla.isEmpty() || !ambito.elementos)
        return nullptr;
    for (const Elemento& elemento : *ambito.elementos) {
        const Expresion* definicion = elemento.expresion.get();
        if (definicion && Llave(elemento.alias) == Llave(e.nombre) &&
            !aliasAbiertos_.contains(definicion))
            return definicion;
    }
    return nullptr;
}

void Traductor::ExigeAgrupado(const Expresion& e, const Ambito& ambito, const Trozo& trozo) const
{
    if (!ambito.agrupado || enAgregado_ || ambito.grupos.contains(trozo.sql))
        return;
    RechazaEn(e.posicion,
              QStringLiteral("El campo %1 no está en GROUP BY ni en una función de agregado")
                  .arg(e.nombre));
}

Trozo Traductor::ExprUnaria(const Expresion& e, const Ambito& ambito)
{
    const Trozo valor = Expr(*e.hijos[0], ambito);
    if (e.nombre == QLatin1String("NOT"))
        return Nuevo(QStringLiteral("(NOT %1)").arg(ACondicion(valor)), Tipo::Condicion);
    const Trozo numero = ANumero(valor);
    Trozo negativo = Nuevo(QStringLiteral("(-%1)").arg(numero.sql),
                           EsVerdad(numero.tipo) ? Tipo::Corto : numero.tipo);
    if (valor.literal && valor.literal->largo)
        negativo.exacto = QStringLiteral("('-' || %1)").arg(valor.exacto);
    return negativo;
}

Trozo Traductor::ExprBinaria(const Expresion& e, const Ambito& ambito)
{
    const QString& signo = e.nombre;
    if (QStringLiteral(" AND OR XOR EQV IMP ").contains(u' ' + signo + u' '))
        return ExprLogica(e, ambito);
    if (signo == QLatin1String("&"))
        return ExprUnion(e, ambito);
    const Trozo a = Expr(*e.hijos[0], ambito);
    const Trozo b = Expr(*e.hijos[1], ambito);
    if (QStringLiteral(" = <> < > <= >= ").contains(u' ' + signo + u' '))
        return Compara(signo, a, b);
    if (signo == QLatin1String("+") || signo == QLatin1String("-"))
        return ExprSuma(a, b, signo == QLatin1String("-"));
    const QString argumentos = u'(' + ANumero(a).sql + QStringLiteral(", ") + ANumero(b).sql + u')';
    if (signo == QLatin1String("*"))
        return Nuevo(u'(' + ANumero(a).sql + QStringLiteral(" * ") + ANumero(b).sql + u')',
                     TipoAritmetico(ANumero(a).tipo, ANumero(b).tipo));
    if (signo == QLatin1String("/"))
        return Nuevo(QStringLiteral("kov_divide") + argumentos, Tipo::Doble);
    if (signo == QLatin1String("\\"))
        return Nuevo(QStringLiteral("kov_divide_entero") + argumentos, Tipo::Entero);
    if (signo == QLatin1String("MOD"))
        return Nuevo(QStringLiteral("kov_resto") + argumentos, Tipo::Entero);
    return Nuevo(QStringLiteral("kov_potencia") + argumentos, Tipo::Doble);
}

Trozo Traductor::ExprLogica(const Expresion& e, const Ambito& ambito)
{
    const Trozo izquierda = Expr(*e.hijos[0], ambito);
    const Trozo derecha = Expr(*e.hijos[1], ambito);
    const QString a = ACondicion(izquierda);
    const QString b = ACondicion(derecha);
    QString sql;
    if (e.nombre == QLatin1String("XOR"))
        sql = QStringLiteral("(%1 <> %2)").arg(a, b);
    else if (e.nombre == QLatin1String("EQV"))
        sql = QStringLiteral("(%1 = %2)").arg(a, b);
    else if (e.nombre == QLatin1String("IMP"))
        sql = QStringLiteral("(NOT %1 OR %2)").arg(a, b);
    else
        sql = QStringLiteral("(%1 %2 %3)").arg(a, e.nombre, b);
    return Nuevo(sql, Tipo::Condicion);
}

Trozo Traductor::ExprSuma(const Trozo& a, const Trozo& b, bool resta)
{
    if (a.tipo == Tipo::Nulo || b.tipo == Tipo::Nulo)
        return Nuevo(QStringLiteral("NULL"), Tipo::Nulo);
    const QString signo = resta ? QStringLiteral(" - ") : QStringLiteral(" + ");
    if (!resta && EsTexto(a.tipo) && EsTexto(b.tipo))
        return Nuevo(u'(' + a.sql + QStringLiteral(" || ") + b.sql + u')', Tipo::Texto);
    const bool fechaA = a.tipo == Tipo::Fecha;
    const bool fechaB = b.tipo == Tipo::Fecha;
    const QString suma = u'(' + ANumero(a).sql + signo + ANumero(b).sql + u')';
    if (fechaA != fechaB && (fechaA || !resta))
        return Nuevo(QStringLiteral("kov_desde_serie(%1)").arg(suma), Tipo::Fecha);
    const bool dudosa = a.tipo == Tipo::Desconocido || b.tipo == Tipo::Desconocido;
    if (dudosa && !resta)
        return Nuevo(QStringLiteral("kov_suma(%1, %2)").arg(AValor(a).sql, AValor(b).sql),
                     Tipo::Desconocido);
    return Nuevo(suma, TipoAritmetico(ANumero(a).tipo, ANumero(b).tipo));
}

Trozo Traductor::ExprUnion(const Expresion& e, const Ambito& ambito)
{
    QStringList sumandos;
    ReuneSumandos(e, ambito, sumandos);
    return Nuevo(QStringLiteral("kov_une(%1)").arg(sumandos.join(QStringLiteral(", "))),
                 Tipo::Texto);
}

void Traductor::ReuneSumandos(const Expresion& e, const Ambito& ambito, QStringList& sumandos)
{
    if (e.clase == Expresion::Clase::Binario && e.nombre == QLatin1String("&")) {
        for (const PExpresion& hijo : e.hijos)
            ReuneSumandos(*hijo, ambito, sumandos);
        return;
    }
    const Trozo trozo = Expr(e, ambito);
    sumandos << ATexto(trozo).sql;
}

Trozo Traductor::ExprEscalar(const Expresion& e, const Ambito& ambito)
{
    std::vector<ColumnaVista> columnas;
    const QString sql = TraduceConsulta(*e.consulta, &ambito, columnas);
    if (columnas.size() != 1)
        RechazaEn(e.posicion,
                  QStringLiteral("Una subconsulta usada como valor ha de dar un solo campo"));
    Trozo trozo = Nuevo(u'(' + sql + u')', columnas[0].tipo);
    trozo.ancho = columnas[0].ancho;
    return trozo;
}

Trozo Traductor::ExprExiste(const Expresion& e, const Ambito& ambito)
{
    std::vector<ColumnaVista> columnas;
    const QString sql = TraduceConsulta(*e.consulta, &ambito, columnas);
    return Nuevo(QStringLiteral("EXISTS (%1)").arg(sql), Tipo::Condicion);
}

} // namespace tolmo::data::access
