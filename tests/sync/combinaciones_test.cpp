#include "apoyo/corrida_con_sitio.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/combinaciones.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

const QString SqlUnaCategoria =
    "SELECT 1 AS CUANTASCAT,0 + T001.INC_PVP AS INC_PVP_COMBINA,0 + T001.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='0101A' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 ORDER BY SECUENCIA,CODCATEGORIA,VALOR";
const QString SqlDosCategorias =
    "SELECT 2 AS CUANTASCAT,0 + T001.INC_PVP3 + T002.INC_PVP3 AS INC_PVP_COMBINA,0 + T001.PESO + T002.PESO AS PESO_COMBINA,* FROM (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='COL' AND CODARTICULO='0101A' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T001 , (SELECT * FROM PS_CONF_ART_VAL WHERE CODCATEGORIA='TAL' AND CODARTICULO='0101A' ORDER BY SECUENCIA,CODCATEGORIA,VALOR) AS T002 ORDER BY T001.SECUENCIA,T001.CODCATEGORIA,T001.VALOR,T002.SECUENCIA,T002.CODCATEGORIA,T002.VALOR";

struct Combinaciones : testing::Test {
    CorridaConSitio p{};
    FilaDeArticulo fila{};
    const data::Recordset registro = fila.Fila();
    const sync::Articulo articulo{.fila = registro,
                                  .CodArticulo = "0101A",
                                  .id = "71",
                                  .textos = {{.lang = "3", .nombre = "Olla"}}};

    Combinaciones() { p.fase.contadores.mimage = 122; }

    void Categorias(const QStringList& codigos)
    {
        data::Filas filas = HazFilas({"CODCATEGORIA"}, {});
        for (const QString& codigo : codigos)
            filas.valores.push_back(codigo);
        p.local.Espera(
            "SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL WHERE CODARTICULO='0101A' ORDER BY CODCATEGORIA",
            filas);
    }
    void Valores(std::initializer_list<std::initializer_list<Valor>> filas)
    {
        Categorias({"COL"});
        p.local.Espera(
            SqlUnaCategoria,
            HazFilas({"CODCATEGORIA", "VALOR", "FOTO", "INC_PVP_COMBINA", "PESO_COMBINA"}, filas));
    }
    /// One row of two categories with these pictures: attributes 002004 and 005009.
    void DosCategorias(const Valor& fotoDeColor, const Valor& fotoDeTalla)
    {
        p.programa.parametros.Ps_pvpdef = 3;
        Categorias({"COL", "TAL"});
        p.local.Espera(
            SqlDosCategorias,
            HazFilas({"T001.CODCATEGORIA", "T001.VALOR", "T001.FOTO", "T002.CODCATEGORIA",
                      "T002.VALOR", "T002.FOTO", "INC_PVP_COMBINA", "PESO_COMBINA"},
                     {{"COL", "AZU", fotoDeColor, "TAL", "L", fotoDeTalla, 3.5, 1}}));
        Rango("COL", "AZU", 2, 4);
        Rango("TAL", "L", 5, 9);
    }
    void Rango(const QString& categoria, const QString& valor, int ncat, int nopc)
    {
        p.local.Espera(
            QString(
                "SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS CAT2 WHERE CAT2.CODCATEGORIA<='%1') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='%1' AND CODOPCIONAL<='%2'")
                .replace("%1", categoria)
                .replace("%2", valor),
            HazFilas({"NCAT", "NOPC"}, {{ncat, nopc}}));
    }
    QStringList Escribe()
    {
        sync::EscribeCombinaciones(p.fase, articulo);
        return p.Sentencias();
    }
};

TEST_F(Combinaciones, BorrarEmpiezaPorLasFilasYAcabaPorLasImagenes)
{
    sync::BorraCombinaciones(p.fase, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "DELETE FROM ps_product_attribute WHERE id_product=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='0101A' LIMIT 1)||",
            "DELETE FROM ps_product_attribute_combination WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='0101A' LIMIT 1)||",
            "DELETE FROM ps_product_attribute_shop WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='0101A' LIMIT 1)||",
            "DELETE FROM ps_product_attribute_image WHERE LEFT(ID_PRODUCT_ATTRIBUTE,CHAR_LENGTH(ID_PRODUCT_ATTRIBUTE)-5)=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='0101A' LIMIT 1)||"}));
}

TEST_F(Combinaciones, EnElEsquemaNuevoLasDeLaTiendaSeBorranPorElProducto)
{
    p.programa.parametros.PS_VERSION = 1;

    sync::BorraCombinaciones(p.fase, articulo);

    EXPECT_EQ(
        p.Sentencias().at(2),
        "DELETE FROM ps_product_attribute_shop WHERE id_product=(SELECT ID_PRODUCT From ps_product WHERE REFERENCE ='0101A' LIMIT 1)||");
}

TEST_F(Combinaciones, SinConfiguracionNoSeEscribeNada)
{
    Categorias({});

    EXPECT_TRUE(Escribe().isEmpty());
}

TEST_F(Combinaciones, UnaCategoriaLeeColumnasSinPrefijoYLaPrimeraFilaEsLaDeDefecto)
{
    Valores({{"COL", "AZU", Nulo(), 1.5, 0.25}, {"COL", "ROJ", Nulo(), 2, 0}});
    Rango("COL", "AZU", 2, 4);
    Rango("COL", "ROJ", 2, 7);

    EXPECT_EQ(
        Escribe(),
        (QStringList{
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 002004,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','1'),5)) ,1,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 002007,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5)) , ID_PRODUCT,2,0,NULL From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','2'),5)) ,1,2,0,NULL From ps_product WHERE REFERENCE ='0101A'||"}));
}

TEST_F(Combinaciones, DosCategoriasDanUnValorDeCadaUnaConLaTarifaDelDefecto)
{
    p.programa.parametros.PS_VERSION = 1;
    DosCategorias(Nulo(), Nulo());

    EXPECT_EQ(
        Escribe(),
        (QStringList{
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 002004,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 005009,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,3.5,1,1 From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','1'),5)) , ID_PRODUCT, 1,3.5,1,1 From ps_product WHERE REFERENCE ='0101A'||"}));
}

TEST_F(Combinaciones, UnIncrementoOUnPesoNuloCuentaCero)
{
    Valores({{"COL", "AZU", Nulo(), Nulo(), Nulo()}});
    Rango("COL", "AZU", 2, 4);

    EXPECT_TRUE(Escribe().at(1).contains(" , ID_PRODUCT,0,0,1 From "));
}

TEST_F(Combinaciones, LaMismaFotoSeSubeUnaVezPorArticuloYSeEnlazaEnCadaFila)
{
    p.opciones.fotosArt = true;
    p.prueba.carpeta.Escribe("azul.jpg", "foto");
    const QString azul = p.prueba.carpeta.Ruta("azul.jpg");
    Valores({{"COL", "AZU", azul, 1, 0}, {"COL", "CIE", azul, 1, 0}});
    Rango("COL", "AZU", 2, 4);
    Rango("COL", "CIE", 2, 5);

    const QStringList sentencias = Escribe();

    EXPECT_EQ(
        sentencias.mid(1, 4),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,1)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (123,1,1)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,3,'Olla')||",
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||"}));
    EXPECT_EQ(
        sentencias.at(8),
        "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'||");
    EXPECT_EQ(sentencias.size(), 11);
    EXPECT_EQ(p.fase.PendientesArt.size(), 2U);
}

TEST_F(Combinaciones, EnElEsquemaNuevoLaFotoVaEntreElValorYLaFilaDeLaCombinacion)
{
    p.opciones.fotosArt = true;
    p.programa.parametros.PS_VERSION = 1;
    Valores({{"COL", "AZU", "c:\\azul.jpg", 1.5, 0.25}});
    Rango("COL", "AZU", 2, 4);

    EXPECT_EQ(
        Escribe(),
        (QStringList{
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 002004,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,null)||",
            "INSERT INTO ps_image_shop (id_image,id_product,id_shop,cover) VALUES (123,71,1,null)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,3,'Olla')||",
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_shop (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,ID_SHOP,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('000000','1'),5)) , ID_PRODUCT, 1,1.5,0.25,1 From ps_product WHERE REFERENCE ='0101A'||"}));
}

TEST_F(Combinaciones, LaFotoDeDosCategoriasDeUnaFilaEntraConLaPrimeraYLaOtraSoloLaEnlaza)
{
    p.opciones.fotosArt = true;
    DosCategorias("c:\\azul.jpg", "c:\\azul.jpg");
    const QString enlace =
        "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||";

    const QStringList sentencias = Escribe();

    ASSERT_EQ(sentencias.size(), 9);
    EXPECT_EQ(
        sentencias.mid(1, 6),
        (QStringList{
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,1)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (123,1,1)||",
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (123,3,'Olla')||", enlace,
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 005009,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            enlace}));
    EXPECT_EQ(p.fase.contadores.mimage, 123);
}

TEST_F(Combinaciones, LaFotoDeLaSegundaCategoriaLlevaSuOrdinalComoTapa)
{
    p.opciones.fotosArt = true;
    DosCategorias(Nulo(), "c:\\azul.jpg");

    const QStringList sentencias = Escribe();

    EXPECT_EQ(
        sentencias.mid(1, 3),
        (QStringList{
            "INSERT INTO ps_product_attribute_combination (ID_ATTRIBUTE,ID_PRODUCT_ATTRIBUTE) SELECT 005009,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_image (id_image,id_product,position,cover) VALUES (123,71,11,2)||",
            "INSERT INTO ps_image_shop (id_image,id_shop,cover) VALUES (123,1,2)||"}));
}

TEST_F(Combinaciones, UnaFotoSinFicheroEsUnaImagenEnlazadaEnCadaFilaQueNadieSube)
{
    p.opciones.fotosArt = true;
    const QString ninguna = p.prueba.carpeta.Ruta("no_esta.jpg");
    Valores({{"COL", "AZU", ninguna, 1, 0}, {"COL", "CIE", ninguna, 1, 0}});
    Rango("COL", "AZU", 2, 4);
    Rango("COL", "CIE", 2, 5);

    const QStringList sentencias = Escribe();

    EXPECT_EQ(sentencias.filter("INTO ps_image ").size(), 1);
    EXPECT_EQ(
        sentencias.filter("INTO ps_product_attribute_image "),
        (QStringList{
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5))  From ps_product WHERE REFERENCE ='0101A'||",
            "INSERT INTO ps_product_attribute_image (id_image,id_product_attribute) SELECT 123,CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','2'),5))  From ps_product WHERE REFERENCE ='0101A'||"}));
    EXPECT_EQ(p.fase.PendientesArt.size(), 1U) << "the first element is never a picture";
    EXPECT_FALSE(p.prueba.carpeta.Existe("creapath.txt"));
}

TEST_F(Combinaciones, EnOtroArticuloLaMismaFotoEsOtraImagen)
{
    p.opciones.fotosArt = true;
    for (int vez = 0; vez < 2; ++vez) {
        Valores({{"COL", "AZU", "c:\\azul.jpg", 1, 0}});
        Rango("COL", "AZU", 2, 4);
        Escribe();
    }

    EXPECT_EQ(p.fase.contadores.mimage, 124);
}

TEST_F(Combinaciones, SinLaMarcaDeFotosNoHayImagenes)
{
    Valores({{"COL", "AZU", "c:\\azul.jpg", 1, 0}});
    Rango("COL", "AZU", 2, 4);

    EXPECT_EQ(Escribe().size(), 3);
    EXPECT_EQ(p.fase.contadores.mimage, 122);
}

} // namespace
