#include "data/access/analizador.h"
#include "data/access/colacion.h"
#include "data/access/errores_access.h"
#include "data/access/traductor.h"
#include <algorithm>

namespace tolmo::data::access {
namespace {

QString NombreDeIndice(const QString& tabla, const QString& indice)
{
    // Here names of indexes are of the whole base, in the language of each table.
    return Identificador(tabla + u'.' + indice);
}

QString ListaDeColumnas(const std::vector<ColumnaIndice>& columnas)
{
    QStringList lista;
    for (const ColumnaIndice& columna : columnas)
        lista << Identificador(columna.nombre) +
                     (columna.descendente ? QStringLiteral(" DESC") : QString());
    return lista.join(QStringLiteral(", "));
}

bool EsLaColumna(const IndiceNuevo& indice, const ColumnaNueva& columna)
{
    return indice.columnas.size() == 1 && Llave(indice.columnas[0].nombre) == Llave(columna.nombre);
}

bool Contiene(const IndiceNuevo& indice, const ColumnaNueva& columna)
{
    return std::any_of(
        indice.columnas.begin(), indice.columnas.end(),
        [&columna](const ColumnaIndice& c) { return Llave(c.nombre) == Llave(columna.nombre); });
}

Plan PlanDeEsquema(const QStringList& sql)
{
    Plan plan;
    plan.cambiaEsquema = true;
    plan.sql = sql;
    return plan;
}

} // namespace

QString Traductor::DeclaraColumna(const ColumnaNueva& columna) const
{
    if (columna.contador)
        return Identificador(columna.nombre) + QStringLiteral(" INTEGER PRIMARY KEY AUTOINCREMENT");
    QString sql = Identificador(columna.nombre) + u' ' + Declaracion(columna.tipo);
    if (columna.tipo.tipo == Tipo::Texto || Declaracion(columna.tipo) == QLatin1String("NTEXT") ||
        columna.tipo.tipo == Tipo::Nulo)
        sql += QStringLiteral(" COLLATE ") + QLatin1String(Colacion);
    if (columna.obligatoria)
        sql += QStringLiteral(" NOT NULL");
    if (columna.defecto)
        sql += QStringLiteral(" DEFAULT ") + Defecto(columna);
    else if (columna.tipo.tipo == Tipo::Logico)
        sql += QStringLiteral(" DEFAULT 0");
    return sql;
}

// A default is a constant: a date that is asked for at every row has no place in the file.
QString Traductor::Defecto(const ColumnaNueva& columna) const
{
    const Expresion& e = *columna.defecto;
    const bool negativo = e.clase == Expresion::Clase::Unario && e.nombre == QLatin1String("-");
    const Expresion& valor = negativo ? *e.hijos[0] : e;
    if (valor.clase != Expresion::Clase::Literal)
        RechazaEn(e.posicion, QStringLiteral("DEFAULT pide un valor constante"));
    const QString signo = negativo ? QStringLiteral("-") : QString();
    if (valor.literal.tipo == Tipo::Condicion)
        return valor.literal.texto == QLatin1String("1") ? QStringLiteral("-1")
                                                         : QStringLiteral("0");
    if (columna.tipo.tipo == Tipo::Logico)
        return valor.literal.texto.toDouble() != 0 ? QStringLiteral("-1") : QStringLiteral("0");
    return signo + (valor.literal.largo ? valor.literal.texto : ExprLiteral(valor).sql);
}

QString Traductor::SqlIndice(const IndiceNuevo& indice) const
{
    return QStringLiteral("CREATE %1INDEX %2 ON %3 (%4)")
        .arg(indice.unico ? QStringLiteral("UNIQUE ") : QString(),
             NombreDeIndice(indice.tabla, indice.nombre), Identificador(indice.tabla),
             ListaDeColumnas(indice.columnas));
}

Plan Traductor::TraduceTablaNueva(const TablaNueva& tabla)
{
    if (esquema_.Busca(tabla.nombre))
        Rechaza(QStringLiteral("La tabla %1 ya existe").arg(tabla.nombre));
    const auto contador = std::find_if(tabla.columnas.begin(), tabla.columnas.end(),
                                       [](const ColumnaNueva& c) { return c.contador; });
    const bool hayContador = contador != tabla.columnas.end();
    QStringList partes;
    QStringList indices;
    for (ColumnaNueva const& columna : tabla.columnas) {
        QString declarada = DeclaraColumna(columna);
        const bool clave = std::any_of(
            tabla.indices.begin(), tabla.indices.end(),
            [&columna](const IndiceNuevo& i) { return i.sinNulos && Contiene(i, columna); });
        if (clave && !columna.obligatoria && !columna.contador)
            declarada += QStringLiteral(" NOT NULL");
        partes << declarada;
    }
    for (const IndiceNuevo& indice : tabla.indices) {
        for (const ColumnaIndice& columna : indice.columnas) {
            const bool esta = std::any_of(tabla.columnas.begin(), tabla.columnas.end(),
                                          [&columna](const ColumnaNueva& c) {
                                              return Llave(c.nombre) == Llave(columna.nombre);
                                          });
            if (!esta)
                Rechaza(QStringLiteral("No se conoce el campo %1 en la tabla %2")
                            .arg(columna.nombre, tabla.nombre));
        }
        if (hayContador && EsLaColumna(indice, *contador))
            continue;
        if (indice.primario && !hayContador)
            partes << QStringLiteral("PRIMARY KEY (%1)").arg(ListaDeColumnas(indice.columnas));
        else
            indices << SqlIndice(indice);
    }
    return PlanDeEsquema(
        QStringList{QStringLiteral("CREATE TABLE %1 (%2)")
                        .arg(Identificador(tabla.nombre), partes.join(QStringLiteral(", ")))} +
        indices);
}

Plan Traductor::TraduceIndiceNuevo(const IndiceNuevo& indice) const
{
    const TablaVista& tabla = TablaParaCambiar(indice.tabla, 0);
    for (const ColumnaIndice& columna : indice.columnas) {
        if (!tabla.Busca(columna.nombre))
            Rechaza(QStringLiteral("No se conoce el campo %1 en la tabla %2")
                        .arg(columna.nombre, tabla.nombre));
    }
    for (const IndiceVisto& otro : esquema_.IndicesDe(tabla)) {
        if (Llave(otro.nombre) == Llave(indice.nombre))
            Rechaza(QStringLiteral("El índice %1 ya existe en la tabla %2")
                        .arg(otro.nombre, tabla.nombre));
    }
    IndiceNuevo real = indice;
    real.tabla = tabla.nombre;
    return PlanDeEsquema({SqlIndice(real)});
}

Plan Traductor::TraduceCambioTabla(const CambioTabla& cambio)
{
    const TablaVista& tabla = TablaParaCambiar(cambio.tabla, cambio.posicion);
    const QString altera = QStringLiteral("ALTER TABLE %1 ").arg(Identificador(tabla.nombre));
    const ColumnaVista* columna = tabla.Busca(cambio.columna.nombre);
    switch (cambio.clase) {
    case CambioTabla::Clase::Anade:
        if (columna)
            RechazaEn(cambio.posicion, QStringLiteral("El campo %1 ya existe en la tabla %2")
                                           .arg(columna->nombre, tabla.nombre));
        if (cambio.columna.contador && !tabla.deFichero)
            RechazaEn(cambio.posicion,
                      QStringLiteral("Un contador sólo se pone al hacer la tabla"));
        return PlanDeEsquema(
            {altera + QStringLiteral("ADD COLUMN ") + DeclaraColumna(cambio.columna)});
    case CambioTabla::Clase::Quita:
    case CambioTabla::Clase::Cambia:
        if (!columna)
            RechazaEn(cambio.posicion, QStringLiteral("No se conoce el campo %1 en la tabla %2")
                                           .arg(cambio.columna.nombre, tabla.nombre));
        if (cambio.columna.contador)
            RechazaEn(
                cambio.posicion,
                QStringLiteral("El campo %1 no se convierte en un contador").arg(columna->nombre));
        ExigeSinIndices(tabla, *columna, cambio.posicion);
        if (cambio.clase == CambioTabla::Clase::Cambia)
            return TraduceCambioColumna(tabla, *columna, cambio.columna);
        return PlanDeEsquema(
            {altera + QStringLiteral("DROP COLUMN ") + Identificador(columna->nombre)});
    case CambioTabla::Clase::AnadeIndice:
        return TraduceIndiceNuevo(cambio.indice);
    case CambioTabla::Clase::QuitaIndice:
        break;
    }
    ExigeIndice(tabla, cambio.indice.nombre);
    return PlanDeEsquema(
        {QStringLiteral("DROP INDEX ") + NombreDeIndice(tabla.nombre, cambio.indice.nombre)});
}

void Traductor::ExigeSinIndices(const TablaVista& tabla, const ColumnaVista& columna,
                                qsizetype posicion) const
{
    for (const IndiceVisto& indice : esquema_.IndicesDe(tabla)) {
        if (!indice.columnas.contains(columna.nombre, Qt::CaseInsensitive))
            continue;
        if (indice.nombre.isEmpty())
            RechazaEn(posicion, QStringLiteral("El campo %1 es de la clave de la tabla %2")
                                    .arg(columna.nombre, tabla.nombre));
        RechazaEn(posicion, QStringLiteral("El campo %1 está en el índice %2 de la tabla %3")
                                .arg(columna.nombre, indice.nombre, tabla.nombre));
    }
}

void Traductor::ExigeIndice(const TablaVista& tabla, const QString& indice) const
{
    const std::vector<IndiceVisto> indices = esquema_.IndicesDe(tabla);
    if (std::none_of(indices.begin(), indices.end(), [&](const IndiceVisto& suyo) {
            return !suyo.nombre.isEmpty() && Llave(suyo.nombre) == Llave(indice);
        }))
        Rechaza(
            QStringLiteral("No se conoce el índice %1 de la tabla %2").arg(indice, tabla.nombre));
}

// The engine can't change a column's type: a new column takes the values, converted and checked,
// and then the name. It stands last afterwards.
Plan Traductor::TraduceCambioColumna(const TablaVista& tabla, const ColumnaVista& vieja,
                                     const ColumnaNueva& nueva) const
{
    ColumnaNueva provisional;
    provisional.nombre = QLatin1String(ColumnaProvisional);
    provisional.tipo = nueva.tipo;
    const QString altera = QStringLiteral("ALTER TABLE %1 ").arg(Identificador(tabla.nombre));
    ColumnaVista destino;
    destino.tabla = tabla.nombre;
    destino.nombre = vieja.nombre;
    destino.tipo = nueva.tipo.tipo;
    destino.ancho = nueva.tipo.ancho;
    Trozo valor;
    valor.sql = Identificador(vieja.nombre);
    valor.tipo = vieja.tipo;
    valor.ancho = vieja.ancho;
    return PlanDeEsquema(
        {altera + QStringLiteral("ADD COLUMN ") + DeclaraColumna(provisional),
         QStringLiteral("UPDATE %1 SET kov_nueva = %2")
             .arg(Identificador(tabla.nombre), AsignaA(destino, valor)),
         altera + QStringLiteral("DROP COLUMN ") + Identificador(vieja.nombre),
         altera + QStringLiteral("RENAME COLUMN kov_nueva TO ") + Identificador(vieja.nombre)});
}

Plan Traductor::TraduceEliminacion(const Eliminacion& eliminacion) const
{
    const QString& nombre = eliminacion.nombre;
    if (eliminacion.clase == Eliminacion::Clase::Indice) {
        const TablaVista& suya = TablaParaCambiar(eliminacion.tabla, 0);
        ExigeIndice(suya, nombre);
        return PlanDeEsquema({QStringLiteral("DROP INDEX ") + NombreDeIndice(suya.nombre, nombre)});
    }
    const TablaVista* tabla = esquema_.Busca(nombre);
    if (!tabla)
        Rechaza(QStringLiteral("No se conoce la tabla o consulta %1").arg(nombre));
    if (tabla->clase == TablaVista::Clase::Guardada)
        return PlanDeEsquema(
            {QStringLiteral("DELETE FROM %1 WHERE nombre = %2")
                 .arg(QLatin1String(TablaConsultas), TextoLiteral(tabla->nombre))});
    const bool vista = tabla->clase == TablaVista::Clase::Vista;
    if (!vista && eliminacion.clase == Eliminacion::Clase::Consulta)
        Rechaza(QStringLiteral("%1 es una tabla y no una consulta").arg(nombre));
    return PlanDeEsquema({(vista ? QStringLiteral("DROP VIEW ") : QStringLiteral("DROP TABLE ")) +
                          Identificador(tabla->nombre)});
}

Plan Traductor::TraduceConsultaNueva(const ConsultaNueva& consulta) const
{
    if (esquema_.Busca(consulta.nombre))
        Rechaza(QStringLiteral("La tabla o consulta %1 ya existe").arg(consulta.nombre));
    const QString tabla = QLatin1String(TablaConsultas);
    return PlanDeEsquema(
        {QStringLiteral(
             "CREATE TABLE IF NOT EXISTS %1 (nombre TEXT PRIMARY KEY, texto TEXT NOT NULL)")
             .arg(tabla),
         QStringLiteral("INSERT INTO %1 (nombre, texto) VALUES (%2, %3)")
             .arg(tabla, TextoLiteral(consulta.nombre), TextoLiteral(consulta.texto))});
}

} // namespace tolmo::data::access
