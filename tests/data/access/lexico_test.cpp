#include "data/access/lexico.h"
#include "data/errores.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access;

namespace {

QString FormaDe(const QString& sql)
{
    auto lexemas = Lexemas(sql);
    return Forma(lexemas);
}

TEST(Lexico, LasComillasDoblesDentroDeUnTextoSonUna)
{
    const auto lexemas = Lexemas("'O''Neil' \"di \"\"hola\"\"\"");

    ASSERT_EQ(lexemas.size(), 3U);
    EXPECT_EQ(lexemas[0].ficha, Ficha::Texto);
    EXPECT_EQ(lexemas[0].texto, "O'Neil");
    EXPECT_EQ(lexemas[1].texto, "di \"hola\"");
    EXPECT_EQ(lexemas[2].ficha, Ficha::Fin);
}

TEST(Lexico, CadaPalabraSabeSuClaseYSuLugar)
{
    const auto lexemas = Lexemas(" [a b]<>1.5e3 #1/2/2024#ñu_1");

    ASSERT_EQ(lexemas.size(), 6U);
    EXPECT_EQ(lexemas[0].ficha, Ficha::NombreEntreMarcas);
    EXPECT_EQ(lexemas[0].texto, "a b");
    EXPECT_EQ(lexemas[0].posicion, 1);
    EXPECT_EQ(lexemas[1].texto, "<>");
    EXPECT_EQ(lexemas[2].ficha, Ficha::Decimal);
    EXPECT_EQ(lexemas[2].texto, "1.5e3");
    EXPECT_EQ(lexemas[3].ficha, Ficha::Fecha);
    EXPECT_EQ(lexemas[3].texto, "1/2/2024");
    EXPECT_EQ(lexemas[4].ficha, Ficha::Nombre);
    EXPECT_EQ(lexemas[4].texto, "ñu_1");
    EXPECT_EQ(lexemas[4].posicion, 24);
}

TEST(Lexico, UnNombreEntreCorchetesNoEsPalabraDelLenguaje)
{
    const auto lexemas = Lexemas("[Select] select");

    EXPECT_FALSE(lexemas[0].Es("SELECT"));
    EXPECT_TRUE(lexemas[1].Es("SELECT"));
}

TEST(FormaDeSentencia, NoDependeDelValorDeLosLiterales)
{
    EXPECT_EQ(FormaDe("SELECT A FROM T WHERE C='x' AND N=5 AND F=#1/1/2024#"),
              FormaDe("SELECT A FROM T WHERE C='otro''s' AND N=77 AND F=#12/31/1999#"));
}

TEST(FormaDeSentencia, DependeDeLaClaseDeLosLiterales)
{
    EXPECT_NE(FormaDe("SELECT A FROM T WHERE N=5"), FormaDe("SELECT A FROM T WHERE N='5'"));
    EXPECT_NE(FormaDe("SELECT A FROM T WHERE N=5"), FormaDe("SELECT A FROM T WHERE N=5.5"));
    EXPECT_NE(FormaDe("SELECT A FROM T WHERE C LIKE 'a%'"),
              FormaDe("SELECT A FROM T WHERE C LIKE '%a'"));
}

TEST(FormaDeSentencia, DependeDeLosNumerosQueLeDanForma)
{
    EXPECT_NE(FormaDe("SELECT TOP 1 A FROM T"), FormaDe("SELECT TOP 2 A FROM T"));
    EXPECT_NE(FormaDe("SELECT A FROM T ORDER BY 1"), FormaDe("SELECT A FROM T ORDER BY 2"));
    EXPECT_NE(FormaDe("SELECT N+1,COUNT(*) FROM T GROUP BY N+1"),
              FormaDe("SELECT N+1,COUNT(*) FROM T GROUP BY N+2"));
    EXPECT_NE(FormaDe("SELECT 'a',COUNT(*) FROM T GROUP BY N"),
              FormaDe("SELECT 'b',COUNT(*) FROM T GROUP BY N"));
}

TEST(FormaDeSentencia, UnFiltroConGruposNoDependeDeSusLiterales)
{
    EXPECT_EQ(FormaDe("SELECT N,COUNT(*) FROM T WHERE C='x' GROUP BY N"),
              FormaDe("SELECT N,COUNT(*) FROM T WHERE C='y' GROUP BY N"));
}

TEST(FormaDeSentencia, UnTextoConComillasNoSeConfundeConDos)
{
    EXPECT_NE(FormaDe("SELECT 'a'' ''b',N FROM T GROUP BY N"),
              FormaDe("SELECT 'a' 'b',N FROM T GROUP BY N"));
}

} // namespace
