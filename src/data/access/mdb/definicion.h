#pragma once
#include "data/access/mdb/paginas.h"
#include <QString>
#include <vector>

namespace tolmo::data::access::mdb {

/// The types of columns, by their codes.
enum class TipoColumna : quint8 {
    Logico = 0x01,
    Byte = 0x02,
    Entero = 0x03,
    Largo = 0x04,
    Moneda = 0x05,
    Simple = 0x06,
    Doble = 0x07,
    Fecha = 0x08,
    Binario = 0x09,
    Texto = 0x0A,
    Ole = 0x0B,
    Memo = 0x0C,
    Guid = 0x0F,
    Numerico = 0x10,
    BinarioFijo = 0x11,
    Complejo = 0x12,
    Grande = 0x13,
    FechaExtendida = 0x14
};

/// How texts are ordered: the language, and which of its orders.
struct OrdenTexto {
    quint16 idioma = 0;
    quint8 version = 0;
    bool operator==(const OrdenTexto&) const = default;
};

struct Columna {
    QString nombre{};
    TipoColumna tipo = TipoColumna::Texto;
    quint16 numero = 0;         ///< its bit in the null mask, for the life of the column
    quint16 ranura = 0;         ///< place among the variable ones
    quint16 posicion = 0;       ///< among the columns that are shown
    quint16 desplazamiento = 0; ///< in the fixed part of a row
    quint16 largo = 0;          ///< bytes
    quint8 marcas = 0;
    quint8 otrasMarcas = 0;
    quint8 precision = 0;
    quint8 escala = 0;
    OrdenTexto orden{};
    Puntero paginasLargas{};       ///< map of the pages of its long values
    Puntero paginasLargasLibres{}; ///< those of them with room

    bool Fija() const { return (marcas & 0x01) != 0; }
    bool Autonumerica() const { return (marcas & 0x44) != 0; }
    bool DeSistema() const { return (marcas & 0x10) != 0; }
    bool Hipervinculo() const { return (marcas & 0x80) != 0; }
    bool Comprime() const { return (otrasMarcas & 0x01) != 0; }
    bool Calculada() const { return (otrasMarcas & 0xC0) != 0; }
    bool Larga() const { return tipo == TipoColumna::Memo || tipo == TipoColumna::Ole; }
};

struct ColumnaIndice {
    quint16 numero = 0; ///< of the column
    bool descendente = false;
};

/// A tree of entries.
struct IndiceReal {
    std::vector<ColumnaIndice> columnas{};
    Puntero mapa{};
    quint32 raiz = 0;
    quint32 unicas = 0; ///< statistic: different keys ever added
    quint8 marcas = 0;

    bool Unico() const { return (marcas & 0x01) != 0; }
    bool SinNulos() const { return (marcas & 0x02) != 0; } ///< a row of Nulls has no entry
    bool Obligatorio() const { return (marcas & 0x08) != 0; }
};

enum class ClaseIndice : quint8 { Normal = 0, Primario = 1, Ajeno = 2 };

/// An index as the user knows it; several may share one tree.
struct IndiceLogico {
    QString nombre{};
    quint32 numero = 0;
    quint32 real = 0; ///< place in the list of trees
    ClaseIndice clase = ClaseIndice::Normal;
    quint8 ladoRelacion = 0; ///< 1: of the primary table; 2: of the other one
    quint32 indiceAjeno = 0;
    quint32 tablaAjena = 0; ///< page of its definition
    bool actualizaEnCascada = false;
    quint8 borraEnCascada = 0; ///< 1 deletes, 2 sets Null
};

/// All that a file says of the shape of a table.
struct Definicion {
    QString nombre{}; ///< for messages: the catalogue knows it
    quint32 pagina = 0;
    std::vector<quint32> paginas{}; ///< all that it takes
    quint32 filas = 0;              ///< not reliable
    qint32 ultimoAutonumerico = 0;
    bool deSistema = false;
    quint16 maxColumnas = 0;
    quint16 ranuras = 0; ///< of variable columns; without any, rows have no table of them
    Puntero paginasPropias{};
    Puntero paginasLibres{};
    std::vector<Columna> columnas{}; ///< in the order in which they are shown
    std::vector<IndiceReal> indicesReales{};
    std::vector<IndiceLogico> indicesLogicos{};

    /// By name, any case; nullptr when there is none.
    const Columna* ColumnaDe(const QString& buscada) const;
    const Columna* ColumnaDe(quint16 numero) const;
};

/// The bytes of a definition, without the headers of its further pages; `tomadas` gets the pages.
/// \throws ErrorMdb
std::vector<quint8> BytesDeDefinicion(Paginas& paginas, quint32 primera,
                                      std::vector<quint32>& tomadas);

/// Reads the definition of table `nombre`, which starts on `pagina`.
/// \throws ErrorMdb
Definicion LeeDefinicion(Paginas& paginas, quint32 pagina, const QString& nombre = {});

} // namespace tolmo::data::access::mdb
