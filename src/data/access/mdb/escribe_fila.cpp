#include "data/access/mdb/escribe_fila.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/fila.h"
#include <algorithm>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr std::size_t AnchoContador = 2;
// A row that moves away leaves a pointer of four bytes in its place.
constexpr std::size_t MenorFila = 4;

std::size_t TamMascara(const Definicion& definicion)
{
    return (std::size_t{definicion.maxColumnas} + 7) / 8;
}

std::size_t FinDeFijas(const Definicion& definicion)
{
    std::size_t fin = AnchoContador;
    for (const Columna& columna : definicion.columnas) {
        if (columna.Fija() && columna.tipo != TipoColumna::Logico)
            fin = std::max(fin, AnchoContador + columna.desplazamiento + AnchoFijo(columna));
    }
    return fin;
}

std::size_t TamRanuras(const Definicion& definicion)
{
    return definicion.ranuras == 0 ? 0 : AnchoContador * (std::size_t{definicion.ranuras} + 2);
}

bool EsVariable(const Columna& columna)
{
    return !columna.Fija() && columna.tipo != TipoColumna::Logico;
}

/// Where each slot's value stands in the list of columns; nothing in those of dropped columns.
std::vector<const QByteArray*> PorRanura(const Definicion& definicion,
                                         std::span<const Crudo> crudos)
{
    std::vector<const QByteArray*> valores(definicion.ranuras, nullptr);
    for (std::size_t i = 0; i < definicion.columnas.size(); ++i) {
        const Columna& columna = definicion.columnas[i];
        if (!EsVariable(columna) || !crudos[i])
            continue;
        if (columna.ranura >= valores.size())
            Danado(QStringLiteral("La tabla no cuenta con una de sus columnas"),
                   {.columna = columna.nombre});
        valores[columna.ranura] = &*crudos[i];
    }
    return valores;
}

QByteArray Fijas(const Definicion& definicion, std::span<const Crudo> crudos)
{
    QByteArray fijas(static_cast<qsizetype>(FinDeFijas(definicion)), '\0');
    qToLittleEndian(definicion.maxColumnas, fijas.data());
    for (std::size_t i = 0; i < definicion.columnas.size(); ++i) {
        const Columna& columna = definicion.columnas[i];
        if (columna.Fija() && crudos[i])
            std::memcpy(fijas.data() + AnchoContador + columna.desplazamiento, crudos[i]->data(),
                        std::min(static_cast<std::size_t>(crudos[i]->size()), AnchoFijo(columna)));
    }
    return fijas;
}

QByteArray Mascara(const Definicion& definicion, std::span<const Crudo> crudos)
{
    QByteArray mascara(static_cast<qsizetype>(TamMascara(definicion)), '\0');
    for (std::size_t i = 0; i < definicion.columnas.size(); ++i) {
        if (!crudos[i])
            continue;
        const quint16 numero = definicion.columnas[i].numero;
        mascara[numero / 8] = static_cast<char>(mascara[numero / 8] | 1 << numero % 8);
    }
    return mascara;
}

void AnadeVariables(QByteArray& fila, const std::vector<const QByteArray*>& valores)
{
    QByteArray posiciones;
    for (const QByteArray* valor : valores) {
        QByteArray posicion;
        Anade(posicion, static_cast<quint16>(fila.size()));
        posiciones.prepend(posicion);
        if (valor != nullptr)
            fila += *valor;
    }
    Anade(fila, static_cast<quint16>(fila.size()));
    fila += posiciones;
    Anade(fila, static_cast<quint16>(valores.size()));
}

} // namespace

std::size_t LargoDeFila(const Definicion& definicion, std::span<const Crudo> crudos)
{
    std::size_t largo = FinDeFijas(definicion) + TamRanuras(definicion) + TamMascara(definicion);
    for (std::size_t i = 0; i < definicion.columnas.size(); ++i) {
        if (crudos[i] && EsVariable(definicion.columnas[i]))
            largo += static_cast<std::size_t>(crudos[i]->size());
    }
    return std::max(largo, MenorFila);
}

QByteArray EscribeFila(const Definicion& definicion, std::span<const Crudo> crudos)
{
    const std::size_t largo = LargoDeFila(definicion, crudos);
    if (largo > MayorFila)
        throw ErrorMdb(
            Motivo::Valor,
            QStringLiteral("La fila ocupa %1 bytes y caben %2").arg(largo).arg(MayorFila));
    QByteArray fila = Fijas(definicion, crudos);
    fila.reserve(static_cast<qsizetype>(largo));
    if (definicion.ranuras > 0)
        AnadeVariables(fila, PorRanura(definicion, crudos));
    const QByteArray mascara = Mascara(definicion, crudos);
    fila.append(static_cast<qsizetype>(largo) - fila.size() - mascara.size(), '\0');
    return fila + mascara;
}

} // namespace tolmo::data::access::mdb
