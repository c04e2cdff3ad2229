#include "apoyo/corrida_con_sitio.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/imagenes.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

struct Imagenes : testing::Test {
    CorridaConSitio p{};
    FilaDeArticulo fila{};

    Imagenes()
    {
        p.opciones.fotosArt = true;
        p.fase.contadores.mimage = 122;
        for (int i = 2; i <= 10; ++i)
            fila.Pon(qPrintable("FOTO" + QString::number(i)), Nulo());
    }

    /// Adds the pictures of the row, whose texts are in two languages.
    void Anade()
    {
        const data::Recordset registro = fila.Fila();
        sync::AnadeImagenes(p.fase, Articulo(registro));
    }
    static sync::Articulo Articulo(const data::Recordset& registro)
    {
        return {
            .fila = registro,
            .CodArticulo = "0101A",
            .id = "71",
            .textos = {{.lang = "3", .nombre = "Olla d´acero"}, {.lang = "1", .nombre = "Pot"}}};
    }
    QString CreaFoto(const QString& nombre) const
    {
        p.prueba.carpeta.Escribe(nombre, "foto");
        return p.prueba.carpeta.Ruta(nombre);
    }
    void Quita(std::initializer_list<std::initializer_list<Valor>> filas)
    {
        const data::Recordset registro = fila.Fila();
        data::Recordset productos(
            HazFilas({"id_product", "reference", "id_image", "date_upd"}, filas));
        sync::QuitaImagenes(p.fase, Articulo(registro), productos);
    }
};

TEST_F(Imagenes, ElEsquemaAntiguoLlevaLaPosicionComoTapa)
{
    fila.Pon("FOTO", CreaFoto("a.jpg"));
    fila.Pon("FOTO3", CreaFoto("c.jpg"));

    Anade();

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,1,1)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (123,1,1)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,3,'Olla d´acero')||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,1,'Pot')||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (124,71,3,3)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (124,1,3)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (124,3,'Olla d´acero')||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (124,1,'Pot')||"}));
    EXPECT_EQ(p.fase.contadores.mimage, 124);
}

TEST_F(Imagenes, ElEsquemaNuevoSoloTapaConLaPrimera)
{
    p.programa.parametros.PS_VERSION = 1;
    p.programa.parametros.Idiomas = {};
    fila.Pon("FOTO", CreaFoto("a.jpg"));
    fila.Pon("FOTO10", CreaFoto("j.jpg"));
    const data::Recordset registro = fila.Fila();

    sync::AnadeImagenes(p.fase, {.fila = registro, .id = "71"});

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,1,1)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (123,71,1,1)||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (124,71,10,Null)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (124,71,1,Null)||"}));
}

TEST_F(Imagenes, LasQueExistenVanALaListaDeSubidasYPidenSuCarpeta)
{
    const QString a = CreaFoto("a.jpg");
    const QString b = CreaFoto("b.jpg");
    fila.Pon("FOTO", a).Pon("FOTO2", b);

    Anade();

    ASSERT_EQ(p.fase.PendientesArt.size(), 3U);
    EXPECT_TRUE(p.fase.PendientesArt[0].rutaLocal.isEmpty()) << "pictures count from 1";
    EXPECT_EQ(p.fase.PendientesArt[1].rutaLocal, a);
    EXPECT_EQ(p.fase.PendientesArt[1].nombreRemoto, "123.jpg");
    EXPECT_EQ(p.fase.PendientesArt[2].rutaLocal, b);
    EXPECT_EQ(p.fase.PendientesArt[2].nombreRemoto, "124.jpg");
    EXPECT_EQ(p.Lineas("creapath.txt"), (QStringList{"1/2/3;", "1/2/4;"}));
}

TEST_F(Imagenes, LaQueNoExisteOEsUnaCarpetaDejaSusSentenciasYNoSeSube)
{
    p.prueba.carpeta.CreaCarpeta("carpeta.jpg");
    fila.Pon("FOTO", p.prueba.carpeta.Ruta("no_esta.jpg"));
    fila.Pon("FOTO2", p.prueba.carpeta.Ruta("carpeta.jpg"));

    Anade();

    EXPECT_EQ(p.Sentencias().size(), 8);
    EXPECT_EQ(p.fase.PendientesArt.size(), 1U);
    EXPECT_FALSE(p.prueba.carpeta.Existe("creapath.txt"));
}

TEST_F(Imagenes, SinLaMarcaDeFotosNoSeTocaNada)
{
    p.opciones.fotosArt = false;
    fila.Pon("FOTO", CreaFoto("a.jpg"));

    Anade();
    Quita({{71, "0101A", 9, Nulo()}});

    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgborra.txt"));
    EXPECT_EQ(p.fase.contadores.mimage, 122);
}

TEST_F(Imagenes, QuitarBorraTresFicherosYTresFilasPorImagen)
{
    Quita({{71, "0101A", 123, Nulo()}, {71, "0101A", 4, Nulo()}});

    EXPECT_EQ(p.Lineas("imgborra.txt"),
              (QStringList{"img/p/123.jpg;", "img/p/1/2/3/123-*.jpg;", "img/p/1/2/3/123.jpg;",
                           "img/p/4.jpg;", "img/p/4/4-*.jpg;", "img/p/4/4.jpg;"}));
    EXPECT_EQ(p.Sentencias(), (QStringList{"DELETE FROM ps_image_lang where id_image=123||",
                                           "DELETE FROM ps_image where id_image=123||",
                                           "DELETE FROM ps_image_shop where id_image=123||",
                                           "DELETE FROM ps_image_lang where id_image=4||",
                                           "DELETE FROM ps_image where id_image=4||",
                                           "DELETE FROM ps_image_shop where id_image=4||"}));
}

TEST_F(Imagenes, QuitarParaAlCambiarDeProducto)
{
    Quita({{71, "0101A", 123, Nulo()}, {72, "0101A", 124, Nulo()}, {71, "0101A", 125, Nulo()}});

    EXPECT_EQ(p.Sentencias().size(), 3);
}

TEST_F(Imagenes, UnProductoSinImagenNoQuitaNada)
{
    Quita({{71, "0101A", Nulo(), Nulo()}});

    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
    EXPECT_FALSE(p.prueba.carpeta.Existe("imgborra.txt"));
}

TEST_F(Imagenes, LaDeUnValorVaEnLaPosicionOnceConElOrdinalDeSuCategoriaComoTapa)
{
    const data::Recordset registro = fila.Fila();
    const QString foto = CreaFoto("v.jpg");

    EXPECT_EQ(sync::AnadeImagenDeValor(p.fase, Articulo(registro), foto, 2), "123");

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,2)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (123,1,2)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,3,'Olla d´acero')||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,1,'Pot')||"}));
    EXPECT_EQ(p.fase.PendientesArt.at(1).nombreRemoto, "123.jpg");
    EXPECT_EQ(p.Lineas("creapath.txt"), QStringList{"1/2/3;"});
}

// The same word for the shop, in the letters of the phase that writes it.
TEST_F(Imagenes, EnElEsquemaNuevoElNuloDelArticuloYElDelValorSeEscribenDistinto)
{
    p.programa.parametros.PS_VERSION = 1;
    fila.Pon("FOTO", "no_esta.jpg").Pon("FOTO2", "tampoco.jpg");
    const data::Recordset registro = fila.Fila();
    const sync::Articulo articulo{.fila = registro, .id = "71"};

    sync::AnadeImagenes(p.fase, articulo);
    sync::AnadeImagenDeValor(p.fase, articulo, "ni_esta.jpg", 1);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,1,1)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (123,71,1,1)||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (124,71,2,Null)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (124,71,1,Null)||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (125,71,11,null)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (125,71,1,null)||"}));
}

TEST_F(Imagenes, LaDeUnValorNoTapaEnElEsquemaNuevo)
{
    p.programa.parametros.PS_VERSION = 1;
    const data::Recordset registro = fila.Fila();

    sync::AnadeImagenDeValor(p.fase, {.fila = registro, .id = "71"}, "no_esta.jpg", 2);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,null)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (123,71,1,null)||"}));
}

} // namespace
