#include "apoyo/servidor_ftp.h"
#include "feed/solostocks.h"
#include "feed_de_prueba.h"
#include <functional>
#include <gtest/gtest.h>
#include <optional>

using namespace tolmo;
using Cajas = std::vector<AvisosDePrueba::Caja>;

namespace {

const QByteArray Marca = "\xEF\xBB\xBF";

/// What a generation of one article comes to: this text, and `nombre` for its title.
QByteArray Documento(const QByteArray& nombre)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<SINCRO_DETAILS>\r\n"
           "<COMPANY>4321</COMPANY>\r\n<COUNTRY>67</COUNTRY>\r\n<PRODUCTS>\r\n<PRODUCT>\r\n"
           "<PRODUCT_ID><![CDATA[0101A]]></PRODUCT_ID>\r\n"
           "<TITLE><![CDATA[" +
           nombre +
           "]]></TITLE>\r\n"
           "<DESCRIPTION><![CDATA[Notas 0101A]]></DESCRIPTION>\r\n<SECTOR>77</SECTOR>\r\n"
           "<PRICE>8.25</PRICE>\r\n<SHIPPING>48</SHIPPING>\r\n<MINIMUM>1</MINIMUM>\r\n"
           "<UNIT_TYPE>9</UNIT_TYPE>\r\n<PHOTOS>\r\n"
           "<PHOTO><![CDATA[http://casa/img/p/6.jpg]]></PHOTO>\r\n</PHOTOS>\r\n<KEYWORDS>\r\n"
           "</KEYWORDS>\r\n</PRODUCT>\r\n</PRODUCTS>\r\n</SINCRO_DETAILS>\r\n";
}

const QByteArray EnWindows1252 = Documento("A\xF1o \x80");
const QByteArray EnUtf8 = Marca + Documento("A\xC3\xB1o \xE2\x82\xAC");

struct ProgresoQueMira : ProgresoDePrueba {
    std::function<void()> alAvanzar = [] {};
    std::function<void()> alCeder = [] {};
    void Avanza(int posicion, int total) override
    {
        ProgresoDePrueba::Avanza(posicion, total);
        alAvanzar();
    }
    void CedeEventos() override
    {
        ProgresoDePrueba::CedeEventos();
        alCeder();
    }
};

/// One article, and a server that refuses connections until a test gives another.
struct SolostocksTest : testing::Test {
    FeedDePrueba p{};
    ProgresoQueMira progreso{};
    std::optional<feed::Solostocks> motor{};
    QString local = p.prueba.carpeta.Ruta() + "\\HISTORICOWEB\\solostocks.xml";

    SolostocksTest()
    {
        p.prueba.carpeta.Escribe("PHPSHOP/000001solostocks_config.txt",
                                 "COMPANY:  4321\r\nSECTOR:   SECTOR\r\nPRECIO:   PVP3\r\n"
                                 "KEYWORDS: CLAVES\r\nCOMB:     S\r\n");
        p.Articulo("0101A", {{"DESCRIPCION", "'Año €'"}});
        p.fotos["0101A"] = {6};
        p.AnunciaFotos();
    }

    feed::Solostocks& Carga()
    {
        return motor.emplace(p.programa, progreso,
                             site::Esperas{.conexion = std::chrono::seconds(5),
                                           .silencioFtp = std::chrono::seconds(5)});
    }
    bool Genera() { return motor->Genera({.ruta = local, .carpeta = "/tienda/"}); }
    QByteArray Fichero(const QString& nombre = "solostocks.xml") const
    {
        return p.prueba.carpeta.Lee("HISTORICOWEB/" + nombre);
    }
    Cajas& LasCajas() { return p.prueba.avisos.cajas; }
};

// The load.

TEST_F(SolostocksTest, LaCargaConectaConLaTiendaEnSuDialecto)
{
    data::Parametros& parametros = p.programa.parametros;
    parametros.Server_Bd = "bd.prueba";
    parametros.Puerto_Bd = "3307";
    parametros.Nombre_Bd = "casa";
    parametros.User_Bd = "ana";
    parametros.Pass_Bd = "s3";
    p.programa.DialectoActivo = data::Dialecto::Access;

    Carga();

    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::MySql);
    EXPECT_EQ(
        p.tienda.aperturas.back(),
        (ProveedorDePrueba::Apertura{
            "Driver={MySQL ODBC 5.1 Driver};Server=bd.prueba;Port=3307;Database=casa;User=ana;Password=s3;Option=3;",
            "", ""}));
}

TEST_F(SolostocksTest, LasCajasEmpiezanPorLaCarpetaDelProgramaYLaDeLaTienda)
{
    const feed::Destino destino = Carga().DestinoInicial();

    EXPECT_EQ(destino.ruta, p.prueba.carpeta.Ruta() + "\\HISTORICOWEB\\solostocks.xml");
    EXPECT_EQ(destino.carpeta, "/tienda/");
}

TEST_F(SolostocksTest, SinTiendaLaCargaFallaAntesDeMirarLaConfiguracion)
{
    p.tienda.falloAlAbrir.emplace(data::numero_error::Conexion, "sin tienda", "ODBC");
    QFile::remove(p.prueba.carpeta.Ruta("PHPSHOP/000001solostocks_config.txt"));

    EXPECT_THROW(Carga(), data::ErrorSql);
    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::MySql);
}

TEST_F(SolostocksTest, SinConfiguracionLaCargaFalla)
{
    QFile::remove(p.prueba.carpeta.Ruta("PHPSHOP/000001solostocks_config.txt"));

    EXPECT_THROW(Carga(), data::ErrorFichero);
}

TEST_F(SolostocksTest, LaConfiguracionSeLeeAlCargarYNoEnCadaGeneracion)
{
    Carga();
    p.prueba.carpeta.Escribe("PHPSHOP/000001solostocks_config.txt", "");

    EXPECT_FALSE(Genera());

    EXPECT_EQ(Fichero(), EnWindows1252);
}

// Without FTP.

TEST_F(SolostocksTest, SinFtpLoDiceYElFicheroSeQuedaSinConvertir)
{
    Carga();

    EXPECT_FALSE(Genera());

    EXPECT_EQ(LasCajas(),
              (Cajas{{"No se ha podido conectar con el servidor ftp 127.0.0.1", 64, ""}}));
    EXPECT_EQ(Fichero(), EnWindows1252);
    EXPECT_FALSE(p.prueba.carpeta.Existe("HISTORICOWEB/solostocks.xml1"));
    EXPECT_FALSE(motor->EnMarcha());
}

TEST_F(SolostocksTest, OtraVezEmpiezaDesdeElPrincipioConUnFicheroNuevo)
{
    p.prueba.carpeta.Escribe("HISTORICOWEB/solostocks.xml", "de ayer\r\n");
    Carga();
    Genera();
    p.Ejecuta({"UPDATE M_ARTIC SET DESCRIPCION='Año €'"});

    EXPECT_FALSE(Genera());

    EXPECT_EQ(Fichero(), EnWindows1252);
    EXPECT_EQ(LasCajas().size(), 2U);
}

TEST_F(SolostocksTest, ElFicheroVaDondeDigaLaRuta)
{
    p.prueba.carpeta.CreaCarpeta("otra");
    Carga();

    motor->Genera({.ruta = p.prueba.carpeta.Ruta("otra") + "\\mi feed.txt", .carpeta = "/"});

    EXPECT_EQ(p.prueba.carpeta.Lee("otra/mi feed.txt"), EnWindows1252);
    EXPECT_EQ(Fichero(), "");
}

TEST_F(SolostocksTest, LaTablaDeNotasSeRehaceAntes)
{
    Carga();

    Genera();

    auto filas = p.programa.ConexionLocal.Abre(
        "SELECT CODART,PSNOTAS0,PSNOTAS1 FROM WKOVTOLMO_ARTIC24031509050789",
        data::Cursor::Estatico, data::Bloqueo::SoloLectura);
    ASSERT_EQ(filas.RecordCount(), 1);
    EXPECT_EQ(data::Texto(filas["CODART"]), "0101A");
    EXPECT_EQ(data::Texto(filas["PSNOTAS0"]), "Notas 0101A");
    EXPECT_EQ(data::Texto(filas["PSNOTAS1"]), "Notas 0101A");
}

// CreaTablaNotas leaves the dialect of the management database, and so it stays: on the shop's
// side a code that reads like SQL, or an "&" without brackets, goes out as it is.
TEST_F(SolostocksTest, EnLaGeneracionRigeElDialectoLocalTambienParaLaTienda)
{
    p.Articulo("LEN(A)&B", {{"DESCRIPCION", "'IIF & TOP 1'"}});
    p.AnunciaFotos();
    Carga();

    Genera();

    EXPECT_EQ(
        p.tienda.consultas.last(),
        "SELECT ps_product.id_product,ps_product.reference,ps_image.id_image,ps_product.date_upd FROM ps_product LEFT JOIN ps_image ON ps_product.id_product=ps_image.id_product WHERE ps_product.reference='LEN(A)&B'");
    EXPECT_TRUE(Fichero().contains("<PRODUCT_ID><![CDATA[LEN(A)&B]]></PRODUCT_ID>\r\n"
                                   "<TITLE><![CDATA[IIF & TOP 1]]></TITLE>\r\n"));
    EXPECT_EQ(p.programa.DialectoActivo, data::Dialecto::Access);
}

TEST_F(SolostocksTest, EstaEnMarchaMientrasGenera)
{
    std::vector<bool> marcha;
    Carga();
    marcha.push_back(motor->EnMarcha());
    progreso.alAvanzar = [&] { marcha.push_back(motor->EnMarcha()); };

    Genera();

    marcha.push_back(motor->EnMarcha());
    EXPECT_EQ(marcha, (std::vector{false, true, false}));
    EXPECT_EQ(progreso.avances, (std::vector<std::pair<int, int>>{{1, 1}}));
}

// Errors.

TEST_F(SolostocksTest, UnCampoQueNoExisteEsUnErrorEnPlenaGeneracion)
{
    p.prueba.carpeta.Escribe("PHPSHOP/000001solostocks_config.txt",
                             "SECTOR:   SECTOR\r\nPRECIO:   PVP9\r\n");
    Carga();

    EXPECT_THROW(Genera(), data::ErrorEjecucion);

    EXPECT_TRUE(Fichero().endsWith("<SECTOR>77</SECTOR>\r\n"));
    EXPECT_TRUE(LasCajas().empty());
    EXPECT_FALSE(motor->EnMarcha());
}

TEST_F(SolostocksTest, UnaTablaDeArticulosSinSusColumnasTambien)
{
    p.programa.parametros.PS_TABLAARTIC = "OTRA";
    p.Ejecuta(
        {"CREATE TABLE OTRA (CODARTICULO nvarchar(20), NOTAS MEMO, ACTIVOWEB nvarchar(1), TIPOARTIC nvarchar(2))",
         "INSERT INTO OTRA VALUES ('A','n','S',Null)"});
    Carga();

    try {
        Genera();
        FAIL() << "no error";
    } catch (const data::ErrorEjecucion& error) {
        EXPECT_EQ(error.Numero(), 3265);
        EXPECT_EQ(error.Descripcion(), "No se encontró la columna Descripcion en el resultado.");
    }
}

TEST_F(SolostocksTest, UnaSentenciaQueFallaCierraElPrograma)
{
    p.Ejecuta({"DROP TABLE PS_CONF_ART_VAL"});
    Carga();

    EXPECT_THROW(Genera(), data::FinDePrograma);

    EXPECT_EQ(LasCajas().size(), 2U);
    EXPECT_TRUE(Fichero().endsWith("<PRODUCTS>\r\n"));
    EXPECT_FALSE(motor->EnMarcha());
}

TEST_F(SolostocksTest, UnPuertoQueNoEsNumeroEsUnErrorConElFicheroHecho)
{
    p.programa.parametros.Puerto_Ftp = "ftp";
    Carga();

    EXPECT_THROW(Genera(), data::ErrorEjecucion);

    EXPECT_EQ(Fichero(), EnWindows1252);
}

TEST_F(SolostocksTest, UnFicheroViejoQueNoSePuedeBorrarSeDiceYNoSeSigue)
{
    local = "/proc/version"; // a file that nobody can delete
    Carga();

    EXPECT_FALSE(Genera());

    EXPECT_EQ(LasCajas(), (Cajas{{"No se puede borrar el fichero /proc/version.", 16, ""}}));
    EXPECT_TRUE(p.tienda.consultas.isEmpty());
}

// With FTP.

struct ConFtp : SolostocksTest {
    QTemporaryDir raiz{};
    std::optional<ServidorFtp> servidor{};

    /// `ajustes`: settings of the server.
    void Sirve(const QString& ajustes = {})
    {
        QDir(raiz.path()).mkdir("tienda");
        servidor.emplace(raiz.path(), OpcionesServidorFtp{.ajustes = ajustes});
        data::Parametros& parametros = p.programa.parametros;
        parametros.Server_Ftp = servidor->Servidor();
        parametros.Puerto_Ftp = QString::number(servidor->Puerto());
        parametros.User_Ftp = servidor->Usuario();
        parametros.Pass_Ftp = servidor->Clave();
        Carga();
    }
    QByteArray Remoto(const QString& nombre) const
    {
        QFile fichero(raiz.filePath(nombre));
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray("no esta");
    }
    void PonRemoto(const QString& nombre, const QByteArray& contenido) const
    {
        QFile fichero(raiz.filePath(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write(contenido);
    }
    /// The commands that do something to folders and files, without their answers.
    QStringList Ordenes()
    {
        motor.reset();
        servidor->EsperaFinDeSesiones();
        QStringList ordenes;
        for (const QString& orden : servidor->Registro())
            for (const char* verbo : {"USER", "CWD", "DELE", "STOR"})
                if (orden.startsWith(verbo))
                    ordenes << orden;
        return ordenes;
    }
};

TEST_F(ConFtp, SubeElDocumentoEnUtf8ConSuNombreFijo)
{
    Sirve();

    EXPECT_TRUE(Genera());

    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), EnUtf8);
    EXPECT_EQ(Fichero(), EnUtf8);
    EXPECT_FALSE(p.prueba.carpeta.Existe("HISTORICOWEB/solostocks.xml1"));
    EXPECT_EQ(LasCajas(), (Cajas{{"Fichero subido corréctamente a http://casa/", 64, ""}}));
}

TEST_F(ConFtp, LaConversacionBorraElAnteriorYSubeElNuevo)
{
    Sirve();
    PonRemoto("tienda/KovTolmo.xml", "de ayer");
    PonRemoto("tienda/index.php", "de la tienda");

    Genera();

    EXPECT_EQ(Ordenes(), (QStringList{"USER tolmo 331", "CWD /tienda/ 250", "DELE KovTolmo.xml 250",
                                      "CWD /tienda/ 250", "STOR KovTolmo.xml 226"}));
    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), EnUtf8);
    EXPECT_EQ(Remoto("tienda/index.php"), "de la tienda");
}

TEST_F(ConFtp, UnaCarpetaRemotaQueNoExisteSeIgnoraYElFicheroVaALaDeEntrada)
{
    Sirve();

    EXPECT_TRUE(motor->Genera({.ruta = local, .carpeta = "/falta/"}));

    EXPECT_EQ(Remoto("KovTolmo.xml"), EnUtf8);
    EXPECT_EQ(LasCajas(), (Cajas{{"Fichero subido corréctamente a http://casa/", 64, ""}}));
}

TEST_F(ConFtp, UnaSubidaQueFallaSeAvisaYElFicheroQuedaEnUtf8)
{
    Sirve("<Limit STOR>\nDenyAll\n</Limit>\n");

    EXPECT_TRUE(motor->Genera({.ruta = local, .carpeta = "/tienda/xml"}));

    EXPECT_EQ(LasCajas(),
              (Cajas{{"Ocurrió un ERROR al subir el fichero KovTolmo.xml a 127.0.0.1/tienda/xml",
                      48, ""}}));
    EXPECT_EQ(Fichero(), EnUtf8);
    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), "no esta");
}

TEST_F(ConFtp, UnaClaveRechazadaEsUnaConexionRechazada)
{
    Sirve();
    p.programa.parametros.Pass_Ftp = "otra";

    EXPECT_FALSE(Genera());

    EXPECT_EQ(LasCajas(),
              (Cajas{{"No se ha podido conectar con el servidor ftp 127.0.0.1", 64, ""}}));
    EXPECT_EQ(Fichero(), EnWindows1252);
}

TEST_F(ConFtp, TrasUnaConexionRechazadaOtraVezPuedeSalirBien)
{
    Sirve();
    p.programa.parametros.Pass_Ftp = "otra";
    EXPECT_FALSE(Genera());
    p.programa.parametros.Pass_Ftp = servidor->Clave();

    EXPECT_TRUE(Genera());

    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), EnUtf8);
}

TEST_F(ConFtp, SinLaCarpetaLocalLoDiceYNoTocaElFicheroDelServidor)
{
    Sirve();
    PonRemoto("tienda/KovTolmo.xml", "de ayer");
    local = p.prueba.carpeta.Ruta() + "\\FALTA\\solostocks.xml";

    EXPECT_FALSE(Genera());

    EXPECT_EQ(LasCajas(),
              (Cajas{{"No se puede leer el fichero " + local +
                          ". Compruebe que la carpeta existe y que se puede escribir en ella.",
                      16, ""}}));
    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), "de ayer");
}

TEST_F(ConFtp, SiNoSePuedeConvertirLoDiceYNadaSePierde)
{
    Sirve();
    PonRemoto("tienda/KovTolmo.xml", "de ayer");
    p.prueba.carpeta.CreaCarpeta("HISTORICOWEB/solostocks.xml1");

    EXPECT_FALSE(Genera());

    EXPECT_EQ(LasCajas(), (Cajas{{"No se puede escribir el fichero " + local + "1.", 16, ""}}));
    EXPECT_EQ(Fichero(), EnWindows1252);
    EXPECT_EQ(Remoto("tienda/KovTolmo.xml"), "de ayer");
}

TEST_F(ConFtp, LaSubidaDaTurnosALosEventosYSigueEnMarcha)
{
    Sirve();
    bool enMarcha = false;
    progreso.alCeder = [&] { enMarcha = motor->EnMarcha(); };

    Genera();

    // One for each whole block of 255 bytes.
    EXPECT_EQ(progreso.turnos, static_cast<int>(EnUtf8.size() / 255));
    EXPECT_TRUE(enMarcha);
}

} // namespace
