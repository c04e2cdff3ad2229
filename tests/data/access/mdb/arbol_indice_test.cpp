#include "data/access/mdb/arbol_de_prueba.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/edicion_indice.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr quint32 Raiz = ArbolDePrueba::Raiz;

QByteArray Bytes16(const char* hexa)
{
    return QByteArray::fromHex(hexa);
}

std::vector<quint8> Trozo(Paginas& paginas, quint32 pagina, std::size_t desde, std::size_t largo)
{
    const auto trozo = paginas.Lee(pagina).bytes.Trozo(desde, largo).Todo();
    return {trozo.begin(), trozo.end()};
}

std::vector<BytesEntrada> Entradas(std::initializer_list<const char*> hexas)
{
    std::vector<BytesEntrada> entradas;
    for (const char* hexa : hexas)
        entradas.push_back(DeHexa(hexa));
    return entradas;
}

/// The key of 1000 bytes that is made of one letter. Three such entries fill a page, of a node too.
QByteArray Clave(char letra, int largo = 1000)
{
    return {largo, letra};
}

Puntero FilaDe(char letra)
{
    return {.pagina = 100, .fila = static_cast<quint8>(letra)};
}

void InsertaLetras(ArbolIndice arbol, const char* letras)
{
    for (; *letras != '\0'; ++letras)
        arbol.Inserta(Clave(*letras), FilaDe(*letras));
}

void BorraLetras(ArbolIndice arbol, const char* letras)
{
    for (; *letras != '\0'; ++letras)
        EXPECT_TRUE(arbol.Borra(Clave(*letras), FilaDe(*letras))) << *letras;
}

/// A page in short: previous < entries, each by its first letter and in nodes its child > next,
/// tail.
std::string Cuenta(const ArbolDePrueba& prueba, quint32 numero)
{
    const PaginaIndice pagina = prueba.Lee(numero);
    std::string cuenta = std::to_string(pagina.Anterior()) + " <";
    for (std::size_t i = 0; i < pagina.Entradas(); ++i) {
        cuenta += std::string(" ") + static_cast<char>(pagina.En(i).Clave()[0]);
        if (pagina.EsNodo())
            cuenta += std::to_string(pagina.En(i).Hijo());
    }
    cuenta += " > " + std::to_string(pagina.Siguiente());
    return pagina.EsNodo() ? cuenta + " tail " + std::to_string(pagina.Cola()) : cuenta;
}

TEST(EdicionIndice, UnaHojaVacia)
{
    const ArbolDePrueba prueba;

    // 3616 bytes are 0x0E20.
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 0, 8), DeHexa("04 01 20 0e 04 00 00 00"));
    EXPECT_THAT(Trozo(prueba.paginas(), Raiz, 8, 4096 - 8), Each(0));
}

TEST(EdicionIndice, UnaHojaComoLasDeAccess)
{
    const ArbolDePrueba prueba;

    EscribeEntradas(prueba.paginas(), Raiz,
                    Entradas({"7f0000000d 7f00 7f0000000100000000 04 00000f00",
                              "7f0000000d 7f01 7f0000000100000000 04 00000f02",
                              "7f00000013 7f07 7f0000000300000000 04 00028e1b"}),
                    false);

    // The prefix of 4 bytes is stored once; 21 + 17 + 17 bytes leave 3561 free.
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 2, 2), DeHexa("e9 0d"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 24, 3 + 8), DeHexa("04 00 00 00 00 20 00 40 00 80 00"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 55),
              DeHexa("7f0000000d 7f00 7f0000000100000000 04 00000f00"
                     "0d 7f01 7f0000000100000000 04 00000f02"
                     "13 7f07 7f0000000300000000 04 00028e1b"));
}

TEST(EdicionIndice, UnNodoComoLosDeAccess)
{
    const ArbolDePrueba prueba;
    const auto clave = DeHexa("7f00000013 7f07 7f0000000300000000 04 00028e1b");

    EscribeCabecera(prueba.paginas(), Raiz, {.esNodo = true, .tabla = 4, .cola = 794});
    EscribeEntradas(prueba.paginas(), Raiz, std::vector<BytesEntrada>{EntradaDeNodo(clave, 793)},
                    true);

    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 0, 27),
              DeHexa("03 01 07 0e 04000000 00000000 00000000 00000000 1a030000 0000 01"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 27, 4), DeHexa("00 00 00 02"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 26),
              DeHexa("7f00000013 7f07 7f0000000300000000 04 00028e1b 00000319 00"));
}

TEST(EdicionIndice, ElPrefijoNoPasaDeLaClaveMasCorta)
{
    const ArbolDePrueba prueba;

    // All share their key and the page of their row; only the key may be left out.
    EscribeEntradas(prueba.paginas(), Raiz, Entradas({"7f05 00000f00", "7f05 00000f01"}), false);

    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 24, 2), DeHexa("02 00"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 10), DeHexa("7f05 00000f00 00000f01"));
}

TEST(EdicionIndice, SeIntercalaSinRepetirElPrefijo)
{
    const ArbolDePrueba prueba;
    EscribeEntradas(prueba.paginas(), Raiz, Entradas({"7f0103 00000f00", "7f0105 00000f01"}),
                    false);
    ArbolIndice arbol = prueba.Arbol();

    arbol.Inserta(Bytes16("7f0104"), Puntero::De(0xF02));
    arbol.Inserta(Bytes16("7f0106"), Puntero::De(0xF03));
    arbol.Inserta(Bytes16("7f0101"), Puntero::De(0xF04));

    // 7 bytes, then 5 for each of the others; bits 7, 12, 17, 22 and 27.
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 24, 8), DeHexa("02 00 00 80 10 42 08 00"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 27),
              DeHexa("7f0101 00000f04 03 00000f00 04 00000f02 05 00000f01 06 00000f03"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 2, 2), DeHexa("05 0e"));
}

TEST(EdicionIndice, QuienNoTieneElPrefijoLoAcorta)
{
    const ArbolDePrueba prueba;
    EscribeEntradas(prueba.paginas(), Raiz, Entradas({"7f0103 00000f00", "7f0105 00000f01"}),
                    false);

    prueba.Arbol().Inserta(Bytes16("7f0200"), Puntero::De(0xF02));

    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 24, 2), DeHexa("01 00"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 19),
              DeHexa("7f0103 00000f00 0105 00000f01 0200 00000f02"));
}

TEST(EdicionIndice, AlQuitarLaPrimeraLaSegundaLlevaElPrefijo)
{
    const ArbolDePrueba prueba;
    EscribeEntradas(prueba.paginas(), Raiz,
                    Entradas({"7f0103 00000f00", "7f0104 00000f02", "7f0105 00000f01"}), false);
    ArbolIndice arbol = prueba.Arbol();

    EXPECT_TRUE(arbol.Borra(Bytes16("7f0103"), Puntero::De(0xF00)));

    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 24, 5), DeHexa("02 00 00 80 10"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 480, 12), DeHexa("7f0104 00000f02 05 00000f01"));
    EXPECT_TRUE(arbol.Borra(Bytes16("7f0105"), Puntero::De(0xF01)));
    EXPECT_TRUE(arbol.Borra(Bytes16("7f0104"), Puntero::De(0xF02)));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 0, 32), DeHexa("04 01 20 0e 04 000000"
                                                           "0000000000000000 0000000000000000"
                                                           "0000000000000000"));
}

TEST(EdicionIndice, UnaPaginaSeLlenaHastaElUltimoByte)
{
    const ArbolDePrueba prueba;

    // Four entries of 904 bytes are 3616; the last bit is the first of byte 452 of the mask.
    for (const char letra : {'a', 'b', 'c', 'd'})
        prueba.Arbol().Inserta(Clave(letra, 900), FilaDe(letra));

    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < a b c d > 0");
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 2, 2), DeHexa("00 00"));
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 27 + 452, 1), DeHexa("01"));
}

TEST(ArbolIndice, ConClavesQueCrecenLasHojasQuedanLlenas)
{
    const ArbolDePrueba prueba;

    InsertaLetras(prueba.Arbol(), "abcd");
    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < c6 > 0 tail 7");
    EXPECT_EQ(Cuenta(prueba, 6), "0 < a b c > 7");
    EXPECT_EQ(Cuenta(prueba, 7), "6 < d > 0");

    InsertaLetras(prueba.Arbol(), "efg");
    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < c6 f8 > 0 tail 7");
    EXPECT_EQ(Cuenta(prueba, 6), "0 < a b c > 8");
    EXPECT_EQ(Cuenta(prueba, 8), "6 < d e f > 7");
    EXPECT_EQ(Cuenta(prueba, 7), "8 < g > 0");
    EXPECT_THAT(prueba.Faltas(), IsEmpty());
}

TEST(ArbolIndice, UnaHojaSeParteEnMedio)
{
    const ArbolDePrueba prueba;

    InsertaLetras(prueba.Arbol(), "acdb");
    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < b6 > 0 tail 7");
    EXPECT_EQ(Cuenta(prueba, 6), "0 < a b > 7");
    EXPECT_EQ(Cuenta(prueba, 7), "6 < c d > 0");

    // Into the first leaf, whose entry in the root stays where it is.
    InsertaLetras(prueba.Arbol(), "AB");
    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < B8 b6 > 0 tail 7");
    EXPECT_EQ(Cuenta(prueba, 8), "0 < A B > 6");
    EXPECT_EQ(Cuenta(prueba, 6), "8 < a b > 7");
    EXPECT_THAT(prueba.Faltas(), IsEmpty());
}

TEST(ArbolIndice, UnaEntradaLargaEnMedioDejaSitioASusVecinas)
{
    const ArbolDePrueba prueba;
    ArbolIndice arbol = prueba.Arbol();
    arbol.Inserta(Clave('a', 1790), FilaDe('a'));
    arbol.Inserta(Clave('c', 1790), FilaDe('c'));

    // Cut in the middle one half would hold two of the long ones.
    arbol.Inserta(Clave('b', 1790), FilaDe('b'));

    EXPECT_THAT(prueba.Faltas(), IsEmpty());
    EXPECT_EQ(prueba.Entradas().size(), 3U);
}

TEST(ArbolIndice, UnNodoSePartePeroLaRaizNoSeMueve)
{
    const ArbolDePrueba prueba;

    InsertaLetras(prueba.Arbol(), "abcdefghijklm");

    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < i11 > 0 tail 12");
    EXPECT_EQ(Cuenta(prueba, 11), "0 < c6 f8 > 12 tail 9");
    EXPECT_EQ(Cuenta(prueba, 12), "11 < l10 > 0 tail 7");
    EXPECT_EQ(Cuenta(prueba, 9), "8 < g h i > 10");
    EXPECT_EQ(Cuenta(prueba, 10), "9 < j k l > 7");
    EXPECT_EQ(Trozo(prueba.paginas(), Raiz, 26, 1), DeHexa("01"));

    InsertaLetras(prueba.Arbol(), "nopqrstuv");
    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < i11 r16 > 0 tail 12");
    EXPECT_EQ(Cuenta(prueba, 11), "0 < c6 f8 > 16 tail 9");
    EXPECT_EQ(Cuenta(prueba, 16), "11 < l10 o13 > 12 tail 14");
    EXPECT_EQ(Cuenta(prueba, 12), "16 < u15 > 0 tail 7");
    EXPECT_THAT(prueba.Faltas(), IsEmpty());
}

TEST(ArbolIndice, LaCadenaDeNodosNoPasaAlNodoVecino)
{
    const ArbolDePrueba prueba;

    // Letter ~ ends the range; 40 keys are a root over two nodes over nodes.
    std::string letras;
    for (char letra = 'A'; letra < 'A' + 40; ++letra)
        letras += letra;
    InsertaLetras(prueba.Arbol(), letras.c_str());

    ASSERT_EQ(prueba.Niveles(), 4);
    const PaginaIndice raiz = prueba.Lee(Raiz);
    ASSERT_EQ(raiz.Entradas(), 1U);
    const PaginaIndice izquierdo = prueba.Lee(raiz.En(0).Hijo());
    const PaginaIndice derecho = prueba.Lee(raiz.Cola());
    EXPECT_EQ(izquierdo.Siguiente(), derecho.Numero());
    EXPECT_EQ(prueba.Lee(izquierdo.Cola()).Siguiente(), 0U);
    EXPECT_EQ(prueba.Lee(derecho.En(0).Hijo()).Anterior(), 0U);
    EXPECT_TRUE(prueba.Lee(izquierdo.Cola()).EsNodo());
    EXPECT_THAT(prueba.Faltas(), IsEmpty());
}

/// The tree of "abcdefghijklm": the root over the nodes 11 and 12.
class Borrado : public testing::Test {
  protected:
    Borrado() { InsertaLetras(prueba_.Arbol(), "abcdefghijklm"); }

    ArbolDePrueba prueba_{};
};

TEST_F(Borrado, ElLimiteBajaEnElPrimerNodoQueLoTiene)
{
    BorraLetras(prueba_.Arbol(), "fil");

    EXPECT_EQ(Cuenta(prueba_, 11), "0 < c6 e8 > 12 tail 9");
    EXPECT_EQ(Cuenta(prueba_, Raiz), "0 < h11 > 0 tail 12");
    EXPECT_EQ(Cuenta(prueba_, 12), "11 < k10 > 0 tail 7");
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());
}

TEST_F(Borrado, UnaHojaVaciaSaleDelArbol)
{
    BorraLetras(prueba_.Arbol(), "def");

    EXPECT_EQ(Cuenta(prueba_, 11), "0 < c6 > 12 tail 9");
    EXPECT_EQ(Cuenta(prueba_, 6), "0 < a b c > 9");
    EXPECT_EQ(Cuenta(prueba_, 9), "6 < g h i > 10");
    EXPECT_EQ(prueba_.paginas().Lee(8).bytes.U8(0), 0);
    EXPECT_TRUE(EstaEnElMapa(prueba_.paginas(), MapaGlobal, 8));
    EXPECT_FALSE(EstaEnElMapa(prueba_.paginas(), ArbolDePrueba::MapaDelIndice, 8));
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());
}

TEST_F(Borrado, SinSuColaUnNodoTomaLaUltimaHoja)
{
    BorraLetras(prueba_.Arbol(), "m");

    EXPECT_EQ(Cuenta(prueba_, 12), "11 < > 0 tail 10");
    EXPECT_EQ(Cuenta(prueba_, 10), "9 < j k l > 0");
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());

    // Keys that grow go on there.
    InsertaLetras(prueba_.Arbol(), "n");
    EXPECT_EQ(Cuenta(prueba_, 12), "11 < l7 > 0 tail 10");
    EXPECT_EQ(Cuenta(prueba_, 10), "7 < n > 0");
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());
}

TEST_F(Borrado, UnNodoSinHijosSaleDelArbol)
{
    BorraLetras(prueba_.Arbol(), "mjkl");

    EXPECT_EQ(Cuenta(prueba_, Raiz), "0 < > 0 tail 11");
    EXPECT_EQ(Cuenta(prueba_, 11), "0 < c6 f8 > 0 tail 9");
    EXPECT_TRUE(EstaEnElMapa(prueba_.paginas(), MapaGlobal, 12));
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());
}

TEST_F(Borrado, UnaRaizSinNadaEsUnaHojaVacia)
{
    BorraLetras(prueba_.Arbol(), "gahbicdmeflkj");

    EXPECT_EQ(Cuenta(prueba_, Raiz), "0 < > 0");
    EXPECT_EQ(Trozo(prueba_.paginas(), Raiz, 0, 8), DeHexa("04 01 20 0e 04 00 00 00"));
    EXPECT_THAT(PaginasEnUso(prueba_.paginas(), ArbolDePrueba::MapaDelIndice), ElementsAre(Raiz));
    EXPECT_EQ(LeeMapa(prueba_.paginas(), MapaGlobal).paginas.size(), 7U);

    InsertaLetras(prueba_.Arbol(), "a");
    EXPECT_EQ(Cuenta(prueba_, Raiz), "0 < a > 0");
}

TEST_F(Borrado, LoQueNoEstaNoSeBorra)
{
    ArbolIndice arbol = prueba_.Arbol();

    EXPECT_FALSE(arbol.Borra(Clave('a'), FilaDe('b')));
    EXPECT_FALSE(arbol.Borra(Clave('a', 999), FilaDe('a')));
    EXPECT_FALSE(arbol.Borra(Clave('z'), FilaDe('z')));
    EXPECT_EQ(prueba_.Entradas().size(), 13U);
}

TEST_F(Borrado, DeUnaFilaCuyaClaveNoSeSabeDelTodo)
{
    ArbolIndice arbol = prueba_.Arbol();

    // By what is known of the key; where that leads to other rows, wherever it is.
    EXPECT_TRUE(arbol.BorraDeFila(Clave('d', 10), FilaDe('d')));
    EXPECT_TRUE(arbol.BorraDeFila(Clave('d', 10), FilaDe('k')));
    EXPECT_TRUE(arbol.BorraDeFila({}, FilaDe('a')));
    EXPECT_FALSE(arbol.BorraDeFila(Clave('d', 10), FilaDe('d')));

    EXPECT_EQ(Cuenta(prueba_, 6), "0 < b c > 8");
    EXPECT_EQ(Cuenta(prueba_, 8), "6 < e f > 9");
    EXPECT_EQ(Cuenta(prueba_, 10), "9 < j l > 7");
    EXPECT_THAT(prueba_.Faltas(), IsEmpty());
}

TEST_F(Borrado, SoltarloDejaLibresSusPaginas)
{
    prueba_.Arbol().Suelta();

    EXPECT_THAT(LeeMapa(prueba_.paginas(), MapaGlobal).paginas,
                ElementsAre(5U, 6U, 7U, 8U, 9U, 10U, 11U, 12U));
    EXPECT_THAT(PaginasEnUso(prueba_.paginas(), ArbolDePrueba::MapaDelIndice), IsEmpty());
    EXPECT_EQ(prueba_.paginas().Lee(Raiz).bytes.U8(0), 0);
}

TEST_F(Borrado, NoSeSueltaLaPaginaDeOtraTabla)
{
    prueba_.paginas().Cambia(9)[4] = 99;

    EXPECT_THROW(prueba_.Arbol().Suelta(), ErrorMdb);
    EXPECT_THAT(LeeMapa(prueba_.paginas(), MapaGlobal).paginas, IsEmpty());
}

TEST(ArbolIndice, ElLimiteQueNoCabeSeQueda)
{
    // The root has 1591 bytes left, and the bound of leaf 6 would grow from 9 bytes to 1708.
    const ArbolDePrueba prueba;
    PaginasEnMemoria& paginas = prueba.paginas();
    for (quint32 numero = 6; numero <= 9; ++numero)
        ASSERT_EQ(PidePagina(paginas, ArbolDePrueba::MapaDelIndice), numero);
    const auto hoja = [&](quint32 numero, std::vector<BytesEntrada> entradas) {
        EscribeCabecera(paginas, numero,
                        {.tabla = ArbolDePrueba::PaginaTabla,
                         .anterior = numero == 6 ? 0 : numero - 1,
                         .siguiente = numero == 9 ? 0 : numero + 1});
        EscribeEntradas(paginas, numero, entradas, false);
    };
    const auto corta = EntradaDeHoja("b", FilaDe('b'));
    const auto k = EntradaDeHoja(Clave('k'), FilaDe('k'));
    const auto p = EntradaDeHoja(Clave('p'), FilaDe('p'));
    hoja(6, {EntradaDeHoja(Clave('a', 1700), FilaDe('a')), corta});
    hoja(7, {k});
    hoja(8, {p});
    hoja(9, {EntradaDeHoja("z", FilaDe('z'))});
    EscribeCabecera(paginas, Raiz,
                    {.esNodo = true, .tabla = ArbolDePrueba::PaginaTabla, .cola = 9});
    EscribeEntradas(paginas, Raiz,
                    std::vector<BytesEntrada>{EntradaDeNodo(corta, 6), EntradaDeNodo(k, 7),
                                              EntradaDeNodo(p, 8)},
                    true);
    ASSERT_THAT(prueba.Faltas(), IsEmpty());

    EXPECT_TRUE(prueba.Arbol().Borra("b", FilaDe('b')));

    EXPECT_EQ(Cuenta(prueba, Raiz), "0 < b6 k7 p8 > 0 tail 9");
    EXPECT_EQ(Cuenta(prueba, 6), "0 < a > 7");
    EXPECT_THAT(prueba.Faltas(), IsEmpty());
    // Between the leaf's last entry and its bound there is nothing: the next leaf has it.
    EXPECT_FALSE(prueba.Arbol().Tiene("ab"));
    EXPECT_TRUE(prueba.Arbol().Tiene(Clave('k')));
}

TEST(ArbolIndice, TieneLaClaveExactaDeCualquierFila)
{
    const ArbolDePrueba prueba;
    ArbolIndice arbol = prueba.Arbol();
    // The longer key stands in front: its bytes come before those of the row's place.
    arbol.Inserta(Bytes16("7f"), Puntero::De(0xF00));
    arbol.Inserta(Bytes16("7f0000000000000001"), Puntero::De(0xF01));
    ASSERT_EQ(prueba.Entradas()[0].toHex(), "7f000000000000000100000f01");

    EXPECT_TRUE(arbol.Tiene(Bytes16("7f")));
    EXPECT_TRUE(arbol.Tiene(Bytes16("7f0000000000000001")));
    EXPECT_FALSE(arbol.Tiene(Bytes16("7f00")));
    EXPECT_FALSE(arbol.Tiene(Bytes16("")));
    EXPECT_FALSE(arbol.Tiene(Bytes16("80")));
}

TEST(ArbolIndice, LaMismaClaveVaPorElSitioDeSuFila)
{
    const ArbolDePrueba prueba;
    ArbolIndice arbol = prueba.Arbol();
    arbol.Inserta("a", Puntero::De(0x10001));
    arbol.Inserta("a", Puntero::De(0xF02));

    EXPECT_EQ(prueba.Entradas()[0].toHex(), "6100000f02");
    EXPECT_THROW(arbol.Inserta("a", Puntero::De(0xF02)), ErrorMdb);
}

TEST(ArbolIndice, DosEntradasTienenQueCaberEnUnaPagina)
{
    const ArbolDePrueba prueba;
    ArbolIndice arbol = prueba.Arbol();

    // With the row's place and a child, half of 3616.
    arbol.Inserta(Clave('a', 1800), FilaDe('a'));
    try {
        arbol.Inserta(Clave('b', 1801), FilaDe('b'));
        ADD_FAILURE() << "it was taken";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::NoAdmitido);
    }
}

/// The same tree, with bytes that contradict it.
class ArbolDanado : public Borrado {
  protected:
    void Pon(quint32 pagina, std::size_t posicion, quint8 valor)
    {
        prueba_.paginas().Cambia(pagina)[posicion] = valor;
    }
    void Inserta(const char* letras) { InsertaLetras(prueba_.Arbol(), letras); }
    void Borra(char letra) { prueba_.Arbol().Borra(Clave(letra), FilaDe(letra)); }

    static constexpr std::size_t Anterior = 12;
    static constexpr std::size_t Siguiente = 16;
    static constexpr std::size_t Cola = 20;
};

TEST_F(ArbolDanado, UnNodoQueEsHijoDeSiMismoNoTieneFin)
{
    Pon(12, Cola, 12);

    EXPECT_THROW(Inserta("z"), ErrorMdb);
    EXPECT_THROW(Borra('z'), ErrorMdb);
    EXPECT_THROW(prueba_.Arbol().Tiene("z"), ErrorMdb);
}

TEST_F(ArbolDanado, UnHijoQueNoEsDelIndice)
{
    Pon(12, Cola, 0);
    EXPECT_THROW(Inserta("z"), ErrorMdb);
    Pon(12, Cola, 200);
    EXPECT_THROW(Inserta("z"), ErrorMdb);
    Pon(12, Cola, 7);
    Pon(7, 4, 99);
    EXPECT_THROW(Inserta("z"), ErrorMdb);
}

TEST_F(ArbolDanado, LasVecinasQueNoEnlazan)
{
    Pon(6, Siguiente, 9);

    // Leaf 8 would be split, then left empty.
    EXPECT_THROW(prueba_.Arbol().Inserta(Clave('d', 1001), FilaDe('d')), ErrorMdb);
    Borra('d');
    Borra('e');
    EXPECT_THROW(Borra('f'), ErrorMdb);
}

TEST_F(ArbolDanado, UnAnilloDeHojas)
{
    Pon(7, Siguiente, 6);
    Pon(6, Anterior, 7);

    EXPECT_THROW(prueba_.Arbol().BorraDeFila("d", FilaDe('z')), ErrorMdb);
}

TEST_F(ArbolDanado, UnNodoEntreLasHojas)
{
    Pon(10, Siguiente, 12);

    EXPECT_THROW(prueba_.Arbol().BorraDeFila("d", FilaDe('z')), ErrorMdb);
}

TEST_F(ArbolDanado, UnaEntradaALaQueNoSeLlega)
{
    // The root leads past node 11, so only the chain of leaves reaches what is below it.
    Pon(Raiz, 480, 'A');

    EXPECT_THROW(prueba_.Arbol().BorraDeFila({}, FilaDe('b')), ErrorMdb);
}

} // namespace
