// The statements that a run asks of the management database, as the program writes them, on rows
// where another reading of the statement gives another result.
#include "base_prueba.h"

using namespace tolmo::data;

namespace {

class SentenciasArticulos : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasArticulos()
    {
        Haz({"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20) PRIMARY KEY, DESCRIPCION nvarchar(80), DESC_EN nvarchar(80), DESCRIPCIO2 nvarchar(80), NOTAS NTEXT, NOTAS_EN NTEXT, ACTIVOWEB nvarchar(1), EMPRESASWEB nvarchar(50), TIPOARTIC nvarchar(2), KILOS DOUBLE, PVP1 CURRENCY, CODGRUPO nvarchar(6), GRUPO2 nvarchar(6), PS_PESO DOUBLE)",
             "INSERT INTO M_ARTIC VALUES ('0102B','Bolso','Bag','b','notas b','notes b','S',NULL,NULL,1.5,20,'7','x',9)",
             "INSERT INTO M_ARTIC VALUES ('0102a','Abrigo','Coat','a','notas a',NULL,'s',NULL,'AR',2,30,'8','y',9)",
             "INSERT INTO M_ARTIC VALUES ('0103','Obsoleto','Old','o',NULL,NULL,'S',NULL,'ob',1,10,'7','z',9)",
             "INSERT INTO M_ARTIC VALUES ('0104','Otra empresa','Other','e',NULL,NULL,'N',',000001,000007,','AR',1,10,'7','z',9)",
             "INSERT INTO M_ARTIC VALUES ('0105','No publicado','Hidden','n',NULL,NULL,'N',',0000012,','AR',1,10,'7','z',9)",
             "INSERT INTO M_ARTIC VALUES ('0106','Sin letra','Blank','l',NULL,NULL,NULL,NULL,'AR',1,10,'7','z',9)",
             "INSERT INTO M_ARTIC VALUES ('02','Letra A','A','t',NULL,NULL,'A',NULL,'AR',1,10,'7','z',9)"});
    }

    void CreaTablaNotas()
    {
        Haz({"CREATE TABLE WKOVTOLMO_ARTIC77 (CODART nvarchar(20),PSNOTAS0 NTEXT,PSNOTAS1 NTEXT)",
             "INSERT INTO WKOVTOLMO_ARTIC77 (CODART,PSNOTAS0,PSNOTAS1) SELECT CODARTICULO,NOTAS,NOTAS_EN FROM M_ARTIC"});
    }
};

TEST_F(SentenciasArticulos, LaTablaDeNotasSeHaceDeNuevoAntesDeCadaCorrida)
{
    Haz("CREATE TABLE WKOVTOLMO_ARTIC77 (CODART nvarchar(20))");

    Haz("DROP TABLE WKOVTOLMO_ARTIC77");
    CreaTablaNotas();

    const auto filas = Filas("SELECT * FROM WKOVTOLMO_ARTIC77");
    EXPECT_EQ(filas.campos[1].tipo, 203);
    EXPECT_EQ(Tabla("SELECT * FROM WKOVTOLMO_ARTIC77 WHERE CODART LIKE '0102%' ORDER BY CODART"),
              "0102a|notas a|NULL 0102B|notas b|notes b");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM WKOVTOLMO_ARTIC77"), "7");
}

TEST_F(SentenciasArticulos, LasNotasDeUnIdiomaPuedenSerUnaExpresion)
{
    Haz({"CREATE TABLE WKOVTOLMO_ARTIC77 (CODART nvarchar(20),PSNOTAS0 NTEXT,PSNOTAS1 NTEXT)",
         "INSERT INTO WKOVTOLMO_ARTIC77 (CODART,PSNOTAS0,PSNOTAS1) SELECT CODARTICULO,NULL,DESCRIPCION & ': ' & NOTAS FROM M_ARTIC"});

    EXPECT_EQ(Tabla("SELECT * FROM WKOVTOLMO_ARTIC77 WHERE CODART='0102A'"),
              "0102a|NULL|Abrigo: notas a");
}

TEST_F(SentenciasArticulos, UnArticuloPublicadoSeReconocePorLetraOPorEmpresa)
{
    const auto publicado = [this](const QString& codigo) {
        return Tabla(
            "SELECT CODARTICULO FROM M_ARTIC WHERE CODARTICULO='" + codigo +
            "' AND ( ACTIVOWEB IN ('S','A')  OR EMPRESASWEB LIKE '%,000001,%')AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)");
    };

    EXPECT_EQ(publicado("0102b"), "0102B");
    EXPECT_EQ(publicado("0102A"), "0102a");
    EXPECT_EQ(publicado("0103"), "");
    EXPECT_EQ(publicado("0104"), "0104");
    EXPECT_EQ(publicado("0105"), "");
    EXPECT_EQ(publicado("0106"), "");
    EXPECT_EQ(publicado("02"), "02");
    EXPECT_EQ(publicado("99"), "");
}

class SeleccionDeArticulos : public SentenciasArticulos {
  protected:
    SeleccionDeArticulos() { CreaTablaNotas(); }

    static QString Seleccion(const QString& intervalo)
    {
        return "SELECT DESCRIPCION AS PSCAMPODESCRIPCION0,DESCRIPCIO2 AS PSCAMPODESCORTA0,NULL AS PSTAG0,NULL AS PSKEYWORDS0,DESCRIPCION AS PsMetaTituloArt0,NOTAS AS PsMetaDescripcionArt0,"
               "DESC_EN AS PSCAMPODESCRIPCION1,DESCRIPCIO2 AS PSCAMPODESCORTA1,'' & CODGRUPO AS PSTAG1,UCASE(DESC_EN) AS PSKEYWORDS1,DESC_EN AS PsMetaTituloArt1,NOTAS_EN AS PsMetaDescripcionArt1,"
               "NULL AS FAMALT,KILOS AS PS_PESO,1 AS PS_CANTMINIMA,* FROM M_ARTIC LEFT JOIN WKOVTOLMO_ARTIC77 ON M_ARTIC.CODARTICULO=WKOVTOLMO_ARTIC77.CODART WHERE (ACTIVOWEB IN ('S','A') OR EMPRESASWEB LIKE '%,000001,%') AND (TIPOARTIC<>'OB' OR TIPOARTIC IS NULL)" +
               intervalo + " ORDER BY CODARTICULO";
    }

    QString Codigos(const QString& intervalo)
    {
        const auto filas = Filas(Seleccion(intervalo));
        QStringList codigos;
        for (std::size_t f = 15; f < filas.valores.size(); f += filas.campos.size())
            codigos << filas.valores[f].toString();
        return codigos.join(' ');
    }
};

TEST_F(SeleccionDeArticulos, VanTodosLosPublicadosPorOrdenDeCodigo)
{
    EXPECT_EQ(Codigos(""), "0102a 0102B 0104 02");
}

TEST_F(SeleccionDeArticulos, ElIntervaloIncluyeSusExtremos)
{
    EXPECT_EQ(Codigos(" AND CODARTICULO>='0102b' AND CODARTICULO<='0104'"), "0102B 0104");
    EXPECT_EQ(Codigos(" AND CODARTICULO>='' AND CODARTICULO<=''"), "");
    EXPECT_EQ(Codigos(" AND CODARTICULO>='0104' AND CODARTICULO<='0102b'"), "");
}

TEST_F(SeleccionDeArticulos, SoloFamiliasNoSeleccionaNinguno)
{
    EXPECT_EQ(Codigos(" AND CODARTICULO>'0' AND CODARTICULO<'0'"), "");
}

TEST_F(SeleccionDeArticulos, LosAliasGuardanSuNombreYLaColumnaIgualSeDistingue)
{
    QStringList nombres;
    const auto filas = Filas(Seleccion(" AND CODARTICULO>='0102B' AND CODARTICULO<='0102B'"));
    for (const auto& campo : filas.campos)
        nombres << campo.nombre;

    EXPECT_EQ(nombres.mid(0, 16),
              (QStringList{"PSCAMPODESCRIPCION0", "PSCAMPODESCORTA0", "PSTAG0", "PSKEYWORDS0",
                           "PsMetaTituloArt0", "PsMetaDescripcionArt0", "PSCAMPODESCRIPCION1",
                           "PSCAMPODESCORTA1", "PSTAG1", "PSKEYWORDS1", "PsMetaTituloArt1",
                           "PsMetaDescripcionArt1", "FAMALT", "PS_PESO", "PS_CANTMINIMA",
                           "CODARTICULO"}));
    EXPECT_EQ(nombres.mid(28), (QStringList{"M_ARTIC.PS_PESO", "CODART", "PSNOTAS0", "PSNOTAS1"}));
    QStringList valores;
    for (const auto& valor : filas.valores)
        valores << BaseDePrueba::Texto(valor);
    EXPECT_EQ(
        valores.join('|'),
        "Bolso|b|NULL|NULL|Bolso|notas b|Bag|b|7|BAG|Bag|notes b|NULL|1.5|1|0102B|Bolso|Bag|b|notas b|notes b|S|NULL|NULL|1.5|20|7|x|9|0102B|notas b|notes b");
}

TEST_F(SeleccionDeArticulos, UnArticuloSinFilaDeNotasTambienSale)
{
    Haz("DELETE FROM WKOVTOLMO_ARTIC77 WHERE CODART='02'");

    EXPECT_EQ(Codigos(""), "0102a 0102B 0104 02");
    EXPECT_EQ(
        Tabla(
            "SELECT PSNOTAS0,CODART FROM M_ARTIC LEFT JOIN WKOVTOLMO_ARTIC77 ON M_ARTIC.CODARTICULO=WKOVTOLMO_ARTIC77.CODART WHERE CODARTICULO='02'"),
        "NULL|NULL");
}

TEST_F(SeleccionDeArticulos, LosParametrosAdmitenExpresiones)
{
    Haz("CREATE TABLE M_FAM2 (CODIGO nvarchar(10), TITULO nvarchar(20))");
    Haz("INSERT INTO M_FAM2 VALUES ('8','Ocho')");

    EXPECT_EQ(
        Tabla(
            "SELECT IIF(ISNULL(GRUPO2),NULL,GRUPO2 & ',') & (SELECT TITULO FROM M_FAM2 WHERE CODIGO=M_ARTIC.CODGRUPO) AS FAMALT,IIF(KILOS>1.8,KILOS*2,0) AS PS_PESO,CINT(KILOS) AS PS_CANTMINIMA,* FROM M_ARTIC WHERE CODARTICULO='0102a'")
            .left(13),
        "y,Ocho|4|2|01");
}

class SentenciasFamilias : public testing::Test, public BaseDePrueba {
  protected:
    void Familias(const char* tipoNivel)
    {
        Haz(QStringLiteral(
                "CREATE TABLE M_FAMILIA (CLAVE nvarchar(20), NIVEL %1, DESCRIPCION nvarchar(50), NOTAS NTEXT, ACTIVOWEB nvarchar(1), EMPRESASWEB nvarchar(50), FOTO nvarchar(255))")
                .arg(tipoNivel));
        Haz({"INSERT INTO M_FAMILIA VALUES ('0102',1,'Zapatos','n','S',NULL,NULL)",
             "INSERT INTO M_FAMILIA VALUES ('01',0,'Calzado','n','S',NULL,NULL)",
             "INSERT INTO M_FAMILIA VALUES ('0101',1,'Botas','n','N',',000001,',NULL)",
             "INSERT INTO M_FAMILIA VALUES ('010201',2,'De vestir','n','N',NULL,NULL)",
             "INSERT INTO M_FAMILIA VALUES ('02',0,'Ropa','n','A',NULL,NULL)",
             "INSERT INTO M_FAMILIA VALUES ('0201',1,'Abrigos','n','S',NULL,NULL)"});
    }
};

class NivelDeFamilia : public SentenciasFamilias,
                       public testing::WithParamInterface<const char*> {};

TEST_P(NivelDeFamilia, ElNivelEntreComillasValeConNumeroYConTexto)
{
    Familias(GetParam());
    const QString sql =
        "SELECT DESCRIPCION AS PSCAMPOFAMDESCRIPCION0,NOTAS AS PSCAMPOFAMNOTAS0,NULL AS PSKEYWORDSFAM0,DESCRIPCION AS PsMetaTituloFam0,NOTAS AS PsMetaDescripcionFam0,* FROM M_FAMILIA WHERE NIVEL='%1' AND CLAVE LIKE '%2%' ORDER BY CLAVE";

    EXPECT_EQ(
        Tabla(QString(sql).replace("%1", "0").replace("%2%", "%")),
        QStringLiteral(
            "Calzado|n|NULL|Calzado|n|01|0|Calzado|n|S|NULL|NULL Ropa|n|NULL|Ropa|n|02|0|Ropa|n|A|NULL|NULL"));
    EXPECT_EQ(
        Tabla("SELECT CLAVE FROM M_FAMILIA WHERE NIVEL='1' AND CLAVE LIKE '01%' ORDER BY CLAVE"),
        "0101 0102");
    EXPECT_EQ(
        Tabla("SELECT CLAVE FROM M_FAMILIA WHERE NIVEL='3' AND CLAVE LIKE '01%' ORDER BY CLAVE"),
        "");
}

INSTANTIATE_TEST_SUITE_P(Tipos, NivelDeFamilia,
                         testing::Values("INT", "nvarchar(2)", "DOUBLE", "SMALLINT"),
                         [](const auto& caso) {
                             return QString(caso.param).remove('(').remove(')').toStdString();
                         });

TEST_F(SentenciasFamilias, LaTablaDeCategoriasSeLlenaYSeConsulta)
{
    Haz("CREATE TABLE wFAMPRESTA (FAMKOV NVARCHAR(20),FAMPRESTA INT)");
    EXPECT_EQ(Tabla("SELECT MAX(FAMPRESTA) AS MFAM FROM wFAMPRESTA"), "NULL");

    Haz("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('01',3)");
    Haz("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('02a',12)");
    Haz("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('0102',9)");

    EXPECT_EQ(Tabla("SELECT * FROM wFAMPRESTA WHERE FAMKOV='02A'"), "02a|12");
    EXPECT_EQ(Tabla("SELECT * FROM wFAMPRESTA WHERE FAMKOV='99'"), "");
    // The greatest number and not the greatest text, which would be 9.
    EXPECT_EQ(Uno("SELECT MAX(FAMPRESTA) AS MFAM FROM wFAMPRESTA"), QVariant(12));
    EXPECT_EQ(Haz("DELETE FROM wFAMPRESTA"), 3);
    EXPECT_EQ(Tabla("SELECT * FROM wFAMPRESTA"), "");
}

TEST_F(SentenciasFamilias, LaFamiliaDeUnArticuloEsLaPublicadaMasHonda)
{
    Familias("INT");
    const auto familia = [this](const QString& codigo) {
        return Tabla(
                   "SELECT TOP 1 * FROM M_FAMILIA WHERE '" + codigo +
                   "' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S','A') OR EMPRESASWEB LIKE '%,000001,%') ORDER BY NIVEL DESC")
            .section('|', 0, 0);
    };

    EXPECT_EQ(familia("0102A01"), "0102");
    // The deepest one, 010201, isn't published.
    EXPECT_EQ(familia("010201B"), "0102");
    EXPECT_EQ(familia("0101"), "0101");
    EXPECT_EQ(familia("0199"), "01");
    EXPECT_EQ(familia("0299"), "02");
    EXPECT_EQ(familia("03"), "");
    EXPECT_EQ(familia("0"), "");
}

TEST_F(SentenciasFamilias, UnaClaveVaciaEsFamiliaDeTodos)
{
    Familias("INT");
    Haz("INSERT INTO M_FAMILIA VALUES ('',0,'Todo','n','S',NULL,NULL)");

    EXPECT_EQ(
        Tabla(
            "SELECT TOP 1 DESCRIPCION FROM M_FAMILIA WHERE '99' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S','A') OR EMPRESASWEB LIKE '%,000001,%') ORDER BY NIVEL DESC"),
        "Todo");
}

class SentenciasCorrida : public testing::Test, public BaseDePrueba {};

TEST_F(SentenciasCorrida, LaReferenciaDeUnArticuloTomaUnaFila)
{
    Haz({"CREATE TABLE M_REFART (CODARTICULO nvarchar(20), CODPROVEEDOR nvarchar(6), REFERENCIA nvarchar(20))",
         "INSERT INTO M_REFART VALUES ('A1','000001','R1')",
         "INSERT INTO M_REFART VALUES ('A1','000002','R2')",
         "INSERT INTO M_REFART VALUES ('A2','000001','R3')"});

    EXPECT_EQ(Tabla("SELECT TOP 1 * FROM M_REFART WHERE CODARTICULO='A1'"), "A1|000001|R1");
    EXPECT_EQ(Tabla("SELECT TOP 1 * FROM M_REFART WHERE CODARTICULO='A9'"), "");
}

TEST_F(SentenciasCorrida, SoloVanLasOfertasSinConfiguracion)
{
    Haz({"CREATE TABLE OFERTAS (CODARTICULO nvarchar(20), IDCONF nvarchar(10), DTOCOM1 DOUBLE, PVPDEF SMALLINT, PRECIO CURRENCY, TARIFAOPROV SMALLINT, FECHADESDE DATETIME, FECHAHASTA DATETIME)",
         "INSERT INTO OFERTAS VALUES ('A1','0',10,1,0,1,#01/15/2024#,#12/31/2024#)",
         "INSERT INTO OFERTAS VALUES ('A1','345',20,1,0,1,#01/15/2024#,#12/31/2024#)",
         "INSERT INTO OFERTAS VALUES ('a1','0',0,NULL,9.95,2,NULL,NULL)",
         "INSERT INTO OFERTAS VALUES ('A2','0',5,1,0,1,NULL,NULL)"});

    EXPECT_EQ(Tabla("SELECT * FROM OFERTAS WHERE CODARTICULO='A1' AND IDCONF='0'"),
              "A1|0|10|1|0|1|15/01/2024|31/12/2024 a1|0|0|NULL|9.95|2|NULL|NULL");
}

TEST_F(SentenciasCorrida, UnaConfiguracionNumericaSeComparaIgual)
{
    Haz({"CREATE TABLE OFERTAS (CODARTICULO nvarchar(20), IDCONF INT)",
         "INSERT INTO OFERTAS VALUES ('A1',0)", "INSERT INTO OFERTAS VALUES ('A1',345)"});

    EXPECT_EQ(Tabla("SELECT * FROM OFERTAS WHERE CODARTICULO='A1' AND IDCONF='0'"), "A1|0");
}

TEST_F(SentenciasCorrida, LasMarcasSonLasDelGrupoNumerico)
{
    Haz({"CREATE TABLE M_GRUPART (CODGRUPO nvarchar(6), DESCRIPCION nvarchar(50), PARTICIPA SMALLINT)",
         "INSERT INTO M_GRUPART VALUES ('7','Siete',2)",
         "INSERT INTO M_GRUPART VALUES ('8',NULL,2)",
         "INSERT INTO M_GRUPART VALUES ('9','Nueve',22)"});

    EXPECT_EQ(Tabla("SELECT * FROM M_GRUPART WHERE PARTICIPA=2"), "7|Siete|2 8|NULL|2");
}

TEST_F(SentenciasCorrida, UnGrupoDeMarcasEnTextoSeComparaComoNumero)
{
    Haz({"CREATE TABLE M_GRUPART (CODGRUPO nvarchar(6), PARTICIPA nvarchar(2))",
         "INSERT INTO M_GRUPART VALUES ('7','2')", "INSERT INTO M_GRUPART VALUES ('8','02')",
         "INSERT INTO M_GRUPART VALUES ('9','x')"});

    EXPECT_EQ(Tabla("SELECT * FROM M_GRUPART WHERE PARTICIPA=2"), "7|2 8|02");
}

TEST_F(SentenciasCorrida, LosDocumentosDelArticuloSonLosDeLaWeb)
{
    Haz({"CREATE TABLE GESTION_DOC (TIPODOC nvarchar(2), TIPO nvarchar(1), CLAVE nvarchar(20), RUTA nvarchar(255), DESCRIPCION nvarchar(100))",
         "INSERT INTO GESTION_DOC VALUES ('AR','W','A1','C:\\doc\\a.pdf','Manual')",
         "INSERT INTO GESTION_DOC VALUES ('AR','I','A1','C:\\doc\\b.pdf','Interno')",
         "INSERT INTO GESTION_DOC VALUES ('CL','W','A1','C:\\doc\\c.pdf','Cliente')",
         "INSERT INTO GESTION_DOC VALUES ('ar','w','a1','C:\\doc\\d.pdf',NULL)"});

    EXPECT_EQ(Tabla("SELECT * FROM GESTION_DOC WHERE TIPODOC='AR' AND TIPO='W' AND CLAVE='A1'"),
              "AR|W|A1|C:\\doc\\a.pdf|Manual ar|w|a1|C:\\doc\\d.pdf|NULL");
}

TEST_F(SentenciasCorrida, LosValesSinVenderYSinClienteSonLosQueVan)
{
    Haz({"CREATE TABLE VALESDTO (CODVALE nvarchar(20), ESTADO nvarchar(1), CODARTICULOVALE nvarchar(20), CODCLIENTE nvarchar(6), TIPODTO nvarchar(1), VALOR DOUBLE)",
         "CREATE TABLE D_ALBCLI (CODARTICULO nvarchar(20), NSERIE nvarchar(20))",
         "INSERT INTO VALESDTO VALUES ('V1','1','VALE',NULL,'D',10)",
         "INSERT INTO VALESDTO VALUES ('V2','1','VALE',NULL,'I',5)",
         "INSERT INTO VALESDTO VALUES ('V3','2','VALE',NULL,'D',10)",
         "INSERT INTO VALESDTO VALUES ('V4','1','VALE','000012','D',10)",
         "INSERT INTO VALESDTO VALUES ('V5','1','OTRO',NULL,'D',7)",
         "INSERT INTO D_ALBCLI VALUES ('vale','v2')", "INSERT INTO D_ALBCLI VALUES ('VALE','V5')"});

    EXPECT_EQ(
        Tabla(
            "SELECT * FROM VALESDTO WHERE ESTADO='1' AND not exists(SELECT 'C' FROM D_ALBCLI WHERE D_ALBCLI.CODARTICULO=VALESDTO.CODARTICULOVALE AND D_ALBCLI.NSERIE=VALESDTO.CODVALE) AND CODCLIENTE IS NULL"),
        "V1|1|VALE|NULL|D|10 V5|1|OTRO|NULL|D|7");
}

TEST_F(SentenciasCorrida, UnEstadoNumericoDelValeSeComparaConSuTexto)
{
    Haz({"CREATE TABLE VALESDTO (CODVALE nvarchar(20), ESTADO BYTE, CODARTICULOVALE nvarchar(20), CODCLIENTE nvarchar(6))",
         "CREATE TABLE D_ALBCLI (CODARTICULO nvarchar(20), NSERIE nvarchar(20))",
         "INSERT INTO VALESDTO VALUES ('V1',1,'VALE',NULL)",
         "INSERT INTO VALESDTO VALUES ('V2',0,'VALE',NULL)"});

    EXPECT_EQ(
        Tabla(
            "SELECT CODVALE FROM VALESDTO WHERE ESTADO='1' AND not exists(SELECT 'C' FROM D_ALBCLI WHERE D_ALBCLI.CODARTICULO=VALESDTO.CODARTICULOVALE AND D_ALBCLI.NSERIE=VALESDTO.CODVALE) AND CODCLIENTE IS NULL"),
        "V1");
}

class SentenciasExistencias : public testing::Test, public BaseDePrueba {
  protected:
    SentenciasExistencias()
    {
        ahora = QDateTime(QDate(2024, 3, 15), QTime(9, 0));
        Haz({"CREATE TABLE M_EXIST (CODARTICULO nvarchar(20), ANIO SMALLINT, CODALMACEN nvarchar(2), EXISTENCIAS DOUBLE)",
             "INSERT INTO M_EXIST VALUES ('A1',2024,'01',5.5)",
             "INSERT INTO M_EXIST VALUES ('A1',2024,'02',-2)",
             "INSERT INTO M_EXIST VALUES ('A1',2024,'03',100)",
             "INSERT INTO M_EXIST VALUES ('A1',2023,'01',50)",
             "INSERT INTO M_EXIST VALUES ('A2',2024,'01',7)",
             "CREATE TABLE M_EXIST_LOTE (CODARTICULO nvarchar(20), ANIO SMALLINT, CODALMACEN nvarchar(2), LOTE nvarchar(10), IDCONF nvarchar(10), EXISTENCIAS DOUBLE)",
             "CREATE TABLE CONFCAD (CODARTICULO nvarchar(20), ID nvarchar(10), CADENA nvarchar(255))",
             "INSERT INTO CONFCAD VALUES ('A1','11','[COL:ROJ][TAL:00M]')",
             "INSERT INTO CONFCAD VALUES ('A1','12','[COL:AZU][TAL:00M]')",
             "INSERT INTO CONFCAD VALUES ('A2','11','[COL:VER]')",
             "INSERT INTO CONFCAD VALUES ('A1','0','')",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L1','11',3)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'02','L2','11',4)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L3','11',-9)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L4','12',2)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L5','0',70)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2023,'01','L6','12',60)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'03','L7','12',50)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L8','99',40)",
             "INSERT INTO M_EXIST_LOTE VALUES ('A2',2024,'01','L9','11',30)"});
    }
};

TEST_F(SentenciasExistencias, SumaLosAlmacenesElegidosDelAnioEnCurso)
{
    const QString sql =
        "SELECT SUM(EXISTENCIAS) AS EXI from m_Exist WHERE CODARTICULO='%1' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01','02')";

    EXPECT_EQ(Uno(sql.arg("A1")), QVariant(3.5));
    EXPECT_EQ(Tabla(sql.arg("A9")), "NULL");

    ahora = QDateTime(QDate(2023, 12, 31), QTime(23, 59));
    EXPECT_EQ(Uno(sql.arg("a1")), QVariant(50.0));
}

TEST_F(SentenciasExistencias, UnaConfiguracionSumaSusLotesPositivos)
{
    const QString sql =
        "SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='A1' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01','02') AND IDCONF<>'0'  AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA";

    EXPECT_EQ(Tabla(sql + " ORDER BY IDCONF"),
              "A1|[COL:ROJ][TAL:00M]|11|7 A1|[COL:AZU][TAL:00M]|12|2");
    EXPECT_EQ(Filas(sql).valores.size(), 8U);
    EXPECT_EQ(Nombres(sql), (QStringList{"CODARTICULO", "CADENA", "IDCONF", "EXI"}));
}

// Nobody asks for an order: the groups come in that of their terms, texts in that of the language,
// whatever index the tables' own program has made.
TEST_F(SentenciasExistencias, LasConfiguracionesSalenPorSuNumeroYSuCadena)
{
    const QString sql =
        "SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='A1' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01','02') AND IDCONF<>'0'  AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA";
    const QString enOrden =
        "A1|[col:azu]|100|6 A1|[COL:VER]|100|6 A1|[COL:ROJ][TAL:00M]|11|7 A1|[COL:AZU][TAL:00M]|12|2 A1|[COL:ROJ]|9|1";
    Haz({"INSERT INTO CONFCAD VALUES ('A1','9','[COL:ROJ]')",
         "INSERT INTO CONFCAD VALUES ('A1','100','[COL:VER]')",
         "INSERT INTO CONFCAD VALUES ('A1','100','[col:azu]')",
         "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L10','9',1)",
         "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01','L11','100',6)"});

    EXPECT_EQ(Tabla(sql), enOrden);
    Haz({"CREATE INDEX PORARTICULO ON M_EXIST_LOTE (CODARTICULO)",
         "CREATE INDEX PORARTICULO ON CONFCAD (CODARTICULO)"});
    EXPECT_EQ(Tabla(sql), enOrden);
    Haz("CREATE INDEX PORCADENA ON CONFCAD (CODARTICULO,CADENA)");
    EXPECT_EQ(Tabla(sql), enOrden);
    Haz("CREATE UNIQUE INDEX PORCONFIGURACION ON CONFCAD (CODARTICULO,CADENA,ID)");
    EXPECT_EQ(Tabla(sql), enOrden);
    Haz("CREATE INDEX PORNUMERO ON M_EXIST_LOTE (CODARTICULO,IDCONF DESC)");
    EXPECT_EQ(Tabla(sql), enOrden);
    Haz("CREATE UNIQUE INDEX CLAVE ON M_EXIST_LOTE (CODARTICULO,ANIO,CODALMACEN,LOTE)");
    EXPECT_EQ(Tabla(sql), enOrden);
}

TEST_F(SentenciasExistencias, ElNumeroDeConfiguracionPuedeSerNumerico)
{
    Haz({"DROP TABLE M_EXIST_LOTE",
         "CREATE TABLE M_EXIST_LOTE (CODARTICULO nvarchar(20), ANIO SMALLINT, CODALMACEN nvarchar(2), IDCONF INT, EXISTENCIAS DOUBLE)",
         "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01',11,3)",
         "INSERT INTO M_EXIST_LOTE VALUES ('A1',2024,'01',0,70)"});

    EXPECT_EQ(
        Tabla(
            "SELECT M_EXIST_LOTE.CODARTICULO,CADENA,IDCONF,SUM(EXISTENCIAS) AS EXI from m_Exist_Lote INNER JOIN CONFCAD ON  m_exist_lote.codarticulo=confcad.codarticulo and m_exist_lote.idconf=confcad.id WHERE m_exist_lote.CODARTICULO='A1' AND ANIO=YEAR(DATE()) AND CODALMACEN IN ('01') AND IDCONF<>'0' AND EXISTENCIAS>0 GROUP BY M_EXIST_LOTE.CODARTICULO,IDCONF,CADENA"),
        "A1|[COL:ROJ][TAL:00M]|11|3");
}

} // namespace
