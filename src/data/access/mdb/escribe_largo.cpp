#include "data/access/mdb/escribe_largo.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/valor_largo.h"
#include <algorithm>
#include <optional>
#include <vector>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint32 FormaEnLaFila = 0x80000000;
constexpr quint32 FormaSencilla = 0x40000000;
constexpr quint32 FormaEncadenada = 0;
// A piece of a chain fills its page but for four bytes, and so does the longest value of one piece.
constexpr qsizetype MayorPieza = 4076;
constexpr qsizetype DatosPorPieza = MayorPieza - static_cast<qsizetype>(TamPuntero);
// A page with less room isn't worth looking at again.
constexpr std::size_t RestoInutil = 128;
constexpr std::size_t MasIntentos = 16;

QByteArray Cabecera(quint32 forma, const QByteArray& valor, Puntero primera)
{
    QByteArray bytes;
    Anade(bytes, forma | static_cast<quint32>(valor.size()));
    Anade(bytes, primera.Numero());
    Anade(bytes, quint32{0});
    return bytes;
}

class PaginasLargas {
  public:
    PaginasLargas(PaginasEscribibles& paginas, const Columna& columna)
        : paginas_(paginas), columna_(columna)
    {
        if (columna.paginasLargas.Nulo())
            throw ErrorMdb(Motivo::NoAdmitido,
                           QStringLiteral("La columna no tiene páginas para sus valores largos"),
                           {.fichero = paginas.Nombre(), .columna = columna.nombre});
    }

    /// Among other values, where there is room.
    Puntero PonSencilla(const QByteArray& valor)
    {
        const std::optional<quint32> conSitio = PaginaPara(static_cast<std::size_t>(valor.size()));
        if (conSitio)
            return PonEn(*conSitio, valor);
        const quint32 nueva = Nueva();
        AnadeAlMapa(nueva);
        return PonEn(nueva, valor);
    }

    Puntero PonCadena(const QByteArray& valor)
    {
        std::vector<quint32> numeros;
        for (qsizetype desde = 0; desde < valor.size(); desde += DatosPorPieza)
            numeros.push_back(Nueva());
        for (std::size_t i = 0; i < numeros.size(); ++i) {
            const Puntero siguiente{.pagina = i + 1 < numeros.size() ? numeros[i + 1] : 0};
            QByteArray pieza;
            Anade(pieza, siguiente.Numero());
            pieza += valor.mid(static_cast<qsizetype>(i) * DatosPorPieza, DatosPorPieza);
            EdicionDatos(paginas_, numeros[i]).AnadeFila(pieza);
        }
        return {.pagina = numeros.front()};
    }

    void Quita(Puntero pieza)
    {
        EdicionDatos edicion(paginas_, pieza.pagina);
        edicion.BorraFila(pieza.fila);
        edicion.RecortaRanuras();
        if (edicion.Ranuras() == 0) {
            QuitaDelMapa(pieza.pagina);
            SueltaPagina(paginas_, pieza.pagina, columna_.paginasLargas);
        } else if (SitioDe(LeePaginaDatos(paginas_, pieza.pagina)).libres >= RestoInutil) {
            AnadeAlMapa(pieza.pagina);
        }
    }

  private:
    quint32 Nueva()
    {
        const quint32 nueva = PidePagina(paginas_, columna_.paginasLargas);
        EdicionDatos::Estrena(paginas_, nueva, DuenioLargo);
        return nueva;
    }

    void AnadeAlMapa(quint32 pagina)
    {
        if (!columna_.paginasLargasLibres.Nulo())
            mdb::AnadeAlMapa(paginas_, columna_.paginasLargasLibres, pagina);
    }

    void QuitaDelMapa(quint32 pagina)
    {
        mdb::QuitaDelMapa(paginas_, columna_.paginasLargasLibres, pagina);
    }

    std::optional<quint32> PaginaPara(std::size_t largo)
    {
        // Some columns of the catalogue have no map of pages with room.
        const Puntero mapa = columna_.paginasLargasLibres.Nulo() ? columna_.paginasLargas
                                                                 : columna_.paginasLargasLibres;
        const std::vector<quint32> numeros = LeeMapa(paginas_, mapa).paginas;
        const std::size_t intentos = std::min(numeros.size(), MasIntentos);
        for (std::size_t i = 1; i <= intentos; ++i) {
            const quint32 numero = numeros[numeros.size() - i];
            const PaginaDatos pagina = LeePaginaDatos(paginas_, numero);
            if (pagina.Duenio() != DuenioLargo)
                Danado(QStringLiteral("La página no es de valores largos"), {.pagina = numero});
            const Sitio sitio = SitioDe(pagina);
            if (sitio.Cabe(largo))
                return numero;
            if (sitio.libres < RestoInutil)
                QuitaDelMapa(numero);
        }
        return std::nullopt;
    }

    Puntero PonEn(quint32 numero, const QByteArray& valor)
    {
        EdicionDatos edicion(paginas_, numero);
        if (edicion.Libres() < static_cast<std::size_t>(valor.size()) + 2)
            edicion.Compacta();
        const Puntero pieza{.pagina = numero, .fila = edicion.AnadeFila(valor)};
        if (edicion.Libres() < RestoInutil)
            QuitaDelMapa(numero);
        return pieza;
    }

    PaginasEscribibles& paginas_;
    const Columna& columna_;
};

/// The pieces of a value that doesn't lie in the row.
std::vector<Puntero> PiezasDe(Paginas& paginas, const CabeceraLarga& cabecera)
{
    std::vector<Puntero> piezas;
    if (cabecera.forma == CabeceraLarga::Forma::Sencilla)
        piezas.push_back(cabecera.primera);
    if (cabecera.forma != CabeceraLarga::Forma::Encadenada)
        return piezas;
    for (Puntero pieza = cabecera.primera; !pieza.Nulo();) {
        if (piezas.size() > paginas.Cuantas())
            Danado(QStringLiteral("Un valor largo vuelve sobre sí mismo"));
        piezas.push_back(pieza);
        pieza = Puntero::De(LeePaginaDatos(paginas, pieza.pagina).Contenido(pieza.fila).U32(0));
    }
    return piezas;
}

} // namespace

QByteArray LargoEnLaFila(const QByteArray& valor)
{
    return Cabecera(FormaEnLaFila, valor, {}) + valor;
}

QByteArray EscribeLargo(PaginasEscribibles& paginas, const Columna& columna,
                        const QByteArray& valor)
{
    PaginasLargas largas(paginas, columna);
    if (valor.size() <= MayorPieza)
        return Cabecera(FormaSencilla, valor, largas.PonSencilla(valor));
    return Cabecera(FormaEncadenada, valor, largas.PonCadena(valor));
}

void BorraLargo(PaginasEscribibles& paginas, const Columna& columna, Bytes enLaFila)
{
    const std::vector<Puntero> piezas = PiezasDe(paginas, LeeCabeceraLarga(enLaFila));
    if (piezas.empty())
        return;
    PaginasLargas largas(paginas, columna);
    for (const Puntero pieza : piezas)
        largas.Quita(pieza);
}

} // namespace tolmo::data::access::mdb
