#pragma once
#include "data/puertos.h"
#include "sync/opciones.h"
#include <functional>
#include <memory>

namespace tolmo::sync {

/// What the synchronisation window asks of its engine.
class Motor {
  public:
    virtual ~Motor() = default;
    /// One run, from start to end.
    /// \throws data::FinDePrograma after a failed statement
    /// \throws data::ErrorEjecucion when the run itself can't go on
    virtual void SincronizaPrestashop(const Opciones& opciones) = 0;
    /// The purge of the pictures that the shop no longer uses, from start to end.
    virtual void BorraImagenesObsoletas() = 0;
    /// True from the start of a run or purge to its end, also when an exception ends it.
    virtual bool EnMarcha() const = 0;
};

/// Makes the engine of a window that loads; it reports to the window itself.
/// \throws data::ErrorSql when the shop can't be reached
using FabricaMotor = std::function<std::unique_ptr<Motor>(data::Progreso&)>;

} // namespace tolmo::sync
