#include "apoyo/corrida_real.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// Families of which some aren't published, loaded three times while the tree changes.
struct ArbolDeFamilias : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        const QMap<QString, QString> no{{"ACTIVOWEB", "'N'"}};
        empresa->Sql(
            SqlFamilia("01", 0, "Cocina") + SqlFamilia("0101", 1, "Ollas", no) +
            SqlFamilia("010101", 2, "Ollas altas") + SqlFamilia("02", 0, "Baño", no) +
            SqlFamilia("0201", 1, "Toallas") +
            SqlFamilia("03", 0, "Jardín", {{"ACTIVOWEB", "Null"}, {"EMPRESASWEB", "',1,'"}}) +
            SqlArticulo("010101A") + SqlArticulo("0101B") + SqlArticulo("03A"));
        primera = empresa->Corre();
        trasPrimera = Categorias();

        empresa->Sql("UPDATE M_FAMILIA SET ACTIVOWEB='N' WHERE CLAVE='01';\n"
                     "DELETE FROM M_FAMILIA WHERE CLAVE='0201';\n" +
                     SqlFamilia("04", 0, "Oficina"));
        segunda = empresa->Corre();
        trasSegunda = Categorias();

        empresa->Sql("UPDATE M_FAMILIA SET ACTIVOWEB='S' WHERE CLAVE='01';\n");
        tercera = empresa->Corre();
        trasTercera = Categorias();
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static Filas Categorias()
    {
        return tienda->Sql("SELECT id_category,id_parent,nleft,nright,level_depth,kov_familia FROM "
                           "ps_category ORDER BY nleft");
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida primera{}, segunda{}, tercera{};
    static inline Filas trasPrimera{}, trasSegunda{}, trasTercera{};
};

TEST_F(ArbolDeFamilias, LoPublicadoBajoUnaSinPublicarCuelgaDelAntepasadoPublicadoMasCercano)
{
    const QString hoy = HoyMysql();
    const QString inserta =
        "INSERT INTO ps_category (id_category,id_parent,nleft,nright,level_depth,active,date_add,date_upd,position,kov_familia)  VALUES ";

    EXPECT_EQ(EnLineas(primera.Sentencias("INSERT INTO ps_category (")),
              EnLineas({inserta + "(3,2,3,0,2,1," + hoy + "," + hoy + ",01,'01')",
                        inserta + "(4,3,4,0,3,1," + hoy + "," + hoy + ",010101,'010101')",
                        inserta + "(5,2,7,0,2,1," + hoy + "," + hoy + ",0201,'0201')",
                        inserta + "(6,2,9,0,2,1," + hoy + "," + hoy + ",03,'03')"}));
    EXPECT_EQ(EnLineas(primera.Sentencias("UPDATE ps_category ")),
              EnLineas({"UPDATE ps_category set nleft=1 WHERE id_category=1",
                        "UPDATE ps_category set nleft=2 WHERE id_category=2",
                        "UPDATE ps_category set nright=5 WHERE kov_familia='010101'",
                        "UPDATE ps_category set nright=6 WHERE kov_familia='01'",
                        "UPDATE ps_category set nright=8 WHERE kov_familia='0201'",
                        "UPDATE ps_category set nright=10 WHERE kov_familia='03'",
                        "UPDATE ps_category set nright=11 WHERE id_category=2",
                        "UPDATE ps_category set nright=12 WHERE id_category=1"}));
    EXPECT_EQ(trasPrimera, (Filas{{"1", "0", "1", "12", "0", "NULL"},
                                  {"2", "1", "2", "11", "1", "NULL"},
                                  {"3", "2", "3", "6", "2", "01"},
                                  {"4", "3", "4", "5", "3", "010101"},
                                  {"5", "2", "7", "8", "2", "0201"},
                                  {"6", "2", "9", "10", "2", "03"}}));
}

// The family's test looks for the company's number, the article's for its six characters.
TEST_F(ArbolDeFamilias, ElArticuloVaALaFamiliaPublicadaMasHonda)
{
    EXPECT_EQ(
        EnLineas(primera.Sentencias("INSERT INTO ps_category_product ")),
        EnLineas(
            {"INSERT INTO ps_category_product (id_category,id_product,position) VALUES (4,1,1)",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (3,2,2)",
             "INSERT INTO ps_category_product (id_category,id_product,position) VALUES (1,3,3)"}));
}

TEST_F(ArbolDeFamilias, ElLogNombraSoloLasPublicadas)
{
    EXPECT_EQ(EnLineas(primera.Log("CARGANDO FAMILIAS",
                                   "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB...")),
              EnLineas({"CARGANDO FAMILIAS", "Recopilando información de categorías",
                        "Actualizando Familia 01", "Actualizando Familia 010101",
                        "Actualizando Familia 0201", "Actualizando Familia 03",
                        "ACTUALIZANDO CONTENIDO CARGADO EN SERVIDOR WEB..."}));
}

// 01 and 0201 leave, 010101 moves up, 04 is new and takes the number above the highest.
TEST_F(ArbolDeFamilias, CadaFamiliaConservaSuNumeroCuandoElArbolCambia)
{
    EXPECT_EQ(trasSegunda, (Filas{{"1", "0", "1", "10", "0", "NULL"},
                                  {"2", "1", "2", "9", "1", "NULL"},
                                  {"4", "2", "3", "4", "2", "010101"},
                                  {"6", "2", "5", "6", "2", "03"},
                                  {"7", "2", "7", "8", "2", "04"}}));
}

TEST_F(ArbolDeFamilias, ElNumeroDeUnaQueSeFueNoVuelveConElla)
{
    EXPECT_EQ(trasTercera, (Filas{{"1", "0", "1", "12", "0", "NULL"},
                                  {"2", "1", "2", "11", "1", "NULL"},
                                  {"8", "2", "3", "6", "2", "01"},
                                  {"4", "8", "4", "5", "3", "010101"},
                                  {"6", "2", "7", "8", "2", "03"},
                                  {"7", "2", "9", "10", "2", "04"}}));
}

// Each load sends all of the families and none of the articles, which nobody has touched.
TEST_F(ArbolDeFamilias, LosArticulosNoSeVuelvenAEnviarPorqueCambieElArbol)
{
    EXPECT_EQ(tercera.Sentencias("INSERT INTO ps_category (").size(), 4);
    EXPECT_EQ(EnLineas((segunda.Sentencias() + tercera.Sentencias()).filter("ps_product")), "");
    EXPECT_EQ(EnLineas((primera.log + segunda.log + tercera.log).filter("ERRORES")), "");
}

} // namespace
