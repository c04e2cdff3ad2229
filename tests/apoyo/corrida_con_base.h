#pragma once
#include "apoyo/base_de_prueba.h"
#include "apoyo/corrida_con_sitio.h"

/// The same run over a real management database, empty at first, in place of the double.
struct CorridaConBase : CorridaConSitio {
    CorridaConBase()
    {
        const QString base = prueba.carpeta.Ruta(QStringLiteral("local"));
        CreaBase(base);
        programa.ConexionLocal = tolmo::data::Conexion(
            [base](const QString&, const QString&, const QString&) { return AbreBase(base); });
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
    }

    /// Runs statements of the management database's SQL.
    void Ejecuta(std::initializer_list<QString> sentencias)
    {
        for (const QString& sentencia : sentencias)
            programa.ConexionLocal.Ejecuta(sentencia);
    }
};
