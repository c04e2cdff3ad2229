#include "faltas_apoyo.h"
#include <QImage>
#include <QRegularExpression>
#include <gmock/gmock.h>
#include <memory>

namespace {

const QByteArray Marca = "\xEF\xBB\xBF";

/// The company's configuration, in the code page that the program reads it in.
const QByteArray Configuracion = "COMPANY:  Casa N\xBA 5\r\nSUFNOTAS: Pregunte\r\n"
                                 "SECTOR:   GRUPO1\r\nPRECIO:   PVP3\r\nKEYWORDS: PALABRAS\r\n"
                                 "CODALT:   S\r\nCOMB:     S\r\n";

const QByteArray Cabecera = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<SINCRO_DETAILS>\r\n"
                            "<COMPANY>Casa N\xBA 5</COMPANY>\r\n<COUNTRY>67</COUNTRY>\r\n"
                            "<PRODUCTS>\r\n";
const QByteArray Fijas = "<SHIPPING>48</SHIPPING>\r\n<MINIMUM>1</MINIMUM>\r\n"
                         "<UNIT_TYPE>9</UNIT_TYPE>\r\n<PHOTOS>\r\n";
const QByteArray Pie = "</PRODUCTS>\r\n</SINCRO_DETAILS>\r\n";

/// A catalogue that one run of "/PRESTASHOP" has brought to the shop: 01A with two pictures, 01B
/// with four combinations, a picture and that of a value, 01C without pictures, 01E that isn't on
/// the web; and 01D, which came after the run.
class SolostocksReal : public testing::Test {
  protected:
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .prefijo = "tst_", .idiomas = 1});
        // So that the ids of the pictures are none that come by themselves.
        tienda->Ejecuta(
            "INSERT INTO tst_image (id_image,id_product,position,cover) VALUES (340,999,1,1)");
        empresa = std::make_unique<EmpresaReal>(*tienda);
        for (const char* nombre : {"a.jpg", "b.jpg", "c.jpg", "rojo.jpg"}) {
            QImage foto(20, 20, QImage::Format_RGB32);
            foto.fill(Qt::green);
            foto.save(Ruta(nombre), "JPEG");
        }
        empresa->Sql(
            SqlFamilia("01", 0, "Cocina") +
            SqlArticulo("01A", {{"DESCRIPCION", "'Año Ω 5 €'"},
                                {"NOTAS", "'Vea <a href=\"x\">la web</a>& más'"},
                                {"GRUPO1", "31"},
                                {"PALABRAS", "'rojo,azul'"},
                                {"FOTO", "'" + Ruta("a.jpg") + "'"},
                                {"FOTO2", "'" + Ruta("b.jpg") + "'"}}) +
            SqlArticulo("01B", {{"CODALTERNATIVO", "Null"},
                                {"GRUPO1", "Null"},
                                {"NOTAS", "'<a href=x>t</a>'"},
                                {"FOTO", "'" + Ruta("c.jpg") + "'"}}) +
            SqlArticulo("01C", {{"PVP3", "Null"}, {"GRUPO1", "33"}, {"PALABRAS", "'lino,'"}}) +
            SqlArticulo("01E", {{"ACTIVOWEB", "'N'"}}) +
            "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('COL','Color');\n"
            "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('MED','Medida');\n" +
            Opcion("COL", "ROJ", "Rojo") + Opcion("COL", "ANI", "Añil") +
            Opcion("MED", "T20", "20 cm") + Opcion("MED", "T24", "24 cm") +
            Valor("COL", "ROJ", 1, "0", "'" + Ruta("rojo.jpg") + "'") +
            Valor("COL", "ANI", 2, "0.75") + Valor("MED", "T20", 1, "0") +
            Valor("MED", "T24", 2, "3.1"));
        carga = empresa->Corre();
        empresa->Sql(SqlArticulo("01D", {{"GRUPO1", "34"}, {"PVP3", "1234.5"}}));
    }
    static void TearDownTestSuite() { empresa.reset(); }

    void SetUp() override
    {
        ASSERT_EQ(carga.estado, 0);
        ASSERT_EQ(carga.errores, "");
        for (const char* nombre : {"solostocks.xml", "solostocks.xml1"})
            QFile::remove(Ruta(QString("HISTORICOWEB/") + nombre));
        Configura(Configuracion);
        if (tienda->ExisteFichero("KovTolmo.xml"))
            tienda->BorraFichero("KovTolmo.xml");
        // A run that ends by an error leaves its table, whose name is told apart by the second
        // alone, as the dice of each process begin alike: the next run may fall into the same one.
        for (const QString& tabla : TablasTemporales(*empresa))
            empresa->Sql("DROP TABLE " + tabla + ";\n");
        antes = TablasTemporales(*empresa);
    }

    static QString Ruta(const QString& nombre) { return empresa->Actual() + "/" + nombre; }
    static QString Opcion(const char* categoria, const char* codigo, const char* nombre)
    {
        return QString(
                   "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ('") +
               categoria + "','" + codigo + "','" + nombre + "');\n";
    }
    /// A value of 01B; `incremento` is of price list 3, that of list 1 must show nowhere.
    static QString Valor(const char* categoria, const char* valor, int secuencia,
                         const char* incremento, const QString& foto = "Null")
    {
        return QString("INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,"
                       "INC_PVP,INC_PVP3,PESO,FOTO) VALUES ('01B','") +
               categoria + "','" + valor + "',1," + QString::number(secuencia) + ",500," +
               incremento + ",0," + foto + ");\n";
    }
    static void Configura(const QByteArray& texto)
    {
        empresa->Carpeta().Escribe("PHPSHOP/000001solostocks_config.txt", texto);
    }
    static QByteArray Local() { return empresa->Carpeta().Lee("HISTORICOWEB/solostocks.xml"); }
    static QByteArray Remoto() { return tienda->LeeFichero("KovTolmo.xml"); }

    /// One line for each picture that the shop has of an article, in the order in which it gives
    /// them.
    static QByteArray Fotos(const QString& codigo)
    {
        QByteArray lineas;
        for (
            const QStringList& fila : tienda->Sql(
                "SELECT tst_product.id_product,tst_product.reference,tst_image.id_image,tst_product.date_upd FROM tst_product LEFT JOIN tst_image ON tst_product.id_product=tst_image.id_product WHERE tst_product.reference='" +
                codigo + "'"))
            lineas += "<PHOTO><![CDATA[" + tienda->Www().toLatin1() + "img/p/" +
                      fila[2].toLatin1() + ".jpg]]></PHOTO>\r\n";
        return lineas;
    }
    static QByteArray Producto01A(const QByteArray& codigo = "ALT01A")
    {
        return "<PRODUCT>\r\n<PRODUCT_ID><![CDATA[" + codigo +
               "]]></PRODUCT_ID>\r\n"
               "<TITLE><![CDATA[A\xF1o ? 5 \x80]]></TITLE>\r\n"
               "<DESCRIPTION><![CDATA[Vea & m\xE1s]]></DESCRIPTION>\r\n"
               "<SECTOR>31</SECTOR>\r\n<PRICE>8</PRICE>\r\n" +
               Fijas + Fotos("01A") +
               "</PHOTOS>\r\n<KEYWORDS>\r\n<KEYWORD><![CDATA[rojo]]></KEYWORD>\r\n"
               "<KEYWORD><![CDATA[azu]]></KEYWORD>\r\n</KEYWORDS>\r\n</PRODUCT>\r\n";
    }
    static QByteArray Producto01B(const QByteArray& sufijo, const QByteArray& titulo,
                                  const QByteArray& precio)
    {
        return "<PRODUCT>\r\n<PRODUCT_ID><![CDATA[01B" + sufijo +
               "]]></PRODUCT_ID>\r\n<TITLE><![CDATA[Art 01B" + titulo +
               "]]></TITLE>\r\n<DESCRIPTION><![CDATA[Art 01B]]></DESCRIPTION>\r\n"
               "<SECTOR></SECTOR>\r\n<PRICE>" +
               precio + "</PRICE>\r\n" + Fijas + Fotos("01B") +
               "</PHOTOS>\r\n<KEYWORDS>\r\n</KEYWORDS>\r\n</PRODUCT>\r\n";
    }
    static QByteArray Producto01C(const QByteArray& codigo = "ALT01C")
    {
        return "<PRODUCT>\r\n<PRODUCT_ID><![CDATA[" + codigo +
               "]]></PRODUCT_ID>\r\n"
               "<TITLE><![CDATA[Art 01C]]></TITLE>\r\n"
               "<DESCRIPTION><![CDATA[Notas 01C]]></DESCRIPTION>\r\n"
               "<SECTOR>33</SECTOR>\r\n<PRICE>0</PRICE>\r\n" +
               Fijas + "<PHOTO><![CDATA[" + tienda->Www().toLatin1() +
               "img/p/.jpg]]></PHOTO>\r\n</PHOTOS>\r\n<KEYWORDS>\r\n"
               "<KEYWORD><![CDATA[lino]]></KEYWORD>\r\n</KEYWORDS>\r\n</PRODUCT>\r\n";
    }
    static QByteArray Producto01D(const QByteArray& codigo = "ALT01D")
    {
        return "<PRODUCT>\r\n<PRODUCT_ID><![CDATA[" + codigo +
               "]]></PRODUCT_ID>\r\n"
               "<TITLE><![CDATA[Art 01D]]></TITLE>\r\n"
               "<DESCRIPTION><![CDATA[Notas 01D]]></DESCRIPTION>\r\n"
               "<SECTOR>34</SECTOR>\r\n<PRICE>1234.5</PRICE>\r\n" +
               Fijas + "</PHOTOS>\r\n<KEYWORDS>\r\n</KEYWORDS>\r\n</PRODUCT>\r\n";
    }
    /// The whole document in Windows-1252.
    static QByteArray Documento()
    {
        return Cabecera + Producto01A() +
               Producto01B("_1", " (Color : Rojo) (Medida : 20 cm)", "8") +
               Producto01B("_2", " (Color : Rojo) (Medida : 24 cm)", "11.1") +
               Producto01B("_3", " (Color : A\xF1il) (Medida : 20 cm)", "8.75") +
               Producto01B("_4", " (Color : A\xF1il) (Medida : 24 cm)", "11.85") + Producto01C() +
               Producto01D() + Pie;
    }
    /// The same bytes in UTF-8; "€" is the one letter of the tests beyond Latin-1.
    static QByteArray EnUtf8(const QByteArray& documento)
    {
        return Marca + QString::fromLatin1(documento).replace(QChar(0x80), u'€').toUtf8();
    }
    static QString Exito() { return "Fichero subido corréctamente a " + tienda->Www() + "\n"; }

    /// The failure that the handler of the start ends: its box, and no window unloads.
    void AcabaEnLaCajaDelArranque(const ResultadoCorrida& corrida)
    {
        EXPECT_EQ(corrida.estado, 1);
        EXPECT_EQ(corrida.errores, CajaDeArranque);
        EXPECT_EQ(corrida.salida, "");
        EXPECT_EQ(EnLineas(corrida.ftp), "");
        EXPECT_FALSE(tienda->ExisteFichero("KovTolmo.xml"));
        EXPECT_EQ(TablasTemporales(*empresa).size(), antes.size() + TablasALaVista(1));
    }

    QStringList antes{}; ///< temporary tables that earlier failures left

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida carga{};
};

TEST_F(SolostocksReal, ElFicheroDelServidorEsExactoByteAByte)
{
    // Of the two pictures of 01A and the two of 01B, and of no other product.
    ASSERT_EQ(Fotos("01A").count("<PHOTO>"), 2);
    ASSERT_EQ(Fotos("01B").count("<PHOTO>"), 2);
    ASSERT_TRUE(Fotos("01A").contains("img/p/341.jpg"));

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, Exito());
    EXPECT_EQ(corrida.salida, "");
    EXPECT_EQ(Remoto(), EnUtf8(Documento()));
    EXPECT_EQ(Local(), EnUtf8(Documento()));
    EXPECT_FALSE(empresa->Carpeta().Existe("HISTORICOWEB/solostocks.xml1"));
}

TEST_F(SolostocksReal, SoloHablaConElFtpYNoDejaLogNiTabla)
{
    tienda->EscribeFichero("KovTolmo.xml", "de ayer");

    const ResultadoCorrida corrida = empresa->Corre("/solostocks:000001");

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(corrida.errores, Exito());
    EXPECT_EQ(Remoto(), EnUtf8(Documento()));
    EXPECT_EQ(EnLineas(corrida.ftp.filter(QRegularExpression("^(CWD|DELE|STOR)"))),
              EnLineas({"CWD /tienda/ 250", "DELE KovTolmo.xml 250", "CWD /tienda/ 250",
                        "STOR KovTolmo.xml 226"}));
    EXPECT_EQ(EnLineas(corrida.http), "");
    EXPECT_EQ(EnLineas(corrida.log), "\n");
    EXPECT_EQ(TablasTemporales(*empresa), antes);
}

TEST_F(SolostocksReal, SinCombinacionesNiCodigoAlternativoCadaArticuloVaUnaVez)
{
    Configura("COMPANY:  Casa N\xBA 5\r\nSECTOR:   GRUPO1\r\nPRECIO:   PVP3\r\n"
              "KEYWORDS: PALABRAS\r\nCOMB:     N\r\n");

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(Remoto(), EnUtf8(Cabecera + Producto01A("01A") + Producto01B("", "", "8") +
                               Producto01C("01C") + Producto01D("01D") + Pie));
}

TEST_F(SolostocksReal, LasCabecerasDesconocidasNoCambianNada)
{
    Configura("IDIOMA:   es\r\n\r\nEMPRESA:  otra\r\n" + Configuracion + "PRECIO: PVP1\r\n");

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(Remoto(), EnUtf8(Documento()));
}

// Faults of the configuration.

TEST_F(SolostocksReal, SinConfiguracionSaleLaCajaDelArranque)
{
    QFile::remove(Ruta("PHPSHOP/000001solostocks_config.txt"));

    AcabaEnLaCajaDelArranque(empresa->Corre("/SOLOSTOCKS:000001"));

    EXPECT_FALSE(empresa->Carpeta().Existe("HISTORICOWEB/solostocks.xml"));
}

struct CasoDeFalta {
    const char* regla;
    QByteArray configuracion{};
    QByteArray escrito{}; ///< of the first article, behind the head
};

class ConfiguracionConFalta : public SolostocksReal,
                              public testing::WithParamInterface<CasoDeFalta> {};

TEST_P(ConfiguracionConFalta, SaleLaCajaDelArranqueYElFicheroQuedaHastaDondeLlego)
{
    Configura(GetParam().configuracion);

    AcabaEnLaCajaDelArranque(empresa->Corre("/SOLOSTOCKS:000001"));

    EXPECT_EQ(Local(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<SINCRO_DETAILS>\r\n"
                       "<COMPANY></COMPANY>\r\n<COUNTRY>67</COUNTRY>\r\n<PRODUCTS>\r\n"
                       "<PRODUCT>\r\n<PRODUCT_ID><![CDATA[01A]]></PRODUCT_ID>\r\n"
                       "<TITLE><![CDATA[A\xF1o ? 5 \x80]]></TITLE>\r\n"
                       "<DESCRIPTION><![CDATA[Vea & m\xE1s]]></DESCRIPTION>\r\n" +
                           GetParam().escrito);
}

INSTANTIATE_TEST_SUITE_P(
    Faltas, ConfiguracionConFalta,
    testing::Values(CasoDeFalta{"Vacia", "", ""},
                    CasoDeFalta{"SoloConCabecerasDesconocidas", "EMPRESA:  x\r\nPRECIO: PVP1\r\n",
                                ""},
                    CasoDeFalta{"ConUnSectorQueNoExiste", "SECTOR:   SUBFAMILIA\r\n", ""},
                    CasoDeFalta{"SinPrecio", "SECTOR:   GRUPO1\r\n", "<SECTOR>31</SECTOR>\r\n"},
                    CasoDeFalta{"ConUnPrecioQueNoExiste", "SECTOR:   GRUPO1\r\nPRECIO:   PVP9\r\n",
                                "<SECTOR>31</SECTOR>\r\n"}),
    [](const auto& caso) { return std::string(caso.param.regla); });

TEST_F(SolostocksReal, SinColumnaDeIncrementoLaSentenciaCierraElPrograma)
{
    // The field exists, and the configurator has no increments for its last character.
    Configura("SECTOR:   GRUPO1\r\nPRECIO:   KILOS\r\nCOMB:     S\r\n");

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    EXPECT_EQ(corrida.estado, 1);
    EXPECT_THAT(corrida.errores.toStdString(),
                testing::AllOf(testing::HasSubstr("T001.INC_PVPS"),
                               testing::EndsWith(CierreDePrograma.toStdString())));
    EXPECT_TRUE(Local().endsWith("</PRODUCT>\r\n"));
    EXPECT_FALSE(tienda->ExisteFichero("KovTolmo.xml"));
}

// Faults of the world around.

TEST_F(SolostocksReal, SinFtpLoDiceAcabaCon1YElFicheroSeQuedaSinConvertir)
{
    tienda->Para(Servidor::Ftp);

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    tienda->Sigue(Servidor::Ftp);
    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores, "No se ha podido conectar con el servidor ftp 127.0.0.1\n");
    EXPECT_EQ(Local(), Documento());
    // The main window unloads in good order.
    EXPECT_EQ(TablasTemporales(*empresa), antes);

    const ResultadoCorrida otra = empresa->Corre("/SOLOSTOCKS:000001");

    EXPECT_EQ(otra.estado, 0);
    EXPECT_EQ(Remoto(), EnUtf8(Documento()));
}

TEST_F(SolostocksReal, UnaSubidaRechazadaSeAvisaYElFicheroQuedaEnUtf8)
{
    tienda->EscribeFichero(".ftpaccess", "<Limit STOR>\nDenyAll\n</Limit>\n");

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    tienda->BorraFichero(".ftpaccess");
    EXPECT_EQ(corrida.errores,
              "Ocurrió un ERROR al subir el fichero KovTolmo.xml a 127.0.0.1/tienda/\n");
    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(Local(), EnUtf8(Documento()));
    EXPECT_FALSE(tienda->ExisteFichero("KovTolmo.xml"));
    EXPECT_EQ(TablasTemporales(*empresa), antes);
}

TEST_F(SolostocksReal, SinHistoricowebLoDiceYNoTocaElFicheroDelServidor)
{
    tienda->EscribeFichero("KovTolmo.xml", "de ayer");
    ASSERT_TRUE(QDir().rename(Ruta("HISTORICOWEB"), Ruta("APARTADA")));

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    ASSERT_TRUE(QDir().rename(Ruta("APARTADA"), Ruta("HISTORICOWEB")));
    EXPECT_EQ(corrida.estado, 1);
    EXPECT_EQ(corrida.errores,
              "No se puede leer el fichero " + empresa->Actual() +
                  "\\HISTORICOWEB\\solostocks.xml. Compruebe que la carpeta existe y que se puede "
                  "escribir en ella.\n");
    EXPECT_EQ(Remoto(), "de ayer");
    EXPECT_EQ(TablasTemporales(*empresa), antes);
}

TEST_F(SolostocksReal, SinMySqlSaleLaCajaDelArranque)
{
    tienda->Para(Servidor::Mysql);

    const ResultadoCorrida corrida = empresa->Corre("/SOLOSTOCKS:000001");

    tienda->Sigue(Servidor::Mysql);
    AcabaEnLaCajaDelArranque(corrida);
}

} // namespace
