#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/base_mdb.h"
#include "data/access/mdb/cabecera.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <QBuffer>
#include <gtest/gtest.h>
#include <memory>

using namespace tolmo::data::access::mdb;

namespace {

/// The start of a file: version byte, and what its covered part holds at some places.
std::vector<quint8> CabeceraCon(quint8 version,
                                std::initializer_list<std::pair<std::size_t, const char*>> claro)
{
    std::vector<quint8> bytes = DeHexa("00010000 5374616e64617264204a657420444200");
    bytes.resize(TamCabecera);
    bytes[0x14] = version;
    for (const auto& [posicion, hexa] : claro) {
        const std::vector<quint8> valor = DeHexa(hexa);
        std::copy(valor.begin(), valor.end(),
                  bytes.begin() + static_cast<std::ptrdiff_t>(posicion));
    }
    const std::size_t tapados = version == 0 ? 126 : 128;
    for (std::size_t i = 0; i < tapados; ++i)
        bytes[0x18 + i] ^= static_cast<quint8>(VeloDeCabecera()[static_cast<qsizetype>(i)]);
    return bytes;
}

// No password, of a file that was made on 28 May 2004.
constexpr const char* ContrasenaVacia =
    "f7940000f7940000f7940000f7940000f7940000f7940000f7940000f7940000f7940000f7940000";

std::vector<quint8> CabeceraDe2003()
{
    return CabeceraCon(1, {{0x3C, "e404"},
                           {0x42, ContrasenaVacia},
                           {0x6A, "aa210000"},
                           {0x6E, "09040000"},
                           {0x72, "59952fb3f79ee240"}});
}

Motivo MotivoDe(const std::vector<quint8>& bytes)
{
    try {
        LeeCabecera(Bytes(bytes));
    } catch (const ErrorMdb& error) {
        return error.motivo();
    }
    ADD_FAILURE() << "the header was taken";
    return Motivo::NoSeAbre;
}

Motivo MotivoAlAbrir(const QByteArray& fichero, const QString& contrasena = {})
{
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(fichero);
    bufer->open(QIODevice::ReadOnly);
    try {
        FicheroPaginas(std::move(bufer), "prueba.mdb", {.contrasena = contrasena});
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.lugar().fichero, "prueba.mdb");
        return error.motivo();
    }
    ADD_FAILURE() << "the file was opened";
    return Motivo::NoSeAbre;
}

TEST(Cabecera, SeLeeLaDeUnFicheroDe2003)
{
    const std::vector<quint8> bytes = CabeceraDe2003();

    const Cabecera cabecera = LeeCabecera(Bytes(bytes));

    EXPECT_EQ(cabecera.version, Version::Jet4);
    EXPECT_EQ(cabecera.paginaDeCodigos, 1252);
    EXPECT_EQ(cabecera.clave, 0U);
    EXPECT_EQ(cabecera.contrasena, "");
    EXPECT_EQ(cabecera.idioma, 0x0409);
    EXPECT_EQ(cabecera.versionOrden, 0);
    EXPECT_NEAR(cabecera.creacion, 38135.74, 0.01);
}

TEST(Cabecera, LaContrasenaDeAccess97SonBytesSinMasVelo)
{
    const std::vector<quint8> bytes =
        CabeceraCon(0, {{0x3A, "0904"}, {0x3C, "e404"}, {0x42, "636c61766500"}});

    const Cabecera cabecera = LeeCabecera(Bytes(bytes));

    EXPECT_EQ(cabecera.version, Version::Jet3);
    EXPECT_EQ(cabecera.idioma, 0x0409);
    EXPECT_EQ(cabecera.contrasena, "clave");
}

TEST(Cabecera, LosBytesDeVersionDicenElPrograma)
{
    EXPECT_EQ(VersionDe(0), Version::Jet3);
    EXPECT_EQ(VersionDe(1), Version::Jet4);
    EXPECT_EQ(VersionDe(2), Version::Ace2007);
    EXPECT_EQ(VersionDe(3), Version::Ace2010);
    EXPECT_EQ(VersionDe(4), std::nullopt);
    EXPECT_EQ(VersionDe(5), Version::Ace2016);
    EXPECT_EQ(VersionDe(6), Version::Ace2019);
}

TEST(Cabecera, LoQueNoEmpiezaComoUnaBaseNoLoEs)
{
    std::vector<quint8> bytes = CabeceraDe2003();
    bytes[5] = 'X';

    EXPECT_EQ(MotivoDe(bytes), Motivo::NoEsBase);
    EXPECT_EQ(MotivoDe(std::vector<quint8>(TamCabecera - 1)), Motivo::NoEsBase);
}

TEST(Cabecera, UnaVersionSinConocerSeRechaza)
{
    std::vector<quint8> bytes = CabeceraDe2003();
    bytes[0x14] = 4;

    EXPECT_EQ(MotivoDe(bytes), Motivo::Version);
}

TEST(Fichero, ConContrasenaSoloSeAbreDandola)
{
    BaseFabricada base;
    base.Contrasena("Gràcies7");
    const QByteArray fichero = base.Termina();

    EXPECT_EQ(MotivoAlAbrir(fichero), Motivo::Contrasena);
    EXPECT_EQ(MotivoAlAbrir(fichero, "gràcies7"), Motivo::Contrasena);
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(fichero);
    bufer->open(QIODevice::ReadOnly);
    EXPECT_NO_THROW(FicheroPaginas(std::move(bufer), "prueba.mdb", {.contrasena = "Gràcies7"}));
}

TEST(Fichero, CifradoSeRechaza)
{
    BaseFabricada base;
    base.Cifra();

    EXPECT_EQ(MotivoAlAbrir(base.Termina()), Motivo::Cifrado);
}

TEST(Fichero, UnaPaginaAMediasEsUnFicheroCortado)
{
    BaseFabricada base;
    const QByteArray fichero = base.Termina();

    EXPECT_EQ(MotivoAlAbrir(fichero.chopped(1)), Motivo::Cortado);
}

TEST(Fichero, DeAccess97ConOtraPaginaDeCodigosSeRechaza)
{
    const std::vector<quint8> cabecera = CabeceraCon(0, {{0x3C, "e504"}});
    QByteArray fichero(2048, '\0');
    std::copy(cabecera.begin(), cabecera.end(), fichero.begin());

    EXPECT_EQ(MotivoAlAbrir(fichero), Motivo::NoAdmitido);
}

TEST(Fichero, GuardaSoloLasUltimasPaginasQueSeLeyeron)
{
    BaseFabricada base;
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(base.Termina());
    bufer->open(QIODevice::ReadOnly);
    FicheroPaginas fichero(std::move(bufer), "prueba.mdb", {.cache = std::size_t{2} * 4096});

    const std::weak_ptr<const std::vector<quint8>> una = fichero.Lee(1).duenio;
    const std::weak_ptr<const std::vector<quint8>> dos = fichero.Lee(2).duenio;
    fichero.Lee(1);
    const Pagina tres = fichero.Lee(3);

    EXPECT_FALSE(una.expired());
    EXPECT_TRUE(dos.expired());
    EXPECT_EQ(fichero.Lee(3).duenio, tres.duenio);
}

TEST(Fichero, UnaPaginaFueraDeLaCacheSigueVivaParaQuienLaTiene)
{
    BaseFabricada base;
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(base.Termina());
    bufer->open(QIODevice::ReadOnly);
    FicheroPaginas fichero(std::move(bufer), "prueba.mdb", {.cache = 0});

    const Pagina definicion = fichero.Lee(2);
    fichero.Lee(1);

    EXPECT_EQ(definicion.bytes.U16(0), 0x0102);
}

TEST(Fichero, UnaPaginaQueNoTieneEsUnFicheroCortado)
{
    BaseFabricada base;
    auto bufer = std::make_unique<QBuffer>();
    bufer->setData(base.Termina());
    bufer->open(QIODevice::ReadOnly);
    FicheroPaginas fichero(std::move(bufer), "prueba.mdb");

    try {
        fichero.Lee(fichero.Cuantas());
        ADD_FAILURE() << "there is one page more";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::Cortado);
        EXPECT_EQ(error.lugar().pagina, fichero.Cuantas());
    }
}

TEST(Fichero, QueNoEstaOEsUnaCarpetaNoSeAbre)
{
    for (const char* ruta : {"/no/hay/nada.mdb", "/"}) {
        try {
            const FicheroPaginas fichero{QString(ruta)};
            ADD_FAILURE() << ruta;
        } catch (const ErrorMdb& error) {
            EXPECT_EQ(error.motivo(), Motivo::NoSeAbre);
            EXPECT_EQ(error.lugar().fichero, ruta);
            EXPECT_TRUE(error.Descripcion().contains(ruta));
        }
    }
}

} // namespace
