#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/pagina_datos.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

TEST(PaginaDatos, CadaRanuraAcabaDondeEmpiezaLaAnterior)
{
    PaginasDePrueba paginas;
    paginas.Pon(3, 0, "01 01 ce 0f 17 00 00 00 00 00 00 00 03 00 f1 0f f1 cf e2 0f");

    const PaginaDatos pagina = LeePaginaDatos(paginas, 3);

    EXPECT_EQ(pagina.Duenio(), 0x17U);
    ASSERT_EQ(pagina.Ranuras(), 3U);
    EXPECT_EQ(pagina.Estado(0), EstadoRanura::Fila);
    EXPECT_EQ(pagina.Contenido(0).size(), 15U);
    EXPECT_EQ(pagina.Estado(1), EstadoRanura::Borrada);
    EXPECT_EQ(pagina.Contenido(1).size(), 0U);
    EXPECT_EQ(pagina.Estado(2), EstadoRanura::Fila);
    EXPECT_EQ(pagina.Contenido(2).size(), 15U);
    EXPECT_EQ(pagina.Libres(), 0xFCEU);
    EXPECT_EQ(pagina.Hueco(), 0xFCEU);
}

TEST(PaginaDatos, LasMarcasDicenSiUnaFilaSeMovio)
{
    PaginasDePrueba paginas;
    paginas.Pon(3, 0, "01 01 00 00 17 00 00 00 00 00 00 00 02 00 9d 4f 06 8f");
    paginas.Pon(3, 0xF9D, "00 1c 00 00");

    const PaginaDatos pagina = LeePaginaDatos(paginas, 3);

    EXPECT_EQ(pagina.Estado(0), EstadoRanura::Movida);
    const Puntero destino = Puntero::De(pagina.Contenido(0).U32(0));
    EXPECT_EQ(destino.pagina, 28U);
    EXPECT_EQ(destino.fila, 0);
    EXPECT_EQ(pagina.Estado(1), EstadoRanura::Destino);
    EXPECT_EQ(pagina.Contenido(1).size(), 0xF9DU - 0xF06U);
}

TEST(PaginaDatos, EnAccess97LasRanurasEmpiezanAntes)
{
    PaginasDePrueba paginas(Version::Jet3);
    paginas.Pon(3, 0, "01 01 00 00 17 00 00 00 01 00 f1 07");

    const PaginaDatos pagina = LeePaginaDatos(paginas, 3);

    ASSERT_EQ(pagina.Ranuras(), 1U);
    EXPECT_EQ(pagina.Contenido(0).size(), 15U);
}

struct CasoDanio {
    const char* regla;
    const char* bytes;
};

class PaginaDatosDanada : public testing::TestWithParam<CasoDanio> {};

TEST_P(PaginaDatosDanada, NoDaSuSegundaRanura)
{
    PaginasDePrueba paginas;
    paginas.Pon(3, 0, GetParam().bytes);

    EXPECT_THROW(LeePaginaDatos(paginas, 3).Contenido(1), ErrorMdb);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, PaginaDatosDanada,
    testing::Values(
        CasoDanio{"NoEsDeDatos", "04 01 00 00 17 00 00 00 00 00 00 00 02 00 f1 0f f0 0f"},
        CasoDanio{"NoTieneTantas", "01 01 00 00 17 00 00 00 00 00 00 00 01 00 f1 0f"},
        CasoDanio{"SubeEnLaPagina", "01 01 00 00 17 00 00 00 00 00 00 00 02 00 f1 0f f2 0f"},
        CasoDanio{"CaeEnLaTabla", "01 01 00 00 17 00 00 00 00 00 00 00 02 00 f1 0f 11 00"},
        CasoDanio{"PasaDelFinal", "01 01 00 00 17 00 00 00 00 00 00 00 02 00 ff 1f f0 0f"},
        CasoDanio{"DiceTenerDemasiadas", "01 01 00 00 17 00 00 00 00 00 00 00 01 01 f1 0f f0 0f"}),
    [](const auto& caso) { return caso.param.regla; });

} // namespace
