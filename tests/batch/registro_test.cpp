#include "apoyo/programa_de_prueba.h"
#include "batch/registro.h"
#include "batch/trabajo.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct RegistroTest : testing::Test {
    ProgramaDePrueba p{};
    ProgresoDePrueba progreso{};
    batch::Escritores escritores{p.programa};
    batch::Registro registro{p.programa, escritores, progreso, batch::NombreFicheroLog(p.programa)};

    RegistroTest()
    {
        p.programa.DialectoActivo = data::Dialecto::MySql;
        p.carpeta.CreaCarpeta("HISTORICOWEB");
    }
    QByteArray Log() const { return p.carpeta.Lee("HISTORICOWEB/20240315VUELCOPRESTASHOP.TXT"); }
};

TEST_F(RegistroTest, LaLineaLlevaFechaYHoraEnFormatoCorto)
{
    registro.RegistraLog("CARGANDO FAMILIAS");

    EXPECT_EQ(Log(), "[15/03/2024 9:05:07] CARGANDO FAMILIAS\r\n");
    EXPECT_EQ(progreso.lineas, QStringList{"[15/03/2024 9:05:07] CARGANDO FAMILIAS"});
}

TEST_F(RegistroTest, LaFechaYLaHoraSiguenAlReloj)
{
    p.reloj.ahora = QDateTime(QDate(2024, 12, 1), QTime(23, 59, 0));

    registro.RegistraLog("x");

    // The file stays that of the day on which the window loaded.
    EXPECT_EQ(Log(), "[01/12/2024 23:59:00] x\r\n");
}

TEST_F(RegistroTest, LaLineaDelFicheroPasaPorElTraductorYLaDeLaListaNo)
{
    registro.RegistraLog("Vale (3 & 4)");

    EXPECT_EQ(Log(), "[15/03/2024 9:05:07] Vale  CONCAT(3 , 4)\r\n");
    EXPECT_EQ(progreso.lineas.value(0), "[15/03/2024 9:05:07] Vale (3 & 4)");
}

TEST_F(RegistroTest, UnaLineaConAmpersandSinParentesisFaltaEnElFicheroYEstaEnLaLista)
{
    registro.RegistraLog("Fam. Hogar & Cocina");

    EXPECT_EQ(Log(), "");
    EXPECT_EQ(progreso.lineas, QStringList{"[15/03/2024 9:05:07] Fam. Hogar & Cocina"});
}

TEST_F(RegistroTest, SinLaCarpetaElLogSePierdeYLaListaMuestraLaLinea)
{
    QDir(p.carpeta.Ruta("HISTORICOWEB")).removeRecursively();

    registro.RegistraLog("x");

    EXPECT_FALSE(p.carpeta.Existe("HISTORICOWEB"));
    EXPECT_EQ(progreso.lineas.size(), 1);
}

TEST_F(RegistroTest, DosCorridasDelMismoDiaCompartenElFicheroEnSuOrden)
{
    registro.RegistraLog("primera");
    batch::Registro otra(p.programa, escritores, progreso, batch::NombreFicheroLog(p.programa));
    otra.RegistraLog("segunda");

    EXPECT_EQ(Log(), "[15/03/2024 9:05:07] primera\r\n[15/03/2024 9:05:07] segunda\r\n");
}

TEST_F(RegistroTest, ElTituloVaEntreDosFilasDe33Asteriscos)
{
    registro.RegistraTitulo("FIN VUELCO DATOS A PRESTASHOP ");

    EXPECT_EQ(progreso.lineas,
              (QStringList{"[15/03/2024 9:05:07] *********************************",
                           "[15/03/2024 9:05:07] FIN VUELCO DATOS A PRESTASHOP ",
                           "[15/03/2024 9:05:07] *********************************"}));
}

} // namespace
