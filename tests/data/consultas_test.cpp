#include "apoyo/dobles.h"
#include "apoyo/proveedor_de_prueba.h"
#include "data/consultas.h"

using namespace tolmo;
using Caja = AvisosDePrueba::Caja;

namespace {

const QString TextoCierre = "EL PROGRAMA SE CERRARÁ, CONSULTE CON SU PROVEEDOR";

class Consultas : public testing::Test {
  protected:
    Consultas()
    {
        programa.parametros.PS_PREFIJO = "tst_";
        programa.DialectoActivo = data::Dialecto::MySql;
        programa.ConexionTienda.Conecta("tienda");
    }

    AvisosDePrueba avisos;
    RelojDePrueba reloj;
    ProveedorDePrueba tienda;
    data::Programa programa{avisos, reloj, tienda.Fabrica(), "/tmp/kov"};
};

TEST(PonPrefijo, CambiaCadaPrefijoTambienEnLosDatos)
{
    EXPECT_EQ(data::PonPrefijo("SELECT ps_a.x FROM ps_a WHERE y='ps_b'", "tst_"),
              "SELECT tst_a.x FROM tst_a WHERE y='tst_b'");
    EXPECT_EQ(data::PonPrefijo("SELECT * FROM maps_x", ""), "SELECT * FROM max");
}

TEST(PonPrefijo, SoloEnMinusculas)
{
    EXPECT_EQ(data::PonPrefijo("SELECT PS_PESO FROM PS_IDIOMAS, Ps_x WHERE PS_VERSION=1", "tst_"),
              "SELECT PS_PESO FROM PS_IDIOMAS, Ps_x WHERE PS_VERSION=1");
}

TEST(PonPrefijo, LaClaveDeLaVersionConservaSuNombre)
{
    EXPECT_EQ(
        data::PonPrefijo("SELECT value FROM ps_configuration WHERE name='ps_version_db'", "tst_"),
        "SELECT value FROM tst_configuration WHERE name='ps_version_db'");
    EXPECT_EQ(data::PonPrefijo("ps_version_db ps_version", "x_"), "ps_version_db x_version");
}

TEST(PonPrefijo, UnPrefijoQueContieneAlDeAutorNoSeRepite)
{
    EXPECT_EQ(data::PonPrefijo("FROM ps_a", "ps_ps_"), "FROM ps_ps_a");
}

TEST_F(Consultas, AbreLecturaTraduceYPoneElPrefijoEnElTextoDeQuienLlama)
{
    tienda.Espera("SELECT  CHAR_LENGTH(name) AS n FROM tst_tag", HazFilas({"n"}, {{5}}));
    QString sql = "SELECT LEN(name) AS n FROM ps_tag";

    const auto filas = data::AbreLectura(programa, sql);

    EXPECT_EQ(filas["n"].toInt(), 5);
    EXPECT_EQ(sql, "SELECT  CHAR_LENGTH(name) AS n FROM tst_tag");
}

TEST_F(Consultas, AbreLecturaDaUnResultadoQueNoSeCambia)
{
    tienda.Espera("SELECT * FROM tst_tag", HazFilas({"id_tag"}, {{7}}, "tst_tag"));
    QString sql = "SELECT * FROM ps_tag";

    auto filas = data::AbreLectura(programa, sql);

    EXPECT_THROW(filas.Actualiza({{"id_tag", 8}}), data::ErrorDatos);
}

TEST_F(Consultas, AbreConsultaDaUnResultadoQueSeCambia)
{
    tienda.Espera("SELECT * FROM tst_tag", HazFilas({"id_tag"}, {{7}}, "tst_tag"));
    QString sql = "SELECT * FROM ps_tag";

    auto filas = data::AbreConsulta(programa, sql);
    filas.Actualiza({{"id_tag", 8}});

    EXPECT_EQ(sql, "SELECT * FROM tst_tag");
    ASSERT_EQ(tienda.actualizadas.size(), 1U);
    EXPECT_EQ(tienda.actualizadas[0].tabla, "tst_tag");
}

TEST_F(Consultas, EjecutaSqlTraducePeroNoPoneElPrefijo)
{
    tienda.EsperaOrden("DELETE FROM ps_tag WHERE IF(a,b,c)", 3);
    QString sql = "DELETE FROM ps_tag WHERE IIF(a,b,c)";

    EXPECT_EQ(data::EjecutaSql(programa, sql), 3);

    EXPECT_EQ(sql, "DELETE FROM ps_tag WHERE IF(a,b,c)");
}

TEST_F(Consultas, LasLocalesVanPorSuConexion)
{
    ProveedorDePrueba local;
    local.Espera("SELECT TOP 1 LEN(A) FROM M_ARTIC", HazFilas({"A"}, {{1}}));
    local.EsperaOrden("DROP TABLE W");
    data::Conexion conexion(local.Fabrica());
    conexion.Conecta("local");
    programa.DialectoActivo = data::Dialecto::Access;
    QString consulta = "SELECT TOP 1 LEN(A) FROM M_ARTIC";
    QString orden = "DROP TABLE W";

    data::AbreLectura(programa, consulta, conexion);
    data::EjecutaSql(programa, orden, conexion);

    EXPECT_TRUE(tienda.todas.isEmpty());
    EXPECT_EQ(local.todas, QStringList({"SELECT TOP 1 LEN(A) FROM M_ARTIC", "DROP TABLE W"}));
}

TEST_F(Consultas, UnFalloMuestraDosCajasYAcabaElPrograma)
{
    const data::ErrorSql error(-2147217900, "No existe la tabla", "ODBC");
    tienda.EsperaFallo("SELECT * FROM tst_tag", error);
    QString sql = "SELECT * FROM ps_tag";

    EXPECT_THROW(data::AbreLectura(programa, sql), data::FinDePrograma);

    const std::vector<Caja> cajas = {
        {"ERROR: -2147217900Descripción: No existe la tablaMódulo: ODBC", 16, ""},
        {"SELECT * FROM tst_tag\r" + TextoCierre, 64, ""}};
    EXPECT_EQ(avisos.cajas, cajas);
}

TEST_F(Consultas, LosTresCorredoresAcabanIgual)
{
    const data::ErrorSql error(7, "caída", "M");
    tienda.EsperaFallo("SELECT 1", error);
    tienda.EsperaFallo("DELETE FROM ps_x", error);
    QString consulta = "SELECT 1";
    QString orden = "DELETE FROM ps_x";

    EXPECT_THROW(data::AbreConsulta(programa, consulta), data::FinDePrograma);
    EXPECT_THROW(data::EjecutaSql(programa, orden), data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 4U);
    EXPECT_EQ(avisos.cajas[1].texto, "SELECT 1\r" + TextoCierre);
    EXPECT_EQ(avisos.cajas[3].texto, "DELETE FROM ps_x\r" + TextoCierre);
}

TEST_F(Consultas, UnTextoSinTraduccionNoLlegaAlMotorYSeMuestraComoVino)
{
    QString sql = "SELECT a & b FROM ps_x";

    EXPECT_THROW(data::AbreLectura(programa, sql), data::FinDePrograma);

    EXPECT_TRUE(tienda.todas.isEmpty());
    EXPECT_EQ(sql, "SELECT a & b FROM ps_x");
    const std::vector<Caja> cajas = {
        {"ERROR: 5Descripción: & sin ningún paréntesisMódulo: TraduceSql", 16, ""},
        {"SELECT a & b FROM ps_x\r" + TextoCierre, 64, ""}};
    EXPECT_EQ(avisos.cajas, cajas);
}

TEST_F(Consultas, UnaConexionCerradaAcabaElPrograma)
{
    QString sql = "SELECT 1";

    EXPECT_THROW(data::AbreLectura(programa, sql, programa.ConexionLocal), data::FinDePrograma);

    ASSERT_EQ(avisos.cajas.size(), 2U);
    EXPECT_EQ(avisos.cajas[1].texto, "SELECT 1\r" + TextoCierre);
}

TEST(MuestraError, DeUnCampoMalRellenadoLlevaElDetalle)
{
    AvisosDePrueba avisos;

    data::MuestraError(avisos, data::ErrorDatos(3421, "tipo", "M"), "el precio");
    data::MuestraError(avisos, data::ErrorDatos(3421, "tipo", "M"));

    const QString texto = "ERROR: Ha cumplimentado un campo de forma incorrecta, corrijalo e "
                          "intentelo de nuevo: ";
    const std::vector<Caja> cajas = {{texto + "el precio", 16, ""}, {texto + " ", 16, ""}};
    EXPECT_EQ(avisos.cajas, cajas);
}

TEST(MuestraError, UnDialogoCanceladoNoMuestraNada)
{
    AvisosDePrueba avisos;

    data::MuestraError(avisos, data::ErrorDatos(32755, "cancelado", "M"), "x");

    EXPECT_TRUE(avisos.cajas.empty());
}

TEST(MuestraError, DeLosDemasNumeroDescripcionYModuloSinSeparar)
{
    AvisosDePrueba avisos;

    data::MuestraError(avisos, data::ErrorDatos(3265, "No está", "Recordset"), "x");

    const std::vector<Caja> cajas = {{"ERROR: 3265Descripción: No estáMódulo: Recordset", 16, ""}};
    EXPECT_EQ(avisos.cajas, cajas);
}

} // namespace
