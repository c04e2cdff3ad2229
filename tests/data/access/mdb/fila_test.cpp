#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/fila.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

Columna Fija(quint16 numero, TipoColumna tipo, quint16 desplazamiento)
{
    return {.tipo = tipo, .numero = numero, .desplazamiento = desplazamiento, .marcas = 3};
}

Columna Variable(quint16 numero, TipoColumna tipo, quint16 ranura)
{
    return {.tipo = tipo, .numero = numero, .ranura = ranura, .marcas = 2};
}

/// The table of a row that Access wrote: two texts, then a column of most fixed types.
const Definicion DeNueve{.ranuras = 2};
const char* const FilaDeNueve =
    "09 00 | 02 | de 00 | 55 43 de 13 | 7b 14 ae 47 e1 c8 7b 40 | 00 00 00 00 40 a7 da 40 |"
    "b8 88 00 00 00 00 00 00 | ff fe 61 62 63 64 65 66 67 |"
    "68 00 69 00 6a 00 6b 00 6c 00 6d 00 6e 00 6f 00 70 00 | 00 00 | 3c 00 | 2a 00 | 21 00 |"
    "02 00 | ff 01";

class FilaDe : public testing::Test {
  protected:
    Fila Con(const char* hexa, const Definicion& definicion = DeNueve,
             Version version = Version::Jet4)
    {
        paginas_ = std::make_unique<PaginasDePrueba>(version);
        bytes_ = DeHexa(hexa);
        definicion_ = definicion;
        return {definicion_, *paginas_, {.numero = 5}, Bytes(bytes_)};
    }

    Definicion definicion_{};
    std::unique_ptr<PaginasDePrueba> paginas_{};
    std::vector<quint8> bytes_{};
};

TEST_F(FilaDe, CadaColumnaEstaEnSuSitio)
{
    const Fila fila = Con(FilaDeNueve);

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Texto, 0)), Dato(QString("abcdefg")));
    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 1)), Dato(QString("hijklmnop")));
    EXPECT_EQ(fila.Lee(Fija(2, TipoColumna::Byte, 0)), Dato(qint64{2}));
    EXPECT_EQ(fila.Lee(Fija(3, TipoColumna::Entero, 1)), Dato(qint64{222}));
    EXPECT_EQ(fila.Lee(Fija(4, TipoColumna::Largo, 3)), Dato(qint64{333333333}));
    EXPECT_EQ(fila.Lee(Fija(5, TipoColumna::Doble, 7)), Dato(444.555));
    EXPECT_EQ(fila.Lee(Fija(6, TipoColumna::Fecha, 15)), Dato(Fecha{27293.0}));
    EXPECT_EQ(fila.Lee(Fija(7, TipoColumna::Moneda, 23)), Dato(Moneda{35000}));
    EXPECT_EQ(fila.Lee(Fija(8, TipoColumna::Logico, 0)), Dato(true));
}

TEST_F(FilaDe, SinSuBitUnaColumnaEsNulaYUnLogicoFalso)
{
    const Fila fila =
        Con("03 00 | 2a000000 | 06 00 | 06 00 | 01 00 | 00", Definicion{.ranuras = 1});

    EXPECT_EQ(fila.Lee(Fija(0, TipoColumna::Largo, 0)), Dato());
    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 0)), Dato());
    EXPECT_EQ(fila.Lee(Fija(2, TipoColumna::Logico, 0)), Dato(false));
}

TEST_F(FilaDe, UnTextoVacioNoEsNulo)
{
    const Fila fila = Con("01 00 | 02 00 | 02 00 | 01 00 | 01", Definicion{.ranuras = 1});

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Texto, 0)), Dato(QString("")));
}

TEST_F(FilaDe, LasColumnasMasNuevasQueLaFilaSonNulas)
{
    const Fila fila = Con("01 00 | 2a000000 | 01", Definicion{});

    EXPECT_EQ(fila.Lee(Fija(0, TipoColumna::Largo, 0)), Dato(qint64{42}));
    EXPECT_EQ(fila.Lee(Fija(8, TipoColumna::Largo, 4)), Dato());
    EXPECT_EQ(fila.Lee(Fija(9, TipoColumna::Logico, 0)), Dato(false));
}

TEST_F(FilaDe, UnaRanuraQueLaFilaNoTieneEsNula)
{
    const Fila fila = Con("02 00 | 41 00 | 04 00 | 02 00 | 01 00 | 03", Definicion{.ranuras = 2});

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Texto, 0)), Dato(QString("A")));
    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 1)), Dato());
}

TEST_F(FilaDe, UnNumeroSinLaMarcaDeFijoEstaEntreLosVariables)
{
    const Fila fila =
        Con("01 00 | d6ffffff | 06 00 | 02 00 | 01 00 | 01", Definicion{.ranuras = 1});

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Largo, 0)), Dato(qint64{-42}));
}

TEST_F(FilaDe, UnTextoFijoAcabaEnSuPrimerCeroDelFinal)
{
    const Fila fila = Con("01 00 | 41004200 00000000 | 01", Definicion{});
    Columna columna = Fija(0, TipoColumna::Texto, 0);
    columna.largo = 8;

    EXPECT_EQ(fila.Lee(columna), Dato(QString("AB")));
}

TEST_F(FilaDe, UnMemoVaDetrasDeSuCabecera)
{
    const Fila fila =
        Con("01 00 | 0c 00 00 80 00 00 00 00 00 00 00 00 ff fe 50 72 6f 64 75 63 74 73 2e 2a |"
            "1a 00 | 02 00 | 01 00 | 01",
            Definicion{.ranuras = 1});

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Memo, 0)), Dato(QString("Products.*")));
    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Ole, 0)), Dato(QByteArray("\xFF\xFEProducts.*")));
}

TEST_F(FilaDe, UnErrorDiceColumnaYPagina)
{
    const Definicion definicion{.nombre = "T", .ranuras = 1};
    const Fila fila = Con("01 00 | 41 00 | 99 00 | 02 00 | 01 00 | 01", definicion);
    Columna columna = Variable(0, TipoColumna::Texto, 0);
    columna.nombre = "NOMBRE";

    try {
        fila.Lee(columna);
        ADD_FAILURE() << "the value lies outside the row";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::Danado);
        EXPECT_EQ(error.lugar().tabla, "T");
        EXPECT_EQ(error.lugar().columna, "NOMBRE");
        EXPECT_EQ(error.lugar().pagina, 5U);
    }
}

TEST_F(FilaDe, UnTipoDesconocidoNoSeLee)
{
    const Fila fila = Con("01 00 | 2a000000 | 01", Definicion{});

    EXPECT_THROW(fila.Lee(Fija(0, static_cast<TipoColumna>(0x15), 0)), ErrorMdb);
}

struct CasoFila {
    const char* regla;
    const char* bytes;
};

class FilaDanada : public testing::TestWithParam<CasoFila> {};

TEST_P(FilaDanada, SeRechazaEntera)
{
    const std::vector<quint8> bytes = DeHexa(GetParam().bytes);
    PaginasDePrueba paginas;
    const Definicion definicion{.ranuras = 1};

    EXPECT_THROW(Fila(definicion, paginas, {}, Bytes(bytes)), ErrorMdb);
}

INSTANTIATE_TEST_SUITE_P(Casos, FilaDanada,
                         testing::Values(CasoFila{"Vacia", ""}, CasoFila{"UnByte", "01"},
                                         CasoFila{"SinSitioParaLaMascara", "ff ff 00"},
                                         CasoFila{"SinTablaDeRanuras", "01 00 01"},
                                         CasoFila{"MasRanurasDeLasQueCaben",
                                                  "01 00 | 04 00 | 02 00 | 09 00 | 01"}),
                         [](const auto& caso) { return caso.param.regla; });

TEST_F(FilaDe, LaDeAccess97CuentaConBytes)
{
    const Fila fila = Con("02 | 2a000000 | 61 f1 80 | 08 | 05 | 01 | 03", Definicion{.ranuras = 1},
                          Version::Jet3);

    EXPECT_EQ(fila.Lee(Fija(0, TipoColumna::Largo, 0)), Dato(qint64{42}));
    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 0)), Dato(QString("añ€")));
}

/// A row of Access 97 of 600 bytes: three texts of 200, 300 and 90 characters. Offsets: 1, 201,
/// 501 = 256 + 245, end 591 = 512 + 79; so slot 2 is the first behind 256, the end that behind 512.
TEST_F(FilaDe, LosSaltosDeAccess97Suman256)
{
    const QByteArray hexa = "03 " + QByteArray(200, 'a').toHex() + QByteArray(300, 'b').toHex() +
                            QByteArray(90, 'c').toHex() + " | 4f f5 c9 01 | 03 02 | 03 | 07";
    ASSERT_EQ(DeHexa(hexa.constData()).size(), 599U);
    const Fila fila = Con(hexa.constData(), Definicion{.ranuras = 3}, Version::Jet3);

    EXPECT_EQ(fila.Lee(Variable(0, TipoColumna::Texto, 0)), Dato(QString(200, 'a')));
    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 1)), Dato(QString(300, 'b')));
    EXPECT_EQ(fila.Lee(Variable(2, TipoColumna::Texto, 2)), Dato(QString(90, 'c')));
}

/// A row of 258 bytes has a mark, but none of its offsets passes 256.
TEST_F(FilaDe, UnSaltoDeRellenoNoSumaNada)
{
    const QByteArray hexa = "02 " + QByteArray(252, 'a').toHex() + " | fd 01 | ff | 01 | 03";
    ASSERT_EQ(DeHexa(hexa.constData()).size(), 258U);
    const Fila fila = Con(hexa.constData(), Definicion{.ranuras = 1}, Version::Jet3);

    EXPECT_EQ(fila.Lee(Variable(1, TipoColumna::Texto, 0)), Dato(QString(252, 'a')));
}

struct CasoDato {
    const char* regla;
    TipoColumna tipo;
    const char* bytes;
    const char* texto;
};

class DatoFijo : public testing::TestWithParam<CasoDato> {};

TEST_P(DatoFijo, SeLeeDeSusBytes)
{
    const std::vector<quint8> bytes = DeHexa(GetParam().bytes);
    Columna columna = Fija(0, GetParam().tipo, 0);
    columna.escala = 2;

    const Dato dato = LeeDato(columna, Bytes(bytes), FormatoDe(Version::Jet4));

    EXPECT_EQ(TextoExacto(dato).toStdString(), GetParam().texto);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, DatoFijo,
    testing::Values(
        CasoDato{"Byte", TipoColumna::Byte, "ff", "255"},
        CasoDato{"EnteroNegativo", TipoColumna::Entero, "ffff", "-1"},
        CasoDato{"Largo", TipoColumna::Largo, "00000080", "-2147483648"},
        CasoDato{"Complejo", TipoColumna::Complejo, "07000000", "7"},
        CasoDato{"Grande", TipoColumna::Grande, "0000000000000080", "-9223372036854775808"},
        CasoDato{"Moneda", TipoColumna::Moneda, "ffffffffffffffff", "-0.0001"},
        CasoDato{"MonedaMayor", TipoColumna::Moneda, "ffffffffffffff7f", "922337203685477.5807"},
        CasoDato{"MonedaMenor", TipoColumna::Moneda, "0000000000000080", "-922337203685477.5808"},
        CasoDato{"Simple", TipoColumna::Simple, "cdcccc3d", "0.1"},
        CasoDato{"Doble", TipoColumna::Doble, "9a9999999999b93f", "0.1"},
        CasoDato{"Guid", TipoColumna::Guid, "78563412 3412 7856 0102 030405060708",
                 "{12345678-1234-5678-0102-030405060708}"},
        CasoDato{"Numerico", TipoColumna::Numerico, "00 00000000 00000000 00000000 05000000",
                 "0.05"},
        CasoDato{"NumericoNegativo", TipoColumna::Numerico,
                 "80 00000000 00000000 01000000 04000000", "-42949673"},
        CasoDato{"Binario", TipoColumna::Binario, "00ff10", "00FF10"},
        CasoDato{"BinarioFijo", TipoColumna::BinarioFijo, "0001", "0001"}),
    [](const auto& caso) { return caso.param.regla; });

} // namespace
