#include "data/access/mdb/paginas_de_prueba.h"
#include "data/access/mdb/texto.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

struct CasoTexto {
    const char* regla;
    const char* bytes;
    QString texto;
};

class Texto : public testing::TestWithParam<CasoTexto> {};

TEST_P(Texto, SeLee)
{
    const std::vector<quint8> bytes = DeHexa(GetParam().bytes);

    EXPECT_EQ(LeeTexto(Bytes(bytes), FormatoDe(Version::Jet4)), GetParam().texto);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, Texto,
    testing::Values(
        CasoTexto{"SinComprimir", "1c04 3804 4004", QStringLiteral("\u041C\u0438\u0440")},
        CasoTexto{"Comprimido", "fffe e4 e4 6b 6b f6 73 69 e4", QStringLiteral("ääkkösiä")},
        CasoTexto{"ComprimidoConCambios",
                  "ff fe 00 c4 9e f0 53 17 53 ef 8d 00 20 37 38 30 20 00 f7 53",
                  QStringLiteral("\u9EC4\u53F0\u5317\u8DEF 780 \u53F7")},
        CasoTexto{"ComprimidoEsLatin1YNoWindows1252", "fffe 80", QString(QChar(0x80))},
        CasoTexto{"ComprimidoYVacio", "fffe", QString()}, CasoTexto{"Vacio", "", QString()},
        CasoTexto{"UnCeroDentroDeUnoSinComprimir", "4100 0000 4200",
                  QStringLiteral("A") + QChar(0) + QStringLiteral("B")},
        CasoTexto{"UnByteSueltoNoEsCaracter", "4100 42", QStringLiteral("A")}),
    [](const auto& caso) { return caso.param.regla; });

TEST(TextoDeAccess97, EsWindows1252YNuncaComprimido)
{
    const std::vector<quint8> bytes = DeHexa("fffe 80 f1");

    EXPECT_EQ(LeeTexto(Bytes(bytes), FormatoDe(Version::Jet3)), QStringLiteral("ÿþ€ñ"));
}

} // namespace
