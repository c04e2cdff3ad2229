#pragma once
#include <QtGlobal>
#include <cstddef>
#include <optional>

namespace tolmo::data::access::mdb {

/// Generations of the format, in order.
enum class Version { Jet3, Jet4, Ace2007, Ace2010, Ace2016, Ace2019 };

/// The version that the byte at 0x14 of the header tells.
std::optional<Version> VersionDe(quint8 byte);

/// "Access 97", "Access 2000-2003" ...
const char* NombreDe(Version version);

/// Where things stand in the pages. Access 97 has a layout of its own, all later versions share
/// one.
struct Formato {
    Version version;
    quint32 tamPagina;

    // Data pages and rows.
    std::size_t numeroDeFilas; ///< count of row slots; the slots follow
    std::size_t anchoContador; ///< bytes of each number inside a row: 1 or 2

    // First page of a table definition.
    std::size_t filas;
    std::size_t autonumerico;
    std::size_t clase;
    std::size_t maxColumnas;
    std::size_t ranuras;
    std::size_t columnas;
    std::size_t indicesLogicos;
    std::size_t indicesReales;
    std::size_t mapaPropias;
    std::size_t mapaLibres;
    std::size_t bloques; ///< end of the fixed part
    std::size_t tamEstadistica;
    std::size_t tamColumna;
    std::size_t tamIndiceReal;
    std::size_t tamIndiceLogico;
    std::size_t unicasEnEstadistica;

    // Column block.
    std::size_t colNumero;
    std::size_t colRanura;
    std::size_t colPosicion;
    std::size_t colOrden;
    std::size_t colMarcas;
    std::size_t colDesplazamiento;
    std::size_t colLargo;

    // Blocks of indexes: both start with a constant since Access 2000.
    std::size_t prefijoBloque;
    std::size_t marcasIndice;

    // Index pages.
    std::size_t anterior;
    std::size_t siguiente;
    std::size_t cola;
    std::size_t prefijo;
    std::size_t mascara;
    std::size_t entradas;

    bool EsJet3() const { return version == Version::Jet3; }
    std::size_t TamMascara() const { return entradas - mascara; }
    std::size_t SitioEntradas() const { return tamPagina - entradas; }
};

Formato FormatoDe(Version version);

/// The first byte of a page.
namespace tipo_pagina {
constexpr quint8 SinEscribir = 0;
constexpr quint8 Datos = 1;
constexpr quint8 Definicion = 2;
constexpr quint8 Nodo = 3;
constexpr quint8 Hoja = 4;
constexpr quint8 MapaDeBits = 5;
} // namespace tipo_pagina

} // namespace tolmo::data::access::mdb
