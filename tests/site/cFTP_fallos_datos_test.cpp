#include "data/valores.h"
#include "site/con_guion.h"
#include <atomic>

using namespace tolmo;

// Faults of a server in transfers and searches: played by a script.

namespace {

using Guion = std::function<void(Charla&)>;

/// Agrees to an upload and hands its data connection over.
Guion AlSubir(std::function<void(Charla&, Enchufe)> resto)
{
    return [resto = std::move(resto)](Charla& charla) {
        charla.Recibe();
        if (!charla.EsperaOrden("STOR "))
            return;
        charla.Di("150 adelante");
        resto(charla, charla.AbreDatos());
    };
}

void LeeTodo(const Enchufe& datos)
{
    while (!datos.Lee().isEmpty())
        ;
}

TEST(Subida, SinPermisoParaLaConexionDeDatosDaElTextoDelServidor)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.Linea();
        charla.Di("500 PORT no");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "a"));

    EXPECT_EQ(p.Error(), "500 PORT no");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.servidor.Lineas().value(3).startsWith("PORT 127,0,0,1,"));
}

TEST(Subida, SiLaConexionDeDatosNoLlegaAgotaLaEspera)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.EsperaOrden("STOR ");
        charla.Di("150 adelante");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "a"));

    EXPECT_EQ(p.Error(), "FtpOpenFile:PutFile error code: 12002 Message: The operation timed out");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.AcaboPronto());
}

TEST(Subida, SiElServidorNoPuedeAbrirLosDatosDaSuTexto)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.EsperaOrden("STOR ");
        charla.Di("150 adelante");
        charla.Di("425 No puedo abrir la conexion");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "a"));

    EXPECT_EQ(p.Error(), "425 No puedo abrir la conexion");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
}

TEST(Subida, EnModoPasivoUnPuertoDondeNadieEscuchaEsSinConexion)
{
    const int puerto = PuertoLibre();
    ConGuion p([puerto](Charla& charla) {
        charla.Recibe();
        charla.Linea();
        charla.Di("227 pasivo (127,0,0,1," + QByteArray::number(puerto / 256) + ',' +
                  QByteArray::number(puerto % 256) + ')');
        charla.Calla();
    });
    p.ftp.SetModePassive();
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", "a"), "a"));

    EXPECT_EQ(
        p.Error(),
        "FtpOpenFile:PutFile error code: 12029 Message: A connection with the server could not be established");
}

TEST(Subida, QuienDejaDeLeerAgotaLaEsperaYLaTransferenciaQuedaAbierta)
{
    ConGuion p(AlSubir([](Charla& charla, Enchufe datos) {
        datos.Lee(1000);
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(30000000)), "a"));

    EXPECT_EQ(p.Error(), "InternetWriteFile error code: 12002 Message: The operation timed out");
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.AcaboPronto());
    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12110 Message: There is already an FTP request in progress on this session");
}

TEST(Subida, LaEsperaAgotadaNoSeRepiteParaElAdios)
{
    ServidorGuionizado servidor(AlSubir([](Charla& charla, Enchufe datos) {
        datos.Lee(1000);
        charla.Calla();
    }));
    ClienteFtp cliente({.conexion = std::chrono::milliseconds(500),
                        .silencioFtp = std::chrono::milliseconds(2000)});
    ASSERT_TRUE(cliente.Abre(servidor.Puerto()));
    QElapsedTimer reloj;
    reloj.start();

    EXPECT_FALSE(cliente.ftp.FTPUploadFile(cliente.Local("a", Bytes(30000000)), "a"));
    cliente.ftp.CloseConnection();

    EXPECT_GE(reloj.elapsed(), 2000);
    EXPECT_LT(reloj.elapsed(), 3800);
}

TEST(Subida, QuienLeeDespacioPeroLeeNoAgotaLaEspera)
{
    // Every pause is shorter than the wait, all of them together are longer.
    QByteArray recibido;
    ConGuion p(AlSubir([&](Charla& charla, Enchufe datos) {
        for (int pausa = 0; pausa < 4; ++pausa) {
            std::this_thread::sleep_for(std::chrono::milliseconds(400));
            for (qsizetype leido = 0; leido < 3000000;) {
                const QByteArray trozo = datos.Lee();
                if (trozo.isEmpty())
                    break;
                leido += trozo.size();
                recibido += trozo;
            }
        }
        for (QByteArray trozo = datos.Lee(); !trozo.isEmpty(); trozo = datos.Lee())
            recibido += trozo;
        datos.Cierra();
        charla.Di("226 hecho");
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(12000000)), "a"));

    p.ftp.CloseConnection();
    EXPECT_EQ(recibido, Bytes(12000000));
}

TEST(Subida, QuienSeQuedaSinSitioCortaYDiceElPorque)
{
    ConGuion p(AlSubir([](Charla& charla, Enchufe datos) {
        datos.Lee(1000);
        charla.Di("552 Cuota superada");
        datos.Corta();
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(3000000)), "a"));

    EXPECT_EQ(p.Error(), "552 Cuota superada");
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
}

TEST(Subida, ElUltimoTrozoQueNoPasaTieneSuPropioNombre)
{
    std::atomic<bool> cortada = false;
    ConGuion p(AlSubir([&](Charla& charla, Enchufe datos) {
        datos.Lee(255);
        datos.Corta();
        cortada = true;
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());
    p.ftp.FileTransferProgress = [&](qint32, qint32) {
        while (!cortada)
            std::this_thread::yield();
    };

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(265)), "a"));

    EXPECT_EQ(
        p.Error(),
        "InternetWriteFile2 error code: 12031 Message: The connection with the server was reset");
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
}

TEST(Subida, UnaConexionDeDatosMedioCerradaPorElServidorSigueSirviendo)
{
    QByteArray recibido;
    ConGuion p(AlSubir([&](Charla& charla, Enchufe datos) {
        datos.AcabaEscritura();
        for (QByteArray trozo = datos.Lee(); !trozo.isEmpty(); trozo = datos.Lee())
            recibido += trozo;
        datos.Cierra();
        charla.Di("226 hecho");
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(100000)), "a"));

    p.ftp.CloseConnection();
    EXPECT_EQ(recibido, Bytes(100000));
}

TEST(Subida, LoQueElServidorDiceAlFinalNoCambiaElResultado)
{
    ConGuion p(AlSubir([](Charla& charla, Enchufe datos) {
        LeeTodo(datos);
        datos.Cierra();
        charla.Di("451 No se pudo guardar");
        if (charla.EsperaOrden("DELE "))
            charla.Di("250 borrado");
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(300)), "a"));

    EXPECT_EQ(p.Error(), "");
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_TRUE(p.ftp.DeleteFTPFile("a")) << p.Error().toStdString();
}

TEST(Subida, SiElServidorNoConfirmaNoSeEsperaPorEl)
{
    ConGuion p(AlSubir([](Charla& charla, Enchufe datos) {
        LeeTodo(datos);
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(300)), "a"));

    EXPECT_TRUE(p.AcaboPronto());
    EXPECT_FALSE(p.ftp.TransferenciaAbierta());
    EXPECT_FALSE(p.ftp.DeleteFTPFile("a"));
    EXPECT_EQ(
        p.Error(),
        "DeleteFTPFile error code: 12030 Message: The connection with the server was terminated abnormally");
}

TEST(Subida, LosAvisosDeUnaSubidaCortadaLleganHastaElUltimoBloqueBueno)
{
    std::atomic<bool> cortada = false;
    ConGuion p(AlSubir([&](Charla& charla, Enchufe datos) {
        for (qsizetype leido = 0; leido < 510; leido += datos.Lee(255).size())
            ;
        datos.Corta();
        cortada = true;
        charla.Calla();
    }));
    ASSERT_TRUE(p.Abre());
    std::vector<std::pair<int, int>> avances;
    p.ftp.FileTransferProgress = [&](qint32 hechos, qint32 total) {
        avances.emplace_back(hechos, total);
        while (hechos == 510 && !cortada)
            std::this_thread::yield();
    };

    EXPECT_FALSE(p.ftp.FTPUploadFile(p.cliente.Local("a", Bytes(1000)), "a"));

    EXPECT_EQ(avances, (std::vector<std::pair<int, int>>{{255, 1000}, {510, 1000}}));
}

TEST(Bajada, UnFicheroQueElServidorCortaAMediasEsFalsoConSuTexto)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        for (const QByteArray verbo : {"LIST", "RETR"}) {
            if (!charla.EsperaOrden(verbo))
                return;
            charla.Di("150 ahora");
            Enchufe datos = charla.AbreDatos();
            datos.Escribe(verbo == "LIST" ? "-rw-r--r-- 1 u g 600 Jan 2 2023 b\r\n" : Bytes(300));
            datos.Cierra();
            charla.Di(verbo == "LIST" ? "226 hecho" : "426 Transferencia cortada");
        }
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "b"));

    EXPECT_EQ(p.Error(), "426 Transferencia cortada");
    EXPECT_TRUE(p.ftp.TransferenciaAbierta());
    EXPECT_EQ(p.cliente.avances, (std::vector<std::pair<int, int>>{{255, 600}}));
    EXPECT_EQ(p.cliente.local.Lee("a"), Bytes(300).left(255));
}

TEST(Bajada, QuienDejaDeMandarAgotaLaEspera)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        for (const QByteArray verbo : {"LIST", "RETR"}) {
            if (!charla.EsperaOrden(verbo))
                return;
            charla.Di("150 ahora");
            Enchufe datos = charla.AbreDatos();
            datos.Escribe(verbo == "LIST" ? "-rw-r--r-- 1 u g 600 Jan 2 2023 b\r\n" : Bytes(510));
            if (verbo == "RETR")
                charla.Calla();
            datos.Cierra();
            charla.Di("226 hecho");
        }
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_FALSE(p.ftp.FTPDownloadFile(p.cliente.local.Ruta("a"), "b"));

    EXPECT_EQ(p.Error(), "InternetReadFile2 error code: 12002 Message: The operation timed out");
    EXPECT_TRUE(p.AcaboPronto());
}

// ---- searches

/// Answers each LIST from a table; a command that it lacks is refused.
Guion ConListados(std::vector<std::pair<QByteArray, QByteArray>> listados)
{
    return [listados = std::move(listados)](Charla& charla) {
        charla.Recibe();
        for (const auto& [orden, listado] : listados) {
            if (!charla.EsperaOrden(orden))
                return;
            if (listado.startsWith("5")) {
                charla.Di(listado);
                continue;
            }
            charla.Di("150 ahora");
            charla.AbreDatos().Escribe(listado);
            charla.Di("226 hecho");
        }
        charla.Calla();
    };
}

TEST(Busqueda, UnListadoVacioEsQueNoHayMasFicheros)
{
    ConGuion p(ConListados({{"LIST nada", ""}, {"LIST nada", ""}}));
    ASSERT_TRUE(p.Abre());
    bool sinResultado = false;

    EXPECT_EQ(p.ftp.GetFTPFileSize("nada"), -1);
    EXPECT_EQ(p.ftp.GetDirectoryListing("nada", sinResultado), nullptr);

    EXPECT_TRUE(sinResultado);
    EXPECT_EQ(p.Error(), "");
}

TEST(Busqueda, SiElServidorNoEntiendeDeComodinesEligeElCliente)
{
    ConGuion p(ConListados({{"LIST img/foto?2.jpg", "501 Eso no es un nombre"},
                            {"LIST img/", "-rw-r--r-- 1 u g 7 Jan 2 2023 foto.jpg\r\n"
                                          "-rw-r--r-- 1 u g 600 Jan 2 2023 foto 2.jpg\r\n"}}));
    ASSERT_TRUE(p.Abre());

    EXPECT_EQ(p.ftp.GetFTPFileSize("img/foto 2.jpg"), 600);
}

TEST(Busqueda, UnServidorDeWindowsTambienSeEntiende)
{
    ConGuion p(ConListados({{"LIST", "03-15-24  09:05AM  <DIR>  img\r\n"
                                     "03-15-24  01:05PM  1234 a.txt\r\n"}}));
    ASSERT_TRUE(p.Abre());
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing("", sinResultado);

    ASSERT_NE(lista, nullptr);
    ASSERT_EQ(lista->Count(), 2);
    EXPECT_TRUE(lista->Item(1).Directory);
    EXPECT_EQ(lista->Item(2).FileSize, 1234);
    EXPECT_EQ(lista->Item(2).LastWriteTime, data::SinZona(QDate(2024, 3, 15), QTime(13, 5)));
}

TEST(Busqueda, SinRespuestaEsUnFalloYNoUnaListaVacia)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        charla.EsperaOrden("LIST");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());
    bool sinResultado = true;

    EXPECT_EQ(p.ftp.GetDirectoryListing("", sinResultado), nullptr);

    EXPECT_FALSE(sinResultado);
    EXPECT_EQ(p.Error(), "FtpFindFirstFile error code: 12002 Message: The operation timed out");
}

// ---- names

TEST(Nombres, UnServidorSinListaDePrestacionesLosRecibeEnWindows1252)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        if (charla.EsperaOrden("FEAT"))
            charla.Di("500 No se que es eso");
        if (charla.EsperaOrden("DELE "))
            charla.Di("250 borrado");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.DeleteFTPFile("ñ€.txt"));

    EXPECT_EQ(p.servidor.Lineas().last(), "DELE \xF1\x80.txt");
}

TEST(Nombres, ConUtf8OfrecidoVanEnUtf8AunqueElInterruptorSeNiegue)
{
    ConGuion p([](Charla& charla) {
        charla.Recibe();
        if (charla.EsperaOrden("FEAT"))
            charla.Escribe("211-Prestaciones\r\n SIZE\r\n UTF8\r\n211 Fin\r\n");
        if (charla.EsperaOrden("OPTS UTF8 ON"))
            charla.Di("501 Ya lo esta");
        if (charla.EsperaOrden("DELE "))
            charla.Di("250 borrado");
        charla.Calla();
    });
    ASSERT_TRUE(p.Abre());

    EXPECT_TRUE(p.ftp.DeleteFTPFile("ñ.txt")) << p.Error().toStdString();

    EXPECT_EQ(p.servidor.Lineas().last(), "DELE \xC3\xB1.txt");
}

} // namespace
