#pragma once
#include "data/programa.h"
#include "run/linea_ordenes.h"
#include "run/ventanas_de_arranque.h"

namespace tolmo::run {

/// How the load of the main window came to its end.
enum class Desenlace {
    Abierta,    ///< the main window stays, open on a company
    SinEmpresa, ///< the main window stays, without a company
    Hecho,      ///< the job of the command line is over: the main window unloads
    Inacabado,  ///< that job stayed undone, as was shown: the main window unloads
    Cancelado,  ///< the operator left a dialog: the process ends
    Fallo,      ///< an error was shown: the process ends, and no window unloads
};

/// The load, activation and unload of the main window, which is where the process starts and ends.
class Arranque {
  public:
    Arranque(data::Programa& programa, const Entorno& entorno, VentanasDeArranque& ventanas);

    /// From the process's start to the idle main window, or to the end of the job that the command
    /// line asks for. Every error of it, whatever its cause, shows one and the same box.
    /// \throws data::FinDePrograma when a statement failed and its own boxes were shown
    Desenlace Carga();

    /// Each time the main window comes to the front: the dialect of the management database, and
    /// the parameters anew. Without a company there is nothing to reload.
    /// \throws data::FinDePrograma, data::ErrorDatos, data::ErrorEjecucion as CargaParam does
    void Activa();

    /// The parameter editor on the open company, and then the parameters anew.
    /// \throws data::FinDePrograma, data::ErrorDatos, data::ErrorEjecucion as CargaParam does
    void Configura();

    /// Drops the temporary table; one that is gone, or a lost connection, is no error here.
    void Descarga();

  private:
    Desenlace CargaSinRed();
    bool BuscaBaseDatos();
    void AbreBdLocal();
    bool EligeEmpresa();
    void AbreBdEmpresa();
    void AbreConfiguracion();
    void CreaTablaTemporal();
    Desenlace HazTrabajo();

    data::Programa& programa_;
    Entorno entorno_;
    VentanasDeArranque& ventanas_;
    Credenciales credenciales_{};
    QString Tag_{}; ///< "CONFIG" when the parameter editor is to open first
};

} // namespace tolmo::run
