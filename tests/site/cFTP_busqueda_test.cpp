#include "data/valores.h"
#include "site/cliente_ftp.h"
#include <QDateTime>
#include <filesystem>

using namespace tolmo;

// Sizes, listings and dates, on a real server.

namespace {

/// A server that keeps its listings' clock in GMT, like the file's time given here.
void Fecha(const CarpetaDePrueba& carpeta, const QString& nombre, const QDateTime& escritura)
{
    QFile fichero(carpeta.Ruta(nombre));
    ASSERT_TRUE(fichero.open(QIODevice::ReadWrite));
    ASSERT_TRUE(fichero.setFileTime(escritura, QFileDevice::FileModificationTime));
}

TEST(GetFTPFileSize, DaLosBytesDelFichero)
{
    ServidorYCliente p;
    p.remoto.Escribe("img/a.jpg", Bytes(4711));
    p.Abre();

    EXPECT_EQ(p.ftp.GetFTPFileSize("img/a.jpg"), 4711);
    p.ftp.SetFTPDirectory("img");
    EXPECT_EQ(p.ftp.GetFTPFileSize("a.jpg"), 4711);
    EXPECT_EQ(p.Error(), "");
}

TEST(GetFTPFileSize, LosBlancosDelNombreSeBuscanComoInterrogaciones)
{
    ServidorYCliente p;
    p.remoto.Escribe("foto grande 2.jpg", Bytes(300));
    p.Abre();

    EXPECT_EQ(p.ftp.GetFTPFileSize("foto grande 2.jpg"), 300);

    EXPECT_TRUE(p.Conversacion().value(0).contains("LIST foto?grande?2.jpg 226"));
}

TEST(GetFTPFileSize, DeUnFicheroDeMasDeDosGigasSoloLos32BitsBajos)
{
    ServidorYCliente p;
    p.remoto.Escribe("enorme", "");
    std::filesystem::resize_file(p.remoto.Ruta("enorme").toStdString(), 3000000000U);
    p.Abre();

    EXPECT_EQ(p.ftp.GetFTPFileSize("enorme"), 3000000000LL - 4294967296LL);
}

TEST(GetFTPFileSize, SinNingunoQueCumplaElComodinEsMenosUno)
{
    ServidorYCliente p;
    p.remoto.Escribe("otra.jpg", "a");
    p.Abre();

    EXPECT_EQ(p.ftp.GetFTPFileSize("foto grande.jpg"), -1);

    EXPECT_EQ(p.Error(), "");
}

TEST(GetFTPFileSize, UnaNegativaDelServidorEsMenosDosConSuTexto)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_EQ(p.ftp.GetFTPFileSize("nada.jpg"), -2);

    EXPECT_EQ(p.Error(), "450 nada.jpg: No such file or directory");
}

TEST(GetDirectoryListing, DaFicherosYCarpetasConSusDatos)
{
    ServidorYCliente p;
    p.remoto.Escribe("a b.txt", Bytes(300));
    p.remoto.CreaCarpeta("img");
    Fecha(p.remoto, "a b.txt", QDateTime(QDate(2020, 2, 29), QTime(12, 0), Qt::UTC));
    p.Abre();
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing("", sinResultado);

    ASSERT_NE(lista, nullptr);
    EXPECT_FALSE(sinResultado);
    ASSERT_EQ(lista->Count(), 2);
    const site::cDirItem& fichero = lista->Item(1);
    EXPECT_EQ(fichero.Filename, "a b.txt");
    EXPECT_EQ(fichero.FileSize, 300);
    EXPECT_TRUE(fichero.Normal);
    EXPECT_FALSE(fichero.Directory);
    EXPECT_EQ(fichero.LastWriteTime, data::SinZona(QDate(2020, 2, 29)));
    EXPECT_FALSE(fichero.CreationTime.isValid());
    EXPECT_EQ(lista->Item(2).Filename, "img");
    EXPECT_TRUE(lista->Item(2).Directory);
    EXPECT_EQ(p.ftp.Directory(), lista);
}

TEST(GetDirectoryListing, UnaHoraDeEstosMesesSeLeeComoElServidorLaMuestra)
{
    ServidorYCliente p;
    p.remoto.Escribe("a", "a");
    const QDateTime ayer = QDateTime::currentDateTimeUtc().addDays(-1);
    Fecha(p.remoto, "a", ayer);
    p.Abre();
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing("", sinResultado);

    ASSERT_NE(lista, nullptr);
    EXPECT_EQ(lista->Item(1).LastWriteTime.toString("yyyy-MM-dd HH:mm"),
              ayer.toString("yyyy-MM-dd HH:mm"));
}

TEST(GetDirectoryListing, ElFiltroConComodinesElige)
{
    ServidorYCliente p;
    for (const char* nombre : {"71.jpg", "71-small.jpg", "72.jpg", "71.txt"})
        p.remoto.Escribe(nombre, "a");
    p.remoto.Escribe("71carpeta/71.jpg", "a");
    p.Abre();
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing("71*.jpg", sinResultado);

    ASSERT_NE(lista, nullptr);
    QStringList nombres;
    for (const site::cDirItem& entrada : *lista)
        nombres << entrada.Filename;
    nombres.sort();
    EXPECT_EQ(nombres, QStringList({"71-small.jpg", "71.jpg"}));
}

TEST(GetDirectoryListing, ElNombreDeUnaCarpetaEsSuContenido)
{
    ServidorYCliente p;
    p.remoto.Escribe("img/p/1.jpg", "a");
    p.Abre();
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing("img/p", sinResultado);

    ASSERT_NE(lista, nullptr);
    ASSERT_EQ(lista->Count(), 1);
    EXPECT_EQ(lista->Item(1).Filename, "1.jpg");
}

class ComodinDeTodo : public testing::TestWithParam<const char*> {};

TEST_P(ComodinDeTodo, EsLaCarpetaConSusCarpetas)
{
    ServidorYCliente p;
    p.remoto.Escribe("img/p/1.jpg", "a");
    p.remoto.Escribe("img/LEEME", "a");
    p.Abre();
    bool sinResultado = true;

    const auto lista = p.ftp.GetDirectoryListing(GetParam(), sinResultado);

    ASSERT_NE(lista, nullptr);
    ASSERT_EQ(lista->Count(), 2);
    EXPECT_EQ(lista->Item(1).Filename, "LEEME");
    EXPECT_EQ(lista->Item(2).Filename, "p");
}

INSTANTIATE_TEST_SUITE_P(Formas, ComodinDeTodo, testing::Values("img/*", "img/*.*", "img/", "img"));

TEST(GetDirectoryListing, SinNadaQueMostrarNoHayListaYSeDice)
{
    ServidorYCliente p;
    p.remoto.Escribe("a.txt", "a");
    p.remoto.CreaCarpeta("vacia");
    p.Abre();
    for (const char* filtro : {"*.zip", "vacia"}) {
        bool sinResultado = false;

        EXPECT_EQ(p.ftp.GetDirectoryListing(filtro, sinResultado), nullptr) << filtro;

        EXPECT_TRUE(sinResultado) << filtro;
        EXPECT_EQ(p.Error(), "") << filtro;
    }
}

TEST(GetDirectoryListing, UnaNegativaDelServidorNoEsFaltaDeResultados)
{
    ServidorYCliente p;
    p.remoto.Escribe("a", "a");
    p.Abre();
    bool sinResultado = false;
    p.ftp.GetDirectoryListing("", sinResultado);
    sinResultado = true;

    EXPECT_EQ(p.ftp.GetDirectoryListing("nada", sinResultado), nullptr);

    EXPECT_FALSE(sinResultado);
    EXPECT_EQ(p.Error(), "450 nada: No such file or directory");
    // The old list was dropped before the server was asked.
    EXPECT_EQ(p.ftp.Directory()->Count(), 0);
}

TEST(Directory, AntesDelPrimerListadoEsUnaListaVacia)
{
    site::cFTP ftp;

    ASSERT_NE(ftp.Directory(), nullptr);
    EXPECT_EQ(ftp.Directory()->Count(), 0);
    EXPECT_EQ(ftp.Directory(), ftp.Directory());
}

TEST(BuscaFichero, DaLaFechaDeEscritura)
{
    ServidorYCliente p;
    p.remoto.Escribe("a.jpg", "a");
    Fecha(p.remoto, "a.jpg", QDateTime(QDate(2020, 2, 29), QTime(12, 0), Qt::UTC));
    p.Abre();

    EXPECT_EQ(p.ftp.BuscaFichero("a.jpg"), data::SinZona(QDate(2020, 2, 29)));
}

TEST(BuscaFichero, LoQueNoSeEncuentraNoTieneFechaNiTextoDeError)
{
    ServidorYCliente p;
    p.Abre();

    EXPECT_FALSE(p.ftp.BuscaFichero("nada.jpg").isValid());

    EXPECT_EQ(p.Error(), "");
}

} // namespace
