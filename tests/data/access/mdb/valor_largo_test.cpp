#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/pagina_datos.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include "data/access/mdb/valor_largo.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

class ValorLargo : public testing::Test {
  protected:
    ValorLargo()
    {
        paginas_.PonFilas(7, DuenioLargo, {DeHexa("6162"), DeHexa("636465")});
        // Pieces: 3/0 -> 4/1 -> end.
        paginas_.PonFilas(3, DuenioLargo, {DeHexa("01040000 6162")});
        paginas_.PonFilas(4, DuenioLargo, {DeHexa(""), DeHexa("00000000 636465")});
    }
    QByteArray Lee(const char* enLaFila, std::size_t limite = 1000)
    {
        const std::vector<quint8> bytes = DeHexa(enLaFila);
        return LeeValorLargo(paginas_, Bytes(bytes), limite);
    }

    PaginasDePrueba paginas_{};
};

TEST_F(ValorLargo, EnLaFilaVaDetrasDeLaCabecera)
{
    EXPECT_EQ(Lee("03000080 00000000 00000000 787980"), QByteArray("xy\x80"));
}

TEST_F(ValorLargo, SencilloEsUnaFilaEnteraDeOtraPagina)
{
    EXPECT_EQ(Lee("03000040 01070000 00000000"), "cde");
}

TEST_F(ValorLargo, EncadenadoSigueLosPunteros)
{
    EXPECT_EQ(Lee("05000000 00030000 00000000"), "abcde");
}

TEST_F(ValorLargo, EncadenadoAcabaDondeDiceSuLargo)
{
    EXPECT_EQ(Lee("04000000 00030000 99999999"), "abcd");
}

TEST_F(ValorLargo, SeLeeSoloElPrincipioQueSePide)
{
    EXPECT_EQ(Lee("05000000 00030000 00000000", 1), "a");
    EXPECT_EQ(Lee("03000040 01070000 00000000", 2), "cd");
}

TEST_F(ValorLargo, VacioNoNecesitaPiezas)
{
    EXPECT_EQ(Lee("00000000 00000000 00000000"), "");
}

TEST_F(ValorLargo, SiFaltaElFinalEsUnDanio)
{
    EXPECT_THROW(Lee("06000000 00030000 00000000"), ErrorMdb);
    EXPECT_THROW(Lee("04000040 01070000 00000000"), ErrorMdb);
    EXPECT_THROW(Lee("04000080 00000000 00000000 787980"), ErrorMdb);
}

TEST_F(ValorLargo, UnaCadenaQueVuelveEsUnDanio)
{
    paginas_.PonFilas(4, DuenioLargo, {DeHexa(""), DeHexa("00030000 636465")});

    EXPECT_THROW(Lee("ffffff3f 00030000 00000000"), ErrorMdb);
}

TEST_F(ValorLargo, UnaPaginaDeUnaTablaNoTienePiezas)
{
    paginas_.PonFilas(7, 22, {DeHexa("6162"), DeHexa("636465")});

    EXPECT_THROW(Lee("03000040 01070000 00000000"), ErrorMdb);
}

TEST_F(ValorLargo, UnaFormaDesconocidaOUnaCabeceraCortadaSonUnDanio)
{
    EXPECT_THROW(Lee("030000c0 01070000 00000000"), ErrorMdb);
    EXPECT_THROW(Lee("030000"), ErrorMdb);
}

} // namespace
