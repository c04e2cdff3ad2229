#include "data/access/mdb/formato.h"

namespace tolmo::data::access::mdb {
namespace {

constexpr Formato Jet3{.version = Version::Jet3,
                       .tamPagina = 2048,
                       .numeroDeFilas = 8,
                       .anchoContador = 1,
                       .filas = 12,
                       .autonumerico = 16,
                       .clase = 20,
                       .maxColumnas = 21,
                       .ranuras = 23,
                       .columnas = 25,
                       .indicesLogicos = 27,
                       .indicesReales = 31,
                       .mapaPropias = 35,
                       .mapaLibres = 39,
                       .bloques = 43,
                       .tamEstadistica = 8,
                       .tamColumna = 18,
                       .tamIndiceReal = 39,
                       .tamIndiceLogico = 20,
                       .unicasEnEstadistica = 4,
                       .colNumero = 1,
                       .colRanura = 3,
                       .colPosicion = 5,
                       .colOrden = 9,
                       .colMarcas = 13,
                       .colDesplazamiento = 14,
                       .colLargo = 16,
                       .prefijoBloque = 0,
                       .marcasIndice = 38,
                       .anterior = 8,
                       .siguiente = 12,
                       .cola = 16,
                       .prefijo = 20,
                       .mascara = 22,
                       .entradas = 248};

constexpr Formato Jet4{.version = Version::Jet4,
                       .tamPagina = 4096,
                       .numeroDeFilas = 12,
                       .anchoContador = 2,
                       .filas = 0x10,
                       .autonumerico = 0x14,
                       .clase = 0x28,
                       .maxColumnas = 0x29,
                       .ranuras = 0x2B,
                       .columnas = 0x2D,
                       .indicesLogicos = 0x2F,
                       .indicesReales = 0x33,
                       .mapaPropias = 0x37,
                       .mapaLibres = 0x3B,
                       .bloques = 0x3F,
                       .tamEstadistica = 12,
                       .tamColumna = 25,
                       .tamIndiceReal = 52,
                       .tamIndiceLogico = 28,
                       .unicasEnEstadistica = 4,
                       .colNumero = 5,
                       .colRanura = 7,
                       .colPosicion = 9,
                       .colOrden = 11,
                       .colMarcas = 15,
                       .colDesplazamiento = 21,
                       .colLargo = 23,
                       .prefijoBloque = 4,
                       .marcasIndice = 46,
                       .anterior = 12,
                       .siguiente = 16,
                       .cola = 20,
                       .prefijo = 24,
                       .mascara = 27,
                       .entradas = 480};

} // namespace

std::optional<Version> VersionDe(quint8 byte)
{
    switch (byte) {
    case 0:
        return Version::Jet3;
    case 1:
        return Version::Jet4;
    case 2:
        return Version::Ace2007;
    case 3:
        return Version::Ace2010;
    case 5:
        return Version::Ace2016;
    case 6:
        return Version::Ace2019;
    default:
        return std::nullopt;
    }
}

const char* NombreDe(Version version)
{
    switch (version) {
    case Version::Jet3:
        return "Access 97";
    case Version::Jet4:
        return "Access 2000-2003";
    case Version::Ace2007:
        return "Access 2007";
    case Version::Ace2010:
        return "Access 2010";
    case Version::Ace2016:
        return "Access 2016";
    case Version::Ace2019:
        return "Access 2019";
    }
    return "";
}

Formato FormatoDe(Version version)
{
    Formato formato = version == Version::Jet3 ? Jet3 : Jet4;
    formato.version = version;
    return formato;
}

} // namespace tolmo::data::access::mdb
