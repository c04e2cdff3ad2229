#include "apoyo/servidor_guionizado.h"
#include "site/DescargaFicheroWeb.h"
#include "site/cliente_ftp.h"
#include <QElapsedTimer>

using namespace tolmo;

namespace {

/// Reads a request: its first line is the result, its header lines go to `cabeceras`.
QByteArray Peticion(Charla& charla, QByteArrayList* cabeceras = nullptr)
{
    QByteArray primera = charla.Linea();
    for (QByteArray linea = charla.Linea(); !linea.isEmpty(); linea = charla.Linea())
        if (cabeceras != nullptr)
            *cabeceras << linea;
    return primera;
}

QByteArray Respuesta(const QByteArray& estado, const QByteArray& cuerpo,
                     const QByteArray& cabecera = {})
{
    return "HTTP/1.1 " + estado + "\r\nContent-Length: " + QByteArray::number(cuerpo.size()) +
           "\r\n" + cabecera + "\r\n" + cuerpo;
}

QString Url(const ServidorGuionizado& servidor, const QString& resto = "ejecuta.php")
{
    return QStringLiteral("http://127.0.0.1:%1/").arg(servidor.Puerto()) + resto;
}

/// A server that gives the same answer to everybody.
struct ServidorFijo {
    QByteArray respuesta;
    ServidorGuionizado servidor{[this](Charla& charla) {
        if (!Peticion(charla).isEmpty())
            charla.Escribe(respuesta);
    }};
};

class RecuperaPagina : public testing::Test {
  protected:
    /// A proxy of the machine is not for loopback.
    void SetUp() override { qputenv("no_proxy", "127.0.0.1"); }
    CarpetaDePrueba carpeta{};
};

using DescargaFichero = RecuperaPagina;

TEST_F(RecuperaPagina, DaElCuerpoLeidoComoWindows1252)
{
    ServidorFijo fijo{Respuesta("200 OK", "Espa\xF1"
                                          "a, 3 \x80\r\n<br>")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), "España, 3 €\r\n<br>");
}

TEST_F(RecuperaPagina, PidePorGetYSinNadaGuardado)
{
    QByteArray peticion;
    QByteArrayList cabeceras;
    ServidorGuionizado servidor([&](Charla& charla) {
        peticion = Peticion(charla, &cabeceras);
        charla.Escribe(Respuesta("200 OK", "bien"));
    });

    EXPECT_EQ(site::RecuperaPagina(
                  Url(servidor, "dimensiona.php?fichero=imgart.txt&sufijofoto=_default")),
              "bien");

    EXPECT_EQ(peticion, "GET /dimensiona.php?fichero=imgart.txt&sufijofoto=_default HTTP/1.1");
    EXPECT_TRUE(cabeceras.contains("Cache-Control: no-cache"));
    EXPECT_TRUE(cabeceras.contains("Pragma: no-cache"));
}

TEST_F(RecuperaPagina, CadaPeticionLlegaAlServidorPorUnaConexionNueva)
{
    ServidorGuionizado servidor([](Charla& charla) {
        Peticion(charla);
        charla.Escribe(Respuesta("200 OK", QByteArray::number(charla.Numero()),
                                 "Cache-Control: max-age=3600\r\n"));
        charla.Calla();
    });

    EXPECT_EQ(site::RecuperaPagina(Url(servidor)), "1");
    EXPECT_EQ(site::RecuperaPagina(Url(servidor)), "2");
}

class Estado : public testing::TestWithParam<const char*> {};

TEST_P(Estado, QueNoEs200EsTextoVacio)
{
    qputenv("no_proxy", "127.0.0.1");
    ServidorFijo fijo{Respuesta(GetParam(), "un cuerpo")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), "");
    EXPECT_EQ(fijo.servidor.Conexiones(), 1);
}

INSTANTIATE_TEST_SUITE_P(Malos, Estado,
                         testing::Values("201 Created", "206 Partial Content", "302 Found",
                                         "403 Forbidden", "404 Not Found",
                                         "500 Internal Server Error", "503 Unavailable"));

TEST_F(RecuperaPagina, SigueLasRedirecciones)
{
    ServidorGuionizado servidor([](Charla& charla) {
        if (Peticion(charla).startsWith("GET /ejecuta.php "))
            charla.Escribe(Respuesta("301 Moved", "ya no", "Location: /otra.php?a=1\r\n"));
        else
            charla.Escribe(Respuesta("200 OK", "aqui"));
    });

    EXPECT_EQ(site::RecuperaPagina(Url(servidor)), "aqui");

    EXPECT_TRUE(servidor.Lineas().contains("GET /otra.php?a=1 HTTP/1.1"));
}

TEST_F(RecuperaPagina, UnaRedireccionAUnFicheroLocalNoSeSigue)
{
    carpeta.Escribe("secreto", "secreto");
    ServidorFijo fijo{Respuesta("302 Found", "",
                                "Location: file://" + carpeta.Ruta("secreto").toUtf8() + "\r\n")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), "");
}

TEST_F(RecuperaPagina, UnaRuedaDeRedireccionesAcabaEnNada)
{
    ServidorFijo fijo{Respuesta("302 Found", "", "Location: /ejecuta.php\r\n")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), "");
}

TEST_F(RecuperaPagina, UnaRespuestaVaciaEsTextoVacio)
{
    ServidorFijo fijo{Respuesta("200 OK", "")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), "");
}

TEST_F(RecuperaPagina, UnaDireccionVaciaNoPideNada)
{
    EXPECT_EQ(site::RecuperaPagina(""), "");
    EXPECT_FALSE(site::DescargaFichero("", carpeta.Ruta("a")));
    EXPECT_FALSE(carpeta.Existe("a"));
}

class Direccion : public testing::TestWithParam<const char*> {};

TEST_P(Direccion, QueNoEsDeLaWebEsTextoVacio)
{
    EXPECT_EQ(site::RecuperaPagina(GetParam()), "");
}

INSTANTIATE_TEST_SUITE_P(Malas, Direccion,
                         testing::Values("/ejecuta.php", "file:///etc/hostname", "http://",
                                         "http://no-existe.invalid/a.php"));

TEST_F(RecuperaPagina, BlancosYAcentosDeLaDireccionViajanCodificados)
{
    ServidorFijo fijo{Respuesta("200 OK", "bien")};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor, "a b.php?c=ñ&d=%2F[1]")), "bien");

    EXPECT_EQ(fijo.servidor.Lineas().value(0), "GET /a%20b.php?c=%C3%B1&d=%2F[1] HTTP/1.1");
}

TEST_F(RecuperaPagina, SinNadieAlOtroLadoEsTextoVacio)
{
    EXPECT_EQ(site::RecuperaPagina(QStringLiteral("http://127.0.0.1:%1/").arg(PuertoLibre())), "");
}

TEST_F(RecuperaPagina, QuienNoContestaNoLaDetieneMasDeLaEspera)
{
    ServidorGuionizado servidor([](Charla& charla) { charla.Calla(); });
    QElapsedTimer reloj;
    reloj.start();

    EXPECT_EQ(site::RecuperaPagina(Url(servidor), EsperasCortas()), "");

    EXPECT_GE(reloj.elapsed(), 700);
    EXPECT_LT(reloj.elapsed(), 5000);
}

TEST_F(RecuperaPagina, QuienContestaACuentagotasTampoco)
{
    ServidorGuionizado servidor([](Charla& charla) {
        Peticion(charla);
        charla.Escribe("HTTP/1.1 200 OK\r\n\r\n");
        while (charla.Hilo().Escribe("gota "))
            if (charla.Hilo().HayAlgo(50))
                return;
    });
    QElapsedTimer reloj;
    reloj.start();

    EXPECT_EQ(site::RecuperaPagina(Url(servidor), EsperasCortas()), "");

    EXPECT_LT(reloj.elapsed(), 5000);
}

TEST_F(RecuperaPagina, UnaRespuestaLentaDentroDeLaEsperaLlegaEntera)
{
    ServidorGuionizado servidor([](Charla& charla) {
        Peticion(charla);
        charla.Escribe("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhola ");
        charla.Hilo().HayAlgo(300);
        charla.Escribe("mundo");
    });

    EXPECT_EQ(site::RecuperaPagina(Url(servidor), EsperasCortas()), "hola mundo");
}

TEST_F(RecuperaPagina, UnaRespuestaCortadaAMediasEsTextoVacio)
{
    ServidorGuionizado servidor([](Charla& charla) {
        Peticion(charla);
        charla.Escribe("HTTP/1.1 200 OK\r\nContent-Length: 10\r\n\r\nhola ");
    });

    EXPECT_EQ(site::RecuperaPagina(Url(servidor)), "");
}

TEST_F(RecuperaPagina, UnCierreSinDecirNadaEsTextoVacio)
{
    ServidorGuionizado servidor([](Charla& charla) {
        Peticion(charla);
        charla.Corta();
    });

    EXPECT_EQ(site::RecuperaPagina(Url(servidor)), "");
}

TEST_F(RecuperaPagina, UnaPaginaGrandeLlegaEntera)
{
    const QByteArray cuerpo = QByteArray("Error al ejecutar consulta:<br>\r\n").repeated(40000);
    ServidorFijo fijo{Respuesta("200 OK", cuerpo)};

    EXPECT_EQ(site::RecuperaPagina(Url(fijo.servidor)), QString::fromLatin1(cuerpo));
}

TEST_F(DescargaFichero, GuardaElCuerpoByteAByteEncimaDelQueHubiera)
{
    ServidorFijo fijo{Respuesta("200 OK", Bytes(3000))};
    carpeta.Escribe("a", Bytes(9000));

    EXPECT_TRUE(site::DescargaFichero(Url(fijo.servidor), carpeta.Ruta("a")));

    EXPECT_EQ(carpeta.Lee("a"), Bytes(3000));
}

TEST_F(DescargaFichero, SiFallaElFicheroLocalQuedaComoEstaba)
{
    ServidorFijo fijo{Respuesta("404 Not Found", "no")};
    carpeta.Escribe("a", "lo de antes");

    EXPECT_FALSE(site::DescargaFichero(Url(fijo.servidor), carpeta.Ruta("a")));
    EXPECT_FALSE(site::DescargaFichero(Url(fijo.servidor), carpeta.Ruta("b")));

    EXPECT_EQ(carpeta.Lee("a"), "lo de antes");
    EXPECT_FALSE(carpeta.Existe("b"));
}

TEST_F(DescargaFichero, UnDestinoImposibleEsFalso)
{
    ServidorFijo fijo{Respuesta("200 OK", "a")};

    EXPECT_FALSE(site::DescargaFichero(Url(fijo.servidor), carpeta.Ruta("nada/a")));
}

} // namespace
