#include "feed_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;

namespace {

struct Producto : testing::Test {
    FeedDePrueba p{};

    /// The number of the run-time error that the generation ends in, 0 without one.
    int ErrorAlGenerar()
    {
        try {
            p.Genera();
        } catch (const data::ErrorEjecucion& error) {
            descripcion = error.Descripcion();
            return error.Numero();
        }
        return 0;
    }
    QString descripcion{};
};

TEST_F(Producto, TieneSusLineasEnSuOrden)
{
    p.Articulo("0101A", {{"CLAVES", "'rojo, azul,'"}});
    p.fotos["0101A"] = {12, 7};

    p.Genera();

    EXPECT_EQ(p.LineasDelFeed().mid(5, 17),
              (QStringList{"<PRODUCT>", "<PRODUCT_ID><![CDATA[0101A]]></PRODUCT_ID>",
                           "<TITLE><![CDATA[Nombre 0101A]]></TITLE>",
                           "<DESCRIPTION><![CDATA[Notas 0101A]]></DESCRIPTION>",
                           "<SECTOR>77</SECTOR>", "<PRICE>10.5</PRICE>", "<SHIPPING>48</SHIPPING>",
                           "<MINIMUM>1</MINIMUM>", "<UNIT_TYPE>9</UNIT_TYPE>", "<PHOTOS>",
                           "<PHOTO><![CDATA[http://casa/img/p/12.jpg]]></PHOTO>",
                           "<PHOTO><![CDATA[http://casa/img/p/7.jpg]]></PHOTO>", "</PHOTOS>",
                           "<KEYWORDS>", "<KEYWORD><![CDATA[rojo]]></KEYWORD>",
                           "<KEYWORD><![CDATA[azul]]></KEYWORD>", "</KEYWORDS>"}));
    EXPECT_EQ(p.LineasDelFeed().mid(22),
              (QStringList{"</PRODUCT>", "</PRODUCTS>", "</SINCRO_DETAILS>"}));
}

TEST_F(Producto, SinFotosNiClavesSusListasVanVacias)
{
    p.Articulo("0101A");

    p.Genera();

    EXPECT_EQ(p.LineasDelFeed().mid(14, 5),
              (QStringList{"<PHOTOS>", "</PHOTOS>", "<KEYWORDS>", "</KEYWORDS>", "</PRODUCT>"}));
}

// PRODUCT_ID.

TEST_F(Producto, ElCodigoAlternativoSoloVaSiSePide)
{
    p.Articulo("A");
    p.Articulo("B", {{"CODALTERNATIVO", "Null"}});
    p.Articulo("C", {{"CODALTERNATIVO", "''"}});

    p.Genera();
    EXPECT_EQ(p.Elementos("PRODUCT_ID"), (QStringList{Cdata("A"), Cdata("B"), Cdata("C")}));

    QFile::remove(p.prueba.carpeta.Ruta("feed.xml"));
    p.configuracion.UsaCodAlternativo = true;
    p.Genera();
    EXPECT_EQ(p.Elementos("PRODUCT_ID"), (QStringList{Cdata("ALTA"), Cdata("B"), Cdata("C")}));
}

// TITLE and DESCRIPTION.

TEST_F(Producto, UnaDescripcionNulaDejaElTituloVacio)
{
    p.Articulo("A", {{"DESCRIPCION", "Null"}});

    p.Genera();

    EXPECT_EQ(p.Elementos("TITLE"), QStringList{Cdata("")});
}

TEST_F(Producto, LasNotasVanSinSuPrimerEnlace)
{
    p.Articulo("A", {{"NOTAS", "'Ver <a href=\"x\">la web</a>aqui'"}});

    p.Genera();

    EXPECT_EQ(p.Elementos("DESCRIPTION"), QStringList{Cdata("Ver aqui")});
}

TEST_F(Producto, SinNotasVaLaDescripcion)
{
    p.Articulo("A", {{"NOTAS", "Null"}});
    p.Articulo("B", {{"NOTAS", "''"}});
    p.Articulo("C", {{"NOTAS", "'<a href=\"x\">t</a>'"}});
    p.Articulo("D", {{"NOTAS", "Null"}, {"DESCRIPCION", "Null"}});
    p.Articulo("E", {{"NOTAS", "' '"}});

    p.Genera();

    EXPECT_EQ(p.Elementos("DESCRIPTION"), (QStringList{Cdata("Nombre A"), Cdata("Nombre B"),
                                                       Cdata("Nombre C"), Cdata(""), Cdata(" ")}));
}

TEST_F(Producto, ElSufijoDeNotasNoSeAnade)
{
    p.configuracion.SufijoNotas = "Pregunte por otros colores";
    p.Articulo("A");

    p.Genera();

    EXPECT_EQ(p.Elementos("DESCRIPTION"), QStringList{Cdata("Notas A")});
    EXPECT_FALSE(p.prueba.carpeta.Lee("feed.xml").contains("Pregunte"));
}

TEST_F(Producto, LosSaltosDeLineaDeLasNotasQuedanDentroDeSuElemento)
{
    p.Articulo("A", {{"NOTAS", "'uno' & Chr(13) & Chr(10) & 'dos'"}});

    p.Genera();

    EXPECT_EQ(
        p.LineasDelFeed().mid(8, 3),
        (QStringList{"<DESCRIPTION><![CDATA[uno", "dos]]></DESCRIPTION>", "<SECTOR>77</SECTOR>"}));
}

TEST_F(Producto, NadaSeProtegeNiDentroNiFueraDeCdata)
{
    p.configuracion.Company = "Norte & Sur <SL>";
    p.Articulo("A&B", {{"DESCRIPCION", "'<b>\"Uno\"</b> & ]]> dos'"}, {"SECTOR", "'<7>'"}});

    p.Genera();

    EXPECT_EQ(p.Elementos("COMPANY"), QStringList{"Norte & Sur <SL>"});
    EXPECT_EQ(p.Elementos("PRODUCT_ID"), QStringList{Cdata("A&B")});
    EXPECT_EQ(p.Elementos("TITLE"), QStringList{Cdata("<b>\"Uno\"</b> & ]]> dos")});
    EXPECT_EQ(p.Elementos("SECTOR"), QStringList{"<7>"});
}

TEST_F(Producto, LoQueNoCabeEnWindows1252EsUnaInterrogacion)
{
    p.Articulo("A", {{"DESCRIPCION", "'Año 10 € — Ω 日本 😀.'"}});

    p.Genera();

    EXPECT_TRUE(p.prueba.carpeta.Lee("feed.xml")
                    .contains("<TITLE><![CDATA[A\xF1o 10 \x80 \x97 ? ?? ?.]]></TITLE>\r\n"));
}

// SECTOR.

TEST_F(Producto, UnSectorNuloQuedaEnSuLinea)
{
    p.Articulo("A", {{"SECTOR", "Null"}});

    p.Genera();

    EXPECT_TRUE(p.LineasDelFeed().contains("<SECTOR></SECTOR>"));
}

TEST_F(Producto, ElSectorEsElCampoQueSeDigaEnCualquierCaja)
{
    p.configuracion.CampoSector = "pvp3";
    p.Articulo("A");

    p.Genera();

    EXPECT_EQ(p.Elementos("SECTOR"), QStringList{"8.25"});
}

// PRICE.

struct CasoPrecio {
    const char* regla;
    QString campo{};
    QString valor{};
    QString precio{};
};

struct Precio : Producto, testing::WithParamInterface<CasoPrecio> {};

TEST_P(Precio, EsElNumeroEnSuFormaDeTexto)
{
    p.configuracion.CampoPrecio = GetParam().campo;
    p.Articulo("A", {{GetParam().campo, GetParam().valor}});

    p.Genera();

    EXPECT_EQ(p.Elementos("PRICE"), QStringList{GetParam().precio});
}

INSTANTIATE_TEST_SUITE_P(
    Valores, Precio,
    testing::Values(CasoPrecio{"ConDecimales", "PVP1", "6.0005", "6.0005"},
                    CasoPrecio{"SinDecimalesQueSobren", "PVP1", "10", "10"},
                    CasoPrecio{"SinSeparadorDeMiles", "PVP1", "1234567.89", "1234567.89"},
                    CasoPrecio{"Negativo", "PVP1", "-3.5", "-3.5"},
                    CasoPrecio{"Moneda", "PVP3", "19.95", "19.95"},
                    CasoPrecio{"Cero", "PVP1", "0", "0"},
                    CasoPrecio{"NuloCuentaCero", "PVP1", "Null", "0"},
                    CasoPrecio{"TextoQueEsNumero", "PRECIOTEXTO", "'12.50'", "12.5"},
                    CasoPrecio{"TextoVacioCuentaCero", "PRECIOTEXTO", "''", "0"}),
    [](const auto& caso) { return std::string(caso.param.regla); });

TEST_F(Producto, UnPrecioQueNoEsNumeroEsUnErrorDeTipos)
{
    p.configuracion.CampoPrecio = "DESCRIPCION";
    p.Articulo("A");

    EXPECT_EQ(ErrorAlGenerar(), 13);

    EXPECT_EQ(descripcion, "No coinciden los tipos: el campo \"DESCRIPCION\" no es un número.");
    EXPECT_EQ(p.LineasDelFeed().last(), "<SECTOR>77</SECTOR>");
}

// PHOTOS.

TEST_F(Producto, UnArticuloSinImagenesEnLaTiendaDaUnaLineaSinId)
{
    p.Articulo("A");
    p.fotos["A"] = {Nulo()};

    p.Genera();

    EXPECT_EQ(p.Elementos("PHOTO"), QStringList{Cdata("http://casa/img/p/.jpg")});
}

TEST_F(Producto, LasFotosSeBuscanPorElCodigoAunqueVayaElAlternativo)
{
    p.configuracion.UsaCodAlternativo = true;
    p.Articulo("A");
    p.fotos["A"] = {5};

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), QStringList{Cdata("ALTA")});
    EXPECT_EQ(p.Elementos("PHOTO"), QStringList{Cdata("http://casa/img/p/5.jpg")});
}

// The prefix is put blindly: also into a code that holds the authors' one.
TEST_F(Producto, LaConsultaDeFotosLlevaElPrefijoDeLaTienda)
{
    p.programa.parametros.PS_PREFIJO = "tst_";
    p.Ejecuta({"INSERT INTO M_ARTIC (CODARTICULO,ACTIVOWEB) VALUES ('ups_1','S')"});
    p.tienda.Espera(
        "SELECT tst_product.id_product,tst_product.reference,tst_image.id_image,tst_product.date_upd FROM tst_product LEFT JOIN tst_image ON tst_product.id_product=tst_image.id_product WHERE tst_product.reference='utst_1'",
        HazFilas({"id_product", "reference", "id_image", "date_upd"}, {{71, "x", 4, Nulo()}}));

    p.Genera();

    EXPECT_EQ(p.Elementos("PRODUCT_ID"), QStringList{Cdata("ups_1")});
    EXPECT_EQ(p.Elementos("PHOTO"), QStringList{Cdata("http://casa/img/p/4.jpg")});
}

// KEYWORDS.

struct CasoClaves {
    const char* regla;
    QString valor{};
    QStringList claves{};
};

struct Claves : Producto, testing::WithParamInterface<CasoClaves> {};

TEST_P(Claves, SePartenPorLasComas)
{
    p.Articulo("A", {{"CLAVES", GetParam().valor}});

    p.Genera();

    QStringList esperadas;
    for (const QString& clave : GetParam().claves)
        esperadas << Cdata(clave);
    EXPECT_EQ(p.Elementos("KEYWORD"), esperadas);
}

INSTANTIATE_TEST_SUITE_P(
    Valores, Claves,
    testing::Values(
        CasoClaves{"SinComaFinalSePierdeElUltimoCaracter", "'rojo,azul'", {"rojo", "azu"}},
        CasoClaves{"ConComaFinalNoSePierdeNada", "'rojo,azul,'", {"rojo", "azul"}},
        CasoClaves{"ConBlancoFinalTampoco", "'rojo,azul '", {"rojo", "azul"}},
        CasoClaves{"CadaUnaSeRecorta", "'  rojo , azul marino ,'", {"rojo", "azul marino"}},
        CasoClaves{"LasVaciasNoVan", "',,rojo, ,,'", {"rojo"}},
        CasoClaves{"UnSoloCaracter", "'x'", {}},
        CasoClaves{"UnCaracterTrasLaComa", "'rojo,x'", {"rojo"}}, CasoClaves{"Nulas", "Null", {}},
        CasoClaves{"Vacias", "''", {}}, CasoClaves{"EnBlanco", "'   '", {}}),
    [](const auto& caso) { return std::string(caso.param.regla); });

TEST_F(Producto, SinCampoDeClavesNoHayNinguna)
{
    p.configuracion.CampoKeywords.clear();
    p.Articulo("A", {{"CLAVES", "'rojo,'"}});

    p.Genera();

    EXPECT_EQ(p.LineasDelFeed().mid(16, 2), (QStringList{"<KEYWORDS>", "</KEYWORDS>"}));
}

// Fields that the articles don't have.

struct CasoCampo {
    const char* regla;
    QString feed::Configuracion::*clave = nullptr;
    QString campo{};
    QString ultima{}; ///< the last line that is still written
};

struct CampoQueFalta : Producto, testing::WithParamInterface<CasoCampo> {};

TEST_P(CampoQueFalta, EsUnErrorYElFicheroQuedaHastaDondeLlego)
{
    p.configuracion.*GetParam().clave = GetParam().campo;
    p.Articulo("A");

    EXPECT_EQ(ErrorAlGenerar(), 3265);

    EXPECT_EQ(descripcion, "La tabla de artículos no tiene el campo \"" + GetParam().campo +
                               "\" que nombra la configuración de Solostocks.");
    EXPECT_EQ(p.LineasDelFeed().last(), GetParam().ultima);
}

INSTANTIATE_TEST_SUITE_P(
    Campos, CampoQueFalta,
    testing::Values(
        CasoCampo{"Sector", &feed::Configuracion::CampoSector, "NOESTA",
                  "<DESCRIPTION><![CDATA[Notas A]]></DESCRIPTION>"},
        CasoCampo{"SectorVacio", &feed::Configuracion::CampoSector, "",
                  "<DESCRIPTION><![CDATA[Notas A]]></DESCRIPTION>"},
        CasoCampo{"SectorConUnBlanco", &feed::Configuracion::CampoSector, "SECTOR ",
                  "<DESCRIPTION><![CDATA[Notas A]]></DESCRIPTION>"},
        CasoCampo{"Precio", &feed::Configuracion::CampoPrecio, "PVP9", "<SECTOR>77</SECTOR>"},
        CasoCampo{"PrecioVacio", &feed::Configuracion::CampoPrecio, "", "<SECTOR>77</SECTOR>"},
        CasoCampo{"Claves", &feed::Configuracion::CampoKeywords, "NOESTA", "<KEYWORDS>"}),
    [](const auto& caso) { return std::string(caso.param.regla); });

} // namespace
