#include "apoyo/corrida_con_base.h"
#include "configurator/combinaciones_articulo.h"
#include "sync/articulo.h"
#include "sync/combinaciones.h"
#include <QRegularExpression>
#include <gtest/gtest.h>

using namespace tolmo;
using configurator::Combinacion;
using configurator::CombinacionesDeArticulo;

namespace {

/// The same article for the list and for a run.
struct CombinacionesArticulo : testing::Test {
    CorridaConBase p{};
    const data::Recordset registro{data::Filas{}};
    const sync::Articulo articulo{.fila = registro, .CodArticulo = "A1", .id = "71"};

    void Crea(const QString& tipo = "DOUBLE")
    {
        p.Ejecuta(
            {"CREATE TABLE M_OPCIONALES_CAT (CODCATEGORIA nvarchar(3))",
             "CREATE TABLE M_OPCIONALES (CODCATEGORIA nvarchar(3), CODOPCIONAL nvarchar(3))",
             QString(
                 "CREATE TABLE PS_CONF_ART_VAL (CODARTICULO nvarchar(20), CODCATEGORIA nvarchar(3), VALOR nvarchar(3), SECUENCIA INT, INC_PVP %1, INC_PVP2 %1, PESO %1, FOTO nvarchar(255))")
                 .replace("%1", tipo)});
    }
    void Valor(const QString& categoria, const QString& valor, const QString& secuencia,
               const QString& incremento = "0", const QString& peso = "0",
               const QString& incremento2 = "0")
    {
        const QStringList valores = {"'A1'",
                                     "'" + categoria + "'",
                                     "'" + valor + "'",
                                     secuencia,
                                     incremento,
                                     incremento2,
                                     peso,
                                     "NULL"};
        p.Ejecuta({"INSERT INTO PS_CONF_ART_VAL VALUES (" + valores.join(',') + ")"});
    }
    /// Three categories of 2, 3 and 4 values, in no order of their codes.
    void TresCategorias()
    {
        Valor("TAL", "L", "2", "0.1", "1.25", "7");
        Valor("TAL", "M", "1", "0.2", "0.005", "8");
        Valor("TAL", "S", "1", "NULL", "2", "9");
        Valor("COL", "ROJ", "9", "1.5", "NULL", "0.01");
        Valor("COL", "AZU", "10", "-0.3", "0.75", "0.02");
        for (const char* acabado : {"D", "C", "B", "A"})
            Valor("ZZZ", acabado, "NULL", "1000000.1", "3.3333", "0.3");
    }
    void ConMaestras()
    {
        p.Ejecuta(
            {"INSERT INTO M_OPCIONALES_CAT SELECT DISTINCT CODCATEGORIA FROM PS_CONF_ART_VAL",
             "INSERT INTO M_OPCIONALES (CODCATEGORIA,CODOPCIONAL) SELECT CODCATEGORIA,VALOR FROM PS_CONF_ART_VAL"});
    }
    /// The attributes' ids, by category and value, as the shop numbers them.
    QString Atributo(const QString& categoria, const QString& valor)
    {
        QString sql =
            QString(
                "SELECT (SELECT COUNT(*) FROM M_OPCIONALES_CAT AS C WHERE C.CODCATEGORIA<='%1') AS NCAT,COUNT(*) AS NOPC FROM M_OPCIONALES WHERE CODCATEGORIA='%1' AND CODOPCIONAL<='%2'")
                .replace("%1", categoria)
                .replace("%2", valor);
        const auto fila = data::AbreLectura(p.programa, sql, p.programa.ConexionLocal);
        return QString("%1%2")
            .arg(data::Texto(fila["NCAT"]), 3, '0')
            .arg(data::Texto(fila["NOPC"]), 3, '0');
    }
    /// What a list says of itself: ordinal, attributes, increment and weight of each.
    QStringList Dichas(const CombinacionesDeArticulo& todas, int porPagina)
    {
        QStringList lineas;
        for (long long desde = 1; desde <= todas.Cuantas(); desde += porPagina)
            for (const Combinacion& c : todas.Pagina(desde, porPagina)) {
                QStringList atributos;
                for (int k = 0; k < c.valores.size(); ++k)
                    atributos << Atributo(todas.Categorias()[k], c.valores[k]);
                lineas << QString::number(c.ordinal) + ' ' + atributos.join(',') + ' ' + c.INC_PVP +
                              ' ' + c.PESO;
            }
        return lineas;
    }
    /// The same read from the sentences of a run.
    QStringList Escritas()
    {
        p.programa.DialectoActivo = data::Dialecto::MySql;
        sync::EscribeCombinaciones(p.fase, articulo);
        static const QRegularExpression EsAtributo(
            R"(^INSERT INTO ps_product_attribute_combination .* SELECT (\d+),)");
        static const QRegularExpression EsCombinacion(
            R"(^INSERT INTO ps_product_attribute \(.*'00000','(\d+)'\),5\)\) , ID_PRODUCT,([^,]+),([^,]+),)");
        QStringList lineas;
        QStringList atributos;
        for (const QString& sentencia : p.Sentencias()) {
            if (const auto m = EsAtributo.match(sentencia); m.hasMatch())
                atributos << m.captured(1);
            if (const auto m = EsCombinacion.match(sentencia); m.hasMatch()) {
                lineas << m.captured(1) + ' ' + atributos.join(',') + ' ' + m.captured(2) + ' ' +
                              m.captured(3);
                atributos.clear();
            }
        }
        return lineas;
    }
    CombinacionesDeArticulo Lee(int tarifa)
    {
        p.programa.DialectoActivo = data::Dialecto::Access;
        p.programa.parametros.Ps_pvpdef = tarifa;
        return {p.programa, "A1", tarifa};
    }
};

TEST_F(CombinacionesArticulo, SinValoresNoHayNinguna)
{
    Crea();

    const auto todas = Lee(1);

    EXPECT_EQ(todas.Cuantas(), 0);
    EXPECT_TRUE(todas.Pagina(1, 10).empty());
    EXPECT_TRUE(todas.Categorias().isEmpty());
}

TEST_F(CombinacionesArticulo, SonElProductoDeLosValoresConSusSumas)
{
    Crea();
    TresCategorias();

    const auto todas = Lee(1);

    EXPECT_EQ(todas.Cuantas(), 24);
    EXPECT_EQ(todas.Categorias(), QStringList({"COL", "TAL", "ZZZ"}));
    EXPECT_EQ(
        todas.Pagina(1, 1),
        (std::vector<Combinacion>{
            {.ordinal = 1, .valores = {"ROJ", "M", "A"}, .INC_PVP = "1000001.8", .PESO = "0"}}));
    EXPECT_EQ(todas.Pagina(24, 5), (std::vector<Combinacion>{{.ordinal = 24,
                                                              .valores = {"AZU", "L", "D"},
                                                              .INC_PVP = "999999.9",
                                                              .PESO = "5.3333"}}));
}

TEST_F(CombinacionesArticulo, UnaPaginaEmpiezaYAcabaDondeHayCombinaciones)
{
    Crea();
    TresCategorias();

    const auto todas = Lee(1);

    EXPECT_EQ(todas.Pagina(-3, 2).front().ordinal, 1);
    EXPECT_EQ(todas.Pagina(20, 10).size(), 5u);
    EXPECT_TRUE(todas.Pagina(25, 10).empty());
    EXPECT_TRUE(todas.Pagina(1, 0).empty());
}

TEST_F(CombinacionesArticulo, UnaSolaCategoriaDaSusValores)
{
    Crea();
    Valor("COL", "ROJ", "2", "1.5");
    Valor("COL", "AZU", "1", "2.5");

    const auto todas = Lee(1);

    EXPECT_EQ(todas.Cuantas(), 2);
    EXPECT_EQ(todas.Pagina(2, 1).front().valores, QStringList("ROJ"));
}

TEST_F(CombinacionesArticulo, SeCuentanSinListarlasAunqueNoCaban)
{
    Crea();
    for (int c = 0; c < 25; ++c)
        for (int v = 0; v < 10; ++v)
            Valor(QString("C%1").arg(c, 2, 10, QChar('0')), QString::number(v), "1", "1", "1");

    const auto todas = Lee(1);

    EXPECT_EQ(todas.Cuantas(), std::numeric_limits<long long>::max());
    EXPECT_FALSE(todas.CabenEnLaTienda());
    EXPECT_EQ(todas.Pagina(1000000000001, 1).front().valores.join(QString()),
              "0000000000001000000000000");
    EXPECT_EQ(todas.Pagina(1, 1).front().INC_PVP, "25");
}

TEST_F(CombinacionesArticulo, EnLaTiendaCaben99999)
{
    Crea();
    for (int v = 0; v < 41; ++v)
        Valor("A", QString::number(v), "1");
    for (int v = 0; v < 271; ++v)
        Valor("B", QString::number(v), "1");
    for (int v = 0; v < 9; ++v)
        Valor("C", QString::number(v), "1");

    EXPECT_EQ(Lee(1).Cuantas(), 99999);
    EXPECT_TRUE(Lee(1).CabenEnLaTienda());

    Valor("C", "9", "1");
    EXPECT_FALSE(Lee(1).CabenEnLaTienda());
}

struct SumasDeUnTipo : CombinacionesArticulo, testing::WithParamInterface<const char*> {};

TEST_P(SumasDeUnTipo, LaListaEsLoQueEscribeLaCorrida)
{
    Crea(GetParam());
    TresCategorias();
    ConMaestras();

    for (const int tarifa : {1, 2}) {
        const QStringList dichas = Dichas(Lee(tarifa), 7);

        EXPECT_EQ(dichas.size(), 24);
        EXPECT_EQ(dichas, Escritas()) << tarifa;
        p.prueba.carpeta.Escribe("sentencias.sql", {});
    }
}

INSTANTIATE_TEST_SUITE_P(Tipos, SumasDeUnTipo, testing::Values("DOUBLE", "CURRENCY", "SINGLE"),
                         [](const auto& caso) { return std::string(caso.param); });

} // namespace
