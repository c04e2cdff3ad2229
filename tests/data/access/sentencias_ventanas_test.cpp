// The statements of start-up, parameters, cards, browse windows and conditions, as the program
// writes them, on rows where another reading of the statement gives another result.
#include "base_prueba.h"

using namespace tolmo::data;

namespace {

class SentenciasVentanas : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasVentanas()
    {
        Haz({"CREATE TABLE M_EMPRESA (CODEMPRESA nvarchar(6) PRIMARY KEY, DESCRIPCION nvarchar(50), PS_MODOCONFIGURADOR YESNO, PS_PREFIJO nvarchar(10), PS_VERSION SMALLINT, WWW nvarchar(100))",
             "INSERT INTO M_EMPRESA VALUES ('000002','Segunda',FALSE,'tst_',1,'http://b.es')",
             "INSERT INTO M_EMPRESA VALUES ('000001','Primera',TRUE,NULL,0,'http://a.es/')",
             "CREATE TABLE PS_IDIOMAS (CODEMPRESA nvarchar(6), IDIOMA SMALLINT, CAMPODESCRIPCION nvarchar(255))",
             "INSERT INTO PS_IDIOMAS VALUES ('000001',10,'DESC_DE')",
             "INSERT INTO PS_IDIOMAS VALUES ('000001',1,'DESCRIPCION')",
             "INSERT INTO PS_IDIOMAS VALUES ('000001',2,'DESC_EN')",
             "INSERT INTO PS_IDIOMAS VALUES ('000002',1,'OTRA')"});
    }
};

TEST_F(SentenciasVentanas, LasEmpresasSeListanYSeOrdenanPorCodigo)
{
    EXPECT_EQ(Filas("select * from m_empresa").valores.size(), 12U);
    EXPECT_EQ(Tabla("Select CODEMPRESA,descripcion from m_empresa ORDER BY CODEMPRESA"),
              "000001|Primera 000002|Segunda");
    EXPECT_EQ(Tabla("Select * from m_empresa ORDER BY CODEMPRESA"),
              "000001|Primera|True|NULL|0|http://a.es/ 000002|Segunda|False|tst_|1|http://b.es");
}

TEST_F(SentenciasVentanas, LaTablaTemporalDelProcesoSeCreaYSeQuita)
{
    Haz("CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20))");

    EXPECT_EQ(Tabla("SELECT * FROM WKOVTOLMO_ARTIC24031509050789"), "");
    EXPECT_EQ(Filas("SELECT * FROM WKOVTOLMO_ARTIC24031509050789").campos[0].ancho, 20);

    Haz("DROP TABLE WKOVTOLMO_ARTIC24031509050789");

    EXPECT_EQ(Fallo("SELECT * FROM WKOVTOLMO_ARTIC24031509050789"),
              "No se conoce la tabla o consulta WKOVTOLMO_ARTIC24031509050789 (posición 15)");
    EXPECT_EQ(Fallo("DROP TABLE WKOVTOLMO_ARTIC24031509050789"),
              "No se conoce la tabla o consulta WKOVTOLMO_ARTIC24031509050789");
}

TEST_F(SentenciasVentanas, LaFilaDeLaEmpresaSeBuscaPorSuCodigo)
{
    const auto filas = Filas("Select * from m_Empresa where codempresa='000001'", true);

    ASSERT_EQ(filas.valores.size(), filas.campos.size());
    EXPECT_EQ(filas.valores[1], QVariant("Primera"));
    EXPECT_EQ(filas.valores[2], QVariant(true));
    EXPECT_TRUE(EsNulo(filas.valores[3]));
    EXPECT_EQ(filas.valores[4], QVariant(0));
    EXPECT_EQ(Tabla("Select * from m_Empresa where codempresa='000003'"), "");
}

TEST_F(SentenciasVentanas, LosDemasIdiomasVienenPorNumeroCreciente)
{
    EXPECT_EQ(Tabla("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA=1"),
              "000001|1|DESCRIPCION");
    EXPECT_EQ(
        Tabla("SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001' AND IDIOMA<>1 ORDER BY IDIOMA"),
        "000001|2|DESC_EN 000001|10|DESC_DE");
}

TEST_F(SentenciasVentanas, LosParametrosSeGuardanConLaCondicionDeLaEmpresa)
{
    const auto cambiadas = Haz(
        "UPDATE M_EMPRESA SET DESCRIPCION='Nueva',PS_MODOCONFIGURADOR= 1 ,PS_PREFIJO=null,PS_VERSION=1 WHERE CODEMPRESA='000002'");

    EXPECT_EQ(cambiadas, 1);
    EXPECT_EQ(
        Tabla(
            "SELECT DESCRIPCION,PS_MODOCONFIGURADOR,PS_PREFIJO,PS_VERSION FROM M_EMPRESA ORDER BY CODEMPRESA"),
        "Primera|True|NULL|0 Nueva|True|NULL|1");
}

TEST_F(SentenciasVentanas, LaRejillaDeIdiomasSeEditaFilaAFila)
{
    const QString sql = "SELECT * FROM PS_IDIOMAS WHERE CODEMPRESA='000001'";
    auto filas = Filas(sql, true);
    ASSERT_EQ(filas.tabla, "PS_IDIOMAS");

    Proveedor().Actualiza(filas, 1, {{"campodescripcion", "TITULO"}});
    Proveedor().Inserta(
        filas, {{"CODEMPRESA", "000001"}, {"IDIOMA", "3"}, {"CAMPODESCRIPCION", "DESC_FR"}});
    Proveedor().Borra(filas, 0);

    EXPECT_EQ(Tabla("SELECT * FROM PS_IDIOMAS ORDER BY CODEMPRESA,IDIOMA"),
              "000001|1|TITULO 000001|2|DESC_EN 000001|3|DESC_FR 000002|1|OTRA");
}

class SentenciasFichas : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasFichas()
    {
        Haz({"CREATE TABLE USUARIOS (CODIGO nvarchar(5), NOMBRE nvarchar(50), LOGIN nvarchar(10), [PASSWORD] nvarchar(10), EMAIL nvarchar(100), EMPRESA nvarchar(20), CODTARIFA INT, ALTA DATETIME, BAJA YESNO, ACTIVO nvarchar(1))",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE,EMAIL,EMPRESA,CODTARIFA,ALTA,BAJA,ACTIVO) VALUES ('00007','Ana','ana@a.es','Uno',1,#02/01/2024#,FALSE,'S')",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE,EMAIL,EMPRESA,CODTARIFA,ALTA,BAJA,ACTIVO) VALUES ('00002','anselmo',NULL,'Dos',10,#01/02/2024#,TRUE,'N')",
             "INSERT INTO USUARIOS (CODIGO,NOMBRE,EMAIL,EMPRESA,CODTARIFA,ALTA,BAJA,ACTIVO) VALUES ('00010','Berta','berta@b.es','uno',2,#03/15/2024 08:00:00#,FALSE,'S')"});
    }

    QString ConCondicion(const QString& condicion)
    {
        return Tabla("Select CODIGO from USUARIOS where (" + condicion + ") order by CODIGO");
    }
};

TEST_F(SentenciasFichas, UnaFichaAprendeLosTiposDeUnConjuntoVacio)
{
    const auto filas = Filas("Select * from USUARIOS WHERE FALSE");

    EXPECT_TRUE(filas.valores.empty());
    ASSERT_EQ(filas.campos.size(), 10U);
    EXPECT_EQ(filas.campos[3].nombre, "PASSWORD");
    EXPECT_EQ(filas.campos[6].tipo, 3);
    EXPECT_EQ(filas.campos[8].tipo, 11);
}

TEST_F(SentenciasFichas, UnaFichaNuevaSeInsertaConSusControles)
{
    Haz("INSERT INTO USUARIOS (CODIGO,NOMBRE,LOGIN,PASSWORD,EMAIL,EMPRESA,CODTARIFA,ALTA,BAJA,ACTIVO) VALUES('00011','Caín','cain','x',null,null,3,'15/03/2024', 1 , 'S' )");

    EXPECT_EQ(Tabla("SELECT * FROM USUARIOS WHERE CODIGO='00011'"),
              "00011|Caín|cain|x|NULL|NULL|3|15/03/2024|True|S");
}

TEST_F(SentenciasFichas, UnaFichaSinColumnasEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo("INSERT INTO USUARIOS () VALUES()"),
              "Error de sintaxis cerca de \")\", se esperaba un campo (posición 23)");
}

TEST_F(SentenciasFichas, LaFichaVecinaVaPorElOrdenDeLosTextos)
{
    EXPECT_EQ(Tabla("SELECT TOP 1 codigo FROM USUARIOS WHERE codigo<'00007'  ORDER BY codigo DESC"),
              "00002");
    EXPECT_EQ(Tabla("SELECT TOP 1 codigo FROM USUARIOS WHERE codigo>'00007'  ORDER BY codigo ASC"),
              "00010");
    EXPECT_EQ(
        Tabla(
            "SELECT TOP 1 codigo FROM USUARIOS WHERE codigo>'00002' AND ACTIVO='N' ORDER BY codigo ASC"),
        "");
}

TEST_F(SentenciasFichas, LaFichaVecinaDeUnNumeroVaPorSuValor)
{
    EXPECT_EQ(
        Tabla("SELECT TOP 1 CODTARIFA FROM USUARIOS WHERE CODTARIFA<10  ORDER BY CODTARIFA DESC"),
        "2");
    EXPECT_EQ(
        Tabla("SELECT TOP 1 CODTARIFA FROM USUARIOS WHERE CODTARIFA>1  ORDER BY CODTARIFA ASC"),
        "2");
}

TEST_F(SentenciasFichas, UnaRejillaSeAbreEnElOrdenDeSuColumna)
{
    EXPECT_EQ(Tabla("Select CODIGO,NOMBRE from USUARIOS order by NOMBRE"),
              "00007|Ana 00002|anselmo 00010|Berta");
    EXPECT_EQ(Tabla("Select CODIGO,NOMBRE from USUARIOS where (BAJA = FALSE) order by CODIGO"),
              "00007|Ana 00010|Berta");
}

TEST_F(SentenciasFichas, LaBusquedaPorPatronTomaElPrimeroEnElOrden)
{
    EXPECT_EQ(Tabla("SELECT TOP 1 NOMBRE FROM USUARIOS WHERE NOMBRE LIKE 'an%%' ORDER BY NOMBRE"),
              "Ana");
    EXPECT_EQ(
        Tabla(
            "SELECT TOP 1 NOMBRE FROM USUARIOS WHERE NOMBRE LIKE '%er%%' AND (BAJA = FALSE) ORDER BY NOMBRE"),
        "Berta");
    // "*" is no sign here: the box has changed it to "%" before.
    EXPECT_EQ(Tabla("SELECT TOP 1 NOMBRE FROM USUARIOS WHERE NOMBRE LIKE 'an*' ORDER BY NOMBRE"),
              "");
}

TEST_F(SentenciasFichas, ElFiltroDeColumnasUneSusCondiciones)
{
    EXPECT_EQ(ConCondicion("CODTARIFA >= 2 AND NOMBRE LIKE 'B%'"), "00010");
    EXPECT_EQ(ConCondicion("CODTARIFA >= 2"), "00002 00010");
}

TEST_F(SentenciasFichas, LasCondicionesDelConstructorSobreTextos)
{
    EXPECT_EQ(ConCondicion("EMPRESA = 'UNO'"), "00007 00010");
    EXPECT_EQ(ConCondicion("EMPRESA <> 'uno'"), "00002");
    EXPECT_EQ(ConCondicion("NOMBRE Like '%N%'"), "00002 00007");
    EXPECT_EQ(ConCondicion("EMAIL Like '%' & NOMBRE & '%'"), "00007 00010");
    EXPECT_EQ(ConCondicion("NOMBRE > LOGIN"), "");
}

TEST_F(SentenciasFichas, LasCondicionesDelConstructorSobreVacios)
{
    EXPECT_EQ(ConCondicion("EMAIL IS NULL"), "00002");
    // A comparison with Null never holds, and neither does its denial.
    EXPECT_EQ(ConCondicion("EMAIL <> NULL"), "");
    EXPECT_EQ(ConCondicion("EMAIL >= NULL Or EMPRESA = 'dos'"), "00002");
}

TEST_F(SentenciasFichas, LasCondicionesDelConstructorSobreNumerosYVerdades)
{
    EXPECT_EQ(ConCondicion("CODTARIFA < 10"), "00007 00010");
    EXPECT_EQ(ConCondicion("BAJA = TRUE"), "00002");
    EXPECT_EQ(ConCondicion("BAJA = FALSE And CODTARIFA = 2"), "00010");
    EXPECT_EQ(ConCondicion("EMPRESA = 'uno' And Not CODTARIFA = 2"), "00007");
    EXPECT_EQ(ConCondicion("CODTARIFA = 10 Or Not EMPRESA = 'uno'"), "00002");
}

TEST_F(SentenciasFichas, LasCondicionesDelConstructorSobreFechas)
{
    // 2 January as the literal of the connection has it: month first between "#".
    EXPECT_EQ(Tabla("SELECT ALTA FROM USUARIOS WHERE CODIGO='00002'"), "02/01/2024");
    EXPECT_EQ(ConCondicion("ALTA = Format('02/01/2024','dd/mm/yyyy')"), "00002");
    EXPECT_EQ(ConCondicion("ALTA >= Format('01/02/2024','dd/mm/yyyy')"), "00007 00010");
    EXPECT_EQ(ConCondicion("ALTA <= Format('15/03/2024','dd/mm/yyyy')"), "00002 00007");
    EXPECT_EQ(ConCondicion("ALTA Like '%2024%'"), "00002 00007 00010");
    EXPECT_EQ(ConCondicion("Format(ALTA,'hh:mm:ss') = Format('08:00','hh:mm:ss')"), "00010");
}

TEST_F(SentenciasFichas, UnaCondicionVaciaEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo("Select CODIGO from USUARIOS where (()) order by CODIGO"),
              "Error de sintaxis cerca de \")\", se esperaba una expresión (posición 37)");
}

TEST_F(SentenciasFichas, UnaComillaDeMasEnLaCondicionEsUnErrorDelMotor)
{
    EXPECT_EQ(Fallo("Select CODIGO from USUARIOS where ((NOMBRE = 'O'Neil')) order by CODIGO"),
              "Error de sintaxis: falta la comilla que cierra el texto (posición 53)");
}

TEST_F(SentenciasFichas, LosUsuariosSeLeenSeNumeranYSeBorran)
{
    EXPECT_EQ(Tabla("SELECT CODIGO,NOMBRE FROM USUARIOS WHERE codigo='00007'"), "00007|Ana");
    EXPECT_EQ(Filas("SELECT * FROM USUARIOS WHERE codigo='00099'").valores.size(), 0U);
    EXPECT_EQ(Tabla("SELECT max(codigo) as mcodigo FROM USUARIOS"), "00010");
    EXPECT_EQ(Tabla("SELECT codigo FROM USUARIOS WHERE codigo='00002'"), "00002");

    Haz("UPDATE USUARIOS SET NOMBRE='Ana María',LOGIN='ana',PASSWORD=null,EMAIL='a@a.es',EMPRESA='Uno',CODTARIFA=4 WHERE codigo='00007'");
    EXPECT_EQ(Haz("DELETE FROM usuarios WHERE codigo='00002'"), 1);

    EXPECT_EQ(Tabla("SELECT CODIGO,NOMBRE,CODTARIFA FROM USUARIOS ORDER BY CODIGO"),
              "00007|Ana María|4 00010|Berta|2");
}

TEST_F(SentenciasFichas, SinUsuariosElCodigoMayorEsNulo)
{
    Haz("DELETE FROM USUARIOS");

    EXPECT_EQ(Tabla("SELECT max(codigo) as mcodigo FROM USUARIOS"), "NULL");
}

} // namespace
