#pragma once
#include "data/access/mdb/paginas_escribibles.h"
#include "data/access/mdb/tabla.h"
#include <QString>
#include <memory>
#include <vector>

namespace tolmo::data::access::mdb {

/// What a piece of a saved query is.
namespace atributo {
constexpr int Principio = 0;
constexpr int Clase = 1;     ///< nombre1 and, in another file, nombre2: what is written to
constexpr int Parametro = 2; ///< nombre1, marca: the type, extra: the length of a text
constexpr int Opciones = 3;  ///< nombre1: how many, of TOP
constexpr int OtraBase = 4;  ///< nombre1: the file, expresion: its kind
constexpr int Fuente = 5;    ///< nombre1, nombre2: alias, expresion: a sub-select, or the file
constexpr int Salida = 6;    ///< expresion, nombre1: alias, nombre2: the column that it goes to
constexpr int Enlace = 7;    ///< nombre1, nombre2: the sources, marca: the kind of join
constexpr int Donde = 8;
constexpr int Grupo = 9;
constexpr int GruposDonde = 10;
constexpr int Orden = 11; ///< nombre1: "D" downwards
constexpr int Final = 255;
} // namespace atributo

/// The bits of a query's options.
namespace opcion {
constexpr int Todas = 1;     ///< "*" behind the list; always in a union
constexpr int Distintas = 2; ///< in a union: without ALL
constexpr int AccesoDelDuenio = 4;
constexpr int FilasDistintas = 8;
constexpr int Primeras = 0x10;
constexpr int PorCiento = 0x20;
} // namespace opcion

/// How an Enlace joins.
namespace enlace {
constexpr int Interno = 1;
constexpr int Izquierdo = 2;
constexpr int Derecho = 3;
} // namespace enlace

/// The mark of a Salida that is a value of INSERT ... VALUES.
constexpr int SalidaEsValor = -0x8000;

/// The aliases of the two parts of a union; of more than two, all but the last are the first.
constexpr const char* PrimeraParte = "X7YZ_____1";
constexpr const char* SegundaParte = "X7YZ_____2";

/// A row of MSysQueries: one piece of a saved query.
struct Pieza {
    int atributo = 0;
    int marca = 0; ///< 0 when it is Null
    int extra = 0;
    QString nombre1{};
    QString nombre2{};
    QString expresion{};
    QByteArray orden{}; ///< among the pieces of its kind
};

/// What a saved query does.
enum class ClaseConsulta {
    Seleccion = 1,
    CreaTabla = 2,
    Anexion = 3,
    Actualizacion = 4,
    Borrado = 5,
    Cruzada = 6,
    Definicion = 7,
    PasoATraves = 8,
    Union = 9
};

/// The pieces of the query `id`, in order.
std::vector<Pieza> LeeConsulta(const Tabla& consultas, qint32 id);

ClaseConsulta ClaseDe(const std::vector<Pieza>& piezas);

/// Saves a query. Each piece takes its place among those of its kind as they come.
/// \throws ErrorMdb when the name can't be used or is taken
void CreaConsulta(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& nombre,
                  const std::vector<Pieza>& piezas);

/// \throws ErrorMdb when there is none of that name
void BorraConsulta(const std::shared_ptr<PaginasEscribibles>& paginas, const QString& nombre);

} // namespace tolmo::data::access::mdb
