#include "data/access/mdb/tabla.h"
#include "data/access/mdb/mapa.h"

namespace tolmo::data::access::mdb {
namespace {

// Access moves a row once and then changes the pointer of its first place.
constexpr int MasTraslados = 8;

/// The page of a row of this table.
PaginaDatos PaginaPropia(Paginas& paginas, const Definicion& definicion, quint32 numero)
{
    PaginaDatos pagina = LeePaginaDatos(paginas, numero);
    if (pagina.Duenio() != definicion.pagina)
        Danado(QStringLiteral("La página es de otra tabla"), {.pagina = numero});
    return pagina;
}

/// The row whose data a slot holds or leads to.
Fila Sigue(Paginas& paginas, const Definicion& definicion, const PaginaDatos& desde,
           std::size_t ranura)
{
    if (desde.Estado(ranura) == EstadoRanura::Fila)
        return {definicion, paginas, desde.pagina(), desde.Contenido(ranura)};
    Puntero destino = Puntero::De(desde.Contenido(ranura).U32(0));
    for (int traslado = 0; traslado < MasTraslados; ++traslado) {
        const PaginaDatos pagina = PaginaPropia(paginas, definicion, destino.pagina);
        const Bytes contenido = pagina.Contenido(destino.fila);
        const EstadoRanura estado = pagina.Estado(destino.fila);
        if (estado == EstadoRanura::Destino)
            return {definicion, paginas, pagina.pagina(), contenido};
        if (estado != EstadoRanura::Movida)
            break;
        destino = Puntero::De(contenido.U32(0));
    }
    Danado(QStringLiteral("Una fila que cambió de sitio no está en el nuevo"),
           {.pagina = desde.Numero()});
}

} // namespace

Tabla::Tabla(std::shared_ptr<Paginas> paginas, std::shared_ptr<const Definicion> definicion)
    : paginas_(std::move(paginas)), definicion_(std::move(definicion))
{
}

const Columna& Tabla::operator[](const QString& columna) const
{
    const Columna* hallada = definicion_->ColumnaDe(columna);
    if (hallada == nullptr)
        throw ErrorMdb(Motivo::NoHallado, QStringLiteral("La tabla no tiene la columna ") + columna,
                       En());
    return *hallada;
}

Lugar Tabla::En(std::optional<quint32> pagina) const
{
    return {.fichero = paginas_->Nombre(), .tabla = Nombre(), .pagina = pagina};
}

std::optional<Fila> Tabla::FilaEn(Puntero puntero) const
{
    return EnLugar([&] { return En(puntero.pagina); },
                   [&]() -> std::optional<Fila> {
                       const PaginaDatos pagina =
                           PaginaPropia(*paginas_, *definicion_, puntero.pagina);
                       if (puntero.fila >= pagina.Ranuras())
                           return std::nullopt;
                       const EstadoRanura estado = pagina.Estado(puntero.fila);
                       if (estado == EstadoRanura::Borrada || estado == EstadoRanura::Destino)
                           return std::nullopt;
                       return Sigue(*paginas_, *definicion_, pagina, puntero.fila);
                   });
}

Cursor::Cursor(Tabla tabla) : tabla_(std::move(tabla))
{
    numeros_ = EnLugar(
        [this] { return tabla_.En(); },
        [this] { return PaginasEnUso(tabla_.paginas(), tabla_.definicion().paginasPropias); });
}

bool Cursor::SiguientePagina()
{
    pagina_.reset();
    ranura_ = 0;
    while (proxima_ < numeros_.size()) {
        const quint32 numero = numeros_[proxima_++];
        // A page that was taken and never written is all zeros.
        if (tabla_.paginas().Lee(numero).bytes.U8(0) == tipo_pagina::SinEscribir)
            continue;
        pagina_ = PaginaPropia(tabla_.paginas(), tabla_.definicion(), numero);
        return true;
    }
    return false;
}

bool Cursor::Siguiente()
{
    return EnLugar(
        [this] { return tabla_.En(pagina_ ? std::optional(pagina_->Numero()) : std::nullopt); },
        [this] {
            for (;;) {
                if (!pagina_ || ranura_ >= pagina_->Ranuras()) {
                    if (!SiguientePagina())
                        return false;
                    continue;
                }
                const std::size_t ranura = ranura_++;
                const EstadoRanura estado = pagina_->Estado(ranura);
                if (estado == EstadoRanura::Borrada || estado == EstadoRanura::Destino)
                    continue;
                puntero_ = {.pagina = pagina_->Numero(), .fila = static_cast<quint8>(ranura)};
                fila_ = Sigue(tabla_.paginas(), tabla_.definicion(), *pagina_, ranura);
                return true;
            }
        });
}

} // namespace tolmo::data::access::mdb
