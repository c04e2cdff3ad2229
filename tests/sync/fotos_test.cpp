#include "apoyo/corrida_con_sitio.h"
#include "sync/fotos.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

TEST(LineaImgArt, ElPrimerCampoMideCincuentaCaracteres)
{
    EXPECT_EQ(sync::LineaImgArt("123.jpg"),
              "img/p/1/2/3/123.jpg                               img/p/123.jpg;");
    EXPECT_EQ(sync::LineaImgArt("7.jpg"),
              "img/p/7/7.jpg                                     img/p/7.jpg;");
}

TEST(LineaImgArt, UnaRutaMasLargaSeCorta)
{
    // 6 for "img/p/", 29 for the folders, 1 and 15 digits with ".jpg" make 55.
    EXPECT_EQ(sync::LineaImgArt("123456789012345.jpg"),
              "img/p/1/2/3/4/5/6/7/8/9/0/1/2/3/4/5/12345678901234img/p/123456789012345.jpg;");
}

struct Fotos : testing::Test {
    CorridaConSitio p{};

    void Articulos(int cuantas)
    {
        for (int i = 1; i <= cuantas; ++i)
            p.fase.PendientesArt.push_back(
                {"C:\\f\\" + QString::number(i) + ".jpg", QString::number(100 + i) + ".jpg"});
    }
};

TEST_F(Fotos, LaConversacionDeUnaFotoDeArticulo)
{
    Articulos(1);

    sync::SubeFotosArticulos(p.fase);

    EXPECT_EQ(p.red.pasos,
              (QStringList{"ABRE", "SUBE 101.jpg a /tienda/img/p/", "BORRA imgart.txt",
                           "SUBE imgart.txt a /tienda/",
                           "PIDE http://casa/dimensiona.php?fichero=imgart.txt&sufijofoto=_default",
                           "ABRE"}));
    EXPECT_EQ(p.Log(),
              (QStringList{"SUBIENDO FOTOS ARTICULOS...", "Subiendo imagen C:\\f\\1.jpg -> 101.jpg",
                           "Dimensionando rango de artículos subidos"}));
    EXPECT_EQ(p.red.subidas.at(0).ruta, "C:\\f\\1.jpg");
    EXPECT_EQ(p.red.subidas.at(1).contenido,
              "img/p/1/0/1/101.jpg                               img/p/101.jpg;\r\n");
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgart.txt"));
}

TEST_F(Fotos, LaConversacionDeUnaFotoDeFamilia)
{
    p.fase.PendientesFam.push_back({"C:\\f\\a.jpg", "12.jpg"});

    sync::SubeFotosFamilias(p.fase);

    EXPECT_EQ(p.red.pasos,
              (QStringList{"ABRE", "SUBE 12.jpg a /tienda/img/c/", "BORRA imgfam.txt",
                           "SUBE imgfam.txt a /tienda/",
                           "PIDE http://casa/dimensiona.php?fichero=imgfam.txt&sufijofoto=_default",
                           "ABRE"}));
    EXPECT_EQ(p.Log(),
              (QStringList{"SUBIENDO FOTOS FAMILIAS...", "Subiendo imagen C:\\f\\a.jpg -> 12.jpg",
                           "Dimensionando rango de familias subidas"}));
    EXPECT_EQ(p.red.subidas.at(1).contenido, "img/c/12.jpg;\r\n");
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgfam.txt"));
}

TEST_F(Fotos, CadaQuinceVaUnaListaYAlFinalElResto)
{
    Articulos(16);

    sync::SubeFotosArticulos(p.fase);

    const auto listas = p.red.Contenidos("imgart.txt");
    ASSERT_EQ(listas.size(), 2U);
    EXPECT_EQ(listas[0].size(), 15);
    EXPECT_TRUE(listas[0].at(14).endsWith("img/p/115.jpg;"));
    EXPECT_EQ(listas[1],
              QStringList{"img/p/1/1/6/116.jpg                               img/p/116.jpg;"});
    EXPECT_EQ(p.progreso.avances.back(), std::pair(16, 16));
    EXPECT_EQ(p.progreso.turnos, 16);
}

TEST_F(Fotos, QuinceJustasDanUnaSolaLista)
{
    Articulos(15);

    sync::SubeFotosArticulos(p.fase);

    EXPECT_EQ(p.red.Contenidos("imgart.txt").size(), 1U);
}

TEST_F(Fotos, SiLaUltimaCierraUnGrupoNoVaOtraLista)
{
    Articulos(30);

    sync::SubeFotosArticulos(p.fase);

    const auto listas = p.red.Contenidos("imgart.txt");
    ASSERT_EQ(listas.size(), 2U);
    EXPECT_EQ(listas[0].size(), 15);
    ASSERT_EQ(listas[1].size(), 15);
    EXPECT_TRUE(listas[1][0].endsWith("img/p/116.jpg;"));
    EXPECT_TRUE(listas[1][14].endsWith("img/p/130.jpg;"));
    EXPECT_EQ(p.red.pasos.filter("dimensiona.php").size(), 2);
}

TEST_F(Fotos, UnaListaVaciaSoloAbreLaSesion)
{
    sync::SubeFotosArticulos(p.fase);
    sync::SubeFotosFamilias(p.fase);

    EXPECT_EQ(p.red.pasos, (QStringList{"ABRE", "ABRE"}));
    EXPECT_EQ(p.Log(), (QStringList{"SUBIENDO FOTOS ARTICULOS...", "SUBIENDO FOTOS FAMILIAS..."}));
}

TEST_F(Fotos, UnaSubidaQueFallaSeAnotaReabreYSigueEnLaLista)
{
    Articulos(2);
    p.red.fallan = {"101.jpg"};

    sync::SubeFotosArticulos(p.fase);

    EXPECT_EQ(p.red.pasos.mid(0, 4), (QStringList{"ABRE", "SUBE 101.jpg a /tienda/img/p/", "ABRE",
                                                  "SUBE 102.jpg a /tienda/img/p/"}));
    EXPECT_EQ(p.Log().at(2), "ERROR SUBIENDO FICHERO 101.jpg");
    EXPECT_EQ(p.red.Contenidos("imgart.txt").at(0).size(), 2);
}

TEST_F(Fotos, UnaFamiliaSinFotoNoSubeNadaPeroCuentaParaElGrupo)
{
    for (int i = 1; i <= 16; ++i)
        p.fase.PendientesFam.push_back(
            {i == 15 ? QString() : QStringLiteral("C:\\a.jpg"), QString::number(i) + ".jpg"});

    sync::SubeFotosFamilias(p.fase);

    const auto listas = p.red.Contenidos("imgfam.txt");
    ASSERT_EQ(listas.size(), 2U);
    EXPECT_EQ(listas[0].size(), 14);
    EXPECT_EQ(listas[1], QStringList{"img/c/16.jpg;"});
    EXPECT_FALSE(p.red.pasos.contains("SUBE 15.jpg a /tienda/img/c/"));
}

// There is nothing to be put on the list, so it isn't there; it is sent and asked for all the same.
TEST_F(Fotos, UnGrupoDeFamiliasSinNingunaFotoMandaSuListaQueNoEstaYSigueElSiguiente)
{
    for (int i = 1; i <= 16; ++i)
        p.fase.PendientesFam.push_back(
            {i == 16 ? QStringLiteral("C:\\a.jpg") : QString(), QString::number(i) + ".jpg"});
    p.red.fallan = {"imgfam.txt"};

    sync::SubeFotosFamilias(p.fase);

    const QString guion = "PIDE http://casa/dimensiona.php?fichero=imgfam.txt&sufijofoto=_default";
    EXPECT_EQ(p.red.pasos,
              (QStringList{"ABRE", "BORRA imgfam.txt", "SUBE imgfam.txt a /tienda/", guion, "ABRE",
                           "SUBE 16.jpg a /tienda/img/c/", "BORRA imgfam.txt",
                           "SUBE imgfam.txt a /tienda/", guion, "ABRE"}));
    EXPECT_EQ(p.red.Contenidos("imgfam.txt"), (std::vector<QStringList>{{}, {"img/c/16.jpg;"}}));
    EXPECT_EQ(p.Log(),
              (QStringList{
                  "SUBIENDO FOTOS FAMILIAS...", "ERROR SUBIENDO FICHERO imgfam.txt",
                  "Dimensionando rango de familias subidas", "Subiendo imagen C:\\a.jpg -> 16.jpg",
                  "ERROR SUBIENDO FICHERO imgfam.txt", "Dimensionando rango de familias subidas"}));
}

TEST_F(Fotos, SiLaListaNoSubeSeAnotaYSeDimensionaIgual)
{
    Articulos(1);
    p.red.fallan = {"imgart.txt"};

    sync::SubeFotosArticulos(p.fase);

    EXPECT_EQ(p.Log().mid(2), (QStringList{"ERROR SUBIENDO FICHERO imgart.txt",
                                           "Dimensionando rango de artículos subidos"}));
    EXPECT_TRUE(p.red.pasos.contains(
        "PIDE http://casa/dimensiona.php?fichero=imgart.txt&sufijofoto=_default"));
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgart.txt"));
}

} // namespace
