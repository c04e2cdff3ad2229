#include "site/cliente_ftp.h"
#include <filesystem>

using namespace tolmo;

// The transfers in blocks of 255 bytes, on a real server.

namespace {

using Avances = std::vector<std::pair<int, int>>;

struct CasoTamano {
    const char* regla;
    int tamano;
    Avances avances;
    int bloques;
};

void PrintTo(const CasoTamano& caso, std::ostream* salida)
{
    *salida << caso.tamano;
}

class FTPUploadFile : public testing::TestWithParam<CasoTamano> {};

TEST_P(FTPUploadFile, MandaElFicheroYAvisaTrasCadaBloqueYAlFinal)
{
    ServidorYCliente p;
    ASSERT_TRUE(p.Abre());
    const QByteArray contenido = Bytes(GetParam().tamano);

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", contenido), "b"));

    EXPECT_EQ(p.remoto.Lee("b"), contenido);
    EXPECT_TRUE(p.remoto.Existe("b"));
    EXPECT_EQ(p.cliente.avances, GetParam().avances);
    EXPECT_EQ(p.cliente.turnos, GetParam().bloques);
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_EQ(p.Error(), "");
}

const CasoTamano Tamanos[] = {
    {"VacioAvisaUnaVez", 0, {{0, 0}}, 0},
    {"MenosDeUnBloque", 254, {{254, 254}}, 0},
    {"UnBloqueJusto", 255, {{255, 255}, {255, 255}}, 1},
    {"UnBloqueYUnByte", 256, {{255, 256}, {256, 256}}, 1},
    {"DosBloquesJustos", 510, {{255, 510}, {510, 510}, {510, 510}}, 2},
    {"DosBloquesYResto", 600, {{255, 600}, {510, 600}, {600, 600}}, 2},
};

INSTANTIATE_TEST_SUITE_P(Tamanos, FTPUploadFile, testing::ValuesIn(Tamanos),
                         [](const auto& caso) { return std::string(caso.param.regla); });

TEST(FTPUploadFile, LaVentanaTieneSuTurnoAntesDeCadaAviso)
{
    ServidorYCliente p;
    p.Abre();
    QString pasos;
    p.ftp.CedeEventos = [&] { pasos += "turno "; };
    p.ftp.FileTransferProgress = [&](qint32 hechos, qint32) {
        pasos += QString::number(hechos) + ' ';
    };

    p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(600)), "b");

    EXPECT_EQ(pasos, "turno 255 turno 510 600 ");
}

TEST(FTPUploadFile, SinNadieQueEscucheTambienSube)
{
    ServidorYCliente p;
    p.Abre();
    p.ftp.CedeEventos = nullptr;
    p.ftp.FileTransferProgress = nullptr;

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(600)), "b"));

    EXPECT_EQ(p.remoto.Lee("b"), Bytes(600));
}

TEST(FTPUploadFile, EnModoPasivoSubeLoMismo)
{
    ServidorYCliente p;
    p.ftp.SetModePassive();
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(300000)), "b"));

    EXPECT_EQ(p.remoto.Lee("b"), Bytes(300000));
    EXPECT_EQ(p.cliente.avances.size(), 1176U + 1U); // 300,000 div 255, and the last one
}

TEST(FTPUploadFile, PisaElFicheroQueHubiera)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", Bytes(5000));
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "corto"), "b"));

    EXPECT_EQ(p.remoto.Lee("b"), "corto");
}

TEST(FTPUploadFile, QuitaLosBlancosDeLosExtremosDeLosNombres)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPUploadFile("  " + p.cliente.Local("a", "a") + " ", "  b c  "));

    EXPECT_TRUE(p.remoto.Existe("b c"));
}

TEST(FTPUploadFile, LaRutaLocalSeEscribeComoEnLosParametros)
{
    ServidorYCliente p;
    p.Abre();
    p.cliente.Local("Fotos/Silla.jpg", "silla");

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.local.Ruta() + "\\FOTOS\\silla.JPG", "b"));

    EXPECT_EQ(p.remoto.Lee("b"), "silla");
}

TEST(FTPUploadFile, UnFicheroQueNoCabeEnLos32BitsFallaConElRemotoAbierto)
{
    ServidorYCliente p;
    p.Abre();
    const QString enorme = p.cliente.Local("enorme", "");
    std::filesystem::resize_file(enorme.toStdString(), 2147483648U);

    EXPECT_FALSE(p.ftp.FTPUploadFile(enorme, "b"));

    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.cliente.avances.empty());
}

TEST(FTPUploadFile, CerrarLaSesionDesdeUnAvisoAcabaLaSubida)
{
    ServidorYCliente p;
    p.Abre();
    p.ftp.FileTransferProgress = [&](qint32, qint32) { p.ftp.CloseConnection(); };

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(600)), "b"));

    EXPECT_EQ(p.Error(), "InternetWriteFile error code: 6 Message: The handle is invalid");
}

TEST(FTPUploadFile, UnNombreVacioEsFalsoSinPreguntarANadie)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPUploadFile("  ", "b"));
    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "  "));

    EXPECT_EQ(p.Error(), "");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.Conversacion().value(0).filter("STOR").isEmpty());
}

TEST(FTPUploadFile, UnFicheroLocalQueFaltaSeDescubreConElRemotoYaAbierto)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", "lo de antes");
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.local.Ruta("nada"), "b"));

    EXPECT_EQ(p.Error(), "");
    EXPECT_TRUE(p.cliente.avances.empty());
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    EXPECT_EQ(p.remoto.Lee("b"), "");
}

TEST(FTPUploadFile, UnaSesionNuevaDespejaLaTransferenciaAbierta)
{
    ServidorYCliente p;
    p.remoto.CreaCarpeta("tienda");
    p.Abre();
    p.ftp.SetFTPDirectory("tienda");
    p.ftp.FTPUploadFile(p.cliente.local.Ruta("nada"), "b");
    ASSERT_FALSE(p.ftp.DeleteFTPFile("b"));

    p.ftp.CloseConnection();
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    ASSERT_TRUE(p.Abre());

    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/");
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "c"));
    EXPECT_EQ(p.remoto.Lee("c"), "a");
    // Between the transfer that stayed open and the new login nothing was said.
    const QList<QStringList> sesiones = p.Conversacion();
    ASSERT_EQ(sesiones.size(), 2);
    for (const QString& orden : sesiones[0].mid(sesiones[0].indexOf("TYPE I 200") + 1))
        EXPECT_TRUE(orden.startsWith("STOR b ")) << orden.toStdString();
    EXPECT_EQ(sesiones[1].value(0), "USER tolmo 331");
}

TEST(FTPUploadFile, AbrirSinCerrarAntesTambienDespejaLaTransferencia)
{
    ServidorYCliente p;
    p.Abre();
    p.ftp.FTPUploadFile(p.cliente.local.Ruta("nada"), "b");

    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "c"));
}

TEST(FTPUploadFile, UnaCarpetaRemotaQueFaltaSeSabeAlAbrirYLaSesionSigue)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "nada/b"));

    EXPECT_EQ(p.Error(), "550 nada/b: No such file or directory");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "b"));
    EXPECT_EQ(p.Conversacion().size(), 1);
}

TEST(FTPUploadFile, UnaSubidaQueElServidorNiegaNoEstorbaALaSiguiente)
{
    ServidorYCliente p;
    p.CreaCarpetaVedada("vedada");
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "vedada/b"));

    EXPECT_EQ(p.Error(), "550 vedada/b: Operation not permitted");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "b"));
    EXPECT_FALSE(p.remoto.Existe("vedada/b"));
}

TEST(FTPUploadFile, UnaConexionCortadaAMediasEsFalsaYDejaLaTransferenciaAbierta)
{
    ServidorYCliente p;
    p.Abre();
    int avisos = 0;
    p.ftp.FileTransferProgress = [&](qint32, qint32) {
        if (++avisos == 10)
            p.servidor.CortaSesiones();
    };

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(1000000)), "b"));

    // Whether the end or the reset arrives first lies with the system.
    EXPECT_TRUE(
        p.Error() ==
            "InternetWriteFile error code: 12030 Message: The connection with the server was terminated abnormally" ||
        p.Error() ==
            "InternetWriteFile error code: 12031 Message: The connection with the server was reset")
        << p.Error().toStdString();
    EXPECT_LT(avisos, 1000000 / 255);
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    EXPECT_FALSE(p.ftp.DeleteFTPFile("b"));
    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12110 Message: There is already an FTP request in progress on this session");
}

TEST(FTPUploadFile, TrasUnCorteLaSesionNuevaSubeDeNuevo)
{
    ServidorYCliente p;
    p.Abre();
    bool cortada = false;
    p.ftp.FileTransferProgress = [&](qint32, qint32) {
        if (!std::exchange(cortada, true))
            p.servidor.CortaSesiones();
    };
    ASSERT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(100000)), "b"));

    p.ftp.CloseConnection();
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(100000)), "b"));
    EXPECT_EQ(p.remoto.Lee("b"), Bytes(100000));
}

TEST(SesionPerdida, UnaSesionQueElServidorCortoNoVuelvePorSiSola)
{
    ServidorYCliente p;
    p.Abre();
    p.servidor.CortaSesiones();

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_TRUE(p.Error().startsWith("DeleteFTPFile error code: 1203")) << p.Error().toStdString();
    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "a"));
    EXPECT_EQ(
        p.Error(),
        "FtpOpenFile:PutFile error code: 12030 Message: The connection with the server was terminated abnormally");

    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_EQ(p.Conversacion().size(), 1);
}

class FTPDownloadFile : public testing::TestWithParam<CasoTamano> {};

TEST_P(FTPDownloadFile, TraeElFicheroYAvisaTrasCadaBloqueYAlFinal)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", Bytes(GetParam().tamano));
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "b"));

    EXPECT_EQ(p.cliente.local.Lee("a"), Bytes(GetParam().tamano));
    EXPECT_EQ(p.cliente.avances, GetParam().avances);
    EXPECT_EQ(p.cliente.turnos, GetParam().bloques);
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
}

INSTANTIATE_TEST_SUITE_P(Tamanos, FTPDownloadFile,
                         testing::ValuesIn(std::begin(Tamanos) + 1, std::end(Tamanos)),
                         [](const auto& caso) { return std::string(caso.param.regla); });

TEST(FTPDownloadFile, UnoGrandeEnModoPasivo)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", Bytes(2000000));
    p.ftp.SetModePassive();
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "b"));

    EXPECT_EQ(p.cliente.local.Lee("a"), Bytes(2000000));
    EXPECT_EQ(p.ftp.GetFTPDirectory(), "/");
    EXPECT_EQ(p.Conversacion().size(), 1);
}

TEST(FTPDownloadFile, UnFicheroVacioOQueFaltaEsFalsoYNoSeAbreNada)
{
    ServidorYCliente p;
    p.remoto.Escribe("vacio", "");
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "vacio"));
    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "nada"));

    EXPECT_FALSE(p.cliente.local.Existe("a"));
    EXPECT_TRUE(p.Conversacion().value(0).filter("RETR").isEmpty());
}

TEST(FTPDownloadFile, UnNombreVacioEsFalsoSinPreguntarANadie)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPDownloadFile(" ", "b"));
    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), " "));

    EXPECT_TRUE(p.Conversacion().value(0).filter("LIST").isEmpty());
}

TEST(FTPDownloadFile, UnDestinoLocalImposibleDejaLaTransferenciaAbierta)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", "b");
    p.Abre();

    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("nada/a"), "b"));

    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
}

TEST(FTPDownloadFile, EscribeEncimaDesdeElPrimerByteSinRecortar)
{
    ServidorYCliente p;
    p.remoto.Escribe("b", "NUEVO");
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPDownloadFile(p.cliente.Local("a", "viejo y largo"), "b"));

    EXPECT_EQ(p.cliente.local.Lee("a"), "NUEVO y largo");
}

TEST(FTPDownloadFile, UnNombreConBlancosSeEncuentraYBaja)
{
    ServidorYCliente p;
    p.remoto.Escribe("foto grande.jpg", Bytes(300));
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "foto grande.jpg"));

    EXPECT_EQ(p.cliente.local.Lee("a"), Bytes(300));
}

TEST(Canal, LaSubidaSiguienteDespejaElCanalQueOtraDejoAbierto)
{
    ServidorYCliente p;
    p.Abre();
    p.ftp.FileTransferProgress = [&](qint32, qint32) { p.servidor.CortaSesiones(); };
    ASSERT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(1000000)), "b"));
    p.ftp.FileTransferProgress = nullptr;
    p.ftp.CloseConnection();
    p.Abre();

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("otro", "otro"), "c"));

    EXPECT_EQ(p.remoto.Lee("c"), "otro");
}

} // namespace
