#include "base_prueba.h"

namespace {

class ConsultasAccess : public testing::Test, public BaseDePrueba {
  protected:
    ConsultasAccess()
    {
        Haz({"CREATE TABLE ART (COD nvarchar(20) PRIMARY KEY, NOMBRE nvarchar(50), PVP CURRENCY, UDS INT, ALTA DATETIME, WEB YESNO, NOTAS NTEXT)",
             "INSERT INTO ART VALUES ('A1','Zapato',10.5,3,#03/15/2024#,TRUE,'uno')",
             "INSERT INTO ART VALUES ('A2','abrigo',20,1,#12/31/2023 18:30:00#,FALSE,'dos')",
             "INSERT INTO ART VALUES ('b3','Bolso',20,NULL,NULL,TRUE,NULL)",
             "INSERT INTO ART VALUES ('B4','ñandú',5.25,7,#01/02/2024#,FALSE,'cuatro')"});
    }
};

TEST_F(ConsultasAccess, LaIgualdadDeTextosNoMiraMayusculas)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='ZAPATO'"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='ÑANDÚ'"), "B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='nandu'"), "");
}

TEST_F(ConsultasAccess, ElOrdenDeTextosNoMiraMayusculas)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY NOMBRE"), "A2 b3 B4 A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY COD DESC"), "B4 b3 A2 A1");
}

TEST_F(ConsultasAccess, TopDaTambienLosEmpatesDelUltimo)
{
    EXPECT_EQ(Tabla("SELECT TOP 1 COD FROM ART ORDER BY PVP DESC"), "A2 b3");
    EXPECT_EQ(Tabla("SELECT TOP 1 COD FROM ART ORDER BY PVP DESC, COD"), "A2");
    EXPECT_EQ(Tabla("SELECT TOP 3 COD FROM ART ORDER BY PVP"), "B4 A1 A2 b3");
    EXPECT_EQ(Tabla("SELECT TOP 2 COD FROM ART"), "A1 A2");
    EXPECT_EQ(
        Tabla(
            "SELECT COD FROM ART WHERE COD IN (SELECT TOP 1 COD FROM ART ORDER BY PVP DESC) ORDER BY COD"),
        "A2 b3");
}

TEST_F(ConsultasAccess, LosTiposSonLosDeAdo)
{
    const auto filas = Filas("SELECT * FROM ART WHERE COD='A1'");
    QList<int> tipos;
    for (const auto& campo : filas.campos)
        tipos << campo.tipo;
    EXPECT_EQ(tipos, (QList<int>{202, 202, 6, 3, 7, 11, 203}));
    EXPECT_EQ(filas.campos[0].ancho, 20);
    EXPECT_EQ(filas.valores[2], QVariant(10.5));
    EXPECT_EQ(filas.valores[3], QVariant(3));
    EXPECT_EQ(filas.valores[4], QVariant(tolmo::data::SinZona(QDate(2024, 3, 15))));
    EXPECT_EQ(filas.valores[5], QVariant(true));
}

TEST_F(ConsultasAccess, LaMismaFormaConOtrosLiteralesDaOtrasFilas)
{
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='A1'"), "Zapato");
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='b4'"), "ñandú");
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='no'"), "");
}

TEST_F(ConsultasAccess, LaMismaFormaConOtraListaDaOtrosCampos)
{
    EXPECT_EQ(Tabla("SELECT PVP*2 FROM ART WHERE COD='A1'"), "21");
    EXPECT_EQ(Tabla("SELECT PVP*3 FROM ART WHERE COD='A1'"), "31.5");
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY 1 DESC"), "B4 b3 A2 A1");
    EXPECT_EQ(Tabla("SELECT COD,UDS FROM ART WHERE UDS>0 ORDER BY 2"), "A2|1 A1|3 B4|7");
    EXPECT_EQ(Tabla("SELECT COD,UDS FROM ART WHERE UDS>0 ORDER BY 1"), "A1|3 A2|1 B4|7");
    EXPECT_EQ(Tabla("SELECT UDS MOD 2,COUNT(*) FROM ART GROUP BY UDS MOD 2 ORDER BY 2"),
              "NULL|1 1|3");
    EXPECT_EQ(Fallo("SELECT UDS MOD 3,COUNT(*) FROM ART GROUP BY UDS MOD 2"),
              "El campo UDS no está en GROUP BY ni en una función de agregado (posición 8)");
}

TEST_F(ConsultasAccess, TopPorCientoRedondeaHaciaArriba)
{
    EXPECT_EQ(Tabla("SELECT TOP 30 PERCENT COD FROM ART ORDER BY COD"), "A1 A2");
    EXPECT_EQ(
        Tabla(
            "SELECT COD FROM (SELECT TOP 30 PERCENT COD FROM ART ORDER BY COD) AS S ORDER BY COD"),
        "A1 A2");
}

TEST_F(ConsultasAccess, DistinctNoMiraMayusculas)
{
    Haz("INSERT INTO ART (COD,NOMBRE) VALUES ('C5','ZAPATO')");

    EXPECT_EQ(Tabla("SELECT DISTINCT PVP FROM ART WHERE PVP>6 ORDER BY PVP"), "10.5 20");
    EXPECT_EQ(Filas("SELECT DISTINCT NOMBRE FROM ART").valores.size(), 4U);
    EXPECT_EQ(Tabla("SELECT DISTINCT TOP 1 PVP FROM ART ORDER BY PVP DESC"), "20");
    EXPECT_EQ(Fallo("SELECT DISTINCT NOMBRE FROM ART ORDER BY PVP"),
              "Con DISTINCT sólo se puede ordenar por los campos de la lista");
}

TEST_F(ConsultasAccess, UnionQuitaRepetidosYUnionAllNo)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE COD='A1' UNION SELECT 'a1' FROM ART").toUpper(),
              "A1");
    EXPECT_EQ(Filas("SELECT COD FROM ART UNION ALL SELECT COD FROM ART").valores.size(), 8U);
    EXPECT_EQ(
        Tabla(
            "SELECT COD,PVP FROM ART WHERE UDS>2 UNION SELECT 'x',UDS FROM ART WHERE UDS=1 ORDER BY PVP DESC"),
        "A1|10.5 B4|5.25 x|1");
    EXPECT_EQ(
        Tabla(
            "SELECT NOMBRE FROM ART WHERE COD IN ('A1','B4') UNION SELECT 'oso' FROM ART ORDER BY 1"),
        "ñandú oso Zapato");
    EXPECT_EQ(Tabla("SELECT TOP 1 COD FROM ART UNION ALL SELECT 'z' FROM ART WHERE COD='A1'"),
              "A1 z");
    EXPECT_EQ(
        Tabla(
            "(SELECT COD FROM ART WHERE COD='A1') UNION (SELECT COD FROM ART WHERE COD='A2') ORDER BY COD DESC"),
        "A2 A1");
    EXPECT_EQ(Fallo("SELECT COD FROM ART UNION SELECT COD,PVP FROM ART"),
              "Las partes de UNION no dan el mismo número de campos");
}

TEST_F(ConsultasAccess, UnaUnionDeFechaYTextoDaElTextoDeLaFecha)
{
    EXPECT_EQ(
        Tabla(
            "SELECT ALTA FROM ART WHERE COD='A1' UNION ALL SELECT NOMBRE FROM ART WHERE COD='A2'"),
        "15/03/2024 abrigo");
}

TEST_F(ConsultasAccess, UnCampoQueFaltaNombraSuTabla)
{
    EXPECT_EQ(Fallo("SELECT NADA FROM ART"), "No se conoce el campo NADA (posición 8)");
    EXPECT_EQ(Fallo("SELECT ART.NADA FROM ART"), "No se conoce el campo ART.NADA (posición 8)");
    EXPECT_EQ(Fallo("SELECT OTRA.COD FROM ART"),
              "No se conoce la tabla OTRA en esta sentencia (posición 8)");
    EXPECT_EQ(Fallo("SELECT * FROM OTRA"), "No se conoce la tabla o consulta OTRA (posición 15)");
    EXPECT_EQ(Fallo("SELECT OTRA.* FROM ART"),
              "No se conoce la tabla OTRA en esta sentencia (posición 8)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART WHERE X='1'"), "No se conoce el campo X (posición 27)");
    EXPECT_EQ(Fallo("SELECT \"COD\" FROM ART WHERE \"A1\"=COD AND NOHAY"),
              "No se conoce el campo NOHAY (posición 42)");
}

TEST_F(ConsultasAccess, UnErrorDeSintaxisDiceDonde)
{
    EXPECT_EQ(Fallo("SELEC * FROM ART"), "Error de sintaxis cerca de \"*\" (posición 7)");
    EXPECT_EQ(Fallo("SELECT * FORM ART"), "Error de sintaxis cerca de \"FORM\" (posición 10)");
    EXPECT_EQ(
        Fallo("SELECT COD FROM"),
        "Error de sintaxis: la sentencia acaba antes de tiempo, se esperaba una tabla (posición 16)");
    EXPECT_EQ(
        Fallo("SELECT COD FROM ART WHERE"),
        "Error de sintaxis: la sentencia acaba antes de tiempo, se esperaba una expresión (posición 26)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART WHERE (COD='A1'"),
              "Error de sintaxis: la sentencia acaba antes de tiempo, se esperaba ) (posición 36)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART WHERE COD='A1' GROUP COD"),
              "Error de sintaxis cerca de \"COD\", se esperaba BY (posición 42)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART; SELECT 1"),
              "Error de sintaxis cerca de \"SELECT\" (posición 22)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART WHERE COD=?"),
              "Error de sintaxis: no se conoce el signo \"?\" (posición 31)");
    EXPECT_EQ(Fallo("SELECT [COD FROM ART"),
              "Error de sintaxis: falta el corchete que cierra el nombre (posición 8)");
    EXPECT_EQ(Fallo("SELECT COD FROM ART LIMIT 1"),
              "Error de sintaxis cerca de \"1\" (posición 27)");
    EXPECT_EQ(
        Fallo(""),
        "Error de sintaxis: la sentencia acaba antes de tiempo, se esperaba una sentencia o el nombre de una consulta (posición 1)");
}

TEST_F(ConsultasAccess, LosNombresEntreCorchetesYConAdmiracion)
{
    Haz({"CREATE TABLE [Lista de precios] ([Precio neto] CURRENCY, [Select] nvarchar(5))",
         "INSERT INTO [Lista de precios] VALUES (7.5,'x')"});

    EXPECT_EQ(
        Tabla(
            "SELECT [Precio neto],[Lista de precios].[Select],[Lista de precios]![Precio neto]*2 AS [El doble] FROM [Lista de precios]"),
        "7.5|x|15");
    EXPECT_EQ(Nombres("SELECT [Precio neto]*2 AS [El doble],1 FROM [Lista de precios]"),
              (QStringList{"El doble", "Expr1001"}));
    EXPECT_EQ(Tabla("SELECT ART!COD FROM ART WHERE [ART].[COD]='A1';"), "A1");
}

TEST_F(ConsultasAccess, UnAliasValeEnOtroElementoYEnElOrden)
{
    EXPECT_EQ(
        Tabla("SELECT COD,PVP*2 AS DOBLE,DOBLE+1 AS MAS FROM ART WHERE PVP<20 ORDER BY DOBLE"),
        "B4|10.5|11.5 A1|21|22");
    EXPECT_EQ(Fallo("SELECT X+1 AS X FROM ART"), "No se conoce el campo X (posición 8)");
    // Where a field has the alias' name the field is meant.
    EXPECT_EQ(Tabla("SELECT 'z' & COD AS NOMBRE,COD FROM ART ORDER BY NOMBRE"),
              "zA2|A2 zb3|b3 zB4|B4 zA1|A1");
}

TEST_F(ConsultasAccess, UnaFechaSeComparaConFechasYConTextos)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA=#03/15/2024#"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA='15/03/2024'"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA='2024-03-15'"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA=Format('15/03/2024','dd/mm/yyyy')"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA<'02/01/2024' ORDER BY COD"), "A2");
    EXPECT_EQ(
        Tabla("SELECT COD FROM ART WHERE ALTA BETWEEN #01/01/2024# AND '31/12/2024' ORDER BY COD"),
        "A1 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA IN (#03/15/2024#,'02/01/2024') ORDER BY COD"),
              "A1 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE ALTA>DATE()-30"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE YEAR(ALTA)=2023"), "A2");
    EXPECT_EQ(Fallo("SELECT COD FROM ART WHERE ALTA='ayer'"),
              "No coinciden los tipos de datos: \"ayer\" no es una fecha");
}

TEST_F(ConsultasAccess, UnNumeroSeComparaConTextosPorSuValor)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE UDS='03'"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE PVP='20.0' ORDER BY COD"), "A2 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE UDS='A1'"), "");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE UDS IN ('1','7') ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE PVP IN (SELECT '20' FROM ART) ORDER BY COD"),
              "A2 b3");
}

TEST_F(ConsultasAccess, LaVerdadVaAntesQueLaMentira)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB<FALSE ORDER BY COD"), "A1 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB<TRUE ORDER BY COD"), "");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB>=FALSE ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB>(UDS=1) ORDER BY COD"), "A2");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB BETWEEN TRUE AND TRUE ORDER BY COD"), "A1 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY WEB, COD"), "A1 b3 A2 B4");
}

TEST_F(ConsultasAccess, LasVerdadesSirvenSolasYComparadas)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB ORDER BY COD"), "A1 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOT WEB ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB=TRUE ORDER BY COD"), "A1 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB=-1 ORDER BY COD"), "A1 b3");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB=0 AND True ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE WEB=(UDS=3) ORDER BY COD"), "A1 A2 B4");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM ART WHERE FALSE"), "0");
    EXPECT_EQ(Tabla("SELECT SUM(WEB) FROM ART"), "-2");
}

TEST_F(ConsultasAccess, ElNuloNoEsIgualNiDistinto)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE UDS<>3 ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOT UDS=3 ORDER BY COD"), "A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE UDS IS NULL OR ALTA IS NULL"), "b3");
    EXPECT_EQ(
        Tabla("SELECT COD FROM ART WHERE NOTAS IS NOT NULL AND ISNULL(UDS)=FALSE ORDER BY COD"),
        "A1 A2 B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY UDS"), "b3 A2 A1 B4");
}

class ReunionesAccess : public testing::Test, public BaseDePrueba {
  protected:
    ReunionesAccess()
    {
        Haz({"CREATE TABLE A (ID INT, X nvarchar(5))",
             "CREATE TABLE B (ID INT, X nvarchar(5), Y INT)",
             "CREATE TABLE C (ID INT, Z nvarchar(5))", "INSERT INTO A VALUES (1,'a1')",
             "INSERT INTO A VALUES (2,'a2')", "INSERT INTO A VALUES (3,'a3')",
             "INSERT INTO B VALUES (2,'b2',20)", "INSERT INTO B VALUES (2,'b2b',21)",
             "INSERT INTO B VALUES (3,'b3',30)", "INSERT INTO B VALUES (4,'b4',40)",
             "INSERT INTO C VALUES (3,'c3')", "INSERT INTO C VALUES (4,'c4')"});
    }
};

TEST_F(ReunionesAccess, LaInternaSoloDaLosQueCasan)
{
    EXPECT_EQ(Tabla("SELECT A.ID,B.Y FROM A INNER JOIN B ON A.ID=B.ID ORDER BY B.Y"),
              "2|20 2|21 3|30");
    EXPECT_EQ(Tabla("SELECT A.ID,Y FROM A,B WHERE A.ID=B.ID ORDER BY Y"), "2|20 2|21 3|30");
}

TEST_F(ReunionesAccess, LaIzquierdaDaLosQueNoCasan)
{
    EXPECT_EQ(Tabla("SELECT A.ID,B.Y FROM A LEFT JOIN B ON A.ID=B.ID ORDER BY A.ID,B.Y"),
              "1|NULL 2|20 2|21 3|30");
    EXPECT_EQ(Tabla("SELECT A.ID FROM A LEFT OUTER JOIN B ON A.ID=B.ID WHERE B.ID IS NULL"), "1");
    EXPECT_EQ(Tabla("SELECT A.ID,B.Y FROM A LEFT JOIN B ON (A.ID=B.ID AND B.Y>20) ORDER BY A.ID"),
              "1|NULL 2|21 3|30");
}

TEST_F(ReunionesAccess, LaDerechaDaLosDelOtroLado)
{
    EXPECT_EQ(Tabla("SELECT A.X,B.Y FROM A RIGHT JOIN B ON A.ID=B.ID ORDER BY B.Y"),
              "a2|20 a2|21 a3|30 NULL|40");
}

TEST_F(ReunionesAccess, LasAnidadasVanPorSusParentesis)
{
    EXPECT_EQ(
        Tabla(
            "SELECT A.ID,B.Y,C.Z FROM (A LEFT JOIN B ON A.ID=B.ID) LEFT JOIN C ON B.ID=C.ID ORDER BY A.ID,B.Y"),
        "1|NULL|NULL 2|20|NULL 2|21|NULL 3|30|c3");
    EXPECT_EQ(
        Tabla(
            "SELECT A.ID,B.Y,C.Z FROM A LEFT JOIN (B INNER JOIN C ON B.ID=C.ID) ON A.ID=B.ID ORDER BY A.ID"),
        "1|NULL|NULL 2|NULL|NULL 3|30|c3");
    EXPECT_EQ(Tabla("SELECT C.Z,A.X,Y FROM C, A INNER JOIN B ON A.ID=B.ID WHERE C.ID=B.ID"),
              "c3|a3|30");
    EXPECT_EQ(
        Tabla("SELECT C.Z,A.X,Y FROM C, A RIGHT JOIN B ON A.ID=B.ID WHERE C.ID=B.ID ORDER BY Y"),
        "c3|a3|30 c4|NULL|40");
}

TEST_F(ReunionesAccess, UnNombreDeDosTablasSeCalificaYSoloEse)
{
    EXPECT_EQ(Nombres("SELECT * FROM A INNER JOIN B ON A.ID=B.ID"),
              (QStringList{"A.ID", "A.X", "B.ID", "B.X", "Y"}));
    EXPECT_EQ(Nombres("SELECT P.*,Q.Y FROM A AS P INNER JOIN B Q ON P.ID=Q.ID"),
              (QStringList{"ID", "X", "Y"}));
    EXPECT_EQ(Nombres("SELECT P.X,Q.X FROM A AS P INNER JOIN B AS Q ON P.ID=Q.ID"),
              (QStringList{"P.X", "Q.X"}));
    EXPECT_EQ(Nombres("SELECT 'n' AS X,* FROM A"), (QStringList{"X", "ID", "A.X"}));
    EXPECT_EQ(Nombres("SELECT *,'n' AS x FROM A"), (QStringList{"ID", "A.X", "x"}));
    EXPECT_EQ(Nombres("SELECT X,* FROM A"), (QStringList{"X", "ID", "A.X"}));
    EXPECT_EQ(Fallo("SELECT X FROM A INNER JOIN B ON A.ID=B.ID"),
              "El campo X puede ser de más de una tabla (posición 8)");
    EXPECT_EQ(Fallo("SELECT 1 FROM A INNER JOIN A ON A.ID=A.ID"),
              "El nombre A está dos veces en FROM (posición 28)");
}

TEST_F(ReunionesAccess, UnNombreCalificadoSeLeeDesdeFuera)
{
    EXPECT_EQ(
        Tabla(
            "SELECT S.[B.X] FROM (SELECT * FROM A INNER JOIN B ON A.ID=B.ID) AS S ORDER BY S.[B.X]"),
        "b2 b2b b3");
}

TEST_F(ReunionesAccess, LasSubconsultasVenLaFilaDeFuera)
{
    EXPECT_EQ(Tabla("SELECT ID,(SELECT SUM(Y) FROM B WHERE B.ID=A.ID) AS S FROM A ORDER BY ID"),
              "1|NULL 2|41 3|30");
    EXPECT_EQ(
        Tabla(
            "SELECT ID FROM A WHERE EXISTS(SELECT 1 FROM B WHERE B.ID=A.ID AND Y>20) ORDER BY ID"),
        "2 3");
    EXPECT_EQ(Tabla("SELECT ID FROM A WHERE ID NOT IN (SELECT ID FROM B) ORDER BY ID"), "1");
    EXPECT_EQ(Tabla("SELECT X FROM A WHERE X IN (SELECT 'A2' FROM B)"), "a2");
    EXPECT_EQ(Tabla("SELECT ID FROM A WHERE ID=(SELECT MAX(ID) FROM A)"), "3");
    EXPECT_EQ(Fallo("SELECT ID FROM A WHERE ID IN (SELECT ID,Y FROM B)"),
              "La subconsulta de IN ha de dar un solo campo (posición 27)");
}

TEST_F(ReunionesAccess, DistinctrowDaCadaRegistroUnaVez)
{
    EXPECT_EQ(Tabla("SELECT DISTINCTROW A.X FROM A INNER JOIN B ON A.ID=B.ID ORDER BY A.X"),
              "a2 a3");
    EXPECT_EQ(Tabla("SELECT A.X FROM A INNER JOIN B ON A.ID=B.ID ORDER BY A.X"), "a2 a2 a3");
    EXPECT_EQ(Tabla("SELECT DISTINCTROW A.X,B.Y FROM A INNER JOIN B ON A.ID=B.ID ORDER BY B.Y"),
              "a2|20 a2|21 a3|30");
    EXPECT_EQ(Tabla("SELECT DISTINCTROW X FROM A ORDER BY X DESC"), "a3 a2 a1");
}

TEST_F(ReunionesAccess, SelectConTopYSinOrdenEnUnaSubconsulta)
{
    EXPECT_EQ(Tabla("SELECT S.X FROM (SELECT TOP 2 * FROM B ORDER BY ID) AS S ORDER BY S.X"),
              "b2 b2b");
    EXPECT_EQ(Tabla("SELECT S.X FROM (SELECT TOP 3 * FROM B) AS S ORDER BY S.X"), "b2 b2b b3");
}

TEST_F(ReunionesAccess, LasVistasYLasConsultasGuardadasSeLeenPorSuNombre)
{
    Haz("CREATE VIEW [Los de B] AS SELECT ID,SUM(Y) AS TOTAL FROM B GROUP BY ID");
    Haz("CREATE VIEW V2 AS SELECT A.X,T.TOTAL FROM A INNER JOIN [Los de B] AS T ON A.ID=T.ID");

    EXPECT_EQ(Tabla("SELECT * FROM [los de b] WHERE TOTAL>30 ORDER BY TOTAL"), "4|40 2|41");
    EXPECT_EQ(Tabla("SELECT * FROM V2 ORDER BY X"), "a2|41 a3|30");
    EXPECT_EQ(Fallo("INSERT INTO V2 VALUES ('x',1)"),
              "La consulta V2 no se puede modificar (posición 13)");
    Haz("DROP VIEW V2");
    EXPECT_EQ(Fallo("SELECT * FROM V2"), "No se conoce la tabla o consulta V2 (posición 15)");
}

TEST_F(ReunionesAccess, UnaVistaDelMotorSeLeeComoUnaConsulta)
{
    if (EnFicherosDeAccess())
        GTEST_SKIP() << "the queries of a file of Access are its own";
    Proveedor().Motor().Ejecuta("CREATE VIEW VS AS SELECT ID, X || '!' AS XX FROM A WHERE ID > 1");

    const auto filas = Otro()->Consulta("SELECT * FROM VS WHERE XX='A2!'", false);

    ASSERT_EQ(filas.valores.size(), 2U);
    EXPECT_EQ(filas.valores[0], QVariant(2));
    EXPECT_EQ(filas.valores[1], QVariant("a2!"));
    EXPECT_EQ(filas.campos[1].tipo, 202);
}

TEST_F(ReunionesAccess, UnaConsultaGuardadaQueSeNombraASiMismaEsUnError)
{
    Haz("CREATE VIEW V AS SELECT * FROM W");
    Haz("CREATE VIEW W AS SELECT * FROM V");

    EXPECT_TRUE(Fallo("SELECT * FROM V").startsWith("No se puede leer de la consulta "));
}

TEST_F(ReunionesAccess, SelectIntoHaceUnaTablaConSusTipos)
{
    Haz("SELECT A.ID,A.X & '-' & B.X AS NOMBRE,Y/2 AS MITAD,#03/15/2024# AS F INTO NUEVA FROM A INNER JOIN B ON A.ID=B.ID WHERE Y>20 ORDER BY Y DESC");

    EXPECT_EQ(Tabla("SELECT * FROM NUEVA"), "3|a3-b3|15|15/03/2024 2|a2-b2b|10.5|15/03/2024");
    QList<int> tipos;
    for (const auto& campo : Filas("SELECT * FROM NUEVA").campos)
        tipos << campo.tipo;
    EXPECT_EQ(tipos, (QList<int>{3, 202, 5, 7}));
    EXPECT_EQ(Fallo("SELECT * INTO NUEVA FROM A"), "La tabla NUEVA ya existe");
}

} // namespace
