#include "data/access/mdb/escribe_definicion.h"
#include "data/access/mdb/asignacion.h"
#include "data/access/mdb/escribe_bytes.h"
#include "data/access/mdb/fila.h"
#include "data/access/mdb/texto.h"
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

template <typename T> void PonEn(QByteArray& bytes, std::size_t posicion, T numero)
{
    Pon(std::span(reinterpret_cast<quint8*>(bytes.data()), static_cast<std::size_t>(bytes.size())),
        posicion, numero);
}

QByteArray Nombre(const QString& nombre)
{
    QByteArray bytes;
    Anade(bytes, static_cast<quint16>(2 * nombre.size()));
    for (const QChar caracter : nombre)
        Anade(bytes, quint16{caracter.unicode()});
    return bytes;
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

/// Where the parts of a definition that an index has a share in stand.
struct Partes {
    quint32 logicos = 0;
    quint32 reales = 0;
    std::size_t finEstadisticas = 0;
    std::size_t finReales = 0;
    std::size_t principioLogicos = 0;
    std::size_t principioNombres = 0; ///< of the logical indexes
    QStringList nombres{};
    quint32 numeroLibre = 0;
};

std::size_t SaltaNombre(Bytes bytes, std::size_t posicion)
{
    return posicion + 2 + bytes.U16(posicion);
}

Partes PartesDe(Bytes bytes)
{
    Partes partes{.logicos = bytes.U32(F().indicesLogicos), .reales = bytes.U32(F().indicesReales)};
    partes.finEstadisticas = F().bloques + partes.reales * F().tamEstadistica;
    const std::size_t columnas = bytes.U16(F().columnas);
    std::size_t posicion = partes.finEstadisticas + columnas * F().tamColumna;
    for (std::size_t i = 0; i < columnas; ++i)
        posicion = SaltaNombre(bytes, posicion);
    partes.finReales = posicion + partes.reales * F().tamIndiceReal;
    partes.principioLogicos = partes.finReales;
    partes.principioNombres = partes.finReales + partes.logicos * F().tamIndiceLogico;
    posicion = partes.principioNombres;
    for (quint32 i = 0; i < partes.logicos; ++i) {
        const quint32 numero =
            bytes.U32(partes.principioLogicos + i * F().tamIndiceLogico + F().prefijoBloque);
        partes.numeroLibre = std::max(partes.numeroLibre, numero + 1);
        partes.nombres << TextoSinComprimir(bytes.Trozo(posicion + 2, bytes.U16(posicion)), F());
        posicion = SaltaNombre(bytes, posicion);
    }
    return partes;
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

QByteArray EscribeDefinicion(const Definicion& definicion)
{
    QByteArray bytes(static_cast<qsizetype>(F().bloques), '\0');
    PonEn(bytes, 0, quint16{0x0100 | tipo_pagina::Definicion});
    PonEn(bytes, PosicionConstante, Constante);
    PonEn(bytes, PosicionUno, quint8{1});
    PonEn(bytes, F().clase, definicion.deSistema ? ClaseSistema : ClaseUsuario);
    PonEn(bytes, F().maxColumnas, definicion.maxColumnas);
    PonEn(bytes, F().ranuras, definicion.ranuras);
    PonEn(bytes, F().columnas, static_cast<quint16>(definicion.columnas.size()));
    PonEn(bytes, F().mapaPropias, definicion.paginasPropias.Numero());
    PonEn(bytes, F().mapaLibres, definicion.paginasLibres.Numero());
    for (const Columna& columna : definicion.columnas)
        bytes += Bloque(columna);
    for (const Columna& columna : definicion.columnas)
        bytes += Nombre(columna.nombre);
    for (const Columna& columna : definicion.columnas) {
        if (!columna.Larga())
            continue;
        Anade(bytes, columna.numero);
        Anade(bytes, columna.paginasLargas.Numero());
        Anade(bytes, columna.paginasLargasLibres.Numero());
    }
    Anade(bytes, Fin);
    return bytes;
}

void AnadeIndice(QByteArray& bytes, const IndiceReal& real, IndiceLogico logico)
{
    const Partes partes = PartesDe(BytesDe(bytes));
    logico.real = partes.reales;
    logico.numero = partes.numeroLibre;
    // Access keeps them by name.
    const auto detras =
        std::find_if(partes.nombres.begin(), partes.nombres.end(), [&](const QString& n) {
            return n.compare(logico.nombre, Qt::CaseInsensitive) > 0;
        });
    const auto lugar = static_cast<std::size_t>(detras - partes.nombres.begin());
    std::size_t nombre = partes.principioNombres;
    for (std::size_t i = 0; i < lugar; ++i)
        nombre = SaltaNombre(BytesDe(bytes), nombre);
    // From back to front, so that the places before each stay right.
    const auto mete = [&](std::size_t posicion, const QByteArray& trozo) {
        bytes.insert(static_cast<qsizetype>(posicion), trozo);
    };
    mete(nombre, Nombre(logico.nombre));
    mete(partes.principioLogicos + lugar * F().tamIndiceLogico, Bloque(logico));
    mete(partes.finReales, Bloque(real));
    mete(partes.finEstadisticas, QByteArray(static_cast<qsizetype>(F().tamEstadistica), '\0'));
    PonEn(bytes, F().indicesLogicos, partes.logicos + 1);
    PonEn(bytes, F().indicesReales, partes.reales + 1);
}

void GuardaDefinicion(PaginasEscribibles& paginas, std::vector<quint32> suyas, QByteArray bytes)
{
    const auto largo = static_cast<std::size_t>(bytes.size());
    PonEn(bytes, PosicionLargo, static_cast<quint32>(largo));
    std::size_t escritos = 0;
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
    }
}

} // namespace tolmo::data::access::mdb
