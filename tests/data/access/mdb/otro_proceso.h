#pragma once
#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

/// A copy of the test in a process of its own, which runs a task and ends without the test's end.
class OtroProceso {
  public:
    /// `tarea` gets a function that tells the test to go on, and one that waits for it.
    using Senal = std::function<void()>;
    explicit OtroProceso(const std::function<void(const Senal& avisa, const Senal& espera)>& tarea)
    {
        if (::pipe(alPadre_) != 0 || ::pipe(alHijo_) != 0)
            throw std::runtime_error("no pipe");
        hijo_ = ::fork();
        if (hijo_ != 0)
            return;
        ::close(alHijo_[1]); // so that it doesn't wait for a test that was killed
        int salida = 1;
        try {
            tarea([this] { Escribe(alPadre_[1]); }, [this] { Lee(alHijo_[0]); });
            salida = 0;
        } catch (...) {
        }
        ::_exit(salida);
    }
    ~OtroProceso()
    {
        if (hijo_ > 0)
            Mata();
        for (const int descriptor : {alPadre_[0], alPadre_[1], alHijo_[0], alHijo_[1]})
            ::close(descriptor);
    }
    OtroProceso(const OtroProceso&) = delete;
    OtroProceso& operator=(const OtroProceso&) = delete;

    void EsperaSuAviso() { Lee(alPadre_[0]); }
    void Avisa() { Escribe(alHijo_[1]); }
    void Mata()
    {
        ::kill(hijo_, SIGKILL);
        Recoge();
    }
    /// \returns 0 when its task came to the end
    int Recoge()
    {
        int estado = 0;
        ::waitpid(hijo_, &estado, 0);
        hijo_ = -1;
        return estado;
    }

  private:
    static void Lee(int descriptor)
    {
        char byte = 0;
        [[maybe_unused]] const auto leidos = ::read(descriptor, &byte, 1);
    }
    static void Escribe(int descriptor)
    {
        [[maybe_unused]] const auto escritos = ::write(descriptor, "s", 1);
    }

    int alPadre_[2]{};
    int alHijo_[2]{};
    pid_t hijo_ = -1;
};
