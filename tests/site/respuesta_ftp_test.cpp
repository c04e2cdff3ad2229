#include "site/respuesta_ftp.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

site::RespuestaFtp Lee(std::initializer_list<const char*> lineas)
{
    site::RespuestaFtp respuesta;
    for (const char* linea : lineas)
        respuesta.Linea(linea);
    return respuesta;
}

TEST(RespuestaFtp, UnaLineaConSuNumeroEsUnaRespuestaEntera)
{
    const site::RespuestaFtp respuesta = Lee({"550 a.txt: No such file\r\n"});

    EXPECT_EQ(respuesta.Codigo(), 550);
    EXPECT_TRUE(respuesta.Rechaza());
    EXPECT_EQ(respuesta.Texto(), "550 a.txt: No such file");
}

TEST(RespuestaFtp, LasLineasDeUnaRespuestaLargaVanJuntas)
{
    const site::RespuestaFtp respuesta =
        Lee({"421-Cerrado\r\n", " por obras\r\n", "550 no es el final\r\n", "421 Hasta luego\r\n"});

    EXPECT_EQ(respuesta.Codigo(), 421);
    EXPECT_EQ(respuesta.Texto(),
              "421-Cerrado\r\n por obras\r\n550 no es el final\r\n421 Hasta luego");
}

TEST(RespuestaFtp, UnaRespuestaSinAcabarNoCuenta)
{
    const site::RespuestaFtp respuesta = Lee({"200 bien", "421-Cerrado"});

    EXPECT_EQ(respuesta.Codigo(), 200);
    EXPECT_FALSE(respuesta.Rechaza());
}

TEST(RespuestaFtp, SoloLosNumerosDesde400Rechazan)
{
    EXPECT_FALSE(Lee({"350 falta el nombre"}).Rechaza());
    EXPECT_TRUE(Lee({"400 no"}).Rechaza());
    EXPECT_FALSE(site::RespuestaFtp().Rechaza());
}

TEST(RespuestaFtp, OlvidaBorraTambienLoQueQuedabaAMedias)
{
    site::RespuestaFtp respuesta = Lee({"550-no", "y no"});

    respuesta.Olvida();
    respuesta.Linea("226 entero");

    EXPECT_EQ(respuesta.Texto(), "226 entero");
    EXPECT_EQ(respuesta.Codigo(), 226);
}

TEST(CarpetaDeRespuesta, EsLoQueVaEntreComillas)
{
    EXPECT_EQ(site::CarpetaDeRespuesta("257 \"/tienda/img\" is the current directory"),
              "/tienda/img");
}

TEST(CarpetaDeRespuesta, UnaComillaDobladaEsUnaComillaDelNombre)
{
    EXPECT_EQ(site::CarpetaDeRespuesta("257 \"/a\"\"b\"\"\" current"), "/a\"b\"");
}

TEST(CarpetaDeRespuesta, SinComillasNoHayCarpeta)
{
    EXPECT_EQ(site::CarpetaDeRespuesta("257 /tienda"), "");
    EXPECT_EQ(site::CarpetaDeRespuesta("257 \"/tienda"), "");
}

} // namespace
