#pragma once
#include "apoyo/programa_con_base.h"
#include "apoyo/proveedor_de_prueba.h"
#include "data/grid.h"

/// A table with a column of each kind, in a real database, and a grid over it.
struct ArticulosDePrueba : ProgramaConBase {
    tolmo::data::Adodc adodc{programa, programa.ConexionLocal};
    tolmo::data::Grid grid{.columnas = {{.DataField = "CODIGO", .Caption = "Código"},
                                        {.DataField = "NOMBRE", .Caption = "Nombre"},
                                        {.DataField = "PRECIO", .Caption = "Precio"},
                                        {.DataField = "ALTA", .Caption = "Alta"},
                                        {.DataField = "ACTIVO", .Caption = "Activo"}}};

    ArticulosDePrueba()
    {
        Ejecuta(
            {"CREATE TABLE ARTICULOS (CODIGO nvarchar(5) PRIMARY KEY, NOMBRE nvarchar(20) NOT NULL, PRECIO DOUBLE, ALTA DATETIME, ACTIVO YESNO, EMPRESA nvarchar(6))",
             "INSERT INTO ARTICULOS VALUES ('A1','Tornillo',10,#03/05/2024#,TRUE,'000001')",
             "INSERT INTO ARTICULOS VALUES ('A2','Llave de D''Arc',30,#03/01/2024#,FALSE,'000001')",
             "INSERT INTO ARTICULOS VALUES ('B1','Arandela',20,#03/15/2024#,TRUE,'000001')",
             "INSERT INTO ARTICULOS VALUES ('B2','Tornillo largo',NULL,NULL,FALSE,'000002')"});
    }

    /// The codes of the rows on screen.
    QString Codigos() const
    {
        QStringList codigos;
        const auto& filas = adodc.Filas();
        for (int i = 0; i < filas.RecordCount(); ++i)
            codigos << tolmo::data::Texto(filas.En(i, filas.Indice("CODIGO")));
        return codigos.join(' ');
    }
    /// The code of the current row.
    QString Actual() const
    {
        return adodc.Fila() < 0 ? QStringLiteral("-") : tolmo::data::Texto(adodc.Filas()["CODIGO"]);
    }
};
