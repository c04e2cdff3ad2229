#include "apoyo/corrida_real.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// Data that the shop's server refuses, by the rules that leave some texts and numbers as they are.
struct SentenciasQueFallan : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(
            *tienda, QMap<QString, QString>{{"CAMPOFAMALT", "'OTRASFAM'"}});
        empresa->Sql("INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,KEYWORDS_FAM) VALUES "
                     "('000001',1,'PALABRAS');\n" +
                     SqlFamilia("01", 0, "Cocina", {{"PALABRAS", "'D''Artagnan'"}}) +
                     SqlArticulo("01A", {{"OTRASFAM", "'01'"}}));
        primera = empresa->Corre();
        empresa->Sql(SqlArticulo("01B", {{"CODIVA", "Null"}}) + SqlArticulo("01C"));
        segunda = empresa->Corre();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida primera{}, segunda{};
};

TEST_F(SentenciasQueFallan, ElApostrofoDeUnasPalabrasClaveSeCuentaConSuSangria)
{
    EXPECT_EQ(
        EnLineas(primera.Log("EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                             "Actualizando y modificando articulos")),
        EnLineas(
            {"EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
             "ERRORES EJECUTANDO SENTENCIAS", "",
             "        Error al ejecutar consulta: You have an error in your SQL syntax; check the manual that corresponds to your MariaDB server version for the right syntax to use near 'Artagnan','Cocina','')' at line 1",
             "        INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,1,'Cocina','cocina','','D'Artagnan','Cocina','')",
             "        ", "Actualizando y modificando articulos"}));
}

TEST_F(SentenciasQueFallan, UnaCategoriaRepetidaSeCuentaYNadaMas)
{
    EXPECT_EQ(
        EnLineas(primera.Log("EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                             "ERROR SUBIENDO FICHERO creapath.txt")),
        EnLineas(
            {"EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
             "ERRORES EJECUTANDO SENTENCIAS", "",
             "        Error al ejecutar consulta: Duplicate entry '3-1' for key 'PRIMARY'",
             "        INSERT INTO ps_category_product (id_category,id_product,position) VALUES (3,1,1)",
             "        ", "Error subiendo fichero " + empresa->Actual() + "\\creapath.txt",
             "ERROR SUBIENDO FICHERO creapath.txt"}));
}

TEST_F(SentenciasQueFallan, LasDemasDelLoteSeAplicanYLaCorridaTermina)
{
    EXPECT_EQ(primera.estado, 0);
    EXPECT_EQ(primera.errores, "");
    EXPECT_TRUE(primera.log.contains("FIN VUELCO DATOS A PRESTASHOP "));
    EXPECT_EQ(tienda->Sql("SELECT nleft,nright FROM ps_category WHERE id_category=3"),
              (Filas{{"3", "4"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_lang FROM ps_category_lang WHERE id_category=3"), Filas{});
    EXPECT_EQ(tienda->Sql("SELECT id_category FROM ps_category_product WHERE id_product=1"),
              (Filas{{"3"}}));
}

TEST_F(SentenciasQueFallan, UnNumeroNuloDejaElHuecoYSoloFaltaEseArticulo)
{
    const QString hoy = HoyMysql();
    EXPECT_EQ(
        EnLineas(segunda.Sentencias("INSERT INTO ps_product_shop ")),
        EnLineas(
            {"INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES (2,1,,3,0,0,10.5,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",1)",
             "INSERT INTO ps_product_shop (id_product,id_shop,id_tax_rules_group,id_category_default,on_sale,ecotax,price,wholesale_price,customizable,uploadable_files,text_fields,active,indexed,date_add,date_upd,minimal_quantity) VALUES (3,1,1,3,0,0,10.5,0,0,0,0,1,0," +
                 hoy + "," + hoy + ",1)"}));
    EXPECT_EQ(segunda.log.filter("Error al ejecutar consulta:").size(), 3); // a family's, two of it
    EXPECT_EQ(tienda->Sql("SELECT id_product,reference FROM ps_product ORDER BY id_product"),
              (Filas{{"1", "01A"}, {"3", "01C"}}));
}

} // namespace
