#include "data/access/errores_access.h"
#include "data/access/traductor.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

QString ListaDeSalidas(const std::vector<Salida>& salidas, const std::vector<Tipo>& tipos,
                       bool conColacion)
{
    QStringList lista;
    for (std::size_t i = 0; i < salidas.size(); ++i) {
        Trozo trozo = AlTipo(AValor(salidas[i].trozo), tipos[i]);
        if (conColacion && salidas.size() == 1 &&
            (EsTexto(trozo.tipo) || trozo.tipo == Tipo::Desconocido))
            trozo.sql = ComoMiembro(trozo.sql);
        lista << (conColacion ? ConColacion(trozo) : trozo.sql) + QStringLiteral(" AS ") +
                     Identificador(salidas[i].nombre);
    }
    return lista.join(QStringLiteral(", "));
}

std::vector<Tipo> TiposDe(const std::vector<Piezas>& partes)
{
    std::vector<Tipo> tipos;
    for (const Salida& salida : partes[0].salidas)
        tipos.push_back(AValor(salida.trozo).tipo);
    for (const Piezas& parte : partes) {
        for (std::size_t i = 0; i < tipos.size(); ++i)
            tipos[i] = TipoComun(tipos[i], AValor(parte.salidas[i].trozo).tipo);
    }
    return tipos;
}

QString Terminos(const std::vector<std::pair<Trozo, bool>>& orden)
{
    QStringList terminos;
    for (const auto& [trozo, descendente] : orden)
        terminos << ConColacion(trozo) + (descendente ? QStringLiteral(" DESC") : QString());
    return terminos.join(QStringLiteral(", "));
}

QString ListaDeClaves(const Piezas& piezas)
{
    QString lista;
    for (std::size_t i = 0; i < piezas.orden.size(); ++i)
        lista += QStringLiteral(", %1 AS kov_k%2").arg(piezas.orden[i].first.sql).arg(i + 1);
    return lista;
}

QString Selecciona(const Piezas& piezas, const std::vector<Tipo>& tipos, bool conColacion,
                   const QString& ademas = {})
{
    return QStringLiteral("SELECT ") + (piezas.distinto ? QStringLiteral("DISTINCT ") : QString()) +
           ListaDeSalidas(piezas.salidas, tipos, conColacion || piezas.distinto) + ademas +
           piezas.resto;
}

// The first rows of a select that is part of a larger one, with the ties of the last.
QString ConTope(const Piezas& piezas, const std::vector<Tipo>& tipos, bool conColacion)
{
    const QString cuantos = QString::number(piezas.tope->cuantos, 'f', 0);
    if (piezas.orden.empty() && !piezas.tope->porCiento)
        return QStringLiteral("SELECT * FROM (%1 LIMIT %2)")
            .arg(Selecciona(piezas, tipos, conColacion), cuantos);
    QStringList nombres;
    for (const Salida& salida : piezas.salidas)
        nombres << Identificador(salida.nombre);
    std::vector<std::pair<Trozo, bool>> claves = piezas.orden;
    for (std::size_t i = 0; i < claves.size(); ++i)
        claves[i].first.sql = QStringLiteral("kov_k%1").arg(i + 1);
    const QString ventana = claves.empty()
                                ? QStringLiteral("ROW_NUMBER() OVER ()")
                                : QStringLiteral("RANK() OVER (ORDER BY %1)").arg(Terminos(claves));
    const QString limite =
        piezas.tope->porCiento
            ? QStringLiteral("kov_rango <= -kov_int(-(kov_total * %1 / 100.0))").arg(cuantos)
            : QStringLiteral("kov_rango <= %1").arg(cuantos);
    return QStringLiteral(
               "SELECT %1 FROM (SELECT *, %2 AS kov_rango, COUNT(*) OVER () AS kov_total FROM (%3)) WHERE %4 ORDER BY kov_rango")
        .arg(nombres.join(QStringLiteral(", ")), ventana,
             Selecciona(piezas, tipos, conColacion, ListaDeClaves(piezas)), limite);
}

// "T002.VALOR": a name that comes twice is told apart by the source. An alias keeps its name, and
// so does the first of several that are the same column of the same source.
void DistingueNombres(std::vector<Salida>& salidas)
{
    QHash<QString, QStringList> duenos;
    const auto dueno = [](const Salida& salida, std::size_t i) {
        return salida.conAlias || salida.fuente.isEmpty() ? QString::number(i)
                                                          : u'.' + salida.fuente;
    };
    for (std::size_t i = 0; i < salidas.size(); ++i) {
        QStringList& lista = duenos[Llave(salidas[i].nombre)];
        if (!lista.contains(dueno(salidas[i], i)))
            lista << dueno(salidas[i], i);
    }
    QSet<QString> vistos;
    for (std::size_t i = 0; i < salidas.size(); ++i) {
        Salida& salida = salidas[i];
        const bool compartido =
            duenos[Llave(salida.nombre)].size() > 1 || vistos.contains(Llave(salida.nombre));
        vistos.insert(Llave(salida.nombre));
        if (compartido && !salida.conAlias && !salida.fuente.isEmpty())
            salida.nombre = salida.fuente + u'.' + salida.nombre;
    }
}

Campo CampoDe(const Salida& salida, Tipo tipo)
{
    Campo campo;
    campo.nombre = salida.nombre;
    if (salida.trozo.esColumna) {
        campo.tabla = salida.trozo.columna.tabla;
        campo.columna = salida.trozo.columna.columna;
    }
    campo.tipo = NumeroAdo(tipo);
    campo.ancho = salida.trozo.ancho;
    return campo;
}

} // namespace

std::vector<Piezas> Traductor::TraducePartes(const Consulta& consulta, const Ambito* exterior)
{
    std::vector<Piezas> partes;
    const bool sola = consulta.partes.size() == 1;
    for (const Seleccion& seleccion : consulta.partes) {
        if (!seleccion.destino.isEmpty())
            Rechaza(QStringLiteral("SELECT INTO no cabe dentro de otra sentencia"));
        partes.push_back(TraduceSeleccion(
            seleccion, sola ? std::span(consulta.orden) : std::span<const Orden>(), exterior));
        if (partes.back().salidas.size() != partes[0].salidas.size())
            Rechaza(QStringLiteral("Las partes de UNION no dan el mismo número de campos"));
    }
    return partes;
}

QString Traductor::TraduceConsulta(const Consulta& consulta, const Ambito* exterior,
                                   std::vector<ColumnaVista>& columnas)
{
    const bool exactas = std::exchange(exactas_, false);
    std::vector<Piezas> partes = TraducePartes(consulta, exterior);
    const std::vector<Tipo> tipos = TiposDe(partes);
    const bool sola = partes.size() == 1;
    for (Salida& salida : partes[0].salidas) {
        if (exactas && sola && !partes[0].distinto && !salida.trozo.exacto.isEmpty())
            salida.trozo.sql = salida.trozo.exacto;
    }
    QString sql;
    for (std::size_t i = 0; i < partes.size(); ++i) {
        if (i > 0)
            sql +=
                consulta.todas[i - 1] ? QStringLiteral(" UNION ALL ") : QStringLiteral(" UNION ");
        sql +=
            partes[i].tope ? ConTope(partes[i], tipos, !sola) : Selecciona(partes[i], tipos, !sola);
    }
    if (sola && !partes[0].tope && !partes[0].orden.empty())
        sql += QStringLiteral(" ORDER BY ") + Terminos(partes[0].orden);
    if (!sola && !consulta.orden.empty())
        sql += OrdenDeUnion(consulta.orden, partes[0].salidas);
    for (std::size_t i = 0; i < tipos.size(); ++i) {
        const Salida& salida = partes[0].salidas[i];
        ColumnaVista columna =
            sola && salida.trozo.esColumna ? salida.trozo.columna : ColumnaVista{};
        columna.nombre = salida.nombre;
        columna.tipo = tipos[i];
        columna.ancho = salida.trozo.ancho;
        columna.propia = false;
        columna.exacta.clear();
        columnas.push_back(columna);
    }
    return sql;
}

Plan Traductor::TraduceConsultaPrincipal(const Consulta& consulta, bool actualizable)
{
    Plan plan;
    plan.esConsulta = true;
    const Ambito* fuera = nullptr;
    const std::vector<Piezas> partes = TraducePartes(consulta, fuera);
    const Piezas& primera = partes[0];
    plan.tipos = TiposDe(partes);
    for (std::size_t i = 0; i < plan.tipos.size(); ++i)
        plan.campos.push_back(CampoDe(primera.salidas[i], plan.tipos[i]));
    if (partes.size() > 1) {
        std::vector<ColumnaVista> columnas;
        plan.sql << TraduceConsulta(consulta, fuera, columnas);
        return plan;
    }
    // The reader of the rows minds the ties, so that a TOP that goes by an index stops early.
    QString ademas;
    plan.tope = primera.tope;
    if (plan.tope) {
        ademas = ListaDeClaves(primera);
        for (const auto& termino : primera.orden)
            plan.clavesTope.push_back(termino.first.tipo);
    }
    if (actualizable && !primera.tabla.isEmpty()) {
        plan.tabla = primera.tabla;
        ademas += QStringLiteral(", %1.rowid AS kov_fila").arg(Identificador(primera.aliasTabla));
    }
    QString sql = Selecciona(primera, plan.tipos, false, ademas);
    if (!primera.orden.empty())
        sql += QStringLiteral(" ORDER BY ") + Terminos(primera.orden);
    plan.sql << sql;
    return plan;
}

Piezas Traductor::TraduceSeleccion(const Seleccion& seleccion, std::span<const Orden> orden,
                                   const Ambito* exterior)
{
    Piezas piezas;
    Ambito ambito;
    ambito.exterior = exterior;
    const bool deFuera = std::exchange(enAgregado_, false);
    if (!seleccion.fuentes.empty())
        piezas.resto = QStringLiteral(" FROM ") + Fuentes(seleccion.fuentes, ambito);
    if (seleccion.donde)
        piezas.resto += QStringLiteral(" WHERE ") + Filtro(*seleccion.donde, ambito);
    ambito.elementos = &seleccion.elementos;
    QStringList grupos;
    for (const PExpresion& grupo : seleccion.grupos) {
        const Trozo termino = Expr(*grupo, ambito);
        ambito.grupos.insert(termino.sql);
        grupos << ConColacion(termino);
    }
    const auto agrega = [](const Elemento& e) {
        return e.expresion && TieneAgregado(*e.expresion);
    };
    ambito.agrupado = !grupos.isEmpty() || seleccion.teniendo ||
                      std::any_of(seleccion.elementos.begin(), seleccion.elementos.end(), agrega);
    piezas.salidas = Salidas(seleccion, ambito);
    if (seleccion.distintaFila && !ambito.agrupado)
        piezas.resto += GruposDeFila(seleccion, piezas.salidas, ambito);
    if (!grupos.isEmpty())
        piezas.resto += QStringLiteral(" GROUP BY ") + grupos.join(QStringLiteral(", "));
    if (seleccion.teniendo)
        piezas.resto += QStringLiteral(" HAVING ") + ACondicion(Expr(*seleccion.teniendo, ambito));
    for (const Orden& termino : orden)
        piezas.orden.push_back(TerminoOrden(termino, piezas.salidas, ambito));
    piezas.distinto = seleccion.distinto;
    piezas.tope = seleccion.tope;
    if (piezas.distinto)
        ExigeOrdenEnLista(piezas);
    const bool unaTabla = ambito.fuentes.size() == 1 && !ambito.agrupado && !seleccion.distinto;
    if (unaTabla) {
        piezas.tabla = ambito.fuentes[0].tabla;
        piezas.aliasTabla = ambito.fuentes[0].alias;
    }
    enAgregado_ = deFuera;
    return piezas;
}

QString Traductor::OrdenDe(const Piezas& piezas) const
{
    return Terminos(piezas.orden);
}

void Traductor::ExigeOrdenEnLista(const Piezas& piezas) const
{
    for (const auto& [termino, descendente] : piezas.orden) {
        const QString sql = termino.sql;
        const bool esta =
            std::any_of(piezas.salidas.begin(), piezas.salidas.end(),
                        [&sql](const Salida& salida) { return AValor(salida.trozo).sql == sql; });
        if (!esta)
            Rechaza(
                QStringLiteral("Con DISTINCT sólo se puede ordenar por los campos de la lista"));
    }
}

std::vector<Salida> Traductor::Salidas(const Seleccion& seleccion, const Ambito& ambito)
{
    std::vector<Salida> salidas;
    for (const Elemento& elemento : seleccion.elementos) {
        if (!elemento.expresion) {
            AnadeEstrella(elemento, ambito, salidas);
            continue;
        }
        Salida salida;
        aliasAbiertos_.insert(elemento.expresion.get());
        salida.trozo = Expr(*elemento.expresion, ambito);
        aliasAbiertos_.remove(elemento.expresion.get());
        salida.conAlias = !elemento.alias.isEmpty();
        salida.nombre = elemento.alias;
        if (!salida.conAlias && elemento.expresion->clase == Expresion::Clase::Columna &&
            salida.trozo.esColumna) {
            salida.nombre = salida.trozo.columna.nombre;
            salida.fuente = salida.trozo.fuente;
        } else if (!salida.conAlias) {
            salida.nombre = QStringLiteral("Expr%1").arg(1000 + salidas.size());
        }
        salidas.push_back(std::move(salida));
    }
    DistingueNombres(salidas);
    return salidas;
}

void Traductor::AnadeEstrella(const Elemento& elemento, const Ambito& ambito,
                              std::vector<Salida>& salidas)
{
    bool hallada = false;
    for (const auto& fuente : ambito.fuentes) {
        if (!elemento.tabla.isEmpty() && Llave(elemento.tabla) != Llave(fuente.alias))
            continue;
        hallada = true;
        for (const ColumnaVista& columna : fuente.columnas) {
            Expresion referencia;
            referencia.clase = Expresion::Clase::Columna;
            referencia.posicion = elemento.posicion;
            referencia.tabla = fuente.alias;
            referencia.nombre = columna.nombre;
            Salida salida;
            salida.trozo = ExprColumna(referencia, ambito);
            salida.nombre = columna.nombre;
            salida.fuente = fuente.alias;
            salidas.push_back(std::move(salida));
        }
    }
    if (!hallada)
        RechazaEn(
            elemento.posicion,
            elemento.tabla.isEmpty()
                ? QStringLiteral("SELECT * pide una tabla en FROM")
                : QStringLiteral("No se conoce la tabla %1 en esta sentencia").arg(elemento.tabla));
}

std::pair<Trozo, bool> Traductor::TerminoOrden(const Orden& orden,
                                               const std::vector<Salida>& salidas,
                                               const Ambito& ambito)
{
    const Expresion& e = *orden.expresion;
    const bool ordinal = e.clase == Expresion::Clase::Literal && e.literal.tipo == Tipo::Entero;
    if (!ordinal)
        return {AValor(Expr(e, ambito)), orden.descendente};
    const int lugar = e.literal.texto.toInt();
    if (lugar < 1 || lugar > static_cast<int>(salidas.size()))
        RechazaEn(e.posicion,
                  QStringLiteral("ORDER BY %1 está fuera de la lista de campos").arg(lugar));
    return {AValor(salidas[static_cast<std::size_t>(lugar - 1)].trozo), orden.descendente};
}

QString Traductor::OrdenDeUnion(const std::vector<Orden>& orden,
                                const std::vector<Salida>& salidas) const
{
    QStringList terminos;
    for (const Orden& termino : orden) {
        const Expresion& e = *termino.expresion;
        std::size_t lugar = 0;
        if (e.clase == Expresion::Clase::Literal && e.literal.tipo == Tipo::Entero)
            lugar = static_cast<std::size_t>(e.literal.texto.toInt());
        for (std::size_t i = 0; i < salidas.size() && e.clase == Expresion::Clase::Columna; ++i) {
            if (Llave(salidas[i].nombre) == Llave(e.nombre))
                lugar = i + 1;
        }
        if (lugar < 1 || lugar > salidas.size())
            RechazaEn(e.posicion,
                      QStringLiteral("El orden de UNION va por los campos de su primera parte"));
        Trozo columna = salidas[lugar - 1].trozo;
        columna.sql = QString::number(lugar);
        terminos << ConColacion(columna) +
                        (termino.descendente ? QStringLiteral(" DESC") : QString());
    }
    return QStringLiteral(" ORDER BY ") + terminos.join(QStringLiteral(", "));
}

// DISTINCTROW gives each record of the tables that deliver something once, however often a join
// with the others repeats it.
QString Traductor::GruposDeFila(const Seleccion& seleccion, const std::vector<Salida>& salidas,
                                const Ambito& ambito) const
{
    QStringList filas;
    for (const auto& fuente : ambito.fuentes) {
        const bool entrega =
            std::any_of(salidas.begin(), salidas.end(), [&fuente](const Salida& s) {
                return s.trozo.sql.contains(Identificador(fuente.alias) + u'.');
            });
        if (entrega && fuente.tabla.isEmpty())
            return {};
        if (entrega)
            filas << Identificador(fuente.alias) + QStringLiteral(".rowid");
    }
    if (filas.isEmpty() || static_cast<std::size_t>(filas.size()) == ambito.fuentes.size() ||
        !seleccion.grupos.empty())
        return {};
    return QStringLiteral(" GROUP BY ") + filas.join(QStringLiteral(", "));
}

} // namespace tolmo::data::access
