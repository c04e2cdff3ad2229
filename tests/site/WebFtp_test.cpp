#include "site/ErrorFtp.h"
#include "site/WebFtp.h"
#include "site/cliente_ftp.h"

using namespace tolmo;
using site::ErrorFtp;

// What of the layer below shows only there.

namespace {

struct ConCapa {
    CarpetaDePrueba remoto{};
    ServidorFtp servidor{remoto.Ruta()};
    site::WebFtp ftp{site::Esperas{}};

    ConCapa()
    {
        ftp.InternetConnect(servidor.Servidor(), servidor.Puerto(), servidor.Usuario(),
                            servidor.Clave(), site::modo_conexion::Activo);
    }
};

int Numero(const std::function<void()>& llamada)
{
    try {
        llamada();
    } catch (const ErrorFtp& error) {
        return error.Numero();
    }
    return 0;
}

TEST(WebFtp, UnaRespuestaDelServidorLlegaConTodasSusLineas)
{
    ConCapa p;
    p.ftp.FtpGetCurrentDirectory();

    EXPECT_EQ(p.ftp.InternetGetLastResponseInfo(), "257 \"/\" is the current directory");
}

TEST(WebFtp, LaNegativaDelServidorEsElNumero12003)
{
    ConCapa p;

    EXPECT_EQ(Numero([&] { p.ftp.FtpDeleteFile("nada"); }), 12003);
    EXPECT_EQ(p.ftp.InternetGetLastResponseInfo(), "550 nada: No such file or directory");
}

TEST(WebFtp, MientrasHayUnFicheroAbiertoSoloSeLeeSeEscribeOSeCierra)
{
    ConCapa p;
    p.ftp.FtpOpenFile("a", site::WebFtp::Acceso::Escritura, site::tipo_transferencia::Binario);

    EXPECT_TRUE(p.ftp.FicheroAbierto());
    EXPECT_EQ(Numero([&] { p.ftp.FtpOpenFile("b", site::WebFtp::Acceso::Lectura, 2); }), 12110);
    p.ftp.InternetWriteFile("hola");
    p.ftp.CierraFichero();

    EXPECT_FALSE(p.ftp.FicheroAbierto());
    // Closing has waited for the server's word: the file is whole by now.
    EXPECT_EQ(p.remoto.Lee("a"), "hola");
    EXPECT_EQ(p.ftp.FtpGetCurrentDirectory(), "/");
}

TEST(WebFtp, LeerDaMenosDeLoPedidoSoloAlFinal)
{
    ConCapa p;
    p.remoto.Escribe("a", Bytes(600));
    p.ftp.FtpOpenFile("a", site::WebFtp::Acceso::Lectura, site::tipo_transferencia::Binario);

    EXPECT_EQ(p.ftp.InternetReadFile(255), Bytes(600).mid(0, 255));
    EXPECT_EQ(p.ftp.InternetReadFile(255), Bytes(600).mid(255, 255));
    EXPECT_EQ(p.ftp.InternetReadFile(255), Bytes(600).mid(510));
    EXPECT_EQ(p.ftp.InternetReadFile(255), "");
    p.ftp.CierraFichero();
}

TEST(WebFtp, CerrarAMediaLecturaNoCuestaLaSesion)
{
    ConCapa p;
    p.remoto.Escribe("a", Bytes(3000000));
    p.ftp.FtpOpenFile("a", site::WebFtp::Acceso::Lectura, site::tipo_transferencia::Binario);
    p.ftp.InternetReadFile(255);

    p.ftp.CierraFichero();

    EXPECT_EQ(p.ftp.FtpGetCurrentDirectory(), "/");
}

TEST(WebFtp, EscribirSinFicheroAbiertoEsUnAsaNoValida)
{
    ConCapa p;

    EXPECT_EQ(Numero([&] { p.ftp.InternetWriteFile("a"); }), 6);
    EXPECT_EQ(Numero([&] { p.ftp.InternetReadFile(1); }), 6);
    EXPECT_EQ(Numero([&] { p.ftp.CierraFichero(); }), 6);
}

TEST(WebFtp, UnaBusquedaSeAgotaConElNumeroDieciocho)
{
    ConCapa p;
    p.remoto.Escribe("a", "a");
    p.remoto.Escribe("b", "b");

    EXPECT_EQ(p.ftp.FtpFindFirstFile("").nombre, "a");
    EXPECT_EQ(p.ftp.InternetFindNextFile().nombre, "b");
    EXPECT_EQ(Numero([&] { p.ftp.InternetFindNextFile(); }), 18);
    EXPECT_EQ(Numero([&] { p.ftp.FtpFindFirstFile("*.zip"); }), 18);
}

TEST(WebFtp, UnaSesionNuevaOlvidaLaBusqueda)
{
    ConCapa p;
    p.remoto.Escribe("a", "a");
    p.remoto.Escribe("b", "b");
    p.ftp.FtpFindFirstFile("");

    p.ftp.CierraConexion();

    EXPECT_FALSE(p.ftp.Conectado());
    EXPECT_EQ(Numero([&] { p.ftp.InternetFindNextFile(); }), 18);
}

TEST(ErrorFtp, CadaNumeroTieneElTextoDeLaPlataforma)
{
    const std::pair<int, const char*> textos[] = {
        {18, "There are no more files"},
        {12002, "The operation timed out"},
        {12007, "The server name or address could not be resolved"},
        {12014, "The supplied password is incorrect"},
        {12029, "A connection with the server could not be established"},
        {12030, "The connection with the server was terminated abnormally"},
        {12031, "The connection with the server was reset"},
        {12110, "There is already an FTP request in progress on this session"}};
    for (const auto& [numero, texto] : textos)
        EXPECT_EQ(ErrorFtp(numero).Mensaje(), texto);
}

} // namespace
