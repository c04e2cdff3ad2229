#pragma once
#include "data/access/arbol.h"
#include "data/access/lexico.h"
#include <initializer_list>

namespace tolmo::data::access {

/// Reads one statement of Access SQL into its tree.
/// \throws ErrorSql for anything that the language doesn't have, with its position
Sentencia Analiza(const QString& sql, const std::vector<Lexema>& lexemas);

/// Reads the text of a stored query; its literals are fixed.
/// \throws ErrorSql as Analiza does
Guardada AnalizaGuardada(const QString& sql);

/// Reads an expression that stands alone; its literals are fixed.
/// \throws ErrorSql as Analiza does
PExpresion AnalizaExpresion(const QString& texto, const std::vector<Lexema>& lexemas);

/// The parser: a cursor over the words, and one function for each rule. Split in sources by
/// subject: expressions, selects, orders, definitions.
class Analizador {
  public:
    Analizador(const QString& sql, const std::vector<Lexema>& lexemas)
        : sql_(sql), lexemas_(lexemas)
    {
    }

    Sentencia Todo();
    Guardada TodaGuardada();
    PExpresion TodaExpresion();

  private:
    // The cursor.
    void ExigeFin() const;
    const Lexema& Mira(std::size_t adelante = 0) const;
    const Lexema& Toma() { return lexemas_[p_++]; }
    bool Si(const char* palabra);
    bool SiSigno(const char* signo);
    void Exige(const char* palabra);
    void ExigeSigno(const char* signo);
    QString ExigeNombre(const char* que);
    [[noreturn]] void Inesperado(const char* esperado = nullptr) const;
    bool EsNombre() const;

    // Expressions, from the loosest to the tightest operator.
    PExpresion LeeExpresion() { return LeeLogica(0); }
    PExpresion LeeLogica(std::size_t nivel);
    Trecho Desde(qsizetype desde) const { return {desde, lexemas_[p_ - 1].fin}; }
    PExpresion LeeNegacion();
    PExpresion LeeComparacion();
    PExpresion LeePredicado(PExpresion izquierda, bool negado);
    PExpresion LeeBinaria(std::size_t nivel);
    PExpresion LeeSigno();
    PExpresion LeePotencia();
    PExpresion LeePrimaria();
    PExpresion LeeParentesis();
    PExpresion LeeFuncion();
    PExpresion LeeColumna();
    PExpresion LeeLiteral();
    std::vector<PExpresion> LeeLista();

    // Selects.
    std::unique_ptr<Consulta> LeeConsulta();
    Seleccion LeeSeleccion();
    void LeeParte(Consulta& consulta);
    void LeePredicadoDeSeleccion(Seleccion& seleccion);
    Elemento LeeElemento();
    std::vector<std::unique_ptr<Fuente>> LeeFuentes();
    std::unique_ptr<Fuente> LeeReunion();
    std::unique_ptr<Fuente> LeeFuenteSimple();
    QString LeeOtraBase();
    void RechazaOtraBase() const;
    QString LeeAlias();
    std::vector<Orden> LeeOrden();
    bool EmpiezaConsulta() const;

    // Orders.
    Sentencia LeeInsercion();
    Sentencia LeeModificacion();
    Sentencia LeeBorrado();
    Sentencia LeeLlamada();
    Parametro LeeParametro();

    // Definitions.
    Sentencia LeeCreacion();
    Sentencia LeeTablaNueva();
    Sentencia LeeIndiceNuevo(bool unico);
    Sentencia LeeConsultaNueva();
    Sentencia LeeCambioTabla();
    Sentencia LeeEliminacion();
    ColumnaNueva LeeColumnaNueva(TablaNueva* tabla);
    TipoDeclarado LeeTipoColumna(ColumnaNueva& columna);
    IndiceNuevo LeeRestriccion(const QString& tabla);
    std::vector<ColumnaIndice> LeeColumnasIndice();
    QString NombreDeIndice(bool primario);

    const QString& sql_;
    const std::vector<Lexema>& lexemas_;
    std::size_t p_ = 0;
    int indicesSinNombre_ = 0;
    bool accesoDelDuenio_ = false;
};

} // namespace tolmo::data::access
