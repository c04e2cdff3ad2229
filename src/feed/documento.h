#pragma once
#include "batch/escritores.h"
#include "feed/configuracion.h"

namespace tolmo::feed {

/// The feed's file while it is written, and what it is written with.
struct Documento {
    data::Programa& programa;
    const Configuracion& configuracion;
    batch::Escritores& escritores;
    QString ruta{};

    /// Adds a line, untranslated: it is no SQL. A failure to write is silent.
    void Linea(const QString& linea) { escritores.EscribeFichero(ruta, batch::Modo::TC, linea); }
};

/// Writes the whole document behind whatever the file holds: its head, the products of every web
/// article and its foot. The dialect of the management database must be the active one.
/// \throws data::FinDePrograma after a failed statement
/// \throws data::ErrorEjecucion as GeneraProducto does
void EscribeDocumento(Documento& documento, data::Progreso& progreso);

} // namespace tolmo::feed
