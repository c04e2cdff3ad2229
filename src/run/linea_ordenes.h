#pragma once
#include <QString>
#include <QStringList>
#include <optional>

namespace tolmo::run {

/// What the process is told from outside.
struct Entorno {
    QString lineaOrdenes{}; ///< the arguments joined by one blank; empty for a person at the screen
    QString PATH_CONNECT{}; ///< folder of the databases; empty: the current folder
    QString PATH_KOVSERVER{}; ///< data source of the SQL Server; empty: "SERVIDOR"
    bool hayPantalla = true;  ///< false where nobody can see a window
};

enum class VentanaDeModo { Sincronizar, Solostocks };

/// What a switch of the command line opens, and the Tag it is given.
struct Modo {
    VentanaDeModo ventana = VentanaDeModo::Sincronizar;
    QString tag{};
    bool operator==(const Modo&) const = default;
};

/// The mode that a command line asks for: the switches are looked for anywhere in the line, without
/// regard to case and in a fixed order, and the first that is found counts.
std::optional<Modo> ModoDeLinea(const QString& linea);

/// The company of a command line: its last six characters, whatever they are. A shorter code takes
/// in characters of the switch.
QString EmpresaDeLinea(const QString& linea);

} // namespace tolmo::run
