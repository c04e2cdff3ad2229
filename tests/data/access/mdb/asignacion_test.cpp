#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include "data/access/mdb/paginas_en_memoria.h"
#include <array>
#include <gmock/gmock.h>
#include <random>
#include <set>

using namespace tolmo::data::access::mdb;
using testing::Each;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace {

// Page 3 holds the maps of owners.
constexpr Puntero Duenio{.pagina = 3, .fila = 0};
constexpr quint32 CubreUnaPagina = 32736;

std::vector<quint8> Fila(const char* hexa, std::size_t largo = 69)
{
    std::vector<quint8> fila = DeHexa(hexa);
    fila.resize(largo);
    return fila;
}

/// The global map of a file without free pages, with bits of what lies behind its end.
std::vector<quint8> SinLibres(quint32 cuantas, std::size_t largo = 69)
{
    std::vector<quint8> fila(largo);
    for (std::size_t bit = cuantas; bit < 8 * (largo - 5); ++bit)
        fila[5 + bit / 8] = static_cast<quint8>(fila[5 + bit / 8] | 1U << bit % 8);
    return fila;
}

/// A file of `cuantas` pages: the global map is `global`, `propias` are the maps of owners.
PaginasEnMemoria Fichero(quint32 cuantas, const std::vector<quint8>& global,
                         const std::vector<std::vector<quint8>>& propias = {Fila("00")})
{
    PaginasDePrueba prueba;
    prueba.PonFilas(1, 0, {global, Fila("00", 101)});
    prueba.PonFilas(3, 0, propias);
    PaginasEnMemoria paginas(prueba);
    while (paginas.Cuantas() < cuantas)
        paginas.Alarga();
    return paginas;
}

std::vector<quint8> BytesDe(Paginas& paginas, quint32 pagina, std::size_t desde, std::size_t largo)
{
    const auto trozo = paginas.Lee(pagina).bytes.Trozo(desde, largo).Todo();
    return {trozo.begin(), trozo.end()};
}

/// The first bytes of the row of the map of Duenio, which stands last in its page.
std::vector<quint8> PrincipioDelMapa(Paginas& paginas, std::size_t largo)
{
    return BytesDe(paginas, Duenio.pagina, 4096 - 69, largo);
}

std::vector<quint32> Libres(Paginas& paginas)
{
    return LeeMapa(paginas, MapaGlobal).paginas;
}

void Llena(PaginasEnMemoria& paginas, quint32 pagina, quint8 tipo)
{
    const auto bytes = paginas.Cambia(pagina);
    std::fill(bytes.begin(), bytes.end(), quint8{0xAA});
    bytes[0] = tipo;
}

TEST(PidePagina, TomaLaLibreMasBajaYLaDejaACeros)
{
    PaginasEnMemoria paginas = Fichero(24, Fila("00 00000000 0000 07 ff"));
    Llena(paginas, 16, 9);

    EXPECT_EQ(PidePagina(paginas, Duenio), 16U);

    EXPECT_EQ(paginas.Cuantas(), 24U);
    EXPECT_EQ(BytesDe(paginas, 1, 4096 - 69, 9), DeHexa("00 00000000 0000 06 ff"));
    EXPECT_EQ(PrincipioDelMapa(paginas, 8), DeHexa("00 00000000 0000 01"));
    EXPECT_THAT(BytesDe(paginas, 16, 0, 4096), Each(0));
}

TEST(PidePagina, LoQuePasaDelFinalNoEsLibreElFicheroSeAlarga)
{
    PaginasEnMemoria paginas = Fichero(6, SinLibres(6));

    EXPECT_EQ(PidePagina(paginas, Duenio), 6U);

    EXPECT_EQ(paginas.Cuantas(), 7U);
    EXPECT_EQ(BytesDe(paginas, 1, 4096 - 69, 7), DeHexa("00 00000000 80 ff"));
    EXPECT_THAT(PaginasEnUso(paginas, Duenio), ElementsAre(6U));
}

TEST(PidePagina, SinDuenioNoConstaEnOtroMapa)
{
    PaginasEnMemoria paginas = Fichero(6, SinLibres(6));

    EXPECT_EQ(PidePagina(paginas, {}), 6U);

    EXPECT_THAT(Libres(paginas), IsEmpty());
    EXPECT_THAT(PaginasEnUso(paginas, Duenio), IsEmpty());
}

TEST(PidePagina, UnFicheroLlenoEsUnError)
{
    PaginasEnMemoria paginas = Fichero(6, SinLibres(6));
    paginas.Limita(6);

    EXPECT_THROW(PidePagina(paginas, Duenio), ErrorMdb);
}

TEST(SueltaPagina, NoSeConfundeConUnaVivaYQuedaLibre)
{
    // Types 1 to 5, of the owner's map all; 7 is a definition.
    PaginasEnMemoria paginas = Fichero(16, SinLibres(16), {Fila("00 00000000 c007")});
    Llena(paginas, 6, tipo_pagina::Datos);
    Llena(paginas, 7, tipo_pagina::Definicion);
    Llena(paginas, 8, tipo_pagina::Nodo);
    Llena(paginas, 9, tipo_pagina::Hoja);
    Llena(paginas, 10, tipo_pagina::MapaDeBits);

    for (quint32 pagina = 6; pagina <= 9; ++pagina)
        SueltaPagina(paginas, pagina, Duenio);
    SueltaPagina(paginas, 10, {});

    std::vector<int> tipos;
    for (quint32 pagina = 6; pagina <= 10; ++pagina)
        tipos.push_back(paginas.Lee(pagina).bytes.U8(0));
    EXPECT_THAT(tipos, ElementsAre(9, 8, 0, 0, 0));
    EXPECT_EQ(paginas.Lee(6).bytes.U8(1), 0xAA);
    EXPECT_THAT(Libres(paginas), ElementsAre(6U, 7U, 8U, 9U, 10U));
    EXPECT_THAT(PaginasEnUso(paginas, Duenio), ElementsAre(10U));
    EXPECT_EQ(paginas.Cuantas(), 16U);
}

TEST(SueltaPagina, UnaQueNoEstaEnUsoEsUnError)
{
    PaginasEnMemoria paginas = Fichero(24, Fila("00 00000000 0000 07"));

    EXPECT_THROW(SueltaPagina(paginas, 16, Duenio), ErrorMdb);
    EXPECT_THROW(SueltaPagina(paginas, 0, Duenio), ErrorMdb);
    EXPECT_THROW(SueltaPagina(paginas, 2, Duenio), ErrorMdb);
    EXPECT_THROW(SueltaPagina(paginas, 24, {}), ErrorMdb);
}

TEST(MapaEscrito, PonerLaQueEstaOQuitarLaQueNoNoCambiaNada)
{
    PaginasEnMemoria paginas = Fichero(24, SinLibres(24), {Fila("00 00000000 0000 02")});
    const std::vector<quint8> antes = PrincipioDelMapa(paginas, 69);

    AnadeAlMapa(paginas, Duenio, 17);
    QuitaDelMapa(paginas, Duenio, 16);
    QuitaDelMapa(paginas, Duenio, 5000);

    EXPECT_EQ(PrincipioDelMapa(paginas, 69), antes);
    EXPECT_TRUE(EstaEnElMapa(paginas, Duenio, 17));
    EXPECT_FALSE(EstaEnElMapa(paginas, Duenio, 16));
    EXPECT_FALSE(EstaEnElMapa(paginas, Duenio, 5000));
    QuitaDelMapa(paginas, Duenio, 17);
    EXPECT_EQ(PrincipioDelMapa(paginas, 69), Fila("00"));
}

TEST(MapaEscrito, EnUnMapaNuloNoHayNadaNiSePuedePoner)
{
    PaginasEnMemoria paginas = Fichero(24, SinLibres(24));

    EXPECT_FALSE(EstaEnElMapa(paginas, {}, 17));
    QuitaDelMapa(paginas, {}, 17);
    EXPECT_THROW(AnadeAlMapa(paginas, {}, 17), ErrorMdb);
}

TEST(MapaEscrito, UnMapaVacioEmpiezaEnSuPrimeraPagina)
{
    PaginasEnMemoria paginas = Fichero(700, SinLibres(700, 105));

    AnadeAlMapa(paginas, Duenio, 605);

    // 600 = 0x258 is the multiple of 8 below, and 605 its bit 5.
    EXPECT_EQ(PrincipioDelMapa(paginas, 69), Fila("00 58020000 20"));
}

TEST(MapaEscrito, LaVentanaSeMueveMientrasQuepanTodas)
{
    PaginasEnMemoria paginas = Fichero(700, SinLibres(700, 105));
    AnadeAlMapa(paginas, Duenio, 90);
    AnadeAlMapa(paginas, Duenio, 100);

    // From 88 on the 512 bits end with page 599.
    AnadeAlMapa(paginas, Duenio, 599);

    std::vector<quint8> esperada = Fila("00 58000000 04 10");
    esperada.back() = 0x80;
    EXPECT_EQ(PrincipioDelMapa(paginas, 69), esperada);
    EXPECT_EQ(paginas.Cuantas(), 700U);
}

TEST(MapaEscrito, LaVentanaTambienSeMueveHaciaAbajo)
{
    PaginasEnMemoria paginas = Fichero(700, SinLibres(700, 105));
    AnadeAlMapa(paginas, Duenio, 650);

    AnadeAlMapa(paginas, Duenio, 144);

    // 650 - 144 is 506: byte 63, bit 2.
    std::vector<quint8> esperada = Fila("00 90000000 01");
    esperada.back() = 0x04;
    EXPECT_EQ(PrincipioDelMapa(paginas, 69), esperada);
}

TEST(MapaEscrito, SiNoCabenPasaAReferencias)
{
    PaginasEnMemoria paginas = Fichero(700, SinLibres(700, 105));
    AnadeAlMapa(paginas, Duenio, 90);

    AnadeAlMapa(paginas, Duenio, 600);

    // The bitmap page is the first that was free: 700 = 0x2BC, a new one.
    EXPECT_EQ(PrincipioDelMapa(paginas, 69), Fila("01 bc020000"));
    EXPECT_EQ(paginas.Cuantas(), 701U);
    EXPECT_EQ(BytesDe(paginas, 700, 0, 4), DeHexa("05 01 00 00"));
    EXPECT_EQ(paginas.Lee(700).bytes.U8(4 + 90 / 8), 0x04);
    EXPECT_EQ(paginas.Lee(700).bytes.U8(4 + 600 / 8), 0x01);
    EXPECT_THAT(PaginasEnUso(paginas, Duenio), ElementsAre(90U, 600U));
    EXPECT_THAT(Libres(paginas), IsEmpty());
}

TEST(MapaEscrito, UnaFilaMasLargaCubreMas)
{
    PaginasEnMemoria paginas = Fichero(800, SinLibres(800, 105), {Fila("00", 105)});
    AnadeAlMapa(paginas, Duenio, 7);

    AnadeAlMapa(paginas, Duenio, 799);

    std::vector<quint8> esperada = Fila("00 00000000 80", 105);
    esperada.back() = 0x80;
    EXPECT_EQ(BytesDe(paginas, 3, 4096 - 105, 105), esperada);
}

TEST(MapaEscrito, CadaReferenciaTieneSuPaginaDeBits)
{
    PaginasEnMemoria paginas = Fichero(CubreUnaPagina + 10, SinLibres(CubreUnaPagina + 10));
    AnadeAlMapa(paginas, Duenio, 9);

    AnadeAlMapa(paginas, Duenio, CubreUnaPagina + 1);
    AnadeAlMapa(paginas, Duenio, CubreUnaPagina - 1);

    const Mapa mapa = LeeMapa(paginas, Duenio);
    EXPECT_THAT(mapa.paginas, ElementsAre(9U, CubreUnaPagina - 1, CubreUnaPagina + 1));
    ASSERT_EQ(mapa.deBits.size(), 2U);
    EXPECT_EQ(paginas.Lee(mapa.deBits[0]).bytes.U8(4095), 0x80);
    EXPECT_EQ(paginas.Lee(mapa.deBits[1]).bytes.U8(4), 0x02);
}

TEST(MapaEscrito, LaFilaSinSitioParaLaReferenciaEsUnDanio)
{
    // A row of 9 bytes has room for two references.
    PaginasEnMemoria paginas =
        Fichero(2 * CubreUnaPagina + 10, SinLibres(2 * CubreUnaPagina + 10), {Fila("00", 9)});

    AnadeAlMapa(paginas, Duenio, 9);
    AnadeAlMapa(paginas, Duenio, 2 * CubreUnaPagina - 1);
    EXPECT_THROW(AnadeAlMapa(paginas, Duenio, 2 * CubreUnaPagina), ErrorMdb);
}

TEST(MapaEscrito, AlVaciarloVuelvenTambienSusPaginasDeBits)
{
    PaginasEnMemoria paginas = Fichero(700, SinLibres(700, 105));
    AnadeAlMapa(paginas, Duenio, 90);
    AnadeAlMapa(paginas, Duenio, 600);
    ASSERT_EQ(LeeMapa(paginas, Duenio).deBits, std::vector<quint32>{700});

    VaciaMapa(paginas, Duenio);

    EXPECT_EQ(PrincipioDelMapa(paginas, 69), Fila("00"));
    EXPECT_THAT(Libres(paginas), ElementsAre(90U, 600U, 700U));
    EXPECT_EQ(paginas.Lee(700).bytes.U8(0), 0);
}

TEST(MapaGlobalEscrito, AlSalirDeLaFilaPasaAReferencias)
{
    PaginasEnMemoria paginas = Fichero(512, SinLibres(512));

    EXPECT_EQ(PidePagina(paginas, Duenio), 512U);

    // The bitmap page is 513: 514 pages are used, all bits behind them are set.
    EXPECT_EQ(BytesDe(paginas, 1, 4096 - 69, 69), Fila("01 01020000"));
    EXPECT_EQ(paginas.Cuantas(), 514U);
    EXPECT_EQ(BytesDe(paginas, 513, 0, 4), DeHexa("05 01 00 00"));
    EXPECT_THAT(BytesDe(paginas, 513, 4, 64), Each(0));
    EXPECT_EQ(paginas.Lee(513).bytes.U8(4 + 64), 0xFC);
    EXPECT_THAT(BytesDe(paginas, 513, 4 + 65, 4092 - 65), Each(0xFF));
    EXPECT_THAT(PaginasEnUso(paginas, Duenio), ElementsAre(512U));
}

TEST(MapaGlobalEscrito, LasLibresSiguenLibresAlPasarAReferencias)
{
    PaginasEnMemoria paginas = Fichero(600, Fila("00 00000000 0000 10"), {Fila("00 00020000 02")});

    SueltaPagina(paginas, 513, Duenio);

    EXPECT_EQ(paginas.Cuantas(), 601U);
    EXPECT_THAT(Libres(paginas), ElementsAre(20U, 513U));
    EXPECT_EQ(PidePagina(paginas, Duenio), 20U);
    EXPECT_EQ(PidePagina(paginas, Duenio), 513U);
    EXPECT_EQ(PidePagina(paginas, Duenio), 601U);
}

TEST(MapaGlobalEscrito, UnaPaginaDeBitsQueFaltaSeHaceCuandoHaceFalta)
{
    PaginasEnMemoria paginas = Fichero(CubreUnaPagina, Fila("01 05000000"));
    paginas.Cambia(5)[0] = tipo_pagina::MapaDeBits;

    EXPECT_EQ(PidePagina(paginas, Duenio), CubreUnaPagina);

    // 32737 = 0x7FE1; of what it covers the page taken and itself are used.
    EXPECT_EQ(BytesDe(paginas, 1, 4096 - 69, 69), Fila("01 05000000 e17f0000"));
    EXPECT_EQ(BytesDe(paginas, CubreUnaPagina + 1, 0, 6), DeHexa("05 01 00 00 fc ff"));
    EXPECT_THAT(Libres(paginas), IsEmpty());
}

TEST(MapaGlobalEscrito, LaPaginaDeBitsNuevaConstaEnLaQueLaCubre)
{
    // The first bitmap page is missing; the second says that all behind the end is to be had.
    PaginasEnMemoria paginas = Fichero(CubreUnaPagina + 4, Fila("01 00000000 05000000"));
    paginas.Cambia(5)[0] = tipo_pagina::MapaDeBits;
    paginas.Cambia(5)[4] = 0xF0;

    SueltaPagina(paginas, 100, {});

    EXPECT_EQ(paginas.Cuantas(), CubreUnaPagina + 5);
    EXPECT_THAT(Libres(paginas), ElementsAre(100U));
    EXPECT_EQ(paginas.Lee(5).bytes.U8(4), 0xE0);
}

TEST(MapasDanados, DanUnErrorYNoUnaPaginaDeOtro)
{
    const auto pide = [](const std::vector<quint8>& global, const std::vector<quint8>& propia) {
        PaginasEnMemoria paginas = Fichero(24, global, {propia});
        PidePagina(paginas, Duenio);
    };

    EXPECT_THROW(pide(Fila("02"), Fila("00")), ErrorMdb);
    EXPECT_THROW(pide(Fila("00", 3), Fila("00")), ErrorMdb);
    EXPECT_THROW(pide(Fila("01 06000000"), Fila("00")), ErrorMdb) << "page 6 holds no bits";
    EXPECT_THROW(pide(Fila("01 60000000"), Fila("00")), ErrorMdb) << "there is no page 96";
    EXPECT_THROW(pide(Fila("00 00000000 02"), Fila("00")), ErrorMdb) << "page 1 free";
    EXPECT_THROW(pide(Fila("00 00000000 08"), Fila("00")), ErrorMdb) << "its own map free";
    EXPECT_THROW(pide(Fila("00 00000000 10"), Fila("00 00000000 10")), ErrorMdb) << "4 is taken";
    EXPECT_THROW(pide(SinLibres(24), Fila("03")), ErrorMdb);
    EXPECT_THROW(pide(SinLibres(24), Fila("00 00100000 01")), ErrorMdb) << "page 4096 in use";
}

/// What the maps of three owners should hold.
class MapasGrandes : public testing::Test {
  protected:
    void Pide(quint8 cual)
    {
        const quint32 pagina = PidePagina(paginas_, De(cual));
        EXPECT_TRUE(espejo_[cual].insert(pagina).second);
        EXPECT_TRUE(todas_.insert(pagina).second) << "page " << pagina << " has two owners";
    }
    void Suelta(quint8 cual, quint32 pagina)
    {
        SueltaPagina(paginas_, pagina, De(cual));
        espejo_[cual].erase(pagina);
        todas_.erase(pagina);
    }
    void Compara()
    {
        std::set<quint32> usadas = todas_;
        for (quint8 cual = 0; cual < espejo_.size(); ++cual) {
            const Mapa mapa = LeeMapa(paginas_, De(cual));
            EXPECT_THAT(mapa.paginas, ElementsAreArray(espejo_[cual]));
            usadas.insert(mapa.deBits.begin(), mapa.deBits.end());
        }
        const Mapa global = LeeMapa(paginas_, MapaGlobal);
        usadas.insert(global.deBits.begin(), global.deBits.end());
        usadas.insert({0, 1, 2, 3});
        EXPECT_EQ(usadas.size() + global.paginas.size(), paginas_.Cuantas());
        for (const quint32 libre : global.paginas)
            EXPECT_FALSE(usadas.contains(libre)) << libre;
    }
    static Puntero De(quint8 cual) { return {.pagina = 3, .fila = cual}; }

    PaginasEnMemoria paginas_ = Fichero(4, SinLibres(4), {Fila("00"), Fila("00", 105), Fila("00")});
    std::array<std::set<quint32>, 3> espejo_{};
    std::set<quint32> todas_{};
};

TEST_F(MapasGrandes, CienMilPaginasSePidenYSeSueltan)
{
    for (int i = 0; i < 100'000; ++i)
        Pide(static_cast<quint8>(i < 300 ? 0 : i % 3));
    Compara();

    std::mt19937 azar(7);
    for (quint8 cual = 0; cual < 3; ++cual) {
        const std::set<quint32> antes = espejo_[cual];
        for (const quint32 pagina : antes) {
            if (azar() % 2 == 0)
                Suelta(cual, pagina);
        }
    }
    Compara();

    const quint32 cuantas = paginas_.Cuantas();
    const std::vector<quint32> libres = Libres(paginas_);
    for (const quint32 libre : libres) {
        Pide(2);
        ASSERT_TRUE(espejo_[2].contains(libre)) << "the lowest was " << libre;
    }
    EXPECT_EQ(paginas_.Cuantas(), cuantas);
    EXPECT_THAT(Libres(paginas_), IsEmpty());
    Compara();
}

} // namespace
