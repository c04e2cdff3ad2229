#include "apoyo/carpeta.h"
#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/gestion_abierta.h"
#include "data/access/mdb/historia_de_prueba.h"
#include <QProcess>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

using namespace tolmo::data::access::mdb;

namespace {

struct Resultado {
    int codigo = -1;
    QString salida{};
    QString errores{};
};

Resultado Ejecuta(const QStringList& argumentos)
{
    QProcess proceso;
    proceso.start(KOV_CONSTRUCCION "/kovtolmo-mdb", argumentos);
    if (!proceso.waitForFinished(60'000))
        ADD_FAILURE() << "it doesn't end";
    return {proceso.exitCode(), QString::fromUtf8(proceso.readAllStandardOutput()),
            QString::fromUtf8(proceso.readAllStandardError())};
}

TEST(ProgramaMdb, DiceLasTablas)
{
    const Resultado resultado = Ejecuta({"tablas", RutaMuestra("2003-saved-queries.mdb")});

    EXPECT_EQ(resultado.codigo, 0);
    EXPECT_EQ(resultado.salida, "Table1\ttabla\nTable2\ttabla\nTable3\ttabla\n"
                                "AppendQuery\tconsulta\nCrosstabQuery\tconsulta\n"
                                "DataDefinitionQuery\tconsulta\nDeleteQuery\tconsulta\n"
                                "MakeTableQuery\tconsulta\nPassthroughQuery\tconsulta\n"
                                "SelectQuery\tconsulta\nUnionQuery\tconsulta\n"
                                "UpdateQuery\tconsulta\n");
}

TEST(ProgramaMdb, ExportaUnaTabla)
{
    const Resultado resultado = Ejecuta({"exporta", RutaMuestra("97-types.mdb"), "table1"});

    EXPECT_EQ(resultado.codigo, 0);
    EXPECT_EQ(resultado.salida,
              "A,B,C,D,E,F,G,H,I\r\n"
              "a,b,0,0,0,0,1981-12-12 00:00:00,0,0\r\n"
              "abcdefg,hijklmnop,2,222,333333333,444.555,1974-09-21 00:00:00,3.5,-1\r\n");
}

TEST(ProgramaMdb, CompruebaUnFicheroSano)
{
    const Resultado resultado = Ejecuta({"comprueba", RutaMuestra("97-types.mdb")});

    EXPECT_EQ(resultado.codigo, 0);
    EXPECT_TRUE(resultado.salida.startsWith("Access 97\nMSysObjects: 22 filas\n"));
    EXPECT_TRUE(resultado.salida.contains("  Id: 22 entradas, bien\n"));
    EXPECT_TRUE(resultado.salida.contains(
        "  ParentIdName: 22 entradas, bien (claves sin comprobar: su orden no se conoce)\n"));
    EXPECT_TRUE(resultado.salida.endsWith("Todo está bien\n"));
}

TEST(ProgramaMdb, UnaSolaFilaNoVaEnPlural)
{
    const Resultado resultado = Ejecuta({"comprueba", RutaMuestra("2003-numeric.mdb")});

    EXPECT_TRUE(resultado.salida.contains("\ntest: 1 fila\n")) << resultado.salida.toStdString();
}

TEST(ProgramaMdb, ConUnFicheroDanadoAcabaConEstado1)
{
    QByteArray bytes = BytesDeMuestra("2000-composite-index.mdb");
    bytes[32 * 4096 + 16] = 0;
    const CarpetaDePrueba carpeta;
    carpeta.Escribe("rota.mdb", bytes);

    const Resultado resultado = Ejecuta({"comprueba", carpeta.Ruta("rota.mdb")});

    EXPECT_EQ(resultado.codigo, 1);
    EXPECT_TRUE(
        resultado.salida.contains("  CD_AGENTE: 510 entradas, mal\n"
                                  "    FALTA: página 32: no enlaza con las hojas vecinas\n"))
        << resultado.salida.toStdString();
    EXPECT_TRUE(resultado.salida.endsWith("La base de datos está dañada\n"));
}

TEST(ProgramaMdb, UnErrorVaALaSalidaDeErrores)
{
    const Resultado resultado = Ejecuta({"exporta", RutaMuestra("97-types.mdb"), "Nada"});

    EXPECT_EQ(resultado.codigo, 1);
    EXPECT_EQ(resultado.salida, "");
    EXPECT_EQ(resultado.errores,
              "La tabla no existe (fichero " + RutaMuestra("97-types.mdb") + ", tabla Nada)\n");
}

TEST(ProgramaMdb, LaContrasenaNoSaleEnNingunError)
{
    BaseFabricada base;
    base.Contrasena("Gràcies7");
    const CarpetaDePrueba carpeta;
    carpeta.Escribe("cerrada.mdb", base.Termina());

    const Resultado resultado = Ejecuta({"tablas", carpeta.Ruta("cerrada.mdb")});

    EXPECT_EQ(resultado.codigo, 1);
    EXPECT_EQ(resultado.errores, "La base de datos está protegida por una contraseña (fichero " +
                                     carpeta.Ruta("cerrada.mdb") + ")\n");
}

/// A commit that leaves no page as it was.
Historia UnCambio()
{
    return HazHistoria({[](const auto& paginas) {
        for (quint32 numero = 10; numero < paginas->Cuantas(); ++numero)
            Rellena(*paginas, numero, 0x11);
    }});
}

class ProgramaMdbConDiario : public testing::Test {
  protected:
    ProgramaMdbConDiario() { PonEn(sitio_, CaidaEn(historia_, 1)); }

    const Historia historia_ = UnCambio();
    CarpetaDePrueba sitio_{};
    const QString ruta_ = sitio_.Ruta(NombreBase);
};

TEST_F(ProgramaMdbConDiario, UnGuardadoInterrumpidoSeDeshaceYSeDice)
{
    ASSERT_TRUE(sitio_.Existe(NombreDiario));
    ASSERT_NE(SinMarcas(sitio_.Lee(NombreBase)), SinMarcas(historia_.estados[0]));

    const Resultado resultado = Ejecuta({"comprueba", ruta_});

    EXPECT_EQ(resultado.codigo, 0);
    EXPECT_TRUE(resultado.salida.endsWith("Todo está bien\n")) << resultado.salida.toStdString();
    EXPECT_EQ(
        resultado.errores,
        "Un guardado de este programa se interrumpió y se ha deshecho: el fichero está como antes de empezarlo (fichero " +
            ruta_ + ")\n");
    EXPECT_EQ(SinMarcas(sitio_.Lee(NombreBase)), SinMarcas(historia_.estados[0]));
    EXPECT_EQ(Ejecuta({"comprueba", ruta_}).errores, "");
}

TEST_F(ProgramaMdbConDiario, SiNoSePuedeDeshacerNoLoTomaPorDanado)
{
    const QByteArray aMedias = sitio_.Lee(NombreBase);
    const GestionAbierta gestion(sitio_.Ruta("prueba.ldb"));
    for (const QStringList& orden :
         {QStringList{"tablas", ruta_}, {"exporta", ruta_, "Table1"}, {"comprueba", ruta_}}) {
        const Resultado resultado = Ejecuta(orden);

        EXPECT_EQ(resultado.codigo, 1);
        EXPECT_EQ(resultado.salida, "");
        EXPECT_TRUE(resultado.errores.startsWith(
            "Un guardado de este programa se interrumpió, y el fichero no se puede leer hasta que se deshaga. Ahora no se puede deshacer, porque está abierto en otro programa (equipo CAJA2, usuario Admin): cierre ese programa"))
            << resultado.errores.toStdString();
    }
    EXPECT_EQ(sitio_.Lee(NombreBase), aMedias);
}

TEST_F(ProgramaMdbConDiario, UnoQueNoEsDelFicheroSeDiceAlComprobar)
{
    sitio_.Escribe(NombreBase, BytesDeMuestra("2003-numeric.mdb"));
    sitio_.Escribe("otra.mdb.diario.ajeno", "de otra");

    const Resultado resultado = Ejecuta({"comprueba", ruta_});

    EXPECT_EQ(resultado.codigo, 0);
    EXPECT_EQ(resultado.errores, "");
    EXPECT_TRUE(resultado.salida.endsWith(
        "\nAVISO: al lado está " + sitio_.Ruta(NombreDiario) +
        ".ajeno, de un guardado que se interrumpió y no se pudo deshacer, porque entretanto otro programa cambió el fichero o se puso en su sitio una copia. Si se puso una copia, bórrelo; si no, lo que se guardaba puede estar a medias: revíselo, o recupere la última copia\nTodo está bien\n"))
        << resultado.salida.toStdString();
    EXPECT_FALSE(resultado.salida.contains("otra.mdb"));
}

TEST_F(ProgramaMdbConDiario, AlQueEstaGuardandoLoEspera)
{
    const auto fichero = DiscoDelSistema().Abre(ruta_, Uso::LeerYEscribir);
    Candado candado(DiscoDelSistema(), *fichero, ruta_, std::chrono::milliseconds(0));
    candado.EntraAEscribir();
    candado.CierraALectores();
    QProcess proceso;
    proceso.start(KOV_CONSTRUCCION "/kovtolmo-mdb", {"comprueba", ruta_});
    EXPECT_FALSE(proceso.waitForFinished(500));

    // It has come to the end of its commit.
    sitio_.Escribe(NombreBase, historia_.estados[0]);
    QFile::remove(sitio_.Ruta(NombreDiario));
    candado.SaleDeEscribir();

    EXPECT_TRUE(proceso.waitForFinished(60'000));
    EXPECT_EQ(proceso.exitCode(), 0);
    EXPECT_EQ(proceso.readAllStandardError(), "");
}

TEST(ProgramaMdb, QuienLeeDespacioLoQueDiceNoImpideGuardar)
{
    const CarpetaDePrueba carpeta;
    carpeta.Escribe("t.mdb", BytesDeMuestra("2000-composite-index.mdb"));
    const QByteArray ruta = carpeta.Ruta("t.mdb").toLocal8Bit();
    int tubo[2];
    ASSERT_EQ(::pipe(tubo), 0);
    ASSERT_EQ(::fcntl(tubo[1], F_SETPIPE_SZ, 4096), 4096);
    OtroProceso programa([&](const auto&, const auto&) {
        ::dup2(tubo[1], STDOUT_FILENO);
        ::execl(KOV_CONSTRUCCION "/kovtolmo-mdb", "kovtolmo-mdb", "exporta", ruta.constData(),
                "Table1", nullptr);
        throw std::runtime_error("it doesn't start");
    });
    struct pollfd algo = {tubo[0], POLLIN, 0};
    ASSERT_EQ(::poll(&algo, 1, 60'000), 1);

    TransaccionPaginas paginas(carpeta.Ruta("t.mdb"), {.espera = std::chrono::milliseconds(0)});
    paginas.Empieza();
    Rellena(paginas, 1, 0x77);
    EXPECT_NO_THROW(paginas.Confirma());
    ::close(tubo[0]);
    ::close(tubo[1]);
}

TEST(ProgramaMdb, MalLlamadoDiceComoSeUsa)
{
    for (const QStringList& argumentos :
         {QStringList{}, QStringList{"tablas"}, QStringList{"otra", "a.mdb"}}) {
        const Resultado resultado = Ejecuta(argumentos);
        EXPECT_EQ(resultado.codigo, 2);
        EXPECT_TRUE(resultado.errores.startsWith("Uso: kovtolmo-mdb tablas FICHERO\n"));
    }
}

} // namespace
