#pragma once
#include "feed/generador.h"
#include <QStringList>
#include <deque>

/// Stands for the engine of the feed's window: it keeps what the generations were started with,
/// does in the middle of each what the test says, and comes to the results that were prepared
/// (true).
struct GeneracionesDePrueba {
    QStringList destinos{}; ///< "path -> folder"
    std::deque<bool> resultados{};
    std::function<void(tolmo::data::Progreso&)> enMedio = [](tolmo::data::Progreso&) {};
    bool enMarcha = false;
    int vivos = 0; ///< engines that stand

    tolmo::feed::FabricaGenerador Fabrica()
    {
        return [this](tolmo::data::Progreso& progreso) {
            return std::make_unique<DePrueba>(*this, progreso);
        };
    }

  private:
    class DePrueba : public tolmo::feed::Generador {
      public:
        DePrueba(GeneracionesDePrueba& generaciones, tolmo::data::Progreso& progreso)
            : generaciones_(generaciones), progreso_(progreso)
        {
            ++generaciones_.vivos;
        }
        ~DePrueba() override { --generaciones_.vivos; }

        tolmo::feed::Destino DestinoInicial() const override
        {
            return {.ruta = "/casa\\HISTORICOWEB\\solostocks.xml", .carpeta = "/tienda/"};
        }
        bool Genera(const tolmo::feed::Destino& destino) override
        {
            struct Marcha {
                explicit Marcha(bool& b) : bandera(b) { bandera = true; }
                ~Marcha() { bandera = false; }
                bool& bandera;
            } const marcha(generaciones_.enMarcha);
            generaciones_.destinos << destino.ruta + " -> " + destino.carpeta;
            generaciones_.enMedio(progreso_);
            if (generaciones_.resultados.empty())
                return true;
            const bool resultado = generaciones_.resultados.front();
            generaciones_.resultados.pop_front();
            return resultado;
        }
        bool EnMarcha() const override { return generaciones_.enMarcha; }

      private:
        GeneracionesDePrueba& generaciones_;
        tolmo::data::Progreso& progreso_;
    };
};
