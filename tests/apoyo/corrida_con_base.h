#pragma once
#include "apoyo/corrida_con_sitio.h"
#include "data/access/access.h"

/// The same run over a real embedded database, empty at first, in place of the double.
struct CorridaConBase : CorridaConSitio {
    CorridaConBase()
    {
        const QString ruta = prueba.carpeta.Ruta(QStringLiteral("local.sqlite"));
        tolmo::data::CreaBaseEmbebida(ruta);
        programa.ConexionLocal =
            tolmo::data::Conexion([ruta](const QString&, const QString&, const QString&) {
                return tolmo::data::AbreBaseEmbebida(ruta);
            });
        programa.ConexionLocal.Conecta(QStringLiteral("base"));
    }

    /// Runs statements of the management database's SQL.
    void Ejecuta(std::initializer_list<QString> sentencias)
    {
        for (const QString& sentencia : sentencias)
            programa.ConexionLocal.Ejecuta(sentencia);
    }
};
