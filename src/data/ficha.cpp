#include "data/ficha.h"
#include "data/clase_columna.h"
#include "data/plantilla.h"
#include <QStringList>
#include <algorithm>

namespace tolmo::data {
namespace {

// clang-format off
constexpr Plantilla SqlTipos(u"Select * from {tabla} WHERE FALSE");
constexpr Plantilla SqlInserta(u"INSERT INTO {tabla} ({nombres}) VALUES({valores})");
constexpr Plantilla SqlActualiza(u"UPDATE {tabla} SET {pares} WHERE {condicion}");
constexpr Plantilla SqlAnteriorTexto(u"SELECT TOP 1 {campo} FROM {tabla} WHERE {campo}<'{valor}'{extra} ORDER BY {campo} DESC");
constexpr Plantilla SqlSiguienteTexto(u"SELECT TOP 1 {campo} FROM {tabla} WHERE {campo}>'{valor}'{extra} ORDER BY {campo} ASC");
constexpr Plantilla SqlAnteriorNumero(u"SELECT TOP 1 {campo} FROM {tabla} WHERE {campo}<{valor}{extra} ORDER BY {campo} DESC");
constexpr Plantilla SqlSiguienteNumero(u"SELECT TOP 1 {campo} FROM {tabla} WHERE {campo}>{valor}{extra} ORDER BY {campo} ASC");
// clang-format on

const QString Nada = QStringLiteral("null");

// Access, SQL Server and MySQL (a small number) agree on 1 and 0 for what is true and false.
QString SqlCasilla(bool marcada, ClaseColumna clase)
{
    if (clase == ClaseColumna::Texto)
        return marcada ? QStringLiteral(" 'S' ") : QStringLiteral(" 'N' ");
    return marcada ? QStringLiteral(" 1 ") : QStringLiteral(" 0 ");
}

QString SqlTexto(const QString& texto, ClaseColumna clase)
{
    if (EstaVacio(texto))
        return Nada;
    if (clase == ClaseColumna::Numero)
        return EsNumerico(texto) ? Texto(ValorNumerico(texto)) : Nada;
    if (clase == ClaseColumna::Logico) {
        const auto logico = LeeLogico(texto);
        return logico ? SqlCasilla(*logico, clase) : Nada;
    }
    return u'\'' + texto + u'\'';
}

/// The ADO types of a table's columns; one that the table lacks counts as text, and its statement
/// fails at the engine.
class Tipos {
  public:
    Tipos(Programa& programa, Conexion& conexion, const QString& tabla)
    {
        QString sql = SqlTipos({{"tabla", tabla}});
        const Recordset sinFilas = AbreLectura(programa, sql, conexion);
        for (const Campo& campo : sinFilas.Campos())
            tipos_.insert(campo.nombre.toUpper(), campo.tipo);
    }

    int De(const QString& columna) const { return tipos_.value(columna.toUpper(), Campo{}.tipo); }

  private:
    QHash<QString, int> tipos_;
};

/// A date between quotes, which MySQL would read in another order.
QString ParaDialecto(Dialecto dialecto, const QString& literal)
{
    if (dialecto != Dialecto::MySql || literal.size() < 2 || !literal.startsWith(u'\''))
        return literal;
    const QDateTime fecha = LeeFecha(literal.mid(1, literal.size() - 2));
    return fecha.isValid() ? FechaSql(dialecto, fecha) : literal;
}

QString SqlDe(const Programa& programa, const Tipos& tipos, const CampoFicha& control)
{
    return ParaDialecto(programa.DialectoActivo, ValorSqlControl(control, tipos.De(control.Tag)));
}

/// True when the condition names the column as a key. The condition isn't parsed, so that EMPRESA
/// is also found in "CODEMPRESA='000001'": rather is a column left as it is than a key written.
bool EsClave(const QString& columna, const QString& condicion)
{
    const QString nombre = columna.toUpper();
    const QString mayusculas = condicion.toUpper();
    return mayusculas.contains(nombre + u'=') || mayusculas.contains(nombre + QStringLiteral(" ="));
}

const Plantilla& SqlVecina(Sentido sentido, bool numerico)
{
    if (sentido == Sentido::Anterior)
        return numerico ? SqlAnteriorNumero : SqlAnteriorTexto;
    return numerico ? SqlSiguienteNumero : SqlSiguienteTexto;
}

} // namespace

QString ValorSqlControl(const CampoFicha& control, int tipo)
{
    const ClaseColumna clase = ClaseDe(tipo);
    if (control.clase == CampoFicha::Clase::Casilla)
        return SqlCasilla(control.marcada, clase);
    // A list shows the entry whose position a number column holds, whatever its text.
    const bool porPosicion = control.clase == CampoFicha::Clase::Lista &&
                             clase == ClaseColumna::Numero && control.posicion >= 0;
    return porPosicion ? Texto(control.posicion) : SqlTexto(control.texto, clase);
}

void InsertaFicha(Programa& programa, Conexion& conexion, std::span<const CampoFicha> controles,
                  const QString& tabla, const QString& clave)
{
    const Tipos tipos(programa, conexion, tabla);
    std::vector<CampoFicha> todos(controles.begin(), controles.end());
    if (!clave.isEmpty())
        todos.push_back({.Tag = QStringLiteral("Clave"), .texto = clave});
    QStringList nombres;
    QStringList valores;
    for (const CampoFicha& control : todos) {
        if (control.Tag.isEmpty())
            continue;
        nombres << control.Tag;
        valores << SqlDe(programa, tipos, control);
    }
    QString sql = SqlInserta(
        {{"tabla", tabla}, {"nombres", nombres.join(u',')}, {"valores", valores.join(u',')}});
    EjecutaSql(programa, sql, conexion);
}

void ActualizaFicha(Programa& programa, Conexion& conexion, std::span<const CampoFicha> controles,
                    const QString& tabla, const QString& condicion)
{
    const Tipos tipos(programa, conexion, tabla);
    QStringList pares;
    for (const CampoFicha& control : controles)
        if (!control.Tag.isEmpty() && !EsClave(control.Tag, condicion))
            pares << control.Tag + u'=' + SqlDe(programa, tipos, control);
    QString sql =
        SqlActualiza({{"tabla", tabla}, {"pares", pares.join(u',')}, {"condicion", condicion}});
    EjecutaSql(programa, sql, conexion);
}

std::optional<Valor> FichaVecina(Programa& programa, Conexion& conexion, Sentido sentido,
                                 const Vecindad& donde, const QString& valor)
{
    // From a card without a number the way leads to those beside 0.
    const QString clave = donde.numerico ? Texto(ValorNumerico(valor)) : valor;
    const QString extra =
        donde.condicion.isEmpty() ? QStringLiteral(" ") : QStringLiteral(" AND ") + donde.condicion;
    QString sql = SqlVecina(sentido, donde.numerico)(
        {{"campo", donde.campo}, {"tabla", donde.tabla}, {"valor", clave}, {"extra", extra}});
    const Recordset vecina = AbreLectura(programa, sql, conexion);
    if (vecina.Fin())
        return std::nullopt;
    return vecina[0];
}

QString SiguienteCodigo(const QString& codigo)
{
    return RellenaCeros(Texto(ValorNumerico(codigo) + 1), static_cast<int>(codigo.size()));
}

} // namespace tolmo::data
