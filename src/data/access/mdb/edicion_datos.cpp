#include "data/access/mdb/edicion_datos.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include <algorithm>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t PosicionLibres = 2;
constexpr std::size_t PosicionDuenio = 4;
constexpr quint16 Posicion = 0x1FFF;
constexpr std::size_t AnchoRanura = 2;

quint16 MarcasDe(EstadoRanura estado)
{
    switch (estado) {
    case EstadoRanura::Fila:
        return 0;
    case EstadoRanura::Movida:
        return 0x4000;
    case EstadoRanura::Destino:
        return 0x8000;
    case EstadoRanura::Borrada:
        return 0xC000;
    }
    return 0;
}

EstadoRanura EstadoDe(quint16 valor)
{
    switch (valor & 0xC000) {
    case 0x4000:
        return EstadoRanura::Movida;
    case 0x8000:
        return EstadoRanura::Destino;
    case 0xC000:
        return EstadoRanura::Borrada;
    default:
        return EstadoRanura::Fila;
    }
}

/// What a slot of this state needs of the `largo` bytes that it has.
std::size_t Necesita(EstadoRanura estado, std::size_t largo)
{
    switch (estado) {
    case EstadoRanura::Borrada:
        return 0;
    case EstadoRanura::Movida:
        return std::min(largo, TamPuntero);
    default:
        return largo;
    }
}

} // namespace

std::size_t Ocupados(const PaginaDatos& pagina, std::size_t ranura)
{
    return Necesita(pagina.Estado(ranura), pagina.Contenido(ranura).size());
}

Sitio SitioDe(const PaginaDatos& pagina)
{
    Sitio sitio{.libres = pagina.Hueco(), .ranuras = pagina.Ranuras()};
    for (std::size_t i = 0; i < sitio.ranuras; ++i) {
        sitio.libres += pagina.Contenido(i).size() - Ocupados(pagina, i);
        sitio.vivas += pagina.Estado(i) == EstadoRanura::Borrada ? 0 : 1;
    }
    return sitio;
}

EdicionDatos::EdicionDatos(PaginasEscribibles& paginas, quint32 numero)
    : pagina_(paginas.Cambia(numero)), tabla_(paginas.formato().numeroDeFilas + AnchoRanura),
      numero_(numero)
{
    Comprueba();
}

void EdicionDatos::Estrena(PaginasEscribibles& paginas, quint32 numero, quint32 duenio)
{
    const auto pagina = paginas.Cambia(numero);
    pagina[0] = tipo_pagina::Datos;
    pagina[1] = 1;
    Pon(pagina, PosicionDuenio, duenio);
    Pon(pagina, PosicionLibres,
        static_cast<quint16>(pagina.size() - paginas.formato().numeroDeFilas - AnchoRanura));
}

void EdicionDatos::Comprueba() const
{
    bool coherente = pagina_[0] == tipo_pagina::Datos && FinDeTabla() <= pagina_.size();
    for (std::size_t i = 0; coherente && i < Ranuras(); ++i)
        coherente = Principio(i) <= Fin(i) && Principio(i) >= FinDeTabla();
    if (!coherente)
        Danado(QStringLiteral("La tabla de filas de la página no es coherente"),
               {.pagina = numero_});
}

std::size_t EdicionDatos::Ranuras() const
{
    return Bytes(pagina_).U16(tabla_ - AnchoRanura);
}

quint16 EdicionDatos::Valor(std::size_t ranura) const
{
    return qFromLittleEndian<quint16>(pagina_.data() + tabla_ + AnchoRanura * ranura);
}

void EdicionDatos::PonValor(std::size_t ranura, std::size_t posicion, EstadoRanura estado)
{
    Pon(pagina_, tabla_ + AnchoRanura * ranura, static_cast<quint16>(posicion | MarcasDe(estado)));
}

EstadoRanura EdicionDatos::Estado(std::size_t ranura) const
{
    return EstadoDe(Valor(ranura));
}

std::size_t EdicionDatos::Principio(std::size_t ranura) const
{
    return Valor(ranura) & Posicion;
}

std::size_t EdicionDatos::Fin(std::size_t ranura) const
{
    return ranura == 0 ? pagina_.size() : Principio(ranura - 1);
}

std::size_t EdicionDatos::FinDeTabla() const
{
    return tabla_ + AnchoRanura * Ranuras();
}

std::size_t EdicionDatos::Libres() const
{
    return Fin(Ranuras()) - FinDeTabla();
}

void EdicionDatos::PonLibres()
{
    Pon(pagina_, PosicionLibres, static_cast<quint16>(Libres()));
}

/// Gives a slot more or fewer bytes; the rows below it move.
void EdicionDatos::PonLargo(std::size_t ranura, std::size_t largo)
{
    const std::size_t antes = Fin(ranura) - Principio(ranura);
    if (antes == largo)
        return;
    if (largo > antes && largo - antes > Libres())
        Danado(QStringLiteral("La página no tiene sitio para una fila"), {.pagina = numero_});
    const std::size_t masBaja = Fin(Ranuras());
    const std::size_t nueva = masBaja + antes - largo;
    // The slot keeps its first bytes.
    std::memmove(pagina_.data() + nueva, pagina_.data() + masBaja,
                 Principio(ranura) - masBaja + std::min(antes, largo));
    for (std::size_t i = ranura; i < Ranuras(); ++i)
        PonValor(i, Principio(i) + antes - largo, Estado(i));
    PonLibres();
}

void EdicionDatos::Compacta()
{
    for (std::size_t i = 0; i < Ranuras(); ++i)
        PonLargo(i, Necesita(Estado(i), Fin(i) - Principio(i)));
}

void EdicionDatos::Vacia()
{
    Pon(pagina_, tabla_ - AnchoRanura, quint16{0});
    PonLibres();
}

quint8 EdicionDatos::AnadeFila(const QByteArray& fila, EstadoRanura estado)
{
    const std::size_t ranura = Ranuras();
    const auto largo = static_cast<std::size_t>(fila.size());
    if (ranura >= MasRanurasNuevas || Libres() < largo + AnchoRanura)
        Danado(QStringLiteral("La página no tiene sitio para una fila"), {.pagina = numero_});
    const std::size_t posicion = Fin(ranura) - largo;
    Pon(pagina_, tabla_ - AnchoRanura, static_cast<quint16>(ranura + 1));
    PonValor(ranura, posicion, estado);
    std::memcpy(pagina_.data() + posicion, fila.data(), largo);
    PonLibres();
    return static_cast<quint8>(ranura);
}

void EdicionDatos::CambiaFila(quint8 ranura, const QByteArray& fila, EstadoRanura estado)
{
    if (ranura >= Ranuras())
        Danado(QStringLiteral("Se apunta a una fila que la página no tiene"), {.pagina = numero_});
    PonLargo(ranura, static_cast<std::size_t>(fila.size()));
    PonValor(ranura, Principio(ranura), estado);
    std::memcpy(pagina_.data() + Principio(ranura), fila.data(),
                static_cast<std::size_t>(fila.size()));
}

void EdicionDatos::BorraFila(quint8 ranura)
{
    CambiaFila(ranura, {}, EstadoRanura::Borrada);
}

void EdicionDatos::RecortaRanuras()
{
    std::size_t cuantas = Ranuras();
    while (cuantas > 0 && Estado(cuantas - 1) == EstadoRanura::Borrada)
        --cuantas;
    Pon(pagina_, tabla_ - AnchoRanura, static_cast<quint16>(cuantas));
    PonLibres();
}

} // namespace tolmo::data::access::mdb
