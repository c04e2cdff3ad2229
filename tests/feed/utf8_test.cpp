#include "apoyo/carpeta.h"
#include "data/errores.h"
#include "feed/utf8.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

const QByteArray Marca = "\xEF\xBB\xBF";

QString ErrorDe(const std::function<void()>& accion)
{
    try {
        accion();
    } catch (const data::ErrorFichero& error) {
        return error.Descripcion();
    }
    return "no error";
}

TEST(UTF8, ConvierteConSuMarcaDelante)
{
    CarpetaDePrueba c;
    c.Escribe("a.xml", "A\xF1o \x80 \xBA\r\n\r\nfin");

    feed::UTF8(c.Ruta("a.xml"), c.Ruta("b.xml"));

    EXPECT_EQ(c.Lee("b.xml"), Marca + "A\xC3\xB1o \xE2\x82\xAC \xC2\xBA\r\n\r\nfin");
    EXPECT_EQ(c.Lee("a.xml"), "A\xF1o \x80 \xBA\r\n\r\nfin");
}

TEST(UTF8, UnByteSinLetraDaSuControl)
{
    CarpetaDePrueba c;
    c.Escribe("a.xml", "\x81");

    feed::UTF8(c.Ruta("a.xml"), c.Ruta("b.xml"));

    EXPECT_EQ(c.Lee("b.xml"), Marca + "\xC2\x81");
}

TEST(UTF8, EscribeEncimaDeLoQueHubiera)
{
    CarpetaDePrueba c;
    c.Escribe("a.xml", "nuevo");
    c.Escribe("b.xml", "antiguo, y mucho mas largo");

    feed::UTF8(c.Ruta("a.xml"), c.Ruta("b.xml"));

    EXPECT_EQ(c.Lee("b.xml"), Marca + "nuevo");
}

TEST(UTF8, SinFicheroOConUnoVacioNoHaceNingunoYLoDice)
{
    CarpetaDePrueba c;
    c.Escribe("vacio.xml", "");

    for (const char* nombre : {"falta.xml", "carpeta/falta.xml", "vacio.xml"}) {
        EXPECT_EQ(ErrorDe([&] { feed::UTF8(c.Ruta(nombre), c.Ruta("b.xml")); }),
                  "No se puede leer el fichero " + c.Ruta(nombre) +
                      ". Compruebe que la carpeta existe y que se puede escribir en ella.");
        EXPECT_FALSE(c.Existe("b.xml")) << nombre;
    }
}

TEST(PasaAUtf8, ElFicheroConservaSuNombreYNoQuedaOtro)
{
    CarpetaDePrueba c;
    c.Escribe("feed.xml", "\xE9");
    c.Escribe("feed.xml1", "de otra vez");

    feed::PasaAUtf8(c.Ruta("feed.xml"));

    EXPECT_EQ(c.Lee("feed.xml"), Marca + "\xC3\xA9");
    EXPECT_FALSE(c.Existe("feed.xml1"));
}

TEST(PasaAUtf8, SiNoSePuedeEscribirElDocumentoSeQuedaComoEstaba)
{
    CarpetaDePrueba c;
    c.Escribe("feed.xml", "\xE9");
    c.CreaCarpeta("feed.xml1");

    EXPECT_EQ(ErrorDe([&] { feed::PasaAUtf8(c.Ruta("feed.xml")); }),
              "No se puede escribir el fichero " + c.Ruta("feed.xml1") + ".");

    EXPECT_EQ(c.Lee("feed.xml"), "\xE9");
}

} // namespace
