#include "apoyo/carpeta.h"
#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/exportacion.h"
#include "data/access/mdb/muestras.h"
#include "data/access/mdb/paginas_de_prueba.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::ElementsAre;

namespace {

/// A table of one Long column, whose page of rows is 10.
class FilasMovidas : public testing::Test {
  protected:
    FilasMovidas()
    {
        definicion_->nombre = "T";
        definicion_->pagina = 4;
        definicion_->maxColumnas = 1;
        definicion_->paginasPropias = {.pagina = 1, .fila = 0};
        definicion_->columnas = {{.tipo = TipoColumna::Largo, .marcas = 3}};
        paginas_->PonFilas(1, 0, {DeHexa("00 00000000 00 1c 00")});
        paginas_->PonFilas(11, 4, {Fila("63"), DeHexa("000c0000")}, {0x8000, 0xC000});
        paginas_->PonFilas(12, 4, {Fila("64")}, {0x8000});
    }
    static std::vector<quint8> Fila(const char* byte)
    {
        std::vector<quint8> fila = DeHexa("0100 00000000 01");
        fila[2] = DeHexa(byte)[0];
        return fila;
    }
    /// The first page, with one row that lives elsewhere, as `destino` says.
    void PonPrimera(const char* destino)
    {
        paginas_->PonFilas(10, 4, {Fila("61"), DeHexa(destino), Fila("62"), Fila("65")},
                           {0, 0x4000, 0xC000, 0});
    }
    std::vector<qint64> Leidas()
    {
        std::vector<qint64> leidas;
        for (Cursor cursor(tabla()); cursor.Siguiente();)
            leidas.push_back(std::get<qint64>(cursor.fila().Lee(definicion_->columnas[0])));
        return leidas;
    }
    Tabla tabla() const { return {paginas_, definicion_}; }

    std::shared_ptr<PaginasDePrueba> paginas_ = std::make_shared<PaginasDePrueba>();
    std::shared_ptr<Definicion> definicion_ = std::make_shared<Definicion>();
};

TEST_F(FilasMovidas, SeLeenUnaVezYDondeEstabanAntes)
{
    PonPrimera("000b0000");

    EXPECT_THAT(Leidas(), ElementsAre(0x61, 0x63, 0x65));
}

TEST_F(FilasMovidas, PuedenHaberseMovidoMasDeUnaVez)
{
    paginas_->PonFilas(11, 4, {DeHexa("000c0000")}, {0x4000});
    PonPrimera("000b0000");

    const auto fila = tabla().FilaEn({.pagina = 10, .fila = 1});

    ASSERT_TRUE(fila);
    EXPECT_EQ(fila->Lee(definicion_->columnas[0]), Dato(qint64{0x64}));
}

TEST_F(FilasMovidas, UnAnilloDeTrasladosEsUnDanio)
{
    paginas_->PonFilas(11, 4, {DeHexa("000b0000")}, {0x4000});
    PonPrimera("000b0000");

    EXPECT_THROW(Leidas(), ErrorMdb);
}

TEST_F(FilasMovidas, NoPuedenLlevarAUnaFilaBorradaNiAOtraTabla)
{
    PonPrimera("010b0000");
    EXPECT_THROW(Leidas(), ErrorMdb);
    PonPrimera("000b0000");
    paginas_->Pon32(11, 4, 5);
    EXPECT_THROW(Leidas(), ErrorMdb);
}

TEST_F(FilasMovidas, UnErrorDiceFicheroTablaYPagina)
{
    PonPrimera("010b0000");

    try {
        Leidas();
        ADD_FAILURE() << "all rows were read";
    } catch (const ErrorMdb& error) {
        EXPECT_EQ(error.Descripcion(), "Una fila que cambió de sitio no está en el nuevo (fichero "
                                       "prueba.mdb, tabla T, página 10)");
    }
}

TEST_F(FilasMovidas, DespuesDeUnErrorElCursorSigue)
{
    PonPrimera("010b0000");
    Cursor cursor(tabla());

    EXPECT_TRUE(cursor.Siguiente());
    EXPECT_THROW(cursor.Siguiente(), ErrorMdb);
    EXPECT_TRUE(cursor.Siguiente());
    EXPECT_EQ(cursor.puntero(), (Puntero{.pagina = 10, .fila = 3}));
    EXPECT_FALSE(cursor.Siguiente());
}

TEST_F(FilasMovidas, PorSuSitioSoloSeHallaElPrimero)
{
    PonPrimera("000b0000");

    EXPECT_TRUE(tabla().FilaEn({.pagina = 10, .fila = 1}));
    EXPECT_FALSE(tabla().FilaEn({.pagina = 11, .fila = 0}));
    EXPECT_FALSE(tabla().FilaEn({.pagina = 10, .fila = 2}));
    EXPECT_FALSE(tabla().FilaEn({.pagina = 10, .fila = 4}));
    EXPECT_THROW(tabla().FilaEn({.pagina = 1, .fila = 0}), ErrorMdb);
}

TEST_F(FilasMovidas, UnaPaginaSinEscribirNoTieneFilas)
{
    PonPrimera("000b0000");
    paginas_->PonFilas(1, 0, {DeHexa("00 00000000 00 3c 00")});
    paginas_->Pon(13, 0, "00");

    EXPECT_THAT(Leidas(), ElementsAre(0x61, 0x63, 0x65));
}

std::vector<ColumnaFabricada> ColumnasDeArticulos()
{
    return {{"CODIGO", TipoColumna::Texto, 20},
            {"NOTAS", TipoColumna::Memo},
            {"PRECIO", TipoColumna::Moneda},
            {"ACTIVO", TipoColumna::Logico}};
}

std::vector<Dato> Articulo(int i)
{
    return {QStringLiteral("A%1").arg(i), i % 2 == 0 ? Dato(QString(100 + i % 500, u'n')) : Dato(),
            Moneda{12500 + i}, i % 3 == 0};
}

TEST(TablaFabricada, SeLeeEnteraTambienPorMapasDeReferencia)
{
    constexpr int filas = 60000;
    BaseFabricada fabricada;
    fabricada.Tabla("ARTICULOS", ColumnasDeArticulos(), filas, Articulo);
    const Base base(PaginasDe(fabricada.Termina(), {.cache = 1 << 16}));
    const Tabla tabla = base.AbreTabla("articulos");
    ASSERT_GT(base.paginas().Cuantas(), 1000U);

    int i = 0;
    for (Cursor cursor(tabla); cursor.Siguiente(); ++i) {
        const std::vector<Dato> esperados = Articulo(i);
        for (std::size_t c = 0; c < esperados.size(); ++c)
            ASSERT_EQ(cursor.fila().Lee(tabla.definicion().columnas[c]), esperados[c]) << i;
    }
    EXPECT_EQ(i, filas);
}

TEST(Exportacion, EscapaComoDiceLaNorma)
{
    BaseFabricada fabricada;
    const std::vector<std::vector<Dato>> filas = {{QString("uno, \"dos\""), qint64{1}, true},
                                                  {QString(""), Dato(), false},
                                                  {Dato(), qint64{-3}, true},
                                                  {QString("dos\r\nlíneas"), qint64{0}, false}};
    fabricada.Tabla("T",
                    {{"Un, nombre", TipoColumna::Texto, 20},
                     {"N", TipoColumna::Largo},
                     {"SI", TipoColumna::Logico}},
                    4, [&](int i) { return filas[static_cast<std::size_t>(i)]; });
    const Base base(PaginasDe(fabricada.Termina()));
    QBuffer salida;
    salida.open(QIODevice::WriteOnly);

    ExportaCsv(base.AbreTabla("T"), salida);

    EXPECT_EQ(salida.data(), "\"Un, nombre\",N,SI\r\n"
                             "\"uno, \"\"dos\"\"\",1,-1\r\n"
                             "\"\",,0\r\n"
                             ",-3,-1\r\n"
                             "\"dos\r\nlíneas\",0,0\r\n");
}

class Enlaces : public testing::Test {
  protected:
    QString Escribe(const QString& nombre, BaseFabricada& base)
    {
        carpeta_.Escribe(nombre, base.Termina());
        return carpeta_.Ruta(nombre);
    }
    ErrorMdb ErrorAlAbrir(const QString& fichero, const QString& tabla)
    {
        try {
            Base(fichero).AbreTabla(tabla);
        } catch (const ErrorMdb& error) {
            return error;
        }
        ADD_FAILURE() << "the table was opened";
        return {Motivo::NoSeAbre, {}};
    }

    CarpetaDePrueba carpeta_{};
};

TEST_F(Enlaces, LaTablaSeLeeEnElOtroFichero)
{
    BaseFabricada otra;
    otra.Tabla("M_ARTIC", ColumnasDeArticulos(), 3, Articulo);
    BaseFabricada una;
    una.Enlace("Artículos", Escribe("otra.mdb", otra), "M_ARTIC");
    const Base base(Escribe("una.mdb", una));

    const Tabla tabla = base.AbreTabla("artículos");

    int filas = 0;
    for (Cursor cursor(tabla); cursor.Siguiente();)
        ++filas;
    EXPECT_EQ(filas, 3);
    const std::vector<Objeto> vistas = base.catalogo().TablasDeUsuario();
    ASSERT_EQ(vistas.size(), 1U);
    EXPECT_TRUE(vistas[0].EsEnlace());
    EXPECT_EQ(vistas[0].nombreAjeno, "M_ARTIC");
}

TEST_F(Enlaces, SiElFicheroNoEstaSeDiceCual)
{
    BaseFabricada una;
    una.Enlace("Artículos", "C:\\no\\esta.mdb", "M_ARTIC");
    const QString fichero = Escribe("una.mdb", una);

    const ErrorMdb error = ErrorAlAbrir(fichero, "Artículos");

    EXPECT_EQ(error.motivo(), Motivo::Enlace);
    EXPECT_EQ(error.Descripcion(),
              "La tabla está vinculada a un fichero que no está: C:\\no\\esta.mdb (fichero " +
                  fichero + ", tabla Artículos)");
}

TEST_F(Enlaces, DosFicherosQueSeEnlazanUnoAOtroNoSeSiguenSinFin)
{
    BaseFabricada una;
    una.Enlace("T", carpeta_.Ruta("otra.mdb"), "T");
    const QString fichero = Escribe("una.mdb", una);
    BaseFabricada otra;
    otra.Enlace("T", fichero, "T");
    Escribe("otra.mdb", otra);

    EXPECT_EQ(ErrorAlAbrir(fichero, "T").motivo(), Motivo::Enlace);
}

TEST_F(Enlaces, AOtrosProgramasNoSeSiguen)
{
    BaseFabricada una;
    una.Enlace("T", "C:\\hoja.xls", "Hoja1$", "Excel 8.0;");

    EXPECT_EQ(ErrorAlAbrir(Escribe("una.mdb", una), "T").motivo(), Motivo::Enlace);
}

TEST_F(Enlaces, UnaTablaQueNoExisteSeNombra)
{
    BaseFabricada una;

    const ErrorMdb error = ErrorAlAbrir(Escribe("una.mdb", una), "NADA");

    EXPECT_EQ(error.motivo(), Motivo::NoHallado);
    EXPECT_EQ(error.lugar().tabla, "NADA");
}

} // namespace
