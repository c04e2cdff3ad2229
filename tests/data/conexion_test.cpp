#include "apoyo/proveedor_de_prueba.h"
#include "data/conexion.h"

using namespace tolmo;
using data::Bloqueo;
using data::Cursor;

namespace {

TEST(Conexion, CerradaNoSirveParaNada)
{
    ProveedorDePrueba base;
    data::Conexion conexion(base.Fabrica());

    EXPECT_FALSE(conexion.Conectada());
    EXPECT_THROW(conexion.Abre("SELECT 1", Cursor::Estatico, Bloqueo::SoloLectura), data::ErrorSql);
    EXPECT_THROW(conexion.Ejecuta("DROP TABLE T"), data::ErrorSql);
    EXPECT_THROW(conexion.ExisteTabla("T"), data::ErrorSql);
    EXPECT_TRUE(base.todas.isEmpty());
}

TEST(Conexion, AbreConSuTextoYSusCredenciales)
{
    ProveedorDePrueba base;
    data::Conexion conexion(base.Fabrica());

    conexion.Conecta("Provider=X", "ana", "secreta");

    EXPECT_TRUE(conexion.Conectada());
    ASSERT_EQ(base.aperturas.size(), 1U);
    EXPECT_EQ(base.aperturas[0], (ProveedorDePrueba::Apertura{"Provider=X", "ana", "secreta"}));
    conexion.Desconecta();
    EXPECT_FALSE(conexion.Conectada());
}

TEST(Conexion, SiNoSePuedeAbrirQuedaCerrada)
{
    ProveedorDePrueba base;
    data::Conexion conexion(base.Fabrica());
    conexion.Conecta("una");
    base.falloAlAbrir = data::ErrorSql(data::numero_error::Conexion, "no hay", "X");

    EXPECT_THROW(conexion.Conecta("otra"), data::ErrorSql);

    EXPECT_FALSE(conexion.Conectada());
}

TEST(Conexion, SoloUnaAbiertaParaCambiarSeCambia)
{
    ProveedorDePrueba base;
    const data::Filas familias = HazFilas({"CODIGO"}, {{"001"}}, "M_FAMILIA");
    base.Espera("SELECT * FROM M_FAMILIA", familias);
    base.Espera("SELECT * FROM M_FAMILIA", familias);
    data::Conexion conexion(base.Fabrica());
    conexion.Conecta("una");

    auto lectura = conexion.Abre("SELECT * FROM M_FAMILIA", Cursor::Estatico, Bloqueo::SoloLectura);
    auto cambio = conexion.Abre("SELECT * FROM M_FAMILIA", Cursor::Dinamico, Bloqueo::Optimista);

    EXPECT_THROW(lectura.Actualiza({{"CODIGO", "002"}}), data::ErrorDatos);
    cambio.Actualiza({{"CODIGO", "003"}});
    ASSERT_EQ(base.actualizadas.size(), 1U);
    EXPECT_EQ(base.actualizadas[0].cambios, (data::Cambios{{"CODIGO", "003"}}));
}

TEST(Conexion, UnResultadoSigueVivoTrasCerrar)
{
    ProveedorDePrueba base;
    base.Espera("SELECT 1", HazFilas({"A"}, {{1}, {2}}));
    data::Conexion conexion(base.Fabrica());
    conexion.Conecta("una");

    auto filas = conexion.Abre("SELECT 1", Cursor::Estatico, Bloqueo::SoloLectura);
    conexion.Desconecta();
    filas.Siguiente();

    EXPECT_EQ(filas["A"].toInt(), 2);
}

TEST(Conexion, EjecutaDiceLasFilasAfectadas)
{
    ProveedorDePrueba base;
    base.EsperaOrden("DELETE FROM T", 17);
    data::Conexion conexion(base.Fabrica());
    conexion.Conecta("una");

    EXPECT_EQ(conexion.Ejecuta("DELETE FROM T"), 17);
}

TEST(Conexion, ExisteTablaMiraTablasEnlacesYVistasEnCualquierCaja)
{
    ProveedorDePrueba base;
    base.tablas = {{"M_ARTIC", "TABLE"},
                   {"M_Enlazada", "LINK"},
                   {"V_ARTIC", "view"},
                   {"MSysObjects", "SYSTEM TABLE"}};
    data::Conexion conexion(base.Fabrica());
    conexion.Conecta("una");

    EXPECT_TRUE(conexion.ExisteTabla("m_artic"));
    EXPECT_TRUE(conexion.ExisteTabla("M_ENLAZADA"));
    EXPECT_TRUE(conexion.ExisteTabla("v_artic"));
    EXPECT_FALSE(conexion.ExisteTabla("MSysObjects"));
    EXPECT_FALSE(conexion.ExisteTabla("M_ARTI"));
}

} // namespace
