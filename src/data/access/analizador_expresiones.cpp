#include "data/access/analizador.h"
#include "data/access/errores_access.h"
#include <algorithm>
#include <array>

namespace tolmo::data::access {
namespace {

constexpr std::array OperadoresLogicos{"IMP", "EQV", "XOR", "OR", "AND"};
constexpr std::array Comparaciones{"=", "<>", "<", ">", "<=", ">="};

// From the loosest to the tightest, all below a comparison.
const std::vector<std::vector<const char*>>& OperadoresDeValor()
{
    static const std::vector<std::vector<const char*>> niveles{
        {"&"}, {"+", "-"}, {"MOD"}, {"\\"}, {"*", "/"}};
    return niveles;
}

PExpresion Nodo(Expresion::Clase clase, qsizetype posicion, const QString& nombre = {})
{
    auto nodo = std::make_unique<Expresion>();
    nodo->clase = clase;
    nodo->posicion = posicion;
    nodo->nombre = nombre;
    return nodo;
}

PExpresion NodoBinario(const Lexema& operador, PExpresion a, PExpresion b)
{
    auto nodo = Nodo(Expresion::Clase::Binario, operador.posicion, operador.texto.toUpper());
    nodo->hijos.push_back(std::move(a));
    nodo->hijos.push_back(std::move(b));
    return nodo;
}

} // namespace

PExpresion Analizador::LeeLogica(std::size_t nivel)
{
    const qsizetype desde = Mira().posicion;
    const bool ultimo = nivel == OperadoresLogicos.size();
    PExpresion izquierda = ultimo ? LeeNegacion() : LeeLogica(nivel + 1);
    while (!ultimo && Mira().Es(OperadoresLogicos[nivel])) {
        const Lexema& operador = Toma();
        izquierda = NodoBinario(operador, std::move(izquierda), LeeLogica(nivel + 1));
    }
    izquierda->trecho = Desde(desde);
    return izquierda;
}

PExpresion Analizador::LeeNegacion()
{
    if (!Mira().Es("NOT"))
        return LeeComparacion();
    auto nodo = Nodo(Expresion::Clase::Unario, Toma().posicion, QStringLiteral("NOT"));
    nodo->hijos.push_back(LeeNegacion());
    return nodo;
}

PExpresion Analizador::LeeComparacion()
{
    PExpresion izquierda = LeeBinaria(0);
    for (;;) {
        const bool negado = Mira().Es("NOT");
        const Lexema& palabra = Mira(negado ? 1 : 0);
        if (palabra.Es("LIKE") || palabra.Es("IN") || palabra.Es("BETWEEN")) {
            p_ += negado ? 1 : 0;
            izquierda = LeePredicado(std::move(izquierda), negado);
        } else if (Mira().Es("IS")) {
            izquierda = LeePredicado(std::move(izquierda), false);
        } else if (std::any_of(Comparaciones.begin(), Comparaciones.end(),
                               [this](const char* signo) { return Mira().EsSigno(signo); })) {
            const Lexema& operador = Toma();
            izquierda = NodoBinario(operador, std::move(izquierda), LeeBinaria(0));
        } else {
            return izquierda;
        }
    }
}

PExpresion Analizador::LeePredicado(PExpresion izquierda, bool negado)
{
    const Lexema& palabra = Toma();
    auto nodo = Nodo(Expresion::Clase::Como, palabra.posicion);
    nodo->negado = negado;
    nodo->hijos.push_back(std::move(izquierda));
    if (palabra.Es("LIKE")) {
        nodo->hijos.push_back(LeeBinaria(0));
    } else if (palabra.Es("BETWEEN")) {
        nodo->clase = Expresion::Clase::Entre;
        nodo->hijos.push_back(LeeBinaria(0));
        Exige("AND");
        nodo->hijos.push_back(LeeBinaria(0));
    } else if (palabra.Es("IS")) {
        nodo->clase = Expresion::Clase::EsNulo;
        nodo->negado = Si("NOT");
        Exige("NULL");
    } else {
        ExigeSigno("(");
        if (EmpiezaConsulta()) {
            nodo->clase = Expresion::Clase::EnConsulta;
            nodo->consulta = LeeConsulta();
        } else {
            nodo->clase = Expresion::Clase::EnLista;
            for (PExpresion& elemento : LeeLista())
                nodo->hijos.push_back(std::move(elemento));
        }
        ExigeSigno(")");
    }
    return nodo;
}

PExpresion Analizador::LeeBinaria(std::size_t nivel)
{
    if (nivel == OperadoresDeValor().size())
        return LeeSigno();
    PExpresion izquierda = LeeBinaria(nivel + 1);
    for (;;) {
        const auto& signos = OperadoresDeValor()[nivel];
        const bool hallado = std::any_of(signos.begin(), signos.end(), [this](const char* signo) {
            return Mira().EsSigno(signo) || Mira().Es(signo);
        });
        if (!hallado)
            return izquierda;
        const Lexema& operador = Toma();
        izquierda = NodoBinario(operador, std::move(izquierda), LeeBinaria(nivel + 1));
    }
}

PExpresion Analizador::LeeSigno()
{
    if (SiSigno("+"))
        return LeeSigno();
    if (!Mira().EsSigno("-"))
        return LeePotencia();
    auto nodo = Nodo(Expresion::Clase::Unario, Toma().posicion, QStringLiteral("-"));
    nodo->hijos.push_back(LeeSigno());
    return nodo;
}

PExpresion Analizador::LeePotencia()
{
    PExpresion izquierda = LeePrimaria();
    while (Mira().EsSigno("^")) {
        const Lexema& operador = Toma();
        PExpresion exponente = Mira().EsSigno("-") ? LeeSigno() : LeePrimaria();
        izquierda = NodoBinario(operador, std::move(izquierda), std::move(exponente));
    }
    return izquierda;
}

PExpresion Analizador::LeePrimaria()
{
    const Lexema& lexema = Mira();
    if (lexema.EsLiteral() || lexema.Es("NULL") || lexema.Es("TRUE") || lexema.Es("FALSE"))
        return LeeLiteral();
    if (lexema.EsSigno("("))
        return LeeParentesis();
    if (lexema.Es("EXISTS")) {
        auto nodo = Nodo(Expresion::Clase::Existe, Toma().posicion);
        ExigeSigno("(");
        if (!EmpiezaConsulta())
            Inesperado("SELECT");
        nodo->consulta = LeeConsulta();
        ExigeSigno(")");
        return nodo;
    }
    if (lexema.ficha == Ficha::Nombre && Mira(1).EsSigno("("))
        return LeeFuncion();
    if (EsNombre())
        return LeeColumna();
    Inesperado("una expresión");
}

PExpresion Analizador::LeeParentesis()
{
    const qsizetype posicion = Toma().posicion;
    PExpresion nodo;
    if (EmpiezaConsulta()) {
        nodo = Nodo(Expresion::Clase::Escalar, posicion);
        nodo->consulta = LeeConsulta();
    } else {
        nodo = LeeExpresion();
    }
    ExigeSigno(")");
    return nodo;
}

PExpresion Analizador::LeeFuncion()
{
    const Lexema& nombre = Toma();
    auto nodo = Nodo(Expresion::Clase::Funcion, nombre.posicion, nombre.texto.toUpper());
    ExigeSigno("(");
    if (Mira().EsSigno("*")) {
        nodo->hijos.push_back(Nodo(Expresion::Clase::Asterisco, Toma().posicion));
    } else if (!Mira().EsSigno(")")) {
        nodo->hijos = LeeLista();
    }
    ExigeSigno(")");
    return nodo;
}

PExpresion Analizador::LeeColumna()
{
    const Lexema& primero = Toma();
    auto nodo = Nodo(Expresion::Clase::Columna, primero.posicion, primero.texto);
    while (SiSigno(".") || SiSigno("!")) {
        nodo->tabla = nodo->tabla.isEmpty() ? nodo->nombre : nodo->tabla + u'!' + nodo->nombre;
        nodo->nombre = ExigeNombre("un campo");
    }
    return nodo;
}

PExpresion Analizador::LeeLiteral()
{
    const Lexema& lexema = Toma();
    auto nodo = Nodo(Expresion::Clase::Literal, lexema.posicion);
    nodo->literal.texto = lexema.texto;
    nodo->literal.indice = lexema.literal;
    nodo->literal.largo = lexema.EsLargo();
    switch (lexema.ficha) {
    case Ficha::Texto:
        nodo->literal.tipo = Tipo::Texto;
        break;
    case Ficha::Entero:
        nodo->literal.tipo = nodo->literal.largo        ? Tipo::Doble
                             : lexema.texto.size() < 10 ? Tipo::Entero
                                                        : Tipo::Grande;
        break;
    case Ficha::Decimal:
        nodo->literal.tipo = Tipo::Doble;
        break;
    case Ficha::Fecha:
        nodo->literal.tipo = Tipo::Fecha;
        break;
    default:
        nodo->literal.tipo = lexema.Es("NULL") ? Tipo::Nulo : Tipo::Condicion;
        nodo->literal.texto = lexema.Es("TRUE") ? QStringLiteral("1") : QStringLiteral("0");
    }
    return nodo;
}

std::vector<PExpresion> Analizador::LeeLista()
{
    std::vector<PExpresion> lista;
    do
        lista.push_back(LeeExpresion());
    while (SiSigno(","));
    return lista;
}

} // namespace tolmo::data::access
