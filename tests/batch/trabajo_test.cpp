#include "apoyo/programa_de_prueba.h"
#include "batch/trabajo.h"
#include <gtest/gtest.h>

using namespace tolmo;

TEST(FicherosTrabajo, EstanEnLaCarpetaActual)
{
    ProgramaDePrueba p;
    p.programa.carpetaActual = QStringLiteral("C:\\KOV");

    const batch::FicherosTrabajo ficheros(p.programa);

    EXPECT_EQ(ficheros.Sentencias, "C:\\KOV\\sentencias.sql");
    EXPECT_EQ(ficheros.ListaImgBorra, "C:\\KOV\\imgborra.txt");
    EXPECT_EQ(ficheros.ListaImgFam, "C:\\KOV\\imgfam.txt");
    EXPECT_EQ(ficheros.ListaImgArt, "C:\\KOV\\imgart.txt");
    EXPECT_EQ(ficheros.ListaCreaPath, "C:\\KOV\\creapath.txt");
}

TEST(FicherosTrabajo, BorraTodosQuitaLosCincoYNadaMas)
{
    ProgramaDePrueba p;
    const QStringList cinco{"sentencias.sql", "imgborra.txt", "imgfam.txt", "imgart.txt",
                            "creapath.txt"};
    for (const QString& nombre : cinco)
        p.carpeta.Escribe(nombre, "viejo");
    p.carpeta.Escribe("otro.txt", "queda");

    batch::FicherosTrabajo(p.programa).BorraTodos();

    EXPECT_EQ(QDir(p.carpeta.Ruta()).entryList(QDir::Files), QStringList{"otro.txt"});
}

TEST(NombreFicheroLog, LlevaAnioMesYDiaConCeros)
{
    ProgramaDePrueba p;
    p.programa.carpetaActual = QStringLiteral("C:\\KOV");
    p.reloj.ahora = QDateTime(QDate(2024, 3, 5), QTime(0, 0));

    EXPECT_EQ(batch::NombreFicheroLog(p.programa),
              "C:\\KOV\\HISTORICOWEB\\20240305VUELCOPRESTASHOP.TXT");
}
