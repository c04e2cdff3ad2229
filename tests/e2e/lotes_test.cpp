#include "apoyo/corrida_real.h"
#include <QImage>
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

QString DosCifras(int n)
{
    return QString::number(n).rightJustified(2, u'0');
}

/// More of everything than fits into one batch: 39 families, 51 articles, 201 options, 101
/// products to withdraw, pictures in three groups of families and two of articles.
struct LotesPorCuenta : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        QImage foto(20, 20, QImage::Format_RGB32);
        foto.fill(Qt::blue);
        foto.save(empresa->Actual() + "/azul.jpg", "JPEG");
        empresa->Sql(SqlCasa("'" + empresa->Actual() + "/azul.jpg'"));
        QStringList ajenos;
        for (int i = 0; i <= 100; ++i)
            ajenos << QString("(%1,'X%1','S%1')").arg(500 + i);
        tienda->Ejecuta("INSERT INTO ps_product (id_product,reference,supplier_reference) VALUES " +
                        ajenos.join(u','));
        corrida = empresa->Corre();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static QString SqlCasa(const QString& foto)
    {
        QString sql =
            "INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) VALUES ('TAL','Talla');\n";
        for (int i = 1; i <= 201; ++i)
            sql +=
                QString(
                    "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) VALUES ('TAL','%1','T%1');\n")
                    .arg(i, 3, 10, QChar(u'0'));
        for (int i = 1; i <= 39; ++i)
            sql += SqlFamilia(DosCifras(i), 0, "F" + DosCifras(i),
                              {{"FOTO", i == 1 || i == 15 || i == 16 ? foto : "Null"}});
        for (int i = 1; i <= 51; ++i)
            sql += SqlArticulo("01" + DosCifras(i), {{"FOTO", i <= 16 ? foto : "Null"}});
        return sql;
    }
    /// How many sentences of each batch begin so.
    static QList<qsizetype> PorLote(const QString& comienzo)
    {
        QList<qsizetype> cuentas;
        for (int i = 0; i < corrida.lotes.size(); ++i)
            cuentas << QString::fromLatin1(corrida.lotes[i]).count(comienzo);
        return cuentas;
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida corrida{};
};

// The articles' position is that of the record that follows; behind the last it is no record's.
TEST_F(LotesPorCuenta, CadaLoteSeCierraEnSuCuentaYLoDiceSuTitulo)
{
    EXPECT_EQ(EnLineas(corrida.Titulos()),
              EnLineas({"EJECUTANDO REMOTAMENTE Borrando artículos (...100)",
                        "EJECUTANDO REMOTAMENTE Borrando artículos (...101)",
                        "EJECUTANDO REMOTAMENTE Creando Tabla maestra de atributos",
                        "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones",
                        "EJECUTANDO REMOTAMENTE Creando Tabla maestra de combinaciones",
                        "EJECUTANDO REMOTAMENTE Actualización de familias (...20)",
                        "EJECUTANDO REMOTAMENTE Actualización de familias (...40)",
                        "EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...25)",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...50)",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)",
                        "EJECUTANDO REMOTAMENTE actualización de adjuntos"}));
}

TEST_F(LotesPorCuenta, CadaLoteLlevaSoloLoEscritoDesdeElAnterior)
{
    using Cuentas = QList<qsizetype>;
    EXPECT_EQ(PorLote("DELETE FROM ps_product WHERE"),
              (Cuentas{100, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(PorLote("INSERT INTO ps_attribute_group("),
              (Cuentas{0, 0, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(PorLote("INSERT INTO ps_attribute ("),
              (Cuentas{0, 0, 0, 200, 1, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(PorLote("INSERT INTO ps_category ("),
              (Cuentas{0, 0, 0, 0, 0, 18, 20, 1, 0, 0, 0, 0}));
    EXPECT_EQ(PorLote("INSERT INTO ps_product ("), (Cuentas{0, 0, 0, 0, 0, 0, 0, 0, 24, 25, 2, 0}));
}

// The batch closes between a family's rows and its right number, which goes with the next one.
TEST_F(LotesPorCuenta, LaUltimaFamiliaDeUnLoteRecibeSuDerechaEnElSiguiente)
{
    EXPECT_EQ(corrida.SentenciasDe(5).last(),
              "INSERT INTO ps_category_shop (id_category,id_shop,position) VALUES (20,1,18)");
    EXPECT_EQ(corrida.SentenciasDe(6).first(),
              "UPDATE ps_category set nright=38 WHERE kov_familia='18'");
    EXPECT_EQ(tienda->Sql("SELECT nleft,nright FROM ps_category WHERE kov_familia='18'"),
              (Filas{{"37", "38"}}));
}

TEST_F(LotesPorCuenta, CadaLoteDeArticulosTieneSesionYCarpetasPropias)
{
    const QStringList pasos = PasosFtp(corrida.ftp);
    const qsizetype primera = pasos.indexOf("DELE creapath.txt") - PasosDeLote().size() - 1;
    QStringList esperados{"sesion"};
    esperados << PasosDeLote() << "DELE creapath.txt"
              << "STOR creapath.txt";
    QStringList tres = esperados + esperados + esperados;

    EXPECT_EQ(EnLineas(pasos.mid(primera, tres.size())), EnLineas(tres));
    QStringList carpetas;
    for (const ResultadoCorrida::Lista& lista : corrida.listas)
        if (lista.nombre == "creapath.txt")
            carpetas << lista.lineas.join(u' ');
    EXPECT_EQ(EnLineas(carpetas),
              EnLineas({"1; 2; 3; 4; 5; 6; 7; 8; 9; 1/0; 1/1; 1/2; 1/3; 1/4; 1/5; 1/6;", "", ""}));
}

TEST_F(LotesPorCuenta, LasFotosSeDimensionanDeQuinceEnQuince)
{
    QStringList grupos;
    for (const ResultadoCorrida::Lista& lista : corrida.listas)
        if (lista.nombre == "imgfam.txt")
            grupos << lista.lineas.join(u' ');
    EXPECT_EQ(EnLineas(grupos), EnLineas({"img/c/3.jpg; img/c/17.jpg;", "img/c/18.jpg;", ""}));

    QList<qsizetype> articulos;
    for (const ResultadoCorrida::Lista& lista : corrida.listas)
        if (lista.nombre == "imgart.txt")
            articulos << lista.lineas.size();
    EXPECT_EQ(articulos, (QList<qsizetype>{15, 1}));
    EXPECT_EQ(corrida.Lineas("imgart.txt").last(),
              "img/p/1/6/16.jpg                                  img/p/16.jpg;");
    EXPECT_TRUE(tienda->ExisteFichero("img/p/1/6/16-home_default.jpg"));
    EXPECT_TRUE(tienda->ExisteFichero("img/c/18-category_default.jpg"));
}

TEST_F(LotesPorCuenta, CadaGrupoDeFotosTerminaConUnaSesionNueva)
{
    const QStringList pasos = PasosFtp(corrida.ftp);
    QStringList familias{"sesion",          "STOR 3.jpg", "STOR 17.jpg",     "DELE imgfam.txt",
                         "STOR imgfam.txt", "sesion",     "STOR 18.jpg",     "DELE imgfam.txt",
                         "STOR imgfam.txt", "sesion",     "DELE imgfam.txt", "STOR imgfam.txt",
                         "sesion"};
    EXPECT_EQ(EnLineas(pasos.mid(pasos.indexOf("STOR 3.jpg") - 1, familias.size())),
              EnLineas(familias));
    EXPECT_EQ(EnLineas(pasos.mid(pasos.indexOf("STOR 16.jpg", -6) - 1)),
              EnLineas({"sesion", "STOR 16.jpg", "DELE imgart.txt", "STOR imgart.txt", "sesion"}));
}

TEST_F(LotesPorCuenta, TodoLlegaALaTienda)
{
    EXPECT_EQ(tienda->Sql("SELECT COUNT(*),MIN(id_product),MAX(reference) FROM ps_product"),
              (Filas{{"51", "1", "0151"}}));
    EXPECT_EQ(tienda->Sql("SELECT COUNT(*) FROM ps_category"), (Filas{{"41"}}));
    EXPECT_EQ(tienda->Sql("SELECT COUNT(*),MAX(id_attribute) FROM ps_attribute"),
              (Filas{{"201", "1201"}}));
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    EXPECT_EQ(corrida.estado, 0);
}

/// As many articles as one batch can take, and then one more.
struct FinDeLote : testing::Test {
    static void SetUpTestSuite()
    {
        EmpresaReal empresa(TiendaComun({.generacion = "1.6.0", .idiomas = 1}));
        QString articulos;
        for (int i = 1; i <= 24; ++i)
            articulos += SqlArticulo("01" + DosCifras(i));
        empresa.Sql(articulos);
        con24 = empresa.Corre("/SOLOARTIC:000001");
        empresa.Sql(SqlArticulo("0125"));
        con25 = empresa.Corre("/SOLOARTIC:000001");
    }

    static inline ResultadoCorrida con24{}, con25{};
};

TEST_F(FinDeLote, VeinticuatroArticulosVanEnUnSoloLote)
{
    EXPECT_EQ(EnLineas(con24.Titulos().filter("artículos")),
              EnLineas({"EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
    EXPECT_EQ(con24.Sentencias("INSERT INTO ps_product (").size(), 24);
}

// Nothing has changed in the first 24, so their batch is handed over with nothing in it.
TEST_F(FinDeLote, ElVeinticincoVaEnElSegundo)
{
    EXPECT_EQ(EnLineas(con25.Titulos().filter("artículos")),
              EnLineas({"EJECUTANDO REMOTAMENTE Actualización de artículos (...25)",
                        "EJECUTANDO REMOTAMENTE Actualización de artículos (...-3)"}));
    EXPECT_EQ(con25.lotes.value(1), "");
    EXPECT_EQ(con25.SentenciasDe(2).filter("INSERT INTO ps_product (").size(), 1);
}

/// One article of 100 by 200 values: all its combinations go in one batch.
struct VeinteMilCombinaciones : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.1", .idiomas = 1});
        EmpresaReal empresa(*tienda, {{"PS_MODOCONFIGURADOR", "False"}});
        empresa.segundos = 300;
        empresa.Sql(SqlFamilia("01", 0, "Mesas") + SqlArticulo("01A") +
                    SqlCategoria("COL", 100, 1) + SqlCategoria("TAL", 200, 0.01));
        corrida = empresa.Corre();
    }

    /// A category of `cuantos` values, of which the i-th costs `paso` times i.
    static QString SqlCategoria(const QString& codigo, int cuantos, double paso)
    {
        QString sql = QString("INSERT INTO M_OPCIONALES_CAT (CODCATEGORIA,DESCRIPCION) "
                              "VALUES ('%1','%1');\n")
                          .arg(codigo);
        for (int i = 1; i <= cuantos; ++i)
            sql += QString("INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL,DESCRIPCION) "
                           "VALUES ('%1','%2','%2');\n"
                           "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,"
                           "SECUENCIA,INC_PVP,PESO) VALUES ('01A','%1','%2',1,%3,%4,0);\n")
                       .arg(codigo, QString::number(i).rightJustified(3, u'0'), QString::number(i),
                            QString::number(paso * i));
        return sql;
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline ResultadoCorrida corrida{};
};

TEST_F(VeinteMilCombinaciones, VanEnElLoteDeSuArticulo)
{
    const auto delLote = [](const QString& tabla) {
        return QString::fromLatin1(corrida.lotes.at(corrida.lotes.size() - 2))
            .count("INSERT INTO " + tabla + " (");
    };

    EXPECT_EQ(corrida.estado, 0);
    EXPECT_EQ(EnLineas(corrida.log.filter("ERRORES")), "");
    EXPECT_EQ(delLote("ps_product_attribute"), 20'000);
    EXPECT_EQ(delLote("ps_product_attribute_shop"), 20'000);
    EXPECT_EQ(delLote("ps_product_attribute_combination"), 40'000);
}

TEST_F(VeinteMilCombinaciones, LaTiendaLasTieneTodasConSuPrecioYSusValores)
{
    // Each first value 200 times and each second one 100 times: 200*5050 + 100*201.
    for (const char* tabla : {"ps_product_attribute", "ps_product_attribute_shop"})
        EXPECT_EQ(tienda->Sql(QString("SELECT COUNT(*),MIN(id_product_attribute),"
                                      "MAX(id_product_attribute),SUM(price) FROM ") +
                              tabla),
                  (Filas{{"20000", "100001", "120000", "1030100.000000"}}));
    EXPECT_EQ(tienda->Sql("SELECT id_product_attribute,price FROM ps_product_attribute "
                          "WHERE default_on=1 OR id_product_attribute=120000 ORDER BY 1"),
              (Filas{{"100001", "1.010000"}, {"120000", "102.000000"}}));
    EXPECT_EQ(tienda->Sql("SELECT COUNT(*),"
                          "SUM(id_attribute=1001+(id_product_attribute-100001) DIV 200),"
                          "SUM(id_attribute=2001+(id_product_attribute-100001) MOD 200) "
                          "FROM ps_product_attribute_combination"),
              (Filas{{"40000", "20000", "20000"}}));
}

} // namespace
