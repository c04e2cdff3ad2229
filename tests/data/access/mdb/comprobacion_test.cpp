#include "data/access/mdb/base_fabricada.h"
#include "data/access/mdb/comprobacion.h"
#include "data/access/mdb/definicion.h"
#include "data/access/mdb/muestras.h"
#include <gmock/gmock.h>

using namespace tolmo::data::access::mdb;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

namespace {

Informe InformeDe(const QByteArray& fichero)
{
    return Comprueba(Base(PaginasDe(fichero)));
}

std::vector<std::string> Faltas(const Informe& informe)
{
    std::vector<std::string> todas;
    const auto anade = [&](const QStringList& faltas) {
        for (const QString& falta : faltas)
            todas.push_back(falta.toStdString());
    };
    anade(informe.faltas);
    for (const EstadoTabla& tabla : informe.tablas) {
        anade(tabla.faltas);
        for (const EstadoIndice& indice : tabla.indices)
            anade(indice.faltas);
    }
    return todas;
}

// In that sample table Table1 has its rows on pages 17 to 20, and the root of its index, page 29,
// stands over the leaves 32 and 33. The maps of the table are on page 16.
constexpr quint32 Datos = 17;
constexpr quint32 HojaPrimera = 32;
constexpr quint32 HojaUltima = 33;
constexpr quint32 Mapas = 16;

/// A sample with a tree of several pages, and what is at which place in it.
class Danada : public testing::Test {
  protected:
    Danada() : bytes_(BytesDeMuestra("2000-composite-index.mdb"))
    {
        const Base base(PaginasDe(bytes_));
        tabla_ = base.AbreTabla("Table1").definicion();
    }
    char& En(quint32 pagina, int posicion)
    {
        return bytes_.data()[qsizetype{pagina} * 4096 + posicion];
    }
    quint16 U16(quint32 pagina, int posicion)
    {
        return qFromLittleEndian<quint16>(&En(pagina, posicion));
    }
    int PrincipioDeFila(quint32 pagina, int fila) { return U16(pagina, 14 + 2 * fila) & 0x1FFF; }
    /// The bytes of the first entry of the root: up to the first bit of its mask.
    int EntradaDeNodo()
    {
        int bit = 0;
        while ((En(29, 27 + bit / 8) >> bit % 8 & 1) == 0)
            ++bit;
        return bit;
    }
    void QuitaUltimaEntrada(quint32 hoja)
    {
        const auto bit = [&](int n) { return (En(hoja, 27 + n / 8) >> n % 8 & 1) != 0; };
        int ultimo = 3616;
        while (!bit(ultimo))
            --ultimo;
        int penultimo = ultimo - 1;
        while (!bit(penultimo))
            --penultimo;
        En(hoja, 27 + ultimo / 8) = static_cast<char>(En(hoja, 27 + ultimo / 8) ^ 1 << ultimo % 8);
        qToLittleEndian(static_cast<quint16>(3616 - penultimo), &En(hoja, 2));
    }
    void QuitaDeMapa(int fila, quint32 pagina)
    {
        char& byte = En(Mapas, PrincipioDeFila(Mapas, fila) + 5 + static_cast<int>(pagina / 8));
        byte = static_cast<char>(byte & ~(1 << pagina % 8));
    }
    std::vector<std::string> FaltasAhora() const { return Faltas(InformeDe(bytes_)); }

    QByteArray bytes_;
    Definicion tabla_{};
};

TEST(Comprobacion, LoQueEscribioAccessEstaBien)
{
    for (const QString& muestra : Muestras()) {
        const Informe informe = InformeDe(BytesDeMuestra(muestra));
        EXPECT_TRUE(informe.Sano()) << muestra.toStdString();
        EXPECT_THAT(Faltas(informe), IsEmpty()) << muestra.toStdString();
        EXPECT_GT(informe.tablas.size(), 4U);
    }
}

TEST(Comprobacion, LoFabricadoParaLasPruebasTambien)
{
    BaseFabricada base;
    base.Tabla("T", {{"A", TipoColumna::Memo}, {"B", TipoColumna::Largo}, {"C", TipoColumna::Ole}},
               300, [](int i) {
                   return std::vector<Dato>{QString(i, u'x'), qint64{i}, QByteArray(2 * i, 'y')};
               });

    EXPECT_THAT(Faltas(InformeDe(base.Termina())), IsEmpty());
}

TEST(Comprobacion, CuentaFilasYEntradas)
{
    const Informe informe = InformeDe(BytesDeMuestra("2000-composite-index.mdb"));

    const auto tabla = std::find_if(informe.tablas.begin(), informe.tablas.end(),
                                    [](const EstadoTabla& t) { return t.nombre == "Table1"; });
    ASSERT_NE(tabla, informe.tablas.end());
    EXPECT_EQ(tabla->filas, 512U);
    EXPECT_EQ(tabla->filasDeclaradas, 512U);
    ASSERT_FALSE(tabla->indices.empty());
    EXPECT_EQ(tabla->indices[0].entradas, 512U);
    EXPECT_TRUE(tabla->indices[0].rehecho);
}

TEST(Comprobacion, DeUnOrdenDesconocidoNoSeRehacenLasClaves)
{
    const Informe informe = InformeDe(BytesDeMuestra("97-types.mdb"));

    const auto tabla = std::find_if(informe.tablas.begin(), informe.tablas.end(),
                                    [](const EstadoTabla& t) { return t.nombre == "MSysObjects"; });
    ASSERT_NE(tabla, informe.tablas.end());
    EXPECT_THAT(tabla->indices, Contains(testing::Field(&EstadoIndice::rehecho, false)));
}

TEST_F(Danada, LaMuestraEsComoSeDice)
{
    ASSERT_EQ(tabla_.indicesReales.size(), 1U);
    EXPECT_EQ(tabla_.indicesReales[0].raiz, 29U);
    EXPECT_EQ(tabla_.paginasPropias, (Puntero{.pagina = Mapas, .fila = 0}));
    EXPECT_EQ(tabla_.indicesReales[0].mapa, (Puntero{.pagina = Mapas, .fila = 2}));
    EXPECT_EQ(En(HojaPrimera, 0), 4);
    EXPECT_EQ(En(HojaUltima, 0), 4);
}

TEST_F(Danada, UnaEntradaQueNoEsLaDeSuFila)
{
    // The lowest byte of the first row's number.
    En(Datos, PrincipioDeFila(Datos, 0) + 2) ^= 1;

    EXPECT_THAT(FaltasAhora(), Contains(HasSubstr("una entrada no es la que su fila pide")));
}

TEST_F(Danada, UnaEntradaDeUnaFilaBorrada)
{
    En(Datos, 15) = static_cast<char>(En(Datos, 15) | 0xC0);

    EXPECT_THAT(FaltasAhora(),
                Contains(HasSubstr("una entrada lleva a una fila que no existe (página 17, "
                                   "fila 0)")));
}

TEST_F(Danada, UnaEntradaQueFalta)
{
    QuitaUltimaEntrada(HojaUltima);

    EXPECT_THAT(FaltasAhora(), ElementsAre("tiene 511 entradas y debería tener 512"));
}

TEST_F(Danada, LasHojasNoEnlazan)
{
    En(HojaPrimera, 16) = 0;

    EXPECT_THAT(FaltasAhora(), Contains("página 32: no enlaza con las hojas vecinas"));
}

TEST_F(Danada, EntradasFueraDeOrden)
{
    // Both leaves change places under their root.
    std::swap(En(29, 20), En(29, 480 + EntradaDeNodo() - 1));

    EXPECT_THAT(FaltasAhora(), Contains("página 33: tiene entradas que pasan de su límite"));
}

TEST_F(Danada, ElEspacioLibreDeUnaHojaODeUnaPagina)
{
    ++En(HojaPrimera, 2);
    ++En(Datos, 2);

    const auto faltas = FaltasAhora();
    EXPECT_THAT(faltas, Contains("página 32: el espacio libre que dice no es el que tiene"));
    EXPECT_THAT(faltas, Contains("página 17: el espacio libre que dice no es el que tiene"));
}

TEST_F(Danada, ElMapaDeUnIndiceNoNombraSusPaginas)
{
    QuitaDeMapa(2, HojaUltima);

    EXPECT_THAT(FaltasAhora(), Contains("el mapa de sus páginas no nombra las que usa"));
}

TEST_F(Danada, UnaPaginaQueFaltaEnElMapaDeLaTabla)
{
    QuitaDeMapa(0, Datos);

    EXPECT_THAT(FaltasAhora(), Contains(HasSubstr("y debería tener")));
}

TEST_F(Danada, UnaPaginaEnUsoQueConstaComoLibre)
{
    // The first row of page 1, with the bit of page 17.
    En(1, PrincipioDeFila(1, 0) + 5 + 17 / 8) |= static_cast<char>(1 << 17 % 8);

    EXPECT_THAT(FaltasAhora(), ElementsAre("la página 17 está en uso y consta como libre"));
}

TEST_F(Danada, UnaPaginaDeDosTablas)
{
    // Page 23 belongs to the table that page 21 defines.
    En(Mapas, PrincipioDeFila(Mapas, 0) + 5 + 23 / 8) |= static_cast<char>(1 << 23 % 8);

    const auto faltas = FaltasAhora();
    EXPECT_THAT(faltas, Contains("la página 23 está tomada dos veces"));
    EXPECT_THAT(faltas, Contains(HasSubstr("La página es de otra tabla")));
}

} // namespace
