#include "base_prueba.h"

namespace {

class ConsultasAccess : public testing::Test, public BaseDePrueba {
  protected:
    ConsultasAccess()
    {
        Haz({"CREATE TABLE ART (COD nvarchar(20) PRIMARY KEY, NOMBRE nvarchar(50), PVP CURRENCY, UDS INT, ALTA DATETIME, WEB YESNO, NOTAS NTEXT)",
             "INSERT INTO ART VALUES ('A1','Zapato',10.5,3,#03/15/2024#,TRUE,'uno')",
             "INSERT INTO ART VALUES ('A2','abrigo',20,1,#12/31/2023 18:30:00#,FALSE,'dos')",
             "INSERT INTO ART VALUES ('b3','Bolso',20,NULL,NULL,TRUE,NULL)",
             "INSERT INTO ART VALUES ('B4','ñandú',5.25,7,#01/02/2024#,FALSE,'cuatro')"});
    }
};

TEST_F(ConsultasAccess, LaIgualdadDeTextosNoMiraMayusculas)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='ZAPATO'"), "A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='ÑANDÚ'"), "B4");
    EXPECT_EQ(Tabla("SELECT COD FROM ART WHERE NOMBRE='nandu'"), "");
}

TEST_F(ConsultasAccess, ElOrdenDeTextosNoMiraMayusculas)
{
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY NOMBRE"), "A2 b3 B4 A1");
    EXPECT_EQ(Tabla("SELECT COD FROM ART ORDER BY COD DESC"), "B4 b3 A2 A1");
}

TEST_F(ConsultasAccess, TopDaTambienLosEmpatesDelUltimo)
{
    EXPECT_EQ(Tabla("SELECT TOP 1 COD FROM ART ORDER BY PVP DESC"), "A2 b3");
    EXPECT_EQ(Tabla("SELECT TOP 1 COD FROM ART ORDER BY PVP DESC, COD"), "A2");
    EXPECT_EQ(Tabla("SELECT TOP 3 COD FROM ART ORDER BY PVP"), "B4 A1 A2 b3");
    EXPECT_EQ(Tabla("SELECT TOP 2 COD FROM ART"), "A1 A2");
    EXPECT_EQ(
        Tabla(
            "SELECT COD FROM ART WHERE COD IN (SELECT TOP 1 COD FROM ART ORDER BY PVP DESC) ORDER BY COD"),
        "A2 b3");
}

TEST_F(ConsultasAccess, LosTiposSonLosDeAdo)
{
    const auto filas = Filas("SELECT * FROM ART WHERE COD='A1'");
    QList<int> tipos;
    for (const auto& campo : filas.campos)
        tipos << campo.tipo;
    EXPECT_EQ(tipos, (QList<int>{202, 202, 6, 3, 7, 11, 203}));
    EXPECT_EQ(filas.campos[0].ancho, 20);
    EXPECT_EQ(filas.valores[2], QVariant(10.5));
    EXPECT_EQ(filas.valores[3], QVariant(3));
    EXPECT_EQ(filas.valores[4], QVariant(QDateTime(QDate(2024, 3, 15), QTime(0, 0))));
    EXPECT_EQ(filas.valores[5], QVariant(true));
}

TEST_F(ConsultasAccess, LaMismaFormaConOtrosLiteralesDaOtrasFilas)
{
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='A1'"), "Zapato");
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='b4'"), "ñandú");
    EXPECT_EQ(Tabla("SELECT NOMBRE FROM ART WHERE COD='no'"), "");
}

} // namespace
