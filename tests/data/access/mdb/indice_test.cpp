#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/indice.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint32 PaginaTabla = 4;

/// Lays entries out in a page; each but the first without the `prefijo` bytes that it shares.
void PonEntradas(PaginasDePrueba& paginas, quint32 numero, const char* cabecera,
                 const std::vector<const char*>& guardadas, quint16 prefijo = 0)
{
    const Formato& f = paginas.formato();
    paginas.Pon(numero, 0, cabecera);
    paginas.Pon32(numero, 4, PaginaTabla);
    paginas.Pon16(numero, f.prefijo, prefijo);
    std::vector<quint8> mascara(f.TamMascara());
    std::size_t fin = 0;
    for (const char* hexa : guardadas) {
        const std::vector<quint8> bytes = DeHexa(hexa);
        paginas.Pon(numero, f.entradas + fin, bytes);
        fin += bytes.size();
        mascara[fin / 8] = static_cast<quint8>(mascara[fin / 8] | 1U << fin % 8);
    }
    paginas.Pon(numero, f.mascara, mascara);
    paginas.Pon16(numero, 2, static_cast<quint16>(f.SitioEntradas() - fin));
}

TEST(PaginaIndice, UnaHojaQueEscribioAccess)
{
    PaginasDePrueba paginas;
    paginas.Pon(3, 0,
                "04 01 12 07 04 00 00 00 00 00 00 00 00 00 00 00 1a 03 00 00 00 00 00 00 04 00 00");
    paginas.Pon(3, 27, "00 00 20 00 40");
    paginas.Pon(3, 480,
                "7f 00 00 00 0d 7f 00 7f 00 00 00 01 00 00 00 00 04 00 00 0f 00"
                "0d 7f 01 7f 00 00 00 01 00 00 00 00 04 00 00 0f 02");

    const PaginaIndice pagina(paginas.Lee(3), paginas.formato());

    EXPECT_FALSE(pagina.EsNodo());
    EXPECT_EQ(pagina.Tabla(), 4U);
    EXPECT_EQ(pagina.Anterior(), 0U);
    EXPECT_EQ(pagina.Siguiente(), 0x31AU);
    EXPECT_EQ(pagina.Libres(), 3616U - 1806U);
    ASSERT_EQ(pagina.Entradas(), 2U);
    EXPECT_EQ(pagina.En(0).Fila(), (Puntero{.pagina = 15, .fila = 0}));
    EXPECT_EQ(pagina.En(1).Fila(), (Puntero{.pagina = 15, .fila = 2}));
    const std::vector<quint8> segunda =
        DeHexa("7f 00 00 00 0d 7f 01 7f 00 00 00 01 00 00 00 00 04");
    EXPECT_TRUE(Iguales(pagina.En(1).Clave(), segunda));
}

TEST(PaginaIndice, UnNodoTieneHijosYCola)
{
    PaginasDePrueba paginas;
    PonEntradas(paginas, 3, "03 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 1a 03",
                {"7f 00 00 00 13 7f 07 7f 00 00 00 03 00 00 00 00 04 00 02 8e 1b 00 00 03 19"});

    const PaginaIndice pagina(paginas.Lee(3), paginas.formato());

    EXPECT_TRUE(pagina.EsNodo());
    EXPECT_EQ(pagina.Cola(), 794U);
    ASSERT_EQ(pagina.Entradas(), 1U);
    EXPECT_EQ(pagina.En(0).Hijo(), 793U);
    EXPECT_EQ(pagina.En(0).Fila(), (Puntero{.pagina = 0x28E, .fila = 0x1B}));
    EXPECT_EQ(pagina.En(0).Clave().size(), 17U);
    EXPECT_EQ(pagina.En(0).ClaveYFila().size(), 21U);
}

TEST(PaginaIndice, LaUltimaEntradaPuedeLlenarLaPagina)
{
    PaginasDePrueba paginas;
    const QByteArray entrada = QByteArray(3616, 'a').toHex();
    PonEntradas(paginas, 3, "04 01", {entrada.constData()});

    const PaginaIndice pagina(paginas.Lee(3), paginas.formato());

    EXPECT_EQ(pagina.Libres(), 0U);
    EXPECT_EQ(pagina.Usados(), 3616U);
    EXPECT_EQ(pagina.En(0).Clave().size(), 3612U);
}

TEST(PaginaIndice, EnAccess97EmpiezanAntes)
{
    PaginasDePrueba paginas(Version::Jet3);
    PonEntradas(paginas, 3, "04 01 00 00 00 00 00 00 05 00 00 00 06 00 00 00",
                {"7f 80 00 00 01 00 00 0f 03"});

    const PaginaIndice pagina(paginas.Lee(3), paginas.formato());

    EXPECT_EQ(pagina.Anterior(), 5U);
    EXPECT_EQ(pagina.Siguiente(), 6U);
    ASSERT_EQ(pagina.Entradas(), 1U);
    EXPECT_EQ(pagina.En(0).Fila(), (Puntero{.pagina = 15, .fila = 3}));
}

TEST(PaginaIndiceDanada, NoSeLee)
{
    PaginasDePrueba paginas;
    paginas.Pon(3, 0, "01 01");
    EXPECT_THROW(PaginaIndice(paginas.Lee(3), paginas.formato()), ErrorMdb);
    // A prefix longer than the entry that it is taken from.
    PonEntradas(paginas, 3, "04 01", {"7f 01 00 00 0f 00", "7f"}, 7);
    EXPECT_THROW(PaginaIndice(paginas.Lee(3), paginas.formato()), ErrorMdb);
    // An entry that ends past the page: bit 3617 of the mask.
    PonEntradas(paginas, 3, "04 01", {});
    paginas.Pon(3, 27 + 452, "02");
    EXPECT_THROW(PaginaIndice(paginas.Lee(3), paginas.formato()), ErrorMdb);
}

TEST(PaginaIndiceDanada, UnaEntradaSinSitioParaSuFilaNoSeLee)
{
    PaginasDePrueba paginas;
    PonEntradas(paginas, 3, "04 01", {"7f 01 00"});
    const PaginaIndice pagina(paginas.Lee(3), paginas.formato());

    EXPECT_THROW(pagina.En(0), ErrorMdb);
}

/// A root (page 5) over the leaves 6, 7 and 8. Keys of one byte; 3 is twice.
class Recorrido : public testing::Test {
  protected:
    Recorrido()
    {
        definicion_->nombre = "T";
        definicion_->pagina = PaginaTabla;
        definicion_->indicesReales = {{.columnas = {{.numero = 0}}, .raiz = 5}};
        paginas_->Pon(9, 0, "00");
        PonEntradas(*paginas_, 5, "03 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 08",
                    {"7f 03 00 00 0a 02 00 00 00 06", "7f 05 00 00 0a 07 00 00 00 07"});
        PonEntradas(*paginas_, 6, "04 01 00 00 00 00 00 00 00 00 00 00 00 00 00 00 07",
                    {"7f 01 00 00 0a 00", "03 00 00 0a 02"}, 1);
        PonEntradas(*paginas_, 7, "04 01 00 00 00 00 00 00 00 00 00 00 06 00 00 00 08",
                    {"7f 03 00 00 0a 04"});
        PonEntradas(*paginas_, 8, "04 01 00 00 00 00 00 00 00 00 00 00 07",
                    {"7f 06 00 00 0a 01", "7f 07 00 00 0b 00"});
    }

    Tabla LaTabla() const { return {paginas_, definicion_}; }
    const IndiceReal& indice() const { return definicion_->indicesReales[0]; }

    std::vector<quint32> Desde(const char* hexa) const
    {
        const std::vector<quint8> bytes = DeHexa(hexa);
        RecorridoIndice recorrido(LaTabla(), indice());
        recorrido.Busca(bytes);
        std::vector<quint32> filas;
        while (recorrido.Siguiente())
            filas.push_back(recorrido.entrada().Fila().Numero());
        return filas;
    }

    std::shared_ptr<PaginasDePrueba> paginas_ = std::make_shared<PaginasDePrueba>();
    std::shared_ptr<Definicion> definicion_ = std::make_shared<Definicion>();
};

TEST_F(Recorrido, VaDeHojaEnHoja)
{
    EXPECT_THAT(Desde(""), ElementsAre(0xA00U, 0xA02U, 0xA04U, 0xA01U, 0xB00U));
}

TEST_F(Recorrido, EmpiezaEnLaPrimeraEntradaQueNoVaAntes)
{
    EXPECT_THAT(Desde("7f 03"), ElementsAre(0xA02U, 0xA04U, 0xA01U, 0xB00U));
    EXPECT_THAT(Desde("7f 06"), ElementsAre(0xA01U, 0xB00U));
    EXPECT_THAT(Desde("7f 08"), IsEmpty());
}

TEST_F(Recorrido, SigueEnLaHojaVecinaSiEnLaSuyaNoHayNada)
{
    // The bound of leaf 7 is 5, but its only entry is 3, as after a row was deleted.
    EXPECT_THAT(Desde("7f 04"), ElementsAre(0xA01U, 0xB00U));
}

TEST_F(Recorrido, LasFilasDeUnaClavePuedenEstarEnDosHojas)
{
    const std::vector<quint8> tres = DeHexa("7f 03");
    const std::vector<quint8> cinco = DeHexa("7f 05");

    EXPECT_THAT(FilasConClave(LaTabla(), indice(), tres),
                ElementsAre(Puntero{.pagina = 10, .fila = 2}, Puntero{.pagina = 10, .fila = 4}));
    EXPECT_THAT(FilasConClave(LaTabla(), indice(), cinco), IsEmpty());
}

TEST_F(Recorrido, UnAnilloDeHojasEsUnDanioQueDiceLaTabla)
{
    paginas_->Pon32(8, 16, 6);

    try {
        Desde("");
        ADD_FAILURE() << "it came to an end";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.lugar().tabla, "T");
        EXPECT_EQ(error.lugar().pagina, 6U);
    }
}

TEST_F(Recorrido, UnNodoQueSeTieneAsiMismoPorHijoEsUnDanio)
{
    paginas_->Pon32(5, 20, 5);

    EXPECT_THROW(Desde("7f 06"), ErrorMdb);
}

TEST_F(Recorrido, UnaPaginaDeOtraTablaEsUnDanio)
{
    paginas_->Pon32(7, 4, PaginaTabla + 1);

    EXPECT_THROW(Desde(""), ErrorMdb);
}

} // namespace
