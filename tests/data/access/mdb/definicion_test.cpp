#include "data/access/mdb/definicion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::ElementsAre;

namespace {

std::vector<quint8> operator+(std::vector<quint8> a, const std::vector<quint8>& b)
{
    a.insert(a.end(), b.begin(), b.end());
    return a;
}

/// A table as Access writes it: 3 columns (the blocks in another order than they are shown), a
/// column that was deleted, 2 indexes.
std::vector<quint8> DefinicionDePrueba()
{
    return DeHexa("02 01 00 00 00 00 00 00 ffffffff 59 06 00 00"
                  "02 00 00 00 07 00 00 00 01 00000000 00000000 00000000000000"
                  "4e 05 00 03 00 03 00 02 00 00 00 02 00 00 00 00 19 00 00 01 19 00 00") +
           DeHexa("00000000 02000000 00000000 | 00000000 05000000 00000000") +
           // Text 100, memo, long with autonumber.
           DeHexa("0a 59060000 0100 0000 0200 09040000 02 01 00000000 0000 6400") +
           DeHexa("0c 59060000 0400 0200 0300 09040001 82 00 00000000 0000 0000") +
           DeHexa("04 59060000 0000 0000 0100 09040000 07 00 00000000 0400 0400") +
           DeHexa("0800 4100f1004f003100") + // "AñO1"
           DeHexa("0200 4200 | 0200 4300") + DeHexa("83070000 0000 01 0100 00") +
           DeHexa("ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff55") +
           DeHexa("02190000 1c000000 00000000 89 0000000000") +
           DeHexa(
               "83070000 0100 01 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00") +
           DeHexa("03190000 1a000000 00000000 82 0000000000") +
           DeHexa("59060000 01000000 01000000 00 ffffffff 00000000 04 04 00 00000000") +
           DeHexa("59060000 00000000 00000000 02 03000000 22000000 01 02 01 00000000") +
           DeHexa("0200 4200 | 0400 5000 4b00") + DeHexa("0400 04190000 05190000 | ffff");
}

/// Lays a definition over pages 4, 6, 8..., and tells its length.
PaginasDePrueba EnPaginas(std::vector<quint8> bytes, Version version = Version::Jet4)
{
    PaginasDePrueba paginas(version);
    const std::size_t tam = paginas.formato().tamPagina;
    qToLittleEndian(static_cast<quint32>(bytes.size()), bytes.data() + 8);
    const auto trozo = [&](std::size_t desde, std::size_t largo) {
        const auto principio = bytes.begin() + static_cast<std::ptrdiff_t>(desde);
        return std::vector<quint8>(principio, principio + static_cast<std::ptrdiff_t>(largo));
    };
    std::size_t puestos = std::min(tam, bytes.size());
    quint32 pagina = 4;
    paginas.Pon(pagina, 0, trozo(0, puestos));
    while (puestos < bytes.size()) {
        paginas.Pon32(pagina, 4, pagina + 2);
        pagina += 2;
        const std::size_t largo = std::min(tam - 8, bytes.size() - puestos);
        paginas.Pon(pagina, 0, "02 01");
        paginas.Pon(pagina, 8, trozo(puestos, largo));
        puestos += largo;
    }
    return paginas;
}

TEST(Definicion, LasColumnasSalenComoSeMuestran)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionDePrueba());

    const Definicion definicion = LeeDefinicion(paginas, 4);

    EXPECT_EQ(definicion.pagina, 4U);
    EXPECT_EQ(definicion.filas, 2U);
    EXPECT_EQ(definicion.ultimoAutonumerico, 7);
    EXPECT_FALSE(definicion.deSistema);
    EXPECT_EQ(definicion.maxColumnas, 5);
    EXPECT_EQ(definicion.ranuras, 3);
    EXPECT_EQ(definicion.paginasPropias, (Puntero{.pagina = 25, .fila = 0}));
    EXPECT_EQ(definicion.paginasLibres, (Puntero{.pagina = 25, .fila = 1}));
    ASSERT_EQ(definicion.columnas.size(), 3U);
    EXPECT_EQ(definicion.columnas[0].nombre, "C");
    EXPECT_EQ(definicion.columnas[1].nombre, "AñO1");
    EXPECT_EQ(definicion.columnas[2].nombre, "B");
}

TEST(Definicion, DeCadaColumnaSabeTipoSitioYMarcas)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionDePrueba());
    const Definicion definicion = LeeDefinicion(paginas, 4);

    const Columna* texto = definicion.ColumnaDe("aÑo1");
    ASSERT_NE(texto, nullptr);
    EXPECT_EQ(texto->tipo, TipoColumna::Texto);
    EXPECT_EQ(texto->numero, 1);
    EXPECT_EQ(texto->ranura, 0);
    EXPECT_EQ(texto->largo, 100);
    EXPECT_FALSE(texto->Fija());
    EXPECT_TRUE(texto->Comprime());
    EXPECT_EQ(texto->orden, (OrdenTexto{.idioma = 0x0409, .version = 0}));
    const Columna* numero = definicion.ColumnaDe(quint16{0});
    ASSERT_NE(numero, nullptr);
    EXPECT_TRUE(numero->Fija());
    EXPECT_TRUE(numero->Autonumerica());
    EXPECT_EQ(numero->desplazamiento, 4);
    const Columna* memo = definicion.ColumnaDe("B");
    ASSERT_NE(memo, nullptr);
    EXPECT_TRUE(memo->Larga());
    EXPECT_TRUE(memo->Hipervinculo());
    EXPECT_EQ(memo->ranura, 2);
    EXPECT_EQ(memo->orden.version, 1);
    EXPECT_EQ(memo->paginasLargas, (Puntero{.pagina = 25, .fila = 4}));
    EXPECT_EQ(memo->paginasLargasLibres, (Puntero{.pagina = 25, .fila = 5}));
    EXPECT_EQ(definicion.ColumnaDe("D"), nullptr);
}

TEST(Definicion, LosIndicesSonArbolesYNombresSobreEllos)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionDePrueba());
    const Definicion definicion = LeeDefinicion(paginas, 4);

    ASSERT_EQ(definicion.indicesReales.size(), 2U);
    const IndiceReal& primario = definicion.indicesReales[0];
    ASSERT_EQ(primario.columnas.size(), 2U);
    EXPECT_EQ(primario.columnas[0].numero, 0);
    EXPECT_FALSE(primario.columnas[0].descendente);
    EXPECT_EQ(primario.columnas[1].numero, 1);
    EXPECT_TRUE(primario.columnas[1].descendente);
    EXPECT_EQ(primario.raiz, 28U);
    EXPECT_EQ(primario.mapa, (Puntero{.pagina = 25, .fila = 2}));
    EXPECT_EQ(primario.unicas, 2U);
    EXPECT_TRUE(primario.Unico());
    EXPECT_TRUE(primario.Obligatorio());
    EXPECT_FALSE(primario.SinNulos());
    EXPECT_EQ(definicion.indicesReales[1].unicas, 5U);
    EXPECT_TRUE(definicion.indicesReales[1].SinNulos());
    ASSERT_EQ(definicion.indicesLogicos.size(), 2U);
    EXPECT_EQ(definicion.indicesLogicos[0].nombre, "B");
    EXPECT_EQ(definicion.indicesLogicos[0].real, 1U);
    EXPECT_FALSE(definicion.indicesLogicos[0].actualizaEnCascada);
    const IndiceLogico& clave = definicion.indicesLogicos[1];
    EXPECT_EQ(clave.nombre, "PK");
    EXPECT_EQ(clave.clase, ClaseIndice::Primario);
    EXPECT_EQ(clave.ladoRelacion, 2);
    EXPECT_EQ(clave.indiceAjeno, 3U);
    EXPECT_EQ(clave.tablaAjena, 0x22U);
    EXPECT_TRUE(clave.actualizaEnCascada);
    EXPECT_EQ(clave.borraEnCascada, 2);
}

/// 130 text columns with long names, whose blocks and names cross the ends of the pages.
std::vector<quint8> DefinicionLarga()
{
    constexpr int columnas = 130;
    std::vector<quint8> bytes = DefinicionDePrueba();
    bytes.resize(0x3F);
    bytes[0x29] = bytes[0x2B] = bytes[0x2D] = columnas;
    bytes[0x2F] = bytes[0x33] = 0;
    std::vector<quint8> nombres;
    for (quint8 i = 0; i < columnas; ++i) {
        std::vector<quint8> bloque =
            DeHexa("0a 59060000 0000 0000 0000 09040000 02 01 00000000 0000 6400");
        bloque[5] = bloque[7] = bloque[9] = i;
        bytes = bytes + bloque;
        nombres = nombres + DeHexa("2800");
        for (int letra = 0; letra < 20; ++letra)
            nombres = nombres + std::vector<quint8>{static_cast<quint8>('A' + i % 26), 0};
    }
    return bytes + nombres + DeHexa("ffff");
}

TEST(Definicion, SeJuntaDeVariasPaginas)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionLarga());

    const Definicion definicion = LeeDefinicion(paginas, 4);

    EXPECT_THAT(definicion.paginas, ElementsAre(4U, 6U, 8U));
    ASSERT_EQ(definicion.columnas.size(), 130U);
    EXPECT_EQ(definicion.columnas[129].nombre, QString(20, 'Z'));
}

TEST(Definicion, UnaCadenaDePaginasQueVuelveEsUnDanio)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionLarga());
    paginas.Pon32(8, 4, 6);

    EXPECT_THROW(LeeDefinicion(paginas, 4), ErrorMdb);
}

TEST(Definicion, UnaPaginaDeOtraClaseEsUnDanioQueSeDiceDondeEsta)
{
    PaginasDePrueba paginas = EnPaginas(DefinicionLarga());
    paginas.Pon(6, 0, "01");

    try {
        LeeDefinicion(paginas, 4);
        ADD_FAILURE() << "page 6 is no definition";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.lugar().pagina, 6U);
        EXPECT_EQ(error.Descripcion(),
                  "La página no es la definición de una tabla (fichero prueba.mdb, página 6)");
    }
}

TEST(Definicion, MasColumnasDeLasQuePuedeHaberSonUnDanio)
{
    std::vector<quint8> bytes = DefinicionDePrueba();
    bytes[0x2E] = 1;
    PaginasDePrueba paginas = EnPaginas(bytes);

    EXPECT_THROW(LeeDefinicion(paginas, 4), ErrorMdb);
}

TEST(Definicion, UnaColumnaQueLaTablaNoCuentaEsUnDanio)
{
    std::vector<quint8> bytes = DefinicionDePrueba();
    bytes[0x29] = 4;
    PaginasDePrueba paginas = EnPaginas(bytes);

    EXPECT_THROW(LeeDefinicion(paginas, 4), ErrorMdb);
}

TEST(Definicion, LaDeAccess97EsMasCortaYSusNombresWindows1252)
{
    const std::vector<quint8> bytes =
        DeHexa("02 01 00 00 00 00 00 00 ffffffff 02000000 09000000 53 0200 0100 0200 01000000"
               "01000000 00190000 01190000") +
        DeHexa("00000000 04000000") + DeHexa("0a 0100 0000 0200 0000 0904 e404 02 0000 3200") +
        DeHexa("10 0000 0000 0100 0000 0000 1203 03 0800 1100") + DeHexa("02 80f1 | 01 4e") +
        DeHexa("0100 00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00 ffff00"
               "02190000 1c000000 09") +
        DeHexa("00000000 00000000 00 ffffffff 00000000 00 00 01 | 03 4b6579");
    PaginasDePrueba paginas = EnPaginas(bytes, Version::Jet3);

    const Definicion definicion = LeeDefinicion(paginas, 4);

    EXPECT_TRUE(definicion.deSistema);
    EXPECT_EQ(definicion.filas, 2U);
    EXPECT_EQ(definicion.ultimoAutonumerico, 9);
    ASSERT_EQ(definicion.columnas.size(), 2U);
    EXPECT_EQ(definicion.columnas[0].nombre, "N");
    EXPECT_EQ(definicion.columnas[0].precision, 18);
    EXPECT_EQ(definicion.columnas[0].escala, 3);
    EXPECT_EQ(definicion.columnas[0].desplazamiento, 8);
    EXPECT_EQ(definicion.columnas[0].largo, 17);
    EXPECT_EQ(definicion.columnas[1].nombre, "€ñ");
    EXPECT_EQ(definicion.columnas[1].orden.idioma, 0x0409);
    EXPECT_EQ(definicion.columnas[1].largo, 50);
    ASSERT_EQ(definicion.indicesReales.size(), 1U);
    EXPECT_EQ(definicion.indicesReales[0].raiz, 28U);
    EXPECT_EQ(definicion.indicesReales[0].marcas, 9);
    EXPECT_EQ(definicion.indicesReales[0].unicas, 4U);
    EXPECT_TRUE(definicion.indicesReales[0].columnas[0].descendente);
    EXPECT_EQ(definicion.indicesLogicos[0].nombre, "Key");
    EXPECT_EQ(definicion.indicesLogicos[0].clase, ClaseIndice::Primario);
}

} // namespace
