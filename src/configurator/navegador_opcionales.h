#pragma once
#include "data/recordset.h"
#include <optional>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// The columns of the two grids of the masters' browser, by their places.
enum ColumnaCategoria { CODCATEGORIA, DESCRIPCION, VALORDEF, OBLIGATORIO, RDESDE, RHASTA };
enum ColumnaOpcion { CODCATEGORIA_OPCION, CODOPCIONAL, DESCRIPCION_OPCION, DescripcionComercial };

/// All categories.
QString SqlCategoriasMaestras();

/// The options of a category; those of none without a category, which is an empty result that can
/// be added to.
QString SqlOpcionesMaestras(const std::optional<QString>& CodCategoria);

/// The criterion that finds a category among the rows.
QString CriterioDeCategoria(const QString& CodCategoria);

/// What a new row of the options begins with.
data::Cambios OpcionNueva(const QString& CodCategoria);

/// What is current beside the text that is typed.
struct FilasActuales {
    QString CodCategoria{}; ///< first column of the row that is typed into
    QString CodOpcional{};  ///< of the current row of the options; empty without one
};

/// What becomes of a text that was typed.
struct Tecleado {
    bool aceptado = false; ///< false after the message that refused it
    QString texto{};
    data::Cambios otras{}; ///< what the row takes besides, also when the text was refused
};

/// Checks the text that was typed into a column of the categories. A new code makes its category
/// optional, even one that is refused. The default value isn't looked at: the option that is
/// current in the other grid has to be one of the category, even when the text is empty.
/// \throws data::FinDePrograma
Tecleado CompruebaColumnaCategoria(data::Programa& programa, int columna, const QString& texto,
                                   const FilasActuales& actuales);

/// The same for a column of the options. \returns false when it is refused, after the message
bool CompruebaColumnaOpcion(data::Programa& programa, int columna, const QString& texto);

/// The description of a category was changed: asks whether the articles that have it take it too.
/// \throws data::FinDePrograma
void PropagaDescripcion(data::Programa& programa, const QString& CodCategoria,
                        const QString& descripcion);

/// Asks, and takes a category away from the articles before its row goes; their values of it stay,
/// as orphans. \returns false when its row is to stay
/// \throws data::FinDePrograma
bool PreparaBajaDeCategoria(data::Programa& programa, const QString& CodCategoria);

/// The same for an option, which also goes from the relation of articles to options.
bool PreparaBajaDeOpcion(data::Programa& programa, const QString& CodCategoria,
                         const QString& CodOpcional);

/// What the browser is opened for.
enum class ModoNavegador { Categorias, Valores };

/// The code that goes back to the window below: that of the current option or category. Nothing
/// when no row is current.
std::optional<QString> CodigoDeRetorno(ModoNavegador Modo, const data::Recordset& categorias,
                                       const data::Recordset& opciones);

} // namespace tolmo::configurator
