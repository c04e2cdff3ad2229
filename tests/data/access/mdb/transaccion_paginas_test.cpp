#include "data/access/mdb/base_de_transaccion.h"
#include "data/access/mdb/base_nueva.h"
#include "data/access/mdb/disco_de_prueba.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/otras_circunstancias.h"
#include "data/access/mdb/transaccion_paginas.h"
#include <QScopeGuard>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

using namespace tolmo::data::access::mdb;
using testing::HasSubstr;

namespace {

constexpr quint32 Paginas2003 = 75; // 307200 bytes
constexpr quint32 Una = 40;
constexpr quint32 Otra = 41;
constexpr auto UnPasoDelReloj = std::chrono::milliseconds(25);

class TransaccionDePaginas : public testing::Test {
  protected:
    BaseDeTransaccion base_{};
    TransaccionPaginas paginas_{base_.ruta, {.espera = std::chrono::milliseconds(0)}};
};

TEST_F(TransaccionDePaginas, UnCambioSeVeEnElActoYNadieMasLoVeHastaQueSeConfirma)
{
    TransaccionPaginas otra(base_.ruta);
    paginas_.Empieza();

    Rellena(paginas_, Una, 0x77);

    EXPECT_EQ(RellenoDe(paginas_, Una), 0x77);
    EXPECT_EQ(base_.Bytes(), BytesDeMuestra("2003-indices.mdb"));

    paginas_.Confirma();

    EXPECT_EQ(RellenoDe(paginas_, Una), 0x77);
    LecturaDePaginas lectura(otra);
    EXPECT_TRUE(lectura.Cambiadas());
    EXPECT_EQ(RellenoDe(otra, Una), 0x77);
}

TEST_F(TransaccionDePaginas, UnaPaginaLeidaAntesGuardaSusBytes)
{
    paginas_.Empieza();
    const Pagina antes = paginas_.Lee(Una);
    const quint8 original = antes.bytes.U8(100);

    Rellena(paginas_, Una, 0x11);
    const Pagina entre = paginas_.Lee(Una);
    Rellena(paginas_, Una, 0x22);

    EXPECT_EQ(antes.bytes.U8(100), original);
    EXPECT_EQ(entre.bytes.U8(100), 0x11);
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x22);
}

TEST_F(TransaccionDePaginas, DeshacerDejaElFicheroComoEstaba)
{
    paginas_.Empieza();
    Rellena(paginas_, Una, 0x77);
    paginas_.Alarga();

    paginas_.Deshace();

    EXPECT_NE(RellenoDe(paginas_, Una), 0x77);
    EXPECT_EQ(paginas_.Cuantas(), Paginas2003);
    EXPECT_EQ(base_.Bytes(), BytesDeMuestra("2003-indices.mdb"));
}

TEST_F(TransaccionDePaginas, SoloCambianLasPaginasTocadasYLaMarcaDelUsuario)
{
    QByteArray esperado = BytesDeMuestra("2003-indices.mdb");
    esperado.replace(Una * 4096 + 8, 4088, QByteArray(4088, '\x77'));
    esperado.append(QByteArray(4096, '\0'));
    // The mark of user 255 was 00 01.
    ASSERT_EQ(esperado.mid(0xFFE, 2), QByteArray::fromHex("0001"));
    esperado.replace(0xFFE, 2, QByteArray::fromHex("0101"));
    paginas_.Empieza();

    Rellena(paginas_, Una, 0x77);
    EXPECT_EQ(paginas_.Alarga(), Paginas2003);
    paginas_.Confirma();

    EXPECT_EQ(paginas_.Cuantas(), Paginas2003 + 1);
    EXPECT_EQ(base_.Bytes(), esperado);
    EXPECT_FALSE(base_.carpeta.Existe("prueba.ldb"));
    EXPECT_FALSE(base_.carpeta.Existe("prueba.mdb.diario"));
}

TEST_F(TransaccionDePaginas, ConfirmarSinCambiosNoEscribeNada)
{
    paginas_.Empieza();

    paginas_.Confirma();

    EXPECT_EQ(base_.Bytes(), BytesDeMuestra("2003-indices.mdb"));
    EXPECT_FALSE(paginas_.Abierta());
}

TEST_F(TransaccionDePaginas, LaPrimeraPaginaNoSeCambiaNiSeCambiaFueraDeUnaTransaccion)
{
    EXPECT_THROW(paginas_.Cambia(Una), std::logic_error);
    EXPECT_THROW(paginas_.Alarga(), std::logic_error);
    paginas_.Empieza();
    EXPECT_THROW(paginas_.Cambia(0), std::logic_error);
    EXPECT_THROW(paginas_.Cambia(Paginas2003), ErrorMdb);
}

TEST_F(TransaccionDePaginas, UnaMarcaDevuelveLasPaginasYElLargo)
{
    paginas_.Empieza();
    Rellena(paginas_, Una, 0x11);
    const std::size_t marca = paginas_.Marca();
    Rellena(paginas_, Una, 0x22);
    Rellena(paginas_, Otra, 0x22);
    const quint32 nueva = paginas_.Alarga();
    Rellena(paginas_, nueva, 0x22);

    paginas_.VuelveA(marca);

    EXPECT_EQ(RellenoDe(paginas_, Una), 0x11);
    EXPECT_NE(RellenoDe(paginas_, Otra), 0x22);
    EXPECT_EQ(paginas_.Cuantas(), Paginas2003);
    EXPECT_EQ(paginas_.Alarga(), nueva);
    EXPECT_EQ(RellenoDe(paginas_, nueva), 0x00);

    paginas_.VuelveA(marca);
    EXPECT_EQ(paginas_.Cuantas(), Paginas2003);
    paginas_.Confirma();
    EXPECT_EQ(base_.Bytes().size(), 307200);
}

TEST_F(TransaccionDePaginas, LasMarcasSeAnidan)
{
    paginas_.Empieza();
    const std::size_t fuera = paginas_.Marca();
    Rellena(paginas_, Una, 0x11);
    const std::size_t dentro = paginas_.Marca();
    Rellena(paginas_, Una, 0x22);
    Rellena(paginas_, Otra, 0x22);

    paginas_.Suelta(dentro);
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x22);

    const std::size_t denuevo = paginas_.Marca();
    Rellena(paginas_, Una, 0x33);
    paginas_.VuelveA(denuevo);
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x22);

    paginas_.VuelveA(fuera);
    EXPECT_NE(RellenoDe(paginas_, Una), 0x11);
    EXPECT_NE(RellenoDe(paginas_, Una), 0x22);
    EXPECT_NE(RellenoDe(paginas_, Otra), 0x22);
    EXPECT_THROW(paginas_.VuelveA(denuevo), std::logic_error);
}

TEST(TransaccionGrande, LosCambiosQueNoCabenEnMemoriaSeConfirmanYSeDeshacenIgual)
{
    BaseDeTransaccion base;
    TransaccionPaginas paginas(base.ruta, {.cambios = 8 * 4096});
    constexpr quint32 Nuevas = 100;
    const auto byteDe = [](quint32 numero) { return static_cast<quint8>(numero * 7 + 1); };
    paginas.Empieza();
    for (quint32 numero = 10; numero < Paginas2003; ++numero)
        Rellena(paginas, numero, byteDe(numero));
    const std::size_t marca = paginas.Marca();
    for (quint32 numero = 10; numero < Paginas2003; ++numero)
        Rellena(paginas, numero, 0xEE);
    for (quint32 i = 0; i < Nuevas; ++i)
        Rellena(paginas, paginas.Alarga(), 0xEE);
    paginas.VuelveA(marca);
    for (quint32 i = 0; i < Nuevas; ++i) {
        const quint32 nueva = paginas.Alarga();
        Rellena(paginas, nueva, byteDe(nueva));
    }
    // Read out of order, so that pages come back from the temporary file.
    for (quint32 numero = Paginas2003 + Nuevas; numero-- > 10;)
        ASSERT_EQ(RellenoDe(paginas, numero), byteDe(numero)) << numero;

    paginas.Confirma();

    ASSERT_EQ(base.Bytes().size(), (Paginas2003 + Nuevas) * 4096);
    TransaccionPaginas despues(base.ruta);
    for (quint32 numero = 10; numero < Paginas2003 + Nuevas; ++numero) {
        ASSERT_EQ(RellenoDe(paginas, numero), byteDe(numero)) << numero;
        ASSERT_EQ(RellenoDe(despues, numero), byteDe(numero)) << numero;
    }
}

TEST(SinSitio, ParaLosCambiosSeDicePorQue)
{
    BaseDeTransaccion base;

    const std::string error = ErrorEnOtroProceso([&] {
        TransaccionPaginas paginas(base.ruta, {.cambios = 8 * 4096});
        paginas.Empieza();
        LimitaLosFicheros(2 * 4096);
        for (quint32 numero = 10; numero < Paginas2003; ++numero)
            Rellena(paginas, numero, 0xEE);
    });

    EXPECT_EQ(
        error,
        "El fichero temporal de los cambios no se puede usar: El fichero es demasiado grande para este disco (fichero " +
            QDir::tempPath().toStdString() + ")");
}

TEST(SinSitio, ParaUnaBaseNuevaSeDicePorQueYNoQuedaNada)
{
    CarpetaDePrueba carpeta;
    const QString ruta = carpeta.Ruta("nueva.mdb");

    const std::string error = ErrorEnOtroProceso([&] {
        LimitaLosFicheros(2 * 4096);
        CreaBase(ruta);
    });

    EXPECT_EQ(
        error,
        "No se puede crear la base de datos: El fichero es demasiado grande para este disco (fichero " +
            ruta.toStdString() + ")");
    EXPECT_FALSE(carpeta.Existe("nueva.mdb"));
}

TEST(TransaccionGrande, ElFicheroNoPasaDeDosGigas)
{
    BaseDeTransaccion base;
    ASSERT_EQ(::truncate(base.ruta.toLocal8Bit().constData(), 0x80000000LL - 4096), 0);
    TransaccionPaginas paginas(base.ruta);
    paginas.Empieza();

    EXPECT_EQ(paginas.Alarga(), 524287U);
    try {
        paginas.Alarga();
        FAIL() << "it grew";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::Lleno);
        EXPECT_THAT(error.Descripcion().toStdString(), HasSubstr("prueba.mdb"));
    }
}

TEST_F(TransaccionDePaginas, UnFicheroDeAccess97SoloSeLee)
{
    BaseDeTransaccion base("97-types.mdb");
    TransaccionPaginas paginas(base.ruta);

    EXPECT_EQ(paginas.formato().tamPagina, 2048U);
    try {
        paginas.Empieza();
        FAIL() << "it may be written";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::NoAdmitido);
    }
}

TEST_F(TransaccionDePaginas, SinPermisoSeLeeYNoSeEscribe)
{
    DiscoDePrueba disco;
    disco.soloLectura = true;
    TransaccionPaginas paginas(base_.ruta, {.disco = &disco});

    {
        LecturaDePaginas lectura(paginas);
        EXPECT_EQ(paginas.Cuantas(), Paginas2003);
    }
    try {
        paginas.Empieza();
        FAIL() << "it may be written";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::NoSeEscribe);
    }
}

/// Looks from time to time at a file that others change.
class Frescura : public testing::Test {
  protected:
    Frescura() { Descansa(); }

    /// Until the time of the file is no longer that of now.
    void Descansa()
    {
        std::this_thread::sleep_for(UnPasoDelReloj);
        paginas_.Refresca();
    }
    void EscribeEn(qint64 posicion, const QByteArray& bytes) const
    {
        QFile fichero(base_.ruta);
        ASSERT_TRUE(fichero.open(QIODevice::ReadWrite));
        fichero.seek(posicion);
        fichero.write(bytes);
    }
    /// Puts the time of the file back, as on a share whose clock takes long steps.
    void ConLaHoraDe(const struct stat& antes) const
    {
        const struct timespec horas[2] = {antes.st_atim, antes.st_mtim};
        ASSERT_EQ(::utimensat(AT_FDCWD, base_.ruta.toLocal8Bit().constData(), horas, 0), 0);
    }
    struct stat Datos() const
    {
        struct stat datos {};
        ::stat(base_.ruta.toLocal8Bit().constData(), &datos);
        return datos;
    }

    BaseDeTransaccion base_{};
    TransaccionPaginas paginas_{base_.ruta};
};

TEST_F(Frescura, NadaHaCambiado)
{
    EXPECT_FALSE(paginas_.Refresca());
    EXPECT_FALSE(paginas_.Refresca());
}

TEST_F(Frescura, LoPropioNoEsCambio)
{
    paginas_.Empieza();
    Rellena(paginas_, Una, 0x77);
    paginas_.Confirma();

    EXPECT_FALSE(paginas_.Refresca());
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x77);
}

TEST_F(Frescura, SeVeUnaPaginaQueOtroHaEscrito)
{
    ASSERT_NE(RellenoDe(paginas_, Una), 0x77);
    EscribeEn(Una * 4096 + 100, "\x77");

    EXPECT_TRUE(paginas_.Refresca());
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x77);
}

TEST_F(Frescura, LasMarcasBastanAunqueLaHoraSeaLaMisma)
{
    ASSERT_NE(RellenoDe(paginas_, Una), 0x77);
    const struct stat antes = Datos();
    EscribeEn(Una * 4096 + 100, "\x77");
    EscribeEn(0xE00 + 2 * 3, QByteArray::fromHex("0101"));
    ConLaHoraDe(antes);

    EXPECT_TRUE(paginas_.Refresca());
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x77);
}

TEST_F(Frescura, DosCambiosEnElMismoPasoDelRelojSeVenLosDos)
{
    EscribeEn(Una * 4096 + 100, "\x77");
    const struct stat antes = Datos();
    ASSERT_TRUE(paginas_.Refresca());
    ASSERT_EQ(RellenoDe(paginas_, Una), 0x77);
    EscribeEn(Una * 4096 + 100, "\x78");
    ConLaHoraDe(antes);

    EXPECT_TRUE(paginas_.Refresca());
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x78);
}

TEST_F(Frescura, ElFicheroQueCreceSeVeEntero)
{
    EscribeEn(Paginas2003 * 4096, QByteArray(8192, '\x55'));

    EXPECT_TRUE(paginas_.Refresca());
    EXPECT_EQ(paginas_.Cuantas(), Paginas2003 + 2);
    EXPECT_EQ(RellenoDe(paginas_, Paginas2003 + 1), 0x55);
}

TEST_F(Frescura, UnaCopiaPuestaEnSuLugarSeAbre)
{
    QByteArray copia = base_.Bytes();
    copia[Una * 4096 + 100] = '\x66';
    base_.carpeta.Escribe("copia.mdb", copia);
    QFile::remove(base_.ruta);
    QFile::rename(base_.carpeta.Ruta("copia.mdb"), base_.ruta);

    std::this_thread::sleep_for(UnPasoDelReloj);
    EXPECT_TRUE(paginas_.EmpiezaLectura());
    EXPECT_EQ(RellenoDe(paginas_, Una), 0x66);
    paginas_.AcabaLectura();

    EXPECT_FALSE(paginas_.Empieza());
    Rellena(paginas_, Otra, 0x44);
    paginas_.Confirma();
    EXPECT_EQ(base_.Bytes()[Otra * 4096 + 100], '\x44');
}

TEST_F(Frescura, OtraCosaPuestaEnSuLugarSeDiceHastaQueVuelveLaBase)
{
    const auto pon = [this](const QByteArray& bytes) {
        base_.carpeta.Escribe("otra.mdb", bytes);
        QFile::remove(base_.ruta);
        QFile::rename(base_.carpeta.Ruta("otra.mdb"), base_.ruta);
    };
    pon("no es una base");

    EXPECT_THROW(paginas_.EmpiezaLectura(), ErrorMdb);
    EXPECT_THROW(paginas_.Lee(Una), ErrorMdb);
    EXPECT_THROW(paginas_.Cuantas(), ErrorMdb);
    EXPECT_THROW(paginas_.Empieza(), ErrorMdb);

    pon(BytesDeMuestra("2003-indices.mdb"));
    const LecturaDePaginas lectura(paginas_);
    EXPECT_TRUE(lectura.Cambiadas());
    EXPECT_EQ(paginas_.Cuantas(), Paginas2003);
}

TEST_F(Frescura, UnFicheroQueYaNoEstaSeDice)
{
    QFile::remove(base_.ruta);

    EXPECT_THROW(paginas_.EmpiezaLectura(), ErrorMdb);
    EXPECT_THROW(paginas_.Empieza(), ErrorMdb);
}

/// True when an object of this program holds a lock of the database.
bool HayBloqueos(const QString& ruta)
{
    const auto otro = DiscoDelSistema().Abre(ruta, Uso::LeerYEscribir);
    return otro->BloqueoAjeno(qint64{1} << 31, 1 << 20).has_value();
}

TEST_F(Frescura, UnFicheroQueFaltabaYVuelveNoQuedaBloqueado)
{
    const QString aparte = base_.carpeta.Ruta("aparte.mdb");
    const auto sinEl = [&](const auto& intenta) {
        QFile::rename(base_.ruta, aparte);
        EXPECT_THROW(intenta(), ErrorMdb);
        QFile::rename(aparte, base_.ruta);
    };

    sinEl([this] { paginas_.EmpiezaLectura(); });
    EXPECT_FALSE(HayBloqueos(base_.ruta));

    sinEl([this] { paginas_.Empieza(); });
    EXPECT_FALSE(HayBloqueos(base_.ruta));

    {
        const LecturaDePaginas lectura(paginas_);
        sinEl([this] { paginas_.Empieza(); });
        EXPECT_TRUE(HayBloqueos(base_.ruta)) << "a statement that goes on reading";
    }
    EXPECT_FALSE(HayBloqueos(base_.ruta));
}

TEST_F(TransaccionDePaginas, UnBloqueoQueElSistemaNiegaNoDejaOtrosPuestos)
{
    DiscoDePrueba disco;
    TransaccionPaginas paginas(base_.ruta, {.disco = &disco});
    const auto conCadaNegativa = [&](const auto& intenta) {
        std::size_t negadas = 0;
        for (bool negada = true; negada; ++negadas) {
            SCOPED_TRACE(negadas);
            disco.bloqueos = 0;
            disco.FallaElBloqueo(negadas);
            intenta();
            negada = disco.bloqueos > negadas;
            EXPECT_FALSE(HayBloqueos(base_.ruta));
        }
        return negadas - 1;
    };

    // Reading goes on without; the turn and the readers' lock.
    EXPECT_EQ(conCadaNegativa([&] { const LecturaDePaginas lectura(paginas); }), 2U);
    // The queue, the writer, the users.
    EXPECT_EQ(conCadaNegativa([&] {
                  try {
                      paginas.Empieza();
                      paginas.Deshace();
                  } catch (const ErrorMdb& error) {
                      EXPECT_EQ(error.motivo(), Motivo::NoSeEscribe);
                  }
              }),
              3U);
}

TEST(ErrorDelSistema, LosCorrientesSeDicenEnEspanol)
{
    EXPECT_EQ(ErrorDelSistema(EACCES), "Permiso denegado");
    EXPECT_EQ(ErrorDelSistema(EPERM), "Permiso denegado");
    EXPECT_EQ(ErrorDelSistema(ENOSPC), "No queda sitio en el disco");
    EXPECT_EQ(ErrorDelSistema(EROFS), "El disco es de sólo lectura");
    EXPECT_EQ(ErrorDelSistema(EDQUOT),
              "Este usuario ha llegado a su límite de espacio en el disco");
    EXPECT_EQ(ErrorDelSistema(EMFILE), "Hay demasiados ficheros abiertos");
    EXPECT_EQ(ErrorDelSistema(EIO), "El disco ha fallado");
    EXPECT_EQ(ErrorDelSistema(ELOOP), QString::fromLocal8Bit(std::strerror(ELOOP)));
}

TEST(DiscoDelSistema, LoQueCreaLoPuedeUsarQuienPuedeUsarElModelo)
{
    BaseDeTransaccion base;
    const mode_t mascara = ::umask(077);
    const auto repone = qScopeGuard([&] { ::umask(mascara); });
    for (const mode_t permisos : {0666U, 0640U}) {
        ASSERT_EQ(::chmod(base.ruta.toLocal8Bit().constData(), permisos), 0);
        const QString nuevo = base.carpeta.Ruta("nuevo" + QString::number(permisos));

        DiscoDelSistema().Crea(nuevo, base.ruta);

        struct stat datos {};
        ASSERT_EQ(::stat(nuevo.toLocal8Bit().constData(), &datos), 0);
        EXPECT_EQ(datos.st_mode & 07777U, permisos);
    }
}

TEST(DiscoDelSistema, CreaNoTocaLoQueHayYCreaNuevoLoRechaza)
{
    BaseDeTransaccion base;
    base.carpeta.Escribe("hay", "algo");
    const QString hay = base.carpeta.Ruta("hay");

    EXPECT_EQ(DiscoDelSistema().Crea(hay, base.ruta)->Estado().tam, 4);
    try {
        DiscoDelSistema().CreaNuevo(hay);
        FAIL() << "it was made again";
    } catch (const ErrorDeDisco& error) {
        EXPECT_EQ(error.Razon(), "Ya existe");
    }
    EXPECT_EQ(base.carpeta.Lee("hay"), "algo");
}

} // namespace
