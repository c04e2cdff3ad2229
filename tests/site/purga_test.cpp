#include "apoyo/programa_de_prueba.h"
#include "apoyo/sitio_de_prueba.h"
#include "batch/trabajo.h"
#include "site/purga.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

/// Writes what the purge shows into the same list as what it says to the server.
struct ProgresoEnOrden : ProgresoDePrueba {
    QStringList* pasos = nullptr;
    bool sigue = true;

    void LineaEstado(const QString& linea) override
    {
        *pasos << "LOG " + linea.mid(linea.indexOf(u']') + 2);
    }
    void CedeEventos() override
    {
        *pasos << "TURNO";
        enCadaTurno();
    }
    void HabilitaPestanas(bool habilitadas) override
    {
        *pasos << (habilitadas ? "PESTANAS" : "SIN PESTANAS");
    }
    bool SigueElPrograma() const override { return sigue; }
};

class Purga : public testing::Test {
  protected:
    Purga()
    {
        progreso.pasos = &sitio.pasos;
        prueba.programa.parametros.WWW = "http://casa/";
        prueba.programa.parametros.Carpeta_tienda = "/tienda/";
    }

    /// From the first block on.
    QStringList Bloques(const QStringList& respuestas)
    {
        sitio.respuestas = respuestas;
        site::BorraImagenesObsoletas(sitio, registro, progreso);
        return sitio.pasos.mid(sitio.pasos.indexOf("LOG Comenzando bloque 1 / 9"));
    }
    static QStringList BloqueALaPrimera(const QString& bloque)
    {
        return {"LOG Comenzando bloque " + bloque + " / 9",
                "PIDE http://casa/borraimgobsoletas.php?cienmil=" + bloque,
                "LOG Finalizado bloque " + bloque + " / 9", "TURNO"};
    }

    ProgramaDePrueba prueba{};
    ProgresoEnOrden progreso{};
    batch::Escritores escritores{prueba.programa};
    batch::Registro registro{prueba.programa, escritores, progreso,
                             batch::NombreFicheroLog(prueba.programa)};
    SitioDePrueba sitio{prueba.programa, escritores, registro, progreso, site::Esperas{}};
};

const QStringList NueveALaPrimera(9, "CONCLUIDO\r\n");

TEST_F(Purga, LaConversacionSigueSuOrden)
{
    sitio.respuestas = NueveALaPrimera;

    site::BorraImagenesObsoletas(sitio, registro, progreso);

    const QStringList esperados{
        "LOG *********************************",
        "LOG INICIO PROCESO BORRADO IMÁGENES NO UTILIZADAS",
        "LOG *********************************",
        "ABRE",
        "BORRA ejecuta.php",
        "SUBE ejecuta.php a /tienda/",
        "BORRA dimensiona.php",
        "SUBE dimensiona.php a /tienda/",
        "BORRA borraimg.php",
        "SUBE borraimg.php a /tienda/",
        "BORRA creapath.php",
        "SUBE creapath.php a /tienda/",
        "BORRA borracache.php",
        "SUBE borracache.php a /tienda/",
        "BORRA borraimgobsoletas.php",
        "SUBE borraimgobsoletas.php a /tienda/",
        "LOG Comenzando bloque 1 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=1",
        "LOG Finalizado bloque 1 / 9",
        "TURNO",
        "LOG Comenzando bloque 2 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=2",
        "LOG Finalizado bloque 2 / 9",
        "TURNO",
        "LOG Comenzando bloque 3 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=3",
        "LOG Finalizado bloque 3 / 9",
        "TURNO",
        "LOG Comenzando bloque 4 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=4",
        "LOG Finalizado bloque 4 / 9",
        "TURNO",
        "LOG Comenzando bloque 5 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=5",
        "LOG Finalizado bloque 5 / 9",
        "TURNO",
        "LOG Comenzando bloque 6 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=6",
        "LOG Finalizado bloque 6 / 9",
        "TURNO",
        "LOG Comenzando bloque 7 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=7",
        "LOG Finalizado bloque 7 / 9",
        "TURNO",
        "LOG Comenzando bloque 8 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=8",
        "LOG Finalizado bloque 8 / 9",
        "TURNO",
        "LOG Comenzando bloque 9 / 9",
        "PIDE http://casa/borraimgobsoletas.php?cienmil=9",
        "LOG Finalizado bloque 9 / 9",
        "TURNO",
        "LOG PROCESO CONCLUIDO",
    };
    EXPECT_EQ(sitio.pasos.join('\n').toStdString(), esperados.join('\n').toStdString());
}

TEST_F(Purga, ConcluirALaPrimeraDaDieciochoLineasDeBloquesYNingunIntento)
{
    const QStringList pasos = Bloques(NueveALaPrimera);

    EXPECT_EQ(pasos.filter("bloque").size(), 18);
    EXPECT_EQ(pasos.filter("Intento"), QStringList{});
}

TEST_F(Purga, LosIntentosSeCuentanEnCadaBloque)
{
    QStringList respuestas{"", "", "CONCLUIDO", "Continuar", "CONCLUIDO"};
    respuestas << QStringList(7, "CONCLUIDO");

    const QStringList pasos = Bloques(respuestas);

    const QStringList esperados{"LOG Comenzando bloque 1 / 9",
                                "PIDE http://casa/borraimgobsoletas.php?cienmil=1",
                                "LOG ....... Intento 1, tiempo agotado. Relanzando...",
                                "TURNO",
                                "PIDE http://casa/borraimgobsoletas.php?cienmil=1",
                                "LOG ....... Intento 2, tiempo agotado. Relanzando...",
                                "TURNO",
                                "PIDE http://casa/borraimgobsoletas.php?cienmil=1",
                                "LOG Finalizado bloque 1 / 9",
                                "TURNO",
                                "LOG Comenzando bloque 2 / 9",
                                "PIDE http://casa/borraimgobsoletas.php?cienmil=2",
                                "LOG ....... Intento 1, tiempo agotado. Relanzando...",
                                "TURNO",
                                "PIDE http://casa/borraimgobsoletas.php?cienmil=2",
                                "LOG Finalizado bloque 2 / 9",
                                "TURNO"};
    EXPECT_EQ(pasos.mid(0, esperados.size()), esperados);
    EXPECT_EQ(pasos.mid(esperados.size(), 4), BloqueALaPrimera("3"));
    EXPECT_EQ(pasos.last(), "LOG PROCESO CONCLUIDO");
}

struct CasoRespuesta {
    const char* regla;
    QString respuesta{};
    bool concluye = false;
};

class RespuestaDelGuion : public Purga, public testing::WithParamInterface<CasoRespuesta> {};

TEST_P(RespuestaDelGuion, ConcluyeElBloqueONo)
{
    const QStringList pasos = Bloques(QStringList{GetParam().respuesta} + NueveALaPrimera);

    EXPECT_EQ(pasos.value(2), GetParam().concluye
                                  ? "LOG Finalizado bloque 1 / 9"
                                  : "LOG ....... Intento 1, tiempo agotado. Relanzando...");
    EXPECT_EQ(pasos.filter("PIDE").size(), GetParam().concluye ? 9 : 10);
}

INSTANTIATE_TEST_SUITE_P(Casos, RespuestaDelGuion,
                         testing::Values(CasoRespuesta{"EnMayusculas", "CONCLUIDO", true},
                                         CasoRespuesta{"EnMinusculas", "concluido", true},
                                         CasoRespuesta{"Mezcladas", "Concluido", true},
                                         CasoRespuesta{"EnMedioDeOtroTexto",
                                                       "<p>Bloque concluido.</p>\r\n", true},
                                         CasoRespuesta{"VaciaNo", "", false},
                                         CasoRespuesta{"OtraNo", "Continuar", false},
                                         CasoRespuesta{"AMediasNo", "CONCLUI", false}),
                         [](const auto& caso) { return std::string(caso.param.regla); });

TEST_F(Purga, NoHayUnLimiteDeIntentos)
{
    const QStringList pasos = Bloques(QStringList(5000, "") + NueveALaPrimera);

    EXPECT_EQ(pasos.filter("Intento").last(),
              "LOG ....... Intento 5000, tiempo agotado. Relanzando...");
    EXPECT_EQ(pasos.filter("PIDE").size(), 5009);
    EXPECT_EQ(pasos.last(), "LOG PROCESO CONCLUIDO");
}

TEST_F(Purga, UnGuionQueNoSubeQuedaEnElRegistroYElTrabajoSigue)
{
    sitio.fallan = QStringList{"borraimg.php"};

    const QStringList pasos = Bloques(NueveALaPrimera);

    const QStringList antes = sitio.pasos.mid(3, sitio.pasos.size() - pasos.size() - 3);
    EXPECT_EQ(antes, (QStringList{"ABRE", "BORRA ejecuta.php", "SUBE ejecuta.php a /tienda/",
                                  "BORRA dimensiona.php", "SUBE dimensiona.php a /tienda/",
                                  "BORRA borraimg.php", "SUBE borraimg.php a /tienda/",
                                  "LOG ERROR SUBIENDO FICHERO borraimg.php", "PESTANAS"}));
    EXPECT_EQ(pasos.mid(0, 4), BloqueALaPrimera("1"));
    EXPECT_EQ(pasos.last(), "LOG PROCESO CONCLUIDO");
}

TEST_F(Purga, LasPestanasNoSeApagan)
{
    Bloques(NueveALaPrimera);

    EXPECT_EQ(sitio.pasos.filter("PESTANAS"), QStringList{});
}

TEST_F(Purga, ElRegistroTieneLasMismasLineasEnSuFichero)
{
    prueba.carpeta.CreaCarpeta("HISTORICOWEB");
    prueba.programa.DialectoActivo = data::Dialecto::MySql;

    Bloques(QStringList{""} + NueveALaPrimera);

    const QString fichero =
        data::DesdeWindows1252(prueba.carpeta.Lee("HISTORICOWEB/20240315VUELCOPRESTASHOP.TXT"));
    const QStringList lineas = fichero.split("\r\n");
    EXPECT_EQ(lineas.mid(0, 6),
              (QStringList{"[15/03/2024 9:05:07] *********************************",
                           "[15/03/2024 9:05:07] INICIO PROCESO BORRADO IMÁGENES NO UTILIZADAS",
                           "[15/03/2024 9:05:07] *********************************",
                           "[15/03/2024 9:05:07] Comenzando bloque 1 / 9",
                           "[15/03/2024 9:05:07] ....... Intento 1, tiempo agotado. Relanzando...",
                           "[15/03/2024 9:05:07] Finalizado bloque 1 / 9"}));
    EXPECT_EQ(lineas.size(), 3 + 18 + 1 + 1 + 1);
    EXPECT_EQ(lineas.value(22), "[15/03/2024 9:05:07] PROCESO CONCLUIDO");
}

// A server that is down is asked as long as the program runs, and no longer.

TEST_F(Purga, ParaCuandoElProgramaVaAAcabar)
{
    progreso.enCadaTurno = [this] { progreso.sigue = sitio.pasos.filter("PIDE").size() < 3; };

    const QStringList pasos = Bloques(QStringList{"CONCLUIDO", "", ""} + NueveALaPrimera);

    EXPECT_EQ(pasos.last(), "TURNO");
    EXPECT_EQ(pasos.filter("LOG"),
              (QStringList{"LOG Comenzando bloque 1 / 9", "LOG Finalizado bloque 1 / 9",
                           "LOG Comenzando bloque 2 / 9",
                           "LOG ....... Intento 1, tiempo agotado. Relanzando...",
                           "LOG ....... Intento 2, tiempo agotado. Relanzando..."}));
}

TEST_F(Purga, SiYaHabiaHechoElUltimoBloqueLoDiceAunqueElProgramaVayaAAcabar)
{
    progreso.enCadaTurno = [this] { progreso.sigue = sitio.pasos.filter("PIDE").size() < 9; };

    EXPECT_EQ(Bloques(NueveALaPrimera).last(), "LOG PROCESO CONCLUIDO");
}

} // namespace
