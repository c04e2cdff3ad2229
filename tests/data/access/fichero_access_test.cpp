#include "data/access/access.h"
#include "data/access/mdb/gestion_abierta.h"
#include "data/access/mdb/otras_circunstancias.h"
#include "data/errores.h"
#include "data/valores.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

const QString Muestras = QStringLiteral(KOV_FUENTES "/tests/data/access/mdb/muestras/");

std::unique_ptr<data::Proveedor> Abre(const QString& fichero)
{
    return data::AbreAccess("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=" + fichero +
                            ";Persist Security Info=False");
}

/// All rows of a query on a file, the values of a row parted by "|" and the rows by blanks.
std::string Tabla(data::Proveedor& base, const QString& sql)
{
    const data::Filas filas = base.Consulta(sql, false);
    QStringList lineas;
    for (std::size_t f = 0; f < filas.valores.size(); f += filas.campos.size()) {
        QStringList linea;
        for (std::size_t c = 0; c < filas.campos.size(); ++c)
            linea << (data::EsNulo(filas.valores[f + c]) ? "NULL"
                                                         : data::Texto(filas.valores[f + c]));
        lineas << linea.join('|');
    }
    return lineas.join(' ').toStdString();
}

std::string EnMuestra(const char* muestra, const QString& sql)
{
    return Tabla(*Abre(Muestras + muestra), sql);
}

TEST(FicheroAccess, SeConsultaEnSuSitio)
{
    EXPECT_EQ(EnMuestra("2003-indices.mdb", "SELECT * FROM Table1 ORDER BY id"),
              "0|0|10|baz0|0 1|1|11|baz11|0 2|1|11|baz11-2|0 3|2|13|baz13|0");
    EXPECT_EQ(EnMuestra("97-types.mdb", "SELECT A,B,C,D,E,F,G,H,I FROM Table1 WHERE C=2"),
              "abcdefg|hijklmnop|2|222|333333333|444.555|21/09/1974|3.5|True");
}

TEST(FicheroAccess, SiUnaDefinicionNoSePuedeGuardarSeDicePorQue)
{
    const QTemporaryDir carpeta;
    const QString ruta = carpeta.filePath("empresa.mdb");
    ASSERT_TRUE(QFile::copy(Muestras + "2003-indices.mdb", ruta));
    const auto error = [&](const QStringList& sentencias) {
        return data::access::mdb::ErrorEnOtroProceso([&] {
            const auto base = Abre(ruta);
            data::access::mdb::LimitaLosFicheros(3000);
            for (const QString& sentencia : sentencias.first(sentencias.size() - 1)) {
                try {
                    base->Ejecuta(sentencia);
                } catch (const data::ErrorSql&) {
                    continue;
                }
                throw std::runtime_error("it was done");
            }
            base->Ejecuta(sentencias.last());
        });
    };

    const std::string porque =
        "No se puede escribir: El fichero es demasiado grande para este disco (fichero " +
        ruta.toStdString() + ".diario)";
    EXPECT_EQ(error({"CREATE TABLE Nueva (x INT)"}), porque);
    EXPECT_EQ(error({"CREATE TABLE Nueva (x INT)", "SELECT id FROM Table2"}), "");
    EXPECT_NE(error({"CREATE TABLE Nueva (x INT)", "DROP TABLE Ninguna"}), porque);
    EXPECT_EQ(Tabla(*Abre(ruta), "SELECT COUNT(*) FROM Table3"), "4");
}

TEST(FicheroAccess, LosNombresValenEnMayusculasYMinusculas)
{
    EXPECT_EQ(EnMuestra("2003-indices.mdb", "select DATA from TABLE2 where ID=1"), "foo1");
}

TEST(FicheroAccess, UnIndiceDelFicheroDaLasMismasFilasQueLeerTodas)
{
    const auto base = Abre(Muestras + "2003-indices.mdb");

    // The expression keeps the index from being used.
    for (const char* cuantas :
         {"=1", ">=1", "<2", ">0 AND {}<=2", "=1.5", ">0.5", "=-7", "=70000000000"}) {
        const auto con = [&](const QString& columna) {
            QString condicion = QString::fromUtf8(cuantas);
            condicion.replace("{}", columna);
            return "SELECT id FROM Table1 WHERE " + columna + condicion + " ORDER BY id";
        };
        EXPECT_EQ(Tabla(*base, con("otherfk1")), Tabla(*base, con("(otherfk1+0)"))) << cuantas;
    }
    EXPECT_EQ(Tabla(*base, "SELECT id FROM Table1 WHERE otherfk1=NULL"), "");
    EXPECT_EQ(Tabla(*base, "SELECT id FROM Table1 WHERE otherfk1 IN (0,2) ORDER BY id"), "0 3");
}

TEST(FicheroAccess, LasTablasSeReunenPorSusIndices)
{
    EXPECT_EQ(
        EnMuestra(
            "2003-indices.mdb",
            "SELECT Table1.id,Table2.data,Table3.data FROM (Table1 INNER JOIN Table2 ON Table1.otherfk1=Table2.id) LEFT JOIN Table3 ON Table1.otherfk2=Table3.id WHERE Table1.id>1 ORDER BY Table1.id"),
        "2|foo1|bar11 3|foo2|bar13");
    EXPECT_EQ(
        EnMuestra(
            "2003-indices.mdb",
            "SELECT id,(SELECT COUNT(*) FROM Table1 AS T WHERE T.otherfk1<=Table2.id) AS N FROM Table2 ORDER BY id"),
        "0|1 1|3 2|4");
}

TEST(FicheroAccess, UnaColumnaSinIndiceSeBuscaIgualLaPrimeraVezYLasDemas)
{
    const auto base = Abre(Muestras + "2003-indices.mdb");

    for (int vez = 0; vez < 3; ++vez) {
        EXPECT_EQ(Tabla(*base, "SELECT id FROM Table1 WHERE data='BAZ11'"), "1") << vez;
        EXPECT_EQ(Tabla(*base, "SELECT id FROM Table1 WHERE data='nada'"), "") << vez;
        EXPECT_EQ(Tabla(*base, "SELECT id FROM Table1 WHERE data LIKE 'baz11%' ORDER BY id"), "1 2")
            << vez;
    }
}

TEST(FicheroAccess, LoQueElProgramaHaceParaSiNoLlegaAlFichero)
{
    const QString fichero = Muestras + "2003-indices.mdb";
    QFile antes(fichero);
    ASSERT_TRUE(antes.open(QIODevice::ReadOnly));
    const QByteArray bytes = antes.readAll();
    const auto base = Abre(fichero);

    base->Ejecuta("CREATE TABLE WKOVTOLMO_ARTIC24031509050789 (CODART nvarchar(20))");
    base->Ejecuta(
        "INSERT INTO WKOVTOLMO_ARTIC24031509050789 (CODART) SELECT data FROM Table2 WHERE id>0");

    EXPECT_EQ(
        Tabla(
            *base,
            "SELECT Table2.id FROM Table2 LEFT JOIN WKOVTOLMO_ARTIC24031509050789 ON Table2.data=WKOVTOLMO_ARTIC24031509050789.CODART WHERE CODART IS NULL"),
        "0");
    base->Ejecuta("DROP TABLE WKOVTOLMO_ARTIC24031509050789");
    QFile despues(fichero);
    ASSERT_TRUE(despues.open(QIODevice::ReadOnly));
    EXPECT_EQ(despues.readAll(), bytes);
}

TEST(FicheroAccess, LaListaDeTablasEsLaDelFichero)
{
    const auto base = Abre(Muestras + "2003-saved-queries.mdb");

    QStringList tablas;
    for (const data::TablaEsquema& tabla : base->Tablas())
        tablas << tabla.nombre + '=' + tabla.tipo;

    // The actions aren't listed, nor the crosstab, whose rows aren't to be had.
    EXPECT_EQ(tablas, QStringList({"SelectQuery=VIEW", "Table1=TABLE", "Table2=TABLE",
                                   "Table3=TABLE", "UnionQuery=VIEW"}));
}

/// A new file of Access, made and filled by sentences.
class FicheroNuevo : public testing::Test {
  protected:
    void SetUp() override
    {
        QFile guion(carpeta.filePath("guion.sql"));
        ASSERT_TRUE(guion.open(QIODevice::WriteOnly));
        guion.write(
            "CREATE TABLE M_ARTIC (CODARTICULO nvarchar(20), DESCRIPCION nvarchar(60), NOTAS MEMO, PVP1 DOUBLE, COSTE CURRENCY, UNIDADES SMALLINT, ALTA DATETIME, WEB YESNO);\n"
            "CREATE UNIQUE INDEX IDX_M_ARTIC ON M_ARTIC (CODARTICULO);\n"
            "CREATE TABLE NUMEROS (ID COUNTER, N INT);\n"
            "INSERT INTO M_ARTIC VALUES ('A1','Cañón','una nota',1.5,2.25,7,#03/15/2024#,True);\n"
            "INSERT INTO M_ARTIC (CODARTICULO,PVP1) VALUES ('A2',3);\n");
        guion.close();
        data::EjecutaGuiones(Ruta(), {guion.fileName()});
        base = Abre(Ruta());
    }
    QString Ruta() const { return carpeta.filePath("BD000001.mdb"); }
    std::string Filas(const QString& sql) { return Tabla(*base, sql); }
    std::string Fallo(const QString& sql)
    {
        try {
            base->Ejecuta(sql);
        } catch (const data::ErrorSql& error) {
            return error.Descripcion().toStdString();
        }
        return "";
    }

    QTemporaryDir carpeta{};
    std::unique_ptr<data::Proveedor> base{};
};

TEST_F(FicheroNuevo, CadaTipoVuelveComoSeEscribio)
{
    EXPECT_EQ(Filas("SELECT * FROM M_ARTIC ORDER BY CODARTICULO"),
              "A1|Cañón|una nota|1.5|2.25|7|15/03/2024|True A2|NULL|NULL|3|NULL|NULL|NULL|False");
    EXPECT_EQ(Tabla(*Abre(Ruta()), "SELECT CODARTICULO FROM M_ARTIC WHERE ALTA=#03/15/2024#"),
              "A1");
}

TEST_F(FicheroNuevo, LasFilasSeCambianYSeBorran)
{
    EXPECT_EQ(base->Ejecuta("UPDATE M_ARTIC SET PVP1=PVP1*2,NOTAS=NULL WHERE CODARTICULO='a1'"), 1);
    EXPECT_EQ(Filas("SELECT PVP1,NOTAS,DESCRIPCION FROM M_ARTIC WHERE CODARTICULO='A1'"),
              "3|NULL|Cañón");

    EXPECT_EQ(base->Ejecuta("DELETE FROM M_ARTIC WHERE PVP1=3 AND CODARTICULO>'A1'"), 1);
    EXPECT_EQ(Tabla(*Abre(Ruta()), "SELECT CODARTICULO FROM M_ARTIC"), "A1");
}

TEST_F(FicheroNuevo, UnaClaveRepetidaSeRechazaYNadaQuedaAMedias)
{
    const std::string fallo = Fallo("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('A1')");
    EXPECT_TRUE(
        fallo.starts_with("El valor está duplicado en un índice único: M_ARTIC.CODARTICULO"))
        << fallo;
    EXPECT_NE(
        Fallo(
            "INSERT INTO M_ARTIC (CODARTICULO) SELECT 'B' & MID(CODARTICULO,2) FROM M_ARTIC UNION ALL SELECT CODARTICULO FROM M_ARTIC"),
        "");

    EXPECT_EQ(Filas("SELECT CODARTICULO FROM M_ARTIC ORDER BY CODARTICULO"), "A1 A2")
        << "the rows before the one that failed are taken back";
    base->Ejecuta("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('A3')");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "3");
}

TEST_F(FicheroNuevo, ElContadorSigue)
{
    base->Ejecuta("INSERT INTO NUMEROS (N) VALUES (10)");
    base->Ejecuta("INSERT INTO NUMEROS (N) SELECT N+1 FROM NUMEROS");
    base->Ejecuta("DELETE FROM NUMEROS WHERE ID=2");
    base->Ejecuta("INSERT INTO NUMEROS (N) VALUES (12)");

    EXPECT_EQ(Filas("SELECT ID,N FROM NUMEROS ORDER BY ID"), "1|10 3|12");
}

TEST_F(FicheroNuevo, UnConjuntoAbiertoSeCambiaFilaAFila)
{
    data::Filas filas = base->Consulta("SELECT * FROM M_ARTIC ORDER BY CODARTICULO", true);

    base->Actualiza(filas, 1, {{"DESCRIPCION", QString("Jarrón")}});
    base->Inserta(filas, {{"CODARTICULO", QString("A3")}, {"WEB", true}});
    base->Borra(filas, 0);

    EXPECT_EQ(Filas("SELECT CODARTICULO,DESCRIPCION,WEB FROM M_ARTIC ORDER BY CODARTICULO"),
              "A2|Jarrón|False A3|NULL|True");
}

TEST_F(FicheroNuevo, UnCambioRechazadoDiceSiEsElCampoLaFilaOElFichero)
{
    const data::Filas filas = base->Consulta("SELECT * FROM M_ARTIC ORDER BY CODARTICULO", true);
    const auto fallo = [&](const data::Cambios& cambios) {
        try {
            base->Actualiza(filas, 0, cambios);
        } catch (const data::ErrorSql& error) {
            return std::pair(error.Numero(), error.Descripcion().toStdString());
        }
        return std::pair(0, std::string());
    };
    const auto campo = fallo({{"PVP1", QString("x")}});
    EXPECT_EQ(campo.first, data::numero_error::CampoIncorrecto);

    EXPECT_EQ(fallo({{"CODARTICULO", QString("A2")}}),
              std::pair(data::numero_error::Sentencia,
                        std::string("El valor está duplicado en un índice único: "
                                    "M_ARTIC.CODARTICULO")));

    const GestionAbierta gestion(carpeta.filePath("BD000001.ldb"));
    const auto [numero, descripcion] = fallo({{"CODARTICULO", QString("A3")}});
    EXPECT_EQ(numero, data::numero_error::Sentencia);
    EXPECT_TRUE(descripcion.starts_with("El fichero está abierto en otro programa (equipo CAJA2"))
        << descripcion;
}

TEST_F(FicheroNuevo, LoQueOtroGuardaSeVeEnElSiguienteConjunto)
{
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "2");
    const auto otro = Abre(Ruta());

    otro->Ejecuta("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('A9')");
    otro->Ejecuta("CREATE TABLE NUEVA (X INT)");
    otro->Ejecuta("INSERT INTO NUEVA VALUES (5)");

    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "3");
    EXPECT_EQ(Filas("SELECT CODARTICULO FROM M_ARTIC WHERE CODARTICULO='A9'"), "A9");
    EXPECT_EQ(Filas("SELECT X FROM NUEVA"), "5");
    otro->Ejecuta("DROP TABLE NUEVA");
    EXPECT_NE(Fallo("INSERT INTO NUEVA VALUES (6)"), "");
}

/// The management program has the file open, on another machine.
TEST_F(FicheroNuevo, ConElFicheroAbiertoPorOtroSeLeeYLasReferenciasVanAparte)
{
    base->Ejecuta("CREATE TABLE wFAMPRESTA (FAMKOV NVARCHAR(20),FAMPRESTA INT)");
    base->Ejecuta("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('01',3)");
    const GestionAbierta gestion(carpeta.filePath("BD000001.ldb"));

    EXPECT_NE(Fallo("INSERT INTO M_ARTIC (CODARTICULO) VALUES ('A7')").find("CAJA2"),
              std::string::npos);
    EXPECT_NE(Fallo("INSERT INTO wFAMPRESTA (NOHAY) VALUES (1)"), "");
    base->Ejecuta("DELETE FROM wFAMPRESTA");
    base->Ejecuta("INSERT INTO wFAMPRESTA (FAMKOV,FAMPRESTA) VALUES ('02',4)");
    base->Ejecuta("CREATE TABLE WKOVTOLMO_ARTIC1 (CODART nvarchar(20))");

    EXPECT_EQ(Filas("SELECT FAMPRESTA FROM wFAMPRESTA"), "4");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "2");
    EXPECT_EQ(Tabla(*Abre(Ruta()), "SELECT FAMPRESTA FROM wFAMPRESTA"), "3")
        << "the file is as the other program has it";
}

TEST_F(FicheroNuevo, UnGuionPuedeLlenarUnaTablaAntesDeHacerOtra)
{
    QFile guion(carpeta.filePath("otro.sql"));
    ASSERT_TRUE(guion.open(QIODevice::WriteOnly));
    guion.write("CREATE TABLE UNA (X INT);\nINSERT INTO UNA VALUES (1);\n"
                "CREATE TABLE DOS (Y INT);\nCREATE INDEX IDX_DOS ON DOS (Y);\n"
                "INSERT INTO DOS VALUES (2);\nINSERT INTO UNA VALUES (3);\n");
    guion.close();

    data::EjecutaGuiones(Ruta(), {guion.fileName()});

    EXPECT_EQ(Filas("SELECT X,Y FROM UNA,DOS ORDER BY X"), "1|2 3|2");
}

TEST_F(FicheroNuevo, UnGuionQueFallaNoDejaNada)
{
    QFile guion(carpeta.filePath("malo.sql"));
    ASSERT_TRUE(guion.open(QIODevice::WriteOnly));
    guion.write(
        "INSERT INTO M_ARTIC (CODARTICULO) VALUES ('A7');\nINSERT INTO NOHAY VALUES (1);\n");
    guion.close();

    EXPECT_THROW(data::EjecutaGuiones(Ruta(), {guion.fileName()}), data::ErrorSql);

    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "2");
}

TEST_F(FicheroNuevo, MuchasFilasSeCopianDeUnaVezYSeHallanPorSuIndice)
{
    base->Ejecuta("INSERT INTO NUMEROS (N) VALUES (0)");
    for (int i = 1; i < 4096; i *= 2)
        base->Ejecuta("INSERT INTO NUMEROS (N) SELECT N+" + QString::number(i) + " FROM NUMEROS");
    base->Ejecuta(
        "INSERT INTO M_ARTIC (CODARTICULO,PVP1) SELECT 'Z' & FORMAT(N,'0000'),N FROM NUMEROS");

    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC"), "4098");
    EXPECT_EQ(Filas("SELECT PVP1 FROM M_ARTIC WHERE CODARTICULO='Z3071'"), "3071");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC WHERE CODARTICULO>='Z4000'"), "96");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM M_ARTIC WHERE CODARTICULO LIKE 'z40%'"), "96");
    EXPECT_EQ(Filas("SELECT COUNT(*) FROM NUMEROS INNER JOIN M_ARTIC ON NUMEROS.N=M_ARTIC.PVP1"),
              "4097")
        << "A2 costs 3";
}

} // namespace
