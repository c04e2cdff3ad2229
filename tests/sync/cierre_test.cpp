#include "apoyo/corrida_con_sitio.h"
#include "sync/cierre.h"
#include <gtest/gtest.h>

using namespace tolmo;
using sync::Proceso;

namespace {

struct Cierre : testing::Test {
    CorridaConSitio p{};

    Cierre() { p.opciones = {.proceso = Proceso::Todo, .regeneraIndices = false}; }
};

TEST_F(Cierre, LasFotosViejasSeBorranPorSuListaYDespuesVaLaCache)
{
    p.lote.AnadeImgBorra("img/p/5.jpg;");

    sync::CierraCorrida(p.fase);

    EXPECT_EQ(p.red.pasos,
              (QStringList{"ABRE", "BORRA imgborra.txt", "SUBE imgborra.txt a /tienda/",
                           "PIDE http://casa/borraimg.php?sufijofoto=_default",
                           "PIDE http://casa/borracache.php"}));
    EXPECT_EQ(p.red.subidas.at(0).contenido, "img/p/5.jpg;\r\n");
    EXPECT_EQ(p.Log(),
              (QStringList{"ELIMINANDO FOTOS ANTIGUAS...", "BORRANDO CACHÉ DE PRESTASHOP"}));
}

TEST_F(Cierre, UnErrorAlBorrarLasFotosSeAnotaSinDetalleYLaCorridaSigue)
{
    p.red.respuestas = {"img/p/5.jpg<br>Error al ejecutar consulta: SELECT 1"};

    sync::CierraCorrida(p.fase);

    EXPECT_EQ(p.Log(), (QStringList{"ELIMINANDO FOTOS ANTIGUAS...", "ERRORES Eliminando Artículos",
                                    "BORRANDO CACHÉ DE PRESTASHOP"}));
}

TEST_F(Cierre, SinEsaFraseNoSeAnotaNada)
{
    p.red.respuestas = {"No se puede conectar con Mysql"};

    sync::CierraCorrida(p.fase);

    EXPECT_EQ(p.Log(),
              (QStringList{"ELIMINANDO FOTOS ANTIGUAS...", "BORRANDO CACHÉ DE PRESTASHOP"}));
}

TEST_F(Cierre, SiLaListaNoSubeSeAnotaSeReabreYElGuionSePideIgual)
{
    p.red.fallan = {"imgborra.txt"};

    sync::CierraCorrida(p.fase);

    EXPECT_EQ(p.red.pasos.mid(2, 3),
              (QStringList{"SUBE imgborra.txt a /tienda/", "ABRE",
                           "PIDE http://casa/borraimg.php?sufijofoto=_default"}));
    EXPECT_EQ(p.Log().value(1), "ERROR SUBIENDO FICHERO imgborra.txt");
}

TEST_F(Cierre, LosIndicesSePidenUnoUnaVezYElOtroVeinteAntesDeLasFotos)
{
    p.opciones.regeneraIndices = true;
    p.programa.parametros.PS_INDICES1 = "http://uno/";
    p.programa.parametros.PS_INDICES2 = "http://dos/";
    p.red.respuestas = {"Error al ejecutar consulta:"};

    sync::CierraCorrida(p.fase);

    QStringList esperados{"PIDE http://uno/"};
    for (int i = 0; i < 20; ++i)
        esperados << "PIDE http://dos/";
    esperados << "ABRE";
    EXPECT_EQ(p.red.pasos.mid(0, 22), esperados);
    EXPECT_EQ(p.Log(),
              (QStringList{"REGENERANDO INDICES DE BÚSQUEDA...", "ELIMINANDO FOTOS ANTIGUAS...",
                           "BORRANDO CACHÉ DE PRESTASHOP"}));
}

TEST_F(Cierre, DeStockNiRegeneraNiBorraFotos)
{
    p.opciones = {.proceso = Proceso::Stock, .stock = true, .regeneraIndices = true};

    sync::CierraCorrida(p.fase);

    EXPECT_EQ(p.red.pasos, QStringList{"PIDE http://casa/borracache.php"});
}

} // namespace
