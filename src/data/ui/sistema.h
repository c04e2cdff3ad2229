#pragma once
#include "data/puertos.h"

namespace tolmo::data::ui {

/// The system's clock.
class RelojSistema : public Reloj {
  public:
    QDateTime Ahora() const override;
    int Azar() override;
};

/// The desktop of the operator.
class EscritorioSistema : public Escritorio {
  public:
    void AbreDocumento(const QString& ruta) override;
    void CopiaAlPortapapeles(const QString& texto) override;
};

/// Writes a line, at once, to the standard output or the standard error.
void EscribeEnSalida(const QString& linea);
void EscribeEnError(const QString& linea);

} // namespace tolmo::data::ui
