#include "configurador_de_prueba.h"
#include "configurator/foto_valor.h"

using namespace tolmo;
using namespace tolmo::configurator;
using data::Respuesta;

namespace {

class FotoValor : public testing::Test, public ConfiguradorDePrueba {
  protected:
    const ValorDeArticulo valor{.CodArticulo = "A1", .CodCategoria = "MED", .valor = "010"};
    QString Fotos() { return Tabla("SELECT FOTO FROM PS_CONF_ART_VAL ORDER BY ID DESC"); }
};

TEST_F(FotoValor, UnaRutaDe255CaracteresCabeYConUnoMasSeAvisa)
{
    EXPECT_TRUE(CabeFoto(programa, QString(255, 'x')));
    EXPECT_TRUE(avisos.cajas.empty());
    EXPECT_FALSE(CabeFoto(programa, QString(256, 'x')));
    EXPECT_EQ(avisos.cajas,
              (Cajas{{"La ruta de la fotografía no puede ser de más de 255 caracteres", 48, ""}}));
}

TEST_F(FotoValor, SeGuardaEnSuValor)
{
    GuardaFoto(programa, valor, "https://x.example/b.jpg");

    EXPECT_EQ(
        sentencias,
        QStringList(
            "UPDATE PS_CONF_ART_VAL SET FOTO='https://x.example/b.jpg' WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'"));
    EXPECT_EQ(Fotos(), "https://x.example/b.jpg NULL");
}

TEST_F(FotoValor, SeQuitaTrasPreguntar)
{
    avisos.respuestas = {Respuesta::Si};

    EXPECT_TRUE(QuitaFoto(programa, valor));

    EXPECT_EQ(avisos.cajas,
              (Cajas{{"Desea eliminar la imagen de la Categoria: MED Valor: 010?", 36, ""}}));
    EXPECT_EQ(
        sentencias,
        QStringList(
            "UPDATE PS_CONF_ART_VAL SET FOTO=NULL WHERE CODARTICULO='A1' AND CODCATEGORIA='MED' AND VALOR='010'"));
    EXPECT_EQ(Fotos(), "NULL NULL");
}

TEST_F(FotoValor, ConUnNoSeQueda)
{
    avisos.respuestas = {Respuesta::No};

    EXPECT_FALSE(QuitaFoto(programa, valor));

    EXPECT_EQ(Fotos(), "C:\\f\\a.jpg NULL");
}

TEST_F(FotoValor, UnaRutaConDosPuntosSeAbreTalCual)
{
    programa.RutaBase = "C:\\KOV";

    EXPECT_EQ(RutaDeFoto(programa, valor, "D:\\f\\a.jpg"), "D:\\f\\a.jpg");
    EXPECT_EQ(RutaDeFoto(programa, valor, "https://x.example/b.jpg"), "https://x.example/b.jpg");
    EXPECT_EQ(RutaDeFoto(programa, valor, "\\home\\ana\\a.jpg"), "\\home\\ana\\a.jpg")
        << "chosen where the disks have no letters";
}

TEST_F(FotoValor, CualquierOtraEsLaDelValorEnLaCarpetaDeFotos)
{
    programa.RutaBase = "C:\\KOV";

    EXPECT_EQ(RutaDeFoto(programa, valor, "\\\\srv\\a.jpg"), "C:\\KOV\\FOTOS\\A1MED010.JPG");
    EXPECT_EQ(RutaDeFoto(programa, valor, ""), "C:\\KOV\\FOTOS\\A1MED010.JPG");
}

} // namespace
