#include "apoyo/corrida_de_prueba.h"
#include "fila_de_articulo.h"
#include "sync/articulo.h"
#include "sync/categorias.h"
#include "sync/producto.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;

namespace {

const QString SqlFamilia =
    "SELECT TOP 1 * FROM M_FAMILIA WHERE '0101A' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S') OR EMPRESASWEB LIKE '%,000001,%') ORDER BY NIVEL DESC";

struct ArticuloTest : testing::Test {
    CorridaDePrueba p{};
    FilaDeArticulo fila{};
    data::Recordset registro{data::Filas{}};

    /// The article with its look-ups answered: category 57.
    sync::Articulo Prepara()
    {
        p.local.Espera(SqlFamilia, HazFilas({"CLAVE", "NIVEL"}, {{"0101", 1}}));
        p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='0101'",
                        HazFilas({"id_category"}, {{57}}));
        registro = fila.Fila();
        return sync::PreparaArticulo(p.corrida, registro, "71", sync::Camino::Alta);
    }
};

TEST_F(ArticuloTest, CambiarEscribeProductoTiendaYTextos)
{
    const sync::Articulo articulo = Prepara();

    sync::CambiaProducto(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "UPDATE ps_product SET id_tax_rules_group=2,id_manufacturer=null,supplier_reference='ALT7',id_category_default=57,price=10.5,on_sale=0,date_upd=CAST('2024/03/15' AS DATE),weight=1.25,minimal_quantity=4,cache_has_attachments='1' WHERE id_product='71'||",
            "UPDATE ps_product_shop SET id_tax_rules_group=2,id_category_default=57,price=10.5,minimal_quantity=4,on_sale=0,date_upd=CAST('2024/03/15' AS DATE) WHERE id_product='71'||",
            "UPDATE ps_product_lang SET link_rewrite='olla-d-acero',name='Olla d´acero',meta_keywords='k´1',meta_title='t´1',meta_description='d´1',description='uno<br>´dos´',description_short='corta ´x´<br>fin' WHERE id_product='71' AND id_lang=3||"}));
}

TEST_F(ArticuloTest, InsertarPoneUnBlancoTrasLasNotas)
{
    const sync::Articulo articulo = Prepara();

    sync::InsertaProducto(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_product (id_product,id_supplier,id_manufacturer,id_tax_rules_group,id_category_default,on_sale,ean13,ecotax,quantity,price,wholesale_price,reference,supplier_reference,location,weight,minimal_quantity,out_of_stock,quantity_discount,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,cache_has_attachments) VALUES (71,null,null,2,57,0,null,0,0,10.5,0,'0101A','ALT7',NULL,1.25,4,1,0,0,0,0,1,0,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),'1')||",
            "INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES (71,1,2,57,0,0,10.5,0,0,0,0,1,0,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),4)||",
            "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (71,3,'olla-d-acero','k´1','t´1','d´1','Olla d´acero','uno<br>´dos´ ','corta ´x´<br>fin')||"}));
}

TEST_F(ArticuloTest, CadaIdiomaLlevaSuFilaYTodosLosTextosNulosQuedanVacios)
{
    p.programa.parametros.Idiomas.push_back(CorridaDePrueba::Idioma(5));
    for (const char* columna : {"PSCAMPODESCRIPCION1", "PSCAMPODESCORTA1", "PSTAG1", "PSKEYWORDS1",
                                "PsMetaTituloArt1", "PsMetaDescripcionArt1", "PSNOTAS1"})
        fila.Pon(columna, Nulo());
    const sync::Articulo articulo = Prepara();

    sync::CambiaProducto(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias().value(3),
        "UPDATE ps_product_lang SET link_rewrite='',name='',meta_keywords='',meta_title='',meta_description='',description='',description_short='' WHERE id_product='71' AND id_lang=5||");
}

TEST_F(ArticuloTest, SinIvaNiPrecioQuedanLosHuecos)
{
    fila.Pon("CODIVA", Nulo()).Pon("PVP1", Nulo());
    const sync::Articulo articulo = Prepara();

    sync::CambiaProducto(p.corrida, articulo);

    EXPECT_TRUE(p.Sentencias().value(0).startsWith(
        "UPDATE ps_product SET id_tax_rules_group=,id_manufacturer=null,"));
    EXPECT_TRUE(p.Sentencias().value(1).contains(",price=,minimal_quantity=4,"));
}

TEST_F(ArticuloTest, ElPrecioEsElDeLaTarifaPorDefecto)
{
    p.programa.parametros.Ps_pvpdef = 3;

    EXPECT_EQ(Prepara().precio, "8");
}

TEST_F(ArticuloTest, LaCantidadVaciaONulaEsUno)
{
    for (const data::Valor& valor : {Nulo(), data::Valor(0), data::Valor("")}) {
        fila.Pon("PS_CANTMINIMA", valor);
        EXPECT_EQ(Prepara().cantidad, "1");
    }
}

TEST_F(ArticuloTest, UnaComillaEnElCodigoAlternativoNoSeTrata)
{
    fila.Pon("codalternativo", "A'7");

    EXPECT_EQ(Prepara().codalternativo, "A'7");
}

TEST_F(ArticuloTest, SinFamiliaPublicadaLaCategoriaEsUno)
{
    p.local.Espera(SqlFamilia, SinFilas);

    EXPECT_EQ(sync::CategoriaDeArticulo(p.corrida, "0101A"), "1");
}

TEST_F(ArticuloTest, SinCategoriaEnLaTiendaEsUno)
{
    p.local.Espera(SqlFamilia, HazFilas({"CLAVE"}, {{"0101"}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='0101'", SinFilas);

    EXPECT_EQ(sync::CategoriaDeArticulo(p.corrida, "0101A"), "1");
}

TEST_F(ArticuloTest, UnaCategoriaNulaQuedaVaciaYElProductoTomaUno)
{
    p.local.Espera(SqlFamilia, HazFilas({"CLAVE"}, {{"0101"}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='0101'",
                    HazFilas({"id_category"}, {{Nulo()}}));
    registro = fila.Fila();

    const sync::Articulo articulo =
        sync::PreparaArticulo(p.corrida, registro, "71", sync::Camino::Alta);

    EXPECT_EQ(articulo.categoria, "");
    EXPECT_EQ(articulo.catdefecto, "1");
}

TEST_F(ArticuloTest, UnaCategoriaDeNumeroCeroCuentaComoVacia)
{
    p.local.Espera(SqlFamilia, HazFilas({"CLAVE"}, {{"0101"}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='0101'",
                    HazFilas({"id_category"}, {{0}}));
    registro = fila.Fila();
    const sync::Articulo articulo =
        sync::PreparaArticulo(p.corrida, registro, "71", sync::Camino::Alta);

    sync::EnlazaCategoria(p.corrida, articulo);

    EXPECT_EQ(articulo.catdefecto, "1");
    EXPECT_TRUE(p.Sentencias().isEmpty()) << "no link";
}

TEST_F(ArticuloTest, LaListaDeActivosVaEntreComillasYLaEmpresaEntreComas)
{
    p.programa.parametros.CADACTIVOWEB = "S,X";
    p.programa.parametros.PS_TABLAFAM = "V_FAM";
    p.programa.LblEmpresa = "000007 Otra";
    p.local.Espera(
        "SELECT TOP 1 * FROM V_FAM WHERE '0101A' LIKE CLAVE & '%' AND (ACTIVOWEB IN ('S','X') OR EMPRESASWEB LIKE '%,000007,%') ORDER BY NIVEL DESC",
        SinFilas);

    sync::CategoriaDeArticulo(p.corrida, "0101A");
}

TEST_F(ArticuloTest, LaMarcaDependeDelParametro)
{
    const data::Recordset una = fila.Fila();
    EXPECT_EQ(sync::MarcaDeArticulo(una, ""), "null");
    EXPECT_EQ(sync::MarcaDeArticulo(una, "1"), "41");
    EXPECT_EQ(sync::MarcaDeArticulo(una, "2"), "42");

    fila.Pon("CODGRUPO", Nulo()).Pon("GRUPO2", 0);
    const data::Recordset otra = fila.Fila();
    EXPECT_EQ(sync::MarcaDeArticulo(otra, "1"), "null");
    EXPECT_EQ(sync::MarcaDeArticulo(otra, "2"), "null");
    EXPECT_THROW(sync::MarcaDeArticulo(otra, "9"), data::ErrorDatos);
}

TEST_F(ArticuloTest, ElEnlaceDeCategoriaLlevaElProductoComoPosicion)
{
    const sync::Articulo articulo = Prepara();

    sync::BorraCategorias(p.corrida, articulo);
    sync::EnlazaCategoria(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "DELETE FROM ps_category_product where id_product=71||",
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (57,71,71)||"}));
}

TEST_F(ArticuloTest, UnaCategoriaVaciaNoSeEnlaza)
{
    sync::Articulo articulo = Prepara();
    articulo.categoria.clear();

    sync::EnlazaCategoria(p.corrida, articulo);

    EXPECT_TRUE(p.Sentencias().isEmpty());
}

TEST_F(ArticuloTest, ElFavoritoSeEnlazaConElInicio)
{
    fila.Pon("FAVORITO", true);
    const sync::Articulo articulo = Prepara();

    sync::EnlazaInicio(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        QStringList{
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (2,71,71)||"});
}

TEST_F(ArticuloTest, ElQueNoEsFavoritoNoSeEnlazaConElInicio)
{
    const sync::Articulo articulo = Prepara();

    sync::EnlazaInicio(p.corrida, articulo);

    EXPECT_TRUE(p.Sentencias().isEmpty());
}

TEST_F(ArticuloTest, ConElFavoritoNuloNoSeEnlazaConElInicio)
{
    fila.Pon("FAVORITO", Nulo());
    const sync::Articulo articulo = Prepara();

    sync::EnlazaInicio(p.corrida, articulo);

    EXPECT_TRUE(p.Sentencias().isEmpty());
}

TEST_F(ArticuloTest, UnaFamiliaAlternativaVaciaSePideComoOtraCualquiera)
{
    fila.Pon("FAMALT", "A,,B");
    const sync::Articulo articulo = Prepara();
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='A'",
                    HazFilas({"id_category"}, {{12}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia=''",
                    HazFilas({"id_category"}, {{13}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='B'",
                    HazFilas({"id_category"}, {{14}}));

    sync::EnlazaFamiliasAlternativas(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (12,71,71)||",
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (13,71,71)||",
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (14,71,71)||"}));
}

TEST_F(ArticuloTest, LasFamiliasAlternativasNoSeRecortanYLasDesconocidasSeSaltan)
{
    fila.Pon("FAMALT", "02, 03,04");
    const sync::Articulo articulo = Prepara();
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='02'",
                    HazFilas({"id_category"}, {{12}}));
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia=' 03'", SinFilas);
    p.tienda.Espera("SELECT id_category FROM ps_category WHERE kov_familia='04'",
                    HazFilas({"id_category"}, {{14}}));

    sync::EnlazaFamiliasAlternativas(p.corrida, articulo);

    EXPECT_EQ(
        p.Sentencias(),
        (QStringList{
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (12,71,71)||",
            "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (14,71,71)||"}));
}

TEST_F(ArticuloTest, SinFamiliasAlternativasNoSePreguntaALaTienda)
{
    const sync::Articulo articulo = Prepara();

    sync::EnlazaFamiliasAlternativas(p.corrida, articulo);

    EXPECT_EQ(p.tienda.consultas.size(), 1); // that of the default category
}

} // namespace
