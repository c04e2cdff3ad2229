#pragma once
#include <QString>

namespace tolmo::data {

/// One column of a browse grid.
struct ColumnaGrid {
    QString DataField{}; ///< name of the column in the record set; empty for one that isn't bound
    QString Caption{};   ///< what its head shows
    QString
        FilterText{};    ///< what stands in its box of the filter bar, empty when it doesn't filter
    int ancho = 0;       ///< in pixels; 0 lets the grid choose
    bool oculta = false; ///< it is read and written, but not shown
    bool boton = false;  ///< its current cell has a button that the value is chosen with
};

} // namespace tolmo::data
