#pragma once
#include <QString>
#include <vector>

namespace tolmo::data::access {

enum class Ficha { Nombre, NombreEntreMarcas, Texto, Entero, Decimal, Fecha, Signo, Fin };

/// A word of a statement.
struct Lexema {
    Ficha ficha = Ficha::Fin;
    QString texto{};        ///< without its quotes, brackets or "#"
    qsizetype posicion = 0; ///< of its first character, from 0
    qsizetype fin = 0;      ///< behind its last character
    int literal = -1;       ///< its place among the literals that travel as parameters, or -1

    /// True for the bare word, in any case; a name in brackets is never a word of the language.
    bool Es(const char* palabra) const;
    bool EsSigno(const char* signo) const;
    bool EsLiteral() const;
    /// A number with more digits than the engine's own hold.
    bool EsLargo() const;
};

/// Cuts a statement into words, the last one of kind Fin.
/// \throws ErrorSql for a text, name or date that isn't closed, or a sign that the language lacks
std::vector<Lexema> Lexemas(const QString& sql);

/// The statement without the values of its literals: two statements of one form share their
/// translation. It numbers the literals (`Lexema::literal`); those that shape the statement itself
/// (the number behind TOP, the ordinals of an ORDER BY, what may be a term of GROUP BY, the path of
/// another base) stay in the form and get no number.
QString Forma(std::vector<Lexema>& lexemas);

} // namespace tolmo::data::access
