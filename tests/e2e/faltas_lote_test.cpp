#include "faltas_apoyo.h"
#include <gmock/gmock.h>

namespace {

class FaltasDeLote : public testing::Test {
  protected:
    TiendaDePrueba& tienda = TiendaDeFaltas();
    EmpresaReal empresa{tienda};
};

// clang-format off
TEST_F(FaltasDeLote, UnaSentenciaQueFallaEnMedioNoEstorbaALasDemas)
{
    empresa.Sql(SqlCatalogo() + SqlArticulo("0101B"));
    // A text without its product, left behind in the shop: the product's own can't be added.
    tienda.Ejecuta("INSERT INTO ps_product_lang (id_product,id_shop,id_lang,link_rewrite,name) VALUES (1,1,1,'resto','Resto')");

    const ResultadoCorrida corrida = empresa.Corre();

    const QString fallida = "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,1,'art-0101a','','Art 0101A','Notas 0101A','Art 0101A','Notas 0101A ','Corta 0101A')";
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, "");
    EXPECT_EQ(EnLineas(Tramo(corrida.log, "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)", "REGENERANDO INDICES DE BÚSQUEDA...")),
              EnLineas({"EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                        "ERRORES EJECUTANDO SENTENCIAS",
                        "",
                        "        Error al ejecutar consulta: Duplicate entry '1-1-1' for key 'PRIMARY'",
                        "        " + fallida.left(200),
                        "        ",
                        "Error subiendo fichero " + empresa.Actual() + "\\creapath.txt",
                        "ERROR SUBIENDO FICHERO creapath.txt",
                        "REGENERANDO INDICES DE BÚSQUEDA..."}));
    EXPECT_EQ(corrida.log.mid(corrida.log.size() - 6), FinDelLog());
    EXPECT_EQ(tienda.Sql("SELECT p.reference,l.name,s.quantity FROM ps_product p JOIN ps_product_lang l USING (id_product) JOIN ps_stock_available s USING (id_product) ORDER BY id_product"),
              (std::vector<QStringList>{{"0101A", "Resto", "0"}, {"0101B", "Art 0101B", "0"}}));
}

TEST_F(FaltasDeLote, UnArticuloSinTipoDeIvaFallaSoloEnSusDosSentencias)
{
    empresa.Sql(SqlFamilia("01", 0, "Cocina") + SqlArticulo("0101A", {{"CODIVA", "Null"}}) + SqlArticulo("0101B"));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.log.count("ERRORES EJECUTANDO SENTENCIAS"), 1);
    EXPECT_EQ(corrida.log.filter("Error al ejecutar consulta: ").size(), 2);
    EXPECT_TRUE(corrida.Sentencias("INSERT INTO ps_product (")[0].contains(" VALUES (1,null,null,,3,0,"));
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"), (std::vector<QStringList>{{"0101B"}}));
    EXPECT_EQ(tienda.Sql("SELECT name FROM ps_product_lang"), (std::vector<QStringList>{{"Art 0101A"}, {"Art 0101B"}}));
    // It is not in the shop yet, so it is tried again.
    EXPECT_TRUE(empresa.Corre().log.contains("Añadiendo artículo 0101A / ALT0101A"));
}

TEST_F(FaltasDeLote, LosTextosLleganConSusLetrasALaTienda)
{
    empresa.Sql("INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,TAG,KEYWORDS,KEYWORDS_FAM,METADESCRIPCION_ART,METATITULO_FAM,METADESCRIPCION_FAM) VALUES ('000001',1,'ETIQUETAS','PALABRAS','PALABRAS','DESCRIPCIO2','RESUMEN','RESUMEN');\n" +
                SqlFamilia("01", 0, "Baño d''Ávila", {{"NOTAS", "'l''aigua' & Chr(13) & Chr(10) & '5 € ¿ñ? œ Ω'"}, {"PALABRAS", "'caña, €'"}, {"RESUMEN", "'Œuvre “x”'"}}) +
                SqlArticulo("01Ñ1", {{"CODALTERNATIVO", "'Ü'"},
                                     {"DESCRIPCION", "'Caña ''Ñandú'' \"5\" €'"},
                                     {"DESCRIPCIO2", "'corta' & Chr(13) & Chr(10) & '''x'' – Ž'"},
                                     {"NOTAS", "'l''una' & Chr(13) & Chr(10) & 'dos ñ €' & Chr(13) & Chr(10) & 'Ω 日本 😀 fin'"},
                                     {"PALABRAS", "'l''hort, çà'"},
                                     {"ETIQUETAS", "'caña €,'"}}));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_FALSE(corrida.log.contains("ERRORES EJECUTANDO SENTENCIAS")) << EnLineas(corrida.log);
    EXPECT_EQ(tienda.Sql("SELECT name,link_rewrite,description,meta_keywords,meta_title,meta_description FROM ps_category_lang WHERE id_category=3"),
              (std::vector<QStringList>{{"Baño d´Ávila", "bao-d-avila", "l´aigua<br>5 € ¿ñ? œ ?", "caña, €", "Œuvre “x”", "Œuvre “x”"}}));
    EXPECT_EQ(tienda.Sql("SELECT reference,supplier_reference FROM ps_product"), (std::vector<QStringList>{{"01Ñ1", "Ü"}}));
    EXPECT_EQ(tienda.Sql("SELECT name,link_rewrite,description,description_short,meta_keywords,meta_title,meta_description FROM ps_product_lang"),
              (std::vector<QStringList>{{"Caña ´Ñandú´ \"5\" €", "caa--andu---5--", "l´una<br>dos ñ €<br>? ?? ? fin ", "corta<br>´x´ – Ž", "l´hort, çà", "Caña ´Ñandú´ \"5\" €", "corta\r\n´x´ – Ž"}}));
    // The tag goes to the shop by another road than its link.
    EXPECT_EQ(tienda.Sql("SELECT t.name FROM ps_product_tag p JOIN ps_tag t USING (id_tag)"), (std::vector<QStringList>{{"caña €"}}));
}

TEST_F(FaltasDeLote, UnCodigoConLetrasPropiasSeEncuentraOtraVez)
{
    empresa.Sql(SqlFamilia("01", 0, "Cocina") + SqlArticulo("01Ñ1€"));

    empresa.Corre();
    const ResultadoCorrida otra = empresa.Corre();

    EXPECT_EQ(EnLineas(otra.log.filter("Añadiendo artículo")), "");
    EXPECT_EQ(tienda.Sql("SELECT reference FROM ps_product"), (std::vector<QStringList>{{"01Ñ1€"}}));
}

TEST_F(FaltasDeLote, UnaComillaEnLasPalabrasDeUnaFamiliaRompeSoloSuSentencia)
{
    empresa.Sql(SqlFamilia("01", 0, "Cocina", {{"PALABRAS", "'l''aigua'"}}) + SqlFamilia("02", 0, "Baño") +
                "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,KEYWORDS_FAM) VALUES ('000001',1,'PALABRAS');\n");

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 0);
    const QStringList detalle = Tramo(corrida.log, "ERRORES EJECUTANDO SENTENCIAS", "Actualizando y modificando articulos");
    ASSERT_EQ(detalle.size(), 6) << EnLineas(corrida.log);
    EXPECT_THAT(detalle[2].toStdString(), testing::StartsWith("        Error al ejecutar consulta: You have an error in your SQL syntax; "));
    EXPECT_EQ(detalle[3], "        INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,1,'Cocina','cocina','','l'aigua','Cocina','')");
    EXPECT_EQ(tienda.Sql("SELECT id_category FROM ps_category WHERE id_category>2"), (std::vector<QStringList>{{"3"}, {"4"}}));
    EXPECT_EQ(tienda.Sql("SELECT name FROM ps_category_lang WHERE id_category>2"), (std::vector<QStringList>{{"Baño"}}));
}
// The "&" of a code is taken for an operator that has no bracket to stand in.
TEST_F(FaltasDeLote, UnCodigoQueElTraductorNoEntiendeCierraElProgramaYLasFamiliasSeQuedan)
{
    empresa.Sql(SqlCatalogo() + SqlArticulo("01&1"));

    const ResultadoCorrida corrida = empresa.Corre();

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_THAT(corrida.errores.toStdString(), testing::StartsWith("ERROR: "));
    EXPECT_THAT(corrida.errores.toStdString(), testing::EndsWith("\nSELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='01&1'" + CierreDePrograma.toStdString()));
    EXPECT_EQ(EnLineas(corrida.log.mid(corrida.log.size() - 3)), "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin\nActualizando y modificando articulos\n\n");
    EXPECT_EQ(tienda.Sql("SELECT kov_familia FROM ps_category WHERE id_category>2"), (std::vector<QStringList>{{"01"}}));
    EXPECT_FALSE(empresa.Carpeta().Existe("sentencias.sql"));
}
// clang-format on

} // namespace
