#include "apoyo/corrida_con_sitio.h"
#include "sync/marcas.h"
#include <gtest/gtest.h>

using namespace tolmo;
using data::Nulo;
using data::Valor;

namespace {

struct Marcas : testing::Test {
    CorridaConSitio p{};

    void Actualiza(std::initializer_list<std::initializer_list<Valor>> grupos)
    {
        p.programa.parametros.PSGrupoMarcas = "2";
        p.local.Espera("SELECT * FROM M_GRUPART WHERE PARTICIPA=2",
                       HazFilas({"PARTICIPA", "CODGRUPO", "Descripcion"}, grupos));
        sync::ActualizaMarcas(p.fase);
    }
};

TEST_F(Marcas, CadaClaseDaFabricanteTiendaYUnTextoPorIdioma)
{
    Actualiza({{2, 41, "Fabra"}});

    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(
        p.red.Lotes()[0],
        (QStringList{
            "DELETE FROM ps_manufacturer||", "DELETE FROM ps_manufacturer_lang||",
            "DELETE FROM ps_manufacturer_shop||",
            "INSERT INTO ps_manufacturer (id_manufacturer,name,date_add,date_upd,active) VALUES (41,'Fabra',CAST('2024/03/15' AS DATE),CAST('2024/03/15' AS DATE),1)||",
            "INSERT INTO ps_manufacturer_shop (id_manufacturer,id_shop) VALUES (41,1)||",
            "INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES (41,3,'Fabra','Fabra','Fabra','Fabra','Fabra')||",
            "INSERT INTO ps_manufacturer_lang (id_manufacturer,id_lang,description,short_description,meta_title,meta_keywords,meta_description) VALUES (41,1,'Fabra','Fabra','Fabra','Fabra','Fabra')||"}));
}

TEST_F(Marcas, SinFilasSeVacianLasTresTablas)
{
    Actualiza({});

    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.red.Lotes()[0],
              (QStringList{"DELETE FROM ps_manufacturer||", "DELETE FROM ps_manufacturer_lang||",
                           "DELETE FROM ps_manufacturer_shop||"}));
}

TEST_F(Marcas, UnaDescripcionNulaQuedaVaciaYUnApostrofoNoSeToca)
{
    Actualiza({{2, 41, Nulo()}, {2, 42, "L'Olla"}});

    const QStringList lote = p.red.Lotes().at(0);
    EXPECT_TRUE(lote.at(3).contains("VALUES (41,'',CAST("));
    EXPECT_TRUE(lote.at(7).contains("VALUES (42,'L'Olla',CAST("));
}

TEST_F(Marcas, TodasVanEnUnLoteQueDespuesSeBorra)
{
    data::Filas muchas = HazFilas({"PARTICIPA", "CODGRUPO", "Descripcion"}, {});
    for (int codigo = 1; codigo <= 450; ++codigo)
        muchas.valores.insert(muchas.valores.end(), {Valor(7), Valor(codigo), Valor("M")});
    p.programa.parametros.PSGrupoMarcas = "7";
    p.local.Espera("SELECT * FROM M_GRUPART WHERE PARTICIPA=7", muchas);

    sync::ActualizaMarcas(p.fase);

    ASSERT_EQ(p.red.Lotes().size(), 1U);
    EXPECT_EQ(p.red.Lotes()[0].size(), 3 + 450 * 4);
    EXPECT_FALSE(p.prueba.carpeta.Existe("sentencias.sql"));
    EXPECT_EQ(p.progreso.avances.back(), std::pair(450, 450));
    EXPECT_EQ(p.progreso.turnos, 450);
}

TEST_F(Marcas, ElRegistroDiceCadaPaso)
{
    Actualiza({});

    EXPECT_EQ(p.Log(),
              (QStringList{"CARGANDO MARCAS FABRICANTES", "SUBIENDO FICHERO sentencias.sql",
                           "SINCRONIZANDO MARCAS FABRICANTES"}));
}

} // namespace
