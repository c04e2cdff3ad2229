#pragma once
#include "data/ficha.h"
#include <QString>
#include <optional>
#include <span>

namespace tolmo::users {

/// The width of a code; shorter ones get zeros in front.
constexpr int AnchoCodigo = 5;

/// What a code leads to.
struct Lectura {
    QString codigo{};     ///< in its full width; for an empty one, the next code
    bool nuevo = false;   ///< no user was found
    data::Recordset fila; ///< of the user; without a meaning for a new one
};

/// Reads the user of a code. \throws FinDePrograma
Lectura LeeUsuario(data::Programa& programa, const QString& codigo);

/// Writes what the card holds: a row more when its code is new, else the row of its code, and tells
/// what it did. \returns false when the card misses something and nothing was tried
/// \throws FinDePrograma
bool GuardaUsuario(data::Programa& programa, std::span<const data::CampoFicha> ficha, bool nuevo);

/// Asks, and deletes the user of the card. \returns false when the operator doesn't want it
/// \throws FinDePrograma
bool BorraUsuario(data::Programa& programa, std::span<const data::CampoFicha> ficha);

/// The code before or behind the given one. \throws FinDePrograma
std::optional<QString> UsuarioVecino(data::Programa& programa, data::Sentido sentido,
                                     const QString& codigo);

} // namespace tolmo::users
