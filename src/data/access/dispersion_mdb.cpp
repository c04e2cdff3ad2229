#include "data/access/dispersion_mdb.h"
#include "data/access/mdb/clave.h"
#include <QHash>
#include <algorithm>

namespace tolmo::data::access {
namespace {

std::optional<quint64> NumeroDe(const mdb::Dato& valor, const mdb::Columna& columna)
{
    const auto clave = mdb::ClaveDeValor(valor, columna, false, {});
    return clave ? std::optional<quint64>(qHash(*clave)) : std::nullopt;
}

} // namespace

DispersionMdb::DispersionMdb(const mdb::Tabla& tabla, const mdb::Columna& columna)
    : columna_(columna)
{
    for (mdb::Cursor cursor(tabla); cursor.Siguiente();) {
        const mdb::Dato valor = cursor.fila().Lee(columna_);
        if (mdb::EsNulo(valor))
            continue; // equal to nothing
        if (const auto numero = NumeroDe(valor, columna_))
            entradas_.push_back({*numero, cursor.puntero()});
        else
            inciertas_.push_back(cursor.puntero());
    }
    std::ranges::sort(entradas_);
}

std::optional<std::vector<mdb::Puntero>> DispersionMdb::Filas(const mdb::Dato& valor) const
{
    const auto numero = NumeroDe(valor, columna_);
    if (!numero)
        return std::nullopt;
    std::vector<mdb::Puntero> filas = inciertas_;
    const auto [primera, ultima] =
        std::ranges::equal_range(entradas_, *numero, {}, &Entrada::numero);
    for (auto entrada = primera; entrada != ultima; ++entrada)
        filas.push_back(entrada->fila);
    std::ranges::sort(filas);
    return filas;
}

} // namespace tolmo::data::access
