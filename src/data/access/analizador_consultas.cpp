#include "data/access/analizador.h"
#include "data/access/errores_access.h"

namespace tolmo::data::access {
namespace {

void PonBase(Fuente& fuente, const QString& base)
{
    if (fuente.clase == Fuente::Clase::Union) {
        PonBase(*fuente.izquierda, base);
        PonBase(*fuente.derecha, base);
    } else if (fuente.base.isEmpty()) {
        fuente.base = base;
    }
}

} // namespace

bool Analizador::EmpiezaConsulta() const
{
    std::size_t adelante = 0;
    while (Mira(adelante).EsSigno("("))
        ++adelante;
    return Mira(adelante).Es("SELECT");
}

std::unique_ptr<Consulta> Analizador::LeeConsulta()
{
    auto consulta = std::make_unique<Consulta>();
    const qsizetype desde = Mira().posicion;
    LeeParte(*consulta);
    while (Si("UNION")) {
        consulta->todas.push_back(Si("ALL"));
        LeeParte(*consulta);
    }
    if (Mira().Es("ORDER"))
        consulta->orden = LeeOrden();
    consulta->trecho = Desde(desde);
    return consulta;
}

void Analizador::LeeParte(Consulta& consulta)
{
    const qsizetype desde = Mira().posicion;
    if (!SiSigno("(")) {
        consulta.partes.push_back(LeeSeleccion());
        consulta.partes.back().trecho = Desde(desde);
        return;
    }
    if (!EmpiezaConsulta())
        Inesperado("SELECT");
    auto dentro = LeeConsulta();
    ExigeSigno(")");
    if (dentro->partes.size() > 1 || !dentro->orden.empty())
        Inesperado("una parte de UNION sin orden propio");
    consulta.partes.push_back(std::move(dentro->partes.front()));
    consulta.partes.back().trecho = Desde(desde);
}

Seleccion Analizador::LeeSeleccion()
{
    Exige("SELECT");
    Seleccion seleccion;
    LeePredicadoDeSeleccion(seleccion);
    do
        seleccion.elementos.push_back(LeeElemento());
    while (SiSigno(","));
    if (Si("INTO")) {
        seleccion.destino = ExigeNombre("el nombre de la tabla nueva");
        RechazaOtraBase();
    }
    if (Si("FROM"))
        seleccion.fuentes = LeeFuentes();
    if (Si("WHERE"))
        seleccion.donde = LeeExpresion();
    if (Si("GROUP")) {
        Exige("BY");
        seleccion.grupos = LeeLista();
    }
    if (Si("HAVING"))
        seleccion.teniendo = LeeExpresion();
    return seleccion;
}

void Analizador::LeePredicadoDeSeleccion(Seleccion& seleccion)
{
    if (Si("DISTINCT"))
        seleccion.distinto = true;
    else if (Si("DISTINCTROW"))
        seleccion.distintaFila = true;
    else
        Si("ALL");
    if (!Mira().Es("TOP") || Mira(1).ficha != Ficha::Entero)
        return;
    ++p_;
    seleccion.tope = Tope{Toma().texto.toDouble(), false};
    seleccion.tope->porCiento = Si("PERCENT");
}

Elemento Analizador::LeeElemento()
{
    Elemento elemento;
    elemento.posicion = Mira().posicion;
    if (SiSigno("*"))
        return elemento;
    const bool punto = Mira(1).EsSigno(".") || Mira(1).EsSigno("!");
    if (EsNombre() && punto && Mira(2).EsSigno("*")) {
        elemento.tabla = Toma().texto;
        p_ += 2;
        return elemento;
    }
    elemento.expresion = LeeExpresion();
    if (Si("AS"))
        elemento.alias = ExigeNombre("un nombre");
    return elemento;
}

std::vector<std::unique_ptr<Fuente>> Analizador::LeeFuentes()
{
    std::vector<std::unique_ptr<Fuente>> fuentes;
    do
        fuentes.push_back(LeeReunion());
    while (SiSigno(","));
    if (Mira().Es("IN")) {
        const QString base = LeeOtraBase();
        for (const auto& fuente : fuentes)
            PonBase(*fuente, base);
    }
    return fuentes;
}

// IN 'C:\BD\OTRA.MDB', or IN '' [;DATABASE=C:\BD\OTRA.MDB].
QString Analizador::LeeOtraBase()
{
    Exige("IN");
    if (Mira().ficha != Ficha::Texto)
        Inesperado("el nombre de una base de datos");
    const QString fichero = Toma().texto;
    return Mira().ficha == Ficha::NombreEntreMarcas ? Toma().texto : fichero;
}

void Analizador::RechazaOtraBase() const
{
    if (!Mira().Es("IN"))
        return;
    RechazaEn(Mira().posicion, QStringLiteral("En una tabla de otra base no se escribe"));
}

std::unique_ptr<Fuente> Analizador::LeeReunion()
{
    auto izquierda = LeeFuenteSimple();
    for (;;) {
        auto reunion = Fuente::Reunion::Interna;
        const qsizetype posicion = Mira().posicion;
        if (Mira().Es("LEFT") || Mira().Es("RIGHT")) {
            reunion = Toma().Es("LEFT") ? Fuente::Reunion::Izquierda : Fuente::Reunion::Derecha;
            Si("OUTER");
        } else if (!Si("INNER")) {
            return izquierda;
        }
        Exige("JOIN");
        auto nodo = std::make_unique<Fuente>();
        nodo->clase = Fuente::Clase::Union;
        nodo->posicion = posicion;
        nodo->reunion = reunion;
        nodo->izquierda = std::move(izquierda);
        nodo->derecha = LeeFuenteSimple();
        Exige("ON");
        nodo->condicion = LeeExpresion();
        izquierda = std::move(nodo);
    }
}

std::unique_ptr<Fuente> Analizador::LeeFuenteSimple()
{
    auto fuente = std::make_unique<Fuente>();
    fuente->posicion = Mira().posicion;
    if (EmpiezaConsulta() && Mira().EsSigno("(")) {
        ++p_;
        fuente->clase = Fuente::Clase::Subconsulta;
        fuente->consulta = LeeConsulta();
        ExigeSigno(")");
        fuente->alias = LeeAlias();
        return fuente;
    }
    if (SiSigno("(")) {
        fuente = LeeReunion();
        ExigeSigno(")");
        return fuente;
    }
    const bool entreMarcas = Mira().ficha == Ficha::NombreEntreMarcas;
    fuente->nombre = ExigeNombre("una tabla");
    if (entreMarcas && SiSigno("."))
        fuente->base = std::exchange(fuente->nombre, ExigeNombre("una tabla"));
    fuente->alias = LeeAlias();
    return fuente;
}

QString Analizador::LeeAlias()
{
    if (Si("AS"))
        return ExigeNombre("un nombre");
    for (const char* palabra : {"LEFT", "RIGHT", "OUTER", "WITH"}) {
        if (Mira().Es(palabra))
            return {};
    }
    return EsNombre() ? Toma().texto : QString();
}

std::vector<Orden> Analizador::LeeOrden()
{
    Exige("ORDER");
    Exige("BY");
    std::vector<Orden> orden;
    do {
        Orden termino;
        termino.expresion = LeeExpresion();
        termino.descendente = Si("DESC");
        if (!termino.descendente)
            Si("ASC");
        orden.push_back(std::move(termino));
    } while (SiSigno(","));
    return orden;
}

} // namespace tolmo::data::access
