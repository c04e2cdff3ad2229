#include "data/errores.h"
#include "site/puerto_ftp.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

TEST(PuertoFtp, EsElNumeroDelTexto)
{
    EXPECT_EQ(site::PuertoFtp("21"), 21);
    EXPECT_EQ(site::PuertoFtp(" 2121 "), 2121);
}

TEST(PuertoFtp, UnTextoQueNoEsUnNumeroEsUnErrorDeTipos)
{
    for (const char* texto : {"", "ftp", "21a"})
        try {
            site::PuertoFtp(texto);
            ADD_FAILURE() << texto;
        } catch (const data::ErrorEjecucion& error) {
            EXPECT_EQ(error.Numero(), 13) << texto;
        }
}

} // namespace
