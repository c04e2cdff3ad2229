#pragma once
#include "data/valores.h"
#include <QString>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace tolmo::data {

/// A column of a result.
struct Campo {
    QString nombre{};  ///< as the caller asks for it; qualified ("T002.VALOR") when it comes twice
    QString tabla{};   ///< table that it stands in, empty for an expression
    QString columna{}; ///< its name in that table
    int tipo = 202;    ///< ADO type number: 2 smallint, 3 integer, 4 single, 5 double, 6 currency,
                       ///< 7 and 135 date, 11 boolean, 17 byte, 20 bigint, 131 decimal, 202 text,
                       ///< 203 long text, 204 binary
    int ancho = 0;     ///< declared width in characters, 0 when there is none
};

/// A result, fetched whole. `valores` holds row after row, `campos.size()` values each.
struct Filas {
    std::vector<Campo> campos{};
    std::vector<Valor> valores{};
    QString tabla{};             ///< the one table behind an updatable result, else empty
    std::vector<Valor> claves{}; ///< of an updatable result: what tells each row apart, for the
                                 ///< provider that delivered it
};

/// A line of the schema listing.
struct TablaEsquema {
    QString nombre{};
    QString tipo{}; ///< "TABLE", "LINK", "VIEW", "SYSTEM TABLE"
};

/// Pairs of column and new value.
using Cambios = std::vector<std::pair<QString, Valor>>;

/// An engine behind an open connection. Every operation throws ErrorSql when the engine refuses.
class Proveedor {
  public:
    virtual ~Proveedor() = default;

    /// Runs a query and fetches all of it. With `actualizable`, the result of a query on one table
    /// also carries what Actualiza and Borra need; a result that can't be changed comes with an
    /// empty `tabla`.
    virtual Filas Consulta(const QString& sql, bool actualizable) = 0;

    /// Runs a statement without a result, or a stored query by its name. \returns rows affected
    virtual long long Ejecuta(const QString& sql) = 0;

    /// Writes changed columns of one row of an updatable result.
    virtual void Actualiza(const Filas& filas, std::size_t fila, const Cambios& cambios) = 0;

    /// Adds a row to the table of an updatable result. \returns its key
    virtual Valor Inserta(const Filas& filas, const Cambios& cambios) = 0;

    /// Deletes one row of an updatable result from its table.
    virtual void Borra(const Filas& filas, std::size_t fila) = 0;

    /// Tables, linked tables and views.
    virtual std::vector<TablaEsquema> Tablas() = 0;
};

/// Opens the engine that a connection text names.
/// \throws ErrorSql when it can't be reached, or the text names no known provider
using FabricaProveedor = std::function<std::unique_ptr<Proveedor>(
    const QString& cadena, const QString& usuario, const QString& clave)>;

} // namespace tolmo::data
