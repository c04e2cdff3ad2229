#include "data/access/mdb/sitio_filas.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/mapa.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

// A page with less room goes out of the map of those that have some ...
constexpr std::size_t CasiLlena = 128;
// ... and so does one that couldn't take a row, from here on.
constexpr std::size_t PocoSitio = 400;
constexpr std::size_t MasIntentos = 32;
constexpr std::size_t MasTraslados = 8;

} // namespace

SitioDeFilas::SitioDeFilas(PaginasEscribibles& paginas, const Definicion& definicion)
    : paginas_(paginas), definicion_(definicion)
{
}

/// Nothing when the page isn't one of this table's rows.
std::optional<Sitio> SitioDeFilas::SitioEn(quint32 numero)
{
    if (numero == 0 || numero >= paginas_.Cuantas())
        return std::nullopt;
    const Pagina pagina = paginas_.Lee(numero);
    if (pagina.bytes.U8(0) != tipo_pagina::Datos)
        return std::nullopt;
    const PaginaDatos datos(pagina, paginas_.formato());
    return datos.Duenio() == definicion_.pagina ? std::optional(SitioDe(datos)) : std::nullopt;
}

std::optional<quint32> SitioDeFilas::PaginaPara(std::size_t largo)
{
    const auto cabe = [&](const Sitio& sitio) {
        // A page without rows can start again with its slots.
        return sitio.Cabe(largo) || sitio.vivas == 0;
    };
    // It may have gone back with the transaction that took it.
    if (const auto sitio = SitioEn(ultima_); sitio && cabe(*sitio))
        return ultima_;
    const std::vector<quint32> libres = LeeMapa(paginas_, definicion_.paginasLibres).paginas;
    const std::size_t intentos = std::min(libres.size(), MasIntentos);
    for (std::size_t i = 1; i <= intentos; ++i) {
        const quint32 numero = libres[libres.size() - i];
        const std::optional<Sitio> sitio = SitioEn(numero);
        if (sitio && cabe(*sitio))
            return numero;
        if (!sitio || sitio->libres < PocoSitio || sitio->ranuras >= MasRanurasNuevas)
            QuitaDelMapa(paginas_, definicion_.paginasLibres, numero);
    }
    return std::nullopt;
}

Puntero SitioDeFilas::PonEn(quint32 pagina, const QByteArray& fila, EstadoRanura estado)
{
    EdicionDatos edicion(paginas_, pagina);
    const auto haySitio = [&] {
        return edicion.Ranuras() < MasRanurasNuevas &&
               edicion.Libres() >= static_cast<std::size_t>(fila.size()) + 2;
    };
    if (!haySitio())
        edicion.Compacta();
    if (!haySitio())
        edicion.Vacia();
    const Puntero puntero{.pagina = pagina, .fila = edicion.AnadeFila(fila, estado)};
    ultima_ = pagina;
    if (edicion.Libres() < CasiLlena || edicion.Ranuras() >= MasRanurasNuevas)
        QuitaDelMapa(paginas_, definicion_.paginasLibres, pagina);
    return puntero;
}

Puntero SitioDeFilas::PonDatos(const QByteArray& fila, EstadoRanura estado)
{
    if (const auto conSitio = PaginaPara(static_cast<std::size_t>(fila.size())))
        return PonEn(*conSitio, fila, estado);
    const quint32 nueva = PidePagina(paginas_, definicion_.paginasPropias);
    EdicionDatos::Estrena(paginas_, nueva, definicion_.pagina);
    if (!definicion_.paginasLibres.Nulo())
        AnadeAlMapa(paginas_, definicion_.paginasLibres, nueva);
    return PonEn(nueva, fila, estado);
}

Puntero SitioDeFilas::Anade(const QByteArray& fila)
{
    return PonDatos(fila, EstadoRanura::Fila);
}

/// The first place of a row, then those that lead to its data, which are at the last one.
std::vector<Puntero> SitioDeFilas::Estancias(Puntero fila)
{
    std::vector<Puntero> estancias{fila};
    while (estancias.size() <= MasTraslados) {
        const Puntero ultima = estancias.back();
        const PaginaDatos pagina = LeePaginaDatos(paginas_, ultima.pagina);
        if (pagina.Duenio() != definicion_.pagina)
            break;
        if (pagina.Estado(ultima.fila) != EstadoRanura::Movida)
            return estancias;
        estancias.push_back(Puntero::De(pagina.Contenido(ultima.fila).U32(0)));
    }
    Danado(QStringLiteral("Una fila que cambió de sitio no está en el nuevo"),
           {.pagina = fila.pagina});
}

bool SitioDeFilas::CabeDondeEsta(Puntero fila, std::size_t largo)
{
    const PaginaDatos pagina = LeePaginaDatos(paginas_, fila.pagina);
    return Ocupados(pagina, fila.fila) + SitioDe(pagina).libres >= largo;
}

void SitioDeFilas::Reescribe(Puntero fila, const QByteArray& nueva, EstadoRanura estado)
{
    EdicionDatos edicion(paginas_, fila.pagina);
    edicion.Compacta();
    edicion.CambiaFila(fila.fila, nueva, estado);
    AnotaSitio(fila.pagina);
}

void SitioDeFilas::BorraRanuras(std::span<const Puntero> estancias)
{
    for (const Puntero estancia : estancias) {
        EdicionDatos(paginas_, estancia.pagina).BorraFila(estancia.fila);
        AnotaSitio(estancia.pagina);
    }
}

/// Puts a page into the map of those with room, when it has some again.
void SitioDeFilas::AnotaSitio(quint32 pagina)
{
    const std::optional<Sitio> sitio = SitioEn(pagina);
    const bool admite = sitio && (sitio->ranuras < MasRanurasNuevas || sitio->vivas == 0);
    if (admite && sitio->libres >= CasiLlena && !definicion_.paginasLibres.Nulo() &&
        !EstaEnElMapa(paginas_, definicion_.paginasLibres, pagina))
        AnadeAlMapa(paginas_, definicion_.paginasLibres, pagina);
}

void SitioDeFilas::Cambia(Puntero fila, const QByteArray& nueva)
{
    const std::vector<Puntero> estancias = Estancias(fila);
    const auto otras = std::span(estancias).subspan(1);
    const Puntero datos = estancias.back();
    const auto largo = static_cast<std::size_t>(nueva.size());
    if (CabeDondeEsta(fila, largo)) {
        Reescribe(fila, nueva, EstadoRanura::Fila);
        BorraRanuras(otras);
    } else if (CabeDondeEsta(datos, largo)) {
        Reescribe(datos, nueva, EstadoRanura::Destino);
    } else {
        QByteArray destino;
        mdb::Anade(destino, PonDatos(nueva, EstadoRanura::Destino).Numero());
        Reescribe(fila, destino, EstadoRanura::Movida);
        // However many places it had, from now on it has two.
        BorraRanuras(otras);
    }
}

void SitioDeFilas::Borra(Puntero fila)
{
    BorraRanuras(Estancias(fila));
}

} // namespace tolmo::data::access::mdb
