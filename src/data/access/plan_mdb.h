#pragma once
#include "data/access/mdb/definicion.h"
#include <QByteArray>
#include <optional>
#include <vector>

struct sqlite3_index_info;

namespace tolmo::data::access {

/// How the rows of a table of an Access file are read for a part of a statement. The engine checks
/// every row again: a plan may give more rows than were asked for, never fewer.
struct PlanLectura {
    enum class Modo {
        Todo,
        Fila,      ///< one row by its place
        Indice,    ///< a stretch of one of the file's own indexes
        Dispersion ///< by the values of a column without an index, which are gathered once
    };
    Modo modo = Modo::Todo;
    int indice = 0; ///< the index, or for Dispersion the column's place in the definition
    QByteArray
        partes{}; ///< what the arguments are: '=' by column, then '>' and '<' of the next one

    /// As the engine keeps it: a number and a text.
    int Numero() const { return static_cast<int>(modo) | indice << 8; }
    static PlanLectura De(int numero, const char* partes);
};

/// Chooses the plan for the conditions that the engine offers, and tells it what it costs. The
/// engine's columns are those of the definition, in their order.
void EligePlan(const mdb::Definicion& definicion, sqlite3_index_info& info);

} // namespace tolmo::data::access
