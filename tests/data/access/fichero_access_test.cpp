#include "data/access/access.h"
#include "data/errores.h"
#include "data/valores.h"
#include <QDir>
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

} // namespace
