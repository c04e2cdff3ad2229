#include "base_prueba.h"
#include "data/access/access.h"
#include <QDir>
#include <QFile>
#include <QProcess>

using namespace tolmo::data;

namespace {

class Apertura : public testing::Test {
  protected:
    QString Ruta(const QString& nombre) const { return carpeta_.filePath(nombre); }
    QString Cadena(const QString& nombre) const
    {
        return "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + Ruta(nombre) +
               ";Persist Security Info=False";
    }
    void Escribe(const QString& nombre, const QString& texto)
    {
        QFile fichero(Ruta(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write(texto.toUtf8());
    }
    template <class Accion> static QString Fallo(Accion accion)
    {
        try {
            accion();
        } catch (const ErrorSql& error) {
            return error.Descripcion();
        }
        return {};
    }

    QTemporaryDir carpeta_;
};

TEST_F(Apertura, LaCadenaDeJetAbreLaFormaEmbebidaDeAlLado)
{
    CreaBaseEmbebida(Ruta("BD000001.sqlite"));
    AbreBaseEmbebida(Ruta("BD000001.sqlite"))->Ejecuta("CREATE TABLE T (N INT)");

    EXPECT_EQ(AbreAccess(Cadena("BD000001.mdb"))->Tablas().size(), 1U);
    EXPECT_EQ(AbreAccess(Cadena("bd000001.MDB"))->Tablas().size(), 1U);
    EXPECT_EQ(CreaProveedor(Cadena("BD000001.mdb"), {}, {})->Tablas().size(), 1U);
}

TEST_F(Apertura, LaCarpetaPuedeIrEnFormaDeWindows)
{
    CreaBaseEmbebida(Ruta("BDLOCAL.sqlite"));
    qputenv("KOV_UNIDADES", ("C:=" + carpeta_.path()).toUtf8());

    const QString fallo = Fallo([] {
        AbreAccess(
            "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\BDLOCAL.mdb;Persist Security Info=False");
    });

    qunsetenv("KOV_UNIDADES");
    EXPECT_EQ(fallo, "");
}

TEST_F(Apertura, AbrirNuncaCreaElFichero)
{
    EXPECT_EQ(Fallo([&] { AbreAccess(Cadena("BDLOCAL.mdb")); }),
              "No se encuentra la base de datos " + Ruta("BDLOCAL.mdb"));
    EXPECT_EQ(Fallo([&] { AbreBaseEmbebida(Ruta("BDLOCAL.sqlite")); }),
              "No se encuentra la base de datos " + Ruta("BDLOCAL.sqlite"));
    EXPECT_TRUE(QDir(carpeta_.path()).isEmpty());
}

TEST_F(Apertura, UnFicheroDeAccessRotoDiceCualEs)
{
    Escribe("BDLOCAL.mdb", "x");

    EXPECT_EQ(Fallo([&] { AbreAccess(Cadena("BDLOCAL.mdb")); }),
              "El fichero es demasiado corto para ser una base de datos de Access (fichero " +
                  Ruta("BDLOCAL.mdb") + ")");
}

TEST_F(Apertura, ElFicheroDeAccessVaAntesQueSuFormaEmbebida)
{
    CreaBaseEmbebida(Ruta("BDLOCAL.sqlite"));
    Escribe("BDLOCAL.mdb", "x");

    EXPECT_NE(Fallo([&] { AbreAccess(Cadena("BDLOCAL.mdb")); }), "");
}

TEST_F(Apertura, UnFicheroQueNoEsBaseDeDatosSeDice)
{
    Escribe("BDLOCAL.sqlite", QString(2000, 'x'));

    EXPECT_EQ(Fallo([&] { AbreAccess(Cadena("BDLOCAL.mdb")); }),
              "No se puede abrir " + Ruta("BDLOCAL.sqlite") +
                  ": El fichero no es una base de datos");
}

TEST_F(Apertura, UnaCadenaSinProveedorOSinOrigenEsUnError)
{
    EXPECT_EQ(Fallo([] { CreaProveedor("Data Source=x", {}, {}); }),
              "La cadena de conexión no nombra ningún proveedor conocido");
    EXPECT_EQ(Fallo([] { CreaProveedor("", {}, {}); }),
              "La cadena de conexión no nombra ningún proveedor conocido");
    EXPECT_EQ(Fallo([] { AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0"); }),
              "La cadena de conexión no dice qué base de datos se abre");
}

TEST_F(Apertura, LosDemasTextosVanAlGestorDeControladores)
{
    const QString fallo =
        Fallo([] { CreaProveedor("Driver={No hay tal};Server=127.0.0.1", {}, {}); });

    EXPECT_FALSE(fallo.isEmpty());
    EXPECT_NE(fallo, "La cadena de conexión no nombra ningún proveedor conocido");
}

TEST_F(Apertura, CrearSobreUnFicheroQueExisteEsUnError)
{
    CreaBaseEmbebida(Ruta("a.sqlite"));

    EXPECT_EQ(Fallo([&] { CreaBaseEmbebida(Ruta("a.sqlite")); }),
              "La base de datos " + Ruta("a.sqlite") + " ya existe");
}

TEST(Guion, SeParteEnLosPuntoYComaDeFinDeLinea)
{
    const auto sentencias = ParteGuion(
        "-- remark\nCREATE TABLE T (A INT);\n\nINSERT INTO T\n  VALUES (1);\r\nINSERT INTO T VALUES ('a; b;\nc');\n  -- otro;\nDELETE FROM T");

    ASSERT_EQ(sentencias.size(), 4U);
    EXPECT_EQ(sentencias[0].texto, "CREATE TABLE T (A INT)");
    EXPECT_EQ(sentencias[0].linea, 2);
    EXPECT_EQ(sentencias[1].texto, "INSERT INTO T\n  VALUES (1)");
    EXPECT_EQ(sentencias[1].linea, 4);
    EXPECT_EQ(sentencias[2].texto, "INSERT INTO T VALUES ('a; b;\nc')");
    EXPECT_EQ(sentencias[2].linea, 6);
    EXPECT_EQ(sentencias[3].texto, "DELETE FROM T");
    EXPECT_EQ(sentencias[3].linea, 9);
}

TEST_F(Apertura, LosGuionesHacenLaBase)
{
    Escribe("a.sql", "CREATE TABLE T (A nvarchar(9));\nINSERT INTO T VALUES ('ñ');\n");
    Escribe("b.sql", "INSERT INTO T SELECT A & 'x' AS A FROM T;\n");

    EjecutaGuiones(Ruta("x.sqlite"), {Ruta("a.sql"), Ruta("b.sql")});

    const auto filas =
        AbreBaseEmbebida(Ruta("x.sqlite"))->Consulta("SELECT A FROM T ORDER BY A", false);
    ASSERT_EQ(filas.valores.size(), 2U);
    EXPECT_EQ(filas.valores[0], QVariant("ñ"));
    EXPECT_EQ(filas.valores[1], QVariant("ñx"));
}

TEST_F(Apertura, UnGuionQueFallaNombraSuLineaYNoCambiaNada)
{
    Escribe("a.sql", "CREATE TABLE T (A INT);\nINSERT INTO T VALUES (1);\n");
    Escribe("mal.sql",
            "INSERT INTO T VALUES (2);\n\nCREATE TABLE U (A INT);\nINSERT INTO T\nVALUES ('x');\n");
    EjecutaGuiones(Ruta("x.sqlite"), {Ruta("a.sql")});

    EXPECT_EQ(
        Fallo([&] { EjecutaGuiones(Ruta("x.sqlite"), {Ruta("mal.sql")}); }),
        Ruta("mal.sql") +
            ", línea 4: El campo T.A es un número y no admite \"x\"\nINSERT INTO T\nVALUES ('x')");
    EXPECT_EQ(AbreBaseEmbebida(Ruta("x.sqlite"))->Consulta("SELECT A FROM T", false).valores.size(),
              1U);
    EXPECT_EQ(AbreBaseEmbebida(Ruta("x.sqlite"))->Tablas().size(), 1U);
    EXPECT_NE(Fallo([&] { EjecutaGuiones(Ruta("nueva.sqlite"), {Ruta("mal.sql")}); }), "");
    EXPECT_FALSE(QFile::exists(Ruta("nueva.sqlite")));
}

TEST_F(Apertura, ElProgramaDeGuionesHaceLaBaseYDiceLoQueFalla)
{
    const QString programa = QStringLiteral(KOV_CONSTRUCCION "/kovtolmo-sql");
    Escribe("a.sql", "CREATE TABLE T (A INT);\n");
    Escribe("mal.sql", "SELEC 1;\n");

    EXPECT_EQ(QProcess::execute(programa, {Ruta("x.sqlite"), Ruta("a.sql")}), 0);
    EXPECT_EQ(AbreBaseEmbebida(Ruta("x.sqlite"))->Tablas().size(), 1U);
    QProcess proceso;
    proceso.start(programa, {Ruta("x.sqlite"), Ruta("mal.sql")});
    ASSERT_TRUE(proceso.waitForFinished());
    EXPECT_EQ(proceso.exitCode(), 1);
    EXPECT_EQ(QString::fromUtf8(proceso.readAllStandardError()),
              Ruta("mal.sql") +
                  ", línea 1: Error de sintaxis cerca de \"1\" (posición 7)\nSELEC 1\n");
    EXPECT_EQ(QProcess::execute(programa, {}), 2);
}

} // namespace
