#pragma once
#include "data/access/arbol.h"
#include "data/access/base.h"
#include "data/access/mdb/dato.h"
#include "data/access/mdb/exigencias.h"
#include "data/access/mdb/tabla.h"
#include <optional>
#include <span>
#include <vector>

namespace tolmo::data::access {

class Esquema;

/// The rules that Access keeps for the values of a table: those of its columns, and that of whole
/// rows. A rule is kept when it is true: neither a falsehood nor a Null will do.
class ReglasMdb {
  public:
    ReglasMdb(sqlite3* base, const Esquema& esquema, const mdb::Tabla& tabla,
              const mdb::ExigenciasDeTabla& exigencias);

    bool Hay() const { return !reglas_.empty(); }
    /// Whether a rule asks for the column, by its place in the definition.
    bool Usa(std::size_t columna) const { return usadas_[columna]; }

    /// Before a row takes these values, of which `cambia` tells those that are set. The columns
    /// that no rule uses don't matter.
    /// \throws ErrorSql with the rule's own text; also when a rule isn't understood
    void Comprueba(std::span<const mdb::Dato> fila, const std::vector<bool>& cambia);

  private:
    struct Regla {
        QString campo{}; ///< "table.column"; the table for a rule of rows
        mdb::ReglaDeValores texto{};
        std::vector<std::size_t> columnas{};
        std::optional<Preparada> condicion{}; ///< nothing where the rule isn't understood
    };
    void Anade(sqlite3* base, const Esquema& esquema, const mdb::ReglaDeValores& texto,
               const mdb::Columna* columna);
    void Prepara(sqlite3* base, const Esquema& esquema, const Expresion& expresion, Regla& regla);
    [[noreturn]] static void Incumplida(const Regla& regla);

    mdb::Tabla tabla_;
    std::vector<Regla> reglas_{};
    std::vector<bool> usadas_;
};

} // namespace tolmo::data::access
