#include "data/access/mdb/base_de_transaccion.h"
#include "data/access/mdb/diario.h"
#include "data/access/mdb/disco_de_prueba.h"
#include "data/access/mdb/errores_mdb.h"
#include <QProcess>
#include <gmock/gmock.h>
#include <random>
#include <set>

using namespace tolmo::data::access::mdb;
using testing::HasSubstr;
using Tipo = Operacion::Tipo;

namespace {

const QString NombreBase = QStringLiteral("prueba.mdb");
const QString NombreDiario = QStringLiteral("prueba.mdb.diario");
constexpr qsizetype TamPagina = 4096;

/// Pages of rows and of indexes of Table1.
std::vector<quint32> PaginasDeTable1(const BaseDeTransaccion& base)
{
    const Base lectura(base.ruta);
    const quint32 duenio = lectura.AbreTabla(QStringLiteral("Table1")).definicion().pagina;
    std::vector<quint32> numeros;
    for (quint32 numero = 1; numero < lectura.paginas().Cuantas(); ++numero) {
        const Bytes bytes = lectura.paginas().Lee(numero).bytes;
        if (bytes.U8(0) >= tipo_pagina::Datos && bytes.U8(0) <= tipo_pagina::Hoja &&
            bytes.U8(0) != tipo_pagina::Definicion && bytes.U32(4) == duenio)
            numeros.push_back(numero);
    }
    return numeros;
}

/// Some commits, the changes of the folder that they were made of, and the states between them.
struct Historia {
    Carpeta principio{};
    std::vector<Operacion> operaciones{};
    std::vector<QByteArray> estados{};  ///< of the database: before all, after each commit
    std::vector<std::size_t> finales{}; ///< changes that had been made by then
};

Historia HazHistoria()
{
    BaseDeTransaccion base;
    const std::vector<quint32> suyas = PaginasDeTable1(base);
    DiscoDePrueba disco;
    Historia historia;
    historia.principio[NombreBase] = base.Bytes();
    historia.estados.push_back(base.Bytes());
    historia.finales.push_back(0);
    TransaccionPaginas paginas(base.ruta, {.disco = &disco});
    const auto confirma = [&] {
        paginas.Confirma();
        historia.estados.push_back(base.Bytes());
        historia.finales.push_back(disco.operaciones.size());
    };
    paginas.Empieza();
    Rellena(paginas, suyas.at(0), 0x11);
    confirma();
    paginas.Empieza();
    for (const quint32 numero : suyas)
        Rellena(paginas, numero, 0x22);
    for (int i = 0; i < 3; ++i)
        Rellena(paginas, paginas.Alarga(), 0x22);
    confirma();
    paginas.Empieza();
    Rellena(paginas, paginas.Alarga(), 0x33);
    confirma();
    paginas.Empieza();
    Rellena(paginas, suyas.at(1), 0x44);
    Rellena(paginas, paginas.Cuantas() - 1, 0x44);
    confirma();
    historia.operaciones = disco.operaciones;
    return historia;
}

const Historia& LaHistoria()
{
    static const Historia historia = HazHistoria();
    return historia;
}

/// The commits that had been confirmed after some of the changes.
std::size_t ConfirmadosEn(const Historia& historia, std::size_t operaciones)
{
    std::size_t confirmados = 0;
    while (confirmados + 1 < historia.finales.size() &&
           historia.finales[confirmados + 1] <= operaciones)
        ++confirmados;
    return confirmados;
}

Carpeta Tras(const Historia& historia, std::size_t operaciones)
{
    Carpeta carpeta = historia.principio;
    for (std::size_t i = 0; i < operaciones; ++i)
        Aplica(carpeta, historia.operaciones[i]);
    return carpeta;
}

void PonEn(const CarpetaDePrueba& destino, const Carpeta& carpeta)
{
    for (const QString& nombre : QDir(destino.Ruta()).entryList(QDir::Files))
        QFile::remove(destino.Ruta(nombre));
    for (const auto& [nombre, bytes] : carpeta)
        destino.Escribe(nombre, bytes);
}

/// Opens what a crash left, and expects the database as it was before or after the commit that was
/// being made. \returns the changes that the opening made
std::vector<Operacion> EsperaEntera(const Carpeta& carpeta, std::size_t confirmados)
{
    const Historia& historia = LaHistoria();
    CarpetaDePrueba sitio;
    PonEn(sitio, carpeta);
    DiscoDePrueba disco;
    {
        TransaccionPaginas paginas(sitio.Ruta(NombreBase), {.disco = &disco});
        LecturaDePaginas lectura(paginas);
    }
    const QByteArray hallada = SinMarcas(sitio.Lee(NombreBase));
    const std::size_t siguiente = std::min(confirmados + 1, historia.estados.size() - 1);
    EXPECT_TRUE(hallada == SinMarcas(historia.estados[confirmados]) ||
                hallada == SinMarcas(historia.estados[siguiente]))
        << "neither before nor after commit " << siguiente;
    EXPECT_FALSE(sitio.Existe(NombreDiario));
    EXPECT_FALSE(sitio.Existe(NombreDiario + ".ajeno"));
    return disco.operaciones;
}

/// What reaches the disk of a write that was cut off: its first pages, and a half of the next.
Operacion Rota(const Operacion& entera, qsizetype paginas, bool primeraMitad)
{
    Operacion rota = entera;
    const qsizetype trozo = std::min(TamPagina, entera.bytes.size() - paginas * TamPagina);
    if (primeraMitad) {
        rota.bytes = entera.bytes.left(paginas * TamPagina + trozo / 2);
    } else {
        rota.posicion += paginas * TamPagina + trozo / 2;
        rota.bytes = entera.bytes.mid(paginas * TamPagina + trozo / 2);
    }
    return rota;
}

TEST(CaidaDeLaMaquina, TrasCualquierEscrituraLaBaseEstaComoAntesOComoDespues)
{
    const Historia& historia = LaHistoria();
    ASSERT_EQ(historia.estados.size(), 5U);

    for (std::size_t k = 0; k <= historia.operaciones.size(); ++k) {
        SCOPED_TRACE(k);
        EsperaEntera(Tras(historia, k), ConfirmadosEn(historia, k));
    }
}

TEST(CaidaDeLaMaquina, TambienCuandoVuelveACaerMientrasSeRepone)
{
    const Historia& historia = LaHistoria();
    std::size_t reposiciones = 0;

    for (std::size_t k = 0; k <= historia.operaciones.size(); ++k) {
        const Carpeta caida = Tras(historia, k);
        if (!caida.contains(NombreDiario))
            continue;
        const std::vector<Operacion> repuesta = EsperaEntera(caida, ConfirmadosEn(historia, k));
        Carpeta otra = caida;
        for (const Operacion& operacion : repuesta) {
            SCOPED_TRACE(k);
            Aplica(otra, operacion);
            EsperaEntera(otra, ConfirmadosEn(historia, k));
            ++reposiciones;
        }
    }
    EXPECT_GT(reposiciones, 100U);
}

TEST(CaidaDeLaMaquina, UnaPaginaEscritaAMediasSeRepone)
{
    const Historia& historia = LaHistoria();
    std::size_t rotas = 0;

    for (std::size_t k = 0; k < historia.operaciones.size(); ++k) {
        const Operacion& operacion = historia.operaciones[k];
        if (operacion.tipo != Tipo::Escribe)
            continue;
        for (qsizetype pagina = 0; pagina * TamPagina < operacion.bytes.size(); ++pagina) {
            for (const bool primeraMitad : {true, false}) {
                SCOPED_TRACE(k);
                Carpeta carpeta = Tras(historia, k);
                Aplica(carpeta, Rota(operacion, pagina, primeraMitad));
                EsperaEntera(carpeta, ConfirmadosEn(historia, k));
                ++rotas;
            }
        }
    }
    EXPECT_GT(rotas, 60U);
}

/// What is on the disk after a power failure: what was waited for, and by chance some of the rest.
/// Names are made and taken away in their order.
Carpeta TrasUnApagon(const Historia& historia, std::size_t operaciones, std::mt19937& azar)
{
    const auto ultima = [&](Tipo tipo, const QString& fichero) {
        std::size_t cual = 0;
        for (std::size_t i = 0; i < operaciones; ++i)
            if (historia.operaciones[i].tipo == tipo &&
                (tipo == Tipo::SincronizaCarpeta || historia.operaciones[i].fichero == fichero))
                cual = i;
        return cual;
    };
    const std::size_t nombresSeguros = ultima(Tipo::SincronizaCarpeta, {});
    bool sigueConNombres = true;
    std::set<QString> perdidos;
    Carpeta carpeta = historia.principio;
    for (std::size_t i = 0; i < operaciones; ++i) {
        const Operacion& operacion = historia.operaciones[i];
        const bool suerte = (azar() & 1) != 0;
        if (operacion.tipo == Tipo::Crea || operacion.tipo == Tipo::Borra) {
            sigueConNombres = sigueConNombres && (i < nombresSeguros || suerte);
            if (sigueConNombres) {
                perdidos.erase(operacion.fichero);
                Aplica(carpeta, operacion);
            } else if (operacion.tipo == Tipo::Crea && !carpeta.contains(operacion.fichero)) {
                perdidos.insert(operacion.fichero);
            }
            continue;
        }
        if (perdidos.contains(operacion.fichero))
            continue;
        if (i < ultima(Tipo::Sincroniza, operacion.fichero) || suerte)
            Aplica(carpeta, operacion);
    }
    return carpeta;
}

TEST(CaidaDeLaMaquina, UnApagonPierdeLoQueNoSeEsperoYLaBaseQuedaEntera)
{
    const Historia& historia = LaHistoria();
    std::mt19937 azar(20240511);

    for (std::size_t k = 0; k <= historia.operaciones.size(); ++k) {
        for (int vez = 0; vez < 8; ++vez) {
            SCOPED_TRACE(k);
            EsperaEntera(TrasUnApagon(historia, k, azar), ConfirmadosEn(historia, k));
        }
    }
}

QByteArray SalidaDe(const QString& programa, const QStringList& argumentos)
{
    QProcess proceso;
    proceso.start(programa, argumentos);
    EXPECT_TRUE(proceso.waitForFinished()) << programa.toStdString();
    EXPECT_EQ(proceso.exitStatus(), QProcess::NormalExit) << programa.toStdString();
    EXPECT_EQ(proceso.exitCode(), 0) << programa.toStdString();
    return proceso.readAllStandardOutput();
}

TEST(CaidaDeLaMaquina, OtroLectorLeeLasDemasTablasAunqueNadieRepongaNada)
{
    const Historia& historia = LaHistoria();
    const QString original = RutaMuestra("2003-indices.mdb");
    const QByteArray tablas = SalidaDe("mdb-tables", {"-1", original});
    const QByteArray filas = SalidaDe("mdb-export", {original, "Table2"});
    ASSERT_FALSE(filas.isEmpty());
    CarpetaDePrueba sitio;

    for (std::size_t k = 0; k <= historia.operaciones.size(); ++k) {
        SCOPED_TRACE(k);
        const QByteArray bytes = Tras(historia, k).at(NombreBase);
        sitio.Escribe(NombreBase, bytes);
        EXPECT_EQ(bytes.size() % TamPagina, 0);
        EXPECT_EQ(SalidaDe("mdb-tables", {"-1", sitio.Ruta(NombreBase)}), tablas);
        EXPECT_EQ(SalidaDe("mdb-export", {sitio.Ruta(NombreBase), "Table2"}), filas);
    }
}

TEST(CaidaDeLaMaquina, MientrasSeEscribeLaMarcaEsCeroYDespuesLaSiguiente)
{
    const Historia& historia = LaHistoria();
    std::vector<QByteArray> marcas;
    for (const Operacion& operacion : historia.operaciones)
        if (operacion.fichero == NombreBase && operacion.posicion < TamPagina &&
            operacion.tipo == Tipo::Escribe) {
            EXPECT_EQ(operacion.posicion, 0xE02);
            marcas.push_back(operacion.bytes.toHex());
        }

    // It was 01FD in the sample.
    EXPECT_EQ(marcas, (std::vector<QByteArray>{"0000", "fe01", "0000", "ff01", "0000", "0002",
                                               "0000", "0102"}));
}

/// The folder as it is while the second commit is writing, with a journal that is whole.
Carpeta CaidaConDiario()
{
    const Historia& historia = LaHistoria();
    for (std::size_t k = historia.finales[1]; k < historia.finales[2]; ++k)
        if (historia.operaciones[k].fichero == NombreBase &&
            historia.operaciones[k].posicion > TamPagina)
            return Tras(historia, k + 1);
    return {};
}

TEST(DiarioDeBase, UnoCortadoSeTira)
{
    const Carpeta caida = CaidaConDiario();
    const qsizetype largo = caida.at(NombreDiario).size();
    for (const qsizetype queda :
         {qsizetype{0}, qsizetype{10}, qsizetype{100}, largo / 2, largo - 4096, largo - 1}) {
        SCOPED_TRACE(queda);
        CarpetaDePrueba sitio;
        PonEn(sitio, caida);
        sitio.Escribe(NombreDiario, caida.at(NombreDiario).left(queda));

        TransaccionPaginas paginas(sitio.Ruta(NombreBase));

        EXPECT_FALSE(sitio.Existe(NombreDiario));
        EXPECT_EQ(sitio.Lee(NombreBase), caida.at(NombreBase));
    }
}

TEST(DiarioDeBase, UnoConUnByteDistintoSeTira)
{
    const Carpeta caida = CaidaConDiario();
    const qsizetype largo = caida.at(NombreDiario).size();
    for (qsizetype cual = 0; cual < largo; cual += 397) {
        SCOPED_TRACE(cual);
        CarpetaDePrueba sitio;
        PonEn(sitio, caida);
        QByteArray diario = caida.at(NombreDiario);
        diario[cual] = static_cast<char>(diario[cual] ^ 0x40);
        sitio.Escribe(NombreDiario, diario);

        TransaccionPaginas paginas(sitio.Ruta(NombreBase));

        EXPECT_FALSE(sitio.Existe(NombreDiario));
        EXPECT_EQ(sitio.Lee(NombreBase), caida.at(NombreBase));
    }
}

TEST(DiarioDeBase, NoSeReponeEnUnaBaseEnLaQueOtroHaEscritoDespues)
{
    const Carpeta caida = CaidaConDiario();
    CarpetaDePrueba sitio;
    PonEn(sitio, caida);
    QByteArray base = caida.at(NombreBase);
    base[0xE00] = static_cast<char>(base[0xE00] + 1);
    sitio.Escribe(NombreBase, base);

    TransaccionPaginas paginas(sitio.Ruta(NombreBase));

    EXPECT_EQ(sitio.Lee(NombreBase), base);
    EXPECT_FALSE(sitio.Existe(NombreDiario));
    EXPECT_EQ(sitio.Lee(NombreDiario + ".ajeno"), caida.at(NombreDiario));
}

TEST(DiarioDeBase, NoSeReponeEnUnaCopiaAnterior)
{
    CarpetaDePrueba sitio;
    PonEn(sitio, CaidaConDiario());
    const QByteArray copia = LaHistoria().estados[0];
    sitio.Escribe(NombreBase, copia);

    TransaccionPaginas paginas(sitio.Ruta(NombreBase));

    EXPECT_EQ(sitio.Lee(NombreBase), copia);
    EXPECT_TRUE(sitio.Existe(NombreDiario + ".ajeno"));
}

TEST(DiarioDeBase, MientrasOtroProgramaTieneLaBaseNoSeReponeNiSeLee)
{
    const Carpeta caida = CaidaConDiario();
    CarpetaDePrueba sitio;
    PonEn(sitio, caida);
    sitio.Escribe("prueba.ldb", QByteArray("CAJA1").leftJustified(32, '\0') +
                                    QByteArray("Admin").leftJustified(32, '\0'));
    auto ldb = DiscoDelSistema().Abre(sitio.Ruta("prueba.ldb"), Uso::LeerYEscribir);
    ASSERT_TRUE(ldb->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));

    try {
        TransaccionPaginas paginas(sitio.Ruta(NombreBase));
        FAIL() << "half a commit is read";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::EnUso);
        EXPECT_THAT(error.Descripcion().toStdString(), HasSubstr("equipo CAJA1"));
    }
    EXPECT_EQ(sitio.Lee(NombreBase), caida.at(NombreBase));

    ldb.reset();
    TransaccionPaginas paginas(sitio.Ruta(NombreBase));
    EXPECT_EQ(SinMarcas(sitio.Lee(NombreBase)), SinMarcas(LaHistoria().estados[1]));
}

TEST(DiarioDeBase, QuienYaLaTieneAbiertaReponeLoQueOtroDejoAMedias)
{
    const Historia& historia = LaHistoria();
    CarpetaDePrueba sitio;
    sitio.Escribe(NombreBase, historia.estados[1]);
    TransaccionPaginas paginas(sitio.Ruta(NombreBase));

    const Carpeta caida = CaidaConDiario();
    sitio.Escribe(NombreDiario, caida.at(NombreDiario));
    sitio.Escribe(NombreBase, caida.at(NombreBase));
    LecturaDePaginas lectura(paginas);

    EXPECT_TRUE(lectura.Cambiadas());
    EXPECT_EQ(SinMarcas(sitio.Lee(NombreBase)), SinMarcas(historia.estados[1]));
    EXPECT_EQ(paginas.Cuantas(), 75U);
}

/// A commit of replaced and new pages over a disk that refuses one change.
class FalloDeEscritura : public testing::Test {
  protected:
    FalloDeEscritura() : suyas_(PaginasDeTable1(base_)) {}

    void Cambia(TransaccionPaginas& paginas)
    {
        paginas.Empieza();
        for (const quint32 numero : suyas_)
            Rellena(paginas, numero, 0x55);
        Rellena(paginas, paginas.Alarga(), 0x55);
        Rellena(paginas, paginas.Alarga(), 0x55);
    }
    bool Confirma(TransaccionPaginas& paginas)
    {
        try {
            paginas.Confirma();
            return true;
        } catch (const ErrorMdb& error) {
            EXPECT_EQ(error.motivo(), Motivo::NoSeEscribe);
            return false;
        }
    }
    void Restablece() const
    {
        for (const QString& nombre : QDir(base_.carpeta.Ruta()).entryList(QDir::Files))
            QFile::remove(base_.carpeta.Ruta(nombre));
        base_.carpeta.Escribe(NombreBase, original_);
    }

    BaseDeTransaccion base_{};
    QByteArray original_ = base_.Bytes();
    std::vector<quint32> suyas_;
};

TEST_F(FalloDeEscritura, UnaVezDejaLaBaseComoEstabaYSePuedeRepetir)
{
    std::size_t fallos = 0;
    for (std::size_t k = 0;; ++k) {
        SCOPED_TRACE(k);
        Restablece();
        DiscoDePrueba disco;
        TransaccionPaginas paginas(base_.ruta, {.disco = &disco});
        Cambia(paginas);
        const std::size_t antes = disco.operaciones.size();
        disco.FallaEn(antes + k, false);
        if (!Confirma(paginas)) {
            ++fallos;
            EXPECT_EQ(SinMarcas(base_.Bytes()), SinMarcas(original_));
            EXPECT_FALSE(base_.carpeta.Existe(NombreDiario));
            EXPECT_TRUE(paginas.Abierta());
            paginas.Confirma();
        }
        EXPECT_EQ(RellenoDe(paginas, suyas_[0]), 0x55);
        EXPECT_EQ(base_.Bytes().size(), original_.size() + 2 * TamPagina);
        TransaccionPaginas otra(base_.ruta);
        for (const quint32 numero : suyas_)
            EXPECT_EQ(RellenoDe(otra, numero), 0x55);
        if (disco.operaciones.size() < antes + k)
            break;
    }
    EXPECT_GT(fallos, 6U);
}

TEST_F(FalloDeEscritura, ParaSiempreNoPierdeNadaDeLoQueHabia)
{
    for (std::size_t k = 0;; ++k) {
        SCOPED_TRACE(k);
        Restablece();
        DiscoDePrueba disco;
        {
            TransaccionPaginas paginas(base_.ruta, {.disco = &disco});
            Cambia(paginas);
            const std::size_t antes = disco.operaciones.size();
            disco.FallaEn(antes + k, true);
            const bool confirmada = Confirma(paginas);
            if (!confirmada)
                paginas.Deshace();
            disco.Arregla();
            LecturaDePaginas lectura(paginas);
            EXPECT_EQ(RellenoDe(paginas, suyas_[0]) == 0x55, confirmada);
            if (disco.operaciones.size() < antes + k)
                break;
            if (confirmada)
                continue;
        }
        TransaccionPaginas otra(base_.ruta);
        EXPECT_EQ(SinMarcas(base_.Bytes()), SinMarcas(original_));
    }
}

} // namespace
