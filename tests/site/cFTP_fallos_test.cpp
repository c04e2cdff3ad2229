#include "site/con_guion.h"
#include <atomic>

using namespace tolmo;

// Faults of a server at the login and after a command: played by a script.

namespace {

// ---- the login

TEST(Entrada, UnServidorQueNoSaludaAgotaLaEspera)
{
    ConGuion p([](Charla& charla) { charla.Calla(); });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), "InternetConnect error code: 12002 Message: The operation timed out");
    EXPECT_GE(p.reloj.elapsed(), 700);
    EXPECT_TRUE(p.AcaboPronto());
}

TEST(Entrada, UnServidorQueCallaTrasElUsuarioAgotaLaEspera)
{
    ConGuion p([](Charla& charla) {
        charla.Di("220 listo");
        charla.Linea();
        charla.Calla();
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), "InternetConnect error code: 12002 Message: The operation timed out");
    EXPECT_TRUE(p.AcaboPronto());
}

TEST(Entrada, QuienContestaDespacioPeroContestaNoAgotaLaEspera)
{
    // Every pause is shorter than the wait, all of them together are longer.
    ConGuion p([](Charla& charla) {
        for (const char* respuesta : {"220 listo", "331 clave", "230 dentro", "257 \"/\""}) {
            std::this_thread::sleep_for(std::chrono::milliseconds(400));
            charla.Di(respuesta);
            charla.Linea();
        }
    });

    EXPECT_TRUE(p.Abre()) << p.Error().toStdString();

    EXPECT_GE(p.reloj.elapsed(), 1600);
}

TEST(Entrada, UnServidorFueraDeServicioDaSuPropioTexto)
{
    ConGuion p([](Charla& charla) { charla.Di("421 Demasiadas conexiones, espere"); });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), "421 Demasiadas conexiones, espere");
}

TEST(Entrada, UnaNegativaDeVariasLineasLlegaEntera)
{
    ConGuion p([](Charla& charla) {
        charla.Di("421-Cerrado por obras");
        charla.Di(" hasta el lunes");
        charla.Di("421 Gracias");
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), "421-Cerrado por obras\r\n hasta el lunes\r\n421 Gracias");
}

TEST(Entrada, DeUnaNegativaInterminableQuedanLosPrimeros2048Caracteres)
{
    const QByteArray texto = "421 " + QByteArray(3000, 'x');
    ConGuion p([&](Charla& charla) { charla.Di(texto); });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), QString::fromLatin1(texto.left(2048)));
}

TEST(Entrada, TrasLaClaveUnaNegativaQueNoEsDeAccesoDaSuTexto)
{
    ConGuion p([](Charla& charla) {
        charla.Di("220 listo");
        charla.Linea();
        charla.Di("331 clave");
        charla.Linea();
        charla.Di("421 Demasiados usuarios");
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(), "421 Demasiados usuarios");
}

TEST(Entrada, UnUsuarioRechazadoSinPedirClaveEsClaveIncorrecta)
{
    ConGuion p([](Charla& charla) {
        charla.Di("220 listo");
        charla.Linea();
        charla.Di("530 Fuera");
        charla.Calla();
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(p.Error(),
              "InternetConnect error code: 12014 Message: The supplied password is incorrect");
}

TEST(Entrada, UnaConexionQueSeCierraSinHablarEsAbortada)
{
    ConGuion p([](Charla&) {});

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(
        p.Error(),
        "InternetConnect error code: 12030 Message: The connection with the server was terminated abnormally");
}

TEST(Entrada, UnaConexionCortadaDeGolpeEsReiniciada)
{
    ConGuion p([](Charla& charla) {
        charla.Di("220 listo");
        charla.Linea();
        charla.Corta();
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_EQ(
        p.Error(),
        "InternetConnect error code: 12031 Message: The connection with the server was reset");
}

TEST(Entrada, UnServidorQueNoEsDeFtpNoLaDetiene)
{
    ConGuion p([](Charla& charla) {
        charla.Di("HTTP/1.1 400 Bad Request");
        charla.Calla();
    });

    EXPECT_FALSE(p.Abre());

    EXPECT_TRUE(p.AcaboPronto());
}

TEST(Entrada, SinUsuarioEntraComoAnonimo)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Calla();
    });

    EXPECT_TRUE(p.ftp.OpenConnection("127.0.0.1", p.servidor.Puerto(), "", ""));

    EXPECT_EQ(p.servidor.Lineas().value(0), "USER anonymous");
}

TEST(Entrada, LosAcentosDeUsuarioYClaveVanEnWindows1252)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Calla();
    });

    EXPECT_TRUE(p.ftp.OpenConnection("127.0.0.1", p.servidor.Puerto(), "muñoz", "año €"));

    EXPECT_EQ(p.servidor.Lineas().value(0), "USER mu\xF1oz");
    EXPECT_EQ(p.servidor.Lineas().value(1), "PASS a\xF1o \x80");
}

TEST(Entrada, TrasUnFalloLasOperacionesNoTienenSesion)
{
    ConGuion p([](Charla& charla) { charla.Di("421 no"); });
    p.Abre();

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));

    EXPECT_EQ(p.Error(), "DeleteFTPFile error code: 6 Message: The handle is invalid");
    EXPECT_EQ(p.servidor.Conexiones(), 1);
}

// ---- a command

TEST(Orden, SinRespuestaAgotaLaEsperaYPierdeLaSesion)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(p.Error(), "DeleteFTPFile error code: 12002 Message: The operation timed out");
    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12030 Message: The connection with the server was terminated abnormally");

    p.ftp.CloseConnection();
    EXPECT_TRUE(p.AcaboPronto());
    EXPECT_EQ(p.servidor.Conexiones(), 1);
}

TEST(Orden, UnaConexionCortadaDeGolpeEsReiniciada)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Linea();
        charla.Corta();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));

    EXPECT_EQ(p.Error(),
              "DeleteFTPFile error code: 12031 Message: The connection with the server was reset");
}

TEST(Orden, UnaConexionCerradaEnVezDeRespuestaEsAbortada)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Linea();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));

    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12030 Message: The connection with the server was terminated abnormally");
}

TEST(Orden, ElServidorQueCierraTrasUnRatoSinOrdenesDiceElPorque)
{
    std::atomic<bool> abierta = false, cerrada = false;
    ConGuion p([&](Charla& charla) {
        charla.Recibe();
        while (!abierta)
            std::this_thread::yield();
        charla.Di("421 Demasiado tiempo sin hacer nada");
        charla.Cierra();
        cerrada = true;
    });
    abierta = p.Abre();
    ASSERT_TRUE(abierta);
    while (!cerrada)
        std::this_thread::yield();

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));

    EXPECT_EQ(p.Error(), "421 Demasiado tiempo sin hacer nada");
    EXPECT_EQ(p.servidor.Conexiones(), 1);
}

TEST(Orden, ElFinDeServicioComoRespuestaEsSuTextoYPierdeLaSesion)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Linea();
        charla.Di("421 Se acabó");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(p.Error(), "421 Se acabó");
    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12030 Message: The connection with the server was terminated abnormally");
}

TEST(CloseConnection, NoEsperaAUnServidorMuerto)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());
    p.reloj.start();

    p.ftp.CloseConnection();

    EXPECT_LT(p.reloj.elapsed(), 300);
}

} // namespace
