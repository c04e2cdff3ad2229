#include "data/codificacion.h"
#include <gtest/gtest.h>

using tolmo::data::AWindows1252;
using tolmo::data::DesdeWindows1252;

namespace {

TEST(AWindows1252, LasLetrasDeLaPaginaVanEnUnByte)
{
    EXPECT_EQ(AWindows1252("aZ09 \r\n"), QByteArray("aZ09 \r\n"));
    EXPECT_EQ(AWindows1252("ñÑáüç´"), QByteArray("\xF1\xD1\xE1\xFC\xE7\xB4"));
    EXPECT_EQ(AWindows1252("€“”–—™…Œœ"), QByteArray("\x80\x93\x94\x96\x97\x99\x85\x8C\x9C"));
}

TEST(AWindows1252, LoQueNoCabeEsUnaInterrogacionPorCaracter)
{
    EXPECT_EQ(AWindows1252("aЖb"), QByteArray("a?b"));
    EXPECT_EQ(AWindows1252("a😀b"), QByteArray("a?b"));
    EXPECT_EQ(AWindows1252("→"), QByteArray("?"));
}

TEST(AWindows1252, MediaParejaTambienEsUnaInterrogacion)
{
    EXPECT_EQ(AWindows1252(QString(QChar(0xD83D)) + "a"), QByteArray("?a"));
    EXPECT_EQ(AWindows1252(QString(QChar(0xD83D))), QByteArray("?"));
}

TEST(DesdeWindows1252, CadaByteTieneSuCaracter)
{
    EXPECT_EQ(DesdeWindows1252("\x80 \xF1 \x8A\x9E\x9F"), QString("€ ñ ŠžŸ"));
    EXPECT_EQ(DesdeWindows1252("\x81\x8D\x8F\x90\x9D"),
              QString::fromUtf16(u"\x81\x8D\x8F\x90\x9D"));
}

TEST(Windows1252, Los256BytesVuelvenSiendoElMismo)
{
    QByteArray todos;
    for (int byte = 0; byte < 256; ++byte)
        todos += static_cast<char>(byte);

    EXPECT_EQ(AWindows1252(DesdeWindows1252(todos)), todos);
}

} // namespace
