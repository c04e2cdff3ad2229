#include "apoyo/carpeta.h"
#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/muestras.h"
#include <QProcess>
#include <gtest/gtest.h>

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
