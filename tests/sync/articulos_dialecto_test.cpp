#include "pasada_de_articulos.h"

// What the shop's dialect does to the texts of an article: the sentences of the pass go through
// the translator, which takes every "&" for the operator that joins texts.

using namespace tolmo;
using data::Nulo;

namespace {

struct DialectoDeArticulos : PasadaDeArticulos {
    FilaDeArticulo fila{};

    /// The batch of the pass over the one article A, which the shop lacks or has as 33.
    QStringList Inserta()
    {
        NoEstaEnLaTienda("A");
        return Pasa();
    }
    QStringList Cambia()
    {
        EstaEnLaTienda("A", 33, Dia(1, 9));
        return Pasa();
    }
    QStringList LineasDelRegistro() const
    {
        QStringList lineas = p.Lineas("HISTORICOWEB/20240315VUELCOPRESTASHOP.TXT");
        return lineas.replaceInStrings("[15/03/2024 9:05:07] ", "");
    }

  private:
    QStringList Pasa()
    {
        p.prueba.carpeta.CreaCarpeta("HISTORICOWEB");
        Articulos({"A"}, fila);
        sync::PasaArticulos(p.fase);
        return p.red.Lotes().at(0);
    }
};

// No bracket in the whole sentence: the translator can't read it, and the writer loses it.
TEST_F(DialectoDeArticulos, EnElCambioUnSignoEnElNombrePierdeLosTextosSinAviso)
{
    fila.Pon("PSCAMPODESCRIPCION0", "A & B");

    EXPECT_EQ(
        Cambia().mid(0, 3),
        (QStringList{
            "UPDATE ps_product SET id_tax_rules_group=2,id_manufacturer=null,supplier_reference='ALT7',id_category_default=1,price=10.5,on_sale=0,date_upd=CAST('2024/03/15' AS DATE),weight=1.25,minimal_quantity=4,cache_has_attachments='1' WHERE id_product='33'||",
            "UPDATE ps_product_shop SET id_tax_rules_group=2,id_category_default=1,price=10.5,minimal_quantity=4,on_sale=0,date_upd=CAST('2024/03/15' AS DATE) WHERE id_product='33'||",
            "DELETE FROM ps_product_tag where id_product='33'||"}));
    EXPECT_EQ(p.Log(),
              (QStringList{"Actualizando y modificando articulos", "Actualizando articulo A / ALT7",
                           "SUBIENDO FICHERO sentencias.sql",
                           "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
}

TEST_F(DialectoDeArticulos, EnElCambioUnSignoEntreLosParentesisDeUnTextoSoloLosUneAEllos)
{
    fila.Pon("PSCAMPODESCRIPCION0", "Olla (A & B)");

    EXPECT_EQ(
        Cambia().value(2),
        "UPDATE ps_product_lang SET link_rewrite='olla--a---b-',name='Olla  CONCAT(A , B)',meta_keywords='k´1',meta_title='t´1',meta_description='d´1',description='uno<br>´dos´',description_short='corta ´x´<br>fin' WHERE id_product='33' AND id_lang=3||");
}

TEST_F(DialectoDeArticulos, EnElAltaUnSignoEnElNombreUneTodosLosValores)
{
    fila.Pon("PSCAMPODESCRIPCION0", "A & B");

    EXPECT_EQ(
        Inserta().value(2),
        "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES  CONCAT(71,3,'a---b','k´1','t´1','d´1','A , B','uno<br>´dos´ ','corta ´x´<br>fin')||");
}

TEST_F(DialectoDeArticulos, UnSignoEnElNombreUneLosValoresDeLaLeyenda)
{
    p.opciones.fotosArt = true;
    p.fase.contadores.mimage = 122;
    fila.Pon("PSCAMPODESCRIPCION0", "A & B").Pon("FOTO", "no_esta.jpg");
    for (int i = 2; i <= 10; ++i)
        fila.Pon(qPrintable("FOTO" + QString::number(i)), Nulo());

    EXPECT_EQ(
        Inserta().filter("ps_image_lang"),
        QStringList{
            "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES  CONCAT(123,3,'A , B')||"});
}

// The first bracket of the sentence is the date's, far behind the code.
TEST_F(DialectoDeArticulos, EnElCambioUnSignoEnElCodigoAlternativoCaeEnElParentesisDeLaFecha)
{
    fila.Pon("codalternativo", "A & B");

    EXPECT_EQ(
        Cambia().value(0),
        "UPDATE ps_product SET id_tax_rules_group=2,id_manufacturer=null,supplier_reference='A , B',id_category_default=1,price=10.5,on_sale=0,date_upd=CAST CONCAT('2024/03/15' AS DATE),weight=1.25,minimal_quantity=4,cache_has_attachments='1' WHERE id_product='33'||");
}

TEST_F(DialectoDeArticulos, EnElAltaUnSignoEnElCodigoAlternativoUneTodosLosValores)
{
    fila.Pon("codalternativo", "A & B");

    EXPECT_TRUE(Inserta().value(0).endsWith(
        " VALUES  CONCAT(71,null,null,2,1,0,null,0,0,10.5,0,'A','A , B',NULL,1.25,4,1,0,0,0,0,1,0,CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),'1')||"));
}

// The word is taken for the limit of a query, which goes to the end: behind the terminator, and so
// in front of the next sentence.
TEST_F(DialectoDeArticulos, LaPalabraTopDeUnTextoSeVaConLaSiguienteDetrasDelFinal)
{
    fila.Pon("PSNOTAS0", "mesa top gama alta");

    const QStringList lote = Cambia();

    EXPECT_EQ(
        lote.mid(2, 2),
        (QStringList{
            "UPDATE ps_product_lang SET link_rewrite='olla-d-acero',name='Olla d´acero',meta_keywords='k´1',meta_title='t´1',meta_description='d´1',description='mesa alta',description_short='corta ´x´<br>fin' WHERE id_product='33' AND id_lang=3|| LIMIT  gama",
            "DELETE FROM ps_product_tag where id_product='33'||"}));
}

TEST_F(DialectoDeArticulos, LasLetrasDeUnTipoDeColumnaSeCambianDentroDeUnaPalabra)
{
    fila.Pon("PSCAMPODESCRIPCION0", "Un contexto");

    EXPECT_EQ(
        Inserta().value(2),
        "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (71,3,'un-coLONGTEXTo','k´1','t´1','d´1','Un coLONGTEXTo','uno<br>´dos´ ','corta ´x´<br>fin')||");
}

TEST_F(DialectoDeArticulos, UnSignoEnElCodigoAlternativoDejaLaLineaFueraDelFicheroDeRegistro)
{
    fila.Pon("codalternativo", "A & B");

    Cambia();

    EXPECT_EQ(p.Log().value(1), "Actualizando articulo A / A & B");
    EXPECT_EQ(
        LineasDelRegistro(),
        (QStringList{"Actualizando y modificando articulos", "SUBIENDO FICHERO sentencias.sql",
                     "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
}

} // namespace
