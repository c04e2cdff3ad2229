#pragma once
#include <QString>
#include <optional>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// The description of an article by its code; nothing when there is no such article.
/// \throws data::FinDePrograma
std::optional<QString> DescripcionDeArticulo(data::Programa& programa, const QString& CodArticulo);

/// The same by the alternative code.
std::optional<QString> DescripcionDeAlternativo(data::Programa& programa,
                                                const QString& CodAlternativo);

/// The conditions that the article picker opens with for what was begun in a field.
QString FiltroPorArticulo(const QString& texto);
QString FiltroPorAlternativo(const QString& texto);

} // namespace tolmo::configurator
