#include "data/valores.h"
#include "site/listado_ftp.h"
#include <gtest/gtest.h>

using namespace tolmo;

namespace {

const QDate Hoy(2024, 3, 15);

struct CasoLinea {
    const char* regla;
    const char* linea;
    const char* nombre;
    quint64 tamano;
    quint32 atributos;
    QDateTime escritura;
};

void PrintTo(const CasoLinea& caso, std::ostream* salida)
{
    *salida << caso.linea;
}

QDateTime Momento(int ano, int mes, int dia, int hora = 0, int minuto = 0)
{
    return data::SinZona(QDate(ano, mes, dia), QTime(hora, minuto));
}

class LineaDeListado : public testing::TestWithParam<CasoLinea> {};

TEST_P(LineaDeListado, SeLeeEntera)
{
    const auto entrada = site::LeeLineaListado(QString::fromUtf8(GetParam().linea), Hoy);

    ASSERT_TRUE(entrada);
    EXPECT_EQ(entrada->nombre.toStdString(), GetParam().nombre);
    EXPECT_EQ(entrada->tamano, GetParam().tamano);
    EXPECT_EQ(entrada->atributos, GetParam().atributos);
    EXPECT_TRUE(entrada->escritura.isValid());
    EXPECT_EQ(entrada->escritura, GetParam().escritura);
}

INSTANTIATE_TEST_SUITE_P(
    Casos, LineaDeListado,
    testing::Values(
        CasoLinea{"FicheroConHora", "-rw-r--r--   1 tolmo users      1234 Mar 10 09:05 foto.jpg",
                  "foto.jpg", 1234, 128, Momento(2024, 3, 10, 9, 5)},
        CasoLinea{"FicheroConAno", "-rw-r--r--   1 tolmo users   8 Feb 29  2020 a", "a", 8, 128,
                  Momento(2020, 2, 29)},
        CasoLinea{"LaHoraDeUnDiaPorVenirEsDelAnoPasado", "-rw-r--r-- 1 t u 8 Dec 31 23:59 a", "a",
                  8, 128, Momento(2023, 12, 31, 23, 59)},
        CasoLinea{"MananaPuedeSerYaEnElServidor", "-rw-r--r-- 1 t u 8 Mar 16 00:30 a", "a", 8, 128,
                  Momento(2024, 3, 16, 0, 30)},
        CasoLinea{"PasadoMananaNo", "-rw-r--r-- 1 t u 8 Mar 17 00:30 a", "a", 8, 128,
                  Momento(2023, 3, 17, 0, 30)},
        CasoLinea{"EnLaHoraQueElCambioSalta", "-rw-r--r-- 1 t u 8 Mar 26 02:30 a", "a", 8, 128,
                  data::SinZona(QDate(2023, 3, 26), QTime(2, 30))},
        CasoLinea{"Carpeta", "drwxr-xr-x   2 tolmo users      4096 Jan  2  2023 img", "img", 4096,
                  16, Momento(2023, 1, 2)},
        CasoLinea{"SinPermisoDeEscritura", "-r--r--r-- 1 t u 5 Jan  2  2023 a", "a", 5, 1,
                  Momento(2023, 1, 2)},
        CasoLinea{"NombreConBlancos", "-rw-r--r-- 1 t u 5 Jan  2  2023  foto  grande ñ.jpg",
                  " foto  grande ñ.jpg", 5, 128, Momento(2023, 1, 2)},
        CasoLinea{"GrupoConBlancosYTamanoLargo",
                  "-rw-r--r-- 1 t dominio y grupo 3000000000 Jan 12  2023 a", "a", 3000000000U, 128,
                  Momento(2023, 1, 12)},
        CasoLinea{"NombreConCarpetas", "-rw-r--r-- 1 t u 5 Jan 2 2023 img/c/1.jpg", "1.jpg", 5, 128,
                  Momento(2023, 1, 2)},
        CasoLinea{"EnlaceSinSuDestino", "lrwxrwxrwx 1 t u 5 Jan 2 2023 a -> otra/b", "a", 5, 128,
                  Momento(2023, 1, 2)},
        CasoLinea{"PermisosConMarcaDetras", "-rw-r--r--+ 1 t u 5 Jan 2 2023 a", "a", 5, 128,
                  Momento(2023, 1, 2)},
        CasoLinea{"ServidorDeWindows", "03-15-24  09:05AM       1234 foto grande.jpg",
                  "foto grande.jpg", 1234, 128, Momento(2024, 3, 15, 9, 5)},
        CasoLinea{"MediodiaEnWindows", "03-15-2024  12:30PM  7 a", "a", 7, 128,
                  Momento(2024, 3, 15, 12, 30)},
        CasoLinea{"MedianocheEnWindows", "03-15-98  12:30AM  7 a", "a", 7, 128,
                  Momento(1998, 3, 15, 0, 30)},
        CasoLinea{"CarpetaEnWindows", "03-15-24  01:05PM  <DIR>  img", "img", 0, 16,
                  Momento(2024, 3, 15, 13, 5)}),
    [](const auto& caso) { return std::string(caso.param.regla); });

TEST(Listado, LoQueNoEsUnaEntradaSeSalta)
{
    const auto entradas = site::LeeListado("total 12\r\n"
                                           "drwxr-xr-x 2 t u 4096 Jan 2 2023 .\r\n"
                                           "drwxr-xr-x 2 t u 4096 Jan 2 2023 ..\r\n"
                                           "\r\n"
                                           "-rw-r--r-- 1 t u 1 Jan 2 2023 b\r\n"
                                           "-rw-r--r-- 1 t u 1 Jan 2 2023 a\r\n",
                                           Hoy);

    ASSERT_EQ(entradas.size(), 2);
    EXPECT_EQ(entradas[0].nombre.toStdString(), "b");
    EXPECT_EQ(entradas[1].nombre.toStdString(), "a");
}

TEST(Listado, LoQueGuardaUnaCarpetaQueElComodinAlcanzaNoCuenta)
{
    const auto entradas = site::LeeListado("-rw-r--r-- 1 t u 1 Jan 2 2023 img.txt\n"
                                           "\n"
                                           "img:\n"
                                           "-rw-r--r-- 1 t u 1 Jan 2 2023 img1.jpg\n",
                                           Hoy);

    ASSERT_EQ(entradas.size(), 1);
    EXPECT_EQ(entradas[0].nombre.toStdString(), "img.txt");
}

TEST(Filtro, ElAsteriscoValePorCualesquieraYLaInterrogacionPorUno)
{
    EXPECT_TRUE(site::CumpleFiltro("a.jpg", "*.jpg"));
    EXPECT_TRUE(site::CumpleFiltro(".jpg", "*.jpg"));
    EXPECT_FALSE(site::CumpleFiltro("a.jpgx", "*.jpg"));
    EXPECT_FALSE(site::CumpleFiltro("axjpg", "*.jpg"));
    EXPECT_TRUE(site::CumpleFiltro("foto grande.jpg", "foto?grande.jpg"));
    EXPECT_FALSE(site::CumpleFiltro("fotogrande.jpg", "foto?grande.jpg"));
}

TEST(Filtro, LosDemasSignosSonLoQueSon)
{
    EXPECT_TRUE(site::CumpleFiltro("a[1]+(b).jpg", "a[1]+(b).*"));
    EXPECT_FALSE(site::CumpleFiltro("a1.jpg", "a[1].jpg"));
}

} // namespace
