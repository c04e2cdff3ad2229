// What a file of Access keeps beside its tables: defaults, rules, and what a column must hold.
#include "fichero_de_prueba.h"
#include <QRegularExpression>
#include <gmock/gmock.h>

using namespace tolmo::data;
using testing::HasSubstr;

namespace {

class Predeterminados : public testing::Test, public FicheroDePrueba {
  protected:
    Predeterminados()
    {
        Haz("CREATE TABLE T (ID INT, N INT, A TEXT(20), M MEMO, D DOUBLE, C CURRENCY, F DATETIME, B YESNO, G GUID)");
    }
    void Pon(const QString& columna, const QString& expresion)
    {
        PonPropiedad("T", columna, "DefaultValue", expresion);
    }
};

struct Predeterminado {
    const char* columna;
    const char* expresion;
    const char* valor;
};
void PrintTo(const Predeterminado& p, std::ostream* salida)
{
    *salida << p.columna << " = " << p.expresion;
}

class CadaPredeterminado : public Predeterminados,
                           public testing::WithParamInterface<Predeterminado> {};

TEST_P(CadaPredeterminado, LoTomaLaFilaQueNoNombraLaColumna)
{
    Pon(GetParam().columna, GetParam().expresion);

    Haz("INSERT INTO T (ID) VALUES (1)");

    EXPECT_EQ(Tabla(QStringLiteral("SELECT ") + GetParam().columna + " FROM T"),
              QString::fromUtf8(GetParam().valor));
    EXPECT_EQ(Faltas(), QStringList());
}

// The clock of the tests stands at 15/03/2024 9:05:07.
INSTANTIATE_TEST_SUITE_P(
    DeAccess, CadaPredeterminado,
    testing::Values(
        Predeterminado{"N", "0", "0"}, Predeterminado{"N", "-7", "-7"},
        Predeterminado{"N", "=1+2", "3"}, Predeterminado{"N", " 5 ", "5"},
        Predeterminado{"A", "\"abc\"", "abc"}, Predeterminado{"A", "'abc'", "abc"},
        Predeterminado{"A", "=\"di \"\"a\"\"\"", "di \"a\""}, Predeterminado{"A", "\"007\"", "007"},
        Predeterminado{"A", "12", "12"}, Predeterminado{"A", "\"\"", ""},
        Predeterminado{"M", "\"nota\"", "nota"}, Predeterminado{"D", "1.5", "1.5"},
        Predeterminado{"C", "2.25", "2.25"}, Predeterminado{"F", "=Date()", "15/03/2024"},
        Predeterminado{"F", "Date()", "15/03/2024"}, Predeterminado{"F", "=Date", "15/03/2024"},
        Predeterminado{"F", "Now()", "15/03/2024 9:05:07"},
        Predeterminado{"F", "#1/2/2000#", "02/01/2000"},
        Predeterminado{"F", "DateAdd(\"d\",30,Date())", "14/04/2024"},
        Predeterminado{"A", "=Format(Date(),\"yyyymm\")", "202403"},
        Predeterminado{"B", "Yes", "True"}, Predeterminado{"B", "=On", "True"},
        Predeterminado{"B", "-1", "True"}, Predeterminado{"B", "True", "True"},
        Predeterminado{"B", "1", "True"}, Predeterminado{"B", "No", "False"},
        Predeterminado{"B", "False", "False"}, Predeterminado{"B", "Off", "False"},
        Predeterminado{"B", "0", "False"}, Predeterminado{"N", "Yes", "-1"},
        Predeterminado{"N", "=DLookup(\"N\",\"T\")", "NULL"}, Predeterminado{"N", "[ID]", "NULL"},
        Predeterminado{"A", "abc", "NULL"}, Predeterminado{"A", "\"abc", "NULL"}));

TEST_F(Predeterminados, UnaColumnaNombradaTieneLoQueSeLeDa)
{
    Pon("N", "5");
    Pon("A", "\"x\"");
    Haz({"INSERT INTO T (ID,N,A) VALUES (1,NULL,'y')",
         "INSERT INTO T VALUES (2,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL)",
         "INSERT INTO T (A) SELECT 'z' FROM T WHERE ID=1", "UPDATE T SET ID=3 WHERE A='z'"});

    EXPECT_EQ(Tabla("SELECT ID,N,A FROM T ORDER BY ID"), "1|NULL|y 2|NULL|NULL 3|5|z");
}

TEST_F(Predeterminados, UnaSeleccionTomaElMomentoDeCadaInsercion)
{
    Pon("F", "Now()");
    Haz("INSERT INTO T (ID) VALUES (1)");
    ahora = ahora.addDays(1);
    Haz("INSERT INTO T (ID) VALUES (2)");
    Haz("INSERT INTO T (ID) SELECT ID+2 FROM T");

    EXPECT_EQ(Tabla("SELECT ID,DAY(F) FROM T ORDER BY ID"), "1|15 2|16 3|16 4|16");
}

TEST_F(Predeterminados, UnGuidEsDistintoEnCadaFila)
{
    Pon("G", "GenGUID()");
    Haz({"INSERT INTO T (ID) VALUES (1)", "INSERT INTO T (ID) SELECT ID+1 FROM T",
         "INSERT INTO T (ID) SELECT ID+2 FROM T"});

    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM (SELECT DISTINCT G FROM T)"), "4");
    EXPECT_TRUE(QRegularExpression("^\\{[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}\\}$")
                    .match(Texto(Uno("SELECT G FROM T")))
                    .hasMatch());
}

TEST_F(Predeterminados, UnConjuntoAbiertoLosPoneTambien)
{
    Pon("N", "5");
    Pon("A", "\"x\"");
    const auto filas = Filas("SELECT * FROM T", true);

    Proveedor().Inserta(filas, {{"ID", 1}, {"A", Nulo()}});
    Proveedor().Inserta(filas, {});

    EXPECT_EQ(Tabla("SELECT ID,N,A FROM T ORDER BY ID"), "NULL|5|x 1|5|NULL");
}

TEST_F(Predeterminados, LoQueUnoCambiaLoVeLaSiguienteSentencia)
{
    Pon("N", "5");
    Haz("INSERT INTO T (ID) VALUES (1)");
    const auto otro = Otro();
    otro->Ejecuta("DROP TABLE T");
    otro->Ejecuta("CREATE TABLE T (ID INT, N INT DEFAULT 6)");

    Haz("INSERT INTO T (ID) VALUES (2)");

    EXPECT_EQ(Tabla("SELECT N FROM T"), "6");
}

TEST_F(Predeterminados, UnoQueNoSeEntiendeSoloSeRechazaDondeHaceFalta)
{
    using namespace access::mdb;
    PonPropiedades("T", {PropiedadDeTexto("N", propiedad::Predeterminado, "=DLookup(\"N\",\"T\")"),
                         PropiedadLogica("N", propiedad::Obligatoria, true)});

    EXPECT_EQ(Fallo("INSERT INTO T (ID) VALUES (1)"),
              "El valor predeterminado del campo T.N no se entiende: =DLookup(\"N\",\"T\")");
    EXPECT_EQ(Haz("INSERT INTO T (ID,N) VALUES (1,2)"), 1);
}

TEST_F(Predeterminados, UnoQueNoCabeEnSuColumnaEsUnError)
{
    Pon("N", "\"abc\"");

    EXPECT_EQ(Fallo("INSERT INTO T (ID) VALUES (1)"),
              "El campo T.N es un número y no admite \"abc\"");
}

TEST_F(Predeterminados, LosDeUnaTablaNuevaLosLeeCualquiera)
{
    Haz({"CREATE TABLE U (ID INT, A TEXT(20) DEFAULT 'di \"a\"', N INT DEFAULT -3, D DOUBLE DEFAULT 1.5, B YESNO DEFAULT TRUE, F DATETIME DEFAULT #03/15/2024#, S INT NOT NULL DEFAULT 0, V YESNO)",
         "INSERT INTO U (ID) VALUES (1)"});

    EXPECT_EQ(Tabla("SELECT * FROM U"), "1|di \"a\"|-3|1.5|True|15/03/2024|0|False");
    const access::mdb::Base base(Ruta());
    QStringList propiedades;
    const auto paginas = std::make_shared<access::mdb::TransaccionPaginas>(Ruta());
    for (const auto& p : access::mdb::PropiedadesDeTabla(
             paginas, static_cast<quint32>(base.catalogo().TablaDe("U")->id)))
        propiedades << p.columna + '.' + p.nombre +
                           (p.tipo == 1 ? QString() : '=' + access::mdb::TextoDe(p));
    EXPECT_EQ(propiedades,
              QStringList({"A.DefaultValue=\"di \"\"a\"\"\"", "N.DefaultValue=-3",
                           "D.DefaultValue=1.5", "B.DefaultValue=True",
                           "F.DefaultValue=#03/15/2024#", "S.DefaultValue=0", "S.Required"}));
    QProcess proceso;
    proceso.start("mdb-prop", {Ruta(), "U"});
    ASSERT_TRUE(proceso.waitForFinished());
    const std::string suyas = proceso.readAllStandardOutput().toStdString();
    EXPECT_THAT(suyas, HasSubstr("DefaultValue: -3"));
    EXPECT_THAT(suyas, HasSubstr("DefaultValue: #03/15/2024#"));
    EXPECT_THAT(suyas, HasSubstr("Required: yes"));
}

class Exigencias : public testing::Test, public FicheroDePrueba {
  protected:
    Exigencias()
    {
        Haz({"CREATE TABLE T (ID INT, N INT, A TEXT(20), M MEMO, F DATETIME, B YESNO)",
             "INSERT INTO T VALUES (1,10,'a','m',#01/01/2024#,TRUE)"});
    }
    void Regla(const QString& columna, const QString& expresion, const QString& aviso = {})
    {
        using namespace access::mdb;
        std::vector<Propiedad> propiedades{PropiedadDeTexto(columna, propiedad::Regla, expresion)};
        if (!aviso.isEmpty())
            propiedades.push_back(PropiedadDeTexto(columna, propiedad::TextoRegla, aviso));
        PonPropiedades("T", propiedades);
    }
};

TEST_F(Exigencias, UnTextoVacioSoloDondeSeAdmite)
{
    PonPropiedades("T", {access::mdb::PropiedadLogica("A", "AllowZeroLength", false),
                         access::mdb::PropiedadLogica("M", "AllowZeroLength", false)});

    EXPECT_THAT(Fallo("INSERT INTO T (A) VALUES ('')").toStdString(),
                HasSubstr("El campo T.A no admite un texto vacío"));
    EXPECT_THAT(Fallo("UPDATE T SET M=''").toStdString(),
                HasSubstr("El campo T.M no admite un texto vacío"));
    EXPECT_EQ(Haz("INSERT INTO T (ID,A,M) VALUES (2,NULL,' ')"), 1);
    EXPECT_EQ(Tabla("SELECT ID,A,M FROM T ORDER BY ID"), "1|a|m 2|NULL| ");
}

TEST_F(Exigencias, UnCampoObligatorioNoQuedaSinValor)
{
    PonPropiedades("T", {access::mdb::PropiedadLogica("N", "Required", true)});

    EXPECT_THAT(Fallo("INSERT INTO T (ID) VALUES (2)").toStdString(),
                HasSubstr("El campo T.N no puede quedar sin valor"));
    EXPECT_THAT(Fallo("UPDATE T SET N=NULL").toStdString(),
                HasSubstr("El campo T.N no puede quedar sin valor"));
    EXPECT_EQ(Tabla("SELECT ID,N FROM T"), "1|10");
}

struct ReglaDeColumna {
    const char* regla;
    const char* si; ///< values that keep it, parted by blanks
    const char* no; ///< and that don't
};
void PrintTo(const ReglaDeColumna& r, std::ostream* salida)
{
    *salida << r.regla;
}

class ReglasDeNumero : public Exigencias, public testing::WithParamInterface<ReglaDeColumna> {};

TEST_P(ReglasDeNumero, SoloPasanLosValoresQueLaCumplen)
{
    Regla("N", QString::fromUtf8(GetParam().regla), "No vale");

    for (const QString& valor : QString(GetParam().si).split(' ')) {
        EXPECT_EQ(Fallo("UPDATE T SET N=" + valor), "") << valor.toStdString();
        EXPECT_EQ(Fallo("INSERT INTO T (ID,N) VALUES (9," + valor + ")"), "")
            << valor.toStdString();
    }
    Haz("DELETE FROM T WHERE ID=9");
    const QString antes = Tabla("SELECT ID,N FROM T");
    for (const QString& valor : QString(GetParam().no).split(' ')) {
        EXPECT_EQ(Fallo("UPDATE T SET N=" + valor), "No vale") << valor.toStdString();
        if (valor != "NULL") {
            EXPECT_EQ(Fallo("INSERT INTO T (ID,N) VALUES (9," + valor + ")"), "No vale")
                << valor.toStdString();
        }
    }
    EXPECT_EQ(Tabla("SELECT ID,N FROM T"), antes);
}

INSTANTIATE_TEST_SUITE_P(DeAccess, ReglasDeNumero,
                         testing::Values(ReglaDeColumna{">0", "1 99", "0 -1 NULL"},
                                         ReglaDeColumna{"<>8", "7 9", "8 NULL"},
                                         ReglaDeColumna{"<>8 Or Is Null", "7 NULL", "8"},
                                         ReglaDeColumna{">=0 And <=100", "0 100", "-1 101"},
                                         ReglaDeColumna{"Between 1 And 10", "1 10", "0 11"},
                                         ReglaDeColumna{"Not Between 1 And 10", "0 11", "1 10"},
                                         ReglaDeColumna{"Between 1 And 10 And <>5", "4 6", "5 11"},
                                         ReglaDeColumna{"In (1,2,3)", "1 3", "4"},
                                         ReglaDeColumna{"Not In (1,2,3)", "4", "1 3"},
                                         ReglaDeColumna{"1 Or 2 Or -3", "1 2 -3", "3"},
                                         ReglaDeColumna{"=7", "7", "8"},
                                         ReglaDeColumna{"Is Null Or (>0 And <5)", "NULL 4", "0 5"},
                                         ReglaDeColumna{"Not >5", "5", "6"},
                                         ReglaDeColumna{"[N]>0", "1", "0"},
                                         ReglaDeColumna{"[N] Mod 2=0", "2", "3"},
                                         ReglaDeColumna{"Is Not Null", "0", "NULL"}));

TEST_F(Exigencias, LasReglasDeTextoComparanComoAccess)
{
    Regla("A", "Like \"A*\" Or \"Z\"");

    EXPECT_EQ(Haz("UPDATE T SET A='abc'"), 1);
    EXPECT_EQ(Haz("UPDATE T SET A='z'"), 1);
    EXPECT_EQ(Fallo("UPDATE T SET A='b'"),
              "Los valores no cumplen la regla de validación de T.A: Like \"A*\" Or \"Z\"");
    EXPECT_EQ(Fallo("INSERT INTO T (A) VALUES ('za')"),
              "Los valores no cumplen la regla de validación de T.A: Like \"A*\" Or \"Z\"");
    EXPECT_EQ(Tabla("SELECT A FROM T"), "z");
}

TEST_F(Exigencias, LasReglasDeFechaMiranElReloj)
{
    Regla("F", "<=Date() And >#1/1/2000#", "Fecha");

    EXPECT_EQ(Haz("UPDATE T SET F=#03/15/2024#"), 1);
    EXPECT_EQ(Fallo("UPDATE T SET F=#03/16/2024#"), "Fecha");
    EXPECT_EQ(Fallo("UPDATE T SET F=#01/01/2000#"), "Fecha");
}

TEST_F(Exigencias, NadieMiraUnaReglaDeLoQueNoCambia)
{
    Regla("N", ">50", "Poco");

    EXPECT_EQ(Haz("UPDATE T SET A='b'"), 1);
    EXPECT_EQ(Haz("INSERT INTO T (ID) VALUES (2)"), 1) << "left without a value";
    EXPECT_EQ(Tabla("SELECT ID,N,A FROM T ORDER BY ID"), "1|10|b 2|NULL|NULL");
}

TEST_F(Exigencias, LaReglaDeLaTablaMiraLaFilaEntera)
{
    Regla("", "[N] Is Null Or [N]>=[ID]", "N no llega");

    EXPECT_EQ(Fallo("UPDATE T SET N=0"), "N no llega");
    EXPECT_EQ(Fallo("UPDATE T SET ID=11"), "N no llega");
    EXPECT_EQ(Haz("UPDATE T SET ID=11,N=12"), 1);
    EXPECT_EQ(Fallo("INSERT INTO T (ID,N) VALUES (5,4)"), "N no llega");
    EXPECT_EQ(Haz("INSERT INTO T (ID) VALUES (5)"), 1);
    EXPECT_EQ(Fallo("INSERT INTO T (ID,N) SELECT ID,4 FROM T"), "N no llega");
    EXPECT_EQ(Tabla("SELECT ID,N FROM T ORDER BY ID"), "5|NULL 11|12");
}

TEST_F(Exigencias, LaReglaDeLaTablaVeLosValoresDeCadaTipo)
{
    Regla("", "[B]=Yes And [F]>=#1/1/2024# And [A]<>\"x\" And Len([M])>0");

    EXPECT_EQ(Haz("UPDATE T SET ID=2"), 1);
    EXPECT_NE(Fallo("UPDATE T SET B=FALSE"), "");
    EXPECT_NE(Fallo("UPDATE T SET F=#12/31/2023#"), "");
    EXPECT_NE(Fallo("UPDATE T SET A='X'"), "");
    EXPECT_NE(Fallo("UPDATE T SET M=''"), "");
    EXPECT_EQ(Tabla("SELECT * FROM T"), "2|10|a|m|01/01/2024|True");
}

TEST_F(Exigencias, LoQueRigeUnaReglaQueNoSeEntiendeNoSeEscribe)
{
    Regla("N", "EsPar([N])");
    const QString frase =
        "La regla de validación de T.N no se entiende, y no se escribe lo que rige: EsPar([N])";

    EXPECT_EQ(Fallo("UPDATE T SET N=2"), frase);
    EXPECT_EQ(Fallo("INSERT INTO T (ID,N) VALUES (2,2)"), frase);
    EXPECT_EQ(Haz("INSERT INTO T (ID) VALUES (2)"), 1);
    EXPECT_EQ(Haz("DELETE FROM T WHERE ID=1"), 1);
}

TEST_F(Exigencias, UnaReglaIncumplidaEnUnConjuntoAbiertoEsDelCampo)
{
    Regla("N", ">0", "Tiene que ser positivo");
    const auto filas = Filas("SELECT * FROM T", true);
    const auto numero = [&](const Cambios& cambios, bool nueva) {
        try {
            if (nueva)
                Proveedor().Inserta(filas, cambios);
            else
                Proveedor().Actualiza(filas, 0, cambios);
        } catch (const ErrorSql& error) {
            EXPECT_EQ(error.Descripcion(), "Tiene que ser positivo");
            return error.Numero();
        }
        return 0;
    };

    EXPECT_EQ(numero({{"N", -1}}, false), numero_error::CampoIncorrecto);
    EXPECT_EQ(numero({{"N", -1}}, true), numero_error::CampoIncorrecto);
    EXPECT_EQ(numero({{"N", 1}}, false), 0);
}

} // namespace
