#include "data/rutas.h"
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

class Rutas : public testing::Test {
  protected:
    ~Rutas() override { qunsetenv("KOV_UNIDADES"); }

    QString Crea(const QString& relativa)
    {
        QString ruta = raiz + '/' + relativa;
        EXPECT_TRUE(QDir().mkpath(QFileInfo(ruta).path()));
        QFile fichero(ruta);
        EXPECT_TRUE(fichero.open(QIODevice::WriteOnly));
        return ruta;
    }

    static void Mapea(const QString& unidades) { qputenv("KOV_UNIDADES", unidades.toUtf8()); }

    QTemporaryDir carpeta;
    QString raiz = carpeta.path();
};

TEST_F(Rutas, LasDosBarrasSonLaMisma)
{
    const QString foto = Crea("fotos/a.jpg");

    EXPECT_EQ(data::RutaLocal(raiz + "\\fotos\\a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal(raiz + "\\fotos/a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal(foto), foto);
}

TEST_F(Rutas, UnaUnidadLlevaASuCarpeta)
{
    const QString foto = Crea("disco/fotos/a.jpg");
    Mapea("D:=/no/hay;C:=" + raiz + "/disco");

    EXPECT_EQ(data::RutaLocal("C:\\fotos\\a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal("c:/fotos/a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal("C:fotos\\a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal("C:\\"), raiz + "/disco");
}

TEST_F(Rutas, UnRecursoDeRedLlevaASuCarpeta)
{
    const QString foto = Crea("red/a.jpg");
    Mapea("\\\\servidor\\fotos=" + raiz + "/red/");

    EXPECT_EQ(data::RutaLocal("\\\\servidor\\fotos\\a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal("\\\\SERVIDOR\\Fotos\\a.jpg"), foto);
    EXPECT_EQ(data::RutaLocal("\\\\servidor\\fotos2\\a.jpg"), "//servidor/fotos2/a.jpg");
}

TEST_F(Rutas, DeDosRaicesValeLaMasLarga)
{
    const QString foto = Crea("dos/a.jpg");
    Mapea("\\\\srv=" + raiz + "/uno;\\\\srv\\f=" + raiz + "/dos");

    EXPECT_EQ(data::RutaLocal("\\\\srv\\f\\a.jpg"), foto);
}

TEST_F(Rutas, UnaCarpetaPuedeSerLaRaiz)
{
    Mapea("C:=/");

    EXPECT_EQ(data::RutaLocal("C:\\" + raiz.mid(1)), raiz);
}

TEST_F(Rutas, UnNombreSeBuscaSinMirarMayusculas)
{
    const QString base = Crea("Datos/BD000001.mdb");

    EXPECT_EQ(data::RutaLocal(raiz + "\\DATOS\\bd000001.MDB"), base);
}

TEST_F(Rutas, ElNombreExactoVaPrimero)
{
    Crea("f/A.JPG");
    const QString minusculas = Crea("f/a.jpg");

    EXPECT_EQ(data::RutaLocal(raiz + "/f/a.jpg"), minusculas);
}

TEST_F(Rutas, SeVuelveAtrasCuandoDosCarpetasSoloDifierenEnMayusculas)
{
    Crea("Fotos/otra.jpg");
    const QString foto = Crea("fotos/a.jpg");

    EXPECT_EQ(data::RutaLocal(raiz + "/Fotos/A.jpg"), foto);
}

TEST_F(Rutas, LoQueNoEstaVuelveMapeadoConBarras)
{
    Mapea("C:=/no/hay");

    EXPECT_EQ(data::RutaLocal("C:\\fotos\\B.jpg"), "/no/hay/fotos/B.jpg");
    EXPECT_EQ(data::RutaLocal("fotos\\que no hay\\B.jpg"), "fotos/que no hay/B.jpg");
    EXPECT_EQ(data::RutaLocal(""), "");
}

TEST_F(Rutas, UnFicheroPorEscribirVaALaCarpetaQueHay)
{
    Crea("HISTORICOWEB/viejo.txt");

    EXPECT_EQ(data::RutaLocal(raiz + "\\HistoricoWeb\\Nuevo.txt"),
              raiz + "/HISTORICOWEB/Nuevo.txt");
}

TEST_F(Rutas, UnaUnidadSinMapearNoLlevaANingunSitio)
{
    // Two drives would fall together in one folder if the letter were simply dropped.
    const QString foto = Crea("a.jpg");

    EXPECT_EQ(data::RutaLocal("C:\\" + foto.mid(1)), "C:" + foto);
    EXPECT_FALSE(data::ExisteFichero("C:\\" + foto.mid(1)));
}

TEST_F(Rutas, UnaCarpetaNoEsUnFichero)
{
    const QString foto = Crea("fotos/a.jpg");

    EXPECT_TRUE(data::ExisteFichero(foto));
    EXPECT_TRUE(data::ExisteFichero(raiz + "\\FOTOS\\A.JPG"));
    EXPECT_FALSE(data::ExisteFichero(raiz + "/fotos"));
    EXPECT_FALSE(data::ExisteFichero(raiz + "/fotos/b.jpg"));
    EXPECT_FALSE(data::ExisteFichero(""));
}

TEST_F(Rutas, ElNombreEnDiscoEsElDeSuCarpetaYNadaSiNoEsta)
{
    Crea("fotos/Ficha.pdf");

    EXPECT_EQ(data::NombreEnDisco(raiz + "\\FOTOS\\FICHA.PDF"), "Ficha.pdf");
    EXPECT_EQ(data::NombreEnDisco(raiz + "/fotos/otra.pdf"), "");
    EXPECT_EQ(data::NombreEnDisco(raiz + "/fotos"), "") << "a folder is no file";
}

TEST(NombreFichero, EsLoQueQuedaTrasLaUltimaBarra)
{
    EXPECT_EQ(data::NombreFichero("C:\\fotos\\a.jpg"), "a.jpg");
    EXPECT_EQ(data::NombreFichero("/srv/fotos\\b.jpg"), "b.jpg");
    EXPECT_EQ(data::NombreFichero("\\\\srv\\f/c.jpg"), "c.jpg");
    EXPECT_EQ(data::NombreFichero("d.jpg"), "d.jpg");
    EXPECT_EQ(data::NombreFichero("fotos\\"), "");
}

} // namespace
