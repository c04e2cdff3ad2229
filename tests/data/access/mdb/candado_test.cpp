#include "data/access/mdb/base_de_transaccion.h"
#include "data/access/mdb/candado.h"
#include "data/access/mdb/disco_de_prueba.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/gestion_abierta.h"
#include "data/access/mdb/otras_circunstancias.h"
#include <QSysInfo>
#include <chrono>
#include <gmock/gmock.h>
#include <random>
#include <set>
#include <sys/stat.h>
#include <thread>

using namespace tolmo::data::access::mdb;
using namespace std::chrono_literals;
using testing::HasSubstr;
using testing::Not;

namespace {

constexpr quint32 Una = 40;
constexpr quint32 Otra = 60;

class FicheroDeBloqueo : public testing::Test {
  protected:
    /// What a refused start of a transaction says.
    std::string Negativa()
    {
        try {
            paginas_.Empieza();
        } catch (const ErrorMdb& error) {
            EXPECT_EQ(error.motivo(), Motivo::EnUso);
            return error.Descripcion().toStdString();
        }
        ADD_FAILURE() << "it may be written";
        return {};
    }

    BaseDeTransaccion base_{};
    QString ldb_ = base_.carpeta.Ruta("prueba.ldb");
    TransaccionPaginas paginas_{base_.ruta, {.espera = 0ms}};
};

TEST_F(FicheroDeBloqueo, SeDiceQuienTieneElFicheroAbiertoYSeSigueLeyendo)
{
    base_.carpeta.Escribe("prueba.ldb",
                          EntradaDeUsuario("VIEJO", "Admin") + EntradaDeUsuario("CAJA2", "Pepe"));
    OtroProceso gestion([&](const auto& avisa, const auto& espera) {
        if (BloqueaComoUnServidor(ldb_, 0x10000002) != 0)
            throw std::runtime_error("no lock");
        avisa();
        espera();
    });
    gestion.EsperaSuAviso();

    const std::string negativa = Negativa();

    EXPECT_THAT(negativa, HasSubstr("está abierto en otro programa (equipo CAJA2, usuario Pepe)"));
    EXPECT_THAT(negativa, HasSubstr("Cierre ese programa y repita la operación"));
    EXPECT_THAT(negativa, HasSubstr("prueba.mdb"));
    {
        LecturaDePaginas lectura(paginas_);
        EXPECT_EQ(paginas_.Lee(Una).numero, Una);
    }

    gestion.Avisa();
    EXPECT_EQ(gestion.Recoge(), 0);
    paginas_.Empieza();
    Rellena(paginas_, Una, 0x77);
    paginas_.Confirma();
    EXPECT_EQ(base_.Bytes()[Una * 4096 + 100], '\x77');
}

TEST_F(FicheroDeBloqueo, CualquieraDeLosDoscientosCincuentaYCincoBytesCuenta)
{
    base_.carpeta.Escribe("prueba.ldb", {});
    for (const qint64 byte : {0x10000001, 0x10000080, 0x100000FF}) {
        SCOPED_TRACE(byte);
        const auto otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
        ASSERT_TRUE(otro->Bloquea(byte, 1, Cerrojo::Exclusivo));

        EXPECT_THAT(Negativa(), HasSubstr("abierto en otro programa, y mientras tanto"));
    }
    for (const qint64 byte : {0x10000000, 0x10000100, 0x20000001}) {
        SCOPED_TRACE(byte);
        const auto otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
        ASSERT_TRUE(otro->Bloquea(byte, 1, Cerrojo::Exclusivo));

        paginas_.Empieza();
        paginas_.Deshace();
    }
}

TEST_F(FicheroDeBloqueo, LosNombresSeLimpianDeLoQueNoSeImprime)
{
    base_.carpeta.Escribe("prueba.ldb", EntradaDeUsuario("CA\x1b[2J\r\nJA", "Jos\xe9"));
    const auto otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
    ASSERT_TRUE(otro->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));

    EXPECT_THAT(Negativa(), HasSubstr("(equipo CA [2J JA, usuario José)"));
}

TEST_F(FicheroDeBloqueo, UnoViejoSinBloqueosNoSignificaNadaYSeRetiraAlAcabar)
{
    base_.carpeta.Escribe("prueba.ldb",
                          EntradaDeUsuario("CAJA1", "Admin") + EntradaDeUsuario("CAJA2", "Admin"));

    paginas_.Empieza();
    EXPECT_EQ(base_.carpeta.Lee("prueba.ldb").mid(64), EntradaDeUsuario("CAJA2", "Admin"));
    Rellena(paginas_, Una, 0x77);
    paginas_.Confirma();

    EXPECT_EQ(base_.Bytes()[Una * 4096 + 100], '\x77');
    EXPECT_FALSE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(FicheroDeBloqueo, ElDeUnProcesoQueMurioLoRetiraElSiguienteQueEscribe)
{
    OtroProceso muerto([&](const auto& avisa, const auto& espera) {
        TransaccionPaginas suyas(base_.ruta);
        suyas.Empieza();
        avisa();
        espera();
    });
    muerto.EsperaSuAviso();
    muerto.Mata();
    ASSERT_TRUE(base_.carpeta.Existe("prueba.ldb"));

    paginas_.Empieza();
    paginas_.Deshace();

    EXPECT_FALSE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(FicheroDeBloqueo, NoSeRetiraSiAlguienTieneEnElCualquierBloqueo)
{
    base_.carpeta.Escribe("prueba.ldb", {});
    const auto otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
    ASSERT_TRUE(otro->Bloquea(0x20000001, 1, Cerrojo::Compartido));

    paginas_.Empieza();
    paginas_.Deshace();

    EXPECT_TRUE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(FicheroDeBloqueo, SiOtroPoneUnoNuevoEntretantoCuentaElNuevo)
{
    base_.carpeta.Escribe("prueba.ldb", {});
    std::unique_ptr<FicheroDeDisco> otro;
    DiscoDePrueba disco;
    // The last user of the management program leaves, and the next one comes.
    disco.antesDeBloquear = [&](const QString& nombre) {
        if (nombre != u"prueba.ldb" || otro != nullptr)
            return;
        QFile::remove(ldb_);
        base_.carpeta.Escribe("prueba.ldb", EntradaDeUsuario("CAJA2", "Admin"));
        otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
        ASSERT_TRUE(otro->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));
    };
    TransaccionPaginas paginas(base_.ruta, {.espera = 1s, .disco = &disco});

    try {
        paginas.Empieza();
        FAIL() << "it is written beside another";
    } catch (const ErrorMdb& error) {
        EXPECT_THAT(error.Descripcion().toStdString(), HasSubstr("equipo CAJA2"));
    }
    EXPECT_TRUE(base_.carpeta.Existe("prueba.ldb"));
}

/// A lock file, or its folder, that this user may not write to.
class BloqueoDeOtroUsuario : public testing::Test {
  protected:
    BloqueoDeOtroUsuario()
    {
        Permite(base_.ruta, 0666);
        Permite(base_.carpeta.Ruta(), 0777);
    }
    ~BloqueoDeOtroUsuario() override { Permite(base_.carpeta.Ruta(), 0777); }

    static void Permite(const QString& ruta, mode_t permisos)
    {
        if (::chmod(ruta.toLocal8Bit().constData(), permisos) != 0)
            throw std::runtime_error("no permissions");
    }
    /// Two users, of whom the second one may have the file open.
    void PonLdb(mode_t permisos) const
    {
        base_.carpeta.Escribe("prueba.ldb", EntradaDeUsuario("CAJA1", "Admin") +
                                                EntradaDeUsuario("CAJA2", "Pepe"));
        Permite(base_.carpeta.Ruta("prueba.ldb"), permisos);
    }
    std::string ErrorAlEscribir() const
    {
        return ErrorEnOtroProceso([this] {
            DejaDeSerAdministrador();
            TransaccionPaginas paginas(base_.ruta, {.espera = 0ms});
            paginas.Empieza();
            Rellena(paginas, Una, 0x77);
            paginas.Confirma();
        });
    }
    std::string ConElFichero(const std::string& frase) const
    {
        return frase + " (fichero " + base_.ruta.toStdString() + ")";
    }
    std::string Ldb() const { return base_.carpeta.Ruta("prueba.ldb").toStdString(); }
    bool Escrito() const { return base_.Bytes()[Una * 4096 + 100] == '\x77'; }

    BaseDeTransaccion base_{};
};

TEST_F(BloqueoDeOtroUsuario, SinBloqueosSeRetiraYSeEscribe)
{
    PonLdb(0444);

    EXPECT_EQ(ErrorAlEscribir(), "");

    EXPECT_TRUE(Escrito());
    EXPECT_FALSE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(BloqueoDeOtroUsuario, SiAlguienTieneElFicheroAbiertoSeDiceQuien)
{
    PonLdb(0444);
    const auto otro = DiscoDelSistema().Crea(base_.carpeta.Ruta("prueba.ldb"), base_.ruta);
    for (const Cerrojo cerrojo : {Cerrojo::Exclusivo, Cerrojo::Compartido}) {
        ASSERT_TRUE(otro->Bloquea(0x10000002, 1, cerrojo));

        EXPECT_EQ(
            ErrorAlEscribir(),
            ConElFichero(
                "El fichero está abierto en otro programa (equipo CAJA2, usuario Pepe), y mientras tanto sólo se puede leer. Cierre ese programa y repita la operación"));
    }
    EXPECT_FALSE(Escrito());
    EXPECT_TRUE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(BloqueoDeOtroUsuario, SiNoSeSabeONoSePuedeRetirarSeDiceQueHacer)
{
    const std::string frase = ConElFichero(
        "No se puede escribir en el fichero " + Ldb() +
        ", que dice quién tiene abierta la base de datos: es de otro usuario. Cierre los programas que la usan y bórrelo");

    PonLdb(0000);
    EXPECT_EQ(ErrorAlEscribir(), frase) << "not to be read";
    EXPECT_TRUE(base_.carpeta.Existe("prueba.ldb"));

    Permite(base_.carpeta.Ruta("prueba.ldb"), 0444);
    Permite(base_.carpeta.Ruta(), 0555);
    EXPECT_EQ(ErrorAlEscribir(), frase) << "not to be taken away";
    EXPECT_FALSE(Escrito());
}

TEST_F(BloqueoDeOtroUsuario, SiLaCarpetaNoSePuedeEscribirSeDiceParaQueHaceFalta)
{
    Permite(base_.carpeta.Ruta(), 0555);

    EXPECT_EQ(
        ErrorAlEscribir(),
        ConElFichero(
            "No se puede crear el fichero " + Ldb() +
            ", que dice quién tiene abierta la base de datos mientras se escribe en ella: hace falta permiso para escribir en su carpeta"));
    EXPECT_FALSE(Escrito());
}

TEST_F(FicheroDeBloqueo, MientrasSeEscribeSeVeUnUsuarioYNoEntraOtro)
{
    paginas_.Empieza();

    const QByteArray entrada = base_.carpeta.Lee("prueba.ldb");
    ASSERT_EQ(entrada.size(), 64);
    EXPECT_EQ(entrada.left(entrada.indexOf('\0')), QSysInfo::machineHostName().toLatin1().left(31));
    EXPECT_EQ(entrada.mid(32), QByteArray("Admin").leftJustified(32, '\0'));
    const auto otro = DiscoDelSistema().Abre(ldb_, Uso::LeerYEscribir);
    EXPECT_FALSE(otro->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));
    EXPECT_FALSE(otro->Bloquea(0x10000002, 1, Cerrojo::Exclusivo));
    EXPECT_FALSE(otro->Bloquea(0x100000FF, 1, Cerrojo::Exclusivo));

    paginas_.Deshace();

    EXPECT_TRUE(otro->Bloquea(0x10000001, 255, Cerrojo::Exclusivo));
    EXPECT_FALSE(base_.carpeta.Existe("prueba.ldb"));
}

TEST_F(FicheroDeBloqueo, LaMarcaEsLaDelUltimoUsuarioQueLaTieneSana)
{
    QByteArray bytes = base_.Bytes();
    bytes.replace(0xE00 + 2 * 254, 4, QByteArray::fromHex("01000000"));
    base_.carpeta.Escribe("prueba.mdb", bytes);

    paginas_.Empieza();
    Rellena(paginas_, Una, 0x77);
    paginas_.Confirma();

    // That of user 253 was 0100; those in trouble stay as a warning.
    EXPECT_EQ(base_.Bytes().mid(0xE00 + 2 * 253, 6), QByteArray::fromHex("010101000000"));
}

TEST(NombreDeBloqueo, EsElDeLaBaseConOtraTerminacion)
{
    EXPECT_EQ(RutaLdb("/datos/BD000001.mdb"), "/datos/BD000001.ldb");
    EXPECT_EQ(RutaLdb("/datos/BD.2024.MDB"), "/datos/BD.2024.ldb");
    EXPECT_EQ(RutaLdb("/datos/gestion.accdb"), "/datos/gestion.laccdb");
}

TEST(NombreDeBloqueo, UnoEnMayusculasTambienEsElSuyo)
{
    BaseDeTransaccion base;
    base.carpeta.Escribe("prueba.LDB", EntradaDeUsuario("CAJA1", "Admin"));
    TransaccionPaginas paginas(base.ruta, {.espera = 0ms});
    const auto otro = DiscoDelSistema().Abre(base.carpeta.Ruta("prueba.LDB"), Uso::LeerYEscribir);
    ASSERT_TRUE(otro->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));

    EXPECT_THROW(paginas.Empieza(), ErrorMdb);
}

TEST(DosProcesos, ElSegundoQueEscribeEsperaYDesisteConUnMensaje)
{
    BaseDeTransaccion base;
    OtroProceso primero([&](const auto& avisa, const auto& espera) {
        TransaccionPaginas suyas(base.ruta);
        suyas.Empieza();
        avisa();
        espera();
        Rellena(suyas, Una, 0x11);
        suyas.Confirma();
    });
    primero.EsperaSuAviso();
    TransaccionPaginas impaciente(base.ruta, {.espera = 50ms});

    const auto antes = std::chrono::steady_clock::now();
    try {
        impaciente.Empieza();
        FAIL() << "two write at once";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::EnUso);
        EXPECT_THAT(error.Descripcion().toStdString(),
                    HasSubstr("Otra ventana o proceso de este programa"));
        // The entry of the lock file is one's own program, and no reason to close another one.
        EXPECT_THAT(error.Descripcion().toStdString(), Not(HasSubstr("equipo")));
    }
    EXPECT_GE(std::chrono::steady_clock::now() - antes, 50ms);
    {
        LecturaDePaginas lectura(impaciente);
        EXPECT_NE(RellenoDe(impaciente, Una), 0x11);
    }

    primero.Avisa();
    TransaccionPaginas paciente(base.ruta);
    paciente.Empieza();
    EXPECT_EQ(RellenoDe(paciente, Una), 0x11);
    paciente.Deshace();
    EXPECT_EQ(primero.Recoge(), 0);
}

TEST(DosProcesos, QuienLeeHaceEsperarALaEscrituraDePaginas)
{
    BaseDeTransaccion base;
    TransaccionPaginas lector(base.ruta);
    TransaccionPaginas escritor(base.ruta, {.espera = 20ms});
    escritor.Empieza();
    Rellena(escritor, Una, 0x77);
    {
        LecturaDePaginas lectura(lector);
        EXPECT_THROW(escritor.Confirma(), ErrorMdb);
        EXPECT_NE(RellenoDe(lector, Una), 0x77);
        EXPECT_NE(base.Bytes()[Una * 4096 + 100], '\x77');
    }

    escritor.Confirma();

    LecturaDePaginas lectura(lector);
    EXPECT_TRUE(lectura.Cambiadas());
    EXPECT_EQ(RellenoDe(lector, Una), 0x77);
}

TEST(DosProcesos, QuienLeeYLuegoEscribeNoSeQuedaEsperandoASiMismo)
{
    BaseDeTransaccion base;
    TransaccionPaginas una(base.ruta, {.espera = 0ms});
    TransaccionPaginas otra(base.ruta, {.espera = 0ms});
    LecturaDePaginas lectura(una);
    una.Empieza();
    Rellena(una, Una, 0x77);
    una.Confirma();

    // It reads on, so that the other one can't write.
    otra.Empieza();
    Rellena(otra, Una, 0x78);
    EXPECT_THROW(otra.Confirma(), ErrorMdb);
    EXPECT_EQ(RellenoDe(una, Una), 0x77);
}

TEST(DosProcesos, UnCambioAjenoDuranteLaTransaccionNoSePisa)
{
    BaseDeTransaccion base;
    TransaccionPaginas paginas(base.ruta);
    paginas.Empieza();
    Rellena(paginas, Una, 0x77);
    QByteArray bytes = base.Bytes();
    bytes[0xE00] = static_cast<char>(bytes[0xE00] + 1);
    base.carpeta.Escribe("prueba.mdb", bytes);

    try {
        paginas.Confirma();
        FAIL() << "it was written over another's change";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::EnUso);
    }
    EXPECT_EQ(base.Bytes(), bytes);
}

quint32 CuentaDe(Paginas& paginas, quint32 numero)
{
    return paginas.Lee(numero).bytes.U32(100);
}

/// Counts both pages on together, as a row and its index entry change together.
void CuentaEnDosPaginas(TransaccionPaginas& paginas)
{
    paginas.Empieza();
    const quint32 siguiente = CuentaDe(paginas, Una) + 1;
    for (const quint32 numero : {Una, Otra})
        qToLittleEndian(siguiente, paginas.Cambia(numero).data() + 100);
    paginas.Confirma();
}

/// Writes without a pause until it is killed.
void EscribeSinParar(const QString& ruta, const OtroProceso::Senal& avisa)
{
    TransaccionPaginas suyas(ruta);
    suyas.Empieza();
    suyas.Deshace();
    avisa();
    for (;;)
        CuentaEnDosPaginas(suyas);
}

void PonACero(const BaseDeTransaccion& base)
{
    TransaccionPaginas paginas(base.ruta);
    paginas.Empieza();
    Rellena(paginas, Una, 0);
    Rellena(paginas, Otra, 0);
    paginas.Confirma();
}

TEST(DosProcesos, SeTurnanYNingunaLecturaVeMedioCambio)
{
    constexpr int Veces = 40;
    BaseDeTransaccion base;
    PonACero(base);
    const auto escribe = [&](const auto& avisa, const auto&) {
        TransaccionPaginas suyas(base.ruta);
        for (int i = 0; i < Veces; ++i)
            CuentaEnDosPaginas(suyas);
        avisa();
    };
    OtroProceso uno(escribe);
    OtroProceso otro(escribe);
    TransaccionPaginas lector(base.ruta);

    int distintas = 0;
    std::set<quint32> vistas;
    for (quint32 cuenta = 0; cuenta < 2 * Veces; vistas.insert(cuenta)) {
        LecturaDePaginas lectura(lector);
        cuenta = CuentaDe(lector, Una);
        distintas += CuentaDe(lector, Otra) != cuenta;
    }

    EXPECT_EQ(uno.Recoge(), 0);
    EXPECT_EQ(otro.Recoge(), 0);
    EXPECT_EQ(distintas, 0);
    // Neither of them pauses, and still the reader has its turn between their commits.
    EXPECT_GT(vistas.size(), 10U);
}

TEST(DosProcesos, QuienEscribeSinPararDejaEscribirAlOtro)
{
    BaseDeTransaccion base;
    PonACero(base);
    OtroProceso escritor(
        [&](const auto& avisa, const auto&) { EscribeSinParar(base.ruta, avisa); });
    escritor.EsperaSuAviso();
    TransaccionPaginas paginas(base.ruta, {.espera = 5s});

    for (int i = 0; i < 10; ++i)
        CuentaEnDosPaginas(paginas);

    EXPECT_GE(CuentaDe(paginas, Una), 10U);
}

TEST(DosProcesos, UnoQueMuereEnMedioNoDejaNadaAMedias)
{
    BaseDeTransaccion base;
    PonACero(base);
    TransaccionPaginas lector(base.ruta);
    std::mt19937 azar(7);
    quint32 ultima = 0;
    for (int vez = 0; vez < 25; ++vez) {
        OtroProceso escritor(
            [&](const auto& avisa, const auto&) { EscribeSinParar(base.ruta, avisa); });
        escritor.EsperaSuAviso();
        std::this_thread::sleep_for(std::chrono::microseconds(azar() % 40000));
        escritor.Mata();

        LecturaDePaginas lectura(lector);
        const quint32 cuenta = CuentaDe(lector, Una);
        ASSERT_EQ(CuentaDe(lector, Otra), cuenta);
        ASSERT_GE(cuenta, ultima) << "a commit was lost";
        ultima = cuenta;
    }
}

} // namespace
