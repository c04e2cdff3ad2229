#include "data/access/mdb/edicion_indice.h"
#include "data/access/mdb/escribe_bytes.h"
#include <algorithm>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t PosicionLibres = 2;
constexpr std::size_t PosicionTabla = 4;

/// Writes what follows from where each entry ends.
void PonFines(std::span<quint8> bytes, const Formato& formato, std::size_t prefijo,
              std::span<const quint16> fines)
{
    const auto mascara = bytes.subspan(formato.mascara, formato.TamMascara());
    std::fill(mascara.begin(), mascara.end(), quint8{0});
    for (const quint16 fin : fines)
        mascara[fin / 8] = static_cast<quint8>(mascara[fin / 8] | 1U << fin % 8);
    const std::size_t usados = fines.empty() ? 0 : fines.back();
    Pon(bytes, PosicionLibres, static_cast<quint16>(formato.SitioEntradas() - usados));
    Pon(bytes, formato.prefijo, static_cast<quint16>(prefijo));
}

/// What follows the key in an entry.
std::size_t Resto(bool deNodo)
{
    return TamFila + (deNodo ? TamHijo : 0);
}

/// How many of the first `comun` bytes of an entry another one has in its key too.
std::size_t Comun(const BytesEntrada& una, const BytesEntrada& otra, std::size_t comun, bool deNodo)
{
    const auto suyos = std::span(una).first(std::min(comun, otra.size() - Resto(deNodo)));
    const auto distinto = std::mismatch(suyos.begin(), suyos.end(), otra.begin());
    return static_cast<std::size_t>(distinto.first - suyos.begin());
}

/// The bytes that all entries share and that no entry needs for more than its key.
std::size_t MejorPrefijo(std::span<const BytesEntrada> entradas, bool deNodo)
{
    if (entradas.size() < 2)
        return 0;
    const BytesEntrada& primera = entradas.front();
    std::size_t comun = primera.size() - Resto(deNodo);
    for (const BytesEntrada& entrada : entradas)
        comun = Comun(primera, entrada, comun, deNodo);
    return comun;
}

BytesEntrada ConNumero(std::span<const quint8> bytes, quint32 numero)
{
    BytesEntrada entrada(bytes.begin(), bytes.end());
    entrada.resize(bytes.size() + sizeof(numero));
    qToBigEndian(numero, entrada.data() + bytes.size());
    return entrada;
}

} // namespace

BytesEntrada EntradaDeHoja(const QByteArray& clave, Puntero fila)
{
    return ConNumero(
        {reinterpret_cast<const quint8*>(clave.data()), static_cast<std::size_t>(clave.size())},
        fila.Numero());
}

BytesEntrada EntradaDeNodo(std::span<const quint8> claveYFila, quint32 hijo)
{
    return ConNumero(claveYFila, hijo);
}

void EscribeCabecera(PaginasEscribibles& paginas, quint32 numero, const CabeceraIndice& cabecera)
{
    const Formato& formato = paginas.formato();
    const auto bytes = paginas.Cambia(numero);
    std::fill(bytes.begin(), bytes.end(), quint8{0});
    bytes[0] = cabecera.esNodo ? tipo_pagina::Nodo : tipo_pagina::Hoja;
    bytes[1] = 1;
    // The byte before the mask tells nodes from leaves once more.
    bytes[formato.mascara - 1] = cabecera.esNodo ? 1 : 0;
    Pon(bytes, PosicionTabla, cabecera.tabla);
    Pon(bytes, formato.anterior, cabecera.anterior);
    Pon(bytes, formato.siguiente, cabecera.siguiente);
    Pon(bytes, formato.cola, cabecera.cola);
    PonFines(bytes, formato, 0, {});
}

void PonAnterior(PaginasEscribibles& paginas, quint32 numero, quint32 anterior)
{
    Pon(paginas.Cambia(numero), paginas.formato().anterior, anterior);
}

void PonSiguiente(PaginasEscribibles& paginas, quint32 numero, quint32 siguiente)
{
    Pon(paginas.Cambia(numero), paginas.formato().siguiente, siguiente);
}

void PonCola(PaginasEscribibles& paginas, quint32 numero, quint32 cola)
{
    Pon(paginas.Cambia(numero), paginas.formato().cola, cola);
}

std::vector<BytesEntrada> TodasLasEntradas(const PaginaIndice& pagina)
{
    std::vector<BytesEntrada> entradas;
    entradas.reserve(pagina.Entradas() + 1);
    for (std::size_t i = 0; i < pagina.Entradas(); ++i) {
        const Entrada entrada = pagina.En(i);
        entradas.emplace_back(entrada.Todo().begin(), entrada.Todo().end());
    }
    return entradas;
}

std::size_t CuantasCaben(const Formato& formato, std::span<const BytesEntrada> entradas,
                         bool deNodo)
{
    std::size_t enteras = 0;
    std::size_t comun = entradas.empty() ? 0 : entradas.front().size() - Resto(deNodo);
    for (std::size_t i = 0; i < entradas.size(); ++i) {
        enteras += entradas[i].size();
        comun = Comun(entradas.front(), entradas[i], comun, deNodo);
        // All but the first are stored without what they share.
        if (enteras - i * comun > formato.SitioEntradas())
            return i;
    }
    return entradas.size();
}

bool Caben(const Formato& formato, std::span<const BytesEntrada> entradas, bool deNodo)
{
    return CuantasCaben(formato, entradas, deNodo) == entradas.size();
}

void EscribeEntradas(PaginasEscribibles& paginas, quint32 numero,
                     std::span<const BytesEntrada> entradas, bool deNodo)
{
    const Formato& formato = paginas.formato();
    const std::size_t prefijo = MejorPrefijo(entradas, deNodo);
    const auto bytes = paginas.Cambia(numero);
    const auto sitio = bytes.subspan(formato.entradas);
    std::vector<quint16> fines;
    fines.reserve(entradas.size());
    std::size_t fin = 0;
    for (const BytesEntrada& entrada : entradas) {
        const auto guardada = std::span(entrada).subspan(fines.empty() ? 0 : prefijo);
        std::copy(guardada.begin(), guardada.end(), sitio.subspan(fin, guardada.size()).begin());
        fin += guardada.size();
        fines.push_back(static_cast<quint16>(fin));
    }
    PonFines(bytes, formato, prefijo, fines);
}

// The page holds the prefix, then of each entry what follows it; so an entry that shares the prefix
// comes or goes without a change of any other.

bool IntercalaEntrada(PaginasEscribibles& paginas, const PaginaIndice& pagina, std::size_t lugar,
                      const BytesEntrada& entrada)
{
    const Formato& formato = paginas.formato();
    const std::size_t prefijo = pagina.Entradas() == 0 ? 0 : pagina.Prefijo();
    const auto comun = pagina.Guardados().first(prefijo);
    const std::size_t resto = TamFila + (pagina.EsNodo() ? TamHijo : 0);
    if (entrada.size() < prefijo + resto ||
        !std::equal(comun.begin(), comun.end(), entrada.begin()) ||
        pagina.Usados() + entrada.size() - prefijo > formato.SitioEntradas())
        return false;

    const auto propios = std::span(entrada).subspan(prefijo);
    std::vector<quint16> fines(pagina.Fines().begin(), pagina.Fines().end());
    const std::size_t desde = lugar == 0 ? prefijo : fines[lugar - 1];
    fines.insert(fines.begin() + static_cast<std::ptrdiff_t>(lugar), static_cast<quint16>(desde));
    for (std::size_t i = lugar; i < fines.size(); ++i)
        fines[i] = static_cast<quint16>(fines[i] + propios.size());

    const auto bytes = paginas.Cambia(pagina.Numero());
    const auto sitio = bytes.subspan(formato.entradas);
    const auto movidos = sitio.subspan(desde, pagina.Usados() - desde);
    std::copy_backward(movidos.begin(), movidos.end(),
                       movidos.end() + static_cast<std::ptrdiff_t>(propios.size()));
    std::copy(propios.begin(), propios.end(), movidos.begin());
    PonFines(bytes, formato, prefijo, fines);
    return true;
}

void QuitaEntrada(PaginasEscribibles& paginas, const PaginaIndice& pagina, std::size_t lugar)
{
    const Formato& formato = paginas.formato();
    std::vector<quint16> fines(pagina.Fines().begin(), pagina.Fines().end());
    const bool unica = fines.size() == 1;
    const std::size_t prefijo = unica ? 0 : pagina.Prefijo();
    const std::size_t desde = lugar == 0 ? prefijo : fines[lugar - 1];
    const std::size_t hasta = fines[lugar];

    const auto bytes = paginas.Cambia(pagina.Numero());
    const auto sitio = bytes.subspan(formato.entradas);
    const auto movidos = sitio.subspan(hasta, pagina.Usados() - hasta);
    std::copy(movidos.begin(), movidos.end(), sitio.subspan(desde).begin());
    fines.erase(fines.begin() + static_cast<std::ptrdiff_t>(lugar));
    for (std::size_t i = lugar; i < fines.size(); ++i)
        fines[i] = static_cast<quint16>(fines[i] - (hasta - desde));
    PonFines(bytes, formato, prefijo, fines);
}

} // namespace tolmo::data::access::mdb
