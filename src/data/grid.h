#pragma once
#include "data/adodc.h"
#include "data/columna_grid.h"
#include <span>
#include <vector>

namespace tolmo::data {

/// What the helpers know of a browse grid. It lives as long as its window, and with it the column
/// that the grid was last ordered by.
struct Grid {
    std::vector<ColumnaGrid> columnas{};
    QString columnaRecordada{}; ///< DataField of the order; empty for the first column
    bool AllowUpdate = false;
    bool AllowAddNew = false;
    bool AllowDelete = false;
    bool preguntaAlBorrar = true; ///< off where the window asks its own question

    bool Edita() const { return AllowUpdate || AllowAddNew || AllowDelete; }
    /// The column of the order: the remembered one, else the first that is shown; nullptr for a
    /// grid without bound columns.
    const ColumnaGrid* ColumnaDeOrden() const;
    QStringList DataFields() const;
    /// The first column that is shown, by which a row is found again; empty without one.
    QString ColumnaDeMarca() const;
};

/// The label beside the search box: the column that is searched, and what it is called.
struct EtiquetaGrid {
    QString Tag{};
    QString Caption{};
    bool operator==(const EtiquetaGrid&) const = default;
};

/// The label of the column that the grid is ordered by.
EtiquetaGrid EtiquetaDe(const Grid& grid);

/// Opens "Select campos from origen order by ...". `origen` is a table and, behind it, the window's
/// own condition. Without `campos` those of all columns are read. What stands in the filter bar
/// goes on filtering. \returns the label of the search column
/// \throws FinDePrograma
EtiquetaGrid LlenaGrid(const Grid& grid, Adodc& adodc, const QString& origen,
                       const QString& campos = {});

/// Opens a window's own statement in the order that the grid remembers, if it remembers one.
/// \throws FinDePrograma
EtiquetaGrid AbreGrid(const Grid& grid, Adodc& adodc, const QString& sql);

/// A click on the head of a column: it becomes the search column, and the rows come in its order.
/// A column that isn't bound changes nothing.
/// \throws FinDePrograma
EtiquetaGrid OrdenaGrid(Grid& grid, Adodc& adodc, int columna);

/// Why the text typed into a column's box of the filter bar can't filter; empty when it can.
QString RechazoDeFiltro(const ColumnaGrid& columna, std::span<const Campo> campos,
                        const QString& texto);

/// The condition of the filter bar; `campos` tell the kinds of the columns.
QString FiltroColumnas(const Grid& grid, std::span<const Campo> campos, Dialecto dialecto);

/// Opens the rows that the filter bar lets through. \throws FinDePrograma
void AplicaFiltroColumnas(const Grid& grid, Adodc& adodc);

/// Empties the filter bar and opens the RecordSource anew. \throws FinDePrograma
void QuitaFiltroGrid(Grid& grid, Adodc& adodc);

/// The rows (from 0) as lines, a tab between the values, carriage return and line feed behind each.
QString TextoDeFilas(const Grid& grid, const Recordset& filas, std::span<const int> marcas);

/// Puts the selected rows on the clipboard and tells so, or tells that there are none.
void CopiaSeleccion(const Grid& grid, const Adodc& adodc, std::span<const int> SelBookmarks,
                    Escritorio& escritorio);

} // namespace tolmo::data
