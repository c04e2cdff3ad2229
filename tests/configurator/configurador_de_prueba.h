#pragma once
#include "apoyo/programa_con_base.h"
#include <gtest/gtest.h>

/// A company with two categories, whose options have numbers for codes in one and letters in the
/// other, and one article that is configured with the first one.
struct ConfiguradorDePrueba : ProgramaConBase {
    using Cajas = std::vector<AvisosDePrueba::Caja>;

    ConfiguradorDePrueba()
    {
        programa.parametros.PS_TABLAARTIC = QStringLiteral("M_ARTIC");
        Ejecuta(
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), CODALTERNATIVO nvarchar(20), DESCRIPCION nvarchar(60), CODGRUPO nvarchar(4), GRUPO2 nvarchar(4), GRUPO3 nvarchar(4), GRUPO4 nvarchar(4), CODPROVHAB nvarchar(6))",
             "CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(60), VALORDEF nvarchar(3), OBLIGATORIO YESNO, RDESDE nvarchar(3), RHASTA nvarchar(3))",
             "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3), DESCRIPCION nvarchar(60), DescripcionComercial nvarchar(100))",
             "CREATE TABLE REL_ART_OPC (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3))",
             "CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(60), TIPO nvarchar(1))",
             "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT, SECUENCIA INT, INC_PVP DOUBLE, INC_PVP2 DOUBLE, INC_PVP3 DOUBLE, INC_PVP4 DOUBLE, INC_PVP5 DOUBLE, PESO DOUBLE, FOTO nvarchar(255))",
             "CREATE TABLE CONF_COMPONENTES (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT)",
             "CREATE TABLE CONF_OPERACIONES (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3))",
             "INSERT INTO M_ARTIC VALUES ('A1','X1','Olla','0007','0012',NULL,NULL,'000021')",
             "INSERT INTO M_ARTIC VALUES ('A2','X2','Cazo','0007',NULL,NULL,NULL,'000021')",
             "INSERT INTO M_ARTIC VALUES ('A3','X3','Tapa','0008',NULL,NULL,NULL,NULL)",
             "INSERT INTO M_OPCIONALES_CAT VALUES ('MED','Medida','001',True,NULL,NULL)",
             "INSERT INTO M_OPCIONALES_CAT VALUES ('COL',NULL,NULL,False,NULL,NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('MED','010','14 cm',NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('MED','020','18 cm',NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('COL','AZU','Azul','Azul mar')",
             "INSERT INTO PS_CONF_ART_CAT VALUES ('A1','MED','Medida','V')",
             "INSERT INTO PS_CONF_ART_VAL VALUES ('A1','MED','010',41,1,1.5,0,0,0,0,0.25,'C:\\f\\a.jpg')",
             "INSERT INTO PS_CONF_ART_VAL VALUES ('A1','MED','020',7,2,NULL,0,0,0,0,NULL,NULL)"});
    }
};
