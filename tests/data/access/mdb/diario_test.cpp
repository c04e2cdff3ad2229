#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/diario.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/gestion_abierta.h"
#include "data/access/mdb/historia_de_prueba.h"
#include "data/access/mdb/tabla_escribible.h"
#include <QProcess>
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using namespace std::chrono_literals;
using testing::HasSubstr;
using Tipo = Operacion::Tipo;

namespace {

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

/// Pages that are filled without any sense.
Historia HistoriaDePaginas()
{
    static const std::vector<quint32> suyas = PaginasDeTable1(BaseDeTransaccion());
    return HazHistoria({[](const auto& paginas) { Rellena(*paginas, suyas.at(0), 0x11); },
                        [](const auto& paginas) {
                            for (const quint32 numero : suyas)
                                Rellena(*paginas, numero, 0x22);
                            for (int i = 0; i < 3; ++i)
                                Rellena(*paginas, paginas->Alarga(), 0x22);
                        },
                        [](const auto& paginas) { Rellena(*paginas, paginas->Alarga(), 0x33); },
                        [](const auto& paginas) {
                            Rellena(*paginas, suyas.at(1), 0x44);
                            Rellena(*paginas, paginas->Cuantas() - 1, 0x44);
                        }});
}

TablaEscribible Table3(const std::shared_ptr<TransaccionPaginas>& paginas)
{
    return {paginas, Base(paginas).AbreTabla(QStringLiteral("Table3"))};
}

/// Rows that come, change and go.
Historia HistoriaDeFilas()
{
    constexpr qint64 Muchas = 500;
    static std::vector<Puntero> filas;
    filas.clear();
    const auto inserta = [](TablaEscribible& tabla, qint64 id) {
        const std::vector<Dato> valores = {id, QStringLiteral("fila %1").arg(id)};
        filas.push_back(tabla.Inserta(valores));
    };
    return HazHistoria({[=](const auto& paginas) {
                            TablaEscribible tabla = Table3(paginas);
                            inserta(tabla, 1000);
                        },
                        [=](const auto& paginas) {
                            TablaEscribible tabla = Table3(paginas);
                            for (qint64 id = 2000; id < 2000 + Muchas; ++id)
                                inserta(tabla, id);
                        },
                        [=](const auto& paginas) {
                            TablaEscribible tabla = Table3(paginas);
                            const TablaEscribible::Cambio cambio{.columna = 1,
                                                                 .valor = QString(50, u'x')};
                            for (std::size_t i = 0; i < filas.size(); i += 3)
                                EXPECT_TRUE(tabla.Actualiza(filas[i], std::span(&cambio, 1)));
                        },
                        [=](const auto& paginas) {
                            TablaEscribible tabla = Table3(paginas);
                            for (std::size_t i = 0; i < filas.size(); i += 2)
                                EXPECT_TRUE(tabla.Borra(filas[i]));
                        }});
}

const Historia& LaHistoria()
{
    static const Historia historia = HistoriaDePaginas();
    return historia;
}

const Historia& LaHistoriaDeFilas()
{
    static const Historia historia = HistoriaDeFilas();
    return historia;
}

class CaidaDeLaMaquina : public testing::TestWithParam<const Historia& (*)()> {
  protected:
    const Historia& historia_ = GetParam()();
};

INSTANTIATE_TEST_SUITE_P(Historias, CaidaDeLaMaquina,
                         testing::Values(&LaHistoria, &LaHistoriaDeFilas),
                         [](const auto& caso) { return caso.index == 0 ? "Paginas" : "Filas"; });

TEST_P(CaidaDeLaMaquina, TrasCualquierEscrituraLaBaseEstaComoAntesOComoDespues)
{
    ASSERT_EQ(historia_.estados.size(), 5U);

    for (std::size_t k = 0; k <= historia_.operaciones.size(); ++k) {
        SCOPED_TRACE(k);
        EsperaEntera(historia_, Tras(historia_, k), ConfirmadosEn(historia_, k));
    }
}

TEST_P(CaidaDeLaMaquina, TambienCuandoVuelveACaerMientrasSeRepone)
{
    std::size_t reposiciones = 0;

    for (std::size_t k = 0; k <= historia_.operaciones.size(); ++k) {
        const Carpeta caida = Tras(historia_, k);
        if (!caida.contains(NombreDiario))
            continue;
        const std::vector<Operacion> repuesta =
            EsperaEntera(historia_, caida, ConfirmadosEn(historia_, k));
        Carpeta otra = caida;
        for (const Operacion& operacion : repuesta) {
            SCOPED_TRACE(k);
            Aplica(otra, operacion);
            EsperaEntera(historia_, otra, ConfirmadosEn(historia_, k));
            ++reposiciones;
        }
    }
    EXPECT_GT(reposiciones, 100U);
}

TEST_P(CaidaDeLaMaquina, UnaPaginaEscritaAMediasSeRepone)
{
    std::size_t rotas = 0;

    for (std::size_t k = 0; k < historia_.operaciones.size(); ++k) {
        const Operacion& operacion = historia_.operaciones[k];
        // A mark of change lies in one sector, which a device writes whole or not at all.
        if (operacion.tipo != Tipo::Escribe || operacion.bytes.size() == 2)
            continue;
        for (qsizetype pagina = 0; pagina * TamPagina < operacion.bytes.size(); ++pagina) {
            for (const bool primeraMitad : {true, false}) {
                SCOPED_TRACE(k);
                Carpeta carpeta = Tras(historia_, k);
                Aplica(carpeta, Rota(operacion, pagina, primeraMitad));
                EsperaEntera(historia_, carpeta, ConfirmadosEn(historia_, k));
                ++rotas;
            }
        }
    }
    EXPECT_GT(rotas, 60U);
}

TEST_P(CaidaDeLaMaquina, UnApagonPierdeLoQueNoSeEsperoYLaBaseQuedaEntera)
{
    std::mt19937 azar(20240511);

    for (std::size_t k = 0; k <= historia_.operaciones.size(); ++k) {
        for (int vez = 0; vez < 8; ++vez) {
            SCOPED_TRACE(k);
            EsperaEntera(historia_, TrasUnApagon(historia_, k, azar), ConfirmadosEn(historia_, k));
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

TEST_P(CaidaDeLaMaquina, OtroLectorLeeLasDemasTablasAunqueNadieRepongaNada)
{
    const QString original = RutaMuestra("2003-indices.mdb");
    const QByteArray tablas = SalidaDe("mdb-tables", {"-1", original});
    const QByteArray filas = SalidaDe("mdb-export", {original, "Table2"});
    ASSERT_EQ(filas, QByteArray("id,data\n0,\"foo0\"\n1,\"foo1\"\n2,\"foo2\"\n"));
    CarpetaDePrueba sitio;

    for (std::size_t k = 0; k <= historia_.operaciones.size(); ++k) {
        SCOPED_TRACE(k);
        const QByteArray bytes = Tras(historia_, k).at(NombreBase);
        sitio.Escribe(NombreBase, bytes);
        EXPECT_EQ(bytes.size() % TamPagina, 0);
        EXPECT_EQ(SalidaDe("mdb-tables", {"-1", sitio.Ruta(NombreBase)}), tablas);
        EXPECT_EQ(SalidaDe("mdb-export", {sitio.Ruta(NombreBase), "Table2"}), filas);
    }
}

TEST(HistoriaDeFilas, TrasCadaConfirmacionLaBaseEstaSana)
{
    const Historia& historia = LaHistoriaDeFilas();
    ASSERT_EQ(historia.estados.size(), 5U);
    std::vector<quint64> filas;

    for (const QByteArray& estado : historia.estados) {
        const Base base(PaginasDe(estado));
        const Informe informe = Comprueba(base);
        EXPECT_TRUE(informe.Sano());
        for (const EstadoTabla& tabla : informe.tablas)
            if (tabla.nombre == "Table3")
                filas.push_back(tabla.filas);
    }

    // Of 501 rows every second one goes, the first one too.
    EXPECT_EQ(filas, (std::vector<quint64>{4, 5, 505, 505, 254}));
}

TEST(MarcaDeCambio, MientrasSeEscribeLaMarcaEsCeroYDespuesLaSiguiente)
{
    const Historia& historia = LaHistoria();
    std::vector<QByteArray> marcas;
    for (const Operacion& operacion : historia.operaciones)
        if (operacion.fichero == NombreBase && operacion.posicion < TamPagina &&
            operacion.tipo == Tipo::Escribe) {
            EXPECT_EQ(operacion.posicion, 0xFFE);
            marcas.push_back(operacion.bytes.toHex());
        }

    // It was 0100 in the sample.
    EXPECT_EQ(marcas, (std::vector<QByteArray>{"0000", "0101", "0000", "0201", "0000", "0301",
                                               "0000", "0401"}));
}

Carpeta CaidaConDiario()
{
    return CaidaEn(LaHistoria(), 2);
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
    // The one who has it for himself, and the first one of several.
    for (const qsizetype marca : {0xE00, 0xE02}) {
        SCOPED_TRACE(marca);
        const Carpeta caida = CaidaConDiario();
        CarpetaDePrueba sitio;
        PonEn(sitio, caida);
        QByteArray base = caida.at(NombreBase);
        base[marca] = static_cast<char>(base[marca] + 1);
        sitio.Escribe(NombreBase, base);

        TransaccionPaginas paginas(sitio.Ruta(NombreBase));

        EXPECT_EQ(sitio.Lee(NombreBase), base);
        EXPECT_FALSE(sitio.Existe(NombreDiario));
        EXPECT_EQ(sitio.Lee(NombreDiario + ".ajeno"), caida.at(NombreDiario));
    }
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

TEST(DiarioDeBase, ElSegundoQueNoEsSuyoNoPisaAlPrimero)
{
    CarpetaDePrueba sitio;
    Carpeta caida = CaidaConDiario();
    for (const char* aparte : {".ajeno", ".ajeno2", ".ajeno3"}) {
        PonEn(sitio, caida);
        // Another one has written since.
        QByteArray base = caida.at(NombreBase);
        base[0xE00] = static_cast<char>(base[0xE00] + 1);
        sitio.Escribe(NombreBase, base);

        TransaccionPaginas paginas(sitio.Ruta(NombreBase));

        EXPECT_EQ(sitio.Lee(NombreDiario + aparte), caida.at(NombreDiario));
        EXPECT_FALSE(sitio.Existe(NombreDiario));
        caida[NombreDiario + aparte] = caida.at(NombreDiario);
    }
    EXPECT_EQ(
        DiariosAjenos(sitio.Ruta(NombreBase)),
        QStringList({sitio.Ruta(NombreDiario + ".ajeno"), sitio.Ruta(NombreDiario + ".ajeno2"),
                     sitio.Ruta(NombreDiario + ".ajeno3")}));
}

/// The folder of a company whose program was killed while it saved.
class GuardadoInterrumpido : public testing::Test {
  protected:
    GuardadoInterrumpido() { sitio_.Escribe(NombreBase, LaHistoria().estados[1]); }

    void Cae() const { PonEn(sitio_, caida_); }
    std::string ErrorDe(Motivo motivo, const std::function<void()>& tarea) const
    {
        try {
            tarea();
        } catch (const ErrorMdb& error) {
            EXPECT_EQ(error.motivo(), motivo);
            EXPECT_EQ(sitio_.Lee(NombreBase), caida_.at(NombreBase));
            return error.Descripcion().toStdString();
        }
        ADD_FAILURE() << "half a commit is read";
        return {};
    }
    std::string ErrorAlAbrir(Motivo motivo, Disco* disco = nullptr) const
    {
        return ErrorDe(motivo, [&] { TransaccionPaginas(ruta_, {.espera = 0ms, .disco = disco}); });
    }
    std::string EsteFichero() const { return " (fichero " + ruta_.toStdString() + ")"; }
    void EsperaRepuesta() const
    {
        EXPECT_EQ(SinMarcas(sitio_.Lee(NombreBase)), SinMarcas(LaHistoria().estados[1]));
        EXPECT_FALSE(sitio_.Existe(NombreDiario));
    }

    CarpetaDePrueba sitio_{};
    const QString ruta_ = sitio_.Ruta(NombreBase);
    const Carpeta caida_ = CaidaConDiario();
};

TEST_F(GuardadoInterrumpido, MientrasOtroProgramaTieneLaBaseNoSeReponeNiSeLee)
{
    TransaccionPaginas yaAbierta(ruta_, {.espera = 0ms});
    Cae();
    sitio_.Escribe("prueba.ldb", EntradaDeUsuario("CAJA1", "Admin"));
    auto ldb = DiscoDelSistema().Abre(sitio_.Ruta("prueba.ldb"), Uso::LeerYEscribir);
    ASSERT_TRUE(ldb->Bloquea(0x10000001, 1, Cerrojo::Exclusivo));
    const std::string frase =
        "Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. Ahora no se puede deshacer, porque está abierto en otro programa (equipo CAJA1, usuario Admin): cierre ese programa y repita la operación" +
        EsteFichero();

    EXPECT_EQ(ErrorAlAbrir(Motivo::EnUso), frase);
    for (int vez = 0; vez < 2; ++vez)
        EXPECT_EQ(ErrorDe(Motivo::EnUso, [&] { yaAbierta.EmpiezaLectura(); }), frase) << vez;
    EXPECT_EQ(ErrorDe(Motivo::EnUso, [&] { yaAbierta.Empieza(); }), frase);

    ldb.reset();
    const LecturaDePaginas lectura(yaAbierta);
    EsperaRepuesta();
}

TEST_F(GuardadoInterrumpido, QuienNoPuedeEscribirNoLaLee)
{
    DiscoDePrueba disco;
    disco.soloLectura = true;
    TransaccionPaginas yaAbierta(ruta_, {.disco = &disco});
    Cae();
    const std::string frase =
        "Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. No hay permiso para escribir en él: ábralo una vez con un usuario que pueda escribir" +
        EsteFichero();

    EXPECT_EQ(ErrorAlAbrir(Motivo::NoSeEscribe, &disco), frase);
    for (int vez = 0; vez < 2; ++vez)
        EXPECT_EQ(ErrorDe(Motivo::NoSeEscribe, [&] { yaAbierta.EmpiezaLectura(); }), frase) << vez;

    TransaccionPaginas deQuienPuede(ruta_);
    const LecturaDePaginas lectura(yaAbierta);
    EsperaRepuesta();
}

TEST_F(GuardadoInterrumpido, UnoCortadoNoImpideLeerAQuienNoPuedeEscribir)
{
    Cae();
    sitio_.Escribe(NombreDiario, caida_.at(NombreDiario).left(1000));
    DiscoDePrueba disco;
    disco.soloLectura = true;

    TransaccionPaginas paginas(ruta_, {.disco = &disco});
    const LecturaDePaginas lectura(paginas);

    EXPECT_EQ(paginas.Cuantas(), caida_.at(NombreBase).size() / TamPagina);
}

TEST_F(GuardadoInterrumpido, SiNoSePuedeDeshacerSeDicePorQue)
{
    Cae();
    DiscoDePrueba disco;
    disco.FallaEn(0, true);

    EXPECT_EQ(
        ErrorAlAbrir(Motivo::NoSeEscribe, &disco),
        "Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. No se ha podido deshacer: No se puede escribir: No queda sitio en el disco (fichero prueba.ldb)");

    disco.Arregla();
    TransaccionPaginas paginas(ruta_, {.disco = &disco});
    EsperaRepuesta();
}

TEST_F(GuardadoInterrumpido, ElDeQuienSigueEscribiendoNoEsUnoDeEsos)
{
    Cae();
    const auto fichero = DiscoDelSistema().Abre(ruta_, Uso::LeerYEscribir);
    Candado suyo(DiscoDelSistema(), *fichero, ruta_, 0ms);
    suyo.EntraAEscribir();
    suyo.CierraALectores();
    DiscoDePrueba disco;
    disco.soloLectura = true;

    EXPECT_THAT(ErrorAlAbrir(Motivo::EnUso), HasSubstr("Otra ventana o proceso de este programa"));
    EXPECT_THAT(ErrorAlAbrir(Motivo::EnUso, &disco),
                HasSubstr("Otra ventana o proceso de este programa"));
    EXPECT_TRUE(sitio_.Existe(NombreDiario));
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
