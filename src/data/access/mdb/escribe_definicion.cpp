#include "data/access/mdb/escribe_definicion.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/errores_mdb.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/fila.h"
#include <algorithm>
#include <cstring>

namespace tolmo::data::access::mdb {
namespace {

constexpr quint32 Constante = 1625;
constexpr quint32 ConstanteIndice = 1923;
constexpr std::size_t PosicionLibres = 2;
constexpr std::size_t PosicionSiguiente = 4;
constexpr std::size_t PosicionLargo = 8;
constexpr std::size_t PosicionConstante = 0x0C;
constexpr std::size_t PosicionUno = 0x18; ///< without it Access gives no autonumbers
constexpr std::size_t CabeceraContinuacion = 8;
constexpr quint8 ClaseUsuario = 0x4E;
constexpr quint8 ClaseSistema = 0x53;
constexpr quint16 Fin = 0xFFFF;
constexpr std::size_t ColumnasPorIndice = 10;
constexpr quint8 NoEsAjeno = 4; ///< in the place of the cascades

const Formato& F()
{
    static const Formato formato = FormatoDe(Version::Jet4);
    return formato;
}

bool EsVariable(const Columna& columna)
{
    return !columna.Fija();
}

QByteArray Bloque(const Columna& columna)
{
    QByteArray bytes;
    Anade(bytes, static_cast<quint8>(columna.tipo));
    Anade(bytes, Constante);
    Anade(bytes, columna.numero);
    Anade(bytes, columna.ranura);
    Anade(bytes, columna.posicion);
    if (columna.tipo == TipoColumna::Numerico) {
        Anade(bytes, columna.precision);
        Anade(bytes, columna.escala);
        Anade(bytes, quint16{0});
    } else {
        Anade(bytes, columna.orden.idioma);
        Anade(bytes, quint8{0});
        Anade(bytes, columna.orden.version);
    }
    Anade(bytes, columna.marcas);
    Anade(bytes, columna.otrasMarcas);
    Anade(bytes, quint32{0});
    Anade(bytes, columna.desplazamiento);
    Anade(bytes, columna.largo);
    return bytes;
}

QByteArray Bloque(const IndiceReal& indice)
{
    QByteArray bytes;
    Anade(bytes, ConstanteIndice);
    for (std::size_t i = 0; i < ColumnasPorIndice; ++i) {
        const bool hay = i < indice.columnas.size();
        Anade(bytes, hay ? indice.columnas[i].numero : Fin);
        Anade(bytes, quint8{hay && !indice.columnas[i].descendente});
    }
    Anade(bytes, indice.mapa.Numero());
    Anade(bytes, indice.raiz);
    Anade(bytes, quint32{0});
    Anade(bytes, indice.marcas);
    return bytes + QByteArray(5, '\0');
}

QByteArray Bloque(const IndiceLogico& indice)
{
    QByteArray bytes;
    Anade(bytes, Constante);
    Anade(bytes, indice.numero);
    Anade(bytes, indice.real);
    Anade(bytes, quint8{0});
    Anade(bytes, quint32{0xFFFFFFFF});
    Anade(bytes, quint32{0});
    Anade(bytes, NoEsAjeno);
    Anade(bytes, NoEsAjeno);
    Anade(bytes, static_cast<quint8>(indice.clase));
    Anade(bytes, quint32{0});
    return bytes;
}

QByteArray Larga(const Columna& columna)
{
    QByteArray bytes;
    Anade(bytes, columna.numero);
    Anade(bytes, columna.paginasLargas.Numero());
    Anade(bytes, columna.paginasLargasLibres.Numero());
    return bytes;
}

quint16 NumeroDeColumna(const QByteArray& bloque)
{
    return BytesDe(bloque).U16(F().colNumero);
}
quint32 NumeroDeIndice(const QByteArray& bloque)
{
    return BytesDe(bloque).U32(F().prefijoBloque);
}
quint32 RealDe(const QByteArray& bloque)
{
    return BytesDe(bloque).U32(F().prefijoBloque + sizeof(quint32));
}

PartesDefinicion::ConNombre& ParteDe(PartesDefinicion& partes, const Columna& columna)
{
    const auto parte =
        std::find_if(partes.columnas.begin(), partes.columnas.end(),
                     [&](const auto& c) { return NumeroDeColumna(c.bloque) == columna.numero; });
    if (parte == partes.columnas.end())
        Danado(QStringLiteral("La definición no tiene una de sus columnas"),
               {.columna = columna.nombre});
    return *parte;
}

/// Bytes of one page behind its header that belong to a definition.
std::size_t Caben(bool primera)
{
    return F().tamPagina - (primera ? 0 : CabeceraContinuacion);
}

} // namespace

void Coloca(Definicion& definicion)
{
    quint16 numero = 0;
    quint16 ranura = 0;
    std::size_t desplazamiento = 0;
    for (Columna& columna : definicion.columnas) {
        columna.numero = numero++;
        columna.ranura = ranura;
        if (EsVariable(columna)) {
            ++ranura;
        } else if (columna.tipo != TipoColumna::Logico) {
            columna.desplazamiento = static_cast<quint16>(desplazamiento);
            desplazamiento += AnchoFijo(columna);
        }
    }
    definicion.maxColumnas = numero;
    definicion.ranuras = ranura;
}

PartesDefinicion EscribeDefinicion(const Definicion& definicion)
{
    PartesDefinicion partes;
    QByteArray& bytes = partes.cabecera;
    bytes.fill('\0', static_cast<qsizetype>(F().bloques));
    Pon(bytes, 0, quint16{0x0100 | tipo_pagina::Definicion});
    Pon(bytes, PosicionConstante, Constante);
    Pon(bytes, PosicionUno, quint8{1});
    Pon(bytes, F().clase, definicion.deSistema ? ClaseSistema : ClaseUsuario);
    Pon(bytes, F().mapaPropias, definicion.paginasPropias.Numero());
    Pon(bytes, F().mapaLibres, definicion.paginasLibres.Numero());
    for (const Columna& columna : definicion.columnas)
        AnadeColumna(partes, columna);
    Pon(bytes, F().maxColumnas, definicion.maxColumnas);
    Pon(bytes, F().ranuras, definicion.ranuras);
    Anade(partes.fin, Fin);
    return partes;
}

void AnadeColumna(PartesDefinicion& partes, const Columna& columna)
{
    partes.columnas.push_back({.bloque = Bloque(columna), .nombre = columna.nombre});
    if (columna.Larga())
        partes.largas.push_back(Larga(columna));
    Pon(partes.cabecera, F().maxColumnas, static_cast<quint16>(columna.numero + 1));
    if (EsVariable(columna))
        Pon(partes.cabecera, F().ranuras, static_cast<quint16>(columna.ranura + 1));
}

void CambiaColumna(PartesDefinicion& partes, const Columna& columna)
{
    ParteDe(partes, columna) = {.bloque = Bloque(columna), .nombre = columna.nombre};
}

void QuitaColumna(PartesDefinicion& partes, const Columna& columna)
{
    const auto sitio = &ParteDe(partes, columna) - partes.columnas.data();
    partes.columnas.erase(partes.columnas.begin() + sitio);
    std::erase_if(partes.largas,
                  [&](const QByteArray& larga) { return BytesDe(larga).U16(0) == columna.numero; });
}

void AnadeIndice(PartesDefinicion& partes, const IndiceReal& real, IndiceLogico logico)
{
    logico.real = static_cast<quint32>(partes.reales.size());
    for (const auto& otro : partes.logicos)
        logico.numero = std::max(logico.numero, NumeroDeIndice(otro.bloque) + 1);
    partes.estadisticas.emplace_back(static_cast<qsizetype>(F().tamEstadistica), '\0');
    partes.reales.push_back(Bloque(real));
    // Access keeps them by name.
    const auto detras =
        std::find_if(partes.logicos.begin(), partes.logicos.end(), [&](const auto& otro) {
            return otro.nombre.compare(logico.nombre, Qt::CaseInsensitive) > 0;
        });
    partes.logicos.insert(detras, {.bloque = Bloque(logico), .nombre = logico.nombre});
}

bool QuitaIndice(PartesDefinicion& partes, const IndiceLogico& logico)
{
    std::erase_if(partes.logicos,
                  [&](const auto& otro) { return NumeroDeIndice(otro.bloque) == logico.numero; });
    if (std::any_of(partes.logicos.begin(), partes.logicos.end(),
                    [&](const auto& otro) { return RealDe(otro.bloque) == logico.real; }))
        return false;
    if (logico.real >= partes.reales.size())
        Danado(QStringLiteral("La definición no tiene el árbol de un índice"),
               {.indice = logico.nombre});
    partes.estadisticas.erase(partes.estadisticas.begin() + logico.real);
    partes.reales.erase(partes.reales.begin() + logico.real);
    for (auto& otro : partes.logicos) {
        const quint32 real = RealDe(otro.bloque);
        if (real > logico.real)
            Pon(otro.bloque, F().prefijoBloque + sizeof(quint32), real - 1);
    }
    return true;
}

void GuardaDefinicion(PaginasEscribibles& paginas, std::vector<quint32> suyas,
                      const PartesDefinicion& partes)
{
    QByteArray bytes = partes.Une();
    const auto largo = static_cast<std::size_t>(bytes.size());
    Pon(bytes, PosicionLargo, static_cast<quint32>(largo));
    std::size_t escritos = 0;
    std::size_t usadas = 0;
    for (std::size_t i = 0; i == 0 || escritos < largo; ++i) {
        const std::size_t cuantos = std::min(largo - escritos, Caben(i == 0));
        const bool sigue = escritos + cuantos < largo;
        if (sigue && i + 1 == suyas.size())
            suyas.push_back(PidePagina(paginas, {}));
        const auto pagina = paginas.Cambia(suyas[i]);
        std::memcpy(pagina.data() + pagina.size() - Caben(i == 0), bytes.data() + escritos,
                    cuantos);
        escritos += cuantos;
        const std::size_t libres = Caben(i == 0) - cuantos;
        Pon(pagina, 0, quint16{0x0100 | tipo_pagina::Definicion});
        Pon(pagina, PosicionLibres,
            static_cast<quint16>(libres < CabeceraContinuacion ? 0
                                                               : libres - CabeceraContinuacion));
        Pon(pagina, PosicionSiguiente, sigue ? suyas[i + 1] : quint32{0});
        usadas = i + 1;
    }
    for (; usadas < suyas.size(); ++usadas)
        SueltaPagina(paginas, suyas[usadas], {});
}

DefinicionAbierta::DefinicionAbierta(PaginasEscribibles& paginas, quint32 pagina)
    : paginas_(paginas)
{
    const std::vector<quint8> bytes = BytesDeDefinicion(paginas, pagina, suyas_);
    partes = PartesDefinicion::De(Bytes(bytes));
}

} // namespace tolmo::data::access::mdb
