#pragma once
#include "data/access/arbol.h"
#include "data/access/mdb/define_tabla.h"

namespace tolmo::data::access {

/// What a new table, column or index means for an Access file. The defaults of columns are
/// constants.
mdb::NuevaTabla TablaParaFichero(const TablaNueva& tabla);
mdb::NuevaColumna ColumnaParaFichero(const ColumnaNueva& columna);
mdb::NuevoIndice IndiceParaFichero(const IndiceNuevo& indice);

/// True for the tables that the program makes for itself while it runs.
bool EsDelPrograma(const QString& tabla);

/// The table that links families and categories: it belongs in the file, and is kept aside while
/// somebody has that open.
constexpr const char* TablaReferencias = "wFAMPRESTA";

} // namespace tolmo::data::access
