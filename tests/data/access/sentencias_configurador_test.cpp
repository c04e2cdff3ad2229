// The statements of the configurator, its windows, the pickers and the feed, as the program writes
// them, on rows where another reading of the statement gives another result.
#include "base_prueba.h"

using namespace tolmo::data;

namespace {

class SentenciasConfigurador : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasConfigurador()
    {
        Haz({"CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3) PRIMARY KEY, DESCRIPCION nvarchar(50), VALORDEF nvarchar(3), OBLIGATORIO YESNO, RDESDE nvarchar(3), RHASTA nvarchar(3))",
             "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION,OBLIGATORIO) VALUES ('TAL','Talla',TRUE)",
             "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION,OBLIGATORIO) VALUES ('col','Color',FALSE)",
             "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('MAT','Material')",
             "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3), DESCRIPCION nvarchar(50), DESCRIPCIONCOMERCIAL nvarchar(80), CONSTRAINT PK PRIMARY KEY (CODCATEGORIA, CODOPCIONAL))",
             "INSERT INTO M_OPCIONALES VALUES ('COL','002','Azul','Azul mar')",
             "INSERT INTO M_OPCIONALES VALUES ('COL','001','Rojo',NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('TAL','001','Pequeña',NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('TAL','010','Grande',NULL)",
             "INSERT INTO M_OPCIONALES VALUES ('TAL','005','mediana',NULL)",
             "CREATE TABLE PS_CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(50), TIPO nvarchar(1))",
             "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT, SECUENCIA INT, INC_PVP CURRENCY, INC_PVP2 CURRENCY, INC_PVP3 CURRENCY, INC_PVP4 CURRENCY, INC_PVP5 CURRENCY, PESO DOUBLE, FOTO nvarchar(255))"});
    }

    void Valor(const char* articulo, const char* categoria, const char* valor, int id,
               int secuencia, double incremento, double incremento3, double peso)
    {
        Haz(QStringLiteral(
                "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('%1','%2','%3',%4,%5,%6,0,%7,0,0,%8)")
                .arg(articulo, categoria, valor)
                .arg(id)
                .arg(secuencia)
                .arg(incremento)
                .arg(incremento3)
                .arg(peso));
    }

    void Camiseta()
    {
        Valor("X1", "COL", "002", 5, 1, 1.5, 4, 0.25);
        Valor("X1", "COL", "001", 6, 2, 2, 8, 0);
        Valor("X1", "TAL", "010", 7, 2, 0.25, 16, 0.5);
        Valor("X1", "TAL", "005", 8, 2, 0, 32, 1);
        Valor("X1", "TAL", "001", 9, 1, 3, 64, 2);
        Valor("X2", "TAL", "001", 9, 1, 100, 100, 100);
    }
};

TEST_F(SentenciasConfigurador, UnaCategoriaSeNumeraPorSuCodigoSinMirarMayusculas)
{
    EXPECT_EQ(
        Tabla(
            "SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES_CAT.CODCATEGORIA) AS NCAT FROM M_OPCIONALES_CAT ORDER BY CODCATEGORIA"),
        "col|Color|NULL|False|NULL|NULL|1 MAT|Material|NULL|False|NULL|NULL|2 TAL|Talla|NULL|True|NULL|NULL|3");
}

TEST_F(SentenciasConfigurador, UnaOpcionSeNumeraDentroDeSuCategoriaYVaPorDescripcion)
{
    EXPECT_EQ(
        Tabla(
            "SELECT *,(SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<=M_OPCIONALES.CODCATEGORIA) AS NCAT ,(SELECT COUNT(*) FROM M_OPCIONALES AS OPC2 WHERE OPC2.CODCATEGORIA=M_OPCIONALES.CODCATEGORIA AND OPC2.CODOPCIONAL<=M_OPCIONALES.CODOPCIONAL) AS NOPC  FROM M_OPCIONALES ORDER BY DESCRIPCION"),
        "COL|002|Azul|Azul mar|1|2 TAL|010|Grande|NULL|3|3 TAL|005|mediana|NULL|3|2 TAL|001|Pequeña|NULL|3|1 COL|001|Rojo|NULL|1|1");
}

TEST_F(SentenciasConfigurador, ElRangoDeUnValorEsElDeLosMaestros)
{
    const QString sql =
        "SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<='%1') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='%1' AND CODOPCIONAL<='%2'";

    EXPECT_EQ(Tabla(QString(sql).replace("%1", "TAL").replace("%2", "005")), "3|2");
    EXPECT_EQ(Tabla(QString(sql).replace("%1", "COL").replace("%2", "002")), "1|2");
    // An option that the masters lack gets the rank of the next lower code.
    EXPECT_EQ(Tabla(QString(sql).replace("%1", "TAL").replace("%2", "007")), "3|2");
    EXPECT_EQ(Tabla(QString(sql).replace("%1", "ZZZ").replace("%2", "001")), "3|0");
    EXPECT_EQ(Tabla(QString(sql).replace("%1", "").replace("%2", "")), "0|0");
}

TEST_F(SentenciasConfigurador, LasCategoriasDeUnArticuloSalenUnaVezYPorCodigo)
{
    Camiseta();
    Valor("X1", "col", "003", 10, 3, 0, 0, 0);

    EXPECT_EQ(
        Tabla(
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE  CODARTICULO='X1' ORDER BY CODCATEGORIA"),
        "COL TAL");
    EXPECT_EQ(
        Tabla(
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='x2' ORDER BY CODCATEGORIA"),
        "TAL");
    EXPECT_EQ(
        Tabla(
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='X9' ORDER BY CODCATEGORIA"),
        "");
}

TEST_F(SentenciasConfigurador, UnaSolaCategoriaDaSusValoresSinPrefijo)
{
    Camiseta();
    const QString sql =
        "SELECT 1 AS CUANTASCAT,0 + T001.INC_PVP AS INC_PVP_COMBINA,0 + T001.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='TAL' AND CODARTICULO='X1' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 ORDER BY SECUENCIA,CODCATEGORIA,VALOR";

    EXPECT_EQ(Tabla(sql), "1|3|2|X1|TAL|001|9|1|3|0|64|0|0|2|NULL "
                          "1|0|1|X1|TAL|005|8|2|0|0|32|0|0|1|NULL "
                          "1|0.25|0.5|X1|TAL|010|7|2|0.25|0|16|0|0|0.5|NULL");
    EXPECT_EQ(Nombres(sql),
              (QStringList{"CUANTASCAT", "INC_PVP_COMBINA", "PESO_COMBINA", "CODARTICULO",
                           "CODCATEGORIA", "VALOR", "ID", "SECUENCIA", "INC_PVP", "INC_PVP2",
                           "INC_PVP3", "INC_PVP4", "INC_PVP5", "PESO", "FOTO"}));
}

TEST_F(SentenciasConfigurador, VariasCategoriasDanElProductoDeSusValores)
{
    Camiseta();
    const QString sql =
        "SELECT 2 AS CUANTASCAT,0 + T001.INC_PVP3 + T002.INC_PVP3 AS INC_PVP_COMBINA,0 + T001.PESO + T002.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='X1' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 , (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='TAL' AND CODARTICULO='X1' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T002 ORDER BY T001.SECUENCIA,T001.CODCATEGORIA,T001.VALOR,T002.SECUENCIA,T002.CODCATEGORIA,T002.VALOR";
    const auto filas = Filas(sql);

    QStringList nombres;
    for (const auto& campo : filas.campos)
        nombres << campo.nombre;
    EXPECT_EQ(nombres.mid(0, 6),
              (QStringList{"CUANTASCAT", "INC_PVP_COMBINA", "PESO_COMBINA", "T001.CODARTICULO",
                           "T001.CODCATEGORIA", "T001.VALOR"}));
    EXPECT_EQ(nombres.indexOf("T002.VALOR"), 17);
    EXPECT_EQ(nombres.size(), 27);
    QStringList filasTexto;
    for (std::size_t f = 0; f < filas.valores.size(); f += filas.campos.size()) {
        QStringList fila;
        for (const std::size_t c : {0, 1, 2, 5, 17})
            fila << BaseDePrueba::Texto(filas.valores[f + c]);
        filasTexto << fila.join('|');
    }
    EXPECT_EQ(filasTexto,
              (QStringList{"2|68|2.25|002|001", "2|36|1.25|002|005", "2|20|0.75|002|010",
                           "2|72|2|001|001", "2|40|1|001|005", "2|24|0.5|001|010"}));
    EXPECT_EQ(filas.campos[1].tipo, 6);
}

TEST_F(SentenciasConfigurador, UnIncrementoNuloDejaNulaLaCombinacion)
{
    Camiseta();
    Haz("UPDATE PS_CONF_ART_VAL SET INC_PVP=NULL WHERE VALOR='002'");

    EXPECT_EQ(
        Tabla(
            "SELECT 1 AS CUANTASCAT,0 + T001.INC_PVP AS INC_PVP_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='X1' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 ORDER BY SECUENCIA,CODCATEGORIA,VALOR")
            .left(6),
        "1|NULL");
}

class CargaDelConfigurador : public SentenciasConfigurador {
  protected:
    CargaDelConfigurador()
    {
        Haz({"CREATE TABLE CONF_ART_CAT (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), DESCRIPCION nvarchar(50), TIPOVALOR nvarchar(1))",
             "CREATE TABLE CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT, SECUENCIA INT, PVP1 CURRENCY, PVP2 CURRENCY, PVP3 CURRENCY, PVP4 CURRENCY, PVP5 CURRENCY, LINK nvarchar(255))",
             "INSERT INTO CONF_ART_CAT VALUES ('Y1','COL','Color','L')",
             "INSERT INTO CONF_ART_VAL VALUES ('Y1','col','001',71,3,1.5,2.5,3.5,4.5,5.5,'C:\\f.jpg')",
             "INSERT INTO CONF_ART_VAL VALUES ('Y1','TAL','001',72,1,1,1,1,1,1,NULL)",
             "INSERT INTO CONF_ART_VAL VALUES ('Y2','COL','001',73,1,1,1,1,1,1,NULL)",
             "INSERT INTO PS_CONF_ART_CAT VALUES ('VIEJO','COL','Color','L')"});
        Valor("VIEJO", "COL", "001", 1, 1, 0, 0, 0);
    }

    void Comprueba()
    {
        EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_CAT"), "Y1|COL|Color|L");
        EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL"),
                  "Y1|col|001|71|3|1.5|2.5|3.5|4.5|5.5|0|C:\\f.jpg");
    }
};

const char* const BorraCat = "DELETE FROM PS_CONF_ART_CAT";
const char* const BorraVal = "DELETE FROM PS_CONF_ART_VAL";
const char* const CargaCat =
    "insert into PS_CONF_ART_CAT (CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPO) SELECT CODARTICULO, CODCATEGORIA, DESCRIPCION, TIPOVALOR FROM CONF_ART_CAT";
const char* const CargaVal =
    "insert into PS_CONF_ART_VAL (CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, INC_PVP, INC_PVP2, INC_PVP3, INC_PVP4, INC_PVP5, PESO, FOTO)SELECT CODARTICULO, CODCATEGORIA, VALOR, ID, SECUENCIA, PVP1, PVP2, PVP3, PVP4, PVP5, 0, LINK FROM CONF_ART_VAL";
const char* const QuitaVal =
    "DELETE FROM PS_CONF_ART_VAL WHERE NOT EXISTS (SELECT 'C' FROM PS_CONF_ART_CAT WHERE PS_CONF_ART_VAL.CODCATEGORIA=PS_CONF_ART_CAT.CODCATEGORIA AND PS_CONF_ART_VAL.CODARTICULO=PS_CONF_ART_CAT.CODARTICULO)";

TEST_F(CargaDelConfigurador, LosCincoPasosRehacenElAlmacen)
{
    Haz({BorraCat, BorraVal, CargaCat, CargaVal, QuitaVal});

    Comprueba();
}

TEST_F(CargaDelConfigurador, LasConsultasGuardadasSeEjecutanPorSuNombre)
{
    Haz("CREATE PROCEDURE PS_BORRA_PS_CONF_ART_CAT AS " + QString(BorraCat));
    Haz("CREATE PROCEDURE PS_BORRA_PS_CONF_ART_VAL AS " + QString(BorraVal) + ";");
    Haz("CREATE PROCEDURE PS_CARGA_PS_CONF_ART_CAT AS " + QString(CargaCat));
    Haz("CREATE PROCEDURE PS_CARGA_PS_CONF_ART_VAL AS " + QString(CargaVal));
    Haz("CREATE PROCEDURE PS_QUITAR_VALORES_NO_USADOS AS " + QString(QuitaVal));

    Haz({"PS_BORRA_PS_CONF_ART_CAT", "PS_BORRA_PS_CONF_ART_VAL", "PS_CARGA_PS_CONF_ART_CAT",
         "ps_carga_ps_conf_art_val", "PS_QUITAR_VALORES_NO_USADOS"});

    Comprueba();
    EXPECT_EQ(Fallo("PS_NO_EXISTE"),
              "No se conoce la sentencia o consulta PS_NO_EXISTE (posición 1)");
}

TEST_F(SentenciasConfigurador, ElEsquemaDistingueTablasVistasYAcciones)
{
    Haz({"CREATE VIEW Ps_Configurados_En_Paso_A_Traves AS SELECT 1 AS UNO",
         "CREATE PROCEDURE PS_BORRA_PS_CONF_ART_CAT AS DELETE FROM PS_CONF_ART_CAT"});

    QStringList lista;
    for (const auto& tabla : Proveedor().Tablas())
        lista << tabla.nombre + ":" + tabla.tipo;
    EXPECT_EQ(lista,
              (QStringList{"kov_consultas:SYSTEM TABLE", "M_OPCIONALES:TABLE",
                           "M_OPCIONALES_CAT:TABLE", "PS_CONF_ART_CAT:TABLE",
                           "PS_CONF_ART_VAL:TABLE", "Ps_Configurados_En_Paso_A_Traves:VIEW"}));
}

TEST_F(SentenciasConfigurador, LasRejillasDelEditorAdmitenUnFiltroTrue)
{
    Camiseta();
    Haz("INSERT INTO PS_CONF_ART_CAT VALUES ('X1','TAL','Talla',NULL)");
    Haz("INSERT INTO PS_CONF_ART_CAT VALUES ('X1','COL','Color',NULL)");

    EXPECT_EQ(
        Tabla(
            "SELECT * FROM PS_CONF_ART_CAT WHERE  True  AND CODARTICULO='X1' ORDER BY CODCATEGORIA ASC"),
        "X1|COL|Color|NULL X1|TAL|Talla|NULL");
    EXPECT_EQ(
        Tabla(
            "SELECT * FROM PS_CONF_ART_CAT WHERE (DESCRIPCION Like '%all%') AND CODARTICULO='X1' ORDER BY CODCATEGORIA ASC"),
        "X1|TAL|Talla|NULL");
    const QString valores =
        "SELECT VALOR FROM PS_CONF_ART_VAL WHERE %1 AND CODARTICULO='X1' AND CodCategoria='TAL' ORDER BY SECUENCIA";
    EXPECT_EQ(Tabla(valores.arg(" True ")), "001 010 005");
    EXPECT_EQ(Tabla(valores.arg("(INC_PVP > 0)")), "001 010");
    EXPECT_FALSE(
        Filas(
            "SELECT * FROM PS_CONF_ART_VAL WHERE  True  AND CODARTICULO='X1' AND CodCategoria='TAL' ORDER BY SECUENCIA",
            true)
            .tabla.isEmpty());
}

TEST_F(SentenciasConfigurador, UnaCategoriaNuevaTraeSusValores)
{
    Camiseta();
    EXPECT_EQ(Tabla("SELECT * FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='COL'"),
              "col|Color|NULL|False|NULL|NULL");
    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='X3' AND CodCategoria='COL'"),
              "");
    EXPECT_EQ(Uno("SELECT MAX(id) as MID FROM PS_CONF_ART_VAL"), QVariant(9));
    EXPECT_EQ(
        Tabla("SELECT CODOPCIONAL FROM M_OPCIONALES WHERE CodCategoria='COL' ORDER BY CODCATEGORIA")
            .size(),
        7);

    Haz("INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO) VALUES('X3','COL','002',10,002,0,0,0,0,0,0)");

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='X3'"),
              "X3|COL|002|10|2|0|0|0|0|0|0|NULL");
    EXPECT_EQ(
        Tabla(
            "SELECT DESCRIPCION FROM M_OPCIONALES WHERE CODCATEGORIA='TAL' AND CODOPCIONAL='010'"),
        "Grande");
}

TEST_F(SentenciasConfigurador, SinValoresElNumeroMayorEsNulo)
{
    EXPECT_EQ(Tabla("SELECT MAX(id) as MID FROM PS_CONF_ART_VAL"), "NULL");
}

TEST_F(SentenciasConfigurador, BorrarUnaCategoriaOUnValorLimpiaSusListas)
{
    Camiseta();
    Haz({"CREATE TABLE CONF_COMPONENTES (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), ID INT)",
         "CREATE TABLE CONF_OPERACIONES (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3))",
         "INSERT INTO CONF_COMPONENTES VALUES ('X1','TAL','010',7)",
         "INSERT INTO CONF_COMPONENTES VALUES ('X1','TAL','010',8)",
         "INSERT INTO CONF_COMPONENTES VALUES ('X1','COL','002',5)",
         "INSERT INTO CONF_OPERACIONES VALUES ('X1','TAL','010')",
         "INSERT INTO CONF_OPERACIONES VALUES ('X1','COL','002')"});

    EXPECT_EQ(
        Haz("DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010' AND ID=7"),
        1);
    EXPECT_EQ(
        Haz("DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010'"),
        1);
    EXPECT_EQ(Haz("DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='X1' AND CODCATEGORIA='COL'"), 2);
    EXPECT_EQ(Haz("DELETE FROM CONF_COMPONENTES WHERE CODARTICULO='X1' AND CODCATEGORIA='COL'"), 1);
    EXPECT_EQ(Haz("DELETE FROM CONF_OPERACIONES WHERE CODARTICULO='X1' AND CODCATEGORIA='COL'"), 1);

    EXPECT_EQ(Tabla("SELECT * FROM CONF_COMPONENTES"), "X1|TAL|010|8");
    EXPECT_EQ(Tabla("SELECT * FROM CONF_OPERACIONES"), "");
    EXPECT_EQ(Tabla("SELECT VALOR FROM PS_CONF_ART_VAL WHERE CODARTICULO='X1' ORDER BY VALOR"),
              "001 005 010");
}

TEST_F(SentenciasConfigurador, LaFotoDeUnValorSePoneYSeQuita)
{
    Camiseta();
    const QString lee =
        "SELECT * FROM PS_CONF_ART_VAL WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010'";

    EXPECT_EQ(
        Haz("UPDATE PS_CONF_ART_VAL SET FOTO='C:\\fotos\\tal''la.jpg' WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010'"),
        1);
    EXPECT_EQ(Tabla(lee).section('|', -1), "C:\\fotos\\tal'la.jpg");
    Haz("UPDATE PS_CONF_ART_VAL SET FOTO=NULL WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010'");
    EXPECT_EQ(Tabla(lee).section('|', -1), "NULL");
    EXPECT_EQ(Fallo("UPDATE PS_CONF_ART_VAL SET FOTO='" + QString(256, 'x') +
                    "' WHERE CODARTICULO='X1' AND CODCATEGORIA='TAL' AND VALOR='010'"),
              "El texto para el campo PS_CONF_ART_VAL.FOTO tiene 256 caracteres y caben 255");
}

TEST_F(SentenciasConfigurador, LaCopiaVaPorElNombreDeLosCampos)
{
    Camiseta();
    Haz("INSERT INTO PS_CONF_ART_CAT VALUES ('X1','COL','Color','L')");
    Haz("INSERT INTO PS_CONF_ART_CAT VALUES ('X2','COL','Viejo','L')");

    Haz("DELETE FROM PS_CONF_ART_CAT WHERE CODARTICULO='X2'");
    Haz("DELETE FROM PS_CONF_ART_VAL WHERE CODARTICULO='X2'");
    EXPECT_EQ(
        Haz("INSERT INTO PS_CONF_ART_CAT  SELECT 'X2' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT WHERE  CODARTICULO='X1'"),
        1);
    EXPECT_EQ(
        Haz("INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO) SELECT 'X2' AS CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,INC_PVP2,INC_PVP3,INC_PVP4,INC_PVP5,PESO,FOTO FROM PS_CONF_ART_VAL WHERE  CODARTICULO='X1'"),
        5);

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_CAT ORDER BY CODARTICULO"),
              "X1|COL|Color|L X2|COL|Color|NULL");
    EXPECT_EQ(
        Tabla(
            "SELECT ID,INC_PVP3,PESO FROM PS_CONF_ART_VAL WHERE CODARTICULO='X2' AND VALOR='010'"),
        "7|16|0.5");
}

TEST_F(SentenciasConfigurador, LaCopiaPorNombreNoMiraElOrdenDeLosCampos)
{
    Haz({"CREATE TABLE DESTINO (DESCRIPCION nvarchar(50), TIPO nvarchar(1), CODCATEGORIA nvarchar(3), CODARTICULO nvarchar(20))",
         "INSERT INTO PS_CONF_ART_CAT VALUES ('X1','COL','Color','L')"});

    Haz("INSERT INTO DESTINO  SELECT 'X2' AS CODARTICULO,CODCATEGORIA,DESCRIPCION FROM PS_CONF_ART_CAT WHERE  CODARTICULO='X1'");

    EXPECT_EQ(Tabla("SELECT * FROM DESTINO"), "Color|NULL|COL|X2");
}

TEST_F(SentenciasConfigurador, LosMaestrosSeAbrenTambienVacios)
{
    EXPECT_EQ(Filas("SELECT * FROM M_OPCIONALES_CAT", true).claves.size(), 3U);
    EXPECT_EQ(Filas("select * from M_OPCIONALES WHERE CODCATEGORIA='TAL'", true).claves.size(), 3U);
    const auto vacio = Filas("select * from M_OPCIONALES WHERE FALSE", true);
    EXPECT_TRUE(vacio.claves.empty());
    EXPECT_EQ(vacio.tabla, "M_OPCIONALES");
    EXPECT_EQ(
        Tabla(
            "SELECT DESCRIPCION FROM M_OPCIONALES WHERE CodCategoria='TAL' AND CodOpcional='005'"),
        "mediana");
}

TEST_F(SentenciasConfigurador, LosCambiosDeLosMaestrosLleganALosArticulos)
{
    Camiseta();
    Haz({"INSERT INTO PS_CONF_ART_CAT VALUES ('X1','TAL','Talla','L')",
         "INSERT INTO PS_CONF_ART_CAT VALUES ('X1','COL','Color','L')",
         "CREATE TABLE REL_ART_OPC (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3))",
         "INSERT INTO REL_ART_OPC VALUES ('X1','TAL','010')",
         "INSERT INTO REL_ART_OPC VALUES ('X1','TAL','001')"});

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_CAT WHERE CODCATEGORIA='TAL'"), "X1|TAL|Talla|L");
    Haz("UPDATE PS_CONF_ART_CAT SET DESCRIPCION='Medida' WHERE CODCATEGORIA='TAL'");
    EXPECT_EQ(Haz("DELETE FROM REL_ART_OPC WHERE  CODCATEGORIA='TAL' AND CODOPCIONAL='010'"), 1);
    EXPECT_EQ(Haz("DELETE FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='TAL' AND VALOR='001'"), 2);
    EXPECT_EQ(Haz("DELETE FROM PS_CONF_ART_CAT WHERE  CODCATEGORIA='COL'"), 1);

    EXPECT_EQ(Tabla("SELECT * FROM PS_CONF_ART_CAT"), "X1|TAL|Medida|L");
    EXPECT_EQ(Tabla("SELECT * FROM REL_ART_OPC"), "X1|TAL|001");
}

class SentenciasSelectores : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasSelectores()
    {
        Haz({"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), DESCRIPCION nvarchar(50), CODALTERNATIVO nvarchar(20), CODGRUPO nvarchar(6), GRUPO2 nvarchar(6), GRUPO3 nvarchar(6), GRUPO4 nvarchar(6), CODPROVHAB nvarchar(6), TIPOARTIC nvarchar(2), ACTIVOWEB nvarchar(1))",
             "INSERT INTO M_ARTIC VALUES ('A1','Uno','ALT9','000001','1','x','x','P1','AR','S')",
             "INSERT INTO M_ARTIC VALUES ('A2','Dos','ALT5','000001','2','x','x','P2',NULL,'N')",
             "INSERT INTO M_ARTIC VALUES ('a3','Tres',NULL,'000002','1','x','x','P1','OB','S')",
             "INSERT INTO M_ARTIC VALUES ('B4','Cuatro','alt7','000001','1','x','x','P1','AR','S')",
             "CREATE TABLE M_GRUPART (CODGRUPO nvarchar(6), DESCRIPCION nvarchar(50))",
             "INSERT INTO M_GRUPART VALUES ('000001','Grupo uno')",
             "CREATE TABLE M_PROVE (CODPROVEEDOR nvarchar(6), DESCRIPCION nvarchar(50))",
             "INSERT INTO M_PROVE VALUES ('P1','Proveedor')"});
    }

    QString Copia(const QString& clausulas)
    {
        return Tabla(QString("SELECT * FROM M_ARTIC WHERE CODARTICULO<>'a1'" + clausulas)
                         .replace("*", "CODARTICULO") +
                     " ORDER BY CODARTICULO");
    }
};

TEST_F(SentenciasSelectores, LosCamposDeLaCopiaSeComprueban)
{
    EXPECT_EQ(Tabla("SELECT * FROM M_GRUPART WHERE CodGrupo='000001'"), "000001|Grupo uno");
    EXPECT_EQ(Tabla("SELECT * FROM M_GRUPART WHERE CodGrupo='000009'"), "");
    EXPECT_EQ(Tabla("SELECT * FROM M_PROVE WHERE CodProveedor='p1'"), "P1|Proveedor");
    EXPECT_EQ(Tabla("select CODARTICULO,DESCRIPCION from M_ARTIC where CODALTERNATIVO='ALT7'"),
              "B4|Cuatro");
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_ARTIC where CodArticulo='A3'"), "Tres");
}

TEST_F(SentenciasSelectores, CadaClausulaDeLaCopiaEstrecha)
{
    EXPECT_EQ(Copia(""), "A2 a3 B4");
    EXPECT_EQ(Copia(" AND CODARTICULO>='A3'  AND CODARTICULO<='b4' "), "a3 B4");
    EXPECT_EQ(Copia(" AND CODALTERNATIVO>='ALT5'  AND CODALTERNATIVO<='ALT7' "), "A2 B4");
    EXPECT_EQ(Copia(" AND CODGRUPO='000001'  AND GRUPO2='1' "), "B4");
    EXPECT_EQ(Copia(" AND GRUPO3='x'  AND GRUPO4='X'  AND CODPROVHAB='P1' "), "a3 B4");
}

TEST_F(SentenciasSelectores, ElSelectorNoMuestraLosObsoletos)
{
    EXPECT_EQ(
        Tabla(
            "Select CODARTICULO,DESCRIPCION from M_ARTIC where tipoartic is null OR TipoArtic<>'OB'  order by CODARTICULO"),
        "A1|Uno A2|Dos B4|Cuatro");
    EXPECT_EQ(
        Tabla(
            "Select CODARTICULO from M_ARTIC where (codarticulo like 'a%') AND (tipoartic is null OR TipoArtic<>'OB')  order by CODARTICULO"),
        "A1 A2");
    EXPECT_EQ(
        Tabla(
            "Select codalternativo from M_ARTIC where (codalternativo like 'alt%') AND (tipoartic is null OR TipoArtic<>'OB')  order by codalternativo"),
        "ALT5 alt7 ALT9");
}

TEST_F(SentenciasSelectores, ElFicheroDeLaFeriaLlevaLosPublicados)
{
    EXPECT_EQ(
        Tabla(
            "SELECT CODARTICULO FROM M_ARTIC WHERE ACTIVOWEB IN ('S','X') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)"),
        "A1 B4");
    EXPECT_EQ(
        Filas(
            "SELECT * FROM M_ARTIC WHERE ACTIVOWEB IN ('N') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)")
            .valores.size(),
        10U);
}

TEST_F(SentenciasConfigurador, LosNombresDeCategoriaYOpcionSonLosDeLosMaestros)
{
    EXPECT_EQ(Tabla("SELECT DESCRIPCION FROM M_OPCIONALES_CAT WHERE CODCATEGORIA='COL'"), "Color");
    EXPECT_EQ(
        Tabla(
            "SELECT DESCRIPCION FROM M_OPCIONALES WHERE CODCATEGORIA='COL' AND CODOPCIONAL='001'"),
        "Rojo");
    EXPECT_EQ(
        Tabla(
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='X1' ORDER BY CODCATEGORIA"),
        "");
}

} // namespace
