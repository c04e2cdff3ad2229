#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/mapa.h"
#include "data/access/mdb/pagina_datos.h"
#include <algorithm>
#include <bit>
#include <optional>

namespace tolmo::data::access::mdb {
namespace {

using namespace forma_mapa;

// The header, the global map and the catalogue; no map may give them away.
constexpr quint32 UltimaFija = 2;

// What Access leaves in the first byte of a page that it gives back.
constexpr quint8 DefinicionSuelta = 8;
constexpr quint8 DatosSueltos = 9;

/// The row that a map is held in.
struct FilaDeMapa {
    Pagina pagina{};
    std::size_t desde = 0; ///< in its page
    Bytes bytes{};

    bool PorReferencia() const { return bytes.U8(0) == forma_mapa::PorReferencia; }
    quint64 Primera() const { return bytes.U32(1); }
    std::size_t Referencias() const
    {
        return (bytes.size() - CabeceraPorReferencia) / TamReferencia;
    }
    quint32 Referencia(std::size_t indice) const
    {
        return indice < Referencias() ? bytes.U32(DondeReferencia(indice)) : 0;
    }
    static std::size_t DondeReferencia(std::size_t indice)
    {
        return CabeceraPorReferencia + TamReferencia * indice;
    }
};

/// Bits of a map that lie together.
struct Tramo {
    Pagina pagina{};
    std::size_t desde = 0;
    Bytes bits{};
    quint64 primera = 0; ///< page that the first bit stands for
};

/// The place of one bit.
struct Bit {
    quint32 pagina = 0;
    std::size_t byte = 0;
    quint8 mascara = 0;
};

FilaDeMapa LeeFila(Paginas& paginas, Puntero mapa)
{
    return EnLugar([&] { return Lugar{.fichero = paginas.Nombre(), .pagina = mapa.pagina}; },
                   [&] {
                       const PaginaDatos pagina = LeePaginaDatos(paginas, mapa.pagina);
                       const Bytes bytes = pagina.Contenido(mapa.fila);
                       const quint8 forma = bytes.U8(0);
                       if (forma > forma_mapa::PorReferencia || bytes.size() < CabeceraEnLaFila)
                           Danado(QStringLiteral("El mapa de páginas tiene una forma desconocida"));
                       const auto desde = bytes.data() - pagina.pagina().bytes.data();
                       return FilaDeMapa{.pagina = pagina.pagina(),
                                         .desde = static_cast<std::size_t>(desde),
                                         .bytes = bytes};
                   });
}

/// The bits behind a reference; nothing where there are none.
std::optional<Tramo> TramoReferido(Paginas& paginas, const FilaDeMapa& fila, std::size_t indice)
{
    const quint32 numero = fila.Referencia(indice);
    if (numero == 0)
        return std::nullopt;
    const Pagina pagina = paginas.Lee(numero);
    if (pagina.bytes.U8(0) != tipo_pagina::MapaDeBits)
        Danado(QStringLiteral("La página no es de un mapa"),
               {.fichero = paginas.Nombre(), .pagina = numero});
    return Tramo{.pagina = pagina,
                 .desde = CabeceraDeBits,
                 .bits = pagina.bytes.Desde(CabeceraDeBits),
                 .primera = quint64{PaginasPorReferencia(paginas.formato())} * indice};
}

Tramo TramoDeLaFila(const FilaDeMapa& fila)
{
    return {.pagina = fila.pagina,
            .desde = fila.desde + CabeceraEnLaFila,
            .bits = fila.bytes.Desde(CabeceraEnLaFila),
            .primera = fila.Primera()};
}

/// The bit of a page; nothing when the map has none for it.
std::optional<Bit> BitDe(Paginas& paginas, Puntero mapa, quint32 pagina)
{
    const FilaDeMapa fila = LeeFila(paginas, mapa);
    const std::optional<Tramo> tramo =
        fila.PorReferencia()
            ? TramoReferido(paginas, fila, pagina / PaginasPorReferencia(paginas.formato()))
            : TramoDeLaFila(fila);
    if (!tramo || pagina < tramo->primera || pagina - tramo->primera >= 8 * tramo->bits.size())
        return std::nullopt;
    const auto bit = static_cast<std::size_t>(pagina - tramo->primera);
    return Bit{.pagina = tramo->pagina.numero,
               .byte = tramo->desde + bit / 8,
               .mascara = static_cast<quint8>(1U << bit % 8)};
}

bool Vale(Paginas& paginas, const Bit& bit)
{
    return (paginas.Lee(bit.pagina).bytes.U8(bit.byte) & bit.mascara) != 0;
}

void Pon(PaginasEscribibles& paginas, const Bit& bit, bool valor)
{
    quint8& byte = paginas.Cambia(bit.pagina)[bit.byte];
    byte = static_cast<quint8>(valor ? byte | bit.mascara : byte & ~bit.mascara);
}

std::span<quint8> CambiaFila(PaginasEscribibles& paginas, Puntero mapa)
{
    const FilaDeMapa fila = LeeFila(paginas, mapa);
    return paginas.Cambia(mapa.pagina).subspan(fila.desde, fila.bytes.size());
}

void PonReferencia(PaginasEscribibles& paginas, Puntero mapa, std::size_t indice, quint32 numero)
{
    if (indice >= LeeFila(paginas, mapa).Referencias())
        Danado(QStringLiteral("Un mapa de páginas no tiene sitio para las del fichero"),
               {.fichero = paginas.Nombre(), .pagina = mapa.pagina});
    const auto fila = CambiaFila(paginas, mapa);
    qToLittleEndian(numero, fila.subspan(FilaDeMapa::DondeReferencia(indice)).data());
}

/// Empties a map and gives it the form of references, all of them null.
void HazPorReferencia(PaginasEscribibles& paginas, Puntero mapa)
{
    const auto fila = CambiaFila(paginas, mapa);
    std::fill(fila.begin(), fila.end(), quint8{0});
    fila[0] = forma_mapa::PorReferencia;
}

void EscribeVacia(PaginasEscribibles& paginas, quint32 numero)
{
    const auto bytes = paginas.Cambia(numero);
    std::fill(bytes.begin(), bytes.end(), quint8{0});
}

void EscribePaginaDeBits(PaginasEscribibles& paginas, quint32 numero)
{
    EscribeVacia(paginas, numero);
    const auto bytes = paginas.Cambia(numero);
    bytes[0] = tipo_pagina::MapaDeBits;
    bytes[1] = 1;
}

/// Adds pages to a map that has a bit for each.
void PonTodas(PaginasEscribibles& paginas, Puntero mapa, const std::vector<quint32>& cuales)
{
    for (const quint32 pagina : cuales)
        Pon(paginas, BitDe(paginas, mapa, pagina).value(), true);
}

// The global map. Where it has no bit a page counts as used, and behind the end of the file its
// bits are set.

/// Adds a bitmap page to the global map, at the end of the file: of the pages that it covers those
/// of the file are used, itself too.
void AnadeBitsGlobales(PaginasEscribibles& paginas, std::size_t indice)
{
    const quint32 numero = paginas.Alarga();
    EscribePaginaDeBits(paginas, numero);
    const quint64 primera = quint64{PaginasPorReferencia(paginas.formato())} * indice;
    const quint64 usadas = paginas.Cuantas() - std::min<quint64>(primera, paginas.Cuantas());
    const auto bits = paginas.Cambia(numero).subspan(CabeceraDeBits);
    for (quint64 bit = usadas; bit < 8 * bits.size(); ++bit)
        bits[bit / 8] = static_cast<quint8>(bits[bit / 8] | 1U << bit % 8);
    PonReferencia(paginas, MapaGlobal, indice, numero);
    // Another bitmap page may be the one that covers it.
    if (const auto bit = BitDe(paginas, MapaGlobal, numero))
        Pon(paginas, *bit, false);
}

/// Makes the global map have a bit for a page of the file.
void AlcanzaGlobal(PaginasEscribibles& paginas, quint32 pagina)
{
    const quint32 caben = PaginasPorReferencia(paginas.formato());
    if (LeeFila(paginas, MapaGlobal).PorReferencia()) {
        AnadeBitsGlobales(paginas, pagina / caben);
        return;
    }
    const std::vector<quint32> libres = LeeMapa(paginas, MapaGlobal).paginas;
    const quint32 cuantas = paginas.Cuantas();
    HazPorReferencia(paginas, MapaGlobal);
    for (quint32 indice = 0; indice * caben < cuantas; ++indice)
        AnadeBitsGlobales(paginas, indice);
    PonTodas(paginas, MapaGlobal, libres);
}

void PonEnGlobal(PaginasEscribibles& paginas, quint32 pagina, bool libre)
{
    if (!BitDe(paginas, MapaGlobal, pagina))
        AlcanzaGlobal(paginas, pagina);
    Pon(paginas, BitDe(paginas, MapaGlobal, pagina).value(), libre);
}

std::optional<quint32> PrimeraDe(const Tramo& tramo, quint32 cuantas)
{
    const auto bits = tramo.bits.Todo();
    const auto byte = std::find_if(bits.begin(), bits.end(), [](quint8 b) { return b != 0; });
    if (byte == bits.end())
        return std::nullopt;
    const auto lugar = static_cast<quint64>(byte - bits.begin());
    const quint64 pagina =
        tramo.primera + 8 * lugar + static_cast<quint64>(std::countr_zero(*byte));
    return pagina < cuantas ? std::optional(static_cast<quint32>(pagina)) : std::nullopt;
}

std::optional<quint32> PrimeraLibre(Paginas& paginas)
{
    const FilaDeMapa fila = LeeFila(paginas, MapaGlobal);
    if (!fila.PorReferencia())
        return PrimeraDe(TramoDeLaFila(fila), paginas.Cuantas());
    const quint64 caben = PaginasPorReferencia(paginas.formato());
    for (std::size_t i = 0; i < fila.Referencias() && i * caben < paginas.Cuantas(); ++i) {
        const std::optional<Tramo> tramo = TramoReferido(paginas, fila, i);
        const auto libre = tramo ? PrimeraDe(*tramo, paginas.Cuantas()) : std::nullopt;
        if (libre)
            return libre;
    }
    return std::nullopt;
}

/// A page of zeros that is used, but noted in no map of an owner.
quint32 TomaPagina(PaginasEscribibles& paginas)
{
    const std::optional<quint32> libre = PrimeraLibre(paginas);
    if (libre && *libre <= UltimaFija)
        Danado(QStringLiteral("El mapa de páginas libres nombra una que no puede estarlo"),
               {.fichero = paginas.Nombre(), .pagina = *libre});
    const quint32 pagina = libre ? *libre : paginas.Alarga();
    PonEnGlobal(paginas, pagina, false);
    EscribeVacia(paginas, pagina);
    return pagina;
}

// The maps of owners. Where they have no bit a page isn't theirs.

void AnadeBits(PaginasEscribibles& paginas, Puntero mapa, std::size_t indice)
{
    const quint32 numero = TomaPagina(paginas);
    EscribePaginaDeBits(paginas, numero);
    PonReferencia(paginas, mapa, indice, numero);
}

/// Lets the bits in the row start where they hold all of `cuales`; false when they can't.
bool MueveVentana(PaginasEscribibles& paginas, Puntero mapa, const std::vector<quint32>& cuales)
{
    const auto [primera, ultima] = std::minmax_element(cuales.begin(), cuales.end());
    const quint32 desde = *primera / 8 * 8;
    const auto fila = CambiaFila(paginas, mapa);
    if (*ultima - desde >= 8 * (fila.size() - CabeceraEnLaFila))
        return false;
    std::fill(fila.begin(), fila.end(), quint8{0});
    qToLittleEndian(desde, fila.subspan(1).data());
    PonTodas(paginas, mapa, cuales);
    return true;
}

/// Makes the map of an owner have a bit for a page.
void Alcanza(PaginasEscribibles& paginas, Puntero mapa, quint32 pagina)
{
    const quint32 caben = PaginasPorReferencia(paginas.formato());
    if (LeeFila(paginas, mapa).PorReferencia()) {
        AnadeBits(paginas, mapa, pagina / caben);
        return;
    }
    std::vector<quint32> cuales = PaginasEnUso(paginas, mapa);
    cuales.push_back(pagina);
    if (MueveVentana(paginas, mapa, cuales))
        return;
    HazPorReferencia(paginas, mapa);
    for (const quint32 una : cuales) {
        if (!BitDe(paginas, mapa, una))
            AnadeBits(paginas, mapa, una / caben);
    }
    PonTodas(paginas, mapa, cuales);
}

quint8 TipoSuelto(quint8 tipo)
{
    switch (tipo) {
    case tipo_pagina::Datos:
        return DatosSueltos;
    case tipo_pagina::Definicion:
        return DefinicionSuelta;
    default:
        return tipo_pagina::SinEscribir;
    }
}

} // namespace

quint32 PidePagina(PaginasEscribibles& paginas, Puntero mapa)
{
    const quint32 pagina = TomaPagina(paginas);
    if (pagina == mapa.pagina || EstaEnElMapa(paginas, mapa, pagina))
        Danado(QStringLiteral("Una página en uso consta como libre"),
               {.fichero = paginas.Nombre(), .pagina = pagina});
    if (!mapa.Nulo())
        AnadeAlMapa(paginas, mapa, pagina);
    return pagina;
}

void SueltaPagina(PaginasEscribibles& paginas, quint32 pagina, Puntero mapa)
{
    if (pagina <= UltimaFija || EstaEnElMapa(paginas, MapaGlobal, pagina))
        Danado(QStringLiteral("Se suelta una página que no está en uso"),
               {.fichero = paginas.Nombre(), .pagina = pagina});
    QuitaDelMapa(paginas, mapa, pagina);
    quint8& tipo = paginas.Cambia(pagina)[0];
    tipo = TipoSuelto(tipo);
    PonEnGlobal(paginas, pagina, true);
}

void AnadeAlMapa(PaginasEscribibles& paginas, Puntero mapa, quint32 pagina)
{
    if (mapa == MapaGlobal) {
        PonEnGlobal(paginas, pagina, true);
        return;
    }
    if (!BitDe(paginas, mapa, pagina))
        Alcanza(paginas, mapa, pagina);
    Pon(paginas, BitDe(paginas, mapa, pagina).value(), true);
}

void QuitaDelMapa(PaginasEscribibles& paginas, Puntero mapa, quint32 pagina)
{
    if (EstaEnElMapa(paginas, mapa, pagina))
        Pon(paginas, BitDe(paginas, mapa, pagina).value(), false);
}

void VaciaMapa(PaginasEscribibles& paginas, Puntero mapa)
{
    const std::vector<quint32> suyas = PaginasEnUso(paginas, mapa);
    for (const quint32 pagina : suyas)
        SueltaPagina(paginas, pagina, mapa);
    if (mapa.Nulo())
        return;
    for (const quint32 pagina : LeeMapa(paginas, mapa).deBits)
        SueltaPagina(paginas, pagina, {});
    const auto fila = CambiaFila(paginas, mapa);
    std::fill(fila.begin(), fila.end(), quint8{0});
}

bool EstaEnElMapa(Paginas& paginas, Puntero mapa, quint32 pagina)
{
    if (mapa.Nulo())
        return false;
    const std::optional<Bit> bit = BitDe(paginas, mapa, pagina);
    return bit && Vale(paginas, *bit);
}

} // namespace tolmo::data::access::mdb
