#include "data/cadena_odbc.h"
#include "data/errores.h"
#include "data/proveedor_odbc.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

const QString DeMySql = "Driver={MySQL ODBC 5.1 Driver};Server=s;Port=3306;Database=b;User=u;"
                        "Password=p;Option=3;";
const QString DeSqlServer = "Provider=SQLOLEDB.1;user id=ana;password=p1;"
                            "Initial Catalog=BD000001;Data Source=SERVIDOR";

QString Cadena(const QString& cadena, const QStringList& instalados)
{
    return data::CadenaOdbc(cadena, {}, {}, instalados);
}

TEST(CadenaOdbc, UnControladorInstaladoSeQueda)
{
    EXPECT_EQ(Cadena(DeMySql, {"MariaDB Unicode", "mysql odbc 5.1 driver"}),
              "Driver={MySQL ODBC 5.1 Driver};Server=s;Port=3306;Database=b;User=u;Password=p;"
              "Option=3;CHARSET=utf8mb4");
}

TEST(CadenaOdbc, UnControladorQueFaltaSeCambiaPorOtroDelMismoProtocolo)
{
    EXPECT_EQ(Cadena(DeMySql, {"FreeTDS", "MariaDB Unicode"}),
              "Driver={MariaDB Unicode};Server=s;Port=3306;Database=b;User=u;Password=p;Option=3;"
              "CHARSET=utf8mb4");
    EXPECT_EQ(Cadena("Driver=MySQL;Server=s", {"MySQL ODBC 8.0 Unicode Driver"}),
              "Driver={MySQL ODBC 8.0 Unicode Driver};Server=s;CHARSET=utf8mb4");
}

TEST(CadenaOdbc, DeVariosVaElUnicode)
{
    const QStringList instalados = {"MySQL ODBC 9.0 ANSI Driver", "MySQL ODBC 8.0 Unicode Driver",
                                    "MySQL ODBC 8.4 Unicode Driver"};

    EXPECT_TRUE(Cadena(DeMySql, instalados).startsWith("Driver={MySQL ODBC 8.4 Unicode Driver};"));
}

TEST(CadenaOdbc, ElJuegoDeCaracteresNombradoSeQueda)
{
    EXPECT_EQ(Cadena("Driver={MariaDB};Server=s;charset=latin1", {"MariaDB"}),
              "Driver={MariaDB};Server=s;charset=latin1");
}

TEST(CadenaOdbc, LasCredencialesSeAnaden)
{
    EXPECT_EQ(data::CadenaOdbc("Driver={MariaDB};Server=s", "ana", "cl;ave}", {"MariaDB"}),
              "Driver={MariaDB};Server=s;CHARSET=utf8mb4;UID=ana;PWD={cl;ave}}}");
}

TEST(CadenaOdbc, SinControladorDelProtocoloEsUnErrorSinCredenciales)
{
    try {
        Cadena(DeMySql, {"FreeTDS"});
        FAIL() << "no error";
    } catch (const data::ErrorSql& error) {
        EXPECT_EQ(error.Numero(), data::numero_error::Conexion);
        EXPECT_EQ(error.Descripcion(), "No hay ningún controlador ODBC instalado que sirva para "
                                       "\"MySQL ODBC 5.1 Driver\".");
    }
    EXPECT_THROW(Cadena(DeSqlServer, {"MariaDB Unicode"}), data::ErrorSql);
    EXPECT_THROW(Cadena("Driver={Otro};Server=s", {"MariaDB Unicode"}), data::ErrorSql);
    EXPECT_THROW(Cadena("Provider=Otro.1;Data Source=x", {"MariaDB Unicode"}), data::ErrorSql);
    EXPECT_THROW(Cadena("", {"MariaDB Unicode"}), data::ErrorSql);
}

TEST(CadenaOdbc, LasClavesDeSqlServerCambianDeNombre)
{
    EXPECT_EQ(Cadena(DeSqlServer, {"FreeTDS", "MariaDB Unicode"}),
              "Driver={FreeTDS};UID=ana;PWD=p1;Database=BD000001;Server=SERVIDOR;TDS_Version=7.4");
}

TEST(CadenaOdbc, LaSeguridadIntegradaDeSqlServer)
{
    EXPECT_EQ(
        Cadena("Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;"
               "Initial Catalog=BDLOCAL;Data Source=SRV\\KOV",
               {"FreeTDS"}),
        "Driver={FreeTDS};Trusted_Connection=Yes;Database=BDLOCAL;Server=SRV\\KOV;TDS_Version=7.4");
}

TEST(CadenaOdbc, ElControladorDelFabricanteVaPrimeroYAceptaElCertificado)
{
    EXPECT_EQ(Cadena(DeSqlServer,
                     {"FreeTDS", "ODBC Driver 17 for SQL Server", "ODBC Driver 18 for SQL Server"}),
              "Driver={ODBC Driver 18 for SQL Server};UID=ana;PWD=p1;Database=BD000001;"
              "Server=SERVIDOR;TrustServerCertificate=Yes");
}

TEST(PartesDeConexion, UnPuntoYComaEntreLlavesEsDelValor)
{
    EXPECT_EQ(data::ValorDeConexion("A=1;PWD={x;y}};z};B=2", "pwd"), "x;y};z");
    EXPECT_EQ(data::ValorDeConexion("A=1;PWD={x;y}};z};B=2", "B"), "2");
    EXPECT_EQ(data::ValorDeConexion("A=1;;B=2=3;", "b"), "2=3");
    EXPECT_EQ(data::ValorDeConexion("A=1", "C"), "");
    EXPECT_EQ(data::ValorDeConexion("A={sin cerrar;B=2", "A"), "{sin cerrar;B=2");
}

TEST(ConEsperas, PoneLosLimitesQueElTextoNoNombra)
{
    EXPECT_EQ(data::ConEsperas("Driver={MariaDB Unicode};Server=s;read_timeout=7", 30, 900),
              "Driver={MariaDB Unicode};Server=s;read_timeout=7;CONN_TIMEOUT=30;WRITE_TIMEOUT=900");
}

TEST(EsCadenaMySql, LoDiceElControlador)
{
    EXPECT_TRUE(data::EsCadenaMySql("Driver={MariaDB Unicode};Server=s"));
    EXPECT_TRUE(data::EsCadenaMySql("driver=MySQL"));
    EXPECT_FALSE(data::EsCadenaMySql("Driver={FreeTDS};Server=mysql"));
}

} // namespace
