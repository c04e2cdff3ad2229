#include "apoyo/enchufe.h"
#include "site/cliente_ftp.h"
#include <filesystem>

using namespace tolmo;

// How a session begins and ends, and what the operations do without one.

namespace {

// ---- what stands before a session

TEST(OpenConnection, ConLaClaveMalDaElTextoDeLaPlataforma)
{
    ServidorYCliente p;

    EXPECT_FALSE(p.ftp.OpenConnection("127.0.0.1", p.servidor.Puerto(), "tolmo", "otra"));

    EXPECT_EQ(p.Error(),
              "InternetConnect error code: 12014 Message: The supplied password is incorrect");
    EXPECT_FALSE(p.Error().contains("otra"));
}

TEST(OpenConnection, SinNadieAlOtroLadoDaElNumero12029)
{
    const int puerto = PuertoLibre();
    ClienteFtp cliente;

    EXPECT_FALSE(cliente.Abre(puerto));

    EXPECT_EQ(
        cliente.ftp.GetLastErrorMessage(),
        "InternetConnect error code: 12029 Message: A connection with the server could not be established");
}

TEST(OpenConnection, ConUnNombreQueNadieConoceDaElNumero12007)
{
    ClienteFtp cliente;

    EXPECT_FALSE(cliente.ftp.OpenConnection("no-existe.invalid", 21, "u", "c"));

    EXPECT_EQ(
        cliente.ftp.GetLastErrorMessage(),
        "InternetConnect error code: 12007 Message: The server name or address could not be resolved");
}

TEST(OpenConnection, ConUnNombreQueNoPuedeSerloDaElNumero12007)
{
    ClienteFtp cliente;

    EXPECT_FALSE(cliente.ftp.OpenConnection("no es un nombre", 21, "u", "c"));

    EXPECT_EQ(
        cliente.ftp.GetLastErrorMessage(),
        "InternetConnect error code: 12007 Message: The server name or address could not be resolved");
}

TEST(OpenConnection, UnPuertoImposibleEsUnParametroIncorrecto)
{
    ClienteFtp cliente;

    EXPECT_FALSE(cliente.ftp.OpenConnection("127.0.0.1", 70000, "u", "c"));

    EXPECT_EQ(cliente.ftp.GetLastErrorMessage(),
              "InternetConnect error code: 87 Message: The parameter is incorrect");
}

class PuertoVacio : public testing::TestWithParam<data::Valor> {};

TEST_P(PuertoVacio, EsElDeSerieDelProtocolo)
{
    const Enchufe veintiuno = Enchufe::Escucha(21);
    if (!veintiuno.Vale())
        GTEST_SKIP() << "an ordinary user can't listen on port 21, or somebody does";
    ClienteFtp cliente(EsperasCortas());

    EXPECT_FALSE(cliente.ftp.OpenConnection("127.0.0.1", GetParam(), "u", "c"));

    EXPECT_TRUE(veintiuno.HayAlgo(0));
}

INSTANTIATE_TEST_SUITE_P(Valores, PuertoVacio,
                         testing::Values(data::Valor(), data::Nulo(), data::Valor(0),
                                         data::Valor(QString())));

TEST(OpenConnection, SinLineaEsFalsoSinTextoYSinLlamarANadie)
{
    const Enchufe escucha = Enchufe::Escucha();
    ClienteFtp cliente(EsperasCortas());
    cliente.ftp.InternetAutodial = [] { return false; };

    EXPECT_FALSE(cliente.Abre(escucha.Puerto()));

    EXPECT_EQ(cliente.ftp.GetLastErrorMessage(), "");
    EXPECT_FALSE(escucha.HayAlgo(100));
}

TEST(OpenConnection, UnObjetoNuevoVaEnAsciiYEnModoActivo)
{
    ServidorYCliente p;
    site::cFTP nuevo;
    ASSERT_TRUE(nuevo.OpenConnection("127.0.0.1", p.servidor.Puerto(), p.servidor.Usuario(),
                                     p.servidor.Clave()));

    EXPECT_TRUE(nuevo.FTPUploadFile(p.cliente.Local("a", "uno\r\n"), "a.txt"));

    nuevo.CloseConnection();
    EXPECT_EQ(p.remoto.Lee("a.txt"), "uno\n");
    p.servidor.EsperaFinDeSesiones();
    EXPECT_EQ(p.servidor.Registro().filter("PORT").size(), 1);
}

TEST(OpenConnection, TipoYModoSeConservanDeUnaSesionAOtra)
{
    ServidorYCliente p;
    p.ftp.SetModePassive();
    p.Abre();
    p.ftp.CloseConnection();
    p.Abre();

    p.ftp.FTPUploadFile(p.cliente.Local("a", "uno\r\n"), "a.txt");

    EXPECT_EQ(p.remoto.Lee("a.txt"), "uno\r\n");
    EXPECT_TRUE(p.Conversacion().value(1).contains("PASV 227"));
}

TEST(OpenConnection, LosNombresConAcentosVanEnWindows1252SiElServidorNoOfreceUtf8)
{
    ServidorYCliente p({.utf8 = false});
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.CreateFTPDirectory("niño"));
    EXPECT_TRUE(p.ftp.SetFTPDirectory("niño"));
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "ñandú €.jpg"));

    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/niño");
    EXPECT_TRUE(std::filesystem::exists(p.remoto.Ruta().toStdString() + "/ni\xF1o/\xF1"
                                                                        "and\xFA \x80.jpg"));
    bool sinResultado = false;
    const auto lista = p.ftp.GetDirectoryListing("", sinResultado);
    ASSERT_NE(lista, nullptr);
    EXPECT_EQ(lista->Item(1).Filename, "ñandú €.jpg");
    // Names of another encoding than the system's are beyond the folder's own cleaning.
    std::filesystem::remove_all(p.remoto.Ruta().toStdString() + "/ni\xF1o");
}

TEST(CloseConnection, SinNadaAbiertoNoHaceNada)
{
    site::cFTP ftp;

    ftp.CloseConnection();
    ftp.CloseConnection();

    EXPECT_EQ(ftp.GetLastErrorMessage(), "");
}

// ---- every operation where it can't be carried out

struct CasoOperacion {
    const char* contexto;
    bool (*hace)(ClienteFtp&); ///< true when it succeeded
};

void PrintTo(const CasoOperacion& caso, std::ostream* salida)
{
    *salida << caso.contexto;
}

const CasoOperacion Operaciones[] = {
    {"SimpleFtpPutFile",
     [](ClienteFtp& c) { return c.ftp.SimpleFTPPutFile(c.Local("z", "z"), "z"); }},
    {"RenameFTPFile", [](ClienteFtp& c) { return c.ftp.RenameFTPFile("a", "b"); }},
    {"CreateFTPDirectory", [](ClienteFtp& c) { return c.ftp.CreateFTPDirectory("c"); }},
    {"RemoveFTPDirectory", [](ClienteFtp& c) { return c.ftp.RemoveFTPDirectory("c"); }},
    {"DeleteFTPFile", [](ClienteFtp& c) { return c.ftp.DeleteFTPFile("a"); }},
    {"FtpOpenFile:PutFile",
     [](ClienteFtp& c) { return c.ftp.FTPUploadFile(c.Local("z", "z"), "z"); }},
    {"SimpleFtpGetFile",
     [](ClienteFtp& c) { return c.ftp.SimpleFTPGetFile(c.local.Ruta("y"), "a"); }},
    {"FtpGetCurrentDirectory", [](ClienteFtp& c) { return !c.ftp.GetFTPDirectory().isEmpty(); }},
    {"FtpSetCurrentDirectory", [](ClienteFtp& c) { return c.ftp.SetFTPDirectory("/"); }},
    {"FtpFindFirstFile", [](ClienteFtp& c) { return c.ftp.GetFTPFileSize("a") != -2; }},
};

class Operacion : public testing::TestWithParam<CasoOperacion> {};

INSTANTIATE_TEST_SUITE_P(Todas, Operacion, testing::ValuesIn(Operaciones), [](const auto& caso) {
    return QString(caso.param.contexto).remove(':').toStdString();
});

TEST_P(Operacion, SinSesionEsFalsaConElNumeroSeis)
{
    ClienteFtp cliente;

    EXPECT_FALSE(GetParam().hace(cliente));

    EXPECT_EQ(cliente.ftp.GetLastErrorMessage(),
              QString(GetParam().contexto) + " error code: 6 Message: The handle is invalid");
}

TEST_P(Operacion, ConUnaTransferenciaAbiertaSeNiegaYNadaLlegaAlServidor)
{
    ServidorYCliente p;
    p.remoto.Escribe("a", "a");
    p.Abre();
    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.local.Ruta("nada"), "abierto"));
    ASSERT_TRUE(p.ftp.TransferenciaAbierta());

    EXPECT_FALSE(GetParam().hace(p.cliente));

    EXPECT_EQ(
        p.Error(),
        QString(GetParam().contexto) +
            " error code: 12110 Message: There is already an FTP request in progress on this session");
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    const QStringList sesion = p.Conversacion().value(0);
    EXPECT_EQ(sesion.mid(0, 5), QStringList({"USER tolmo 331", "PASS (hidden) 230", "PWD 257",
                                             "PORT 127,0,0,1 200", "TYPE I 200"}));
    // Only the transfer that was cut off, whatever the server makes of it.
    for (const QString& orden : sesion.mid(5))
        EXPECT_TRUE(orden.startsWith("STOR abierto ")) << orden.toStdString();
}

TEST(Operacion, LasQueNoTienenTextoDeErrorTampocoLlegan)
{
    ServidorYCliente p;
    p.remoto.Escribe("a", "a");
    p.Abre();
    p.ftp.FTPUploadFile(p.cliente.local.Ruta("nada"), "abierto");

    EXPECT_FALSE(p.ftp.BuscaFichero("a").isValid());
    EXPECT_EQ(p.Error(), "");
    bool sinResultado = true;
    EXPECT_EQ(p.ftp.GetDirectoryListing("", sinResultado), nullptr);
    EXPECT_FALSE(sinResultado);
    EXPECT_EQ(
        p.Error(),
        "FtpFindFirstFile error code: 12110 Message: There is already an FTP request in progress on this session");

    EXPECT_TRUE(p.Conversacion().value(0).filter("LIST").isEmpty());
}

} // namespace
