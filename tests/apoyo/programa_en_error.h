#pragma once
#include "apoyo/base_de_prueba.h"
#include "apoyo/dobles.h"
#include "data/programa.h"
#include <cstdio>

/// The process over a database that is there already, for a test of how it ends: its
/// boxes go to the standard error, which outlives it.
struct ProgramaEnError {
    explicit ProgramaEnError(const QString& base)
        : programa(
              avisos, reloj,
              [base](const QString&, const QString&, const QString&) { return AbreBase(base); },
              QStringLiteral("/actual"))
    {
        programa.DialectoActivo = tolmo::data::Dialecto::Access;
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
    }

    struct AvisosEnError : tolmo::data::Avisos {
        tolmo::data::Respuesta Muestra(const QString& texto, int estilo, const QString&) override
        {
            std::fprintf(stderr, "caja %d: %s\n", estilo, qPrintable(texto));
            const bool pregunta = (estilo & tolmo::data::estilo::SiNo) == tolmo::data::estilo::SiNo;
            return pregunta ? tolmo::data::Respuesta::Si : tolmo::data::Respuesta::Aceptar;
        }
    };

    AvisosEnError avisos{};
    RelojDePrueba reloj{};
    tolmo::data::Programa programa;
};
