#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/escribe_dato.h"
#include "data/access/mdb/escribe_fila.h"
#include "data/access/mdb/fila.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include "data/access/mdb/propiedades.h"
#include "data/access/mdb/texto.h"
#include <gtest/gtest.h>
#include <limits>

using namespace tolmo::data::access::mdb;

namespace {

QByteArray Hexa(const char* texto)
{
    const std::vector<quint8> bytes = DeHexa(texto);
    return {reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())};
}

Columna De(TipoColumna tipo, quint16 largo = 0)
{
    return {.nombre = "C", .tipo = tipo, .largo = largo, .marcas = 0x03};
}

std::string Rechazo(const Columna& columna, const Dato& dato)
{
    try {
        EscribeDato(columna, Ajusta(columna, dato));
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.lugar().columna, "C");
        return error.Descripcion().toStdString();
    }
    return "se admite";
}

TEST(EscribeTexto, SeComprimeDesdeTresCaracteres)
{
    EXPECT_EQ(EscribeTexto("abcdefg", true), Hexa("ff fe 61 62 63 64 65 66 67"));
    EXPECT_EQ(EscribeTexto("ab", true), Hexa("61 00 62 00"));
    EXPECT_EQ(EscribeTexto(u"\u00e4\u00e4kk\u00f6si\u00e4"_qs, true),
              Hexa("ff fe e4 e4 6b 6b f6 73 69 e4"));
    EXPECT_EQ(EscribeTexto("abc", false), Hexa("61 00 62 00 63 00"));
    EXPECT_EQ(EscribeTexto("", true), QByteArray());
}

TEST(EscribeTexto, LoQueNoEsLatin1VaEnDosBytes)
{
    EXPECT_EQ(EscribeTexto(u"\u041c\u0438\u0440"_qs, true), Hexa("1c 04 38 04 40 04"));
    // The euro sign has a place in Windows-1252, but none in a compressed text.
    EXPECT_EQ(EscribeTexto(u"\u20ac5"_qs, true), Hexa("ac 20 35 00"));
    EXPECT_EQ(EscribeTexto(u"abcdefgh \u20ac"_qs, true),
              Hexa("ff fe 61 62 63 64 65 66 67 68 20 00 ac 20"));
    // U+0100 has a byte 0, which would change back.
    EXPECT_EQ(EscribeTexto(u"abcdefgh\u0100"_qs, true).size(), 18);
}

TEST(EscribeTexto, PasadosMilVeinticuatroCaracteresNoSeComprime)
{
    EXPECT_EQ(EscribeTexto(QString(1024, 'a'), true).size(), 1026);
    EXPECT_EQ(EscribeTexto(QString(1025, 'a'), true).size(), 2050);
}

TEST(EscribeTexto, LaMarcaDeOrdenNoSeTomaPorComprimido)
{
    const Formato formato = FormatoDe(Version::Jet4);
    for (const QString& texto : {u"\uFEFF"_qs, u"\uFEFFabc"_qs, u"\uFEFF\u041c"_qs}) {
        const QByteArray bytes = EscribeTexto(texto, false);
        EXPECT_EQ(LeeTexto(BytesDe(bytes), formato), texto);
    }
    EXPECT_THROW(EscribeTexto(u"\uFEFF\u0100"_qs, false), ErrorMdb);
}

TEST(EscribeDato, NumerosEnOrdenInverso)
{
    EXPECT_EQ(EscribeDato(De(TipoColumna::Byte), qint64{2}), Hexa("02"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Entero), qint64{222}), Hexa("de 00"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Largo), qint64{333333333}), Hexa("55 43 de 13"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Largo), qint64{-2}), Hexa("fe ff ff ff"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Doble), 444.555), Hexa("7b 14 ae 47 e1 c8 7b 40"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Simple), 1.5F), Hexa("00 00 c0 3f"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Fecha), Fecha{27293.0}), Hexa("00 00 00 00 40 a7 da 40"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Moneda), Moneda{35000}), Hexa("b8 88 00 00 00 00 00 00"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Numerico), Numerico{.palabras = {0, 0, 0, 5}}),
              Hexa("00 00000000 00000000 00000000 05000000"));
    EXPECT_EQ(EscribeDato(De(TipoColumna::Numerico),
                          Numerico{.palabras = {0, 0, 1, 0}, .negativo = true}),
              Hexa("80 00000000 00000000 01000000 00000000"));
}

TEST(EscribeDato, CadaTipoTieneSusLimites)
{
    EXPECT_EQ(Rechazo(De(TipoColumna::Byte), qint64{256}), "El número 256 no cabe (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Byte), qint64{-1}), "El número -1 no cabe (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Byte), qint64{255}), "se admite");
    EXPECT_EQ(Rechazo(De(TipoColumna::Entero), qint64{32768}),
              "El número 32768 no cabe (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Largo), qint64{-2147483649}),
              "El número -2147483649 no cabe (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Largo), qint64{-2147483648}), "se admite");
    EXPECT_EQ(Rechazo(De(TipoColumna::Doble), std::numeric_limits<double>::infinity()),
              "El valor no es un número (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Fecha), Fecha{2958466}),
              "La fecha no está entre los años 100 y 9999 (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Texto, 8), QString("abcd")), "se admite");
    EXPECT_EQ(Rechazo(De(TipoColumna::Texto, 8), QString("abcde")),
              "El texto tiene 5 caracteres y caben 4 (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Binario, 2), QByteArray("abc")),
              "El valor tiene 3 bytes y caben 2 (columna C)");
    EXPECT_EQ(Rechazo(De(TipoColumna::Largo), QString("1")),
              "El valor no es del tipo de la columna (columna C)");
}

TEST(EscribeDato, LaHoraDeUnDiaAnteriorAlPrimeroNoLlevaSigno)
{
    const auto momento = [](int dia, int hora) {
        return QDateTime(QDate(1899, 12, dia), QTime(hora, 0), Qt::UTC);
    };
    EXPECT_EQ(FechaDe(momento(29, 6)).dias, -1.25);
    EXPECT_EQ(FechaDe(momento(30, 6)).dias, 0.25);
    EXPECT_EQ(FechaDe(momento(31, 18)).dias, 1.75);
    EXPECT_EQ(FechaHora(FechaDe(momento(28, 23))), momento(28, 23));
}

TEST(EscribeDato, UnNumericoTomaLaEscalaDeSuColumna)
{
    Columna columna = De(TipoColumna::Numerico);
    columna.precision = 5;
    columna.escala = 2;
    const Numerico tres{.palabras = {0, 0, 0, 3}};
    EXPECT_EQ(Ajusta(columna, tres), Dato(Numerico{.palabras = {0, 0, 0, 300}, .escala = 2}));
    const Numerico milesimas{.palabras = {0, 0, 0, 1250}, .escala = 3, .negativo = true};
    EXPECT_EQ(Ajusta(columna, milesimas),
              Dato(Numerico{.palabras = {0, 0, 0, 125}, .escala = 2, .negativo = true}));
    EXPECT_EQ(Rechazo(columna, Numerico{.palabras = {0, 0, 0, 1251}, .escala = 3}),
              "El número tiene más de 2 decimales (columna C)");
    EXPECT_EQ(Rechazo(columna, Numerico{.palabras = {0, 0, 0, 99999}, .escala = 2}), "se admite");
    EXPECT_EQ(Rechazo(columna, Numerico{.palabras = {0, 0, 0, 100000}, .escala = 2}),
              "El número tiene más de 5 cifras (columna C)");
}

/// Columns A to I: two texts, byte, integer, long, double, date, currency, Boolean.
Definicion NueveColumnas()
{
    Definicion d{.maxColumnas = 9, .ranuras = 2};
    d.columnas = {{.nombre = "A",
                   .tipo = TipoColumna::Texto,
                   .numero = 0,
                   .ranura = 0,
                   .largo = 100,
                   .marcas = 2,
                   .otrasMarcas = 1},
                  {.nombre = "B",
                   .tipo = TipoColumna::Texto,
                   .numero = 1,
                   .ranura = 1,
                   .largo = 200,
                   .marcas = 2}};
    const auto fija = [&](const char* nombre, TipoColumna tipo, quint16 desplazamiento) {
        d.columnas.push_back({.nombre = nombre,
                              .tipo = tipo,
                              .numero = static_cast<quint16>(d.columnas.size()),
                              .desplazamiento = desplazamiento,
                              .largo = 1,
                              .marcas = 3});
    };
    fija("C", TipoColumna::Byte, 0);
    fija("D", TipoColumna::Entero, 1);
    fija("E", TipoColumna::Largo, 3);
    fija("F", TipoColumna::Doble, 7);
    fija("G", TipoColumna::Fecha, 15);
    fija("H", TipoColumna::Moneda, 23);
    fija("I", TipoColumna::Logico, 0);
    return d;
}

QByteArray Escribe(const Definicion& definicion, const std::vector<Dato>& valores)
{
    std::vector<Crudo> crudos;
    for (std::size_t i = 0; i < valores.size(); ++i) {
        if (definicion.columnas[i].tipo == TipoColumna::Logico)
            crudos.push_back(Como<bool>(valores[i]) ? Crudo(QByteArray()) : Crudo());
        else
            crudos.push_back(EsNulo(valores[i])
                                 ? Crudo()
                                 : Crudo(EscribeDato(definicion.columnas[i], valores[i])));
    }
    EXPECT_EQ(LargoDeFila(definicion, crudos),
              static_cast<std::size_t>(EscribeFila(definicion, crudos).size()));
    return EscribeFila(definicion, crudos);
}

TEST(EscribeFila, ComoLaDeAccess)
{
    const QByteArray fila =
        Escribe(NueveColumnas(), {QString("abcdefg"), QString("hijklmnop"), qint64{2}, qint64{222},
                                  qint64{333333333}, 444.555, Fecha{27293.0}, Moneda{35000}, true});

    EXPECT_EQ(EnHexa(fila),
              EnHexa(Hexa("09 00 | 02 | de 00 | 55 43 de 13 | 7b 14 ae 47 e1 c8 7b 40 |"
                          "00 00 00 00 40 a7 da 40 | b8 88 00 00 00 00 00 00 |"
                          "ff fe 61 62 63 64 65 66 67 |"
                          "68 00 69 00 6a 00 6b 00 6c 00 6d 00 6e 00 6f 00 70 00 |"
                          "3c 00 | 2a 00 | 21 00 | 02 00 | ff 01")));
}

TEST(EscribeFila, LosNulosGuardanSuSitioFijo)
{
    const QByteArray fila = Escribe(NueveColumnas(), std::vector<Dato>(9));

    // 31 bytes of fixed columns, empty slots where they would start, an empty mask.
    EXPECT_EQ(EnHexa(fila), EnHexa(Hexa("09 00") + QByteArray(31, '\0') +
                                   Hexa("21 00 | 21 00 | 21 00 | 02 00 | 00 00")));
}

TEST(EscribeFila, UnaCadenaVaciaNoEsNulo)
{
    std::vector<Dato> valores(9);
    valores[1] = QString("");
    EXPECT_EQ(Escribe(NueveColumnas(), valores).right(2), Hexa("02 00"));
}

TEST(EscribeFila, SinColumnasVariablesNoHayTabla)
{
    Definicion d{.maxColumnas = 2};
    d.columnas = {{.tipo = TipoColumna::Largo, .numero = 0, .marcas = 3},
                  {.tipo = TipoColumna::Entero, .numero = 1, .desplazamiento = 4, .marcas = 3}};
    EXPECT_EQ(Escribe(d, {qint64{1}, qint64{-1}}), Hexa("02 00 | 01 00 00 00 | ff ff | 03"));
    EXPECT_EQ(Escribe(d, {{}, qint64{-1}}), Hexa("02 00 | 00 00 00 00 | ff ff | 02"));
}

TEST(EscribeFila, DejaSitioParaUnPuntero)
{
    Definicion d{.maxColumnas = 1};
    d.columnas = {{.tipo = TipoColumna::Logico, .numero = 0, .marcas = 3}};
    EXPECT_EQ(Escribe(d, {true}), Hexa("01 00 | 00 | 01"));
}

TEST(EscribeFila, LaRanuraDeUnaColumnaBorradaQuedaVacia)
{
    Definicion d{.maxColumnas = 3, .ranuras = 3};
    d.columnas = {{.tipo = TipoColumna::Texto, .numero = 0, .ranura = 0, .largo = 20, .marcas = 2},
                  {.tipo = TipoColumna::Texto, .numero = 2, .ranura = 2, .largo = 20, .marcas = 2}};
    EXPECT_EQ(Escribe(d, {QString("a"), QString("b")}),
              Hexa("03 00 | 61 00 | 62 00 | 06 00 | 04 00 | 04 00 | 02 00 | 03 00 | 05"));
}

TEST(EscribeFila, TieneUnLimite)
{
    Definicion d{.maxColumnas = 1, .ranuras = 1};
    d.columnas = {
        {.tipo = TipoColumna::Binario, .numero = 0, .ranura = 0, .largo = 510, .marcas = 2}};
    // Two bytes in front, a table of six and the mask.
    std::vector<Crudo> crudos{QByteArray(4051, 'x')};
    EXPECT_EQ(EscribeFila(d, crudos).size(), 4060);
    crudos[0]->append('x');
    try {
        EscribeFila(d, crudos);
        FAIL();
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.motivo(), Motivo::Valor);
        EXPECT_EQ(error.Descripcion(), "La fila ocupa 4061 bytes y caben 4060");
    }
}

TEST(Propiedades, ComoLasDeAccess)
{
    QByteArray bytes = Hexa("4d523200 1a000000 8000 1200");
    for (const char c : QByteArray("KeepLocal"))
        bytes += QByteArray(1, c) + '\0';
    bytes += Hexa("16000000 0000 06000000 0000 | 0a00 01 0a 0000 0200 54 00");

    const std::vector<Propiedad> leidas = LeePropiedades(BytesDe(bytes));

    ASSERT_EQ(leidas.size(), 1U);
    EXPECT_EQ(leidas[0].nombre, "KeepLocal");
    EXPECT_EQ(leidas[0].columna, "");
    EXPECT_EQ(TextoDe(leidas[0]), "T");
    EXPECT_EQ(EnHexa(EscribePropiedades(leidas)), EnHexa(bytes));
}

TEST(Propiedades, DeColumnasYSinNinguna)
{
    const std::vector<Propiedad> propiedades{PropiedadLogica("A", "Required", true),
                                             PropiedadDeTexto("B", "DefaultValue", "\"x\""),
                                             PropiedadLogica("B", "Required", false)};
    const QByteArray bytes = EscribePropiedades(propiedades);
    const std::vector<Propiedad> leidas = LeePropiedades(BytesDe(bytes));

    ASSERT_EQ(leidas.size(), 3U);
    EXPECT_EQ(leidas[0].columna, "A");
    EXPECT_EQ(leidas[0].valor, QByteArray("\1"));
    EXPECT_EQ(TextoDe(leidas[1]), "\"x\"");
    EXPECT_EQ(leidas[2].columna, "B");
    EXPECT_TRUE(EscribePropiedades({}).isEmpty());
    EXPECT_TRUE(LeePropiedades({}).empty());
    EXPECT_THROW(LeePropiedades(BytesDe(bytes.left(bytes.size() - 3))), ErrorMdb);
}

} // namespace
