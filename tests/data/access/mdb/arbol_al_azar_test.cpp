#include "data/access/mdb/arbol_de_prueba.h"
#include <algorithm>
#include <random>
#include <set>

using namespace tolmo::data::access::mdb;
using testing::IsEmpty;

namespace {

constexpr int Pasos = 20'000;
constexpr int CadaTantos = 500;

/// A number below `limite`.
quint32 Azar(std::mt19937& azar, quint32 limite)
{
    return static_cast<quint32>(azar() % limite);
}

QByteArray Largo(quint32 valor)
{
    QByteArray clave("\x7F", 1);
    QByteArray bytes(4, '\0');
    qToBigEndian(valor ^ 0x80000000U, bytes.data());
    return clave + bytes;
}

/// Does the same to a tree and to a set, and compares them.
class Espejo {
  public:
    void Inserta(const QByteArray& clave, Puntero fila)
    {
        if (!espejo_.insert(Entrada(clave, fila)).second)
            return;
        vivas_.emplace_back(clave, fila);
        arbol_.Inserta(clave, fila);
    }

    /// All at once, into an empty tree.
    void Llena(std::vector<std::pair<QByteArray, Puntero>> filas)
    {
        std::vector<BytesEntrada> entradas;
        for (const auto& [clave, fila] : filas) {
            if (!espejo_.insert(Entrada(clave, fila)).second)
                continue;
            vivas_.emplace_back(clave, fila);
            entradas.push_back(EntradaDeHoja(clave, fila));
        }
        std::ranges::sort(entradas);
        arbol_.Llena(std::move(entradas));
    }

    void Borra(std::size_t cual)
    {
        std::swap(vivas_[cual], vivas_.back());
        const auto [clave, fila] = vivas_.back();
        vivas_.pop_back();
        espejo_.erase(Entrada(clave, fila));
        EXPECT_TRUE(arbol_.Borra(clave, fila));
        EXPECT_FALSE(arbol_.Borra(clave, fila));
    }

    std::size_t Vivas() const { return vivas_.size(); }
    const ArbolDePrueba& prueba() const { return prueba_; }

    void Compara()
    {
        ASSERT_THAT(prueba_.Faltas(), IsEmpty());
        if (const PaginaIndice raiz = prueba_.Lee(ArbolDePrueba::Raiz); raiz.EsNodo())
            CompruebaNodos(raiz);
        ASSERT_TRUE(std::ranges::equal(prueba_.Entradas(), espejo_));
        RecorridoIndice recorrido(prueba_.LaTabla(), prueba_.indice());
        for (const QByteArray& entrada : espejo_) {
            const auto* bytes = reinterpret_cast<const quint8*>(entrada.data());
            const std::span buscada(bytes, static_cast<std::size_t>(entrada.size()));
            recorrido.Busca(buscada);
            ASSERT_TRUE(recorrido.Siguiente());
            ASSERT_TRUE(Iguales(recorrido.entrada().ClaveYFila(), buscada));
            ASSERT_TRUE(arbol_.Tiene(entrada.chopped(4)));
        }
    }

  private:
    /// Nodes under the same parent are chained, and to no others.
    void CompruebaNodos(const PaginaIndice& padre)
    {
        std::vector<quint32> hijos;
        for (std::size_t i = 0; i < padre.Entradas(); ++i)
            hijos.push_back(padre.En(i).Hijo());
        hijos.push_back(padre.Cola());
        for (std::size_t i = 0; i < hijos.size(); ++i) {
            const PaginaIndice hijo = prueba_.Lee(hijos[i]);
            if (!hijo.EsNodo())
                return;
            EXPECT_EQ(hijo.Anterior(), i == 0 ? 0 : hijos[i - 1]);
            EXPECT_EQ(hijo.Siguiente(), i + 1 == hijos.size() ? 0 : hijos[i + 1]);
            CompruebaNodos(hijo);
        }
    }

    static QByteArray Entrada(const QByteArray& clave, Puntero fila)
    {
        QByteArray bytes(4, '\0');
        qToBigEndian(fila.Numero(), bytes.data());
        return clave + bytes;
    }

    ArbolDePrueba prueba_{};
    ArbolIndice arbol_ = prueba_.Arbol();
    std::set<QByteArray> espejo_{};
    std::vector<std::pair<QByteArray, Puntero>> vivas_{};
};

Puntero FilaAlAzar(std::mt19937& azar)
{
    return {.pagina = 6 + Azar(azar, 5000), .fila = static_cast<quint8>(Azar(azar, 250))};
}

/// Grows and shrinks a tree by turns. `claveAlAzar` makes the keys.
template <typename DaClave> void Alterna(quint32 semilla, DaClave&& claveAlAzar)
{
    std::mt19937 azar(semilla);
    Espejo espejo;
    for (int paso = 1; paso <= Pasos; ++paso) {
        const bool crece = paso / (Pasos / 4) % 2 == 0;
        const bool inserta = Azar(azar, 10) < (crece ? 8U : 3U);
        if (inserta || espejo.Vivas() == 0)
            espejo.Inserta(claveAlAzar(azar), FilaAlAzar(azar));
        else
            espejo.Borra(azar() % espejo.Vivas());
        if (paso % CadaTantos == 0) {
            ASSERT_NO_FATAL_FAILURE(espejo.Compara()) << "step " << paso;
        }
    }
    while (espejo.Vivas() > 0)
        espejo.Borra(azar() % espejo.Vivas());
    espejo.Compara();
    EXPECT_EQ(espejo.prueba().Niveles(), 1);
    EXPECT_EQ(PaginasEnUso(espejo.prueba().paginas(), ArbolDePrueba::MapaDelIndice),
              std::vector<quint32>{ArbolDePrueba::Raiz});
}

TEST(ArbolAlAzar, ClavesCortasDistintas)
{
    Alterna(1, [](std::mt19937& azar) { return Largo(static_cast<quint32>(azar())); });
}

TEST(ArbolAlAzar, ClavesMuyRepetidas)
{
    Alterna(2, [](std::mt19937& azar) { return Largo(Azar(azar, 20)); });
}

TEST(ArbolAlAzar, ClavesLargasDeLargosDistintos)
{
    Alterna(3, [](std::mt19937& azar) {
        // A front part that many share, then what tells them apart; 689 bytes at most.
        QByteArray clave("\x7F", 1);
        clave += QByteArray(static_cast<qsizetype>(Azar(azar, 500)),
                            static_cast<char>('a' + Azar(azar, 3)));
        for (quint32 i = Azar(azar, 188); i > 0; --i)
            clave += static_cast<char>(Azar(azar, 256));
        return clave;
    });
}

TEST(ArbolAlAzar, ClavesQueUnasSonPrincipioDeOtras)
{
    Alterna(4, [](std::mt19937& azar) {
        return QByteArray(static_cast<qsizetype>(Azar(azar, 40)), static_cast<char>(Azar(azar, 2)));
    });
}

/// Fills a tree at once, then changes it.
void LlenaYCambia(std::size_t cuantas, qsizetype mayorClave)
{
    std::mt19937 azar(static_cast<quint32>(6 + cuantas));
    const auto clave = [&] {
        return Largo(static_cast<quint32>(azar())) +
               QByteArray(static_cast<qsizetype>(azar()) % mayorClave, 'c');
    };
    std::vector<std::pair<QByteArray, Puntero>> filas;
    for (std::size_t i = 0; i < cuantas; ++i)
        filas.emplace_back(clave(), FilaAlAzar(azar));
    Espejo espejo;
    espejo.Llena(std::move(filas));
    ASSERT_NO_FATAL_FAILURE(espejo.Compara()) << cuantas;

    for (int paso = 0; paso < 1000; ++paso) {
        if (azar() % 3 == 0 || espejo.Vivas() == 0)
            espejo.Inserta(clave(), FilaAlAzar(azar));
        else
            espejo.Borra(azar() % espejo.Vivas());
    }
    ASSERT_NO_FATAL_FAILURE(espejo.Compara()) << cuantas;
}

TEST(ArbolAlAzar, LlenoDeUnaVezYCambiadoDespues)
{
    for (const std::size_t cuantas : {0, 1, 300, 400, 5000})
        LlenaYCambia(cuantas, 4);
    // Three to a page: so there is every number of pages that a last node may be left with.
    for (std::size_t cuantas = 1; cuantas < 60; ++cuantas)
        LlenaYCambia(cuantas, 1700);
    LlenaYCambia(3000, 1700);
}

TEST(ArbolAlAzar, UnArbolDanadoSoloDaErrorMdb)
{
    constexpr quint32 Semillas = 400;
    constexpr quint32 Primera = 3; // the map of the index and what follows it
    std::mt19937 azar(5);
    int errores = 0;
    for (quint32 semilla = 0; semilla < Semillas; ++semilla) {
        const ArbolDePrueba prueba;
        ArbolIndice arbol = prueba.Arbol();
        const auto clave = [&] {
            return QByteArray(static_cast<qsizetype>(1 + Azar(azar, 600)),
                              static_cast<char>(Azar(azar, 256)));
        };
        for (int i = 0; i < 150; ++i)
            arbol.Inserta(clave(), FilaAlAzar(azar));
        for (int danio = 0; danio < 4; ++danio) {
            const quint32 pagina = Primera + Azar(azar, prueba.paginas().Cuantas() - Primera);
            // Half of it falls on the headers, where it does most.
            const quint32 byte = Azar(azar, Azar(azar, 2) == 0 ? 32 : 4096);
            prueba.paginas().Cambia(pagina)[byte] = static_cast<quint8>(Azar(azar, 256));
        }
        for (int i = 0; i < 100; ++i) {
            try {
                const Puntero fila = FilaAlAzar(azar);
                arbol.Inserta(clave(), fila);
                arbol.BorraDeFila(clave().first(1), fila);
                arbol.Tiene(clave());
            } catch (const ErrorMdb&) {
                ++errores;
            }
        }
    }
    EXPECT_GT(errores, 1000);
}

} // namespace
