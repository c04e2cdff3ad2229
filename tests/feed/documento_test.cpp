#include "feed_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

struct DocumentoTest : testing::Test {
    FeedDePrueba p{};
};

TEST_F(DocumentoTest, EsExactoByteAByte)
{
    p.configuracion.Company = "98765";
    p.programa.parametros.WWW = "http://tienda.es/";
    p.Categoria("COL", "Color");
    p.Opcion("COL", "AZU", "Añil");
    p.Articulo("0101A", {{"DESCRIPCION", "'Olla 5 €'"}, {"NOTAS", "Null"}});
    p.Articulo("0101B", {{"CLAVES", "'tela,lino'"}, {"SECTOR", "Null"}});
    p.Valor("0101B", "COL", "AZU", 1, "1.25");
    p.fotos["0101A"] = {31};

    p.Genera();

    EXPECT_EQ(p.prueba.carpeta.Lee("feed.xml"),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
              "<SINCRO_DETAILS>\r\n"
              "<COMPANY>98765</COMPANY>\r\n"
              "<COUNTRY>67</COUNTRY>\r\n"
              "<PRODUCTS>\r\n"
              "<PRODUCT>\r\n"
              "<PRODUCT_ID><![CDATA[0101A]]></PRODUCT_ID>\r\n"
              "<TITLE><![CDATA[Olla 5 \x80]]></TITLE>\r\n"
              "<DESCRIPTION><![CDATA[Olla 5 \x80]]></DESCRIPTION>\r\n"
              "<SECTOR>77</SECTOR>\r\n"
              "<PRICE>10.5</PRICE>\r\n"
              "<SHIPPING>48</SHIPPING>\r\n"
              "<MINIMUM>1</MINIMUM>\r\n"
              "<UNIT_TYPE>9</UNIT_TYPE>\r\n"
              "<PHOTOS>\r\n"
              "<PHOTO><![CDATA[http://tienda.es/img/p/31.jpg]]></PHOTO>\r\n"
              "</PHOTOS>\r\n"
              "<KEYWORDS>\r\n"
              "</KEYWORDS>\r\n"
              "</PRODUCT>\r\n"
              "<PRODUCT>\r\n"
              "<PRODUCT_ID><![CDATA[0101B_1]]></PRODUCT_ID>\r\n"
              "<TITLE><![CDATA[Nombre 0101B (Color : A\xF1il)]]></TITLE>\r\n"
              "<DESCRIPTION><![CDATA[Notas 0101B]]></DESCRIPTION>\r\n"
              "<SECTOR></SECTOR>\r\n"
              "<PRICE>11.75</PRICE>\r\n"
              "<SHIPPING>48</SHIPPING>\r\n"
              "<MINIMUM>1</MINIMUM>\r\n"
              "<UNIT_TYPE>9</UNIT_TYPE>\r\n"
              "<PHOTOS>\r\n"
              "</PHOTOS>\r\n"
              "<KEYWORDS>\r\n"
              "<KEYWORD><![CDATA[tela]]></KEYWORD>\r\n"
              "<KEYWORD><![CDATA[lin]]></KEYWORD>\r\n"
              "</KEYWORDS>\r\n"
              "</PRODUCT>\r\n"
              "</PRODUCTS>\r\n"
              "</SINCRO_DETAILS>\r\n");
}

TEST_F(DocumentoTest, SinArticulosEsSoloElMarcoYNadaSeMiraDeLaConfiguracion)
{
    p.configuracion = {};

    p.Genera();

    EXPECT_EQ(p.LineasDelFeed(),
              (QStringList{"<?xml version=\"1.0\" encoding=\"UTF-8\"?>", "<SINCRO_DETAILS>",
                           "<COMPANY></COMPANY>", "<COUNTRY>67</COUNTRY>", "<PRODUCTS>",
                           "</PRODUCTS>", "</SINCRO_DETAILS>"}));
    EXPECT_TRUE(p.progreso.avances.empty());
}

TEST_F(DocumentoTest, SeEscribeDetrasDeLoQueHaya)
{
    p.prueba.carpeta.Escribe("feed.xml", "antes\r\n");

    p.Genera();

    EXPECT_EQ(p.LineasDelFeed().mid(0, 2),
              (QStringList{"antes", "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"}));
}

TEST_F(DocumentoTest, VanLosActivosDeLaListaQueNoSonDeTipoOb)
{
    p.programa.parametros.CADACTIVOWEB = "S,P";
    p.Articulo("A");
    p.Articulo("B", {{"ACTIVOWEB", "'P'"}});
    p.Articulo("C", {{"ACTIVOWEB", "'N'"}});
    p.Articulo("D", {{"ACTIVOWEB", "Null"}});
    // Unlike a run, the feed doesn't look at the companies of an article.
    p.Articulo("E", {{"ACTIVOWEB", "'N'"}, {"EMPRESASWEB", "',000001,'"}});
    p.Articulo("F", {{"TIPOARTIC", "'OB'"}});
    p.Articulo("G", {{"TIPOARTIC", "'AR'"}});

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), (QStringList{Cdata("A"), Cdata("B"), Cdata("G")}));
}

TEST_F(DocumentoTest, LosArticulosSonLosDeLaTablaDeLosParametros)
{
    p.programa.parametros.PS_TABLAARTIC = "V_ARTIC";
    p.Ejecuta({"CREATE VIEW V_ARTIC AS SELECT * FROM M_ARTIC WHERE CODARTICULO>'A'"});
    p.Articulo("A");
    p.Articulo("B");

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), QStringList{Cdata("B")});
}

TEST_F(DocumentoTest, LaBarraAvanzaTrasCadaArticuloSinDarTurnoALosEventos)
{
    for (const char* codigo : {"A", "B", "C"})
        p.Articulo(codigo);

    p.Genera();

    EXPECT_EQ(p.progreso.avances, (std::vector<std::pair<int, int>>{{1, 3}, {2, 3}, {3, 3}}));
    EXPECT_EQ(p.progreso.turnos, 0);
}

TEST_F(DocumentoTest, SusLineasNoSonSqlYNingunDialectoLasTraduce)
{
    const QString linea = "IIF(LEN(A) & B, INT(2), CSTR(3)) TOP 5 X";
    feed::Documento documento{.programa = p.programa,
                              .configuracion = p.configuracion,
                              .escritores = p.escritores,
                              .ruta = p.prueba.carpeta.Ruta("feed.xml")};

    for (const data::Dialecto dialecto :
         {data::Dialecto::Access, data::Dialecto::MySql, data::Dialecto::SqlServer}) {
        p.programa.DialectoActivo = dialecto;
        documento.Linea(linea);
    }

    EXPECT_EQ(p.LineasDelFeed(), (QStringList{linea, linea, linea}));
}

} // namespace
