#pragma once
#include <QString>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// What a picture takes at most in its column.
constexpr int AnchoFoto = 255;

/// A value of a category of an article.
struct ValorDeArticulo {
    QString CodArticulo{};
    QString CodCategoria{};
    QString valor{};
};

/// Whether a chosen picture's path can be kept; tells it when it can't.
bool CabeFoto(data::Programa& programa, const QString& ruta);

/// Keeps the path or URL of a value's picture. \throws data::FinDePrograma
void GuardaFoto(data::Programa& programa, const ValorDeArticulo& de, const QString& ruta);

/// Asks, and takes a value's picture away. \returns false when the operator doesn't want it
/// \throws data::FinDePrograma
bool QuitaFoto(data::Programa& programa, const ValorDeArticulo& de);

/// The file that is opened for a value's picture: a path with a drive or from the root, or a URL,
/// is that itself;
/// anything else means the picture of that value in the pictures' folder, beside the databases.
QString RutaDeFoto(const data::Programa& programa, const ValorDeArticulo& de, const QString& Foto);

} // namespace tolmo::configurator
