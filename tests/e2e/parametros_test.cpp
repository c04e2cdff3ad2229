#include "apoyo/corrida_real.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// A company of its own for each suite, on a fresh shop.
struct Casa : testing::Test {
    static void Abre(const OpcionesTienda& opciones, const QMap<QString, QString>& parametros)
    {
        tienda = &TiendaComun(opciones);
        empresa = std::make_unique<EmpresaReal>(*tienda, parametros);
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
};

/// A shop whose tables begin in another way, and an article whose texts hold the usual beginning.
struct OtroPrefijo : Casa {
    static void SetUpTestSuite()
    {
        Abre({.generacion = "1.6.0", .version = "1.6.0.14", .prefijo = "tst_", .idiomas = 1}, {});
        empresa->Sql("INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,TAG) VALUES "
                     "('000001',1,'ETIQUETAS');\n" +
                     SqlFamilia("01", 0, "Cocina") +
                     SqlArticulo("01ps_A", {{"DESCRIPCION", "'Caps_ula'"},
                                            {"DESCRIPCIO2", "'PS_X'"},
                                            {"NOTAS", "'n'"},
                                            {"FECHAMODIFICACION", "Null"},
                                            {"ETIQUETAS", "'rojo,'"}}) +
                     SqlArticulo("01B", {{"FECHAMODIFICACION", "Null"}}));
        primera = empresa->Corre();
        segunda = empresa->Corre();
    }
    static inline ResultadoCorrida primera{}, segunda{};
};

TEST_F(OtroPrefijo, NingunaSentenciaConservaElPrefijoDeCostumbre)
{
    ASSERT_FALSE(primera.Sentencias().isEmpty());
    EXPECT_EQ(EnLineas(primera.Sentencias().filter("ps_")), "");
    EXPECT_EQ(primera.SentenciasDe(0).value(6), "DELETE FROM tst_category WHERE id_category>2");
}

TEST_F(OtroPrefijo, LosTextosQueLoTienenTambienCambian)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO tst_product_lang ").mid(1)),
        EnLineas(
            {"INSERT INTO tst_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (2,1,'capsula','','Catst_ula','n','Catst_ula','n ','PS_X')"}));
    EXPECT_EQ(tienda->Sql("SELECT reference,supplier_reference FROM tst_product"),
              (Filas{{"01B", "ALT01B"}, {"01tst_A", "ALT01tst_A"}}));
}

TEST_F(OtroPrefijo, LaVersionDeLaTiendaSeLeePorSuNombre)
{
    EXPECT_EQ(
        primera.Sentencias("INSERT INTO tst_specific_price ").value(0),
        "INSERT INTO tst_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,reduction_tax) VALUES (1,1,0,0,0,4,10.5,1,0,'amount',0)");
}

TEST_F(OtroPrefijo, LaEtiquetaYLaColumnaDeFamiliasSeCreanEnSusTablas)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO tst_product_tag ")),
        EnLineas(
            {"INSERT INTO tst_product_tag (id_product,id_tag) Select '2',min(id_tag) FROM tst_tag WHERE id_lang=1 and name='rojo'"}));
    EXPECT_EQ(
        tienda->Sql("SELECT t.id_lang,t.name FROM tst_tag t JOIN tst_product_tag USING (id_tag)"),
        (Filas{{"1", "rojo"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_category,kov_familia FROM tst_category ORDER BY id_category"),
              (Filas{{"1", "NULL"}, {"2", "NULL"}, {"3", "01"}}));
}

TEST_F(OtroPrefijo, ElArticuloSeEncuentraYCambia)
{
    EXPECT_EQ(
        EnLineas(segunda.Sentencias("UPDATE tst_product ")),
        EnLineas(
            {"UPDATE tst_product SET id_tax_rules_group=1,id_manufacturer=null,supplier_reference='ALT01B',id_category_default=3,price=10.5,on_sale=0,date_upd=" +
             HoyMysql() +
             ",weight=1.25,minimal_quantity=1,cache_has_attachments='1' WHERE id_product='1'"}));
    EXPECT_EQ(EnLineas(segunda.log.filter("ERRORES")), "");
}

// The shop holds another reference than the article's code, so nobody knows it there any more.
TEST_F(OtroPrefijo, UnCodigoQueLoTieneSeRetiraYVuelveEnCadaCorrida)
{
    EXPECT_EQ(EnLineas(segunda.log.filter("ALT01")),
              EnLineas({"Borrando Artículo 2 / ALT01tst_A", "Actualizando articulo 01B / ALT01B",
                        "Añadiendo artículo 01ps_A / ALT01ps_A"}));
    EXPECT_EQ(segunda.SentenciasDe(0).value(0), "DELETE FROM tst_product WHERE id_product='2'");
    EXPECT_EQ(tienda->Sql("SELECT id_product,reference FROM tst_product ORDER BY id_product"),
              (Filas{{"1", "01B"}, {"2", "01tst_A"}}));
}

/// The main language is the second of the shop's; the others follow by their number, one with the
/// usual columns and one with expressions.
struct TresIdiomas : Casa {
    static void SetUpTestSuite()
    {
        Abre({.generacion = "1.6.0", .idiomas = 3}, {{"PS_IDIOMA", "2"}});
        empresa->Sql(
            "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,CAMPODESCRIPCION,CAMPONOTAS,KEYWORDS) VALUES "
            "('000001',3,'DESCRIPCION & '' (fr)''','IIf(NOTAS IS NULL,''rien'',NOTAS)',"
            "'UCase(PALABRAS)');\n"
            "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA,CAMPODESCRIPCION,CAMPODESCORTA,CAMPONOTAS,"
            "CAMPOFAMDESCRIPCION,CAMPOFAMNOTAS,TAG,KEYWORDS,KEYWORDS_FAM,METATITULO_ART,"
            "METADESCRIPCION_ART,METATITULO_FAM,METADESCRIPCION_FAM) VALUES ('000001',2,"
            "'DESCRIPCION_EN','DESCRIPCIO2_EN','NOTAS_EN','DESCRIPCION_EN','NOTAS_EN',"
            "'ETIQUETAS_EN','PALABRAS_EN','PALABRAS_EN','DESCRIPCION_EN','DESCRIPCIO2_EN',"
            "'RESUMEN_EN','NULL');\n"
            "INSERT INTO PS_IDIOMAS (CODEMPRESA,IDIOMA) VALUES ('000001',1);\n"
            "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','Color');\n" +
            SqlFamilia("01", 0, "Cocina",
                       {{"DESCRIPCION_EN", "'Kitchen'"},
                        {"NOTAS_EN", "'For cooks'"},
                        {"PALABRAS_EN", "'kit'"},
                        {"RESUMEN_EN", "'All for the kitchen'"}}) +
            SqlArticulo("01A", {{"NOTAS", "Null"},
                                {"DESCRIPCION_EN", "'Item 01A'"},
                                {"DESCRIPCIO2_EN", "'Short'"},
                                {"NOTAS_EN", "'Remarks'"},
                                {"ETIQUETAS", "'rojo,'"},
                                {"ETIQUETAS_EN", "'red, blue,'"},
                                {"PALABRAS", "'olla,acero'"},
                                {"PALABRAS_EN", "'pot'"},
                                {"FOTO", "'C:\\no hay.jpg'"},
                                {"FECHAMODIFICACION", "Null"}}));
        primera = empresa->Corre();
        segunda = empresa->Corre();
    }
    static inline ResultadoCorrida primera{}, segunda{};
};

TEST_F(TresIdiomas, LosTextosDelArticuloVanEnElOrdenDeLosIdiomas)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_product_lang ")),
        EnLineas(
            {"INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,2,'item-01a','pot','Item 01A','Short','Item 01A','Remarks ','Short')",
             "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,1,'art-01a','','Art 01A','','Art 01A',' ','Corta 01A')",
             "INSERT INTO ps_product_lang (id_product,id_lang,link_rewrite,meta_keywords,meta_title,meta_description,name,description,description_short) VALUES (1,3,'art-01a--fr-','OLLA,ACERO','Art 01A','','Art 01A (fr)','rien ','Corta 01A')"}));
    EXPECT_EQ(
        EnLineas(segunda.Sentencias("UPDATE ps_product_lang ")),
        EnLineas(
            {"UPDATE ps_product_lang SET link_rewrite='item-01a',name='Item 01A',meta_keywords='pot',meta_title='Item 01A',meta_description='Short',description='Remarks',description_short='Short' WHERE id_product='1' AND id_lang=2",
             "UPDATE ps_product_lang SET link_rewrite='art-01a',name='Art 01A',meta_keywords='',meta_title='Art 01A',meta_description='',description='',description_short='Corta 01A' WHERE id_product='1' AND id_lang=1",
             "UPDATE ps_product_lang SET link_rewrite='art-01a--fr-',name='Art 01A (fr)',meta_keywords='OLLA,ACERO',meta_title='Art 01A',meta_description='',description='rien',description_short='Corta 01A' WHERE id_product='1' AND id_lang=3"}));
}

TEST_F(TresIdiomas, LosTextosDeLaFamiliaTambien)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_category_lang ")),
        EnLineas(
            {"INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,2,'Kitchen','kitchen','For cooks','kit','All for the kitchen','')",
             "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,1,'Cocina','cocina','','','Cocina','')",
             "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,3,'Cocina','cocina','','','Cocina','')"}));
}

TEST_F(TresIdiomas, SoloElIdiomaConColumnaTieneEtiquetas)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_product_tag ")),
        EnLineas(
            {"INSERT INTO ps_product_tag (id_product,id_tag) Select '1',min(id_tag) FROM ps_tag WHERE id_lang=2 and name='red'",
             "INSERT INTO ps_product_tag (id_product,id_tag) Select '1',min(id_tag) FROM ps_tag WHERE id_lang=2 and name='blue'"}));
    // The second run finds them and makes none anew.
    EXPECT_EQ(tienda->Sql("SELECT id_lang,name FROM ps_tag ORDER BY id_tag"),
              (Filas{{"2", "red"}, {"2", "blue"}}));
}

TEST_F(TresIdiomas, LaLeyendaDeLaFotoYElGrupoDeAtributosTienenLosTres)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_image_lang ")),
        EnLineas(
            {"INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (1,2,'Item 01A')",
             "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (1,1,'Art 01A')",
             "INSERT INTO ps_image_lang (id_image,id_lang,legend) VALUES (1,3,'Art 01A (fr)')"}));
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_attribute_group_lang")),
        EnLineas(
            {"INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (1,2,'Color','Color')",
             "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (1,1,'Color','Color')",
             "INSERT INTO ps_attribute_group_lang(ID_ATTRIBUTE_GROUP,ID_LANG,NAME,PUBLIC_NAME) VALUES (1,3,'Color','Color')"}));
}

TEST_F(TresIdiomas, LaTiendaLosMuestraYNadaFalla)
{
    EXPECT_EQ(
        tienda->Sql("SELECT id_lang,name,description FROM ps_product_lang ORDER BY id_lang"),
        (Filas{{"1", "Art 01A", ""}, {"2", "Item 01A", "Remarks"}, {"3", "Art 01A (fr)", "rien"}}));
    EXPECT_EQ(EnLineas((primera.log + segunda.log).filter("ERRORES")), "");
}

/// The third tariff is the shop's own price.
struct TarifaTres : Casa {
    static void SetUpTestSuite()
    {
        Abre({.generacion = "1.6.0", .version = "1.6.0.15", .idiomas = 1}, {{"PS_PVPDEF", "3"}});
        const QString oferta = "INSERT INTO OFERTAS (CODARTICULO,IDCONF,DTOCOM1,PVPDEF,PRECIO,"
                               "TARIFAOPROV,FECHADESDE,FECHAHASTA) VALUES ('01A',";
        const QString fechas = "#02/01/2024#,#02/29/2024#);\n";
        empresa->Sql(
            SqlArticulo("01A") + oferta + "'0',10,2,Null,3," + fechas + oferta +
            "'0',50,1,Null,6," + fechas + oferta + "'000123',50,1,Null,1," + fechas + oferta +
            "'0',Null,Null,9,1," + fechas + oferta + "'0',0,3,5,5," + fechas +
            "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','Color');\n"
            "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES "
            "('COL','AZ','Azul');\n"
            "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,SECUENCIA,INC_PVP,"
            "INC_PVP2,INC_PVP3,PESO) VALUES ('01A','COL','AZ',1,1.5,2.5,3.75,0.5);\n");
        corrida = empresa->Corre();
    }
    static inline ResultadoCorrida corrida{};
};

TEST_F(TarifaTres, ElPrecioDelProductoEsElDeLaTarifa)
{
    EXPECT_EQ(
        tienda->Sql(
            "SELECT p.price,s.price FROM ps_product p JOIN ps_product_shop s USING (id_product)"),
        (Filas{{"8.000000", "8.000000"}}));
}

TEST_F(TarifaTres, LaOfertaDeEsaTarifaLlegaALosGruposGeneralesYLasDemasSoloAlSuyo)
{
    const QString oferta =
        "INSERT INTO ps_specific_price (ID_SPECIFIC_PRICE,ID_PRODUCT,ID_SHOP,ID_CURRENCY,ID_COUNTRY,ID_GROUP,PRICE,FROM_QUANTITY,REDUCTION,REDUCTION_TYPE,`from`,`to`) VALUES ";
    const QString fechas = "CAST('2024/02/01' AS DATE),CAST('2024/02/29' AS DATE))";

    EXPECT_EQ(EnLineas(corrida.Sentencias("INSERT INTO ps_specific_price ").mid(5)),
              EnLineas({oferta + "(6,1,0,0,0,1,9.25,1,0.1,'percentage'," + fechas,
                        oferta + "(7,1,0,0,0,2,9.25,1,0.1,'percentage'," + fechas,
                        oferta + "(8,1,0,0,0,3,9.25,1,0.1,'percentage'," + fechas,
                        oferta + "(9,1,0,0,0,6,9.25,1,0.1,'percentage'," + fechas,
                        oferta + "(10,1,0,0,0,4,10.5,1,1.5,'amount'," + fechas,
                        oferta + "(11,1,0,0,0,8,8,1,0,'amount'," + fechas}));
}

TEST_F(TarifaTres, LaCombinacionTomaElIncrementoDeLaTarifa)
{
    EXPECT_EQ(
        EnLineas(corrida.Sentencias("INSERT INTO ps_product_attribute ")),
        EnLineas(
            {"INSERT INTO ps_product_attribute (ID_PRODUCT_ATTRIBUTE,ID_PRODUCT,PRICE,WEIGHT,DEFAULT_ON) SELECT CONCAT(ID_PRODUCT,RIGHT(CONCAT('00000','1'),5)) , ID_PRODUCT,3.75,0.5,1 From ps_product WHERE REFERENCE ='01A'"}));
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
}

TEST_F(TarifaTres, UnArticuloSinFamiliaVaALaCategoriaRaiz)
{
    EXPECT_EQ(
        EnLineas(corrida.Sentencias("INSERT INTO ps_category_product ")),
        EnLineas(
            {"INSERT INTO ps_category_product (id_category,id_product,position) VALUES (1,1,1)"}));
}

/// The makers' setting in its three forms, one run after the other.
struct Marcas : Casa {
    static void SetUpTestSuite()
    {
        Abre({.generacion = "1.6.0", .idiomas = 1}, {{"PSGRUPOMARCAS", "'2'"}});
        empresa->Sql(
            "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (1,7,'Casa Uno');\n"
            "INSERT INTO M_GRUPART (PARTICIPA,CODGRUPO,DESCRIPCION) VALUES (2,9,'Marca Dos');\n" +
            SqlArticulo("01A",
                        {{"CODGRUPO", "7"}, {"GRUPO2", "9"}, {"FECHAMODIFICACION", "Null"}}) +
            SqlArticulo("01B", {{"GRUPO2", "''"}, {"FECHAMODIFICACION", "Null"}}));
        conDos = empresa->Corre();
        trasDos = Fabricantes();
        empresa->Sql("UPDATE M_EMPRESA SET PSGRUPOMARCAS='1';\n");
        conUno = empresa->Corre();
        trasUno = Fabricantes();
        empresa->Sql("UPDATE M_EMPRESA SET PSGRUPOMARCAS=Null;\n");
        sinMarcas = empresa->Corre();
        trasNinguno = Fabricantes();
    }
    static Filas Fabricantes()
    {
        Filas filas =
            tienda->Sql("SELECT reference,id_manufacturer FROM ps_product ORDER BY reference");
        for (const QStringList& marca :
             tienda->Sql("SELECT id_manufacturer,name FROM ps_manufacturer"))
            filas.push_back(marca);
        return filas;
    }
    static inline ResultadoCorrida conDos{}, conUno{}, sinMarcas{};
    static inline Filas trasDos{}, trasUno{}, trasNinguno{};
};

TEST_F(Marcas, ElLoteDeMarcasVaElPrimeroYEsExacto)
{
    const QString hoy = HoyMysql();
    EXPECT_EQ(
        EnLineas(conDos.SentenciasDe(0)),
        EnLineas(
            {"DELETE FROM ps_manufacturer", "DELETE FROM ps_manufacturer_lang",
             "DELETE FROM ps_manufacturer_shop",
             "INSERT INTO ps_manufacturer (id_manufacturer,name,date_add,date_upd,active) VALUES (9,'Marca Dos'," +
                 hoy + "," + hoy + ",1)",
             "INSERT INTO ps_manufacturer_shop (id_manufacturer,id_shop) VALUES (9,1)",
             "INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES (9,1,'Marca Dos','Marca Dos','Marca Dos','Marca Dos','Marca Dos')"}));
    EXPECT_EQ(EnLineas(conDos.log.mid(3, 5)),
              EnLineas({"BORRANDO CACHÉ DE PRESTASHOP", "CARGANDO MARCAS FABRICANTES",
                        "SUBIENDO FICHERO sentencias.sql", "SINCRONIZANDO MARCAS FABRICANTES",
                        "Comprobando articulos que ya no estan..."}));
}

TEST_F(Marcas, UnNumeroNombraLaColumnaDelGrupo)
{
    EXPECT_EQ(trasDos, (Filas{{"01A", "9"}, {"01B", "NULL"}, {"9", "Marca Dos"}}));
}

TEST_F(Marcas, ElUnoNombraElGrupoPrincipal)
{
    EXPECT_EQ(trasUno, (Filas{{"01A", "7"}, {"01B", "NULL"}, {"7", "Casa Uno"}}));
}

TEST_F(Marcas, SinAjusteNoSeTocanLasMarcasYElProductoSeQuedaSinLaSuya)
{
    EXPECT_EQ(sinMarcas.Titulos().filter("MARCAS"), QStringList());
    EXPECT_EQ(EnLineas(sinMarcas.Sentencias().filter("ps_manufacturer")), "");
    EXPECT_EQ(
        sinMarcas.Sentencias("UPDATE ps_product SET id_tax_rules_group=1,id_manufacturer=null,")
            .size(),
        2);
    EXPECT_EQ(trasNinguno, (Filas{{"01A", "NULL"}, {"01B", "NULL"}, {"7", "Casa Uno"}}));
}

} // namespace
