#pragma once
#include <QString>

namespace tolmo::data::access {

/// What an expression gives. Condicion is the engine's own truth (1 and 0, good for a WHERE); as a
/// value it becomes -1 and 0.
enum class Tipo {
    Nulo,
    Desconocido, ///< known only row by row: the column of a view without a declared type
    Texto,
    Memo,
    Byte,
    Corto,
    Entero,
    Grande,
    Simple,
    Doble,
    Moneda,
    Fecha,
    Logico,
    Condicion,
    Binario
};

bool EsTexto(Tipo tipo);
/// Numbers, and the two kinds of truth, which are numbers too.
bool EsNumero(Tipo tipo);
bool EsVerdad(Tipo tipo);

/// The ADO number that a Campo carries.
int NumeroAdo(Tipo tipo);

struct TipoDeclarado {
    Tipo tipo = Tipo::Desconocido;
    int ancho = 0;     ///< characters, or bytes; 0 when there is no limit
    int precision = 0; ///< digits of a decimal number, 0 for all else
    int escala = 0;    ///< how many of them stand behind its point
    bool guid = false; ///< a text that Access keeps as the number that it is
};

/// Reads a declared column type ("nvarchar(20)", "INT", "YESNO"); anything else gives Desconocido.
TipoDeclarado LeeTipo(const QString& declaracion);

/// The declaration that a new column gets; its words choose an affinity that leaves values alone.
QString Declaracion(TipoDeclarado tipo);

/// Result of an arithmetic operation between two numbers.
Tipo TipoAritmetico(Tipo a, Tipo b);

/// The kind that holds both: of the branches of an IIf, of the two sides of a UNION.
Tipo TipoComun(Tipo a, Tipo b);

} // namespace tolmo::data::access
