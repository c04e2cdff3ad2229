#pragma once
#include "apoyo/carpeta.h"
#include "apoyo/dobles.h"
#include "data/errores.h"
#include "data/programa.h"

/// The values of a process whose connections nobody has announced, in a folder of its own.
struct ProgramaDePrueba {
    AvisosDePrueba avisos{};
    RelojDePrueba reloj{};
    CarpetaDePrueba carpeta{};
    tolmo::data::Programa programa;

    explicit ProgramaDePrueba(tolmo::data::FabricaProveedor fabrica = SinProveedor())
        : programa(avisos, reloj, fabrica, carpeta.Ruta())
    {
        programa.LblEmpresa = QStringLiteral("000001 Casa de prueba");
        programa.parametros.PS_PREFIJO = QStringLiteral("ps_");
    }

    static tolmo::data::FabricaProveedor SinProveedor()
    {
        return [](const QString& cadena, const QString&,
                  const QString&) -> std::unique_ptr<tolmo::data::Proveedor> {
            throw tolmo::data::ErrorSql(tolmo::data::numero_error::Conexion,
                                        QStringLiteral("no announced: ") + cadena,
                                        QStringLiteral("prueba"));
        };
    }
};
