#include "data/access/mdb/consulta_guardada.h"
#include "data/access/mdb/errores_mdb.h"
#include <QStringList>
#include <algorithm>
#include <tuple>

namespace tolmo::data::access::mdb {
namespace {

namespace atributo {
constexpr int Clase = 1;
constexpr int Parametro = 2;
constexpr int Opciones = 3;
constexpr int OtraBase = 4;
constexpr int Fuente = 5;
constexpr int Salida = 6;
constexpr int Enlace = 7;
constexpr int Donde = 8;
constexpr int Grupo = 9;
constexpr int GruposDonde = 10;
constexpr int Orden = 11;
} // namespace atributo

namespace opcion {
constexpr int Todas = 1;
constexpr int Distintas = 2; ///< in a union: without ALL
constexpr int AccesoDelDuenio = 4;
constexpr int FilasDistintas = 8;
constexpr int Primeras = 0x10;
constexpr int PorCiento = 0x20;
} // namespace opcion

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

bool NecesitaCorchetes(const QString& nombre)
{
    return std::any_of(nombre.begin(), nombre.end(),
                       [](QChar c) { return !c.isLetterOrNumber() && c != u'_'; });
}

QString Nombre(const QString& nombre)
{
    return NecesitaCorchetes(nombre) && !nombre.startsWith(u'[') ? u'[' + nombre + u']' : nombre;
}

/// A table may stand behind the name of its database.
QString NombreDeTabla(const QString& nombre)
{
    QStringList partes = nombre.split(u'.');
    std::transform(partes.begin(), partes.end(), partes.begin(), Nombre);
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
    case 15:
        return QStringLiteral("Guid");
    default:
        Danado(QStringLiteral("Un parámetro de una consulta tiene un tipo desconocido"));
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
    case 1:
        return QStringLiteral(" INNER JOIN ");
    case 2:
        return QStringLiteral(" LEFT JOIN ");
    case 3:
        return QStringLiteral(" RIGHT JOIN ");
    default:
        Danado(QStringLiteral("Una consulta une sus tablas de un modo desconocido"));
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
            fuente.texto = Nombre(pieza.expresion) + u'.' + fuente.texto;
        if (!pieza.nombre2.isEmpty())
            fuente.texto += QStringLiteral(" AS ") + Nombre(pieza.nombre2);
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
            Danado(QStringLiteral("Una consulta une una tabla que no nombra"));
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
            Danado(QStringLiteral("Una consulta une dos tablas de dos modos distintos"));
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
        textos << Nombre(pieza.nombre1) + u' ' + TipoDeParametro(pieza);
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

QString Salidas(const Piezas& piezas, const Pieza& opciones)
{
    QStringList textos;
    for (const Pieza& pieza : Con(piezas, atributo::Salida))
        textos << (pieza.nombre1.isEmpty() ? pieza.expresion
                                           : pieza.expresion + " AS " + Nombre(pieza.nombre1));
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

QString SqlSeleccion(const Piezas& piezas)
{
    if (!Con(piezas, atributo::OtraBase).empty())
        throw ErrorMdb(Motivo::NoAdmitido,
                       QStringLiteral("La consulta lee otra base de datos y no se admite"));
    const Pieza opciones = Unica(piezas, atributo::Opciones);
    QString texto = Parametros(piezas) + "SELECT " + Prefijos(opciones) + Salidas(piezas, opciones);
    const QString fuentes = Fuentes(piezas).Texto();
    if (!fuentes.isEmpty())
        texto += "\nFROM " + fuentes;
    texto += Clausula(piezas, atributo::Donde, QStringLiteral("WHERE")) +
             Clausula(piezas, atributo::Grupo, QStringLiteral("GROUP BY")) +
             Clausula(piezas, atributo::GruposDonde, QStringLiteral("HAVING")) +
             Clausula(piezas, atributo::Orden, QStringLiteral("ORDER BY"));
    if ((opciones.marca & opcion::AccesoDelDuenio) != 0)
        texto += QStringLiteral("\nWITH OWNERACCESS OPTION");
    return texto + u';';
}

QString SqlUnion(const Piezas& piezas)
{
    QString partes[2];
    for (const Pieza& pieza : Con(piezas, atributo::Fuente)) {
        if (pieza.nombre2 == QStringLiteral("X7YZ_____1"))
            partes[0] = pieza.expresion.trimmed();
        else if (pieza.nombre2 == QStringLiteral("X7YZ_____2"))
            partes[1] = pieza.expresion.trimmed();
    }
    if (partes[0].isEmpty() || partes[1].isEmpty())
        Danado(QStringLiteral("A una consulta de unión le falta una parte"));
    const bool distintas = (Unica(piezas, atributo::Opciones).marca & opcion::Distintas) != 0;
    return Parametros(piezas) + partes[0] + (distintas ? "\nUNION " : "\nUNION ALL ") + partes[1] +
           Clausula(piezas, atributo::Orden, QStringLiteral("ORDER BY")) + u';';
}

} // namespace

std::vector<Pieza> LeeConsulta(const Tabla& consultas, qint32 id)
{
    const Columna &objeto = consultas["ObjectId"], &clase = consultas["Attribute"],
                  &marca = consultas["Flag"], &extra = consultas["LvExtra"],
                  &nombre1 = consultas["Name1"], &nombre2 = consultas["Name2"],
                  &expresion = consultas["Expression"], &orden = consultas["Order"];
    std::vector<Pieza> piezas;
    for (Cursor cursor(consultas); cursor.Siguiente();) {
        const Fila& fila = cursor.fila();
        if (fila.Lee(objeto) != Dato(qint64{id}))
            continue;
        piezas.push_back({.atributo = static_cast<int>(Como<qint64>(fila.Lee(clase))),
                          .marca = static_cast<int>(Como<qint64>(fila.Lee(marca))),
                          .extra = static_cast<int>(Como<qint64>(fila.Lee(extra))),
                          .nombre1 = Como<QString>(fila.Lee(nombre1)),
                          .nombre2 = Como<QString>(fila.Lee(nombre2)),
                          .expresion = Como<QString>(fila.Lee(expresion)),
                          .orden = Como<QByteArray>(fila.Lee(orden))});
    }
    std::stable_sort(piezas.begin(), piezas.end(), [](const Pieza& a, const Pieza& b) {
        return std::tie(a.atributo, a.orden) < std::tie(b.atributo, b.orden);
    });
    return piezas;
}

ClaseConsulta ClaseDe(const std::vector<Pieza>& piezas)
{
    const int marca = Unica(piezas, atributo::Clase).marca;
    return marca == 0 ? ClaseConsulta::Seleccion : static_cast<ClaseConsulta>(marca);
}

QString SqlDe(const std::vector<Pieza>& piezas)
{
    switch (ClaseDe(piezas)) {
    case ClaseConsulta::Seleccion:
        return SqlSeleccion(piezas);
    case ClaseConsulta::Union:
        return SqlUnion(piezas);
    default:
        throw ErrorMdb(Motivo::NoAdmitido,
                       QStringLiteral("La consulta no es de selección y no se puede leer"));
    }
}

} // namespace tolmo::data::access::mdb
