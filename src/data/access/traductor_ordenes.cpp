#include "data/access/consultas_guardadas.h"
#include "data/access/errores_access.h"
#include "data/access/predeterminados.h"
#include "data/access/traductor.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

Trozo DeSalida(const ColumnaVista& columna)
{
    Trozo trozo;
    trozo.sql = QStringLiteral("kov_s.") + Identificador(columna.nombre);
    trozo.tipo = columna.tipo;
    trozo.ancho = columna.ancho;
    trozo.columna = columna;
    // A converted value is checked like any other: only a bare column is known to be clean.
    trozo.esColumna = !columna.columna.isEmpty();
    return trozo;
}

const ColumnaVista& ColumnaDe(const TablaVista& tabla, const QString& nombre, qsizetype posicion)
{
    const ColumnaVista* columna = tabla.Busca(nombre);
    if (!columna)
        RechazaEn(
            posicion,
            QStringLiteral("No se conoce el campo %1 en la tabla %2").arg(nombre, tabla.nombre));
    return *columna;
}

QString InsertaEn(const TablaVista& tabla, const QStringList& columnas, const QString& valores)
{
    return QStringLiteral("INSERT INTO %1 (%2) %3")
        .arg(Identificador(tabla.nombre), columnas.join(QStringLiteral(", ")), valores);
}

bool EsTablaSola(const std::vector<std::unique_ptr<Fuente>>& fuentes)
{
    return fuentes.size() == 1 && fuentes[0]->clase == Fuente::Clase::Tabla;
}

QString ConAlias(const TablaVista& tabla, const Ambito& ambito)
{
    return Identificador(tabla.nombre) + QStringLiteral(" AS ") +
           Identificador(ambito.fuentes[0].alias);
}

} // namespace

Plan Traductor::Traduce(const Sentencia& sentencia, bool actualizable)
{
    struct Visita {
        Traductor& t;
        bool actualizable;
        Plan operator()(const Consulta& s) const
        {
            return s.partes[0].destino.isEmpty() ? t.TraduceConsultaPrincipal(s, actualizable)
                                                 : t.TraduceSeleccionEnTabla(s);
        }
        Plan operator()(const Insercion& s) const { return t.TraduceInsercion(s); }
        Plan operator()(const Modificacion& s) const { return t.TraduceModificacion(s); }
        Plan operator()(const Borrado& s) const { return t.TraduceBorrado(s); }
        Plan operator()(const TablaNueva& s) const { return t.TraduceTablaNueva(s); }
        Plan operator()(const IndiceNuevo& s) const { return t.TraduceIndiceNuevo(s); }
        Plan operator()(const CambioTabla& s) const { return t.TraduceCambioTabla(s); }
        Plan operator()(const Eliminacion& s) const { return t.TraduceEliminacion(s); }
        Plan operator()(const ConsultaNueva& s) const { return t.TraduceConsultaNueva(s); }
        Plan operator()(const Llamada& s) const { return t.TraduceLlamada(s); }
    };
    Plan plan = std::visit(Visita{*this, actualizable}, sentencia);
    plan.apoyos.insert(plan.apoyos.end(), apoyos_.begin(), apoyos_.end());
    return plan;
}

Trozo Traductor::TraduceGuardada(const Expresion& e, const Ambito& ambito)
{
    ++guardadas_;
    Trozo trozo = Expr(e, ambito);
    --guardadas_;
    return trozo;
}

const TablaVista& Traductor::TablaParaCambiar(const QString& nombre, qsizetype posicion) const
{
    const TablaVista* tabla = esquema_.Busca(nombre);
    if (!tabla)
        RechazaEn(posicion, QStringLiteral("No se conoce la tabla %1").arg(nombre));
    if (tabla->clase != TablaVista::Clase::Tabla)
        RechazaEn(posicion, QStringLiteral("La consulta %1 no se puede modificar").arg(nombre));
    return *tabla;
}

Plan Traductor::TraduceInsercion(const Insercion& insercion)
{
    const TablaVista& tabla = TablaParaCambiar(insercion.tabla, insercion.posicion);
    std::vector<Trozo> valores;
    std::vector<ColumnaVista> salidas;
    QString origen;
    const Ambito vacio;
    for (const PExpresion& valor : insercion.valores)
        valores.push_back(Expr(*valor, vacio));
    if (insercion.consulta) {
        exactas_ = true;
        origen = QStringLiteral(" FROM (%1) AS kov_s")
                     .arg(TraduceConsulta(*insercion.consulta, nullptr, salidas));
        for (const ColumnaVista& salida : salidas)
            valores.push_back(DeSalida(salida));
    }
    QStringList nombres = insercion.columnas;
    if (nombres.isEmpty()) {
        // Without a list a select goes by the names of its fields, and values by their place.
        for (const ColumnaVista& columna : insercion.consulta ? salidas : tabla.columnas)
            nombres << columna.nombre;
    }
    if (nombres.size() != static_cast<qsizetype>(valores.size()))
        RechazaEn(insercion.posicion,
                  QStringLiteral("El número de valores no es el de los campos de destino"));
    QStringList columnas;
    QStringList asignados;
    for (qsizetype i = 0; i < nombres.size(); ++i) {
        const ColumnaVista& destino = ColumnaDe(tabla, nombres[i], insercion.posicion);
        if (columnas.contains(Identificador(destino.nombre)))
            RechazaEn(insercion.posicion,
                      QStringLiteral("El campo %1 está dos veces en INSERT").arg(destino.nombre));
        columnas << Identificador(destino.nombre);
        asignados << AsignaA(destino, valores[static_cast<std::size_t>(i)]);
    }
    AnadePredeterminados(esquema_, tabla, columnas, asignados);
    Plan plan;
    const QString lista = asignados.join(QStringLiteral(", "));
    plan.cambia = tabla.nombre;
    plan.sql << InsertaEn(tabla, columnas,
                          insercion.consulta ? QStringLiteral("SELECT ") + lista + origen
                                             : QStringLiteral("VALUES (%1)").arg(lista));
    return plan;
}

// SELECT ... INTO: a new table whose columns are of the kinds that the select delivers.
Plan Traductor::TraduceSeleccionEnTabla(const Consulta& consulta)
{
    const Seleccion& seleccion = consulta.partes[0];
    if (esquema_.Busca(seleccion.destino))
        Rechaza(QStringLiteral("La tabla %1 ya existe").arg(seleccion.destino));
    if (consulta.partes.size() > 1)
        Rechaza(QStringLiteral("SELECT INTO no cabe en UNION"));
    const Piezas piezas = TraduceSeleccion(seleccion, consulta.orden, nullptr);
    TablaNueva tabla;
    tabla.nombre = seleccion.destino;
    QStringList valores;
    for (const Salida& salida : piezas.salidas) {
        ColumnaNueva columna;
        columna.nombre = salida.nombre;
        const Trozo valor = AValor(salida.trozo);
        columna.tipo = {valor.tipo, valor.ancho, valor.columna.precision, valor.columna.escala};
        ColumnaVista destino;
        destino.tabla = tabla.nombre;
        destino.nombre = columna.nombre;
        destino.tipo = valor.tipo;
        destino.ancho = valor.ancho;
        destino.precision = columna.tipo.precision;
        destino.escala = columna.tipo.escala;
        valores << AsignaA(destino, valor) + QStringLiteral(" AS ") + Identificador(columna.nombre);
        tabla.columnas.push_back(std::move(columna));
    }
    Plan plan = TraduceTablaNueva(tabla);
    QString sql = QStringLiteral("SELECT ") +
                  (piezas.distinto ? QStringLiteral("DISTINCT ") : QString()) +
                  valores.join(QStringLiteral(", ")) + piezas.resto;
    if (piezas.tope)
        Rechaza(QStringLiteral("SELECT TOP no cabe con INTO"));
    if (!piezas.orden.empty())
        sql += QStringLiteral(" ORDER BY ") + OrdenDe(piezas);
    plan.sql << QStringLiteral("INSERT INTO %1 %2").arg(Identificador(tabla.nombre), sql);
    plan.nueva = std::make_shared<const TablaNueva>(std::move(tabla));
    return plan;
}

Plan Traductor::TraduceModificacion(const Modificacion& modificacion)
{
    Ambito ambito;
    const QString fuentes = Fuentes(modificacion.fuentes, ambito);
    const QString donde = modificacion.donde
                              ? QStringLiteral(" WHERE ") + Filtro(*modificacion.donde, ambito)
                              : QString();
    QString alias;
    QStringList cambios;
    QStringList valores;
    const bool sola = EsTablaSola(modificacion.fuentes);
    for (const Asignacion& asignacion : modificacion.asignaciones) {
        const Trozo columna = ExprColumna(*asignacion.columna, ambito);
        const QString& fuente = columna.fuente;
        if (!alias.isEmpty() && alias != fuente)
            RechazaEn(asignacion.columna->posicion,
                      QStringLiteral("UPDATE sólo puede cambiar campos de una tabla"));
        alias = fuente;
        const QString valor = AsignaA(columna.columna, Expr(*asignacion.valor, ambito));
        const QString nombre = QStringLiteral("kov_v%1").arg(valores.size() + 1);
        valores << valor + QStringLiteral(" AS ") + nombre;
        cambios << Identificador(columna.columna.columna) + QStringLiteral(" = ") +
                       (sola ? valor : QStringLiteral("kov_q.") + nombre);
    }
    const TablaVista& tabla = TablaDeFuente(ambito, alias, modificacion.posicion);
    Plan plan;
    plan.cambia = tabla.nombre;
    const QString lista = cambios.join(QStringLiteral(", "));
    if (sola) {
        plan.sql << QStringLiteral("UPDATE %1 SET %2%3").arg(ConAlias(tabla, ambito), lista, donde);
        return plan;
    }
    plan.sql
        << QStringLiteral(
               "UPDATE %1 SET %2 FROM (SELECT %3.rowid AS kov_fila, %4 FROM %5%6) AS kov_q WHERE %1.rowid = kov_q.kov_fila")
               .arg(Identificador(tabla.nombre), lista, Identificador(alias),
                    valores.join(QStringLiteral(", ")), fuentes, donde);
    return plan;
}

const TablaVista& Traductor::TablaDeFuente(const Ambito& ambito, const QString& alias,
                                           qsizetype posicion) const
{
    for (const auto& fuente : ambito.fuentes) {
        if (Llave(fuente.alias) == Llave(alias) && !fuente.tabla.isEmpty())
            return TablaParaCambiar(fuente.tabla, posicion);
    }
    RechazaEn(posicion, QStringLiteral("%1 no es una tabla que se pueda modificar").arg(alias));
}

// "DELETE * FROM t", "DELETE t.* FROM ...", "DELETE t FROM ...", or with fields of the table, as
// Access writes them into a query where they have a condition.
QString Traductor::TablaDeBorrado(const Borrado& borrado, const Ambito& ambito)
{
    QString alias;
    const auto es = [&](const QString& tabla) {
        if (!alias.isEmpty() && Llave(alias) != Llave(tabla))
            RechazaEn(borrado.posicion,
                      QStringLiteral("DELETE sólo puede borrar registros de una tabla"));
        alias = tabla;
    };
    for (const Elemento& elemento : borrado.elementos) {
        const Expresion* e = elemento.expresion.get();
        const bool nombre = e && e->clase == Expresion::Clase::Columna;
        const bool deFuente =
            nombre && e->tabla.isEmpty() &&
            std::any_of(ambito.fuentes.begin(), ambito.fuentes.end(), [&](const auto& fuente) {
                return Llave(fuente.alias) == Llave(e->nombre);
            });
        if (deFuente)
            es(e->nombre);
        else if (nombre)
            es(ExprColumna(*e, ambito).fuente);
        else if (e)
            RechazaEn(elemento.posicion,
                      QStringLiteral("DELETE pide una tabla, y no una expresión"));
        else if (!elemento.tabla.isEmpty())
            es(elemento.tabla);
    }
    if (alias.isEmpty() && ambito.fuentes.size() > 1)
        RechazaEn(borrado.posicion, QStringLiteral("DELETE ha de decir de qué tabla se borra"));
    return alias.isEmpty() ? ambito.fuentes[0].alias : alias;
}

Plan Traductor::TraduceBorrado(const Borrado& borrado)
{
    Ambito ambito;
    const QString fuentes = Fuentes(borrado.fuentes, ambito);
    const QString donde =
        borrado.donde ? QStringLiteral(" WHERE ") + Filtro(*borrado.donde, ambito) : QString();
    Plan plan;
    const QString alias = TablaDeBorrado(borrado, ambito);
    const TablaVista& tabla = TablaDeFuente(ambito, alias, borrado.posicion);
    plan.cambia = tabla.nombre;
    if (EsTablaSola(borrado.fuentes)) {
        plan.sql << QStringLiteral("DELETE FROM %1%2").arg(ConAlias(tabla, ambito), donde);
        return plan;
    }
    plan.sql << QStringLiteral("DELETE FROM %1 WHERE rowid IN (SELECT %2.rowid FROM %3%4)")
                    .arg(Identificador(tabla.nombre), Identificador(alias), fuentes, donde);
    return plan;
}

Plan Traductor::TraduceLlamada(const Llamada& llamada)
{
    const TablaVista* consulta = esquema_.Busca(llamada.nombre);
    if (!consulta || consulta->clase != TablaVista::Clase::Guardada || guardadas_ > 0)
        RechazaEn(llamada.posicion,
                  QStringLiteral("No se conoce la sentencia o consulta %1").arg(llamada.nombre));
    const Guardada guardada = AbreGuardada(*consulta, llamada.posicion);
    ++guardadas_;
    Plan plan = EnConsulta(*consulta, [&] { return Traduce(guardada.sentencia, false); });
    --guardadas_;
    return plan;
}

} // namespace tolmo::data::access
