#pragma once
#include <QString>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// A code in its full width and what it is called.
struct CodigoDescrito {
    QString codigo{};
    QString descripcion{}; ///< empty for a code that isn't there
    bool operator==(const CodigoDescrito&) const = default;
};

/// The check of a field of the copy that is left: a code that isn't empty gets zeros in front, up
/// to the declared width of its master's column, or to the longest code where none is declared.
/// \throws data::FinDePrograma
CodigoDescrito CompruebaGrupo(data::Programa& programa, const QString& texto);
CodigoDescrito CompruebaProveedor(data::Programa& programa, const QString& texto);

} // namespace tolmo::configurator
