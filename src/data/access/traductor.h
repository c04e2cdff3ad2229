#pragma once
#include "data/access/arbol.h"
#include "data/access/esquema.h"
#include "data/access/patron.h"
#include "data/proveedor.h"
#include <QSet>
#include <QStringList>
#include <span>

namespace tolmo::data::access {

/// A piece of an expression in the engine's language, and what it gives.
struct Trozo {
    QString sql{};
    Tipo tipo = Tipo::Desconocido;
    int ancho = 0;
    ColumnaVista columna{}; ///< of a bare column
    bool esColumna = false;
    QString fuente{};                 ///< alias of the source of a bare column
    const Literal* literal = nullptr; ///< of a bare literal
    QString exacto{}; ///< the same with all its digits, as text where a double can't hold them
};

/// A statement ready for the engine.
struct Plan {
    QStringList sql{}; ///< run in order, in one transaction when there are several
    bool esConsulta = false;
    bool cambiaEsquema = false;
    std::shared_ptr<const TablaNueva> nueva{}; ///< that the first statement makes, for the others
    std::vector<Campo> campos{};
    std::vector<Tipo> tipos{};
    std::optional<Tope> tope{};
    std::vector<Tipo> clavesTope{}; ///< hidden columns behind the fields: what TOP's ties go by
    std::vector<std::pair<QString, QString>> apoyos{}; ///< columns whose companion index is asked
    QString tabla{};  ///< of a result that can be changed; its row number is the last column
    QString cambia{}; ///< the table whose rows the statement changes
};

/// What names can mean at a place of a statement.
struct Ambito {
    struct FuenteVista {
        QString alias{};
        QString tabla{}; ///< the base table behind it, if it is one with row numbers
        std::vector<ColumnaVista> columnas{};
    };
    const Ambito* exterior = nullptr;
    std::vector<FuenteVista> fuentes{};
    const std::vector<Elemento>* elementos = nullptr; ///< aliases that an expression may use
    bool agrupado = false;
    QSet<QString> grupos{}; ///< the terms of GROUP BY, as translated
};

/// What a select delivers.
struct Salida {
    Trozo trozo{};
    QString nombre{};
    QString fuente{}; ///< alias of the source of a bare column
    bool conAlias = false;
};

/// A translated select whose pieces can still be put together in one way or another.
struct Piezas {
    std::vector<Salida> salidas{};
    bool distinto = false;
    std::optional<Tope> tope{};
    QString resto{};                             ///< from FROM to HAVING
    std::vector<std::pair<Trozo, bool>> orden{}; ///< terms and whether they descend
    QString tabla{}; ///< the only source, when its rows can be told apart
    QString aliasTabla{};
};

/// Turns trees of Access SQL into the engine's SQL: resolves every name against the schema, infers
/// the kind of every expression and writes the conversions that the language makes by itself.
/// Split in sources by subject: expressions, functions, comparisons, selects, orders, definitions.
class Traductor {
  public:
    explicit Traductor(const Esquema& esquema) : esquema_(esquema) {}

    /// \throws ErrorSql for a name or function that nobody knows
    Plan Traduce(const Sentencia& sentencia, bool actualizable);
    /// An expression that is kept with a table: its patterns are those of stored queries.
    Trozo TraduceGuardada(const Expresion& e, const Ambito& ambito);

  private:
    // Expressions.
    Trozo Expr(const Expresion& e, const Ambito& ambito);
    Trozo ExprSuelta(const Expresion& e, const Ambito& ambito);
    bool PuedeSerGrupo(const Expresion& e, const Ambito& ambito) const;
    Trozo ExprLiteral(const Expresion& e) const;
    Trozo ExprColumna(const Expresion& e, const Ambito& ambito);
    std::vector<Trozo> ColumnasDe(const Expresion& e, const Ambito& ambito,
                                  bool& tablaHallada) const;
    const Expresion* DeAlias(const Expresion& e, const Ambito& ambito) const;
    Trozo ExprUnaria(const Expresion& e, const Ambito& ambito);
    Trozo ExprBinaria(const Expresion& e, const Ambito& ambito);
    Trozo ExprLogica(const Expresion& e, const Ambito& ambito);
    Trozo ExprSuma(const Trozo& a, const Trozo& b, bool resta);
    Trozo ExprUnion(const Expresion& e, const Ambito& ambito);
    Trozo ExprEscalar(const Expresion& e, const Ambito& ambito);
    Trozo ExprExiste(const Expresion& e, const Ambito& ambito);
    void ReuneSumandos(const Expresion& e, const Ambito& ambito, QStringList& sumandos);
    void ExigeAgrupado(const Expresion& e, const Ambito& ambito, const Trozo& trozo) const;

    // Comparisons.
    QString Filtro(const Expresion& e, const Ambito& ambito);
    QString ConApoyo(const Trozo& a, const Trozo& b, const Ambito& ambito);
    Trozo Compara(const QString& signo, const Trozo& a, const Trozo& b);
    Trozo ExprComo(const Expresion& e, const Ambito& ambito);
    Trozo ExprEntre(const Expresion& e, const Ambito& ambito);
    Trozo ExprEnLista(const Expresion& e, const Ambito& ambito);
    Trozo ExprEnConsulta(const Expresion& e, const Ambito& ambito);

    // Functions.
    Trozo ExprFuncion(const Expresion& e, const Ambito& ambito);
    Trozo ExprDeCatalogo(const Expresion& e, const Ambito& ambito);
    Trozo ExprAgregado(const Expresion& e, const Ambito& ambito);
    Trozo ExprIif(const Expresion& e, const Ambito& ambito);
    Trozo ExprNz(const Expresion& e, const Ambito& ambito);
    Trozo ExprElige(const Expresion& e, const Ambito& ambito);
    Trozo ExprSegun(const Expresion& e, const Ambito& ambito);

    // Selects.
    QString TraduceConsulta(const Consulta& consulta, const Ambito* exterior,
                            std::vector<ColumnaVista>& columnas);
    Plan TraduceConsultaPrincipal(const Consulta& consulta, bool actualizable);
    Piezas TraduceSeleccion(const Seleccion& seleccion, std::span<const Orden> orden,
                            const Ambito* exterior);
    std::vector<Piezas> TraducePartes(const Consulta& consulta, const Ambito* exterior);
    QString Fuentes(const std::vector<std::unique_ptr<Fuente>>& fuentes, Ambito& ambito);
    void RecogeFuentes(const Fuente& fuente, Ambito& ambito, QHash<const Fuente*, QString>& textos);
    QString EscribeFuente(const Fuente& fuente, const Ambito& ambito,
                          const QHash<const Fuente*, QString>& textos);
    void RecogeTabla(const Fuente& fuente, Ambito::FuenteVista& vista, QString& texto);
    std::vector<Salida> Salidas(const Seleccion& seleccion, const Ambito& ambito);
    void AnadeEstrella(const Elemento& elemento, const Ambito& ambito,
                       std::vector<Salida>& salidas);
    void ExigeOrdenEnLista(const Piezas& piezas) const;
    std::pair<Trozo, bool> TerminoOrden(const Orden& orden, const std::vector<Salida>& salidas,
                                        const Ambito& ambito);
    QString OrdenDeUnion(const std::vector<Orden>& orden, const std::vector<Salida>& salidas) const;
    QString GruposDeFila(const Seleccion& seleccion, const std::vector<Salida>& salidas,
                         const Ambito& ambito) const;

    // Orders.
    Plan TraduceInsercion(const Insercion& insercion);
    Plan TraduceModificacion(const Modificacion& modificacion);
    Plan TraduceBorrado(const Borrado& borrado);
    QString TablaDeBorrado(const Borrado& borrado, const Ambito& ambito);
    Plan TraduceLlamada(const Llamada& llamada);
    Plan TraduceSeleccionEnTabla(const Consulta& consulta);
    QString OrdenDe(const Piezas& piezas) const;
    const TablaVista& TablaDeFuente(const Ambito& ambito, const QString& alias,
                                    qsizetype posicion) const;
    const TablaVista& TablaParaCambiar(const QString& nombre, qsizetype posicion) const;

    // Definitions.
    Plan TraduceTablaNueva(const TablaNueva& tabla);
    Plan TraduceIndiceNuevo(const IndiceNuevo& indice) const;
    Plan TraduceCambioTabla(const CambioTabla& cambio);
    void ExigeSinIndices(const TablaVista& tabla, const ColumnaVista& columna,
                         qsizetype posicion) const;
    void ExigeIndice(const TablaVista& tabla, const QString& indice) const;
    Plan TraduceCambioColumna(const TablaVista& tabla, const ColumnaVista& vieja,
                              const ColumnaNueva& nueva) const;
    QString Defecto(const ColumnaNueva& columna) const;
    Plan TraduceEliminacion(const Eliminacion& eliminacion) const;
    Plan TraduceConsultaNueva(const ConsultaNueva& consulta) const;
    QString DeclaraColumna(const ColumnaNueva& columna) const;
    QString SqlIndice(const IndiceNuevo& indice) const;

    const Esquema& esquema_;
    std::vector<std::pair<QString, QString>> apoyos_;
    int guardadas_ = 0; ///< depth of stored queries: inside, literals are fixed and LIKE is theirs
    bool enAgregado_ = false;
    bool exactas_ = false;                 ///< what the next select gives is only going to be kept
    QSet<const Expresion*> aliasAbiertos_; ///< against an alias that is defined by itself
};

/// The name of the column that takes the values of one whose type changes.
constexpr const char* ColumnaProvisional = "kov_nueva";

// Small pieces that the sources share.

/// The text as the kind of a text, a number, a truth for a WHERE, a plain value.
Trozo AValor(const Trozo& trozo);
Trozo ATexto(const Trozo& trozo);
Trozo ANumero(const Trozo& trozo);
/// A number with no more digits than a text of its kind shows.
Trozo ConSusDigitos(const Trozo& numero);
QString ACondicion(const Trozo& trozo);
Trozo AlTipo(const Trozo& trozo, Tipo tipo);
/// What goes into a column: converted, checked for width and range.
QString AsignaA(const ColumnaVista& destino, const Trozo& valor);
QString ConColacion(const Trozo& trozo);
/// A text that goes into a set of single texts which the engine gathers.
QString ComoMiembro(const QString& sql);

/// True when an aggregate stands in the expression, sub-selects left out.
bool TieneAgregado(const Expresion& e);

} // namespace tolmo::data::access
