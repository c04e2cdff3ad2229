// What the engine makes of statements below the language: indexes, other processes, files of other
// programs, and the statements that it keeps.
#include "base_prueba.h"
#include <QElapsedTimer>
#include <QProcess>
#include <sqlite3.h>

using namespace tolmo::data;
using access::Base;
using access::ProveedorAccess;

namespace {

QString PlanDeMotor(ProveedorAccess& proveedor, const QString& sql)
{
    const auto plan = proveedor.Traduccion(sql);
    auto filas = proveedor.Motor().Prepara("EXPLAIN QUERY PLAN " + plan.sql[0]);
    QStringList pasos;
    while (filas.Paso())
        pasos << filas.Texto(3);
    return pasos.join("; ");
}

class IndicesDelMotor : public testing::Test, public BaseDePrueba {
  protected:
    IndicesDelMotor()
    {
        Haz({"CREATE TABLE T (COD nvarchar(20) PRIMARY KEY, GRUPO nvarchar(5), N INT)",
             "CREATE INDEX IG ON T (GRUPO)", "CREATE INDEX INN ON T (N)",
             "CREATE TABLE U (CODU nvarchar(20), V INT)", "INSERT INTO T VALUES ('A1','g',1)"});
    }
    void SetUp() override
    {
        if (EnFicherosDeAccess())
            GTEST_SKIP() << "a file of Access has its own indexes and its own choice among them";
    }
};

TEST_F(IndicesDelMotor, LaIgualdadDeTextoUsaElIndice)
{
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT N FROM T WHERE COD='a1'"),
              "SEARCH T USING INDEX sqlite_autoindex_T_1 (COD=?)");
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT N FROM T WHERE GRUPO IN ('a','b')"),
              "SEARCH T USING INDEX T.IG (GRUPO=?)");
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT V FROM U INNER JOIN T ON U.CODU=T.COD"),
              "SCAN U; SEARCH T USING COVERING INDEX sqlite_autoindex_T_1 (COD=?)");
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT COD FROM T WHERE N='7'"),
              "SEARCH T USING INDEX T.INN (N=?)");
}

TEST_F(IndicesDelMotor, ElPrincipioFijoDeUnPatronUsaElIndice)
{
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT N FROM T WHERE COD LIKE 'a1%'"),
              "SEARCH T USING INDEX sqlite_autoindex_T_1 (COD>? AND COD<?)");
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT N FROM T WHERE COD LIKE '%a1%'"), "SCAN T");
    EXPECT_EQ(Tabla("SELECT N FROM T WHERE COD LIKE '%a1%'"), "1");
}

TEST_F(IndicesDelMotor, ElOrdenDeTextoUsaElIndice)
{
    EXPECT_EQ(PlanDeMotor(Proveedor(), "SELECT TOP 1 COD FROM T WHERE COD<'b' ORDER BY COD DESC"),
              "SEARCH T USING COVERING INDEX sqlite_autoindex_T_1 (COD<?)");
}

/// A database that another program made: its columns and indexes know nothing of the language.
class BaseAjena : public testing::Test {
  protected:
    BaseAjena()
    {
        sqlite3* base = nullptr;
        sqlite3_open(Ruta().toUtf8().constData(), &base);
        for (
            const char* sql :
            {"CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20) PRIMARY KEY, NOMBRE TEXT, ALTA DATETIME, NIVEL VARCHAR(2), ACTIVO BOOLEAN)",
             "CREATE INDEX NOMBRES ON M_ARTIC (NOMBRE COLLATE NOCASE)",
             "CREATE TABLE OFERTAS (CODARTICULO VARCHAR(20), PRECIO REAL)",
             "CREATE INDEX OFERTAS_ART ON OFERTAS (CODARTICULO)",
             "INSERT INTO M_ARTIC VALUES ('A1', 'Ñandú', '2024-03-15', '0', 1)",
             "INSERT INTO M_ARTIC VALUES ('a2', 'ZAPATO', '2024-03-15 10:00:00', '1', 0)",
             "INSERT INTO OFERTAS VALUES ('a1', 9.5)", "INSERT INTO OFERTAS VALUES ('A2', 7)"})
            sqlite3_exec(base, sql, nullptr, nullptr, nullptr);
        ajena_ = base;
        proveedor_ = std::make_unique<ProveedorAccess>(Ruta(), Base::Modo::Existente);
    }
    ~BaseAjena() override { sqlite3_close(ajena_); }

    QString Ruta() const { return carpeta_.filePath("ajena.sqlite"); }
    int Ajena(const char* sql) { return sqlite3_exec(ajena_, sql, nullptr, nullptr, nullptr); }
    QString Tabla(const QString& sql)
    {
        QStringList valores;
        for (const auto& valor : proveedor_->Consulta(sql, false).valores)
            valores << BaseDePrueba::Texto(valor);
        return valores.join(' ');
    }

    QTemporaryDir carpeta_;
    sqlite3* ajena_ = nullptr;
    std::unique_ptr<ProveedorAccess> proveedor_;
};

TEST_F(BaseAjena, LosTextosSeComparanComoEnLasPropias)
{
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE CODARTICULO='a1'"), "A1");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE NOMBRE='ñandú'"), "A1");
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM M_ARTIC ORDER BY NOMBRE"), "Ñandú ZAPATO");
    EXPECT_EQ(
        Tabla(
            "SELECT M_ARTIC.CODARTICULO,PRECIO FROM M_ARTIC INNER JOIN OFERTAS ON M_ARTIC.CODARTICULO=OFERTAS.CODARTICULO ORDER BY PRECIO"),
        "a2 7 A1 9.5");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE NOT CODARTICULO='a1'"), "a2");
}

TEST_F(BaseAjena, UnaFechaSinHoraEsLaDeLaMedianoche)
{
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE ALTA='15/03/2024'"), "A1");
    EXPECT_EQ(Tabla("SELECT CODARTICULO FROM M_ARTIC WHERE ACTIVO=TRUE"), "A1");
    EXPECT_EQ(Tabla("SELECT ACTIVO FROM M_ARTIC WHERE ACTIVO"), "True");
}

TEST_F(BaseAjena, LaIgualdadUsaUnIndiceDeApoyo)
{
    const QString plan =
        PlanDeMotor(*proveedor_, "SELECT NIVEL FROM M_ARTIC WHERE CODARTICULO='a1'");

    EXPECT_TRUE(plan.startsWith("SEARCH M_ARTIC USING INTEGER PRIMARY KEY (rowid=?)"))
        << plan.toStdString();
    EXPECT_TRUE(
        plan.contains("SEARCH temp.kov_apoyo_M_ARTIC.CODARTICULO USING PRIMARY KEY (clave=?)"))
        << plan.toStdString();
    EXPECT_FALSE(
        PlanDeMotor(
            *proveedor_,
            "SELECT PRECIO FROM M_ARTIC INNER JOIN OFERTAS ON M_ARTIC.CODARTICULO=OFERTAS.CODARTICULO")
            .contains("SCAN OFERTAS"));
}

TEST_F(BaseAjena, ElIndiceDeApoyoSigueLosCambiosPropios)
{
    const QString busca = "SELECT NOMBRE FROM M_ARTIC WHERE CODARTICULO='%1'";
    EXPECT_EQ(Tabla(busca.arg("b1")), "");

    proveedor_->Ejecuta("INSERT INTO M_ARTIC (CODARTICULO,NOMBRE) VALUES ('B1','nuevo')");
    EXPECT_EQ(Tabla(busca.arg("b1")), "nuevo");
    proveedor_->Ejecuta("UPDATE M_ARTIC SET CODARTICULO='B2' WHERE CODARTICULO='b1'");
    EXPECT_EQ(Tabla(busca.arg("b1")), "");
    EXPECT_EQ(Tabla(busca.arg("b2")), "nuevo");
    proveedor_->Ejecuta("DELETE FROM M_ARTIC WHERE CODARTICULO='b2'");
    EXPECT_EQ(Tabla(busca.arg("b2")), "");
    proveedor_->Ejecuta("DROP TABLE M_ARTIC");
    proveedor_->Ejecuta("CREATE TABLE M_ARTIC (CODARTICULO nvarchar(5), NOMBRE nvarchar(5))");
    proveedor_->Ejecuta("INSERT INTO M_ARTIC VALUES ('b2','otra')");
    EXPECT_EQ(Tabla(busca.arg("B2")), "otra");
}

TEST_F(BaseAjena, ElIndiceDeApoyoSigueLosCambiosAjenos)
{
    const QString busca = "SELECT NOMBRE FROM M_ARTIC WHERE CODARTICULO='b1'";
    EXPECT_EQ(Tabla(busca), "");

    EXPECT_EQ(Ajena("INSERT INTO M_ARTIC VALUES ('B1', 'ajeno', NULL, NULL, NULL)"), SQLITE_OK);

    EXPECT_EQ(Tabla(busca), "ajeno");
}

TEST_F(BaseAjena, ElOtroProgramaPuedeSeguirEscribiendo)
{
    Tabla("SELECT NOMBRE FROM M_ARTIC WHERE CODARTICULO='b1'");
    proveedor_->Ejecuta("UPDATE M_ARTIC SET NOMBRE='x' WHERE CODARTICULO='a1'");

    EXPECT_EQ(Ajena("UPDATE M_ARTIC SET NOMBRE='y' WHERE CODARTICULO='A1'"), SQLITE_OK);
    EXPECT_EQ(Ajena("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('C1')"), SQLITE_OK);
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM M_ARTIC WHERE CODARTICULO='a1'"), "y");
}

TEST_F(BaseAjena, UnEsquemaCambiadoPorOtroSeVe)
{
    EXPECT_EQ(Tabla("SELECT * FROM OFERTAS WHERE PRECIO=7"), "A2 7");

    EXPECT_EQ(Ajena("ALTER TABLE OFERTAS ADD COLUMN NOTA TEXT DEFAULT 'n'"), SQLITE_OK);

    EXPECT_EQ(Tabla("SELECT * FROM OFERTAS WHERE PRECIO=7"), "A2 7 n");
}

class VariosProcesos : public testing::Test, public BaseDePrueba {};

TEST_F(VariosProcesos, OtroLeeMientrasUnoEscribe)
{
    Haz({"CREATE TABLE T (N INT)", "INSERT INTO T VALUES (1)"});
    const auto otro = Otro();
    access::Transaccion transaccion(Proveedor().Motor());
    Haz("INSERT INTO T VALUES (2)");
    QElapsedTimer reloj;
    reloj.start();

    EXPECT_EQ(otro->Consulta("SELECT COUNT(*) FROM T", false).valores[0], QVariant(1));
    EXPECT_LT(reloj.elapsed(), 2000);
    transaccion.Confirma();
    EXPECT_EQ(otro->Consulta("SELECT COUNT(*) FROM T", false).valores[0], QVariant(2));
}

TEST_F(VariosProcesos, UnaTablaHechaPorOtroSeVeSinVolverAAbrir)
{
    Haz("CREATE TABLE T (N INT)");
    const auto otro = Otro();
    const auto tablas = [&] {
        QStringList nombres;
        for (const TablaEsquema& tabla : otro->Tablas())
            if (tabla.tipo != "SYSTEM TABLE")
                nombres << tabla.nombre;
        return nombres;
    };
    EXPECT_EQ(tablas(), QStringList({"T"}));

    Haz({"CREATE TABLE U (N INT)", "CREATE VIEW V AS SELECT N AS UNO FROM T",
         "INSERT INTO T VALUES (7)"});

    EXPECT_EQ(tablas(), QStringList({"T", "U", "V"}));
    EXPECT_EQ(otro->Consulta("SELECT UNO FROM V", false).valores[0], QVariant(7));
    Haz("DROP VIEW V");
    Haz("CREATE VIEW V AS SELECT N+1 AS UNO FROM T");
    EXPECT_EQ(otro->Consulta("SELECT UNO FROM V", false).valores[0], QVariant(8));
}

TEST_F(VariosProcesos, UnaSentenciaQueFallaNoDejaLaBaseTomada)
{
    Haz({"CREATE TABLE T (N INT, C nvarchar(3))", "INSERT INTO T VALUES (1,'a')"});
    EXPECT_NE(Fallo("SELECT 1/(N-1) FROM T"), "");
    EXPECT_NE(Fallo("INSERT INTO T SELECT 2 AS N,'larga' AS C FROM T"), "");
    const auto otro = Otro();

    EXPECT_EQ(otro->Ejecuta("DROP TABLE T"), 0);
    EXPECT_EQ(Fallo("SELECT N FROM T"), "No se conoce la tabla o consulta T (posición 15)");
}

TEST_F(VariosProcesos, DiezMilFilasAnchasSeLeenEnMenosDeUnSegundo)
{
    QString columnas;
    QString valores;
    for (int i = 0; i < 60; ++i) {
        columnas += QStringLiteral("%1C%2 nvarchar(50)").arg(i ? "," : "", QString::number(i));
        valores += QStringLiteral("%1'valor %2'").arg(i ? "," : "", QString::number(i));
    }
    Haz("CREATE TABLE T (" + columnas + ")");
    Haz({"CREATE TABLE D (N INT)", "INSERT INTO D VALUES (0)", "INSERT INTO D VALUES (1)",
         "INSERT INTO D VALUES (2)", "INSERT INTO D VALUES (3)", "INSERT INTO D VALUES (4)",
         "INSERT INTO D VALUES (5)", "INSERT INTO D VALUES (6)", "INSERT INTO D VALUES (7)",
         "INSERT INTO D VALUES (8)", "INSERT INTO D VALUES (9)"});
    QStringList nombres;
    for (int i = 0; i < 60; ++i)
        nombres << QStringLiteral("C%1").arg(i);
    Haz("INSERT INTO T (" + nombres.join(',') + ") SELECT " + valores +
        " FROM D AS D1,D AS D2,D AS D3,D AS D4");
    QElapsedTimer reloj;
    reloj.start();

    const auto filas = Filas("SELECT * FROM T");

    EXPECT_EQ(filas.valores.size(), 600000U);
    // A release build takes a quarter of a second; a debug build under sanitizers some four.
    EXPECT_LT(reloj.elapsed(), 20000);
}

} // namespace
