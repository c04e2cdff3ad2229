#include "data/access/mdb/texto_consulta.h"
#include "data/access/mdb/errores_mdb.h"
#include <QSet>
#include <QStringList>
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

using Piezas = std::vector<Pieza>;

Piezas Con(const Piezas& piezas, int atributo)
{
    Piezas elegidas;
    std::copy_if(piezas.begin(), piezas.end(), std::back_inserter(elegidas),
                 [&](const Pieza& p) { return p.atributo == atributo; });
    return elegidas;
}

Pieza Unica(const Piezas& piezas, int atributo)
{
    const Piezas elegidas = Con(piezas, atributo);
    return elegidas.empty() ? Pieza{} : elegidas.front();
}

/// Words that a statement would take for its own.
bool EsDelLenguaje(const QString& nombre)
{
    static const QSet<QString> palabras{
        "ALL",        "AND",         "AS",    "ASC",    "BETWEEN", "BY",   "DELETE", "DESC",
        "DISTINCT",   "DISTINCTROW", "EQV",   "EXISTS", "FALSE",   "FROM", "GROUP",  "HAVING",
        "IMP",        "IN",          "INNER", "INSERT", "INTO",    "IS",   "JOIN",   "LEFT",
        "LIKE",       "MOD",         "NOT",   "NULL",   "ON",      "OR",   "ORDER",  "OUTER",
        "PARAMETERS", "PERCENT",     "RIGHT", "SELECT", "SET",     "TOP",  "TRUE",   "UNION",
        "UPDATE",     "VALUES",      "WHERE", "WITH",   "XOR"};
    return palabras.contains(nombre.toUpper());
}

bool NecesitaCorchetes(const QString& nombre)
{
    return nombre.at(0).isDigit() || EsDelLenguaje(nombre) ||
           std::any_of(nombre.begin(), nombre.end(),
                       [](QChar c) { return !c.isLetterOrNumber() && c != u'_'; });
}

/// A table may stand behind the name of its database.
QString NombreDeTabla(const QString& nombre)
{
    QStringList partes = nombre.split(u'.');
    std::transform(partes.begin(), partes.end(), partes.begin(), NombreEnTexto);
    return partes.join(u'.');
}

QString TipoDeParametro(const Pieza& parametro)
{
    switch (parametro.marca) {
    case 0:
        return QStringLiteral("Value");
    case 1:
        return QStringLiteral("Bit");
    case 2:
        return QStringLiteral("Byte");
    case 3:
        return QStringLiteral("Short");
    case 4:
        return QStringLiteral("Long");
    case 5:
        return QStringLiteral("Currency");
    case 6:
        return QStringLiteral("IEEESingle");
    case 7:
        return QStringLiteral("IEEEDouble");
    case 8:
        return QStringLiteral("DateTime");
    case 9:
        return QStringLiteral("Binary");
    case 10:
        return parametro.extra > 0 ? QStringLiteral("Text(%1)").arg(parametro.extra)
                                   : QStringLiteral("Text");
    case 11:
        return QStringLiteral("LongBinary");
    case 12:
        return QStringLiteral("LongText");
    case 15:
        return QStringLiteral("Guid");
    default:
        Danado(QStringLiteral("un parámetro tiene un tipo desconocido"));
    }
}

/// A source, or several that were joined.
struct Fuente {
    QString texto{};
    QStringList claves{};
    int clase = 0;           ///< of its outermost join; 0: none
    qsizetype condicion = 0; ///< where that join's condition starts in the text
    bool varias = false;     ///< it has more than one
};

QString PalabraDeEnlace(int clase)
{
    switch (clase) {
    case enlace::Interno:
        return QStringLiteral(" INNER JOIN ");
    case enlace::Izquierdo:
        return QStringLiteral(" LEFT JOIN ");
    case enlace::Derecho:
        return QStringLiteral(" RIGHT JOIN ");
    default:
        Danado(QStringLiteral("une sus tablas de un modo desconocido"));
    }
}

class Fuentes {
  public:
    explicit Fuentes(const Piezas& piezas)
    {
        for (const Pieza& pieza : Con(piezas, atributo::Fuente))
            fuentes_.push_back(Sencilla(pieza));
        for (const Pieza& pieza : Con(piezas, atributo::Enlace))
            Une(pieza);
    }

    QString Texto() const
    {
        QStringList textos;
        for (const Fuente& fuente : fuentes_)
            textos << fuente.texto;
        return textos.join(u", ");
    }

  private:
    static Fuente Sencilla(const Pieza& pieza)
    {
        Fuente fuente{.texto = NombreDeTabla(pieza.nombre1)};
        if (!pieza.expresion.isEmpty() && pieza.nombre1.isEmpty())
            fuente.texto = u'(' + pieza.expresion + u')';
        else if (!pieza.expresion.isEmpty())
            fuente.texto = u'[' + pieza.expresion + QStringLiteral("].") + fuente.texto;
        if (!pieza.nombre2.isEmpty())
            fuente.texto += QStringLiteral(" AS ") + NombreEnTexto(pieza.nombre2);
        fuente.claves << (pieza.nombre2.isEmpty() ? pieza.nombre1 : pieza.nombre2);
        return fuente;
    }

    std::size_t Donde(const QString& clave) const
    {
        const auto hallada =
            std::find_if(fuentes_.begin(), fuentes_.end(), [&](const Fuente& fuente) {
                return fuente.claves.contains(clave, Qt::CaseInsensitive);
            });
        if (hallada == fuentes_.end())
            Danado(QStringLiteral("une una tabla que no nombra"));
        return static_cast<std::size_t>(hallada - fuentes_.begin());
    }

    void Une(const Pieza& pieza)
    {
        const std::size_t izquierda = Donde(pieza.nombre1);
        const std::size_t derecha = Donde(pieza.nombre2);
        if (izquierda == derecha) {
            AnadeCondicion(fuentes_[izquierda], pieza);
            return;
        }
        Fuente unida = Unida(fuentes_[izquierda], fuentes_[derecha], pieza);
        fuentes_.erase(fuentes_.begin() +
                       static_cast<std::ptrdiff_t>(std::max(izquierda, derecha)));
        fuentes_.erase(fuentes_.begin() +
                       static_cast<std::ptrdiff_t>(std::min(izquierda, derecha)));
        fuentes_.push_back(std::move(unida));
    }

    static QString Lado(const Fuente& fuente)
    {
        return fuente.clase == 0 ? fuente.texto : u'(' + fuente.texto + u')';
    }

    static Fuente Unida(const Fuente& izquierda, const Fuente& derecha, const Pieza& pieza)
    {
        Fuente unida{.texto = Lado(izquierda) + PalabraDeEnlace(pieza.marca) + Lado(derecha) +
                              QStringLiteral(" ON "),
                     .claves = izquierda.claves + derecha.claves,
                     .clase = pieza.marca};
        unida.condicion = unida.texto.size();
        unida.texto += pieza.expresion;
        return unida;
    }

    /// Both sides are in one join already: the new condition goes in front of its own.
    static void AnadeCondicion(Fuente& fuente, const Pieza& pieza)
    {
        if (fuente.clase != pieza.marca)
            Danado(QStringLiteral("une dos tablas de dos modos distintos"));
        QString vieja = fuente.texto.mid(fuente.condicion);
        if (!fuente.varias)
            vieja = u'(' + vieja + u')';
        fuente.varias = true;
        fuente.texto = fuente.texto.left(fuente.condicion) + u'(' + pieza.expresion +
                       QStringLiteral(") AND ") + vieja;
    }

    std::vector<Fuente> fuentes_{};
};

QString Parametros(const Piezas& piezas)
{
    QStringList textos;
    for (const Pieza& pieza : Con(piezas, atributo::Parametro))
        textos << NombreEnTexto(pieza.nombre1) + u' ' + TipoDeParametro(pieza);
    return textos.isEmpty() ? QString() : "PARAMETERS " + textos.join(u", ") + ";\n";
}

QString Prefijos(const Pieza& opciones)
{
    QString texto;
    if ((opciones.marca & opcion::FilasDistintas) != 0)
        texto += QStringLiteral("DISTINCTROW ");
    else if ((opciones.marca & opcion::Distintas) != 0)
        texto += QStringLiteral("DISTINCT ");
    if ((opciones.marca & opcion::Primeras) != 0)
        texto += "TOP " + opciones.nombre1 + u' ';
    if ((opciones.marca & opcion::PorCiento) != 0)
        texto += QStringLiteral("PERCENT ");
    return texto;
}

bool EsValor(const Pieza& salida)
{
    return (salida.marca & SalidaEsValor) != 0;
}

QString Salidas(const Piezas& piezas, const Pieza& opciones)
{
    QStringList textos;
    for (const Pieza& pieza : Con(piezas, atributo::Salida))
        textos << (pieza.nombre1.isEmpty()
                       ? pieza.expresion
                       : pieza.expresion + " AS " + NombreEnTexto(pieza.nombre1));
    if ((opciones.marca & opcion::Todas) != 0)
        textos << QStringLiteral("*");
    return textos.join(u", ");
}

/// A clause that holds the expressions of all pieces of a kind.
QString Clausula(const Piezas& piezas, int atributo, const QString& palabra)
{
    QStringList textos;
    for (const Pieza& pieza : Con(piezas, atributo)) {
        const bool baja = atributo == atributo::Orden && pieza.nombre1 == QStringLiteral("D");
        textos << (baja ? pieza.expresion + " DESC" : pieza.expresion);
    }
    return textos.isEmpty() ? QString() : u'\n' + palabra + u' ' + textos.join(u", ");
}

/// Tables that live in another file: its path, and its kind where it isn't of Access.
QString EnOtraBase(QString fichero, const QString& clase)
{
    if (fichero.isEmpty() && clase.isEmpty())
        return {};
    const QString texto = " IN '" + fichero.replace(u'\'', QStringLiteral("''")) + u'\'';
    return clase.isEmpty() ? texto : texto + " [" + clase + u']';
}

QString TextoDeFuentes(const Piezas& piezas)
{
    const Pieza otra = Unica(piezas, atributo::OtraBase);
    return Fuentes(piezas).Texto() + EnOtraBase(otra.nombre1, otra.expresion);
}

/// What the query writes to.
QString Destino(const Pieza& clase)
{
    if (clase.nombre1.isEmpty())
        Danado(QStringLiteral("no dice en qué tabla escribe"));
    return NombreDeTabla(clase.nombre1) + EnOtraBase(clase.nombre2, clase.expresion);
}

QString Desde(const Piezas& piezas)
{
    const QString fuentes = TextoDeFuentes(piezas);
    return fuentes.isEmpty() ? QString() : "\nFROM " + fuentes;
}

QString Donde(const Piezas& piezas)
{
    return Clausula(piezas, atributo::Donde, QStringLiteral("WHERE"));
}

/// `destino` is what stands between the list and the sources.
QString CuerpoDeSeleccion(const Piezas& piezas, const QString& destino = {})
{
    const Pieza opciones = Unica(piezas, atributo::Opciones);
    return "SELECT " + Prefijos(opciones) + Salidas(piezas, opciones) + destino + Desde(piezas) +
           Donde(piezas) + Clausula(piezas, atributo::Grupo, QStringLiteral("GROUP BY")) +
           Clausula(piezas, atributo::GruposDonde, QStringLiteral("HAVING")) +
           Clausula(piezas, atributo::Orden, QStringLiteral("ORDER BY"));
}

QString Anexion(const Piezas& piezas)
{
    QStringList columnas;
    QStringList valores;
    for (const Pieza& pieza : Con(piezas, atributo::Salida)) {
        if (!pieza.nombre2.isEmpty())
            columnas << NombreEnTexto(pieza.nombre2);
        if (EsValor(pieza))
            valores << pieza.expresion;
    }
    QString texto = "INSERT INTO " + Destino(Unica(piezas, atributo::Clase));
    if (!columnas.isEmpty())
        texto += " (" + columnas.join(u", ") + u')';
    return texto + u'\n' +
           (valores.isEmpty() ? CuerpoDeSeleccion(piezas)
                              : "VALUES (" + valores.join(u", ") + u')');
}

QString Actualizacion(const Piezas& piezas)
{
    QStringList cambios;
    for (const Pieza& pieza : Con(piezas, atributo::Salida))
        cambios << NombreDeTabla(pieza.nombre2) + " = " + pieza.expresion;
    return "UPDATE " + Prefijos(Unica(piezas, atributo::Opciones)) + TextoDeFuentes(piezas) +
           "\nSET " + cambios.join(u", ") + Donde(piezas);
}

QString Borrado(const Piezas& piezas)
{
    const Pieza opciones = Unica(piezas, atributo::Opciones);
    return QStringList{"DELETE", Prefijos(opciones) + Salidas(piezas, opciones)}
               .join(u' ')
               .trimmed() +
           Desde(piezas) + Donde(piezas);
}

QString Union(const Piezas& piezas)
{
    QString primera;
    QString segunda;
    for (const Pieza& pieza : Con(piezas, atributo::Fuente)) {
        if (pieza.nombre2 == QLatin1String(PrimeraParte))
            primera = pieza.expresion.trimmed();
        else if (pieza.nombre2 == QLatin1String(SegundaParte))
            segunda = pieza.expresion.trimmed();
    }
    if (primera.isEmpty() || segunda.isEmpty())
        Danado(QStringLiteral("le falta una parte a la unión"));
    const bool distintas = (Unica(piezas, atributo::Opciones).marca & opcion::Distintas) != 0;
    return primera + (distintas ? "\nUNION " : "\nUNION ALL ") + segunda +
           Clausula(piezas, atributo::Orden, QStringLiteral("ORDER BY"));
}

/// The text as it was written, without its end.
QString TextoEntero(const Piezas& piezas)
{
    QString texto = Unica(piezas, atributo::Clase).expresion;
    const auto sobra = [](QChar c) { return c.isSpace() || c == u';' || c == u'\0'; };
    while (!texto.isEmpty() && sobra(texto.back()))
        texto.chop(1);
    return texto;
}

QString Cuerpo(const Piezas& piezas)
{
    switch (ClaseDe(piezas)) {
    case ClaseConsulta::Seleccion:
        return CuerpoDeSeleccion(piezas);
    case ClaseConsulta::CreaTabla:
        return CuerpoDeSeleccion(piezas, "\nINTO " + Destino(Unica(piezas, atributo::Clase)));
    case ClaseConsulta::Anexion:
        return Anexion(piezas);
    case ClaseConsulta::Actualizacion:
        return Actualizacion(piezas);
    case ClaseConsulta::Borrado:
        return Borrado(piezas);
    case ClaseConsulta::Definicion:
        return TextoEntero(piezas);
    case ClaseConsulta::Union:
        return Union(piezas);
    case ClaseConsulta::Cruzada:
        throw ErrorMdb(
            Motivo::NoAdmitido,
            QStringLiteral("es de tabla de referencias cruzadas, y aquí no se calculan"));
    case ClaseConsulta::PasoATraves:
        throw ErrorMdb(
            Motivo::NoAdmitido,
            QStringLiteral("es de paso a través, para un servidor, y aquí no se envían"));
    }
    Danado(QStringLiteral("es de una clase desconocida"));
}

} // namespace

QString NombreEnTexto(const QString& nombre)
{
    const bool desnudo = nombre.isEmpty() || nombre.startsWith(u'[') || !NecesitaCorchetes(nombre);
    return desnudo ? nombre : u'[' + nombre + u']';
}

QString SqlDe(const std::vector<Pieza>& piezas)
{
    const QString texto = Parametros(piezas) + Cuerpo(piezas);
    const int opciones = Unica(piezas, atributo::Opciones).marca;
    return ((opciones & opcion::AccesoDelDuenio) == 0
                ? texto
                : texto + QStringLiteral("\nWITH OWNERACCESS OPTION")) +
           u';';
}

} // namespace tolmo::data::access::mdb
