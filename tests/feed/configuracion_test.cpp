#include "apoyo/programa_de_prueba.h"
#include "feed/configuracion.h"
#include <gtest/gtest.h>

using namespace tolmo;
using feed::Configuracion;
using feed::InterpretaConfiguracion;

namespace {

/// All of it in one line, so that what a text must not change shows too.
QString EnPalabras(const Configuracion& c)
{
    return "[" +
           QStringList{c.Company, c.SufijoNotas, c.CampoSector, c.CampoPrecio, c.CampoKeywords}
               .join("][") +
           "]" + (c.UsaCodAlternativo ? " codalt" : "") + (c.GeneraCombinaciones ? " comb" : "");
}

struct CasoConfiguracion {
    const char* regla;
    QString texto{};
    QString esperada{};
};

class Interpreta : public testing::TestWithParam<CasoConfiguracion> {};

TEST_P(Interpreta, SegunLosDiezPrimerosCaracteres)
{
    EXPECT_EQ(EnPalabras(InterpretaConfiguracion(GetParam().texto)), GetParam().esperada);
}

INSTANTIATE_TEST_SUITE_P(
    Lineas, Interpreta,
    testing::Values(
        CasoConfiguracion{"Vacia", "", "[][][][][]"},
        CasoConfiguracion{"Empresa", "COMPANY:  12345", "[12345][][][][]"},
        CasoConfiguracion{"SufijoDeNotas", "SUFNOTAS: fin", "[][fin][][][]"},
        CasoConfiguracion{"Sector", "SECTOR:   GRUPO2", "[][][GRUPO2][][]"},
        CasoConfiguracion{"Precio", "PRECIO:   PVP3", "[][][][PVP3][]"},
        CasoConfiguracion{"Claves", "KEYWORDS: CLAVES", "[][][][][CLAVES]"},
        CasoConfiguracion{"Alternativo", "CODALT:   S", "[][][][][] codalt"},
        CasoConfiguracion{"Combinaciones", "COMB:     S", "[][][][][] comb"},
        CasoConfiguracion{"ElValorVaSinRecortar", "COMPANY:    Casa  ", "[  Casa  ][][][][]"},
        CasoConfiguracion{"UnValorPuedeParecerUnaLinea", "COMPANY:  SECTOR:   X",
                          "[SECTOR:   X][][][][]"},
        CasoConfiguracion{"UnValorVacioEsVacio", "SECTOR:   ", "[][][][][]"},
        CasoConfiguracion{"LaUltimaManda", "PRECIO:   PVP1\nSECTOR:   A\nPRECIO:   PVP2",
                          "[][][A][PVP2][]"},
        CasoConfiguracion{"LaUltimaMandaAunqueVacia", "PRECIO:   PVP1\nPRECIO:   ", "[][][][][]"},
        CasoConfiguracion{"ElOrdenDaIgual",
                          "COMB:     \nCODALT:   S\nKEYWORDS: K\nPRECIO:   P\nSECTOR:   "
                          "S\nSUFNOTAS: N\nCOMPANY:  C",
                          "[C][N][S][P][K] codalt comb"},
        CasoConfiguracion{"OtraCabeceraSeIgnora", "IDIOMA:   es\n\nCOMPANY:  Casa\nnotas",
                          "[Casa][][][][]"},
        CasoConfiguracion{"ConMenosBlancosEsOtraCabecera", "COMPANY: Casa\nSECTOR: X\nCODALT:S",
                          "[][][][][]"},
        CasoConfiguracion{"EnMinusculasEsOtraCabecera", "company:  Casa\nComb:     S",
                          "[][][][][]"},
        CasoConfiguracion{"UnaLineaCortaNoEsNada", "COMPANY:", "[][][][][]"},
        CasoConfiguracion{"FinesDeLineaDeWindows", "COMPANY:  Casa\r\nCODALT:   S\r\n",
                          "[Casa][][][][] codalt"},
        CasoConfiguracion{"FinesDeLineaSueltos", "COMPANY:  Casa\rCODALT:   S",
                          "[Casa][][][][] codalt"}),
    [](const auto& caso) { return std::string(caso.param.regla); });

TEST(InterpretaConfiguracion, ElCodigoAlternativoPideUnaEseSolaYMayuscula)
{
    for (const char* valor : {"", "s", "S ", " S", "SI", "N", "1"})
        EXPECT_FALSE(InterpretaConfiguracion(QString("CODALT:   ") + valor).UsaCodAlternativo)
            << valor;
}

TEST(InterpretaConfiguracion, LasCombinacionesSoloLasQuitaUnaEneSolaYMayuscula)
{
    EXPECT_FALSE(InterpretaConfiguracion("COMB:     N").GeneraCombinaciones);
    for (const char* valor : {"", "n", "N ", " N", "NO", "S"})
        EXPECT_TRUE(InterpretaConfiguracion(QString("COMB:     ") + valor).GeneraCombinaciones)
            << valor;
}

TEST(InterpretaConfiguracion, UnaLineaPosteriorPuedeQuitarLoPuesto)
{
    const Configuracion c =
        InterpretaConfiguracion("CODALT:   S\nCOMB:     S\nCODALT:   N\nCOMB:     N");

    EXPECT_FALSE(c.UsaCodAlternativo);
    EXPECT_FALSE(c.GeneraCombinaciones);
}

TEST(LeeConfiguracion, LeeElFicheroDeLaEmpresaEnSuCodificacion)
{
    ProgramaDePrueba p;
    p.programa.LblEmpresa = "000007 Ferretería";
    p.carpeta.Escribe("PHPSHOP/000007solostocks_config.txt",
                      "COMPANY:  Le\xF3n \x80\r\nSECTOR:   GRUPO1\r\n");
    p.carpeta.Escribe("PHPSHOP/000001solostocks_config.txt", "COMPANY:  Otra\r\n");

    EXPECT_EQ(feed::RutaConfiguracion(p.programa),
              p.carpeta.Ruta() + "\\PHPSHOP\\000007solostocks_config.txt");
    EXPECT_EQ(EnPalabras(feed::LeeConfiguracion(p.programa)), "[León €][][GRUPO1][][]");
}

TEST(LeeConfiguracion, UnFicheroVacioEsUnaConfiguracionVacia)
{
    ProgramaDePrueba p;
    p.carpeta.Escribe("PHPSHOP/000001solostocks_config.txt", "");

    EXPECT_EQ(EnPalabras(feed::LeeConfiguracion(p.programa)), "[][][][][]");
}

TEST(LeeConfiguracion, SinElFicheroDeLaEmpresaEsUnErrorQueLoNombra)
{
    ProgramaDePrueba p;
    p.carpeta.Escribe("PHPSHOP/000002solostocks_config.txt", "COMPANY:  Otra\r\n");

    try {
        feed::LeeConfiguracion(p.programa);
        FAIL() << "no error";
    } catch (const data::ErrorFichero& error) {
        EXPECT_EQ(error.Descripcion(), "No se puede leer el fichero de configuración " +
                                           p.carpeta.Ruta() +
                                           "\\PHPSHOP\\000001solostocks_config.txt.");
    }
}

} // namespace
