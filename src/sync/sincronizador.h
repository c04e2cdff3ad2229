#pragma once
#include "data/programa.h"
#include "site/esperas.h"
#include "sync/motor.h"
#include <memory>

namespace tolmo::sync {

/// The engine of the synchronisation window: made when the window loads, it holds the FTP object,
/// the connection to the shop and the name of the day's log file for as long as the window lives.
/// It knows no widget.
class Sincronizador : public Motor {
  public:
    /// Connects to the shop.
    /// \throws data::ErrorSql when the shop's MySQL can't be reached
    Sincronizador(data::Programa& programa, data::Progreso& progreso, const site::Esperas& esperas);
    ~Sincronizador() override;

    /// A start while a run or a purge is under way is ignored.
    void SincronizaPrestashop(const Opciones& opciones) override;
    void BorraImagenesObsoletas() override;
    bool EnMarcha() const override;

  private:
    struct Interior;
    std::unique_ptr<Interior> interior_;
};

} // namespace tolmo::sync
