#include "apoyo/tienda.h"
#include "data/conexion.h"
#include "data/errores.h"
#include "data/proveedor_odbc.h"
#include <QElapsedTimer>
#include <arpa/inet.h>
#include <functional>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace tolmo;
using data::Bloqueo;
using data::Cursor;
using data::Texto;

namespace {

/// Takes connections, as many as fit into its queue, and never says a word.
class ServidorMudo {
  public:
    explicit ServidorMudo(int cola = 8)
    {
        direccion_.sin_family = AF_INET;
        direccion_.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t largo = sizeof direccion_;
        if (bind(zocalo_, Direccion(), largo) != 0 || listen(zocalo_, cola) != 0 ||
            getsockname(zocalo_, Direccion(), &largo) != 0)
            throw std::runtime_error("no port to listen on");
    }
    ~ServidorMudo()
    {
        for (const int otro : pendientes_)
            close(otro);
        close(zocalo_);
    }
    ServidorMudo(const ServidorMudo&) = delete;
    ServidorMudo& operator=(const ServidorMudo&) = delete;

    int Puerto() const { return ntohs(direccion_.sin_port); }

    /// Fills the queue, so that whoever comes next gets no answer at all.
    void Llena(int cuantos)
    {
        for (int i = 0; i < cuantos; ++i) {
            pendientes_.push_back(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
            // It doesn't wait: what doesn't fit any more stays half open, and that is the point.
            static_cast<void>(connect(pendientes_.back(), Direccion(), sizeof direccion_));
        }
    }

  private:
    sockaddr* Direccion() { return reinterpret_cast<sockaddr*>(&direccion_); }

    int zocalo_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in direccion_{};
    std::vector<int> pendientes_{};
};

data::ErrorSql ErrorDe(const std::function<void()>& accion)
{
    try {
        accion();
    } catch (const data::ErrorSql& error) {
        return error;
    }
    ADD_FAILURE() << "no error";
    return {0, {}, {}};
}

class Odbc : public testing::Test {
  protected:
    static void SetUpTestSuite() { tienda = &TiendaComun(); }

    static QString Cadena(int puerto, const QString& clave)
    {
        return QString("Driver={MySQL ODBC 5.1 Driver};Server=127.0.0.1;Port=%1;Database=%2;"
                       "User=%3;Password=%4;Option=3;")
            .arg(QString::number(puerto), tienda->Bd(), tienda->Usuario(), clave);
    }
    static QString Cadena() { return Cadena(tienda->PuertoMysql(), tienda->Clave()); }

    data::Recordset Lee(const QString& sql)
    {
        return conexion.Abre(sql, Cursor::Estatico, Bloqueo::SoloLectura);
    }
    data::Recordset Cambia(const QString& sql)
    {
        return conexion.Abre(sql, Cursor::Dinamico, Bloqueo::Optimista);
    }
    /// The one value of a query, asked of the server by another way.
    static QString Unico(const QString& sql) { return tienda->Sql(sql).at(0).at(0); }

    void SetUp() override { conexion.Conecta(Cadena()); }

    static inline TiendaDePrueba* tienda = nullptr;
    data::Conexion conexion{&data::AbreOdbc};
};

TEST_F(Odbc, LosEnterosSalenEnteros)
{
    tienda->Ejecuta("CREATE TABLE enteros (a TINYINT, b SMALLINT, c INT, d INT UNSIGNED, e BIGINT,"
                    " f BIGINT UNSIGNED);"
                    "INSERT INTO enteros VALUES (-7, 300, -70000, 4000000000,"
                    " 9007199254740993, 18446744073709551615)");

    const auto fila = Lee("SELECT * FROM enteros");

    EXPECT_EQ(fila["a"], data::Valor(-7));
    EXPECT_EQ(fila["b"], data::Valor(300));
    EXPECT_EQ(fila["c"], data::Valor(-70000));
    EXPECT_EQ(fila["d"], data::Valor(4000000000LL));
    EXPECT_EQ(fila["e"], data::Valor(9007199254740993LL));
    EXPECT_EQ(Texto(fila["f"]), "18446744073709551615");
    EXPECT_EQ(fila["c"].typeId(), QMetaType::Int);
    EXPECT_EQ(fila["e"].typeId(), QMetaType::LongLong);
}

TEST_F(Odbc, LosDecimalesSalenDobles)
{
    tienda->Ejecuta("CREATE TABLE decimales (a DECIMAL(20,6), b DOUBLE, c FLOAT);"
                    "INSERT INTO decimales VALUES (123456.789000, 0.1, 0.1)");

    const auto fila = Lee("SELECT a, b, c, SUM(a) AS s FROM decimales GROUP BY a, b, c");

    EXPECT_EQ(fila["a"], data::Valor(123456.789));
    EXPECT_EQ(fila["a"].typeId(), QMetaType::Double);
    EXPECT_EQ(Texto(fila["a"]), "123456.789");
    EXPECT_EQ(Texto(fila["b"]), "0.1");
    EXPECT_EQ(Texto(fila["c"]), "0.1");
    EXPECT_EQ(Texto(fila["s"]), "123456.789");
}

TEST_F(Odbc, LosTextosSalenEnUnicode)
{
    tienda->Ejecuta("CREATE TABLE textos (a VARCHAR(64), b LONGTEXT) CHARSET utf8mb4");

    conexion.Ejecuta("INSERT INTO textos VALUES ('ñ€ 😀', REPEAT('á', 100000))");

    // UTF-8 as the server holds it: n with tilde, euro, blank, and the four bytes of the face.
    EXPECT_EQ(Unico("SELECT HEX(a) FROM textos"), "C3B1E282AC20F09F9880");
    const auto fila = Lee("SELECT * FROM textos");
    EXPECT_EQ(Texto(fila["a"]), "ñ€ 😀");
    EXPECT_EQ(Texto(fila["b"]), QString("á").repeated(100000));
}

TEST_F(Odbc, LasFechasSalenFechas)
{
    tienda->Ejecuta("CREATE TABLE fechas (a DATE, b DATETIME, c TIMESTAMP NULL);"
                    "INSERT INTO fechas VALUES ('2024-03-05', '2024-12-31 09:05:07',"
                    " '2024-07-01 23:59:58')");

    const auto fila = Lee("SELECT * FROM fechas");

    EXPECT_EQ(fila["a"], data::Valor(QDate(2024, 3, 5)));
    EXPECT_EQ(Texto(fila["a"]), "05/03/2024");
    EXPECT_EQ(Texto(fila["b"]), "31/12/2024 9:05:07");
    EXPECT_EQ(Texto(fila["c"]), "01/07/2024 23:59:58");
}

// The shop's server writes its own hour, and this one Spain's clocks skipped.
TEST_F(Odbc, UnMomentoEnLaHoraQueElCambioSaltaNoEsNulo)
{
    const auto fila = Lee("SELECT CAST('2024-03-31 02:30:00' AS DATETIME) AS f");

    EXPECT_EQ(Texto(fila["f"]), "31/03/2024 2:30:00");
    EXPECT_TRUE(fila["f"].toDateTime().isValid());
}

TEST_F(Odbc, UnaFechaDeCerosEsNula)
{
    tienda->Ejecuta("CREATE TABLE ceros (a DATE NOT NULL, b DATETIME NOT NULL);"
                    "INSERT INTO ceros VALUES ('0000-00-00', '0000-00-00 00:00:00')");

    const auto fila = Lee("SELECT * FROM ceros");

    EXPECT_TRUE(data::EsNulo(fila["a"]));
    EXPECT_TRUE(data::EsNulo(fila["b"]));
}

TEST_F(Odbc, LosNulosSonNulosDeCualquierClase)
{
    tienda->Ejecuta("CREATE TABLE nulos (a INT, b DECIMAL(20,6), c VARCHAR(9), d DATE, e BIT(1));"
                    "INSERT INTO nulos VALUES (NULL, NULL, NULL, NULL, NULL), (0, 0, '', NULL, 0)");

    auto filas = Lee("SELECT * FROM nulos ORDER BY a");

    for (int i = 0; i < 5; ++i)
        EXPECT_TRUE(data::EsNulo(filas[i])) << i;
    filas.Siguiente();
    EXPECT_EQ(filas["a"], data::Valor(0));
    EXPECT_EQ(filas["b"], data::Valor(0.0));
    EXPECT_EQ(filas["c"], data::Valor(""));
    EXPECT_EQ(filas["e"], data::Valor(false));
}

TEST_F(Odbc, CadaColumnaDiceSuNombreSuTablaYSuTipo)
{
    tienda->Ejecuta("CREATE TABLE tipos (a SMALLINT, b INT, c FLOAT, d DOUBLE, e BIT(1), f TINYINT,"
                    " g BIGINT, h DECIMAL(9,2), i DATE, j DATETIME, k VARCHAR(32), l TEXT,"
                    " m BLOB)");

    const auto filas = Lee("SELECT tipos.*, UPPER(k) AS n FROM tipos");

    const std::vector<data::Campo>& campos = filas.Campos();
    ASSERT_EQ(campos.size(), 14U);
    const int tipos[] = {2, 3, 4, 5, 11, 17, 20, 131, 135, 135, 202, 203, 204};
    for (std::size_t i = 0; i < std::size(tipos); ++i)
        EXPECT_EQ(campos[i].tipo, tipos[i]) << qPrintable(campos[i].nombre);
    EXPECT_EQ(campos[10].nombre, "k");
    EXPECT_EQ(campos[10].tabla, "tipos");
    EXPECT_EQ(campos[10].ancho, 32);
    EXPECT_EQ(campos[13].nombre, "n");
    EXPECT_EQ(campos[13].tabla, "");
}

TEST_F(Odbc, UnaConsultaSinFilasTieneSusColumnas)
{
    tienda->Ejecuta("CREATE TABLE desierta (a INT, b INT)");

    const auto filas = Lee("SELECT * FROM desierta");

    EXPECT_TRUE(filas.Fin());
    EXPECT_TRUE(filas.TieneColumna("B"));
}

TEST_F(Odbc, EjecutaDaLasFilasQueCumplen)
{
    tienda->Ejecuta("CREATE TABLE cuenta (a INT, b INT);"
                    "INSERT INTO cuenta VALUES (1, 5), (2, 5), (3, 6)");

    // The connection's option counts the rows that are met, not only those that change.
    EXPECT_EQ(conexion.Ejecuta("UPDATE cuenta SET b=5 WHERE b=5"), 2);
    EXPECT_EQ(conexion.Ejecuta("DELETE FROM cuenta WHERE a=9"), 0);
    EXPECT_EQ(conexion.Ejecuta("DROP TABLE cuenta"), 0);
}

TEST_F(Odbc, LaSesionNoTieneModoEstricto)
{
    tienda->Ejecuta(
        "CREATE TABLE sinvalor (a INT NOT NULL, b VARCHAR(3) NOT NULL, c DATE NOT NULL)");

    conexion.Ejecuta("INSERT INTO sinvalor (b) VALUES ('demasiado')");

    EXPECT_EQ(tienda->Sql("SELECT * FROM sinvalor").at(0), QStringList({"0", "dem", "0000-00-00"}));
    EXPECT_EQ(Texto(Lee("SELECT @@sql_mode AS m")["m"]), "");
    EXPECT_EQ(Texto(Lee("SELECT @@character_set_client AS c")["c"]), "utf8mb4");
}

TEST_F(Odbc, LasTablasYLasVistasEstanEnElEsquema)
{
    tienda->Ejecuta("CREATE TABLE mesa (a INT); CREATE VIEW vista_mesa AS SELECT a FROM mesa");

    EXPECT_TRUE(conexion.ExisteTabla("MESA"));
    EXPECT_TRUE(conexion.ExisteTabla("vista_mesa"));
    EXPECT_FALSE(conexion.ExisteTabla("silla"));
    // Of the server's own database.
    EXPECT_FALSE(conexion.ExisteTabla("help_topic"));
}

TEST_F(Odbc, UnaSentenciaQueElServidorRechazaLlevaSuTexto)
{
    const auto error = ErrorDe([&] { Lee("SELECT * FROM nohay"); });

    EXPECT_EQ(error.Numero(), -2147217900);
    EXPECT_EQ(error.Modulo(), "ODBC");
    EXPECT_TRUE(error.Descripcion().endsWith("Table '" + tienda->Bd() + ".nohay' doesn't exist"))
        << qPrintable(error.Descripcion());
    EXPECT_EQ(Texto(Lee("SELECT 7 AS a")["a"]), "7");
}

TEST_F(Odbc, UnaOrdenQueElServidorRechazaEsUnError)
{
    tienda->Ejecuta("CREATE TABLE unica (a INT PRIMARY KEY); INSERT INTO unica VALUES (1)");

    EXPECT_THROW(conexion.Ejecuta("INSERT INTO unica VALUES (1)"), data::ErrorSql);
    EXPECT_THROW(conexion.Ejecuta("INSERTA"), data::ErrorSql);
}

TEST_F(Odbc, ActualizaSoloLaFilaEnLaQueEsta)
{
    tienda->Ejecuta(
        "CREATE TABLE precios (ref VARCHAR(9), precio DECIMAL(20,6), peso FLOAT, alta DATE,"
        " nota VARCHAR(20)) CHARSET utf8mb4;"
        "INSERT INTO precios VALUES ('A', 10.5, 0.1, '2024-03-05', NULL),"
        " ('A', 11.5, 0.1, NULL, 'x'), ('B', 10.5, 0.1, '0000-00-00', 'x')");
    auto filas = Cambia("SELECT * FROM precios");

    filas.Actualiza({{"NOTA", "oferta €"}, {"alta", QDate(2024, 12, 31)}});
    filas.Siguiente();
    filas.Actualiza({{"precio", 12.25}, {"nota", data::Nulo()}});
    filas.Siguiente();
    filas.Actualiza({{"ref", "C"}});

    EXPECT_EQ(Texto(filas["ref"]), "C");
    const std::vector<QStringList> esperadas = {{"A", "10.500000", "2024-12-31", "oferta €"},
                                                {"A", "12.250000", "NULL", "NULL"},
                                                {"C", "10.500000", "0000-00-00", "x"}};
    EXPECT_EQ(tienda->Sql("SELECT ref, precio, alta, nota FROM precios"), esperadas);
}

TEST_F(Odbc, UnaFilaActualizadaSeReconoceOtraVez)
{
    tienda->Ejecuta("CREATE TABLE dosveces (a INT, b INT); INSERT INTO dosveces VALUES (1, 1)");
    auto filas = Cambia("SELECT * FROM dosveces");

    filas.Actualiza({{"b", 2}});
    filas.Actualiza({{"b", 3}});

    EXPECT_EQ(Unico("SELECT b FROM dosveces"), "3");
}

TEST_F(Odbc, UnaFilaQueOtroCambioNoSePisa)
{
    tienda->Ejecuta("CREATE TABLE ajena (a INT, b INT); INSERT INTO ajena VALUES (1, 1)");
    auto filas = Cambia("SELECT * FROM ajena");
    tienda->Ejecuta("UPDATE ajena SET b=9");

    EXPECT_THROW(filas.Actualiza({{"a", 2}}), data::ErrorSql);
    EXPECT_THROW(filas.Borra(), data::ErrorSql);

    EXPECT_EQ(tienda->Sql("SELECT * FROM ajena").at(0), QStringList({"1", "9"}));
    EXPECT_EQ(filas["a"], data::Valor(1));
}

TEST_F(Odbc, DosFilasIgualesNoSeTocan)
{
    tienda->Ejecuta("CREATE TABLE gemelas (a INT); INSERT INTO gemelas VALUES (1), (1)");
    auto filas = Cambia("SELECT * FROM gemelas");

    EXPECT_THROW(filas.Borra(), data::ErrorSql);
    EXPECT_THROW(filas.Actualiza({{"a", 2}}), data::ErrorSql);

    EXPECT_EQ(tienda->Sql("SELECT a FROM gemelas").size(), 2U);
    EXPECT_EQ(Unico("SELECT MAX(a) FROM gemelas"), "1");
}

TEST_F(Odbc, UnaFilaNuevaSePuedeCambiarYBorrar)
{
    tienda->Ejecuta("CREATE TABLE altas (id INT AUTO_INCREMENT PRIMARY KEY, a VARCHAR(9), b INT "
                    "DEFAULT 5); INSERT INTO altas (a) VALUES ('uno')");
    auto filas = Cambia("SELECT * FROM altas");

    filas.Inserta({{"a", "dos"}});
    EXPECT_EQ(filas.AbsolutePosition(), 2);
    filas.Actualiza({{"a", "tres"}});
    EXPECT_EQ(tienda->Sql("SELECT a, b FROM altas WHERE id=2").at(0), QStringList({"tres", "5"}));
    filas.Borra();

    EXPECT_EQ(tienda->Sql("SELECT id FROM altas").size(), 1U);
}

TEST_F(Odbc, BorraLaFilaEnLaQueEsta)
{
    tienda->Ejecuta("CREATE TABLE bajas (a INT, b VARCHAR(9));"
                    "INSERT INTO bajas VALUES (1, NULL), (2, 'x'), (3, NULL)");
    auto filas = Cambia("SELECT * FROM bajas WHERE b IS NULL ORDER BY a");
    filas.Siguiente();

    filas.Borra();

    EXPECT_TRUE(filas.Fin());
    const std::vector<QStringList> quedan = {{"1"}, {"2"}};
    EXPECT_EQ(tienda->Sql("SELECT a FROM bajas ORDER BY a"), quedan);
}

TEST_F(Odbc, UnResultadoDeVariasTablasNoSeCambia)
{
    tienda->Ejecuta("CREATE TABLE una (a INT); CREATE TABLE otra (b INT);"
                    "INSERT INTO una VALUES (1); INSERT INTO otra VALUES (1)");
    auto filas = Cambia("SELECT * FROM una, otra");

    try {
        filas.Actualiza({{"a", 2}});
        FAIL() << "no error";
    } catch (const data::ErrorDatos& error) {
        EXPECT_EQ(error.Numero(), 3251);
    }
}

TEST_F(Odbc, UnaClaveMalaEsUnErrorQueNoLaDice)
{
    const auto error =
        ErrorDe([&] { conexion.Conecta(Cadena(tienda->PuertoMysql(), "Cl4ve-Equivocada")); });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_TRUE(error.Descripcion().contains("Access denied")) << qPrintable(error.Descripcion());
    EXPECT_FALSE(error.Descripcion().contains("Cl4ve"));
    EXPECT_FALSE(QString(error.what()).contains("Cl4ve"));
    EXPECT_FALSE(conexion.Conectada());
}

TEST_F(Odbc, LasCredencialesPuedenVenirAparte)
{
    const QString cadena =
        QString("Driver={MySQL ODBC 5.1 Driver};Server=127.0.0.1;Port=%1;Database=%2;Option=3;")
            .arg(QString::number(tienda->PuertoMysql()), tienda->Bd());

    conexion.Conecta(cadena, tienda->Usuario(), tienda->Clave());

    EXPECT_EQ(Texto(Lee("SELECT DATABASE() AS d")["d"]), tienda->Bd());
}

TEST_F(Odbc, UnPuertoDondeNadieEscuchaEsUnErrorEnseguida)
{
    QElapsedTimer reloj;
    reloj.start();

    const auto error = ErrorDe([&] { conexion.Conecta(Cadena(1, "Cl4ve")); });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_TRUE(error.Descripcion().contains("Can't connect")) << qPrintable(error.Descripcion());
    EXPECT_FALSE(error.Descripcion().contains("Cl4ve"));
    EXPECT_LT(reloj.elapsed(), 5000);
}

TEST_F(Odbc, UnServidorQueNoHablaNoDetieneParaSiempre)
{
    const ServidorMudo mudo;
    QElapsedTimer reloj;
    reloj.start();

    const auto error =
        ErrorDe([&] { conexion.Conecta(Cadena(mudo.Puerto(), "x") + "Connect Timeout=1"); });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_GE(reloj.elapsed(), 900);
    EXPECT_LT(reloj.elapsed(), 10000);
}

TEST_F(Odbc, UnaSentenciaSinRespuestaAcabaPorPerderLaConexion)
{
    conexion.Conecta(Cadena() + "READ_TIMEOUT=1");
    QElapsedTimer reloj;
    reloj.start();

    const auto error = ErrorDe([&] { Lee("SELECT SLEEP(8)"); });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_LT(reloj.elapsed(), 7000);
    EXPECT_THROW(Lee("SELECT 1"), data::ErrorSql);
}

TEST_F(Odbc, UnServidorAlQueNoSeLlegaNoDetieneParaSiempre)
{
    ServidorMudo lleno(0);
    lleno.Llena(3);
    QElapsedTimer reloj;
    reloj.start();

    const auto error =
        ErrorDe([&] { conexion.Conecta(Cadena(lleno.Puerto(), "x") + "Connect Timeout=1"); });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_GE(reloj.elapsed(), 900);
    EXPECT_LT(reloj.elapsed(), 10000);
}

TEST_F(Odbc, UnSqlServerQueNoHablaTampoco)
{
    const ServidorMudo mudo;
    QElapsedTimer reloj;
    reloj.start();

    const auto error = ErrorDe([&] {
        conexion.Conecta(QString("Provider=SQLOLEDB.1;user id=ana;password=Cl4ve;Initial "
                                 "Catalog=BDLOCAL;Data Source=127.0.0.1,%1;Connect Timeout=1")
                             .arg(mudo.Puerto()));
    });

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_FALSE(error.Descripcion().isEmpty());
    EXPECT_FALSE(error.Descripcion().contains("Cl4ve"));
    EXPECT_GE(reloj.elapsed(), 900);
    EXPECT_LT(reloj.elapsed(), 20000);
}

TEST_F(Odbc, LaConexionPerdidaEnMedioEsUnErrorYLoSigueSiendo)
{
    tienda->Ejecuta("CREATE TABLE perdida (a INT); INSERT INTO perdida VALUES (1), (2)");
    auto filas = Cambia("SELECT * FROM perdida");

    tienda->Para(Servidor::Mysql);
    const auto error = ErrorDe([&] { Lee("SELECT * FROM perdida"); });
    const auto siguiente = ErrorDe([&] { conexion.Ejecuta("DELETE FROM perdida"); });
    const auto esquema = ErrorDe([&] { conexion.ExisteTabla("perdida"); });
    const auto cambio = ErrorDe([&] { filas.Actualiza({{"a", 3}}); });
    tienda->Sigue(Servidor::Mysql);

    EXPECT_EQ(error.Numero(), -2147467259);
    EXPECT_FALSE(error.Descripcion().isEmpty());
    for (const auto& otro : {siguiente, esquema, cambio}) {
        EXPECT_EQ(otro.Numero(), -2147467259);
        EXPECT_EQ(otro.Descripcion(), error.Descripcion());
    }
    // What was read before is still there.
    filas.Siguiente();
    EXPECT_EQ(filas["a"], data::Valor(2));
    EXPECT_THROW(Lee("SELECT * FROM perdida"), data::ErrorSql);
    conexion.Conecta(Cadena());
    EXPECT_EQ(Lee("SELECT * FROM perdida").RecordCount(), 2);
}

TEST_F(Odbc, VariasConexionesALaVez)
{
    data::Conexion otra(&data::AbreOdbc);
    otra.Conecta(Cadena());

    const QString una = Texto(Lee("SELECT CONNECTION_ID() AS n")["n"]);
    const QString dos = Texto(
        otra.Abre("SELECT CONNECTION_ID() AS n", Cursor::Estatico, Bloqueo::SoloLectura)["n"]);

    EXPECT_NE(una, dos);
}

TEST_F(Odbc, AlDesconectarSeCierraLaSesionDelServidor)
{
    const QString sesion = Texto(Lee("SELECT CONNECTION_ID() AS n")["n"]);

    conexion.Desconecta();

    const QString quedan = "SELECT COUNT(*) FROM information_schema.processlist WHERE id=" + sesion;
    for (int vuelta = 0; vuelta < 100 && Unico(quedan) != "0"; ++vuelta)
        usleep(20000);
    EXPECT_EQ(Unico(quedan), "0");
}

} // namespace
