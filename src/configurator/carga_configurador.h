#pragma once

namespace tolmo::data {
struct Programa;
}

namespace tolmo::configurator {

/// Overwrites the articles' attributes and values with those of the management program's own
/// product configurator: by the company's stored queries where its database has them, by plain
/// sentences where it hasn't. Whatever was entered by hand is lost.
/// \throws data::FinDePrograma when a statement fails
void CargaDatosConfigurador(data::Programa& programa);

} // namespace tolmo::configurator
