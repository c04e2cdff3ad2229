#include "data/access/mdb/pagina_datos.h"
#include "data/access/mdb/errores_mdb.h"

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t PosicionLibres = 2;
constexpr std::size_t PosicionDuenio = 4;
constexpr quint16 MarcaDestino = 0x8000;
constexpr quint16 MarcaMovida = 0x4000;
constexpr quint16 Posicion = 0x1FFF;
// A row pointer has one byte for the slot.
constexpr std::size_t MasRanuras = 256;

} // namespace

PaginaDatos::PaginaDatos(Pagina pagina, const Formato& formato)
    : pagina_(std::move(pagina)), tabla_(formato.numeroDeFilas + 2),
      ranuras_(pagina_.bytes.U16(formato.numeroDeFilas))
{
    if (pagina_.bytes.U8(0) != tipo_pagina::Datos)
        Danado(QStringLiteral("La página no es de datos"), {.pagina = pagina_.numero});
    if (ranuras_ > MasRanuras)
        Danado(QStringLiteral("La página dice tener demasiadas filas"), {.pagina = pagina_.numero});
}

quint32 PaginaDatos::Duenio() const
{
    return pagina_.bytes.U32(PosicionDuenio);
}

std::size_t PaginaDatos::Libres() const
{
    return pagina_.bytes.U16(PosicionLibres);
}

std::size_t PaginaDatos::Hueco() const
{
    const std::size_t finTabla = tabla_ + 2 * ranuras_;
    const std::size_t masBaja = ranuras_ == 0 ? pagina_.bytes.size() : Principio(ranuras_ - 1);
    return masBaja < finTabla ? 0 : masBaja - finTabla;
}

EstadoRanura PaginaDatos::Estado(std::size_t ranura) const
{
    const quint16 valor = pagina_.bytes.U16(tabla_ + 2 * ranura);
    if ((valor & MarcaDestino) != 0)
        return (valor & MarcaMovida) != 0 ? EstadoRanura::Borrada : EstadoRanura::Destino;
    return (valor & MarcaMovida) != 0 ? EstadoRanura::Movida : EstadoRanura::Fila;
}

std::size_t PaginaDatos::Principio(std::size_t ranura) const
{
    return pagina_.bytes.U16(tabla_ + 2 * ranura) & Posicion;
}

Bytes PaginaDatos::Contenido(std::size_t ranura) const
{
    if (ranura >= ranuras_)
        Danado(QStringLiteral("Se apunta a una fila que la página no tiene"),
               {.pagina = pagina_.numero});
    const std::size_t principio = Principio(ranura);
    const std::size_t fin = ranura == 0 ? pagina_.bytes.size() : Principio(ranura - 1);
    if (principio > fin || fin > pagina_.bytes.size() || principio < tabla_ + 2 * ranuras_)
        Danado(QStringLiteral("La tabla de filas de la página no es coherente"),
               {.pagina = pagina_.numero});
    return pagina_.bytes.Trozo(principio, fin - principio);
}

PaginaDatos LeePaginaDatos(Paginas& paginas, quint32 numero)
{
    return {paginas.Lee(numero), paginas.formato()};
}

} // namespace tolmo::data::access::mdb
