#include "base_prueba.h"
#include "data/access/mdb/base_mdb.h"
#include <QFile>
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

/// A file of Access, whose values are read without the engine.
class CifrasEnElFichero : public testing::Test {
  protected:
    void Abre(const char* muestra = nullptr)
    {
        if (muestra) {
            QFile::copy(QStringLiteral(KOV_FUENTES "/tests/data/access/mdb/muestras/") +
                            QLatin1String(muestra),
                        ruta_);
            QFile::setPermissions(ruta_, QFile::ReadOwner | QFile::WriteOwner);
        } else {
            access::mdb::CreaBase(ruta_);
        }
        base_ = std::make_unique<access::ProveedorAccess>(
            std::make_unique<access::FicheroAccess>(ruta_));
    }

    void Haz(const QString& sql) { base_->Ejecuta(sql); }

    QString Fallo(const QString& sql)
    {
        try {
            base_->Ejecuta(sql);
        } catch (const ErrorSql& error) {
            return error.Descripcion();
        }
        return {};
    }

    /// What a column holds, row by row, each value to its last digit.
    QStringList Valores(const QString& tabla, const QString& columna)
    {
        const auto abierta = access::mdb::Base(ruta_).AbreTabla(tabla);
        QStringList valores;
        for (access::mdb::Cursor cursor(abierta); cursor.Siguiente();) {
            for (const auto& una : abierta.definicion().columnas) {
                if (una.nombre == columna)
                    valores << access::mdb::TextoExacto(cursor.fila().Lee(una));
            }
        }
        return valores;
    }

    std::size_t Cuantas(const QString& sql) { return base_->Consulta(sql, false).valores.size(); }

    const QString& Ruta() const { return ruta_; }

    std::unique_ptr<access::ProveedorAccess> base_{};

  private:
    QTemporaryDir carpeta_;
    QString ruta_ = carpeta_.filePath("bd.mdb");
};

// Up to the largest amount there is, of 19 digits.
const QStringList Importes{"922337203685477.5807",
                           "-922337203685477.5808",
                           "900719925474.0993",
                           "123456789012345.6789",
                           "-0.0001",
                           "12.34",
                           "549755813888.0001",
                           "922337203685477",
                           "0"};

TEST_F(CifrasEnElFichero, UnImporteSeGuardaConSusCuatroDecimales)
{
    Abre();
    Haz("CREATE TABLE M (C CURRENCY)");
    for (const QString& importe : Importes)
        Haz("INSERT INTO M (C) VALUES (" + importe + ")");

    EXPECT_EQ(Valores("M", "C"), Importes);
}

TEST_F(CifrasEnElFichero, UnImporteDeUnParametroTambien)
{
    Abre();
    Haz("CREATE TABLE M (C CURRENCY)");
    const Filas filas = base_->Consulta("SELECT * FROM M", true);
    for (const QString& importe : Importes)
        base_->Inserta(filas, {{"C", importe}});

    EXPECT_EQ(Valores("M", "C"), Importes);
}

TEST_F(CifrasEnElFichero, UnImporteSeCopiaEnteroDeUnaColumnaAOtra)
{
    Abre();
    Haz("CREATE TABLE M (ID INT, C CURRENCY, C2 CURRENCY)");
    Haz("CREATE TABLE N (ID INT, C CURRENCY)");
    Haz("CREATE TABLE O (C CURRENCY)");
    for (const QString& importe : Importes)
        Haz("INSERT INTO M (ID,C) VALUES (1," + importe + ")");

    Haz("UPDATE M SET C2=C");
    Haz("INSERT INTO N (ID,C) SELECT ID,C2 FROM M AS X WHERE ID=1");
    Haz("INSERT INTO O SELECT C FROM N");

    EXPECT_EQ(Valores("M", "C2"), Importes);
    EXPECT_EQ(Valores("N", "C"), Importes);
    EXPECT_EQ(Valores("O", "C"), Importes);

    Haz("UPDATE N SET C=0");
    Haz("UPDATE N INNER JOIN M ON N.ID=M.ID SET N.C=M.C2 WHERE M.C2=922337203685477.5807");
    EXPECT_EQ(Valores("N", "C"), QStringList(Importes.size(), Importes[0]));
}

TEST_F(CifrasEnElFichero, UnImporteGrandeSeHallaPorSuIndice)
{
    Abre();
    Haz("CREATE TABLE M (C CURRENCY, N INT)");
    Haz("CREATE INDEX MCN ON M (C, N)");
    for (const QString& importe : Importes)
        Haz("INSERT INTO M VALUES (" + importe + ",7)");
    Haz("INSERT INTO M VALUES (5000000000.1234,7)");

    for (const QString& importe : Importes)
        EXPECT_EQ(Cuantas("SELECT N FROM M WHERE N=7 AND C=" + importe), 1U)
            << importe.toStdString();
    EXPECT_EQ(Cuantas("SELECT N FROM M WHERE N=7 AND C=5000000000.1234"), 1U);
    EXPECT_EQ(Cuantas("SELECT N FROM M WHERE C>=123456789012345.6789"), 3U);
}

TEST_F(CifrasEnElFichero, UnDecimalSeGuardaConTodasSusCifras)
{
    Abre("2003-numeric.mdb");

    Haz("UPDATE test SET col2=123456789012345678");
    EXPECT_EQ(Valores("test", "col2").first(), "123456789012345678");
    EXPECT_EQ(Fallo("UPDATE test SET col2=1e30"), "El número 1E+30 no cabe en el campo test.col2");
    EXPECT_EQ(Valores("test", "col2").first(), "123456789012345678");
}

TEST_F(ValoresAccess, UnImporteQueNoCabeSeDice)
{
    Haz("CREATE TABLE M (C CURRENCY)");
    const auto noCabe = [](const QString& numero) {
        return "El número " + numero + " no cabe en el campo M.C";
    };

    for (const char* importe :
         {"922337203685477.5808", "-922337203685477.5809", "1000000000000000", "1e300"}) {
        const QString numero = QLatin1String(importe);
        EXPECT_EQ(Fallo("INSERT INTO M VALUES (" + numero + ")"),
                  noCabe(numero == "1e300" ? "1E+300" : numero));
        EXPECT_EQ(Fallo("INSERT INTO M VALUES ('" + numero + "')"), noCabe(numero));
    }
    EXPECT_EQ(Fallo("INSERT INTO M VALUES (99999999999999999999)"), noCabe("99999999999999999999"));
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM M"), "0");
}

TEST_F(ValoresAccess, LosImportesCorrientesSonLosDeSiempre)
{
    Haz({"CREATE TABLE M (C CURRENCY)", "INSERT INTO M VALUES (1.00005)",
         "INSERT INTO M VALUES (1.00015)", "INSERT INTO M VALUES ('2.50')",
         "INSERT INTO M VALUES (-3)", "INSERT INTO M VALUES (1/3)"});

    EXPECT_EQ(Tabla("SELECT C,C & '' FROM M"), "1|1 1.0002|1.0002 2.5|2.5 -3|-3 0.3333|0.3333");
    EXPECT_EQ(Tabla("SELECT SUM(C) FROM M"), "1.8335");
}

TEST_F(ValoresAccess, UnNumeroLargoSeComparaComoNumero)
{
    Haz({"CREATE TABLE M (C CURRENCY, D DOUBLE, T nvarchar(30))",
         "INSERT INTO M VALUES (123456789012345.6789,0.1234567890123456789,99999999999999999999)"});

    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM M WHERE C=123456789012345.6789"), "1");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM M WHERE C>-123456789012345.6789"), "1");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM M WHERE D=0.1234567890123456789"), "1");
    EXPECT_EQ(Tabla("SELECT T,D+1.0000000000000000000 FROM M"), "1E+20|1.12345678901235");
    EXPECT_EQ(Tabla("SELECT 99999999999999999999+1 FROM M"), "1E+20");
}

TEST_F(ValoresAccess, UnaFechaEstaEntreLosAnios100Y9999)
{
    Haz({"CREATE TABLE D (F DATETIME)", "INSERT INTO D VALUES (-657434)",
         "INSERT INTO D VALUES (2958465)", "INSERT INTO D VALUES ('1/1/0100')"});

    const QString fuera = "La fecha para el campo D.F no está entre los años 100 y 9999";
    for (const char* fecha :
         {"1000000000", "-700000", "2958466", "-657435", "1e300", "'31/12/0099'"})
        EXPECT_EQ(Fallo(QStringLiteral("INSERT INTO D VALUES (%1)").arg(QLatin1String(fecha))),
                  fuera)
            << fecha;
    EXPECT_EQ(Fallo("UPDATE D SET F=F+1e9"), "La fecha no está entre los años 100 y 9999");
    EXPECT_EQ(Tabla("SELECT F FROM D"), "01/01/0100 31/12/9999 01/01/0100");
    EXPECT_EQ(Tabla("SELECT COUNT(*) FROM D WHERE F<1e9"), "3");
    EXPECT_EQ(Fallo("SELECT DATESERIAL(10000,1,1) FROM D"), "Argumento no válido en DateSerial");
}

TEST_F(ValoresAccess, UnCampoTieneAlgunAncho)
{
    for (const char* tipo : {"TEXT(0)", "nvarchar(0)", "CHAR(0)", "BINARY(0)", "DECIMAL(0)",
                             "DECIMAL(29,2)", "NUMERIC(4,5)"})
        EXPECT_EQ(Fallo(QStringLiteral("CREATE TABLE A (C %1)").arg(QLatin1String(tipo))),
                  QStringLiteral("El tipo de datos %1 no puede tener esa medida (posición 19)")
                      .arg(QLatin1String(tipo)));
}

TEST_F(ValoresAccess, UnDecimalSeRedondeaASuEscala)
{
    Haz({"CREATE TABLE P (N DECIMAL(18,4), M NUMERIC(5), D DOUBLE)",
         "INSERT INTO P VALUES (1.00005,2.5,1)", "INSERT INTO P VALUES ('-1.00015',-3.5,2)",
         "INSERT INTO P VALUES (12345678901234.5678,99999,3)",
         "INSERT INTO P (N,M,D) SELECT M,N,4 FROM P WHERE D=2", "UPDATE P SET D=N WHERE D=2"});

    EXPECT_EQ(Tabla("SELECT N,M,D FROM P"),
              "1|2|1 -1.0002|-4|-1.0002 12345678901234.6|99999|3 -4|-1|4");
    EXPECT_EQ(Fallo("INSERT INTO P (M) VALUES (100000)"),
              "El número 100000 no cabe en el campo P.M");
    EXPECT_EQ(Fallo("INSERT INTO P (M) VALUES ('x')"),
              "El campo P.M es un número y no admite \"x\"");
}

TEST_F(CifrasEnElFichero, CadaTipoTieneElSuyoEnElFichero)
{
    Abre();
    const QString guid = "{00112233-4455-6677-8899-AABBCCDDEEFF}";
    Haz("CREATE TABLE X (G GUID, B BINARY(10), V VARBINARY(510), I IMAGE, N DECIMAL(18,4), E NUMERIC(28), R NUMERIC)");
    Haz("INSERT INTO X VALUES ('" + guid +
        "','abc','xyz','pq',12345678901234.5678,1234567890123456789012345678,1.5)");

    QStringList tipos;
    const access::mdb::Tabla tabla = access::mdb::Base(Ruta()).AbreTabla("X");
    for (const auto& columna : tabla.definicion().columnas)
        tipos << QStringLiteral("%1:%2:%3")
                     .arg(columna.nombre)
                     .arg(static_cast<int>(columna.tipo))
                     .arg(columna.largo);
    EXPECT_EQ(tipos, QStringList({"G:15:16", "B:9:10", "V:9:510", "I:11:0", "N:16:17", "E:16:17",
                                  "R:7:8"}));
    EXPECT_EQ(Valores("X", "G"), QStringList(guid));
    EXPECT_EQ(Valores("X", "B"), QStringList("616263"));
    EXPECT_EQ(Valores("X", "N"), QStringList("12345678901234.5678"));
    EXPECT_EQ(Valores("X", "E"), QStringList("1234567890123456789012345678"));
    EXPECT_EQ(Cuantas("SELECT N FROM X WHERE G='" + guid + "'"), 1U);
    EXPECT_EQ(Fallo("INSERT INTO X (B) VALUES ('12345678901')").section(u'(', 0, 0).trimmed(),
              "El valor tiene 11 bytes y caben 10");

    Haz("UPDATE X SET N=E WHERE FALSE");
    Haz("INSERT INTO X (E) SELECT E FROM X");
    EXPECT_EQ(Valores("X", "E"), QStringList(2, "1234567890123456789012345678"));
}

} // namespace
