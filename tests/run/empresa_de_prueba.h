#pragma once
#include "apoyo/programa_con_base.h"

/// The parameters of two companies, and the languages of the first, in a real database.
struct EmpresaDePrueba : ProgramaConBase {
    EmpresaDePrueba()
    {
        Ejecuta(
            {"CREATE TABLE M_EMPRESA (CODEMPRESA nvarchar(6), DESCRIPCION nvarchar(60), PS_MODOCONFIGURADOR YESNO, USER_BD nvarchar(50), PASS_BD nvarchar(50), SERVER_BD nvarchar(100), PUERTO_BD nvarchar(6), NOMBRE_BD nvarchar(50), USER_FTP nvarchar(50), PASS_FTP nvarchar(50), SERVER_FTP nvarchar(100), PUERTO_FTP nvarchar(6), PS_PREFIJO nvarchar(10), PS_INDICES1 nvarchar(255), PS_INDICES2 nvarchar(255), CARPETA_TIENDA nvarchar(255), WWW nvarchar(255), PS_SUFIJOFOTO nvarchar(30), PS_PVPDEF SMALLINT, PS_PROVREFERENCIA nvarchar(10), PS_TABLAARTIC nvarchar(60), PS_TABLAFAM nvarchar(60), CADACTIVOWEB nvarchar(60), CAMPOFAMALT nvarchar(255), PS_PESO nvarchar(255), PS_CANTMINIMA nvarchar(255), PSALMACENES nvarchar(60), PSGRUPOMARCAS nvarchar(2), PS_VERSION SMALLINT, PS_IDIOMA SMALLINT)",
             "INSERT INTO M_EMPRESA VALUES ('000001','Norte',FALSE,'c-user_bd','c-pass_bd','c-server_bd','3307','c-nombre_bd','c-user_ftp','c-pass_ftp','c-server_ftp','2121','tst_','c-indices1','c-indices2','/c-tienda/','c-www','_grande',2,'c-prov','V_ARTIC','V_FAMILIA','S,P','c-famalt','c-peso','c-minima','01,02','7',1,3)",
             "INSERT INTO M_EMPRESA (CODEMPRESA,DESCRIPCION,USER_BD) VALUES ('000002','Sur','sur')",
             "CREATE TABLE PS_IDIOMAS (CODEMPRESA nvarchar(6), IDIOMA SMALLINT, CAMPODESCRIPCION nvarchar(20), CAMPODESCORTA nvarchar(255), CAMPONOTAS nvarchar(255), CAMPOFAMDESCRIPCION nvarchar(255), CAMPOFAMNOTAS nvarchar(255), TAG nvarchar(255), KEYWORDS nvarchar(255), KEYWORDS_FAM nvarchar(255), METATITULO_ART nvarchar(255), METADESCRIPCION_ART nvarchar(255), METATITULO_FAM nvarchar(255), METADESCRIPCION_FAM nvarchar(255))",
             "CREATE UNIQUE INDEX IDX_PS_IDIOMAS ON PS_IDIOMAS (CODEMPRESA, IDIOMA)",
             "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,CAMPODESCRIPCION) VALUES ('000001',1,'DESCRIPCION')",
             "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,CAMPODESCRIPCION) VALUES ('000001',2,'DESCRIPCION_EN')",
             "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,CAMPODESCRIPCION) VALUES ('000002',1,'NOMBRE')"});
    }

    /// A column of a company's row.
    QString De(const QString& columna, const QString& empresa = "000001")
    {
        return Tabla("SELECT " + columna + " FROM M_EMPRESA WHERE CODEMPRESA='" + empresa + "'");
    }
    QString Idiomas()
    {
        return Tabla("SELECT CODEMPRESA,IDIOMA,CAMPODESCRIPCION FROM PS_IDIOMAS ORDER BY "
                     "CODEMPRESA,IDIOMA");
    }
};
