#pragma once
#include "sync/motor.h"
#include <QString>
#include <functional>
#include <vector>

/// Stands for the engine of the synchronisation window: it keeps what the runs were started with,
/// counts the purges, and does in the middle of each what the test says.
struct CorridasDePrueba {
    std::vector<tolmo::sync::Opciones> opciones{};
    int purgas = 0;
    std::function<void(tolmo::data::Progreso&)> enMedio = [](tolmo::data::Progreso&) {};
    bool enMarcha = false;
    int vivos = 0; ///< engines that stand

    tolmo::sync::FabricaMotor Fabrica()
    {
        return [this](tolmo::data::Progreso& progreso) {
            return std::make_unique<DePrueba>(*this, progreso);
        };
    }

  private:
    class DePrueba : public tolmo::sync::Motor {
      public:
        DePrueba(CorridasDePrueba& corridas, tolmo::data::Progreso& progreso)
            : corridas_(corridas), progreso_(progreso)
        {
            ++corridas_.vivos;
        }
        ~DePrueba() override { --corridas_.vivos; }

        void SincronizaPrestashop(const tolmo::sync::Opciones& opciones) override
        {
            const Marcha marcha(corridas_.enMarcha);
            corridas_.opciones.push_back(opciones);
            progreso_.HabilitaPestanas(false);
            corridas_.enMedio(progreso_);
            progreso_.HabilitaPestanas(true);
        }
        void BorraImagenesObsoletas() override
        {
            const Marcha marcha(corridas_.enMarcha);
            ++corridas_.purgas;
            corridas_.enMedio(progreso_);
        }
        bool EnMarcha() const override { return corridas_.enMarcha; }

      private:
        struct Marcha {
            explicit Marcha(bool& b) : bandera(b) { bandera = true; }
            ~Marcha() { bandera = false; }
            bool& bandera;
        };

        CorridasDePrueba& corridas_;
        tolmo::data::Progreso& progreso_;
    };
};

/// Everything that a run was started with, in words: its letter, its range, the flags that are on
/// and, behind "con", the boxes that are ticked.
inline QString EnPalabras(const tolmo::sync::Opciones& o)
{
    constexpr const char* Letras[] = {"T", "A", "F", "S", "V"};
    QString texto =
        QString(Letras[static_cast<int>(o.proceso)]) + " [" + o.desde + "][" + o.hasta + "]";
    for (const auto& [puesta, nombre] :
         {std::pair(o.fotosFam, " FotosFam"), std::pair(o.fotosArt, " FotosArt"),
          std::pair(o.adjuntos, " Adjuntos"), std::pair(o.stock, " Stock")})
        if (puesta)
            texto += nombre;
    texto += " con";
    for (const auto& [puesta, nombre] :
         {std::pair(o.familias, " familias"), std::pair(o.eliminaEnTodo, " eliminaT"),
          std::pair(o.eliminaEnRango, " eliminaA"), std::pair(o.regeneraIndices, " indices")})
        if (puesta)
            texto += nombre;
    return texto;
}
