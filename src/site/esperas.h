#pragma once
#include <chrono>

namespace tolmo::site {

/// How long the network is waited for. A dead server must not hold a scheduled run for ever; a
/// wait that runs out counts as no answer.
struct Esperas {
    std::chrono::milliseconds conexion{std::chrono::seconds{30}};     ///< to connect
    std::chrono::milliseconds silencioFtp{std::chrono::seconds{120}}; ///< without a byte on FTP
    std::chrono::milliseconds pagina{std::chrono::seconds{900}};      ///< for a GET, in all
};

} // namespace tolmo::site
