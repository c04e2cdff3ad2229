#include "apoyo/corrida_real.h"
#include <QRegularExpression>
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

QString FechaAccess(const QDate& fecha)
{
    return fecha.toString("'#'MM/dd/yyyy'#'");
}

/// One company and one shop through the days: a first load, a run without changes, and then one
/// change after the other.
struct SegundaCorrida : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .version = "1.6.0.15", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        empresa->Sql(SqlFamilia("01", 0, "Cocina") + SqlArticulo("01A") + SqlArticulo("01B") +
                     SqlArticulo("01C"));
        empresa->Corre();

        sinCambios = empresa->Corre();

        // As if the first load had been years ago; one article changed since, another that day.
        tienda->Ejecuta("UPDATE ps_product SET date_upd='2021-05-05',active=0");
        empresa->Sql(
            "UPDATE M_ARTIC SET FECHAMODIFICACION=#05/05/2021# WHERE CODARTICULO='01A';\n"
            "UPDATE M_ARTIC SET FECHAMODIFICACION=#05/06/2021#,DESCRIPCION='Nuevo',PVP1=11 "
            "WHERE CODARTICULO='01B';\n");
        unCambio = empresa->Corre();
        trasUnCambio = tienda->Sql(
            "SELECT reference,date_upd,price,active FROM ps_product ORDER BY reference");

        empresa->Sql("UPDATE M_ARTIC SET FECHAMODIFICACION=" + FechaAccess(QDate::currentDate()) +
                     " WHERE CODARTICULO='01A';\n");
        deHoy = empresa->Corre();
        deHoyOtraVez = empresa->Corre();

        empresa->Sql("UPDATE M_ARTIC SET FECHAMODIFICACION=#01/10/2020#;\n"
                     "UPDATE M_ARTIC SET ACTIVOWEB='N' WHERE CODARTICULO='01A';\n"
                     "UPDATE M_ARTIC SET TIPOARTIC='OB' WHERE CODARTICULO='01C';\n" +
                     SqlArticulo("01D"));
        retirados = empresa->Corre();
        trasRetirados =
            tienda->Sql("SELECT id_product,reference FROM ps_product ORDER BY id_product");
    }
    static void TearDownTestSuite() { empresa.reset(); }

    /// What the log says of single articles.
    static QStringList DeArticulos(const ResultadoCorrida& corrida)
    {
        return corrida.log.filter(QStringLiteral(" / "));
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida sinCambios{}, unCambio{}, deHoy{}, deHoyOtraVez{}, retirados{};
    static inline Filas trasUnCambio{}, trasRetirados{};
};

TEST_F(SegundaCorrida, SinCambiosSeEnvianLosMaestrosYNingunArticulo)
{
    const QString hoy = HoyMysql();
    QStringList esperadas{
        "DELETE FROM ps_attribute_group",
        "DELETE FROM ps_attribute_group_lang",
        "DELETE FROM ps_attribute_group_shop",
        "DELETE FROM ps_attribute",
        "DELETE FROM ps_attribute_lang",
        "DELETE FROM ps_attribute_shop",
        "DELETE FROM ps_category WHERE id_category>2",
        "DELETE FROM ps_category_group WHERE id_category>2",
        "DELETE FROM ps_category_lang WHERE id_category>2",
        "DELETE FROM ps_category_shop WHERE id_category>2",
        "UPDATE ps_category set nleft=1 WHERE id_category=1",
        "UPDATE ps_category set nleft=2 WHERE id_category=2",
        "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES (3,2,3,0,2,1," +
            hoy + "," + hoy + ",01,'01')"};
    for (int k = 1; k <= 8; ++k)
        esperadas
            << QString("INSERT INTO ps_category_group (id_category,id_group) VALUES (3,%1)").arg(k);
    esperadas
        << "INSERT INTO ps_category_lang (id_category,id_lang,name,link_rewrite,description,meta_keywords,meta_title,meta_description) VALUES (3,1,'Cocina','cocina','','','Cocina','')"
        << "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (3,1,01)"
        << "UPDATE ps_category set nright=4 WHERE kov_familia='01'"
        << "UPDATE ps_category set nright=5 WHERE id_category=2"
        << "UPDATE ps_category set nright=6 WHERE id_category=1";

    EXPECT_EQ(EnLineas(sinCambios.Sentencias()), EnLineas(esperadas));
}

TEST_F(SegundaCorrida, SinCambiosElLoteDeArticulosNoTieneNada)
{
    const QString actual = empresa->Actual();

    EXPECT_EQ(
        EnLineas(sinCambios.Log("Actualizando y modificando articulos",
                                "REGENERANDO INDICES DE BÚSQUEDA...")),
        EnLineas({"Actualizando y modificando articulos", "SUBIENDO FICHERO ",
                  "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                  "Error subiendo fichero " + actual + "\\sentencias.sql",
                  "ERROR SUBIENDO FICHERO sentencias.sql",
                  "Error subiendo fichero " + actual + "\\creapath.txt",
                  "ERROR SUBIENDO FICHERO creapath.txt", "REGENERANDO INDICES DE BÚSQUEDA..."}));
    EXPECT_EQ(sinCambios.lotes.value(1), "");
    EXPECT_EQ(EnLineas(sinCambios.log.filter("ERRORES")), "");
}

TEST_F(SegundaCorrida, SinCambiosLaConversacionSigueSuOrden)
{
    // What is lacking behind an upload given up is what the session refused.
    QStringList esperados = PasosDeCabecera() + PasosDeLote();
    const QStringList sinLote = PasosDeLote().mid(0, 4);
    esperados << "sesion" << sinLote << "sesion"
              << "DELE imgborra.txt"
              << "STOR imgborra.txt"
              << "sesion"
              << "DELE imgfam.txt"
              << "STOR imgfam.txt"
              << "sesion"
              << "sesion" << sinLote << "sesion";

    EXPECT_EQ(EnLineas(PasosFtp(sinCambios.ftp)), EnLineas(esperados));
    EXPECT_EQ(
        EnLineas(sinCambios.http),
        EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200", "GET /ejecuta.php 200",
                  "GET /creapath.php 200", "GET /borraimg.php?sufijofoto=_default 200",
                  "GET /dimensiona.php?fichero=imgfam.txt&sufijofoto=_default 200",
                  "GET /borracache.php 200", "GET /ejecuta.php 200", "GET /borracache.php 200"}));
}

// Of the open transfer the server knows nothing but its beginning: no folder is set, nothing is
// deleted and nothing sent, until the next session logs in.
TEST_F(SegundaCorrida, TrasUnaSubidaFallidaNoLlegaNadaHastaLaSesionNueva)
{
    const QRegularExpression abandonada("^STOR (\\S*/)?(sentencias\\.sql|imgfam\\.txt) ");
    QStringList siguientes;
    int subidas = 0;
    for (qsizetype i = 0; i + 1 < sinCambios.ftp.size(); ++i)
        if (abandonada.match(sinCambios.ftp[i]).hasMatch() && ++subidas > 1)
            siguientes << sinCambios.ftp[i + 1].section(u' ', 0, 0);

    // The first batch got through; the articles', the list of families and the documents' did not.
    EXPECT_EQ(subidas, 4);
    EXPECT_EQ(siguientes, (QStringList{"USER", "USER", "USER"}));
}

TEST_F(SegundaCorrida, SoloSeEnviaElArticuloCambiadoDespuesDeSuUltimoEnvio)
{
    const QString hoy = HoyMysql();
    EXPECT_EQ(EnLineas(DeArticulos(unCambio)), EnLineas({"Actualizando articulo 01B / ALT01B"}));
    EXPECT_EQ(
        EnLineas(unCambio.SentenciasDe(1).mid(0, 3)),
        EnLineas(
            {"UPDATE ps_product SET id_tax_rules_group=1,id_manufacturer=null,supplier_reference='ALT01B',id_category_default=3,price=11,on_sale=0,date_upd=" +
                 hoy +
                 ",weight=1.25,minimal_quantity=1,cache_has_attachments='1' WHERE id_product='2'",
             "UPDATE ps_product_shop SET id_tax_rules_group=1,id_category_default=3,price=11,minimal_quantity=1,on_sale=0,date_upd=" +
                 hoy + " WHERE id_product='2'",
             "UPDATE ps_product_lang SET link_rewrite='nuevo',name='Nuevo',meta_keywords='',meta_title='Nuevo',meta_description='Notas 01B',description='Notas 01B',description_short='Corta 01B' WHERE id_product='2' AND id_lang=1"}));
}

TEST_F(SegundaCorrida, LaFechaDeLaTiendaAvanzaSoloEnElEnviadoYLoApagadoSigueApagado)
{
    const QString hoy = QDate::currentDate().toString("yyyy-MM-dd 00:00:00");

    EXPECT_EQ(trasUnCambio, (Filas{{"01A", "2021-05-05 00:00:00", "10.500000", "0"},
                                   {"01B", hoy, "11.000000", "0"},
                                   {"01C", "2021-05-05 00:00:00", "10.500000", "0"}}));
}

TEST_F(SegundaCorrida, LoCambiadoHoySeEnviaEnCadaCorridaDelDia)
{
    EXPECT_EQ(EnLineas(DeArticulos(deHoy)), EnLineas({"Actualizando articulo 01A / ALT01A"}));
    EXPECT_EQ(EnLineas(DeArticulos(deHoyOtraVez)),
              EnLineas({"Actualizando articulo 01A / ALT01A"}));
    EXPECT_EQ(deHoyOtraVez.Sentencias("UPDATE ps_product ").size(), 1);
}

TEST_F(SegundaCorrida, LosQueDejanDePublicarseSeRetiranYUnoNuevoTomaElSiguienteNumeroLibre)
{
    EXPECT_EQ(EnLineas(DeArticulos(retirados)),
              EnLineas({"Borrando Artículo 1 / ALT01A", "Borrando Artículo 3 / ALT01C",
                        "Añadiendo artículo 01D / ALT01D"}));
    EXPECT_EQ(retirados.Titulos().value(0), "EJECUTANDO REMOTAMENTE Borrando artículos (...3)");
    EXPECT_EQ(EnLineas(retirados.SentenciasDe(0).filter("FROM ps_product WHERE")),
              EnLineas({"DELETE FROM ps_product WHERE id_product='1'",
                        "DELETE FROM ps_product WHERE id_product='3'"}));
    EXPECT_EQ(trasRetirados, (Filas{{"2", "01B"}, {"3", "01D"}}));
    for (const char* tabla : {"ps_product_shop", "ps_product_lang", "ps_category_product",
                              "ps_specific_price", "ps_stock_available"})
        EXPECT_EQ(tienda->Sql(QString("SELECT DISTINCT id_product FROM %1 ORDER BY 1").arg(tabla)),
                  (Filas{{"2"}, {"3"}}))
            << tabla;
}

// A product without a picture still names the files that it might have, with nothing for the
// number.
TEST_F(SegundaCorrida, UnProductoSinFotoDejaSusTresLineasConElNumeroVacio)
{
    EXPECT_EQ(EnLineas(retirados.Lineas("imgborra.txt")),
              EnLineas({"img/p/.jpg;", "img/p//.jpg;", "img/p//-*.jpg;", "img/p/.jpg;",
                        "img/p//.jpg;", "img/p//-*.jpg;", "img/c/3.jpg;", "img/c/3-*.jpg;"}));
}

TEST_F(SegundaCorrida, LasCorridasDeUnDiaVanEnUnSoloRegistroEnSuOrden)
{
    const QStringList registros =
        QDir(empresa->Actual() + "/HISTORICOWEB").entryList(QDir::Files, QDir::Name);
    EXPECT_EQ(registros,
              (QStringList{QDate::currentDate().toString("yyyyMMdd") + "VUELCOPRESTASHOP.TXT"}));
    EXPECT_EQ(empresa->Carpeta().Lee("HISTORICOWEB/" + registros.value(0)).count("INICIO VUELCO"),
              6);
}

} // namespace
