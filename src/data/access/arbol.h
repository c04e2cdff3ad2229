#pragma once
#include "data/access/tipos.h"
#include <QString>
#include <QStringList>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

namespace tolmo::data::access {

struct Consulta;
struct Expresion;
using PExpresion = std::unique_ptr<Expresion>;

/// A piece of the statement's text, as it is written.
struct Trecho {
    qsizetype desde = 0;
    qsizetype hasta = 0; ///< behind its last character
};

/// A literal as it is written; `indice` tells the parameter that carries it, -1 one that is fixed.
struct Literal {
    Tipo tipo = Tipo::Nulo; ///< Nulo, Texto, Entero, Grande, Doble, Fecha, Condicion (TRUE, FALSE)
    QString texto{};
    int indice = -1;
    bool largo = false; ///< a number whose parameter is its text
};

/// A node of an expression. What the fields hold depends on `clase`.
struct Expresion {
    enum class Clase {
        Literal,
        Columna,    ///< tabla (may be empty), nombre
        Unario,     ///< nombre: "-", "NOT"; one child
        Binario,    ///< nombre: the sign or word; two children
        Como,       ///< LIKE: text, pattern
        Entre,      ///< BETWEEN: value, low, high
        EnLista,    ///< IN with a list: value, items
        EnConsulta, ///< IN with a sub-select: value; consulta
        Existe,     ///< consulta
        Escalar,    ///< a sub-select as a value
        EsNulo,     ///< IS NULL
        Funcion,    ///< nombre; arguments
        Asterisco   ///< the "*" of COUNT(*)
    };
    Clase clase = Clase::Literal;
    qsizetype posicion = 0;
    Trecho trecho{}; ///< of a whole expression, and of what AND and OR join in one
    QString tabla{}; ///< "Forms!F" of a name of three parts, which is none of a table
    QString nombre{};
    bool negado = false; ///< NOT LIKE, NOT IN, NOT BETWEEN, IS NOT NULL
    Literal literal{};
    std::vector<PExpresion> hijos{};
    std::unique_ptr<Consulta> consulta{};
};

/// Something to select from.
struct Fuente {
    enum class Clase { Tabla, Subconsulta, Union };
    enum class Reunion { Interna, Izquierda, Derecha };
    Clase clase = Clase::Tabla;
    qsizetype posicion = 0;
    QString base{}; ///< another file, where the table is; empty for one of this base
    QString nombre{};
    QString alias{}; ///< empty: the name itself
    std::unique_ptr<Consulta> consulta{};
    Reunion reunion = Reunion::Interna;
    std::unique_ptr<Fuente> izquierda{};
    std::unique_ptr<Fuente> derecha{};
    PExpresion condicion{};
};

/// An item of a select list: an expression, or "*" (of all sources, or of `tabla`).
struct Elemento {
    PExpresion expresion{};
    QString alias{};
    QString tabla{};
    qsizetype posicion = 0;
};

struct Orden {
    PExpresion expresion{};
    bool descendente = false;
};

struct Tope {
    double cuantos = 0;
    bool porCiento = false;
};

struct Seleccion {
    Trecho trecho{};
    bool distinto = false;     ///< DISTINCT
    bool distintaFila = false; ///< DISTINCTROW
    std::optional<Tope> tope{};
    std::vector<Elemento> elementos{};
    QString destino{}; ///< SELECT ... INTO
    std::vector<std::unique_ptr<Fuente>> fuentes{};
    PExpresion donde{};
    std::vector<PExpresion> grupos{};
    PExpresion teniendo{};
};

/// One SELECT, or several joined by UNION.
struct Consulta {
    Trecho trecho{};
    std::vector<Seleccion> partes{};
    std::vector<bool> todas{}; ///< for each part but the first: it came with UNION ALL
    std::vector<Orden> orden{};
};

struct Insercion {
    QString tabla{};
    qsizetype posicion = 0;
    QStringList columnas{};
    std::vector<PExpresion> valores{};
    std::unique_ptr<Consulta> consulta{};
};

struct Asignacion {
    PExpresion columna{};
    PExpresion valor{};
};

struct Modificacion {
    std::vector<std::unique_ptr<Fuente>> fuentes{};
    std::vector<Asignacion> asignaciones{};
    PExpresion donde{};
    qsizetype posicion = 0;
};

struct Borrado {
    std::vector<Elemento> elementos{}; ///< the table that loses rows, told by itself or its fields
    std::vector<std::unique_ptr<Fuente>> fuentes{};
    PExpresion donde{};
    qsizetype posicion = 0;
};

struct ColumnaNueva {
    QString nombre{};
    TipoDeclarado tipo{};
    bool contador = false;
    bool obligatoria = false;
    bool unica = false;
    PExpresion defecto{};
};

struct ColumnaIndice {
    QString nombre{};
    bool descendente = false;
};

struct IndiceNuevo {
    QString nombre{};
    QString tabla{};
    bool unico = false;
    bool primario = false;
    bool sinNulos = false;
    std::vector<ColumnaIndice> columnas{};
};

struct TablaNueva {
    QString nombre{};
    std::vector<ColumnaNueva> columnas{};
    std::vector<IndiceNuevo> indices{};
};

struct CambioTabla {
    enum class Clase { Anade, Quita, Cambia, AnadeIndice, QuitaIndice };
    Clase clase = Clase::Anade;
    QString tabla{};
    ColumnaNueva columna{};
    IndiceNuevo indice{};
    qsizetype posicion = 0;
};

struct Eliminacion {
    enum class Clase { Tabla, Indice, Consulta };
    Clase clase = Clase::Tabla;
    QString nombre{};
    QString tabla{}; ///< of an index
};

/// CREATE VIEW and CREATE PROCEDURE: the text behind AS, as it stands.
struct ConsultaNueva {
    QString nombre{};
    QString texto{};
};

/// A stored query run by its name.
struct Llamada {
    QString nombre{};
    qsizetype posicion = 0;
};

using Sentencia = std::variant<Consulta, Insercion, Modificacion, Borrado, TablaNueva, IndiceNuevo,
                               CambioTabla, Eliminacion, ConsultaNueva, Llamada>;

/// A parameter that a stored query declares.
struct Parametro {
    QString nombre{};
    QString tipo{}; ///< in capitals
    int ancho = 0;
};

/// A stored query.
struct Guardada {
    std::vector<Parametro> parametros{};
    Sentencia sentencia{};
    bool accesoDelDuenio = false; ///< WITH OWNERACCESS OPTION
};

} // namespace tolmo::data::access
