#include "apoyo/dobles.h"
#include "apoyo/proveedor_de_prueba.h"
#include "data/programa.h"

using namespace tolmo;

namespace {

class ProgramaNuevo : public testing::Test {
  protected:
    AvisosDePrueba avisos;
    RelojDePrueba reloj;
    ProveedorDePrueba base;
    data::Programa programa{avisos, reloj, base.Fabrica(), "/tmp/kov"};
};

TEST_F(ProgramaNuevo, EmpiezaEnElDialectoDeSuConstruccionYSinConexiones)
{
    EXPECT_EQ(data::NombreDialecto(programa.TipoBaseDatos), KOV_TIPO_BASE_DATOS);
    EXPECT_EQ(data::NombreDialecto(programa.DialectoActivo), KOV_TIPO_BASE_DATOS);
    EXPECT_FALSE(programa.ConexionLocal.Conectada());
    EXPECT_FALSE(programa.ConexionTienda.Conectada());
}

TEST_F(ProgramaNuevo, LaEtiquetaTieneElCodigoYLaDescripcion)
{
    programa.LblEmpresa = "000012 Tejidos Peña, S.L.";

    EXPECT_EQ(programa.CodigoEmpresa(), "000012");
    EXPECT_EQ(programa.DescripcionEmpresa(), "Tejidos Peña, S.L.");
}

TEST_F(ProgramaNuevo, UnaEtiquetaCortaDaLoQueTiene)
{
    programa.LblEmpresa = "0012";

    EXPECT_EQ(programa.CodigoEmpresa(), "0012");
    EXPECT_EQ(programa.DescripcionEmpresa(), "");
}

TEST_F(ProgramaNuevo, LaCadenaDeLaTiendaSeHaceConLosParametros)
{
    programa.parametros.Server_Bd = "sql.tienda.es";
    programa.parametros.Puerto_Bd = "3307";
    programa.parametros.Nombre_Bd = "presta";
    programa.parametros.User_Bd = "lector";
    programa.parametros.Pass_Bd = "{Nombre_Bd}";

    EXPECT_EQ(programa.CadenaTienda(),
              "Driver={MySQL ODBC 5.1 Driver};Server=sql.tienda.es;Port=3307;Database=presta;"
              "User=lector;Password={Nombre_Bd};Option=3;");
}

TEST_F(ProgramaNuevo, LasRutasCuelganDeLaCarpetaActual)
{
    EXPECT_EQ(programa.RutaActual("\\PHPSHOP\\ejecuta.php"), "/tmp/kov\\PHPSHOP\\ejecuta.php");
}

TEST_F(ProgramaNuevo, LasFechasSiguenAlDialectoActivo)
{
    programa.DialectoActivo = data::Dialecto::MySql;
    EXPECT_EQ(data::FechaSql(programa, QDate(2024, 3, 5)), "CAST('2024/03/05' AS DATE)");

    programa.DialectoActivo = data::Dialecto::Access;
    EXPECT_EQ(data::FechaSql(programa, QDate(2024, 3, 5)), "Format('05/03/2024','dd/mm/yyyy')");
}

} // namespace
