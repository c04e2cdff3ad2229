#include "data/access/mdb/clave.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <cmath>
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

constexpr OrdenTexto Antiguo{.idioma = 0x0409, .version = 0};
constexpr OrdenTexto De2010{.idioma = 0x0409, .version = 1};

struct CasoClave {
    const char* regla;
    TipoColumna tipo;
    Dato dato;
    bool descendente;
    const char* clave;
    Version version = Version::Jet4;
};

class ClaveDeUnValor : public testing::TestWithParam<CasoClave> {};

TEST_P(ClaveDeUnValor, SonEsosBytes)
{
    const Columna columna{.tipo = GetParam().tipo, .orden = Antiguo};

    const auto clave = ClaveDeValor(GetParam().dato, columna, GetParam().descendente,
                                    {.version = GetParam().version});

    ASSERT_TRUE(clave);
    EXPECT_EQ(*clave, QByteArray::fromHex(GetParam().clave)) << EnHexa(*clave).toStdString();
}

Numerico NumeroDe(quint32 valor, bool negativo = false)
{
    return {.palabras = {0, 0, 0, valor}, .negativo = negativo};
}

INSTANTIATE_TEST_SUITE_P(
    Enteros, ClaveDeUnValor,
    testing::Values(
        CasoClave{"Nulo", TipoColumna::Largo, {}, false, "00"},
        CasoClave{"NuloDescendente", TipoColumna::Largo, {}, true, "ff"},
        CasoClave{"Verdadero", TipoColumna::Logico, true, false, "7f 00"},
        CasoClave{"Falso", TipoColumna::Logico, false, false, "7f ff"},
        CasoClave{"VerdaderoDescendente", TipoColumna::Logico, true, true, "80 ff"},
        CasoClave{"FalsoDescendente", TipoColumna::Logico, false, true, "80 00"},
        CasoClave{"Byte", TipoColumna::Byte, qint64{0xC8}, false, "7f c8"},
        CasoClave{"ByteDescendente", TipoColumna::Byte, qint64{0xC8}, true, "80 37"},
        CasoClave{"Entero", TipoColumna::Entero, qint64{-2}, false, "7f 7f fe"},
        CasoClave{"Largo", TipoColumna::Largo, qint64{1}, false, "7f 80 00 00 01"},
        CasoClave{"LargoNegativo", TipoColumna::Largo, qint64{-1}, false, "7f 7f ff ff ff"},
        CasoClave{"LargoDescendente", TipoColumna::Largo, qint64{1}, true, "80 7f ff ff fe"},
        CasoClave{"Grande", TipoColumna::Grande, qint64{258}, false, "7f 80 00 00 00 00 00 01 02"},
        CasoClave{"Moneda", TipoColumna::Moneda, Moneda{-1}, false, "7f 7f ff ff ff ff ff ff ff"},
        CasoClave{"MonedaDescendente", TipoColumna::Moneda, Moneda{35000}, true,
                  "80 7f ff ff ff ff ff 77 47"}),
    [](const auto& caso) { return caso.param.regla; });

INSTANTIATE_TEST_SUITE_P(Fraccionarios, ClaveDeUnValor,
                         testing::Values(CasoClave{"Simple", TipoColumna::Simple, 1.5F, false,
                                                   "7f bf c0 00 00"},
                                         CasoClave{"SimpleNegativo", TipoColumna::Simple, -1.5F,
                                                   false, "7f 40 3f ff ff"},
                                         CasoClave{"Doble", TipoColumna::Doble, 1.5, false,
                                                   "7f bf f8 00 00 00 00 00 00"},
                                         CasoClave{"DobleNegativoDescendente", TipoColumna::Doble,
                                                   -1.5, true, "80 bf f8 00 00 00 00 00 00"},
                                         CasoClave{"Fecha", TipoColumna::Fecha, Fecha{40000.5},
                                                   false, "7f c0 e3 88 10 00 00 00 00"}),
                         [](const auto& caso) { return caso.param.regla; });

INSTANTIATE_TEST_SUITE_P(
    Numericos, ClaveDeUnValor,
    testing::Values(CasoClave{"DeJet", TipoColumna::Numerico, NumeroDe(5), false,
                              "7f ff 000000000000000000000000 00000005"},
                    CasoClave{"DeJetNegativo", TipoColumna::Numerico, NumeroDe(5, true), false,
                              "7f 00 ffffffffffffffffffffffff fffffffa"},
                    CasoClave{"DeJetDescendenteNoTocaElSigno", TipoColumna::Numerico, NumeroDe(5),
                              true, "80 ff ffffffffffffffffffffffff fffffffa"},
                    CasoClave{"DeJetNegativoDescendente", TipoColumna::Numerico, NumeroDe(5, true),
                              true, "80 00 000000000000000000000000 00000005"},
                    CasoClave{"DeAce", TipoColumna::Numerico, NumeroDe(5), false,
                              "7f ff 000000000000000000000000 00000005", Version::Ace2007},
                    CasoClave{"DeAceNegativo", TipoColumna::Numerico, NumeroDe(5, true), false,
                              "7f 00 ffffffffffffffffffffffff fffffffa", Version::Ace2010},
                    CasoClave{"DeAceDescendente", TipoColumna::Numerico, NumeroDe(5), true,
                              "80 00 ffffffffffffffffffffffff fffffffa", Version::Ace2010},
                    CasoClave{"DeAceNegativoDescendente", TipoColumna::Numerico, NumeroDe(5, true),
                              true, "80 ff 000000000000000000000000 00000005", Version::Ace2010}),
    [](const auto& caso) { return caso.param.regla; });

INSTANTIATE_TEST_SUITE_P(
    Binarios, ClaveDeUnValor,
    testing::Values(CasoClave{"Corto", TipoColumna::Binario, QByteArray("\0\0\0\1", 4), false,
                              "7f 00 00 00 01 00 00 00 00 04"},
                    CasoClave{"DeOcho", TipoColumna::Binario, QByteArray("abcdefgh"), false,
                              "7f 61 62 63 64 65 66 67 68 08"},
                    CasoClave{"DeNueve", TipoColumna::Binario, QByteArray("abcdefghi"), false,
                              "7f 61 62 63 64 65 66 67 68 09 69 00 00 00 00 00 00 00 01"},
                    CasoClave{"DeNueveDescendente", TipoColumna::Binario, QByteArray("abcdefghi"),
                              true, "80 9e 9d 9c 9b 9a 99 98 97 09 96 ff ff ff ff ff ff ff fe"},
                    CasoClave{"Vacio", TipoColumna::Binario, QByteArray(""), false, "7f"},
                    CasoClave{"GuidPorSuTexto", TipoColumna::Guid,
                              Guid{{0x78, 0x56, 0x34, 0x12, 0x34, 0x12, 0x78, 0x56, 1, 2, 3, 4, 5,
                                    6, 7, 8}},
                              false, "7f 12 34 56 78 12 34 56 78 09 01 02 03 04 05 06 07 08 08"}),
    [](const auto& caso) { return caso.param.regla; });

INSTANTIATE_TEST_SUITE_P(
    Textos, ClaveDeUnValor,
    testing::Values(CasoClave{"Ascendente", TipoColumna::Texto, QString("abcdefg"), false,
                              "7f 4a 4c 4d 4f 51 53 55 01 00"},
                    CasoClave{"Descendente", TipoColumna::Texto, QString("ab"), true,
                              "80 b5 b3 fe ff 00"},
                    CasoClave{"Vacio", TipoColumna::Texto, QString(""), false, "7f 01 00"},
                    CasoClave{"Memo", TipoColumna::Memo, QString("ab"), false, "7f 4a 4c 01 00"}),
    [](const auto& caso) { return caso.param.regla; });

struct CasoClaveTexto {
    const char* regla;
    QString texto;
    OrdenTexto orden;
    const char* clave;
};

class ClaveDeTexto : public testing::TestWithParam<CasoClaveTexto> {};

TEST_P(ClaveDeTexto, SonEsosBytes)
{
    const auto clave = ClaveTexto(GetParam().texto, GetParam().orden);

    ASSERT_TRUE(clave);
    EXPECT_EQ(*clave, QByteArray::fromHex(GetParam().clave)) << EnHexa(*clave).toStdString();
}

INSTANTIATE_TEST_SUITE_P(
    Casos, ClaveDeTexto,
    testing::Values(
        CasoClaveTexto{"LasMayusculasNoCuentan", "ABC", Antiguo, "4a 4c 4d 01 00"},
        CasoClaveTexto{"ElGuionVaAlFinal", "co-op", Antiguo,
                       "4d 64 64 66 01 01 01 01 80 0f 06 82 00"},
        CasoClaveTexto{"ElApostrofoTambien", "O'Neil", Antiguo,
                       "64 62 51 59 5e 01 01 01 01 80 0b 06 80 00"},
        CasoClaveTexto{"LosAcentosDetrasDeLasLetras", "naïve café", Antiguo,
                       "62 4a 59 71 51 07 4d 4a 53 51 01 02 02 13 02 02 02 02 02 02 0e 00"},
        CasoClaveTexto{"AcentoYGuion", "é-a", Antiguo, "51 4a 01 0e 01 01 01 80 0b 06 82 00"},
        CasoClaveTexto{"DosGuionesSeguidosTienenElMismoLugar", "a--", Antiguo,
                       "4a 01 01 01 01 80 0b 06 82 80 0b 06 82 00"},
        CasoClaveTexto{"LaEnieEsUnaEneConTilde", "ñ", Antiguo, "62 01 19 00"},
        CasoClaveTexto{"ElEuro", "€", Antiguo, "35 a1 01 00"},
        CasoClaveTexto{"LosBlancosDelFinalNoCuentan", "a  ", Antiguo, "4a 01 00"},
        CasoClaveTexto{"LosDelPrincipioSi", " a", Antiguo, "07 4a 01 00"},
        CasoClaveTexto{"UnCeroSeIgnora", QString("a") + QChar(0) + "b", Antiguo, "4a 4c 01 00"},
        CasoClaveTexto{"General2010", "co-op", De2010,
                       "0e 0a 0e 7c 0e 7c 0e 7e 01 01 01 01 80 0f 06 82 00"},
        CasoClaveTexto{"General2010ConAcento", "café", De2010,
                       "0e 0a 0e 02 0e 23 0e 21 01 02 02 02 0e 00"},
        CasoClaveTexto{"LaEszettCuentaUnLugar", "ßé", Antiguo, "6b 6b 51 01 02 0e 00"}),
    [](const auto& caso) { return caso.param.regla; });

TEST(ClaveDeTextoLargo, CuentanSoloSusPrimeros255Caracteres)
{
    EXPECT_EQ(ClaveTexto(QString(300, 'a'), Antiguo),
              QByteArray(255, '\x4A') + QByteArray("\x01\x00", 2));
}

TEST(ClaveDeTextoAntigua, LaEszettPuedeContarDosLugares)
{
    EXPECT_EQ(ClaveTexto(QStringLiteral("ßé"), Antiguo, Expansion::DosLugares),
              QByteArray::fromHex("6b 6b 51 01 02 02 0e 00"));
}

TEST(ClaveDeTextoDesconocida, NoSeAdivina)
{
    EXPECT_FALSE(ClaveTexto(QStringLiteral("a"), {.idioma = 0x0411, .version = 0}));
    EXPECT_FALSE(ClaveTexto(QStringLiteral("a"), {.idioma = 0x0409, .version = 2}));
    EXPECT_FALSE(ClaveTexto(QStringLiteral("\u041C"), Antiguo));
    EXPECT_FALSE(ClaveDeValor(QString("a"), {.tipo = TipoColumna::Texto, .orden = Antiguo}, false,
                              {.version = Version::Jet3}));
    EXPECT_FALSE(ClaveDeValor(QByteArray("a"), {.tipo = TipoColumna::Ole}, false, {}));
}

class ClaveDeVarias : public testing::Test {
  protected:
    Definicion definicion{.columnas = {{.tipo = TipoColumna::Byte, .numero = 4},
                                       {.tipo = TipoColumna::Entero, .numero = 2}}};
    IndiceReal indice{.columnas = {{.numero = 2}, {.numero = 4, .descendente = true}}};
};

TEST_F(ClaveDeVarias, UnaTrasOtraEnElOrdenDelIndice)
{
    const std::vector<Dato> valores = {qint64{1}, qint64{2}};

    const ClaveDeFila clave = ClaveDe(definicion, indice, valores, {});

    EXPECT_EQ(clave.caso, ClaveDeFila::Caso::Entrada);
    EXPECT_EQ(clave.bytes, QByteArray::fromHex("7f 80 01 80 fd"));
}

TEST_F(ClaveDeVarias, SoloSiTodasSonNulasUnIndiceSinNulosDejaFueraLaFila)
{
    indice.marcas = 0x02;
    const std::vector<Dato> nulos(2);
    const std::vector<Dato> uno = {Dato(), qint64{2}};

    EXPECT_EQ(ClaveDe(definicion, indice, nulos, {}).caso, ClaveDeFila::Caso::SinEntrada);
    EXPECT_EQ(ClaveDe(definicion, indice, uno, {}).bytes, QByteArray::fromHex("00 80 fd"));
    indice.marcas = 0;
    EXPECT_EQ(ClaveDe(definicion, indice, nulos, {}).bytes, QByteArray::fromHex("00 ff"));
}

} // namespace
