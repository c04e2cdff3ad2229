#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint32 PaginaDelMapa = 1;

std::vector<quint8> Fila(const char* hexa, std::size_t largo = 69)
{
    std::vector<quint8> fila = DeHexa(hexa);
    fila.resize(std::max(fila.size(), largo));
    return fila;
}

/// A file of `cuantas` pages whose page 1 holds one map.
PaginasDePrueba ConMapa(const std::vector<quint8>& fila, quint32 cuantas)
{
    PaginasDePrueba paginas;
    paginas.PonFilas(PaginaDelMapa, 0, {fila});
    paginas.Pon(cuantas - 1, 0, "00");
    return paginas;
}

TEST(Mapa, CadaBitEsUnaPaginaElBajoPrimero)
{
    PaginasDePrueba paginas = ConMapa(Fila("00 00000000 0000 07"), 24);

    const Mapa mapa = LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0});

    EXPECT_THAT(mapa.paginas, ElementsAre(16U, 17U, 18U));
    EXPECT_FALSE(mapa.pasaDelFinal);
}

TEST(Mapa, EmpiezaEnLaPaginaQueDice)
{
    PaginasDePrueba paginas = ConMapa(Fila("00 10000000 82"), 24);

    EXPECT_THAT(PaginasEnUso(paginas, {.pagina = PaginaDelMapa, .fila = 0}), ElementsAre(17U, 23U));
}

TEST(Mapa, LlegaHastaElFinalDeSuFilaAunqueSeaMasLarga)
{
    std::vector<quint8> fila = Fila("00 00000000", 105);
    fila.back() = 0x80;
    PaginasDePrueba paginas = ConMapa(fila, 800);

    EXPECT_THAT(PaginasEnUso(paginas, {.pagina = PaginaDelMapa, .fila = 0}), ElementsAre(799U));
}

TEST(Mapa, LoQuePasaDelFinalNoSonPaginas)
{
    PaginasDePrueba paginas = ConMapa(Fila("00 00000000 f0ff"), 6);

    const Mapa mapa = LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0});

    EXPECT_THAT(mapa.paginas, ElementsAre(4U, 5U));
    EXPECT_TRUE(mapa.pasaDelFinal);
}

TEST(Mapa, EnUsoNoPuedeHaberPaginasQueFaltan)
{
    PaginasDePrueba paginas = ConMapa(Fila("00 00000000 40"), 6);

    try {
        PaginasEnUso(paginas, {.pagina = PaginaDelMapa, .fila = 0});
        ADD_FAILURE() << "page 6 isn't there";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::Cortado);
        EXPECT_EQ(error.lugar().pagina, PaginaDelMapa);
    }
}

TEST(Mapa, PorReferenciaCadaPaginaDeBitsCubre32736)
{
    // Reference 0 is missing, reference 1 is page 3.
    PaginasDePrueba paginas = ConMapa(Fila("01 00000000 03000000"), 32750);
    paginas.Pon(3, 0, "05 01 00 00 04 10");

    const Mapa mapa = LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0});

    EXPECT_THAT(mapa.paginas, ElementsAre(32738U, 32748U));
    EXPECT_THAT(mapa.deBits, ElementsAre(3U));
}

TEST(Mapa, UnaPaginaDeBitsQueNoLoEsEsUnDanio)
{
    PaginasDePrueba paginas = ConMapa(Fila("01 03000000"), 5);
    paginas.Pon(3, 0, "04 01");

    EXPECT_THROW(LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0}), ErrorMdb);
}

TEST(Mapa, UnaFormaDesconocidaEsUnDanio)
{
    PaginasDePrueba paginas = ConMapa(Fila("02 00000000"), 5);

    EXPECT_THROW(LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0}), ErrorMdb);
}

TEST(Mapa, ElPunteroNuloEsUnMapaVacio)
{
    PaginasDePrueba paginas;

    EXPECT_THAT(LeeMapa(paginas, Puntero::De(0)).paginas, IsEmpty());
}

TEST(Mapa, EnAccess97CadaPaginaDeBitsCubre16352)
{
    PaginasDePrueba paginas(Version::Jet3);
    paginas.PonFilas(PaginaDelMapa, 0, {Fila("01 00000000 03000000")});
    paginas.Pon(16360, 0, "00");
    paginas.Pon(3, 0, "05 01 00 00 02");

    EXPECT_THAT(LeeMapa(paginas, {.pagina = PaginaDelMapa, .fila = 0}).paginas,
                ElementsAre(16353U));
}

} // namespace
