#include "apoyo/corrida_real.h"
#include <gtest/gtest.h>
#include <memory>

namespace {

using Filas = std::vector<QStringList>;

/// The user's standing sentences, at the end of a run whose session is sound, of one whose last
/// list had nothing in it, and of one whose last batch hadn't.
struct Finalizar : testing::Test {
    static void SetUpTestSuite()
    {
        tienda = &TiendaComun({.generacion = "1.6.0", .idiomas = 1});
        empresa = std::make_unique<EmpresaReal>(*tienda);
        empresa->Sql(SqlFamilia("01", 0, "Cocina") + SqlArticulo("01A"));
        sinFichero = empresa->Corre("/STOCK:000001");
        empresa->Carpeta().Escribe("PHPSHOP/000001finalizar.sql", Sentencias());
        todo = empresa->Corre();
        existencias = empresa->Corre("/STOCK:000001");
        empresa->Sql("DELETE FROM M_ARTIC");
        sinArticulos = empresa->Corre("/STOCK:000001");
    }
    static void TearDownTestSuite() { empresa.reset(); }

    static QByteArray Sentencias()
    {
        return "UPDATE ps_product SET quantity=quantity+1||\r\n"
               "INSERT INTO ps_configuration (name,value) VALUES ('KOV','a\xF1o & 5\x80')||\r\n";
    }

    static inline TiendaDePrueba* tienda = nullptr;
    static inline std::unique_ptr<EmpresaReal> empresa{};
    static inline ResultadoCorrida sinFichero{}, todo{}, existencias{}, sinArticulos{};
};

TEST_F(Finalizar, SinFicheroNoHayLote)
{
    EXPECT_EQ(sinFichero.Titulos().filter("final de proceso"), QStringList());
}

TEST_F(Finalizar, SubeTalComoEstaYSeQuedaEnSuSitio)
{
    EXPECT_EQ(todo.lotes.value(2), Sentencias());
    EXPECT_EQ(existencias.lotes.value(2), Sentencias());
    EXPECT_EQ(empresa->Carpeta().Lee("PHPSHOP/000001finalizar.sql"), Sentencias());
    EXPECT_EQ(tienda->Sql("SELECT quantity FROM ps_product"), (Filas{{"3"}}));
    EXPECT_EQ(tienda->Sql("SELECT value FROM ps_configuration WHERE name='KOV'"),
              (Filas{{"año & 5€"}, {"año & 5€"}, {"año & 5€"}}));
}

TEST_F(Finalizar, VaTrasLasFotosDeFamiliasYAntesDeVaciarLaCache)
{
    EXPECT_EQ(
        EnLineas(
            todo.Log("Dimensionando rango de familias subidas", "SUBIENDO FICHEROS ADJUNTOS...")),
        EnLineas({"Dimensionando rango de familias subidas", "SUBIENDO FICHERO 000001finalizar.sql",
                  "EJECUTANDO REMOTAMENTE Sentencias final de proceso",
                  "BORRANDO CACHÉ DE PRESTASHOP", "SUBIENDO FICHEROS ADJUNTOS..."}));
}

TEST_F(Finalizar, ConLaSesionSanaNoSeAbreOtra)
{
    QStringList esperados{"STOR imgfam.txt", "sesion"};
    esperados << PasosDeLote() << "sesion";
    const QStringList pasos = PasosFtp(todo.ftp);

    EXPECT_EQ(EnLineas(pasos.mid(pasos.indexOf("STOR imgfam.txt"), esperados.size())),
              EnLineas(esperados));
}

// The list of folders had nothing in it and left the session refusing.
TEST_F(Finalizar, ConLaSesionBloqueadaSeAbreOtraYElFicheroLlega)
{
    QStringList esperados{"STOR creapath.txt", "sesion"};
    esperados << PasosDeLote();
    const QStringList pasos = PasosFtp(existencias.ftp);

    EXPECT_EQ(EnLineas(pasos.mid(pasos.indexOf("STOR creapath.txt"))), EnLineas(esperados));
    EXPECT_EQ(EnLineas(existencias.http),
              EnLineas({"GET /borracache.php 200", "GET /ejecuta.php 200", "GET /ejecuta.php 200",
                        "GET /creapath.php 200", "GET /ejecuta.php 200", "GET /borracache.php 200",
                        "GET /borracache.php 200"}));
}

// Nothing opened a session since the families' last batch, which wasn't there to be sent.
TEST_F(Finalizar, SinArticulosLaSesionQueDejaElLoteDeFamiliasSeRenuevaYElFicheroLlega)
{
    EXPECT_EQ(EnLineas(sinArticulos.Titulos()),
              EnLineas({"EJECUTANDO REMOTAMENTE Actualización de familias ...Fin",
                        "EJECUTANDO REMOTAMENTE Sentencias final de proceso"}));
    QStringList esperados = PasosDeCabecera();
    esperados << "DELE bdtolmo.ccc"
              << "STOR bdtolmo.ccc"
              << "DELE sentencias.sql"
              << "STOR sentencias.sql"
              << "sesion";
    esperados << PasosDeLote();
    EXPECT_EQ(EnLineas(PasosFtp(sinArticulos.ftp)), EnLineas(esperados));
    EXPECT_EQ(sinArticulos.lotes.value(1), Sentencias());
}

} // namespace
