#include "site/cliente_ftp.h"
#include <filesystem>

using namespace tolmo;

// The operations but the transfers in blocks, on a real server.

namespace {

enum class Modo { Activo, Pasivo };

class cFTP : public testing::TestWithParam<Modo> {
  protected:
    ServidorYCliente p{};
    /// How a data connection is asked for.
    const QString datos = GetParam() == Modo::Activo ? "PORT 127,0,0,1 200" : "PASV 227";

    void SetUp() override
    {
        if (GetParam() == Modo::Activo)
            p.ftp.SetModeActive();
        else
            p.ftp.SetModePassive();
        ASSERT_TRUE(p.Abre()) << p.Error().toStdString();
    }
};

INSTANTIATE_TEST_SUITE_P(EnModo, cFTP, testing::Values(Modo::Activo, Modo::Pasivo),
                         [](const auto& caso) {
                             return caso.param == Modo::Activo ? "Activo" : "Pasivo";
                         });

TEST_P(cFTP, LaSesionEmpiezaEnLaCarpetaDelUsuario)
{
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/");
    EXPECT_EQ(p.Error(), "");
}

TEST_P(cFTP, LaCarpetaDeLaSesionSeCambiaConRutasAbsolutasYRelativas)
{
    p.remoto.CreaCarpeta("tienda/img/c");

    EXPECT_TRUE(p.ftp.SetFTPDirectory("/tienda/"));
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/tienda");
    EXPECT_TRUE(p.ftp.SetFTPDirectory("img/c"));
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/tienda/img/c");
    EXPECT_TRUE(p.ftp.SetFTPDirectory(".."));
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/tienda/img");
}

TEST_P(cFTP, UnaCarpetaQueFaltaDejaLaSesionDondeEstaba)
{
    p.remoto.CreaCarpeta("tienda");
    p.ftp.SetFTPDirectory("tienda");

    EXPECT_FALSE(p.ftp.SetFTPDirectory("nada"));

    EXPECT_EQ(p.Error(), "550 nada: No such file or directory");
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/tienda");
}

TEST_P(cFTP, UnNombreSueltoActuaDondeEstaLaSesion)
{
    p.remoto.Escribe("a.txt", "de arriba");
    p.remoto.Escribe("img/a.txt", "de abajo");
    p.ftp.SetFTPDirectory("img");

    EXPECT_TRUE(p.ftp.DeleteFTPFile("a.txt"));

    EXPECT_TRUE(p.remoto.Existe("a.txt"));
    EXPECT_FALSE(p.remoto.Existe("img/a.txt"));
}

TEST_P(cFTP, UnNombreConCarpetaCuentaDesdeDondeEstaLaSesion)
{
    p.remoto.Escribe("tienda/download/a.txt", "a");
    p.ftp.SetFTPDirectory("tienda");

    EXPECT_TRUE(p.ftp.DeleteFTPFile("download/a.txt"));

    EXPECT_FALSE(p.remoto.Existe("tienda/download/a.txt"));
}

TEST_P(cFTP, UnNombrePuedeSubirPorLasCarpetas)
{
    p.remoto.CreaCarpeta("img/c");
    p.ftp.SetFTPDirectory("img/c");

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "../a.txt"));

    EXPECT_TRUE(p.remoto.Existe("img/a.txt"));
}

TEST_P(cFTP, BorrarLoQueNoHayEsFalsoConLaRespuestaDelServidor)
{
    EXPECT_FALSE(p.ftp.DeleteFTPFile("nada.txt"));

    EXPECT_EQ(p.Error(), "550 nada.txt: No such file or directory");
}

TEST_P(cFTP, RenombraUnFichero)
{
    p.remoto.Escribe("a.txt", "contenido");

    EXPECT_TRUE(p.ftp.RenameFTPFile("a.txt", "b c.txt"));

    EXPECT_FALSE(p.remoto.Existe("a.txt"));
    EXPECT_EQ(p.remoto.Lee("b c.txt"), "contenido");
}

TEST_P(cFTP, RenombrarLoQueNoHayNoLlegaADecirElNombreNuevo)
{
    EXPECT_FALSE(p.ftp.RenameFTPFile("nada.txt", "b.txt"));

    EXPECT_EQ(p.Error(), "550 nada.txt: No such file or directory");
    const QStringList sesion = p.Conversacion().value(0);
    EXPECT_TRUE(sesion.contains("RNFR nada.txt 550"));
    EXPECT_TRUE(sesion.filter("RNTO").isEmpty());
}

TEST_P(cFTP, CreaYQuitaUnaCarpeta)
{
    EXPECT_TRUE(p.ftp.CreateFTPDirectory("nueva"));
    EXPECT_TRUE(QDir(p.remoto.Ruta("nueva")).exists());

    EXPECT_TRUE(p.ftp.RemoveFTPDirectory("nueva"));
    EXPECT_FALSE(QDir(p.remoto.Ruta("nueva")).exists());
}

TEST_P(cFTP, CrearUnaCarpetaQueYaEstaEsFalso)
{
    p.remoto.CreaCarpeta("vieja");

    EXPECT_FALSE(p.ftp.CreateFTPDirectory("vieja"));

    EXPECT_EQ(p.Error(), "550 vieja: File exists");
}

TEST_P(cFTP, QuitarUnaCarpetaQueNoEstaEsFalso)
{
    EXPECT_FALSE(p.ftp.RemoveFTPDirectory("nada"));

    EXPECT_EQ(p.Error(), "550 nada: No such file or directory");
}

TEST_P(cFTP, SubeUnFicheroEnteroSinEventos)
{
    EXPECT_TRUE(p.ftp.SimpleFTPPutFile(p.cliente.Local("a.bin", Bytes(100000)), "b.bin"));

    EXPECT_EQ(p.remoto.Lee("b.bin"), Bytes(100000));
    EXPECT_TRUE(p.cliente.avances.empty());
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
}

TEST_P(cFTP, SubirEnteroUnFicheroLocalQueFaltaNoTocaElServidor)
{
    p.remoto.Escribe("b.bin", "lo de antes");

    EXPECT_FALSE(p.ftp.SimpleFTPPutFile(p.cliente.local.Ruta("nada"), "b.bin"));

    EXPECT_EQ(p.Error(),
              "SimpleFtpPutFile error code: 2 Message: The system cannot find the file specified");
    EXPECT_EQ(p.remoto.Lee("b.bin"), "lo de antes");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
}

TEST_P(cFTP, SubirEnteroAUnaCarpetaQueFaltaEsFalsoYLaSesionSigue)
{
    EXPECT_FALSE(p.ftp.SimpleFTPPutFile(p.cliente.Local("a", "a"), "nada/a"));

    EXPECT_EQ(p.Error(), "550 nada/a: No such file or directory");
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/");
}

TEST_P(cFTP, BajaUnFicheroEnteroEncimaDelQueHubiera)
{
    p.remoto.Escribe("a.bin", Bytes(100000));
    const QString destino = p.cliente.Local("b.bin", Bytes(200000));

    EXPECT_TRUE(p.ftp.SimpleFTPGetFile(destino, "a.bin"));

    EXPECT_EQ(p.cliente.local.Lee("b.bin"), Bytes(100000));
    EXPECT_TRUE(p.cliente.avances.empty());
}

TEST_P(cFTP, BajaEnteroTambienUnFicheroVacio)
{
    p.remoto.Escribe("a.bin", "");

    EXPECT_TRUE(p.ftp.SimpleFTPGetFile(p.cliente.local.Ruta("b.bin"), "a.bin"));

    EXPECT_TRUE(p.cliente.local.Existe("b.bin"));
    EXPECT_EQ(p.cliente.local.Lee("b.bin"), "");
}

TEST_P(cFTP, BajarLoQueNoHayNoTocaElFicheroLocalNiDejaUnoNuevo)
{
    const QString destino = p.cliente.Local("b.bin", "lo de antes");

    EXPECT_FALSE(p.ftp.SimpleFTPGetFile(destino, "nada"));
    EXPECT_EQ(p.Error(), "550 nada: No such file or directory");
    EXPECT_FALSE(p.ftp.SimpleFTPGetFile(p.cliente.local.Ruta("nuevo"), "nada"));

    EXPECT_EQ(p.cliente.local.Lee("b.bin"), "lo de antes");
    EXPECT_FALSE(p.cliente.local.Existe("nuevo"));
}

TEST_P(cFTP, BajarAUnaCarpetaLocalQueFaltaNoPreguntaAlServidor)
{
    p.remoto.Escribe("a.bin", "a");

    EXPECT_FALSE(p.ftp.SimpleFTPGetFile(p.cliente.local.Ruta("nada/b"), "a.bin"));

    EXPECT_EQ(p.Error(),
              "SimpleFtpGetFile error code: 2 Message: The system cannot find the file specified");
    EXPECT_TRUE(p.Conversacion().value(0).filter("RETR").isEmpty());
}

TEST_P(cFTP, TodoVaPorUnaSolaConexionSinOrdenesDeMas)
{
    p.remoto.CreaCarpeta("tienda");
    const QString local = p.cliente.Local("a", "a");

    p.ftp.DeleteFTPFile("a.php");
    p.ftp.SetFTPDirectory("/tienda/");
    p.ftp.FTPUploadFile(local, "a.php");
    p.ftp.DeleteFTPFile("b.php");
    p.ftp.SetFTPDirectory("/tienda/");
    p.ftp.FTPUploadFile(local, "b.php");

    const QList<QStringList> esperada{{"USER tolmo 331", "PASS (hidden) 230", "PWD 257",
                                       "DELE a.php 550", "CWD /tienda/ 250", datos, "TYPE I 200",
                                       "STOR a.php 226", "DELE b.php 550", "CWD /tienda/ 250",
                                       datos, "STOR b.php 226", "QUIT 221"}};
    EXPECT_EQ(p.Conversacion(), esperada);
}

TEST_P(cFTP, BajarUnFicheroNoPreguntaAntesNada)
{
    p.remoto.Escribe("a", Bytes(3000));

    p.ftp.SimpleFTPGetFile(p.cliente.local.Ruta("a"), "a");

    const QList<QStringList> esperada{{"USER tolmo 331", "PASS (hidden) 230", "PWD 257", datos,
                                       "TYPE I 200", "RETR a 226", "QUIT 221"}};
    EXPECT_EQ(p.Conversacion(), esperada);
}

TEST_P(cFTP, CadaSesionNuevaEmpiezaDeNuevoEnLaCarpetaDelUsuario)
{
    p.remoto.CreaCarpeta("tienda");
    p.ftp.SetFTPDirectory("tienda");
    p.ftp.CloseConnection();

    ASSERT_TRUE(p.Abre());

    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/");
    EXPECT_EQ(p.Conversacion().size(), 2);
}

TEST_P(cFTP, AbrirSinCerrarTerminaLaSesionAnterior)
{
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.DeleteFTPFile("nada") || p.Error().startsWith("550 "));
    const QList<QStringList> sesiones = p.Conversacion();
    ASSERT_EQ(sesiones.size(), 2);
    EXPECT_EQ(sesiones[0].last(), "QUIT 221");
    EXPECT_TRUE(sesiones[1].contains("DELE nada 550"));
}

TEST_P(cFTP, LaTransferenciaEnAsciiSePideAlServidorYLosBytesVanComoEstan)
{
    p.ftp.SetTransferASCII();

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "uno\r\ndos\r\n"), "a.txt"));
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("b", "uno\r\ndos\r\n"), "b.txt"));
    p.ftp.SetTransferBinary();
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("c", "uno\r\ndos\r\n"), "c.txt"));

    // In ASCII the server writes line ends of its own kind; in binary it leaves them alone.
    EXPECT_EQ(p.remoto.Lee("a.txt"), "uno\ndos\n");
    EXPECT_EQ(p.remoto.Lee("b.txt"), "uno\ndos\n");
    EXPECT_EQ(p.remoto.Lee("c.txt"), "uno\r\ndos\r\n");
}

TEST_P(cFTP, TrasUnListadoLaSiguienteTransferenciaVuelveASerBinaria)
{
    p.remoto.Escribe("a.txt", "a");
    bool sinResultado = false;
    p.ftp.GetDirectoryListing("", sinResultado);

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("c", "uno\r\ndos\r\n"), "c.txt"));

    EXPECT_EQ(p.remoto.Lee("c.txt"), "uno\r\ndos\r\n");
}

TEST_P(cFTP, ElModoCambiadoNoCuentaHastaLaSesionSiguiente)
{
    const QString otros = GetParam() == Modo::Activo ? "PASV 227" : "PORT 127,0,0,1 200";
    if (GetParam() == Modo::Activo)
        p.ftp.SetModePassive();
    else
        p.ftp.SetModeActive();
    const QString local = p.cliente.Local("a", "a");

    p.ftp.FTPUploadFile(local, "a");
    p.ftp.CloseConnection();
    p.Abre();
    p.ftp.FTPUploadFile(local, "a");

    const QList<QStringList> sesiones = p.Conversacion();
    ASSERT_EQ(sesiones.size(), 2);
    EXPECT_TRUE(sesiones[0].contains(datos));
    EXPECT_FALSE(sesiones[0].contains(otros));
    EXPECT_TRUE(sesiones[1].contains(otros));
    EXPECT_FALSE(sesiones[1].contains(datos));
}

TEST_P(cFTP, ConLosNombresConAcentosVanEnUtf8SiElServidorLoOfrece)
{
    EXPECT_TRUE(p.ftp.CreateFTPDirectory("niño"));
    EXPECT_TRUE(p.ftp.SetFTPDirectory("niño"));
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "ñandú €.jpg"));

    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/niño");
    EXPECT_TRUE(std::filesystem::exists(p.remoto.Ruta().toStdString() +
                                        "/ni\xC3\xB1o/\xC3\xB1"
                                        "and\xC3\xBA \xE2\x82\xAC.jpg"));
    // The server is asked what it offers once, and not before a name needs it.
    const QStringList sesion = p.Conversacion().value(0);
    EXPECT_EQ(sesion.filter("FEAT").size(), 1);
    EXPECT_EQ(sesion.value(3), "FEAT 211");
}

TEST_P(cFTP, UnFinDeLineaEnUnNombreNoLlegaAlServidor)
{
    p.remoto.Escribe("b", "b");

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a\r\nDELE b"));

    EXPECT_EQ(p.Error(), "DeleteFTPFile error code: 87 Message: The parameter is incorrect");
    EXPECT_TRUE(p.remoto.Existe("b"));
}

TEST_P(cFTP, LosSignosRarosDeUnNombreLleganComoSon)
{
    const QString raro = "a#b?c%20d;type=a&e=[1]'\"ü.txt";

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), raro));
    EXPECT_TRUE(p.remoto.Existe(raro));
    EXPECT_TRUE(p.ftp.DeleteFTPFile(raro));

    EXPECT_FALSE(p.remoto.Existe(raro));
}

} // namespace
