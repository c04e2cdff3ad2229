#pragma once
#include "apoyo/programa_con_base.h"

/// A company with three users, in a real database.
struct UsuariosDePrueba : ProgramaConBase {
    UsuariosDePrueba()
    {
        Ejecuta(
            {"CREATE TABLE USUARIOS (CODIGO nvarchar(5), NOMBRE nvarchar(50), LOGIN nvarchar(10), [PASSWORD] nvarchar(10), EMAIL nvarchar(100), EMPRESA nvarchar(20), CODTARIFA nvarchar(2))",
             "CREATE UNIQUE INDEX IDX_USUARIOS ON USUARIOS (CODIGO)",
             "INSERT INTO USUARIOS VALUES ('00001','Ana Ruiz','ana','alfar7','ana@uno.example','Uno','1')",
             "INSERT INTO USUARIOS VALUES ('00003','Luis Gil','luis',NULL,'luis@dos.example',NULL,'3')",
             "INSERT INTO USUARIOS VALUES ('00007','Eva Sanz','eva','botijo','eva@tres.example','Tres',NULL)"});
    }

    QString Codigos() { return Tabla("SELECT CODIGO FROM USUARIOS ORDER BY CODIGO"); }
    QString Usuario(const QString& codigo)
    {
        return Tabla("SELECT * FROM USUARIOS WHERE CODIGO='" + codigo + "'");
    }
};
