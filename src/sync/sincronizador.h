#pragma once
#include "data/programa.h"
#include "site/esperas.h"
#include "sync/opciones.h"
#include <memory>

namespace tolmo::sync {

/// The engine of the synchronisation window: made when the window loads, it holds the FTP object,
/// the connection to the shop and the name of the day's log file for as long as the window lives.
/// It knows no widget.
class Sincronizador {
  public:
    /// Connects to the shop.
    /// \throws data::ErrorSql when the shop's MySQL can't be reached
    Sincronizador(data::Programa& programa, data::Progreso& progreso, const site::Esperas& esperas);
    ~Sincronizador();

    /// One run, from its first log line to the end lines. A start while one is under way is
    /// ignored.
    /// \throws data::FinDePrograma after a failed statement
    /// \throws data::ErrorEjecucion when the run itself can't go on
    void SincronizaPrestashop(const Opciones& opciones);

    /// Lets the shop's server delete the pictures that nothing uses any longer. A start while this
    /// or a run is under way is ignored.
    void BorraImagenesObsoletas();

    /// True from the start of a run or purge to its end, also when an exception ends it.
    bool EnMarcha() const;

  private:
    struct Interior;
    std::unique_ptr<Interior> interior_;
};

} // namespace tolmo::sync
