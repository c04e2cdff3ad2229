#include "apoyo/dobles.h"
#include "run/cadenas.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

class CadenaGestion : public testing::Test {
  protected:
    AvisosDePrueba avisos;
    RelojDePrueba reloj;
    data::Programa programa{avisos, reloj, {}, "/actual"};
};

TEST_F(CadenaGestion, AccessNombraElFichero)
{
    programa.TipoBaseDatos = data::Dialecto::Access;
    programa.RutaBD = "C:\\kov\\BD000001.mdb";

    EXPECT_EQ(
        run::CadenaGestion(programa, "BD000001", {}),
        "Provider=Microsoft.Jet.OLEDB.4.0;Data Source=C:\\kov\\BD000001.mdb;Persist Security Info=False");
}

TEST_F(CadenaGestion, SqlServerConSeguridadIntegradaNoLlevaUsuario)
{
    programa.TipoBaseDatos = data::Dialecto::SqlServer;
    programa.ServidorSql = "OFICINA";
    programa.ModoAutenticacion = "WINDOWS";

    EXPECT_EQ(
        run::CadenaGestion(programa, "BDLOCAL", {"ana", "s3creta"}),
        "Provider=SQLOLEDB.1;Integrated Security=SSPI;Persist Security Info=False;Initial Catalog=BDLOCAL;Data Source=OFICINA");
}

TEST_F(CadenaGestion, SqlServerConUsuarioLosNombra)
{
    programa.TipoBaseDatos = data::Dialecto::SqlServer;
    programa.ServidorSql = "OFICINA";
    programa.ModoAutenticacion = "SQLSERVER";

    EXPECT_EQ(
        run::CadenaGestion(programa, "BD000001", {"ana", "s3creta"}),
        "Provider=SQLOLEDB.1;user id=ana;password=s3creta;Initial Catalog=BD000001;Data Source=OFICINA");
}

} // namespace
