// What ALTER TABLE, CREATE and DROP INDEX and SELECT INTO do with a file of Access.
#include "data/access/access.h"
#include "fichero_de_prueba.h"
#include <QFile>
#include <gmock/gmock.h>

using namespace tolmo::data;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

class FormaDeTabla : public testing::Test, public FicheroDePrueba {
  protected:
    FormaDeTabla()
    {
        Haz({"CREATE TABLE T (ID INT, A TEXT(5), N INT, M MEMO, F DATETIME)",
             "CREATE INDEX PorID ON T (ID)", "INSERT INTO T VALUES (1,'12',10,'uno',#01/02/2024#)",
             "INSERT INTO T VALUES (2,NULL,20,NULL,NULL)"});
    }
    std::string Dice(const QString& sql) { return Fallo(sql).toStdString(); }
    /// Runs a script in one transaction, as the tool does. \returns what it fails with
    std::string Guion(const QByteArray& sentencias)
    {
        QFile guion(Carpeta() + "/guion.sql");
        if (!guion.open(QIODevice::WriteOnly) || guion.write(sentencias) < 0)
            return "no script";
        guion.close();
        try {
            EjecutaGuiones(Ruta(), {guion.fileName()});
        } catch (const ErrorSql& error) {
            return error.Descripcion().toStdString();
        }
        return "";
    }
};

TEST_F(FormaDeTabla, UnaColumnaNuevaVaDetrasYEsNulaEnLasFilasQueHay)
{
    Haz({"ALTER TABLE T ADD COLUMN P CURRENCY DEFAULT 2.5", "ALTER TABLE T ADD V YESNO",
         "ALTER TABLE T ADD COLUMN S TEXT(3) NOT NULL", "INSERT INTO T (ID,S) VALUES (3,'x')"});

    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY ID"),
              "1|12|10|uno|02/01/2024|NULL|False|NULL 2|NULL|20|NULL|NULL|NULL|False|NULL "
              "3|NULL|NULL|NULL|NULL|2.5|False|x");
    EXPECT_THAT(Dice("INSERT INTO T (ID) VALUES (4)"),
                StartsWith("El campo T.S no puede quedar sin valor"));
    EXPECT_EQ(Haz("UPDATE T SET N=N+1"), 3) << "nobody asks old rows for what they lack";
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_TRUE(Exporta("T").contains("1|12|11|uno|2024-01-02 00:00:00|NULO|0|NULO\n"));
}

TEST_F(FormaDeTabla, UnContadorNuevoNumeraLasFilas)
{
    Haz({"ALTER TABLE T ADD COLUMN NUM COUNTER", "INSERT INTO T (ID) VALUES (3)"});

    EXPECT_EQ(Tabla("SELECT ID,NUM FROM T ORDER BY ID"), "1|1 2|2 3|3");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(FormaDeTabla, UnaColumnaCambiaDeTipoEnSuSitio)
{
    Haz({"ALTER TABLE T ALTER COLUMN A INT", "ALTER TABLE T ALTER COLUMN N TEXT(10)",
         "ALTER TABLE T ALTER COLUMN F TEXT(20)", "ALTER TABLE T ALTER COLUMN M TEXT(4)"});

    EXPECT_EQ(Nombres("SELECT * FROM T"), QStringList({"ID", "A", "N", "M", "F"}));
    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY ID"), "1|12|10|uno|02/01/2024 2|NULL|20|NULL|NULL");
    EXPECT_EQ(Uno("SELECT A FROM T"), QVariant(12));
    EXPECT_EQ(Uno("SELECT N FROM T"), QVariant("10"));
    EXPECT_THAT(Dice("UPDATE T SET M='cinco'"),
                StartsWith("El texto para el campo T.M tiene 5 caracteres y caben 4"));
    EXPECT_EQ(Faltas(), QStringList());
    // By the numbers that the columns have in the file: those of the new ones, in their order.
    EXPECT_EQ(Exporta("T"), "1|12|10|02/01/2024|uno\n2|NULO|20|NULO|NULO\n");
}

TEST_F(FormaDeTabla, UnCambioDeTipoDejaLasPropiedadesQueNoDice)
{
    using namespace access::mdb;
    PonPropiedades("T", {PropiedadDeTexto("A", "Description", "código"),
                         PropiedadDeTexto("A", "DefaultValue", "\"7\"")});

    Haz("ALTER TABLE T ALTER COLUMN A INT");
    Haz("INSERT INTO T (ID) VALUES (3)");
    EXPECT_EQ(Tabla("SELECT A FROM T WHERE ID=3"), "7");
    Haz("ALTER TABLE T ALTER COLUMN A TEXT(9) DEFAULT 'ocho'");
    Haz("INSERT INTO T (ID) VALUES (4)");

    EXPECT_EQ(Tabla("SELECT A FROM T WHERE ID>2 ORDER BY ID"), "7 ocho");
    const auto paginas = std::make_shared<TransaccionPaginas>(Ruta());
    const access::mdb::Base base(paginas);
    QStringList propiedades;
    for (const Propiedad& p :
         PropiedadesDeTabla(paginas, static_cast<quint32>(base.catalogo().TablaDe("T")->id)))
        propiedades << p.columna + '.' + p.nombre + '=' + TextoDe(p);
    EXPECT_EQ(propiedades, QStringList({"A.Description=código", "A.DefaultValue=\"ocho\""}));
}

TEST_F(FormaDeTabla, UnaConversionQueFallaNoCambiaNada)
{
    Haz("UPDATE T SET A='x' WHERE ID=2");

    EXPECT_EQ(Fallo("ALTER TABLE T ALTER COLUMN A INT"),
              "El campo T.A es un número y no admite \"x\"");

    EXPECT_EQ(Nombres("SELECT * FROM T"), QStringList({"ID", "A", "N", "M", "F"}));
    EXPECT_EQ(Tabla("SELECT ID,A FROM T ORDER BY ID"), "1|12 2|x");
    EXPECT_EQ(Haz("INSERT INTO T (ID,A) VALUES (3,'y')"), 1);
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(FormaDeTabla, UnaColumnaSeQuitaSiNadaLaNombra)
{
    Haz({"ALTER TABLE T DROP COLUMN M", "ALTER TABLE T DROP A"});

    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY ID"), "1|10|02/01/2024 2|20|NULL");
    EXPECT_EQ(Fallo("ALTER TABLE T DROP COLUMN ID"),
              "El campo ID está en el índice PorID de la tabla T (posición 13)");
    EXPECT_EQ(Fallo("ALTER TABLE T ALTER COLUMN id TEXT(5)"),
              "El campo ID está en el índice PorID de la tabla T (posición 13)");
    EXPECT_EQ(Fallo("ALTER TABLE T DROP COLUMN A"),
              "No se conoce el campo A en la tabla T (posición 13)");
    EXPECT_EQ(Fallo("ALTER TABLE T ADD COLUMN n INT"),
              "El campo N ya existe en la tabla T (posición 13)");
    EXPECT_EQ(Fallo("ALTER TABLE T ALTER COLUMN N COUNTER"),
              "El campo N no se convierte en un contador (posición 13)");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(FormaDeTabla, LosIndicesSePonenYSeQuitan)
{
    Haz({"ALTER TABLE T ADD CONSTRAINT PK PRIMARY KEY (ID)",
         "ALTER TABLE T ADD CONSTRAINT U UNIQUE (A)", "CREATE INDEX Fechas ON T (F DESC,N)"});

    EXPECT_THAT(Dice("INSERT INTO T (ID) VALUES (1)"),
                StartsWith("El valor está duplicado en un índice único: T.ID"));
    EXPECT_THAT(Dice("INSERT INTO T (N) VALUES (1)"),
                StartsWith("El campo T.ID no puede quedar sin valor"));
    EXPECT_THAT(Dice("INSERT INTO T (ID,A) VALUES (3,'12')"),
                StartsWith("El valor está duplicado en un índice único: T.A"));
    EXPECT_THAT(Dice("CREATE UNIQUE INDEX Otro ON T (M)"), "") << "Nulls are never equal";
    EXPECT_EQ(Fallo("CREATE INDEX u ON T (N)"), "El índice U ya existe en la tabla T");
    EXPECT_EQ(Fallo("DROP INDEX Nada ON T"), "No se conoce el índice Nada de la tabla T");
    EXPECT_EQ(Fallo("ALTER TABLE T DROP CONSTRAINT Nada"),
              "No se conoce el índice Nada de la tabla T");
    EXPECT_EQ(Faltas(), QStringList());

    Haz({"ALTER TABLE T DROP CONSTRAINT pk", "DROP INDEX U ON T", "DROP INDEX Fechas ON T",
         "DROP INDEX Otro ON T", "INSERT INTO T (ID,A) VALUES (1,'12')",
         "INSERT INTO T (N) VALUES (1)"});
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM T WHERE ID=1"), "2");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(FormaDeTabla, UnaSeleccionHaceUnaTablaConSusTipos)
{
    Haz("INSERT INTO T (ID,N) VALUES (3,30)");
    Haz("SELECT ID,A AS CLAVE,M,F,N*1.5 AS DOBLE,N>15 AS MAYOR,A & 'z' AS UNIDO INTO COPIA FROM T WHERE ID<3 ORDER BY ID DESC");

    EXPECT_EQ(Tabla("SELECT * FROM COPIA ORDER BY ID"),
              "1|12|uno|02/01/2024|15|0|12z 2|NULL|NULL|NULL|30|-1|z");
    QStringList tipos;
    const access::mdb::Tabla copia = access::mdb::Base(Ruta()).AbreTabla(QString("COPIA"));
    for (const auto& columna : copia.definicion().columnas)
        tipos << QString("%1:%2/%3")
                     .arg(columna.nombre)
                     .arg(static_cast<int>(columna.tipo))
                     .arg(columna.largo);
    EXPECT_EQ(tipos, QStringList({"ID:4/4", "CLAVE:10/10", "M:12/0", "F:8/8", "DOBLE:7/8",
                                  "MAYOR:3/2", "UNIDO:10/510"}));
    EXPECT_TRUE(copia.definicion().indicesLogicos.empty());
    EXPECT_EQ(Faltas(), QStringList());
    EXPECT_EQ(Exporta("COPIA").count('\n'), 2);
    EXPECT_EQ(Fallo("SELECT * INTO copia FROM T"), "La tabla copia ya existe");
    EXPECT_EQ(Haz("INSERT INTO COPIA SELECT ID FROM T"), 3);
}

TEST_F(FormaDeTabla, UnaSeleccionQueFallaNoDejaTabla)
{
    Haz("UPDATE T SET M=STRING(300,'m')");

    EXPECT_THAT(Dice("SELECT M & 'x' AS LARGO INTO COPIA FROM T"), testing::Ne(""));

    EXPECT_EQ(Fallo("SELECT * FROM COPIA"), "No se conoce la tabla o consulta COPIA (posición 15)");
    EXPECT_EQ(Faltas(), QStringList());
    Haz("SELECT ID INTO COPIA FROM T");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM COPIA"), "2");
}

TEST_F(FormaDeTabla, LoQueElProgramaHaceParaSiNoLlegaAlFichero)
{
    Haz("SELECT * INTO WKOVTOLMO_COPIA FROM T");

    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM WKOVTOLMO_COPIA"), "2");
    EXPECT_EQ(access::mdb::Base(Ruta()).catalogo().TablaDe("WKOVTOLMO_COPIA"), nullptr);
}

TEST_F(FormaDeTabla, UnGuionEsUnaTransaccion)
{
    EXPECT_EQ(Guion("ALTER TABLE T ADD COLUMN P INT;\nUPDATE T SET P=ID*2;\n"
                    "ALTER TABLE T ALTER COLUMN P TEXT(5);\nALTER TABLE T DROP COLUMN M;\n"
                    "CREATE UNIQUE INDEX PorP ON T (P);\nSELECT ID,P INTO COPIA FROM T;\n"
                    "INSERT INTO COPIA VALUES (3,'seis');\nDROP INDEX PorID ON T;\n"
                    "ALTER TABLE T DROP COLUMN ID;\n"),
              "");

    EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY P"), "12|10|02/01/2024|2 NULL|20|NULL|4");
    EXPECT_EQ(Tabla("SELECT * FROM COPIA ORDER BY ID"), "1|2 2|4 3|seis");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST_F(FormaDeTabla, UnGuionQueFallaNoDejaNada)
{
    for (const char* ultima :
         {"INSERT INTO NOHAY VALUES (1);\n", "ALTER TABLE T ALTER COLUMN A INT;\n",
          "SELECT A,ID/(ID-1) AS X INTO OTRA FROM T;\n"}) {
        Haz("UPDATE T SET A='x' WHERE ID=2");
        EXPECT_NE(Guion(QByteArray("CREATE TABLE U (X INT);\nALTER TABLE T ADD COLUMN P INT;\n"
                                   "UPDATE T SET P=7;\nALTER TABLE T DROP COLUMN M;\n"
                                   "SELECT ID INTO COPIA FROM T;\nDROP INDEX PorID ON T;\n") +
                        ultima),
                  "")
            << ultima;

        EXPECT_EQ(Tabla("SELECT * FROM T ORDER BY ID"), "1|12|10|uno|02/01/2024 2|x|20|NULL|NULL")
            << ultima;
        EXPECT_EQ(Proveedor().Tablas().size(), 1U) << ultima;
        EXPECT_EQ(Fallo("ALTER TABLE T DROP COLUMN ID"),
                  "El campo ID está en el índice PorID de la tabla T (posición 13)");
        EXPECT_EQ(Faltas(), QStringList()) << ultima;
    }
}

TEST_F(FormaDeTabla, OtraSesionVeLaFormaNueva)
{
    const auto otro = Otro();
    EXPECT_EQ(otro->Ejecuta("UPDATE T SET N=N+1"), 2);

    Haz({"ALTER TABLE T DROP COLUMN A", "ALTER TABLE T ADD COLUMN P INT DEFAULT 4"});

    EXPECT_EQ(otro->Ejecuta("INSERT INTO T (ID) VALUES (3)"), 1);
    EXPECT_EQ(Tabla("SELECT * FROM T WHERE ID<>2 ORDER BY ID"),
              "1|11|uno|02/01/2024|NULL 3|NULL|NULL|NULL|4");
    EXPECT_EQ(Faltas(), QStringList());
}

TEST(FormaDeTablaDeAccess, LasRelacionesNoSeRompen)
{
    const QTemporaryDir carpeta;
    const QString fichero = carpeta.filePath("relaciones.mdb");
    ASSERT_TRUE(QFile::copy(
        QStringLiteral(KOV_FUENTES "/tests/data/access/mdb/muestras/2003-indices.mdb"), fichero));
    QFile::setPermissions(fichero, QFile::ReadOwner | QFile::WriteOwner);
    const auto base = AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + fichero);
    const auto dice = [&](const char* sql) {
        try {
            base->Ejecuta(sql);
        } catch (const ErrorSql& error) {
            return error.Descripcion().toStdString();
        }
        return std::string();
    };

    EXPECT_THAT(dice("DROP TABLE Table2"), StartsWith("La tabla está en una relación con otra"));
    EXPECT_THAT(dice("DROP INDEX PrimaryKey ON Table2"),
                StartsWith("El índice es de una relación con otra tabla"));
    EXPECT_THAT(dice("ALTER TABLE Table1 DROP COLUMN otherfk1"),
                StartsWith("El campo otherfk1 está en el índice"));
    EXPECT_EQ(dice("ALTER TABLE Table1 DROP COLUMN data"), "");
    EXPECT_EQ(FicheroDePrueba::Copia(fichero).Faltas(), QStringList());
}

} // namespace
