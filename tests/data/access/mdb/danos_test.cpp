#include "data/access/mdb/lee_todo.h"
#include <gtest/gtest.h>
#include <utility>

using namespace tolmo::data::access::mdb;

namespace {

// The sanitizers make everything many times slower, so that there only some of the bytes are tried.
#if defined(__SANITIZE_ADDRESS__)
constexpr int Paso = 23;
#else
constexpr int Paso = 1;
#endif

struct Sitio {
    const char* regla;
    const char* muestra;
    int pagina;
    int tamPagina = 4096;
};

class ByteCambiado : public testing::TestWithParam<Sitio> {};

/// A changed byte gives an error or other values, and nothing else: no crash, no endless loop.
TEST_P(ByteCambiado, DaUnErrorUOtrosValores)
{
    const Sitio sitio = GetParam();
    QByteArray fichero = BytesDeMuestra(sitio.muestra);
    ASSERT_GE(fichero.size(), (sitio.pagina + 1) * sitio.tamPagina);

    for (int i = 0; i < sitio.tamPagina; i += Paso) {
        char& byte = fichero.data()[sitio.pagina * sitio.tamPagina + i];
        const char bueno = std::exchange(byte, static_cast<char>(~byte));
        ASSERT_NO_THROW(LeeTodo(fichero)) << "byte " << i;
        byte = bueno;
    }
}

constexpr const char* De97 = "97-types.mdb";
constexpr const char* De2000 = "2000-deleted-rows.mdb";
constexpr const char* DeVariasHojas = "2000-composite-index.mdb";
constexpr const char* DeFilasMovidas = "2003-overflow.mdb";

INSTANTIATE_TEST_SUITE_P(
    Paginas, ByteCambiado,
    testing::Values(Sitio{"Cabecera", De2000, 0}, Sitio{"MapaGlobal", De2000, 1},
                    Sitio{"DefinicionDelCatalogo", De2000, 2}, Sitio{"Mapas", De2000, 6},
                    Sitio{"HojaDelCatalogo", De2000, 7}, Sitio{"FilasDelCatalogo", De2000, 14},
                    Sitio{"ValoresLargos", De2000, 16}, Sitio{"NodoDeIndice", DeVariasHojas, 29},
                    Sitio{"HojaDeIndice", DeVariasHojas, 32},
                    Sitio{"DefinicionDeUsuario", DeFilasMovidas, 24},
                    Sitio{"FilasMovidas", DeFilasMovidas, 27}, Sitio{"CabeceraDe97", De97, 0, 2048},
                    Sitio{"MapaGlobalDe97", De97, 1, 2048}, Sitio{"DefinicionDe97", De97, 29, 2048},
                    Sitio{"ContinuacionDe97", De97, 36, 2048}, Sitio{"FilasDe97", De97, 31, 2048},
                    Sitio{"HojaDe97", De97, 9, 2048}, Sitio{"ValoresLargosDe97", De97, 20, 2048}),
    [](const auto& caso) { return caso.param.regla; });

class Cortado : public testing::TestWithParam<QString> {};

/// Cut at each end of a page, so that it still looks whole, and at odd places between them.
TEST_P(Cortado, DaUnErrorUOtrosValores)
{
    const QByteArray entero = BytesDeMuestra(GetParam());

    for (qsizetype largo = 0; largo < entero.size(); largo += 2048) {
        ASSERT_NO_THROW(LeeTodo(entero.left(largo))) << largo;
        ASSERT_NO_THROW(LeeTodo(entero.left(largo + largo % 1999))) << largo;
    }
}

INSTANTIATE_TEST_SUITE_P(Muestras, Cortado, testing::ValuesIn(Muestras()), [](const auto& caso) {
    QString nombre = caso.param;
    return "De" + nombre.replace(u'-', u'_').section(u'.', 0, 0).toStdString();
});

/// All bytes of a page become one: what a broken disk leaves behind.
TEST(PaginaBorrada, DaUnErrorUOtrosValores)
{
    for (const QString& muestra : Muestras()) {
        const QByteArray entero = BytesDeMuestra(muestra);
        for (qsizetype pagina = 0; pagina < entero.size() / 4096; ++pagina) {
            for (const char relleno : {'\0', '\x01', '\xFF'}) {
                QByteArray fichero = entero;
                fichero.replace(pagina * 4096, 4096, QByteArray(4096, relleno));
                ASSERT_NO_THROW(LeeTodo(fichero)) << muestra.toStdString() << ' ' << pagina;
            }
        }
    }
}

/// Two pages change places, so that all of their bytes make sense, elsewhere.
TEST(PaginasCambiadas, DanUnErrorUOtrosValores)
{
    const QByteArray entero = BytesDeMuestra(DeVariasHojas);
    for (qsizetype una = 1; una < entero.size() / 4096; una += 2) {
        for (qsizetype otra = una + 1; otra < entero.size() / 4096; ++otra) {
            QByteArray fichero = entero;
            fichero.replace(una * 4096, 4096, entero.mid(otra * 4096, 4096));
            fichero.replace(otra * 4096, 4096, entero.mid(una * 4096, 4096));
            ASSERT_NO_THROW(LeeTodo(fichero)) << una << ' ' << otra;
        }
    }
}

} // namespace
