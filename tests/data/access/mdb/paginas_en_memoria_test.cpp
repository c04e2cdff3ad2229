#include "data/access/mdb/muestras.h"
#include "data/access/mdb/paginas_en_memoria.h"
#include <gtest/gtest.h>

using namespace tolmo::data::access::mdb;

namespace {

TEST(PaginasEnMemoria, LoCambiadoSeLeeYLoLeidoAntesNoCambia)
{
    PaginasEnMemoria paginas(3);
    const Pagina antes = paginas.Lee(1);

    paginas.Cambia(1)[7] = 9;

    EXPECT_EQ(paginas.Lee(1).bytes.U8(7), 9);
    EXPECT_EQ(antes.bytes.U8(7), 0);
    EXPECT_EQ(paginas.Lee(2).bytes.U8(7), 0);
}

TEST(PaginasEnMemoria, CreceHastaSuLimite)
{
    PaginasEnMemoria paginas(3);
    paginas.Limita(4);

    EXPECT_EQ(paginas.Alarga(), 3U);
    EXPECT_EQ(paginas.Cuantas(), 4U);
    EXPECT_THROW(paginas.Alarga(), ErrorMdb);
    EXPECT_THROW(paginas.Cambia(4), ErrorMdb);
}

TEST(PaginasEnMemoria, DeUnFicheroYDeVueltaAEl)
{
    const QByteArray fichero = BytesDeMuestra("2003-indices.mdb");

    EXPECT_EQ(PaginasEnMemoria(fichero).Fichero(), fichero);
    EXPECT_TRUE(PaginasEnMemoria(BytesDeMuestra("97-types.mdb")).formato().EsJet3());
}

} // namespace
