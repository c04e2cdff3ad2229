#include "configurador_de_prueba.h"
#include "configurator/modelo_combinaciones.h"

using namespace tolmo;
using configurator::ModeloCombinaciones;

namespace {

class ModeloCombinacionesTest : public testing::Test, public ConfiguradorDePrueba {
  protected:
    ModeloCombinacionesTest() { programa.parametros.Ps_pvpdef = 1; }

    static QString Fila(const ModeloCombinaciones& modelo, int fila)
    {
        QStringList celdas;
        for (int i = 0; i < modelo.columnCount(); ++i)
            celdas << modelo.index(fila, i).data().toString();
        return celdas.join('|');
    }
    /// Values 000, 001... of a category of A2.
    void Valores(const QString& categoria, int cuantos)
    {
        const auto base = AbreBase(Base());
        for (int i = 0; i < cuantos; ++i)
            base->Ejecuta(
                "INSERT INTO PS_CONF_ART_VAL (CODARTICULO,CODCATEGORIA,VALOR,ID,SECUENCIA,INC_PVP,PESO) VALUES ('A2','" +
                categoria + "','" + QString::number(i).rightJustified(3, '0') + "',1," +
                QString::number(i) + ",0,0)");
    }

    ModeloCombinaciones modelo{};
};

TEST_F(ModeloCombinacionesTest, SinArticuloNoDiceNada)
{
    modelo.Lee(programa, "");

    EXPECT_EQ(modelo.Resumen(), "");
    EXPECT_EQ(modelo.rowCount(), 0);
    EXPECT_TRUE(sentencias.isEmpty());
}

TEST_F(ModeloCombinacionesTest, UnArticuloSinValoresNoTieneNinguna)
{
    modelo.Lee(programa, "A3");

    EXPECT_EQ(modelo.Resumen(), "Sin combinaciones");
    EXPECT_EQ(modelo.rowCount(), 0);
}

TEST_F(ModeloCombinacionesTest, CadaFilaDiceSusValoresYSusSumas)
{
    Ejecuta({"INSERT INTO PS_CONF_ART_VAL VALUES ('A1','COL','AZU',50,1,0.5,0,0,0,0,1,NULL)",
             "INSERT INTO PS_CONF_ART_VAL VALUES ('A1','COL','ROJ',51,2,0,0,0,0,0,0,NULL)",
             "UPDATE M_OPCIONALES_CAT SET DESCRIPCION='Color' WHERE CODCATEGORIA='COL'"});

    modelo.Lee(programa, "A1");

    EXPECT_EQ(modelo.Resumen(), "4 combinaciones");
    QStringList cabeceras;
    for (int i = 0; i < modelo.columnCount(); ++i)
        cabeceras << modelo.headerData(i, Qt::Horizontal).toString();
    EXPECT_EQ(cabeceras, QStringList({"Nº", "Color", "Medida", "Incremento", "Peso"}));
    ASSERT_EQ(modelo.rowCount(), 4);
    EXPECT_EQ(Fila(modelo, 0), "1|AZU · Azul|010 · 14 cm|2|1.25");
    EXPECT_EQ(Fila(modelo, 1), "2|AZU · Azul|020 · 18 cm|0|0") << "a Null makes its sum 0";
    EXPECT_EQ(Fila(modelo, 2), "3|ROJ|010 · 14 cm|1.5|0.25") << "an option that is gone";
}

TEST_F(ModeloCombinacionesTest, LosIncrementosSonDeLaTarifaDeLaEmpresa)
{
    Ejecuta({"UPDATE PS_CONF_ART_VAL SET INC_PVP2=8 WHERE VALOR='010'"});
    programa.parametros.Ps_pvpdef = 2;

    modelo.Lee(programa, "A1");

    EXPECT_EQ(Fila(modelo, 0), "1|010 · 14 cm|8|0.25");
}

TEST_F(ModeloCombinacionesTest, SinTarifaElegidaSeVenLosDeLaPrimera)
{
    programa.parametros.Ps_pvpdef = 0;

    modelo.Lee(programa, "A1");

    EXPECT_EQ(Fila(modelo, 0), "1|010 · 14 cm|1.5|0.25");
}

TEST_F(ModeloCombinacionesTest, HastaElLimiteDeLaTiendaSeListan)
{
    Valores("AAA", 271);
    Valores("BBB", 369);

    modelo.Lee(programa, "A2");

    EXPECT_EQ(modelo.Resumen(), "99.999 combinaciones");
    ASSERT_EQ(modelo.rowCount(), 99999);
    EXPECT_EQ(Fila(modelo, 99998), "99999|270|368|0|0");
}

TEST_F(ModeloCombinacionesTest, UnMillonSeCuentaYNoSeLista)
{
    for (const char* categoria : {"AAA", "BBB", "CCC"})
        Valores(categoria, 100);

    modelo.Lee(programa, "A2");

    EXPECT_EQ(modelo.Resumen(),
              "1.000.000 combinaciones: no caben en la tienda, que admite 99.999 por artículo");
    EXPECT_EQ(modelo.rowCount(), 0);
}

} // namespace
