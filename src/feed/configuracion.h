#pragma once
#include <QString>

namespace tolmo::data {
struct Programa;
}

namespace tolmo::feed {

/// What the company's configuration file says of its feed. A key whose line is missing stays as it
/// stands here: a file without a line for the combinations generates none.
struct Configuracion {
    QString Company{};
    QString SufijoNotas{}; ///< read and kept; nothing of the feed depends on it
    QString CampoSector{}; ///< columns of the article table, here and in the next two
    QString CampoPrecio{};
    QString CampoKeywords{};
    bool UsaCodAlternativo = false;
    bool GeneraCombinaciones = false;
};

/// One file for each company, whether or not it is there: its code in front of the fixed name.
QString RutaConfiguracion(const data::Programa& programa);

/// Each line is told by its first 10 characters, and its value is all that follows, untrimmed.
/// Other lines are ignored, and a later line overrides an earlier one.
Configuracion InterpretaConfiguracion(const QString& texto);

/// Reads the company's file, a text in Windows-1252.
/// \throws data::ErrorFichero when it can't be read
Configuracion LeeConfiguracion(const data::Programa& programa);

} // namespace tolmo::feed
