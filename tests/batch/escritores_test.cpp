#include "apoyo/programa_de_prueba.h"
#include "batch/escritores.h"
#include <gtest/gtest.h>

using namespace tolmo;
using batch::Modo;

namespace {

struct EscritoresTest : testing::Test {
    ProgramaDePrueba p{};
    batch::Escritores escritores{p.programa};

    EscritoresTest() { p.programa.DialectoActivo = data::Dialecto::MySql; }
    QString Ruta() const { return p.programa.RutaActual(QStringLiteral("\\lote.txt")); }
    QByteArray Contenido() const { return p.carpeta.Lee("lote.txt"); }
};

TEST_F(EscritoresTest, ElModoTTraduceYElModoTCNo)
{
    escritores.EscribeFichero(Ruta(), Modo::T, "SELECT LEN(X)");
    escritores.EscribeFichero(Ruta(), Modo::TC, "SELECT LEN(X)");

    EXPECT_EQ(Contenido(), "SELECT  CHAR_LENGTH(X)\r\nSELECT LEN(X)\r\n");
}

TEST_F(EscritoresTest, ElModoIEscribeSinCambiosEnElFicheroAbierto)
{
    escritores.EscribeFichero(Ruta(), Modo::A);
    escritores.EscribeFichero(Ruta(), Modo::I, "LEN(1)");
    escritores.EscribeFichero(Ruta(), Modo::I, "dos");
    escritores.EscribeFichero(Ruta(), Modo::C);
    escritores.EscribeFichero(Ruta(), Modo::I, "tres");

    EXPECT_EQ(Contenido(), "LEN(1)\r\ndos\r\n");
}

TEST_F(EscritoresTest, SinTextoSeEscribeUnaLineaVacia)
{
    escritores.EscribeFichero(Ruta(), Modo::TC);

    EXPECT_EQ(Contenido(), "\r\n");
}

TEST_F(EscritoresTest, LaSentenciaLlevaElPrefijoTambienEnLosDatosYEnLaVersion)
{
    p.programa.parametros.PS_PREFIJO = QStringLiteral("tst_");

    escritores.EscribeSentencia(Ruta(), Modo::T,
                                "UPDATE ps_tag SET name='ps_uno PS_DOS ps_version_db'||");

    EXPECT_EQ(Contenido(), "UPDATE tst_tag SET name='tst_uno PS_DOS tst_version_db'||\r\n");
}

TEST_F(EscritoresTest, LaSentenciaDelModoITambienSeTraduce)
{
    escritores.EscribeSentencia(Ruta(), Modo::A);
    escritores.EscribeSentencia(Ruta(), Modo::I, "SELECT IIF(A,1,2)||");
    escritores.EscribeSentencia(Ruta(), Modo::C);

    EXPECT_EQ(Contenido(), "SELECT IF(A,1,2)||\r\n");
}

TEST_F(EscritoresTest, ElEscritorDeSentenciasNoTieneModoTC)
{
    escritores.EscribeSentencia(Ruta(), Modo::TC, "DELETE FROM ps_tag||");

    EXPECT_FALSE(p.carpeta.Existe("lote.txt"));
}

TEST_F(EscritoresTest, ConAccessLaSentenciaSaleComoEs)
{
    p.programa.DialectoActivo = data::Dialecto::Access;

    escritores.EscribeSentencia(Ruta(), Modo::T, "INSERT 'A & B'||");

    EXPECT_EQ(Contenido(), "INSERT 'A & B'||\r\n");
}

TEST_F(EscritoresTest, LaSentenciaQueNoSePuedeTraducirSePierdeEnSilencioYElFicheroQuedaVacio)
{
    escritores.EscribeSentencia(Ruta(), Modo::T, "SELECT 'A & B'||");

    EXPECT_TRUE(p.carpeta.Existe("lote.txt"));
    EXPECT_EQ(Contenido(), "");
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(EscritoresTest, TrasUnaSentenciaPerdidaLaSiguienteSeEscribe)
{
    escritores.EscribeSentencia(Ruta(), Modo::T, "SELECT 'A & B'||");
    escritores.EscribeSentencia(Ruta(), Modo::T, "SELECT 1||");

    EXPECT_EQ(Contenido(), "SELECT 1||\r\n");
}

TEST_F(EscritoresTest, UnaCarpetaQueFaltaPierdeElRegistroSinDecirNada)
{
    escritores.EscribeFichero(p.programa.RutaActual("\\NOESTA\\lote.txt"), Modo::T, "linea");

    EXPECT_FALSE(p.carpeta.Existe("NOESTA"));
    EXPECT_TRUE(p.avisos.cajas.empty());
}

TEST_F(EscritoresTest, LosFicherosVanEnWindows1252YLoDeFueraComoInterrogacion)
{
    escritores.EscribeSentencia(Ruta(), Modo::T, QStringLiteral("'ñ€´ Ω'||"));

    EXPECT_EQ(Contenido(), QByteArray("'\xF1\x80\xB4 ?'||\r\n"));
}

TEST_F(EscritoresTest, LosSaltosDentroDeUnaSentenciaSeConservan)
{
    escritores.EscribeSentencia(Ruta(), Modo::T, "INSERT 'uno\r\ndos\ntres'||");

    EXPECT_EQ(Contenido(), "INSERT 'uno\r\ndos\ntres'||\r\n");
}

} // namespace
