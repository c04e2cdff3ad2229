#pragma once
#include "data/puertos.h"
#include <functional>
#include <memory>

namespace tolmo::feed {

/// Where the feed goes: what the two boxes of its window hold.
struct Destino {
    QString ruta{};    ///< local path of the XML file
    QString carpeta{}; ///< folder of the FTP server
};

/// What the window of the feed asks of its engine.
class Generador {
  public:
    virtual ~Generador() = default;

    /// What the boxes start with.
    virtual Destino DestinoInicial() const = 0;

    /// One generation, from the deletion of the old file to the upload, with its boxes.
    /// \returns true when the window has nothing more to do, whether or not the upload got through;
    ///          false when it stays, for the operator to try again
    /// \throws data::FinDePrograma after a failed statement
    /// \throws data::ErrorEjecucion when the generation itself can't go on
    virtual bool Genera(const Destino& destino) = 0;

    /// True from the start of a generation to its end, also when an exception ends it.
    virtual bool EnMarcha() const = 0;
};

/// Makes the engine of a window that loads; it reports to the window itself.
/// \throws data::ErrorSql when the shop can't be reached
/// \throws data::ErrorFichero when the company's configuration can't be read
using FabricaGenerador = std::function<std::unique_ptr<Generador>(data::Progreso&)>;

} // namespace tolmo::feed
