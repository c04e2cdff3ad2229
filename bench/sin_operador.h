#pragma once
#include "data/puertos.h"

/// The system's clock, without the dice.
struct SinReloj : tolmo::data::Reloj {
    QDateTime Ahora() const override { return QDateTime::currentDateTime(); }
    int Azar() override { return 0; }
};

/// A desktop that opens nothing.
struct SinEscritorio : tolmo::data::Escritorio {
    void AbreDocumento(const QString&) override {}
    void CopiaAlPortapapeles(const QString& texto) override { copiados = texto.size(); }
    qsizetype copiados = 0;
};
