#pragma once
#include "data/recordset.h"
#include <QString>
#include <vector>

namespace tolmo::sync {
struct Corrida;

/// The texts of an article in one language, ready to stand between quotes.
struct TextosArticulo {
    QString lang{}; ///< id_lang of the shop
    QString url{};
    QString nombre{};
    QString claves{};
    QString titulo{};
    QString metadesc{};
    QString notas{};
    QString corta{};
};

/// The two lists of steps of an article: one that the shop lacks, and one that it has.
enum class Camino { Alta, Cambio };

/// One article of the pass: its row and the values that both paths write.
struct Articulo {
    const data::Recordset& fila;
    Camino camino = Camino::Alta;
    QString CodArticulo{};
    QString codalternativo{};
    QString id{};         ///< id_product
    QString categoria{};  ///< default category: "1" without one, empty for a Null or 0 in the shop
    QString catdefecto{}; ///< the same, "1" for an empty one
    QString marca{};      ///< id_manufacturer, or the bare word null
    QString precio{};     ///< the default tariff's column as it stands
    QString cantidad{};   ///< minimal quantity, 1 when it is empty
    QString hoy{};        ///< today as a literal of the shop's dialect
    std::vector<TextosArticulo> textos{};
};

/// Gathers the values of the article that `fila` stands on: looks up its default category and its
/// manufacturer and makes its texts ready.
/// \throws data::ErrorDatos 3265 for a column that a parameter names and that isn't there
Articulo PreparaArticulo(Corrida& corrida, const data::Recordset& fila, const QString& id,
                         Camino camino);

/// The category of an article: that of the deepest published family whose key the article's code
/// begins with, as the shop numbers it.
QString CategoriaDeArticulo(Corrida& corrida, const QString& CodArticulo);

/// The manufacturer by the setting `PSGrupoMarcas`: empty gives "null", "1" the column CODGRUPO,
/// any other number n the column GRUPOn; an empty value there gives "null".
QString MarcaDeArticulo(const data::Recordset& fila, const QString& PSGrupoMarcas);

} // namespace tolmo::sync
