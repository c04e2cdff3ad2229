#include "data/access/analizador.h"
#include "data/access/errores_access.h"
#include <algorithm>

namespace tolmo::data::access {

Sentencia Analiza(const QString& sql, const std::vector<Lexema>& lexemas)
{
    return Analizador(sql, lexemas).Todo();
}

Guardada AnalizaGuardada(const QString& sql)
{
    const std::vector<Lexema> lexemas = Lexemas(sql);
    return Analizador(sql, lexemas).TodaGuardada();
}

Guardada Analizador::TodaGuardada()
{
    Guardada guardada;
    if (Si("PARAMETERS")) {
        do
            guardada.parametros.push_back(LeeParametro());
        while (SiSigno(","));
        ExigeSigno(";");
    }
    guardada.sentencia = Todo();
    guardada.accesoDelDuenio = accesoDelDuenio_;
    return guardada;
}

Parametro Analizador::LeeParametro()
{
    if (!EsNombre())
        Inesperado("un parámetro");
    const PExpresion nombre = LeeColumna();
    Parametro parametro;
    parametro.nombre =
        nombre->tabla.isEmpty() ? nombre->nombre : nombre->tabla + u'!' + nombre->nombre;
    parametro.tipo = ExigeNombre("un tipo").toUpper();
    if (SiSigno("(")) {
        if (Mira().ficha != Ficha::Entero)
            Inesperado("un número");
        parametro.ancho = Toma().texto.toInt();
        ExigeSigno(")");
    }
    return parametro;
}

PExpresion AnalizaExpresion(const QString& texto, const std::vector<Lexema>& lexemas)
{
    return Analizador(texto, lexemas).TodaExpresion();
}

PExpresion Analizador::TodaExpresion()
{
    PExpresion expresion = LeeExpresion();
    ExigeFin();
    return expresion;
}

Sentencia Analizador::Todo()
{
    Sentencia sentencia;
    if (EmpiezaConsulta())
        sentencia = std::move(*LeeConsulta());
    else if (Si("INSERT"))
        sentencia = LeeInsercion();
    else if (Si("UPDATE"))
        sentencia = LeeModificacion();
    else if (Si("DELETE"))
        sentencia = LeeBorrado();
    else if (Si("CREATE"))
        sentencia = LeeCreacion();
    else if (Si("ALTER"))
        sentencia = LeeCambioTabla();
    else if (Si("DROP"))
        sentencia = LeeEliminacion();
    else
        sentencia = LeeLlamada();
    if (Mira().Es("WITH") && Mira(1).Es("OWNERACCESS")) {
        p_ += 2;
        Exige("OPTION");
        accesoDelDuenio_ = true;
    }
    while (SiSigno(";")) {
    }
    ExigeFin();
    return sentencia;
}

void Analizador::ExigeFin() const
{
    if (Mira().ficha != Ficha::Fin)
        Inesperado();
}

const Lexema& Analizador::Mira(std::size_t adelante) const
{
    return lexemas_[std::min(p_ + adelante, lexemas_.size() - 1)];
}

bool Analizador::Si(const char* palabra)
{
    if (!Mira().Es(palabra))
        return false;
    ++p_;
    return true;
}

bool Analizador::SiSigno(const char* signo)
{
    if (!Mira().EsSigno(signo))
        return false;
    ++p_;
    return true;
}

void Analizador::Exige(const char* palabra)
{
    if (!Si(palabra))
        Inesperado(palabra);
}

void Analizador::ExigeSigno(const char* signo)
{
    if (!SiSigno(signo))
        Inesperado(signo);
}

bool Analizador::EsNombre() const
{
    static const char* const reservadas[] = {
        "SELECT",  "FROM",     "WHERE",       "GROUP",  "HAVING", "ORDER",  "UNION",
        "INNER",   "JOIN",     "ON",          "AS",     "SET",    "INTO",   "VALUES",
        "AND",     "OR",       "NOT",         "IN",     "LIKE",   "IS",     "NULL",
        "TRUE",    "FALSE",    "BY",          "EXISTS", "INSERT", "DELETE", "UPDATE",
        "BETWEEN", "DISTINCT", "DISTINCTROW", "XOR",    "EQV",    "IMP",    "MOD"};
    if (Mira().ficha == Ficha::NombreEntreMarcas)
        return true;
    if (Mira().ficha != Ficha::Nombre)
        return false;
    for (const char* palabra : reservadas) {
        if (Mira().Es(palabra))
            return false;
    }
    return true;
}

QString Analizador::ExigeNombre(const char* que)
{
    if (!EsNombre())
        Inesperado(que);
    return Toma().texto;
}

void Analizador::Inesperado(const char* esperado) const
{
    const Lexema& lexema = Mira();
    QString texto = lexema.ficha == Ficha::Fin
                        ? QStringLiteral("Error de sintaxis: la sentencia acaba antes de tiempo")
                        : QStringLiteral("Error de sintaxis cerca de \"%1\"").arg(lexema.texto);
    if (esperado)
        texto += QStringLiteral(", se esperaba %1").arg(QString::fromUtf8(esperado));
    RechazaEn(lexema.posicion, texto);
}

} // namespace tolmo::data::access
