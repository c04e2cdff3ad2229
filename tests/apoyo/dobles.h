#pragma once
#include "data/puertos.h"
#include <QStringList>
#include <deque>
#include <functional>
#include <vector>

/// Message boxes that a test answers beforehand; without a prepared answer the box gets "Aceptar".
struct AvisosDePrueba : tolmo::data::Avisos {
    struct Caja {
        QString texto{};
        int estilo = 0;
        QString titulo{};
        bool operator==(const Caja&) const = default;
    };
    std::vector<Caja> cajas{};
    std::deque<tolmo::data::Respuesta> respuestas{};

    tolmo::data::Respuesta Muestra(const QString& texto, int estilo, const QString& titulo) override
    {
        cajas.push_back({texto, estilo, titulo});
        if (respuestas.empty())
            return tolmo::data::Respuesta::Aceptar;
        const auto respuesta = respuestas.front();
        respuestas.pop_front();
        return respuesta;
    }
};

/// A clock that stands still until the test moves it.
struct RelojDePrueba : tolmo::data::Reloj {
    QDateTime ahora{QDate(2024, 3, 15), QTime(9, 5, 7)};
    int azar = 123456789;

    QDateTime Ahora() const override { return ahora; }
    int Azar() override { return azar; }
};

/// Keeps what a run shows.
struct ProgresoDePrueba : tolmo::data::Progreso {
    QStringList lineas{};
    std::vector<std::pair<int, int>> avances{};
    std::vector<bool> pestanas{};
    std::vector<bool> barra{};
    int turnos = 0;
    std::function<void()> enCadaTurno = [] {};

    void LimpiaEstado() override { lineas.clear(); }
    void LineaEstado(const QString& linea) override { lineas << linea; }
    void MuestraBarra(bool visible) override { barra.push_back(visible); }
    void Avanza(int posicion, int total) override { avances.emplace_back(posicion, total); }
    void CedeEventos() override
    {
        ++turnos;
        enCadaTurno();
    }
    void HabilitaPestanas(bool habilitadas) override { pestanas.push_back(habilitadas); }
};

/// A desktop that keeps what is given to it.
struct EscritorioDePrueba : tolmo::data::Escritorio {
    QStringList abiertos{};
    QStringList copiado{};
    void AbreDocumento(const QString& ruta) override { abiertos << ruta; }
    void CopiaAlPortapapeles(const QString& texto) override { copiado << texto; }
};
