#include "base_prueba.h"
#include <QLocale>

using namespace tolmo::data;

namespace {

/// Values at the edges of what their columns hold, the same in both forms of the database.
class ValoresAccess : public testing::Test, public BaseDePrueba {
  protected:
    /// The first value as a number of the engine's, in the fewest digits that tell it.
    std::string Exacto(const QString& sql)
    {
        auto fila = Proveedor().Motor().Prepara(sql);
        fila.Paso();
        return QString::number(fila.Decimal(0), 'g', QLocale::FloatingPointShortest).toStdString();
    }
};

TEST_F(ValoresAccess, UnSimpleGuardaElNumeroMasCercanoDeVeinticuatroBits)
{
    Haz({"CREATE TABLE SG (ID INT, S SINGLE, S2 SINGLE, D DOUBLE)",
         "INSERT INTO SG (ID,S,D) VALUES (1,16777216,16777216)",
         "INSERT INTO SG (ID,S,D) VALUES (2,16777215,16777215)",
         "INSERT INTO SG (ID,S,D) VALUES (3,16777217,16777217)",
         "INSERT INTO SG (ID,S,D) VALUES (4,1234567.9,1234567.9)",
         "INSERT INTO SG (ID,S,D) VALUES (5,0.1,0.1)",
         "INSERT INTO SG (ID,S,D) VALUES (6,-3.4028235e38,-3.4028235e38)",
         "INSERT INTO SG (ID,S,D) VALUES (7,1e-45,1e-45)", "UPDATE SG SET S2=S"});

    const auto numero = [this](int id) {
        return Exacto(QStringLiteral("SELECT S2 FROM SG WHERE ID=%1").arg(id));
    };
    EXPECT_EQ(numero(1), "16777216");
    EXPECT_EQ(numero(2), "16777215");
    EXPECT_EQ(numero(3), "16777216"); // between two: to the even one
    EXPECT_EQ(numero(4), "1234567.9");
    EXPECT_EQ(numero(5), "0.1");
    EXPECT_EQ(numero(6), "-3.4028235e+38");
    EXPECT_EQ(numero(7), "1e-45");
    EXPECT_EQ(Tabla("SELECT ID FROM SG WHERE S=D ORDER BY ID"), "1 2 4 5 6 7");
}

TEST_F(ValoresAccess, UnSimpleSeHallaPorSuIndice)
{
    Haz({"CREATE TABLE SG (ID INT, S SINGLE)", "CREATE INDEX SGS ON SG (S)"});
    for (const char* s : {"0.1", "1234567.9", "16777215", "-0.3", "3.4028235e38", "1e-45"})
        Haz(QStringLiteral("INSERT INTO SG VALUES (0,%1)").arg(QLatin1String(s)));

    EXPECT_EQ(Tabla("SELECT S FROM SG WHERE S=0.1"), "0.1");
    EXPECT_EQ(Tabla("SELECT S FROM SG WHERE S=1234567.9"), "1234568");
    EXPECT_EQ(Tabla("SELECT S FROM SG WHERE S=16777215"), "16777215");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM SG WHERE S=1e-45"), "1");
    EXPECT_EQ(Tabla("SELECT S FROM SG WHERE S>=0.1 AND S<1234568"), "0.1 1234568");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM SG WHERE S<1e39 AND S>-1e39"), "6");
}

TEST_F(ValoresAccess, UnTextoEnsenaSieteCifrasDeUnSimple)
{
    Haz({"CREATE TABLE SG (S SINGLE)", "INSERT INTO SG VALUES (1234567.9)",
         "INSERT INTO SG VALUES (0.1)"});

    EXPECT_EQ(Tabla("SELECT S & '',CSTR(S),STR(S),S FROM SG"),
              "1234568|1234568| 1234568|1234568 0.1|0.1| 0.1|0.1");
}

TEST_F(ValoresAccess, LoQueNoCabeEnUnSimpleSeDice)
{
    Haz("CREATE TABLE SG (S SINGLE)");

    EXPECT_EQ(Fallo("INSERT INTO SG VALUES (3.5e38)"),
              "El número 3.5E+38 no cabe en el campo SG.S");
    EXPECT_EQ(Fallo("INSERT INTO SG VALUES (-3.5e38)"),
              "El número -3.5E+38 no cabe en el campo SG.S");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM SG"), "0");
}

} // namespace
