#include "data/access/mdb/mapa.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/pagina_datos.h"

namespace tolmo::data::access::mdb {
namespace {

using namespace forma_mapa;

void AnadeBits(Mapa& mapa, Bytes bits, quint64 primera, quint32 cuantas)
{
    for (std::size_t i = 0; i < bits.size(); ++i) {
        const quint8 byte = bits.data()[i];
        for (unsigned bit = 0; byte >> bit != 0; ++bit) {
            const quint64 pagina = primera + 8 * i + bit;
            if ((byte >> bit & 1) == 0)
                continue;
            if (pagina < cuantas)
                mapa.paginas.push_back(static_cast<quint32>(pagina));
            else
                mapa.pasaDelFinal = true;
        }
    }
}

void AnadeReferidas(Mapa& mapa, Paginas& paginas, Bytes referencias)
{
    const std::size_t caben = PaginasPorReferencia(paginas.formato());
    for (std::size_t i = 0; TamReferencia * (i + 1) <= referencias.size(); ++i) {
        const quint32 numero = referencias.U32(TamReferencia * i);
        // Past the end of the file no bit means anything, and a row may have many such entries.
        if (numero == 0 || i * caben >= paginas.Cuantas())
            continue;
        const Pagina pagina = paginas.Lee(numero);
        if (pagina.bytes.U8(0) != tipo_pagina::MapaDeBits)
            Danado(QStringLiteral("La página no es de un mapa"), {.pagina = numero});
        mapa.deBits.push_back(numero);
        AnadeBits(mapa, pagina.bytes.Desde(CabeceraDeBits), i * caben, paginas.Cuantas());
    }
}

} // namespace

Mapa LeeMapa(Paginas& paginas, Puntero puntero)
{
    Mapa mapa;
    if (puntero.Nulo())
        return mapa;
    const PaginaDatos pagina = LeePaginaDatos(paginas, puntero.pagina);
    EnLugar([&] { return Lugar{.fichero = paginas.Nombre(), .pagina = puntero.pagina}; },
            [&] {
                const Bytes fila = pagina.Contenido(puntero.fila);
                const quint8 forma = fila.U8(0);
                if (forma == EnLaFila)
                    AnadeBits(mapa, fila.Desde(CabeceraEnLaFila), fila.U32(1), paginas.Cuantas());
                else if (forma == PorReferencia)
                    AnadeReferidas(mapa, paginas, fila.Desde(CabeceraPorReferencia));
                else
                    Danado(QStringLiteral("El mapa de páginas tiene una forma desconocida"));
            });
    return mapa;
}

std::vector<quint32> PaginasEnUso(Paginas& paginas, Puntero puntero)
{
    Mapa mapa = LeeMapa(paginas, puntero);
    if (mapa.pasaDelFinal)
        throw ErrorMdb(Motivo::Cortado,
                       QStringLiteral("Un mapa nombra páginas que el fichero no tiene: está "
                                      "cortado o dañado"),
                       {.fichero = paginas.Nombre(), .pagina = puntero.pagina});
    return std::move(mapa.paginas);
}

} // namespace tolmo::data::access::mdb
