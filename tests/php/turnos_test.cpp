#include "php/tienda_con_scripts.h"
#include <QElapsedTimer>
#include <QThread>
#include <functional>
#include <future>
#include <gmock/gmock.h>

// ejecuta.php beside others: another batch, visitors of the shop, a server that gives up.

namespace {
using testing::HasSubstr;

bool Espera(const std::function<bool()>& condicion)
{
    QElapsedTimer reloj;
    reloj.start();
    while (reloj.elapsed() < 10'000) {
        if (condicion())
            return true;
        QThread::msleep(10);
    }
    return false;
}

struct TiendaConTabla : TiendaConScripts {
    TiendaConTabla() : TiendaConScripts(SoloFicheros{})
    {
        tienda.Ejecuta(
            "CREATE TABLE ps_prueba (id INT AUTO_INCREMENT PRIMARY KEY, texto VARCHAR(40), "
            "veces INT DEFAULT 0) ENGINE=InnoDB CHARSET=utf8");
    }
    QStringList Textos() const
    {
        QStringList textos;
        for (const QStringList& fila : tienda.Sql("SELECT texto FROM ps_prueba ORDER BY id"))
            textos << fila.value(0);
        return textos;
    }
    /// Waits until a session of the database is in the middle of a sentence like this one.
    bool EsperaADormir(const QString& sentencia) const
    {
        return Espera([&] {
            return Dato("SELECT COUNT(*) FROM information_schema.PROCESSLIST WHERE INFO LIKE '" +
                        sentencia + "'") == "1";
        });
    }
};

QByteArray Inserta(const QByteArray& texto)
{
    return "INSERT INTO ps_prueba (texto) VALUES ('" + texto + "')||\r\n";
}

std::future<QByteArray> PideAparte(const TiendaConScripts& t)
{
    return std::async(std::launch::async, [&t] { return t.Pide("ejecuta.php"); });
}
} // namespace

TEST(EjecutaTurnos, DosALaVezSeTurnanPorLotesEnteros)
{
    TiendaConTabla t;
    t.SubeCredenciales();
    t.tienda.EscribeFichero("sentencias.sql", Inserta("a1") + "DO SLEEP(1)||" + Inserta("a2"));
    auto primera = PideAparte(t);
    ASSERT_TRUE(Espera([&] { return !t.tienda.ExisteFichero("sentencias.sql"); }));
    ASSERT_TRUE(t.EsperaADormir("DO SLEEP%"));

    t.SubeCredenciales();
    t.tienda.EscribeFichero("sentencias.sql", Inserta("b1") + Inserta("b2"));
    auto segunda = PideAparte(t);

    EXPECT_EQ(primera.get(), "");
    EXPECT_EQ(segunda.get(), "");
    // Ids are handed out as the rows come, whichever transaction ends first.
    EXPECT_EQ(t.Textos(), (QStringList{"a1", "a2", "b1", "b2"}));
}

TEST(EjecutaTurnos, MientrasSeEjecutaElLoteNoEstaEnLaCarpeta)
{
    TiendaConTabla t;
    const QStringList antes = t.tienda.Ficheros();
    t.SubeCredenciales();
    t.tienda.EscribeFichero("sentencias.sql", "DO SLEEP(1)||" + Inserta("a"));
    auto peticion = PideAparte(t);
    ASSERT_TRUE(t.EsperaADormir("DO SLEEP%"));

    EXPECT_EQ(t.tienda.Ficheros(), antes);

    EXPECT_EQ(peticion.get(), "");
    EXPECT_EQ(t.Textos(), QStringList{"a"});
}

TEST(EjecutaTurnos, NadaSeVeHastaElFinalDelLote)
{
    TiendaConTabla t;
    t.SubeCredenciales();
    t.tienda.EscribeFichero("sentencias.sql", Inserta("a") + "DO SLEEP(1)||" + Inserta("b"));
    auto peticion = PideAparte(t);
    ASSERT_TRUE(t.EsperaADormir("DO SLEEP%"));

    EXPECT_EQ(t.Textos(), QStringList());

    peticion.get();
    EXPECT_EQ(t.Textos(), (QStringList{"a", "b"}));
}

TEST(EjecutaTurnos, LasFilasQueElLoteSoloMiraSiguenLibres)
{
    TiendaConTabla t;
    t.tienda.Ejecuta("INSERT INTO ps_prueba (id,texto) VALUES (1,'otro'),(2,'buscado')");
    t.SubeCredenciales();
    t.tienda.EscribeFichero("sentencias.sql", "INSERT INTO ps_prueba (texto) SELECT 'hallado' FROM "
                                              "ps_prueba WHERE texto='buscado'||DO SLEEP(3)||");
    auto peticion = PideAparte(t);
    ASSERT_TRUE(t.EsperaADormir("DO SLEEP%"));

    EXPECT_NO_THROW(t.tienda.Ejecuta("SET SESSION innodb_lock_wait_timeout=1; "
                                     "UPDATE ps_prueba SET texto='visita' WHERE id=1"));

    EXPECT_EQ(peticion.get(), "");
    EXPECT_EQ(t.Textos(), (QStringList{"visita", "buscado", "hallado"}));
}

TEST(EjecutaTurnos, TrasUnInterbloqueoElLoteSeRepiteEnteroYUnaSolaVezVale)
{
    TiendaConTabla t;
    t.tienda.Ejecuta("INSERT INTO ps_prueba (id,texto) VALUES (1,'x'),(2,'x')");
    const int cuenta = t.tienda.Sql("SHOW GLOBAL STATUS LIKE 'Innodb_deadlocks'")[0][1].toInt();
    // The visitor holds row 2 and wants row 1. Of the two the server undoes the one that changed
    // less.
    auto visitante = std::async(std::launch::async, [&t] {
        t.tienda.Ejecuta(
            "START TRANSACTION; UPDATE ps_prueba SET texto='visita' WHERE id=2; "
            "INSERT INTO ps_prueba (texto) SELECT 'peso' FROM ps_configuration a, ps_lang b "
            "LIMIT 200; INSERT INTO ps_prueba (texto) SELECT 'peso' FROM ps_prueba a, "
            "ps_lang b LIMIT 200; SELECT SLEEP(1.5); "
            "UPDATE ps_prueba SET texto='visita' WHERE id=1; COMMIT");
    });
    ASSERT_TRUE(t.EsperaADormir("SELECT SLEEP%"));

    const QByteArray respuesta =
        t.EjecutaLote("UPDATE ps_prueba SET texto='lote',veces=veces+1 WHERE id=1||\r\n"
                      "UPDATE ps_prueba SET texto='lote',veces=veces+1 WHERE id=2||\r\n" +
                      Inserta("fin"));
    visitante.get();

    EXPECT_EQ(t.tienda.Sql("SHOW GLOBAL STATUS LIKE 'Innodb_deadlocks'")[0][1].toInt(), cuenta + 1);
    EXPECT_EQ(respuesta, "");
    EXPECT_EQ(
        t.Dato("SELECT GROUP_CONCAT(CONCAT(texto,veces) ORDER BY id) FROM ps_prueba WHERE id<3"),
        "lote1,lote1");
    EXPECT_EQ(t.Dato("SELECT COUNT(*) FROM ps_prueba WHERE texto='fin'"), "1");
}

TEST(EjecutaTurnos, UnaEsperaAgotadaPierdeSoloSuSentencia)
{
    TiendaConTabla t; // the server's setting is put back below
    t.tienda.Ejecuta("INSERT INTO ps_prueba (id,texto) VALUES (1,'x'); "
                     "SET GLOBAL innodb_lock_wait_timeout=1");
    auto visitante = std::async(std::launch::async, [&t] {
        t.tienda.Ejecuta("START TRANSACTION; UPDATE ps_prueba SET texto='visita' WHERE id=1; "
                         "SELECT SLEEP(3); COMMIT");
    });
    ASSERT_TRUE(t.EsperaADormir("SELECT SLEEP%"));

    const QByteArray respuesta = t.EjecutaLote(
        Inserta("a") + "UPDATE ps_prueba SET texto='lote' WHERE id=1||" + Inserta("b"));
    visitante.get();
    t.tienda.Ejecuta("SET GLOBAL innodb_lock_wait_timeout=50");

    EXPECT_EQ(respuesta, "Error al ejecutar consulta: Lock wait timeout exceeded; try restarting "
                         "transaction\r\nUPDATE ps_prueba SET texto='lote' WHERE id=1\r\n");
    EXPECT_EQ(t.Textos(), (QStringList{"visita", "a", "b"}));
}

TEST(EjecutaTurnos, SiSePierdeLaConexionSeDiceQueElLoteQuedaDeshecho)
{
    TiendaConTabla t;

    const QByteArray respuesta =
        t.EjecutaLote(Inserta("a") + "KILL CONNECTION_ID()||" + Inserta("b") + Inserta("c"));

    EXPECT_THAT(respuesta.toStdString(), HasSubstr("Error al ejecutar consulta: "));
    EXPECT_THAT(respuesta.toStdString(),
                HasSubstr("Error al ejecutar consulta: Se ha perdido la conexi\xF3n; el servidor "
                          "deshace lo que este lote llevaba hecho\r\n"));
    EXPECT_EQ(t.Textos(), QStringList());
}

TEST(EjecutaTurnos, SiSePierdeLaConexionAlConfirmarSeDice)
{
    TiendaConTabla t;

    const QByteArray respuesta = t.EjecutaLote(Inserta("a") + "KILL CONNECTION_ID()||");

    EXPECT_THAT(respuesta.toStdString(), HasSubstr("KILL CONNECTION_ID()\r\n"));
    EXPECT_EQ(t.Textos(), QStringList());
}

TEST(EjecutaTurnos, ElLoteSiguienteNoHeredaNadaDelQueSePerdio)
{
    TiendaConTabla t;
    t.EjecutaLote(Inserta("a") + "KILL CONNECTION_ID()||" + Inserta("b"));

    EXPECT_EQ(t.EjecutaLote(Inserta("c")), "");

    EXPECT_EQ(t.Textos(), QStringList{"c"});
}
