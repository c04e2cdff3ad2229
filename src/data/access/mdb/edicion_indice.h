#pragma once
#include "data/access/mdb/pagina_indice.h"
#include "data/access/mdb/paginas_escribibles.h"
#include <QByteArray>
#include <span>
#include <vector>

namespace tolmo::data::access::mdb {

/// An entry, whole: the key, the row's place and, in nodes, the child page.
using BytesEntrada = std::vector<quint8>;

BytesEntrada EntradaDeHoja(const QByteArray& clave, Puntero fila);
BytesEntrada EntradaDeNodo(std::span<const quint8> claveYFila, quint32 hijo);

/// What a page of an index holds besides its entries.
struct CabeceraIndice {
    bool esNodo = false;
    quint32 tabla = 0; ///< page of its definition
    quint32 anterior = 0;
    quint32 siguiente = 0;
    quint32 cola = 0;
};

/// Makes a page one of an index, without entries.
void EscribeCabecera(PaginasEscribibles& paginas, quint32 numero, const CabeceraIndice& cabecera);
void PonAnterior(PaginasEscribibles& paginas, quint32 numero, quint32 anterior);
void PonSiguiente(PaginasEscribibles& paginas, quint32 numero, quint32 siguiente);
void PonCola(PaginasEscribibles& paginas, quint32 numero, quint32 cola);

std::vector<BytesEntrada> TodasLasEntradas(const PaginaIndice& pagina);

/// How many of these entries, which are in order, a page has room for, in the shortest form that
/// they have.
std::size_t CuantasCaben(const Formato& formato, std::span<const BytesEntrada> entradas,
                         bool deNodo);
/// True when it has room for all of them.
bool Caben(const Formato& formato, std::span<const BytesEntrada> entradas, bool deNodo);

/// Lets a page hold these entries, which have room, and no others.
void EscribeEntradas(PaginasEscribibles& paginas, quint32 numero,
                     std::span<const BytesEntrada> entradas, bool deNodo);

/// Puts an entry before that of place `lugar` by moving bytes; false, and nothing changes, when
/// that can't be done. `pagina` is the page as it is now.
bool IntercalaEntrada(PaginasEscribibles& paginas, const PaginaIndice& pagina, std::size_t lugar,
                      const BytesEntrada& entrada);
void QuitaEntrada(PaginasEscribibles& paginas, const PaginaIndice& pagina, std::size_t lugar);

} // namespace tolmo::data::access::mdb
